// SPDX-License-Identifier: MIT
// Bitmaps.

#include "GraphicsSamples.h"
#include "kx/win/FileStreams.h"
#include "support/TempFolder.h"
#include "tests/support/Census.h"
#include "tests/support/Cycles.h"

#include <gtest/gtest.h>

namespace kx {
namespace {

using namespace test;

TBitmap& Filled(TBitmap& bitmap, TColor color) {
    bitmap.Canvas().Brush().SetColor(color);
    bitmap.Canvas().FillRect({0, 0, bitmap.Width(), bitmap.Height()});
    return bitmap;
}

// --- Size and form

TEST(Bitmap, IsEmptyUntilItHasBothWidthAndHeight) {
    TBitmap bitmap;
    EXPECT_TRUE(bitmap.Empty());
    EXPECT_EQ(bitmap.Handle(), nullptr);
    bitmap.SetWidth(7);
    EXPECT_TRUE(bitmap.Empty());
    EXPECT_EQ(bitmap.Width(), 7);
    bitmap.SetHeight(5);
    EXPECT_FALSE(bitmap.Empty());
    EXPECT_EQ(bitmap.Width(), 7);
    EXPECT_EQ(bitmap.Height(), 5);
    bitmap.SetHeight(0);
    EXPECT_TRUE(bitmap.Empty());
    EXPECT_EQ(bitmap.Width(), 7);
    EXPECT_THROW(bitmap.SetWidth(-1), EInvalidOperation);
}

TEST(Bitmap, KeepsWhatFitsAndFillsTheRestWithTheBrush) {
    TBitmap bitmap(2, 2);
    Filled(bitmap, clRed);
    bitmap.Canvas().Brush().SetColor(clYellow);
    bitmap.SetSize(4, 3);
    EXPECT_EQ(bitmap.Canvas().Pixels(1, 1), clRed);
    EXPECT_EQ(bitmap.Canvas().Pixels(2, 1), clYellow);
    EXPECT_EQ(bitmap.Canvas().Pixels(3, 2), clYellow);
    bitmap.SetSize(1, 1);
    bitmap.SetSize(2, 2);
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 0), clRed);
    EXPECT_EQ(bitmap.Canvas().Pixels(1, 1), clYellow);
}

TEST(Bitmap, ASizeBeyondAllMemoryIsRefusedAndChangesNothing) {
    TBitmap bitmap(2, 2);
    EXPECT_THROW(bitmap.SetSize(0x7FFFFFFF, 0x7FFFFFFF), EOutOfMemory);
    EXPECT_EQ(bitmap.Width(), 2);
    EXPECT_EQ(bitmap.Height(), 2);
}

TEST(Bitmap, EveryFormatKeepsItsPixels) {
    for (const TPixelFormat format : {pfDevice, pf4bit, pf8bit, pf15bit, pf16bit, pf24bit, pf32bit}) {
        TBitmap bitmap(3, 3);
        Filled(bitmap, clBlue);
        bitmap.Canvas().SetPixel(1, 1, clYellow);
        bitmap.SetPixelFormat(format);
        EXPECT_EQ(bitmap.PixelFormat(), format);
        EXPECT_EQ(bitmap.HandleType(), format == pfDevice ? bmDDB : bmDIB);
        EXPECT_EQ(bitmap.Canvas().Pixels(0, 0), clBlue) << format;
        EXPECT_EQ(bitmap.Canvas().Pixels(1, 1), clYellow) << format;
        bitmap.SetSize(5, 5);
        EXPECT_EQ(bitmap.PixelFormat(), format);
        EXPECT_EQ(bitmap.Canvas().Pixels(1, 1), clYellow) << format;
        TBitmap copy;
        copy.Assign(&bitmap);
        EXPECT_EQ(copy.PixelFormat(), format);
        EXPECT_EQ(copy.Canvas().Pixels(1, 1), clYellow) << format;
    }
    TBitmap bitmap;
    EXPECT_THROW(bitmap.SetPixelFormat(pfCustom), EInvalidImage);
}

