// SPDX-License-Identifier: MIT
// Threads, and what they have done in the application's.

#include "kx/ui/forms/Threads.h"
#include "kx/ui/controls/Menus.h"
#include "kx/win/Handles.h"
#include "tests/support/Census.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/TestDriver.h"
#include "tests/support/TestForms.h"

#include <stdexcept>

namespace kx {
namespace {

using namespace test;

/// A thread that runs a function.
class TWorker : public TThread {
public:
    using TWork = std::function<void(TWorker& self)>;

    explicit TWorker(TWork work, bool createSuspended = false) : TThread(createSuspended), FWork(std::move(work)) {}
    ~TWorker() override {
        EndAndWait();
        if (OnDestroy) {
            OnDestroy();
        }
    }

    using TThread::SetReturnValue;
    std::function<void()> OnTerminated; ///< Terminate was called.
    std::function<void()> OnDestroy;

protected:
    void Execute() override { FWork(*this); }
    void TerminatedSet() override {
        if (OnTerminated) {
            OnTerminated();
        }
    }

private:
    TWork FWork;
};

using TWorkerPtr = std::unique_ptr<TWorker, TFreeDeleter>;

TWorkerPtr RunWorker(TWorker::TWork work) { return TWorkerPtr(NewThread<TWorker>(std::move(work))); }

std::string MessageOf(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& e) {
        return e.what();
    }
}

class Threads : public testing::Test {
protected:
    Threads() { Application().Handle(); } // belongs to this thread
    const DWORD MainThread = GetCurrentThreadId();
    TExceptionLog Log;
};

// --- Life

TEST_F(Threads, RunInAThreadOfTheirOwn) {
    DWORD id = 0;
    const TWorkerPtr worker = RunWorker([&](TWorker& self) {
        id = GetCurrentThreadId();
        self.SetReturnValue(42);
    });
    EXPECT_EQ(worker->WaitFor(), 42);
    EXPECT_EQ(worker->ReturnValue(), 42);
    EXPECT_EQ(id, worker->ThreadID());
    EXPECT_NE(id, MainThread);
    EXPECT_TRUE(worker->Finished());
    EXPECT_FALSE(worker->Terminated());
    EXPECT_EQ(worker->FatalException(), nullptr);
}

TEST_F(Threads, ASuspendedOneRunsWhenItIsStarted) {
    std::atomic<bool> ran = false;
    const TWorkerPtr worker(NewThread<TWorker>([&](TWorker&) { ran = true; }, true));
    EXPECT_TRUE(worker->Suspended());
    EXPECT_EQ(WaitForSingleObject(worker->Handle(), 50), DWORD{WAIT_TIMEOUT});
    EXPECT_FALSE(ran);
    worker->Start();
    EXPECT_FALSE(worker->Suspended());
    worker->Start(); // does nothing
    worker->WaitFor();
    EXPECT_TRUE(ran);
}

TEST_F(Threads, OneThatWasNeverStartedGoesWithoutRunning) {
    bool ran = false;
    int ended = 0;
    TWorkerPtr worker(NewThread<TWorker>([&](TWorker&) { ran = true; }, true));
    worker->SetOnTerminate([&](TObject*) { ++ended; });
    worker.reset();
    EXPECT_FALSE(ran);
    EXPECT_EQ(ended, 1);
}

TEST_F(Threads, FreeAsksForTheEndAndWaitsForIt) {
    const std::shared_ptr<void> wake(CreateEventA(nullptr, TRUE, FALSE, nullptr), CloseHandle);
    std::atomic<bool> over = false;
    std::atomic<bool> begun = false; // a thread that has not begun by then does not run
    TWorkerPtr worker(NewThread<TWorker>(
        [&](TWorker& self) {
            begun = true;
            WaitForSingleObject(wake.get(), INFINITE);
            over = self.Terminated();
        },
        true));
    worker->OnTerminated = [&] { SetEvent(wake.get()); };
    worker->Start();
    EXPECT_TRUE(PumpUntil([&] { return begun.load(); }));
    worker.reset();
    EXPECT_TRUE(over);
}

TEST_F(Threads, DeleteWaitsToo) {
    std::atomic<bool> begun = false;
    std::atomic<bool> over = false;
    const TWorker* const worker = NewThread<TWorker>([&](TWorker& self) {
        begun = true;
        while (!self.Terminated()) {
            Sleep(1);
        }
        over = true;
    });
    EXPECT_TRUE(PumpUntil([&] { return begun.load(); }));
    delete worker;
    EXPECT_TRUE(over);
}

TEST_F(Threads, MayFreeThemselves) {
    std::atomic<bool> destroyed = false;
    std::atomic<DWORD> where = 0;
    auto* const worker = NewThread<TWorker>([](TWorker&) {}, true);
    worker->SetFreeOnTerminate(true);
    worker->OnDestroy = [&] {
        where = GetCurrentThreadId();
        destroyed = true;
    };
    const DWORD id = worker->ThreadID();
    bool ended = false;
    worker->SetOnTerminate([&](TObject* sender) {
        EXPECT_EQ(sender, worker);
        EXPECT_FALSE(destroyed);
        ended = true;
    });
    worker->Start();
    EXPECT_TRUE(PumpUntil([&] { return destroyed.load(); }));
    EXPECT_TRUE(ended);
    EXPECT_EQ(where, id);
}

TEST_F(Threads, OneThatFreesItselfCanBeWaitedFor) {
    std::atomic<bool> destroyed = false;
    auto* const worker = NewThread<TWorker>([](TWorker& self) { self.SetReturnValue(7); }, true);
    worker->SetFreeOnTerminate(true);
    worker->OnDestroy = [&] { destroyed = true; };
    worker->Start();
    EXPECT_EQ(worker->WaitFor(), 7);
    EXPECT_TRUE(destroyed);
}

TEST_F(Threads, CannotWaitForThemselves) {
    std::string message;
    const TWorkerPtr worker = RunWorker([&](TWorker& self) {
        try {
            self.WaitFor();
        } catch (const EThread& e) {
            message = e.Message();
        }
    });
    worker->WaitFor();
    EXPECT_EQ(message, "A thread cannot wait for itself");
}

TEST_F(Threads, CannotBeWaitedForInWhatTheySynchronize) {
    TWorkerPtr worker(NewThread<TWorker>([&](TWorker&) { TThread::Synchronize([&] { worker->WaitFor(); }); }, true));
    worker->Start();
    EXPECT_TRUE(PumpUntil([&] { return worker->Finished(); }));
    EXPECT_EQ(MessageOf(worker->FatalException()), "A thread cannot be waited for while it waits in Synchronize");
}

TEST_F(Threads, KeepWhatCameOutOfThem) {
    const TWorkerPtr worker = RunWorker([](TWorker&) { throw EConvertError("from the thread"); });
    worker->WaitFor();
    EXPECT_EQ(MessageOf(worker->FatalException()), "from the thread");
    EXPECT_THROW(std::rethrow_exception(worker->FatalException()), EConvertError);
    const TWorkerPtr foreign = RunWorker([](TWorker&) { throw 5; });
    foreign->WaitFor();
    EXPECT_NE(foreign->FatalException(), nullptr);
    const TWorkerPtr aborted = RunWorker([](TWorker&) { throw EAbort("silent"); });
    aborted->WaitFor();
    EXPECT_EQ(aborted->FatalException(), nullptr);
    EXPECT_THAT(Log.Messages(), testing::IsEmpty());
}

// --- OnTerminate

TEST_F(Threads, TellOfTheirEndInTheApplicationsThread) {
    DWORD where = 0;
    bool finished = false;
    const TWorkerPtr worker(NewThread<TWorker>([](TWorker&) { throw std::runtime_error("lost"); }, true));
    worker->SetOnTerminate([&](TObject* sender) {
        where = GetCurrentThreadId();
        finished = worker->Finished();
        EXPECT_EQ(sender, worker.get());
        EXPECT_EQ(MessageOf(worker->FatalException()), "lost");
    });
    worker->Start();
    EXPECT_TRUE(PumpUntil([&] { return where != 0; }));
    EXPECT_EQ(where, MainThread);
    EXPECT_TRUE(finished);
}

TEST_F(Threads, AFailureOfOnTerminateGoesToTheApplication) {
    const TWorkerPtr worker(NewThread<TWorker>([](TWorker&) {}, true));
    worker->SetOnTerminate([](TObject*) { throw std::runtime_error("at the end"); });
    worker->Start();
    worker->WaitFor();
    EXPECT_THAT(Log.Messages(), testing::ElementsAre("at the end"));
}

TEST_F(Threads, OnTerminateMaySynchronize) {
    DWORD where = 0;
    const TWorkerPtr worker(NewThread<TWorker>([](TWorker&) {}, true));
    worker->SetOnTerminate([&](TObject*) { TThread::Synchronize([&] { where = GetCurrentThreadId(); }); });
    worker->Start();
    worker->WaitFor();
    EXPECT_EQ(where, MainThread);
}

// --- Synchronize

TEST_F(Threads, SynchronizeRunsInTheApplicationsThread) {
    DWORD where = 0;
    bool ranBefore = false;
    const TWorkerPtr worker = RunWorker([&](TWorker&) {
        TThread::Synchronize([&] { where = GetCurrentThreadId(); });
        ranBefore = where != 0;
    });
    EXPECT_TRUE(PumpUntil([&] { return worker->Finished(); }));
    EXPECT_EQ(where, MainThread);
    EXPECT_TRUE(ranBefore);
}

TEST_F(Threads, SynchronizeInTheApplicationsThreadIsACall) {
    bool ran = false;
    TThread::Synchronize([&] { ran = true; });
    EXPECT_TRUE(ran);
    EXPECT_THROW(TThread::Synchronize([] { throw EAbort("out"); }), EAbort);
}

TEST_F(Threads, AnExceptionOfWhatIsSynchronizedComesOutInTheThread) {
    std::string caught;
    const TWorkerPtr worker = RunWorker([&](TWorker&) {
        try {
            TThread::Synchronize([] { throw EConvertError("over there"); });
        } catch (const EConvertError& e) {
            caught = e.Message();
        }
        TThread::Synchronize([] { throw EListError("and again"); });
    });
    worker->WaitFor();
    EXPECT_EQ(caught, "over there");
    EXPECT_EQ(MessageOf(worker->FatalException()), "and again");
    EXPECT_THAT(Log.Messages(), testing::IsEmpty());
}

TEST_F(Threads, WaitForRunsWhatIsSynchronized) {
    int calls = 0;
    const TWorkerPtr worker = RunWorker([&](TWorker&) {
        for (int i = 0; i < 1'000; ++i) {
            TThread::Synchronize([&] { ++calls; });
        }
    });
    worker->WaitFor();
    EXPECT_EQ(calls, 1'000);
}

TEST_F(Threads, ManyThreadsSynchronizeAtOnce) {
    int calls = 0; // without a lock: one thread alone counts
    std::vector<TWorkerPtr> workers;
    for (int i = 0; i < 8; ++i) {
        workers.push_back(RunWorker([&](TWorker&) {
            for (int j = 0; j < 200; ++j) {
                TThread::Synchronize([&] { ++calls; });
            }
        }));
    }
    for (const TWorkerPtr& worker : workers) {
        worker->WaitFor();
    }
    EXPECT_EQ(calls, 1'600);
}

TEST_F(Threads, AThreadWaitsForAnotherThatSynchronizes) {
    int result = 0;
    const TWorkerPtr outer = RunWorker([&](TWorker&) {
        const TWorkerPtr inner =
            RunWorker([](TWorker& self) { TThread::Synchronize([&] { self.SetReturnValue(3); }); });
        result = inner->WaitFor();
    });
    outer->WaitFor();
    EXPECT_EQ(result, 3);
}

TEST_F(Threads, SynchronizeWorksInTheLoopOfASystemDialog) {
    const TTempFolder folder;
    TOpenDialog dialog;
    dialog.SetInitialDir(folder.Path());
    TWorkerPtr worker;
    bool shown = false;
    EXPECT_FALSE(RunDialog(dialog,
                           [&] {
                               worker = RunWorker([&](TWorker&) {
                                   TThread::Synchronize([&] { shown = dialog.Handle() != nullptr; });
                               });
                           },
                           {{"the thread is over", [&] { return worker->Finished(); }, {}}, Cancel(dialog)}));
    EXPECT_TRUE(shown);
}

TEST_F(Threads, SynchronizeWorksInTheLoopOfAMenu) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    form->SetBounds(100, 100, 300, 200);
    form->Show();
    TPopupMenu menu;
    auto* const item = new TMenuItem(&menu);
    item->SetCaption("Nothing");
    menu.Items().Add(item);
    TWorkerPtr worker;
    bool open = false;
    RunDialog(
        [&] {
            menu.Popup(200, 200);
            return true;
        },
        {{"the menu is open", [] { return ShownMenu() != nullptr; },
          [&] { worker = RunWorker([&](TWorker&) { TThread::Synchronize([&] { open = ShownMenu() != nullptr; }); }); }},
         {"the thread is over", [&] { return worker->Finished(); }, [] { EndMenu(); }}});
    EXPECT_TRUE(open);
}

TEST_F(Threads, SynchronizeWorksWhileTheApplicationWaitsForAnAnswerOfTheThread) {
    // A thread with a window whose answer needs the application's thread.
    std::atomic<HWND> window = nullptr;
    bool ran = false;
    struct TAnswer {
        static LRESULT CALLBACK Proc(HWND w, UINT message, WPARAM wParam, LPARAM lParam) {
            if (message == WM_USER) {
                TThread::Synchronize([&] { *reinterpret_cast<bool*>(lParam) = true; });
                return 11;
            }
            return DefWindowProcA(w, message, wParam, lParam);
        }
    };
    const TWorkerPtr worker = RunWorker([&](TWorker&) {
        HWND w = CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, HInstance(), nullptr);
        SetWindowLongPtrA(w, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&TAnswer::Proc));
        window = w;
        MSG message;
        while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        }
        DestroyWindow(w);
    });
    EXPECT_TRUE(PumpUntil([&] { return window.load() != nullptr; }));
    EXPECT_EQ(SendMessageA(window, WM_USER, 0, reinterpret_cast<LPARAM>(&ran)), 11);
    EXPECT_TRUE(ran);
    PostThreadMessageA(worker->ThreadID(), WM_QUIT, 0, 0);
    worker->WaitFor();
}

