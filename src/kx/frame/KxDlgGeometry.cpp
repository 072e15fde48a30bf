// SPDX-License-Identifier: MIT
// Places and sizes of windows.

#include "kx/frame/KxDlgGeometry.h"

#include "kx/core/Barrier.h"
#include "kx/ui/controls/Controls.h"
#include "kx/win/Windows.h"

namespace kx {

thread_local HWND GHandle = nullptr;

TRect KxWindowRect(HWND window) {
    RECT r{};
    GetWindowRect(window, &r);
    return FromRECT(r);
}

TRect KxClientRect(HWND window) {
    RECT r{};
    GetClientRect(window, &r);
    return FromRECT(r);
}

TRect KxRectIn(HWND container, HWND window) {
    RECT r{};
    GetWindowRect(window, &r);
    MapWindowPoints(nullptr, container, reinterpret_cast<POINT*>(&r), 2);
    return FromRECT(r);
}

namespace {

/// No visible window is in front of it, except for those that stay in front of all others.
bool IsOnTop(HWND window) {
    for (HWND above = GetWindow(window, GW_HWNDPREV); above; above = GetWindow(above, GW_HWNDPREV)) {
        if (IsWindowVisible(above) && (GetWindowLongA(above, GWL_EXSTYLE) & WS_EX_TOPMOST) == 0) {
            return false;
        }
    }
    return true;
}

} // namespace

void ResizeWindow(HWND handle, int width, int height) {
    const TRect r = KxWindowRect(handle);
    if (Width(r) == width && Height(r) == height && IsOnTop(handle)) {
        return; // nothing would change, but the system would send its messages
    }
    // Deliberate: without SWP_NOZORDER, which one would expect, so that the window comes to the top as well.
    // SWP_DEFERERASE leaves the erasing to the next painting; else all of the dialog would be erased twice.
    SetWindowPos(handle, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOACTIVATE | SWP_DEFERERASE);
}

void KxMoveChild(HWND dialog, HWND window, int32_t dx, int32_t dy) {
    if (GetParent(window) != dialog) {
        return;
    }
    const TRect r = KxRectIn(dialog, window);
    SetWindowPos(window, nullptr, CheckedAdd(r.Left, dx), CheckedAdd(r.Top, dy), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_DEFERERASE);
}

void KxEnumDirectChildren(HWND window, WNDENUMPROC callback, LPARAM data) {
    for (HWND child : DirectChildren(window)) {
        // The application hears of what the callback does to one child, and may destroy others.
        if (IsWindow(child) && !callback(child, data)) {
            return;
        }
    }
}

TDlgFrame KxDlgFrame() { return {GetSystemMetrics(SM_CXDLGFRAME), GetSystemMetrics(SM_CYDLGFRAME)}; }

BOOL CALLBACK MoveLeft(HWND window, LPARAM delta) noexcept {
    Guarded([&] {
        KxMoveChild(GHandle, window, RoomAtLeft(static_cast<int32_t>(delta), KxDlgFrame()), 0);
        if (IsWindow(window)) { // a control of the application may have gone at the move
            RedrawWindow(window, nullptr, nullptr, 0);
        }
    });
    return TRUE;
}

BOOL CALLBACK MoveDown(HWND window, LPARAM delta) noexcept {
    Guarded([&] { KxMoveChild(GHandle, window, 0, RoomAtTop(static_cast<int32_t>(delta), KxDlgFrame())); });
    return TRUE;
}

} // namespace kx
