// SPDX-License-Identifier: MIT
// Boxes that scroll their controls.

#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/ScrollBoxes.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/FormFiles.h"
#include "tests/support/FormTest.h"
#include "tests/ui/WheelLines.h"

#include <functional>

namespace kx {
namespace {

using namespace test;

/// An area of 200 x 100 pixels without a border, and a panel far away in it.
class ScrollBox : public TFormTest {
protected:
    ScrollBox() { Box->SetBorderStyle(bsNone); }

    static SCROLLINFO Bar(TScrollBox& box, int bar) {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_ALL;
        GetScrollInfo(box.Handle(), bar, &info);
        return info;
    }
    bool Has(DWORD style) { return (GetWindowLongA(Box->Handle(), GWL_STYLE) & static_cast<LONG>(style)) != 0; }
    void Send(UINT message, int code) { SendMessageA(Box->Handle(), message, static_cast<WPARAM>(code), 0); }

    TScrollBox* Box = Add<TScrollBox>(10, 10, 200, 100);
    TPanel* Far = Add<TPanel>(10, 300, 50, 40, Box);
};

TEST_F(ScrollBox, ItsRangeIsWhatTheControlsTake) {
    Show();
    EXPECT_EQ(Box->VertScrollBar().Range(), 340);
    EXPECT_TRUE(Has(WS_VSCROLL));
    EXPECT_FALSE(Has(WS_HSCROLL));
    EXPECT_EQ(Bar(*Box, SB_VERT).nMax, 339);
    EXPECT_EQ(Bar(*Box, SB_VERT).nPage, 100u);
    Far->SetLeft(500);
    EXPECT_EQ(Box->HorzScrollBar().Range(), 550);
    EXPECT_TRUE(Has(WS_HSCROLL));
    EXPECT_LT(Bar(*Box, SB_VERT).nPage, 100u) << "the other bar takes room";
    Box->VertScrollBar().SetMargin(8);
    EXPECT_EQ(Box->VertScrollBar().Range(), 348);
    Far->Hide();
    EXPECT_FALSE(Has(WS_VSCROLL) || Has(WS_HSCROLL)) << "nothing to scroll";
}

TEST_F(ScrollBox, ControlsThatFollowTheFarEdgeDoNotWidenIt) {
    Far->SetAnchors({akTop, akRight});
    Far->SetBounds(10, 300, 500, 40);
    Show();
    EXPECT_EQ(Box->HorzScrollBar().Range(), 0);
    EXPECT_EQ(Box->VertScrollBar().Range(), 340);
    Far->SetAnchors({akTop}); // of neither edge
    Box->SetAutoScroll(true);
    EXPECT_EQ(Box->HorzScrollBar().Range(), 0);
    Far->SetAnchors({akLeft, akTop, akRight}); // of both edges
    Box->SetAutoScroll(true);
    EXPECT_EQ(Box->HorzScrollBar().Range(), 0);
    Far->SetAnchors({akLeft, akTop});
    Box->SetAutoScroll(true);
    EXPECT_EQ(Box->HorzScrollBar().Range(), Far->Left() + Far->Width());
}

TEST_F(ScrollBox, TheBarMovesTheControls) {
    Show();
    Send(WM_VSCROLL, SB_LINEDOWN);
    EXPECT_EQ(Far->Top(), 292);
    EXPECT_EQ(Bar(*Box, SB_VERT).nPos, 8);
    EXPECT_FALSE(GetUpdateRect(Box->Handle(), nullptr, FALSE)) << "it is painted at once";
    Send(WM_VSCROLL, SB_PAGEDOWN);
    EXPECT_EQ(Far->Top(), 192);
    Send(WM_VSCROLL, SB_BOTTOM);
    EXPECT_EQ(Far->Top(), 60);
    EXPECT_EQ(Box->VertScrollBar().Position(), 240);
    Send(WM_VSCROLL, SB_LINEUP);
    EXPECT_EQ(Far->Top(), 68);
    Send(WM_VSCROLL, SB_PAGEUP);
    EXPECT_EQ(Far->Top(), 168);
    Send(WM_VSCROLL, SB_TOP);
    EXPECT_EQ(Far->Top(), 300);
    EXPECT_EQ(Box->VertScrollBar().Range(), 340) << "scrolling does not change it";
    EXPECT_EQ(RectIn(Box->Handle(), Far->Handle()), Far->BoundsRect());
    Far->SetLeft(400);
    Send(WM_HSCROLL, SB_LINEDOWN);
    EXPECT_EQ(Far->Left(), 392);
    EXPECT_EQ(Far->Top(), 300);
}

TEST_F(ScrollBox, ThePositionIsBroughtIntoTheRange) {
    Show();
    Box->VertScrollBar().SetPosition(1000);
    EXPECT_EQ(Box->VertScrollBar().Position(), 240);
    Box->VertScrollBar().SetPosition(-5);
    EXPECT_EQ(Box->VertScrollBar().Position(), 0);
    Box->VertScrollBar().SetPosition(240);
    Box->SetHeight(150); // more is seen, and nothing stays empty
    EXPECT_EQ(Box->VertScrollBar().Position(), 190);
    EXPECT_EQ(Far->Top(), 110);
    Box->SetHeight(400);
    EXPECT_EQ(Far->Top(), 300);
}

TEST_F(ScrollBox, TheWheelScrolls) {
    Show();
    SendMessageA(Box->Handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
    EXPECT_EQ(Far->Top(), 300 - 3 * 8);
    SendMessageA(Box->Handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    EXPECT_EQ(Far->Top(), 300);
}

TEST_F(ScrollBox, TheControlWithTheFocusComesIntoView) {
    auto* const inner = Add<TPanel>(0, 500, 100, 200, Box);
    auto* const edit = Add<TEdit>(5, 150, 60, 20, inner);
    Show();
    edit->SetFocus();
    EXPECT_EQ(inner->Top() + edit->Top() + edit->Height(), Box->ClientHeight());
    auto* const first = Add<TEdit>(5, 5, 60, 20, Box);
    Box->ScrollInView(*first);
    EXPECT_GE(first->Top(), 0);
    Box->VertScrollBar().SetPosition(100);
    Box->ScrollInView(*Form); // not inside
    EXPECT_EQ(Box->VertScrollBar().Position(), 100);
}

TEST_F(ScrollBox, AlignedControlsFillAllThatThereIs) {
    auto* const top = Add<TPanel>(0, 0, 10, 20, Box);
    top->SetAlign(alTop);
    auto* const left = Add<TPanel>(0, 0, 10, 20, Box);
    left->SetAlign(alLeft);
    Far->SetLeft(450);
    Show();
    EXPECT_EQ(top->Width(), 500);
    EXPECT_EQ(left->Height(), 320);
    left->Free();
    Box->HorzScrollBar().SetPosition(100);
    EXPECT_EQ(top->BoundsRect(), (TRect{-100, 0, 400, 20}));
    Box->VertScrollBar().SetPosition(50);
    EXPECT_EQ(top->Top(), -50);
    Form->Realign();
    EXPECT_EQ(top->Top(), -50);
}

TEST_F(ScrollBox, ARangeOfItsOwnStays) {
    Box->SetAutoScroll(false);
    Box->VertScrollBar().SetRange(1000);
    Show();
    EXPECT_EQ(Box->VertScrollBar().Range(), 1000);
    Box->VertScrollBar().SetVisible(false);
    EXPECT_FALSE(Has(WS_VSCROLL));
    Box->VertScrollBar().SetPosition(900);
    EXPECT_EQ(Far->Top(), -600);
    Box->SetAutoScroll(true);
    EXPECT_EQ(Box->VertScrollBar().Range(), 340);
    EXPECT_EQ(Far->Top(), 60);
}

TEST_F(ScrollBox, ComesBackFromAFormFileAsItWasScrolled) {
    Show();
    Box->VertScrollBar().SetPosition(40);
    Box->SetName("Box");
    Far->SetName("Far");
    Form->SetName("F");
    const std::string text = FormTextOf(*Form);
    EXPECT_NE(text.find("    VertScrollBar.Position = 40\r\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("Range"), std::string::npos) << "it follows the controls";
    RegisterClasses<TScrollBox, TPanel>();
    const TFormPtr copy(NewForm<TForm>(nullptr));
    ReadFormOver(*copy, text);
    auto& box = dynamic_cast<TScrollBox&>(*copy->FindComponent("Box"));
    copy->Show();
    EXPECT_EQ(dynamic_cast<TPanel&>(*copy->FindComponent("Far")).Top(), 260);
    EXPECT_EQ(box.VertScrollBar().Range(), 340);
    EXPECT_EQ(Bar(box, SB_VERT).nPos, 40);
}

/// Drags the thumb of a bar to the bar's end; `held` runs before it is let go.
void DragThumb(TScrollBox& box, LONG bar, const std::function<void()>& held) {
    const bool isUpright = bar == OBJID_VSCROLL;
    SCROLLBARINFO info{};
    info.cbSize = sizeof info;
    ASSERT_TRUE(GetScrollBarInfo(box.Handle(), bar, &info));
    const TRect r = FromRECT(info.rcScrollBar);
    const int middle = (info.xyThumbTop + info.xyThumbBottom) / 2;
    const TPoint thumb = isUpright ? TPoint{r.Left + 5, r.Top + middle} : TPoint{r.Left + middle, r.Top + 5};
    const TPoint end = isUpright ? TPoint{thumb.X, r.Bottom - 20} : TPoint{r.Right - 20, thumb.Y};
    const auto tracked = [&] {
        SCROLLINFO position{};
        position.cbSize = sizeof position;
        position.fMask = SIF_TRACKPOS;
        GetScrollInfo(box.Handle(), isUpright ? SB_VERT : SB_HORZ, &position);
        return position.nTrackPos;
    };
    bool isDone = false;
    RunDialog( // the system tracks the thumb in a loop of its own
        [&] {
            PressAt(thumb);
            return PumpUntil([&] { return isDone && !GetCapture(); });
        },
        {{"the thumb is held", [&] { return GetCapture() == box.Handle(); }, [&] { MoveMouse(end); }},
         {"it is at the end", [&] { return tracked() > 100; },
          [&] {
              held();
              isDone = true;
              ReleaseAt(end);
          }}});
}

TEST_F(ScrollBox, TheThumbScrollsWhenItIsLetGoOrAllTheWhile) {
    Far->SetLeft(500);
    Show();
    DragThumb(*Box, OBJID_VSCROLL, [&] { EXPECT_EQ(Far->Top(), 300); });
    EXPECT_LT(Far->Top(), 200);
    EXPECT_EQ(Far->Left(), 500);
    Box->HorzScrollBar().SetTracking(true);
    const int top = Far->Top();
    DragThumb(*Box, OBJID_HSCROLL, [&] { EXPECT_LT(Far->Left(), 400); });
    EXPECT_LT(Far->Left(), 400);
    EXPECT_EQ(Far->Top(), top);
}

TEST_F(ScrollBox, AnArrowGoesByTheIncrementAndAPageByWhatIsSeen) {
    Box->VertScrollBar().SetIncrement(17);
    Show();
    Send(WM_VSCROLL, SB_LINEDOWN);
    EXPECT_EQ(Far->Top(), 283);
    Send(WM_VSCROLL, SB_PAGEDOWN);
    Send(WM_VSCROLL, SB_PAGEUP);
    EXPECT_EQ(Far->Top(), 283);
    Box->VertScrollBar().SetIncrement(INT_MAX);
    Send(WM_VSCROLL, SB_LINEDOWN);
    EXPECT_EQ(Far->Top(), 60);
    SendMessageA(Box->Handle(), WM_VSCROLL, SB_TOP, reinterpret_cast<LPARAM>(Far->Handle()));
    EXPECT_EQ(Far->Top(), 60) << "of a bar that is inside";
}

TEST_F(ScrollBox, ABarTakesOverTheSettingsOfAnother) {
    auto* const other = Add<TScrollBox>(10, 150, 100, 100);
    for (TScrollBox* const box : {Box, other}) {
        box->SetAutoScroll(false);
    }
    Show();
    TControlScrollBar& bar = Box->VertScrollBar();
    bar.SetIncrement(11);
    bar.SetMargin(12);
    bar.SetRange(1000);
    bar.SetTracking(true);
    other->SetVertScrollBar(bar);
    EXPECT_EQ(other->VertScrollBar().Increment(), 11);
    EXPECT_EQ(other->VertScrollBar().Margin(), 12);
    EXPECT_EQ(other->VertScrollBar().Range(), 1000);
    EXPECT_TRUE(other->VertScrollBar().Tracking());
    EXPECT_EQ(Bar(*other, SB_VERT).nMax, 999);
    bar.SetVisible(false);
    other->SetVertScrollBar(bar);
    EXPECT_FALSE(other->VertScrollBar().Visible());
    EXPECT_EQ(Bar(*other, SB_VERT).nMax, 0);
}

TEST_F(ScrollBox, RangesShowAtOnceAndAreNeverNegative) {
    Box->SetAutoScroll(false);
    Show();
    Box->HorzScrollBar().SetRange(-5);
    EXPECT_EQ(Box->HorzScrollBar().Range(), 0);
    Box->HorzScrollBar().SetRange(700);
    EXPECT_TRUE(Has(WS_HSCROLL));
    EXPECT_FALSE(Box->AutoScroll());
    Box->SetAutoScroll(true);
    EXPECT_FALSE(Has(WS_HSCROLL));
    Box->VertScrollBar().SetRange(700);
    EXPECT_FALSE(Box->AutoScroll()) << "it has a range of its own now";
    Far->SetTop(900);
    EXPECT_EQ(Box->VertScrollBar().Range(), 700);
}

TEST_F(ScrollBox, AFileWithBothARangeAndAutoScrollScrollsByTheControls) {
    Box->SetAutoScroll(false);
    ReadFormOver(*Box, "object B: TScrollBox AutoScroll = True VertScrollBar.Range = 1000 end");
    EXPECT_TRUE(Box->AutoScroll());
    EXPECT_EQ(Box->VertScrollBar().Range(), 340);
    ReadFormOver(*Box, "object B: TScrollBox VertScrollBar.Position = -50 end");
    EXPECT_EQ(Box->VertScrollBar().Position(), 0);
    EXPECT_EQ(Far->Top(), 300);
}

TEST_F(ScrollBox, ControlsAlignedAtTheFarEdgeComeOnTop) {
    auto* const right = Add<TPanel>(0, 0, 70, 10, Box);
    right->SetAlign(alRight);
    auto* const bottom = Add<TPanel>(0, 0, 10, 45, Box);
    bottom->SetAlign(alBottom);
    Far->SetLeft(400);
    Show();
    EXPECT_EQ(Box->HorzScrollBar().Range(), 450 + 70);
    EXPECT_EQ(Box->VertScrollBar().Range(), 340 + 45);
    auto* const left = Add<TPanel>(0, 0, 600, 10, Box);
    left->SetAlign(alLeft);
    EXPECT_EQ(Box->HorzScrollBar().Range(), 600 + 70);
    EXPECT_EQ(Bar(*Box, SB_HORZ).nMax, 669);
    Far->SetAlign(alClient); // takes what is left
    EXPECT_EQ(Box->VertScrollBar().Range(), 45);
}

TEST_F(ScrollBox, TheMarginIsScrolledToAsWell) {
    Show();
    Box->VertScrollBar().SetMargin(30);
    EXPECT_EQ(Bar(*Box, SB_VERT).nMax, 369);
    Far->Hide();
    EXPECT_EQ(Box->VertScrollBar().Range(), 0) << "there is nothing";
    Far->Show();
    Box->ScrollInView(*Far);
    EXPECT_EQ(Far->Top(), 100 - 40 - 30);
    Box->VertScrollBar().SetPosition(200);
    auto* const high = Add<TPanel>(10, -100, 50, 20, Box);
    Box->ScrollInView(*high);
    EXPECT_EQ(high->Top(), 30);
    Box->VertScrollBar().SetMargin(INT_MAX);
    EXPECT_EQ(Box->VertScrollBar().Range(), INT_MAX);
}

TEST_F(ScrollBox, OfALargeControlTheBeginningComesIntoView) {
    auto* const large = Add<TPanel>(250, 350, 900, 800, Box);
    auto* const inner = Add<TPanel>(300, 20, 30, 10, large);
    Show();
    Box->ScrollInView(*large);
    EXPECT_EQ(large->Left(), 0);
    EXPECT_EQ(large->Top(), 0);
    Box->ScrollInView(*inner);
    EXPECT_EQ(large->Left() + inner->Left() + inner->Width(), Box->ClientWidth());
    EXPECT_EQ(large->Top(), 0);
    Box->ScrollInView(*Box);
    EXPECT_EQ(large->Top(), 0);
    Box->HorzScrollBar().SetPosition(250 + 400);
    Box->ScrollInView(*inner);
    EXPECT_EQ(large->Left() + inner->Left(), 0);
}

TEST_F(ScrollBox, TheWheelGoesSidewaysWhereThereIsNothingBelow) {
    Far->SetBounds(500, 0, 50, 40);
    Box->HorzScrollBar().SetIncrement(0); // nobody would get anywhere
    Show();
    const auto turn = [&](int delta) {
        SendMessageA(Box->Handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(delta)), 0);
    };
    const TWheelLines lines(WHEEL_PAGESCROLL);
    turn(-WHEEL_DELTA);
    EXPECT_EQ(Far->Left(), 300);
    Box->HorzScrollBar().SetIncrement(30);
    turn(WHEEL_DELTA);
    EXPECT_EQ(Far->Left(), 300 + 6 * 30) << "the lines that a page has";
}

TEST_F(ScrollBox, ABarThatTakesTheRoomMakesTheOtherOneNecessary) {
    Far->SetLeft(145); // up to 195, of 200 pixels
    Show();
    EXPECT_TRUE(Has(WS_VSCROLL));
    EXPECT_TRUE(Has(WS_HSCROLL));
}

} // namespace
} // namespace kx
