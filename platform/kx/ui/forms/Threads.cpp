// SPDX-License-Identifier: MIT
// Threads that end with the program.

#include "kx/ui/forms/Threads.h"

#include "kx/core/Barrier.h"
#include "kx/core/Lasting.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/forms/FormsThreads.h"
#include "kx/win/ExclusiveLock.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <process.h>
#include <vector>

namespace kx {

namespace {

constexpr ULONGLONG LongestEnd = 10'000; // milliseconds that the end of the application waits for its threads
constexpr DWORD Patience = 100;          // milliseconds until they are asked again

/// Another handle of the same object. @throws EOSError
unique_handle_object SameObject(HANDLE object) {
    unique_handle_object handle;
    HANDLE process = GetCurrentProcess();
    if (!DuplicateHandle(process, object, process, handle.put(), 0, FALSE, DUPLICATE_SAME_ACCESS)) {
        RaiseLastOSError();
    }
    return handle;
}

} // namespace

/// The threads that run, or may be about to end still.
class TThread::TRunning {
public:
    static TRunning& Instance() {
        static auto& running = Lasting<TRunning>(); // threads may outlive the application
        return running;
    }

    void Add(TThread& thread) {
        unique_handle_object handle = SameObject(thread.FHandle.get());
        bool first = false;
        {
            const TExclusiveLock lock(FLock);
            // An object that frees itself goes before its thread ends.
            std::erase_if(FThreads,
                          [](const TEntry& e) { return !e.Thread && WaitForSingleObject(e.Handle.get(), 0) == 0; });
            FThreads.push_back({&thread, std::move(handle)});
            first = !std::exchange(FListens, true);
        }
        if (first) {
            // The work goes with the application; the next one, in a library, is told anew.
            const std::shared_ptr<void> listening(this, [](TRunning* running) { running->ApplicationGone(); });
            Application().Synchronize([&] { Application().AtEnd([listening] { Instance().EndAll(); }); });
        }
    }
    bool AreSomeRunning() { return static_cast<bool>(Running()); }
    void Remove(TThread& thread) {
        const TExclusiveLock lock(FLock);
        for (TEntry& entry : FThreads) {
            if (entry.Thread == &thread) {
                entry.Thread = nullptr;
            }
        }
        while (FAsked == &thread && FAsking != GetCurrentThreadId()) {
            SleepConditionVariableSRW(&FAnswered, &FLock, INFINITE, 0);
        }
    }

private:
    struct TEntry {
        TThread* Thread; ///< Null: the object is gone.
        unique_handle_object Handle;
    };

    void ApplicationGone() {
        const TExclusiveLock lock(FLock);
        FListens = false;
    }
    /// In the application's thread.
    void EndAll() {
        const ULONGLONG since = GetTickCount64();
        while (GetTickCount64() - since < LongestEnd) {
            for (size_t i = 0; TThread* const thread = NextToAsk(i); ++i) {
                Guarded([=] { thread->Terminate(); });
                Asked();
            }
            const unique_handle_object running = Running();
            if (!running) {
                return;
            }
            HANDLE handle = running.get();
            if (MsgWaitForMultipleObjects(1, &handle, FALSE, Patience, QS_ALLINPUT) == WAIT_OBJECT_0 + 1) {
                Application().ProcessMessages();
            }
        }
    }
    /// The next thread, from the entry `index` on, that is to be asked to end; null when there is none. It does not go
    /// before `Asked`, unless its TerminatedSet frees it. The lock is not held while it is asked: TerminatedSet may
    /// make and free threads.
    TThread* NextToAsk(size_t& index) {
        const TExclusiveLock lock(FLock);
        while (index < FThreads.size() && !(FThreads[index].Thread && Runs(FThreads[index]))) {
            ++index;
        }
        FAsked = index < FThreads.size() ? FThreads[index].Thread : nullptr;
        FAsking = GetCurrentThreadId();
        return FAsked;
    }
    void Asked() {
        {
            const TExclusiveLock lock(FLock);
            FAsked = nullptr;
        }
        WakeAllConditionVariable(&FAnswered);
    }
    /// A thread that has not ended; null when there is none.
    unique_handle_object Running() {
        const TExclusiveLock lock(FLock);
        const auto runs = std::find_if(FThreads.begin(), FThreads.end(), Runs);
        return runs == FThreads.end() ? unique_handle_object() : SameObject(runs->Handle.get());
    }
    static bool Runs(const TEntry& entry) {
        // A suspended thread ends with its owner.
        return WaitForSingleObject(entry.Handle.get(), 0) != 0 && !(entry.Thread && entry.Thread->Suspended());
    }

