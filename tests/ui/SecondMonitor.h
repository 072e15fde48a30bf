// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/ImportPatch.h"

#include "kx/win/Windows.h"

namespace kx::test {

/// A second monitor, left of the first one and somewhat higher, with bars of the system's at its left and its top.
class TSecondMonitor {
public:
    static constexpr TRect Whole{-1000, -100, 0, 700};
    static constexpr TRect Free{-970, -60, 0, 700};

    /// The window is on it, wherever it is.
    explicit TSecondMonitor(HWND window) { Window = window; }
    ~TSecondMonitor() { Window = nullptr; }

private:
    static HMONITOR Second() { return reinterpret_cast<HMONITOR>(UINT_PTR{0x5EC0}); }
    static HMONITOR WINAPI OfWindow(HWND window, DWORD flags) {
        return window == Window ? Second() : MonitorFromPoint({}, flags); // the patched functions would call themselves
    }
    static HMONITOR WINAPI OfRect(const RECT* rect, DWORD flags) {
        const RECT whole = ToRECT(Whole);
        RECT both;
        return IntersectRect(&both, rect, &whole) ? Second() : MonitorFromPoint({}, flags);
    }
    static BOOL WINAPI InfoOf(HMONITOR monitor, MONITORINFO* info) {
        if (monitor != Second()) {
            return GetMonitorInfoW(monitor, info);
        }
        info->rcMonitor = ToRECT(Whole);
        info->rcWork = ToRECT(Free);
        return TRUE;
    }

    inline static HWND Window = nullptr;
    TImportPatch FOfWindow{"MonitorFromWindow", reinterpret_cast<void*>(OfWindow)};
    TImportPatch FOfRect{"MonitorFromRect", reinterpret_cast<void*>(OfRect)};
    TImportPatch FInfo{"GetMonitorInfoA", reinterpret_cast<void*>(InfoOf)};
};

} // namespace kx::test
