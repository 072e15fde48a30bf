// SPDX-License-Identifier: MIT
// The pictures of a drop-down button, and the places of its parts.

#include "kx/dropdown/KxDropDownButtonGlyph.h"

#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

thread_local TGlyphCache* GlyphCache = nullptr;

namespace {

void NeedGlyphCache() {
    if (!GlyphCache) {
        GlyphCache = new TGlyphCache;
    }
}

void FreeGlyphCache() {
    delete GlyphCache;
    GlyphCache = nullptr;
}

/// Frees the cache at the end of the program. A button that goes later finds none.
struct TFinalization {
    ~TFinalization() { FreeGlyphCache(); }
} Finalization;

} // namespace

// --- TGlyphList

const TClass& TGlyphList::StaticClass() {
    static const TClassBuilder<TGlyphList> cls("TGlyphList", TImageList::StaticClass());
    return cls.Class();
}

int TGlyphList::AllocateIndex() {
    const auto clear = std::find(FUsed.begin(), FUsed.end(), false);
    auto index = static_cast<size_t>(clear - FUsed.begin());
    if (clear == FUsed.end()) {
        index = static_cast<size_t>(Add(nullptr, nullptr));
        FUsed.resize(index + 1);
    }
    FUsed[index] = true;
    return static_cast<int>(index);
}

int TGlyphList::AddMasked(const TBitmap* image, TColor maskColor) {
    const int index = AllocateIndex();
    ReplaceMasked(index, image, maskColor);
    ++FCount;
    return index;
}

void TGlyphList::Delete(int index) {
    const auto slot = static_cast<size_t>(index);
    if (index >= 0 && slot < FUsed.size() && FUsed[slot]) {
        --FCount;
        FUsed[slot] = false;
    }
}

// --- TGlyphCache

TGlyphList* TGlyphCache::GetList(int width, int height) {
    const auto found = std::find_if(FGlyphLists.rbegin(), FGlyphLists.rend(), [=](const auto& list) {
        return list->Width() == width && list->Height() == height;
    });
    if (found != FGlyphLists.rend()) {
        return found->get();
    }
    FGlyphLists.push_back(std::make_unique<TGlyphList>(width, height));
    return FGlyphLists.back().get();
}

void TGlyphCache::ReturnList(TGlyphList* list) {
    if (list && list->Count() == 0) {
        std::erase_if(FGlyphLists, [=](const auto& owned) { return owned.get() == list; });
    }
}

// --- TButtonGlyph

const TClass& TButtonGlyph::StaticClass() {
    static const TClassBuilder<TButtonGlyph> cls("TButtonGlyph", TObject::StaticClass());
    return cls.Class();
}

TButtonGlyph::TButtonGlyph() : FOriginal(std::make_unique<TBitmap>()) {
    FOriginal->SetOnChange([this](TObject* sender) { GlyphChanged(sender); });
    NeedGlyphCache();
}

TButtonGlyph::~TButtonGlyph() {
    FOriginal.reset();
    Invalidate();
    if (GlyphCache && GlyphCache->Empty()) {
        FreeGlyphCache();
    }
}

void TButtonGlyph::Invalidate() {
    // When the cache has gone, the list has gone with it.
    if (GlyphCache && FGlyphList) {
        for (const int index : FIndexs) {
            FGlyphList->Delete(index);
        }
        GlyphCache->ReturnList(FGlyphList);
    }
    FIndexs.fill(-1);
    FGlyphList = nullptr;
}

void TButtonGlyph::GlyphChanged(TObject* sender) {
    if (sender != FOriginal.get()) {
        return;
    }
    FTransparentColor = FOriginal->TransparentColor();
    Invalidate();
    const TNotifyEvent handler = FOnChange;
    handler(this);
}

void TButtonGlyph::SetGlyph(const TBitmap* value) {
    Invalidate();
    FOriginal->Assign(value);
    if (!value || value->Height() <= 0) {
        return;
    }
    FTransparentColor = value->TransparentColor();
    if (value->Width() % value->Height() == 0) {
        const int count = value->Width() / value->Height();
        SetNumGlyphs(count > 4 ? 1 : count);
    }
}

