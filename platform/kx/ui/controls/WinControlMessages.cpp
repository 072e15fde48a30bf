// SPDX-License-Identifier: MIT
// The messages of a control's window, and how controls are found.

#include "kx/ui/controls/Controls.h"

#include "kx/core/Barrier.h"
#include "kx/ui/controls/ControlHost.h"
#include "kx/ui/controls/ParentForm.h"
#include "kx/win/ReflectedMessages.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

namespace {

bool IsButtonDown(UINT message) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK: return true;
    default: return false;
    }
}

} // namespace

void TWinControl::WndProc(TMessage& message) {
    switch (message.Msg) {
    case WM_PAINT: PaintHandler(message); return;
    case WM_PRINTCLIENT:
        if (!FSystemClass) {
            if (NeedsBuffer()) {
                EraseBackground(message.WParamDC()); // WM_ERASEBKGND has not done it
            }
            PaintAll(message.WParamDC());
            return;
        }
        break;
    case WM_NCPAINT:
        if (!HasFrame()) {
            return; // the system would take as long for painting nothing as for the erasing
        }
        if (PaintEdge(message)) {
            return;
        }
        break;
    case WM_ENABLE: EdgeChanged(); break;
    case WM_ERASEBKGND:
        if (!FSystemClass || NeedsBuffer()) {
            if (!NeedsBuffer()) {
                EraseBackground(message.WParamDC());
            }
            message.Result = 1;
            return;
        }
        break;
    case WM_SETCURSOR:
        if (SetCursorHandler(message)) {
            message.Result = 1;
            return;
        }
        break;
    case WM_SETFOCUS: FocusReceived(message); return;
    case WM_KILLFOCUS: FocusLost(message); return;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_KEYUP:
    case WM_SYSKEYUP:
    case WM_CHAR:
    case WM_SYSCHAR:
        if (KeyHandler(FHandle, message, [this](TMessage& half) { DefaultHandler(half); })) {
            return;
        }
        break;
    case WM_UNICHAR: CharHandler(FHandle, message); return;
    case WM_GETOBJECT:
        if (AnswerAccessible(message)) {
            return;
        }
        break;
    case CM_ACCESSIBLEACTION: DoAccessibleAction(message); return;
    case WM_GETDLGCODE: GetDlgCode(message); return;
    case WM_COMMAND:
    case WM_NOTIFY:
    case WM_HSCROLL:
    case WM_VSCROLL:
    case WM_DRAWITEM:
    case WM_COMPAREITEM:
    case WM_DELETEITEM:
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
        if (ReflectMessage(message)) {
            return;
        }
        break;
    case WM_MEASUREITEM:
        if (MeasureItem(message)) {
            return;
        }
        break;
    case CN_BASE + WM_CTLCOLOREDIT:
    case CN_BASE + WM_CTLCOLORLISTBOX:
    case CN_BASE + WM_CTLCOLORBTN:
    case CN_BASE + WM_CTLCOLORSTATIC:
        message.Result = reinterpret_cast<LRESULT>(ControlColor(message.WParamDC()));
        return;
    case WM_WINDOWPOSCHANGED: WindowPosChanged(message); return;
    case WM_SETTEXT:
        if (Outlives(*this, [&] { DefaultHandler(message); })) {
            TextChanged();
        }
        return;
    case WM_NOTIFYFORMAT:
        if (message.LParam == NF_QUERY) { // a control inside asks what texts it shall send
            message.Result = NFR_UNICODE;
            return;
        }
        break;
    case WM_SYSCOLORCHANGE:
    case WM_SETTINGCHANGE: SystemChanged(message); return;
    case WM_THEMECHANGED: // the system sends it to every window
        FSystemLook.reset();
        Invalidate();
        EdgeChanged();
        if (!Outlives(*this, [&, original = message] { TellInside(original, false); })) {
            return;
        }
        break;
    case WM_QUERYUISTATE: message.Result = FHiddenCues; return;
    case WM_CHANGEUISTATE: CuesWanted(message); return;
    case WM_UPDATEUISTATE: CuesChanged(message); return;
    case WM_DESTROY:
        SaveWindowState();
        ContextStale();
        break;
    case WM_MOUSELEAVE:
        if (!Outlives(*this, [this] { MouseGone(); })) {
            return;
        }
        break;
    case WM_MOUSEWHEEL:
        if (MouseWheelUsed(message)) {
            return;
        }
        break;
    case WM_CONTEXTMENU: {
        bool shown = false;
        if (!Outlives(*this, [&] { shown = ContextMenuInside(message); }) || shown) {
            return;
        }
        break;
    }
    default:
        if (message.Msg >= WM_MOUSEFIRST && message.Msg <= WM_MBUTTONDBLCLK) {
            if (IsButtonDown(message.Msg)) {
                InputSeen(false);
                if (!Outlives(*this, [] { ControlHost().HideHint(); })) {
                    return;
                }
            }
            if (GraphicMouseMessage(message)) {
                return;
            }
        } else if (message.Msg >= CN_BASE && message.Msg < CN_BASE + WM_USER) {
            return; // the control has ignored a notification, which is no message for its window
        }
    }
    TControl::WndProc(message);
}

