// SPDX-License-Identifier: MIT
// Turns of the wheel as lines.

#include "kx/win/MouseWheel.h"

#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

int TMouseWheel::Lines(int delta, int page) {
    UINT chosen = 3; // a page is the greatest number there is
    SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &chosen, 0);
    const int perNotch = static_cast<int>(std::min(chosen, static_cast<UINT>(std::max(page, 1))));
    if ((FRest > 0) != (delta > 0)) {
        FRest = 0;
    }
    FRest = CheckedAdd(FRest, CheckedMul(delta, perNotch));
    const int lines = FRest / WHEEL_DELTA;
    FRest %= WHEEL_DELTA;
    return -lines;
}

} // namespace kx
