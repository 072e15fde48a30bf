// SPDX-License-Identifier: MIT
// File dialogs that are freed while they are shown.

#include "kx/win/Subclass.h"
#include "tests/support/TestDriver.h"
#include "tests/support/TestForms.h"

#include <commdlg.h>
#include <dlgs.h>
#include <thread>

namespace kx {
namespace {

using namespace test;

/// What is left of a dialog's life: kept outside it.
struct TRecord {
    int Closed = 0;
    int Destroyed = 0;
    bool LivedAtClose = false; ///< The component had not begun to go.
};

/// A dialog that subclasses its window and overrides DoClose, as descendants do.
class TRecordingDialog : public TOpenDialog {
public:
    TRecordingDialog(TComponent* owner, TRecord& record) : TOpenDialog(owner), FRecord(record) {}
    ~TRecordingDialog() override {
        CloseShown();
        ++FRecord.Destroyed;
    }

    bool Execute() override {
        const TAlive alive(*this);
        const bool result = TOpenDialog::Execute();
        if (alive) {
            FExecuted = true;
        }
        return result;
    }

protected:
    void DoShow() override {
        FMessages.SetHandler([this](TMessage& message) {
            ++FCount;
            FMessages.CallPrevious(message);
        });
        FMessages.Install(DialogWindow());
        TOpenDialog::DoShow();
    }
    void DoClose() override {
        ++FRecord.Closed;
        FRecord.LivedAtClose = static_cast<bool>(TAlive(*this));
        FMessages.Uninstall();
        TOpenDialog::DoClose();
    }

private:
    TRecord& FRecord;
    TSubclass FMessages;
    int FCount = 0;
    bool FExecuted = false;
};

class FreedDialog : public testing::Test {
protected:
    FreedDialog() {
        Folder.AddFile("one.txt");
        Folder.AddFile("inner\\two.txt");
        Dialog = NewDialog(nullptr);
    }

    TRecordingDialog* NewDialog(TComponent* owner) {
        auto dialog = std::make_unique<TRecordingDialog>(owner, Record);
        dialog->SetInitialDir(Folder.Path());
        dialog->SetFilter("Text|*.txt|All|*.*");
        return dialog.release();
    }

    /// Executes the dialog, which `act`, once it is shown, the steps behind it or an event frees.
    void RunToItsEnd(test::TAction act = {}, std::vector<TStep> steps = {}) {
        if (act) {
            steps.insert(steps.begin(), {"the dialog is shown", Shown(*Dialog), std::move(act)});
        }
        EXPECT_FALSE(RunDialog([&] { return Dialog->Execute(); }, std::move(steps)));
        EXPECT_EQ(Record.Destroyed, 1);
        EXPECT_EQ(Record.Closed, Closings);
        EXPECT_FALSE(ActiveDialog()) << AllWindowTrees();
        MSG message;
        EXPECT_EQ(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE), 0);
    }

    TPoint FileAt(const char* name) const {
        HWND list = FileListOf(Dialog->DialogWindow());
        return ItemCenter(list, FindItem(list, name));
    }

    /// Frees the dialog when the watched window gets that message.
    void FreeAt(UINT due) {
        Watch.SetHandler([this, due](TMessage& message) {
            if (message.Msg == due && Dialog) {
                std::exchange(Dialog, nullptr)->Free();
            }
            Watch.CallPrevious(message);
        });
    }
    TNotifyEvent FreeIt() {
        return [this](TObject*) { Dialog->Free(); };
    }

