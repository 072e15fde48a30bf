// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Streams.h"
#include "kx/graphics/Graphics.h"
#include "kx/win/Windows.h"

#include <cstring>
#include <string>
#include <vector>

// Pictures made by hand, byte by byte, as other programs write them.

namespace kx::test {

class TBytes {
public:
    template <class T> TBytes& Add(T value) {
        FBytes.append(reinterpret_cast<const char*>(&value), sizeof(value));
        return *this;
    }
    TBytes& Add(const TBytes& other) {
        FBytes += other.FBytes;
        return *this;
    }
    TBytes& Bytes(std::initializer_list<int> values) {
        for (const int value : values) {
            FBytes += static_cast<char>(value);
        }
        return *this;
    }
    template <class T> TBytes& Set(size_t offset, T value) {
        std::memcpy(FBytes.data() + offset, &value, sizeof(value));
        return *this;
    }
    TBytes& Cut(size_t size) {
        FBytes.resize(size);
        return *this;
    }
    size_t Size() const { return FBytes.size(); }
    const std::string& Text() const { return FBytes; }

private:
    std::string FBytes;
};

template <class T> void Load(T& graphic, const TBytes& bytes) {
    TMemoryStream stream(bytes.Text());
    graphic.LoadFromStream(stream);
}

template <class T> std::string Saved(const T& graphic) {
    TMemoryStream stream;
    graphic.SaveToStream(stream);
    return std::string(stream.Bytes());
}

inline TBytes DibHeader(int width, int height, int bits, DWORD compression = BI_RGB, DWORD imageSize = 0,
                        DWORD colors = 0) {
    BITMAPINFOHEADER header = {};
    header.biSize = sizeof(header);
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = static_cast<WORD>(bits);
    header.biCompression = compression;
    header.biSizeImage = imageSize;
    header.biClrUsed = colors;
    return TBytes().Add(header);
}

/// A bitmap file around a header with its colours and the pixels.
inline TBytes BitmapFile(const TBytes& headerAndColors, const TBytes& pixels) {
    TBytes file;
    file.Bytes({'B', 'M'});
    file.Add(static_cast<DWORD>(14 + headerAndColors.Size() + pixels.Size()));
    file.Add(DWORD{0});
    file.Add(static_cast<DWORD>(14 + headerAndColors.Size()));
    return file.Add(headerAndColors).Add(pixels);
}

/// 2 x 2: red, green; blue, white.
inline TBytes Bitmap24() {
    return BitmapFile(DibHeader(2, 2, 24),
                      TBytes().Bytes({255, 0, 0, 255, 255, 255, 0, 0, 0, 0, 255, 0, 255, 0, 0, 0}));
}

/// 3 x 2 with 16 colours: 1 2 3; 4 5 6.
inline TBytes Bitmap4() {
    TBytes header = DibHeader(3, 2, 4);
    for (int i = 0; i < 16; ++i) {
        header.Bytes({i * 10, i * 5, i, 0});
    }
    return BitmapFile(header, TBytes().Bytes({0x45, 0x60, 0, 0, 0x12, 0x30, 0, 0}));
}
inline TColor Color4(int index) { return static_cast<TColor>(index * 10 << 16 | index * 5 << 8 | index); }

/// An icon of 24-bit pixels, all of one colour, with the left half transparent.
inline TBytes IconPicture(int side, TColor color) {
    TBytes picture = DibHeader(side, side * 2, 24);
    for (int y = 0; y < side; ++y) {
        size_t row = picture.Size();
        for (int x = 0; x < side; ++x) {
            const bool shown = x >= side / 2;
            picture.Bytes({shown ? color >> 16 & 255 : 0, shown ? color >> 8 & 255 : 0, shown ? color & 255 : 0});
        }
        while ((picture.Size() - row) % 4 != 0) {
            picture.Bytes({0});
        }
    }
    for (int y = 0; y < side; ++y) {
        const size_t row = picture.Size();
        for (int x = 0; x < side; x += 8) {
            const int hidden = side / 2 - x; // of these eight pixels
            picture.Bytes({hidden >= 8 ? 0xFF : hidden <= 0 ? 0 : 0xFF00 >> hidden});
        }
        while ((picture.Size() - row) % 4 != 0) {
            picture.Bytes({0});
        }
    }
    return picture;
}

/// An icon file of such pictures, one of each side length.
inline TBytes IconFile(std::initializer_list<std::pair<int, TColor>> pictures) {
    TBytes directory;
    directory.Add(WORD{0}).Add(WORD{1}).Add(static_cast<WORD>(pictures.size()));
    TBytes data;
    for (const auto& [side, color] : pictures) {
        const TBytes picture = IconPicture(side, color);
        directory.Bytes({side, side, 0, 0}).Add(WORD{1}).Add(WORD{24}).Add(static_cast<DWORD>(picture.Size()));
        directory.Add(static_cast<DWORD>(6 + 16 * pictures.size() + data.Size()));
        data.Add(picture);
    }
    return directory.Add(data);
}

} // namespace kx::test
