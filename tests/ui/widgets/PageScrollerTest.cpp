// SPDX-License-Identifier: MIT
// Page scrollers.

#include "kx/ui/widgets/ComCtrlsPageScroller.h"

#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "tests/support/FormTest.h"

namespace kx {
namespace {

using namespace test;

/// A column of buttons in a scroller in a panel, as a bar of places is built.
class PageScroller : public TFormTest {
protected:
    PageScroller()
        : Panel(new TPanel(Form.get())), Scroller(new TPageScroller(Form.get())), Bar(new TToolBar(Form.get())) {
        Form->SetBorderStyle(bsNone);
        Form->SetBounds(100, 100, 91, 232);
        Form->SetColor(clBtnShadow);
        Panel->SetBevelOuter(bvNone);
        Panel->SetBorderStyle(bsSingle);
        Panel->SetAlign(alClient);
        Panel->SetParent(Form.get());
        Scroller->SetOrientation(soVertical);
        Scroller->SetAlign(alClient);
        Scroller->SetParent(Panel);
        Bar->SetEdgeBorders({});
        Bar->SetFlat(true);
        Bar->SetAutoSize(true);
        Bar->SetButtonHeight(49);
        Bar->SetButtonWidth(87);
        Bar->SetWidth(115);
        Bar->SetParent(Scroller);
        Scroller->SetControl(Bar);
        MoveMouse({5, 5});
    }
    void Fill(int count) {
        Bar->BeginUpdate();
        while (Bar->ComponentCount() > 0) {
            Bar->Components(0)->Free();
        }
        for (int i = 0; i < count; ++i) {
            (new TToolButton(Bar))->SetParent(Bar);
        }
        Bar->EndUpdate();
    }
    bool Arrow(int which) const {
        return SendMessageA(Scroller->WindowHandle(), PGM_GETBUTTONSTATE, 0, which) != PGF_INVISIBLE;
    }
    /// The bar as it is seen, in coordinates of the panel.
    TRect Seen() const { return RectIn(Panel->WindowHandle(), Bar->WindowHandle()); }
    TPoint LowerArrow() const {
        const TRect r = ScreenRectOf(Scroller->WindowHandle());
        return {(r.Left + r.Right) / 2, r.Bottom - 4};
    }

    TPanel* Panel;
    TPageScroller* Scroller;
    TToolBar* Bar;
};

TEST_F(PageScroller, AColumnThatFitsHasNoArrows) {
    Show();
    Fill(3);
    EXPECT_EQ(Bar->RowCount(), 3);
    EXPECT_EQ(Bar->RowsHeight(), 147);
    EXPECT_GE(Bar->Height(), 147) << "the system may make it as high as the scroller";
    EXPECT_EQ(Seen().Top, 0);
    EXPECT_LE(Seen().Bottom, Panel->ClientHeight());
    EXPECT_FALSE(Arrow(PGB_TOPORLEFT));
    EXPECT_FALSE(Arrow(PGB_BOTTOMORRIGHT));
    EXPECT_EQ(Scroller->Position(), 0);
}

TEST_F(PageScroller, AGrowingAndShrinkingControlGetsAndLosesArrows) {
    Show();
    Fill(10);
    EXPECT_EQ(Bar->Height(), 490);
    EXPECT_TRUE(Arrow(PGB_BOTTOMORRIGHT));
    EXPECT_FALSE(Arrow(PGB_TOPORLEFT));
    EXPECT_EQ(Bar->Width(), 87);
    Fill(2);
    EXPECT_EQ(Seen().Top, 0);
    EXPECT_LE(Seen().Bottom, Panel->ClientHeight());
    EXPECT_FALSE(Arrow(PGB_BOTTOMORRIGHT));
    Fill(10);
    Scroller->SetPosition(10000);
    const int last = Scroller->Position();
    EXPECT_GT(last, 490 - 240);
    EXPECT_LE(last, 490 - 228 + 30);
    EXPECT_TRUE(Arrow(PGB_TOPORLEFT));
    EXPECT_FALSE(Arrow(PGB_BOTTOMORRIGHT));
    EXPECT_LE(Seen().Bottom, Panel->ClientHeight());
    Bar->Buttons(4)->Free();
    EXPECT_EQ(Bar->Height(), 441);
    EXPECT_LT(Scroller->Position(), last) << "there is less to scroll";
    Fill(1);
    EXPECT_EQ(Scroller->Position(), 0);
    EXPECT_EQ(Seen().Top, 0);
    EXPECT_FALSE(Arrow(PGB_TOPORLEFT));
}

/// Counts how often its window is told to measure the child anew.
class TCountingScroller : public TPageScroller {
public:
    using TPageScroller::TPageScroller;

    void WndProc(TMessage& message) override {
        Measured += message.Msg == PGM_RECALCSIZE ? 1 : 0;
        TPageScroller::WndProc(message);
    }

