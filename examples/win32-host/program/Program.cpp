// SPDX-License-Identifier: MIT
// A plain program for Windows.

#include "examples/win32-host/Host.h"

#include <windows.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int show) {
    HWND window = CreateHostWindow(instance);
    if (!window) {
        return 1;
    }
    ShowWindow(window, show);
    return RunMessageLoop(window);
}
