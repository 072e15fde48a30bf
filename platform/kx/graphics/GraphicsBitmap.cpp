// SPDX-License-Identifier: MIT
// Bitmaps.

#include "kx/graphics/GraphicsDib.h"

#include "kx/core/Streams.h"
#include "kx/win/FileStreams.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

using detail::TImageDC;
using detail::TImageInfo;

/// Draws on the bitmap's picture. The picture is selected into its context from the first drawing until somebody wants
/// the picture itself.
class TBitmap::TBitmapCanvas : public TCanvas {
public:
    explicit TBitmapCanvas(TBitmap& owner) : FOwner(owner) {}
    ~TBitmapCanvas() override { FreeContext(); }

    void FreeContext() {
        SetHandle(nullptr);
        FSelected.reset();
    }

protected:
    void CreateHandle() override {
        FSelected = std::make_unique<TImageDC>(FOwner.FImage.get());
        SetHandle(FSelected->Handle());
    }
    void Changed() override {
        TCanvas::Changed();
        FOwner.Changed();
    }

private:
    TBitmap& FOwner;
    std::unique_ptr<TImageDC> FSelected;
};

const TClass& TBitmap::StaticClass() {
    static const TClassBuilder<TBitmap> cls("TBitmap", TGraphic::StaticClass());
    return cls.Class();
}

TBitmap::TBitmap() = default;

TBitmap::TBitmap(int width, int height) { SetSize(width, height); }

TBitmap::~TBitmap() = default;

TBitmap::TBitmapCanvas& TBitmap::CanvasRef() const {
    if (!FCanvas) {
        // The canvas of a constant bitmap is only looked at.
        FCanvas = std::make_unique<TBitmapCanvas>(const_cast<TBitmap&>(*this));
    }
    return *FCanvas;
}

TCanvas& TBitmap::Canvas() { return CanvasRef(); }

HBITMAP TBitmap::Handle() const {
    if (FCanvas) {
        FCanvas->FreeContext();
    }
    return FImage.get();
}

/// Takes over a picture and its form; nothing is told of it.
void TBitmap::Adopt(unique_hbitmap image) {
    if (image) {
        const TImageInfo info(image.get());
        FWidth = info.Width();
        FHeight = info.Height();
        FPixelFormat = info.PixelFormat();
        FHandleType = info.IsDib ? bmDIB : bmDDB;
    } else {
        FWidth = FHeight = 0;
    }
    if (FCanvas) {
        FCanvas->FreeContext();
    }
    FImage = std::move(image);
}

void TBitmap::SetHandle(HBITMAP value) {
    if (value != FImage.get()) {
        Adopt(unique_hbitmap(value));
        Changed();
    }
}

HBITMAP TBitmap::ReleaseHandle() {
    const HBITMAP image = Handle();
    FImage.release();
    Adopt({});
    Changed();
    return image;
}

void TBitmap::Rebuild(int width, int height, TPixelFormat format, TBitmapHandleType type) {
    unique_hbitmap image;
    if (width > 0 && height > 0) {
        image = detail::NewImage(width, height, format, type, Handle());
        const TImageDC target(image.get());
        const RECT all = {0, 0, width, height};
        TCanvas& canvas = Canvas();
        if (width > FWidth || height > FHeight || !FImage) {
            FillRect(target.Handle(), &all, canvas.Brush().Handle());
        }
        if (FImage) {
            // These colours decide what becomes black and white, whichever of the two pictures is.
            const TImageDC source(Handle());
            for (const HDC dc : {target.Handle(), source.Handle()}) {
                SetTextColor(dc, ColorToRGB(canvas.Font().Color()));
                SetBkColor(dc, ColorToRGB(canvas.Brush().Color()));
            }
            BitBlt(target.Handle(), 0, 0, std::min(width, FWidth), std::min(height, FHeight), source.Handle(), 0, 0,
                   SRCCOPY);
        }
    }
    Adopt(std::move(image));
    FWidth = width;
    FHeight = height;
    FPixelFormat = format;
    FHandleType = type;
    Changed();
}

void TBitmap::SetSize(int width, int height) {
    if (width < 0 || height < 0) {
        throw EInvalidOperation("Invalid bitmap size");
    }
    if (width != FWidth || height != FHeight) {
        Rebuild(width, height, FPixelFormat, FHandleType);
    }
}

