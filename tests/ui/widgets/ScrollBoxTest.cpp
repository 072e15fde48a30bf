// Boxes that scroll their controls.

#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/ScrollBoxes.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/FormFiles.h"
#include "tests/support/FormTest.h"

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
    Far->SetLeft(450);
    Show();
    EXPECT_EQ(top->Width(), 500);
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

} // namespace
} // namespace kx
