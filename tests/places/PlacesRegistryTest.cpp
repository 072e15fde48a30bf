// SPDX-License-Identifier: MIT
// Places in the registry.

#include "PlacesFixture.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// --- Writing

/// What the system's registry editor exports of a key: text of 16-bit characters, here without those beyond ASCII.
std::string Exported(const std::string& key) {
    const TTempFolder folder;
    const std::string file = folder.Path("places.reg");
    std::string command = "regedit.exe /E \"" + file + "\" \"HKEY_CURRENT_USER\\" + key + "\"";
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
        return "regedit does not start";
    }
    const unique_handle_object handle(process.hProcess);
    const unique_handle_object thread(process.hThread);
    if (WaitForSingleObject(handle.get(), 60'000) != WAIT_OBJECT_0) {
        return "regedit does not end";
    }
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    std::string text;
    for (size_t i = 2; i + 1 < bytes.size(); i += 2) {
        text += bytes[i + 1] == 0 ? bytes[i] : '?';
    }
    return text;
}

TEST_F(PlacesKey, TheWrittenKeysAreTheseToTheByte) {
    TKxPlace& path = AddPlace(Options.Places(), "Drawings \"new\"", "D:\\Work\\");
    path.SetPlaceDesc("A hint");
    path.SetPlaceIconDll("C:\\icons\\a.icl");
    path.SetPlaceIcon(7);
    path.SetPlaceHotIcon(-1);
    TKxPlace& special = AddPlace(Options.Places(), "by hand");
    special.SetPlaceSpecPath(ftFavorites);
    special.SetAutoCaption(true);
    TKxPlace& referred = AddPlace(Options.Places(), "");
    referred.SetPlaceRegPath("\\Software\\Foo\\Dirs\\Data");
    referred.SetAutoCaption(true);
    Options.SaveToRegistry();
    const std::string root = "[HKEY_CURRENT_USER\\" + Key;
    EXPECT_EQ(Exported(Key), "Windows Registry Editor Version 5.00\r\n"
                             "\r\n" +
                                 root +
                                 "]\r\n"
                                 "\r\n" +
                                 root +
                                 "\\Place_0]\r\n"
                                 "\"AutoCaption\"=dword:00000000\r\n"
                                 "\"Hint\"=\"A hint\"\r\n"
                                 "\"Icon\"=dword:00000007\r\n"
                                 "\"IconDll\"=\"C:\\\\icons\\\\a.icl\"\r\n"
                                 "\"IconHot\"=dword:ffffffff\r\n"
                                 "\"Name\"=\"Drawings \\\"new\\\"\"\r\n"
                                 "\"Path\"=\"D:\\\\Work\\\\\"\r\n"
                                 "\"RegPath\"=\"\"\r\n"
                                 "\"SpecFolder\"=dword:fffff848\r\n"
                                 "\r\n" +
                                 root +
                                 "\\Place_1]\r\n"
                                 "\"AutoCaption\"=dword:00000001\r\n"
                                 "\"Hint\"=\"\"\r\n"
                                 "\"Icon\"=dword:00000000\r\n"
                                 "\"IconDll\"=\"\"\r\n"
                                 "\"IconHot\"=dword:00000000\r\n"
                                 "\"Name\"=\"Favorites\"\r\n"
                                 "\"Path\"=\"\"\r\n"
                                 "\"RegPath\"=\"\"\r\n"
                                 "\"SpecFolder\"=dword:00000006\r\n"
                                 "\r\n" +
                                 root +
                                 "\\Place_2]\r\n"
                                 "\"AutoCaption\"=dword:00000001\r\n"
                                 "\"Hint\"=\"\"\r\n"
                                 "\"Icon\"=dword:00000000\r\n"
                                 "\"IconDll\"=\"\"\r\n"
                                 "\"IconHot\"=dword:00000000\r\n"
                                 "\"Name\"=\"Data\"\r\n"
                                 "\"Path\"=\"\"\r\n"
                                 "\"RegPath\"=\"\\\\Software\\\\Foo\\\\Dirs\\\\Data\"\r\n"
                                 "\"SpecFolder\"=dword:fffff848\r\n"
                                 "\r\n");
}

TEST_F(PlacesKey, EverySpecialFolderIsWrittenWithItsShellNumber) {
    for (int folder = ftNone; folder <= ftTemplates; ++folder) {
        AddPlace(Options.Places(), IntToStr(folder)).SetPlaceSpecPath(static_cast<TKxSpecShellFolder>(folder));
    }
    Options.SaveToRegistry();
    for (int folder = ftNone; folder <= ftTemplates; ++folder) {
        EXPECT_EQ(Opened("Place_" + IntToStr(folder))->ReadInteger("SpecFolder"),
                  constFolders[static_cast<size_t>(folder)]);
    }
}