    TTempFolder Folder;
    TRecord Record;
    int Closings = 1;                   ///< Expected.
    TRecordingDialog* Dialog = nullptr; ///< Freed by the test.
    TSubclass Watch;
};

TEST_F(FreedDialog, FromTheMessageLoop) {
    RunToItsEnd([&] { Dialog->Free(); });
}

TEST_F(FreedDialog, ItsLifeIsOverWhenItCloses) {
    RunToItsEnd([&] {
        EXPECT_TRUE(TAlive(*Dialog));
        Dialog->Free();
    });
    EXPECT_FALSE(Record.LivedAtClose);
    Dialog = NewDialog(nullptr);
    EXPECT_FALSE(RunDialog(*Dialog, {Cancel(*Dialog)}));
    EXPECT_TRUE(Record.LivedAtClose) << "a cancelled dialog lives on";
    Dialog->Free();
}

TEST_F(FreedDialog, ByDelete) {
    RunToItsEnd([&] { delete Dialog; });
}

TEST_F(FreedDialog, WithItsOwner) {
    delete std::exchange(Dialog, nullptr);
    Record = {};
    auto* const owner = new TComponent;
    Dialog = NewDialog(owner);
    RunToItsEnd([&] { owner->Free(); });
}

TEST_F(FreedDialog, InOnShow) {
    Dialog->SetOnShow(FreeIt());
    RunToItsEnd();
}

TEST_F(FreedDialog, InOnClose) {
    Dialog->SetOnClose(FreeIt());
    RunToItsEnd([&] { PressButton(FindChild(Dialog->DialogWindow(), "Button", IDCANCEL)); });
}

TEST_F(FreedDialog, InOnCloseAfterOk) {
    Dialog->SetOnClose(FreeIt());
    RunToItsEnd(EnterFileName(*Dialog, "one.txt").Do);
}

TEST_F(FreedDialog, InOnCanClose) {
    Dialog->SetOnCanClose([this](TObject*, bool&) { Dialog->Free(); });
    RunToItsEnd(EnterFileName(*Dialog, "one.txt").Do);
}

TEST_F(FreedDialog, InOnCanCloseByAClick) {
    Dialog->SetOnCanClose([this](TObject*, bool&) { Dialog->Free(); });
    RunToItsEnd([&] {
        SetWindowTextA(FileNameEditOf(Dialog->DialogWindow()), "one.txt");
        Click(GetDlgItem(Dialog->DialogWindow(), IDOK));
    });
}

TEST_F(FreedDialog, InTheFirstFolderChange) {
    Dialog->SetOnFolderChange(FreeIt());
    RunToItsEnd();
}

TEST_F(FreedDialog, InALaterFolderChange) {
    RunToItsEnd([&] {
        Dialog->SetOnFolderChange(FreeIt());
        EnterFileName(*Dialog, "inner").Do();
    });
}

TEST_F(FreedDialog, InOnSelectionChange) {
    RunToItsEnd([&] {
        Dialog->SetOnSelectionChange(FreeIt());
        SelectItem(FileListOf(Dialog->DialogWindow()), "one.txt");
    });
}

TEST_F(FreedDialog, InOnTypeChange) {
    Dialog->SetOnTypeChange(FreeIt());
    RunToItsEnd([&] { ChooseInCombo(FindChild(Dialog->DialogWindow(), "ComboBox", cmb1), 1, CBN_SELENDOK); });
}

TEST_F(FreedDialog, InALaterFolderChangeByADoubleClick) {
    RunToItsEnd([&] {
        Dialog->SetOnFolderChange(FreeIt());
        DoubleClickAt(FileAt("inner"));
    });
}

TEST_F(FreedDialog, InOnSelectionChangeByAClick) {
    RunToItsEnd([&] {
        Dialog->SetOnSelectionChange(FreeIt());
        ClickAt(FileAt("one.txt"));
    });
}

TEST_F(FreedDialog, InOnTypeChangeByTheKeyboard) {
    Dialog->SetOnTypeChange(FreeIt());
    RunToItsEnd([&] {
        SetFocus(FindChild(Dialog->DialogWindow(), "ComboBox", cmb1));
        PressKey(VK_DOWN);
        PressKey(VK_RETURN);
    });
}

TEST_F(FreedDialog, InOnIncludeItemBeforeItWasShown) {
    Dialog->SetOptions({ofEnableIncludeNotify});
    Dialog->SetOnIncludeItem([this](const OFNOTIFYEXA&, bool&) { Dialog->Free(); });
    Closings = 0; // OnClose goes with OnShow
    RunToItsEnd();
}

TEST_F(FreedDialog, WhileABoxOfItsOwnIsOpen) {
    Dialog->SetOptions({ofFileMustExist});
    RunToItsEnd(EnterFileName(*Dialog, "missing.txt").Do, {{"the box is shown", BoxShown(), [&] { Dialog->Free(); }}});
    EXPECT_FALSE(ShownMessageBox());
}

TEST_F(FreedDialog, WhileAnotherDialogIsOpenAboveIt) {
    TOpenDialog inner;
    inner.SetInitialDir(Folder.Path());
    bool innerResult = true;
    RunToItsEnd([&] { innerResult = inner.Execute(); },
                {{"the inner dialog is shown", Shown(inner), [&] { Dialog->Free(); }}});
    EXPECT_FALSE(innerResult);
    EXPECT_EQ(inner.Handle(), nullptr);
    EXPECT_FALSE(RunDialog(inner, {Cancel(inner)})) << "the inner dialog can be shown again";
}

TEST_F(FreedDialog, AboveAnotherDialogThatGoesOn) {
    TOpenDialog outer;
    outer.SetInitialDir(Folder.Path());
    const bool confirmed = RunDialog(outer, [&] { EXPECT_FALSE(Dialog->Execute()); },
                                     {{"the inner dialog is shown", Shown(*Dialog), [&] { Dialog->Free(); }},
                                      {"the outer dialog is enabled", Shown(outer), {}},
                                      EnterFileName(outer, "one.txt")});
    EXPECT_TRUE(confirmed);
    EXPECT_EQ(Record.Destroyed, 1);
    EXPECT_EQ(Record.Closed, 1);
    EXPECT_EQ(outer.FileName(), Folder.Path("one.txt"));
}

TEST_F(FreedDialog, WhileItsWindowIsBeingMade) {
    // The owner window is told that it is disabled before the dialog has a window.
    const TFormPtr form(NewForm<TForm>(nullptr));
    form->Show();
    PumpUntil([&] { return GetActiveWindow() == form->Handle(); });
    TSubclass watch;
    watch.SetHandler([&](TMessage& message) {
        if (message.Msg == WM_ENABLE && message.WParam == 0 && Dialog) {
            std::exchange(Dialog, nullptr)->Free();
        }
        watch.CallPrevious(message);
    });
    watch.Install(form->Handle());
    Closings = 0;
    RunToItsEnd();
    EXPECT_NE(IsWindowEnabled(form->Handle()), 0);
}

TEST_F(FreedDialog, WhileItsWindowIsBeingDestroyed) {
    FreeAt(WM_DESTROY);
    RunToItsEnd([&] {
        Watch.Install(Dialog->DialogWindow());
        PressButton(FindChild(Dialog->DialogWindow(), "Button", IDCANCEL));
    });
}

TEST_F(FreedDialog, InOnShowIsNeverSeen) {
    int messages = 0;
    bool seen = false;
    TSubclass watch;
    watch.SetHandler([&](TMessage& message) {
        watch.CallPrevious(message);
        ++messages;
        seen = seen || IsWindowVisible(watch.Handle()) != 0;
    });
    Dialog->SetOnShow([&](TObject*) {
        watch.Install(Dialog->DialogWindow());
        Dialog->Free();
    });
    RunToItsEnd();
    EXPECT_GT(messages, 0);
    EXPECT_FALSE(seen);
}

TEST_F(FreedDialog, IsCancelledByACommandAndOutOfSightAtOnce) {
    // The system forbids its hooks to end the dialog in another way.
    const TFormPtr form(NewForm<TForm>(nullptr));
    form->Show();
    PumpUntil([&] { return GetActiveWindow() == form->Handle(); });
    std::vector<int> commands;
    TSubclass watch;
    watch.SetHandler([&](TMessage& message) {
        if (message.Msg == WM_COMMAND) {
            commands.push_back(message.WParamLo());
        }
        watch.CallPrevious(message);
    });
    RunToItsEnd([&] {
        HWND window = Dialog->DialogWindow();
        watch.Install(window);
        EXPECT_EQ(GetWindow(window, GW_OWNER), form->Handle());
        Dialog->Free();
        EXPECT_EQ(IsWindowVisible(window), 0);
        EXPECT_NE(IsWindowEnabled(form->Handle()), 0) << "or another program's window came to the front";
    });
    EXPECT_THAT(commands, testing::ElementsAre(IDCANCEL));
}

TEST_F(FreedDialog, LeavesAnOwnerDisabledThatWasSo) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    form->Show();
    PumpUntil([&] { return GetActiveWindow() == form->Handle(); });
    EnableWindow(form->Handle(), FALSE);
    ASSERT_EQ(GetActiveWindow(), form->Handle());
    RunToItsEnd([&] {
        Dialog->Free();
        EXPECT_EQ(IsWindowEnabled(form->Handle()), 0);
    });
}

