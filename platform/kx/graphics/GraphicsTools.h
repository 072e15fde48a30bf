// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Components.h"
#include "kx/core/Types.h"
#include "kx/win/Handles.h"
#include "kx/win/WinTypes.h"

#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace kx {

class TBitmap;
class TCanvas;
class TStream;

// --- Colours

namespace detail {
constexpr int32_t SystemColor(uint32_t index) { return static_cast<int32_t>(0xFF000000u | index); }
} // namespace detail

/// A colour: 0x00BBGGRR, or a system colour, which is negative and carries the system's colour index in its low byte.
/// System colours written here have 0xFF in the high byte; those with 0x80 are understood as well.
enum TColor : int32_t {
    clBlack = 0x000000,
    clMaroon = 0x000080,
    clGreen = 0x008000,
    clOlive = 0x008080,
    clNavy = 0x800000,
    clPurple = 0x800080,
    clTeal = 0x808000,
    clGray = 0x808080,
    clSilver = 0xC0C0C0,
    clRed = 0x0000FF,
    clLime = 0x00FF00,
    clYellow = 0x00FFFF,
    clBlue = 0xFF0000,
    clFuchsia = 0xFF00FF,
    clAqua = 0xFFFF00,
    clWhite = 0xFFFFFF,
    clMoneyGreen = 0xC0DCC0,
    clSkyBlue = 0xF0CAA6,
    clCream = 0xF0FBFF,
    clMedGray = 0xA4A0A0,

    clNone = 0x1FFFFFFF,    ///< No colour: transparent where a colour may be missing.
    clDefault = 0x20000000, ///< The colour that the place of use chooses.

    clScrollBar = detail::SystemColor(0),
    clBackground = detail::SystemColor(1),
    clActiveCaption = detail::SystemColor(2),
    clInactiveCaption = detail::SystemColor(3),
    clMenu = detail::SystemColor(4),
    clWindow = detail::SystemColor(5),
    clWindowFrame = detail::SystemColor(6),
    clMenuText = detail::SystemColor(7),
    clWindowText = detail::SystemColor(8),
    clCaptionText = detail::SystemColor(9),
    clActiveBorder = detail::SystemColor(10),
    clInactiveBorder = detail::SystemColor(11),
    clAppWorkSpace = detail::SystemColor(12),
    clHighlight = detail::SystemColor(13),
    clHighlightText = detail::SystemColor(14),
    clBtnFace = detail::SystemColor(15),
    clBtnShadow = detail::SystemColor(16),
    clGrayText = detail::SystemColor(17),
    clBtnText = detail::SystemColor(18),
    clInactiveCaptionText = detail::SystemColor(19),
    clBtnHighlight = detail::SystemColor(20),
    cl3DDkShadow = detail::SystemColor(21),
    cl3DLight = detail::SystemColor(22),
    clInfoText = detail::SystemColor(23),
    clInfoBk = detail::SystemColor(24),
    clHotLight = detail::SystemColor(26),
    clGradientActiveCaption = detail::SystemColor(27),
    clGradientInactiveCaption = detail::SystemColor(28),
    clMenuHighlight = detail::SystemColor(29),
    clMenuBar = detail::SystemColor(30)
};

/// The names under which form files write colours.
const TIdentInfo& KxIdentInfo(TColor);

/// The colour as it shows now, 0x00BBGGRR: system colours are looked up, flags in the high byte dropped.
COLORREF ColorToRGB(TColor color);
std::string ColorToString(TColor color); ///< Its name, or "$" and eight hexadecimal digits.
/// @throws EConvertError for a text that is neither a colour's name nor an integer.
TColor StringToColor(const std::string& text);

// --- Drawing tools

enum TFontStyle : uint8_t { fsBold, fsItalic, fsUnderline, fsStrikeOut };
KX_ENUM(TFontStyle, "fsBold", "fsItalic", "fsUnderline", "fsStrikeOut")
using TFontStyles = TSet<TFontStyle>;

enum TFontPitch : uint8_t { fpDefault, fpVariable, fpFixed };
KX_ENUM(TFontPitch, "fpDefault", "fpVariable", "fpFixed")

/// A character set, by the system's numbers (DEFAULT_CHARSET, ANSI_CHARSET, ...).
enum TFontCharset : uint8_t {};
const TIdentInfo& KxIdentInfo(TFontCharset);

enum TPenStyle : uint8_t { psSolid, psDash, psDot, psDashDot, psDashDotDot, psClear, psInsideFrame };
KX_ENUM(TPenStyle, "psSolid", "psDash", "psDot", "psDashDot", "psDashDotDot", "psClear", "psInsideFrame")

enum TPenMode : uint8_t {
    pmBlack,
    pmWhite,
    pmNop,
    pmNot,
    pmCopy,
    pmNotCopy,
    pmMergePenNot,
    pmMaskPenNot,
    pmMergeNotPen,
    pmMaskNotPen,
    pmMerge,
    pmNotMerge,
    pmMask,
    pmNotMask,
    pmXor,
    pmNotXor
};
KX_ENUM(TPenMode, "pmBlack", "pmWhite", "pmNop", "pmNot", "pmCopy", "pmNotCopy", "pmMergePenNot", "pmMaskPenNot",
        "pmMergeNotPen", "pmMaskNotPen", "pmMerge", "pmNotMerge", "pmMask", "pmNotMask", "pmXor", "pmNotXor")