TEST_F(Threads, AWaitingThreadAnswersItsWindows) {
    // What is synchronized talks to a window of the thread that waits for it.
    std::string text;
    const TWorkerPtr worker = RunWorker([&](TWorker&) {
        const unique_hwnd w(
            CreateWindowExA(0, "STATIC", "mine", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, HInstance(), nullptr));
        TThread::Synchronize([&] {
            char buffer[16] = {};
            SendMessageA(w.get(), WM_GETTEXT, sizeof buffer, reinterpret_cast<LPARAM>(buffer));
            text = buffer;
        });
    });
    worker->WaitFor();
    EXPECT_EQ(text, "mine");
}

// --- The application and other threads

TEST_F(Threads, AnExceptionHandledInAThreadIsToldInTheApplications) {
    DWORD where = 0;
    const TExceptionEvent previous = Application().OnException();
    Application().SetOnException([&](TObject*, const std::exception& e) {
        EXPECT_STREQ(e.what(), "in a callback");
        where = GetCurrentThreadId();
    });
    const TWorkerPtr worker = RunWorker([](TWorker&) { Guarded([] { throw std::runtime_error("in a callback"); }); });
    worker->WaitFor();
    Application().SetOnException(previous);
    EXPECT_EQ(where, MainThread);
}

TEST_F(Threads, AnExceptionThatNobodyHandlesShowsABoxInItsThread) {
    const TExceptionEvent previous = Application().OnException();
    Application().SetOnException({});
    const TWorkerPtr worker = RunWorker([](TWorker&) { Guarded([] { throw std::runtime_error("shown"); }); });
    DWORD where = 0;
    std::string text;
    EXPECT_TRUE(PumpUntil([] { return ShownMessageBox() != nullptr; }));
    where = GetWindowThreadProcessId(ShownMessageBox(), nullptr);
    text = MessageBoxText(ShownMessageBox());
    PostMessageA(ShownMessageBox(), WM_COMMAND, IDOK, 0);
    worker->WaitFor();
    Application().SetOnException(previous);
    EXPECT_EQ(where, worker->ThreadID());
    EXPECT_EQ(text, "shown");
}

