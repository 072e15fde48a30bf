// SPDX-License-Identifier: MIT
// The window of a form.

#include "kx/ui/forms/Forms.h"

#include "kx/ui/controls/ControlCanvas.h"
#include "kx/ui/controls/Menus.h"
#include "kx/win/Dpi.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

// --- Style

void TCustomForm::CreateParams(TCreateParams& params) {
    TParentForm::CreateParams(params);
    if (Parent() || ParentWindow()) {
        if (!Parent()) {
            params.Style &= ~static_cast<DWORD>(WS_VISIBLE); // it is shown after OnShow
        }
    } else {
        params.Style &= ~static_cast<DWORD>(WS_CHILD | WS_VISIBLE | WS_TABSTOP);
        params.WndParent = OwnerWindow();
        if (Application().MainForm() == this) {
            params.ExStyle |= WS_EX_APPWINDOW;
        }
        if (FFormStyle == fsStayOnTop) {
            params.ExStyle |= WS_EX_TOPMOST;
        }
    }
    const bool child = (params.Style & WS_CHILD) != 0;
    if (FPlacing && !child && FBorderStyle != bsNone && FBorderStyle != bsDialog) { // it chooses for no others
        if (FPosition == poDefault || FPosition == poDefaultPosOnly) {
            params.X = params.Y = CW_USEDEFAULT;
        }
        if (FPosition == poDefault || FPosition == poDefaultSizeOnly) {
            params.Width = params.Height = CW_USEDEFAULT;
        }
    }
    bool resizable = false;
    switch (FBorderStyle) {
    case bsNone: params.Style |= child ? 0 : DWORD{WS_POPUP}; return;
    case bsSingle: params.Style |= WS_CAPTION; break;
    case bsSizeable:
        params.Style |= WS_CAPTION | WS_THICKFRAME;
        resizable = true;
        break;
    case bsDialog:
        params.Style |= child ? WS_CAPTION : WS_POPUP | WS_CAPTION;
        params.ExStyle |= WS_EX_DLGMODALFRAME | WS_EX_WINDOWEDGE;
        break;
    case bsToolWindow:
        params.Style |= WS_CAPTION;
        params.ExStyle |= WS_EX_TOOLWINDOW;
        break;
    case bsSizeToolWin:
        params.Style |= WS_CAPTION | WS_THICKFRAME;
        params.ExStyle |= WS_EX_TOOLWINDOW;
        break;
    }
    if (FBorderIcons.Contains(biSystemMenu)) {
        params.Style |= WS_SYSMENU;
        if (resizable || FBorderStyle == bsSingle) {
            params.Style |= FBorderIcons.Contains(biMinimize) ? DWORD{WS_MINIMIZEBOX} : 0;
            params.Style |= FBorderIcons.Contains(biMaximize) ? DWORD{WS_MAXIMIZEBOX} : 0;
        }
        if (FBorderIcons.Contains(biHelp) && !(params.Style & (WS_MINIMIZEBOX | WS_MAXIMIZEBOX))) {
            params.ExStyle |= WS_EX_CONTEXTHELP;
        }
    }
}

HWND TCustomForm::OwnerWindow() const {
    if (Application().MainForm() == this) {
        return nullptr;
    }
    if (FModal) {
        const HWND active = Application().ActiveFormHandle();
        return active == WindowHandle() ? Application().Handle() : active;
    }
    return Application().Handle();
}

// --- Making, showing and losing the window

void TCustomForm::CreateHandle() {
    MustOutlive([this] { AfterConstruction(); });
    if (HandleAllocated()) {
        return; // OnCreate has made the window
    }
    const TFieldScope placing(*this, FPlacing, !FPlaced);
    MustOutlive([this] { PlaceFirst(); });
    TParentForm::CreateHandle();
    if (Visible() && !FShowing && !Parent()) {
        ShowWindowNow();
    }
}

void TCustomForm::CreateWnd() {
    TParentForm::CreateWnd();
    RECT r;
    GetWindowRect(WindowHandle(), &r);
    if (!(GetWindowLongA(WindowHandle(), GWL_STYLE) & WS_CHILD)) {
        SetBoundsFields(r.left, r.top, r.right - r.left, r.bottom - r.top); // the system may have chosen them
    }
    ApplyAlpha();
    ApplyIcon();
    ApplyMenu();
    MustOutlive([this] { FollowScreen(WindowDpi(WindowHandle())); });
    MustOutlive([this] { AlignControls(); });
    MustOutlive([this] { Resize(); });
}

/// The window was destroyed with the one that it was in. The form is no part of that any more, and counts as hidden.
void TCustomForm::WindowLost() {
    FIsActive = false;
    WakeModalLoop();
    if (!Outlives(*this, [this] { Guarded([this] { ExitFocused(); }); })) {
        return;
    }
    if (Visible()) {
        FVisible = false;
        Guarded([this] { DoHide(); });
    }
}

