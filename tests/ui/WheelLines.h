// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Windows.h"

namespace kx::test {

/// Lines that a notch of the mouse wheel scrolls, for the length of a scope.
class TWheelLines {
public:
    explicit TWheelLines(UINT lines) {
        SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &FOld, 0);
        SystemParametersInfoA(SPI_SETWHEELSCROLLLINES, lines, nullptr, 0);
    }
    TWheelLines(const TWheelLines&) = delete;
    TWheelLines& operator=(const TWheelLines&) = delete;
    ~TWheelLines() { SystemParametersInfoA(SPI_SETWHEELSCROLLLINES, FOld, nullptr, 0); }

private:
    UINT FOld = 3;
};

/// Where the wheel turns two lines a notch. `turn` turns it by that much, from the top, and says on which line that is.
template <class F> void ExpectTwoLinesANotch(const F& turn) {
    const TWheelLines lines(2);
    EXPECT_EQ(turn(-WHEEL_DELTA), 2);
    EXPECT_EQ(turn(-2 * WHEEL_DELTA), 6);
    EXPECT_EQ(turn(WHEEL_DELTA), 4);
    EXPECT_EQ(turn(-WHEEL_DELTA / 3), 4);
    EXPECT_EQ(turn(-WHEEL_DELTA / 3), 5) << "two thirds of two";
    EXPECT_EQ(turn(WHEEL_DELTA / 3), 5) << "another direction starts anew";
    EXPECT_EQ(turn(WHEEL_DELTA / 6), 4);
    EXPECT_EQ(turn(3 * WHEEL_DELTA), 0);
}

} // namespace kx::test
