// SPDX-License-Identifier: MIT
// What the mouse does with a control, and its context menu.

#include "kx/ui/controls/Controls.h"

#include "kx/ui/controls/ActnList.h"
#include "kx/ui/controls/ControlHost.h"
#include "kx/ui/controls/Menus.h"
#include "kx/win/Windows.h"

#include <cstdlib>

namespace kx {

namespace {

TMouseButton ButtonOf(UINT message) {
    switch (message) {
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
    case WM_RBUTTONDBLCLK: return mbRight;
    case WM_MBUTTONDOWN:
    case WM_MBUTTONUP:
    case WM_MBUTTONDBLCLK: return mbMiddle;
    default: return mbLeft;
    }
}

} // namespace

LRESULT TControl::Perform(UINT message, WPARAM wParam, LPARAM lParam) {
    TMessage m{message, wParam, lParam, 0};
    WndProc(m);
    return m.Result;
}

void TControl::WndProc(TMessage& message) {
    switch (message.Msg) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONUP:
    case WM_MBUTTONDBLCLK:
    case WM_MOUSEMOVE: MouseMessage(message); break;
    case WM_CONTEXTMENU: ContextMenu(message); break;
    default: DefaultHandler(message);
    }
}

void TControl::DefaultHandler(TMessage&) {}

void TControl::MouseMessage(TMessage& message) {
    switch (message.Msg) {
    case WM_MOUSEMOVE: {
        if (Outlives(*this, [&] { DefaultHandler(message); }) && !detail::TDragSession::MouseMoved(message.WParam)) {
            MouseMove(KeysToShiftState(message.WParam), message.Pos().X, message.Pos().Y);
        }
        break;
    }
    case WM_LBUTTONUP:
        detail::TDragSession::ButtonReleased();
        ButtonUp(message, mbLeft);
        break;
    case WM_RBUTTONUP:
    case WM_MBUTTONUP: ButtonUp(message, ButtonOf(message.Msg)); break;
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDBLCLK: ButtonDown(message, ButtonOf(message.Msg), FControlStyle.Contains(csDoubleClicks)); break;
    default: ButtonDown(message, ButtonOf(message.Msg), false);
    }
}

void TControl::ButtonDown(TMessage& message, TMouseButton button, bool isDouble) {
    const TAlive alive(*this);
    DefaultHandler(message);
    if (alive && FControlStyle.Contains(csCaptureMouse)) {
        SetMouseCapture(true); // the control that had the capture is told
    }
    if (!alive) {
        return;
    }
    TShiftState shift = KeysToShiftState(message.WParam);
    if (isDouble) {
        shift.Include(ssDouble);
        if (button == mbLeft && FControlStyle.Contains(csClickEvents)) {
            DblClick();
        }
    } else if (button == mbLeft && FControlStyle.Contains(csClickEvents)) {
        FClicked = true;
    }
    if (alive) {
        if (button == mbLeft) {
            detail::TDragSession::ButtonPressed(*this);
        }
        MouseDown(button, shift, message.Pos().X, message.Pos().Y);
    }
    if (alive && button == mbLeft && FDragMode == dmAutomatic && !IsDesigning()) {
        BeginDrag(false);
    }
}

void TControl::ButtonUp(TMessage& message, TMouseButton button) {
    const TAlive alive(*this);
    DefaultHandler(message);
    if (alive && FControlStyle.Contains(csCaptureMouse)) {
        SetMouseCapture(false);
    }
    if (!alive) {
        return;
    }
    const TPoint pos = message.Pos();
    if (button == mbLeft && FClicked) {
        FClicked = false;
        const RECT client = ToRECT(ClientRect());
        if (PtInRect(&client, ToPOINT(pos))) {
            Click();
        }
    }
    if (alive) {
        MouseUp(button, KeysToShiftState(message.WParam), pos.X, pos.Y);
    }
}

void TControl::ContextMenu(TMessage& message) {
    const bool byKeyboard = message.LParam == -1;
    const TPoint at = byKeyboard ? TPoint{-1, -1} : ScreenToClient(message.Pos());
    bool handled = false;
    if (!Outlives(*this, [&] { DoContextPopup(at, handled); })) {
        return;
    }
    if (!handled && FPopupMenu && FPopupMenu->AutoPopup()) {
        handled = true;
        ControlHost().CancelHint();
        const TPoint point = byKeyboard ? ClientToScreen(KeyboardMenuPoint()) : message.Pos();
        FPopupMenu->SetPopupComponent(this);
        FPopupMenu->SetBiDiMode(IsMirroredWindow() ? bdRightToLeft : FBiDiMode);
        FPopupMenu->Popup(point.X, point.Y);
    }
    if (handled) {
        message.Result = 1;
    } else {
        DefaultHandler(message);
    }
}

void TControl::OpenBelow(TPopupMenu& menu) {
    const bool mirrored = IsMirroredWindow(); // the left edge is the right one there
    const TPoint at = ClientToScreen({!mirrored && UseRightToLeftAlignment() ? Width() : 0, Height()});
    menu.SetBiDiMode(mirrored ? bdRightToLeft : FBiDiMode);
    menu.Popup(at.X, at.Y);
}

bool TControl::IsMirroredWindow() const { return IsMirrored(MessageWindow()); }

HWND TControl::MessageWindow() const { return FParent ? FParent->WindowHandle() : nullptr; }

/// Each thread has a mouse capture of its own, and controls of dialogs that run in it.
TControl*& TControl::CaptureControl() {
    static thread_local TControl* control = nullptr;
    return control;
}

bool TControl::MouseCapture() const {
    return CaptureControl() == this && MessageWindow() && GetCapture() == MessageWindow();
}

