#include "kx/ui/forms/Forms.h"
#include "kx/win/Subclass.h"
#include "tests/support/TestDriver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

namespace kx {
namespace {

using namespace test;

constexpr int TypeComboId = 1136;

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

    /// Executes the dialog, which one of the steps or one of its events frees.
    void RunToItsEnd(std::vector<TStep> steps) {
        EXPECT_FALSE(RunDialog([&] { return Dialog->Execute(); }, std::move(steps)));
        EXPECT_EQ(Record.Destroyed, 1);
        EXPECT_FALSE(ActiveDialog()) << AllWindowTrees();
        MSG message;
        EXPECT_EQ(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE), 0);
    }
    void ExpectClosedOnce() const { EXPECT_EQ(Record.Closed, 1); }

    TPoint FileAt(const char* name) const {
        HWND list = FileListOf(Dialog->DialogWindow());
        return ItemCenter(list, FindItem(list, name));
    }

    TNotifyEvent FreeIt() {
        return [this](TObject*) { Dialog->Free(); };
    }

    TTempFolder Folder;
    TRecord Record;
    TRecordingDialog* Dialog = nullptr; ///< Freed by the test.
};

TEST_F(FreedDialog, FromTheMessageLoop) {
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), [&] { Dialog->Free(); }}});
    ExpectClosedOnce();
}

TEST_F(FreedDialog, ItsLifeIsOverWhenItCloses) {
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), [&] {
                      EXPECT_TRUE(TAlive(*Dialog));
                      Dialog->Free();
                  }}});
    EXPECT_FALSE(Record.LivedAtClose);
    Dialog = NewDialog(nullptr);
    EXPECT_FALSE(RunDialog(*Dialog, {Press(*Dialog, IDCANCEL)}));
    EXPECT_TRUE(Record.LivedAtClose) << "a cancelled dialog lives on";
    Dialog->Free();
}

TEST_F(FreedDialog, ByDelete) {
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), [&] { delete Dialog; }}});
    ExpectClosedOnce();
}

TEST_F(FreedDialog, WithItsOwner) {
    delete std::exchange(Dialog, nullptr);
    Record = {};
    TComponent* owner = new TComponent;
    Dialog = NewDialog(owner);
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), [&] { owner->Free(); }}});
    ExpectClosedOnce();
}

TEST_F(FreedDialog, InOnShow) {
    Dialog->SetOnShow(FreeIt());
    RunToItsEnd({});
    ExpectClosedOnce();
}

TEST_F(FreedDialog, InOnClose) {
    Dialog->SetOnClose(FreeIt());
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog),
                  [&] { PressButton(FindChild(Dialog->DialogWindow(), "Button", IDCANCEL)); }}});
    ExpectClosedOnce();
}

TEST_F(FreedDialog, InOnCloseAfterOk) {
    Dialog->SetOnClose(FreeIt());
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), EnterFileName(*Dialog, "one.txt").Do}});
    ExpectClosedOnce();
}

TEST_F(FreedDialog, InOnCanClose) {
    Dialog->SetOnCanClose([this](TObject*, bool&) { Dialog->Free(); });
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), EnterFileName(*Dialog, "one.txt").Do}});
    ExpectClosedOnce();
}

TEST_F(FreedDialog, InOnCanCloseByAClick) {
    Dialog->SetOnCanClose([this](TObject*, bool&) { Dialog->Free(); });
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), [&] {
                      SetWindowTextA(FileNameEditOf(Dialog->DialogWindow()), "one.txt");
                      Click(GetDlgItem(Dialog->DialogWindow(), IDOK));
                  }}});
    ExpectClosedOnce();
}

TEST_F(FreedDialog, InTheFirstFolderChange) {
    Dialog->SetOnFolderChange(FreeIt());
    RunToItsEnd({});
    ExpectClosedOnce();
}

TEST_F(FreedDialog, InALaterFolderChange) {
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), [&] {
                      Dialog->SetOnFolderChange(FreeIt());
                      EnterFileName(*Dialog, "inner").Do();
                  }}});
    ExpectClosedOnce();
}

