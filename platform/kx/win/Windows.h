// SPDX-License-Identifier: MIT
#pragma once

// The one place through which windows.h comes in, without what it would bring along and most sources have no use for.
// A program may include it before, with settings of its own; all of it works beside our headers.

#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0601
#endif
#ifndef WINVER
#define WINVER _WIN32_WINNT
#endif
#ifndef STRICT
#define STRICT
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif

#include <windows.h>

#include <commctrl.h>

#include "kx/core/SystemNames.h"

#include "kx/core/SysUtils.h"
#include "kx/core/Types.h"
#include "kx/win/WinTypes.h"

namespace kx {

/// The framework's points and rectangles as the system's, and back.
inline POINT ToPOINT(const TPoint& p) { return {p.X, p.Y}; }
inline TPoint FromPOINT(const POINT& p) { return {static_cast<int32_t>(p.x), static_cast<int32_t>(p.y)}; }
inline RECT ToRECT(const TRect& r) { return {r.Left, r.Top, r.Right, r.Bottom}; }
inline TRect FromRECT(const RECT& r) {
    return {static_cast<int32_t>(r.left), static_cast<int32_t>(r.top), static_cast<int32_t>(r.right),
            static_cast<int32_t>(r.bottom)};
}

/// Coordinates inside the window count from its right edge to the left, as the system has it in languages that are read
/// so.
bool IsMirrored(HWND window);

/// Text of the process's code page as UTF-16, and back.
std::wstring ToWide(std::string_view text);
std::string FromWide(std::wstring_view text);
/// A character by its number in Unicode as UTF-16: one unit, or two halves; empty when no character has that number.
std::wstring ToWide(char32_t character);

/// The text of a window, of any length; empty for no window.
std::string WindowText(HWND window);
std::wstring WideWindowText(HWND window); ///< The same as UTF-16.

/// The module that holds this code: the program, or the library that it was linked into.
HINSTANCE HInstance();

/// @throws EOSError with the system's text for `code`.
[[noreturn]] void RaiseLastOSError(DWORD code = GetLastError());

} // namespace kx