TEST_F(Threads, TheApplicationOwnsWhatAThreadMakes) {
    TComponent* made = nullptr;
    bool owned = false;
    const int before = Application().ComponentCount();
    const TWorkerPtr worker = RunWorker([&](TWorker&) {
        made = new TComponent(&Application());
        TThread::Synchronize([&] { owned = Application().ComponentCount() == before + 1; });
        made->Free();
    });
    worker->WaitFor();
    EXPECT_TRUE(owned);
    EXPECT_EQ(Application().ComponentCount(), before);
}

TEST_F(Threads, TheScreenListsTheFormsOfTheApplicationsThread) {
    const int before = Screen().FormCount();
    int during = 0;
    const TWorkerPtr worker = RunWorker([&](TWorker&) {
        const TFormPtr form(NewForm<TForm>(nullptr));
        form->Show();
        TThread::Synchronize([&] { during = Screen().FormCount(); });
    });
    worker->WaitFor();
    EXPECT_EQ(during, before);
    EXPECT_EQ(Screen().FormCount(), before);
}

TEST_F(Threads, LeaveNothingBehind) {
    const auto cycle = [](int count) {
        for (int i = 0; i < count; ++i) {
            RunWorker([](TWorker&) { TThread::Synchronize([] {}); });
        }
    };
    cycle(20);
    DWORD handles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handles);
    const TCensus before = TakeCensus();
    cycle(200);
    TCensus after = TakeCensus();
    // The last ones may be on their way out, and their heap blocks with them.
    EXPECT_TRUE(PumpUntil([&] { return ThreadCensus()[TCensusKind::Thread] <= before[TCensusKind::Thread]; }));
    after = TakeCensus();
    EXPECT_LE(after[TCensusKind::HeapBlock], before[TCensusKind::HeapBlock] + 8);
    EXPECT_EQ(after[TCensusKind::Window], before[TCensusKind::Window]);
    DWORD handlesAfter = 0;
    GetProcessHandleCount(GetCurrentProcess(), &handlesAfter);
    EXPECT_LE(handlesAfter, handles + 8);
}

} // namespace
} // namespace kx
