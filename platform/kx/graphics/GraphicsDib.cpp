// SPDX-License-Identifier: MIT
// Bitmaps as files have them.

#include "kx/graphics/GraphicsDib.h"

#include "kx/win/Windows.h"

#include <cstring>

namespace kx::detail {

namespace {

constexpr size_t FileHeaderSize = 14;
constexpr uint32_t MaxBitmapSide = 0x7FFF;
constexpr size_t MaxUnpackedSize = size_t{64} << 20; ///< A packed picture of few bytes may claim to be huge.

[[noreturn]] void InvalidBitmap() { throw EInvalidImage("Bitmap image is not valid"); }

template <class T> T ReadAt(std::span<const uint8_t> bytes, size_t offset) {
    if (offset > bytes.size() || bytes.size() - offset < sizeof(T)) {
        InvalidBitmap();
    }
    T value;
    std::memcpy(&value, bytes.data() + offset, sizeof(T));
    return value;
}

template <class T> void Append(std::vector<uint8_t>& bytes, const T& value) {
    const auto* begin = reinterpret_cast<const uint8_t*>(&value);
    bytes.insert(bytes.end(), begin, begin + sizeof(T));
}

size_t RowSize(uint32_t width, uint32_t bitCount) { return (size_t{width} * bitCount + 31) / 32 * 4; }

/// A header with room for all colours behind it.
struct TDibHeader {
    BITMAPINFOHEADER Header = {};
    RGBQUAD Colors[256] = {};

    BITMAPINFO& Info() { return *reinterpret_cast<BITMAPINFO*>(this); }
    const BITMAPINFO& Info() const { return *reinterpret_cast<const BITMAPINFO*>(this); }
};

/// What the bytes say about themselves, checked.
struct TParsed : TDibHeader {
    size_t ColorOffset = 0;
    size_t ColorSize = 4; ///< Bytes per colour.
    uint32_t ColorCount = 0;
    size_t PixelOffset = 0;
    size_t PixelSize = 0;