TEST(Bitmap, MadeMonochromeTheBrushColorBecomesWhiteAndAllElseBlack) {
    TBitmap bitmap(3, 1);
    Filled(bitmap, clRed);
    bitmap.Canvas().SetPixel(1, 0, clBlack);
    bitmap.Canvas().SetPixel(2, 0, clWhite);
    bitmap.Canvas().Brush().SetColor(clBlack);
    bitmap.SetMonochrome(true);
    EXPECT_TRUE(bitmap.Monochrome());
    EXPECT_EQ(bitmap.PixelFormat(), pf1bit);
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 0), clBlack);
    EXPECT_EQ(bitmap.Canvas().Pixels(1, 0), clWhite);
    EXPECT_EQ(bitmap.Canvas().Pixels(2, 0), clBlack);
}

TEST(Bitmap, BackInColorsWhiteBecomesTheBrushColorAndBlackTheFonts) {
    TBitmap bitmap;
    bitmap.SetMonochrome(true);
    bitmap.SetSize(2, 1);
    bitmap.Canvas().SetPixel(1, 0, clBlack);
    bitmap.Canvas().Brush().SetColor(clYellow);
    bitmap.Canvas().Font().SetColor(clBlue);
    bitmap.SetMonochrome(false);
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 0), clYellow);
    EXPECT_EQ(bitmap.Canvas().Pixels(1, 0), clBlue);
    EXPECT_EQ(bitmap.PixelFormat(), pfDevice);
}

TEST(Bitmap, ChangesBetweenDeviceAndMemory) {
    TBitmap bitmap;
    Load(bitmap, Bitmap4());
    EXPECT_EQ(bitmap.HandleType(), bmDIB);
    bitmap.SetHandleType(bmDDB);
    EXPECT_EQ(bitmap.PixelFormat(), pfDevice);
    EXPECT_EQ(bitmap.Canvas().Pixels(1, 0), Color4(2));
    bitmap.SetHandleType(bmDIB);
    EXPECT_EQ(bitmap.PixelFormat(), pf24bit);
    EXPECT_EQ(bitmap.Canvas().Pixels(1, 0), Color4(2));
}

// --- Handle and canvas

TEST(Bitmap, ItsHandleIsFreeToBeSelectedWhileItsCanvasIsInUse) {
    TBitmap bitmap(2, 2);
    Filled(bitmap, clRed);
    const HBITMAP image = bitmap.Handle();
    {
        const unique_hdc dc(CreateCompatibleDC(nullptr));
        const TSelectObject selected(dc.get(), image);
        EXPECT_EQ(GetPixel(dc.get(), 0, 0), static_cast<COLORREF>(clRed));
    }
    bitmap.Canvas().SetPixel(0, 0, clBlue);
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 0), clBlue);
    EXPECT_EQ(bitmap.Handle(), image) << "drawing makes no new picture";
}

TEST(Bitmap, TakesOverAHandleAndGivesItAway) {
    const TCensus before = GdiCensus();
    {
        TBitmap bitmap;
        bitmap.SetHandle(CreateBitmap(9, 4, 1, 1, nullptr));
        EXPECT_EQ(bitmap.Width(), 9);
        EXPECT_EQ(bitmap.Height(), 4);
        EXPECT_TRUE(bitmap.Monochrome());
        const unique_hbitmap released(bitmap.ReleaseHandle());
        EXPECT_TRUE(released);
        EXPECT_TRUE(bitmap.Empty());
        EXPECT_EQ(bitmap.Width(), 0);
        EXPECT_EQ(bitmap.ReleaseHandle(), nullptr);
        EXPECT_THROW(bitmap.SetHandle(reinterpret_cast<HBITMAP>(GetStockObject(BLACK_PEN))), EInvalidImage);
    }
    EXPECT_EQ(Describe(before, GdiCensus()), "");
}

