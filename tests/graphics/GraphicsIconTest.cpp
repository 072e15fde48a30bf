// SPDX-License-Identifier: MIT
// Icons.

#include "GraphicsSamples.h"
#include "kx/win/FileStreams.h"
#include "support/TempFolder.h"
#include "tests/support/Census.h"
#include "tests/support/Cycles.h"

#include <array>
#include <gtest/gtest.h>

namespace kx {
namespace {

using namespace test;

/// What the icon shows on a ground of that colour.
std::string Picture(const TIcon& icon, TColor ground) {
    TBitmap bitmap;
    bitmap.SetPixelFormat(pf24bit);
    bitmap.Canvas().Brush().SetColor(ground);
    bitmap.SetSize(icon.Width(), icon.Height());
    bitmap.Canvas().Draw(0, 0, icon);
    TMemoryStream stream;
    bitmap.SaveToStream(stream);
    return std::string(stream.Bytes());
}

TEST(Icon, IsEmptyAtFirstAndOfTheSystemsLargeSize) {
    const TIcon icon;
    EXPECT_TRUE(icon.Empty());
    EXPECT_EQ(icon.Handle(), nullptr);
    EXPECT_EQ(icon.Width(), GetSystemMetrics(SM_CXICON));
    EXPECT_EQ(icon.Height(), GetSystemMetrics(SM_CYICON));
    TBitmap bitmap(4, 4);
    bitmap.Canvas().Draw(0, 0, icon);
    TMemoryStream stream;
    EXPECT_THROW(icon.SaveToStream(stream), EInvalidOperation);
    EXPECT_EQ(stream.Size(), 0);
}

TEST(Icon, DrawsItsColorsAndLeavesOutItsMask) {
    TIcon icon;
    Load(icon, IconFile({{32, clRed}}));
    EXPECT_EQ(icon.Width(), 32);
    TBitmap bitmap(40, 40);
    bitmap.Canvas().Brush().SetColor(clTeal);
    bitmap.Canvas().FillRect({0, 0, 40, 40});
    bitmap.Canvas().Draw(4, 4, icon);
    EXPECT_EQ(bitmap.Canvas().Pixels(4 + 15, 20), clTeal);
    EXPECT_EQ(bitmap.Canvas().Pixels(4 + 16, 20), clRed);
    EXPECT_EQ(bitmap.Canvas().Pixels(4 + 31, 35), clRed);
    EXPECT_EQ(bitmap.Canvas().Pixels(4 + 32, 35), clTeal);
    bitmap.Canvas().StretchDraw({0, 0, 8, 8}, icon);
    EXPECT_EQ(bitmap.Canvas().Pixels(5, 1), clRed);
}

TEST(Icon, ShowsThePictureOfItsFileThatIsNearestInSize) {
    TIcon icon;
    const TBytes file = IconFile({{16, clRed}, {32, clLime}, {48, clBlue}});
    icon.SetWidth(16);
    icon.SetHeight(16);
    Load(icon, file);
    EXPECT_EQ(icon.Width(), 16);
    EXPECT_EQ(icon.Height(), 16);
    TBitmap bitmap(48, 48);
    bitmap.Canvas().Draw(0, 0, icon);
    EXPECT_EQ(bitmap.Canvas().Pixels(12, 5), clRed);
    icon.SetWidth(48);
    icon.SetHeight(48);
    EXPECT_EQ(icon.Width(), 48);
    bitmap.Canvas().Draw(0, 0, icon);
    EXPECT_EQ(bitmap.Canvas().Pixels(40, 5), clBlue);
    EXPECT_EQ(Saved(icon), file.Text()) << "all pictures of the file are kept";
}

TEST(Icon, OfSeveralPicturesOfASizeTheOneWithMoreColorsIsShown) {
    TBytes mono = DibHeader(32, 64, 1).Bytes({0, 0, 0, 0, 255, 255, 255, 0});
    for (int i = 0; i < 256; ++i) {
        mono.Bytes({0});
    }
    const TBytes color = IconPicture(32, clLime);
    TBytes file;
    file.Add(WORD{0}).Add(WORD{1}).Add(WORD{2});
    file.Bytes({32, 32, 2, 0}).Add(WORD{0}).Add(WORD{0}).Add(static_cast<DWORD>(mono.Size())).Add(DWORD{38});
    file.Bytes({32, 32, 0, 0}).Add(WORD{0}).Add(WORD{0}).Add(static_cast<DWORD>(color.Size()));
    file.Add(static_cast<DWORD>(38 + mono.Size())).Add(mono).Add(color);
    TIcon icon;
    icon.SetWidth(32);
    icon.SetHeight(32);
    Load(icon, file);
    TBitmap bitmap(32, 32);
    bitmap.Canvas().Draw(0, 0, icon);
    EXPECT_EQ(bitmap.Canvas().Pixels(20, 5), clLime);
}

TEST(Icon, AnAdoptedHandleIsFreedAndStoredAsAFile) {
    const auto adopt = [] {
        TIcon loaded;
        Load(loaded, IconFile({{32, clRed}}));
        TIcon icon;
        const HICON handle = CopyIcon(loaded.Handle());
        icon.SetHandle(handle);
        EXPECT_EQ(icon.Handle(), handle);
        EXPECT_EQ(icon.Width(), 32);
        EXPECT_THROW(icon.SetWidth(16), EInvalidOperation);

        TIcon again;
        TMemoryStream stream(Saved(icon));
        again.LoadFromStream(stream);
        EXPECT_EQ(Picture(again, clTeal), Picture(loaded, clTeal));
        EXPECT_EQ(Picture(again, clYellow), Picture(icon, clYellow));
    };
    EXPECT_EQ(LeftBehind(adopt, GdiCensus), "");
}

TEST(Icon, IconsOfTheSystemSurviveAFile) {
    for (const LPCSTR name : {LPCSTR{IDI_APPLICATION}, LPCSTR{IDI_WARNING}, LPCSTR{IDI_QUESTION}}) {
        TIcon icon;
        icon.SetHandle(CopyIcon(LoadIconA(nullptr, name)));
        ASSERT_FALSE(icon.Empty());
        TIcon again;
        TMemoryStream stream(Saved(icon));
        again.SetWidth(icon.Width());
        again.SetHeight(icon.Height());
        again.LoadFromStream(stream);
        EXPECT_EQ(Picture(again, clTeal), Picture(icon, clTeal));
        EXPECT_EQ(Picture(again, clWhite), Picture(icon, clWhite));
    }
}

TEST(Icon, BlackAndWhiteIconsSurviveAFile) {
    BYTE andMask[32 * 4];
    BYTE xorMask[32 * 4];
    for (int i = 0; i < 32 * 4; ++i) {
        andMask[i] = static_cast<BYTE>(i % 4 < 2 ? 0xFF : 0);
        xorMask[i] = static_cast<BYTE>(i < 64 && i % 4 >= 2 ? 0xFF : 0);
    }
    TIcon icon;
    icon.SetHandle(CreateIcon(HInstance(), 32, 32, 1, 1, andMask, xorMask));
    TBitmap bitmap(32, 32);
    bitmap.Canvas().Brush().SetColor(clTeal);
    bitmap.Canvas().FillRect({0, 0, 32, 32});
    bitmap.Canvas().Draw(0, 0, icon);
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 0), clTeal);
    EXPECT_EQ(bitmap.Canvas().Pixels(31, 0), clWhite);
    EXPECT_EQ(bitmap.Canvas().Pixels(31, 31), clBlack);
    TIcon again;
    TMemoryStream stream(Saved(icon));
    again.LoadFromStream(stream);
    EXPECT_EQ(Picture(again, clTeal), Picture(icon, clTeal));
}

