// SPDX-License-Identifier: MIT
// Pictures of buttons, cut from a strip and laid out.

#include "kx/dropdown/KxDropDownButtonGlyph.h"
#include "kx/ui/forms/Forms.h"
#include "tests/support/SysColors.h"

#include <gtest/gtest.h>

namespace kx::test {
namespace {

TBitmap& Fill(TBitmap& bitmap, int width, int height, TColor color) {
    bitmap.SetSize(width, height);
    bitmap.Canvas().Brush().SetColor(color);
    bitmap.Canvas().FillRect({0, 0, width, height});
    return bitmap;
}

/// A strip of cells, each of a colour of its own, with the transparent olive at the bottom left of all.
TBitmap& Strip(TBitmap& bitmap, int cells, int size = 16) {
    constexpr TColor colors[] = {clRed, clLime, clBlue, clYellow};
    Fill(bitmap, cells * size, size, clOlive);
    for (int i = 0; i < cells; ++i) {
        bitmap.Canvas().Brush().SetColor(colors[i]);
        bitmap.Canvas().FillRect({i * size + 4, 4, i * size + 12, 12});
    }
    return bitmap;
}

/// What drawing the state's image on a white area gives.
struct TDrawn {
    TDrawn(TButtonGlyph& glyph, TButtonState state, bool transparent = false) {
        Fill(Picture, 32, 32, clWhite);
        glyph.DrawButtonGlyph(Picture.Canvas(), {2, 3}, state, transparent);
    }
    COLORREF At(int x, int y) { return ColorToRGB(Picture.Canvas().Pixels(x + 2, y + 3)); }
    TBitmap Picture;
};

COLORREF Rgb(TColor color) { return ColorToRGB(color); }

// --- Number of pictures

TEST(ButtonGlyph, TheShapeOfTheBitmapSaysHowManyPicturesItHolds) {
    TButtonGlyph glyph;
    TBitmap bitmap;
    const auto counted = [&](int width, int height) {
        glyph.SetGlyph(&Fill(bitmap, width, height, clRed));
        return glyph.NumGlyphs();
    };
    EXPECT_EQ(counted(32, 16), 2);
    EXPECT_EQ(counted(30, 20), 2) << "no multiple: left as it was";
    EXPECT_EQ(counted(64, 16), 4);
    EXPECT_EQ(counted(100, 20), 1) << "five are none";
    EXPECT_EQ(counted(8, 16), 1) << "the arrow";
    EXPECT_EQ(counted(48, 16), 3);
    glyph.SetGlyph(nullptr);
    EXPECT_EQ(glyph.NumGlyphs(), 3);
    EXPECT_TRUE(glyph.Glyph().Empty());
}

TEST(ButtonGlyph, NumbersOutsideTheRangeAreRefused) {
    TButtonGlyph glyph;
    glyph.SetNumGlyphs(2);
    glyph.SetNumGlyphs(0);
    glyph.SetNumGlyphs(-3);
    EXPECT_EQ(glyph.NumGlyphs(), 2);
    EXPECT_THROW(glyph.SetNumGlyphs(5), ERangeError);
}

TEST(ButtonGlyph, TellsOfEachChangeOfItsPicture) {
    TButtonGlyph glyph;
    int changes = 0;
    glyph.SetOnChange([&](TObject*) { ++changes; });
    TBitmap bitmap;
    glyph.SetGlyph(&Strip(bitmap, 1));
    EXPECT_GT(changes, 0);
    changes = 0;
    glyph.SetNumGlyphs(2);
    EXPECT_EQ(changes, 1);
    glyph.Glyph().Canvas().SetPixel(0, 0, clRed);
    EXPECT_EQ(changes, 2);
}

TEST(ButtonGlyph, PaintingOnThePictureBuildsItsImagesAnew) {
    TButtonGlyph glyph;
    TBitmap bitmap;
    glyph.SetGlyph(&Strip(bitmap, 1));
    EXPECT_EQ(TDrawn(glyph, bsUp).At(5, 5), Rgb(clRed));
    glyph.Glyph().Canvas().SetPixel(5, 5, clNavy);
    EXPECT_EQ(TDrawn(glyph, bsUp).At(5, 5), Rgb(clNavy));
}

// --- Pictures of the states

TEST(ButtonGlyph, WithOneOrTwoPicturesDownIsUp) {
    TButtonGlyph glyph;
    TBitmap bitmap;
    for (const int cells : {1, 2}) {
        glyph.SetGlyph(&Strip(bitmap, cells));
        ASSERT_EQ(glyph.NumGlyphs(), cells);
        EXPECT_EQ(glyph.CreateButtonGlyph(bsDown), glyph.CreateButtonGlyph(bsUp));
        EXPECT_EQ(TDrawn(glyph, bsDown).At(8, 8), Rgb(clRed));
        EXPECT_EQ(TDrawn(glyph, bsExclusive).At(8, 8), Rgb(clRed)) << "the first picture stands for those missing";
    }
}

TEST(ButtonGlyph, WithFourPicturesEachStateHasItsOwn) {
    TButtonGlyph glyph;
    TBitmap bitmap;
    glyph.SetGlyph(&Strip(bitmap, 4));
    EXPECT_EQ(TDrawn(glyph, bsUp).At(8, 8), Rgb(clRed));
    EXPECT_EQ(TDrawn(glyph, bsDisabled).At(8, 8), Rgb(clLime));
    EXPECT_EQ(TDrawn(glyph, bsDown).At(8, 8), Rgb(clBlue));
    EXPECT_EQ(TDrawn(glyph, bsExclusive).At(8, 8), Rgb(clYellow));
}

TEST(ButtonGlyph, WhatIsTransparentShowsTheButtonsFaceOrWhatWasThere) {
    TButtonGlyph glyph;
    TBitmap bitmap;
    glyph.SetGlyph(&Strip(bitmap, 1));
    EXPECT_EQ(TDrawn(glyph, bsUp).At(0, 0), Rgb(clBtnFace));
    EXPECT_EQ(TDrawn(glyph, bsUp, true).At(0, 0), Rgb(clWhite));
    EXPECT_EQ(TDrawn(glyph, bsExclusive).At(0, 0), Rgb(clWhite)) << "held: always transparent";
}

TEST(ButtonGlyph, AFixedTransparentColourIsTheMask) {
    TButtonGlyph glyph;
    TBitmap bitmap;
    Strip(bitmap, 1).SetTransparentColor(clRed);
    glyph.SetGlyph(&bitmap);
    EXPECT_EQ(TDrawn(glyph, bsUp, true).At(8, 8), Rgb(clWhite));
    EXPECT_EQ(TDrawn(glyph, bsUp, true).At(0, 0), Rgb(clOlive));
}

TEST(ButtonGlyph, AnEmptyPictureDrawsNothing) {
    TButtonGlyph glyph;
    EXPECT_EQ(glyph.CreateButtonGlyph(bsUp), -1);
    EXPECT_EQ(glyph.CreateButtonGlyph(bsDisabled), -1);
    EXPECT_EQ(TDrawn(glyph, bsUp).At(8, 8), Rgb(clWhite));
    TBitmap narrow;
    glyph.SetGlyph(&Fill(narrow, 3, 5, clRed));
    glyph.SetNumGlyphs(4);
    EXPECT_EQ(glyph.CreateButtonGlyph(bsUp), -1) << "fewer pixels than pictures";
    EXPECT_EQ(glyph.CreateButtonGlyph(static_cast<TButtonState>(7)), -1);
}

// --- Disabled

TEST(DisabledGlyph, TheRasterOperationPaintsWhereTheShapeIsWhite) {
    TBitmap shape;
    shape.SetMonochrome(true);
    Fill(shape, 2, 1, clBlack).Canvas().SetPixel(1, 0, clWhite);
    TBitmap target;
    Fill(target, 2, 1, clAqua).Canvas().Brush().SetColor(clRed);
    const HDC dc = target.Canvas().Handle();
    SetTextColor(dc, clBlack);
    SetBkColor(dc, clWhite);
    BitBlt(dc, 0, 0, 2, 1, shape.Canvas().Handle(), 0, 0, 0x00E20746);
    EXPECT_EQ(Rgb(target.Canvas().Pixels(0, 0)), Rgb(clAqua)) << "black keeps what is there";
    EXPECT_EQ(Rgb(target.Canvas().Pixels(1, 0)), Rgb(clRed)) << "white takes the brush";
}

TEST(DisabledGlyph, AStripsOwnPictureGetsTheColoursOfDisabledThings) {
    const TSysColors colors;
    TButtonGlyph glyph;
    TBitmap bitmap;
    Strip(bitmap, 2);
    constexpr TColor cell[] = {clWhite, clGray, clOlive, clRed, clBlack};
    for (int i = 0; i < 5; ++i) {
        bitmap.Canvas().SetPixel(16 + 5 + i, 5, cell[i]);
        bitmap.Canvas().SetPixel(5 + i, 5, cell[i]);
    }
    glyph.SetGlyph(&bitmap);
    TDrawn drawn(glyph, bsDisabled);
    EXPECT_EQ(drawn.At(5, 5), Rgb(clBtnHighlight)) << "white";
    EXPECT_EQ(drawn.At(6, 5), Rgb(clBtnShadow)) << "gray";
    EXPECT_EQ(drawn.At(7, 5), Rgb(clBtnFace)) << "the transparent colour";
    EXPECT_EQ(drawn.At(8, 5), Rgb(clRed)) << "any other";
    EXPECT_EQ(drawn.At(9, 5), Rgb(clBlack));
    EXPECT_EQ(drawn.At(8, 8), Rgb(clLime)) << "from the second cell";
    TDrawn up(glyph, bsUp);
    EXPECT_EQ(up.At(5, 5), Rgb(clWhite)) << "the other states keep theirs";
    EXPECT_EQ(up.At(6, 5), Rgb(clGray));
}

/// A black dot at (5, 6), in a picture of that depth.
void ExpectEngraved(TPixelFormat format) {
    const TSysColors colors;
    TBitmap bitmap;
    Fill(bitmap, 16, 16, clWhite).Canvas().SetPixel(5, 6, clBlack);
    bitmap.SetPixelFormat(format);
    TButtonGlyph glyph;
    glyph.SetGlyph(&bitmap);
    TDrawn drawn(glyph, bsDisabled);
    EXPECT_EQ(drawn.At(5, 6), Rgb(clBtnShadow));
    EXPECT_EQ(drawn.At(6, 7), Rgb(clBtnHighlight)) << "below and to the right";
    EXPECT_EQ(drawn.At(6, 6), Rgb(clBtnFace));
    EXPECT_EQ(drawn.At(4, 5), Rgb(clBtnFace));
    EXPECT_EQ(drawn.At(0, 0), Rgb(clBtnFace));
    EXPECT_EQ(drawn.At(15, 15), Rgb(clBtnFace));
}

TEST(DisabledGlyph, ASinglePictureIsEngraved) { ExpectEngraved(pfDevice); }
TEST(DisabledGlyph, ASinglePictureOf24BitsIsEngraved) { ExpectEngraved(pf24bit); }
TEST(DisabledGlyph, ASinglePictureInBlackAndWhiteIsEngraved) { ExpectEngraved(pf1bit); }

// --- Shared images

TEST(GlyphCache, ButtonsWithPicturesOfOneSizeShareAList) {
    TBitmap bitmap;
    TButtonGlyph first;
    first.SetGlyph(&Strip(bitmap, 1));
    auto second = std::make_unique<TButtonGlyph>();
    second->SetGlyph(&Strip(bitmap, 2));
    TButtonGlyph other;
    other.SetGlyph(&Fill(bitmap, 20, 20, clRed));
    first.CreateButtonGlyph(bsUp);
    second->CreateButtonGlyph(bsUp);
    second->CreateButtonGlyph(bsDisabled);
    other.CreateButtonGlyph(bsUp);
    EXPECT_EQ(first.GlyphList(), second->GlyphList());
    EXPECT_NE(first.GlyphList(), other.GlyphList());
    EXPECT_EQ(first.GlyphList()->Count(), 3);
    second.reset();
    EXPECT_EQ(first.GlyphList()->Count(), 1);
    EXPECT_EQ(TDrawn(first, bsUp).At(8, 8), Rgb(clRed)) << "the images of the other stay";
}

TEST(GlyphCache, ASlotGivenBackIsUsedAgain) {
    TBitmap bitmap;
    TButtonGlyph first;
    TButtonGlyph second;
    first.SetGlyph(&Strip(bitmap, 1));
    second.SetGlyph(&bitmap);
    const int freed = first.CreateButtonGlyph(bsUp);
    const int kept = second.CreateButtonGlyph(bsUp);
    EXPECT_NE(freed, kept);
    first.SetGlyph(nullptr);
    EXPECT_EQ(second.GlyphList()->Count(), 1);
    TButtonGlyph third;
    Fill(bitmap, 16, 16, clOlive).Canvas().SetPixel(8, 8, clNavy);
    third.SetGlyph(&bitmap);
    EXPECT_EQ(third.CreateButtonGlyph(bsUp), freed);
    EXPECT_EQ(TDrawn(third, bsUp).At(8, 8), Rgb(clNavy));
    EXPECT_EQ(TDrawn(second, bsUp).At(8, 8), Rgb(clRed));
}

TEST(GlyphCache, LivesAsLongAsThereAreGlyphsAndImages) {
    ASSERT_EQ(GlyphCache, nullptr);
    {
        TBitmap bitmap;
        TButtonGlyph first;
        EXPECT_NE(GlyphCache, nullptr);
        EXPECT_TRUE(GlyphCache->Empty());
        { const TButtonGlyph second; }
        EXPECT_EQ(GlyphCache, nullptr) << "it held nothing";
        first.SetGlyph(&Strip(bitmap, 1));
        first.CreateButtonGlyph(bsUp);
        ASSERT_NE(GlyphCache, nullptr) << "made again when it is needed";
        EXPECT_FALSE(GlyphCache->Empty());
        { const TButtonGlyph second; }
        EXPECT_NE(GlyphCache, nullptr) << "the other's images are in it";
        first.SetGlyph(nullptr);
        EXPECT_TRUE(GlyphCache->Empty());
    }
    EXPECT_EQ(GlyphCache, nullptr);
}

// --- Layout

class ButtonLayout : public testing::Test {
protected:
    ButtonLayout() : FSurface(200, 50) { FPlan.Client = {0, 0, 100, 25}; }

