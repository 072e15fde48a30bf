// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/SystemNames.h"
#include "kx/graphics/GraphicsTools.h"

#include <memory>
#include <string>
#include <vector>

namespace kx {

class TBitmap;
class TCanvas;
class TStream;

// --- Pictures

/// A picture that can be drawn, copied, loaded and stored.
class TGraphic : public TPersistent {
    KX_CLASS()

    virtual bool Empty() const = 0;
    virtual int Width() const = 0;  ///< Pixels.
    virtual int Height() const = 0; ///< Pixels.
    virtual void SetWidth(int value) = 0;
    virtual void SetHeight(int value) = 0;
    bool Transparent() const { return FTransparent; }
    virtual void SetTransparent(bool value);
    bool Modified() const { return FModified; }
    void SetModified(bool value);

    /// @throws EInvalidImage when the bytes are no picture of this kind; the graphic keeps what it had.
    virtual void LoadFromStream(TStream& stream) = 0;
    virtual void SaveToStream(TStream& stream) const = 0;
    /// @throws EFOpenError, EFCreateError
    void LoadFromFile(const std::string& fileName);
    void SaveToFile(const std::string& fileName) const;

    /// Draws the picture into `rect` of the canvas, stretched where the kind of picture can be.
    virtual void Draw(TCanvas& canvas, const TRect& rect) const = 0;

    /// The bytes of the property "Data" in form files.
    virtual void ReadData(TStream& stream) = 0;
    virtual void WriteData(TStream& stream) const = 0;
    void DefineProperties(TFiler& filer) override;

    const TNotifyEvent& OnChange() const { return FOnChange; }
    void SetOnChange(TNotifyEvent value) { FOnChange = std::move(value); }

protected:
    virtual void Changed();

private:
    bool FTransparent = false;
    bool FModified = false;
    TNotifyEvent FOnChange;
};

/// Draws on a device context, which it does not own. Font, pen and brush are selected when something is drawn with
/// them. Coordinates are logical units of the context, pixels unless the caller changed that.
class TCanvas : public TPersistent {
    KX_CLASS()

    TCanvas();
    ~TCanvas() override;

    /// The context with font, pen and brush selected, for direct calls of the system.
    /// @throws EInvalidOperation "Canvas does not allow drawing" when there is no context and none can be made.
    HDC Handle() const;
    /// Leaves the old context with the tools that it had, and draws on `value` from now on; null for none. Text
    /// colours, background and raster operation stay as they were set last.
    void SetHandle(HDC value);
    bool HandleAllocated() const { return FHandle != nullptr; }

    TFont& Font() { return *FFont; }
    const TFont& Font() const { return *FFont; }
    void SetFont(const TFont& value) { FFont->Assign(&value); }
    TPen& Pen() { return *FPen; }
    const TPen& Pen() const { return *FPen; }
    void SetPen(const TPen& value) { FPen->Assign(&value); }
    TBrush& Brush() { return *FBrush; }
    const TBrush& Brush() const { return *FBrush; }
    void SetBrush(const TBrush& value) { FBrush->Assign(&value); }
    /// Raster operation of `Draw`, `StretchDraw` and `CopyRect`; SRCCOPY at first.
    DWORD CopyMode() const { return FCopyMode; }
    void SetCopyMode(DWORD value) { FCopyMode = value; }

    /// The position of the pen, moved by `MoveTo`, `LineTo` and `TextOut`.
    TPoint PenPos() const;
    void MoveTo(int x, int y);
    void LineTo(int x, int y); ///< The last point is not drawn.
    void Rectangle(const TRect& rect);
    void Rectangle(int left, int top, int right, int bottom) { Rectangle({left, top, right, bottom}); }
    void Ellipse(const TRect& rect);
    void Polygon(std::span<const TPoint> points);
    void Polyline(std::span<const TPoint> points);
    void FillRect(const TRect& rect);
    void FrameRect(const TRect& rect); ///< One pixel wide, in the brush's colour.
    void DrawFocusRect(const TRect& rect);

    void TextOut(int x, int y, const std::string& text);
    KX_AS_SYSTEM_NAMES(void, TextOut, (int x, int y, const std::string& text), (x, y, text), )
    /// Clips to `rect` and fills it with the brush, unless that is clear.
    void TextRect(const TRect& rect, int x, int y, const std::string& text);
    /// Size of the text in the canvas's font, as (width, height).
    TPoint TextExtent(const std::string& text) const;
    int TextWidth(const std::string& text) const { return TextExtent(text).X; }
    int TextHeight(const std::string& text) const { return TextExtent(text).Y; }
    /// The system's formatted text (DT_ flags), in `rect`, which DT_CALCRECT changes to the measured one.
    int DrawText(const std::string& text, TRect& rect, UINT format);
    KX_AS_SYSTEM_NAMES(int, DrawText, (const std::string& text, TRect& rect, UINT format), (text, rect, format), )

