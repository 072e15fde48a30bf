// SPDX-License-Identifier: MIT
// The places bar in a running dialog.

#include "PlacesBarFixture.h"

#include "kx/opensave/KxOpenLite.h"
#include "tests/support/DialogTest.h"
#include "tests/support/TestKey.h"

#include <shlobj.h>

// The places bar in the system's Open dialog, navigated with the mouse.

namespace kx::test {
namespace {

/// An Open dialog with the bar in place of the system's.
class PlacesBarDialog : public TDialogTest, protected IKxPlacesHost {
protected:
    PlacesBarDialog() {
        Inner = Folder.AddFolder("inner");
        File = Folder.AddFile("inner\\b.txt");
        Folder.AddFile("one.txt");
        Dialog.SetInitialDir(Folder.Path());
        Dialog.SetOnShow([this](TObject*) { ShowBar(); });
        MoveMouse({5, 5});
    }

    HWND GetCommonDialogHandle() const override { return Dialog.DlgHandle(); }
    std::string GetSelPath() const override { return Dialog.SelectedFolder(); }
    void SetSelPath(const std::string& path) override { Dialog.SetSelectedFolder(path); }
    void SetFNameText(const std::string& text) override { Dialog.SetFilenameText(text); }

    void ShowBar() {
        if (const HWND native = GetDlgItem(Dialog.DlgHandle(), 1184)) {
            ShowWindow(native, SW_HIDE);
        }
        Frm.reset(NewForm<TKxPlacesBarFrm>(nullptr));
        Frm->SetParentWindow(Dialog.DlgHandle());
        Frm->SetDialog(this);
        Frm->SetPlaces(&Options.Places());
        Frm->SetBounds(4, 33, 91, 220);
        Frm->SetVisible(true);
        Options.Places().UpdatePlacesOn(*Frm->ToolBar1);
    }
    TKxPlace& Add(const std::string& path, TKxSpecShellFolder folder = ftNone) {
        TKxPlace& place = AddPlace(Options.Places(), "Place", path);
        place.SetPlaceSpecPath(folder);
        place.SetPlaceIconDll("Shell32.dll");
        place.SetPlaceIcon(3);
        place.SetPlaceHotIcon(4);
        return place;
    }
    TStep ClickPlace(int index = 0) {
        return {"the bar is shown", Shown(Dialog), [this, index] {
                    ClickAt(Frm->ToolBar1->Buttons(index)->ClientToScreen({40, 20}));
                }};
    }
    TStep IsDown(int index = 0, TAction look = {}) {
        return {"the button is down", [this, index] { return Frm->ToolBar1->Buttons(index)->Down(); }, std::move(look)};
    }
    /// A click on the place shows this folder.
    void ExpectToShow(const std::string& folder) {
        RunDialog(Dialog, {ClickPlace(), Await("the folder is shown", FolderIs(Dialog, folder)), Cancel(Dialog)});
    }
    std::string LookIn() const {
        const HWND combo = GetDlgItem(Dialog.DlgHandle(), 1137);
        const auto selected = static_cast<WPARAM>(SendMessageA(combo, CB_GETCURSEL, 0, 0));
        char text[MAX_PATH] = "";
        SendMessageA(combo, CB_GETLBTEXT, selected, reinterpret_cast<LPARAM>(text));
        return text;
    }
    static std::string PathOf(int csidl) {
        unique_pidl pidl;
        SHGetSpecialFolderLocation(nullptr, csidl, reinterpret_cast<LPITEMIDLIST*>(pidl.put()));
        return ExcludeTrailingPathDelimiter(GetPathFromPIDL(pidl.get()));
    }

