// SPDX-License-Identifier: MIT
#pragma once

#include "kx/graphics/Graphics.h"
#include "kx/win/Windows.h"

#include <cstdint>
#include <span>
#include <vector>

// Bitmaps as bytes: the device-independent form of files, resources and icons.

namespace kx::detail {

/// A picture read from such bytes.
struct TDib {
    unique_hbitmap Image; ///< A DIB section of the bytes' own depth.
    size_t Consumed = 0;  ///< Bytes of the input that belong to the picture.
};

/// Reads header, colours and pixels, as a resource has them. `pixelOffset` is where the pixels start; 0: behind the
/// colours. @throws EInvalidImage "Bitmap image is not valid"
TDib ReadDib(std::span<const uint8_t> bytes, size_t pixelOffset = 0);

/// Reads a bitmap file.
TDib ReadBitmapFile(std::span<const uint8_t> bytes);

/// Header, colours and pixels of a picture, bottom row first. `bitCount` 0: the picture's own depth, 24 for a
/// device-dependent one with colours. Also tells where the pixels start.
std::vector<uint8_t> WriteDib(HBITMAP image, WORD bitCount, size_t& pixelOffset);

/// A bitmap file of the picture.
std::vector<uint8_t> WriteBitmapFile(HBITMAP image);

/// A DIB section of zeros. @throws EOutOfMemory
unique_hbitmap NewDib(const BITMAPINFO& info);
/// A picture of zeros of that format. A DIB of at most 8 bits takes the colours of `colorsOf`, if that has any, else
/// the system's.
unique_hbitmap NewImage(int width, int height, TPixelFormat format, TBitmapHandleType type, HBITMAP colorsOf);

/// What GetObject tells about a picture; `IsDib` when it is a DIB section, whose header is then filled in.
struct TImageInfo {
    DIBSECTION Section = {};
    bool IsDib = false;

    explicit TImageInfo(HBITMAP image);
    int Width() const { return static_cast<int>(Section.dsBm.bmWidth); }
    int Height() const { return static_cast<int>(Section.dsBm.bmHeight); }
    WORD BitCount() const { return Section.dsBm.bmBitsPixel; }
    TPixelFormat PixelFormat() const;
};

/// A picture selected into a context of its own for the length of a scope.
class TImageDC {
public:
    explicit TImageDC(HBITMAP image) : FHandle(CreateCompatibleDC(nullptr)), FSelected(FHandle.get(), image) {}
    HDC Handle() const { return FHandle.get(); }

private:
    unique_hdc FHandle;
    TSelectObject FSelected;
};

} // namespace kx::detail