TEST(Icon, ReleasingTheHandleEmptiesTheIconAndLeavesItsCopiesTheirs) {
    const TCensus before = GdiCensus();
    {
        TIcon icon;
        Load(icon, IconFile({{32, clRed}}));
        const HICON handle = icon.Handle();
        TIcon copy;
        copy.Assign(&icon);
        EXPECT_EQ(copy.Handle(), handle) << "copies share the handle";
        const unique_hicon released(icon.ReleaseHandle());
        EXPECT_TRUE(icon.Empty());
        EXPECT_NE(released.get(), handle);
        EXPECT_EQ(copy.Handle(), handle);
        EXPECT_EQ(copy.Width(), 32);
        const unique_hicon last(copy.ReleaseHandle());
        EXPECT_EQ(last.get(), handle);
        EXPECT_EQ(copy.ReleaseHandle(), nullptr);
    }
    EXPECT_EQ(Describe(before, GdiCensus()), "");
}

TEST(Icon, AssignsNothingAndRefusesOthers) {
    TIcon icon;
    Load(icon, IconFile({{32, clRed}}));
    int changes = 0;
    icon.SetOnChange([&](TObject*) { ++changes; });
    const TBitmap bitmap;
    EXPECT_THROW(icon.Assign(&bitmap), EConvertError);
    EXPECT_EQ(changes, 0);
    icon.Assign(nullptr);
    EXPECT_TRUE(icon.Empty());
    EXPECT_EQ(changes, 1);
}

