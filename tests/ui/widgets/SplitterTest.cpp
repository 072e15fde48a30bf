// SPDX-License-Identifier: MIT
// Splitters between controls.

#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/Splitters.h"
#include "tests/support/FormTest.h"

namespace kx {
namespace {

using namespace test;

/// A panel, the splitter beside it, and a panel that takes the rest, in a form of 400 x 300 without a frame.
class Splitter : public TFormTest {
protected:
    Splitter() {
        Form->SetBorderStyle(bsNone);
        Arrange(alLeft);
        Split->SetOnMoved([this](TObject*) { ++Moves; });
    }
    ~Splitter() override { ReleaseAt({5, 5}); }

    void Arrange(TAlign side) {
        Side->SetAlign(alNone);
        Split->SetAlign(alNone);
        Side->SetBounds(side == alRight ? 300 : 0, side == alBottom ? 200 : 0, 100, 100);
        Side->SetAlign(side);
        Split->SetBounds(side == alRight ? 290 : 150, side == alBottom ? 190 : 150, 6, 6);
        Split->SetAlign(side);
        Rest->SetAlign(alClient);
    }
    TPoint Grip() { return Split->ClientToScreen({Split->Width() / 2, Split->Height() / 2}); }
    void DragBy(int x, int y) {
        const TPoint from = Grip();
        PressAt(from);
        MoveMouse({from.X + x / 2, from.Y + y / 2});
        ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
        MoveMouse({from.X + x, from.Y + y});
        ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
        ReleaseAt({from.X + x, from.Y + y});
        ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
    }

    TPanel* Side = Add<TPanel>(0, 0, 100, 100);
    TSplitter* Split = Add<TSplitter>(100, 0, 6, 100);
    TPanel* Rest = Add<TPanel>(200, 0, 100, 100);
    int Moves = 0;
};

TEST_F(Splitter, ResizesTheControlBesideItOnEachSide) {
    Show();
    DragBy(40, 9);
    EXPECT_EQ(Side->Width(), 140);
    EXPECT_EQ(Rest->Left(), 146);
    EXPECT_EQ(Moves, 1);
    Arrange(alRight);
    DragBy(-30, 9);
    EXPECT_EQ(Side->BoundsRect(), (TRect{270, 0, 400, 300}));
    EXPECT_EQ(Rest->Width(), 264);
    Arrange(alTop);
    DragBy(9, 25);
    EXPECT_EQ(Side->Height(), 125);
    Arrange(alBottom);
    DragBy(9, -15);
    EXPECT_EQ(Side->BoundsRect(), (TRect{0, 185, 400, 300}));
    EXPECT_EQ(Moves, 4);
}

TEST_F(Splitter, ADisabledOrHiddenControlKeepsItsSize) {
    Show();
    Side->SetEnabled(false);
    DragBy(40, 9);
    EXPECT_EQ(Side->Width(), 100);
    Side->SetEnabled(true);
    Side->Hide();
    DragBy(40, 9);
    EXPECT_EQ(Side->Width(), 100);
    EXPECT_EQ(Moves, 0);
}

TEST_F(Splitter, NothingMovesBeforeTheReleaseUnlessItShallGoAlong) {
    Show();
    const TPoint from = Grip();
    for (const TResizeStyle style : {rsNone, rsLine, rsPattern, rsUpdate}) {
        Split->SetResizeStyle(style);
        Side->SetWidth(100);
        Moves = 0;
        PressAt(from);
        MoveMouse({from.X + 20, from.Y});
        ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
        MoveMouse({from.X + 50, from.Y});
        ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
        EXPECT_EQ(Side->Width(), style == rsUpdate ? 150 : 100);
        ReleaseAt({from.X + 50, from.Y});
        ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
        EXPECT_EQ(Side->Width(), 150);
        EXPECT_EQ(Moves, style == rsUpdate ? 2 : 1);
    }
}

TEST_F(Splitter, LeavesRoomOnBothSides) {
    Show();
    Split->SetAutoSnap(false);
    DragBy(-95, 0);
    EXPECT_EQ(Side->Width(), 30);
    DragBy(399 - Split->Left(), 0);
    EXPECT_EQ(Side->Width(), 400 - 6 - 30);
    Split->SetMinSize(0);
    EXPECT_EQ(Split->MinSize(), 1);
}

TEST_F(Splitter, AControlThatWouldBecomeTooSmallDisappearsAndComesBack) {
    Show();
    DragBy(-75, 0);
    EXPECT_EQ(Side->Width(), 0);
    EXPECT_EQ(Split->Left(), 0);
    DragBy(60, 0);
    EXPECT_EQ(Side->Width(), 60);
}

TEST_F(Splitter, AHandlerMayChangeTheSizeOrRefuse) {
    Show();
    Split->SetOnCanResize([](TObject*, int& size, bool& accept) {
        size = size / 10 * 10;
        accept = size <= 150;
    });
    DragBy(27, 0);
    EXPECT_EQ(Side->Width(), 120);
    DragBy(80, 0);
    EXPECT_EQ(Side->Width(), 120);
}

TEST_F(Splitter, OtherButtonsAndLostDragsChangeNothing) {
    Show();
    const TPoint from = Grip();
    PressAt(from, mbRight);
    MoveMouse({from.X + 50, from.Y});
    ReleaseAt({from.X + 50, from.Y}, mbRight);
    ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
    EXPECT_EQ(Side->Width(), 100);
    PressAt(from);
    MoveMouse({from.X + 50, from.Y});
    ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
    Split->Perform(WM_CANCELMODE);
    ReleaseAt({from.X + 50, from.Y});
    ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
    EXPECT_EQ(Side->Width(), 100);
    EXPECT_EQ(Moves, 0);
}

TEST_F(Splitter, MayBeFreedByItsHandler) {
    Show();
    bool freed = false;
    Split->SetOnCanResize([&](TObject*, int&, bool&) {
        Split->Free();
        freed = true;
    });
    const TPoint from = Grip();
    PressAt(from);
    MoveMouse({from.X + 20, from.Y});
    EXPECT_TRUE(PumpUntil([&] { return freed; }));
}

} // namespace
} // namespace kx
