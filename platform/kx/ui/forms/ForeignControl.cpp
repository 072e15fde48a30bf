// SPDX-License-Identifier: MIT
// Windows of other frameworks on forms.

#include "kx/ui/forms/ForeignControl.h"

#include "kx/core/Barrier.h"
#include "kx/ui/controls/ParentForm.h"
#include "kx/win/Windows.h"

namespace kx {

namespace {

/// Posted to itself after a click inside, which may have moved the focus.
constexpr UINT WM_CLICKEDINSIDE = WM_APP + 1;

/// What the window of a key message wants of the keys.
UINT DialogCode(const MSG& message) {
    return static_cast<UINT>(
        SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message)));
}

bool IsPushButton(UINT dialogCode) { return (dialogCode & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0; }

bool CanTakeFocus(HWND window) { return IsWindowVisible(window) && IsWindowEnabled(window); }

} // namespace

const TClass& TForeignControl::StaticClass() {
    static const TClassBuilder<TForeignControl> cls("TForeignControl", TWinControl::StaticClass(), [](auto& c) {
        using T = TForeignControl;
        c.Creatable();
        c.Property("TabStop", &T::TabStop, &T::SetTabStop).Default = true;
        c.Property("OnCreateForeign", &T::OnCreateForeign, &T::SetOnCreateForeign);
        c.Property("OnForeignDpi", &T::OnForeignDpi, &T::SetOnForeignDpi);
        c.Property("OnForeignGone", &T::OnForeignGone, &T::SetOnForeignGone);
    });
    return cls.Class();
}

TForeignControl::TForeignControl(TComponent* owner)
    : TWinControl(owner), FMessages([this](TMessage& message) { ForeignMessage(message); }) {
    SetBoundsFields(0, 0, 150, 100);
    SetTabStop(true);
}

TForeignControl::~TForeignControl() {
    EndLife();
    FMessages.Uninstall();
}

// --- The windows

void TForeignControl::CreateParams(TCreateParams& params) {
    TWinControl::CreateParams(params);
    params.Style |= WS_CLIPCHILDREN;
    params.Style &= ~static_cast<DWORD>(WS_TABSTOP); // the windows inside are what Tab goes to
    params.ExStyle |= WS_EX_CONTROLPARENT;
}

void TForeignControl::CreateWnd() {
    TWinControl::CreateWnd();
    MustOutlive([this] { Guarded([this] { AskForWindow(); }); });
}

void TForeignControl::AskForWindow() {
    HWND parent = WindowHandle();
    HWND window = nullptr;
    if (!Outlives(*this, [&] { DoCreateForeign(parent, window); }) || WindowHandle() != parent || !window) {
        return;
    }
    if (GetAncestor(window, GA_PARENT) != parent) {
        throw EInvalidOperation("The foreign window is no child of the control that has asked for it");
    }
    if (GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId()) {
        throw EInvalidOperation("The foreign window belongs to another thread");
    }
    FMessages.Install(window);
    FForeign = window;
    FitForeign();
}

void TForeignControl::ForeignMessage(TMessage& message) {
    const TSubclass::TPrevious previous = FMessages.Previous();
    const auto pass = [&] { message.Result = previous(message.Msg, message.WParam, message.LParam); };
    if (message.Msg == WM_NCDESTROY) {
        const TAlive alive(*this);
        pass();
        if (alive) {
            FForeign = nullptr;
            FLastFocus = nullptr;
            DoForeignGone();
        }
        return;
    }
    if (Outlives(*this, pass) && message.Msg == WM_SETFOCUS && FForeign) {
        NoteFocus();
    }
}

void TForeignControl::FitForeign() const {
    if (!FForeign) {
        return;
    }
    RECT area;
    GetClientRect(WindowHandle(), &area);
    SetWindowPos(FForeign, nullptr, 0, 0, area.right, area.bottom, SWP_NOZORDER | SWP_NOACTIVATE);
}

void TForeignControl::ChangeScale(int to, int from) {
    if (Outlives(*this, [=, this] { TWinControl::ChangeScale(to, from); }) && FForeign) {
        DoForeignDpi(to);
    }
}

