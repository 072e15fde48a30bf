// SPDX-License-Identifier: MIT
// Files and folders that are dropped on a window.

#include "tests/support/Drop.h"

#include <cstring>
#include <shlobj.h>

namespace kx::test {

HWND DropTargetAt(TPoint screen) {
    HWND window = WindowFromPoint({screen.X, screen.Y});
    while (window && (GetWindowLongPtrA(window, GWL_EXSTYLE) & WS_EX_ACCEPTFILES) == 0) {
        window = GetAncestor(window, GA_PARENT);
    }
    return window;
}

void DropOn(HWND window, const std::vector<std::string>& names) {
    std::string list;
    for (const std::string& name : names) {
        list += name + '\0';
    }
    list += '\0';
    const HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + list.size());
    auto* const drop = static_cast<DROPFILES*>(GlobalLock(memory));
    drop->pFiles = sizeof(DROPFILES);
    std::memcpy(drop + 1, list.data(), list.size());
    GlobalUnlock(memory);
    SendMessageA(window, WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
    GlobalFree(memory); // the places bar leaves it
}

} // namespace kx::test
