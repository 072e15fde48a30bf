// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/WinControl.h"
#include "kx/win/MouseWheel.h"

namespace kx {

class TScrollingWinControl;

/// One of the two scroll bars of a control that scrolls what is in it.
class TControlScrollBar : public TPersistent {
    KX_CLASS()

    TControlScrollBar(TScrollingWinControl& control, bool horizontal) : FControl(control), FHorizontal(horizontal) {}

    int Increment() const { return FIncrement; } ///< Pixels of an arrow's click.
    void SetIncrement(int value) { FIncrement = value; }
    int Margin() const { return FMargin; } ///< Pixels behind the last control that can still be scrolled to.
    void SetMargin(int value);
    int Range() const { return FRange; } ///< Pixels of all that there is; with AutoScroll what the controls take.
    void SetRange(int value);
    int Position() const { return FPosition; } ///< Pixels that have been scrolled away at the left or the top.
    /// Brought into the range. What is in the control moves along.
    void SetPosition(int value);
    bool Tracking() const { return FTracking; } ///< Scrolls while the bar is being dragged.
    void SetTracking(bool value) { FTracking = value; }
    bool Visible() const { return FVisible; } ///< It shows when there is something to scroll.
    void SetVisible(bool value);

    void Assign(const TPersistent* source) override;
    TPersistent* GetOwner() const override;

private:
    friend class TScrollingWinControl;
    int Page() const;     ///< Pixels that are seen.
    int Greatest() const; ///< Position at the end.
    void Scrolled(const TMessage& message);
    void Apply();

    TScrollingWinControl& FControl;
    const bool FHorizontal;
    int FIncrement = 8;
    int FMargin = 0;
    int FRange = 0;
    int FPosition = 0;
    bool FTracking = false;
    bool FVisible = true;
    bool FApplied = false; ///< The window's bar has a range.
};

/// A control that scrolls what is in it when it has no room for all of that, or takes the size that is needed. The
/// places of the controls are those in what is seen: they change when it is scrolled.
class TScrollingWinControl : public TWinControl {
    KX_CLASS()

    using TWinControl::TWinControl;
    ~TScrollingWinControl() override;

    TControlScrollBar& HorzScrollBar() { return FHorz; }
    const TControlScrollBar& HorzScrollBar() const { return FHorz; }
    void SetHorzScrollBar(const TControlScrollBar& value) { FHorz.Assign(&value); }
    TControlScrollBar& VertScrollBar() { return FVert; }
    const TControlScrollBar& VertScrollBar() const { return FVert; }
    void SetVertScrollBar(const TControlScrollBar& value) { FVert.Assign(&value); }
    bool AutoScroll() const { return FAutoScroll; } ///< The ranges follow the controls.
    void SetAutoScroll(bool value);
    /// The client area is as large as the controls need, with the padding at their right and bottom: those that keep
    /// their distance from the left or the top edge, and those that are aligned there. A direction in which there are
    /// none keeps its size, and so does one in which the parent decides.
    bool AutoSize() const { return FAutoSize; }
    void SetAutoSize(bool value);
    void ScrollInView(const TControl& control); ///< Scrolls so far that the control, somewhere inside, is seen.

    void WndProc(TMessage& message) override;

protected:
    void CreateWnd() override;
    void AdjustClientRect(TRect& rect) const override;
    void AlignControls() override;
    void ChangeScale(int to, int from) override;
    void FocusChanged(TWinControl* focused) override;
    virtual bool SizesItself(bool horizontal) const; ///< AutoSize may decide in this direction.

private:
    friend class TControlScrollBar;
    void UpdateRanges();
    int RangeOfControls(bool horizontal) const;
    void UpdateBars();
    void MoveControls(int x, int y);
    void Wheel(int delta);
    int WantedSize(bool horizontal);
    void AdjustSize();

    TControlScrollBar FHorz{*this, true};
    TControlScrollBar FVert{*this, false};
    TMouseWheel FWheel;
    bool FAutoScroll = false;
    bool FAutoSize = false;
    bool FMoving = false;    ///< The controls move because they are scrolled.
    bool FUpdating = false;  ///< The bars are being brought in line.
    bool FArranging = false; ///< The controls inside are being aligned.
    bool FAdjusting = false; ///< It is taking the size that the controls need.
};

} // namespace kx
