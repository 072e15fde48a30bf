// SPDX-License-Identifier: MIT
// Damaged places in the registry.

#include "PlacesFixture.h"
#include "Writer.h"

#include <aclapi.h>
#include <gmock/gmock.h>

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// --- Damaged values

TEST_F(PlacesKey, APlaceWithoutANumberEndsTheReadingBehindThosePlacesBefore) {
    SavePlaces(5);
    Opened("Place_3")->DeleteValue("IconHot");
    TKxPlacesBarOptions other;
    other.SetRegistryKey(Key);
    AddPlace(other.Places(), "Place 4", "as it was");
    EXPECT_EQ(ErrorOf<ERegistryException>([&] { other.LoadFromRegistry(); }), "Failed to get data for 'IconHot'");
    EXPECT_THAT(CaptionsOf(other.Places()), ElementsAre("Place 4", "Place 0", "Place 1", "Place 2", "Place 3"));
    EXPECT_EQ(other.Places()[3].PlacePath(), "C:\\folder 2");
    EXPECT_EQ(other.Places()[4].PlacePath(), "C:\\folder 3") << "what was read of it before";
    EXPECT_EQ(other.Places()[0].PlacePath(), "as it was") << "those behind it are not read";
    EXPECT_TRUE(TRegistry().DeleteKey(Key)) << "no key is left open";
}

TEST_F(PlacesKey, EachMissingOrForeignNumberIsAnError) {
    for (const std::string name : {"SpecFolder", "Icon", "IconHot", "AutoCaption"}) {
        Options.Places().Clear();
        SavePlaces(1);
        Opened("Place_0")->DeleteValue(name);
        EXPECT_EQ(ErrorOf<ERegistryException>([&] { Loaded(); }), "Failed to get data for '" + name + "'");
        Opened("Place_0")->WriteString(name, "7");
        EXPECT_EQ(ErrorOf<ERegistryException>([&] { Loaded(); }), "Invalid data type for '" + name + "'");
        Opened("Place_0")->WriteBinaryData(name, "\1\0\0\0\0\0\0\0", 8);
        EXPECT_EQ(ErrorOf<ERegistryException>([&] { Loaded(); }), "Invalid data type for '" + name + "'");
    }
}

TEST_F(PlacesKey, EachMissingTextIsEmptyAndEachForeignOneAnError) {
    for (const std::string name : {"Name", "Path", "RegPath", "IconDll", "Hint"}) {
        Options.Places().Clear();
        SavePlaces(1);
        Opened("Place_0")->DeleteValue(name);
        EXPECT_EQ(Loaded()->Places().Count(), 1) << name;
        Opened("Place_0")->WriteInteger(name, 7);
        EXPECT_EQ(ErrorOf<ERegistryException>([&] { Loaded(); }), "Invalid data type for '" + name + "'");
    }
}

TEST_F(PlacesKey, ATextWithoutItsZeroAndAnExpandableOneAreRead) {
    SavePlaces(1);
    const auto key = Opened("Place_0");
    RegSetValueExA(key->CurrentKey(), "Name", 0, REG_SZ, reinterpret_cast<const BYTE*>("short"), 5);
    key->WriteExpandString("Path", "%TEMP%\\x");
    const auto loaded = Loaded();
    EXPECT_EQ(loaded->Places()[0].PlaceName(), "short");
    EXPECT_EQ(loaded->Places()[0].PlacePath(), "%TEMP%\\x");
}

TEST_F(PlacesKey, AnErrorInTheMiddleLosesNothingThatIsStored) {
    SavePlaces(4);
    Opened("Place_1")->DeleteValue("Icon");
    EXPECT_NE(ErrorOf<ERegistryException>([&] { Loaded(); }), "no error");
    EXPECT_THAT(SubKeys(), ElementsAre("Place_0", "Place_1", "Place_2", "Place_3"));
    EXPECT_EQ(Opened("Place_3")->ReadString("Path"), "C:\\folder 3");
}

// --- Long and many

