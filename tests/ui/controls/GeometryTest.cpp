// SPDX-License-Identifier: MIT
// Sizes at the limits of their numbers.

#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/Grids.h"
#include "kx/win/Handles.h"
#include "tests/ui/ControlFixture.h"

#include <climits>

// Sizes beyond all reason: a clear error, or nothing to be seen.

namespace kx {
namespace {

using namespace test;

class Geometry : public TControlTest<TPanel> {};

TEST_F(Geometry, EdgesBeyond32BitsAreRefused) {
    for (const bool shown : {false, true}) {
        if (shown) {
            Show();
        }
        const TRect before = Control->BoundsRect();
        EXPECT_THROW(Control->SetBounds(INT_MAX - 5, 0, 10, 10), EIntOverflow);
        EXPECT_THROW(Control->SetBounds(0, INT_MAX - 5, 10, 10), EIntOverflow);
        EXPECT_THROW(Control->SetBoundsRect({INT_MIN, 0, 10, 10}), EIntOverflow);
        EXPECT_THROW(Control->SetBoundsRect({0, INT_MIN, 10, 10}), EIntOverflow);
        EXPECT_THROW(Control->SetLeft(INT_MAX), EIntOverflow);
        EXPECT_EQ(Control->BoundsRect(), before);
    }
    EXPECT_THROW(Control->ClientToScreen({INT_MAX, 0}), EIntOverflow);
    EXPECT_THROW(Control->ClientToScreen({0, INT_MAX}), EIntOverflow);
    EXPECT_THROW(Control->ScreenToClient({INT_MIN, 0}), EIntOverflow);
    EXPECT_THROW(Control->ScreenToClient({0, INT_MIN}), EIntOverflow);
}

TEST_F(Geometry, TheGreatestEdgesAreTaken) {
    TBevel bevel;
    bevel.SetBounds(INT_MAX - 10, INT_MAX - 20, 10, 20);
    EXPECT_EQ(bevel.BoundsRect(), (TRect{INT_MAX - 10, INT_MAX - 20, INT_MAX, INT_MAX}));
    bevel.SetBounds(INT_MAX, INT_MIN, -5, -5);
    EXPECT_EQ(bevel.Width(), 0);
    EXPECT_THROW(bevel.SetClientWidth(1), EIntOverflow);
    EXPECT_EQ(bevel.Width(), 0);
}

TEST_F(Geometry, BevelsWiderThanThePanelCostNoMoreThanThePanel) {
    Control->SetBevelInner(bvLowered);
    Show();
    TPanel inside(Form.get());
    inside.SetParent(Control);
    inside.SetAlign(alClient);
    const TWindowDC screen(nullptr);
    const HDC memory = CreateCompatibleDC(screen.Handle());
    const HBITMAP bitmap = CreateCompatibleBitmap(screen.Handle(), 200, 100);
    const HGDIOBJ old = SelectObject(memory, bitmap);
    for (const int width : {20000000, INT_MAX}) {
        Control->SetBevelWidth(width);
        Control->SetBorderWidth(width);
        EXPECT_EQ(inside.Width(), 0);
        EXPECT_EQ(inside.Height(), 0);
        const DWORD begin = GetTickCount();
        Control->PaintTo(memory, 0, 0);
        EXPECT_LT(GetTickCount() - begin, 5000u);
        EXPECT_EQ(GetPixel(memory, 0, 50), ColorToRGB(clBtnHighlight));
        EXPECT_EQ(GetPixel(memory, 199, 50), ColorToRGB(clBtnShadow));
    }
    Control->SetBevelOuter(bvSpace);
    Control->PaintTo(memory, 0, 0);
    Control->SetBevelWidth(-7);
    Control->SetBorderWidth(INT_MIN);
    EXPECT_EQ(inside.BoundsRect(), (TRect{0, 0, 200, 100})) << "less than nothing is nothing";
    Control->SetBevelOuter(bvRaised);
    Control->SetBevelInner(bvNone);
    Control->SetBevelWidth(3);
    Control->SetBorderWidth(4);
    EXPECT_EQ(inside.BoundsRect(), (TRect{7, 7, 193, 93}));
    inside.SetParent(nullptr);
    SelectObject(memory, old);
    DeleteObject(bitmap);
    DeleteDC(memory);
}

class HugeCells : public TControlTest<TDrawGrid> {};

TEST_F(HugeCells, ArePaintedScrolledAndClicked) {
    Control->SetColCount(INT_MAX);
    Control->SetRowCount(INT_MAX);
    Control->SetFixedCols(INT_MAX - 2);
    Control->SetDefaultColWidth(INT_MAX);
    Control->SetDefaultRowHeight(INT_MAX);
    Control->SetGridLineWidth(INT_MAX);
    Show();
    Control->Repaint();
    int col = -2;
    int row = -2;
    Control->MouseToCell(5, 5, col, row);
    EXPECT_EQ(col, 0);
    EXPECT_EQ(row, 0);
    Control->SetFixedCols(0);
    Control->SetFixedRows(0);
    const TRect cell = Control->CellRect(0, 0);
    EXPECT_GT(cell.Right, 1000000);
    Control->SetTopRow(INT_MAX);
    EXPECT_EQ(Control->TopRow(), INT_MAX - 1);
    ClickAt(Control->ClientToScreen({5, 5}));
    ASSERT_TRUE(PumpUntil([&] { return Control->Row() == INT_MAX - 1; }));
    Control->Repaint();
    EXPECT_EQ(Control->VisibleRowCount(), 0);
}

} // namespace
} // namespace kx
