// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/Controls.h"
#include "kx/ui/widgets/ScrolledContent.h"

namespace kx {

enum TPageScrollerOrientation : uint8_t { soHorizontal, soVertical };
KX_ENUM(TPageScrollerOrientation, "soHorizontal", "soVertical")

/// The user scrolls. (`x`, `y`) is the position before, in pixels; a handler may change `delta`, the pixels by which it
/// is going to change, negative towards the beginning. 0 keeps it.
using TPageScrollEvent =
    TEvent<void(TObject* sender, TShiftState shift, int x, int y, TPageScrollerOrientation orientation, int& delta)>;

/// Shows a part of a control that is longer than itself, with arrows at the ends that have more to show. Across it, the
/// control takes the scroller's size.
class TPageScroller : public TWinControl, public IContentScroller {
    KX_CLASS()

    explicit TPageScroller(TComponent* owner = nullptr);

    TWinControl* Control() const { return FControl; } ///< What is scrolled; the scroller becomes its parent.
    void SetControl(TWinControl* value);
    bool AutoScroll() const { return FAutoScroll; } ///< Scrolls when the mouse is over an arrow, without a click.
    void SetAutoScroll(bool value);
    int ButtonSize() const { return FButtonSize; } ///< Pixels of an arrow; the system may take more.
    void SetButtonSize(int value);
    bool DragScroll() const { return FDragScroll; } ///< Scrolls under what is dragged from other programs.
    void SetDragScroll(bool value);
    int Margin() const { return FMargin; } ///< Pixels around the control.
    void SetMargin(int value);
    TPageScrollerOrientation Orientation() const { return FOrientation; }
    void SetOrientation(TPageScrollerOrientation value);
    int Position() const; ///< Pixels of the control that are scrolled away; never more than there are.
    void SetPosition(int value);

    const TPageScrollEvent& OnScroll() const { return FOnScroll; }
    void SetOnScroll(TPageScrollEvent value) { FOnScroll = std::move(value); }

    void CreateParams(TCreateParams& params) override;
    void WndProc(TMessage& message) override;
    void Loaded() override;

protected:
    void ChangeScale(int to, int from) override;
    void CreateHandle() override;
    void CreateWnd() override;
    void SaveWindowState() override;
    void AlignControls() override;
    void ColorChanged() override;
    void Notification(TComponent* component, TOperation operation) override;
    virtual void Scroll(TShiftState shift, int x, int y, TPageScrollerOrientation orientation, int& delta);

private:
    void AttachWindow(); ///< Tells the system whose window it scrolls.
    void ContentChanged();
    int Extent() const;  ///< Of the control as it is, in the direction of scrolling.
    int Content() const; ///< What the control wants it to be.
    void SetStyleFlag(bool& field, bool value, DWORD flag);
    void ScrollNotification(TMessage& message);

    TWinControl* FControl = nullptr;
    HWND FAttached = nullptr;
    int FContent = 0;     ///< Extent that the program gave the control.
    int FGiven = -1;      ///< Extent that the system gave it last.
    TPoint FMeasuredSize; ///< Content and scroller at that time.
    int FButtonSize = 12;
    int FMargin = 0;
    int FPosition = 0; ///< While there is no window.
    TPageScrollerOrientation FOrientation = soHorizontal;
    bool FAutoScroll = true;
    bool FDragScroll = true;
    bool FMeasuring = false;
    TPageScrollEvent FOnScroll;
};

} // namespace kx