    TGlyphLayout Layout() { return FGlyph.CalcButtonLayout(FSurface.Canvas(), FPlan); }
    void SetPicture(int width, int height) {
        TBitmap bitmap;
        FGlyph.SetGlyph(&Fill(bitmap, width, height, clRed));
    }
    TPoint Measured(const std::string& text) {
        TRect rect{0, 0, 100, 0};
        FSurface.Canvas().DrawText(text, rect, DT_CALCRECT);
        return {rect.Right, rect.Bottom};
    }

    TBitmap FSurface;
    TButtonGlyph FGlyph;
    TButtonPlan FPlan;
};

TEST_F(ButtonLayout, TheArrowSitsAtTheRightEdgeAndTheCaptionInTheMiddle) {
    SetPicture(8, 16);
    FPlan.Caption = "Open";
    const TPoint text = Measured("Open");
    const TGlyphLayout layout = Layout();
    EXPECT_EQ(layout.GlyphPos, (TPoint{100 - 8 - 4, 5}));
    EXPECT_EQ(layout.TextBounds.Left, (100 - (8 + text.X + 8)) / 2);
    EXPECT_EQ(Width(layout.TextBounds), text.X);
    EXPECT_EQ(layout.TextBounds.Top, (25 - text.Y + 1) / 2);
    EXPECT_EQ(Height(layout.TextBounds), text.Y);
}

TEST_F(ButtonLayout, AStripOfTwoPicturesCountsWithItsWholeWidth) {
    SetPicture(32, 16);
    ASSERT_EQ(FGlyph.NumGlyphs(), 2);
    FPlan.Caption = "Open";
    const TGlyphLayout layout = Layout();
    EXPECT_EQ(layout.GlyphPos.X, 100 - 32 - 4);
    EXPECT_EQ(layout.TextBounds.Left, (100 - (32 + Measured("Open").X + 8)) / 2);
}

TEST_F(ButtonLayout, AMarginPutsTheCaptionThere) {
    SetPicture(8, 16);
    FPlan.Caption = "Open";
    FPlan.Margin = 7;
    EXPECT_EQ(Layout().TextBounds.Left, 7);
    FPlan.Margin = 0;
    EXPECT_EQ(Layout().TextBounds.Left, 0);
}

TEST_F(ButtonLayout, APressedBodyAndAPressedArrowMoveTheArrow) {
    SetPicture(8, 16);
    const TPoint still = Layout().GlyphPos;
    FPlan.Pressing = true;
    EXPECT_EQ(Layout().GlyphPos, (TPoint{still.X - 2, still.Y - 1}));
    FPlan.PressingDropDown = true;
    EXPECT_EQ(Layout().GlyphPos, still) << "both: neither";
    FPlan.Pressing = false;
    EXPECT_EQ(Layout().GlyphPos, (TPoint{still.X + 1, still.Y + 1}));
}

TEST_F(ButtonLayout, WithoutAPictureThereIsNoSpacing) {
    FPlan.Caption = "Open";
    FPlan.Spacing = 10;
    EXPECT_EQ(Layout().TextBounds.Left, (100 - Measured("Open").X) / 2);
    EXPECT_EQ(Layout().GlyphPos.X, 100);
}

TEST_F(ButtonLayout, AnEmptyCaptionHasNoSizeAndKeepsTheSpacing) {
    SetPicture(8, 16);
    const TGlyphLayout layout = Layout();
    EXPECT_EQ(Width(layout.TextBounds), 0);
    EXPECT_EQ(Height(layout.TextBounds), 0);
    EXPECT_EQ(layout.GlyphPos.X, 88);
}

TEST_F(ButtonLayout, AreaAndOffsetMoveEverything) {
    SetPicture(8, 16);
    FPlan.Caption = "Open";
    const TGlyphLayout before = Layout();
    FPlan.Offset = {3, 4};
    const TGlyphLayout after = Layout();
    EXPECT_EQ(after.GlyphPos, (TPoint{before.GlyphPos.X + 3, before.GlyphPos.Y + 4}));
    EXPECT_EQ(after.TextBounds.Left, before.TextBounds.Left + 3);
    EXPECT_EQ(after.TextBounds.Bottom, before.TextBounds.Bottom + 4);
    FPlan.Offset = {};
    FPlan.Client = {1, 1, 99, 24};
    EXPECT_EQ(Layout().GlyphPos, before.GlyphPos) << "an area smaller by its frame";
    EXPECT_EQ(Layout().TextBounds, before.TextBounds);
}

TEST_F(ButtonLayout, ADisabledCaptionIsDrawnTwice) {
    const TSysColors colors;
    Fill(FSurface, 200, 50, clLime);
    FSurface.Canvas().Font().SetColor(clRed);
    TButtonGlyph::DrawButtonText(FSurface.Canvas(), "Open", {10, 10, 60, 30}, bsDisabled, 0);
    int shadow = 0;
    int highlight = 0;
    for (int y = 0; y < 50; ++y) {
        for (int x = 0; x < 200; ++x) {
            const COLORREF at = Rgb(FSurface.Canvas().Pixels(x, y));
            const bool dark = at == Rgb(clBtnShadow);
            shadow += dark;
            highlight += at == Rgb(clBtnHighlight);
            EXPECT_TRUE(dark || at == Rgb(clBtnHighlight) || at == Rgb(clLime)) << x << ", " << y;
            if (dark && x < 199 && y < 49) {
                EXPECT_NE(Rgb(FSurface.Canvas().Pixels(x + 1, y + 1)), Rgb(clLime)) << "its light";
            }
        }
    }
    EXPECT_GT(shadow, 20);
    EXPECT_GT(highlight, 10);
    EXPECT_EQ(FSurface.Canvas().Font().Color(), clBtnShadow);
}

} // namespace
} // namespace kx::test
