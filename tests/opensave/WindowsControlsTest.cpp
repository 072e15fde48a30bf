// SPDX-License-Identifier: MIT
// What the controls of Windows's file dialogs do and those of other systems do not.

#include "OpenDialogTest.h"

#include "kx/ui/controls/Menus.h"
#include "kx/win/Dpi.h"
#include "kx/win/Subclass.h"
#include "kx/win/System.h"

#include <commdlg.h>

namespace kx {
namespace {

using namespace test;

constexpr int OldNameEditId = 1152;

// --- The file name control

/// A dialog with the record of older programs, which has a plain edit for the name.
class TDialogWithEdit : public TKxOpenLiteDialog {
public:
    using TKxOpenLiteDialog::TKxOpenLiteDialog;

    bool Execute() override {
        const TRunning running = PrepareExecution();
        return DoExecute([](OPENFILENAMEA& record) {
            OPENFILENAMEA copy = record;
            copy.lStructSize = OPENFILENAME_SIZE_VERSION_400A;
            return GetOpenFileNameA(&copy) != FALSE;
        });
    }
};

class FileNameOnWindows : public TFileDlgTest {};

TEST_F(FileNameOnWindows, MayBeAPlainEdit) {
    auto& dialog = NewDialog<TDialogWithEdit>();
    std::vector<std::string> log;
    LogNavigation(dialog, dialog, log);
    EXPECT_TRUE(RunDialog(dialog, [&] {
        HWND edit = ItemOf(dialog, OldNameEditId);
        ASSERT_NE(edit, nullptr);
        ASSERT_EQ(ItemOf(dialog, 1148), nullptr);
        EXPECT_EQ(dialog.EditHandle(), edit);
        log.clear();
        dialog.SetFilenameText("set");
        EXPECT_EQ(TextOf(edit), "set");
        EXPECT_EQ(dialog.FilenameText(), "set");
        EXPECT_EQ(dialog.SelectedFiles(), "set");
        EXPECT_THAT(log, ElementsAre("change"));
        dialog.SetSelectedFolder(Folder.Path("inner"));
        EXPECT_EQ(dialog.SelectedFolder(), Folder.Path("inner"));
        EXPECT_EQ(TextOf(edit), "set");
        dialog.SetVisibleControls(dialog.VisibleControls() - TKxOpenDlgControls{dcFileName});
        EXPECT_FALSE(IsWindowVisible(edit));
        dialog.SetVisibleControls(KxAllOpenDlgControls);
        EXPECT_TRUE(IsWindowVisible(edit));
        log.clear();
        SetFocus(edit);
        SetWindowTextA(edit, "deep.txt");
        PressKey(VK_RETURN);
    }));
    EXPECT_THAT(log, ElementsAre("change", "enter?"));
    EXPECT_EQ(dialog.FileName(), Folder.Path("inner\\deep.txt"));
}

TEST_F(FileNameOnWindows, IsLeftWholeByAChangeOfTheFolder) {
    auto& dialog = NewDialog();
    Look(dialog, [&] {
        const std::string text = std::string(600, 'x') + ".txt";
        dialog.SetFilenameText(text);
        dialog.SetSelectedFolder(Folder.Path("inner"));
        EXPECT_EQ(dialog.SelectedFolder(), Folder.Path("inner"));
        EXPECT_EQ(dialog.FilenameText(), text);
        dialog.RefreshFileList();
        EXPECT_EQ(dialog.FilenameText(), text);
    });
}

// --- A dialog that is not the active window

class InactiveDialog : public TOpenDialogTest {
protected:
    /// Another window of the program is the active one, and the dialog's buttons take no clicks by message.
    void GoAway() {
        Other = MakeMarkedForm(clWhite, 100, 60);
        Other->Show();
        EnableWindow(Other->Handle(), TRUE);
        SetForegroundWindow(Other->Handle());
        SetFocus(Other->Handle());
        ASSERT_EQ(GetActiveWindow(), Other->Handle());
        for (TSubclass* button : {&Ok, &Cancel}) {
            button->SetHandler([button](TMessage& message) {
                if (message.Msg != BM_CLICK) {
                    button->CallPrevious(message);
                }
            });
        }
        Ok.Install(ItemOf(Dialog, IDOK));
        Cancel.Install(ItemOf(Dialog, IDCANCEL));
    }