void TCustomForm::Show() {
    if (Outlives(*this, [this] { SetVisible(true); })) {
        BringToFront();
    }
}

void TCustomForm::SetVisible(bool value) {
    if (IsLoading()) {
        FVisibleWanted = value;
        return;
    }
    FVisibleWanted = false;
    if (Visible() == value) {
        return;
    }
    if (value && !Outlives(*this, [this] { AfterConstruction(); })) {
        return;
    }
    TParentForm::SetVisible(value);
}

void TCustomForm::VisibleChanged() {
    const TAlive alive(*this);
    if (Visible()) {
        {
            const TFieldScope showing(*this, FShowing, true);
            try {
                HandleNeeded();
            } catch (...) {
                if (alive) {
                    FVisible = false; // a form that counts as visible could never be shown again
                }
                throw;
            }
            if (alive) {
                Guarded([this] { DoShow(); });
            }
        }
        if (alive && Visible() && HandleAllocated()) {
            ShowWindowNow();
        }
        // The system may have left the focus in the form while the form was hidden.
        if (alive && IsDocked() && Visible() && Focused(*this)) {
            if (TWinControl* const focused = FindControl(::GetFocus())) {
                ControlFocused(*focused);
            }
        }
    } else {
        if (IsDocked()) {
            Guarded([this] { ExitFocused(); });
            if (alive && HandleAllocated() && !Visible() && Focused(*this)) {
                Guarded([this] { LeaveToHost(); });
            }
        }
        if (alive && !Visible()) {
            Guarded([this] { DoHide(); });
        }
        if (alive && HandleAllocated() && !Visible()) {
            ShowWindow(WindowHandle(), SW_HIDE);
        }
    }
    if (alive) {
        RequestAlign();
    }
}

void TCustomForm::ShowWindowNow() {
    if (!std::exchange(FArranged, true)) {
        ArrangeAllWindows();
    }
    ShowWindow(WindowHandle(), ShowCommand(FWindowState));
}

int TCustomForm::ShowCommand(TWindowState state) const {
    if (Parent() || ParentWindow()) {
        return SW_SHOWNA;
    }
    constexpr int commands[] = {SW_SHOWNORMAL, SW_SHOWMINIMIZED, SW_SHOWMAXIMIZED};
    return commands[state];
}

/// Only windows of the screen can show through on all systems: a docked form does not.
void TCustomForm::ApplyAlpha() {
    if (!HandleAllocated() || IsDestroying()) {
        return;
    }
    const HWND window = WindowHandle();
    const LONG before = GetWindowLongA(window, GWL_EXSTYLE);
    const bool shows = FAlphaBlend && !(GetWindowLongA(window, GWL_STYLE) & WS_CHILD);
    const LONG style = shows ? before | WS_EX_LAYERED : before & ~WS_EX_LAYERED;
    if (style != before) {
        SetWindowLongA(window, GWL_EXSTYLE, style);
    }
    if (shows) {
        SetLayeredWindowAttributes(window, 0, FAlphaBlendValue, LWA_ALPHA);
    } else if (style != before) {
        RedrawWindow(window, nullptr, nullptr, RDW_ERASE | RDW_INVALIDATE | RDW_FRAME | RDW_ALLCHILDREN);
    }
}

void TCustomForm::ApplyIcon() {
    if (!HandleAllocated() || IsDestroying()) {
        return;
    }
    const bool dialog = FBorderStyle == bsDialog || FBorderStyle == bsToolWindow || FBorderStyle == bsSizeToolWin;
    TIcon& icon = FIcon.Empty() && !dialog ? Application().Icon() : FIcon;
    const auto handle = reinterpret_cast<LPARAM>(icon.Handle());
    SendMessageW(WindowHandle(), WM_SETICON, ICON_SMALL, handle);
    SendMessageW(WindowHandle(), WM_SETICON, ICON_BIG, handle);
}

void TCustomForm::ApplyMenu() {
    if (!HandleAllocated() || (GetWindowLongA(WindowHandle(), GWL_STYLE) & WS_CHILD)) {
        return;
    }
    if (FMenu && FBorderStyle != bsDialog) {
        ::SetMenu(WindowHandle(), FMenu->Handle());
        FMenu->SetWindowHandle(WindowHandle());
    } else {
        ::SetMenu(WindowHandle(), nullptr);
    }
}

void TCustomForm::SaveWindowState() {
    TParentForm::SaveWindowState();
    ::SetMenu(WindowHandle(), nullptr); // the menu is not the window's to destroy
    if (FMenu) {
        FMenu->SetWindowHandle(nullptr);
    }
}

// --- Messages