TEST(Bitmap, TellsOfChangesIncludingThoseOfItsCanvas) {
    TBitmap bitmap(2, 2);
    int changes = 0;
    bitmap.SetOnChange([&](TObject* sender) {
        EXPECT_EQ(sender, &bitmap);
        ++changes;
    });
    bitmap.SetModified(false);
    bitmap.Canvas().FillRect({0, 0, 1, 1});
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(bitmap.Modified());
    bitmap.SetWidth(3);
    EXPECT_EQ(changes, 2);
    bitmap.Assign(nullptr);
    EXPECT_EQ(changes, 3);
    EXPECT_TRUE(bitmap.Empty());
    bitmap.Canvas().Brush().SetColor(clRed);
    EXPECT_EQ(changes, 3) << "a tool is no part of the picture";
}

TEST(Bitmap, ACopyIsItsOwnPicture) {
    TBitmap bitmap(2, 2);
    Filled(bitmap, clRed);
    TBitmap copy;
    copy.Assign(&bitmap);
    copy.Canvas().SetPixel(0, 0, clBlue);
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 0), clRed);
    EXPECT_EQ(copy.Canvas().Pixels(1, 1), clRed);
    bitmap.Assign(&bitmap);
    EXPECT_EQ(bitmap.Width(), 2);
    const TIcon icon;
    EXPECT_THROW(copy.Assign(&icon), EConvertError);
}

// --- Transparency

TEST(Bitmap, ItsTransparentColorIsThatOfTheLowerLeftPixelUntilOneIsSet) {
    TBitmap bitmap(2, 3);
    Filled(bitmap, clRed);
    bitmap.Canvas().SetPixel(0, 2, clLime);
    EXPECT_EQ(bitmap.TransparentColor(), clLime);
    EXPECT_EQ(bitmap.TransparentMode(), tmAuto);
    bitmap.SetTransparentColor(clBlue);
    EXPECT_EQ(bitmap.TransparentColor(), clBlue);
    EXPECT_EQ(bitmap.TransparentMode(), tmFixed);
    bitmap.SetTransparentColor(clDefault);
    EXPECT_EQ(bitmap.TransparentMode(), tmAuto);
    bitmap.SetTransparentMode(tmFixed);
    bitmap.Canvas().SetPixel(0, 2, clBlack);
    EXPECT_EQ(bitmap.TransparentColor(), clLime);
    EXPECT_EQ(TBitmap().TransparentColor(), clDefault);
}

TEST(Bitmap, DrawnTransparentlyItLeavesThatColorOut) {
    TBitmap bitmap(2, 2);
    Filled(bitmap, clRed);
    bitmap.Canvas().SetPixel(0, 1, clFuchsia);
    bitmap.Canvas().SetPixel(1, 0, clFuchsia);
    bitmap.SetTransparent(true);
    TBitmap target(4, 4);
    Filled(target, static_cast<TColor>(0x204060));
    target.Canvas().Draw(1, 1, bitmap);
    EXPECT_EQ(target.Canvas().Pixels(1, 1), clRed);
    EXPECT_EQ(target.Canvas().Pixels(2, 2), clRed);
    EXPECT_EQ(target.Canvas().Pixels(2, 1), static_cast<TColor>(0x204060));
    EXPECT_EQ(target.Canvas().Pixels(1, 2), static_cast<TColor>(0x204060));
    bitmap.SetTransparent(false);
    target.Canvas().Draw(1, 1, bitmap);
    EXPECT_EQ(target.Canvas().Pixels(2, 1), clFuchsia);
}

TEST(Bitmap, DrawnStretchedItRepeatsItsPixels) {
    TBitmap bitmap;
    Load(bitmap, Bitmap24());
    TBitmap target(8, 8);
    target.Canvas().StretchDraw({0, 0, 8, 8}, bitmap);
    EXPECT_EQ(target.Canvas().Pixels(3, 3), clRed);
    EXPECT_EQ(target.Canvas().Pixels(4, 3), clLime);
    EXPECT_EQ(target.Canvas().Pixels(3, 4), clBlue);
    EXPECT_EQ(target.Canvas().Pixels(7, 7), clWhite);
}

