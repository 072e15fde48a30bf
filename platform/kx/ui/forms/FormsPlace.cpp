// Where forms show, and what is around their client area.

#include "kx/ui/controls/Menus.h"
#include "kx/ui/forms/Forms.h"
#include "kx/win/Dpi.h"
#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <cstdlib>

namespace kx {

// --- The first place

void TCustomForm::PlaceFirst() {
    if (std::exchange(FPlaced, true) || Parent() || ParentWindow()) {
        return;
    }
    const auto center = [this](const TRect& area) {
        SetBounds(area.Left + (area.Right - area.Left - Width()) / 2,
                  area.Top + (area.Bottom - area.Top - Height()) / 2, Width(), Height());
    };
    const TRect firstMonitor{0, 0, Screen().Width(), Screen().Height()};
    const TCustomForm* over = nullptr;
    switch (FPosition) {
    case poMainFormCenter: over = Application().MainForm(); break;
    case poOwnerFormCenter:
        over = dynamic_cast<TCustomForm*>(Owner());
        over = over ? over : Application().MainForm();
        break;
    case poScreenCenter: center(DefaultMonitorBounds()); return;
    case poDesktopCenter: break;
    default: return;
    }
    center(over && over != this ? over->BoundsRect() : firstMonitor);
}

TRect TCustomForm::DefaultMonitorBounds() const {
    const TCustomForm* on = nullptr;
    if (FDefaultMonitor == dmMainForm) {
        on = Application().MainForm();
    } else if (FDefaultMonitor == dmActiveForm) {
        on = Screen().ActiveForm();
    }
    MONITORINFO info{};
    info.cbSize = sizeof info;
    if (on && on != this && on->HandleAllocated() &&
        GetMonitorInfoA(MonitorFromWindow(on->WindowHandle(), MONITOR_DEFAULTTOPRIMARY), &info)) {
        return FromRECT(info.rcMonitor);
    }
    return {0, 0, Screen().Width(), Screen().Height()};
}

/// The form keeps its size, and is somewhere near the edges of the area that the monitor has for programs.
void TCustomForm::Snap(WINDOWPOS& to) const {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    const RECT wanted{to.x, to.y, to.x + Width(), to.y + Height()};
    const bool moves =
        (to.flags & SWP_NOMOVE) == 0 && ((to.flags & SWP_NOSIZE) || (to.cx == Width() && to.cy == Height()));
    if (!FScreenSnap || !FDragged || !moves || IsDocked() || Parent() ||
        !GetMonitorInfoA(MonitorFromRect(&wanted, MONITOR_DEFAULTTONEAREST), &info)) {
        return;
    }
    const auto snap = [this](int& at, int size, LONG first, LONG last) {
        if (std::abs(at - first) < FSnapBuffer) {
            at = first;
        } else if (std::abs(at + size - last) < FSnapBuffer) {
            at = last - size;
        }
    };
    snap(to.x, Width(), info.rcWork.left, info.rcWork.right);
    snap(to.y, Height(), info.rcWork.top, info.rcWork.bottom);
}

// --- Around the client area

TPoint TCustomForm::FrameExtent() const {
    TPoint extent = TParentForm::FrameExtent();
    extent.X += 2 * FBorderWidth;
    extent.Y += 2 * FBorderWidth;
    if (FMenu && FMenu->Items().Count() > 0 && !IsDocked()) {
        extent.Y += SystemMetric(SM_CYMENU, WindowDpi(WindowHandle()));
    }
    return extent;
}

void TCustomForm::SetBorderWidth(int value) {
    constexpr int greatest = 0x7FFF; // no window is larger
    value = std::clamp(value, 0, greatest);
    if (FBorderWidth != value) {
        FBorderWidth = value;
        if (HandleAllocated()) {
            SetWindowPos(WindowHandle(), nullptr, 0, 0, 0, 0,
                         SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
        }
    }
}

/// The system paints its frame only.
void TCustomForm::PaintBorder() {
    const HWND window = WindowHandle();
    if (FBorderWidth == 0 || !window || IsIconic(window)) {
        return;
    }
    RECT frame;
    RECT client;
    GetWindowRect(window, &frame);
    GetClientRect(window, &client);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
    OffsetRect(&client, -frame.left, -frame.top);
    const auto style = static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE));
    if (style & WS_VSCROLL) { // the bars stand beside the client area, and the border is around all of them
        const int width = SystemMetric(SM_CXVSCROLL, WindowDpi(window));
        const bool isLeft = (GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_LEFTSCROLLBAR) != 0;
        (isLeft ? client.left : client.right) += isLeft ? -width : width;
    }
    client.bottom += style & WS_HSCROLL ? SystemMetric(SM_CYHSCROLL, WindowDpi(window)) : 0;
    RECT border = client;
    InflateRect(&border, FBorderWidth, FBorderWidth);
    const TWindowDC dc(window, true);
    ExcludeClipRect(dc.Handle(), client.left, client.top, client.right, client.bottom);
    ::FillRect(dc.Handle(), &border, Brush().Handle());
}

void TCustomForm::ColorChanged() {
    if (Outlives(*this, [this] { TParentForm::ColorChanged(); }) && FBorderWidth > 0 && HandleAllocated()) {
        RedrawWindow(WindowHandle(), nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME);
    }
}

// --- Size

/// A window's scroll bars come and go, so its client area says nothing of the size that the form is to have.
bool TCustomForm::StoresOuterSize() const {
    auto& self = const_cast<TCustomForm&>(*this);
    return AutoScroll() || self.HorzScrollBar().Range() > 0 || self.VertScrollBar().Range() > 0;
}

/// A docked form has the size that its dialog gives it, and a form that fills the screen or is an icon another one.
bool TCustomForm::SizesItself(bool horizontal) const {
    return !IsDocked() && FWindowState == wsNormal && TParentForm::SizesItself(horizontal);
}

} // namespace kx
