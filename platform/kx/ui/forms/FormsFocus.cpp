// SPDX-License-Identifier: MIT
// The keyboard among the controls of a form.

#include "kx/ui/controls/Menus.h"
#include "kx/ui/forms/Forms.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <vector>

namespace kx {

// --- Focus

void TCustomForm::SetActiveControl(TWinControl* value) {
    if (FActiveControl == value) {
        return;
    }
    if (value && !IsLoading() && (value == this || !ContainsControl(value) || !value->CanFocus())) {
        throw EInvalidOperation("Cannot focus a disabled or invisible window");
    }
    FActiveControl = value;
    if (value && !IsLoading() && HandleAllocated() && Focused(*this)) {
        ::SetFocus(value->Handle());
    }
}

/// The focus is on the form or on a control of it.
bool TCustomForm::Focused(const TCustomForm& form) {
    const HWND focus = ::GetFocus();
    return focus && (focus == form.WindowHandle() || IsChild(form.WindowHandle(), focus));
}

void TCustomForm::FocusControl(TWinControl& control) {
    if (!control.CanFocus() || !Visible() || !Enabled()) {
        throw EInvalidOperation("Cannot focus a disabled or invisible window");
    }
    FActiveControl = &control;
    if (const HWND window = control.Handle()) {
        ::SetFocus(window);
    }
}

void TCustomForm::SetFocus() {
    if (!Visible() || !Enabled()) {
        throw EInvalidOperation("Cannot focus a disabled or invisible window");
    }
    ::SetFocus(Handle());
}

void TCustomForm::FocusInside() {
    TWinControl* target = FActiveControl;
    if (!target || !target->CanFocus()) {
        target = FindNextControl(nullptr, true, true, false);
    }
    if (target && target->HandleAllocated()) {
        ::SetFocus(target->WindowHandle());
    }
}

/// A control of the form, or the form itself, got the focus.
void TCustomForm::ControlFocused(TWinControl& control) {
    if (&control == this) {
        FocusInside();
        return;
    }
    FActiveControl = &control;
    if (FOnScreen) {
        Screen().FActiveControl = &control;
    }
    TWinControl* const old = std::exchange(FFocusedControl, &control);
    if (old == &control) {
        return;
    }
    // Containers are left and entered with the controls inside them.
    const TAlive alive(*this);
    const TAlive controlAlive(control);
    const TAlive oldAlive(old);
    if (!Leave(old, &control)) {
        return;
    }
    struct TEntered {
        TWinControl* Control;
        TAlive Alive;
    };
    std::vector<TEntered> entered;
    for (TWinControl* c = &control; c && c != this && !(oldAlive && c->ContainsControl(old)); c = c->Parent()) {
        entered.push_back({c, TAlive(*c)});
    }
    for (size_t i = entered.size(); i-- > 0;) {
        if (entered[i].Alive) {
            entered[i].Control->DoEnter();
        }
        if (!alive || !controlAlive || FFocusedControl != &control) {
            return;
        }
    }
    FocusChanged(&control);
}

/// Fires OnExit of `old` and of the controls around it that `next` is not in. False: a handler has moved the focus on
/// or ended the form.
bool TCustomForm::Leave(TWinControl* old, TWinControl* next) {
    const TAlive alive(*this);
    const TAlive nextAlive(next);
    for (TWinControl* c = old; c && c != this && !c->ContainsControl(next);) {
        const bool stays = Outlives(*c, [c] { c->DoExit(); });
        if (!alive || (next && !nextAlive) || FFocusedControl != next) {
            return false;
        }
        c = stays ? c->Parent() : nullptr;
    }
    return true;
}

void TCustomForm::ExitFocused() {
    if (!IsDestroying()) { // the handlers of a form that goes cannot be called any more
        Leave(std::exchange(FFocusedControl, nullptr), nullptr);
    }
}

/// In a dialog that is not the framework's, the focus may go to one of the dialog's own controls, and only this message
/// tells of that. When another top-level window becomes the active one, the control keeps the focus within its dialog.
void TCustomForm::FocusLost(TWinControl& control, HWND to) {
    if (!IsDocked() || !to || !FFocusedControl || !control.ContainsControl(FFocusedControl)) {
        return;
    }
    const HWND own = WindowHandle();
    if (to != own && !IsChild(own, to) && GetAncestor(to, GA_ROOT) == GetAncestor(own, GA_ROOT)) {
        ExitFocused();
    }
}

void TCustomForm::FocusLeaves(TWinControl& control) {
    const HWND focus = ::GetFocus();
    TWinControl* const focused = FindControl(focus);
    if (!focused || !control.ContainsControl(focused)) {
        if (FActiveControl && control.ContainsControl(FActiveControl)) {
            FActiveControl = nullptr;
        }
        return;
    }
    std::vector<TWinControl*> list;
    GetTabOrderList(list);
    TWinControl* next = focused;
    for (size_t i = 0; i <= list.size(); ++i) {
        next = FindNextControl(next, true, true, false);
        if (!next || !control.ContainsControl(next)) {
            break;
        }
    }
    FActiveControl = next && !control.ContainsControl(next) ? next : nullptr;
    if (!FActiveControl && IsDocked()) {
        LeaveToHost();
        return;
    }
    ::SetFocus(FActiveControl ? FActiveControl->WindowHandle() : WindowHandle());
}

/// The system's dialogs leave the focus where it is when its window is hidden or disabled, and then hear no key.
void TCustomForm::LeaveToHost() {
    const HWND own = WindowHandle();
    const HWND host = GetAncestor(own, GA_ROOT);
    if (!IsWindowVisible(host)) { // it closes, and has no use for the focus
        if (Visible()) {
            ::SetFocus(own);
        }
        return;
    }
    std::vector<HWND> seen; // where all that can have the focus is in the form, the system goes round in it
    HWND next = GetNextDlgTabItem(host, ::GetFocus(), FALSE);
    while (next && IsChild(own, next) && std::find(seen.begin(), seen.end(), next) == seen.end()) {
        seen.push_back(next);
        next = GetNextDlgTabItem(host, next, FALSE);
    }
    if (next && !IsChild(own, next)) {
        SendMessageW(host, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
    } else {
        ::SetFocus(Visible() ? own : host);
    }
}

/// The control, with all that is inside it, leaves the form or goes.
void TCustomForm::ControlGone(const TControl& control) {
    const auto inside = [&](const TControl* c) {
        while (c && c != &control) {
            c = c->Parent();
        }
        return c != nullptr;
    };
    if (inside(FActiveControl)) {
        FActiveControl = nullptr;
    }
    if (inside(FFocusedControl)) {
        FFocusedControl = nullptr;
    }
}

// --- Keys

bool TCustomForm::PreTranslateFor(TWinControl& control, MSG& message) {
    if (IsDocked()) {
        return ForwardToHost(message);
    }
    ShowCuesFor(control, message);
    switch (message.message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN: {
        const TAlive controlAlive(control);
        bool used = false;
        const auto offer = [&] { FOnShortCut(message, used); };
        if (!Outlives(*this, offer) || !controlAlive || used) {
            return true;
        }
        // The clicks on the items above may end form and menu, or disable the item.
        const auto offerMenu = [&] { used = FMenu && FMenu->IsShortCut(message.wParam, message.lParam); };
        if (!Outlives(*this, offerMenu) || !controlAlive || used) {
            return true;
        }
        return message.message == WM_KEYDOWN && !control.KeepsKey(message) &&
               DialogKey(static_cast<uint16_t>(message.wParam), KeyDataToShiftState());
    }
    case WM_SYSCHAR: return DialogChar(static_cast<wchar_t>(message.wParam));
    case WM_CHAR: {
        const auto code = static_cast<UINT>(SendMessageW(message.hwnd, WM_GETDLGCODE, 0, 0));
        return !(code & (DLGC_WANTCHARS | DLGC_WANTALLKEYS)) && &control != this &&
               DialogChar(static_cast<wchar_t>(message.wParam));
    }
    default: return false;
    }
}

/// The Alt key and those that move the focus show their marks, as in dialogs of the system.
void TCustomForm::ShowCuesFor(TWinControl& control, const MSG& message) {
    if (message.message == WM_SYSKEYDOWN && (message.wParam == VK_MENU || message.wParam == VK_F10)) {
        ShowCues(UISF_HIDEACCEL | UISF_HIDEFOCUS);
        return;
    }
    const bool moves = message.wParam == VK_TAB || (message.wParam >= VK_LEFT && message.wParam <= VK_DOWN);
    if (message.message == WM_KEYDOWN && moves && !control.KeepsKey(message)) {
        ShowCues(UISF_HIDEFOCUS);
    }
}

/// The window that a form is docked in moves the focus and presses its own buttons.
bool TCustomForm::ForwardToHost(MSG& message) {
    const HWND host = GetAncestor(WindowHandle(), GA_ROOT);
    return host && !FindControl(host) && IsDialogMessageW(host, &message);
}

bool TCustomForm::DialogKey(uint16_t key, TShiftState shift) {
    const bool plain = (shift * TShiftState{ssCtrl, ssAlt}).IsEmpty();
    switch (key) {
    case VK_TAB:
        if (plain) {
            SelectNext(FActiveControl, !shift.Contains(ssShift), true);
            return true;
        }
        break;
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN:
        if (plain && FActiveControl && FActiveControl->Parent()) {
            FActiveControl->Parent()->SelectNext(FActiveControl, key == VK_RIGHT || key == VK_DOWN, false);
            return true;
        }
        break;
    default: break;
    }
    return TWinControl::DialogKey(key, shift);
}

} // namespace kx