TEST_F(PlacesKey, TextsOf64KilobytesComeBack) {
    const std::string text(0x10000, 'x');
    TKxPlace& place = AddPlace(Options.Places(), text + "n", text + "p");
    place.SetPlaceRegPath(text + "r");
    place.SetPlaceIconDll(text + "i");
    place.SetPlaceDesc(text + "h");
    AddPlace(Options.Places(), "short");
    Options.SaveToRegistry();
    const auto loaded = Loaded();
    ASSERT_EQ(loaded->Places().Count(), 2);
    const TKxPlace& read = loaded->Places()[0];
    EXPECT_EQ(read.PlaceName(), text + "n");
    EXPECT_EQ(read.PlacePath(), text + "p");
    EXPECT_EQ(read.PlaceRegPath(), text + "r");
    EXPECT_EQ(read.PlaceIconDll(), text + "i");
    EXPECT_EQ(read.PlaceDesc(), text + "h");
    EXPECT_EQ(ExtractRegStringValue("\\" + Key + "\\Place_0\\Path"), text + "p");
    EXPECT_EQ(ExtractRegStringValue(text), "") << "no value has such a name";
}

TEST_F(PlacesKey, AThousandPlacesComeBack) {
    SavePlaces(1'000);
    const auto loaded = Loaded();
    ASSERT_EQ(loaded->Places().Count(), 1'000);
    for (const TKxPlace* place : {&loaded->Places()[0], &loaded->Places()[500], &loaded->Places()[999]}) {
        EXPECT_EQ("C:\\folder " + place->PlaceName().substr(6), place->PlacePath());
    }
    loaded->LoadFromRegistry();
    EXPECT_EQ(loaded->Places().Count(), 1'000) << "reading again finds them all";
}

// --- Keys that do not open

/// Takes all rights to a key away for the length of a scope.
class TLocked {
public:
    explicit TLocked(const std::string& key) {
        RegOpenKeyExA(HKEY_CURRENT_USER, key.c_str(), 0, WRITE_DAC | READ_CONTROL, FKey.put());
        ACL none;
        InitializeAcl(&none, sizeof none, ACL_REVISION);
        SetRights(&none);
    }
    TLocked(const TLocked&) = delete;
    TLocked& operator=(const TLocked&) = delete;
    ~TLocked() { SetRights(nullptr); }

private:
    void SetRights(PACL list) {
        SECURITY_DESCRIPTOR descriptor;
        InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
        SetSecurityDescriptorDacl(&descriptor, TRUE, list, FALSE);
        RegSetKeySecurity(FKey.get(), DACL_SECURITY_INFORMATION, &descriptor);
    }

    unique_hkey FKey;
};

TEST_F(PlacesKey, APlaceThatCannotBeOpenedIsSkipped) {
    SavePlaces(3);
    const TLocked locked(Key + "\\Place_1");
    ASSERT_FALSE(TRegistry().OpenKeyReadOnly(Key + "\\Place_1"));
    EXPECT_THAT(CaptionsOf(Loaded()->Places()), ElementsAre("Place 0", "Place 2"));
    Options.Places()[0].SetPlaceName("a");
    Options.Places()[1].SetPlaceName("b");
    Options.Places()[2].SetPlaceName("c");
    Options.SaveToRegistry();
    EXPECT_EQ(Opened("Place_0")->ReadString("Name"), "a");
    EXPECT_EQ(Opened("Place_2")->ReadString("Name"), "c") << "the next one is written";
}

TEST_F(PlacesKey, ABarWhoseKeyCannotBeOpenedReadsAndWritesNothing) {
    SavePlaces(2);
    {
        const TLocked locked(Key);
        EXPECT_EQ(Loaded()->Places().Count(), 0);
        Options.Places().Clear();
        Options.SaveToRegistry();
    }
    EXPECT_EQ(Loaded()->Places().Count(), 2);
}

TEST_F(PlacesKey, AKeyWithAnImpossibleNameReadsAndWritesNothing) {
    AddPlace(Options.Places(), "a");
    for (const std::string& key : {Key + "\\" + std::string(300, 'x'), Key + "\\" + std::string(70'000, 'x')}) {
        Options.SetRegistryKey(key);
        Options.SaveToRegistry();
        Options.LoadFromRegistry();
        EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("a")) << key.substr(0, 60);
    }
}

TEST_F(PlacesKey, AnEmptyKeyIsRefused) {
    // Its keys would be all those of the user.
    for (const std::string key : {"", "\\", "\\\\", "\\\\\\", "\\\\\\\\\\"}) {
        Options.SetRegistryKey(key);
        EXPECT_THROW(Options.LoadFromRegistry(), EInvalidOperation) << key;
        Options.SaveOnClose();              // the reading has told it
        if (!testing::Test::HasFailure()) { // else this would go through all keys of the user
            EXPECT_THROW(Options.SaveToRegistry(), EInvalidOperation) << key;
        }
    }
    EXPECT_TRUE(TRegistry().KeyExists("Software"));
}

// --- What could not be read is not replaced

TEST_F(PlacesKey, AStoreThatFailedToLoadIsNotReplacedOnClosing) {
    SavePlaces(4);
    Opened("Place_1")->DeleteValue("Icon");
    TKxPlacesBarOptions other;
    other.SetRegistryKey(Key);
    EXPECT_THROW(other.LoadFromRegistry(), ERegistryException);
    other.SaveOnClose();
    EXPECT_THAT(SubKeys(), ElementsAre("Place_0", "Place_1", "Place_2", "Place_3"));
    Opened("Place_1")->WriteInteger("Icon", 0);
    other.LoadFromRegistry();
    other.Places().Clear();
    other.SaveOnClose();
    EXPECT_THAT(SubKeys(), IsEmpty()) << "read whole this time";
}

TEST_F(PlacesKey, AStoreThatLoadedBeforeIsNotReplacedAfterALoadThatFailed) {
    SavePlaces(2);
    TKxPlacesBarOptions other;
    other.SetRegistryKey(Key);
    other.LoadFromRegistry();
    Opened("Place_0")->DeleteValue("Icon");
    EXPECT_THROW(other.LoadFromRegistry(), ERegistryException);
    other.Places().Clear();
    other.SaveOnClose();
    EXPECT_THAT(SubKeys(), ElementsAre("Place_0", "Place_1"));
}

TEST_F(PlacesKey, AStoreWithAPlaceThatDidNotOpenIsNotReplacedOnClosing) {
    SavePlaces(3);
    TKxPlacesBarOptions other;
    other.SetRegistryKey(Key);
    {
        const TLocked locked(Key + "\\Place_1");
        other.LoadFromRegistry();
    }
    ASSERT_THAT(CaptionsOf(other.Places()), ElementsAre("Place 0", "Place 2"));
    other.SaveOnClose();
    EXPECT_THAT(SubKeys(), ElementsAre("Place_0", "Place_1", "Place_2"));
}

TEST_F(PlacesKey, AStoreThatDidNotOpenIsNotReplacedOnClosing) {
    SavePlaces(2);
    TKxPlacesBarOptions other;
    other.SetRegistryKey(Key);
    {
        const TLocked locked(Key);
        other.LoadFromRegistry();
        other.SaveOnClose();
    }
    other.SaveOnClose();
    EXPECT_THAT(SubKeys(), ElementsAre("Place_0", "Place_1"));
}

TEST_F(PlacesKey, AStoreUnderAnotherKeyThanTheLoadedOneIsNotReplacedOnClosing) {
    SavePlaces(2);
    TKxPlacesBarOptions other;
    other.SetRegistryKey(Key + "\\Place_0"); // has no places
    AddPlace(other.Places(), "new");
    other.LoadFromRegistry();
    other.SetRegistryKey(Key);
    other.SaveOnClose();
    EXPECT_THAT(SubKeys(), ElementsAre("Place_0", "Place_1"));
    other.SetRegistryKey(Key + "\\Place_1"); // nothing can be lost there
    other.SaveOnClose();
    EXPECT_EQ(Opened("Place_1\\Place_0")->ReadString("Name"), "new");
}

TEST_F(PlacesKey, AStoreThatNobodyLoadedIsNotReplacedOnClosing) {
    SavePlaces(2);
    TKxPlacesBarOptions other;
    other.SetRegistryKey(Key);
    other.SaveOnClose();
    EXPECT_THAT(SubKeys(), ElementsAre("Place_0", "Place_1"));
}

TEST_F(PlacesKey, AStoreThatWasMissingIsWrittenOnClosingWhateverWroteItMeanwhile) {
    TKxPlacesBarOptions other;
    other.SetRegistryKey("\\" + Key + "\\");
    other.LoadFromRegistry();
    AddPlace(other.Places(), "mine");
    SavePlaces(2);
    other.SetRegistryKey(Key); // the same
    other.SaveOnClose();
    EXPECT_THAT(SubKeys(), ElementsAre("Place_0"));
}

// --- More than one process

/// This program once more, saving places.
class TWriter {
public:
    TWriter(const std::string& key, const std::string& tag) {
        char program[MAX_PATH];
        GetModuleFileNameA(nullptr, program, sizeof program);
        std::string command = std::string("\"") + program + "\" " + WriterOption + " " + key + " " + tag;
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process{};
        EXPECT_TRUE(
            CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process));
        FProcess.reset(process.hProcess);
        CloseHandle(process.hThread);
    }

    bool Runs() const { return WaitForSingleObject(FProcess.get(), 0) == WAIT_TIMEOUT; }
    /// Its exit code, once it has ended.
    DWORD Wait() const {
        DWORD code = 0;
        if (WaitForSingleObject(FProcess.get(), 60'000) != WAIT_OBJECT_0) {
            TerminateProcess(FProcess.get(), 99);
        }
        GetExitCodeProcess(FProcess.get(), &code);
        return code;
    }

private:
    unique_handle_object FProcess;
};

TEST_F(PlacesKey, TwoProcessesThatWriteAtOnceLeaveAWholeSetOfPlaces) {
    const TWriter first(Key, "A");
    const TWriter second(Key, "B");
    EXPECT_EQ(first.Wait(), 0u);
    EXPECT_EQ(second.Wait(), 0u);
    EXPECT_EQ(SubKeys().size(), size_t{WriterPlaces});
    const auto loaded = Loaded();
    ASSERT_EQ(loaded->Places().Count(), WriterPlaces);
    for (int i = 0; i < WriterPlaces; ++i) {
        const TKxPlace& place = loaded->Places()[i];
        EXPECT_EQ(place.PlaceName().substr(1), place.PlacePath().substr(1));
        EXPECT_EQ(place.PlaceDesc().size(), 1'000u);
    }
}

TEST_F(PlacesKey, ReadingWhileAnotherProcessWritesGivesPlacesOrAnError) {
    const TWriter writer(Key, "A");
    int rounds = 0;
    while (writer.Runs() || rounds == 0) {
        TKxPlacesBarOptions options;
        options.SetRegistryKey(Key);
        try {
            options.LoadFromRegistry();
        } catch (const ERegistryException&) {
            // a place that was half written, or deleted in between
        }
        EXPECT_LE(options.Places().Count(), WriterPlaces + 1);
        ++rounds;
    }
    EXPECT_EQ(writer.Wait(), 0u);
    EXPECT_EQ(Loaded()->Places().Count(), WriterPlaces);
}

} // namespace

int RunWriter(const std::string& key, const std::string& tag) {
    TKxPlacesBarOptions options;
    options.SetRegistryKey(key);
    for (int i = 0; i < WriterPlaces; ++i) {
        AddPlace(options.Places(), tag + ' ' + IntToStr(i), tag + ' ' + IntToStr(i))
            .SetPlaceDesc(std::string(1'000, tag.front()));
    }
    for (int round = 0; round < WriterRounds; ++round) {
        try {
            options.SaveToRegistry();
        } catch (const ERegistryException&) {
            // the other process deleted a key meanwhile
        } catch (...) {
            return 1;
        }
    }
    return 0;
}

} // namespace kx::test
