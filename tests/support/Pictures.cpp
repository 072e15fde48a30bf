// SPDX-License-Identifier: MIT
// What is on the screen, and what a test draws to compare it with.

#include "tests/support/Pictures.h"

#include "kx/win/Windows.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace kx::test {

std::vector<uint32_t> PixelsOf(HDC dc, const TRect& rect) {
    const int width = rect.Right - rect.Left;
    const int height = rect.Bottom - rect.Top;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const unique_hdc memory(CreateCompatibleDC(dc));
    const unique_hbitmap bitmap(CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    const TSelectObject selected(memory.get(), bitmap.get());
    BitBlt(memory.get(), 0, 0, width, height, dc, rect.Left, rect.Top, SRCCOPY);
    GdiFlush();
    const auto* const first = static_cast<const uint32_t*>(bits);
    std::vector<uint32_t> pixels(first, first + width * height);
    for (uint32_t& pixel : pixels) {
        pixel &= 0xFFFFFF;
    }
    return pixels;
}

namespace {

/// How bright a colour seems, from 0 to 1, as the guidelines for readable texts reckon it.
double Luminance(uint32_t color) {
    const auto part = [&](int shift, double weight) {
        const double value = (color >> shift & 0xFF) / 255.0;
        return weight * (value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4));
    };
    return part(16, 0.2126) + part(8, 0.7152) + part(0, 0.0722);
}

} // namespace

double ContrastIn(const std::vector<uint32_t>& pixels) {
    std::map<uint32_t, int> counts;
    for (const uint32_t pixel : pixels) {
        ++counts[pixel];
    }
    const auto ground = std::max_element(counts.begin(), counts.end(),
                                         [](const auto& a, const auto& b) { return a.second < b.second; });
    double greatest = 1;
    for (const auto& [color, count] : counts) {
        const double a = Luminance(color) + 0.05;
        const double b = Luminance(ground->first) + 0.05;
        greatest = std::max({greatest, a / b, b / a});
    }
    return greatest;
}

TPicture32::TPicture32(int width, int height)
    : Width(width), Height(height), FDC(CreateCompatibleDC(FScreen.Handle())),
      FBitmap(CreateCompatibleBitmap(FScreen.Handle(), width, height)), FSelected(FDC.get(), FBitmap.get()) {}

void TPicture32::Fill(COLORREF color) const {
    const RECT all{0, 0, Width, Height};
    const unique_hbrush brush(CreateSolidBrush(color));
    FillRect(FDC.get(), &all, brush.get());
}

void TPicture32::Line(COLORREF color, const TPoint& from, const TPoint& to) const {
    const unique_hpen pen(CreatePen(PS_SOLID, 1, color));
    const TSelectObject selected(FDC.get(), pen.get());
    MoveToEx(FDC.get(), from.X, from.Y, nullptr);
    LineTo(FDC.get(), to.X, to.Y);
}

} // namespace kx::test
