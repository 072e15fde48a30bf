// SPDX-License-Identifier: MIT
// What the user does to the places bar inside a system dialog that is shown.

#include "OpenDialogTest.h"

#include "kx/opensave/KxSaveDlg.h"
#include "kx/places/KxAddPlaceForm.h"
#include "tests/support/Drop.h"

#include <shlobj.h>

namespace kx {
namespace {

using namespace test;

/// The properties form that is shown and waits for the user; null when there is none.
TKxAddPlaceFrm* Properties() {
    for (int i = 0; i < Screen().FormCount(); ++i) {
        auto* const form = dynamic_cast<TKxAddPlaceFrm*>(Screen().Forms(i));
        if (form && form->Visible() && IsWindowEnabled(form->WindowHandle())) {
            return form;
        }
    }
    return nullptr;
}

TStep PressInProperties(const std::string& caption, const TAction& look) {
    return {"the properties of " + caption + " are shown",
            [caption] { return Properties() && Properties()->eShort->Text() == caption; },
            [look] {
                look();
                Click(Properties()->Button1->Handle());
            }};
}

class OpenDialogBar : public TOpenDialogTest {
protected:
    OpenDialogBar() { ShowPlaces(); }
    ~OpenDialogBar() override {
        for (int i = Application().ComponentCount() - 1; i >= 0; --i) { // the bar leaves its properties forms
            if (auto* const form = dynamic_cast<TKxAddPlaceFrm*>(Application().Components(i))) {
                form->Free();
            }
        }
    }

    TPoint Middle(int index) const { return PlaceButton(index).ClientToScreen({40, 20}); }
    /// Opens the menu of a place and chooses an item by its position.
    std::vector<TStep> ChooseFromMenu(int index, int item) {
        return {Perform("the menu of a place", [this, index] { ClickAt(Middle(index), mbRight); }),
                {"the menu is open", [] { return ShownMenu() != nullptr; },
                 [item] {
                     for (int i = 0; i <= item; ++i) {
                         PressKey(VK_DOWN);
                     }
                     PressKey(VK_RETURN);
                 }}};
    }
};

TEST_F(OpenDialogBar, ADroppedFolderBecomesAPlaceThatOpens) {
    AddPlace("Folder", Folder.Path());
    HWND target = nullptr;
    RunDialog(Dialog,
              [&] {
                  target = DropTargetAt(Middle(0));
                  ASSERT_EQ(target, Dialog.PlacesForm()->WindowHandle());
                  DropOn(target, {Folder.Path("inner")});
              },
              {PressInProperties("inner", [&] { EXPECT_FALSE(IsWindowEnabled(Dialog.DlgHandle())); }),
               {"the place is on the bar", [&] { return ShownPlaces().size() == 2; },
                [&] {
                    EXPECT_THAT(ShownPlaces(), ElementsAre("Folder", "inner"));
                    EXPECT_TRUE(IsWindowEnabled(Dialog.DlgHandle()));
                    ClickPlace(1);
                }},
               Await("it opens", FolderIs(Dialog, Folder.Path("inner"))),
               Cancel(Dialog)});
    EXPECT_EQ(Dialog.PlacesBar().Places()[1].PlacePath(), Folder.Path("inner"));
}

TEST_F(OpenDialogBar, BelowTheButtonsTheBarTakesDropsAsWell) {
    AddPlace("Folder", Folder.Path());
    Look(Dialog, [&] {
        const TRect bar = ScreenRectOf(Dialog.PlacesForm()->WindowHandle());
        const TPoint below{(bar.Left + bar.Right) / 2, bar.Bottom - 10};
        EXPECT_EQ(DropTargetAt(below), Dialog.PlacesForm()->WindowHandle());
    });
    Dialog.PlacesBar().SetAllowDrop(false);
    Look(Dialog, [&] { EXPECT_NE(DropTargetAt(Middle(0)), Dialog.PlacesForm()->WindowHandle()); });
}

TEST_F(OpenDialogBar, APlaceIsDeletedByItsMenu) {
    AddPlace("1", Folder.Path("inner"));
    AddPlace("2", Folder.Path());
    std::vector<TStep> steps = ChooseFromMenu(0, 0);
    steps.push_back(AnswerBox(IDYES));
    steps.push_back({"it has gone", [&] { return ShownPlaces().size() == 1; },
                     [&] {
                         EXPECT_THAT(ShownPlaces(), ElementsAre("2"));
                         EXPECT_TRUE(IsWindowEnabled(Dialog.DlgHandle()));
                     }});
    steps.push_back(Cancel(Dialog));
    RunDialog(Dialog, std::move(steps));
    EXPECT_EQ(Dialog.PlacesBar().Places().Count(), 1);
}

TEST_F(OpenDialogBar, APlacesPropertiesAreChangedByItsMenu) {
    AddPlace("1", Folder.Path("inner"));
    AddPlace("2", Folder.Path());
    std::vector<TStep> steps = ChooseFromMenu(0, 1);
    steps.push_back(PressInProperties("1", [] { Properties()->eShort->SetText("changed"); }));
    steps.push_back({"it is changed", [&] { return ShownPlaces().front() == "changed"; }, [&] { ClickPlace(0); }});
    steps.push_back(Await("it opens as before", FolderIs(Dialog, Folder.Path("inner"))));
    steps.push_back(Cancel(Dialog));
    RunDialog(Dialog, std::move(steps));
    EXPECT_EQ(Dialog.PlacesBar().Places()[0].PlaceName(), "changed");
}

TEST_F(OpenDialogBar, WhereNothingMayBeDeletedTheMenuDoesNotAndPlacesOpen) {
    AddPlace("1", Folder.Path("inner"));
    Dialog.PlacesBar().SetAllowDelete(false);
    std::vector<TStep> steps = {Perform("the menu of a place", [&] { ClickAt(Middle(0), mbRight); }),
                                {"the menu is open", [] { return ShownMenu() != nullptr; },
                                 [] {
                                     const auto menu =
                                         reinterpret_cast<HMENU>(SendMessageA(ShownMenu(), 0x1E1, 0, 0)); // MN_GETHMENU
                                     EXPECT_TRUE(GetMenuState(menu, 0, MF_BYPOSITION) & (MF_GRAYED | MF_DISABLED));
                                     EXPECT_FALSE(GetMenuState(menu, 1, MF_BYPOSITION) & (MF_GRAYED | MF_DISABLED));
                                     PressKey(VK_ESCAPE);
                                 }},
                                {"the menu has closed", [] { return ShownMenu() == nullptr; }, [&] { ClickPlace(0); }},
                                Await("the place opens", FolderIs(Dialog, Folder.Path("inner"))),
                                Cancel(Dialog)};
    RunDialog(Dialog, std::move(steps));
    EXPECT_EQ(Dialog.PlacesBar().Places().Count(), 1);
}

// --- In a save dialog

class SaveDialogBar : public TFileDlgTest {
protected:
    SaveDialogBar() { Dialog.PlacesBar().SetNative(false); }

