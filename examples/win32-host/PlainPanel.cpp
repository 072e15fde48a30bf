// SPDX-License-Identifier: MIT
// A window of plain controls.

#include "examples/win32-host/PlainPanel.h"

namespace {

constexpr wchar_t PanelClass[] = L"PlainPanel";

LRESULT CALLBACK PanelProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_COMMAND:
        if (LOWORD(wParam) == PanelClearId) {
            SetDlgItemTextW(window, PanelEditId, L"");
        }
        return 0;
    case WM_SIZE: // the edit takes what the others leave
        MoveWindow(GetDlgItem(window, PanelEditId), 8, 8, LOWORD(lParam) - 216, 24, TRUE);
        MoveWindow(GetDlgItem(window, PanelReadOnlyId), LOWORD(lParam) - 200, 8, 96, 24, TRUE);
        MoveWindow(GetDlgItem(window, PanelClearId), LOWORD(lParam) - 96, 8, 88, 24, TRUE);
        return 0;
    default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

void AddItem(HWND panel, const wchar_t* className, const wchar_t* text, DWORD style, int id) {
    HWND item = CreateWindowExW(0, className, text, WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 0, 0, 0, 0, panel,
                                reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    SendMessageW(item, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
}

} // namespace

HWND CreatePlainPanel(HWND parent) {
    auto* const instance = GetModuleHandleW(nullptr);
    WNDCLASSW cls = {};
    cls.lpfnWndProc = PanelProc;
    cls.hInstance = instance;
    cls.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    cls.hbrBackground = reinterpret_cast<HBRUSH>(UINT_PTR{COLOR_BTNFACE + 1});
    cls.lpszClassName = PanelClass;
    RegisterClassW(&cls); // it fails from the second panel on
    // WS_EX_CONTROLPARENT lets the Tab key in.
    HWND panel = CreateWindowExW(WS_EX_CONTROLPARENT, PanelClass, L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 0,
                                 0, parent, nullptr, instance, nullptr);
    if (panel) {
        AddItem(panel, L"EDIT", L"*.*", WS_BORDER | ES_AUTOHSCROLL, PanelEditId);
        AddItem(panel, L"BUTTON", L"Read &only", BS_AUTOCHECKBOX, PanelReadOnlyId);
        AddItem(panel, L"BUTTON", L"C&lear", BS_PUSHBUTTON, PanelClearId);
    }
    return panel;
}

bool IsPanelReadOnly(HWND panel) { return IsDlgButtonChecked(panel, PanelReadOnlyId) == BST_CHECKED; }