TEST_F(FreedDialog, InOnSelectionChange) {
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), [&] {
                      Dialog->SetOnSelectionChange(FreeIt());
                      SelectItem(FileListOf(Dialog->DialogWindow()), "one.txt");
                  }}});
    ExpectClosedOnce();
}

TEST_F(FreedDialog, InOnTypeChange) {
    Dialog->SetOnTypeChange(FreeIt());
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), [&] {
                      ChooseInCombo(FindChild(Dialog->DialogWindow(), "ComboBox", TypeComboId), 1, CBN_SELENDOK);
                  }}});
    ExpectClosedOnce();
}

TEST_F(FreedDialog, InALaterFolderChangeByADoubleClick) {
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), [&] {
                      Dialog->SetOnFolderChange(FreeIt());
                      DoubleClickAt(FileAt("inner"));
                  }}});
    ExpectClosedOnce();
}

TEST_F(FreedDialog, InOnSelectionChangeByAClick) {
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), [&] {
                      Dialog->SetOnSelectionChange(FreeIt());
                      ClickAt(FileAt("one.txt"));
                  }}});
    ExpectClosedOnce();
}

TEST_F(FreedDialog, InOnTypeChangeByTheKeyboard) {
    Dialog->SetOnTypeChange(FreeIt());
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), [&] {
                      SetFocus(FindChild(Dialog->DialogWindow(), "ComboBox", TypeComboId));
                      PressKey(VK_DOWN);
                      PressKey(VK_RETURN);
                  }}});
    ExpectClosedOnce();
}

TEST_F(FreedDialog, InOnIncludeItemBeforeItWasShown) {
    Dialog->SetOptions({ofEnableIncludeNotify});
    Dialog->SetOnIncludeItem([this](const OFNOTIFYEXA&, bool&) { Dialog->Free(); });
    RunToItsEnd({});
    EXPECT_EQ(Record.Closed, 0) << "OnClose goes with OnShow";
}

TEST_F(FreedDialog, WhileABoxOfItsOwnIsOpen) {
    Dialog->SetOptions({ofFileMustExist});
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), EnterFileName(*Dialog, "missing.txt").Do},
                 {"the box is shown", BoxShown(), [&] { Dialog->Free(); }}});
    ExpectClosedOnce();
    EXPECT_FALSE(ShownMessageBox());
}

TEST_F(FreedDialog, WhileAnotherDialogIsOpenAboveIt) {
    TOpenDialog inner;
    inner.SetInitialDir(Folder.Path());
    bool innerResult = true;
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), [&] { innerResult = inner.Execute(); }},
                 {"the inner dialog is shown", Shown(inner), [&] { Dialog->Free(); }}});
    ExpectClosedOnce();
    EXPECT_FALSE(innerResult);
    EXPECT_EQ(inner.Handle(), nullptr);
    EXPECT_FALSE(RunDialog(inner, {Press(inner, IDCANCEL)})) << "the inner dialog can be shown again";
}

TEST_F(FreedDialog, AboveAnotherDialogThatGoesOn) {
    TOpenDialog outer;
    outer.SetInitialDir(Folder.Path());
    const bool confirmed = RunDialog(outer, {Perform("open the inner dialog", [&] { EXPECT_FALSE(Dialog->Execute()); }),
                                             {"the inner dialog is shown", Shown(*Dialog), [&] { Dialog->Free(); }},
                                             {"the outer dialog is enabled", Shown(outer), {}},
                                             EnterFileName(outer, "one.txt")});
    EXPECT_TRUE(confirmed);
    EXPECT_EQ(Record.Destroyed, 1);
    ExpectClosedOnce();
    EXPECT_EQ(outer.FileName(), Folder.Path("one.txt"));
}

TEST_F(FreedDialog, WhileItsWindowIsBeingMade) {
    // The owner window is told that it is disabled before the dialog has a window.
    const auto form = std::unique_ptr<TForm, TFreeDeleter>(NewForm<TForm>(nullptr));
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
    RunToItsEnd({});
    EXPECT_EQ(Record.Closed, 0);
    EXPECT_NE(IsWindowEnabled(form->Handle()), 0);
}

