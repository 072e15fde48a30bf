// SPDX-License-Identifier: MIT
// Dragging one control over others.

#include "kx/ui/controls/ControlDrag.h"

#include "kx/core/Barrier.h"
#include "kx/ui/controls/ControlHost.h"
#include "kx/ui/controls/Controls.h"
#include "kx/win/Handles.h"
#include "kx/win/PerThread.h"
#include "kx/win/ThreadWindow.h"
#include "kx/win/Windows.h"

#include <cstdlib>
#include <memory>

namespace kx {

// --- TDragObject

const TClass& TDragObject::StaticClass() {
    static const TClassBuilder<TDragObject> cls("TDragObject", TObject::StaticClass());
    return cls.Class();
}

TCursor TDragObject::GetDragCursor(bool accepted) const { return accepted ? FControl->DragCursor() : crNoDrop; }

// --- TControl

void TControl::BeginDrag(bool immediate, int threshold) { detail::TDragSession::Begin(*this, immediate, threshold); }
void TControl::EndDrag(bool drop) { detail::TDragSession::End(*this, drop); }
bool TControl::Dragging() const { return detail::TDragSession::IsDragging(*this); }

void TControl::DragOver(TObject* source, int x, int y, TDragState state, bool& accept) {
    accept = static_cast<bool>(FOnDragOver);
    FOnDragOver(this, source, x, y, state, accept);
}

void TControl::DragDrop(TObject* source, int x, int y) { FOnDragDrop(this, source, x, y); }
void TControl::DoStartDrag(TDragObject*& object) { FOnStartDrag(this, object); }
void TControl::DoEndDrag(TObject* target, int x, int y) { FOnEndDrag(this, target, x, y); }

namespace detail {

namespace {

const TPerThread<std::shared_ptr<TDragSession>> Sessions;

std::shared_ptr<TDragSession>& Current() { return *Sessions; }

/// Where the left button went down last.
struct TPress {
    const TControl* Control = nullptr;
    TPoint At;
};
thread_local TPress Pressed;

/// Where the mouse was at the time of the message being handled; it may be elsewhere by now.
TPoint MessageMouse() {
    const DWORD pos = GetMessagePos();
    return {static_cast<int16_t>(LOWORD(pos)), static_cast<int16_t>(HIWORD(pos))};
}

/// The window that shows the control; null when there is none.
HWND WindowOf(TControl& control) {
    auto* const windowed = dynamic_cast<TWinControl*>(&control);
    TWinControl* const shown = windowed ? windowed : control.Parent();
    return shown ? shown->WindowHandle() : nullptr;
}

TPoint LocalPoint(TControl& control, const TPoint& screen) {
    return WindowOf(control) ? control.ScreenToClient(screen) : TPoint{};
}

/// The control under the mouse; null when that belongs to another thread.
TControl* TargetAt(const TPoint& screen) {
    TControl* const target = FindDragTarget(screen, true);
    return target && GetWindowThreadProcessId(WindowOf(*target), nullptr) == GetCurrentThreadId() ? target : nullptr;
}

/// Has the window under the mouse show its own pointer again.
void RestorePointer() {
    POINT mouse;
    GetCursorPos(&mouse);
    const HWND window = WindowFromPoint(mouse);
    if (window && GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId()) {
        SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    }
}

} // namespace

TDragSession::TDragSession(TControl& control, const TPoint& start, int threshold)
    : FControl(&control), FStart(start), FMouse(start), FThreshold(threshold) {}

TDragSession::~TDragSession() { delete FObject; }

bool TDragSession::IsCurrent() const { return Current().get() == this; }

TObject* TDragSession::Source() const { return FObject ? static_cast<TObject*>(FObject) : FControl; }

TCursor TDragSession::Cursor() const {
    return FObject ? FObject->GetDragCursor(FAccepted) : FAccepted ? FControl->DragCursor() : crNoDrop;
}

// --- From the press to the drag

void TDragSession::Begin(TControl& control, bool immediate, int threshold) {
    if (Current() && (Current()->FActive || Current()->FControl == &control)) {
        return;
    }
    const int least = threshold < 0 ? GetSystemMetrics(SM_CXDRAG) : threshold;
    const TPoint mouse = MessageMouse();
    const auto session =
        std::make_shared<TDragSession>(control, Pressed.Control == &control ? Pressed.At : mouse, least);
    Current() = session;
    session->FMouse = mouse;
    if (immediate || session->FarEnough(mouse)) {
        session->Start();
    }
}

bool TDragSession::FarEnough(const TPoint& mouse) const {
    return std::abs(mouse.X - FStart.X) >= FThreshold || std::abs(mouse.Y - FStart.Y) >= FThreshold;
}

void TDragSession::ButtonPressed(TControl& control) { Pressed = {&control, MessageMouse()}; }

void TDragSession::ButtonReleased() {
    Pressed = {};
    if (Current() && !Current()->FActive) {
        Current().reset();
    }
}

bool TDragSession::MouseMoved(WPARAM mouseKeys) {
    const auto session = Current();
    if (!session || session->FActive) {
        return false;
    }
    if ((mouseKeys & MK_LBUTTON) == 0) {
        Current().reset(); // the button was released where nobody saw it
        return false;
    }
    session->FMouse = MessageMouse();
    if (!session->FarEnough(session->FMouse)) {
        return false;
    }
    session->Start();
    return true;
}

void TDragSession::Start() {
    const auto keep = Current();
    FActive = true;
    try {
        FControl->DoStartDrag(FObject);
    } catch (...) {
        if (IsCurrent()) {
            Current().reset();
        }
        throw;
    }
    if (!IsCurrent()) {
        return;
    }
    if (FObject) {
        FObject->FControl = FControl;
    }
    FControl->FClicked = false; // the press has become a drag
    FControl->SetMouseCapture(false);
    if (IsCurrent()) {
        FControl->Perform(WM_CANCELMODE);
    }
    if (!IsCurrent()) {
        return;
    }
    ControlHost().CancelHint();
    FButtonHeld = GetKeyState(VK_LBUTTON) < 0;
    SetCapture(Window());
    FKeyboard = SetWindowsHookExA(WH_KEYBOARD, KeyboardProc, nullptr, GetCurrentThreadId());
    OrFinish([this] { DragTo(FMouse); });
}

/// Runs `f`; when a handler throws, the drag is over.
template <class F> void TDragSession::OrFinish(F&& f) {
    const auto keep = Current();
    try {
        f();
    } catch (...) {
        if (IsCurrent()) {
            Guarded([this] { Finish(false); });
        }
        throw;
    }
}

// --- The drag

void TDragSession::DragTo(const TPoint& mouse) {
    const auto keep = Current();
    FMouse = mouse;
    TControl* const target = TargetAt(mouse);
    TDragState state = dsDragMove;
    if (target != FTarget) {
        state = dsDragEnter;
        const TAlive alive(target);
        if (TControl* const old = std::exchange(FTarget, nullptr)) {
            FAccepted = false;
            Over(*old, dsDragLeave);
        }
        if (!IsCurrent()) {
            return;
        }
        FTarget = alive ? target : nullptr;
    }
    FAccepted = FTarget && Over(*FTarget, state) && FTarget;
    if (IsCurrent()) {
        SetCursor(ControlHost().Cursors(Cursor()));
    }
}

bool TDragSession::Over(TControl& target, TDragState state) {
    const TPoint at = LocalPoint(target, FMouse);
    bool accept = false;
    target.DragOver(Source(), at.X, at.Y, state, accept);
    return accept;
}

void TDragSession::Finish(bool drop) {
    const auto keep = Current();
    if (drop) {
        DragTo(MessageMouse());
        if (!IsCurrent()) {
            return;
        }
    }
    CloseDown();
    TControl* const source = FControl;
    if (!source) {
        return; // a handler freed it when the session gave the mouse back
    }
    TControl* const over = FTarget;
    const bool dropped = drop && FAccepted;
    const TPoint at = dropped ? LocalPoint(*over, FMouse) : TPoint{};
    const TAlive sourceAlive(*source);
    const TAlive overAlive(over);
    std::exception_ptr error; // kept until the source has been told of the end
    try {
        if (dropped) {
            over->DragDrop(Source(), at.X, at.Y);
        } else if (over) {
            Over(*over, dsDragLeave);
        }
    } catch (...) {
        error = std::current_exception();
    }
    if (sourceAlive) {
        source->DoEndDrag(dropped && overAlive ? over : nullptr, at.X, at.Y);
    }
    if (error) {
        std::rethrow_exception(error);
    }
}

void TDragSession::CloseDown() {
    Current().reset(); // the caller keeps this object alive
    if (FKeyboard) {
        UnhookWindowsHookEx(std::exchange(FKeyboard, nullptr));
    }
    if (FActive && GetCapture() == Window()) {
        ReleaseCapture();
    }
    if (FActive) {
        RestorePointer();
    }
}

void TDragSession::End(const TControl& control, bool drop) {
    const auto session = Current();
    if (!session || session->FControl != &control) {
        return;
    }
    if (session->FKeyboard) {
        session->OrFinish([&] { session->Finish(drop); });
    } else {
        Current().reset(); // the drag has not really begun
    }
}

bool TDragSession::IsDragging(const TControl& control) {
    return Current() && Current()->FActive && Current()->FControl == &control;
}

void TDragSession::ControlGone(const TControl& control) {
    if (Pressed.Control == &control) {
        Pressed = {};
    }
    const auto session = Current();
    if (!session) {
        return;
    }
    if (session->FTarget == &control) {
        session->FTarget = nullptr;
        session->FAccepted = false;
    }
    if (session->FControl == &control) {
        session->CloseDown();
        session->FControl = nullptr;
    }
}

// --- Mouse and keyboard while it lasts

HWND TDragSession::Window() {
    static constexpr TThreadWindow window(L"KxDragCapture", WindowProc);
    return window.Handle();
}

LRESULT CALLBACK TDragSession::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto session = Current();
    if (session && session->FActive) {
        Guarded([&] { session->OrFinish([&] { session->Received(message, wParam, lParam); }); });
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void TDragSession::Received(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_MOUSEMOVE:
        if (FButtonHeld && (wParam & MK_LBUTTON) == 0) {
            Finish(false); // the button was released where nobody saw it
        } else {
            DragTo(MessageMouse());
        }
        break;
    case WM_LBUTTONUP: Finish(true); break;
    case WM_CAPTURECHANGED:
        if (reinterpret_cast<HWND>(lParam) != Window()) {
            Finish(false);
        }
        break;
    default: break;
    }
}

/// A hook, because the focus may be anywhere and the message loop may be a foreign dialog's.
LRESULT CALLBACK TDragSession::KeyboardProc(int code, WPARAM wParam, LPARAM lParam) {
    constexpr LPARAM released = LPARAM{1} << 31;
    const auto session = Current();
    if (code == HC_ACTION && wParam == VK_ESCAPE && (lParam & released) == 0 && session && session->FActive) {
        Guarded([&] { session->Finish(false); });
        return 1;
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace detail

} // namespace kx
