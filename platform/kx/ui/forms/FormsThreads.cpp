// SPDX-License-Identifier: MIT
// Work that one thread does for another.

#include "kx/ui/forms/FormsThreads.h"

#include "kx/core/Barrier.h"
#include "kx/core/Lasting.h"
#include "kx/ui/forms/Forms.h"
#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <deque>

namespace kx {

void WaitAnswering(HANDLE object) {
    while (MsgWaitForMultipleObjectsEx(1, &object, INFINITE, QS_SENDMESSAGE, MWMO_INPUTAVAILABLE) ==
           WAIT_OBJECT_0 + 1) {
        MSG message;
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE); // answers them
    }
}

namespace {

/// One Synchronize of another thread, on its stack.
struct TSynchronized {
    const std::function<void()>& Work;
    DWORD ThreadId = GetCurrentThreadId();
    unique_handle_object Done{CreateEventA(nullptr, TRUE, FALSE, nullptr)};
    std::exception_ptr Failure = nullptr;
    TSynchronized* Outer = nullptr; ///< This one's work is done in the middle of that one's.
};

/// The innermost whose work is being done. The application's thread alone touches it.
TSynchronized* Served = nullptr;

struct TSynchronizedQueue {
    SRWLOCK Lock = SRWLOCK_INIT;
    std::deque<TSynchronized*> Waiting;
    bool Closed = false;

    /// False: the application ends and takes no more work.
    bool Add(TSynchronized& call) {
        AcquireSRWLockExclusive(&Lock);
        const bool open = !Closed;
        if (open) {
            Waiting.push_back(&call);
        }
        ReleaseSRWLockExclusive(&Lock);
        return open;
    }
    TSynchronized* Take() {
        AcquireSRWLockExclusive(&Lock);
        TSynchronized* call = nullptr;
        if (!Waiting.empty()) {
            call = Waiting.front();
            Waiting.pop_front();
        }
        ReleaseSRWLockExclusive(&Lock);
        return call;
    }
    void SetClosed(bool value) {
        AcquireSRWLockExclusive(&Lock);
        Closed = value;
        ReleaseSRWLockExclusive(&Lock);
    }
};

TSynchronizedQueue& Queue() {
    static auto& queue = Lasting<TSynchronizedQueue>(); // threads may outlive the application
    return queue;
}

std::exception_ptr ApplicationEnds() { return std::make_exception_ptr(EAbort("The application ends")); }

} // namespace

void TApplication::Synchronize(const std::function<void()>& work) {
    if (InOwnThread()) {
        work();
        return;
    }
    TSynchronized call{.Work = work};
    if (!call.Done) {
        RaiseLastOSError(); // nobody could wait for the work to be done
    }
    if (!Queue().Add(call)) {
        std::rethrow_exception(ApplicationEnds());
    }
    // A posted message would not be seen by a thread that waits for an answer of this one. In a sent message the work
    // could not call COM objects of other threads. So it is neither.
    SendNotifyMessageW(FHandle, WM_RUNSYNCHRONIZED, 0, 0);
    WaitAnswering(call.Done.get());
    if (call.Failure) {
        std::rethrow_exception(call.Failure);
    }
}

void TApplication::RunSynchronized() {
    while (TSynchronized* const call = Queue().Take()) {
        call->Outer = std::exchange(Served, call);
        try {
            call->Work();
        } catch (...) {
            call->Failure = std::current_exception();
        }
        Served = call->Outer;
        SetEvent(call->Done.get());
    }
}

bool TApplication::IsAwaitedBy(DWORD threadId) const {
    const TSynchronized* call = InOwnThread() ? Served : nullptr;
    while (call && call->ThreadId != threadId) {
        call = call->Outer;
    }
    return call != nullptr;
}

void TApplication::EndThreads() {
    for (size_t i = FAtEnd.size(); i-- > 0;) {
        Guarded(std::function<void()>(FAtEnd[i]));
    }
}

void AcceptSynchronized() { Queue().SetClosed(false); }

void RefuseSynchronized() {
    Queue().SetClosed(true);
    while (TSynchronized* const call = Queue().Take()) {
        call->Failure = ApplicationEnds();
        SetEvent(call->Done.get());
    }
}

// Dialogs of other threads make components that the application owns. The list of components belongs to the
// application's thread.

void TApplication::InsertComponent(TComponent* component) {
    Synchronize([&] { TComponent::InsertComponent(component); });
}

void TApplication::RemoveComponent(TComponent* component) {
    Guarded([&] { Synchronize([&] { TComponent::RemoveComponent(component); }); }); // destructors call this
}

} // namespace kx
