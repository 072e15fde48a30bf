// SPDX-License-Identifier: MIT
// Controls that scroll what is in them, or take its size.

#include "kx/ui/controls/ScrollingControl.h"

#include "kx/win/Windows.h"

#include <algorithm>
#include <utility>

namespace kx {

// --- TControlScrollBar

const TClass& TControlScrollBar::StaticClass() {
    static const TClassBuilder<TControlScrollBar> cls("TControlScrollBar", TPersistent::StaticClass(), [](auto& c) {
        using T = TControlScrollBar;
        const auto fixed = [](const TObject& o) { return !static_cast<const T&>(o).FControl.AutoScroll(); };
        c.Property("Increment", &T::Increment, &T::SetIncrement).Default = 8;
        c.Property("Margin", &T::Margin, &T::SetMargin).Default = 0;
        TPropInfo& range = c.Property("Range", &T::Range, &T::SetRange);
        range.Default = 0;
        range.Stored = fixed;
        c.Property("Position", &T::Position, &T::SetPosition).Default = 0; // behind Range, which limits it
        c.Property("Tracking", &T::Tracking, &T::SetTracking).Default = false;
        c.Property("Visible", &T::Visible, &T::SetVisible).Default = true;
    });
    return cls.Class();
}

TPersistent* TControlScrollBar::GetOwner() const { return &FControl; }

void TControlScrollBar::Assign(const TPersistent* source) {
    if (const auto* other = dynamic_cast<const TControlScrollBar*>(source)) {
        FIncrement = other->FIncrement;
        FMargin = other->FMargin;
        FRange = other->FRange;
        FTracking = other->FTracking;
        FVisible = other->FVisible;
        FControl.UpdateRanges();
    } else {
        TPersistent::Assign(source);
    }
}

int TControlScrollBar::Page() const { return FHorizontal ? FControl.ClientWidth() : FControl.ClientHeight(); }

int TControlScrollBar::Greatest() const { return std::max(FRange - Page(), 0); }

void TControlScrollBar::SetMargin(int value) {
    FMargin = value;
    FControl.UpdateRanges();
}

void TControlScrollBar::SetRange(int value) {
    FControl.FAutoScroll = FControl.FAutoScroll && FControl.IsLoading(); // older files have both
    FRange = std::max(value, 0);
    FControl.UpdateBars();
}

void TControlScrollBar::SetVisible(bool value) {
    FVisible = value;
    FControl.UpdateBars();
}

void TControlScrollBar::SetPosition(int value) {
    if (FControl.IsLoading()) { // the places of the controls in the file are those in what is seen
        FPosition = std::max(value, 0);
        return;
    }
    const int before = FPosition;
    FPosition = std::clamp(value, 0, Greatest());
    const int by = before - FPosition;
    if (by != 0 && Outlives(FControl, [&] { FControl.MoveControls(FHorizontal ? by : 0, FHorizontal ? 0 : by); })) {
        FControl.UpdateBars();
    }
}

void TControlScrollBar::Scrolled(const TMessage& message) {
    int64_t to = FPosition;
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS; // the message itself carries 16 bits only
    switch (message.WParamLo()) {
    case SB_LINEUP: to -= FIncrement; break;
    case SB_LINEDOWN: to += FIncrement; break;
    case SB_PAGEUP: to -= Page(); break;
    case SB_PAGEDOWN: to += Page(); break;
    case SB_TOP: to = 0; break;
    case SB_BOTTOM: to = FRange; break;
    case SB_THUMBTRACK:
        if (!FTracking) {
            return;
        }
        [[fallthrough]];
    case SB_THUMBPOSITION:
        GetScrollInfo(FControl.WindowHandle(), FHorizontal ? SB_HORZ : SB_VERT, &info);
        to = info.nTrackPos;
        break;
    default: return;
    }
    SetPosition(static_cast<int>(std::clamp<int64_t>(to, 0, INT32_MAX)));
}

void TControlScrollBar::Apply() {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = FVisible && FRange > 0 ? FRange - 1 : 0;
    if (!std::exchange(FApplied, info.nMax > 0) && !FApplied) {
        return; // most controls never scroll: the system is not troubled with them
    }
    info.nPage = static_cast<UINT>(std::max(Page(), 0));
    info.nPos = FPosition;
    SetScrollInfo(FControl.WindowHandle(), FHorizontal ? SB_HORZ : SB_VERT, &info, TRUE);
}

// --- TScrollingWinControl

const TClass& TScrollingWinControl::StaticClass() {
    static const TClassBuilder<TScrollingWinControl> cls(
        "TScrollingWinControl", TWinControl::StaticClass(), [](auto& c) {
            using T = TScrollingWinControl;
            c.SubObject("HorzScrollBar", &T::HorzScrollBar, &T::SetHorzScrollBar);
            c.SubObject("VertScrollBar", &T::VertScrollBar, &T::SetVertScrollBar);
            c.Property("AutoScroll", &T::AutoScroll, &T::SetAutoScroll).Default = false;
            c.Property("AutoSize", &T::AutoSize, &T::SetAutoSize).Default = false;
        });
    return cls.Class();
}

TScrollingWinControl::~TScrollingWinControl() { Destroying(); }

void TScrollingWinControl::CreateWnd() {
    TWinControl::CreateWnd();
    UpdateRanges();
}

void TScrollingWinControl::SetAutoScroll(bool value) {
    FAutoScroll = value;
    UpdateRanges();
}

void TScrollingWinControl::SetAutoSize(bool value) {
    FAutoSize = value;
    AdjustSize();
}

// --- What there is to scroll

/// What the controls take that keep their place, from the left or the top edge of all that there is
int TScrollingWinControl::RangeOfControls(bool horizontal) const {
    const TAlign first = horizontal ? alLeft : alTop;
    int64_t range = 0;
    int64_t last = 0; // of those that stick to the other edge
    for (int i = 0; i < ControlCount(); ++i) {
        const TControl& control = *Controls(i);
        const TRect r = control.BoundsRect();
        const int64_t end = int64_t{horizontal ? r.Right : r.Bottom} + (horizontal ? FHorz : FVert).Position();
        if (!control.Visible()) {
            continue;
        }
        if (control.Align() == first ||
            (control.Align() == alNone && control.Anchors().Contains(horizontal ? akLeft : akTop) &&
             !control.Anchors().Contains(horizontal ? akRight : akBottom))) {
            range = std::max(range, end);
        } else if (control.Align() == (horizontal ? alRight : alBottom)) {
            last += horizontal ? control.Width() : control.Height();
        }
    }
    return static_cast<int>(std::clamp<int64_t>(range + last, 0, INT32_MAX));
}

void TScrollingWinControl::UpdateRanges() {
    if (IsLoading() || IsDestroying()) {
        return;
    }
    if (FAutoScroll) {
        for (TControlScrollBar* bar : {&FHorz, &FVert}) {
            const int range = RangeOfControls(bar->FHorizontal);
            bar->FRange = range > 0 ? static_cast<int>(std::min<int64_t>(int64_t{range} + bar->FMargin, INT32_MAX)) : 0;
        }
    }
    UpdateBars();
}

void TScrollingWinControl::UpdateBars() {
    if (!HandleAllocated() || FUpdating || IsLoading() || IsDestroying()) {
        return;
    }
    const TAlive alive(*this); // a new bar takes room from the controls inside: their handlers run
    {
        const TFieldScope updating(*this, FUpdating, true);
        for (int turn = 0; turn < 2; ++turn) { // and it takes room from the other bar's axis
            for (TControlScrollBar* bar : {&FHorz, &FVert}) {
                if (alive) {
                    bar->Apply();
                }
            }
        }
    }
    for (TControlScrollBar* bar : {&FHorz, &FVert}) {
        if (alive && bar->FPosition > bar->Greatest()) { // more is seen now
            bar->SetPosition(bar->FPosition);
        }
    }
}

void TScrollingWinControl::AdjustClientRect(TRect& rect) const {
    const int width = std::max(FHorz.FRange, kx::Width(rect));
    const int height = std::max(FVert.FRange, kx::Height(rect));
    rect = {rect.Left - FHorz.FPosition, rect.Top - FVert.FPosition, rect.Left - FHorz.FPosition + width,
            rect.Top - FVert.FPosition + height};
}

void TScrollingWinControl::AlignControls() {
    if (FMoving || FArranging) {
        return;
    }
    const auto arrange = [this] {
        const TFieldScope arranging(*this, FArranging, true);
        TWinControl::AlignControls();
    };
    if (Outlives(*this, arrange) && Outlives(*this, [this] { AdjustSize(); })) {
        UpdateRanges();
    }
}

// --- The size that follows the controls

bool TScrollingWinControl::SizesItself(bool horizontal) const {
    switch (Align()) {
    case alNone: return true;
    case alLeft:
    case alRight: return horizontal;
    case alTop:
    case alBottom: return !horizontal;
    default: return false;
    }
}

/// The client area that the controls take; as it is where no control keeps its place.
int TScrollingWinControl::WantedSize(bool horizontal) {
    const int taken = SizesItself(horizontal) ? RangeOfControls(horizontal) : 0;
    if (taken == 0) {
        return horizontal ? ClientWidth() : ClientHeight();
    }
    return CheckedAdd(taken, horizontal ? Padding().Right() : Padding().Bottom());
}

void TScrollingWinControl::AdjustSize() {
    if (!FAutoSize || FAdjusting || IsLoading() || IsDestroying()) {
        return;
    }
    const TFieldScope adjusting(*this, FAdjusting, true);
    const TAlive alive(*this);
    for (int turn = 0; alive && turn < 2; ++turn) { // bars that are not needed any more give their room back
        const int width = WantedSize(true);
        const int height = WantedSize(false);
        if (width == ClientWidth() && height == ClientHeight()) {
            return;
        }
        SetClientSize(width, height);
    }
}

// --- Scrolling

void TScrollingWinControl::MoveControls(int x, int y) {
    const TFieldScope moving(*this, FMoving, true);
    const TAlive alive(*this);
    for (int i = 0; alive && i < ControlCount(); ++i) { // their handlers may add and remove controls
        TControl& control = *Controls(i);
        control.SetBounds(control.Left() + x, control.Top() + y, control.Width(), control.Height());
    }
    if (alive) {
        Update();
    }
}

void TScrollingWinControl::ScrollInView(const TControl& control) {
    if (&control == this || !ContainsControl(&control)) {
        return;
    }
    TRect r = control.BoundsRect();
    for (const TWinControl* parent = control.Parent(); parent != this; parent = parent->Parent()) {
        r = {r.Left + parent->Left(), r.Top + parent->Top(), r.Right + parent->Left(), r.Bottom + parent->Top()};
    }
    const auto scroll = [](TControlScrollBar& bar, int begin, int end) {
        if (begin < 0) {
            bar.SetPosition(bar.Position() + begin - bar.Margin());
        } else if (end > bar.Page()) { // its beginning is what must be seen
            bar.SetPosition(bar.Position() + std::min(begin, end - bar.Page() + bar.Margin()));
        }
    };
    if (Outlives(*this, [&] { scroll(FHorz, r.Left, r.Right); })) {
        scroll(FVert, r.Top, r.Bottom);
    }
}

void TScrollingWinControl::FocusChanged(TWinControl* focused) {
    if (Outlives(*this, [&] { TWinControl::FocusChanged(focused); }) && focused) {
        ScrollInView(*focused);
    }
}

void TScrollingWinControl::Wheel(int delta) {
    TControlScrollBar& bar = FVert.Greatest() > 0 ? FVert : FHorz;
    const int increment = std::max(bar.Increment(), 1);
    bar.SetPosition(bar.Position() + FWheel.Lines(delta, std::max(bar.Page() / increment, 1)) * increment);
}

void TScrollingWinControl::WndProc(TMessage& message) {
    switch (message.Msg) {
    case WM_HSCROLL:
    case WM_VSCROLL:
        if (!message.LParamWindow()) {
            (message.Msg == WM_HSCROLL ? FHorz : FVert).Scrolled(message);
            return;
        }
        break;
    case WM_MOUSEWHEEL:
        if (MouseWheelUsed(message)) {
            return;
        }
        if (FVert.Greatest() > 0 || FHorz.Greatest() > 0) {
            Wheel(static_cast<int16_t>(message.WParamHi()));
        } else {
            DefaultHandler(message); // the turn goes to the control around
        }
        return;
    default: break;
    }
    TWinControl::WndProc(message);
}

} // namespace kx
