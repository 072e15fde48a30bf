// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

namespace kx::test {

/// A window of a program that knows nothing of the framework.
class TPlainWindow {
public:
    explicit TPlainWindow(int left = 100, int top = 80)
        : FWindow(CreateWindowExW(0, L"STATIC", L"Plain", WS_OVERLAPPEDWINDOW | WS_VISIBLE, left, top, 500, 400,
                                  nullptr, nullptr, nullptr, nullptr)) {
        SetForegroundWindow(FWindow.get());
    }

    HWND Get() const { return FWindow.get(); }
    bool Enabled() const { return IsWindowEnabled(FWindow.get()) != 0; }
    void Destroy() { FWindow.reset(); }
    HWND AddChild(const wchar_t* className, DWORD style = WS_VISIBLE) {
        return CreateWindowExW(0, className, L"Child", WS_CHILD | style, 10, 10, 100, 30, FWindow.get(), nullptr,
                               nullptr, nullptr);
    }

private:
    unique_hwnd FWindow;
};

} // namespace kx::test
