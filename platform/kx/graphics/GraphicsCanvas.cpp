// SPDX-License-Identifier: MIT
// Drawing on a device context.

#include "kx/graphics/Graphics.h"

#include "kx/win/Windows.h"

// Texts go to the W functions of GDI. Its A functions go by the font's character set, not by the process's code page,
// and so garble UTF-8.

namespace kx {

namespace {

std::vector<POINT> SystemPoints(std::span<const TPoint> points) {
    std::vector<POINT> result;
    result.reserve(points.size());
    for (const TPoint& point : points) {
        result.push_back(ToPOINT(point));
    }
    return result;
}

int RasterOperation(TPenMode mode) {
    static const int operations[] = {R2_BLACK,       R2_WHITE,      R2_NOP,         R2_NOT,
                                     R2_COPYPEN,     R2_NOTCOPYPEN, R2_MERGEPENNOT, R2_MASKPENNOT,
                                     R2_MERGENOTPEN, R2_MASKNOTPEN, R2_MERGEPEN,    R2_NOTMERGEPEN,
                                     R2_MASKPEN,     R2_NOTMASKPEN, R2_XORPEN,      R2_NOTXORPEN};
    return operations[mode];
}

/// The text as it is drawn when no letters are underlined: "&&" is one sign, and others are none.
std::wstring WithoutPrefixes(const std::wstring& text) {
    std::wstring result;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'&' && ++i == text.size()) {
            break;
        }
        result += text[i];
    }
    return result;
}

} // namespace

const TClass& TCanvas::StaticClass() {
    static const TClassBuilder<TCanvas> cls("TCanvas", TPersistent::StaticClass(), [](auto& c) {
        c.SubObject("Brush", &TCanvas::Brush, &TCanvas::SetBrush);
        c.SubObject("Font", &TCanvas::Font, &TCanvas::SetFont);
        c.SubObject("Pen", &TCanvas::Pen, &TCanvas::SetPen);
    });
    return cls.Class();
}

TCanvas::TCanvas()
    : FFont(std::make_unique<TFont>()), FPen(std::make_unique<TPen>()), FBrush(std::make_unique<TBrush>()) {
    FFont->SetOnChange([this](TObject*) { Deselect(FontTool); });
    FPen->SetOnChange([this](TObject*) { Deselect(PenTool); });
    FBrush->SetOnChange([this](TObject*) { Deselect(BrushTool); });
}

TCanvas::~TCanvas() { SetHandle(nullptr); }

HDC TCanvas::Handle() const { return Require({FontTool, PenTool, BrushTool}); }

void TCanvas::SetHandle(HDC value) {
    if (value == FHandle) {
        return;
    }
    for (const TTool tool : {FontTool, PenTool, BrushTool}) {
        Deselect(tool);
    }
    FHandle = value;
}

void TCanvas::Select(TTool tool) const {
    if (FReplaced[tool]) {
        return;
    }
    HGDIOBJ object = nullptr;
    switch (tool) {
    case FontTool:
        object = FFont->Handle();
        SetTextColor(FHandle, ColorToRGB(FFont->Color()));
        break;
    case PenTool:
        object = FPen->Handle();
        SetROP2(FHandle, RasterOperation(FPen->Mode()));
        break;
    default: {
        object = FBrush->Handle();
        // What lies between the strokes of text and hatches. Behind a clear brush it still takes part when colours
        // become black and white: there no pixel of the brush's colour becomes white.
        const bool solid = FBrush->Style() == bsSolid;
        const COLORREF color = ColorToRGB(FBrush->Color());
        SetBkColor(FHandle, solid ? color : ~color & 0x00FFFFFF);
        SetBkMode(FHandle, solid ? OPAQUE : TRANSPARENT);
    }
    }
    FReplaced[tool] = SelectObject(FHandle, object);
}

void TCanvas::Deselect(TTool tool) const {
    if (FReplaced[tool]) {
        SelectObject(FHandle, FReplaced[tool]);
        FReplaced[tool] = nullptr;
    }
}

HDC TCanvas::Require(std::initializer_list<TTool> tools) const {
    if (!FHandle) {
        const_cast<TCanvas*>(this)->CreateHandle();
    }
    if (!FHandle) {
        throw EInvalidOperation("Canvas does not allow drawing");
    }
    for (const TTool tool : tools) {
        Select(tool);
    }
    return FHandle;
}

void TCanvas::Changing() { FOnChanging(this); }

void TCanvas::Changed() { FOnChange(this); }

TPoint TCanvas::PenPos() const {
    POINT point = {};
    GetCurrentPositionEx(Require({}), &point);
    return FromPOINT(point);
}

void TCanvas::MoveTo(int x, int y) { MoveToEx(Require({}), x, y, nullptr); }

void TCanvas::LineTo(int x, int y) {
    Changing();
    ::LineTo(Require({PenTool, BrushTool}), x, y);
    Changed();
}

void TCanvas::Rectangle(const TRect& rect) {
    Changing();
    ::Rectangle(Require({PenTool, BrushTool}), rect.Left, rect.Top, rect.Right, rect.Bottom);
    Changed();
}