void TButtonGlyph::SetNumGlyphs(TNumGlyphs value) {
    if (value > 4) {
        RaiseRangeError();
    }
    if (value != FNumGlyphs && value > 0) {
        Invalidate();
        FNumGlyphs = value;
        GlyphChanged(FOriginal.get());
    }
}

// --- Images of the states

namespace {

/// Where the source is white, the destination takes the brush; where it is black, it keeps what it has.
constexpr DWORD ROP_DSPDxax = 0x00E20746;

/// Paints `color` on the image wherever `shape`, a monochrome bitmap, is white.
void PaintWhereWhite(TBitmap& image, TBitmap& shape, TColor color, int offset) {
    image.Canvas().Brush().SetColor(color);
    const HDC dc = image.Canvas().Handle();
    const COLORREF text = SetTextColor(dc, clBlack);
    const COLORREF background = SetBkColor(dc, clWhite);
    BitBlt(dc, offset, offset, image.Width(), image.Height(), shape.Canvas().Handle(), 0, 0, ROP_DSPDxax);
    SetTextColor(dc, text);
    SetBkColor(dc, background);
}

} // namespace

/// The strip's own picture of a disabled button, in the system's present colours of disabled things.
void TButtonGlyph::DrawDisabledCell(TBitmap& image, const TRect& cell) const {
    const TRect all{0, 0, image.Width(), image.Height()};
    image.Canvas().CopyRect(all, FOriginal->Canvas(), cell);
    TBitmap device;
    device.Assign(FOriginal.get());
    device.SetHandleType(bmDDB);
    TBitmap shape;
    shape.SetMonochrome(true);
    shape.SetSize(image.Width(), image.Height());
    const auto recolour = [&](TColor key, TColor replacement) {
        device.Canvas().Brush().SetColor(key); // becomes white in black and white
        shape.Canvas().CopyRect(all, device.Canvas(), cell);
        PaintWhereWhite(image, shape, replacement, 0);
    };
    recolour(clWhite, clBtnHighlight);
    recolour(clGray, clBtnShadow);
    recolour(static_cast<TColor>(ColorToRGB(FTransparentColor)), clBtnFace);
}

/// What is black in the picture, engraved.
void TButtonGlyph::DrawEmbossed(TBitmap& image) const {
    TBitmap shape;
    shape.Assign(FOriginal.get());
    shape.SetHandleType(bmDDB);
    shape.Canvas().Brush().SetColor(clBlack);
    shape.SetWidth(image.Width());
    if (shape.Monochrome()) {
        // Goes by way of colours and exchanges black and white: black is to come out white here too.
        shape.Canvas().Font().SetColor(clWhite);
        shape.SetMonochrome(false);
        shape.Canvas().Brush().SetColor(clWhite);
    }
    shape.SetMonochrome(true);
    image.Canvas().Brush().SetColor(clBtnFace);
    image.Canvas().FillRect({0, 0, image.Width(), image.Height()});
    PaintWhereWhite(image, shape, clBtnHighlight, 1);
    PaintWhereWhite(image, shape, clBtnShadow, 0);
}

int TButtonGlyph::CreateButtonGlyph(TButtonState state) {
    if (state == bsDown && FNumGlyphs < 3) {
        state = bsUp;
    }
    if (state > bsExclusive) {
        return -1;
    }
    int& index = FIndexs[state];
    if (index != -1 || FOriginal->Width() == 0 || FOriginal->Height() == 0) {
        return index;
    }
    const int width = FOriginal->Width() / FNumGlyphs;
    const int height = FOriginal->Height();
    if (width == 0) {
        return -1; // a strip narrower than its number of pictures
    }
    if (!FGlyphList) {
        NeedGlyphCache();
        FGlyphList = GlyphCache->GetList(width, height);
    }
    TBitmap image(width, height);
    image.Canvas().Brush().SetColor(clBtnFace);
    const int cell = state < FNumGlyphs ? state : 0;
    const TRect source{cell * width, 0, (cell + 1) * width, height};
    if (state != bsDisabled) {
        image.Canvas().CopyRect({0, 0, width, height}, FOriginal->Canvas(), source);
        index = FGlyphList->AddMasked(&image, FOriginal->TransparentMode() == tmFixed ? FTransparentColor : clDefault);
        return index;
    }
    FNumGlyphs > 1 ? DrawDisabledCell(image, source) : DrawEmbossed(image);
    index = FGlyphList->AddMasked(&image, clDefault);
    return index;
}

