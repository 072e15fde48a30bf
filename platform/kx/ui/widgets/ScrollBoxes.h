#pragma once

#include "kx/ui/controls/Controls.h"
#include "kx/win/MouseWheel.h"

namespace kx {

class TScrollBox;

/// One of the two scroll bars of a control that scrolls what is in it.
class TControlScrollBar : public TPersistent {
    KX_CLASS()

    TControlScrollBar(TScrollBox& box, bool horizontal) : FBox(box), FHorizontal(horizontal) {}

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
    friend class TScrollBox;
    int Page() const;     ///< Pixels that are seen.
    int Greatest() const; ///< Position at the end.
    void Scrolled(const TMessage& message);
    void Apply();

    TScrollBox& FBox;
    const bool FHorizontal;
    int FIncrement = 8;
    int FMargin = 0;
    int FRange = 0;
    int FPosition = 0;
    bool FTracking = false;
    bool FVisible = true;
};

/// An area with scroll bars for more controls than it has room for. The places of the controls are those in what is
/// seen: they change when the area is scrolled.
class TScrollBox : public TWinControl {
    KX_CLASS()

    explicit TScrollBox(TComponent* owner = nullptr);
    ~TScrollBox() override;

    TControlScrollBar& HorzScrollBar() { return FHorz; }
    void SetHorzScrollBar(const TControlScrollBar& value) { FHorz.Assign(&value); }
    TControlScrollBar& VertScrollBar() { return FVert; }
    void SetVertScrollBar(const TControlScrollBar& value) { FVert.Assign(&value); }
    bool AutoScroll() const { return FAutoScroll; } ///< The ranges follow the controls.
    void SetAutoScroll(bool value);
    TBorderStyle BorderStyle() const { return FBorderStyle; }
    void SetBorderStyle(TBorderStyle value);
    void ScrollInView(const TControl& control); ///< Scrolls so far that the control, somewhere inside, is seen.

    void CreateParams(TCreateParams& params) override;
    void WndProc(TMessage& message) override;
    void Loaded() override;

protected:
    void CreateWnd() override;
    void Resize() override;
    void AdjustClientRect(TRect& rect) const override;
    void AlignControls() override;
    void FocusChanged(TWinControl* focused) override;

private:
    friend class TControlScrollBar;
    void UpdateRanges();
    int RangeOfControls(bool horizontal) const;
    void UpdateBars();
    void MoveControls(int x, int y);
    void Wheel(int delta);

    TControlScrollBar FHorz{*this, true};
    TControlScrollBar FVert{*this, false};
    TMouseWheel FWheel;
    TBorderStyle FBorderStyle = bsSingle;
    bool FAutoScroll = true;
    bool FMoving = false;   ///< The controls move because the area is scrolled.
    bool FUpdating = false; ///< The bars are being brought in line.
};

} // namespace kx
