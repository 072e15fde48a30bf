// SPDX-License-Identifier: MIT
// Colours, fonts, pens, brushes and canvases.

#include "kx/graphics/Graphics.h"
#include "tests/support/Cycles.h"

#include <gtest/gtest.h>

namespace kx {
namespace {

using namespace test;

// --- Colours

TEST(Colors, SystemColorsAreLookedUpInEitherForm) {
    EXPECT_EQ(ColorToRGB(clBtnFace), GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(ColorToRGB(clBtnShadow), GetSysColor(COLOR_BTNSHADOW));
    EXPECT_EQ(ColorToRGB(clHighlightText), GetSysColor(COLOR_HIGHLIGHTTEXT));
    EXPECT_EQ(ColorToRGB(static_cast<TColor>(static_cast<int32_t>(0x8000000Fu))), GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(static_cast<uint32_t>(clBtnFace), 0xFF00000Fu);
    EXPECT_EQ(static_cast<uint32_t>(clBtnHighlight), 0xFF000014u);
    EXPECT_EQ(static_cast<uint32_t>(clWindowFrame), 0xFF000006u);
}

TEST(Colors, FlagsInTheHighByteAreNoPartOfTheColor) {
    EXPECT_EQ(ColorToRGB(clFuchsia), 0xFF00FFu);
    EXPECT_EQ(ColorToRGB(static_cast<TColor>(0x02123456)), 0x123456u);
}

TEST(Colors, HaveNamesThatAreReadInAnyLetterCase) {
    EXPECT_EQ(ColorToString(clBtnFace), "clBtnFace");
    EXPECT_EQ(ColorToString(clSilver), "clSilver");
    EXPECT_EQ(ColorToString(static_cast<TColor>(0x123456)), "$00123456");
    EXPECT_EQ(StringToColor("CLBTNFACE"), clBtnFace);
    EXPECT_EQ(StringToColor("clLtGray"), clSilver);
    EXPECT_EQ(StringToColor("$00123456"), static_cast<TColor>(0x123456));
    EXPECT_EQ(StringToColor(ColorToString(static_cast<TColor>(-7))), static_cast<TColor>(-7));
    EXPECT_THROW(StringToColor("clNoSuchColor"), EConvertError);
}

// --- Tools

TEST(Font, StartsAsMsSansSerifOfEightPoints) {
    const TFont font;
    EXPECT_EQ(font.Name(), "MS Sans Serif");
    EXPECT_EQ(font.Size(), 8);
    EXPECT_EQ(font.Color(), clWindowText);
    EXPECT_EQ(font.Charset(), DEFAULT_CHARSET);
    EXPECT_EQ(font.Height(), -MulDiv(8, font.PixelsPerInch(), 72));
}

TEST(Font, HeightAndSizeAreTwoWordsForTheSame) {
    TFont font;
    font.SetPixelsPerInch(96);
    font.SetHeight(-11);
    EXPECT_EQ(font.Size(), 8);
    font.SetSize(12);
    EXPECT_EQ(font.Height(), -16);
    font.SetSize(-12);
    EXPECT_EQ(font.Height(), 16);
}

TEST(Font, TheSystemsFontLooksAsThePropertiesSay) {
    TFont font;
    font.SetName("Tahoma");
    font.SetHeight(-20);
    font.SetStyle({fsBold, fsUnderline});
    LOGFONTA look = {};
    ASSERT_NE(GetObjectA(font.Handle(), sizeof(look), &look), 0);
    EXPECT_STREQ(look.lfFaceName, "Tahoma");
    EXPECT_EQ(look.lfHeight, -20);
    EXPECT_EQ(look.lfWeight, FW_BOLD);
    EXPECT_EQ(look.lfUnderline, TRUE);
    EXPECT_EQ(look.lfItalic, FALSE);

    TFont copy;
    copy.SetHandle(font.Handle());
    copy.SetColor(font.Color());
    EXPECT_TRUE(copy.Equals(font));
}

TEST(Font, FaceNamesBeyondTheSystemsLimitAreCut) {
    TFont font;
    font.SetName(std::string(500, 'x'));
    LOGFONTA look = {};
    ASSERT_NE(GetObjectA(font.Handle(), sizeof(look), &look), 0);
    EXPECT_EQ(std::string(look.lfFaceName), std::string(LF_FACESIZE - 1, 'x'));
}

TEST(Font, TellsOfEachChangeOnce) {
    TFont font;
    int changes = 0;
    font.SetOnChange([&](TObject* sender) {
        EXPECT_EQ(sender, &font);
        ++changes;
    });
    font.SetColor(clRed);
    font.SetColor(clRed);
    EXPECT_EQ(changes, 1);
    TFont other;
    other.SetName("Tahoma");
    font.Assign(&other);
    EXPECT_EQ(changes, 2);
    EXPECT_TRUE(font.Equals(other));
    EXPECT_THROW(font.Assign(nullptr), EConvertError);
    EXPECT_THROW(font.SetHandle(nullptr), EInvalidOperation);
}

TEST(Font, PublishesItsPropertiesWithIdentifiers) {
    TFont font;
    SetOrdProp(font, "Color", clBtnText);
    SetSetProp(font, "Style", "[fsBold,fsItalic]");
    SetStrProp(font, "Name", "Courier New");
    EXPECT_EQ(font.Color(), clBtnText);
    EXPECT_EQ(font.Style(), (TFontStyles{fsBold, fsItalic}));
    EXPECT_EQ(font.Name(), "Courier New");
    EXPECT_EQ(GetPropInfo(font, "Charset").Idents->Find("ansi_charset"), ANSI_CHARSET);
    EXPECT_THROW(SetOrdProp(font, "Charset", 256), ERangeError);
}

TEST(Tools, ThatLookTheSameShareTheSystemsObject) {
    TBrush a;
    TBrush b;
    a.SetColor(static_cast<TColor>(0x123456));
    b.SetColor(static_cast<TColor>(0x123456));
    EXPECT_EQ(a.Handle(), b.Handle());
    b.SetColor(clRed);
    EXPECT_NE(a.Handle(), b.Handle());
    TPen pen;
    TPen other;
    other.Assign(&pen);
    EXPECT_EQ(pen.Handle(), other.Handle());
    other.SetWidth(3);
    LOGPEN look = {};
    ASSERT_NE(GetObjectA(other.Handle(), sizeof(look), &look), 0);
    EXPECT_EQ(look.lopnWidth.x, 3);
}

TEST(Tools, AThousandLooksLeaveNothingBehind) {
    const auto work = [] {
        TBitmap bitmap(8, 8);
        for (int i = 0; i < 1000; ++i) {
            TCanvas& canvas = bitmap.Canvas();
            canvas.Brush().SetColor(static_cast<TColor>(i));
            canvas.Pen().SetColor(static_cast<TColor>(i));
            canvas.Font().SetHeight(-(i % 40) - 1);
            canvas.Rectangle(0, 0, 8, 8);
            canvas.TextOut(0, 0, "x");
        }
    };
    EXPECT_EQ(LeftBehind(work, GdiCensus), "");
}

TEST(Brush, ColorMakesAClearBrushSolid) {
    TBrush brush;
    brush.SetStyle(bsClear);
    brush.SetColor(clRed);
    EXPECT_EQ(brush.Style(), bsSolid);
    LOGBRUSH look = {};
    brush.SetStyle(bsDiagCross);
    ASSERT_NE(GetObjectA(brush.Handle(), sizeof(look), &look), 0);
    EXPECT_EQ(look.lbStyle, UINT{BS_HATCHED});
    EXPECT_EQ(look.lbHatch, ULONG_PTR{HS_DIAGCROSS});
}

// --- Canvas

class Canvas : public testing::Test {
protected:
    Canvas() : Bitmap(20, 10) {
        Bitmap.Canvas().Brush().SetColor(clWhite);
        Bitmap.Canvas().FillRect({0, 0, 20, 10});
    }

    TColor At(int x, int y) { return Bitmap.Canvas().Pixels(x, y); }
    int Count(TColor color) {
        int count = 0;
        for (int y = 0; y < Bitmap.Height(); ++y) {
            for (int x = 0; x < Bitmap.Width(); ++x) {
                count += At(x, y) == color;
            }
        }
        return count;
    }

    TBitmap Bitmap;
};

TEST_F(Canvas, LinesEndBeforeTheirLastPoint) {
    TCanvas& canvas = Bitmap.Canvas();
    canvas.Pen().SetColor(clRed);
    canvas.MoveTo(2, 3);
    canvas.LineTo(6, 3);
    EXPECT_EQ(At(2, 3), clRed);
    EXPECT_EQ(At(5, 3), clRed);
    EXPECT_EQ(At(6, 3), clWhite);
    EXPECT_EQ(Count(clRed), 4);
    EXPECT_EQ(canvas.PenPos(), (TPoint{6, 3}));
}

TEST_F(Canvas, RectanglesLieInsideTheirBounds) {
    TCanvas& canvas = Bitmap.Canvas();
    canvas.Pen().SetColor(clRed);
    canvas.Brush().SetColor(clBlue);
    canvas.Rectangle(1, 1, 6, 5);
    EXPECT_EQ(Count(clRed), 14);
    EXPECT_EQ(Count(clBlue), 6);
    EXPECT_EQ(At(1, 1), clRed);
    EXPECT_EQ(At(5, 4), clRed);
    EXPECT_EQ(At(2, 2), clBlue);
    EXPECT_EQ(At(6, 5), clWhite);
}

TEST_F(Canvas, AClearBrushLeavesTheInsideAlone) {
    TCanvas& canvas = Bitmap.Canvas();
    canvas.Pen().SetColor(clRed);
    canvas.Brush().SetStyle(bsClear);
    canvas.Rectangle(1, 1, 6, 5);
    EXPECT_EQ(At(2, 2), clWhite);
    canvas.FillRect({0, 0, 20, 10});
    EXPECT_EQ(Count(clRed), 14);
}

TEST_F(Canvas, FrameRectIsOnePixelOfTheBrush) {
    TCanvas& canvas = Bitmap.Canvas();
    canvas.Pen().SetColor(clRed);
    canvas.Brush().SetColor(clBlue);
    canvas.FrameRect({2, 2, 6, 6});
    EXPECT_EQ(Count(clBlue), 12);
    EXPECT_EQ(Count(clRed), 0);
    EXPECT_EQ(At(3, 3), clWhite);
}

TEST_F(Canvas, ADrawnFocusRectangleGoesWhenItIsDrawnAgain) {
    TCanvas& canvas = Bitmap.Canvas();
    canvas.DrawFocusRect({2, 2, 12, 8});
    EXPECT_LT(Count(clWhite), 200);
    EXPECT_GT(Count(clWhite), 150);
    canvas.DrawFocusRect({2, 2, 12, 8});
    EXPECT_EQ(Count(clWhite), 200);
}

TEST_F(Canvas, PolygonsAndEllipsesAreFilled) {
    TCanvas& canvas = Bitmap.Canvas();
    canvas.Pen().SetColor(clRed);
    canvas.Brush().SetColor(clRed);
    const TPoint corners[] = {{1, 1}, {4, 1}, {4, 4}, {1, 4}};
    canvas.Polygon(corners);
    EXPECT_EQ(Count(clRed), 16);
    canvas.Pen().SetColor(clBlue);
    canvas.Polyline(corners);
    EXPECT_EQ(At(1, 1), clBlue);
    EXPECT_EQ(At(1, 3), clRed) << "polylines are not closed";
    canvas.Brush().SetColor(clGreen);
    canvas.Ellipse({8, 0, 18, 10});
    EXPECT_EQ(At(13, 5), clGreen);
    EXPECT_EQ(At(8, 0), clWhite);
}

TEST_F(Canvas, PenModesCombineWithWhatIsThere) {
    TCanvas& canvas = Bitmap.Canvas();
    canvas.Pen().SetMode(pmXor);
    canvas.Pen().SetColor(clWhite);
    canvas.MoveTo(0, 0);
    canvas.LineTo(4, 0);
    EXPECT_EQ(Count(clBlack), 4);
    canvas.MoveTo(0, 0);
    canvas.LineTo(4, 0);
    EXPECT_EQ(Count(clBlack), 0);
    canvas.Pen().SetMode(pmCopy);
    canvas.Pen().SetColor(clRed);
    canvas.LineTo(8, 0);
    EXPECT_EQ(Count(clRed), 4);
}

TEST_F(Canvas, TextTakesTheSizeThatItIsSaidToHave) {
    Bitmap.SetSize(200, 40);
    TCanvas& canvas = Bitmap.Canvas();
    canvas.Brush().SetColor(clWhite);
    canvas.FillRect({0, 0, 200, 40});
    canvas.Font().SetColor(clBlack);
    canvas.Font().SetHeight(-16);
    const TPoint size = canvas.TextExtent("Hello");
    EXPECT_EQ(canvas.TextWidth("Hello"), size.X);
    EXPECT_EQ(canvas.TextHeight("Hello"), size.Y);
    EXPECT_GE(size.Y, 16);
    canvas.Brush().SetColor(clYellow); // the background of the text shows how far it reaches
    canvas.TextOut(10, 5, "Hello");
    EXPECT_EQ(canvas.PenPos(), (TPoint{10 + size.X, 5}));
    EXPECT_EQ(At(10, 5), clYellow);
    EXPECT_EQ(At(10 + size.X - 1, 5 + size.Y - 1), clYellow);
    EXPECT_EQ(At(10 + size.X, 5), clWhite);
    EXPECT_EQ(At(9, 5), clWhite);
    EXPECT_GT(Count(clBlack), 20);
    EXPECT_EQ(canvas.TextExtent(""), (TPoint{0, 0}));
}

TEST_F(Canvas, TextRectClipsAndFills) {
    Bitmap.SetSize(60, 30);
    TCanvas& canvas = Bitmap.Canvas();
    canvas.Brush().SetColor(clWhite);
    canvas.FillRect({0, 0, 60, 30});
    canvas.Brush().SetColor(clYellow);
    canvas.TextRect({10, 10, 30, 20}, 5, 5, "WWWWWWWWWWWWWW");
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 60; ++x) {
            const bool inside = x >= 10 && x < 30 && y >= 10 && y < 20;
            ASSERT_TRUE(inside || At(x, y) == clWhite) << x << "," << y;
        }
    }
    EXPECT_GT(Count(clYellow), 0);
    canvas.Brush().SetColor(clWhite);
    canvas.FillRect({0, 0, 60, 30});
    canvas.Brush().SetStyle(bsClear);
    canvas.TextRect({10, 10, 30, 20}, 100, 100, "W");
    EXPECT_EQ(Count(clWhite), 60 * 30) << "a clear brush fills nothing";
}

TEST_F(Canvas, MeasuresFormattedText) {
    TRect rect{0, 0, 10, 0};
    const TPoint word = Bitmap.Canvas().TextExtent("word");
    EXPECT_EQ(Bitmap.Canvas().DrawText("word\r\nword", rect, DT_CALCRECT), 2 * word.Y);
    EXPECT_EQ(rect.Bottom, 2 * word.Y);
    EXPECT_EQ(rect.Right, word.X);
    rect = {0, 0, 10, 0};
    Bitmap.Canvas().DrawText("", rect, DT_CALCRECT);
    EXPECT_EQ(rect.Right, 0);
}

TEST_F(Canvas, CopiesPartsOfOthers) {
    TBitmap other(4, 4);
    other.Canvas().Brush().SetColor(clRed);
    other.Canvas().FillRect({0, 0, 4, 4});
    other.Canvas().SetPixel(3, 3, clBlue);
    Bitmap.Canvas().CopyRect({10, 2, 12, 4}, other.Canvas(), {2, 2, 4, 4});
    EXPECT_EQ(Count(clRed), 3);
    EXPECT_EQ(At(11, 3), clBlue);
    Bitmap.Canvas().SetCopyMode(DSTINVERT);
    Bitmap.Canvas().CopyRect({10, 2, 12, 4}, other.Canvas(), {2, 2, 4, 4});
    EXPECT_EQ(At(10, 2), clAqua);
}

TEST_F(Canvas, CopiedIntoBlackAndWhiteTheBrushColorBecomesWhite) {
    Bitmap.Canvas().SetPixel(1, 1, clRed);
    Bitmap.Canvas().SetPixel(2, 2, clGray);
    TBitmap mono;
    mono.SetMonochrome(true);
    mono.SetSize(20, 10);
    Bitmap.Canvas().Brush().SetColor(clRed);
    mono.Canvas().CopyRect({0, 0, 20, 10}, Bitmap.Canvas(), {0, 0, 20, 10});
    EXPECT_EQ(mono.Canvas().Pixels(1, 1), clWhite);
    EXPECT_EQ(mono.Canvas().Pixels(2, 2), clBlack);
    EXPECT_EQ(mono.Canvas().Pixels(0, 0), clBlack);
}

TEST_F(Canvas, PixelsOutsideAreNoColor) {
    EXPECT_EQ(At(20, 0), static_cast<TColor>(-1));
    EXPECT_EQ(At(-1, 0), static_cast<TColor>(-1));
    EXPECT_EQ(Bitmap.Canvas().ClipRect(), (TRect{0, 0, 20, 10}));
}

TEST_F(Canvas, LeavesAContextWithTheToolsThatItHad) {
    const unique_hdc dc(CreateCompatibleDC(nullptr));
    const HGDIOBJ pen = GetCurrentObject(dc.get(), OBJ_PEN);
    const HGDIOBJ brush = GetCurrentObject(dc.get(), OBJ_BRUSH);
    const HGDIOBJ font = GetCurrentObject(dc.get(), OBJ_FONT);
    {
        TCanvas canvas;
        canvas.SetHandle(dc.get());
        EXPECT_EQ(canvas.Handle(), dc.get());
        EXPECT_EQ(GetCurrentObject(dc.get(), OBJ_PEN), canvas.Pen().Handle());
        EXPECT_EQ(GetCurrentObject(dc.get(), OBJ_BRUSH), canvas.Brush().Handle());
        EXPECT_EQ(GetCurrentObject(dc.get(), OBJ_FONT), canvas.Font().Handle());
        canvas.Font().SetHeight(-40);
        canvas.TextWidth("x");
        EXPECT_EQ(GetCurrentObject(dc.get(), OBJ_FONT), canvas.Font().Handle());
    }
    EXPECT_EQ(GetCurrentObject(dc.get(), OBJ_PEN), pen);
    EXPECT_EQ(GetCurrentObject(dc.get(), OBJ_BRUSH), brush);
    EXPECT_EQ(GetCurrentObject(dc.get(), OBJ_FONT), font);
}

TEST_F(Canvas, WithoutAContextRefusesToDraw) {
    TCanvas canvas;
    try {
        canvas.LineTo(1, 1);
        FAIL();
    } catch (const EInvalidOperation& e) {
        EXPECT_EQ(e.Message(), "Canvas does not allow drawing");
    }
    EXPECT_FALSE(canvas.HandleAllocated());
}

TEST_F(Canvas, TellsBeforeAndAfterEachDrawing) {
    std::string calls;
    Bitmap.Canvas().SetOnChanging([&](TObject*) { calls += "<"; });
    Bitmap.Canvas().SetOnChange([&](TObject*) { calls += ">"; });
    Bitmap.Canvas().FillRect({0, 0, 1, 1});
    Bitmap.Canvas().LineTo(1, 1);
    Bitmap.Canvas().TextWidth("x");
    EXPECT_EQ(calls, "<><>");
}

TEST_F(Canvas, SizesBeyondTheNumbersAreErrors) {
    TBitmap picture(4, 4);
    TBitmap holes(4, 4);
    holes.SetTransparent(true);
    TIcon icon;
    icon.SetHandle(CopyIcon(LoadIconA(nullptr, LPCSTR{IDI_APPLICATION})));
    TCanvas& canvas = Bitmap.Canvas();
    const TRect wide{INT32_MIN, 0, INT32_MAX, 4};
    const TRect high{0, INT32_MIN, 4, INT32_MAX};
    for (const TGraphic* graphic : std::initializer_list<const TGraphic*>{&picture, &holes, &icon}) {
        EXPECT_THROW(canvas.Draw(INT32_MAX, 0, *graphic), EIntOverflow);
        EXPECT_THROW(canvas.Draw(0, INT32_MAX, *graphic), EIntOverflow);
        EXPECT_THROW(canvas.StretchDraw(wide, *graphic), EIntOverflow);
        EXPECT_THROW(canvas.StretchDraw(high, *graphic), EIntOverflow);
    }
    const TRect fits{0, 0, 4, 4};
    int changes = 0;
    canvas.SetOnChanging([&](TObject*) { ++changes; });
    for (const TRect& rect : {wide, high}) {
        EXPECT_THROW(canvas.CopyRect(rect, picture.Canvas(), fits), EIntOverflow);
        EXPECT_THROW(canvas.CopyRect(fits, picture.Canvas(), rect), EIntOverflow);
    }
    EXPECT_EQ(changes, 0);
}

} // namespace
} // namespace kx
