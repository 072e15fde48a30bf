// SPDX-License-Identifier: MIT
// PNG and JPEG by the system's imaging component.

#include "kx/graphics/ImageFiles.h"

#include "kx/core/Streams.h"
#include "kx/graphics/GraphicFormats.h"
#include "kx/graphics/GraphicsDib.h"
#include "kx/win/Apartment.h"
#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <wincodec.h>

#include <limits>

namespace kx {

struct TImageFile::TImage {
    std::vector<uint8_t> File;
    unique_hbitmap Pixels; ///< 32 bits, multiplied by their opacity.
    int Width = 0;
    int Height = 0;
};

namespace {

constexpr UINT MaxImageSide = 32767;

[[noreturn]] void InvalidImage() { throw EInvalidImage("The picture cannot be read"); }

void Check(HRESULT result) {
    if (FAILED(result)) {
        InvalidImage();
    }
}

BITMAPINFO HeaderOf(UINT width, UINT height) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = static_cast<LONG>(width);
    info.bmiHeader.biHeight = -static_cast<LONG>(height); // the first row is the topmost
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    return info;
}

/// The first picture of the file as pixels.
unique_hbitmap Decode(std::vector<uint8_t>& file, const GUID& format, int& width, int& height) {
    const TApartment apartment(TApartmentKind::MultiThreaded);
    unique_com<IWICImagingFactory> factory;
    unique_com<IWICStream> stream;
    unique_com<IWICBitmapDecoder> decoder;
    unique_com<IWICBitmapFrameDecode> frame;
    unique_com<IWICFormatConverter> converter;
    GUID found{};
    UINT w = 0;
    UINT h = 0;
    Check(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                           reinterpret_cast<void**>(factory.put())));
    Check(factory.get()->CreateStream(stream.put()));
    Check(stream.get()->InitializeFromMemory(file.data(), static_cast<DWORD>(file.size())));
    Check(factory.get()->CreateDecoderFromStream(stream.get(), nullptr, WICDecodeMetadataCacheOnDemand, decoder.put()));
    Check(decoder.get()->GetContainerFormat(&found));
    if (found != format) {
        InvalidImage();
    }
    Check(decoder.get()->GetFrame(0, frame.put()));
    Check(factory.get()->CreateFormatConverter(converter.put()));
    Check(converter.get()->Initialize(frame.get(), GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone, nullptr, 0,
                                      WICBitmapPaletteTypeCustom));
    Check(converter.get()->GetSize(&w, &h));
    if (w == 0 || h == 0 || w > MaxImageSide || h > MaxImageSide || uint64_t{w} * h * 4 > INT32_MAX) {
        InvalidImage();
    }
    unique_hbitmap image = detail::NewDib(HeaderOf(w, h));
    const detail::TImageInfo info(image.get());
    Check(converter.get()->CopyPixels(nullptr, w * 4, w * h * 4, static_cast<BYTE*>(info.Section.dsBm.bmBits)));
    width = static_cast<int>(w);
    height = static_cast<int>(h);
    return image;
}

std::vector<uint8_t> RestOf(TStream& stream) {
    const int64_t size = stream.Size() - stream.Position();
    if (size <= 0 || size > INT32_MAX) {
        InvalidImage();
    }
    std::vector<uint8_t> bytes(static_cast<size_t>(size));
    stream.ReadBuffer(bytes.data(), bytes.size());
    return bytes;
}

} // namespace

// --- TImageFile

const TClass& TImageFile::StaticClass() {
    static const TClassBuilder<TImageFile> cls("TImageFile", TGraphic::StaticClass());
    return cls.Class();
}

TImageFile::TImageFile(TKind kind) : FKind(kind) {}

TImageFile::~TImageFile() = default;

int TImageFile::Width() const { return FImage ? FImage->Width : 0; }
int TImageFile::Height() const { return FImage ? FImage->Height : 0; }

void TImageFile::SetWidth(int value) {
    if (value != Width()) {
        throw EInvalidOperation("The size of an image file cannot be changed");
    }
}

