// SPDX-License-Identifier: MIT
#pragma once

#include "kx/frame/KxDlgLayout.h"
#include "kx/win/WinTypes.h"

namespace kx {

// --- Geometry of windows, in pixels of the screen. @throws EIntOverflow

TRect KxWindowRect(HWND window);             ///< Outer rectangle; empty for no window.
TRect KxClientRect(HWND window);             ///< Left and Top are 0.
TRect KxRectIn(HWND container, HWND window); ///< Outer rectangle in client coordinates of `container`.

/// Sets the window's outer size and brings it to the top of the Z order.
void ResizeWindow(HWND handle, int width, int height);

/// EnumChildWindows for the direct children alone: docked forms may bring hundreds of windows inside them.
void KxEnumDirectChildren(HWND window, BOOL(KX_CALLBACK* callback)(HWND, LPARAM), LPARAM data);

/// Moves a direct child of `dialog` by so many pixels; all others stay. @throws EIntOverflow
void KxMoveChild(HWND dialog, HWND window, int32_t dx, int32_t dy);

TDlgFrame KxDlgFrame(); ///< As the system draws it.

/// The dialog window whose forms the thread is docking, for MoveLeft and MoveDown.
extern thread_local HWND GHandle;
/// For EnumChildWindows: moves a direct child of GHandle right, or down, by `delta` and the dialog frame, to make room
/// for a docked form. Always TRUE.
BOOL KX_CALLBACK MoveLeft(HWND window, LPARAM delta) noexcept;
BOOL KX_CALLBACK MoveDown(HWND window, LPARAM delta) noexcept;

} // namespace kx
