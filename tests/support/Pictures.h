// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Types.h"
#include "kx/win/Handles.h"

#include <cstdint>
#include <vector>

// What is on the screen, and what a test draws to compare it with.

namespace kx::test {

/// The pixels of a part of a window as it is on the screen, or of a picture, by rows from the top; 0x00RRGGBB.
std::vector<uint32_t> PixelsOf(HDC dc, const TRect& rect);

/// The contrast of a text with what is behind it, from 1, none, to 21, black on white: of the most frequent colour of
/// the pixels with the one that differs most from it.
double ContrastIn(const std::vector<uint32_t>& pixels);

/// A picture in memory, of the screen's depth.
class TPicture32 {
public:
    TPicture32(int width, int height);
    HDC Handle() const { return FDC.get(); }
    std::vector<uint32_t> Pixels() const { return PixelsOf(FDC.get(), {0, 0, Width, Height}); }
    void Fill(COLORREF color) const;
    /// Like the system's LineTo, it leaves out the last point.
    void Line(COLORREF color, const TPoint& from, const TPoint& to) const;

    const int Width;
    const int Height;

private:
    TWindowDC FScreen{nullptr};
    unique_hdc FDC;
    unique_hbitmap FBitmap;
    TSelectObject FSelected;
};

} // namespace kx::test
