// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

namespace kx::test {

/// Dialogs get the layout from right to left meanwhile, before they have controls: as the system makes them in
/// languages that are read so.
class TMirroredDialogs {
public:
    TMirroredDialogs() : FHook(SetWindowsHookExW(WH_CALLWNDPROC, Procedure, nullptr, GetCurrentThreadId())) {}

private:
    static LRESULT CALLBACK Procedure(int code, WPARAM wParam, LPARAM lParam) {
        const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
        wchar_t name[32] = L"";
        if (code == HC_ACTION && sent.message == WM_CREATE && GetClassNameW(sent.hwnd, name, 32) &&
            lstrcmpW(name, L"#32770") == 0) {
            SetWindowLongW(sent.hwnd, GWL_EXSTYLE, GetWindowLongW(sent.hwnd, GWL_EXSTYLE) | WS_EX_LAYOUTRTL);
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }
    unique_hhook FHook;
};

} // namespace kx::test
