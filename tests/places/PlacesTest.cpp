// SPDX-License-Identifier: MIT
// Places and their captions.

#include "PlacesFixture.h"

#include "tests/support/FormFiles.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <shlobj.h>

namespace kx::test {
namespace {

using testing::ElementsAre;

/// Fills every property with something that is not its value at first.
void Fill(TKxPlace& place) {
    place.SetPlaceName("Drawings");
    place.SetPlacePath("D:\\Drawings");
    place.SetPlaceRegPath("\\Software\\Acme\\Dirs\\Data");
    place.SetPlaceSpecPath(ftFavorites);
    place.SetPlaceDesc("All drawings");
    place.SetPlaceIconDll("shell32.dll");
    place.SetPlaceIcon(3);
    place.SetPlaceHotIcon(-4);
    place.SetAutoCaption(true);
}

// --- TKxPlace

TEST(Place, AssigningCopiesEverything) {
    TKxPlace source(nullptr);
    Fill(source);
    TKxPlace place(nullptr);
    place.Assign(&source);
    EXPECT_EQ(place.PlacePath(), "D:\\Drawings");
    EXPECT_EQ(place.PlaceRegPath(), "\\Software\\Acme\\Dirs\\Data");
    EXPECT_EQ(place.PlaceSpecPath(), ftFavorites);
    EXPECT_EQ(place.PlaceDesc(), "All drawings");
    EXPECT_EQ(place.PlaceIconDll(), "shell32.dll");
    EXPECT_EQ(place.PlaceIcon(), 3);
    EXPECT_EQ(place.PlaceHotIcon(), -4);
    EXPECT_TRUE(place.AutoCaption());
    place.SetAutoCaption(false);
    EXPECT_EQ(place.PlaceName(), "Drawings") << "the name given by hand, not the caption";
}

TEST(Place, AssigningSomethingElseIsRefused) {
    TKxPlace place(nullptr);
    Fill(place);
    const TStringList other;
    EXPECT_THROW(place.Assign(&other), EConvertError);
    EXPECT_EQ(place.PlacePath(), "D:\\Drawings");
}

// --- Captions

TEST(PlaceCaption, IsTheGivenNameWithoutAutoCaption) {
    TKxPlace place(nullptr);
    place.SetPlaceName("Mine");
    place.SetPlacePath("D:\\Work");
    place.SetPlaceSpecPath(ftDesktop);
    EXPECT_EQ(place.GetPlaceName(), "Mine");
    EXPECT_EQ(place.GetDisplayName(), "Mine");
}

TEST(PlaceCaption, OfASpecialFolderIsTheShellsNameForIt) {
    TKxPlace place(nullptr);
    place.SetAutoCaption(true);
    place.SetPlacePath("D:\\Work");
    for (const TKxSpecShellFolder folder : {ftDesktop, ftDrives, ftPersonal, ftFavorites, ftRecent, ftFonts}) {
        place.SetPlaceSpecPath(folder);
        EXPECT_EQ(place.GetPlaceName(), GetSpecFolderName(folder));
    }
    place.SetPlaceSpecPath(ftFonts);
    EXPECT_EQ(place.GetDisplayName(), "") << "a folder that the library has no name for";
}

TEST(PlaceCaption, OfAPathIsItsLastNameOrTheWholePathBehindABackslash) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"D:\\Work\\", "D:\\Work\\"},   {"D:\\Work", "Work"}, {"C:\\", "C:\\"}, {"C:", "C:"}, {"C:letters", "letters"},
        {"\\\\server\\share", "share"}, {"Work", "Work"},     {"\\", "\\"},     {"", ""}};
    TKxPlace place(nullptr);
    place.SetAutoCaption(true);
    place.SetPlaceName("not this");
    for (const auto& [path, caption] : cases) {
        place.SetPlacePath(path);
        EXPECT_EQ(place.GetPlaceName(), caption) << path;
        EXPECT_EQ(place.GetDisplayName(), caption) << path;
    }
}

