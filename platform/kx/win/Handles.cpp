// SPDX-License-Identifier: MIT
// How each kind of handle is freed, and what a device context was given for a while.

#include "kx/win/Handles.h"

#include "kx/win/Windows.h"

namespace kx {

namespace detail {

template <> void THandleTraits<HANDLE>::Close(HANDLE handle) { CloseHandle(handle); }
template <> void THandleTraits<HBITMAP>::Close(HBITMAP handle) { DeleteObject(handle); }
template <> void THandleTraits<HBRUSH>::Close(HBRUSH handle) { DeleteObject(handle); }
template <> void THandleTraits<HDC>::Close(HDC handle) { DeleteDC(handle); }
template <> void THandleTraits<HFONT>::Close(HFONT handle) { DeleteObject(handle); }
template <> void THandleTraits<HHOOK>::Close(HHOOK handle) { UnhookWindowsHookEx(handle); }
template <> void THandleTraits<HICON>::Close(HICON handle) { DestroyIcon(handle); }
template <> void THandleTraits<HIMAGELIST>::Close(HIMAGELIST handle) { ImageList_Destroy(handle); }
template <> void THandleTraits<HKEY>::Close(HKEY handle) { RegCloseKey(handle); }
template <> void THandleTraits<HMENU>::Close(HMENU handle) { DestroyMenu(handle); }
template <> void THandleTraits<HMODULE>::Close(HMODULE handle) { FreeLibrary(handle); }
template <> void THandleTraits<HPEN>::Close(HPEN handle) { DeleteObject(handle); }
template <> void THandleTraits<HRGN>::Close(HRGN handle) { DeleteObject(handle); }
template <> void THandleTraits<HWND>::Close(HWND handle) { DestroyWindow(handle); }

HANDLE TFileTraits::Null() { return INVALID_HANDLE_VALUE; }

} // namespace detail

TWindowDC::TWindowDC(HWND window, bool withFrame)
    : FWindow(window), FHandle(withFrame ? GetWindowDC(window) : GetDC(window)) {}

TWindowDC::~TWindowDC() {
    if (!FWindow || IsWindow(FWindow)) { // a window takes its contexts along
        ReleaseDC(FWindow, FHandle);
    }
}

TDrawTarget::TDrawTarget(HDC dc) : FDC(dc), FWindow(WindowFromDC(dc)) {}

bool TDrawTarget::Lives() const { return !FWindow || IsWindow(FWindow); }

TSelectObject::TSelectObject(HDC dc, HGDIOBJ object) : FDC(dc), FOld(SelectObject(dc, object)) {}

TSelectObject::~TSelectObject() { SelectObject(FDC, FOld); }

} // namespace kx