TEST_F(FreedDialog, WhileItsWindowIsBeingDestroyed) {
    TSubclass watch;
    watch.SetHandler([&](TMessage& message) {
        if (message.Msg == WM_DESTROY && Dialog) {
            std::exchange(Dialog, nullptr)->Free();
        }
        watch.CallPrevious(message);
    });
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), [&] {
                      watch.Install(Dialog->DialogWindow());
                      PressButton(FindChild(Dialog->DialogWindow(), "Button", IDCANCEL));
                  }}});
    ExpectClosedOnce();
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
    RunToItsEnd({});
    EXPECT_GT(messages, 0);
    EXPECT_FALSE(seen);
}

TEST_F(FreedDialog, IsCancelledByACommandAndOutOfSightAtOnce) {
    // The system forbids its hooks to end the dialog in another way.
    const auto form = std::unique_ptr<TForm, TFreeDeleter>(NewForm<TForm>(nullptr));
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
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), [&] {
                      HWND window = Dialog->DialogWindow();
                      watch.Install(window);
                      EXPECT_EQ(GetWindow(window, GW_OWNER), form->Handle());
                      Dialog->Free();
                      EXPECT_EQ(IsWindowVisible(window), 0);
                      EXPECT_NE(IsWindowEnabled(form->Handle()), 0) << "or another program's window came to the front";
                  }}});
    EXPECT_THAT(commands, testing::ElementsAre(IDCANCEL));
}

TEST_F(FreedDialog, LeavesAnOwnerDisabledThatWasSo) {
    const auto form = std::unique_ptr<TForm, TFreeDeleter>(NewForm<TForm>(nullptr));
    form->Show();
    PumpUntil([&] { return GetActiveWindow() == form->Handle(); });
    EnableWindow(form->Handle(), FALSE);
    ASSERT_EQ(GetActiveWindow(), form->Handle());
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), [&] {
                      Dialog->Free();
                      EXPECT_EQ(IsWindowEnabled(form->Handle()), 0);
                  }}});
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
    EXPECT_FALSE(RunDialog(*dialog, {Perform("press OK, and free it before", [&] {
        HWND window = dialog->DialogWindow();
        SetWindowTextA(FileNameEditOf(window), "one.txt");
        PostMessageA(window, WM_COMMAND, IDOK, 0);
        dialog->Free();
    })}));
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
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), EnterFileName(*Dialog, "one.txt").Do}});
    ExpectClosedOnce();
}

TEST_F(FreedDialog, WhenItAsksForTheNames) {
    Dialog->SetOptions({ofAllowMultiSelect});
    TSubclass watch;
    watch.SetHandler([&](TMessage& message) {
        if (message.Msg == CDM_GETSPEC && Dialog) {
            std::exchange(Dialog, nullptr)->Free();
        }
        watch.CallPrevious(message);
    });
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), [&] {
                      HWND window = Dialog->DialogWindow();
                      SetWindowTextA(FileNameEditOf(window), "one.txt");
                      watch.Install(window);
                      PressButton(FindChild(window, "Button", IDOK));
                  }}});
    ExpectClosedOnce();
}

TEST_F(FreedDialog, WhenItAsksForTheNamesOfANewSelection) {
    Dialog->SetOptions({ofAllowMultiSelect});
    int changes = 0;
    Dialog->SetOnSelectionChange([&](TObject*) { ++changes; });
    TSubclass watch;
    watch.SetHandler([&](TMessage& message) {
        if (message.Msg == CDM_GETSPEC && Dialog) {
            std::exchange(Dialog, nullptr)->Free();
        }
        watch.CallPrevious(message);
    });
    RunToItsEnd({{"the dialog is shown", Shown(*Dialog), [&] {
                      watch.Install(Dialog->DialogWindow());
                      changes = 0;
                      SelectItem(FileListOf(watch.Handle()), "one.txt");
                  }}});
    ExpectClosedOnce();
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
    ExpectClosedOnce();
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