    int Measured = 0;
};

TEST_F(PageScroller, IsToldToMeasureAControlWhoseContentChanges) {
    auto* const scroller = new TCountingScroller(Form.get());
    Scroller->SetControl(nullptr);
    Bar->SetParent(nullptr);
    Scroller->Free();
    Scroller = scroller;
    Scroller->SetOrientation(soVertical);
    Scroller->SetAlign(alClient);
    Scroller->SetParent(Panel);
    Bar->SetParent(Scroller);
    Scroller->SetControl(Bar);
    Show();
    Fill(3);
    const int before = scroller->Measured;
    Fill(9);
    EXPECT_GT(scroller->Measured, before);
    EXPECT_TRUE(Arrow(PGB_BOTTOMORRIGHT));
}

TEST_F(PageScroller, FollowsItsOwnSize) {
    Show();
    Fill(6);
    EXPECT_TRUE(Arrow(PGB_BOTTOMORRIGHT));
    Form->SetHeight(500);
    EXPECT_FALSE(Arrow(PGB_BOTTOMORRIGHT));
    EXPECT_EQ(Bar->RowsHeight(), 294);
    Form->SetWidth(87 * 2 + 10);
    EXPECT_EQ(Bar->RowCount(), 3);
    EXPECT_EQ(Bar->RowsHeight(), 147);
    EXPECT_EQ(Bar->Width(), Scroller->ClientWidth());
    Form->SetWidth(91);
    EXPECT_EQ(Bar->RowCount(), 6);
    Form->SetHeight(232);
    EXPECT_EQ(Bar->Height(), 294);
    EXPECT_TRUE(Arrow(PGB_BOTTOMORRIGHT));
}

TEST_F(PageScroller, AClickOnAnArrowScrolls) {
    Scroller->SetAutoScroll(false);
    int scrolls = 0;
    int wanted = 0;
    Scroller->SetOnScroll([&](TObject*, TShiftState, int, int y, TPageScrollerOrientation orientation, int& delta) {
        ++scrolls;
        wanted = delta;
        EXPECT_EQ(y, 0);
        EXPECT_EQ(orientation, soVertical);
        delta = 20;
    });
    Show();
    Fill(10);
    ClickAt(LowerArrow());
    ASSERT_TRUE(PumpUntil([&] { return scrolls == 1 && Scroller->Position() > 0; }));
    EXPECT_GT(wanted, 0);
    EXPECT_EQ(Scroller->Position(), 20);
    EXPECT_LT(Seen().Top, 0);
    EXPECT_NE(Screenshot("pagescroller", Form->Handle()), "");
}

TEST_F(PageScroller, WithAutoScrollTheMouseOverAnArrowIsEnough) {
    Show();
    Fill(10);
    MoveMouse(LowerArrow());
    EXPECT_TRUE(PumpUntil([&] { return Scroller->Position() > 0; }));
    Scroller->SetAutoScroll(false);
    EXPECT_EQ(GetWindowLongA(Scroller->Handle(), GWL_STYLE) & PGS_AUTOSCROLL, 0);
}

TEST_F(PageScroller, ClicksReachTheButtonsThatAreScrolledIntoView) {
    Show();
    Fill(10);
    Scroller->SetPosition(200);
    int clicks = 0;
    TToolButton* const button = Bar->Buttons(6);
    button->SetOnClick([&](TObject*) { ++clicks; });
    const TPoint at = button->ClientToScreen({40, 20});
    EXPECT_EQ(FindDragTarget(at, true), button);
    ClickAt(at);
    EXPECT_TRUE(PumpUntil([&] { return clicks == 1; }));
}

TEST_F(PageScroller, WindowsMadeAnewAreScrolledAsBefore) {
    Show();
    Fill(10);
    Scroller->SetPosition(100);
    Scroller->RecreateWnd();
    EXPECT_EQ(Scroller->Position(), 100);
    EXPECT_EQ(Bar->Height(), 490);
    Bar->RecreateWnd();
    Application().ProcessMessages();
    Scroller->SetPosition(50);
    EXPECT_EQ(Seen().Top, -50 + (Arrow(PGB_TOPORLEFT) ? Scroller->ButtonSize() : 0));
    EXPECT_EQ(Bar->Height(), 490);
}

TEST_F(PageScroller, TheControlMayGo) {
    Show();
    Fill(10);
    Bar->Free();
    EXPECT_EQ(Scroller->Control(), nullptr);
    EXPECT_FALSE(Arrow(PGB_BOTTOMORRIGHT));
    auto* const panel = new TPanel(Form.get());
    panel->SetHeight(600);
    Scroller->SetControl(panel);
    EXPECT_EQ(panel->Parent(), Scroller);
    EXPECT_TRUE(Arrow(PGB_BOTTOMORRIGHT));
    EXPECT_EQ(panel->Height(), 600);
}

TEST_F(PageScroller, ScrollsHorizontallyToo) {
    Scroller->SetOrientation(soHorizontal);
    auto* const panel = new TPanel(Form.get());
    panel->SetWidth(500);
    Scroller->SetControl(panel);
    Show();
    EXPECT_TRUE(Arrow(PGB_BOTTOMORRIGHT));
    EXPECT_EQ(panel->Width(), 500);
    EXPECT_EQ(panel->Height(), Scroller->ClientHeight());
    Scroller->SetPosition(100);
    EXPECT_LT(RectIn(Panel->Handle(), panel->Handle()).Left, 0);
}

} // namespace
} // namespace kx
