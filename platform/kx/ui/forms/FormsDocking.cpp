// SPDX-License-Identifier: MIT
// Forms in windows that are not the framework's.

#include "kx/ui/forms/Forms.h"

#include "kx/win/Monitors.h"
#include "kx/win/System.h"
#include "kx/win/Windows.h"

namespace kx {

namespace {

/// Windows gives the ordinary place of a window as if what its bars leave free of a monitor began at the monitor's
/// corner; but not that of tool windows.
bool CountsFromFreeArea(HWND window) {
    return !System().Wine && !(GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_TOOLWINDOW);
}

} // namespace

TRect TCustomForm::NormalBounds() const {
    const HWND window = WindowHandle();
    if (!window || (!IsIconic(window) && !IsZoomed(window))) {
        return BoundsRect();
    }
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(window, &placement);
    const TRect bounds = FromRECT(placement.rcNormalPosition);
    if (!CountsFromFreeArea(window)) {
        return bounds;
    }
    const TMonitorPlace monitor = MonitorOf(window);
    const int x = monitor.Free.Left - monitor.Whole.Left;
    const int y = monitor.Free.Top - monitor.Whole.Top;
    return {bounds.Left + x, bounds.Top + y, bounds.Right + x, bounds.Bottom + y};
}

/// The style bits of a window.
struct TCustomForm::TStyles {
    explicit TStyles(const TCreateParams& params) : Style(params.Style), ExStyle(params.ExStyle) {}
    explicit TStyles(HWND window)
        : Style(static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE))),
          ExStyle(static_cast<DWORD>(GetWindowLongA(window, GWL_EXSTYLE))) {}

    bool Child() const { return (Style & WS_CHILD) != 0; }
    bool Shown() const { return (Style & WS_VISIBLE) != 0; }
    bool OnTop() const { return (ExStyle & WS_EX_TOPMOST) != 0; }
    /// Takes over the bits that the settings of a form do not decide.
    void KeepState(const TStyles& old) {
        constexpr DWORD kept = WS_VISIBLE | WS_DISABLED | WS_MINIMIZE | WS_MAXIMIZE | WS_HSCROLL | WS_VSCROLL;
        Style = (Style & ~kept) | (old.Style & kept);
    }
    /// The window stays visible or hidden.
    void ApplyTo(HWND window) const {
        constexpr DWORD visible = WS_VISIBLE;
        const TStyles now(window);
        SetWindowLongA(window, GWL_STYLE, static_cast<LONG>((Style & ~visible) | (now.Style & visible)));
        if (ExStyle != now.ExStyle) {
            SetWindowLongA(window, GWL_EXSTYLE, static_cast<LONG>(ExStyle));
        }
    }

    DWORD Style;
    DWORD ExStyle;
};

/// The window is not made anew: its controls keep their selections and scroll positions, and the focus stays.
void TCustomForm::UpdateWindowStyle() {
    const HWND window = WindowHandle();
    if (!window || Parent()) {
        return;
    }
    TCreateParams params;
    CreateParams(params);
    const TStyles old(window);
    TStyles styles(params);
    styles.KeepState(old);
    const HWND oldParent = old.Child() ? GetAncestor(window, GA_PARENT) : nullptr;
    const TRect bounds = styles.Child() ? NormalBounds() : BoundsRect();
    const TWindowState state = FWindowState;
    const bool moves = styles.Child() != old.Child() || (styles.Child() && oldParent != params.WndParent);

    const TAlive alive(*this);
    if (moves && old.Shown()) {
        ShowWindow(window, SW_HIDE); // the focus leaves, and handlers hear of that
    }
    if (!alive || WindowHandle() != window) {
        return;
    }
    try {
        if (styles.Child()) {
            EnterParent(params.WndParent, styles);
        } else {
            LeaveParent(params.WndParent, styles);
        }
    } catch (...) {
        if (alive && old.Shown()) {
            ShowWindow(window, SW_SHOWNA);
        }
        throw;
    }
    if (!alive) {
        return;
    }
    const bool zOrder = moves || styles.OnTop() != old.OnTop();
    const UINT flags = SWP_NOACTIVATE | SWP_FRAMECHANGED | (old.Shown() ? 0u : UINT{SWP_NOREDRAW | SWP_DEFERERASE}) |
                       (zOrder ? 0u : UINT{SWP_NOZORDER}) | (IsIconic(window) ? UINT{SWP_NOMOVE | SWP_NOSIZE} : 0u);
    SetWindowPos(window,
                 styles.OnTop() ? HWND_TOPMOST
                 : old.OnTop()  ? HWND_NOTOPMOST
                                : HWND_TOP,
                 bounds.Left, bounds.Top, kx::Width(bounds), kx::Height(bounds), flags);
    if (alive) {
        ApplyAlpha();
    }
    if (alive && moves && WindowHandle() == window) {
        TakeCues();
    }
    if (alive && moves && old.Shown()) {
        ShowWindow(window, state == wsNormal ? SW_SHOWNA : ShowCommand(state));
    }
}

/// The window becomes a child of `parent`. When the system refuses that, it stays what it is.
void TCustomForm::EnterParent(HWND parent, const TStyles& styles) {
    const HWND window = WindowHandle();
    const TStyles old(window);
    if (old.Child()) {
        ChangeParent(window, parent);
        styles.ApplyTo(window);
        return;
    }
    if (GetMenu(window)) {
        ::SetMenu(window, nullptr);
    }
    styles.ApplyTo(window);
    SetWindowLongPtrA(window, GWLP_ID, static_cast<LONG_PTR>(reinterpret_cast<UINT_PTR>(NextControlId())));
    const TAlive alive(*this);
    try {
        ChangeParent(window, parent);
    } catch (...) {
        if (alive) {
            SetWindowLongPtrA(window, GWLP_ID, 0);
            old.ApplyTo(window);
            ApplyMenu();
        }
        throw;
    }
    if (IsIconic(window) || IsZoomed(window)) {
        ShowWindow(window, SW_SHOWNOACTIVATE); // the window gets its ordinary size, and handlers hear of that
        if (alive && WindowHandle() == window) {
            ShowWindow(window, SW_HIDE);
        }
    }
}

/// The window becomes, or stays, a top-level window.
void TCustomForm::LeaveParent(HWND owner, const TStyles& styles) {
    const HWND window = WindowHandle();
    const TAlive alive(*this);
    if (TStyles(window).Child()) {
        ChangeParent(window, nullptr);
        SetWindowLongPtrA(window, GWLP_ID, 0);
    }
    styles.ApplyTo(window);
    SetWindowLongPtrA(window, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
    if (alive) {
        ApplyMenu();
    }
}

void TCustomForm::SetParentWindow(HWND value) {
    if (Parent() || ParentWindow() == value) {
        return;
    }
    const bool hadWindow = HandleAllocated();
    const auto carryOut = [this, value] {
        if (HandleAllocated()) {
            UpdateWindowStyle();
        } else if (value && Visible()) {
            HandleNeeded();
        }
    };
    if (!Outlives(*this, [&] { ChangeParentWindow(value, carryOut); }) || !HandleAllocated()) {
        return;
    }
    if (!hadWindow) {
        ShowWindowNow();
        return;
    }
    // A form that leaves a dialog is hidden and will mostly be docked again: its windows keep their order till then.
    FArranged = value || Visible();
    if (FArranged) {
        ArrangeAllWindows();
    }
}

} // namespace kx
