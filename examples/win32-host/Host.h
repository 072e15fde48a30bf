// SPDX-License-Identifier: MIT
#pragma once

#include "examples/win32-host/HostIds.h"

#include <windows.h>

// The program's window and loop, as programs for Windows are written in C. HostDialogs.h is all that they know of the
// library.

/// The program's main window, with a menu; null when the system cannot make it.
HWND CreateHostWindow(HINSTANCE instance);
/// Handles messages until the main window is closed. Returns the program's exit code.
int RunMessageLoop(HWND window);
/// A text in the main window's last line.
void ShowStatus(HWND window, const char* text);