// --- Changes of the system's settings

/// The system tells top-level windows only. So the message is handed on to the controls inside.
void TWinControl::SystemChanged(TMessage& message) {
    const TAlive alive(*this);
    const TMessage original = message;
    FSystemLook.reset();
    if (message.Msg == WM_SYSCOLORCHANGE) {
        ColorChanged(); // the control's colour may be one of the system's
    } else if (message.WParam == SPI_SETHIGHCONTRAST) {
        Invalidate();
        EdgeChanged();
    }
    if (alive) {
        DefaultHandler(message);
    }
    if (alive) {
        TellInside(original, true);
    }
}

/// Hands a message on to the controls inside, to those that have a window only if `windows`.
void TWinControl::TellInside(const TMessage& message, bool windows) {
    const TAlive alive(*this);
    const std::vector<TControl*> inside = FControls;
    for (TControl* control : inside) { // handlers may add or remove controls
        if (!alive || !HasChild(control)) {
            continue;
        }
        const auto* const windowed = dynamic_cast<TWinControl*>(control);
        if (windowed && !windows) {
            continue;
        }
        if (windowed && windowed->FHandle) {
            SendMessageW(windowed->FHandle, message.Msg, message.WParam, message.LParam);
        } else {
            Guarded([&] { control->Perform(message.Msg, message.WParam, message.LParam); });
        }
    }
}

// --- Notifications

namespace {

/// The window that a notification is about; null when it is not about one.
HWND NotifyingWindow(const TMessage& message) {
    switch (message.Msg) {
    case WM_NOTIFY: return message.LParamAs<NMHDR>().hwndFrom;
    case WM_DRAWITEM: {
        const auto& item = message.LParamAs<DRAWITEMSTRUCT>();
        return item.CtlType == ODT_MENU ? nullptr : item.hwndItem;
    }
    case WM_COMPAREITEM: return message.LParamAs<COMPAREITEMSTRUCT>().hwndItem;
    case WM_DELETEITEM: return message.LParamAs<DELETEITEMSTRUCT>().hwndItem;
    default: return message.LParamWindow();
    }
}

} // namespace

bool ReflectMessage(TMessage& message) {
    TWinControl* const control = FindControl(NotifyingWindow(message));
    if (!control) {
        return false;
    }
    message.Result = control->Perform(CN_BASE + message.Msg, message.WParam, message.LParam);
    return true;
}

/// This notification names its control by number only.
bool TWinControl::MeasureItem(TMessage& message) {
    const auto& item = message.LParamAs<MEASUREITEMSTRUCT>();
    TWinControl* const control =
        item.CtlType == ODT_MENU ? nullptr : FindControl(GetDlgItem(FHandle, static_cast<int>(item.CtlID)));
    if (control) {
        message.Result = control->Perform(CN_MEASUREITEM, message.WParam, message.LParam);
    }
    return control != nullptr;
}

// --- Mouse

TControl* TWinControl::MouseTarget(const TMessage& message) const {
    TControl* const captor = CaptureControl();
    if (captor && captor->Parent() == this && captor->MouseCapture() && !dynamic_cast<TWinControl*>(captor)) {
        return captor;
    }
    return GetCapture() == FHandle ? nullptr : ControlAtPos(message.Pos(), false);
}

bool TWinControl::GraphicMouseMessage(TMessage& message) {
    TControl* const target = HasGraphicControls() ? MouseTarget(message) : nullptr;
    if (message.Msg == WM_MOUSEMOVE) {
        if (!Outlives(*this, [&] { MouseOver(target, message); }) || (target && !HasChild(target))) {
            return true;
        }
    }
    if (!target) {
        return false;
    }
    const TPoint pos = message.Pos();
    const HWND window = FHandle;
    const LRESULT result =
        target->Perform(message.Msg, message.WParam, MakeLParam(pos.X - target->Left(), pos.Y - target->Top()));
    message.Result = result;
    if (message.Msg == WM_RBUTTONUP && IsWindow(window)) {
        // The system makes WM_CONTEXTMENU of it.
        message.Result = DefWindowProcW(window, message.Msg, message.WParam, message.LParam);
    }
    return true;
}

