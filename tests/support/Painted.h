// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "support/WindowTools.h"

namespace kx::test {

inline COLORREF ScreenPixel(int32_t x, int32_t y) {
    const TWindowDC screen(nullptr);
    return GetPixel(screen.Handle(), x, y);
}

/// The form shows its own colour in its middle and near all its corners: nothing covers it, nothing cuts it off.
inline bool IsPainted(TForm& form) {
    const TRect r = ScreenRectOf(form.Handle());
    constexpr int32_t inset = 2;
    const int32_t middleX = (r.Left + r.Right) / 2;
    const int32_t middleY = (r.Top + r.Bottom) / 2;
    for (const int32_t x : {r.Left + inset, middleX, r.Right - 1 - inset}) {
        for (const int32_t y : {r.Top + inset, middleY, r.Bottom - 1 - inset}) {
            if (ScreenPixel(x, y) != ColorToRGB(form.Color())) {
                return false;
            }
        }
    }
    return true;
}

} // namespace kx::test
