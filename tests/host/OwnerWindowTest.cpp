// SPDX-License-Identifier: MIT
// Dialogs that belong to windows of a program that knows nothing of the framework.

#include "PlainWindow.h"

#include "kx/colorprint/KxColorDlg.h"
#include "kx/colorprint/KxPrintDlg.h"
#include "kx/folder/KxFolderDlg.h"
#include "kx/modeless/KxModelessDlg.h"
#include "kx/opensave/KxOpenLite.h"
#include "kx/opensave/KxSaveDlg.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/Printers.h"
#include "tests/support/TestDriver.h"

#include <thread>

namespace kx {
namespace {

using namespace test;

class OwnerWindow : public testing::Test {
protected:
    ~OwnerWindow() override { EXPECT_THAT(Exceptions.Messages(), IsEmpty()); }

    TExceptionLog Exceptions;
    TPlainWindow Owner;
    TPlainWindow Other{650, 80};
    TKxOpenLiteDialog Dialog{nullptr};
};

template <class T> void ExpectOwned(HWND owner, const TPlainWindow& window, const TPlainWindow& other) {
    SetForegroundWindow(window.Get());
    ASSERT_TRUE(PumpUntil([&] { return GetActiveWindow() == window.Get(); }));
    T dialog(nullptr);
    dialog.SetOwnerWindow(owner);
    bool looked = false;
    Look(dialog, [&] {
        looked = true;
        EXPECT_EQ(GetWindow(dialog.DialogWindow(), GW_OWNER), window.Get());
        EXPECT_FALSE(window.Enabled());
        EXPECT_FALSE(other.Enabled());
    });
    EXPECT_TRUE(looked);
    EXPECT_TRUE(window.Enabled());
    EXPECT_TRUE(other.Enabled());
    EXPECT_EQ(GetActiveWindow(), window.Get());
}

TEST_F(OwnerWindow, OwnsEachKindOfDialogAndIsDisabledMeanwhile) {
    ExpectOwned<TOpenDialog>(Owner.Get(), Owner, Other);
    ExpectOwned<TKxOpenDialog>(Owner.Get(), Owner, Other);
    ExpectOwned<TKxSaveDialog>(Owner.Get(), Owner, Other);
    ExpectOwned<TKxOpenLiteDialog>(Owner.Get(), Owner, Other);
    ExpectOwned<TKxFolderDialog>(Owner.Get(), Owner, Other);
    ExpectOwned<TKxColorDialog>(Owner.Get(), Owner, Other);
}

TEST_F(OwnerWindow, OfAChildIsTheWindowAroundIt) {
    ExpectOwned<TKxOpenLiteDialog>(Owner.AddChild(L"EDIT"), Owner, Other);
    ExpectOwned<TKxFolderDialog>(Owner.AddChild(L"EDIT"), Owner, Other);
}

TEST_F(OwnerWindow, MayBeAnotherOneThanTheActiveWindow) {
    SetForegroundWindow(Other.Get());
    ASSERT_TRUE(PumpUntil([&] { return GetActiveWindow() == Other.Get(); }));
    Dialog.SetOwnerWindow(Owner.Get());
    Look(Dialog, [&] {
        EXPECT_EQ(GetWindow(Dialog.DialogWindow(), GW_OWNER), Owner.Get());
        EXPECT_FALSE(Owner.Enabled());
        EXPECT_FALSE(Other.Enabled());
    });
    EXPECT_EQ(GetActiveWindow(), Other.Get()) << "the user goes on where he was";
}

TEST_F(OwnerWindow, StaysDisabledWhenItWas) {
    EnableWindow(Owner.Get(), FALSE);
    Dialog.SetOwnerWindow(Owner.Get());
    Look(Dialog);
    EXPECT_FALSE(Owner.Enabled());
    EXPECT_TRUE(Other.Enabled());
}

TEST_F(OwnerWindow, ThatHasBeenDestroyedIsAnError) {
    HWND gone = Owner.Get();
    Owner.Destroy();
    const auto expectError = [&](TCommonDialog& dialog) {
        dialog.SetOwnerWindow(gone);
        EXPECT_EQ(ErrorOf<EInvalidOperation>([&] { dialog.Execute(); }),
                  "The owner window of the dialog has been destroyed");
    };
    TKxFolderDialog folder(nullptr);
    TKxColorDialog color(nullptr);
    expectError(Dialog);
    expectError(folder);
    expectError(color);
    Dialog.SetOwnerWindow(nullptr);
    Look(Dialog);
    EXPECT_TRUE(Other.Enabled());
}

TEST_F(OwnerWindow, IsNeverTheDesktop) {
    Dialog.SetOwnerWindow(GetDesktopWindow());
    Look(Dialog, [&] {
        EXPECT_TRUE(IsWindowEnabled(GetDesktopWindow()));
        EXPECT_NE(GetWindow(Dialog.DialogWindow(), GW_OWNER), GetDesktopWindow());
    });
}

TEST_F(OwnerWindow, TakesItsDialogAlongWhenItGoes) {
    Dialog.SetOwnerWindow(Owner.Get());
    bool closed = false;
    Dialog.SetOnClose([&](TObject*) { closed = true; });
    EXPECT_FALSE(RunDialog(Dialog, [&] { Owner.Destroy(); }));
    EXPECT_TRUE(closed);
    EXPECT_TRUE(Other.Enabled());
}

TEST_F(OwnerWindow, IsWhatTheDialogIsCentredOver) {
    SetWindowPos(Owner.Get(), nullptr, 90, 40, 700, 560, SWP_NOZORDER);
    Dialog.SetOwnerWindow(Owner.AddChild(L"EDIT"));
    Dialog.CustDlgParams().SetPosition(dpOwnerCenter);
    Look(Dialog, [&] {
        const TRect owner = ScreenRectOf(Owner.Get());
        const TRect dialog = ScreenRectOf(Dialog.DialogWindow());
        EXPECT_NEAR((owner.Left + owner.Right) / 2, (dialog.Left + dialog.Right) / 2, 1);
        EXPECT_NEAR((owner.Top + owner.Bottom) / 2, (dialog.Top + dialog.Bottom) / 2, 1);
    });
}

TEST_F(OwnerWindow, MayBelongToAnotherThread) {
    HWND elsewhere = nullptr;
    DWORD id = 0;
    const unique_handle_object made(CreateEventA(nullptr, TRUE, FALSE, nullptr));
    std::thread thread([&] {
        const TPlainWindow window(300, 300);
        elsewhere = window.Get();
        id = GetCurrentThreadId();
        SetEvent(made.get());
        MSG message;
        while (GetMessageW(&message, nullptr, 0, 0) > 0) {
            DispatchMessageW(&message);
        }
    });
    WaitForSingleObject(made.get(), INFINITE);
    Dialog.SetOwnerWindow(elsewhere);
    Look(Dialog, [&] {
        EXPECT_EQ(GetWindow(Dialog.DialogWindow(), GW_OWNER), elsewhere);
        EXPECT_FALSE(IsWindowEnabled(elsewhere));
        EXPECT_FALSE(Other.Enabled());
    });
    EXPECT_TRUE(IsWindowEnabled(elsewhere));
    EXPECT_TRUE(Other.Enabled());
    PostThreadMessageW(id, WM_QUIT, 0, 0);
    thread.join();
}

// --- Dialogs that do not block

class ModelessOwnerWindow : public OwnerWindow {
protected:
    ModelessOwnerWindow() {
        Dialog.SetOwnerWindow(Owner.Get());
        Runner.SetDialog(&Dialog);
        Runner.SetOnDialogClosed([this](TObject*, bool) { Closed = true; });
        Runner.Show();
    }
    void SetUp() override { ASSERT_TRUE(PumpUntil(Shown(Dialog))); }
    void Close() {
        Dialog.CloseDialog(mrCancel);
        ASSERT_TRUE(PumpUntil([&] { return Closed; }));
    }