TEST_F(PlacesKey, WritingNoPlacesLeavesNoKeysOfPlaces) {
    SavePlaces(5);
    EXPECT_THAT(SubKeys(), ElementsAre("Place_0", "Place_1", "Place_2", "Place_3", "Place_4"));
    Options.Places().Clear();
    Options.SaveToRegistry();
    EXPECT_THAT(SubKeys(), IsEmpty());
    EXPECT_TRUE(TRegistry().KeyExists(Key)) << "the key itself stays";
}

TEST_F(PlacesKey, WritingRemovesEveryKeyWithAllBelowItAndKeepsTheValues) {
    Opened("Somebody's\\deep\\keys");
    Opened("Place_0\\below");
    Opened("")->WriteString("of the application", "kept");
    SavePlaces(1);
    EXPECT_THAT(SubKeys(), ElementsAre("Place_0"));
    EXPECT_FALSE(Opened("Place_0")->HasSubKeys());
    EXPECT_EQ(Opened("")->ReadString("of the application"), "kept");
}

TEST_F(PlacesKey, BackslashesAtEitherEndOfTheKeyMakeNoDifference) {
    AddPlace(Options.Places(), "a", "C:\\a");
    for (const std::string& key : {Key + "\\", "\\" + Key, "\\" + Key + "\\", Key + "\\\\\\", "\\\\" + Key}) {
        Options.SetRegistryKey(key);
        Options.SaveToRegistry();
        EXPECT_THAT(SubKeys(), ElementsAre("Place_0")) << key;
        Options.Places().Clear();
        Options.LoadFromRegistry();
        EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("a")) << key;
    }
}

// --- Reading

TEST_F(PlacesKey, EverythingComesBack) {
    TKxPlace& place = AddPlace(Options.Places(), "Drawings", "D:\\Work");
    place.SetPlaceRegPath("Personal");
    place.SetPlaceDesc("A hint");
    place.SetPlaceIconDll("C:\\icons\\a.icl");
    place.SetPlaceIcon(7);
    place.SetPlaceHotIcon(INT32_MIN);
    AddPlace(Options.Places(), "My files").SetPlaceSpecPath(ftPersonal);
    Options.SaveToRegistry();
    const auto loaded = Loaded();
    ASSERT_EQ(loaded->Places().Count(), 2);
    const TKxPlace& read = loaded->Places()[0];
    EXPECT_EQ(read.PlaceName(), "Drawings");
    EXPECT_EQ(read.PlacePath(), "D:\\Work");
    EXPECT_EQ(read.PlaceRegPath(), "Personal");
    EXPECT_EQ(read.PlaceDesc(), "A hint");
    EXPECT_EQ(read.PlaceIconDll(), "C:\\icons\\a.icl");
    EXPECT_EQ(read.PlaceIcon(), 7);
    EXPECT_EQ(read.PlaceHotIcon(), INT32_MIN);
    EXPECT_EQ(read.PlaceSpecPath(), ftNone);
    EXPECT_FALSE(read.AutoCaption());
    EXPECT_EQ(loaded->Places()[1].PlaceSpecPath(), ftPersonal);
    EXPECT_EQ(loaded->Places()[1].PlaceName(), "My files");
}

TEST_F(PlacesKey, TwelvePlacesComeBackInTheOrderOfTheRegistry) {
    SavePlaces(12);
    EXPECT_THAT(CaptionsOf(Loaded()->Places()),
                ElementsAre("Place 0", "Place 1", "Place 10", "Place 11", "Place 2", "Place 3", "Place 4", "Place 5",
                            "Place 6", "Place 7", "Place 8", "Place 9"));
}

TEST_F(PlacesKey, ASpecialFolderBeyondTheFourComesBackAsAPath) {
    AddPlace(Options.Places(), "Used", "D:\\Used").SetPlaceSpecPath(ftRecent);
    Options.SaveToRegistry();
    EXPECT_EQ(Opened("Place_0")->ReadInteger("SpecFolder"), 8);
    const auto loaded = Loaded();
    ASSERT_EQ(loaded->Places().Count(), 1);
    EXPECT_EQ(loaded->Places()[0].PlaceSpecPath(), ftNone);
    EXPECT_EQ(loaded->Places()[0].PlacePath(), "D:\\Used");
}

TEST_F(PlacesKey, TheFourSpecialFoldersComeBack) {
    for (const TKxSpecShellFolder folder : {ftDesktop, ftDrives, ftPersonal, ftFavorites}) {
        AddPlace(Options.Places(), "same").SetPlaceSpecPath(folder);
    }
    Options.SaveToRegistry();
    const auto loaded = Loaded();
    ASSERT_EQ(loaded->Places().Count(), 4);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(loaded->Places()[i].PlaceSpecPath(), Options.Places()[i].PlaceSpecPath());
    }
}