    TKxPlace& Add(const std::string& path, TKxSpecShellFolder folder = ftNone) {
        TKxPlace& place = *Dialog.PlacesBar().Places().Add();
        place.SetPlaceName("place");
        place.SetPlacePath(path);
        place.SetPlaceSpecPath(folder);
        return place;
    }
    TStep ClickPlace(int index) {
        return Perform("a click on a place", [this, index] {
            ClickAt(Dialog.PlacesForm()->ToolBar1->Buttons(index)->ClientToScreen({40, 20}));
        });
    }

    TKxSaveDialog& Dialog = NewDialog<TKxSaveDialog>();
};

TEST_F(SaveDialogBar, AClickOpensTheFolderWhereTheTypedNameIsSaved) {
    Add(Folder.Path());
    Add(Folder.Path("inner"));
    EXPECT_TRUE(RunDialog(Dialog, [&] { Dialog.SetFilenameText("new.txt"); },
                          {ClickPlace(1),
                           {"the folder is shown", FolderIs(Dialog, Folder.Path("inner")),
                            [&] {
                                EXPECT_EQ(Dialog.FilenameText(), "new.txt");
                                EXPECT_TRUE(Dialog.PlacesForm()->ToolBar1->Buttons(1)->Down());
                            }},
                           Press(Dialog, IDOK)}));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("inner\\new.txt"));
}

TEST_F(SaveDialogBar, AFilesPlaceNamesTheFile) {
    Add(Folder.Path("inner\\deep.txt"));
    RunDialog(Dialog,
              {ClickPlace(0), Await("the folder is shown", FolderIs(Dialog, Folder.Path("inner"))),
               Await("the file is named", [&] { return Dialog.FilenameText() == "deep.txt"; }), Cancel(Dialog)});
}

TEST_F(SaveDialogBar, TheDesktopOpens) {
    Add("", ftDesktop);
    char desktop[MAX_PATH] = {};
    SHGetSpecialFolderPathA(nullptr, desktop, CSIDL_DESKTOPDIRECTORY, TRUE);
    RunDialog(Dialog, {ClickPlace(0), Await("it is shown", FolderIs(Dialog, desktop)), Cancel(Dialog)});
}

// --- A "look in" box that does not find its entries

TEST_F(OpenDialogBar, TheComputerOpensWhereTheBoxOfFoldersKeepsNoTexts) {
    AddPlace("Computer").SetPlaceSpecPath(ftDrives);
    AddPlace("Desktop").SetPlaceSpecPath(ftDesktop);
    WNDPROC before = nullptr;
    static WNDPROC original;
    struct TBox { // a lambda has not the calling convention of the system
        static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
            const bool finds = message == CB_SELECTSTRING || message == CB_FINDSTRING || message == CB_FINDSTRINGEXACT;
            return finds ? CB_ERR : CallWindowProcA(original, window, message, wParam, lParam);
        }
    };
    HWND combo = nullptr;
    RunDialog(
        Dialog,
        [&] {
            combo = ItemOf(Dialog, KxFolderComboId);
            before = reinterpret_cast<WNDPROC>(
                SetWindowLongPtrA(combo, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(TBox::Proc)));
            original = before;
            ClickPlace(0);
        },
        {{"it is shown", [&] { return Dialog.SelectedFolder().starts_with("::{"); }, [&] { ClickPlace(1); }},
         {"the desktop is shown", [&] { return FolderOf(Dialog.DlgHandle()).find("Desktop") != std::string::npos; },
          [&] { SetWindowLongPtrA(combo, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(before)); }},
         Cancel(Dialog)});
}

} // namespace
} // namespace kx