    TKxModelessDialog Runner{nullptr};
    bool Closed = false;
};

TEST_F(ModelessOwnerWindow, IsBelowTheDialogAndCanBeUsed) {
    EXPECT_EQ(GetWindow(Dialog.DialogWindow(), GW_OWNER), Owner.Get());
    EXPECT_TRUE(Owner.Enabled());
    EXPECT_TRUE(Other.Enabled());
    Close();
    EXPECT_TRUE(Owner.Enabled());
}

TEST_F(ModelessOwnerWindow, OfAChildIsTheWindowAroundItToo) {
    Close();
    Dialog.SetOwnerWindow(Owner.AddChild(L"EDIT"));
    Closed = false;
    Runner.Show();
    ASSERT_TRUE(PumpUntil(Shown(Dialog)));
    EXPECT_EQ(GetWindow(Dialog.DialogWindow(), GW_OWNER), Owner.Get());
    Close();
}

TEST_F(ModelessOwnerWindow, MayGoBeforeTheDialog) {
    Owner.Destroy();
    ASSERT_TRUE(PumpUntil([&] { return !IsWindow(Dialog.DialogWindow()) || Shown(Dialog)(); }));
    if (!Closed && IsWindow(Dialog.DialogWindow())) {
        Close();
    }
    ASSERT_TRUE(PumpUntil([&] { return Closed; }));
}

TEST(ModelessOwner, ThatHasBeenDestroyedFailsTheShowing) {
    HWND gone = nullptr;
    {
        const TPlainWindow window;
        gone = window.Get();
    }
    TKxOpenLiteDialog dialog(nullptr);
    dialog.SetOwnerWindow(gone);
    TKxModelessDialog runner(nullptr);
    runner.SetDialog(&dialog);
    std::string error;
    runner.SetOnDialogClosed([&](TObject*, bool) {
        try {
            std::rethrow_exception(runner.Thread()->FatalException());
        } catch (const EInvalidOperation& e) {
            error = e.what();
        }
    });
    runner.Show();
    ASSERT_TRUE(PumpUntil([&] { return !error.empty(); }));
    EXPECT_EQ(error, "The owner window of the dialog has been destroyed");
}

} // namespace
} // namespace kx
