// SPDX-License-Identifier: MIT
// The places bar in the open dialog.

#include "OpenDialogTest.h"

#include "kx/win/Dpi.h"
#include "kx/win/Registry.h"
#include "tests/support/TestKey.h"
#include "tests/support/UnevenFrames.h"

#include <shlobj.h>

namespace kx {
namespace {

using namespace test;

std::string SpecialFolder(int csidl) {
    char path[MAX_PATH] = {};
    SHGetSpecialFolderPathA(nullptr, path, csidl, TRUE);
    return path;
}

class OpenDialogPlaces : public TOpenDialogTest {
protected:
    OpenDialogPlaces() { ShowPlaces(); }

    TKxPlace& AddSpecial(TKxSpecShellFolder folder) {
        TKxPlace& place = AddPlace("special");
        place.SetPlaceSpecPath(folder);
        return place;
    }
    void KeepPlaces() { Dialog.PlacesBar().SetRegistryKey(Key.Path()); }
    const TKxPlacesBarFrm& Bar() const { return *Dialog.PlacesForm(); }

    TTestKey Key;
};

// --- Which bar

TEST_F(OpenDialogPlaces, TheLibrarysBarStandsInForTheSystems) {
    AddPlace("a");
    Look(Dialog, [&] {
        EXPECT_EQ(PlacesBarOf(Dialog), nullptr);
        ASSERT_NE(Dialog.PlacesForm(), nullptr);
        EXPECT_TRUE(IsWindowVisible(Bar().WindowHandle()));
        EXPECT_EQ(GetParent(Bar().WindowHandle()), Dialog.DlgHandle());
        EXPECT_EQ(Dialog.PlacesBar().PlacesBar(), Bar().ToolBar1);
        EXPECT_THAT(ShownPlaces(), ElementsAre("a"));
    });
    EXPECT_EQ(Dialog.PlacesForm(), nullptr);
    EXPECT_EQ(Dialog.PlacesBar().PlacesBar(), nullptr);
}

TEST_F(OpenDialogPlaces, TheSystemsBarOnRequest) {
    AddPlace("a");
    Dialog.PlacesBar().SetNative(true);
    Dialog.SetFilter("Text|*.txt|All|*.*");
    EXPECT_TRUE(RunDialog(Dialog,
                          [&] {
                              EXPECT_TRUE(IsWindowVisible(PlacesBarOf(Dialog)));
                              EXPECT_EQ(Dialog.PlacesForm(), nullptr);
                              ChooseInCombo(ItemOf(Dialog, KxFileTypeId), 1, CBN_SELENDOK);
                          },
                          {EnterFileName(Dialog, "one.txt")}));
    EXPECT_EQ(Dialog.FilterIndex(), 2) << "the system's answers come back";
    EXPECT_EQ(Dialog.FileName(), Folder.Path("one.txt"));
}

TEST_F(OpenDialogPlaces, NoBarAtAll) {
    for (const bool native : {false, true}) {
        Dialog.PlacesBar().SetVisible(false);
        Dialog.PlacesBar().SetNative(native);
        Look(Dialog, [&] {
            EXPECT_EQ(PlacesBarOf(Dialog), nullptr);
            EXPECT_EQ(Dialog.PlacesForm(), nullptr);
            EXPECT_FALSE(Dialog.ShowCustomPlacesBar());
        });
    }
}

TEST_F(OpenDialogPlaces, TheBarHasItsRoom) {
    auto& bare = NewDialog<TKxOpenDialog>();
    bare.PlacesBar().SetVisible(false);
    bare.SetOptions({ofHideReadOnly});
    Dialog.SetOptions({ofHideReadOnly});
    TRect combo;
    TRect list;
    TRect outer;
    Look(bare, [&] {
        combo = RectIn(bare.DlgHandle(), ItemOf(bare, KxFolderComboId));
        list = RectIn(bare.DlgHandle(), ItemOf(bare, KxListPlaceholderId));
        outer = ScreenRectOf(bare.DlgHandle());
    });
    for (const bool border : {false, true}) {
        Dialog.PlacesBar().SetBorderStyle(border ? bsSingle : bsNone);
        const int barWidth = SystemLength(border ? 91 : 87);
        Look(Dialog, [&] {
            HWND window = Dialog.DlgHandle();
            const int moved = SystemLength(90) + GetSystemMetrics(SM_CYDLGFRAME);
            const TRect shown = RectIn(window, ItemOf(Dialog, KxFolderComboId));
            EXPECT_EQ(shown.Left, SystemLength(6) + moved);
            EXPECT_EQ(shown.Top, SystemLength(6));
            EXPECT_EQ(Width(shown), Width(combo) + SystemLength(45));
            const TRect label = RectIn(window, ItemOf(Dialog, KxFolderLabelId));
            EXPECT_EQ(label.Left, moved - SystemLength(80));
            EXPECT_EQ(label.Top, SystemLength(8));
            EXPECT_EQ(RectIn(window, ItemOf(Dialog, KxListPlaceholderId)).Left, list.Left + moved);
            EXPECT_EQ(Width(ScreenRectOf(window)), Width(outer) + barWidth);
            const TRect bar = RectIn(window, Bar().WindowHandle());
            EXPECT_EQ(bar.Left, SystemLength(4));
            EXPECT_EQ(bar.Top, SystemLength(33));
            EXPECT_EQ(Width(bar), barWidth);
            EXPECT_EQ(bar.Bottom, SystemLength(33) + RectIn(window, ItemOf(Dialog, KxFileTypeId)).Bottom -
                                      RectIn(window, ItemOf(Dialog, KxListPlaceholderId)).Top);
            EXPECT_EQ(Bar().Panel1->BorderStyle(), border ? bsSingle : bsNone);
            Screenshot(border ? "open_places_fixed_border" : "open_places_fixed", window);
            ExpectCleanLayout(Dialog);
        });
    }
}

TEST_F(OpenDialogPlaces, TheRoomForTheBarCountsTheHeightOfTheFrame) {
    const TUnevenFrames frames;
    Look(Dialog, [&] {
        EXPECT_EQ(RectIn(Dialog.DlgHandle(), ItemOf(Dialog, KxFolderComboId)).Left,
                  6 + 90 + TUnevenFrames::FrameHeight);
    });
}

TEST_F(OpenDialogPlaces, WhatTheUserMayDoIsSet) {
    const auto look = [&](bool allowed) {
        Look(Dialog, [&] {
            EXPECT_EQ(Bar().Changeplace1->Enabled(), allowed);
            EXPECT_EQ(Bar().Deleteplace1->Enabled(), allowed);
            EXPECT_EQ(Bar().AcceptFiles(), allowed);
            EXPECT_EQ((GetWindowLongPtrA(Bar().WindowHandle(), GWL_EXSTYLE) & WS_EX_ACCEPTFILES) != 0, allowed);
            EXPECT_EQ(Bar().ps1->AutoScroll(), allowed);
            // A scroller that scrolls under what is dragged takes the drops that the form is to get.
            EXPECT_EQ((GetWindowLongPtrA(Bar().ps1->WindowHandle(), GWL_STYLE) & PGS_DRAGNDROP) != 0, !allowed);
        });
    };
    look(true);
    Dialog.PlacesBar().SetAllowEdit(false);
    Dialog.PlacesBar().SetAllowDelete(false);
    Dialog.PlacesBar().SetAllowDrop(false);
    Dialog.PlacesBar().SetAutoScroll(false);
    look(false);
}

// --- Navigation

TEST_F(OpenDialogPlaces, AClickOpensTheFolderAndKeepsTheFileName) {
    AddPlace("Folder", Folder.Path());
    AddPlace("Inner", Folder.Path("inner"));
    RunDialog(Dialog,
              [&] {
                  Dialog.SetFilenameText("kept");
                  EXPECT_EQ(PlaceDown(), 0);
                  ClickPlace(1);
              },
              {{"its folder is shown", FolderIs(Dialog, Folder.Path("inner")),
                [&] {
                    EXPECT_EQ(Dialog.FilenameText(), "kept");
                    EXPECT_EQ(PlaceDown(), 1);
                    Screenshot("open_places", Dialog.DlgHandle());
                }},
               Cancel(Dialog)});
}

TEST_F(OpenDialogPlaces, AFilesPlaceOpensItsFolderAndNamesIt) {
    AddPlace("File", Folder.Path("inner\\deep.txt"));
    RunDialog(Dialog, [&] { ClickPlace(0); },
              {Await("the folder is shown", FolderIs(Dialog, Folder.Path("inner"))),
               Await("the file is named", [&] { return Dialog.FilenameText() == "deep.txt"; }), Cancel(Dialog)});
}

TEST_F(OpenDialogPlaces, ADeadPathDoesNothing) {
    AddPlace("Gone", Folder.Path("gone"));
    AddPlace("Share", "\\\\kx-no-such-server\\share");
    RunDialog(Dialog, [&] { ClickPlace(0); },
              {Await("it has arrived", MouseInputTaken),
               Perform("the folder stays", [&] { EXPECT_EQ(Dialog.SelectedFolder(), Folder.Path()); }),
               Cancel(Dialog)});
}

TEST_F(OpenDialogPlaces, TheDesktopAndTheComputerOpen) {
    AddSpecial(ftDesktop);
    AddSpecial(ftDrives);
    RunDialog(Dialog, [&] { ClickPlace(0); },
              {Await("it is shown", FolderIs(Dialog, SpecialFolder(CSIDL_DESKTOPDIRECTORY))),
               Await("its place is down", [&] { return PlaceDown() == 0; }),
               Perform("a click on the computer", [&] { ClickPlace(1); }),
               Await("it is shown", [&] { return Dialog.SelectedFolder().starts_with("::{"); }),
               Await("its place is down", [&] { return PlaceDown() == 1; }), Cancel(Dialog)});
}

TEST_F(OpenDialogPlaces, DocumentsOpenAndEveryOtherSpecialFolderIsTheFavorites) {
    AddSpecial(ftPersonal);
    AddSpecial(ftRecent);
    RunDialog(Dialog, [&] { ClickPlace(0); },
              {Await("they are shown", FolderIs(Dialog, SpecialFolder(CSIDL_PERSONAL))),
               Perform("a click on the recent files", [&] { ClickPlace(1); }),
               Await("the favorites are shown", FolderIs(Dialog, SpecialFolder(CSIDL_FAVORITES))), Cancel(Dialog)});
}

TEST_F(OpenDialogPlaces, ARegistryPlaceOpens) {
    AddPlace("Documents").SetPlaceRegPath("Personal");
    RunDialog(Dialog, [&] { ClickPlace(0); },
              {Await("it is shown", FolderIs(Dialog, SpecialFolder(CSIDL_PERSONAL))), Cancel(Dialog)});
}

TEST_F(OpenDialogPlaces, TheBarFollowsTheUser) {
    AddPlace("Folder", Folder.Path());
    AddPlace("Inner", Folder.Path("inner"));
    AddPlace("Inner again", Folder.Path("inner"));
    RunDialog(Dialog, {Await("the first folder's place is down", [&] { return PlaceDown() == 0; }),
                       Perform("the user types a folder", [&] { Dialog.SetSelectedFolder(Folder.Path("inner")); }),
                       Await("the first of its places is down", [&] { return PlaceDown() == 1; }),
                       Perform("back by the keyboard",
                               [&] {
                                   FocusList();
                                   PressKey(VK_BACK);
                               }),
                       Await("its place is down", [&] { return PlaceDown() == 0; }),
                       Perform("up to a folder without a place", [&] { PressToolButton(Dialog, 40961); }),
                       Await("none is down", [&] { return PlaceDown() == -1; }), Cancel(Dialog)});
}

TEST_F(OpenDialogPlaces, APlaceGivenByAnIdentifierIsDownInItsFolder) {
    AddPlace("Nowhere");
    AddPlace("Elsewhere", Folder.Path("inner"));
    AddPlace("Computer", "::{20D04FE0-3AEA-1069-A2D8-08002B30309D}");
    AddSpecial(ftDrives);
    RunDialog(Dialog, [&] { ClickPlace(3); },
              {Await("it is shown", [&] { return Dialog.SelectedFolder().starts_with("::{"); }),
               Await("the first of its places is down", [&] { return PlaceDown() == 2; }), Cancel(Dialog)});
}

// --- Keeping the places

TEST_F(OpenDialogPlaces, EditsComeBackFromTheRegistry) {
    KeepPlaces();
    AddPlace("a", "C:\\a");
    AddPlace("b", "C:\\b");
    Look(Dialog, [&] {
        Dialog.PlacesBar().Places()[0].SetPlaceDesc("changed");
        AddPlace("c", "C:\\c");
        Dialog.PlacesBar().Places().Delete(1);
    });
    auto& next = NewDialog<TKxOpenDialog>();
    next.PlacesBar().SetNative(false);
    next.PlacesBar().SetRegistryKey(Dialog.PlacesBar().RegistryKey());
    Look(next, [&] {
        const TKxPlaces& places = next.PlacesBar().Places();
        ASSERT_EQ(places.Count(), 2);
        EXPECT_EQ(places[0].PlaceDesc(), "changed");
        EXPECT_EQ(places[1].PlacePath(), "C:\\c");
        EXPECT_EQ(next.PlacesForm()->ToolBar1->ButtonCount(), 2);
    });
}

TEST_F(OpenDialogPlaces, PlacesAreNotSavedWithoutAKeyOrForTheSystemsBar) {
    KeepPlaces();
    AddPlace("a");
    Dialog.PlacesBar().SetNative(true);
    Look(Dialog);
    EXPECT_FALSE(TRegistry().KeyExists(Dialog.PlacesBar().RegistryKey()));
    Dialog.PlacesBar().SetNative(false);
    Dialog.PlacesBar().SetVisible(false);
    Look(Dialog);
    EXPECT_FALSE(TRegistry().KeyExists(Dialog.PlacesBar().RegistryKey()));
}

TEST_F(OpenDialogPlaces, ABrokenStoreIsReportedAndTheDialogComesAllTheSame) {
    KeepPlaces();
    TRegistry registry;
    ASSERT_TRUE(registry.OpenKey(Dialog.PlacesBar().RegistryKey() + "\\Place_0", true));
    registry.WriteString("Name", "broken");
    AddPlace("a");
    Look(Dialog, [&] {
        EXPECT_EQ(ShownPlaces().front(), "a");
        EXPECT_NE(Dialog.PlacesForm(), nullptr);
    });
    EXPECT_EQ(TakeExceptions().size(), 1u);
    ASSERT_TRUE(registry.OpenKeyReadOnly("\\" + Dialog.PlacesBar().RegistryKey() + "\\Place_0"));
    EXPECT_EQ(registry.ReadString("Name"), "broken") << "closing replaces nothing that could not be read";
}

TEST_F(OpenDialogPlaces, ABadIconIndexIsReportedAndTheBarComesAllTheSame) {
    AddPlace("a").SetPlaceIcon(-3);
    AddPlace("b");
    Look(Dialog, [&] {
        EXPECT_THAT(ShownPlaces(), ElementsAre("a", "b"));
        EXPECT_TRUE(IsWindowVisible(Bar().WindowHandle()));
    });
    EXPECT_EQ(TakeExceptions().size(), 1u);
}

TEST_F(OpenDialogPlaces, AVetoedDestructionTakesTheBarAlong) {
    AddPlace("a");
    Dialog.SetOnEventHooking([](TObject*, TMessage& m, bool& allow) { allow = m.Msg != WM_DESTROY; });
    Look(Dialog);
    EXPECT_EQ(Dialog.PlacesForm(), nullptr);
    Dialog.SetOnEventHooking({});
    Look(Dialog, [&] { ExpectCleanLayout(Dialog); });
}

} // namespace
} // namespace kx