    SRWLOCK FLock = SRWLOCK_INIT;
    std::vector<TEntry> FThreads;
    bool FListens = false;     ///< For the end of the application.
    TThread* FAsked = nullptr; ///< Is being asked to end...
    DWORD FAsking = 0;         ///< ...by this thread.
    CONDITION_VARIABLE FAnswered = CONDITION_VARIABLE_INIT;
};

bool AreThreadsRunning() { return TThread::TRunning::Instance().AreSomeRunning(); }

const TClass& TThread::StaticClass() {
    static const TClassBuilder<TThread> cls("TThread", TObject::StaticClass());
    return cls.Class();
}

TThread::TThread(bool createSuspended) : FCreateSuspended(createSuspended) {
    Application(); // belongs to the thread that uses it first
    FHandle.reset(
        reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, &TThread::ThreadProc, this, CREATE_SUSPENDED, &FThreadId)));
    if (!FHandle) {
        throw EThread("Cannot create a thread");
    }
    TRunning::Instance().Add(*this);
}

TThread::~TThread() { EndAndWait(); }

void TThread::AfterConstruction() {
    if (!FCreateSuspended) {
        Resume();
    }
}

void TThread::BeforeDestruction() {
    EndAndWait();
    TObject::BeforeDestruction();
}

void TThread::EndAndWait() {
    TRunning::Instance().Remove(*this); // so that it is not asked to end while it goes
    if (GetCurrentThreadId() != FThreadId) {
        Terminate();
        Resume(); // the system's thread has to end; Execute is not called
        WaitFor();
    }
}

void TThread::Resume() {
    if (FSuspended.exchange(false)) {
        ResumeThread(FHandle.get());
    }
}

void TThread::Terminate() {
    FTerminated = true;
    TerminatedSet();
}

int TThread::WaitFor() {
    if (GetCurrentThreadId() == FThreadId) {
        throw EThread("A thread cannot wait for itself");
    }
    if (Application().IsAwaitedBy(FThreadId)) {
        throw EThread("A thread cannot be waited for while it waits in Synchronize");
    }
    const unique_handle_object handle = SameObject(FHandle.get()); // the thread's object may go with the thread
    WaitAnswering(handle.get());
    DWORD result = 0;
    GetExitCodeThread(handle.get(), &result);
    return static_cast<int>(result);
}

void TThread::Synchronize(const std::function<void()>& work) {
    TApplication* const application = TApplication::Existing();
    if (!application) {
        throw EAbort("The application has ended");
    }
    application->Synchronize(work);
}

// --- The thread itself

unsigned __stdcall TThread::ThreadProc(void* self) {
    auto* const thread = static_cast<TThread*>(self);
    thread->Run();
    const auto result = static_cast<unsigned>(thread->FReturnValue.load());
    if (thread->FFreeOnTerminate) {
        Guarded([=] { thread->Free(); });
    }
    return result;
}

void TThread::Run() {
    if (!FTerminated) {
        try {
            Execute();
        } catch (const EAbort&) {
            // EAbort ends an operation silently.
        } catch (...) {
            FFatalException = std::current_exception();
        }
    }
    FFinished = true;
    try {
        DoTerminate();
    } catch (...) {
        // The application ends: nobody listens any more.
    }
}

void TThread::DoTerminate() {
    Synchronize([this] { Guarded([this] { FOnTerminate(this); }); });
}

} // namespace kx