    void Draw(int x, int y, const TGraphic& graphic);
    void StretchDraw(const TRect& rect, const TGraphic& graphic);
    /// Copies by `CopyMode`. Both canvases select their tools first, so that their brush colours are the background
    /// colours by which colours become black and white and back.
    void CopyRect(const TRect& dest, const TCanvas& source, const TRect& sourceRect);

    TColor Pixels(int x, int y) const; ///< -1 as a colour outside the drawing area.
    void SetPixel(int x, int y, TColor value);
    TRect ClipRect() const;

    const TNotifyEvent& OnChange() const { return FOnChange; }
    void SetOnChange(TNotifyEvent value) { FOnChange = std::move(value); }
    const TNotifyEvent& OnChanging() const { return FOnChanging; }
    void SetOnChanging(TNotifyEvent value) { FOnChanging = std::move(value); }

protected:
    /// Makes a context by `SetHandle`, for descendants that can.
    virtual void CreateHandle() {}
    virtual void Changing(); ///< Before each drawing.
    virtual void Changed();  ///< After each drawing.

private:
    enum TTool : unsigned { FontTool, PenTool, BrushTool, ToolCount };
    HDC Require(std::initializer_list<TTool> tools) const; ///< The context with these tools selected.
    void Select(TTool tool) const;
    void Deselect(TTool tool) const;

    HDC FHandle = nullptr;
    std::unique_ptr<TFont> FFont;
    std::unique_ptr<TPen> FPen;
    std::unique_ptr<TBrush> FBrush;
    mutable HGDIOBJ FReplaced[ToolCount] = {}; ///< What our selected tools replaced; null: ours is not selected.
    DWORD FCopyMode = 0x00CC0020;              ///< SRCCOPY
    TNotifyEvent FOnChange;
    TNotifyEvent FOnChanging;
};

enum TPixelFormat : uint8_t { pfDevice, pf1bit, pf4bit, pf8bit, pf15bit, pf16bit, pf24bit, pf32bit, pfCustom };
KX_ENUM(TPixelFormat, "pfDevice", "pf1bit", "pf4bit", "pf8bit", "pf15bit", "pf16bit", "pf24bit", "pf32bit", "pfCustom")

enum TBitmapHandleType : uint8_t { bmDIB, bmDDB };
enum TTransparentMode : uint8_t { tmAuto, tmFixed };
KX_ENUM(TTransparentMode, "tmAuto", "tmFixed")

/// A bitmap of any depth. A new one fits the screen's depth; one that is loaded keeps the depth of its file.
class TBitmap : public TGraphic {
    KX_CLASS()

    TBitmap();
    TBitmap(int width, int height);
    ~TBitmap() override;

    bool Empty() const override { return !FImage; }
    int Width() const override { return FWidth; }
    int Height() const override { return FHeight; }
    void SetWidth(int value) override { SetSize(value, FHeight); }
    void SetHeight(int value) override { SetSize(FWidth, value); }
    /// Keeps what fits; new area is filled with the canvas's brush.
    /// @throws EInvalidOperation for a negative size, EOutOfMemory for one that the system has no memory for.
    void SetSize(int width, int height);
    /// Takes the picture along to another size: each pixel becomes the nearest one of before, so that no colour comes
    /// up which was not there. @throws as SetSize
    void Stretch(int width, int height);

    TPixelFormat PixelFormat() const { return FPixelFormat; }
    /// Converts the picture. Colours become pf1bit by the canvas's brush: pixels of its colour white, all others black;
    /// back, white becomes the brush's colour and black the font's.
    /// @throws EInvalidImage for pfCustom.
    void SetPixelFormat(TPixelFormat value);
    bool Monochrome() const { return FPixelFormat == pf1bit; }
    /// As `SetPixelFormat` with pf1bit or pfDevice.
    void SetMonochrome(bool value);
    /// bmDDB: as the screen needs it, or black and white. bmDIB: bytes in memory, with a palette of their own.
    TBitmapHandleType HandleType() const { return FHandleType; }
    void SetHandleType(TBitmapHandleType value);

    /// A canvas on the picture; valid as long as the bitmap.
    TCanvas& Canvas();
    /// The picture itself, selected into no context. Owned by the bitmap; null when empty.
    HBITMAP Handle() const;
    /// Takes over ownership of `value`.
    void SetHandle(HBITMAP value);
    /// Gives the picture away; the bitmap is empty afterwards.
    HBITMAP ReleaseHandle();
    /// Palette of the picture; null: none, as for depths above 8 bits.
    HPALETTE Palette() const { return nullptr; }

    /// With tmAuto the colour of the lower left pixel; see `SetTransparentColor`.
    TColor TransparentColor() const;
    /// A colour also sets tmFixed; clDefault sets tmAuto.
    void SetTransparentColor(TColor value);
    TTransparentMode TransparentMode() const { return FTransparentMode; }
    void SetTransparentMode(TTransparentMode value);
    /// Makes the picture black and white: white where it had `color`, black elsewhere.
    void Mask(TColor color);