TEST(Bitmap, BlackAndWhiteIsDrawnAsThatWhateverTheCanvasesColors) {
    TBitmap mono;
    mono.SetMonochrome(true);
    mono.SetSize(2, 1);
    mono.Canvas().SetPixel(0, 0, clBlack);
    TBitmap target(2, 1);
    target.Canvas().Brush().SetColor(clRed);
    target.Canvas().Font().SetColor(clYellow);
    target.Canvas().Draw(0, 0, mono);
    EXPECT_EQ(target.Canvas().Pixels(0, 0), clBlack);
    EXPECT_EQ(target.Canvas().Pixels(1, 0), clWhite);
    target.Canvas().FillRect({0, 0, 1, 1});
    EXPECT_EQ(target.Canvas().Pixels(0, 0), clRed);
}

TEST(Bitmap, AMaskIsWhereItHadTheColor) {
    TBitmap bitmap;
    Load(bitmap, Bitmap24());
    bitmap.Mask(clBlue);
    EXPECT_TRUE(bitmap.Monochrome());
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 1), clWhite);
    EXPECT_EQ(bitmap.Canvas().Pixels(1, 1), clBlack) << "white is no exception";
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 0), clBlack);
}

// --- Files

TEST(BitmapFile, KeepsDepthColorsAndBytes) {
    for (const TBytes& file : {Bitmap24(), Bitmap4()}) {
        TBitmap bitmap;
        Load(bitmap, file);
        EXPECT_EQ(Saved(bitmap).substr(0, 34), file.Text().substr(0, 34));
        EXPECT_EQ(Saved(bitmap).size(), file.Size());
        TBitmap again;
        TMemoryStream stream(Saved(bitmap));
        again.LoadFromStream(stream);
        EXPECT_EQ(Saved(again), Saved(bitmap));
        EXPECT_EQ(Saved(again).substr(54), file.Text().substr(54));
    }
}

TEST(BitmapFile, ShowsThePixelsOfEachDepth) {
    TBitmap bitmap;
    Load(bitmap, Bitmap24());
    EXPECT_EQ(bitmap.PixelFormat(), pf24bit);
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 0), clRed);
    EXPECT_EQ(bitmap.Canvas().Pixels(1, 0), clLime);
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 1), clBlue);
    EXPECT_EQ(bitmap.Canvas().Pixels(1, 1), clWhite);

    Load(bitmap, Bitmap4());
    EXPECT_EQ(bitmap.PixelFormat(), pf4bit);
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 0), Color4(1));
    EXPECT_EQ(bitmap.Canvas().Pixels(2, 1), Color4(6));

    // 1 bit with colours of its own
    Load(bitmap, BitmapFile(DibHeader(2, 1, 1).Bytes({0, 0, 255, 0, 0, 255, 255, 0}), TBytes().Bytes({0x40, 0, 0, 0})));
    EXPECT_TRUE(bitmap.Monochrome());
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 0), clRed);
    EXPECT_EQ(bitmap.Canvas().Pixels(1, 0), clYellow);

    // 8 bits with only two colours in the file
    Load(bitmap, BitmapFile(DibHeader(2, 1, 8, BI_RGB, 0, 2).Bytes({0, 0, 255, 0, 0, 255, 0, 0}),
                            TBytes().Bytes({1, 0, 0, 0})));
    EXPECT_EQ(bitmap.PixelFormat(), pf8bit);
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 0), clLime);
    EXPECT_EQ(bitmap.Canvas().Pixels(1, 0), clRed);

    // 16 bits, five for each colour
    Load(bitmap, BitmapFile(DibHeader(2, 1, 16), TBytes().Bytes({0x00, 0x7C, 0x1F, 0x00})));
    EXPECT_EQ(bitmap.PixelFormat(), pf15bit);
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 0), clRed);
    EXPECT_EQ(bitmap.Canvas().Pixels(1, 0), clBlue);

    // 16 bits, six for green
    Load(bitmap, BitmapFile(DibHeader(2, 1, 16, BI_BITFIELDS).Add(DWORD{0xF800}).Add(DWORD{0x7E0}).Add(DWORD{0x1F}),
                            TBytes().Bytes({0x00, 0xF8, 0xE0, 0x07})));
    EXPECT_EQ(bitmap.PixelFormat(), pf16bit);
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 0), clRed);
    EXPECT_EQ(bitmap.Canvas().Pixels(1, 0), clLime);
    TBitmap again;
    TMemoryStream stream(Saved(bitmap));
    again.LoadFromStream(stream);
    EXPECT_EQ(again.PixelFormat(), pf16bit);
    EXPECT_EQ(again.Canvas().Pixels(1, 0), clLime);

    // 32 bits, top row first
    Load(bitmap, BitmapFile(DibHeader(1, -2, 32), TBytes().Bytes({0, 0, 255, 0, 255, 0, 0, 0})));
    EXPECT_EQ(bitmap.PixelFormat(), pf32bit);
    EXPECT_EQ(bitmap.Height(), 2);
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 0), clRed);
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 1), clBlue);
}