    explicit TParsed(std::span<const uint8_t> bytes);

private:
    void ReadHeader(std::span<const uint8_t> bytes);
    void CheckHeader() const;
    void ReadColors(std::span<const uint8_t> bytes);
};

void TParsed::ReadHeader(std::span<const uint8_t> bytes) {
    const auto size = ReadAt<DWORD>(bytes, 0);
    if (size == sizeof(BITMAPCOREHEADER)) { // of old systems: 16-bit sizes, colours of three bytes
        const auto core = ReadAt<BITMAPCOREHEADER>(bytes, 0);
        Header.biWidth = core.bcWidth;
        Header.biHeight = core.bcHeight;
        Header.biPlanes = core.bcPlanes;
        Header.biBitCount = core.bcBitCount;
        ColorSize = 3;
    } else if (size >= sizeof(BITMAPINFOHEADER) && size <= bytes.size()) {
        Header = ReadAt<BITMAPINFOHEADER>(bytes, 0);
    } else {
        InvalidBitmap();
    }
    ColorOffset = size;
    Header.biSize = sizeof(BITMAPINFOHEADER);
}

void TParsed::CheckHeader() const {
    const int64_t height = Header.biHeight < 0 ? -int64_t{Header.biHeight} : int64_t{Header.biHeight};
    const bool sizeFits = Header.biWidth > 0 && Header.biWidth <= static_cast<LONG>(MaxBitmapSide) && height > 0 &&
                          height <= int64_t{MaxBitmapSide};
    const WORD bits = Header.biBitCount;
    const bool plain = bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
    bool known = false;
    switch (Header.biCompression) {
    case BI_RGB: known = plain; break;
    case BI_RLE4: known = bits == 4 && Header.biHeight > 0; break;
    case BI_RLE8: known = bits == 8 && Header.biHeight > 0; break;
    case BI_BITFIELDS: known = bits == 16 || bits == 32; break;
    default: break;
    }
    if (!sizeFits || !known || Header.biPlanes != 1) {
        InvalidBitmap();
    }
}

void TParsed::ReadColors(std::span<const uint8_t> bytes) {
    if (Header.biCompression == BI_BITFIELDS) { // three masks; later headers hold them inside
        size_t masks = ColorOffset;
        if (ColorOffset > sizeof(BITMAPINFOHEADER)) {
            masks = sizeof(BITMAPINFOHEADER);
        } else {
            ColorOffset += 3 * sizeof(DWORD);
        }
        for (size_t i = 0; i < 3; ++i) {
            Colors[i] = ReadAt<RGBQUAD>(bytes, masks + i * sizeof(DWORD));
        }
    }
    const uint32_t most = Header.biBitCount <= 8 ? 1u << Header.biBitCount : 0;
    ColorCount = Header.biClrUsed;
    if (most != 0 && (ColorCount == 0 || ColorCount > most)) {
        ColorCount = most;
    }
    if (ColorCount > bytes.size() / ColorSize) {
        InvalidBitmap();
    }
    for (uint32_t i = 0; i < ColorCount && most != 0; ++i) {
        const auto color = ReadAt<RGBTRIPLE>(bytes, ColorOffset + i * ColorSize);
        Colors[i] = {color.rgbtBlue, color.rgbtGreen, color.rgbtRed, 0};
    }
    PixelOffset = ColorOffset + ColorCount * ColorSize;
    Header.biClrUsed = most != 0 ? ColorCount : 0;
}

TParsed::TParsed(std::span<const uint8_t> bytes) {
    ReadHeader(bytes);
    CheckHeader();
    ReadColors(bytes);
    const auto height = static_cast<uint32_t>(Header.biHeight < 0 ? -Header.biHeight : Header.biHeight);
    PixelSize = RowSize(static_cast<uint32_t>(Header.biWidth), Header.biBitCount) * height;
}

} // namespace

unique_hbitmap NewDib(const BITMAPINFO& info) {
    void* bits = nullptr;
    unique_hbitmap image(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!image) {
        throw EOutOfMemory("Out of system resources");
    }
    return image;
}

TDib ReadDib(std::span<const uint8_t> bytes, size_t pixelOffset) {
    TParsed dib(bytes);
    if (pixelOffset == 0) {
        pixelOffset = dib.PixelOffset;
    }
    const bool packed = dib.Header.biCompression == BI_RLE4 || dib.Header.biCompression == BI_RLE8;
    if (packed) {
        if (dib.PixelSize > MaxUnpackedSize) {
            InvalidBitmap();
        }
        dib.PixelSize = dib.Header.biSizeImage;
    }
    if (pixelOffset > bytes.size() || dib.PixelSize > bytes.size() - pixelOffset || dib.PixelSize == 0) {
        InvalidBitmap();
    }
    dib.Header.biSizeImage = static_cast<DWORD>(dib.PixelSize);
    auto target = static_cast<const TDibHeader&>(dib);
    if (packed) {
        target.Header.biCompression = BI_RGB;
        target.Header.biSizeImage = 0;
    }
    // Rows are kept bottom first, whatever the order in the bytes.
    target.Header.biHeight = dib.Header.biHeight < 0 ? -dib.Header.biHeight : dib.Header.biHeight;
    TDib result;
    result.Image = NewDib(target.Info());
    const int rows = target.Header.biHeight;
    const TWindowDC screen(nullptr);
    if (!SetDIBits(screen.Handle(), result.Image.get(), 0, static_cast<UINT>(rows), bytes.data() + pixelOffset,
                   &dib.Info(), DIB_RGB_COLORS)) {
        InvalidBitmap();
    }
    result.Consumed = pixelOffset + dib.PixelSize;
    return result;
}

TDib ReadBitmapFile(std::span<const uint8_t> bytes) {
    if (bytes.size() < FileHeaderSize || bytes[0] != 'B' || bytes[1] != 'M') {
        InvalidBitmap();
    }
    const size_t pixelOffset = ReadAt<DWORD>(bytes, 10);
    if (pixelOffset != 0 && pixelOffset < FileHeaderSize + sizeof(BITMAPCOREHEADER)) {
        InvalidBitmap();
    }
    TDib dib = ReadDib(bytes.subspan(FileHeaderSize), pixelOffset == 0 ? 0 : pixelOffset - FileHeaderSize);
    dib.Consumed += FileHeaderSize;
    return dib;
}

std::vector<uint8_t> WriteDib(HBITMAP image, WORD bitCount, size_t& pixelOffset) {
    const TImageInfo info(image);
    TDibHeader dib;
    dib.Header.biSize = sizeof(BITMAPINFOHEADER);
    dib.Header.biWidth = info.Width();
    dib.Header.biHeight = info.Height();
    dib.Header.biPlanes = 1;
    dib.Header.biBitCount = bitCount != 0                  ? bitCount
                            : info.IsDib                   ? info.Section.dsBmih.biBitCount
                            : info.PixelFormat() == pf1bit ? WORD{1}
                                                           : WORD{24};
    dib.Header.biCompression =
        info.IsDib && dib.Header.biBitCount == info.BitCount() ? info.Section.dsBmih.biCompression : BI_RGB;
    const size_t size =
        RowSize(static_cast<uint32_t>(info.Width()), dib.Header.biBitCount) * static_cast<size_t>(info.Height());
    dib.Header.biSizeImage = static_cast<DWORD>(size);
    std::vector<uint8_t> pixels(dib.Header.biSizeImage);
    const TDibHeader wanted = dib;
    const TWindowDC screen(nullptr);
    if (!GetDIBits(screen.Handle(), image, 0, static_cast<UINT>(info.Height()), pixels.data(), &dib.Info(),
                   DIB_RGB_COLORS)) {
        InvalidBitmap();
    }
    dib.Header = wanted.Header; // the system fills in more than older readers understand
    size_t colors = dib.Header.biBitCount <= 8                        ? size_t{1} << dib.Header.biBitCount
                    : dib.Header.biCompression == DWORD{BI_BITFIELDS} ? 3
                                                                      : 0;
    if (info.IsDib && dib.Header.biBitCount <= 8 && dib.Header.biBitCount == info.BitCount()) {
        const TImageDC dc(image);
        GetDIBColorTable(dc.Handle(), 0, static_cast<UINT>(colors), dib.Colors);
    }
    std::vector<uint8_t> bytes;
    bytes.reserve(sizeof(dib.Header) + colors * sizeof(RGBQUAD) + pixels.size());
    Append(bytes, dib.Header);
    for (size_t i = 0; i < colors; ++i) {
        Append(bytes, dib.Colors[i]);
    }
    pixelOffset = bytes.size();
    bytes.insert(bytes.end(), pixels.begin(), pixels.end());
    return bytes;
}

std::vector<uint8_t> WriteBitmapFile(HBITMAP image) {
    size_t pixelOffset = 0;
    const std::vector<uint8_t> dib = WriteDib(image, 0, pixelOffset);
    std::vector<uint8_t> bytes{'B', 'M'};
    bytes.reserve(FileHeaderSize + dib.size());
    Append(bytes, static_cast<DWORD>(FileHeaderSize + dib.size()));
    Append(bytes, DWORD{0});
    Append(bytes, static_cast<DWORD>(FileHeaderSize + pixelOffset));
    bytes.insert(bytes.end(), dib.begin(), dib.end());
    return bytes;
}

TImageInfo::TImageInfo(HBITMAP image) {
    const int size = GetObjectA(image, sizeof(Section), &Section);
    if (size < static_cast<int>(sizeof(BITMAP))) {
        throw EInvalidImage("Bitmap handle is not valid");
    }
    IsDib = size == static_cast<int>(sizeof(DIBSECTION));
}

TPixelFormat TImageInfo::PixelFormat() const {
    if (!IsDib) {
        return BitCount() == 1 ? pf1bit : pfDevice;
    }
    switch (BitCount()) {
    case 1: return pf1bit;
    case 4: return pf4bit;
    case 8: return pf8bit;
    case 16: return Section.dsBitfields[1] == 0x7E0 ? pf16bit : pf15bit;
    case 24: return pf24bit;
    case 32: return pf32bit;
    default: return pfCustom;
    }
}

unique_hbitmap NewImage(int width, int height, TPixelFormat format, TBitmapHandleType type, HBITMAP colorsOf) {
    if (type == bmDDB) {
        unique_hbitmap image(format == pf1bit ? CreateBitmap(width, height, 1, 1, nullptr)
                                              : CreateCompatibleBitmap(TWindowDC(nullptr).Handle(), width, height));
        if (!image) {
            throw EOutOfMemory("Out of system resources");
        }
        return image;
    }
    static const WORD bitCounts[] = {24, 1, 4, 8, 16, 16, 24, 32};
    TDibHeader dib;
    dib.Header.biSize = sizeof(BITMAPINFOHEADER);
    dib.Header.biWidth = width;
    dib.Header.biHeight = height;
    dib.Header.biPlanes = 1;
    dib.Header.biBitCount = bitCounts[format];
    if (format == pf16bit) {
        const DWORD masks[] = {0xF800, 0x07E0, 0x001F};
        dib.Header.biCompression = BI_BITFIELDS;
        std::memcpy(dib.Colors, masks, sizeof(masks));
    } else if (dib.Header.biBitCount <= 8) {
        const UINT count = 1u << dib.Header.biBitCount;
        dib.Colors[1] = {0xFF, 0xFF, 0xFF, 0};
        const bool own = colorsOf && TImageInfo(colorsOf).IsDib &&
                         GetDIBColorTable(TImageDC(colorsOf).Handle(), 0, count, dib.Colors) != 0;
        if (!own && count > 2) {
            PALETTEENTRY entries[20] = {};
            GetPaletteEntries(static_cast<HPALETTE>(GetStockObject(DEFAULT_PALETTE)), 0, 20, entries);
            // Half of its 20 colours belong at each end; 16 colours do without the four in the middle.
            const UINT half = count == 16 ? 8 : 10;
            for (UINT i = 0; i < half; ++i) {
                const PALETTEENTRY& low = entries[i];
                const PALETTEENTRY& high = entries[19 - i];
                dib.Colors[i] = {low.peBlue, low.peGreen, low.peRed, 0};
                dib.Colors[count - 1 - i] = {high.peBlue, high.peGreen, high.peRed, 0};
            }
        }
    }
    return NewDib(dib.Info());
}

} // namespace kx::detail
