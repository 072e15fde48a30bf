// SPDX-License-Identifier: MIT
// How file dialogs leave their windows.

#include "OpenDialogTest.h"

#include "kx/opensave/KxSaveDlg.h"
#include "kx/ui/controls/Menus.h"
#include "kx/win/Handles.h"
#include "kx/win/System.h"

// What a dialog passes on, reports and leaves behind: while it closes, when it refuses, and beside others.

namespace kx {
namespace {

using namespace test;

class Closing : public TOpenDialogTest {};

/// What the system makes of a question for the least size of the window.
MINMAXINFO AskForLimits(HWND window) {
    MINMAXINFO info{};
    info.ptMinTrackSize = {7, 7};
    SendMessageA(window, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    return info;
}

template <class T> void ExpectNoLimitsWhileClosing(T& dialog, TForm& form) {
    int reported = 0;
    bool hidden = false;
    dialog.CustDlgParams().SetBottomForm(&form);
    dialog.SetOnEventHook([&](TMessage& m) { reported += m.Msg == WM_GETMINMAXINFO ? 1 : 0; });
    form.SetOnHide([&](TObject*) {
        hidden = true;
        reported = 0;
        EXPECT_EQ(AskForLimits(dialog.DlgHandle()).ptMinTrackSize.x, 7) << "a dialog that goes has no least size";
        EXPECT_EQ(reported, 1) << "the application hears of the question";
    });
    Look(dialog, [&] { EXPECT_GT(AskForLimits(dialog.DlgHandle()).ptMinTrackSize.x, 7); });
    EXPECT_TRUE(hidden);
}

TEST_F(Closing, AFullDialogHasNoLeastSize) {
    const TFormPtr form = MakeMarkedForm(clCream, 80, 50);
    ExpectNoLimitsWhileClosing(Dialog, *form);
}

TEST_F(Closing, ALiteDialogHasNoLeastSize) {
    const TFormPtr form = MakeMarkedForm(clCream, 80, 50);
    ExpectNoLimitsWhileClosing(NewDialog<TKxOpenLiteDialog>(), *form);
}

TEST_F(Closing, TheCustomFormIsUndockedBehindThoseAtTheSides) {
    std::vector<std::string> order;
    const TFormPtr left = MakeMarkedForm(clCream, 80, 50);
    const TFormPtr custom = MakeMarkedForm(clSkyBlue, 80, 50);
    left->SetOnHide([&](TObject*) { order.emplace_back("left"); });
    custom->SetOnHide([&](TObject*) { order.emplace_back("custom"); });
    Dialog.CustDlgParams().SetLeftForm(left.get());
    Dialog.CustDlgParams().SetCustomForm(custom.get());
    Dialog.SetSelectionType(stCustom);
    Look(Dialog, [&] {
        EXPECT_TRUE(custom->Visible());
        order.clear();
    });
    EXPECT_THAT(order, ElementsAre("left", "custom"));
}

// --- Commands that are refused

template <class T> std::vector<int> ReportedCommands(T& dialog, const TAction& command) {
    std::vector<int> ids;
    dialog.SetOnEventHook([&](TMessage& m) {
        if (m.Msg == WM_COMMAND && m.WParamHi() == 0) {
            ids.push_back(m.WParamLo());
        }
    });
    Look(dialog, [&] {
        ids.clear();
        command();
        dialog.SetOnEventHook(nullptr);
    });
    return ids;
}

template <class T> void ExpectRefusedCommandsUnreported(T& dialog) {
    int asked = 0;
    const TKxCtrlQueryEvent refuse = [&](TObject*, bool& allow) {
        ++asked;
        allow = false;
    };
    dialog.SetOnUpLevelNavigating(refuse);
    dialog.SetOnDesktopNavigating(refuse);
    dialog.SetOnLastFolderNavigating(refuse);
    dialog.SetOnFolderCreating(refuse);
    dialog.SetOnFilenameEntering(refuse);
    const auto press = [&] {
        for (const WORD id : {KxCmdUpLevel, KxCmdNewFolder, KxCmdDesktop, KxCmdLastFolder, WORD{IDOK}}) {
            SetFocus(FileNameEditOf(dialog.DlgHandle()));
            SendMessageA(dialog.DlgHandle(), WM_COMMAND, id, 0);
        }
    };
    EXPECT_THAT(ReportedCommands(dialog, press), testing::IsEmpty());
    EXPECT_EQ(asked, 5);
    dialog.SetOnUpLevelNavigating(nullptr);
    EXPECT_THAT(ReportedCommands(dialog, [&] { SendMessageA(dialog.DlgHandle(), WM_COMMAND, KxCmdUpLevel, 0); }),
                ElementsAre(KxCmdUpLevel));
}

TEST_F(Closing, WhatAFullDialogIsRefusedIsNotReported) { ExpectRefusedCommandsUnreported(Dialog); }

TEST_F(Closing, WhatALiteDialogIsRefusedIsNotReported) {
    ExpectRefusedCommandsUnreported(NewDialog<TKxOpenLiteDialog>());
}

// --- Sizes

TEST_F(Closing, ASizeWithTheCustomFormHasEverythingInTheDialogPaintedAgain) {
    const TFormPtr custom = MakeMarkedForm(clSkyBlue, 80, 50);
    Dialog.CustDlgParams().SetCustomForm(custom.get());
    Look(Dialog, [&] {
        HWND label = ItemOf(Dialog, KxFolderLabelId);
        const TRect client = ClientRectOf(Dialog.DlgHandle());
        const auto isInvalidBehindASize = [&] {
            UpdateWindow(label);
            ValidateRect(label, nullptr);
            SendMessageA(Dialog.DlgHandle(), WM_SIZE, SIZE_RESTORED, MakeLParam(client.Right, client.Bottom));
            return GetUpdateRect(label, nullptr, FALSE) != 0;
        };
        EXPECT_FALSE(isInvalidBehindASize()) << "the files are shown";
        Dialog.SetSelectionType(stCustom);
        EXPECT_TRUE(isInvalidBehindASize());
        Dialog.SetOptions(Dialog.Options() - TOpenOptions{ofEnableSizing});
        EXPECT_FALSE(isInvalidBehindASize()) << "a dialog that cannot be sized";
        Dialog.SetOptions(Dialog.Options() + TOpenOptions{ofEnableSizing});
    });
}

TEST_F(Closing, ASizeHasTheCustomFormPaintedAtOnce) {
    const TFormPtr custom = MakeMarkedForm(clSkyBlue, 80, 50);
    int paintings = 0;
    custom->SetOnPaint([&](TObject*) { ++paintings; });
    Dialog.CustDlgParams().SetCustomForm(custom.get());
    Look(Dialog, [&] {
        const TRect client = ClientRectOf(Dialog.DlgHandle());
        const auto isPaintedByASize = [&] {
            UpdateWindow(custom->Handle());
            paintings = 0;
            SendMessageA(Dialog.DlgHandle(), WM_SIZE, SIZE_RESTORED, MakeLParam(client.Right, client.Bottom));
            return paintings > 0;
        };
        EXPECT_FALSE(isPaintedByASize()) << "the files are shown";
        Dialog.SetSelectionType(stCustom);
        EXPECT_TRUE(isPaintedByASize());
    });
}

// --- Dialogs inside of others

int HookedMessages = 0;

LRESULT CALLBACK CountMessages(int code, WPARAM wParam, LPARAM lParam) {
    ++HookedMessages;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(Closing, AnOuterDialogFreedWhileAnInnerOneRunsLeavesNoHook) {
    const TAssumedSystem windows({.Wine = false});
    const unique_hhook hook(SetWindowsHookExA(WH_CALLWNDPROCRET, CountMessages, nullptr, GetCurrentThreadId()));
    auto* outer = &NewDialog<TKxOpenDialog>();
    auto& inner = NewDialog<TKxSaveDialog>();
    TKxOpenDialog* const running = outer;
    bool opened = false;
    EXPECT_FALSE(RunDialog([&] { return running->Execute(); },
                           {{"the outer dialog is shown", Shown(*running),
                             [&] {
                                 opened = true;
                                 EXPECT_FALSE(inner.Execute());
                             }},
                            {"the inner dialog is shown", [&] { return opened && Shown(inner)(); },
                             [&] { std::exchange(outer, nullptr)->Free(); }}}));
    EXPECT_EQ(outer, nullptr);
    EXPECT_EQ(TKxCustomOpenDialog::CreationControl(), nullptr);
    HookedMessages = 0;
    SendMessageA(Owner->Handle(), WM_NULL, 0, 0);
    EXPECT_EQ(HookedMessages, 1) << "a hook of the library that has stayed lets no other one hear of messages";
    inner.SetInitialDir(Folder.Path());
    Look(inner, [&] { EXPECT_EQ(TKxCustomOpenDialog::CreationControl(), &inner); });
    EXPECT_EQ(TKxCustomOpenDialog::CreationControl(), nullptr);
}

TEST_F(Closing, ADialogFreedInTheMidstOfItsClosingLeavesNoHook) {
    const TAssumedSystem windows({.Wine = false});
    auto* dialog = &NewDialog<TKxOpenDialog>();
    TPopupMenu menu;
    dialog->SetOkButtonMenu(&menu);
    dialog->SetOnEventHook([&](TMessage& m) {
        if (dialog && m.Msg == WM_PARENTNOTIFY && m.WParamLo() == WM_DESTROY) { // the OK button's form goes
            std::exchange(dialog, nullptr)->Free();
        }
    });
    TKxOpenDialog* const running = dialog;
    RunDialog([&] { return running->Execute(); }, {Cancel(*running)});
    EXPECT_EQ(dialog, nullptr);
    const unique_hhook hook(SetWindowsHookExA(WH_CALLWNDPROCRET, CountMessages, nullptr, GetCurrentThreadId()));
    HookedMessages = 0;
    SendMessageA(Owner->Handle(), WM_NULL, 0, 0);
    EXPECT_EQ(HookedMessages, 1);
}

/// A dialog is executed once more while it is on its way to its window.
template <class T> void ExpectRefusedBeforeTheWindow(T& dialog) {
    const TNotifyEvent before = Application().OnModalBegin();
    int refused = 0;
    Application().SetOnModalBegin([&](TObject*) {
        EXPECT_EQ(dialog.DlgHandle(), nullptr);
        EXPECT_THROW(dialog.Execute(), EInvalidOperation);
        ++refused;
    });
    Look(dialog, [&] { EXPECT_EQ(refused, 1); });
    Application().SetOnModalBegin(before);
}

TEST_F(Closing, AFullDialogExecutedAgainBeforeItsWindowIsNotTheRunningOneForGood) {
    ExpectRefusedBeforeTheWindow(Dialog);
    EXPECT_EQ(TKxCustomOpenDialog::CreationControl(), nullptr);
}

TEST_F(Closing, ALiteDialogExecutedAgainBeforeItsWindowIsNotTheRunningOneForGood) {
    ExpectRefusedBeforeTheWindow(NewDialog<TKxOpenLiteDialog>());
    EXPECT_EQ(TKxCustomOpenLiteDialog::Running(), nullptr);
}

} // namespace
} // namespace kx
