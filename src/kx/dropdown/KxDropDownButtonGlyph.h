// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/widgets/Buttons.h"

#include <array>
#include <memory>
#include <vector>

// How the drop-down button paints its arrow and its caption. Private to that unit.

namespace kx {

/// Images of one size, in slots that are given back and used again.
class TGlyphList : public TImageList {
    KX_CLASS()

    TGlyphList(int width, int height) : TImageList(width, height) {}

    /// Puts the image into a slot of its own and returns the slot's index.
    int AddMasked(const TBitmap* image, TColor maskColor) override;
    /// Gives a slot back. Its image stays until the slot is used again.
    void Delete(int index) override;
    int Count() const { return FCount; } ///< Slots in use, where the inherited one would count the images.

private:
    int AllocateIndex();

    std::vector<bool> FUsed;
    int FCount = 0;
};

/// The image lists that all buttons share, one for each size.
class TGlyphCache {
public:
    /// The list of that size, made when there is none. The cache owns it.
    TGlyphList* GetList(int width, int height);
    /// Frees a list that has no slot in use any more; null is fine.
    void ReturnList(TGlyphList* list);
    bool Empty() const { return FGlyphLists.empty(); }

private:
    std::vector<std::unique_ptr<TGlyphList>> FGlyphLists;
};

/// The cache of the calling thread; null when there is none. The first glyph of the thread makes it, and the last one
/// that leaves it empty frees it. Dialogs may run in threads of their own, with buttons of their own.
extern thread_local TGlyphCache* GlyphCache;

/// Where a button's arrow and caption go.
struct TGlyphLayout {
    TPoint GlyphPos;
    TRect TextBounds;
};

/// What decides that place.
struct TButtonPlan {
    TRect Client;  ///< Area to lay out in.
    TPoint Offset; ///< Moves everything.
    std::string Caption;
    int Margin = -1;               ///< Of the caption from the left; -1: centred.
    int Spacing = 4;               ///< On both sides of the arrow.
    UINT BiDiFlags = 0;            ///< Reading order of the text, DT_ flags.
    bool Pressing = false;         ///< The button's body is pressed,
    bool PressingDropDown = false; ///< or its arrow.
};

/// A button's picture with one image for each state, and the drawing of picture and caption.
class TButtonGlyph : public TObject {
    KX_CLASS()

    TButtonGlyph();
    ~TButtonGlyph() override;

    /// Strip of up to four pictures of one width, in the order of the states. Copied; null for none. A strip whose
    /// width is a multiple of its height sets NumGlyphs to that multiple, or to 1 when that is more than four.
    TBitmap& Glyph() { return *FOriginal; }
    const TBitmap& Glyph() const { return *FOriginal; }
    void SetGlyph(const TBitmap* value);
    TNumGlyphs NumGlyphs() const { return FNumGlyphs; }
    /// Values below 1 are ignored. @throws ERangeError above 4.
    void SetNumGlyphs(TNumGlyphs value);

    const TNotifyEvent& OnChange() const { return FOnChange; }
    void SetOnChange(TNotifyEvent value) { FOnChange = std::move(value); }

    /// Lays out and draws picture and caption; returns the caption's rectangle.
    TRect Draw(TCanvas& canvas, const TButtonPlan& plan, TButtonState state, bool transparent);

    TGlyphLayout CalcButtonLayout(TCanvas& canvas, const TButtonPlan& plan) const;
    void DrawButtonGlyph(TCanvas& canvas, const TPoint& glyphPos, TButtonState state, bool transparent);
    static void DrawButtonText(TCanvas& canvas, const std::string& caption, TRect textBounds, TButtonState state,
                               UINT biDiFlags);

    /// Index of a state's image in `GlyphList`, built when it is needed; -1 without a picture.
    int CreateButtonGlyph(TButtonState state);
    TGlyphList* GlyphList() const { return FGlyphList; } ///< Belongs to the cache; null until an image is built.
    void Invalidate();                                   ///< Gives all images back: they are built anew.

private:
    void GlyphChanged(TObject* sender);
    void DrawDisabledCell(TBitmap& image, const TRect& cell) const;
    void DrawEmbossed(TBitmap& image) const;

    std::unique_ptr<TBitmap> FOriginal;
    TGlyphList* FGlyphList = nullptr;
    std::array<int, 4> FIndexs{-1, -1, -1, -1};
    TColor FTransparentColor = clOlive;
    TNumGlyphs FNumGlyphs = 1;
    TNotifyEvent FOnChange;
};

} // namespace kx