TEST(PlaceCaption, OfARegistryReferenceIsMadeOfTheReferenceItself) {
    TKxPlace place(nullptr);
    place.SetAutoCaption(true);
    place.SetPlacePath("D:\\Work");
    place.SetPlaceRegPath("Personal");
    EXPECT_EQ(place.GetPlaceName(), "Personal");
    place.SetPlaceRegPath("\\Software\\Foo\\Dirs\\Data");
    EXPECT_EQ(place.GetPlaceName(), "Data");
    place.SetPlaceRegPath("\\Software\\Foo\\");
    EXPECT_EQ(place.GetPlaceName(), "\\Software\\Foo\\");
}

// --- TKxPlaces

TEST(Places, AddAppendsAndInsertPutsBefore) {
    TKxPlacesBarOptions options;
    TKxPlaces& places = options.Places();
    EXPECT_EQ(places.GetOwner(), &options);
    EXPECT_EQ(&places.ItemClass(), &TKxPlace::StaticClass());
    places.Add()->SetPlaceName("a");
    places.Add()->SetPlaceName("c");
    places.Insert(1)->SetPlaceName("b");
    places.Insert(0)->SetPlaceName("first");
    EXPECT_THAT(CaptionsOf(places), ElementsAre("first", "a", "b", "c"));
    EXPECT_THROW(places.GetItem(4), EListError);
    EXPECT_THROW(places.Insert(5), EListError);
}

TEST(Places, SettingAnItemCopies) {
    TKxPlacesBarOptions options;
    AddPlace(options.Places(), "old");
    TKxPlace source(nullptr);
    Fill(source);
    options.Places().SetItem(0, &source);
    EXPECT_EQ(options.Places()[0].PlacePath(), "D:\\Drawings");
    EXPECT_EQ(options.Places().Count(), 1);
}

TEST(PlaceViaName, FindsASpecialFolderWhateverItsName) {
    TKxPlacesBarOptions options;
    TKxPlaces& places = options.Places();
    AddPlace(places, "Personal");
    AddPlace(places, "x").SetPlaceSpecPath(ftDesktop);
    AddPlace(places, "y").SetPlaceSpecPath(ftPersonal);
    AddPlace(places, "z").SetPlaceSpecPath(ftPersonal);
    EXPECT_EQ(places.PlaceViaName("Personal", ftPersonal), &places[2]) << "the first one";
    EXPECT_EQ(places.PlaceViaName("", ftDesktop), &places[1]);
    EXPECT_EQ(places.PlaceViaName("x", ftDrives), nullptr);
}

TEST(PlaceViaName, FindsAPathByItsCaptionInThatLetterCase) {
    TKxPlacesBarOptions options;
    TKxPlaces& places = options.Places();
    AddPlace(places, "Work").SetPlaceSpecPath(ftDesktop);
    AddPlace(places, "work");
    AddPlace(places, "Work");
    AddPlace(places, "Work");
    EXPECT_EQ(places.PlaceViaName("Work", ftNone), &places[2]) << "no special folder, the exact case, the first one";
    EXPECT_EQ(places.PlaceViaName("WORK", ftNone), nullptr);
    TKxPlace& derived = AddPlace(places, "hidden", "D:\\Letters");
    derived.SetAutoCaption(true);
    EXPECT_EQ(places.PlaceViaName("Letters", ftNone), &derived);
    EXPECT_EQ(places.PlaceViaName("hidden", ftNone), nullptr) << "the caption counts";
    EXPECT_EQ(places.PlaceViaName("", ftNone), nullptr);
}

// --- Where a place leads to

class PlacePidl : public testing::Test {
protected:
    PlacePidl() { SHGetDesktopFolder(FDesktop.put()); }

    unique_pidl PidlOf(const TKxPlace& place) const { return place.GetPlacePidl(*FDesktop.get()); }
    bool LeadTheSame(const unique_pidl& a, const unique_pidl& b) const {
        return a && b && HRESULT_CODE(FDesktop.get()->CompareIDs(0, a.get(), b.get())) == 0;
    }

