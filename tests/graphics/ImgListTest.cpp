// SPDX-License-Identifier: MIT
// Lists of images.

#include "kx/graphics/ImgList.h"
#include "GraphicsSamples.h"
#include "kx/core/Classes.h"
#include "tests/support/Cycles.h"
#include "tests/support/FormFiles.h"

#include <gtest/gtest.h>
#include <objidl.h>

namespace kx {
namespace {

using namespace test;

constexpr auto Ground = static_cast<TColor>(0x204060);

/// A bitmap of one colour with a hole of another: its left column.
TBitmap& Paint(TBitmap& bitmap, int width, int height, TColor color, TColor hole) {
    bitmap.SetSize(width, height);
    bitmap.Canvas().Brush().SetColor(color);
    bitmap.Canvas().FillRect({0, 0, width, height});
    bitmap.Canvas().Brush().SetColor(hole);
    bitmap.Canvas().FillRect({0, 0, 1, height});
    return bitmap;
}

class ImageList : public testing::Test {
protected:
    ImageList() : List(8, 8) { Clear(); }

    void Clear() {
        Target.SetSize(8, 8);
        Target.Canvas().Brush().SetColor(Ground);
        Target.Canvas().FillRect({0, 0, 8, 8});
    }
    TColor At(int x, int y) { return Target.Canvas().Pixels(x, y); }
    int Count(TColor color) {
        int count = 0;
        for (int i = 0; i < 64; ++i) {
            count += At(i % 8, i / 8) == color;
        }
        return count;
    }
    int AddColor(TColor color) {
        TBitmap bitmap;
        return List.AddMasked(&Paint(bitmap, 8, 8, color, clFuchsia), clFuchsia);
    }
    TColor Shown(TImageList& list, int index, int x = 4) {
        Clear();
        list.Draw(Target.Canvas(), 0, 0, index);
        return At(x, 4);
    }

    TImageList List;
    TBitmap Target;
};

TEST_F(ImageList, StartsEmptyWithImagesOfSixteenPixels) {
    TImageList list;
    EXPECT_EQ(list.Width(), 16);
    EXPECT_EQ(list.Height(), 16);
    EXPECT_EQ(list.Count(), 0);
    EXPECT_FALSE(list.HandleAllocated());
    EXPECT_TRUE(list.Masked());
    EXPECT_EQ(list.BkColor(), clNone);
    EXPECT_NE(list.Handle(), nullptr);
}

TEST_F(ImageList, LeavesOutTheMaskColor) {
    EXPECT_EQ(AddColor(clRed), 0);
    EXPECT_EQ(AddColor(clBlue), 1);
    EXPECT_EQ(List.Count(), 2);
    List.Draw(Target.Canvas(), 0, 0, 1);
    EXPECT_EQ(Count(clBlue), 56);
    EXPECT_EQ(Count(Ground), 8);
}

TEST_F(ImageList, ByDefaultTheLowerLeftPixelGivesTheMaskColor) {
    TBitmap bitmap;
    Paint(bitmap, 8, 8, clRed, clLime);
    bitmap.Canvas().SetPixel(0, 7, clYellow);
    bitmap.Canvas().SetPixel(7, 0, clYellow);
    List.AddMasked(&bitmap, clDefault);
    List.Draw(Target.Canvas(), 0, 0, 0);
    EXPECT_EQ(At(0, 7), Ground);
    EXPECT_EQ(At(7, 0), Ground);
    EXPECT_EQ(At(0, 0), clLime);
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 7), clYellow) << "the bitmap itself stays";
}

TEST_F(ImageList, TakesAMaskOfItsOwn) {
    TBitmap bitmap;
    Paint(bitmap, 8, 8, clRed, clRed);
    TBitmap mask;
    mask.SetMonochrome(true); // white all over: transparent
    mask.SetSize(8, 8);
    mask.Canvas().SetPixel(3, 3, clBlack);
    List.Add(&bitmap, &mask);
    List.Draw(Target.Canvas(), 0, 0, 0);
    EXPECT_EQ(Count(clRed), 1);
    EXPECT_EQ(At(3, 3), clRed);
    Clear();
    List.Add(&bitmap, nullptr);
    List.Draw(Target.Canvas(), 0, 0, 1);
    EXPECT_EQ(Count(clRed), 64);
}

