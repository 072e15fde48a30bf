// SPDX-License-Identifier: MIT
// The folder browser's windows as Windows arranges them.

#include "tests/support/NameSpaceTree.h"

#include "support/WindowTools.h"

namespace kx::test {

namespace {

constexpr const char* ControlClass = "SHBrowseForFolder ShellNameSpace Control";

/// The browser goes on hearing of its tree.
LRESULT CALLBACK ControlProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_NOTIFY: return SendMessageA(GetParent(window), message, wParam, lParam);
    case WM_SIZE: {
        const TRect client = ClientRectOf(window);
        SetWindowPos(GetWindow(window, GW_CHILD), nullptr, 0, 0, client.Right, client.Bottom,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        return 0;
    }
    default: return DefWindowProcA(window, message, wParam, lParam);
    }
}

} // namespace

HWND PutTreeIntoNameSpaceControl(HWND browser) {
    HWND tree = FindChild(browser, "SysTreeView32");
    if (!tree) {
        return nullptr;
    }
    WNDCLASSA record{};
    record.lpfnWndProc = ControlProc;
    record.hInstance = GetModuleHandleA(nullptr);
    record.lpszClassName = ControlClass;
    RegisterClassA(&record); // again is no harm
    const TRect place = RectIn(browser, tree);
    HWND control = CreateWindowExA(WS_EX_CONTROLPARENT, ControlClass, "", WS_CHILD | WS_VISIBLE, place.Left, place.Top,
                                   place.Right - place.Left, place.Bottom - place.Top, browser, nullptr,
                                   record.hInstance, nullptr);
    SetParent(tree, control);
    SetWindowPos(tree, nullptr, 0, 0, place.Right - place.Left, place.Bottom - place.Top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    return control;
}

} // namespace kx::test
