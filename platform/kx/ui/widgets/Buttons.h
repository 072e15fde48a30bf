// SPDX-License-Identifier: MIT
#pragma once

#include "kx/graphics/ImgList.h"
#include "kx/ui/controls/Controls.h"

#include <memory>

namespace kx {

/// Where a button's picture stands, seen from its caption.
enum TButtonLayout : uint8_t { blGlyphLeft, blGlyphRight, blGlyphTop, blGlyphBottom };
KX_ENUM(TButtonLayout, "blGlyphLeft", "blGlyphRight", "blGlyphTop", "blGlyphBottom")

/// How a button is drawn; also the order of the pictures in a glyph. bsExclusive: down for good, not just pressed.
enum TButtonState : uint8_t { bsUp, bsDisabled, bsDown, bsExclusive };
KX_ENUM(TButtonState, "bsUp", "bsDisabled", "bsDown", "bsExclusive")

enum TButtonStyle : uint8_t { bsAutoDetect, bsWin31, bsNew };
KX_ENUM(TButtonStyle, "bsAutoDetect", "bsWin31", "bsNew")

/// Pictures that a glyph holds side by side: 1 to 4.
using TNumGlyphs = int;

/// A button without a window, for rows of buttons that never take the focus. Buttons of one parent that share a
/// GroupIndex other than 0 stay down when they are clicked; one of them is down at a time.
class TSpeedButton : public TGraphicControl {
    KX_CLASS()

    explicit TSpeedButton(TComponent* owner = nullptr);

    /// A click on the button of the group that is down releases it. Holds for the whole group.
    bool AllowAllUp() const { return FAllowAllUp; }
    void SetAllowAllUp(bool value);
    int GroupIndex() const { return FGroupIndex; } ///< 0: in no group.
    void SetGroupIndex(int value);
    /// Only buttons of groups are down; one that is stays so unless all may be up.
    bool Down() const { return FDown; }
    void SetDown(bool value);
    bool Flat() const { return FFlat; } ///< The frame shows only under the mouse, and while it is down.
    void SetFlat(bool value) { Change(FFlat, value); }
    /// Pictures for the states of TButtonState, as many as NumGlyphs says; transparent where they have the colour of
    /// the lower left pixel. A disabled button that has none for it shows the first one embossed.
    TBitmap& Glyph() { return FGlyph; }
    const TBitmap& Glyph() const { return FGlyph; }
    void SetGlyph(const TBitmap& value) { FGlyph.Assign(&value); }
    TNumGlyphs NumGlyphs() const { return FNumGlyphs; }
    void SetNumGlyphs(TNumGlyphs value); ///< Brought into 1 to 4.
    TButtonLayout Layout() const { return FLayout; }
    void SetLayout(TButtonLayout value) { Change(FLayout, value); }
    int Margin() const { return FMargin; } ///< Pixels between edge and picture; -1: both are centred.
    void SetMargin(int value) { Change(FMargin, value); }
    int Spacing() const { return FSpacing; } ///< Pixels between picture and caption; -1: as much as beside them.
    void SetSpacing(int value) { Change(FSpacing, value); }
    bool Transparent() const { return FTransparent; } ///< A flat button shows what lies behind it.
    void SetTransparent(bool value) { Change(FTransparent, value); }
    bool MouseInControl() const { return FHot; }

    void WndProc(TMessage& message) override;
    void Loaded() override;
    TAccessibleInfo AccessibleInfo() const override;
    void AccessibleAction() override { Clicked(); }

protected:
    void ChangeScale(int to, int from) override;
    void Paint() override;
    void MouseDown(TMouseButton button, TShiftState shift, int x, int y) override;
    void MouseMove(TShiftState shift, int x, int y) override;
    void MouseUp(TMouseButton button, TShiftState shift, int x, int y) override;
    void MouseEnter() override;
    void MouseLeave() override;
    void EnabledChanged() override;
    bool DialogChar(wchar_t letter) override;

private:
    template <class V> void Change(V& field, V value) {
        if (field != value) {
            field = value;
            Invalidate();
        }
    }
    void ChangeDown(bool value);
    template <class F> void ForGroup(F&& f);
    TButtonState State() const;
    void Clicked();
    void PaintFrame(TButtonState state);
    void PaintThemedFrame(const TTheme& theme, TButtonState state);
    void PaintContent(TButtonState state, int shift);
    void PaintGlyph(const TPoint& at, TButtonState state);
    void PaintCaption(const TRect& rect, TButtonState state);
    TPoint GlyphSize() const;

    TBitmap FGlyph;
    std::unique_ptr<TImageList> FPictures; ///< The glyph's, made on first use.
    int FGroupIndex = 0;
    int FMargin = -1;
    int FSpacing = 4;
    TNumGlyphs FNumGlyphs = 1;
    TButtonLayout FLayout = blGlyphLeft;
    bool FAllowAllUp = false;
    bool FDown = false;
    bool FFlat = false;
    bool FTransparent = true;
    bool FHeld = false;    ///< The left button went down here.
    bool FPressed = false; ///< And the mouse is over the button.
    bool FHot = false;
};

} // namespace kx