/// F1, or a click for help, somewhere in the form; inner windows pass it on.
bool TCustomForm::ShowHelp(TMessage& message) {
    const auto& info = message.LParamAs<HELPINFO>();
    if (info.iContextType != HELPINFO_WINDOW) {
        return false;
    }
    const TControl* control = nullptr;
    for (HWND window = static_cast<HWND>(info.hItemHandle); window && !control;
         window = GetAncestor(window, GA_PARENT)) {
        control = FindControl(window); // the focus may be in a window of the system's inside a control
    }
    const TControl* const topic = (control ? control : this)->NearestHelp();
    if (!topic) {
        return false;
    }
    message.Result = topic->HelpType() == htKeyword ? Application().HelpKeyword(topic->HelpKeyword())
                                                    : Application().HelpContext(topic->HelpContext());
    return true;
}

void TCustomForm::WndProc(TMessage& message) {
    switch (message.Msg) {
    case WM_CLOSE: Close(); return;
    case WM_QUERYENDSESSION: message.Result = SessionMayEnd(); return;
    case WM_ACTIVATE:
        if (Outlives(*this, [&] { TParentForm::WndProc(message); })) { // it moves the focus
            Activated(LOWORD(message.WParam) != WA_INACTIVE);
        }
        return;
    case WM_SIZE:
        // Before it is on the screen a window has an ordinary size, whatever it is to be shown as.
        if (Outlives(*this, [&] { TParentForm::WndProc(message); }) && !IsDocked() && HandleAllocated() &&
            IsWindowVisible(WindowHandle())) {
            FWindowState = message.WParam == SIZE_MAXIMIZED   ? wsMaximized
                           : message.WParam == SIZE_MINIMIZED ? wsMinimized
                                                              : wsNormal;
        }
        return;
    case WM_NCCALCSIZE:
        TParentForm::WndProc(message);
        ExcludeBorder(message.LParamAs<RECT>()); // of either record, the first thing in it
        return;
    case WM_NCPAINT:
        TParentForm::WndProc(message);
        PaintBorder();
        return;
    case WM_MOVING: FDragged = true; break; // not while the user sizes it
    case WM_EXITSIZEMOVE: FDragged = false; break;
    case WM_WINDOWPOSCHANGING: Snap(message.LParamAs<WINDOWPOS>()); break;
    case WM_DPICHANGED: ScreenChanged(message); return;
    case DpiChangedAfterParent:
        if (!Outlives(*this, [this] { FollowScreen(WindowDpi(WindowHandle())); })) {
            return;
        }
        break;
    case WM_HELP:
        if (ShowHelp(message)) {
            return;
        }
        break;
    case WM_GETMINMAXINFO: {
        TParentForm::WndProc(message);
        TSizeLimits limits;
        if (!Outlives(*this, [&] { limits = SizeLimits(); })) {
            return;
        }
        auto& info = message.LParamAs<MINMAXINFO>();
        const auto limit = [](LONG& field, int value) { field = value > 0 ? value : field; };
        limit(info.ptMinTrackSize.x, limits.MinWidth);
        limit(info.ptMinTrackSize.y, limits.MinHeight);
        limit(info.ptMaxTrackSize.x, limits.MaxWidth);
        limit(info.ptMaxTrackSize.y, limits.MaxHeight);
        return;
    }
    case WM_COMMAND:
    case WM_INITMENUPOPUP:
    case WM_MEASUREITEM:
    case WM_DRAWITEM: {
        bool used = false;
        const auto dispatch = [&] {
            used = FMenu && DispatchMenuMessage(FMenu, message.Msg, message.WParam, message.LParam, message.Result);
        };
        if (!Outlives(*this, dispatch) || used) {
            return;
        }
        break;
    }
    default: break;
    }
    TParentForm::WndProc(message);
}

void TCustomForm::Activated(bool active) {
    if (FIsActive == active) {
        return;
    }
    FIsActive = active;
    if (active) {
        if (FOnScreen) {
            Screen().FActiveForm = this;
        }
        Activate();
    } else {
        Application().CancelHint();
        if (Screen().FActiveForm == this) {
            Screen().FActiveForm = nullptr;
        }
        Deactivate();
    }
}

bool TCustomForm::Active() const {
    return WindowHandle() && GetActiveWindow() == GetAncestor(WindowHandle(), GA_ROOT) && GetActiveWindow();
}

// --- Painting

TCanvas& TCustomForm::Canvas() {
    if (!FCanvas) {
        FCanvas = std::make_unique<TControlCanvas>(*this);
    }
    return *FCanvas;
}

void TCustomForm::ContextStale() {
    if (FCanvas) {
        static_cast<TControlCanvas&>(*FCanvas).LetGo();
    }
    TParentForm::ContextStale();
}

void TCustomForm::PaintWindow(HDC dc) {
    const TControlCanvas::TScope scope(Canvas(), dc);
    Paint();
}

void TCustomForm::Paint() { FOnPaint(this); }

} // namespace kx
