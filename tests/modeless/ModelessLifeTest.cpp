// SPDX-License-Identifier: MIT
// The dialog, the runner or a form goes while the dialog is shown.

#include "ModelessTest.h"

#include "tests/support/Process.h"

namespace kx {
namespace {

using namespace test;

class ModelessLife : public TModelessTest {
protected:
    /// A dialog that nobody owns, with a docked form.
    TKxOpenDialog* NewFreeDialog() {
        auto* dialog = new TKxOpenDialog(nullptr);
        dialog->SetInitialDir(Folder.Path());
        dialog->PlacesBar().SetNative(false);
        dialog->CustDlgParams().SetRightForm(Note.get());
        Runner->SetDialog(dialog);
        return dialog;
    }
    void ExpectGone(size_t told = 1) {
        EXPECT_TRUE(PumpUntil([&] { return Results.size() == told; }));
        EXPECT_TRUE(PumpUntil([&] { return !Runner || Runner->Closed(); }));
        EXPECT_EQ(ActiveDialog(), nullptr) << AllWindowTrees();
        EXPECT_FALSE(Note->IsDocked());
        EXPECT_FALSE(Note->Visible());
        EXPECT_TRUE(IsWindowEnabled(Main->Handle()));
    }

    TFormPtr Note{new TNoteForm};
};

// --- Freed while it is open

TEST_F(ModelessLife, TheDialogIsFreed) {
    auto* const dialog = NewFreeDialog();
    Runner->Show();
    EXPECT_TRUE(PumpUntil(Shown(*dialog)));
    dialog->Free();
    EXPECT_EQ(Runner->Dialog(), nullptr);
    ExpectGone();
    EXPECT_THAT(Results, ElementsAre(false));
}

TEST_F(ModelessLife, TheDialogIsDeleted) {
    auto* const dialog = NewFreeDialog();
    Runner->Show();
    EXPECT_TRUE(PumpUntil(Shown(*dialog)));
    delete dialog;
    ExpectGone();
}

TEST_F(ModelessLife, TheDialogIsFreedAtOnce) {
    for (int i = 0; i < 20; ++i) {
        auto* const dialog = NewFreeDialog();
        Runner->Show();
        Sleep(static_cast<DWORD>(i)); // somewhere on the way to the dialog
        i % 2 ? dialog->Free() : delete dialog;
        ExpectGone(static_cast<size_t>(i) + 1);
    }
}

TEST_F(ModelessLife, TheDialogIsFreedOnItsWay) {
    for (int i = 0; i < 20; ++i) {
        auto* const dialog = NewFreeDialog();
        Runner->Show();
        const ULONGLONG until = GetTickCount64() + static_cast<ULONGLONG>(i) * 5;
        while (GetTickCount64() < until) {
            Application().ProcessMessages();
        }
        i % 2 ? dialog->Free() : delete dialog;
        ExpectGone(static_cast<size_t>(i) + 1);
    }
}

TEST_F(ModelessLife, TheDialogIsFreedWhileABoxOfItsIsOpen) {
    auto* const dialog = NewFreeDialog();
    dialog->SetOptions({ofFileMustExist, ofEnableSizing});
    Runner->Show();
    EXPECT_TRUE(PumpUntil(Shown(*dialog)));
    dialog->SetFilenameText("missing.txt");
    PostMessageA(dialog->DlgHandle(), WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(PumpUntil(BoxShown()));
    dialog->Free();
    ExpectGone();
    EXPECT_EQ(ShownMessageBox(), nullptr);
}

TEST_F(ModelessLife, TheDialogIsFreedByItsOwnHandler) {
    auto* const dialog = NewFreeDialog();
    dialog->SetOnUpLevelNavigating([&](TObject* sender, bool&) { sender->Free(); });
    Runner->Show();
    EXPECT_TRUE(PumpUntil(Shown(*dialog)));
    PostMessageA(dialog->DlgHandle(), WM_COMMAND, 40961, 0);
    ExpectGone();
    EXPECT_EQ(Runner->Dialog(), nullptr);
}

/// Handlers in which what they synchronize frees the dialog.
class ModelessFreedIn : public ModelessLife, public testing::WithParamInterface<const char*> {};

TEST_P(ModelessFreedIn, AHandlerThatSynchronizesItIsGone) {
    const std::string event = GetParam();
    auto* dialog = NewFreeDialog();
    const auto free = [&] {
        TThread::Synchronize([&] {
            if (dialog) {
                std::exchange(dialog, nullptr)->Free();
            }
        });
    };
    const TNotifyEvent notify = [&](TObject*) { free(); };
    WPARAM command = 40961;
    if (event == "OnShow") {
        dialog->SetOnShow(notify);
    } else if (event == "OnUpLevelNavigating") {
        dialog->SetOnUpLevelNavigating([&](TObject*, bool&) { free(); });
    } else if (event == "OnUpLevelNavigate") {
        dialog->SetOnUpLevelNavigate(notify);
    } else if (event == "OnCanClose") {
        dialog->SetFileName("one.txt");
        dialog->SetOnCanClose([&](TObject*, bool&) { free(); });
        command = IDOK;
    } else if (event == "OnClose") {
        dialog->SetOnClose(notify);
        command = IDCANCEL;
    }
    Runner->Show();
    if (event != "OnShow") {
        EXPECT_TRUE(PumpUntil(Shown(*dialog)));
        PostMessageA(dialog->DlgHandle(), WM_COMMAND, command, 0);
    }
    ExpectGone();
    EXPECT_EQ(dialog, nullptr);
    EXPECT_EQ(Runner->Dialog(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(All, ModelessFreedIn,
                         testing::Values("OnShow", "OnUpLevelNavigating", "OnUpLevelNavigate", "OnCanClose", "OnClose"),
                         [](const testing::TestParamInfo<const char*>& param) { return std::string(param.param); });

TEST_F(ModelessLife, TheDialogIsFreedByAFormThatIsFoundForIt) {
    auto* dialog = NewFreeDialog();
    Note = TFormPtr(new TNoteForm); // without a window
    Note->SetOnCreate([&](TObject*) { std::exchange(dialog, nullptr)->Free(); });
    dialog->CustDlgParams().SetRightForm(Note.get());
    Runner->Show();
    ExpectGone();
    EXPECT_EQ(dialog, nullptr);
}

TEST_F(ModelessLife, TheDialogIsFreedWhileItIsBeingClosed) {
    auto* const dialog = NewFreeDialog();
    bool closing = false;
    dialog->SetOnClose([&](TObject*) { TThread::Synchronize([&] { closing = true; }); });
    Runner->Show();
    EXPECT_TRUE(PumpUntil(Shown(*dialog)));
    PostMessageA(dialog->DlgHandle(), WM_COMMAND, IDCANCEL, 0);
    EXPECT_TRUE(PumpUntil([&] { return closing; }));
    dialog->Free();
    ExpectGone();
}

TEST_F(ModelessLife, TheOwnerFormIsFreed) {
    auto& dialog = NewDialog<TKxSaveDialog>();
    dialog.CustDlgParams().SetRightForm(Note.get());
    Runner->Show();
    EXPECT_TRUE(PumpUntil(Shown(dialog)));
    Owner.reset(); // with the runner, in whatever order
    EXPECT_EQ(ActiveDialog(), nullptr) << AllWindowTrees();
    EXPECT_FALSE(Note->IsDocked());
}

TEST_F(ModelessLife, TheOwnerFormClosesAndGoes) {
    auto& dialog = NewDialog();
    Main->SetOnClose([](TObject*, TCloseAction& action) { action = caFree; });
    Runner->Show();
    EXPECT_TRUE(PumpUntil(Shown(dialog)));
    bool gone = false;
    TForm* const form = Owner.release();
    form->SetOnDestroy([&](TObject*) { gone = true; });
    PostMessageA(form->Handle(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(PumpUntil([&] { return gone; }));
    EXPECT_EQ(ActiveDialog(), nullptr) << AllWindowTrees();
}

TEST_F(ModelessLife, TheDialogStaysWhenTheRunnerIsFreed) {
    auto* const dialog = NewFreeDialog();
    Runner->Show();
    EXPECT_TRUE(PumpUntil(Shown(*dialog)));
    std::exchange(Runner, nullptr)->Free();
    EXPECT_TRUE(IsWindowVisible(dialog->DlgHandle()));
    const std::string two = Folder.Path("two.txt");
    RunDialog([&] { return PumpUntil([&] { return !dialog->DlgHandle() && !Note->IsDocked(); }); },
              {EnterFileName(*dialog, "two.txt")});
    dialog->Free();
    EXPECT_THAT(Results, IsEmpty());
}

TEST_F(ModelessLife, TheRunnerIsFreedByAHandlerOfTheDialog) {
    auto* const dialog = NewFreeDialog();
    dialog->SetOnShow([&](TObject*) { TThread::Synchronize([&] { std::exchange(Runner, nullptr)->Free(); }); });
    Runner->Show();
    EXPECT_TRUE(PumpUntil(Shown(*dialog)));
    dialog->Free();
    ExpectGone(0);
}

// --- The end of the application, in a program of its own

class ModelessProgram : public testing::TestWithParam<const char*> {};

TEST_P(ModelessProgram, EndsCleanlyWhileItsDialogIsOpen) {
    EXPECT_EQ(RunProgram("program\\kx_modeless_program.exe", GetParam()), 7u);
}

INSTANTIATE_TEST_SUITE_P(All, ModelessProgram, testing::Values("terminate", "close", "handler", "box", "unowned"),
                         [](const testing::TestParamInfo<const char*>& param) { return std::string(param.param); });

} // namespace
} // namespace kx