TEST(Icon, DamageIsToldAndTheIconKeepsItsPicture) {
    const TBytes good = IconFile({{32, clRed}});
    TIcon icon;
    Load(icon, IconFile({{16, clLime}}));
    const HICON handle = icon.Handle();
    std::vector<TBytes> damaged;
    for (size_t size = 0; size < good.Size(); size += size < 70 ? 1 : 97) {
        damaged.push_back(TBytes(good).Cut(size));
    }
    damaged.push_back(TBytes(good).Set(0, WORD{1}));
    damaged.push_back(TBytes(good).Set(2, WORD{2})); // a cursor
    damaged.push_back(TBytes(good).Set(4, WORD{0}));
    damaged.push_back(TBytes(good).Set(4, WORD{0xFFFF}));
    damaged.push_back(TBytes(good).Set(14, DWORD{0xFFFFFFF0}));
    damaged.push_back(TBytes(good).Set(18, DWORD{0xFFFFFFF0}));
    damaged.push_back(TBytes(good).Set(18, DWORD{static_cast<DWORD>(good.Size() - 10)}));
    for (const LONG side : {LONG{0}, LONG{-1}, LONG{1000}, LONG{0x7FFFFFFF}}) {
        damaged.push_back(TBytes(good).Set(26, side));
        damaged.push_back(TBytes(good).Set(30, side));
    }
    damaged.push_back(TBytes(good).Set(36, WORD{32}));
    damaged.push_back(TBytes(good).Set(36, WORD{0xFFFF}));
    damaged.push_back(TBytes(good).Set(38, DWORD{1}));
    for (const DWORD header : {0u, 12u, 39u, 125u, 4096u, 0xFFFFFFFFu}) { // sizes of headers that no icon has
        damaged.push_back(TBytes(good).Set(22, header));
    }
    // A later header makes the picture longer than its bytes.
    damaged.push_back(TBytes(good).Set(22, DWORD{sizeof(BITMAPV5HEADER)}));
    const auto png = [&](int width, int height) {
        return TBytes(good)
            .Set(22, std::array<uint8_t, 8>{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'})
            .Set(30, std::array<uint8_t, 8>{0, 0, 0, 13, 'I', 'H', 'D', 'R'})
            .Set(38, std::array<uint8_t, 4>{0, 0, static_cast<uint8_t>(width >> 8), static_cast<uint8_t>(width)})
            .Set(42, std::array<uint8_t, 4>{0, 0, static_cast<uint8_t>(height >> 8), static_cast<uint8_t>(height)});
    };
    for (const int side : {0, 1025, 0xFFFF}) {
        damaged.push_back(png(side, 16));
        damaged.push_back(png(16, side));
    }
    damaged.push_back(png(16, 16)); // nothing behind its header
    for (size_t i = 0; i < damaged.size(); ++i) {
        EXPECT_THROW(Load(icon, damaged[i]), EInvalidImage) << i;
        ASSERT_EQ(icon.Handle(), handle);
    }
    try {
        Load(icon, damaged[0]);
    } catch (const EInvalidImage& e) {
        EXPECT_EQ(e.Message(), "Icon image is not valid");
    }
}

TEST(Icon, ALaterHeaderOfItsPictureIsChecked) {
    // The header of 40 bytes, and zeros up to the size of a later one.
    const auto later = [](size_t size, int side) {
        const TBytes plain = IconPicture(32, clRed);
        TBytes picture = DibHeader(side, side * 2, 24).Set(0, static_cast<DWORD>(size));
        while (picture.Size() < size) {
            picture.Bytes({0});
        }
        for (size_t i = sizeof(BITMAPINFOHEADER); i < plain.Size(); ++i) {
            picture.Bytes({plain.Text()[i]});
        }
        TBytes file;
        file.Add(WORD{0}).Add(WORD{1}).Add(WORD{1}).Bytes({32, 32, 0, 0}).Add(WORD{1}).Add(WORD{24});
        return file.Add(static_cast<DWORD>(picture.Size())).Add(DWORD{22}).Add(picture);
    };
    for (const size_t size : {sizeof(BITMAPV4HEADER), sizeof(BITMAPV5HEADER)}) {
        TIcon icon;
        EXPECT_THROW(Load(icon, later(size, 33)), EInvalidImage) << size << ": more than there is";
        EXPECT_TRUE(icon.Empty());
        try { // the system may know it or not
            Load(icon, later(size, 32));
            EXPECT_EQ(icon.Width(), 32);
        } catch (const EInvalidImage&) {
            EXPECT_TRUE(icon.Empty());
        }
    }
}

TEST(Icon, IsWrittenAndReadOnDisk) {
    const TTempFolder folder;
    const std::string name = folder.AddFile("picture.ico", IconFile({{32, clRed}}).Text());
    TIcon icon;
    icon.LoadFromFile(name);
    icon.SaveToFile(folder.Path("copy.ico"));
    TIcon copy;
    copy.LoadFromFile(folder.Path("copy.ico"));
    EXPECT_EQ(Saved(copy), Saved(icon));
    folder.AddFile("text.ico", "no icon");
    EXPECT_THROW(icon.LoadFromFile(folder.Path("text.ico")), EInvalidImage);
    EXPECT_THROW(icon.LoadFromFile(folder.Path("none.ico")), EFOpenError);
    EXPECT_FALSE(icon.Empty());
    const TIcon empty;
    EXPECT_THROW(empty.SaveToFile(name), EInvalidOperation);
    icon.LoadFromFile(name);
}

TEST(Icon, AThousandLivesLeaveNothingBehind) {
    const TBytes file = IconFile({{16, clRed}, {32, clBlue}});
    const auto work = [&] {
        for (int i = 0; i < 1000; ++i) {
            TIcon icon;
            Load(icon, file);
            TIcon copy;
            copy.Assign(&icon);
            copy.SetWidth(16);
            icon.SetHandle(copy.ReleaseHandle());
            EXPECT_EQ(icon.Width(), 16);
        }
    };
    EXPECT_EQ(LeftBehind(work, [] { return GdiCensus() + HeapCensus(); }), "");
}

} // namespace
} // namespace kx
