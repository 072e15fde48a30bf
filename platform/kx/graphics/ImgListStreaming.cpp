// SPDX-License-Identifier: MIT
// Lists of images in form files.

#include "kx/core/Filer.h"
#include "kx/core/Streams.h"
#include "kx/graphics/GraphicsDib.h"
#include "kx/graphics/ImgList.h"
#include "kx/win/Windows.h"

#include <cstring>

namespace kx {

// The bytes are those that the system itself writes for an image list: a header, a bitmap file that holds the images'
// colours in rows of four, and one that holds the masks likewise. They are written and read here because the system
// trusts what it reads.

namespace {

#pragma pack(push, 2)
struct TListHeader {
    WORD Magic = 0x4C49; ///< "IL"
    WORD Version = 0x0101;
    WORD Count = 0;
    WORD Capacity = 0;
    WORD Grow = 4;
    WORD Width = 0;
    WORD Height = 0;
    COLORREF BkColor = CLR_NONE;
    WORD Flags = 0; ///< ILC_MASK and ILC_COLOR...
    int16_t Overlays[4] = {-1, -1, -1, -1};
};
#pragma pack(pop)
static_assert(sizeof(TListHeader) == 28);

constexpr int Columns = 4;
constexpr int MaxListSide = 1024;

[[noreturn]] void InvalidList() { throw EReadError("Failed to read image list data from stream"); }

/// Reads a bitmap file from the front of `bytes` and takes it off them.
void ReadStrip(std::span<const uint8_t>& bytes, TBitmap& strip) {
    detail::TDib dib = detail::ReadBitmapFile(bytes);
    bytes = bytes.subspan(dib.Consumed);
    strip.SetHandle(dib.Image.release());
}

/// The part of a strip that belongs to image `index`.
TRect Cell(const TBitmap& strip, const TListHeader& header, int index) {
    const int columns = strip.Width() / header.Width;
    const int left = columns > 0 ? index % columns * header.Width : 0;
    const int top = columns > 0 ? index / columns * header.Height : strip.Height();
    if (top + header.Height > strip.Height()) {
        InvalidList();
    }
    return {left, top, left + header.Width, top + header.Height};
}

} // namespace

void TImageList::DefineProperties(TFiler& filer) {
    TComponent::DefineProperties(filer);
    filer.DefineBinaryProperty(
        "Bitmap", [this](TStream& stream) { ReadData(stream); }, [this](TStream& stream) { WriteData(stream); },
        Count() > 0 && !FShareImages);
}

void TImageList::ReadData(TStream& stream) {
    std::vector<uint8_t> data(static_cast<size_t>(stream.Size() - stream.Position()));
    stream.ReadBuffer(data.data(), data.size());
    std::span<const uint8_t> bytes(data);
    TListHeader header;
    if (bytes.size() < sizeof(header)) {
        InvalidList();
    }
    std::memcpy(&header, bytes.data(), sizeof(header));
    if (header.Magic != TListHeader().Magic || header.Width == 0 || header.Height == 0 || header.Width > MaxListSide ||
        header.Height > MaxListSide) {
        InvalidList();
    }
    bytes = bytes.subspan(sizeof(header));
    TBitmap colors;
    TBitmap masks;
    ReadStrip(bytes, colors);
    const bool masked = header.Flags & ILC_MASK;
    if (masked) {
        ReadStrip(bytes, masks);
    }

    TImageList loaded(header.Width, header.Height);
    loaded.SetMasked(masked);
    for (int i = 0; i < header.Count; ++i) {
        const TRect all = {0, 0, header.Width, header.Height};
        TBitmap image(header.Width, header.Height);
        image.Canvas().CopyRect(all, colors.Canvas(), Cell(colors, header, i));
        TBitmap mask;
        if (masked) {
            mask.SetMonochrome(true);
            mask.SetSize(header.Width, header.Height);
            mask.Canvas().CopyRect(all, masks.Canvas(), Cell(masks, header, i));
        }
        loaded.AddPair(TPair(image, masked ? &mask : nullptr));
    }
    for (int i = 0; i < 4; ++i) {
        loaded.Overlay(header.Overlays[i], i + 1);
    }
    TakeOver(loaded);
}

void TImageList::WriteData(TStream& stream) const {
    TListHeader header;
    header.Count = static_cast<WORD>(Count());
    header.Width = static_cast<WORD>(FWidth);
    header.Height = static_cast<WORD>(FHeight);
    header.Flags = static_cast<WORD>(ILC_COLOR24 | (FMasked ? ILC_MASK : 0));
    const int rows = (Count() + Columns - 1) / Columns;
    header.Capacity = static_cast<WORD>(rows * Columns);
    stream.WriteBuffer(&header, sizeof(header));

    TBitmap colors;
    colors.SetPixelFormat(pf24bit);
    colors.Canvas().Brush().SetColor(clBlack);
    colors.SetSize(CheckedMul(FWidth, Columns), CheckedMul(FHeight, rows));
    TBitmap masks;
    masks.SetMonochrome(true);
    masks.SetSize(colors.Width(), colors.Height());
    for (int i = 0; i < Count(); ++i) {
        const int x = i % Columns * FWidth;
        const int y = i / Columns * FHeight;
        ImageList_DrawEx(Handle(), i, colors.Canvas().Handle(), x, y, 0, 0, CLR_NONE, CLR_NONE, ILD_TRANSPARENT);
        ImageList_DrawEx(Handle(), i, masks.Canvas().Handle(), x, y, 0, 0, CLR_NONE, CLR_NONE, ILD_MASK);
    }
    colors.SaveToStream(stream);
    if (FMasked) {
        masks.SaveToStream(stream);
    }
}

} // namespace kx
