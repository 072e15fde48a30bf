// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/WinTypes.h"

namespace kx {

/// Dots per inch of a screen at 100 %. Where nothing else is said, sizes are written down for it.
inline constexpr int DefaultDpi = 96;

/// WM_DPICHANGED_AFTERPARENT, of Windows 10: a window inside has come to another resolution with the one around it.
inline constexpr UINT DpiChangedAfterParent = 0x02E3;

/// `value` pixels of `from` dots per inch, in those of `to`; rounded, and kept within 32 bits.
int ScaleValue(int value, int to, int from);

/// Dots per inch as the system gave them to the program when it started. In a program that has not declared itself
/// aware of resolutions they are DefaultDpi, and the system stretches its windows.
int SystemDpi();
/// A length in pixels of DefaultDpi, in those of the system's resolution.
int SystemLength(int length);
/// Dots per inch by which the pixels of a window are to be measured: those of its screen in a program that is aware of
/// each screen's own (Windows 10 and later), else the system's. Null: the system's.
int WindowDpi(HWND window);
/// A measure of the system (SM_...) for windows of that resolution.
int SystemMetric(int index, int dpi);

/// While it lives, windows that this thread makes see the screen's resolution as `window` does; as the thread does when
/// it is null. A window can only be put into one that sees it in the same way. Systems before Windows 10 know one way
/// only; there nothing happens.
class TDpiScope {
public:
    explicit TDpiScope(HWND window);
    TDpiScope(const TDpiScope&) = delete;
    TDpiScope& operator=(const TDpiScope&) = delete;
    ~TDpiScope();

private:
    void* FBefore = nullptr; ///< Null: nothing was changed.
};

} // namespace kx
