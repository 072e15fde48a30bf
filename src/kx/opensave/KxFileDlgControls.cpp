// SPDX-License-Identifier: MIT
// The standard controls of the system's file dialogs.

#include "kx/opensave/KxFileDlgControls.h"

#include "kx/win/Windows.h"

namespace kx {

HWND KxFindToolbar(HWND dialog, int commandId) {
    // The system's places bar comes before the navigation bar, and extensions of the shell may add further tool bars.
    HWND other = nullptr;
    HWND bar = FindWindowExA(dialog, GetWindow(nullptr, GW_HWNDNEXT), TOOLBARCLASSNAMEA, nullptr);
    while (bar && SendMessageW(bar, TB_COMMANDTOINDEX, static_cast<WPARAM>(commandId), 0) < 0) {
        if (!other && GetDlgCtrlID(bar) != KxNativePlacesBarId) {
            other = bar;
        }
        bar = FindWindowExA(dialog, bar, TOOLBARCLASSNAMEA, nullptr);
    }
    return bar ? bar : other;
}

bool KxIsShellView(HWND window) {
    char className[32] = "";
    return GetClassNameA(window, className, sizeof className) && SameText(className, "SHELLDLL_DefView");
}

void MakeFlatButtons(HWND toolBar) {
    SetWindowLongPtrA(toolBar, GWL_STYLE, GetWindowLongPtrA(toolBar, GWL_STYLE) | TBSTYLE_FLAT);
}

} // namespace kx