TEST_F(ImageList, ABitmapOfSeveralImagesWidthAddsThemAll) {
    TBitmap strip;
    Paint(strip, 24, 8, clRed, clRed);
    strip.Canvas().Brush().SetColor(clBlue);
    strip.Canvas().FillRect({16, 0, 24, 8});
    AddColor(clLime);
    EXPECT_EQ(List.AddMasked(&strip, clFuchsia), 1);
    EXPECT_EQ(List.Count(), 4);
    EXPECT_EQ(Shown(List, 1), clRed);
    EXPECT_EQ(Shown(List, 3), clBlue);
}

TEST_F(ImageList, AnEmptyImageShowsNothing) {
    EXPECT_EQ(List.Add(nullptr, nullptr), 0);
    List.Draw(Target.Canvas(), 0, 0, 0);
    EXPECT_EQ(Count(Ground), 64);
    TBitmap red;
    List.ReplaceMasked(0, &Paint(red, 8, 8, clRed, clFuchsia), clFuchsia);
    EXPECT_EQ(Shown(List, 0), clRed);
    EXPECT_EQ(Shown(List, 0, 0), Ground);
    EXPECT_EQ(List.Count(), 1);
}

TEST_F(ImageList, RefusesImagesThatAreTooSmallAndIndexesThatAreNone) {
    TBitmap small(7, 8);
    EXPECT_THROW(List.Add(&small, nullptr), EInvalidOperation);
    EXPECT_THROW(List.AddMasked(&small, clRed), EInvalidOperation);
    EXPECT_THROW(List.AddIcon(TIcon()), EInvalidOperation);
    AddColor(clRed);
    TBitmap fits(8, 8);
    EXPECT_THROW(List.Replace(1, &fits, nullptr), EInvalidOperation);
    EXPECT_THROW(List.ReplaceMasked(-1, &fits, clRed), EInvalidOperation);
    EXPECT_THROW(List.Delete(1), EInvalidOperation);
    EXPECT_THROW(List.SetWidth(0), EInvalidOperation);
    TBitmap bitmap;
    EXPECT_FALSE(List.GetBitmap(1, bitmap));
    TIcon icon;
    EXPECT_FALSE(List.GetIcon(-1, icon));
    List.Draw(Target.Canvas(), 0, 0, 1);
    List.Draw(Target.Canvas(), 0, 0, -1);
    EXPECT_EQ(Count(Ground), 64);
    EXPECT_EQ(List.Count(), 1);
}

TEST_F(ImageList, DeletedImagesMakeTheOthersMoveUp) {
    AddColor(clRed);
    AddColor(clBlue);
    List.Delete(0);
    EXPECT_EQ(Shown(List, 0), clBlue);
    List.Clear();
    EXPECT_EQ(List.Count(), 0);
}

TEST_F(ImageList, HoldsIcons) {
    TIcon icon;
    icon.SetWidth(8);
    icon.SetHeight(8);
    TMemoryStream stream(IconFile({{8, clRed}}).Text());
    icon.LoadFromStream(stream);
    EXPECT_EQ(List.AddIcon(icon), 0);
    List.Draw(Target.Canvas(), 0, 0, 0);
    EXPECT_EQ(At(3, 4), Ground);
    EXPECT_EQ(At(4, 4), clRed);
    TIcon copy;
    EXPECT_TRUE(List.GetIcon(0, copy));
    EXPECT_EQ(copy.Width(), 8);
    Clear();
    Target.Canvas().Draw(0, 0, copy);
    EXPECT_EQ(At(3, 4), Ground);
    EXPECT_EQ(At(4, 4), clRed);
    List.ReplaceIcon(0, copy);
    EXPECT_EQ(Shown(List, 0), clRed);
    EXPECT_THROW(List.ReplaceIcon(1, copy), EInvalidOperation);
}