TEST_F(PlacesKey, TheAutoCaptionIsKeptAsTheName) {
    TKxPlace& place = AddPlace(Options.Places(), "by hand", "D:\\Work\\Letters");
    place.SetAutoCaption(true);
    Options.SaveToRegistry();
    EXPECT_EQ(Opened("Place_0")->ReadString("Name"), "Letters");
    Opened("Place_0")->WriteInteger("AutoCaption", 0);
    EXPECT_EQ(Loaded()->Places()[0].PlaceName(), "Letters");
}

TEST_F(PlacesKey, AnyNumberButZeroIsTrue) {
    SavePlaces(1);
    Opened("Place_0")->WriteInteger("AutoCaption", -7);
    EXPECT_TRUE(Loaded()->Places()[0].AutoCaption());
}

TEST_F(PlacesKey, KeysOfAnyNameAreRead) {
    SavePlaces(1);
    const auto other = Opened("Zebra / of somebody");
    for (const char* name : {"SpecFolder", "Icon", "IconHot", "AutoCaption"}) {
        other->WriteInteger(name, 0);
    }
    const auto loaded = Loaded();
    EXPECT_EQ(loaded->Places().Count(), 2);
    EXPECT_EQ(loaded->Places()[1].PlaceSpecPath(), ftDesktop) << "number 0";
    EXPECT_EQ(loaded->Places()[1].PlaceName(), "") << "missing strings are empty";
}

TEST_F(PlacesKey, AMissingKeyLeavesThePlacesAlone) {
    AddPlace(Options.Places(), "at design time");
    Options.LoadFromRegistry();
    EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("at design time"));
    EXPECT_FALSE(TRegistry().KeyExists(Key)) << "reading makes no key";
}

// --- Merging

TEST_F(PlacesKey, StoredPlacesUpdateThoseOfTheSameNameOrFolderAndJoinTheRest) {
    AddPlace(Options.Places(), "Work", "C:\\stored work");
    AddPlace(Options.Places(), "Stored desktop").SetPlaceSpecPath(ftDesktop);
    AddPlace(Options.Places(), "New", "C:\\new");
    Options.SaveToRegistry();
    TKxPlacesBarOptions other;
    other.SetRegistryKey(Key);
    AddPlace(other.Places(), "Only here", "C:\\only");
    AddPlace(other.Places(), "Desktop").SetPlaceSpecPath(ftDesktop);
    AddPlace(other.Places(), "work", "C:\\other letters");
    AddPlace(other.Places(), "Work", "C:\\work");
    AddPlace(other.Places(), "Work", "C:\\work again");
    other.LoadFromRegistry();
    EXPECT_THAT(CaptionsOf(other.Places()), ElementsAre("Only here", "Stored desktop", "work", "Work", "Work", "New"));
    EXPECT_EQ(other.Places()[3].PlacePath(), "C:\\stored work");
    EXPECT_EQ(other.Places()[4].PlacePath(), "C:\\work again") << "the first of the name only";
    EXPECT_EQ(other.Places()[0].PlacePath(), "C:\\only");
}

TEST_F(PlacesKey, TwoStoredPlacesOfOneSpecialFolderUpdateTheSameOne) {
    AddPlace(Options.Places(), "first", "C:\\1").SetPlaceSpecPath(ftPersonal);
    AddPlace(Options.Places(), "second", "C:\\2").SetPlaceSpecPath(ftPersonal);
    Options.SaveToRegistry();
    TKxPlacesBarOptions other;
    other.SetRegistryKey(Key);
    AddPlace(other.Places(), "one").SetPlaceSpecPath(ftPersonal);
    AddPlace(other.Places(), "two").SetPlaceSpecPath(ftPersonal);
    other.LoadFromRegistry();
    EXPECT_THAT(CaptionsOf(other.Places()), ElementsAre("second", "two"));
    EXPECT_EQ(other.Places()[0].PlacePath(), "C:\\2");
}

TEST_F(PlacesKey, APlaceIsFoundByTheCaptionThatReadingGaveIt) {
    // The first stored place becomes "Letters" by its path; the second one, stored as "Letters", then means the same.
    TKxPlace& first = AddPlace(Options.Places(), "", "C:\\Letters");
    first.SetAutoCaption(true);
    AddPlace(Options.Places(), "Letters", "C:\\second");
    Options.SaveToRegistry();
    Opened("Place_0")->WriteString("Name", "before");
    TKxPlacesBarOptions other;
    other.SetRegistryKey(Key);
    AddPlace(other.Places(), "before");
    other.LoadFromRegistry();
    ASSERT_THAT(CaptionsOf(other.Places()), ElementsAre("Letters"));
    EXPECT_EQ(other.Places()[0].PlacePath(), "C:\\second");
}

