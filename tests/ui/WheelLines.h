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

} // namespace kx::test
