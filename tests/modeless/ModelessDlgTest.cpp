// SPDX-License-Identifier: MIT
// Showing a dialog without blocking: the component and its thread.

#include "ModelessTest.h"

#include "kx/win/Apartment.h"
#include "tests/support/Cycles.h"
#include "tests/support/Grow.h"
#include "tests/support/TestKey.h"

#include <stdexcept>

namespace kx {
namespace {

using namespace test;

class Modeless : public TModelessTest {};

// --- The component

TEST_F(Modeless, ComponentBeginsClosedAndWithoutADialog) {
    const TKxModelessDialog runner;
    EXPECT_EQ(runner.Dialog(), nullptr);
    EXPECT_TRUE(runner.Closed());
    EXPECT_FALSE(runner.DialogResult());
    EXPECT_EQ(runner.Thread(), nullptr);
}

TEST_F(Modeless, TheDialogIsForgottenWhenItIsFreed) {
    auto& dialog = NewDialog();
    EXPECT_EQ(Runner->Dialog(), &dialog);
    auto* const other = new TKxOpenDialog(nullptr);
    Runner->SetDialog(other);
    dialog.Free();
    EXPECT_EQ(Runner->Dialog(), other);
    delete other;
    EXPECT_EQ(Runner->Dialog(), nullptr);
    Runner->SetDialog(nullptr);
}

// --- Showing

TEST_F(Modeless, ShowReturnsAtOnceAndTheDialogRunsInAThreadOfItsOwn) {
    auto& dialog = NewDialog();
    Runner->Show();
    EXPECT_EQ(dialog.GetCommonDialogHandle(), nullptr); // shown only with the help of this thread
    EXPECT_FALSE(Runner->Closed());
    EXPECT_TRUE(PumpUntil(Shown(dialog)));
    EXPECT_NE(ThreadOf(dialog.GetCommonDialogHandle()), MainThread);
    EXPECT_EQ(ThreadOf(dialog.GetCommonDialogHandle()), Runner->Thread()->ThreadID());
    EXPECT_TRUE(IsWindowEnabled(Main->Handle()));
    dialog.CloseDialog(mrCancel);
    EXPECT_TRUE(PumpUntil([&] { return Runner->Closed(); }));
    EXPECT_THAT(Results, ElementsAre(false));
}

TEST_F(Modeless, ASecondShowOnlyBringsTheDialogToTheTop) {
    auto& dialog = NewDialog();
    HWND window = nullptr;
    const TKxModelessThread* thread = nullptr;
    int shown = 0;
    dialog.SetOnShow([&](TObject*) { ++shown; });
    Show(dialog,
         [&] {
             window = dialog.DlgHandle();
             thread = Runner->Thread();
         },
         {// Which of two threads' windows is in front settles late: whoever is late is asked again.
          {"the main form is in front",
           [&] {
               Main->BringToFront();
               return TopWindows().front() == Main->Handle();
           },
           {}},
          {"the dialog is on top",
           [&] {
               Runner->Show();
               return TopWindows().front() == window;
           },
           [&] { EXPECT_EQ(Runner->Thread(), thread); }},
          {"it is the same dialog", {}, [&] { EXPECT_EQ(dialog.DlgHandle(), window); }},
          Cancel(dialog)});
    EXPECT_EQ(shown, 1);
    EXPECT_THAT(Results, ElementsAre(false));
}

TEST_F(Modeless, ShowWithoutADialogFailsInTheThread) {
    std::string failure;
    Runner->SetOnDialogClosed([&](TObject*, bool result) {
        try {
            std::rethrow_exception(Runner->Thread()->FatalException());
        } catch (const Exception& e) {
            failure = e.ClassName();
        }
        Results.push_back(result);
    });
    Show({});
    EXPECT_EQ(failure, "EInvalidOperation");
    EXPECT_THAT(Results, ElementsAre(false));
    EXPECT_TRUE(Runner->Closed());
    Show({}); // and again
    EXPECT_THAT(Results, ElementsAre(false, false));
}

TEST_F(Modeless, CloseLeavesTheDialogOpen) {
    auto& dialog = NewDialog();
    Runner->Close(); // while it is not shown
    for (const bool popups : {true, false}) {
        Runner->SetAutoClosePopups(popups);
        Show(dialog, [&] { Runner->Close(); },
             {{"the dialog has got its messages", [&] { return SendMessageA(dialog.DlgHandle(), WM_NULL, 0, 0) == 0; },
               [&] {
                   EXPECT_TRUE(IsWindowVisible(dialog.DlgHandle()));
                   EXPECT_TRUE(IsWindowEnabled(dialog.DlgHandle()));
                   EXPECT_FALSE(Runner->Closed());
               }},
              Cancel(dialog)});
    }
    EXPECT_THAT(Results, ElementsAre(false, false));
}

TEST_F(Modeless, TheResultIsToldOnceInTheApplicationsThread) {
    auto& dialog = NewDialog();
    Show({EnterFileName(dialog, "two.txt")});
    EXPECT_THAT(Results, ElementsAre(true));
    EXPECT_TRUE(Runner->Closed());
    EXPECT_TRUE(Runner->DialogResult());
    EXPECT_EQ(dialog.FileName(), Folder.Path("two.txt"));
    ShowAndCancel(dialog);
    EXPECT_THAT(Results, ElementsAre(true, false));
    EXPECT_FALSE(Runner->DialogResult());
    Application().ProcessMessages();
    EXPECT_EQ(Results.size(), 2u);
}

TEST_F(Modeless, AShowingThatFailsTellsFalseAlsoAfterOneThatWasConfirmed) {
    auto& dialog = NewDialog();
    Show({EnterFileName(dialog, "two.txt")});
    dialog.Free();
    Show({});
    EXPECT_THAT(Results, ElementsAre(true, false));
}

TEST_F(Modeless, TheInternalNotificationIsGivenBack) {
    auto& dialog = NewDialog();
    int notified = 0;
    dialog.SetCommonDialogInternalShowEvent([&](TObject*) { ++notified; });
    ShowAndCancel(dialog);
    EXPECT_EQ(notified, 0);
    EXPECT_FALSE(RunDialog(dialog, {Cancel(dialog)})); // blocks again, in this thread
    EXPECT_EQ(notified, 1);
}

TEST_F(Modeless, ADialogThatIsShownAlreadyFails) {
    auto& dialog = NewDialog();
    EXPECT_FALSE(Look(dialog, [&] { Show({}); }));
    EXPECT_THAT(Results, ElementsAre(false));
    ShowAndCancel(dialog);
}

TEST_F(Modeless, AHandlerOfTheEndMayShowAgainLater) {
    auto& dialog = NewDialog();
    ShowAndCancel(dialog);
    Runner->SetOnDialogClosed([&](TObject*, bool) {
        Results.push_back(false);
        if (Results.size() < 4) {
            Application().QueueCall([&] { Runner->Show(); });
        }
    });
    const auto cancel = [&] { return Cancel(dialog); };
    RunDialog(
        [&] {
            Runner->Show();
            return PumpUntil([&] { return Results.size() == 4; });
        },
        {cancel(), Await("it has closed", [&] { return Results.size() == 2; }), cancel(),
         Await("it has closed again", [&] { return Results.size() == 3; }), cancel()});
}

TEST_F(Modeless, TheEndOfAShowingThatWasTerminatedLeavesTheNextOneAlone) {
    auto& second = NewDialog();
    auto& first = NewDialog();
    RunDialog(
        [&] {
            Runner->Show();
            return PumpUntil([&] { return Results.size() == 2; });
        },
        {{"the first one is shown", Shown(first),
          [&] {
              Runner->Thread()->Terminate();
              EXPECT_TRUE(Runner->Closed());
              Runner->SetDialog(&second);
              Runner->Show();
          }},
         {"the second one is, and the first has ended", [&] { return Shown(second)() && Results.size() == 1; },
          [&] { EXPECT_FALSE(Runner->Closed()); }},
         Cancel(second)});
    EXPECT_THAT(Results, ElementsAre(false, false));
}

TEST_F(Modeless, AHandlerOfTheEndMayFreeTheRunnerOrThrow) {
    auto& dialog = NewDialog();
    Runner->SetOnDialogClosed([&](TObject*, bool) {
        Results.push_back(false);
        throw std::runtime_error("closed");
    });
    ShowAndCancel(dialog);
    EXPECT_THAT(TakeExceptions(), ElementsAre("closed"));
    EXPECT_TRUE(PumpUntil([&] { return Runner->Closed(); }));
    Runner->SetOnDialogClosed([&](TObject* sender, bool) {
        Results.push_back(false);
        sender->Free();
    });
    ShowAndCancel(dialog);
}

// --- The application meanwhile

TEST_F(Modeless, TheApplicationIsUsedByMouseAndKeyboardWhileTheDialogIsOpen) {
    auto& dialog = NewDialog();
    Show({MoveAside(dialog),
          {"the dialog is aside", [&] { return ScreenRectOf(dialog.DlgHandle()).Left == 330; },
           [&] { Click(Main->Button->Handle()); }},
          {"the button was clicked", [&] { return Main->Clicks == 1; },
           [&] {
               EXPECT_TRUE(IsWindowVisible(dialog.DlgHandle()));
               Click(Main->Edit->Handle());
           }},
          {"the edit has the focus", [&] { return Main->Edit->Focused(); }, [] { TypeText("typed"); }},
          {"the text is there", [&] { return Main->Edit->Text() == "typed"; },
           [&] {
               Screenshot("modeless_main");
               Click(dialog.EditHandle());
           }},
          {"the dialog is active", [&] { return GetForegroundWindow() == dialog.DlgHandle(); },
           [] { TypeText("two.txt"); }},
          {"the name is there", [&] { return dialog.FilenameText() == "two.txt"; },
           [&] { Click(GetDlgItem(dialog.DlgHandle(), IDOK)); }}});
    EXPECT_THAT(Main->ClickThreads, ElementsAre(MainThread));
    EXPECT_THAT(Results, ElementsAre(true));
    EXPECT_EQ(dialog.FileName(), Folder.Path("two.txt"));
}

TEST_F(Modeless, AllWindowsOfTheApplicationAreEnabledWhenTheDialogIsShown) {
    auto& dialog = NewDialog();
    const TFormPtr other(NewForm<TForm>(nullptr));
    other->Show();
    EnableWindow(other->Handle(), FALSE);
    ShowAndCancel(dialog, [&] {
        EXPECT_TRUE(IsWindowEnabled(other->Handle()));
        EXPECT_TRUE(IsWindowEnabled(Main->Handle()));
        EXPECT_TRUE(IsWindowEnabled(Application().Handle()));
    });
    EXPECT_EQ(Application().ModalLevel(), 0);
}

TEST_F(Modeless, AnotherDialogMayBlockTheApplicationMeanwhile) {
    auto& dialog = NewDialog<TKxOpenDialog>();
    TKxOpenDialog inner(Main);
    inner.SetInitialDir(Folder.Path());
    Show(dialog,
         [&] {
             EXPECT_TRUE(RunDialog(inner,
                                   [&] {
                                       EXPECT_EQ(TKxCustomOpenDialog::CreationControl(), &inner);
                                       EXPECT_TRUE(IsWindowEnabled(dialog.DlgHandle()));
                                   },
                                   {EnterFileName(inner, "one.txt")}));
         },
         {EnterFileName(dialog, "two.txt")});
    EXPECT_EQ(inner.FileName(), Folder.Path("one.txt"));
    EXPECT_EQ(dialog.FileName(), Folder.Path("two.txt"));
}

TEST_F(Modeless, TwoDialogsAreOpenAtOnce) {
    auto& first = NewDialog<TKxOpenDialog>();
    TKxModelessDialog second;
    TKxSaveDialog save(Main);
    save.SetInitialDir(Folder.Path());
    second.SetDialog(&save);
    bool saved = false;
    second.SetOnDialogClosed([&](TObject*, bool result) { saved = result; });
    Show(first, [&] { second.Show(); },
         {{"the second is shown", Shown(save),
           [&] { EXPECT_NE(ThreadOf(save.DlgHandle()), ThreadOf(first.DlgHandle())); }},
          EnterFileName(save, "fresh.txt"),
          Await("the second has closed", [&] { return second.Closed() && saved; }),
          {"the first is open still", Shown(first), {}},
          EnterFileName(first, "one.txt")});
    EXPECT_EQ(save.FileName(), Folder.Path("fresh.txt"));
    EXPECT_THAT(Results, ElementsAre(true));
}

// --- Handlers

TEST_F(Modeless, EventsOfTheDialogFireInItsThread) {
    auto& dialog = NewDialog();
    std::vector<DWORD> threads;
    DWORD synchronized = 0;
    const TNotifyEvent note = [&](TObject*) { threads.push_back(GetCurrentThreadId()); };
    dialog.SetOnShow(note);
    dialog.SetOnFolderChange(note);
    dialog.SetOnClose(note);
    dialog.SetOnCanClose([&](TObject*, bool&) {
        TThread::Synchronize([&] {
            synchronized = GetCurrentThreadId();
            Main->SetCaption("Chosen: " + dialog.FileName());
        });
    });
    DWORD own = 0;
    Show(dialog, [&] { own = Runner->Thread()->ThreadID(); }, {EnterFileName(dialog, "one.txt")});
    EXPECT_THAT(threads, testing::SizeIs(testing::Ge(3u)));
    EXPECT_THAT(threads, testing::Each(own));
    EXPECT_EQ(synchronized, MainThread);
    EXPECT_EQ(Main->Caption(), "Chosen: " + Folder.Path("one.txt"));
}

TEST_F(Modeless, AHandlerMaySynchronizeWhileTheApplicationClosesTheDialog) {
    auto& dialog = NewDialog();
    bool asked = false;
    dialog.SetFileName("one.txt");
    dialog.SetOnCanClose([&](TObject*, bool&) { TThread::Synchronize([&] { asked = true; }); });
    Show(dialog, [&] { dialog.CloseDialog(mrOk); }); // waits for the dialog's answer
    EXPECT_TRUE(asked);
    EXPECT_THAT(Results, ElementsAre(true));
}

TEST_F(Modeless, HandlersMayThrow) {
    auto& dialog = NewDialog();
    const auto fail = [](const char* text) { return [text](TObject*) { throw std::runtime_error(text); }; };
    dialog.SetOnShow(fail("show"));
    dialog.SetOnClose(fail("close"));
    dialog.SetOnUpLevelNavigate(fail("up"));
    Show(dialog,
         [&] {
             EXPECT_THAT(TakeExceptions(), ElementsAre("show"));
             SendMessageA(dialog.DlgHandle(), WM_COMMAND, 40961, 0);
             EXPECT_THAT(TakeExceptions(), ElementsAre("up"));
         },
         {Cancel(dialog)});
    EXPECT_THAT(TakeExceptions(), ElementsAre("close"));
    EXPECT_THAT(Results, ElementsAre(false));
}

TEST_F(Modeless, AFailureIsShownInABoxOfTheDialog) {
    const TExceptionEvent previous = Application().OnException();
    Application().SetOnException({});
    auto& dialog = NewDialog();
    dialog.SetOnUpLevelNavigating([](TObject*, bool&) { throw std::runtime_error("refused"); });
    std::string text;
    HWND window = nullptr;
    Show(dialog,
         [&] {
             window = dialog.DlgHandle();
             PostMessageA(window, WM_COMMAND, 40961, 0);
         },
         {{"the box is shown", BoxShown(), [&] { EXPECT_EQ(GetWindow(ShownMessageBox(), GW_OWNER), window); }},
          AnswerBox(IDOK, [&](const std::string& t) { text = t; }),
          Cancel(dialog)});
    EXPECT_EQ(text, "refused");
    Application().SetOnException(previous);
}

// --- A hundred showings

/// A dialog executed in a thread without the runner.
class TBareThread : public TThread {
public:
    explicit TBareThread(TOpenDialog& dialog) : FDialog(dialog) {}
    ~TBareThread() override { EndAndWait(); }

protected:
    void Execute() override {
        const TApartment apartment(TApartmentKind::MultiThreaded); // as the runner does under Wine
        FDialog.Execute();
    }

private:
    TOpenDialog& FDialog;
};

/// Cancels the dialog once it is there.
void CancelOnceShown(const TOpenDialog& dialog) {
    ASSERT_TRUE(PumpUntil(Shown(dialog)));
    PostMessageA(dialog.DialogWindow(), WM_COMMAND, IDCANCEL, 0);
}

TEST_F(Modeless, AHundredShowingsLeaveNothingBehindThatTheSystemsDialogDoesNot) {
    constexpr int Cycles = 100;
    constexpr int SystemCycles = 20;
    ShowAndCancel(NewDialog()); // what the first one makes for all
    TOpenDialog bare;
    bare.SetInitialDir(Folder.Path());
    const TCensus system = Growth(SystemCycles, [&] {
        const std::unique_ptr<TBareThread, TFreeDeleter> thread(NewThread<TBareThread>(bare));
        CancelOnceShown(bare);
        EXPECT_TRUE(PumpUntil([&] { return thread->Finished(); }));
    });

    const TFormPtr left(new TNoteForm);
    const TFormPtr bottom(new TNoteForm);
    auto& dialog = NewDialog<TKxOpenDialog>();
    dialog.CustDlgParams().SetLeftForm(left.get());
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    dialog.PlacesBar().SetNative(false);
    const TCensus ours = Growth(Cycles, [&] {
        const long threads = ThreadCensus()[TCensusKind::Thread];
        const size_t ended = Results.size();
        Runner->Show();
        CancelOnceShown(dialog);
        EXPECT_TRUE(PumpUntil([&] { return Results.size() > ended; }));
        EXPECT_TRUE(PumpUntil([&] { return ThreadCensus()[TCensusKind::Thread] <= threads; }));
    });
    EXPECT_EQ(Results.size(), Cycles + 6u);
    ExpectNoLoss(ours, Cycles, system, SystemCycles, 8);
}

TEST_F(Modeless, ADialogRemembersWhatWasDoneInItsOwnThread) {
    const TTestKey key;
    Folder.AddFile("one.txt");
    auto& dialog = NewDialog<TKxOpenDialog>();
    dialog.SetRememberKey(key.Path());
    TPoint size{};
    const auto sizeOf = [&] {
        const TRect r = ScreenRectOf(dialog.DlgHandle());
        return TPoint{Width(r), Height(r)};
    };
    Show(dialog,
         [&] {
             Grow(dialog.DlgHandle());
             size = sizeOf();
         },
         {EnterFileName(dialog, "one.txt")});
    EXPECT_THAT(Results, ElementsAre(true));
    dialog.SetInitialDir("");
    dialog.SetFileName("");
    ShowAndCancel(dialog, [&] {
        EXPECT_EQ(dialog.SelectedFolder(), Folder.Path());
        EXPECT_EQ(sizeOf(), size);
    });
}

} // namespace
} // namespace kx