    TFormPtr Other;
    TSubclass Ok;
    TSubclass Cancel;
};

TEST_F(InactiveDialog, OpensFoldersAndTakesFiles) {
    EXPECT_TRUE(RunDialog(Dialog, [&] {
        GoAway();
        Dialog.SetSelectedFolder(Folder.Path("inner"));
        EXPECT_EQ(Dialog.SelectedFolder(), Folder.Path("inner"));
        EXPECT_EQ(GetFocus(), Other->Handle()) << "as it was";
        Dialog.SetFilenameText("deep.txt");
        Dialog.CloseDialog(mrOk);
    }));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("inner\\deep.txt"));
}

TEST_F(InactiveDialog, IsCancelled) {
    Dialog.SetFileName("before.txt");
    EXPECT_FALSE(RunDialog(Dialog, [&] {
        GoAway();
        Dialog.CloseDialog(mrCancel);
    }));
    EXPECT_EQ(Dialog.FileName(), "before.txt");
}

TEST_F(InactiveDialog, ADisabledButtonIsNotPressed) {
    Look(Dialog, [&] {
        EnableWindow(ItemOf(Dialog, IDOK), FALSE);
        Dialog.SetFilenameText("one.txt");
        Dialog.CloseDialog(mrOk);
        EXPECT_TRUE(IsWindowVisible(Dialog.DlgHandle()));
    });
    EXPECT_EQ(Dialog.FileName(), "");
}

TEST_F(InactiveDialog, AHiddenOkButtonDoesNotKeepTheFocus) {
    TPopupMenu menu;
    menu.Items().Add(new TMenuItem(&menu));
    Dialog.SetOkButtonMenu(&menu);
    Dialog.SetOnFilenameEntering([](TObject*, bool& allow) { allow = false; });
    Look(Dialog, [&] {
        ASSERT_FALSE(IsWindowVisible(ItemOf(Dialog, IDOK)));
        SetFocus(List());
        Dialog.CloseDialog(mrOk);
        EXPECT_EQ(GetFocus(), List());
    });
}

// --- Reading the folder again

class RefreshOnWindows : public TOpenDialogTest {
protected:
    /// What a refreshing sends: "ok" with an empty name to the dialog, "F5" to the list.
    std::vector<std::string> Refreshing() {
        std::vector<std::string> sent;
        Look(Dialog, [&] {
            Dialog.SetFilenameText("stays");
            TSubclass list;
            list.SetHandler([&](TMessage& message) {
                if (message.Msg == WM_KEYDOWN && message.WParam == VK_F5) {
                    sent.emplace_back("F5");
                }
                list.CallPrevious(message);
            });
            list.Install(List());
            Dialog.SetOnEventHook([&](TMessage& message) {
                if (message.Msg == WM_COMMAND && message.WParamLo() == IDOK && Dialog.FilenameText().empty()) {
                    sent.emplace_back("ok");
                }
            });
            Dialog.RefreshFileList();
            Dialog.SetOnEventHook(nullptr);
            EXPECT_EQ(Dialog.FilenameText(), "stays");
        });
        return sent;
    }
};

TEST_F(RefreshOnWindows, AnEmptyNameIsEnoughThere) {
    const TAssumedSystem windows({.Wine = false});
    EXPECT_THAT(Refreshing(), ElementsAre("ok"));
}

TEST_F(RefreshOnWindows, ElsewhereItTakesTheKey) { EXPECT_THAT(Refreshing(), ElementsAre("ok", "F5")); }

// --- The tool bar

class ToolBarOnWindows : public TFileDlgTest {
protected:
    ToolBarOnWindows() { LogNavigation(Dialog, Dialog, Log); }

    LRESULT IndexOf(WORD command) const { return SendMessageA(NavigationBarOf(Dialog), TB_COMMANDTOINDEX, command, 0); }
    void Insert(LRESULT index, WORD command, BYTE style = BTNS_BUTTON) const {
        TBBUTTON button{};
        button.idCommand = command;
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = style;
        SendMessageA(NavigationBarOf(Dialog), TB_INSERTBUTTONA, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(&button));
    }
    std::vector<std::string> Press(WORD command) {
        Log.clear();
        PressToolButton(Dialog, command);
        return Log;
    }