    TTempFolder Folder{"bar"};
    std::string Inner;
    std::string File;
    TKxOpenLiteDialog Dialog{Owner.get()};
    TKxPlacesBarOptions Options;
    std::unique_ptr<TKxPlacesBarFrm, TFreeDeleter> Frm;
};

TEST_F(PlacesBarDialog, AClickOnAFolderOpensIt) {
    Add(Folder.Path());
    Add(Inner);
    RunDialog(Dialog, {ClickPlace(1), Await("the folder is shown", FolderIs(Dialog, Inner)),
                       IsDown(1,
                              [&] {
                                  EXPECT_THAT(ItemTexts(FileListOf(Dialog.DlgHandle())), ElementsAre("b.txt"));
                                  Screenshot("places-bar-dialog", Dialog.DlgHandle());
                              }),
                       ClickPlace(0), Await("and back", FolderIs(Dialog, Folder.Path())), Cancel(Dialog)});
}

TEST_F(PlacesBarDialog, AClickOnAFileOpensItsFolderAndNamesIt) {
    Add(File);
    RunDialog(Dialog, {ClickPlace(), Await("the folder is shown", FolderIs(Dialog, Inner)),
                       Await("the file is named", [&] { return Dialog.FilenameText() == "b.txt"; }), Cancel(Dialog)});
}

TEST_F(PlacesBarDialog, AClickOnAFileAndOkTakeTheFile) {
    Add(File);
    EXPECT_TRUE(RunDialog(Dialog, {ClickPlace(), Await("it is named", [&] { return Dialog.FilenameText() == "b.txt"; }),
                                   Press(Dialog, IDOK)}));
    EXPECT_EQ(Dialog.FileName(), File);
}

TEST_F(PlacesBarDialog, AClickOnAPathThatIsNotThereDoesNothing) {
    Add(Folder.Path("missing"));
    Add("");
    Add("Q:\\");
    Add("\\\\10.255.255.1\\share");
    const auto unchanged = [&] {
        EXPECT_EQ(Dialog.SelectedFolder(), Folder.Path());
        EXPECT_EQ(Dialog.FilenameText(), "unfinished");
        EXPECT_EQ(ShownMessageBox(), nullptr);
    };
    RunDialog(Dialog, [&] { Dialog.SetFilenameText("unfinished"); },
              {ClickPlace(0), IsDown(0, unchanged), ClickPlace(1), IsDown(1, unchanged), ClickPlace(2),
               IsDown(2, unchanged), ClickPlace(3), IsDown(3, unchanged), Cancel(Dialog)});
}

TEST_F(PlacesBarDialog, AClickOnTheDesktopOpensIt) {
    Add("", ftDesktop);
    RunDialog(Dialog, {ClickPlace(), Await("the desktop is shown", FolderIs(Dialog, PathOf(CSIDL_DESKTOPDIRECTORY))),
                       IsDown(0, [&] { EXPECT_EQ(LookIn(), GetSpecFolderName(ftDesktop)); }), Cancel(Dialog)});
}

TEST_F(PlacesBarDialog, AClickOnTheComputerOpensIt) {
    Add("", ftDrives);
    const auto listsDrives = [&] { return FindItem(FileListOf(Dialog.DlgHandle()), " (C:)") >= 0; };
    RunDialog(Dialog, {ClickPlace(), Await("the drives are listed", listsDrives),
                       IsDown(0, [&] { EXPECT_EQ(LookIn(), GetSpecFolderName(ftDrives)); }), Cancel(Dialog)});
}

TEST_F(PlacesBarDialog, AClickOnTheDocumentsOpensThem) {
    Add("", ftPersonal);
    ExpectToShow(PathOf(CSIDL_PERSONAL));
}

TEST_F(PlacesBarDialog, AClickOnTheFavoritesOpensThem) {
    Add("", ftFavorites);
    ExpectToShow(PathOf(CSIDL_FAVORITES));
}

TEST_F(PlacesBarDialog, AClickOnTheRecentFilesOpensTheFavorites) {
    Add(Inner, ftRecent);
    ExpectToShow(PathOf(CSIDL_FAVORITES));
}

TEST_F(PlacesBarDialog, ARegistryReferenceIsFollowed) {
    const TTestKey key;
    {
        TRegistry registry;
        ASSERT_TRUE(registry.OpenKey(key.Path(), true));
        registry.WriteString("Dir", Inner);
    }
    Add(Folder.Path()).SetPlaceRegPath("\\" + key.Path() + "\\Dir");
    ExpectToShow(Inner);
}

TEST_F(PlacesBarDialog, AReferenceToTheDocumentsOpensThem) {
    Add(Folder.Path()).SetPlaceRegPath("Personal");
    ExpectToShow(PathOf(CSIDL_PERSONAL));
}

TEST_F(PlacesBarDialog, DraggingReordersInsideTheDialogWithoutNavigating) {
    Add(Inner).SetPlaceName("1");
    Add(Inner).SetPlaceName("2");
    Add(Inner).SetPlaceName("3");
    const auto middle = [&](int index) { return Frm->ToolBar1->Buttons(index)->ClientToScreen({40, 20}); };
    RunDialog(
        Dialog,
        [&] {
            PressAt(middle(2));
            MoveMouse(middle(1));
        },
        {{"it is being dragged", [&] { return Frm->ToolBar1->Buttons(2)->Dragging(); }, [&] { MoveMouse(middle(0)); }},
         {"it is over the first", [] { return MouseInputTaken(); }, [&] { ReleaseAt(middle(0)); }},
         {"it has moved", [&] { return Options.Places()[0].PlaceName() == "3"; },
          [&] {
              EXPECT_THAT(CaptionsOf(Options.Places()), ElementsAre("3", "1", "2"));
              EXPECT_EQ(Dialog.SelectedFolder(), Folder.Path());
          }},
         Cancel(Dialog)});
}

} // namespace
} // namespace kx::test
