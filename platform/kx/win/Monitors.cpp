// SPDX-License-Identifier: MIT
// Where the monitors are.

#include "kx/win/Monitors.h"

#include "kx/win/Windows.h"

namespace kx {

namespace {

/// A monitor that has just been taken away counts as the first one, which begins at the origin.
TMonitorPlace PlaceOf(HMONITOR monitor) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    if (!GetMonitorInfoA(monitor, &info)) {
        const TRect first{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
        return {first, first};
    }
    return {FromRECT(info.rcMonitor), FromRECT(info.rcWork)};
}

} // namespace

TMonitorPlace MonitorOf(HWND window) { return PlaceOf(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST)); }

TMonitorPlace MonitorAt(const TRect& r) {
    const RECT rect = ToRECT(r);
    return PlaceOf(MonitorFromRect(&rect, MONITOR_DEFAULTTONEAREST));
}

} // namespace kx