// --- Layout and drawing

TGlyphLayout TButtonGlyph::CalcButtonLayout(TCanvas& canvas, const TButtonPlan& plan) const {
    const TPoint client{Width(plan.Client), Height(plan.Client)};
    // Deliberate: places are computed by the width of the whole strip, where one would expect that of one picture.
    const int strip = FOriginal ? FOriginal->Width() : 0;
    const int glyphHeight = FOriginal ? FOriginal->Height() : 0;
    TGlyphLayout layout;
    if (!plan.Caption.empty()) {
        layout.TextBounds = {0, 0, client.X, 0};
        canvas.DrawText(plan.Caption, layout.TextBounds, DT_CALCRECT | plan.BiDiFlags);
    }
    const TPoint text{Width(layout.TextBounds), Height(layout.TextBounds)};
    const int spacing = strip / FNumGlyphs == 0 ? 0 : plan.Spacing;
    const int margin = plan.Margin == -1 ? (client.X - (strip + text.X + 2 * spacing)) / 2 : plan.Margin;
    layout.GlyphPos = {plan.Client.Right - strip - spacing, (client.Y - glyphHeight + 1) / 2};
    if (plan.Pressing && !plan.PressingDropDown) {
        layout.GlyphPos.X -= 2;
        layout.GlyphPos.Y -= 1;
    } else if (plan.PressingDropDown && !plan.Pressing) {
        layout.GlyphPos.X += 1;
        layout.GlyphPos.Y += 1;
    }
    const TPoint origin{plan.Client.Left + plan.Offset.X, plan.Client.Top + plan.Offset.Y};
    layout.GlyphPos.X += origin.X;
    layout.GlyphPos.Y += origin.Y;
    const TPoint at{origin.X + margin, origin.Y + (client.Y - text.Y + 1) / 2};
    TRect& bounds = layout.TextBounds;
    bounds = {bounds.Left + at.X, bounds.Top + at.Y, bounds.Right + at.X, bounds.Bottom + at.Y};
    return layout;
}

void TButtonGlyph::DrawButtonGlyph(TCanvas& canvas, const TPoint& glyphPos, TButtonState state, bool transparent) {
    const int index = FOriginal ? CreateButtonGlyph(state) : -1;
    if (index == -1) {
        return;
    }
    const bool seeThrough = transparent || state == bsExclusive;
    ImageList_DrawEx(FGlyphList->Handle(), index, canvas.Handle(), glyphPos.X, glyphPos.Y, 0, 0,
                     seeThrough ? CLR_NONE : ColorToRGB(clBtnFace), CLR_NONE,
                     seeThrough ? ILD_TRANSPARENT : ILD_NORMAL);
}

void TButtonGlyph::DrawButtonText(TCanvas& canvas, const std::string& caption, TRect textBounds, TButtonState state,
                                  UINT biDiFlags) {
    const UINT format = biDiFlags | DT_CENTER | DT_VCENTER;
    canvas.Brush().SetStyle(bsClear);
    if (state == bsDisabled) {
        TRect shadow{textBounds.Left + 1, textBounds.Top + 1, textBounds.Right + 1, textBounds.Bottom + 1};
        canvas.Font().SetColor(clBtnHighlight);
        canvas.DrawText(caption, shadow, format);
        canvas.Font().SetColor(clBtnShadow);
    }
    canvas.DrawText(caption, textBounds, format);
}

TRect TButtonGlyph::Draw(TCanvas& canvas, const TButtonPlan& plan, TButtonState state, bool transparent) {
    const TGlyphLayout layout = CalcButtonLayout(canvas, plan);
    DrawButtonGlyph(canvas, layout.GlyphPos, state, transparent);
    DrawButtonText(canvas, plan.Caption, layout.TextBounds, state, plan.BiDiFlags);
    return layout.TextBounds;
}

} // namespace kx