    unique_com<IShellFolder> FDesktop;
    TTempFolder FFolder;
};

TEST_F(PlacePidl, OfTheFourSpecialFoldersIsTheShells) {
    TKxPlace place(nullptr);
    place.SetPlacePath(FFolder.Path());
    place.SetPlaceRegPath("Fonts");
    const std::vector<std::pair<TKxSpecShellFolder, int>> cases = {{ftDesktop, CSIDL_DESKTOP},
                                                                   {ftDrives, CSIDL_DRIVES},
                                                                   {ftFavorites, CSIDL_FAVORITES},
                                                                   {ftPersonal, CSIDL_PERSONAL}};
    for (const auto& [folder, id] : cases) {
        place.SetPlaceSpecPath(folder);
        unique_pidl expected;
        ASSERT_EQ(SHGetSpecialFolderLocation(nullptr, id, reinterpret_cast<LPITEMIDLIST*>(expected.put())), S_OK);
        EXPECT_TRUE(LeadTheSame(PidlOf(place), expected)) << KxTypeInfo(folder).NameOf(folder);
    }
}

TEST_F(PlacePidl, OfAnyOtherSpecialFolderIsThatOfThePath) {
    TKxPlace place(nullptr);
    place.SetPlacePath(FFolder.Path());
    const unique_pidl expected = CreatePIDLFromPath(FFolder.Path());
    for (const TKxSpecShellFolder folder : {ftNone, ftRecent, ftFonts, ftTemplates}) {
        place.SetPlaceSpecPath(folder);
        EXPECT_TRUE(LeadTheSame(PidlOf(place), expected)) << KxTypeInfo(folder).NameOf(folder);
    }
}

TEST_F(PlacePidl, OfARegistryReferenceIsThatOfTheReferredPath) {
    TKxPlace place(nullptr);
    place.SetPlacePath(FFolder.Path());
    place.SetPlaceRegPath("Fonts");
    TRegistry shellFolders;
    ASSERT_TRUE(shellFolders.OpenKeyReadOnly(R"(\Software\Microsoft\Windows\CurrentVersion\Explorer\Shell Folders)"));
    const std::string fonts = shellFolders.ReadString("Fonts");
    ASSERT_NE(fonts, "");
    EXPECT_TRUE(LeadTheSame(PidlOf(place), CreatePIDLFromPath(fonts)));
}

TEST_F(PlacePidl, OfADeadPathIsNone) {
    TKxPlace place(nullptr);
    for (const std::string& path : {FFolder.Path("not there"), std::string("\\\\no-server\\share"),
                                    "C:\\" + std::string(0x10000, 'x'), std::string("http://nowhere")}) {
        place.SetPlacePath(path);
        EXPECT_FALSE(PidlOf(place)) << path.substr(0, 60);
    }
    place.SetPlacePath(FFolder.Path());
    EXPECT_TRUE(PidlOf(place));
    RemoveDirectoryA(FFolder.Path().c_str());
    EXPECT_FALSE(PidlOf(place)) << "a folder that is gone meanwhile";
}

// --- TKxPlacesBarOptions

TEST(PlacesBarOptions, NewOnes) {
    const TKxPlacesBarOptions options;
    EXPECT_TRUE(options.Visible());
    EXPECT_EQ(options.RegistryKey(), "");
    EXPECT_TRUE(options.AllowEdit());
    EXPECT_TRUE(options.AllowDelete());
    EXPECT_TRUE(options.AllowDrop());
    EXPECT_TRUE(options.AutoScroll());
    EXPECT_EQ(options.Places().Count(), 0);
    EXPECT_EQ(options.BorderStyle(), bsNone);
    EXPECT_TRUE(options.Native());
    EXPECT_EQ(options.Dlg(), nullptr);
}

TEST(PlacesBarOptions, TheNamesOfTheFoldersOnOffer) {
    EXPECT_THAT(KxPlaceFolderNames, ElementsAre(std::string("CSIDL_DESKTOP"), std::string("CSIDL_DRIVES"),
                                                std::string("CSIDL_PERSONAL"), std::string("CSIDL_FAVORITES")));
}

