// SPDX-License-Identifier: MIT
// Where forms show, and what is around their client area.

#include "kx/ui/controls/Menus.h"
#include "kx/ui/forms/Forms.h"
#include "kx/win/Dpi.h"
#include "kx/win/Handles.h"
#include "kx/win/Monitors.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <cstdlib>
#include <dwmapi.h>

namespace kx {

// --- The first place

namespace {

/// In screen coordinates, of a docked form too
TRect ScreenBoundsOf(const TCustomForm& form) {
    RECT r{};
    const bool isInside = form.IsDocked() && GetWindowRect(form.WindowHandle(), &r);
    return isInside ? FromRECT(r) : form.BoundsRect();
}

} // namespace

void TCustomForm::PlaceFirst() {
    if (std::exchange(FPlaced, true) || Parent() || ParentWindow()) {
        return;
    }
    const TCustomForm* over = nullptr;
    switch (FPosition) {
    case poMainFormCenter: over = Application().MainForm(); break;
    case poOwnerFormCenter:
        over = dynamic_cast<TCustomForm*>(Owner());
        over = over ? over : Application().MainForm();
        break;
    case poScreenCenter: CenterIn(DefaultMonitorBounds()); return;
    case poDesktopCenter: break;
    default: return;
    }
    CenterIn(over && over != this ? ScreenBoundsOf(*over) : Screen().BoundsRect());
}

/// What is larger than the area, or over a form near an edge, keeps its caption within the user's reach.
void TCustomForm::CenterIn(const TRect& area) {
    const int left = area.Left + (kx::Width(area) - Width()) / 2;
    const int top = area.Top + (kx::Height(area) - Height()) / 2;
    const TRect monitor = MonitorAt(area).Whole;
    SetBounds(std::max(left, monitor.Left), std::max(top, monitor.Top), Width(), Height());
}

TRect TCustomForm::DefaultMonitorBounds() const {
    const TCustomForm* on = nullptr;
    if (FDefaultMonitor == dmMainForm) {
        on = Application().MainForm();
    } else if (FDefaultMonitor == dmActiveForm) {
        on = Screen().ActiveForm();
    }
    return on && on->HandleAllocated() ? MonitorOf(on->WindowHandle()).Whole : Screen().BoundsRect();
}

// --- Sticking to edges

namespace {

/// What the system leaves transparent at the edges of a window: the frame that the user can drag is wider than the one
/// that he sees.
TRect UnseenEdges(HWND window) {
    RECT whole;
    RECT seen;
    GetWindowRect(window, &whole);
    if (FAILED(DwmGetWindowAttribute(window, DWMWA_EXTENDED_FRAME_BOUNDS, &seen, sizeof seen))) {
        return {};
    }
    // Where the system enlarges the windows of the program it answers in other units, which fit no frame.
    const LONG greatest = GetSystemMetrics(SM_CXSIZEFRAME) + GetSystemMetrics(SM_CXPADDEDBORDER);
    const RECT edges{seen.left - whole.left, seen.top - whole.top, whole.right - seen.right,
                     whole.bottom - seen.bottom};
    for (const LONG edge : {edges.left, edges.top, edges.right, edges.bottom}) {
        if (edge < 0 || edge > greatest) {
            return {};
        }
    }
    return FromRECT(edges);
}

} // namespace

/// The edges that the user sees stick to those of the area that the monitor has for programs.
void TCustomForm::Snap(WINDOWPOS& to) const {
    if (!FScreenSnap || !FDragged || IsDocked() || Parent()) {
        return;
    }
    const bool sizes = (to.flags & SWP_NOSIZE) == 0;
    const TRect unseen = UnseenEdges(WindowHandle());
    const TRect seen{to.x + unseen.Left, to.y + unseen.Top, to.x + (sizes ? to.cx : Width()) - unseen.Right,
                     to.y + (sizes ? to.cy : Height()) - unseen.Bottom};
    const TRect area = MonitorAt(seen).Free;
    const auto way = [this](int first, int last, int areaFirst, int areaLast) {
        if (std::abs(areaFirst - first) < FSnapBuffer) {
            return areaFirst - first;
        }
        return std::abs(areaLast - last) < FSnapBuffer ? areaLast - last : 0;
    };
    to.x += way(seen.Left, seen.Right, area.Left, area.Right);
    to.y += way(seen.Top, seen.Bottom, area.Top, area.Bottom);
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

void TCustomForm::ExcludeBorder(RECT& client) const {
    InflateRect(&client, -FBorderWidth, -FBorderWidth);
    client.right = std::max(client.right, client.left);
    client.bottom = std::max(client.bottom, client.top);
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