TEST_F(ImageList, DrawsItsBackgroundColorBehindImages) {
    AddColor(clRed);
    List.SetBkColor(clYellow);
    List.Draw(Target.Canvas(), 0, 0, 0);
    EXPECT_EQ(Count(clYellow), 8);
    Clear();
    List.Draw(Target.Canvas(), 0, 0, 0, dsTransparent);
    EXPECT_EQ(Count(Ground), 8);
    List.SetBkColor(clNone);
    EXPECT_EQ(Shown(List, 0, 0), Ground);
}

TEST_F(ImageList, DrawsMasksAndBlendsSelectedImages) {
    AddColor(clLime);
    List.Draw(Target.Canvas(), 0, 0, 0, dsNormal, itMask);
    EXPECT_EQ(Count(clWhite), 8);
    EXPECT_EQ(Count(clBlack), 56);
    Clear();
    List.SetBlendColor(clRed);
    List.Draw(Target.Canvas(), 0, 0, 0, dsSelected);
    EXPECT_EQ(Count(Ground), 8);
    EXPECT_LT(Count(clLime), 56) << "some of the blend colour is in it";
}

TEST_F(ImageList, ADisabledImageIsEmbossed) {
    TBitmap bitmap;
    Paint(bitmap, 8, 8, clWhite, clWhite);
    bitmap.Canvas().SetPixel(2, 2, clRed);
    List.AddMasked(&bitmap, clFuchsia);
    List.Draw(Target.Canvas(), 0, 0, 0, false);
    EXPECT_EQ(static_cast<COLORREF>(At(2, 2)), ColorToRGB(clBtnShadow));
    EXPECT_EQ(static_cast<COLORREF>(At(3, 3)), ColorToRGB(clBtnHighlight));
    EXPECT_EQ(Count(Ground), 62) << "white shows the ground";
}

TEST_F(ImageList, OverlaysAreDrawnOnTop) {
    AddColor(clRed);
    TBitmap dot;
    Paint(dot, 8, 8, clFuchsia, clFuchsia);
    dot.Canvas().SetPixel(5, 5, clBlue);
    List.AddMasked(&dot, clFuchsia);
    EXPECT_TRUE(List.Overlay(1, 1));
    EXPECT_FALSE(List.Overlay(2, 1));
    List.Draw(Target.Canvas(), 0, 0, 0, dsNormal, itImage, true, 1);
    EXPECT_EQ(At(5, 5), clBlue);
    EXPECT_EQ(At(4, 5), clRed);
}

TEST_F(ImageList, FourImagesAtMostAreOverlays) {
    AddColor(clRed);
    for (const int overlay : {-1, 0, 5, 15, 16}) {
        EXPECT_FALSE(List.Overlay(0, overlay)) << overlay;
    }
    EXPECT_TRUE(List.Overlay(0, 4));
}

TEST_F(ImageList, GivesImagesAsBitmaps) {
    AddColor(clRed);
    TBitmap bitmap(30, 30);
    bitmap.Canvas().Brush().SetColor(clAqua);
    EXPECT_TRUE(List.GetBitmap(0, bitmap));
    EXPECT_EQ(bitmap.Width(), 8);
    EXPECT_EQ(bitmap.Canvas().Pixels(4, 4), clRed);
    EXPECT_EQ(bitmap.Canvas().Pixels(0, 4), clAqua);
}

TEST_F(ImageList, ANewSizeRemovesTheImages) {
    AddColor(clRed);
    List.SetWidth(8);
    EXPECT_EQ(List.Count(), 1);
    List.SetWidth(9);
    EXPECT_EQ(List.Count(), 0);
    EXPECT_THROW(AddColor(clRed), EInvalidOperation);
    List.SetHeight(4);
    List.SetWidth(4);
    EXPECT_EQ(AddColor(clRed), 0) << "two images high and wide: the upper ones are taken";
}

TEST_F(ImageList, SharedImagesOutliveTheList) {
    AddColor(clRed);
    {
        TImageList other;
        other.SetShareImages(true);
        other.SetHandle(List.Handle());
        EXPECT_EQ(other.Width(), 8);
        EXPECT_EQ(other.Count(), 1);
        EXPECT_EQ(Shown(other, 0), clRed);
    }
    EXPECT_EQ(Shown(List, 0), clRed);
    TImageList copy;
    copy.Assign(&List);
    AddColor(clBlue);
    EXPECT_EQ(copy.Count(), 1) << "an assigned list is a copy";
    EXPECT_EQ(Shown(copy, 0), clRed);
    copy.Assign(nullptr);
    EXPECT_EQ(copy.Count(), 0);
}