TEST_F(FreedDialog, TakesNoCommandAnyMore) {
    Folder.AddFile("one.txt");
    delete std::exchange(Dialog, nullptr);
    class TTellingDialog : public TOpenDialog {
    public:
        explicit TTellingDialog(bool& confirmed) : FConfirmed(confirmed) {}
        bool Execute() override {
            return DoExecute([&confirmed = FConfirmed](OPENFILENAMEA& record) {
                confirmed = GetOpenFileNameA(&record) != FALSE;
                return confirmed;
            });
        }

    private:
        bool& FConfirmed;
    };
    bool confirmed = true;
    auto* const dialog = new TTellingDialog(confirmed);
    dialog->SetInitialDir(Folder.Path());
    EXPECT_FALSE(RunDialog(*dialog, [&] {
        HWND window = dialog->DialogWindow();
        SetWindowTextA(FileNameEditOf(window), "one.txt");
        PostMessageA(window, WM_COMMAND, IDOK, 0);
        dialog->Free();
    }));
    EXPECT_FALSE(confirmed);
}

TEST_F(FreedDialog, InAnOnCanCloseThatGoesOnWithALoop) {
    Dialog->SetOnCanClose([this](TObject*, bool&) {
        Dialog->Free();
        bool over = false;
        PostMessageA(nullptr, WM_NULL, 0, 0);
        for (MSG message; !over && GetMessageA(&message, nullptr, 0, 0) > 0;) {
            over = !message.hwnd && message.message == WM_NULL; // behind what cancels the dialog
            DispatchMessageA(&message);
        }
    });
    RunToItsEnd(EnterFileName(*Dialog, "one.txt").Do);
}

