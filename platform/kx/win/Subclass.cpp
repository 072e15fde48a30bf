// SPDX-License-Identifier: MIT
// Window procedures in front of those that a window has.

#include "kx/win/Subclass.h"

#include "kx/core/Barrier.h"
#include "kx/win/Thunk.h"
#include "kx/win/Windows.h"

#include <memory>

namespace kx {

namespace {

// A procedure is read, written and called by the functions of one kind, that of its window: those of the other kind
// would make the window one of their kind, and the texts in its messages with it.

WNDPROC ReadProcedure(HWND window) {
    return reinterpret_cast<WNDPROC>(IsWindowUnicode(window) ? GetWindowLongPtrW(window, GWLP_WNDPROC)
                                                             : GetWindowLongPtrA(window, GWLP_WNDPROC));
}

bool WriteProcedure(HWND window, WNDPROC procedure, bool unicode) {
    const auto value = reinterpret_cast<LONG_PTR>(procedure);
    return (unicode ? SetWindowLongPtrW(window, GWLP_WNDPROC, value)
                    : SetWindowLongPtrA(window, GWLP_WNDPROC, value)) != 0;
}

} // namespace

LRESULT TSubclass::TPrevious::operator()(UINT message, WPARAM wParam, LPARAM lParam) const {
    if (!FProcedure) {
        return 0;
    }
    return FUnicode ? CallWindowProcW(FProcedure, FWindow, message, wParam, lParam)
                    : CallWindowProcA(FProcedure, FWindow, message, wParam, lParam);
}

/// One installation on one window.
struct TSubclass::TSite {
    TSite(TSubclass& owner, HWND window) : Owner(&owner), Window(window), Thunk(WndProc, this) {
        Previous.FWindow = window;
        Previous.FUnicode = IsWindowUnicode(window) != FALSE;
        Previous.FProcedure = ReadProcedure(window);
    }

    static LRESULT CALLBACK WndProc(void* self, UINT message, WPARAM wParam, LPARAM lParam) {
        return static_cast<TSite*>(self)->Receive(message, wParam, lParam);
    }
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Pass(UINT message, WPARAM wParam, LPARAM lParam) {
        LastMessagePassed |= message == WM_NCDESTROY;
        return Previous(message, wParam, lParam);
    }
    void RunHandler(TMessage& message) noexcept;

    TSubclass* Owner; ///< Null: a pass-through.
    HWND Window;
    TPrevious Previous;
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
    if (!WriteProcedure(window, site->Thunk.Procedure(), site->Previous.FUnicode)) {
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
    if (ReadProcedure(site->Window) == site->Thunk.Procedure()) {
        WriteProcedure(site->Window, site->Previous.FProcedure, site->Previous.FUnicode);
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

TSubclass::TPrevious TSubclass::Previous() const { return FSite ? FSite->Previous : TPrevious(); }

LRESULT TSubclass::CallPrevious(UINT message, WPARAM wParam, LPARAM lParam) const {
    TSite* const site = FRunning ? FRunning->Site : FSite;
    return site ? site->Pass(message, wParam, lParam) : 0;
}

} // namespace kx
