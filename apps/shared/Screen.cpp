#include "shared/Screen.h"

#include "kx/win/Handles.h"
#include "kx/win/Windows.h"
#include "shared/Png.h"

#include <algorithm>

namespace kx {

namespace {

/// What was drawn reaches the screen only with a later turn of the message loop.
void PaintPending() {
    constexpr ULONGLONG settleTime = 50;
    const ULONGLONG end = GetTickCount64() + settleTime;
    do {
        MSG message;
        while (PeekMessageA(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE) != 0) {
            DispatchMessageA(&message);
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_PAINT);
    } while (GetTickCount64() < end);
}

bool WriteFileBytes(const std::string& path, const std::vector<uint8_t>& bytes) {
    const unique_hfile file(
        CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    return file && WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0 &&
           written == bytes.size();
}

bool CaptureRect(RECT area, const std::string& path) {
    const RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    if (IntersectRect(&area, &area, &screen) == 0) {
        return false;
    }
    PaintPending();
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height; // top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    const TWindowDC source(nullptr);
    const unique_hdc memory(CreateCompatibleDC(source.Handle()));
    void* bits = nullptr;
    const unique_hbitmap bitmap(CreateDIBSection(memory.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!bitmap) {
        return false;
    }
    {
        const TSelectObject selected(memory.get(), bitmap.get());
        if (BitBlt(memory.get(), 0, 0, width, height, source.Handle(), area.left, area.top, SRCCOPY) == 0) {
            return false;
        }
        GdiFlush();
    }
    const size_t stride = static_cast<size_t>(width) * 4;
    return WriteFileBytes(path, EncodePng(width, height, static_cast<const uint8_t*>(bits), stride));
}

} // namespace

bool CaptureScreen(const std::string& path) {
    return CaptureRect({0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}, path);
}

bool CaptureWindow(HWND window, const std::string& path) {
    RECT area;
    return GetWindowRect(window, &area) != 0 && CaptureRect(area, path);
}

} // namespace kx
