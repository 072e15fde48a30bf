// SPDX-License-Identifier: MIT
// The program's window and its message loop.

#include "examples/win32-host/Host.h"

#include "examples/win32-host/HostDialogs.h"

namespace {

constexpr wchar_t HostClass[] = L"Win32Host";

void PlaceStatus(HWND window) {
    RECT area;
    GetClientRect(window, &area);
    constexpr int height = 24;
    MoveWindow(GetDlgItem(window, ID_STATUS), 0, area.bottom - height, area.right, height, TRUE);
}

LRESULT CALLBACK HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        CreateWindowExA(0, "STATIC", "Ready", WS_CHILD | WS_VISIBLE | SS_SUNKEN, 0, 0, 0, 0, window,
                        reinterpret_cast<HMENU>(UINT_PTR{ID_STATUS}), nullptr, nullptr);
        StartDialogs(window);
        return 0;
    case WM_SIZE: PlaceStatus(window); return 0;
    case WM_COMMAND:
        switch (LOWORD(wParam)) {
        case ID_OPEN: ShowOpenDialog(window); return 0;
        case ID_BROWSE: ShowBrowseDialog(window); return 0;
        case ID_EXIT: PostMessageW(window, WM_CLOSE, 0, 0); return 0;
        default: return DefWindowProcW(window, message, wParam, lParam);
        }
    case WM_DESTROY:
        EndDialogs();
        PostQuitMessage(0);
        return 0;
    default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

} // namespace

HWND CreateHostWindow(HINSTANCE instance) {
    WNDCLASSW cls = {};
    cls.lpfnWndProc = HostProc;
    cls.hInstance = instance;
    cls.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    cls.hbrBackground = reinterpret_cast<HBRUSH>(UINT_PTR{COLOR_APPWORKSPACE + 1});
    cls.lpszMenuName = MAKEINTRESOURCEW(ID_HOST);
    cls.lpszClassName = HostClass;
    RegisterClassW(&cls); // it fails when there has been such a window before
    return CreateWindowExW(0, HostClass, L"A plain program", WS_OVERLAPPEDWINDOW, 120, 100, 700, 500, nullptr, nullptr,
                           instance, nullptr);
}

int RunMessageLoop(HWND window) {
    auto* const instance = reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(window, GWLP_HINSTANCE));
    HACCEL keys = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(ID_HOST));
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (!OfferToDialogs(message) && !TranslateAcceleratorW(window, keys, &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    return static_cast<int>(message.wParam);
}

void ShowStatus(HWND window, const char* text) { SetDlgItemTextA(window, ID_STATUS, text); }