enum TBrushStyle : uint8_t {
    bsSolid,
    bsClear,
    bsHorizontal,
    bsVertical,
    bsFDiagonal,
    bsBDiagonal,
    bsCross,
    bsDiagCross
};
KX_ENUM(TBrushStyle, "bsSolid", "bsClear", "bsHorizontal", "bsVertical", "bsFDiagonal", "bsBDiagonal", "bsCross",
        "bsDiagCross")

namespace detail {
class TGdiHandle; ///< A pen, brush or font of the system, shared by all tools that look the same.
}

/// What pens, brushes and fonts have in common: a system object, made on first use and shared by all tools that look
/// the same, and a notification of changes.
class TGraphicsObject : public TPersistent {
    KX_CLASS()

    TGraphicsObject() = default;
    ~TGraphicsObject() override;

    const TNotifyEvent& OnChange() const { return FOnChange; }
    void SetOnChange(TNotifyEvent value) { FOnChange = std::move(value); }

protected:
    virtual void Changed();
    /// `color` is how the object's colour looks now, which changes with the system's colours.
    HGDIOBJ SharedHandle(COLORREF color) const;
    virtual std::shared_ptr<detail::TGdiHandle> CreateShared() const = 0;
    /// Runs `change`, which alters the look, and tells of it. The old handle goes only then: contexts that have it
    /// selected let go of it when they are told.
    template <class F> void ChangeLook(F&& change);

private:
    mutable std::shared_ptr<detail::TGdiHandle> FShared;
    mutable COLORREF FSharedColor = 0; ///< With which that was made.
    TNotifyEvent FOnChange;
};

/// A font. A new one is "MS Sans Serif" of 8 points, in which the layouts of form files are measured.
class TFont : public TGraphicsObject {
    KX_CLASS()

    TFont();

    /// Owned by the tools that share it; valid until this font changes or goes.
    HFONT Handle() const { return static_cast<HFONT>(SharedHandle(0)); } // without its colour
    /// Takes over the look of `value`, which stays the caller's.
    void SetHandle(HFONT value);

    TColor Color() const { return FColor; }
    void SetColor(TColor value);
    const std::string& Name() const { return FName; }
    void SetName(const std::string& value);
    int Height() const { return FHeight; } ///< Pixels; negative: without the leading above the letters.
    void SetHeight(int value);
    int Size() const; ///< Points; negative: with the leading above the letters.
    void SetSize(int value);
    TFontStyles Style() const { return FStyle; }
    void SetStyle(TFontStyles value);
    TFontPitch Pitch() const { return FPitch; }
    void SetPitch(TFontPitch value);
    TFontCharset Charset() const { return FCharset; }
    void SetCharset(TFontCharset value);
    int PixelsPerInch() const { return FPixelsPerInch; } ///< By which `Size` is reckoned; the system's at first.
    void SetPixelsPerInch(int value) { FPixelsPerInch = value; }
    /// From pixels of `from` dots per inch to those of `to`, both above 0: the size in points stays.
    void ChangeScale(int to, int from);

    bool Equals(const TFont& other) const;
    void Assign(const TPersistent* source) override;

protected:
    std::shared_ptr<detail::TGdiHandle> CreateShared() const override;

private:
    template <class V> void Change(V& field, const V& value);
    LOGFONTW LogFont() const;
    void SetLogFont(const LOGFONTW& value);

    TColor FColor = clWindowText;
    std::string FName;
    int FHeight;
    int FPixelsPerInch;
    TFontStyles FStyle;
    TFontPitch FPitch = fpDefault;
    TFontCharset FCharset;
};

class TPen : public TGraphicsObject {
    KX_CLASS()

    HPEN Handle() const { return static_cast<HPEN>(SharedHandle(ColorToRGB(FColor))); }

    TColor Color() const { return FColor; }
    void SetColor(TColor value);
    TPenMode Mode() const { return FMode; }
    void SetMode(TPenMode value);
    TPenStyle Style() const { return FStyle; }
    void SetStyle(TPenStyle value);
    int Width() const { return FWidth; } ///< Pixels.
    void SetWidth(int value);

    void Assign(const TPersistent* source) override;

protected:
    std::shared_ptr<detail::TGdiHandle> CreateShared() const override;

private:
    template <class V> void Change(V& field, const V& value);

    TColor FColor = clBlack;
    TPenMode FMode = pmCopy;
    TPenStyle FStyle = psSolid;
    int FWidth = 1;
};

class TBrush : public TGraphicsObject {
    KX_CLASS()

    HBRUSH Handle() const { return static_cast<HBRUSH>(SharedHandle(ColorToRGB(FColor))); }

    TColor Color() const { return FColor; }
    /// Also makes a clear brush solid.
    void SetColor(TColor value);
    TBrushStyle Style() const { return FStyle; }
    void SetStyle(TBrushStyle value);

    void Assign(const TPersistent* source) override;

protected:
    std::shared_ptr<detail::TGdiHandle> CreateShared() const override;

private:
    void SetLook(TColor color, TBrushStyle style);

    TColor FColor = clWhite;
    TBrushStyle FStyle = bsSolid;
};

} // namespace kx
