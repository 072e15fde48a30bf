// SPDX-License-Identifier: MIT
// Computes where docked forms and dialogs go, without any window.

#include "kx/frame/KxDlgLayout.h"

namespace kx {

TRect FitRect(TRect r, int32_t screenWidth, int32_t screenHeight) {
    if (r.Right > screenWidth) {
        const int32_t width = Width(r);
        r.Right = screenWidth;
        r.Left = CheckedSub(screenWidth, width);
    }
    if (r.Left < 0) {
        r.Right = Width(r);
        r.Left = 0;
    }
    if (r.Bottom > screenHeight) {
        const int32_t height = Height(r);
        r.Bottom = screenHeight;
        r.Top = CheckedSub(screenHeight, height);
    }
    if (r.Top < 0) {
        r.Bottom = Height(r);
        r.Top = 0;
    }
    return r;
}

TPoint CenterOnScreen(const TRect& window, int32_t screenWidth, int32_t screenHeight) {
    const int32_t left = CheckedAdd(CheckedSub(screenWidth, window.Right), window.Left) / 2;
    const int32_t top = CheckedAdd(CheckedSub(screenHeight, window.Bottom), window.Top) / 2;
    // Deliberate: width and height stand in place of the right and bottom edges that one would expect here.
    const TRect fitted = FitRect({left, top, Width(window), Height(window)}, screenWidth, screenHeight);
    return {fitted.Left, fitted.Top};
}

TPoint CenterOver(const TRect& window, const TRect& reference) {
    // Each centre is rounded by itself, so that the result may be a pixel off from centring by the extents.
    const int32_t dy =
        CheckedSub(CheckedAdd(window.Bottom, window.Top) / 2, CheckedAdd(reference.Bottom, reference.Top) / 2);
    const int32_t dx =
        CheckedSub(CheckedAdd(window.Right, window.Left) / 2, CheckedAdd(reference.Right, reference.Left) / 2);
    return {CheckedSub(window.Left, dx), CheckedSub(window.Top, dy)};
}

// Deliberate: each adds the other extent of the frame, where one would expect its width left and its height on top.
int32_t RoomAtLeft(int32_t width, const TDlgFrame& frame) { return CheckedAdd(width, frame.Height); }
int32_t RoomAtTop(int32_t height, const TDlgFrame& frame) { return CheckedAdd(height, frame.Width); }

int32_t TDockedExtents::TotalWidth() const { return CheckedAdd(LeftWidth.value_or(0), RightWidth.value_or(0)); }

int32_t TDockedExtents::TotalHeight() const { return CheckedAdd(TopHeight.value_or(0), BottomHeight.value_or(0)); }

TDockLayout LayoutDocked(const TDockedExtents& docked, int32_t clientWidth, int32_t clientHeight) {
    const int32_t leftWidth = docked.LeftWidth.value_or(0);
    const int32_t bottomTop = CheckedAdd(docked.TopHeight.value_or(0), clientHeight);
    return {.SideHeight = bottomTop,
            .TopLeft = leftWidth,
            .TopWidth = clientWidth,
            .RightLeft = CheckedAdd(clientWidth, leftWidth),
            .BottomTop = bottomTop,
            .BottomWidth = CheckedSum(leftWidth, clientWidth, docked.RightWidth.value_or(0))};
}

TDockedSizes ResizeDocked(const TDockedExtents& docked, int32_t clientWidth, int32_t clientHeight) {
    TDockedSizes sizes;
    if (docked.TopHeight) {
        sizes.TopWidth = CheckedSub(clientWidth, docked.LeftWidth.value_or(0));
    }
    if (docked.RightWidth) {
        if (docked.TopHeight) {
            sizes.TopWidth = CheckedSub(sizes.TopWidth, *docked.RightWidth);
        }
        sizes.RightHeight = clientHeight;
    }
    if (docked.LeftWidth) {
        sizes.LeftHeight = clientHeight;
    }
    if (docked.BottomHeight) {
        if (docked.RightWidth) {
            sizes.RightHeight = CheckedSub(sizes.RightHeight, *docked.BottomHeight);
        }
        if (docked.LeftWidth) {
            sizes.LeftHeight = CheckedSub(sizes.LeftHeight, *docked.BottomHeight);
        }
        sizes.BottomWidth = clientWidth;
    }
    return sizes;
}

} // namespace kx