TEST(BitmapFile, MayBePackedOrOld) {
    // 8 bits, packed: three of colour 1 and one of colour 2; then the end
    TBytes header = DibHeader(4, 1, 8, BI_RLE8, 6, 3).Bytes({0, 0, 0, 0, 0, 0, 255, 0, 0, 255, 0, 0});
    TBitmap bitmap;
    Load(bitmap, BitmapFile(header, TBytes().Bytes({3, 1, 1, 2, 0, 1})));
    EXPECT_EQ(bitmap.Canvas().Pixels(2, 0), clRed);
    EXPECT_EQ(bitmap.Canvas().Pixels(3, 0), clLime);

    // the header of OS/2
    TBytes core;
    core.Add(DWORD{12}).Add(WORD{2}).Add(WORD{1}).Add(WORD{1}).Add(WORD{1}).Bytes({0, 0, 255, 0, 255, 255});
    Load(bitmap, BitmapFile(core, TBytes().Bytes({0x40, 0, 0, 0})));
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 0), clRed);
    EXPECT_EQ(bitmap.Canvas().Pixels(1, 0), clYellow);
}

TEST(BitmapFile, MayStandInALongerStream) {
    TMemoryStream stream(Bitmap24().Text() + Bitmap4().Text() + "rest");
    TBitmap first;
    TBitmap second;
    first.LoadFromStream(stream);
    second.LoadFromStream(stream);
    EXPECT_EQ(first.Width(), 2);
    EXPECT_EQ(second.Width(), 3);
    EXPECT_EQ(stream.Size() - stream.Position(), 4);
}

TEST(BitmapFile, DamageIsToldAndTheBitmapKeepsItsPicture) {
    const TBytes good = Bitmap24();
    std::vector<TBytes> damaged;
    for (size_t size = 1; size < good.Size(); ++size) {
        damaged.push_back(TBytes(good).Cut(size));
    }
    damaged.push_back(TBytes(good).Set(0, 'X'));
    damaged.push_back(TBytes(good).Set(10, DWORD{0xFFFFFFFF}));
    damaged.push_back(TBytes(good).Set(10, DWORD{3}));
    damaged.push_back(TBytes(good).Set(14, DWORD{39}));
    damaged.push_back(TBytes(good).Set(14, DWORD{0x7FFFFFFF}));
    for (const int side : {0, -1, 0x7FFFFFFF, static_cast<int>(0x80000000)}) {
        damaged.push_back(TBytes(good).Set(18, side));
    }
    for (const int side : {0, 0x7FFFFFFF, static_cast<int>(0x80000000)}) {
        damaged.push_back(TBytes(good).Set(22, side));
    }
    damaged.push_back(TBytes(good).Set(26, WORD{2}));
    for (const WORD bits : {WORD{0}, WORD{2}, WORD{25}, WORD{64}}) {
        damaged.push_back(TBytes(good).Set(28, bits));
    }
    damaged.push_back(TBytes(good).Set(30, DWORD{BI_RLE8}));
    damaged.push_back(TBytes(good).Set(30, DWORD{99}));
    damaged.push_back(TBytes(Bitmap4()).Set(10, DWORD{0}).Set(46, DWORD{0x10000000}).Cut(60));
    // packed, and said to be a gigabyte
    damaged.push_back(
        BitmapFile(DibHeader(0x7FFF, 0x7FFF, 8, BI_RLE8, 2, 1).Bytes({0, 0, 0, 0}), TBytes().Bytes({0, 1})));
    TBitmap bitmap(5, 6);
    for (size_t i = 0; i < damaged.size(); ++i) {
        EXPECT_THROW(Load(bitmap, damaged[i]), EInvalidImage) << i;
        ASSERT_EQ(bitmap.Width(), 5);
    }
    try {
        Load(bitmap, damaged[0]);
    } catch (const EInvalidImage& e) {
        EXPECT_EQ(e.Message(), "Bitmap image is not valid");
    }
}