void TCanvas::Ellipse(const TRect& rect) {
    Changing();
    ::Ellipse(Require({PenTool, BrushTool}), rect.Left, rect.Top, rect.Right, rect.Bottom);
    Changed();
}

void TCanvas::Polygon(std::span<const TPoint> points) {
    const std::vector<POINT> list = SystemPoints(points);
    Changing();
    ::Polygon(Require({PenTool, BrushTool}), list.data(), static_cast<int>(list.size()));
    Changed();
}

void TCanvas::Polyline(std::span<const TPoint> points) {
    const std::vector<POINT> list = SystemPoints(points);
    Changing();
    ::Polyline(Require({PenTool, BrushTool}), list.data(), static_cast<int>(list.size()));
    Changed();
}

void TCanvas::FillRect(const TRect& rect) {
    Changing();
    const RECT area = ToRECT(rect);
    ::FillRect(Require({BrushTool}), &area, FBrush->Handle());
    Changed();
}

void TCanvas::FrameRect(const TRect& rect) {
    Changing();
    const RECT area = ToRECT(rect);
    ::FrameRect(Require({BrushTool}), &area, FBrush->Handle());
    Changed();
}

void TCanvas::DrawFocusRect(const TRect& rect) {
    Changing();
    const RECT area = ToRECT(rect);
    ::DrawFocusRect(Require({BrushTool}), &area);
    Changed();
}

void TCanvas::TextOut(int x, int y, const std::string& text) {
    Changing();
    const std::wstring wide = ToWide(text);
    const HDC dc = Require({FontTool, BrushTool});
    MoveToEx(dc, x, y, nullptr);
    const UINT align = SetTextAlign(dc, TA_UPDATECP); // the pen goes to the end of the text
    ::TextOutW(dc, 0, 0, wide.data(), static_cast<int>(wide.size()));
    SetTextAlign(dc, align);
    Changed();
}

void TCanvas::TextRect(const TRect& rect, int x, int y, const std::string& text) {
    Changing();
    const std::wstring wide = ToWide(text);
    const RECT area = ToRECT(rect);
    const UINT options = ETO_CLIPPED | (FBrush->Style() == bsClear ? 0u : UINT{ETO_OPAQUE});
    ExtTextOutW(Require({FontTool, BrushTool}), x, y, options, &area, wide.data(), static_cast<UINT>(wide.size()),
                nullptr);
    Changed();
}

TPoint TCanvas::TextExtent(const std::string& text) const {
    const std::wstring wide = ToWide(text);
    const HDC dc = Require({FontTool});
    SIZE size = {};
    if (!wide.empty()) {
        GetTextExtentPoint32W(dc, wide.data(), static_cast<int>(wide.size()), &size);
    }
    return {static_cast<int32_t>(size.cx), static_cast<int32_t>(size.cy)};
}

int TCanvas::DrawText(const std::string& text, TRect& rect, UINT format) {
    const bool draws = !(format & DT_CALCRECT);
    if (draws) {
        Changing();
    }
    std::wstring wide = ToWide(text);
    RECT area = ToRECT(rect);
    if ((format & DT_HIDEPREFIX) && !(format & DT_NOPREFIX)) { // not all systems know it
        wide = WithoutPrefixes(wide);
        format = (format & ~UINT{DT_HIDEPREFIX}) | DT_NOPREFIX;
    }
    // A pointer to nothing stands for an empty text of length 0.
    const int height = ::DrawTextW(Require({FontTool, BrushTool}), wide.c_str(), static_cast<int>(wide.size()), &area,
                                   format & ~UINT{DT_MODIFYSTRING});
    rect = FromRECT(area);
    if (draws) {
        Changed();
    }
    return height;
}

void TCanvas::Draw(int x, int y, const TGraphic& graphic) {
    StretchDraw({x, y, CheckedAdd(x, graphic.Width()), CheckedAdd(y, graphic.Height())}, graphic);
}

void TCanvas::StretchDraw(const TRect& rect, const TGraphic& graphic) {
    if (graphic.Empty()) {
        return;
    }
    Changing();
    Require({FontTool, BrushTool});
    graphic.Draw(*this, rect);
    Changed();
}

void TCanvas::CopyRect(const TRect& dest, const TCanvas& source, const TRect& sourceRect) {
    const TPoint size{Width(dest), Height(dest)};
    const TPoint sourceSize{Width(sourceRect), Height(sourceRect)};
    Changing();
    const HDC from = source.Require({FontTool, BrushTool});
    const HDC to = Require({FontTool, BrushTool});
    StretchBlt(to, dest.Left, dest.Top, size.X, size.Y, from, sourceRect.Left, sourceRect.Top, sourceSize.X,
               sourceSize.Y, FCopyMode);
    Changed();
}

TColor TCanvas::Pixels(int x, int y) const {
    return static_cast<TColor>(static_cast<int32_t>(GetPixel(Require({}), x, y)));
}

void TCanvas::SetPixel(int x, int y, TColor value) {
    Changing();
    ::SetPixel(Require({}), x, y, ColorToRGB(value));
    Changed();
}

TRect TCanvas::ClipRect() const {
    RECT rect = {};
    GetClipBox(Require({}), &rect);
    return FromRECT(rect);
}

} // namespace kx
