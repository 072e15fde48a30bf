// SPDX-License-Identifier: MIT
// Grids whose cells are drawn by a handler.

#include "kx/ui/widgets/Grids.h"

#include "kx/win/Handles.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/FormTest.h"
#include "tests/ui/WheelLines.h"

#include <map>
#include <set>

namespace kx {
namespace {

using namespace test;
using TCell = std::pair<int, int>;

/// A row of icons, as it is used to choose one.
class DrawGrid : public TFormTest {
protected:
    DrawGrid() {
        Form->SetBorderStyle(bsNone);
        Grid->SetFixedCols(0);
        Grid->SetRowCount(1);
        Grid->SetDefaultColWidth(40);
        Grid->SetDefaultRowHeight(40);
        Grid->SetScrollBars(ssHorizontal);
        Grid->SetOptions({goVertLine, goHorzLine, goDrawFocusSelected, goThumbTracking});
        Grid->SetColCount(200);
        Grid->SetOnDrawCell([this](TObject*, int col, int row, const TRect&, TGridDrawState state) {
            Drawn.insert({col, row});
            States[{col, row}] = state;
        });
    }
    void Show() {
        TFormTest::Show();
        Grid->Update();
    }
    /// What is drawn when everything outstanding is painted.
    std::set<TCell> Redrawn() {
        Drawn.clear();
        Grid->Update();
        return Drawn;
    }
    static SCROLLINFO Bar(TDrawGrid& grid, int bar) {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_ALL;
        GetScrollInfo(grid.Handle(), bar, &info);
        return info;
    }
    TPoint In(int col, int row) {
        const TRect r = Grid->CellRect(col, row);
        return Grid->ClientToScreen({(r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2});
    }

    TDrawGrid* Grid = Add<TDrawGrid>(20, 16, 129, 65);
    std::set<TCell> Drawn;
    std::map<TCell, TGridDrawState> States;
};

TEST_F(DrawGrid, OnlyTheCellsThatAreSeenAreDrawn) {
    Show();
    Grid->Invalidate();
    EXPECT_EQ(Redrawn(), (std::set<TCell>{{0, 0}, {1, 0}, {2, 0}, {3, 0}}));
    EXPECT_EQ(Grid->VisibleColCount(), 3);
    EXPECT_EQ(Grid->CellRect(1, 0), (TRect{41, 0, 81, 40}));
    EXPECT_EQ(Grid->CellRect(50, 0), TRect{});
}

TEST_F(DrawGrid, ScrollingMovesWhatIsSeenAndDrawsOnlyWhatIsNew) {
    Show();
    Redrawn(); // what showing it has left to draw
    Grid->SetLeftCol(1);
    EXPECT_EQ(Redrawn(), (std::set<TCell>{{3, 0}, {4, 0}})) << "the last cell was seen in part";
    Grid->SetLeftCol(0);
    EXPECT_EQ(Redrawn(), (std::set<TCell>{{0, 0}}));
    Grid->SetLeftCol(100);
    EXPECT_EQ(Redrawn(), (std::set<TCell>{{100, 0}, {101, 0}, {102, 0}, {103, 0}}));
}

TEST_F(DrawGrid, TheScrollBarShowsTheRangeAndScrolls) {
    Show();
    SCROLLINFO info = Bar(*Grid, SB_HORZ);
    EXPECT_EQ(info.nMax, 199);
    EXPECT_EQ(info.nPage, 3u);
    const auto scroll = [&](int code) { SendMessageA(Grid->Handle(), WM_HSCROLL, static_cast<WPARAM>(code), 0); };
    scroll(SB_LINEDOWN);
    EXPECT_EQ(Grid->LeftCol(), 1);
    scroll(SB_PAGEDOWN);
    EXPECT_EQ(Grid->LeftCol(), 4);
    scroll(SB_BOTTOM);
    EXPECT_EQ(Grid->LeftCol(), 197);
    EXPECT_EQ(Bar(*Grid, SB_HORZ).nPos, 197);
    scroll(SB_TOP);
    EXPECT_EQ(Grid->LeftCol(), 0);
    EXPECT_EQ(GetWindowLongA(Grid->Handle(), GWL_STYLE) & WS_VSCROLL, 0);
    Grid->SetColCount(3);
    EXPECT_EQ(GetWindowLongA(Grid->Handle(), GWL_STYLE) & WS_HSCROLL, 0) << "nothing to scroll";
    Grid->SetColCount(4);
    EXPECT_NE(GetWindowLongA(Grid->Handle(), GWL_STYLE) & WS_HSCROLL, 0);
}

TEST_F(DrawGrid, TheThumbScrollsWhileItIsDragged) {
    Show();
    const TRect r = ScreenRectOf(Grid->Handle());
    SCROLLBARINFO info{};
    info.cbSize = sizeof info;
    ASSERT_TRUE(GetScrollBarInfo(Grid->Handle(), OBJID_HSCROLL, &info));
    const TPoint thumb{info.rcScrollBar.left + (info.xyThumbTop + info.xyThumbBottom) / 2, info.rcScrollBar.top + 5};
    // The system tracks the thumb in a loop of its own.
    int tracked = 0;
    RunDialog(
        [&] {
            PressAt(thumb);
            return PumpUntil([&] { return tracked > 0 && !GetCapture(); });
        },
        {{"the thumb is held", [&] { return GetCapture() == Grid->Handle(); },
          [&] {
              MoveMouse({r.Right, thumb.Y});
          }},
         {"it has scrolled", [&] { return Grid->LeftCol() > 100; },
          [&] {
              tracked = Grid->LeftCol();
              ReleaseAt({r.Right, thumb.Y});
          }}});
    EXPECT_GT(tracked, 100);
}

TEST_F(DrawGrid, CountsMayBeAsLargeAs32Bits) {
    Grid->SetColCount(INT32_MAX);
    Show();
    Grid->SetLeftCol(INT32_MAX);
    EXPECT_EQ(Grid->LeftCol(), INT32_MAX - 3);
    Grid->SetCol(INT32_MAX - 1);
    EXPECT_EQ(Grid->Col(), INT32_MAX - 1);
    Grid->Invalidate();
    EXPECT_EQ(Redrawn().size(), 3u);
    EXPECT_EQ(Bar(*Grid, SB_HORZ).nPos, INT32_MAX - 3);
    SendMessageA(Grid->Handle(), WM_HSCROLL, SB_PAGEDOWN, 0);
    EXPECT_EQ(Grid->LeftCol(), INT32_MAX - 3);
    Grid->SetFocus();
    PressKey(VK_RIGHT);
    PressKey(VK_HOME);
    EXPECT_TRUE(PumpUntil([&] { return Grid->Col() == 0; }));
    EXPECT_EQ(Grid->LeftCol(), 0);
}

TEST_F(DrawGrid, ACellThatIsSelectedComesIntoView) {
    Show();
    Grid->SetCol(10);
    EXPECT_EQ(Grid->LeftCol(), 8);
    Grid->SetLeftCol(10);
    EXPECT_EQ(Grid->LeftCol(), 10);
    EXPECT_EQ(Grid->Col(), 10);
    Grid->SetCol(3);
    EXPECT_EQ(Grid->LeftCol(), 3);
    EXPECT_THROW(Grid->SetCol(200), EInvalidOperation);
    EXPECT_THROW(Grid->SetCol(-1), EInvalidOperation);
    EXPECT_THROW(Grid->SetRow(1), EInvalidOperation);
    Grid->SetColCount(2);
    EXPECT_EQ(Grid->Col(), 1);
}

TEST_F(DrawGrid, WithoutColumnsThereIsNothing) {
    Show();
    Grid->SetCol(7);
    Grid->SetColCount(0);
    EXPECT_EQ(Grid->ColCount(), 0);
    EXPECT_EQ(Grid->Col(), 0);
    EXPECT_TRUE(Redrawn().empty());
    Grid->SetFocus();
    PressKey(VK_RIGHT);
    ClickAt(Grid->ClientToScreen({5, 5}));
    Application().ProcessMessages();
    EXPECT_EQ(Grid->Col(), 0);
    EXPECT_THROW(Grid->SetCol(0), EInvalidOperation);
    Grid->SetColCount(3);
    EXPECT_EQ(Redrawn().size(), 3u);
}

TEST_F(DrawGrid, RowsAndColumnsMayGoWhileTheMouseSelects) {
    Grid->SetBounds(0, 0, 300, 200);
    Grid->SetRowCount(50);
    Grid->SetOptions(Grid->Options() + TGridOptions{goRangeSelect});
    Show();
    int moves = 0;
    Grid->SetOnMouseMove([&](TObject*, TShiftState, int, int) { ++moves; });
    const TPoint from = In(0, 0);
    const TPoint to = In(2, 2);
    for (const bool rows : {true, false}) {
        PressAt(from);
        ASSERT_TRUE(PumpUntil([&] { return Grid->MouseCapture(); }));
        rows ? Grid->SetRowCount(0) : Grid->SetColCount(0);
        moves = 0;
        MoveMouse(to);
        ASSERT_TRUE(PumpUntil([&] { return moves > 0; }));
        EXPECT_EQ(Grid->Selection(), (TGridRect{0, 0, 0, 0}));
        rows ? Grid->SetRowCount(50) : Grid->SetColCount(200);
        MoveMouse(from);
        MoveMouse(to);
        ASSERT_TRUE(PumpUntil([&] { return Grid->Row() == 2; })) << "the selection goes on with the new cells";
        ReleaseAt(to);
        ASSERT_TRUE(PumpUntil([&] { return !Grid->MouseCapture(); }));
        Grid->SetSelection({0, 0, 0, 0});
    }
}

TEST_F(DrawGrid, AHandlerThatTakesTheCellAwayLeavesTheCurrentOne) {
    Grid->SetRowCount(10);
    Show();
    Grid->SetOnSelectCell([&](TObject*, int, int, bool&) { Grid->SetRowCount(5); });
    Grid->SetRow(5);
    EXPECT_EQ(Grid->Row(), 0);
    Grid->SetRow(4);
    EXPECT_EQ(Grid->Row(), 4);
    Grid->SetOnSelectCell([&](TObject*, int, int, bool&) { Grid->SetFixedCols(2); });
    Grid->SetCol(1);
    EXPECT_EQ(Grid->Col(), 2) << "fixed now";
}

TEST_F(DrawGrid, TheWheelScrollsAsManyLinesAsTheUserHasChosen) {
    Grid->SetBounds(0, 0, 300, 289);
    Grid->SetRowCount(100);
    Show();
    ASSERT_EQ(Grid->VisibleRowCount(), 6);
    const auto turn = [&](int delta) {
        SendMessageA(Grid->Handle(), WM_MOUSEWHEEL, static_cast<WPARAM>(static_cast<uint32_t>(MakeLParam(0, delta))),
                     0);
        return Grid->TopRow();
    };
    {
        const TWheelLines lines(2);
        EXPECT_EQ(turn(-WHEEL_DELTA), 2);
        EXPECT_EQ(turn(-3 * WHEEL_DELTA), 8);
        EXPECT_EQ(turn(WHEEL_DELTA), 6);
        EXPECT_EQ(turn(-50), 6) << "less than a line";
        EXPECT_EQ(turn(-50), 7) << "the rest counts";
        EXPECT_EQ(turn(-20), 8);
        EXPECT_EQ(turn(-59), 8);
        EXPECT_EQ(turn(1), 8) << "in the other direction the rest is forgotten";
        EXPECT_EQ(turn(58), 8);
        EXPECT_EQ(turn(1), 7);
        EXPECT_EQ(turn(-59), 7);
        EXPECT_EQ(turn(-1), 8);
    }
    {
        const TWheelLines lines(WHEEL_PAGESCROLL);
        EXPECT_EQ(turn(-WHEEL_DELTA), 14);
    }
    {
        const TWheelLines lines(20);
        EXPECT_EQ(turn(-WHEEL_DELTA), 20) << "no more than a page";
    }
    {
        const TWheelLines lines(0);
        EXPECT_EQ(turn(-WHEEL_DELTA), 20);
    }
    const TWheelLines lines(3);
    EXPECT_EQ(turn(30000), 0);
    EXPECT_EQ(turn(-30000), 94);
    Grid->SetRowCount(6);
    EXPECT_EQ(turn(-WHEEL_DELTA), 0);
    EXPECT_EQ(Grid->LeftCol(), 3) << "where there is nothing to scroll down, it goes sideways";
}

TEST_F(DrawGrid, AClickSelectsACellAndTheFocusShows) {
    int selects = 0;
    Grid->SetOnSelectCell([&](TObject*, int col, int row, bool&) {
        ++selects;
        EXPECT_EQ(col, 2);
        EXPECT_EQ(row, 0);
    });
    Show();
    int clicks = 0;
    Grid->SetOnClick([&](TObject*) { ++clicks; });
    ClickAt(In(2, 0));
    ASSERT_TRUE(PumpUntil([&] { return clicks == 1; }));
    EXPECT_EQ(Grid->Col(), 2);
    EXPECT_EQ(selects, 1);
    EXPECT_TRUE(Grid->Focused());
    Grid->Update();
    EXPECT_EQ(States.at({2, 0}), (TGridDrawState{gdSelected, gdFocused}));
    EXPECT_EQ(States.at({0, 0}), TGridDrawState{});
    auto* const other = new TDrawGrid(Form.get());
    other->SetParent(Form.get());
    other->SetBounds(200, 0, 100, 100);
    other->SetFocus();
    Grid->Update();
    EXPECT_EQ(States.at({2, 0}), TGridDrawState{gdSelected});
}

TEST_F(DrawGrid, AHandlerRefusesACell) {
    Grid->SetOnSelectCell([](TObject*, int col, int, bool& canSelect) { canSelect = col != 1; });
    Show();
    Grid->SetFocus();
    PressKey(VK_RIGHT);
    PressKey(VK_END);
    ASSERT_TRUE(PumpUntil([&] { return Grid->Col() == 199; }));
    Grid->SetCol(1);
    EXPECT_EQ(Grid->Col(), 199);
}

TEST_F(DrawGrid, TheKeyboardMovesTheCurrentCell) {
    Grid->SetBounds(0, 0, 300, 200);
    Grid->SetRowCount(50);
    Grid->SetScrollBars(ssBoth);
    Show();
    Grid->SetFocus();
    const auto press = [&](WORD key, int col, int row, std::initializer_list<WORD> held = {}) {
        PressKey(key, held);
        EXPECT_TRUE(PumpUntil([&] { return Grid->Col() == col && Grid->Row() == row; }, 5))
            << Grid->Col() << Grid->Row();
    };
    press(VK_RIGHT, 1, 0);
    press(VK_DOWN, 1, 1);
    press(VK_NEXT, 1, 1 + Grid->VisibleRowCount());
    press(VK_PRIOR, 1, 1);
    press(VK_END, 199, 1);
    press(VK_HOME, 0, 1);
    press(VK_END, 199, 49, {VK_CONTROL});
    EXPECT_EQ(Grid->TopRow(), 50 - Grid->VisibleRowCount());
    press(VK_HOME, 0, 0, {VK_CONTROL});
    press(VK_LEFT, 0, 0);
    press(VK_UP, 0, 0);
}

TEST_F(DrawGrid, RangesAreSelectedWithShiftAndTheMouse) {
    Grid->SetBounds(0, 0, 300, 200);
    Grid->SetRowCount(50);
    Grid->SetOptions(Grid->Options() + TGridOptions{goRangeSelect});
    Show();
    ClickAt(In(1, 1));
    ASSERT_TRUE(PumpUntil([&] { return Grid->Col() == 1; }));
    PressKey(VK_RIGHT, {VK_SHIFT});
    PressKey(VK_DOWN, {VK_SHIFT});
    ASSERT_TRUE(PumpUntil([&] { return Grid->Row() == 2; }));
    EXPECT_EQ(Grid->Selection(), (TGridRect{1, 1, 2, 2}));
    Grid->Update();
    EXPECT_TRUE(States.at({1, 2}).Contains(gdSelected));
    test::Drag(In(3, 2), In(1, 0));
    ASSERT_TRUE(PumpUntil([&] { return Grid->Row() == 0; }));
    EXPECT_EQ(Grid->Selection(), (TGridRect{1, 0, 3, 2}));
    Grid->SetOptions(Grid->Options() - TGridOptions{goRangeSelect});
    EXPECT_EQ(Grid->Selection(), (TGridRect{1, 0, 1, 0}));
    test::Drag(In(3, 2), In(2, 2));
    ASSERT_TRUE(PumpUntil([&] { return Grid->Col() == 2; }));
    EXPECT_EQ(Grid->Selection(), (TGridRect{2, 2, 2, 2}));
}

TEST_F(DrawGrid, FixedCellsStayWhereTheyAre) {
    Grid->SetBounds(0, 0, 300, 200);
    Grid->SetRowCount(50);
    Grid->SetScrollBars(ssBoth);
    Grid->SetFixedCols(1);
    Grid->SetFixedRows(2);
    Show();
    Grid->SetCol(20);
    Grid->SetRow(20);
    EXPECT_EQ(Grid->CellRect(0, 0), (TRect{0, 0, 40, 40}));
    int col = -2;
    int row = -2;
    Grid->MouseToCell(50, 90, col, row);
    EXPECT_EQ(col, Grid->LeftCol());
    EXPECT_EQ(row, Grid->TopRow());
    Grid->Invalidate();
    Grid->Update();
    EXPECT_EQ(States.at({0, 0}), TGridDrawState{gdFixed});
    EXPECT_THROW(Grid->SetFixedCols(200), EInvalidOperation);
    EXPECT_THROW(Grid->SetFixedRows(-1), EInvalidOperation);
    EXPECT_THROW(Grid->SetRow(1), EInvalidOperation);
    EXPECT_NE(Screenshot("grid", Form->Handle()), "");
    Grid->SetRowCount(1);
    EXPECT_EQ(Grid->FixedRows(), 0);
}

TEST_F(DrawGrid, CellsAreFilledAndHandlersMayThrow) {
    TExceptionLog log;
    Grid->SetOnDrawCell([&](TObject*, int col, int, const TRect&, TGridDrawState) {
        if (col == 2) {
            throw Exception("cell");
        }
        Grid->Canvas().Brush().SetColor(clRed);
        if (col == 1) {
            Grid->Canvas().FillRect({0, 0, 500, 500}); // clipped to its cell
        }
    });
    Show();
    EXPECT_EQ(log.Messages().back(), "cell");
    const TWindowDC dc(Grid->Handle());
    EXPECT_EQ(GetPixel(dc.Handle(), 60, 20), COLORREF{clRed});
    EXPECT_NE(GetPixel(dc.Handle(), 20, 20), COLORREF{clRed});
    Grid->SetOnDrawCell({});
    Grid->Update();
    EXPECT_EQ(GetPixel(dc.Handle(), 60, 20), ColorToRGB(clWindow));
    EXPECT_EQ(GetPixel(dc.Handle(), 40, 20), ColorToRGB(clSilver)) << "a line";
    EXPECT_EQ(GetPixel(dc.Handle(), 20, 20), ColorToRGB(clHighlight));
}

} // namespace
} // namespace kx