    TKxOpenLiteDialog& Dialog = NewDialog();
    std::vector<std::string> Log;
};

TEST_F(ToolBarOnWindows, TheButtonBeforeUpOneLevelLeadsBack) {
    Look(Dialog, [&] {
        EXPECT_THAT(Press(40'980), IsEmpty());
        Insert(IndexOf(40'961), 40'980);
        EXPECT_THAT(Press(40'980), ElementsAre("back?", "back"));
        Insert(IndexOf(40'961), 0, BTNS_SEP);
        EXPECT_THAT(Press(40'980), ElementsAre("back?", "back")) << "a separator is no button";
        Insert(0, 40'981);
        EXPECT_THAT(Press(40'981), IsEmpty()) << "not the next one";
        Insert(-1, 40'971);
        EXPECT_THAT(Press(40'980), IsEmpty()) << "there is one that is known to lead back";
        EXPECT_THAT(Press(40'971), ElementsAre("back?", "back"));
    });
}

TEST_F(ToolBarOnWindows, TheButtonBetweenUpOneLevelAndNewFolderLeadsToTheDesktop) {
    Look(Dialog, [&] {
        HWND bar = NavigationBarOf(Dialog);
        SendMessageA(bar, TB_SETCMDID, static_cast<WPARAM>(IndexOf(40'965)), 40'982);
        EXPECT_THAT(Press(40'965), IsEmpty()) << "it is no button any more";
        EXPECT_THAT(Press(40'982), ElementsAre("desktop?", "desktop"));
        Insert(IndexOf(40'961) + 1, 40'983);
        EXPECT_THAT(Press(40'982), IsEmpty()) << "two buttons: neither is known";
        EXPECT_THAT(Press(40'983), IsEmpty());
        SendMessageA(bar, TB_DELETEBUTTON, static_cast<WPARAM>(IndexOf(40'983)), 0);
        EXPECT_THAT(Press(40'982), ElementsAre("desktop?", "desktop"));
        Insert(-1, 40'969);
        EXPECT_THAT(Press(40'982), IsEmpty()) << "there is one that is known to lead there";
    });
}

TEST_F(ToolBarOnWindows, OneOfAnExtensionIsNotTheNavigationBar) {
    Look(Dialog, [&] {
        HWND foreign = CreateWindowExA(0, TOOLBARCLASSNAMEA, "", WS_CHILD | WS_VISIBLE, 0, 0, 20, 20,
                                       Dialog.DlgHandle(), nullptr, nullptr, nullptr);
        SetWindowPos(foreign, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        EXPECT_EQ(KxFindToolbar(Dialog.DlgHandle()), NavigationBarOf(Dialog));
        Dialog.SetVisibleControls(KxAllOpenDlgControls - TKxOpenDlgControls{dcToolBar});
        EXPECT_FALSE(IsWindowVisible(NavigationBarOf(Dialog)));
        EXPECT_TRUE(IsWindowVisible(foreign));
        Dialog.SetVisibleControls(KxAllOpenDlgControls);
        EXPECT_TRUE(IsWindowVisible(NavigationBarOf(Dialog)));
        DestroyWindow(foreign);
    });
}

// --- Controls that overlap

class OverlappingControls : public TOpenDialogTest {
protected:
    /// Tops of the controls below the list, the Help button among them.
    std::vector<int> Tops() const {
        std::vector<int> tops;
        for (const int id : {1148, 1090, 1089, 1136, IDOK, IDCANCEL, 1038, 1040}) {
            tops.push_back(RectIn(Dialog.DlgHandle(), ItemOf(Dialog, id)).Top);
        }
        return tops;
    }
    /// Moves the list's place so that it ends so many pixels below the top of the file name control, and has the frame
    /// painted.
    void Overlap(int pixels) const {
        const TRect name = RectIn(Dialog.DlgHandle(), ItemOf(Dialog, 1148));
        const TRect list = RectIn(Dialog.DlgHandle(), ItemOf(Dialog, 1120));
        SetWindowPos(ItemOf(Dialog, 1120), nullptr, list.Left, name.Top + pixels - Height(list), 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        RedrawWindow(Dialog.DlgHandle(), nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW | RDW_NOCHILDREN);
    }

    TFormPtr Right = MakeMarkedForm(clCream, 120, 60);
    TFormPtr Bottom = MakeMarkedForm(clSilver, 60, 80);
};

TEST_F(OverlappingControls, ArePushedDownOnce) {
    Dialog.SetOptions({ofShowHelp, ofEnableSizing});
    Dialog.CustDlgParams().SetRightForm(Right.get());
    Dialog.CustDlgParams().SetBottomForm(Bottom.get());
    Look(Dialog, [&] {
        std::vector<int> tops = Tops();
        const int left = Right->Left();
        const int top = Bottom->Top();
        Overlap(0);
        EXPECT_EQ(Tops(), tops) << "they touch, but do not overlap";
        Overlap(Height(ScreenRectOf(ItemOf(Dialog, 1120))) + Height(ScreenRectOf(ItemOf(Dialog, 1148))));
        EXPECT_EQ(Tops(), tops) << "the list begins where the name ends";
        Overlap(1);
        for (int& y : tops) {
            y += SystemLength(70);
        }
        EXPECT_EQ(Tops(), tops);
        EXPECT_EQ(Right->Left(), left + SystemLength(36));
        EXPECT_EQ(Bottom->Top(), top + SystemLength(70));
        RedrawWindow(Dialog.DlgHandle(), nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW | RDW_NOCHILDREN);
        EXPECT_EQ(Tops(), tops);
    });
}

TEST_F(OverlappingControls, ThePlacesBarReachesDownToThem) {
    ShowPlaces();
    Look(Dialog, [&] {
        Overlap(10);
        const TRect type = ScreenRectOf(ItemOf(Dialog, 1136));
        EXPECT_EQ(Dialog.PlacesForm()->Height(), type.Bottom - ScreenRectOf(ItemOf(Dialog, 1120)).Top);
    });
}

TEST_F(OverlappingControls, ArePushedInALiteDialogToo) {
    auto& dialog = NewDialog();
    Look(dialog, [&] {
        HWND window = dialog.DlgHandle();
        const int before = RectIn(window, ItemOf(dialog, IDOK)).Top;
        const TRect name = RectIn(window, ItemOf(dialog, 1148));
        SetWindowPos(ItemOf(dialog, 1148), nullptr, name.Left, RectIn(window, ItemOf(dialog, 1120)).Bottom - 1, 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW | RDW_NOCHILDREN);
        EXPECT_EQ(RectIn(window, ItemOf(dialog, IDOK)).Top, before + SystemLength(70));
    });
}

// --- Old systems

TEST_F(OverlappingControls, TheOwnBarStandsInWhereTheSystemHasNone) {
    const auto bars = [&] {
        auto& dialog = NewDialog<TKxOpenDialog>();
        dialog.PlacesBar().SetNative(true);
        dialog.PlacesBar().SetVisible(true);
        std::vector<std::string> shown;
        Look(dialog, [&] {
            if (PlacesBarOf(dialog)) {
                shown.emplace_back("the system's");
            }
            if (dialog.PlacesForm()) {
                shown.emplace_back("its own");
            }
        });
        return shown;
    };
    EXPECT_THAT(bars(), ElementsAre("the system's"));
    for (const TSystem& old : {TSystem{.Major = 4, .Minor = 0}, TSystem{.Platform = 0, .Major = 0, .Minor = 0}}) {
        const TAssumedSystem assumed(old);
        EXPECT_THAT(bars(), ElementsAre("its own"));
    }
}

// --- The selection with a custom form

TEST_F(OverlappingControls, TheFormsSelectionIsTheNamesTextAndNotTheSystemsChoice) {
    Dialog.CustDlgParams().SetCustomForm(Right.get());
    Look(Dialog, [&] {
        TSubclass below; // a system whose choice is another than the text
        below.SetHandler([&](TMessage& message) {
            if (message.Msg == CDM_GETSPEC) {
                const std::string other = "other.txt";
                other.copy(reinterpret_cast<char*>(message.LParam), message.WParam);
                message.Result = static_cast<LRESULT>(other.size() + 1);
            } else {
                below.CallPrevious(message);
            }
        });
        below.Install(Dialog.DlgHandle());
        Dialog.SetFilenameText("typed.txt");
        EXPECT_EQ(Dialog.SelectedFiles(), "other.txt");
        Dialog.SetSelectionType(stCustom);
        EXPECT_EQ(Dialog.SelectedFiles(), "typed.txt");
        EXPECT_THAT(TextsOf(Dialog.SelectedFilesList()), ElementsAre("typed.txt"));
        Dialog.SetSelectionType(stStandard);
        EXPECT_EQ(Dialog.SelectedFiles(), "other.txt");
    });
}

} // namespace
} // namespace kx
