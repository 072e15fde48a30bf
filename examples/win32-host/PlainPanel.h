// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

// A window of plain controls, which knows nothing of the library.

/// A new panel in that window, visible; its size is for the window to choose. Null when the system cannot make it.
HWND CreatePlainPanel(HWND parent);
bool IsPanelReadOnly(HWND panel); ///< Its box is checked. False for no panel.

constexpr int PanelEditId = 301;
constexpr int PanelReadOnlyId = 302;
constexpr int PanelClearId = 303;
