// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Objects.h"
#include "kx/win/Handles.h"
#include "kx/win/WinTypes.h"

#include <atomic>
#include <exception>
#include <functional>
#include <memory>
#include <utility>

namespace kx {

KX_EXCEPTION(EThread, Exception);

/// A thread of its own. Descendants override `Execute`.
///
/// The thread is made suspended. `NewThread`, or `AfterConstruction`, starts it once the object is complete, unless it
/// is to be created suspended: then `Start` does. It is over when `Execute` has returned and OnTerminate has fired.
///
/// Execute touches what belongs to the application's thread, forms and controls above all, by `Synchronize` only. No
/// apartment of COM is made for it: an Execute that uses COM, OLE or the shell's dialogs initializes it, and cleans up,
/// by itself.
///
/// `Free` asks the thread to end and waits for that; a thread that has not started never runs. Work that the thread
/// itself synchronizes cannot free it, and sets FreeOnTerminate instead. A descendant that is destroyed in another way
/// (`delete`, a local variable) calls `EndAndWait` first thing in its destructor, since Execute uses the object. At the
/// end of the application's Run all threads are asked to end and waited for, 10 seconds at most.
class TThread : public TObject {
    KX_CLASS()

    explicit TThread(bool createSuspended = false); ///< @throws EThread
    ~TThread() override;
    void AfterConstruction(); ///< Starts the thread unless it was created suspended. Once.
    void BeforeDestruction() override;

    void Start() { Resume(); } ///< Has a thread that was created suspended run; nothing otherwise.
    void Resume();
    bool Suspended() const { return FSuspended; } ///< Not started yet.
    /// Asks the thread to end; Execute looks at `Terminated` from time to time.
    void Terminate();
    bool Terminated() const { return FTerminated; }
    bool Finished() const { return FFinished; } ///< Execute has returned.

    /// Waits until the thread is over and returns its ReturnValue. Meanwhile the work that the thread synchronizes is
    /// done, and messages that other threads send are answered. The thread may be one that frees itself.
    /// @throws EThread in the thread itself, and in what it synchronizes.
    int WaitFor();

    /// Runs `work` in the application's thread while this one waits; see TApplication::Synchronize. Any thread may call
    /// it; in the application's thread `work` is just called.
    static void Synchronize(const std::function<void()>& work);

    /// Fires in the application's thread when Execute has returned or failed, also for a thread that ends before it has
    /// begun. An exception goes to the application.
    const TNotifyEvent& OnTerminate() const { return FOnTerminate; }
    void SetOnTerminate(TNotifyEvent value) { FOnTerminate = std::move(value); }
    /// The object frees itself when the thread is over.
    bool FreeOnTerminate() const { return FFreeOnTerminate; }
    void SetFreeOnTerminate(bool value) { FFreeOnTerminate = value; }
    /// What came out of Execute; null: nothing. Ask once the thread is finished. EAbort is not kept.
    std::exception_ptr FatalException() const { return FFatalException; }
    int ReturnValue() const { return FReturnValue; }

    HANDLE Handle() const { return FHandle.get(); } ///< Signalled when the thread is over.
    DWORD ThreadID() const { return FThreadId; }

protected:
    virtual void Execute() = 0;
    virtual void DoTerminate(); ///< Fires OnTerminate, in the thread itself, by Synchronize.
    /// Terminate was called: a chance to wake Execute. Any thread calls it; the end of the application several times.
    virtual void TerminatedSet() {}
    void SetReturnValue(int value) { FReturnValue = value; }
    void EndAndWait();

private:
    friend bool AreThreadsRunning();
    class TRunning;

    static unsigned __stdcall ThreadProc(void* self);
    void Run();

    unique_handle_object FHandle;
    unsigned FThreadId = 0;
    bool FCreateSuspended;
    std::atomic<bool> FSuspended = true;
    std::atomic<bool> FTerminated = false;
    std::atomic<bool> FFinished = false;
    std::atomic<bool> FFreeOnTerminate = false;
    std::atomic<int> FReturnValue = 0;
    std::exception_ptr FFatalException;
    TNotifyEvent FOnTerminate;
};

/// A new thread that runs, unless its constructor was told to create it suspended.
template <class T, class... Args> T* NewThread(Args&&... args) {
    auto thread = std::make_unique<T>(std::forward<Args>(args)...);
    thread->AfterConstruction();
    return thread.release();
}

} // namespace kx