// --- Changes

TEST_F(ImageList, TellsItsLinksAndItsHandler) {
    std::string calls;
    TChangeLink link;
    link.SetOnChange([&](TObject* sender) {
        EXPECT_EQ(sender, &List);
        calls += "l";
    });
    List.RegisterChanges(link);
    EXPECT_EQ(link.Sender(), &List);
    List.SetOnChange([&](TObject*) { calls += "h"; });
    AddColor(clRed);
    EXPECT_EQ(calls, "lh");
    calls.clear();
    List.BeginUpdate();
    AddColor(clRed);
    List.BeginUpdate();
    List.Delete(0);
    List.EndUpdate();
    EXPECT_EQ(calls, "");
    List.EndUpdate();
    EXPECT_EQ(calls, "lh");
    calls.clear();
    List.UnregisterChanges(link);
    List.Clear();
    EXPECT_EQ(calls, "h");
    EXPECT_EQ(link.Sender(), nullptr);
}

TEST_F(ImageList, LinksMayGoWhileOthersAreTold) {
    auto second = std::make_unique<TChangeLink>();
    TChangeLink first;
    int told = 0;
    first.SetOnChange([&](TObject*) {
        ++told;
        second.reset();
    });
    second->SetOnChange([](TObject*) { ADD_FAILURE(); });
    List.RegisterChanges(first);
    List.RegisterChanges(*second);
    AddColor(clRed);
    EXPECT_EQ(told, 1);
    {
        TImageList shortLived;
        shortLived.RegisterChanges(first);
        EXPECT_EQ(first.Sender(), &shortLived);
    }
    EXPECT_EQ(first.Sender(), nullptr);
    AddColor(clRed);
    EXPECT_EQ(told, 1);
}

// --- Form files

TEST_F(ImageList, FormFilesHoldItsImages) {
    for (const int count : {0, 1, 4, 9}) {
        List.Clear();
        for (int i = 0; i < count; ++i) {
            AddColor(static_cast<TColor>(0x101010 * (i + 1)));
        }
        const std::string text = FormTextOf(List);
        EXPECT_EQ(text.find("Bitmap") != std::string::npos, count > 0);
        TImageList again;
        ReadFormOver(again, text);
        ASSERT_EQ(again.Count(), count);
        EXPECT_EQ(again.Width(), 8);
        for (int i = 0; i < count; ++i) {
            EXPECT_EQ(Shown(again, i), static_cast<TColor>(0x101010 * (i + 1)));
            EXPECT_EQ(Shown(again, i, 0), Ground);
        }
        EXPECT_EQ(FormTextOf(again), text);
    }
}

TEST_F(ImageList, WithoutMasksItIsStoredToo) {
    List.SetMasked(false);
    AddColor(clRed);
    TImageList again;
    ReadFormOver(again, FormTextOf(List));
    EXPECT_FALSE(again.Masked());
    EXPECT_EQ(Shown(again, 0), clRed);
}

using TImageListWrite = BOOL(WINAPI*)(HIMAGELIST, IStream*);
using TImageListRead = HIMAGELIST(WINAPI*)(IStream*);

template <class F> F SystemFunction(const char* name) {
    return reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("comctl32.dll"), name)));
}

std::string DataOf(const std::string& text) {
    const size_t start = text.find('{') + 1;
    std::string bytes;
    int digits = 0;
    int value = 0;
    for (size_t i = start; text[i] != '}'; ++i) {
        if (text[i] > ' ') {
            value = value * 16 + (text[i] <= '9' ? text[i] - '0' : text[i] - 'A' + 10);
            if (++digits % 2 == 0) {
                bytes += static_cast<char>(value);
                value = 0;
            }
        }
    }
    return bytes;
}