void TWinControl::MouseOver(TControl* graphic, const TMessage& message) {
    const TAlive alive(*this);
    if (!FIsMouseIn) {
        TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, FHandle, 0};
        FIsMouseIn = TrackMouseEvent(&track);
        MouseEnter();
    }
    if (alive && graphic != FMouseControl) {
        if (TControl* const old = std::exchange(FMouseControl, graphic)) {
            old->MouseLeave();
        }
        if (alive && FMouseControl && FMouseControl == graphic) {
            FMouseControl->MouseEnter();
        }
    }
    if (alive) {
        POINT screen = ToPOINT(message.Pos());
        ::ClientToScreen(FHandle, &screen);
        ControlHost().MouseOver(FMouseControl ? FMouseControl : this, FromPOINT(screen));
    }
}

void TWinControl::MouseGone() {
    FIsMouseIn = false;
    const TAlive alive(*this);
    if (TControl* const old = std::exchange(FMouseControl, nullptr)) {
        old->MouseLeave();
    }
    ControlHost().MouseOver(nullptr, {}); // this fires OnHint
    if (alive) {
        MouseLeave();
    }
}

bool TWinControl::SetCursorHandler(const TMessage& message) const {
    if (message.LParamLo() != HTCLIENT || message.WParamWindow() != FHandle) {
        return false;
    }
    TCursor cursor = ControlHost().Cursor();
    if (cursor == crDefault) {
        POINT mouse;
        GetCursorPos(&mouse);
        ::ScreenToClient(FHandle, &mouse);
        const TControl* control = ControlAtPos(FromPOINT(mouse), false);
        for (control = control ? control : this; control && cursor == crDefault; control = control->Parent()) {
            cursor = control->Cursor();
        }
    }
    if (cursor == crDefault) {
        return false;
    }
    ::SetCursor(ControlHost().Cursors(cursor));
    return true;
}

bool TWinControl::ContextMenuInside(TMessage& message) {
    if (message.LParam == -1) {
        return false;
    }
    TControl* const control = ControlAtPos(ScreenToClient(message.Pos()), false);
    if (!control) {
        return false;
    }
    const LRESULT result = control->Perform(message.Msg, message.WParam, message.LParam);
    message.Result = result;
    return result != 0;
}

// --- Finding controls

namespace {

/// The control that the window belongs to: as its own, or as one of the system's inside its own.
TWinControl* ControlOfWindow(HWND window) {
    for (; window; window = GetAncestor(window, GA_PARENT)) {
        if (TWinControl* const control = FindControl(window)) {
            return control;
        }
    }
    return nullptr;
}

TWinControl* WindowedAt(const TPoint& screenPoint, bool allowDisabled) {
    TWinControl* control = ControlOfWindow(WindowFromPoint(ToPOINT(screenPoint)));
    // The system passes over disabled windows.
    while (control && allowDisabled) {
        auto* const inner =
            dynamic_cast<TWinControl*>(control->ControlAtPos(control->ScreenToClient(screenPoint), true, true));
        if (!inner) {
            break;
        }
        control = inner;
    }
    return control;
}

} // namespace

TControl* FindDragTarget(const TPoint& screenPoint, bool allowDisabled) {
    const HWND window = WindowFromPoint(ToPOINT(screenPoint));
    if (!window || GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId()) {
        return nullptr; // a control of another thread may go at any moment
    }
    TWinControl* const windowed = WindowedAt(screenPoint, allowDisabled);
    if (!windowed) {
        return nullptr;
    }
    TControl* const graphic = windowed->ControlAtPos(windowed->ScreenToClient(screenPoint), allowDisabled);
    return graphic ? graphic : windowed;
}

std::vector<HWND> DirectChildren(HWND parent) {
    std::vector<HWND> windows;
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        windows.push_back(child);
    }
    return windows;
}

TWinControl* FindVCLWindow(const TPoint& screenPoint) { return WindowedAt(screenPoint, true); }

TParentForm* ParentFormOf(const TControl* control) {
    const TControl* top = control;
    while (top && top->Parent()) {
        top = top->Parent();
    }
    return const_cast<TParentForm*>(dynamic_cast<const TParentForm*>(top));
}

} // namespace kx