void TControl::SetMouseCapture(bool value) {
    if (MouseCapture() == value) {
        return;
    }
    if (value) {
        if (MessageWindow()) {
            CaptureControl() = this; // set before others are told, whose handlers may free this control
            SetCapture(MessageWindow());
        }
    } else {
        CaptureControl() = nullptr;
        ReleaseCapture();
    }
}

bool TControl::DialogChar(wchar_t) { return false; }

// --- Events

void TControl::Click() {
    if (FOnClick) {
        FOnClick(this);
    } else if (TBasicAction* const action = Action()) {
        action->Execute();
    }
}
void TControl::DblClick() { FOnDblClick(this); }
void TControl::MouseDown(TMouseButton button, TShiftState shift, int x, int y) {
    FOnMouseDown(this, button, shift, x, y);
}
void TControl::MouseMove(TShiftState shift, int x, int y) { FOnMouseMove(this, shift, x, y); }
void TControl::MouseUp(TMouseButton button, TShiftState shift, int x, int y) { FOnMouseUp(this, button, shift, x, y); }
void TControl::MouseEnter() { FOnMouseEnter(this); }
void TControl::MouseLeave() { FOnMouseLeave(this); }
void TControl::Resize() {
    if (FOnResize && !IsIncomplete()) {
        FOnResize(this);
    }
}
void TControl::DoContextPopup(const TPoint& position, bool& handled) { FOnContextPopup(this, position, handled); }

// --- Helpers

TShiftState KeysToShiftState(WPARAM mouseKeys) {
    TShiftState shift;
    const auto add = [&](WPARAM key, TShiftStateFlag flag) {
        if (mouseKeys & key) {
            shift.Include(flag);
        }
    };
    add(MK_SHIFT, ssShift);
    add(MK_CONTROL, ssCtrl);
    add(MK_LBUTTON, ssLeft);
    add(MK_RBUTTON, ssRight);
    add(MK_MBUTTON, ssMiddle);
    if (GetKeyState(VK_MENU) < 0) {
        shift.Include(ssAlt);
    }
    return shift;
}

TShiftState KeyDataToShiftState() {
    TShiftState shift;
    const auto add = [&](int key, TShiftStateFlag flag) {
        if (GetKeyState(key) < 0) {
            shift.Include(flag);
        }
    };
    add(VK_SHIFT, ssShift);
    add(VK_CONTROL, ssCtrl);
    add(VK_MENU, ssAlt);
    return shift;
}

bool IsAccel(wchar_t letter, const std::string& caption) {
    const wchar_t hotkey = GetHotkey(caption);
    return hotkey != 0 && hotkey == UpperCaseLetter(letter);
}

std::string GetShortHint(const std::string& hint) { return hint.substr(0, hint.find('|')); }

std::string GetLongHint(const std::string& hint) {
    const size_t bar = hint.find('|');
    return bar == std::string::npos ? hint : hint.substr(bar + 1);
}

// --- The wheel

bool TWinControl::MouseWheelUsed(TMessage& message) {
    bool used = false;
    const auto offer = [&] {
        const auto delta = static_cast<int16_t>(message.WParamHi());
        used = DoMouseWheel(KeysToShiftState(message.WParamLo()), delta, message.Pos());
    };
    if (!Outlives(*this, offer)) {
        return true;
    }
    message.Result = used;
    return used;
}

bool TWinControl::DoMouseWheel(TShiftState shift, int wheelDelta, const TPoint& mousePos) {
    const TAlive alive(*this);
    bool used = false;
    FOnMouseWheel(this, shift, wheelDelta, mousePos, used);
    if (!alive || used) {
        return true;
    }
    FWheelRest += wheelDelta;
    while (alive && std::abs(FWheelRest) >= WHEEL_DELTA) {
        const bool isUp = FWheelRest > 0;
        FWheelRest += isUp ? -WHEEL_DELTA : WHEEL_DELTA;
        (isUp ? FOnMouseWheelUp : FOnMouseWheelDown)(this, shift, mousePos, used);
    }
    return used;
}

// --- Names of pointers and modal results

const TIdentInfo& KxIdentInfo(TCursor) {
    static const TIdentInfo info{
        {{crDefault, "crDefault"},     {crNone, "crNone"},           {crArrow, "crArrow"},   {crCross, "crCross"},
         {crIBeam, "crIBeam"},         {crSizeAll, "crSizeAll"},     {crSize, "crSize"},     {crSizeNESW, "crSizeNESW"},
         {crSizeNS, "crSizeNS"},       {crSizeNWSE, "crSizeNWSE"},   {crSizeWE, "crSizeWE"}, {crUpArrow, "crUpArrow"},
         {crHourGlass, "crHourGlass"}, {crDrag, "crDrag"},           {crNoDrop, "crNoDrop"}, {crHSplit, "crHSplit"},
         {crVSplit, "crVSplit"},       {crMultiDrag, "crMultiDrag"}, {crNo, "crNo"},         {crAppStart, "crAppStart"},
         {crHelp, "crHelp"},           {crHandPoint, "crHandPoint"}}};
    return info;
}

const TIdentInfo& KxIdentInfo(TModalResult) {
    static const TIdentInfo info{{{mrNone, "mrNone"},
                                  {mrOk, "mrOk"},
                                  {mrCancel, "mrCancel"},
                                  {mrAbort, "mrAbort"},
                                  {mrRetry, "mrRetry"},
                                  {mrIgnore, "mrIgnore"},
                                  {mrYes, "mrYes"},
                                  {mrNo, "mrNo"}}};
    return info;
}

} // namespace kx