TEST(BitmapFile, IsWrittenAndReadOnDisk) {
    const TTempFolder folder;
    const std::string name = folder.Path("picture.bmp");
    TBitmap bitmap(3, 4);
    Filled(bitmap, clTeal);
    bitmap.SaveToFile(name);
    TBitmap again;
    again.LoadFromFile(name);
    EXPECT_EQ(again.Width(), 3);
    EXPECT_EQ(again.Height(), 4);
    EXPECT_EQ(again.PixelFormat(), pf24bit);
    EXPECT_EQ(again.Canvas().Pixels(2, 3), clTeal);
    EXPECT_THROW(again.LoadFromFile(folder.Path("none.bmp")), EFOpenError);
    EXPECT_EQ(again.Width(), 3);
}

TEST(BitmapFile, MonochromeBitmapsAreWrittenWithOneBit) {
    TBitmap mono;
    mono.SetMonochrome(true);
    mono.SetSize(9, 2);
    mono.Canvas().SetPixel(8, 1, clBlack);
    EXPECT_EQ(Saved(mono).size(), 14u + 40 + 8 + 8);
    TMemoryStream stream(Saved(mono));
    TBitmap again;
    again.LoadFromStream(stream);
    EXPECT_TRUE(again.Monochrome());
    EXPECT_EQ(again.Canvas().Pixels(8, 1), clBlack);
    EXPECT_EQ(again.Canvas().Pixels(7, 1), clWhite);
}

TEST(BitmapResource, ThatIsMissingIsNamed) {
    TBitmap bitmap;
    try {
        bitmap.LoadFromResourceName(HInstance(), "NOSUCHBITMAP");
        FAIL();
    } catch (const EResNotFound& e) {
        EXPECT_EQ(e.Message(), "Resource NOSUCHBITMAP not found");
    }
    EXPECT_THROW(bitmap.LoadFromResourceID(HInstance(), 4712), EResNotFound);
}

TEST(BitmapResource, IsLoadedByNameAndByNumber) {
    TBitmap byName;
    byName.LoadFromResourceName(HInstance(), "SixteenColors");
    EXPECT_EQ(byName.PixelFormat(), pf4bit);
    EXPECT_EQ(byName.Canvas().Pixels(2, 1), Color4(6));
    TBitmap byNumber;
    byNumber.LoadFromResourceID(HInstance(), 4711);
    EXPECT_EQ(Saved(byNumber), Saved(byName));
}

TEST(Bitmap, AThousandLivesLeaveNothingBehind) {
    const auto work = [] {
        for (int i = 0; i < 1000; ++i) {
            TBitmap bitmap(8, 8);
            Filled(bitmap, clRed);
            TBitmap copy;
            copy.Assign(&bitmap);
            copy.SetTransparent(true);
            bitmap.Canvas().Draw(1, 1, copy);
            copy.SetMonochrome(true);
            copy.SetPixelFormat(pf8bit);
            TMemoryStream stream;
            copy.SaveToStream(stream);
            stream.SetPosition(0);
            bitmap.LoadFromStream(stream);
        }
    };
    EXPECT_EQ(LeftBehind(work, [] { return GdiCensus() + HeapCensus(); }), "");
}

} // namespace
} // namespace kx