void TImageFile::SetHeight(int value) {
    if (value != Height()) {
        throw EInvalidOperation("The size of an image file cannot be changed");
    }
}

const std::vector<uint8_t>& TImageFile::Bytes() const {
    static const std::vector<uint8_t> none;
    return FImage ? FImage->File : none;
}

void TImageFile::Load(std::vector<uint8_t> bytes) {
    auto image = std::make_shared<TImage>();
    image->File = std::move(bytes);
    image->Pixels = Decode(image->File, FKind == TKind::Png ? GUID_ContainerFormatPng : GUID_ContainerFormatJpeg,
                           image->Width, image->Height);
    FImage = std::move(image);
    Changed();
}

void TImageFile::LoadFromStream(TStream& stream) { Load(RestOf(stream)); }

void TImageFile::SaveToStream(TStream& stream) const { stream.WriteBuffer(Bytes().data(), Bytes().size()); }

void TImageFile::Draw(TCanvas& canvas, const TRect& rect) const {
    if (FImage) {
        const detail::TImageDC source(FImage->Pixels.get());
        const BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
        GdiAlphaBlend(canvas.Handle(), rect.Left, rect.Top, kx::Width(rect), kx::Height(rect), source.Handle(), 0, 0,
                      FImage->Width, FImage->Height, blend);
    }
}

void TImageFile::Assign(const TPersistent* source) {
    const auto* const other = dynamic_cast<const TImageFile*>(source);
    if (source && (!other || other->FKind != FKind)) {
        return TGraphic::Assign(source);
    }
    FImage = other ? other->FImage : nullptr;
    Changed();
}

/// A bitmap gets the picture on its own background: bitmaps have no opacity.
void TImageFile::AssignTo(TPersistent& dest) const {
    auto* const bitmap = dynamic_cast<TBitmap*>(&dest);
    if (!bitmap) {
        return TGraphic::AssignTo(dest);
    }
    bitmap->SetPixelFormat(pf24bit);
    bitmap->SetSize(Width(), Height());
    if (FImage) {
        const TRect all{0, 0, Width(), Height()};
        bitmap->Canvas().FillRect(all);
        Draw(bitmap->Canvas(), all);
    }
}

// --- Its kinds

const TClass& TPngImage::StaticClass() {
    static const TClassBuilder<TPngImage> cls("TPngImage", TImageFile::StaticClass());
    return cls.Class();
}

const TClass& TJPEGImage::StaticClass() {
    static const TClassBuilder<TJPEGImage> cls("TJPEGImage", TImageFile::StaticClass());
    return cls.Class();
}

void TJPEGImage::ReadData(TStream& stream) {
    uint8_t size[4];
    stream.ReadBuffer(size, sizeof size);
    const uint32_t length = size[0] | uint32_t{size[1]} << 8 | uint32_t{size[2]} << 16 | uint32_t{size[3]} << 24;
    std::vector<uint8_t> bytes = RestOf(stream);
    if (bytes.size() != length) {
        InvalidImage();
    }
    Load(std::move(bytes));
}

void TJPEGImage::WriteData(TStream& stream) const {
    const auto length = static_cast<uint32_t>(Bytes().size());
    const uint8_t size[] = {static_cast<uint8_t>(length), static_cast<uint8_t>(length >> 8),
                            static_cast<uint8_t>(length >> 16), static_cast<uint8_t>(length >> 24)};
    stream.WriteBuffer(size, sizeof size);
    SaveToStream(stream);
}

void RegisterImageFiles() {
    RegisterGraphic("TPngImage", ".png", CreateGraphicOf<TPngImage>);
    RegisterGraphic("TPNGObject", "", CreateGraphicOf<TPngImage>); // as older form files call it
    RegisterGraphic("TJPEGImage", ".jpg", CreateGraphicOf<TJPEGImage>);
    RegisterGraphic("TJPEGImage", ".jpeg", CreateGraphicOf<TJPEGImage>);
}

} // namespace kx