TEST_F(FreedDialog, WhenItAsksForTheNames) {
    Dialog->SetOptions({ofAllowMultiSelect});
    FreeAt(CDM_GETSPEC);
    RunToItsEnd([&] {
        HWND window = Dialog->DialogWindow();
        SetWindowTextA(FileNameEditOf(window), "one.txt");
        Watch.Install(window);
        PressButton(FindChild(window, "Button", IDOK));
    });
}

TEST_F(FreedDialog, WhenItAsksForTheNamesOfANewSelection) {
    Dialog->SetOptions({ofAllowMultiSelect});
    int changes = 0;
    Dialog->SetOnSelectionChange([&](TObject*) { ++changes; });
    FreeAt(CDM_GETSPEC);
    RunToItsEnd([&] {
        Watch.Install(Dialog->DialogWindow());
        changes = 0;
        SelectItem(FileListOf(Watch.Handle()), "one.txt");
    });
    EXPECT_EQ(changes, 0);
}

TEST_F(FreedDialog, ByAnotherThreadThanTheOneThatShowsIt) {
    Application().Handle(); // belongs to this thread
    bool result = true;
    std::thread worker([&] { result = Dialog->Execute(); });
    EXPECT_TRUE(PumpUntil(Shown(*Dialog)));
    Dialog->Free();
    worker.join();
    EXPECT_FALSE(result);
    EXPECT_EQ(Record.Destroyed, 1);
    EXPECT_EQ(Record.Closed, 1);
}

TEST_F(FreedDialog, ByAnotherThreadWhileABoxIsOpen) {
    Application().Handle();
    Dialog->SetOptions({ofFileMustExist});
    bool result = true;
    std::thread worker([&] { result = Dialog->Execute(); });
    EXPECT_TRUE(PumpUntil(Shown(*Dialog)));
    HWND window = Dialog->DialogWindow();
    SetWindowTextA(FileNameEditOf(window), "missing.txt");
    PostMessageA(FindChild(window, "Button", IDOK), BM_CLICK, 0, 0);
    EXPECT_TRUE(PumpUntil(BoxShown()));
    Dialog->Free();
    worker.join();
    EXPECT_FALSE(result);
    EXPECT_EQ(Record.Destroyed, 1);
}

} // namespace
} // namespace kx
