// SPDX-License-Identifier: MIT
// How the drop-down button looks in each of its states.

#include "ButtonFixture.h"

#include "kx/ui/controls/ActnList.h"
#include "tests/support/FormFiles.h"
#include "tests/support/SysColors.h"

namespace kx::test {
namespace {

// --- Properties

TEST_F(BitBtn, ANewOne) {
    const TKxBitBtn button;
    EXPECT_EQ(button.Kind(), bkCustom);
    EXPECT_EQ(button.SelectedDropDownMenuIndex(), -1);
    EXPECT_FALSE(button.PressingDropDown());
    EXPECT_TRUE(button.ControlStyle().Contains(csReflector));
}

TEST_F(BitBtn, ItsArrowIsTheEmbeddedPicture) {
    EXPECT_EQ(Button->Glyph().Width(), 8);
    EXPECT_EQ(Button->Glyph().Height(), 16);
    EXPECT_EQ(Button->Glyph().PixelFormat(), pf4bit);
    EXPECT_EQ(Button->GetPalette(), nullptr);
}

TEST_F(BitBtn, HasOneToFourGlyphs) {
    EXPECT_THROW(SetOrdProp(*Button, "NumGlyphs", 5), ERangeError);
    EXPECT_THROW(SetOrdProp(*Button, "NumGlyphs", 0), ERangeError);
}

TEST_F(BitBtn, ItsArrowTravelsWithAFormFile) {
    RegisterClasses<TKxBitBtn, TButton>();
    Button->SetName("Go");
    const TFormPtr read(NewForm<TForm>(nullptr));
    ReadFormOver(*read, FormTextOf(*Form));
    auto& button = dynamic_cast<TKxBitBtn&>(*read->FindComponent("Go"));
    EXPECT_EQ(button.Glyph().Width(), 8);
    EXPECT_EQ(button.Glyph().Canvas().Pixels(3, 9), clBlack);
}

TEST_F(BitBtn, ItsArrowAndTheRoomAroundThatFollowTheResolution) {
    Button->SetMargin(5);
    Button->ScaleForDpi(192, 96);
    EXPECT_EQ(Button->Glyph().Width(), 16);
    EXPECT_EQ(Button->Glyph().Height(), 32);
    EXPECT_EQ(Button->Glyph().Canvas().Pixels(6, 18), clBlack);
    EXPECT_EQ(Button->Spacing(), 8);
    EXPECT_EQ(Button->Margin(), 10);
    Button->SetMargin(-1);
    Button->ScaleForDpi(96, 192);
    EXPECT_EQ(Button->Spacing(), 4);
    const TBitmap strip(15, 5);
    Button->SetGlyph(strip);
    EXPECT_EQ(Button->NumGlyphs(), 3);
    Button->ScaleForDpi(144, 96);
    EXPECT_EQ(Button->Glyph().Width(), 24) << "three pictures of 8 pixels";
    EXPECT_EQ(Button->Margin(), -1) << "the caption stays centred";
}

// --- Looks

TEST_F(BitBtn, UpItHasARaisedFrameCaptionAndArrow) {
    Show();
    EXPECT_EQ(Arrow(), (TRect{88, 11, 95, 15}));
    EXPECT_EQ(Pixel(91, 14), 0u) << "the tip points down";
    EXPECT_EQ(Pixel(90, 14), ColorToRGB(clBtnFace));
    EXPECT_EQ(Pixel(0, 0), ColorToRGB(clBtnHighlight));
    EXPECT_NE(Pixel(99, 24), ColorToRGB(clBtnHighlight));
    EXPECT_EQ(Pixel(5, 12), ColorToRGB(clBtnFace));
    EXPECT_GT(CaptionLeft(), 20);
    EXPECT_LT(CaptionLeft(), 50);
}

TEST_F(BitBtn, WithTheFocusItHasARimAndADottedFrameLeftOfTheArrow) {
    Show();
    const int caption = CaptionLeft();
    Button->SetFocus();
    Settle();
    EXPECT_EQ(Pixel(0, 0), ColorToRGB(clWindowFrame));
    EXPECT_EQ(Pixel(99, 24), ColorToRGB(clWindowFrame));
    EXPECT_EQ(Arrow(), (TRect{88, 11, 95, 15})) << "nothing moves";
    EXPECT_EQ(CaptionLeft(), caption);
    int dots = 0;
    for (int x = 4; x < 83; ++x) {
        dots += Pixel(x, 4) != ColorToRGB(clBtnFace);
    }
    EXPECT_GE(dots, 38);
    EXPECT_LE(dots, 41);
    for (int x = 83; x < 96; ++x) {
        EXPECT_EQ(Pixel(x, 4), ColorToRGB(clBtnFace)) << x << ": the frame ends one pixel left of the split";
    }
}

TEST_F(BitBtn, AsTheDefaultButtonItHasARimWithoutDots) {
    auto* const edit = new TEdit(Form.get());
    edit->SetParent(Form.get());
    edit->SetBounds(150, 100, 75, 25);
    Button->SetDefault(true);
    Show();
    edit->SetFocus();
    Settle();
    EXPECT_EQ(Pixel(0, 0), ColorToRGB(clWindowFrame));
    for (int x = 4; x < 96; ++x) {
        EXPECT_EQ(Pixel(x, 4), ColorToRGB(clBtnFace)) << x;
    }
}

TEST_F(BitBtn, PressedItsBodyIsFlatAndTheArrowStays) {
    Show();
    Button->SetFocus();
    Settle();
    const int caption = CaptionLeft();
    SendMessageA(Button->Handle(), BM_SETSTATE, TRUE, 0);
    UpdateWindow(Button->Handle());
    EXPECT_EQ(Pixel(1, 12), ColorToRGB(clBtnShadow)) << "the body's flat edge";
    EXPECT_EQ(Pixel(86, 12), ColorToRGB(clBtnShadow)) << "and the one to the arrow";
    EXPECT_EQ(Pixel(2, 12), ColorToRGB(clBtnFace));
    EXPECT_EQ(Arrow().Right - Arrow().Left, 7);
    EXPECT_EQ(Arrow().Left, 88);
    EXPECT_EQ(Arrow().Top, 11);
    EXPECT_EQ(CaptionLeft(), caption + 1);
    SendMessageA(Button->Handle(), BM_SETSTATE, FALSE, 0);
    UpdateWindow(Button->Handle());
    EXPECT_EQ(Arrow(), (TRect{88, 11, 95, 15}));
    EXPECT_EQ(CaptionLeft(), caption);
}

TEST_F(BitBtn, WithThePressedArrowOnlyThatIsFlat) {
    Button->SetDropDownMenu(&MenuA);
    Show();
    const int caption = CaptionLeft();
    TRect arrow;
    COLORREF edge = 0;
    COLORREF body = 0;
    int captionNow = 0;
    ClickForMenu(At(92), {{"look", MenuShown,
                           [&] {
                               arrow = Arrow();
                               edge = Pixel(88, 3);
                               body = Pixel(0, 0);
                               captionNow = CaptionLeft();
                           }},
                          MenuKey(VK_ESCAPE)});
    EXPECT_EQ(arrow, (TRect{89, 12, 96, 16})) << "moved by one";
    EXPECT_EQ(edge, ColorToRGB(clBtnShadow));
    EXPECT_EQ(body, ColorToRGB(clBtnHighlight)) << "the body stays raised";
    EXPECT_EQ(captionNow, caption);
}

TEST_F(BitBtn, DisabledItsCaptionAndItsSinglePictureAreEngraved) {
    const TSysColors colors;
    Button->SetEnabled(false);
    Show();
    EXPECT_EQ(CaptionLeft(), -1);
    EXPECT_EQ(Arrow().Right, 0) << "nothing black is left";
    EXPECT_EQ(Pixel(88, 11), ColorToRGB(clBtnShadow));
    EXPECT_EQ(Pixel(91, 14), ColorToRGB(clBtnShadow)) << "the tip";
    EXPECT_EQ(Pixel(92, 15), ColorToRGB(clBtnHighlight)) << "and its light";
}

TEST_F(BitBtn, DisabledAStripShowsItsSecondPictureInTheSystemsColours) {
    const TSysColors colors;
    TBitmap strip(32, 16);
    strip.Canvas().Brush().SetColor(clOlive);
    strip.Canvas().FillRect({0, 0, 32, 16});
    strip.Canvas().Brush().SetColor(clGray);
    strip.Canvas().FillRect({20, 4, 24, 12});
    strip.Canvas().Brush().SetColor(clWhite);
    strip.Canvas().FillRect({24, 4, 28, 12});
    Button->SetGlyph(strip);
    Button->SetEnabled(false);
    Show();
    EXPECT_EQ(Button->NumGlyphs(), 2);
    EXPECT_EQ(Pixel(64 + 5, 12), ColorToRGB(clBtnShadow)) << "gray, a strip's width from the right edge";
    EXPECT_EQ(Pixel(64 + 9, 12), ColorToRGB(clBtnHighlight)) << "white";
    EXPECT_EQ(Pixel(64 + 1, 12), ColorToRGB(clBtnFace));
}

TEST_F(BitBtn, ItsPictureFollowsTheSystemsColours) {
    Button->SetEnabled(false);
    Show();
    ASSERT_EQ(Pixel(91, 14), ColorToRGB(clBtnShadow)) << "the tip";
    const COLORREF before = ColorToRGB(clBtnShadow);
    const TSysColors colors;
    ASSERT_NE(ColorToRGB(clBtnShadow), before);
    Button->Update();
    EXPECT_EQ(Pixel(91, 14), ColorToRGB(clBtnShadow));
    EXPECT_EQ(Pixel(92, 15), ColorToRGB(clBtnHighlight)) << "and its light";
}

TEST_F(BitBtn, BecomingTheDefaultKeepsItOwnerDrawn) {
    Show();
    for (const bool value : {true, false, true}) {
        Button->SetDefault(value);
        EXPECT_EQ(GetWindowLongA(Button->Handle(), GWL_STYLE) & BS_TYPEMASK, BS_OWNERDRAW);
    }
    Button->SetFocus();
    EXPECT_EQ(GetWindowLongA(Button->Handle(), GWL_STYLE) & BS_TYPEMASK, BS_OWNERDRAW);
}

TEST_F(BitBtn, ShowsEveryChangeAtOnce) {
    Show();
    Button->Font().SetColor(clRed);
    EXPECT_EQ(CaptionLeft(), -1);
    Button->Font().SetColor(clWindowText);
    Button->SetMargin(10);
    EXPECT_GE(CaptionLeft(), 10);
    EXPECT_LE(CaptionLeft(), 13);
    Button->SetSpacing(10);
    EXPECT_EQ(Pixel(82 + 3, 14), 0u) << "the tip, six pixels to the left";
}

TEST_F(BitBtn, WithoutAnArrowItDrawsItsCaptionOnly) {
    Button->SetGlyph(TBitmap());
    Show();
    EXPECT_EQ(Arrow().Right, 0);
    EXPECT_GT(CaptionLeft(), 0);
}

// --- Actions

TEST_F(BitBtn, AnActionGivesItsImageOnlyToAButtonWithoutAPicture) {
    TImageList images(20, 18);
    TBitmap image(20, 18);
    image.Canvas().Brush().SetColor(clLime);
    image.Canvas().FillRect({0, 0, 20, 18});
    image.Canvas().Brush().SetColor(clBlue);
    image.Canvas().FillRect({5, 5, 15, 13});
    images.AddMasked(&image, clLime);
    TActionList list;
    list.SetImages(&images);
    kx::TAction action;
    action.SetActionList(&list);
    action.SetCaption("From the action");
    action.SetImageIndex(0);
    Button->SetAction(&action);
    EXPECT_EQ(Button->Caption(), "From the action");
    EXPECT_EQ(Button->Glyph().Width(), 8) << "the arrow stays";
    Button->SetGlyph(TBitmap());
    Button->SetAction(&action);
    ASSERT_EQ(Button->Glyph().Width(), 20);
    EXPECT_EQ(Button->Glyph().Height(), 18);
    EXPECT_EQ(Button->Glyph().Canvas().Pixels(10, 9), clBlue);
    EXPECT_EQ(Button->Glyph().Canvas().Pixels(0, 0), clFuchsia);
    EXPECT_EQ(Button->Glyph().TransparentColor(), clFuchsia);
    Button->SetGlyph(TBitmap());
    action.SetImageIndex(1);
    Button->SetAction(&action);
    EXPECT_TRUE(Button->Glyph().Empty()) << "no such image";
}

/// All looks beside each other, for the eye.
TEST_F(BitBtn, LooksLikeThis) {
    Button->SetDropDownMenu(&MenuA);
    const auto add = [&](int x, int y, const std::string& caption) {
        auto* const button = new TKxBitBtn(Form.get());
        button->SetParent(Form.get());
        button->SetBounds(x, y, 100, 25);
        button->SetCaption(caption);
        return button;
    };
    TKxBitBtn* const disabled = add(140, 20, "Disabled");
    disabled->SetEnabled(false);
    TKxBitBtn* const strip = add(20, 55, "Strip");
    TBitmap pictures(32, 16);
    pictures.Canvas().Brush().SetColor(clOlive);
    pictures.Canvas().FillRect({0, 0, 32, 16});
    pictures.Canvas().Brush().SetColor(clNavy);
    pictures.Canvas().FillRect({3, 3, 13, 13});
    pictures.Canvas().Brush().SetColor(clWhite);
    pictures.Canvas().FillRect({20, 4, 30, 14});
    pictures.Canvas().Brush().SetColor(clGray);
    pictures.Canvas().FillRect({19, 3, 29, 13});
    strip->SetGlyph(pictures);
    TKxBitBtn* const stripDisabled = add(140, 55, "Strip off");
    stripDisabled->SetGlyph(pictures);
    stripDisabled->SetEnabled(false);
    TKxBitBtn* const down = add(140, 100, "Down");
    TKxBitBtn* const focused = add(20, 135, "Focused");
    TKxBitBtn* const focusedDown = add(140, 135, "Arrow down");
    Show();
    focused->SetFocus();
    SendMessageA(down->Handle(), BM_SETSTATE, TRUE, 0);
    SendMessageA(focusedDown->Handle(), WM_LBUTTONDOWN, MK_LBUTTON, MakeLParam(95, 12));
    ReleaseCapture();
    Settle();
    EXPECT_NE(Screenshot("drop-down-buttons", Form->Handle()), "");
    focused->SetFocus();
    SendMessageA(focused->Handle(), BM_SETSTATE, TRUE, 0);
    Settle();
    EXPECT_NE(Screenshot("drop-down-button-pressed", Form->Handle()), "");
}

TEST_F(BitBtn, TheCaptionIsReadInTheControlsOrder) {
    const auto picture = [&](const char* caption, TBiDiMode mode) {
        Button->SetCaption(caption);
        Button->SetBiDiMode(mode);
        Settle();
        std::vector<COLORREF> pixels;
        for (int x = 8; x < 80; ++x) {
            for (int y = 6; y < 19; ++y) {
                pixels.push_back(Pixel(x, y));
            }
        }
        return pixels;
    };
    Show();
    const auto before = picture("Open!", bdLeftToRight);
    const auto after = picture("Open!", bdRightToLeft);
    Screenshot("drop-down-button-right-to-left", Form->Handle());
    EXPECT_NE(after, before) << "the exclamation mark comes first from the left";
    EXPECT_EQ(after, picture("!Open", bdLeftToRight));
}

} // namespace
} // namespace kx::test