void TForeignControl::DoCreateForeign(HWND parent, HWND& window) { FOnCreateForeign(this, parent, window); }
void TForeignControl::DoForeignGone() { FOnForeignGone(this); }
void TForeignControl::DoForeignDpi(int dpi) { FOnForeignDpi(this, dpi); }

void TForeignControl::WndProc(TMessage& message) {
    if (!Outlives(*this, [&] { TWinControl::WndProc(message); })) {
        return;
    }
    switch (message.Msg) {
    case WM_SIZE: FitForeign(); break;
    case WM_SETFOCUS: FocusForeign(); break;
    case WM_GETDLGCODE:
        if (message.LParam != 0 && StaysInside(message.LParamAs<MSG>())) {
            message.Result = DLGC_WANTALLKEYS;
        }
        break;
    case WM_PARENTNOTIFY:
        if (message.WParamLo() != WM_CREATE && message.WParamLo() != WM_DESTROY) { // a mouse button
            PostMessageW(WindowHandle(), WM_CLICKEDINSIDE, 0, 0);
        }
        break;
    case WM_CLICKEDINSIDE: NoteFocus(); break;
    default: break;
    }
}

// --- The focus inside

/// The first or the last window inside that Tab goes to; null when there is none.
HWND TForeignControl::Edge(bool last) const {
    HWND first = GetNextDlgTabItem(WindowHandle(), nullptr, FALSE);
    return last && first ? GetNextDlgTabItem(WindowHandle(), first, TRUE) : first;
}

/// The control got the focus and hands it on: to where it was, or, coming by Tab, to the end at which Tab comes in.
void TForeignControl::FocusForeign() {
    if (!FForeign || !Focused()) {
        return; // a handler has moved it
    }
    HWND next = FLastFocus;
    if (GetKeyState(VK_TAB) < 0) {
        next = Edge(GetKeyState(VK_SHIFT) < 0);
    } else if (!next || (next != FForeign && !IsChild(FForeign, next)) || !CanTakeFocus(next)) {
        next = Edge(false);
    }
    ::SetFocus(next ? next : FForeign);
}

/// The foreign framework moves the focus inside its window by itself.
void TForeignControl::NoteFocus() {
    HWND focus = ::GetFocus();
    if (FForeign && (focus == FForeign || IsChild(FForeign, focus))) {
        FLastFocus = focus;
        FocusGained();
    }
}

/// A key of a window inside that is not for the form: all but Return and Escape, which press its buttons, and Tab where
/// it leads out.
bool TForeignControl::StaysInside(const MSG& message) const {
    HWND window = message.hwnd;
    if (!FForeign || (window != FForeign && !IsChild(FForeign, window))) {
        return false;
    }
    const UINT code = DialogCode(message);
    if (code & (DLGC_WANTALLKEYS | DLGC_WANTMESSAGE)) {
        return true;
    }
    switch (message.wParam) {
    case VK_TAB: {
        HWND edge = Edge(GetKeyState(VK_SHIFT) >= 0);
        return (code & DLGC_WANTTAB) != 0 || (edge && edge != window && !IsChild(edge, window));
    }
    case VK_RETURN: return IsPushButton(code);
    case VK_ESCAPE: return false;
    default: return true;
    }
}

/// In the framework's own loops, and those that call PreTranslateMessage. The loops of system dialogs know by
/// themselves what to do.
bool TForeignControl::PreTranslate(MSG& message) {
    if (!FForeign || message.hwnd == WindowHandle()) {
        return TWinControl::PreTranslate(message);
    }
    const TAlive alive(*this);
    NoteFocus();
    if (!alive) {
        return !IsWindow(message.hwnd);
    }
    const bool used = TWinControl::PreTranslate(message);
    if (used || !alive || !FForeign) {
        return used;
    }
    const TParentForm* const form = ParentFormOf(this);
    if (!form || form->IsDocked()) {
        return false;
    }
    if (message.message == WM_KEYDOWN && message.wParam == VK_RETURN && IsPushButton(DialogCode(message))) {
        // The system presses it only where it has become the default one.
        const auto id = static_cast<WORD>(GetDlgCtrlID(message.hwnd));
        SendMessageW(GetAncestor(message.hwnd, GA_PARENT), WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                     reinterpret_cast<LPARAM>(message.hwnd));
        return true;
    }
    return IsDialogMessageW(FForeign, &message) != FALSE;
}

} // namespace kx
