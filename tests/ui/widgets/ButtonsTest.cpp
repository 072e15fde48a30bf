// SPDX-License-Identifier: MIT
// Speed buttons.

#include "kx/ui/widgets/Buttons.h"

#include "kx/win/Handles.h"
#include "tests/support/FormTest.h"

namespace kx {
namespace {

using namespace test;

class SpeedButton : public TFormTest {
protected:
    SpeedButton() {
        Form->SetBorderStyle(bsNone);
        Form->SetColor(clYellow);
        MoveMouse({5, 5});
    }
    TSpeedButton* Add(int left, int top, int width = 23, int height = 22) {
        return TFormTest::Add<TSpeedButton>(left, top, width, height);
    }
    /// Squares of red, green, blue and white on fuchsia, 10 by 10 each.
    static void MakeGlyph(TSpeedButton& button, int count) {
        constexpr TColor colors[] = {clRed, clGreen, clBlue, clWhite};
        TBitmap glyph(10 * count, 10);
        glyph.Canvas().Brush().SetColor(clFuchsia);
        glyph.Canvas().FillRect({0, 0, 10 * count, 10});
        for (int i = 0; i < count; ++i) {
            glyph.Canvas().Brush().SetColor(colors[i]);
            glyph.Canvas().FillRect({i * 10 + 2, 2, i * 10 + 8, 8});
        }
        button.SetGlyph(glyph);
        button.SetNumGlyphs(count);
    }
    COLORREF At(const TSpeedButton& button, int x, int y) {
        Form->Update();
        const TWindowDC dc(Form->Handle());
        return GetPixel(dc.Handle(), button.Left() + x, button.Top() + y);
    }
};

TEST_F(SpeedButton, AClickNeedsPressAndReleaseOverTheButton) {
    TSpeedButton* const button = Add(10, 10);
    int clicks = 0;
    int ups = 0;
    button->SetOnClick([&](TObject*) { ++clicks; });
    button->SetOnMouseUp([&](TObject*, TMouseButton, TShiftState, int, int) { ++ups; });
    Show();
    ClickAt(Middle(*button));
    ASSERT_TRUE(PumpUntil([&] { return ups == 1; }));
    EXPECT_EQ(clicks, 1);
    PressAt(Middle(*button));
    ReleaseAt(Form->ClientToScreen({200, 100}));
    ASSERT_TRUE(PumpUntil([&] { return ups == 2; }));
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(button->Down()) << "in no group";
    button->SetOnClick([](TObject* sender) { static_cast<TSpeedButton*>(sender)->Free(); });
    ClickAt(button->ClientToScreen({3, 3}));
    EXPECT_TRUE(PumpUntil([&] { return Form->ControlCount() == 0; }));
}

TEST_F(SpeedButton, OfAGroupOneIsDown) {
    TSpeedButton* const a = Add(10, 10);
    TSpeedButton* const b = Add(40, 10);
    TSpeedButton* const other = Add(70, 10);
    a->SetGroupIndex(1);
    b->SetGroupIndex(1);
    other->SetGroupIndex(2);
    a->SetDown(true);
    other->SetDown(true);
    Show();
    ClickAt(Middle(*b));
    ASSERT_TRUE(PumpUntil([&] { return b->Down(); }));
    EXPECT_FALSE(a->Down());
    EXPECT_TRUE(other->Down());
    b->SetDown(false);
    EXPECT_TRUE(b->Down()) << "one has to be";
    a->SetAllowAllUp(true);
    EXPECT_TRUE(b->AllowAllUp()) << "it holds for the group";
    ClickAt(b->ClientToScreen({3, 3}));
    EXPECT_TRUE(PumpUntil([&] { return !b->Down(); }));
}

TEST_F(SpeedButton, AFlatButtonHasAFrameOnlyUnderTheMouseOrDown) {
    TSpeedButton* const button = Add(10, 10);
    button->SetFlat(true);
    Show();
    EXPECT_EQ(At(*button, 0, 5), COLORREF{clYellow}) << "what lies behind";
    MoveMouse(Middle(*button));
    ASSERT_TRUE(PumpUntil([&] { return button->MouseInControl(); }));
    const COLORREF raised = At(*button, 0, 5);
    EXPECT_NE(raised, COLORREF{clYellow});
    PressAt(Middle(*button));
    ASSERT_TRUE(PumpUntil([&] { return At(*button, 0, 5) != raised; }));
    ReleaseAt({5, 5});
    ASSERT_TRUE(PumpUntil([&] { return !button->MouseInControl(); }));
    EXPECT_EQ(At(*button, 0, 5), COLORREF{clYellow});
    button->SetTransparent(false);
    button->SetColor(clAqua);
    EXPECT_EQ(At(*button, 3, 3), COLORREF{clAqua});
    button->SetFlat(false);
    EXPECT_NE(At(*button, 0, 5), COLORREF{clAqua});
}

TEST_F(SpeedButton, EachStateHasItsPicture) {
    TSpeedButton* const button = Add(10, 10, 30, 30);
    MakeGlyph(*button, 4);
    button->SetFlat(true);
    button->SetGroupIndex(1);
    button->SetAllowAllUp(true);
    Show();
    EXPECT_EQ(At(*button, 15, 15), COLORREF{clRed});
    EXPECT_EQ(At(*button, 10, 10), COLORREF{clYellow}) << "transparent";
    button->SetEnabled(false);
    EXPECT_EQ(At(*button, 15, 15), COLORREF{clGreen});
    button->SetEnabled(true);
    button->SetDown(true);
    EXPECT_EQ(At(*button, 16, 16), COLORREF{clWhite});
    button->SetDown(false);
    PressAt(Middle(*button));
    EXPECT_TRUE(PumpUntil([&] { return At(*button, 16, 16) == COLORREF{clBlue}; }));
    ReleaseAt({5, 5});
    Application().ProcessMessages();
    MakeGlyph(*button, 1);
    EXPECT_EQ(At(*button, 15, 15), COLORREF{clRed});
    button->SetEnabled(false);
    EXPECT_NE(At(*button, 15, 15), COLORREF{clRed}) << "embossed";
    button->SetNumGlyphs(9);
    EXPECT_EQ(button->NumGlyphs(), 4);
    Form->Repaint();
}

TEST_F(SpeedButton, TheLayoutPutsThePictureBesideTheCaption) {
    TSpeedButton* const button = Add(10, 10, 100, 60);
    MakeGlyph(*button, 1);
    button->SetFlat(true);
    button->SetCaption("&Go");
    button->SetMargin(7);
    Show();
    EXPECT_EQ(At(*button, 7 + 5, 30), COLORREF{clRed});
    button->SetLayout(blGlyphRight);
    EXPECT_EQ(At(*button, 100 - 7 - 5, 30), COLORREF{clRed});
    button->SetLayout(blGlyphTop);
    EXPECT_EQ(At(*button, 50, 7 + 5), COLORREF{clRed});
    button->SetLayout(blGlyphBottom);
    EXPECT_EQ(At(*button, 50, 60 - 7 - 5), COLORREF{clRed});
    button->SetMargin(-1);
    button->SetCaption("");
    EXPECT_EQ(At(*button, 50, 30), COLORREF{clRed});
}

TEST_F(SpeedButton, LooksAsASpeedButtonShould) {
    for (int i = 0; i < 6; ++i) {
        TSpeedButton* const button = Add(10 + i % 3 * 90, 10 + i / 3 * 60, 80, 40);
        MakeGlyph(*button, 1);
        button->SetCaption("Caption");
        button->SetFlat(i >= 3);
        button->SetEnabled(i % 3 != 1);
        button->SetGroupIndex(i + 1);
        button->SetDown(i % 3 == 2);
    }
    Form->SetColor(clBtnFace);
    Show();
    Form->Update();
    EXPECT_NE(Screenshot("speedbuttons", Form->Handle()), "");
}

} // namespace
} // namespace kx
