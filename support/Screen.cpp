// SPDX-License-Identifier: MIT
// Takes pictures of windows.

#include "support/Screen.h"

#include "kx/win/Apartment.h"
#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <wincodec.h>

namespace kx::test {

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

/// Writes the bitmap to a file by the system's imaging component, compressed.
bool WritePng(HBITMAP bitmap, const std::string& path) {
    const TApartment apartment(TApartmentKind::MultiThreaded);
    const auto done = [](HRESULT result) { return SUCCEEDED(result); };
    unique_com<IWICImagingFactory> factory;
    unique_com<IWICBitmap> source;
    unique_com<IWICStream> stream;
    unique_com<IWICBitmapEncoder> encoder;
    unique_com<IWICBitmapFrameEncode> frame;
    return done(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                 reinterpret_cast<void**>(factory.put()))) &&
           done(factory.get()->CreateBitmapFromHBITMAP(bitmap, nullptr, WICBitmapIgnoreAlpha, source.put())) &&
           done(factory.get()->CreateStream(stream.put())) &&
           done(stream.get()->InitializeFromFilename(ToWide(path).c_str(), GENERIC_WRITE)) &&
           done(factory.get()->CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.put())) &&
           done(encoder.get()->Initialize(stream.get(), WICBitmapEncoderNoCache)) &&
           done(encoder.get()->CreateNewFrame(frame.put(), nullptr)) && done(frame.get()->Initialize(nullptr)) &&
           done(frame.get()->WriteSource(source.get(), nullptr)) && done(frame.get()->Commit()) &&
           done(encoder.get()->Commit());
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
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 24;
    const TWindowDC source(nullptr);
    const unique_hdc memory(CreateCompatibleDC(source.Handle()));
    const unique_hbitmap bitmap(CreateDIBSection(memory.get(), &info, DIB_RGB_COLORS, nullptr, nullptr, 0));
    if (!bitmap) {
        return false;
    }
    {
        const TSelectObject selected(memory.get(), bitmap.get());
        if (BitBlt(memory.get(), 0, 0, width, height, source.Handle(), area.left, area.top, SRCCOPY) == 0) {
            return false;
        }
    }
    return WritePng(bitmap.get(), path);
}

} // namespace

bool CaptureScreen(const std::string& path) {
    return CaptureRect({0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}, path);
}

bool CaptureWindow(HWND window, const std::string& path) {
    RECT area;
    return GetWindowRect(window, &area) != 0 && CaptureRect(area, path);
}

} // namespace kx::test
