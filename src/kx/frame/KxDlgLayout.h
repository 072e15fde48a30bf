// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Types.h"

#include <optional>

// The geometry of dialogs and of the forms docked into them, without any window: rectangles in, rectangles out.
// Every sum and difference is checked.
// @throws EIntOverflow from all routines, when a result does not fit into 32 bits.

namespace kx {

/// `r`, moved so that it lies inside a screen of that size, whose top left corner is (0, 0). A rectangle larger than
/// the screen ends with its left or top edge at 0.
TRect FitRect(TRect r, int32_t screenWidth, int32_t screenHeight);

/// Where the top left corner of `window` must go to centre it on a screen of that size. A window larger than the screen
/// goes to 0.
TPoint CenterOnScreen(const TRect& window, int32_t screenWidth, int32_t screenHeight);

/// Where the top left corner of `window` must go to centre it over `reference`. Nothing is fitted to the screen.
TPoint CenterOver(const TRect& window, const TRect& reference);

/// Extents of the frame of a dialog: the system's metrics SM_CXDLGFRAME and SM_CYDLGFRAME.
struct TDlgFrame {
    int32_t Width;
    int32_t Height;
};

/// By how many pixels a dialog's controls move right for a form of that width at their left, and down for a form of
/// that height above them.
int32_t RoomAtLeft(int32_t width, const TDlgFrame& frame);
int32_t RoomAtTop(int32_t height, const TDlgFrame& frame);

/// What each docked form takes of the dialog, in pixels; empty for a side without a form.
struct TDockedExtents {
    std::optional<int32_t> LeftWidth = std::nullopt;
    std::optional<int32_t> TopHeight = std::nullopt;
    std::optional<int32_t> RightWidth = std::nullopt;
    std::optional<int32_t> BottomHeight = std::nullopt;

    int32_t TotalWidth() const;  ///< By which docking widens the dialog.
    int32_t TotalHeight() const; ///< By which docking makes the dialog higher.
};

/// Where docked forms go, in client coordinates of the dialog. The left and the right form reach from the top edge down
/// to the bottom form. The top form spans the dialog's own client width, the bottom form the whole new width. The forms
/// at the sides keep their widths, the other two their heights.
struct TDockLayout {
    int32_t SideHeight; ///< Of the left form, at (0, 0), and of the right form.
    int32_t TopLeft;    ///< Left edge of the top form, whose top is 0.
    int32_t TopWidth;
    int32_t RightLeft; ///< Left edge of the right form, whose top is 0.
    int32_t BottomTop; ///< Top edge of the bottom form, whose left is 0.
    int32_t BottomWidth;

    friend bool operator==(const TDockLayout&, const TDockLayout&) = default;
};

/// `clientWidth` and `clientHeight` are those of the dialog before it grows.
TDockLayout LayoutDocked(const TDockedExtents& docked, int32_t clientWidth, int32_t clientHeight);

/// Sizes of docked forms in a dialog whose client area has been resized; 0 for forms that are not there.
struct TDockedSizes {
    int32_t TopWidth = 0;
    int32_t LeftHeight = 0;
    int32_t RightHeight = 0;
    int32_t BottomWidth = 0;

    friend bool operator==(const TDockedSizes&, const TDockedSizes&) = default;
};

/// `clientWidth` and `clientHeight` are the new ones of the whole dialog, docked forms included.
TDockedSizes ResizeDocked(const TDockedExtents& docked, int32_t clientWidth, int32_t clientHeight);

} // namespace kx
