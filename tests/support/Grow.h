// SPDX-License-Identifier: MIT
#pragma once

#include "support/WindowTools.h"

namespace kx::test {

/// Makes a window larger, its left and upper edges where they are, as its user does.
inline void Grow(HWND window, int width = 40, int height = 30) {
    const TRect r = ScreenRectOf(window);
    SetWindowPos(window, nullptr, 0, 0, Width(r) + width, Height(r) + height, SWP_NOMOVE | SWP_NOZORDER);
}

} // namespace kx::test