std::string TextOf(const std::string& bytes) {
    std::string text = "object TImageList\n  Bitmap = {";
    for (const char byte : bytes) {
        text += "0123456789ABCDEF"[static_cast<unsigned char>(byte) >> 4];
        text += "0123456789ABCDEF"[byte & 15];
    }
    return text + "}\nend\n";
}

TEST_F(ImageList, TheSystemReadsAndWritesTheSameBytes) {
    for (int i = 0; i < 6; ++i) {
        AddColor(static_cast<TColor>(0x101010 * (i + 1)));
    }
    const std::string bytes = DataOf(FormTextOf(List));
    IStream* stream = nullptr;
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
    stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
    LARGE_INTEGER start = {};
    stream->Seek(start, STREAM_SEEK_SET, nullptr);
    TImageList read;
    read.SetHandle(SystemFunction<TImageListRead>("ImageList_Read")(stream));
    ASSERT_EQ(read.Count(), 6);
    EXPECT_EQ(Shown(read, 5), static_cast<TColor>(0x606060));
    EXPECT_EQ(Shown(read, 5, 0), Ground);

    stream->Seek(start, STREAM_SEEK_SET, nullptr);
    ASSERT_TRUE(SystemFunction<TImageListWrite>("ImageList_Write")(List.Handle(), stream));
    ULARGE_INTEGER size = {};
    stream->Seek(start, STREAM_SEEK_CUR, &size);
    stream->Seek(start, STREAM_SEEK_SET, nullptr);
    std::string written(static_cast<size_t>(size.QuadPart), '\0');
    stream->Read(written.data(), static_cast<ULONG>(written.size()), nullptr);
    stream->Release();
    TImageList again;
    ReadFormOver(again, TextOf(written));
    ASSERT_EQ(again.Count(), 6);
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(Shown(again, i), static_cast<TColor>(0x101010 * (i + 1)));
        EXPECT_EQ(Shown(again, i, 0), Ground);
    }
}

TEST_F(ImageList, DamageIsToldAndTheListKeepsItsImages) {
    AddColor(clRed);
    AddColor(clBlue);
    const std::string good = DataOf(FormTextOf(List));
    std::vector<std::string> damaged;
    for (size_t size = 0; size < good.size(); size += size < 120 ? 1 : 37) {
        damaged.push_back(good.substr(0, size));
    }
    const auto with = [&](size_t offset, WORD value) {
        damaged.push_back(good);
        damaged.back()[offset] = static_cast<char>(value & 255);
        damaged.back()[offset + 1] = static_cast<char>(value >> 8);
    };
    with(0, 0); // the magic
    with(4, 5); // more images than there are
    with(4, 0xFFFF);
    with(10, 0);  // no width
    with(10, 33); // wider than the bitmap
    with(10, 0xFFFF);
    with(12, 0);
    with(12, 9);
    with(12, 0xFFFF);
    with(28, 0); // no bitmap
    for (size_t i = 0; i < damaged.size(); ++i) {
        TImageList list(8, 8);
        TBitmap bitmap;
        list.AddMasked(&Paint(bitmap, 8, 8, clLime, clFuchsia), clFuchsia);
        EXPECT_THROW(ReadFormOver(list, TextOf(damaged[i])), Exception) << i;
        ASSERT_EQ(list.Count(), 1) << i;
        ASSERT_EQ(Shown(list, 0), clLime);
    }
}

TEST_F(ImageList, AThousandLivesLeaveNothingBehind) {
    const auto work = [&] {
        for (int i = 0; i < 250; ++i) {
            TImageList list(8, 8);
            TBitmap bitmap;
            list.AddMasked(&Paint(bitmap, 8, 8, clLime, clFuchsia), clFuchsia);
            list.Draw(Target.Canvas(), 0, 0, 0, false);
            list.ReplaceMasked(0, &bitmap, clLime);
            TIcon icon;
            list.GetIcon(0, icon);
            list.AddIcon(icon);
            TImageList copy;
            copy.Assign(&list);
            list.Delete(0);
        }
    };
    EXPECT_EQ(LeftBehind(work, [] { return GdiCensus() + HeapCensus(); }), "");
}

} // namespace
} // namespace kx
