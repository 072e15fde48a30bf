// SPDX-License-Identifier: MIT
// Forms at the folder dialog's sides and in place of its tree.

#include "FolderDlgTest.h"

#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/Cycles.h"
#include "tests/support/UnevenFrames.h"

#include <shlobj.h>

namespace kx {
namespace {

using namespace test;

class FolderDocking : public TFolderDlgTest {
protected:
    struct TSystem {
        TRect Window, Client, Tree;
    };
    /// The browser without forms.
    TSystem System(TKxFolderDialog& dialog) {
        TSystem system;
        Look(dialog, [&] {
            HWND window = dialog.DialogWindow();
            system = {ScreenRectOf(window), ClientRectOf(window), RectIn(window, TreeOf(dialog))};
        });
        return system;
    }
    TRect RectOf(const TKxFolderDialog& dialog, TForm& form) const {
        return RectIn(dialog.DialogWindow(), form.WindowHandle());
    }
    static TRect At(int32_t left, int32_t top, int32_t width, int32_t height) {
        return {left, top, left + width, top + height};
    }

    TFormPtr Left = MakeForm(clMoneyGreen, 120, 60);
    TFormPtr Top = MakeForm(clSkyBlue, 90, 50);
    TFormPtr Right = MakeForm(clCream, 100, 70);
    TFormPtr Bottom = MakeForm(clSilver, 80, 80);
};

TEST_F(FolderDocking, FormsStandOnAllFourSides) {
    auto& dialog = NewDialog();
    const TSystem system = System(dialog);
    const int32_t width = Width(system.Client);
    const int32_t height = Height(system.Client);
    dialog.CustDlgParams().SetLeftForm(Left.get());
    dialog.CustDlgParams().SetTopForm(Top.get());
    dialog.CustDlgParams().SetRightForm(Right.get());
    dialog.CustDlgParams().SetBottomForm(Bottom.get());
    EXPECT_TRUE(RunDialog(
        dialog, {{"all is painted",
                  [&] { return IsPainted(*Left) && IsPainted(*Top) && IsPainted(*Right) && IsPainted(*Bottom); },
                  [&] {
                      EXPECT_EQ(RectOf(dialog, *Left), At(0, 0, 120, 50 + height));
                      EXPECT_EQ(RectOf(dialog, *Top), At(120, 0, width, 50));
                      EXPECT_EQ(RectOf(dialog, *Right), At(120 + width, 0, 100, 50 + height));
                      EXPECT_EQ(RectOf(dialog, *Bottom), At(0, 50 + height, 120 + width + 100, 80));
                      const TRect outer = ScreenRectOf(dialog.DialogWindow());
                      EXPECT_EQ(Width(outer), Width(system.Window) + 220);
                      EXPECT_EQ(Height(outer), Height(system.Window) + 130);
                      const TRect tree = RectIn(dialog.DialogWindow(), TreeOf(dialog));
                      EXPECT_EQ(tree.Left, system.Tree.Left + 120 + GetSystemMetrics(SM_CYDLGFRAME));
                      EXPECT_EQ(tree.Top, system.Tree.Top + 50 + GetSystemMetrics(SM_CXDLGFRAME));
                      Screenshot("folder_docked", dialog.DialogWindow());
                  }},
                 Choose(dialog, "alpha")}));
    EXPECT_EQ(dialog.Folder(), Folder.Path("alpha"));
    for (const TForm* form : {Left.get(), Top.get(), Right.get(), Bottom.get()}) {
        EXPECT_FALSE(form->IsDocked());
        EXPECT_FALSE(form->Visible());
    }
}

TEST_F(FolderDocking, EachSideAlone) {
    auto& dialog = NewDialog();
    const TSystem system = System(dialog);
    TKxCustDlgParams& params = dialog.CustDlgParams();
    const auto dock = [&](TForm* left, TForm* top, TForm* right, TForm* bottom) {
        params.SetLeftForm(left);
        params.SetTopForm(top);
        params.SetRightForm(right);
        params.SetBottomForm(bottom);
        TForm* const form = left ? left : top ? top : right ? right : bottom;
        RunDialog(dialog, {{"the form is painted", [form] { return IsPainted(*form); },
                            [&] {
                                const TRect outer = ScreenRectOf(dialog.DialogWindow());
                                EXPECT_EQ(Width(outer) - Width(system.Window), params.IncX());
                                EXPECT_EQ(Height(outer) - Height(system.Window), params.IncY());
                            }},
                           Cancel(dialog)});
    };
    dock(Left.get(), nullptr, nullptr, nullptr);
    EXPECT_EQ(params.IncX(), 120);
    dock(nullptr, Top.get(), nullptr, nullptr);
    EXPECT_EQ(params.IncY(), 50);
    dock(nullptr, nullptr, Right.get(), nullptr);
    EXPECT_EQ(params.IncX(), 100);
    dock(nullptr, nullptr, nullptr, Bottom.get());
    EXPECT_EQ(params.IncY(), 80);
}

TEST_F(FolderDocking, InTheNewStyleNothingIsDocked) {
    const TFormPtr named(new TPaneForm(&Application()));
    auto& dialog = NewDialog();
    dialog.SetOptionsEx({ffNewDialogStyle});
    const TSystem system = System(dialog);
    dialog.CustDlgParams().SetLeftFormName("PaneForm");
    dialog.CustDlgParams().SetBottomForm(Bottom.get());
    Look(dialog, [&] {
        EXPECT_EQ(ScreenRectOf(dialog.DialogWindow()), system.Window);
        EXPECT_EQ(dialog.CustDlgParams().LeftForm(), nullptr);
        EXPECT_FALSE(Bottom->IsDocked());
        EXPECT_FALSE(Bottom->Visible());
    });
    dialog.SetOptionsEx({});
    Look(dialog, [&] {
        EXPECT_EQ(dialog.CustDlgParams().LeftForm(), named.get());
        EXPECT_TRUE(named->IsDocked());
        EXPECT_TRUE(Bottom->IsDocked());
    });
}

TEST_F(FolderDocking, ControlsOfADockedFormWork) {
    auto& button = *new TButton(Right.get());
    button.SetParent(Right.get());
    button.SetBounds(10, 10, 80, 25);
    button.SetCaption("Up");
    auto& edit = *new TEdit(Right.get());
    edit.SetParent(Right.get());
    edit.SetBounds(10, 45, 80, 21);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetRightForm(Right.get());
    int clicks = 0;
    button.SetOnClick([&](TObject*) { ++clicks; });
    RunDialog(dialog, {{"the button is there", [&] { return IsWindowVisible(button.Handle()) != 0; },
                        [&] { Click(button.Handle()); }},
                       {"the click", [&] { return clicks == 1; }, [&] { Click(edit.Handle()); }},
                       {"the focus", [&] { return GetFocus() == edit.Handle(); }, [] { TypeText("name"); }},
                       {"the text", [&] { return edit.Text() == "name"; }, [] { PressKey(VK_ESCAPE); }}});
}

TEST_F(FolderDocking, TheMenuOfADockedControlComesInPlaceOfTheSystemsHelp) {
    TPopupMenu menu(nullptr);
    auto& item = *new TMenuItem(&menu);
    item.SetCaption("Mine");
    menu.Items().Add(&item);
    int clicks = 0;
    item.SetOnClick([&](TObject*) { ++clicks; });
    Right->SetPopupMenu(&menu);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetRightForm(Right.get());
    int reported = 0;
    dialog.SetOnEventHook([&](TMessage& m) { reported += m.Msg == WM_CONTEXTMENU ? 1 : 0; });
    RunDialog(dialog, {{"the form is painted", [&] { return IsPainted(*Right); },
                        [&] { ClickAt(CenterOf(Right->Handle()), mbRight); }},
                       {"the menu", [] { return ShownMenu() != nullptr; },
                        [] {
                            PressKey(VK_DOWN);
                            PressKey(VK_RETURN);
                        }},
                       Await("the choice", [&] { return clicks == 1; }),
                       Cancel(dialog)});
    EXPECT_EQ(reported, 0);
}

// --- The custom form

class FolderCustomForm : public FolderDocking {
protected:
    TFormPtr Custom = MakeForm(clAqua, 40, 30);
};

TEST_F(FolderCustomForm, StandsInPlaceOfTheTree) {
    const TUnevenFrames frames;
    auto& dialog = NewDialog();
    const TSystem system = System(dialog);
    TRect client;
    Look(dialog, [&] { client = ClientRectOf(TreeOf(dialog)); });
    dialog.CustDlgParams().SetCustomForm(Custom.get());
    dialog.SetSelectionType(stCustom);
    int activated = 0;
    Custom->SetOnActivate([&](TObject*) { ++activated; });
    RunDialog(dialog, {{"the form is painted", [&] { return IsPainted(*Custom); },
                        [&] {
                            EXPECT_FALSE(IsWindowVisible(TreeOf(dialog)));
                            EXPECT_EQ(RectOf(dialog, *Custom), At(system.Tree.Left, system.Tree.Top,
                                                                  Width(client) + GetSystemMetrics(SM_CXDLGFRAME),
                                                                  Height(client) + GetSystemMetrics(SM_CYDLGFRAME)));
                            EXPECT_EQ(Custom->BorderStyle(), bsNone);
                            Screenshot("folder_custom", dialog.DialogWindow());
                            dialog.SetSelFolder(Folder.Path("beta")); // the hidden tree selects still
                        }},
                       Press(dialog, IDOK)});
    EXPECT_EQ(activated, 1);
    EXPECT_EQ(dialog.Folder(), Folder.Path("beta"));
    EXPECT_FALSE(Custom->IsDocked());
    EXPECT_FALSE(Custom->Visible());
}

TEST_F(FolderCustomForm, IsFoundByItsName) {
    const TFormPtr named(new TPaneForm(&Application()));
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetCustFormName("paneform");
    dialog.SetSelectionType(stCustom);
    RunDialog(dialog, {{"the form is painted", [&] { return IsPainted(*named); },
                        [&] { EXPECT_EQ(dialog.CustDlgParams().CustomForm(), named.get()); }},
                       Cancel(dialog)});
    EXPECT_FALSE(named->IsDocked());
}

TEST_F(FolderCustomForm, IsWiderByTheScrollBarOfALongTree) {
    for (int i = 0; i < 40; ++i) {
        Folder.AddFolder("sub" + std::to_string(i));
    }
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetCustomForm(Custom.get());
    bool scrolls = false;
    int32_t width = 0;
    dialog.SetOnShow([&](TObject*) {
        HWND tree = TreeOf(dialog);
        scrolls = (GetWindowLongA(tree, GWL_STYLE) & WS_VSCROLL) != 0;
        width = Width(ClientRectOf(tree)) + GetSystemMetrics(SM_CXDLGFRAME) +
                (scrolls ? GetSystemMetrics(SM_CXVSCROLL) : 0);
        dialog.SetSelectionType(stCustom);
    });
    RunDialog(dialog, {{"the form is painted", [&] { return IsPainted(*Custom); },
                        [&] { EXPECT_EQ(Width(RectOf(dialog, *Custom)), width); }},
                       Cancel(dialog)});
    EXPECT_TRUE(scrolls);
}

TEST_F(FolderCustomForm, ComesAndGoesWhileTheDialogIsShown) {
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetLeftForm(Left.get());
    dialog.CustDlgParams().SetTopForm(Top.get());
    dialog.CustDlgParams().SetCustomForm(Custom.get());
    RunDialog(dialog, {{"the tree is there", [&] { return IsWindowVisible(TreeOf(dialog)) != 0; },
                        [&] {
                            EXPECT_FALSE(Custom->Visible());
                            dialog.SetSelectionType(stCustom);
                        }},
                       {"the form is painted", [&] { return IsPainted(*Custom); },
                        [&] {
                            EXPECT_FALSE(IsWindowVisible(TreeOf(dialog)));
                            const TRect tree = RectIn(dialog.DialogWindow(), TreeOf(dialog));
                            EXPECT_EQ(RectOf(dialog, *Custom).Left, tree.Left);
                            EXPECT_EQ(RectOf(dialog, *Custom).Top, tree.Top);
                            dialog.SetSelectionType(stStandard);
                            EXPECT_TRUE(IsWindowVisible(TreeOf(dialog)));
                            EXPECT_FALSE(Custom->Visible());
                            EXPECT_FALSE(Custom->IsDocked());
                            ClickTreeItem(TreeOf(dialog), "beta");
                        }},
                       Await("the click", [&] { return dialog.SelFolder() == Folder.Path("beta"); }),
                       Press(dialog, IDOK)});
    EXPECT_EQ(dialog.Folder(), Folder.Path("beta"));
}

TEST_F(FolderCustomForm, StandsInPlaceOfTheTreeOfTheNewStyle) {
    auto& dialog = NewDialog();
    dialog.SetOptionsEx({ffNewDialogStyle});
    const TSystem system = System(dialog);
    Custom->SetBorderStyle(bsNone);
    dialog.CustDlgParams().SetCustomForm(Custom.get());
    dialog.SetSelectionType(stCustom);
    RunDialog(dialog, {{"the form is painted", [&] { return IsPainted(*Custom); },
                        [&] {
                            EXPECT_FALSE(IsWindowVisible(TreeOf(dialog)));
                            EXPECT_EQ(RectOf(dialog, *Custom).Left, system.Tree.Left);
                            EXPECT_EQ(RectOf(dialog, *Custom).Top, system.Tree.Top);
                            Screenshot("folder_custom_new_style", dialog.DialogWindow());
                        }},
                       Cancel(dialog)});
}

TEST_F(FolderCustomForm, WithoutAFormTheTreeIsHiddenAllTheSame) {
    auto& dialog = NewDialog();
    dialog.SetSelectionType(stCustom);
    Look(dialog, [&] { EXPECT_FALSE(IsWindowVisible(TreeOf(dialog))); });
}

TEST_F(FolderCustomForm, AMissingTreeIsReported) {
    auto& dialog = NewDialog();
    std::vector<std::string> texts;
    const auto keep = [&](const std::string& text) { texts.push_back(text); };
    RunDialog(dialog, {{"the dialog is shown",
                        {},
                        [&] {
                            DestroyWindow(TreeOf(dialog));
                            dialog.SetSelectionType(stCustom);
                        }},
                       AnswerBox(IDOK, keep),
                       {"no box is left", NoBoxShown(), [&] { dialog.SetSelectionType(stStandard); }},
                       AnswerBox(IDOK, keep),
                       Cancel(dialog)});
    EXPECT_THAT(texts, ElementsAre("Could not hide window. Child SysTreeView32 not found.",
                                   "Could not show window. Child SysTreeView32 not found."));
}

TEST_F(FolderCustomForm, ChoosingTheTypeBeforeTheShowingReportsNothing) {
    auto& dialog = NewDialog();
    dialog.SetSelectionType(stCustom);
    dialog.SetSelectionType(stStandard);
    EXPECT_EQ(ShownMessageBox(), nullptr);
}

TEST_F(FolderCustomForm, MayBeFreedWhileItIsShown) {
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetCustomForm(Custom.get());
    dialog.CustDlgParams().SetRightForm(Right.get());
    dialog.SetSelectionType(stCustom);
    Look(dialog, [&] {
        Custom.reset();
        Right.reset();
        dialog.SetSelectionType(stStandard);
        EXPECT_TRUE(IsWindowVisible(TreeOf(dialog)));
    });
}

// --- Showing often

TEST_F(FolderDocking, ShowingOftenLeavesNothingBehindThatTheSystemsDialogDoesNot) {
    constexpr int Cycles = 200;
    constexpr int SystemCycles = 50;
    struct TBare { // a lambda has not the calling convention of the system
        static int CALLBACK Cancel(HWND window, UINT code, LPARAM, LPARAM) {
            if (code == BFFM_INITIALIZED) {
                PostMessageA(window, WM_COMMAND, IDCANCEL, 0);
            }
            return 0;
        }
    };
    const TCensus system = Growth(SystemCycles, [&] {
        const unique_pidl root = CreatePIDLFromPath(Folder.Path());
        char name[MAX_PATH] = "";
        BROWSEINFOA info{};
        info.pidlRoot = root.get();
        info.pszDisplayName = name;
        info.lpfn = TBare::Cancel;
        EXPECT_EQ(SHBrowseForFolderA(&info), nullptr);
    });

    const TFormPtr custom = MakeForm(clAqua, 40, 30);
    auto& dialog = NewDialog();
    dialog.SetTitle("Cycles");
    dialog.SetText("Again and again");
    dialog.SetOptions({ffStatusText});
    dialog.SetStatusText("ready");
    dialog.DlgItemsCaptions().SetOK("&Take");
    dialog.SetSelectionType(stCustom);
    dialog.CustDlgParams().SetCustomForm(custom.get());
    dialog.CustDlgParams().SetLeftForm(Left.get());
    dialog.CustDlgParams().SetTopForm(Top.get());
    dialog.CustDlgParams().SetRightForm(Right.get());
    dialog.CustDlgParams().SetBottomForm(Bottom.get());
    int messages = 0;
    dialog.SetOnEventHook([&](TMessage&) { ++messages; });
    dialog.SetOnShow([&](TObject*) {
        dialog.SetSelFolder(Folder.Path("alpha"));
        PostMessageA(dialog.DialogWindow(), WM_COMMAND, IDOK, 0);
    });
    const TCensus ours = Growth(Cycles, [&] { ASSERT_TRUE(dialog.Execute()); });
    EXPECT_GT(messages, Cycles);
    EXPECT_EQ(dialog.Folder(), Folder.Path("alpha"));
    ExpectNoLoss(ours, Cycles, system, SystemCycles);
}

} // namespace
} // namespace kx