void TBitmap::Stretch(int width, int height) {
    if (width == FWidth && height == FHeight) {
        return;
    }
    TBitmap before;
    before.Assign(this);
    SetSize(width, height);
    if (!before.Empty() && !Empty()) {
        const HDC dc = Canvas().Handle();
        const int mode = SetStretchBltMode(dc, COLORONCOLOR);
        StretchBlt(dc, 0, 0, width, height, before.Canvas().Handle(), 0, 0, before.Width(), before.Height(), SRCCOPY);
        SetStretchBltMode(dc, mode);
        Changed();
    }
}

void TBitmap::SetPixelFormat(TPixelFormat value) {
    if (value == pfCustom) {
        throw EInvalidImage("Invalid pixel format");
    }
    const TBitmapHandleType type = value == pfDevice || value == pf1bit ? bmDDB : bmDIB;
    if (value != FPixelFormat) {
        Rebuild(FWidth, FHeight, value, type);
    }
}

void TBitmap::SetMonochrome(bool value) {
    if (value != Monochrome()) {
        SetPixelFormat(value ? pf1bit : pfDevice);
    }
}

void TBitmap::SetHandleType(TBitmapHandleType value) {
    if (value == FHandleType) {
        return;
    }
    TPixelFormat format = FPixelFormat;
    if (format != pf1bit) {
        format = value == bmDDB ? pfDevice : pf24bit;
    }
    Rebuild(FWidth, FHeight, format, value);
}

TColor TBitmap::TransparentColor() const {
    if (FTransparentColor != clDefault) {
        return FTransparentColor;
    }
    return FImage ? CanvasRef().Pixels(0, FHeight - 1) : clDefault;
}

void TBitmap::SetTransparentColor(TColor value) {
    if (value != FTransparentColor) {
        FTransparentColor = value;
        FTransparentMode = value == clDefault ? tmAuto : tmFixed;
        Changed();
    }
}

void TBitmap::SetTransparentMode(TTransparentMode value) {
    if (value != FTransparentMode) {
        SetTransparentColor(value == tmAuto ? clDefault : TransparentColor());
    }
}

void TBitmap::Mask(TColor color) {
    if (!FImage) {
        return;
    }
    unique_hbitmap image = detail::NewImage(FWidth, FHeight, pf1bit, bmDDB, nullptr);
    {
        const TImageDC target(image.get());
        const TImageDC source(Handle());
        SetBkColor(source.Handle(), ColorToRGB(color));
        BitBlt(target.Handle(), 0, 0, FWidth, FHeight, source.Handle(), 0, 0, SRCCOPY);
    }
    Adopt(std::move(image));
    Changed();
}

void TBitmap::Draw(TCanvas& canvas, const TRect& rect) const {
    if (!FImage) {
        return;
    }
    const HDC dc = canvas.Handle();
    SetStretchBltMode(dc, COLORONCOLOR);
    if (Transparent()) {
        DrawTransparent(dc, rect);
        return;
    }
    // Black and white shows as that, whatever the canvas's tools.
    const COLORREF text = Monochrome() ? SetTextColor(dc, clBlack) : 0;
    const COLORREF background = Monochrome() ? SetBkColor(dc, clWhite) : 0;
    StretchBlt(dc, rect.Left, rect.Top, kx::Width(rect), kx::Height(rect), CanvasRef().Handle(), 0, 0, FWidth, FHeight,
               canvas.CopyMode());
    if (Monochrome()) {
        SetTextColor(dc, text);
        SetBkColor(dc, background);
    }
}

void TBitmap::DrawTransparent(HDC dc, const TRect& rect) const {
    const TColor transparent = TransparentColor();
    TBitmap mask;
    mask.Assign(this);
    mask.Mask(transparent);
    const HDC picture = CanvasRef().Handle();
    const HDC holes = mask.Canvas().Handle();
    const COLORREF text = SetTextColor(dc, clBlack);
    const COLORREF background = SetBkColor(dc, clWhite);
    const auto blit = [&](HDC source, DWORD operation) {
        StretchBlt(dc, rect.Left, rect.Top, kx::Width(rect), kx::Height(rect), source, 0, 0, FWidth, FHeight,
                   operation);
    };
    // The picture cancels itself out where the mask keeps the mixture, and stands alone where it clears it.
    blit(picture, SRCINVERT);
    blit(holes, SRCAND);
    blit(picture, SRCINVERT);
    SetTextColor(dc, text);
    SetBkColor(dc, background);
}