    void LoadFromStream(TStream& stream) override;
    void SaveToStream(TStream& stream) const override;
    /// @throws EResNotFound "Resource %s not found"
    void LoadFromResourceName(HINSTANCE module, const std::string& name);
    void LoadFromResourceID(HINSTANCE module, int id);

    void Draw(TCanvas& canvas, const TRect& rect) const override;
    void ReadData(TStream& stream) override;
    void WriteData(TStream& stream) const override;
    void Assign(const TPersistent* source) override;

private:
    class TBitmapCanvas;

    void Adopt(unique_hbitmap image);
    /// A new picture of that form, with what `FImage` shows in its upper left corner.
    void Rebuild(int width, int height, TPixelFormat format, TBitmapHandleType type);
    void LoadResource(HINSTANCE module, LPCSTR name, const std::string& shownName);
    void DrawTransparent(HDC dc, const TRect& rect) const;
    TBitmapCanvas& CanvasRef() const;

    unique_hbitmap FImage; ///< None while width or height is 0.
    int FWidth = 0;
    int FHeight = 0;
    TPixelFormat FPixelFormat = pfDevice;
    TBitmapHandleType FHandleType = bmDDB;
    mutable std::unique_ptr<TBitmapCanvas> FCanvas; ///< Holds `FImage` selected while it draws.
    TColor FTransparentColor = clDefault;
    TTransparentMode FTransparentMode = tmAuto;
};

/// An icon. Loaded from a file, it keeps all the pictures of that file and shows the one of the wanted size.
class TIcon : public TGraphic {
    KX_CLASS()

    TIcon();
    ~TIcon() override;

    bool Empty() const override { return !FImage; }
    int Width() const override;
    int Height() const override;
    /// The size wanted of a file's pictures; the system's large icon size at first.
    /// @throws EInvalidOperation "Cannot change the size of an icon" for one that was not loaded.
    void SetWidth(int value) override { SetWantedSize(value, FWantedHeight); }
    void SetHeight(int value) override { SetWantedSize(FWantedWidth, value); }

    /// Owned by the icon, and by those assigned from it; null when empty.
    HICON Handle() const { return FImage ? FImage->Handle.get() : nullptr; }
    /// Takes over ownership of `value`.
    void SetHandle(HICON value);
    /// Gives the handle away: the caller destroys it. The icon is empty afterwards.
    HICON ReleaseHandle();

    void LoadFromStream(TStream& stream) override;
    /// @throws EInvalidOperation for an empty icon: there is no such icon file.
    void SaveToStream(TStream& stream) const override;

    void Draw(TCanvas& canvas, const TRect& rect) const override;
    void ReadData(TStream& stream) override;
    void WriteData(TStream& stream) const override;
    void Assign(const TPersistent* source) override;

private:
    /// Shared by icons assigned from each other; never changed, only replaced.
    struct TImage {
        unique_hicon Handle;
        std::vector<uint8_t> File; ///< The bytes that it was loaded from; empty: none.
    };
    void SetWantedSize(int width, int height);

    std::shared_ptr<TImage> FImage; ///< Null when empty.
    int FWantedWidth;
    int FWantedHeight;
};

/// Holds a picture of any kind.
class TPicture : public TPersistent {
    KX_CLASS()

    TPicture();
    ~TPicture() override;

    TGraphic* Graphic() const { return FGraphic.get(); } ///< Null when there is none.
    void SetGraphic(const TGraphic* value);              ///< Copies `value`.
    /// The picture as one of that kind; another kind is replaced by an empty one.
    TBitmap& Bitmap();
    TIcon& Icon();
    void SetIcon(const TIcon& value) { SetGraphic(&value); }
    int Width() const { return FGraphic ? FGraphic->Width() : 0; }
    int Height() const { return FGraphic ? FGraphic->Height() : 0; }

    /// Kind by the extension: "bmp" or "ico". @throws EInvalidImage "Unknown picture file extension (%s)"
    void LoadFromFile(const std::string& fileName);
    void SaveToFile(const std::string& fileName) const;

    void Assign(const TPersistent* source) override; ///< From a picture, a graphic, or null for none.
    void DefineProperties(TFiler& filer) override;

    const TNotifyEvent& OnChange() const { return FOnChange; }
    void SetOnChange(TNotifyEvent value) { FOnChange = std::move(value); }

protected:
    void AssignTo(TPersistent& dest) const override;
    virtual void Changed();

private:
    void Adopt(std::unique_ptr<TGraphic> graphic);
    void ReadData(TStream& stream);
    void WriteData(TStream& stream) const;

    std::unique_ptr<TGraphic> FGraphic;
    TNotifyEvent FOnChange;
};

} // namespace kx