TEST(PlacesBarOptions, SettingThePlacesCopiesThem) {
    TKxPlacesBarOptions source;
    AddPlace(source.Places(), "one", "C:\\1");
    AddPlace(source.Places(), "two", "C:\\2");
    TKxPlacesBarOptions options;
    AddPlace(options.Places(), "old");
    options.SetPlaces(source.Places());
    source.Places()[0].SetPlaceName("changed");
    EXPECT_THAT(CaptionsOf(options.Places()), ElementsAre("one", "two"));
    EXPECT_EQ(options.Places()[1].PlacePath(), "C:\\2");
    options.SetPlaces(options.Places());
    EXPECT_EQ(options.Places().Count(), 2) << "to themselves";
}

/// What a dialog does with the options.
class TDialogWithPlaces : public TComponent {
    KX_CLASS()

    explicit TDialogWithPlaces(TComponent* owner = nullptr) : TComponent(owner) { FPlaceOptions.SetDlg(this); }

    TKxPlacesBarOptions& PlacesBar() { return FPlaceOptions; }

private:
    TKxPlacesBarOptions FPlaceOptions;
};

const TClass& TDialogWithPlaces::StaticClass() {
    static const TClassBuilder<TDialogWithPlaces> cls("TDialogWithPlaces", TComponent::StaticClass(), [](auto& c) {
        c.Creatable();
        c.SubObject("PlacesBar", &TDialogWithPlaces::PlacesBar, nullptr);
    });
    return cls.Class();
}

TEST(PlacesBarOptions, TravelWithAFormFile) {
    TDialogWithPlaces dialog;
    dialog.SetName("Dialog");
    EXPECT_EQ(dialog.PlacesBar().GetOwner(), &dialog);
    dialog.PlacesBar().SetRegistryKey("Software\\Acme\\Places");
    dialog.PlacesBar().SetNative(false);
    dialog.PlacesBar().SetBorderStyle(bsSingle);
    Fill(*dialog.PlacesBar().Places().Add());
    dialog.PlacesBar().Places().Add();
    const std::string text = FormTextOf(dialog);
    EXPECT_EQ(text, "object Dialog: TDialogWithPlaces\r\n"
                    "  PlacesBar.RegistryKey = 'Software\\Acme\\Places'\r\n"
                    "  PlacesBar.Places = <\r\n"
                    "    item\r\n"
                    "      PlaceName = 'Favorites'\r\n"
                    "      PlacePath = 'D:\\Drawings'\r\n"
                    "      PlaceRegPath = '\\Software\\Acme\\Dirs\\Data'\r\n"
                    "      PlaceSpecPath = ftFavorites\r\n"
                    "      PlaceDesc = 'All drawings'\r\n"
                    "      PlaceIconDll = 'shell32.dll'\r\n"
                    "      PlaceIcon = 3\r\n"
                    "      PlaceHotIcon = -4\r\n"
                    "      AutoCaption = True\r\n"
                    "    end\r\n"
                    "    item\r\n"
                    "      PlaceSpecPath = ftNone\r\n"
                    "      PlaceIcon = 0\r\n"
                    "      PlaceHotIcon = 0\r\n"
                    "      AutoCaption = False\r\n"
                    "    end>\r\n"
                    "  PlacesBar.BorderStyle = bsSingle\r\n"
                    "  PlacesBar.Native = False\r\n"
                    "end\r\n");
    TDialogWithPlaces read;
    ReadFormOver(read, text);
    EXPECT_EQ(read.PlacesBar().RegistryKey(), "Software\\Acme\\Places");
    EXPECT_FALSE(read.PlacesBar().Native());
    ASSERT_EQ(read.PlacesBar().Places().Count(), 2);
    EXPECT_EQ(read.PlacesBar().Places()[0].PlaceHotIcon(), -4);
    EXPECT_EQ(read.PlacesBar().Places()[0].PlaceSpecPath(), ftFavorites);
}

} // namespace
} // namespace kx::test
