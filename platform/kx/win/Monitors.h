// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Types.h"
#include "kx/win/WinTypes.h"

namespace kx {

/// Where a monitor is, in screen coordinates. Those of a monitor left of the first one, or above it, are negative.
struct TMonitorPlace {
    TRect Whole;
    TRect Free; ///< What the system's bars leave to programs.
};

/// The monitor that shows most of a window, or is nearest to it; of an icon that of its ordinary place.
TMonitorPlace MonitorOf(HWND window);
/// The same of a rectangle of the screen.
TMonitorPlace MonitorAt(const TRect& r);

} // namespace kx
