// SPDX-License-Identifier: MIT
// How the button of a place looks.

#include "PlacesBarFixture.h"
#include "tests/support/Pictures.h"
#include "tests/support/SysColors.h"

#include <shellapi.h>

// What a place button looks like, pixel by pixel, against a picture drawn here by the rule.

namespace kx::test {
namespace {

enum class TLook { Up, Hot, Down };

std::wstring Wide(const std::string& text) {
    std::wstring wide(text.size(), L'\0');
    const int size = static_cast<int>(text.size());
    wide.resize(static_cast<size_t>(MultiByteToWideChar(CP_ACP, 0, text.c_str(), size, wide.data(), size)));
    return wide;
}

SIZE Extent(HDC dc, const std::wstring& text) {
    SIZE size{};
    GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
    return size;
}

void DrawCaption(const TPicture32& picture, const std::wstring& caption) {
    const HDC dc = picture.Handle();
    const int w = picture.Width;
    const int h = picture.Height;
    SetBkColor(dc, GetSysColor(COLOR_BTNSHADOW));
    SetTextColor(dc, GetSysColor(COLOR_HIGHLIGHTTEXT));
    const SIZE size = Extent(dc, caption);
    if (size.cx <= w - 4) {
        TextOutW(dc, w / 2 - size.cx / 2, h - size.cy - 2, caption.c_str(), static_cast<int>(caption.size()));
        return;
    }
    const int room = w - Extent(dc, L"...").cx - 6;
    std::wstring text;
    while (Extent(dc, text).cx <= room) {
        text = caption.substr(0, text.size() + 1);
    }
    text += L"...";
    const RECT clip{3, h - size.cy - 2, 3 + w - 4, h - 2};
    ExtTextOutW(dc, 3, h - size.cy - 4, ETO_CLIPPED | ETO_OPAQUE, &clip, text.c_str(), static_cast<UINT>(text.size()),
                nullptr);
}

/// `icon` is the index in the shell's library; -1: none.
std::vector<uint32_t> Expected(int w, int h, TLook look, int icon, const std::string& caption) {
    const TPicture32 picture(w, h);
    const HDC dc = picture.Handle();
    const RECT all{0, 0, w, h};
    FillRect(dc, &all, GetSysColorBrush(COLOR_BTNSHADOW));
    const TFont font;
    const TSelectObject selected(dc, font.Handle());
    if (icon >= 0) {
        const unique_hicon image(ExtractIconA(HInstance(), "Shell32.dll", static_cast<UINT>(icon)));
        DrawIconEx(dc, w / 2 - 16, h / 2 - 16 - Extent(dc, Wide(caption)).cy / 2, image.get(), 32, 32, 0, nullptr,
                   DI_NORMAL);
    }
    constexpr COLORREF black = 0;
    constexpr COLORREF white = 0xFFFFFF;
    if (look == TLook::Down) {
        picture.Line(black, {0, 0}, {w - 1, 0});
        picture.Line(black, {0, 0}, {0, h});
        picture.Line(white, {w - 1, 0}, {w - 1, h});
        picture.Line(white, {w - 1, h - 1}, {0, h - 1});
    } else if (look == TLook::Hot) {
        picture.Line(black, {0, h - 1}, {w - 1, h - 1});
        picture.Line(black, {w - 1, 0}, {w - 1, h});
        picture.Line(white, {0, 0}, {w - 1, 0});
        picture.Line(white, {0, 0}, {0, h - 1});
    }
    DrawCaption(picture, Wide(caption));
    return picture.Pixels();
}

class PlaceButtonPaint : public TPlacesBarTest {
protected:
    std::vector<uint32_t> Seen(int index) {
        Frm->ToolBar1->Update();
        const TWindowDC dc(Frm->ToolBar1->Handle());
        return PixelsOf(dc.Handle(), Button(index).BoundsRect());
    }
    void ExpectLook(int index, TLook look, int icon, const std::string& caption) {
        const std::vector<uint32_t> seen = Seen(index);
        const std::vector<uint32_t> expected =
            Expected(Button(index).Width(), Button(index).Height(), look, icon, caption);
        ASSERT_EQ(seen.size(), expected.size());
        int different = 0;
        for (size_t i = 0; i < seen.size(); ++i) {
            if (seen[i] != expected[i] && ++different == 1) {
                const auto width = static_cast<size_t>(Button(index).Width());
                ADD_FAILURE() << "the pixel at " << i % width << "," << i / width << " of \"" << caption << "\" is "
                              << std::hex << seen[i] << ", not " << expected[i];
            }
        }
        EXPECT_EQ(different, 0);
        if (different) {
            Screenshot("place-button-" + caption.substr(0, 10), Frm->Handle());
        }
    }
    void MakeHot(int index) {
        MoveMouse(Middle(index));
        ASSERT_TRUE(PumpUntil([&] { return Seen(index)[0] == 0xFFFFFF; }));
    }
};

TEST_F(PlaceButtonPaint, UpIsIconAndCaptionOnTheShadowColour) {
    AddPlaces({"Work", "Docs", "Music"});
    Show();
    ASSERT_EQ(Button(1).BoundsRect(), (TRect{0, 49, 87, 98}));
    ExpectLook(0, TLook::Up, 3, "Work");
    ExpectLook(1, TLook::Up, 4, "Docs");
    ExpectLook(2, TLook::Up, 5, "Music");
}

TEST_F(PlaceButtonPaint, UnderTheMouseItIsRaisedWithTheSameIcon) {
    AddPlaces({"Work", "Docs"});
    Show();
    MakeHot(1);
    ExpectLook(1, TLook::Hot, 4, "Docs");
    ExpectLook(0, TLook::Up, 3, "Work");
    MoveMouse(Middle(0));
    ASSERT_TRUE(PumpUntil([&] { return Seen(0)[0] == 0xFFFFFF; }));
    ExpectLook(1, TLook::Up, 4, "Docs");
    MoveAway();
    ASSERT_TRUE(PumpUntil([&] { return Seen(0)[0] != 0xFFFFFF; }));
    ExpectLook(0, TLook::Up, 3, "Work");
}

TEST_F(PlaceButtonPaint, DownIsSunkenWithTheOtherIcon) {
    AddPlaces({"Work", "Docs"});
    Show();
    Button(0).SetDown(true);
    ExpectLook(0, TLook::Down, 4, "Work");
    ExpectLook(1, TLook::Up, 4, "Docs");
    Button(1).SetDown(true);
    ExpectLook(0, TLook::Up, 3, "Work");
    ExpectLook(1, TLook::Down, 5, "Docs");
}

TEST_F(PlaceButtonPaint, DownUnderTheMouseItIsSunkenReleasedThereItIsRaisedWithItsOwnIcon) {
    AddPlaces({"Work"});
    Show();
    MakeHot(0);
    ClickAt(Middle(0));
    ASSERT_TRUE(PumpUntil([&] { return Button(0).Down(); }));
    ExpectLook(0, TLook::Down, 4, "Work");
    TPoint beside = Middle(0); // a second click at the same place were a double click
    beside.X += 20;
    ClickAt(beside);
    ASSERT_TRUE(PumpUntil([&] { return !Button(0).Down(); }));
    ExpectLook(0, TLook::Hot, 3, "Work");
}

TEST_F(PlaceButtonPaint, ACaptionTooWideIsAPrefixWithDotsCutOffBeforeTheRightEdge) {
    const char* const caption = "A caption that is much too wide for its button";
    AddPlaces({caption, "iiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiii", "WWWWWWWWWWWWWWWWWW"});
    Show();
    ExpectLook(0, TLook::Up, 3, caption);
    ExpectLook(1, TLook::Up, 4, "iiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiiii");
    ExpectLook(2, TLook::Up, 5, "WWWWWWWWWWWWWWWWWW");
    const int right = Button(0).Width() - 1;
    const auto pixels = Seen(0);
    for (int y = 0; y < Button(0).Height(); ++y) {
        EXPECT_EQ(pixels[static_cast<size_t>(y * (right + 1) + right)], pixels[0]) << "nothing in the last column";
    }
    Button(0).SetDown(true);
    ExpectLook(0, TLook::Down, 4, caption);
}

TEST_F(PlaceButtonPaint, ACaptionThatJustFitsIsNotCut) {
    const TPicture32 picture(1, 1);
    const TFont font;
    const TSelectObject selected(picture.Handle(), font.Handle());
    std::string fits;
    while (Extent(picture.Handle(), Wide(fits + "l")).cx <= 87 - 4) {
        fits += 'l';
    }
    AddPlaces({fits.c_str(), (fits + "l").c_str()});
    Show();
    ExpectLook(0, TLook::Up, 3, fits);
    ExpectLook(1, TLook::Up, 4, fits + "l");
}

TEST_F(PlaceButtonPaint, WithoutIconFileThereIsNoIcon) {
    TTempFolder folder("noicons");
    const std::string text = folder.AddFile("text.txt", "no icons in here");
    for (const std::string& file :
         {std::string(), folder.Path("missing.dll"), text, folder.Path(), std::string("|?*")}) {
        TKxPlace& place = AddPlace(Options.Places(), "Plain");
        place.SetPlaceIconDll(file);
        place.SetPlaceIcon(2);
        place.SetPlaceHotIcon(3);
    }
    TKxPlace& beyond = AddPlace(Options.Places(), "Plain");
    beyond.SetPlaceIconDll("Shell32.dll");
    beyond.SetPlaceIcon(100'000);
    Show();
    Frm->SetHeight(6 * 49 + 10);
    for (int i = 0; i < 6; ++i) {
        ExpectLook(i, TLook::Up, -1, "Plain");
    }
    Button(2).SetDown(true);
    ExpectLook(2, TLook::Down, -1, "Plain");
}

/// A file of icons, a directory and one picture, whose header says that it is larger than it is.
std::string LyingIcon() {
    std::string icon("\0\0\1\0\1\0" // one icon
                     "\x20\x20\0\0\1\0\x20\0\x28\x10\0\0\x16\0\0\0",
                     22);
    icon += std::string("\x28\0\0\0\0\0\1\0\0\0\1\0\1\0\x20\0", 16) + std::string(24, '\0');
    return icon + std::string(4096, '\x55');
}

TEST_F(PlaceButtonPaint, ABrokenIconFileLeavesTheButtonAndTheOthersPainted) {
    const TTempFolder folder{"icons"};
    std::string noise(5'000, '\0');
    uint32_t seed = 12'345;
    for (char& c : noise) {
        seed = seed * 1'664'525 + 1'013'904'223;
        c = static_cast<char>(seed >> 24);
    }
    const std::string files[] = {folder.AddFile("noise.ico", noise), folder.AddFile("library.dll", "MZ" + noise),
                                 folder.AddFile("lying.ico", LyingIcon()),
                                 folder.AddFile("cut.ico", LyingIcon().substr(0, 50))};
    AddPlaces({"a", "b", "c", "d", "whole"});
    for (int i = 0; i < 4; ++i) {
        Options.Places()[i].SetPlaceIconDll(files[i]);
        Options.Places()[i].SetPlaceIcon(0);
        Options.Places()[i].SetPlaceHotIcon(0);
    }
    Show();
    Frm->SetHeight(300);
    ExpectLook(0, TLook::Up, -1, "a");
    ExpectLook(1, TLook::Up, -1, "b");
    ExpectLook(4, TLook::Up, 7, "whole"); // behind what the system makes of the other two
    Screenshot("places_bar_broken_icons", Frm->Handle());
}

TEST_F(PlaceButtonPaint, WithoutCaptionTheIconIsInTheMiddle) {
    AddPlaces({""});
    Show();
    ExpectLook(0, TLook::Up, 3, "");
}

TEST_F(PlaceButtonPaint, OddSizesAreHalvedDownwards) {
    AddPlaces({"Work"});
    Frm->ToolBar1->SetButtonWidth(86);
    Frm->ToolBar1->SetButtonHeight(60);
    Show();
    ASSERT_EQ(Button(0).Width(), 86);
    ASSERT_EQ(Button(0).Height(), 60);
    ExpectLook(0, TLook::Up, 3, "Work");
}

TEST_F(PlaceButtonPaint, FollowsChangesAtOnce) {
    AddPlaces({"Work"});
    Show();
    Button(0).SetIconIdx(7);
    ExpectLook(0, TLook::Up, 7, "Work");
    Button(0).SetCaption("Play");
    ExpectLook(0, TLook::Up, 7, "Play");
    Button(0).SetIconDll("Shell32.dll");
    ExpectLook(0, TLook::Up, 0, "Play"); // the file's first one, until the index is set
    EXPECT_EQ(Button(0).IconIndex(), 7);
    Button(0).SetIconSelIdx(8);
    Button(0).SetDown(true);
    ExpectLook(0, TLook::Down, 8, "Play");
}

TEST_F(PlaceButtonPaint, FollowsItsSize) {
    AddPlaces({"Work"});
    Show();
    ExpectLook(0, TLook::Up, 3, "Work");
    Frm->ToolBar1->SetButtonHeight(70);
    ASSERT_EQ(Button(0).Height(), 70);
    ExpectLook(0, TLook::Up, 3, "Work");
    Frm->ToolBar1->SetButtonWidth(60);
    ASSERT_EQ(Button(0).Width(), 60);
    ExpectLook(0, TLook::Up, 3, "Work");
}

TEST_F(PlaceButtonPaint, FollowsTheSystemsColours) {
    AddPlaces({"Work"});
    Show();
    const auto before = Seen(0);
    {
        const TSysColors colors;
        Application().ProcessMessages();
        Button(0).Invalidate();
        ExpectLook(0, TLook::Up, 3, "Work");
        EXPECT_NE(Seen(0), before);
    }
    Application().ProcessMessages();
    Button(0).Invalidate();
    ExpectLook(0, TLook::Up, 3, "Work");
    EXPECT_EQ(Seen(0), before);
}

TEST_F(PlaceButtonPaint, UmlautsAreShown) {
    const std::string caption = FromUtf8("Größe ändern");
    AddPlaces({caption.c_str()});
    Show();
    const auto umlauts = Seen(0);
    Button(0).SetCaption(FromUtf8("Grosse andern"));
    EXPECT_NE(Seen(0), umlauts);
    if (CodePageHolds("ö")) {
        EXPECT_EQ(ToUtf8(Options.Places()[0].PlaceName()), "Größe ändern");
    }
}

TEST_F(PlaceButtonPaint, ALongCaptionIsCutBetweenCharacters) {
    std::string caption;
    for (int i = 0; i < 40; ++i) {
        caption += FromUtf8(i % 2 ? "ö" : "Ü");
    }
    AddPlaces({caption.c_str()});
    Show();
    ExpectLook(0, TLook::Up, 3, caption);
}

TEST_F(PlaceButtonPaint, BelowTheButtonsTheBarIsPlain) {
    AddPlaces({"Work"});
    Show();
    const TWindowDC dc(Frm->ToolBar1->Handle());
    const auto pixels = PixelsOf(dc.Handle(), {0, 49, 87, 200});
    EXPECT_THAT(pixels, testing::Each(pixels[0]));
    const COLORREF shadow = GetSysColor(COLOR_BTNSHADOW);
    EXPECT_EQ(pixels[0], static_cast<uint32_t>(RGB(GetBValue(shadow), GetGValue(shadow), GetRValue(shadow))));
}

TEST_F(PlaceButtonPaint, WithoutToolBarNothingIsDrawn) {
    TKxPlaceButton button;
    button.SetIconDll("Shell32.dll");
    button.SetCaption("alone");
    const TPicture32 picture(87, 49);
    PatBlt(picture.Handle(), 0, 0, 87, 49, WHITENESS);
    button.PaintOn(picture.Handle());
    EXPECT_THAT(picture.Pixels(), testing::Each(0xFFFFFFu));
}

TEST_F(PlaceButtonPaint, Pictures) {
    AddPlaces({"Desktop", "A caption that is much too wide", "Music", "Network", "Down there", "More", "Last"});
    Show();
    Button(2).SetDown(true);
    MakeHot(0);
    Frm->Update();
    Screenshot("places-bar", Host->Handle());
    Frm->ps1->SetPosition(60);
    MoveAway();
    ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
    Frm->Update();
    Screenshot("places-bar-scrolled", Host->Handle());
    EXPECT_EQ(Frm->ps1->Position(), 60);
}

} // namespace
} // namespace kx::test
