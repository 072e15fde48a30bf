// SPDX-License-Identifier: MIT
// Windows of system classes: their procedures at work, and how a control loses its window meanwhile.

#include "kx/ui/controls/Controls.h"

#include "kx/core/Barrier.h"
#include "kx/win/Windows.h"

namespace kx {

namespace {

void CALLBACK DestroyLeftWindow(HWND window, UINT, UINT_PTR, DWORD) { DestroyWindow(window); }

/// Destroys a window of this thread when its message loop has nothing else to do. A window inside of it may be at work
/// too, and have sent the notification on.
void DestroySoon(HWND window) {
    const auto timer = reinterpret_cast<UINT_PTR>(&DestroyLeftWindow); // no number that the window itself may use
    if (!SetTimer(window, timer, USER_TIMER_MINIMUM, DestroyLeftWindow)) {
        DestroyWindow(window);
    }
}

/// A window that is being made or destroyed cannot be kept.
bool CanLeaveIn(UINT message) {
    return message != WM_NCCREATE && message != WM_CREATE && message != WM_DESTROY && message != WM_NCDESTROY;
}

} // namespace

/// The procedure of a system class at work in a window. When the notifications that it sends have been handled, it goes
/// on with data that the window owns. So a window that its control loses meanwhile is destroyed later.
class TWinControl::TSystemCall {
public:
    explicit TSystemCall(TWinControl& control) : FControl(&control) { control.FSystemCall = this; }
    TSystemCall(const TSystemCall&) = delete;
    TSystemCall& operator=(const TSystemCall&) = delete;
    ~TSystemCall() {
        Forget();
        if (FLeftWindow) {
            DestroySoon(FLeftWindow);
        }
    }
    /// The control has lost the window.
    void Forget() {
        if (FControl) {
            FControl->FSystemCall = nullptr;
            FControl = nullptr;
        }
    }
    void DestroyBehind(HWND window) { FLeftWindow = window; }

private:
    TWinControl* FControl;
    HWND FLeftWindow = nullptr;
};

void TWinControl::DefaultHandler(TMessage& message) {
    const auto callSystem = [&] {
        message.Result = CallWindowProcW(FDefWndProc, FHandle, message.Msg, message.WParam, message.LParam);
    };
    if (!FHandle) {
        TControl::DefaultHandler(message);
    } else if (FSystemClass && !FSystemCall && CanLeaveIn(message.Msg)) {
        const TSystemCall call(*this);
        callSystem();
    } else {
        callSystem();
    }
}

void TWinControl::ForgetSystemCall() {
    if (FSystemCall) {
        FSystemCall->Forget();
    }
}

void TWinControl::LeaveWindow() {
    const HWND window = FHandle;
    const TStillThere there(*this);
    const std::vector<TWinControl*> inside = FTabList;
    for (TWinControl* control : inside) { // handlers run at each step
        if (there && HasChild(control)) {
            control->DestroyHandle();
        }
    }
    if (there && FHandle == window) {
        ShowWindow(window, SW_HIDE); // the focus leaves it
    }
    if (there && FHandle == window) {
        Guarded([this] { SaveWindowState(); });
    }
    if (!there || FHandle != window || !FSystemCall) {
        return;
    }
    ContextStale();
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(FDefWndProc));
    FSystemCall->DestroyBehind(window);
    WindowDestroyed();
    EnableWindow(window, FALSE);       // it takes neither focus nor mouse any more
    ::SetParent(window, HWND_MESSAGE); // where the destruction of its parent does not reach it
}

void TWinControl::LeaveBusyWindows() {
    const TStillThere there(*this);
    const std::vector<TWinControl*> inside = FTabList;
    for (TWinControl* control : inside) {
        if (!there || !HasChild(control)) {
            continue;
        }
        if (control->FSystemCall) {
            control->DestroyHandle();
        } else {
            control->LeaveBusyWindows();
        }
    }
}

} // namespace kx