void TBitmap::LoadFromStream(TStream& stream) {
    const int64_t start = stream.Position();
    const int64_t available = std::max<int64_t>(stream.Size() - start, 0);
    std::vector<uint8_t> bytes(static_cast<size_t>(available));
    stream.ReadBuffer(bytes.data(), bytes.size());
    if (bytes.empty()) { // an empty bitmap was stored
        Adopt({});
    } else {
        detail::TDib dib = detail::ReadBitmapFile(bytes);
        Adopt(std::move(dib.Image));
        stream.SetPosition(start + static_cast<int64_t>(dib.Consumed));
    }
    Changed();
}

void TBitmap::SaveToStream(TStream& stream) const {
    if (FImage) {
        const std::vector<uint8_t> bytes = detail::WriteBitmapFile(Handle());
        stream.WriteBuffer(bytes.data(), bytes.size());
    }
}

void TBitmap::LoadResource(HINSTANCE module, LPCSTR name, const std::string& shownName) {
    const HRSRC found = FindResourceA(module, name, reinterpret_cast<LPCSTR>(RT_BITMAP));
    const HGLOBAL loaded = found ? ::LoadResource(module, found) : nullptr;
    if (!loaded) {
        throw EResNotFound(Format("Resource %s not found", {shownName}));
    }
    detail::TDib dib =
        detail::ReadDib({static_cast<const uint8_t*>(LockResource(loaded)), SizeofResource(module, found)});
    Adopt(std::move(dib.Image));
    Changed();
}

void TBitmap::LoadFromResourceName(HINSTANCE module, const std::string& name) {
    LoadResource(module, name.c_str(), name);
}

void TBitmap::LoadFromResourceID(HINSTANCE module, int id) { LoadResource(module, MAKEINTRESOURCEA(id), IntToStr(id)); }

// The property's bytes are a length and that many bytes of a bitmap file.

void TBitmap::ReadData(TStream& stream) {
    uint32_t size = 0;
    stream.ReadBuffer(&size, sizeof(size));
    if (size > stream.Size() - stream.Position()) {
        throw EInvalidImage("Bitmap image is not valid");
    }
    TMemoryStream file;
    if (size > 0) {
        file.CopyFrom(stream, size);
        file.SetPosition(0);
    }
    LoadFromStream(file);
}

void TBitmap::WriteData(TStream& stream) const {
    TMemoryStream file;
    SaveToStream(file);
    const auto size = static_cast<uint32_t>(file.Size());
    stream.WriteBuffer(&size, sizeof(size));
    stream.WriteBuffer(file.Memory(), size);
}

void TBitmap::Assign(const TPersistent* source) {
    const auto* bitmap = dynamic_cast<const TBitmap*>(source);
    if (source && !bitmap) {
        TGraphic::Assign(source);
        return;
    }
    if (bitmap == this) {
        return;
    }
    unique_hbitmap image;
    if (bitmap && bitmap->FImage) {
        image = detail::NewImage(bitmap->FWidth, bitmap->FHeight, bitmap->FPixelFormat, bitmap->FHandleType,
                                 bitmap->Handle());
        const TImageDC target(image.get());
        const TImageDC from(bitmap->Handle());
        BitBlt(target.Handle(), 0, 0, bitmap->FWidth, bitmap->FHeight, from.Handle(), 0, 0, SRCCOPY);
    }
    Adopt(std::move(image));
    if (bitmap) {
        FWidth = bitmap->FWidth;
        FHeight = bitmap->FHeight;
        FPixelFormat = bitmap->FPixelFormat;
        FHandleType = bitmap->FHandleType;
        FTransparentColor = bitmap->FTransparentColor;
        FTransparentMode = bitmap->FTransparentMode;
        SetTransparent(bitmap->Transparent());
    }
    Changed();
}

} // namespace kx
