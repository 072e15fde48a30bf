#include "ui/Subclass.h"

#include "core/Barrier.h"
#include "ui/Thunk.h"

#include <memory>

namespace kx {

/// One installation on one window.
struct TSubclass::TSite {
    TSite(TSubclass& owner, HWND window) : Owner(&owner), Window(window), Thunk(WndProc, this) {}

    static LRESULT CALLBACK WndProc(void* self, UINT message, WPARAM wParam, LPARAM lParam) {
        return static_cast<TSite*>(self)->Receive(message, wParam, lParam);
    }
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Pass(UINT message, WPARAM wParam, LPARAM lParam) {
        LastMessagePassed |= message == WM_NCDESTROY;
        return CallWindowProcA(Previous, Window, message, wParam, lParam);
    }
    void RunHandler(TMessage& message) noexcept;

    TSubclass* Owner; ///< Null: a pass-through.
    HWND Window;
    WNDPROC Previous = nullptr;
    int Depth = 0;          ///< Calls that are under way.
    bool Dismissed = false; ///< The window does not call any more.
    bool LastMessagePassed = false;
    TThunk Thunk;
};

/// One call of the handler, on the stack.
struct TSubclass::TFrame {
    TSubclass* Owner; ///< Null once the object is gone.
    TSite* Site;
    TFrame* Outer;
};

LRESULT TSubclass::TSite::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    ++Depth;
    LRESULT result;
    if (Owner) {
        TMessage m{message, wParam, lParam, 0};
        RunHandler(m);
        result = m.Result;
    } else {
        result = Pass(message, wParam, lParam);
    }
    if (message == WM_NCDESTROY) {
        if (!LastMessagePassed) {
            result = Pass(message, wParam, lParam); // else the system could not clean up
        }
        Dismissed = true;
        if (Owner) {
            Owner->FSite = nullptr;
            Owner = nullptr;
        }
    }
    if (--Depth == 0 && Dismissed) {
        delete this;
    }
    return result;
}

void TSubclass::TSite::RunHandler(TMessage& message) noexcept {
    TFrame frame{Owner, this, Owner->FRunning};
    Owner->FRunning = &frame;
    try {
        Owner->FHandler(message);
    } catch (...) {
        ReportException();
    }
    if (frame.Owner) {
        frame.Owner->FRunning = frame.Outer;
    }
}

void TSubclass::Install(HWND window) {
    DWORD process = 0;
    if (!GetWindowThreadProcessId(window, &process)) {
        RaiseLastOSError(ERROR_INVALID_WINDOW_HANDLE);
    }
    if (process != GetCurrentProcessId()) {
        RaiseLastOSError(ERROR_ACCESS_DENIED);
    }
    Uninstall();
    auto site = std::make_unique<TSite>(*this, window);
    site->Previous = reinterpret_cast<WNDPROC>(GetWindowLongPtrA(window, GWLP_WNDPROC));
    if (!SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(site->Thunk.Procedure()))) {
        RaiseLastOSError();
    }
    FSite = site.release();
}

void TSubclass::Uninstall() {
    TSite* const site = FSite;
    FSite = nullptr;
    if (!site) {
        return;
    }
    site->Owner = nullptr;
    const auto own = reinterpret_cast<LONG_PTR>(site->Thunk.Procedure());
    if (GetWindowLongPtrA(site->Window, GWLP_WNDPROC) == own) {
        SetWindowLongPtrA(site->Window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(site->Previous));
        site->Dismissed = true;
        if (site->Depth == 0) {
            delete site;
        }
    }
}

TSubclass::~TSubclass() {
    Uninstall();
    for (TFrame* frame = FRunning; frame; frame = frame->Outer) {
        frame->Owner = nullptr;
    }
}

HWND TSubclass::Handle() const { return FSite ? FSite->Window : nullptr; }

WNDPROC TSubclass::Previous() const { return FSite ? FSite->Previous : nullptr; }

LRESULT TSubclass::CallPrevious(UINT message, WPARAM wParam, LPARAM lParam) const {
    TSite* const site = FRunning ? FRunning->Site : FSite;
    return site ? site->Pass(message, wParam, lParam) : 0;
}

} // namespace kx