TEST_F(PlacesKey, MergingManyPlacesFindsTheSameAsPlaceViaName) {
    // Names that repeat, captions that change while reading, special folders in between.
    for (int i = 0; i < 60; ++i) {
        TKxPlace& place = AddPlace(Options.Places(), "n" + IntToStr(i % 7), "C:\\n" + IntToStr(i % 5));
        place.SetAutoCaption(i % 3 == 0);
        place.SetPlaceSpecPath(i % 11 == 0 ? ftDrives : i % 13 == 0 ? ftFavorites : ftNone);
        place.SetPlaceIcon(i);
    }
    Options.SaveToRegistry();
    TKxPlacesBarOptions expected;
    TKxPlacesBarOptions loaded;
    loaded.SetRegistryKey(Key);
    for (int i = 0; i < 10; ++i) {
        for (TKxPlacesBarOptions* options : {&expected, &loaded}) {
            AddPlace(options->Places(), "x", "C:\\n" + IntToStr(i % 4)).SetAutoCaption(i % 2 == 0);
        }
    }
    for (const std::string& name : SubKeys()) {
        const auto key = Opened(name);
        const TKxPlace& source = Options.Places()[static_cast<int>(StrToInt(name.substr(6)))];
        TKxPlace* place = expected.Places().PlaceViaName(key->ReadString("Name"), source.PlaceSpecPath());
        place = place ? place : expected.Places().Add();
        place->Assign(&source);
        place->SetPlaceName(source.GetPlaceName());
    }
    loaded.LoadFromRegistry();
    ASSERT_EQ(CaptionsOf(loaded.Places()), CaptionsOf(expected.Places()));
    for (int i = 0; i < loaded.Places().Count(); ++i) {
        EXPECT_EQ(loaded.Places()[i].PlaceIcon(), expected.Places()[i].PlaceIcon()) << i;
    }
}

// --- References into the registry

TEST_F(PlacesKey, AReferenceWithoutABackslashIsOneOfTheShellFolders) {
    TRegistry shellFolders;
    ASSERT_TRUE(shellFolders.OpenKeyReadOnly(R"(\Software\Microsoft\Windows\CurrentVersion\Explorer\Shell Folders)"));
    ASSERT_NE(shellFolders.ReadString("Desktop"), "");
    EXPECT_EQ(ExtractRegStringValue("Desktop"), shellFolders.ReadString("Desktop"));
    EXPECT_EQ(ExtractRegStringValue("No such folder"), "");
}

TEST_F(PlacesKey, AReferenceWithABackslashNamesKeyAndValue) {
    const auto key = Opened("Dirs");
    key->WriteString("Data", "D:\\Data");
    key->WriteString("", "the default");
    key->WriteString("with:colon", "C:\\c");
    key->WriteExpandString("expand", "%TEMP%");
    EXPECT_EQ(ExtractRegStringValue("\\" + Key + "\\Dirs\\Data"), "D:\\Data");
    EXPECT_EQ(ExtractRegStringValue("\\" + Key + "\\Dirs\\"), "the default");
    EXPECT_EQ(ExtractRegStringValue("\\" + Key + "\\Dirs\\with:colon"), "C:\\c");
    EXPECT_EQ(ExtractRegStringValue("\\" + Key + "\\Dirs\\expand"), "%TEMP%");
}

TEST_F(PlacesKey, AReferenceThatLeadsNowhereIsEmpty) {
    const auto key = Opened("Dirs");
    key->WriteInteger("number", 4);
    EXPECT_EQ(ExtractRegStringValue(""), "");
    EXPECT_EQ(ExtractRegStringValue("\\"), "");
    EXPECT_EQ(ExtractRegStringValue("\\" + Key + "\\Dirs\\missing"), "");
    EXPECT_EQ(ExtractRegStringValue("\\" + Key + "\\no\\key"), "");
    EXPECT_EQ(ExtractRegStringValue("\\" + Key + "\\Dirs\\number"), "") << "no string";
    EXPECT_EQ(ExtractRegStringValue("\\\\\\"), "");
    EXPECT_EQ(ExtractRegStringValue("\\" + std::string(0x10000, 'x') + "\\y"), "");
    EXPECT_FALSE(TRegistry().KeyExists(Key + "\\no")) << "looking makes no key";
}

} // namespace
} // namespace kx::test
