// SPDX-License-Identifier: MIT
// Columns and rows of grids that the user drags to other places.

#include "kx/ui/widgets/GridsString.h"
#include "tests/support/FormTest.h"

namespace kx {
namespace {

using namespace test;

/// Six columns and six rows, each cell with its place as its text.
class GridMoving : public TFormTest {
protected:
    GridMoving() {
        Form->SetBorderStyle(bsNone);
        Grid->SetBorderStyle(bsNone);
        Grid->SetColCount(6);
        Grid->SetRowCount(6);
        for (int col = 0; col < 6; ++col) {
            for (int row = 0; row < 6; ++row) {
                Grid->SetCells(col, row, std::to_string(col) + std::to_string(row));
            }
        }
        Grid->SetOnColumnMoved([this](TObject*, int from, int to) { Note("col", from, to); });
        Grid->SetOnRowMoved([this](TObject*, int from, int to) { Note("row", from, to); });
    }
    ~GridMoving() override { ReleaseAt({5, 5}); }

    void Note(const std::string& what, int from, int to) {
        Log += what + std::to_string(from) + std::to_string(to) + " ";
    }
    void Include(TGridOption option) {
        TGridOptions options = Grid->Options();
        Grid->SetOptions(options.Include(option));
    }
    TPoint In(int col, int row) {
        const TRect r = Grid->CellRect(col, row);
        return Grid->ClientToScreen({(r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2});
    }
    void Take() {
        ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
    }
    void Hold(TPoint from, TPoint to) {
        PressAt(from);
        MoveMouse({(from.X + to.X) / 2, (from.Y + to.Y) / 2});
        Take();
        MoveMouse(to);
        Take();
    }
    void Drag(TPoint from, TPoint to) {
        Hold(from, to);
        ReleaseAt(to);
        Take();
    }
    /// The first digits of the texts in a row, or the second ones in a column.
    std::string Columns(int row) const {
        std::string order;
        for (int col = 0; col < Grid->ColCount(); ++col) {
            order += Grid->Cells(col, row).substr(0, 1);
        }
        return order;
    }
    std::string Rows(int col) const {
        std::string order;
        for (int row = 0; row < Grid->RowCount(); ++row) {
            order += Grid->Cells(col, row).substr(1);
        }
        return order;
    }

    TStringGrid* Grid = Add<TStringGrid>(20, 20, 350, 130);
    std::string Log;
};

TEST_F(GridMoving, OnlyWhereItIsAllowed) {
    Show();
    Drag(In(1, 0), In(3, 0));
    Drag(In(0, 1), In(0, 3));
    EXPECT_EQ(Log, "");
    EXPECT_EQ(Columns(0), "012345");
    Include(goColMoving);
    Drag(In(0, 1), In(0, 3));
    Drag(In(0, 0), In(3, 0));
    Drag(In(1, 1), In(3, 1)); // selects
    EXPECT_EQ(Log, "");
    Include(goRowMoving);
    Drag(In(0, 0), In(0, 3));
    EXPECT_EQ(Log, "");
}

TEST_F(GridMoving, ColumnsGoWithTheirTextsAndSizes) {
    Include(goColMoving);
    Grid->SetColWidths(1, 40);
    Grid->SetCol(1);
    Show();
    Drag(In(1, 0), In(3, 0));
    EXPECT_EQ(Log, "col13 ");
    EXPECT_EQ(Columns(0), "023145");
    EXPECT_EQ(Columns(4), "023145");
    EXPECT_EQ(Rows(1), "012345");
    EXPECT_EQ(Grid->ColWidths(3), 40);
    EXPECT_EQ(Grid->ColWidths(1), 64);
    EXPECT_EQ(Grid->Col(), 3) << "the current cell goes along";
    EXPECT_EQ(Grid->Selection(), (TGridRect{3, 1, 3, 1})) << "and so does what is selected";
    Drag(In(4, 0), In(1, 0));
    EXPECT_EQ(Log, "col13 col41 ");
    EXPECT_EQ(Columns(0), "042315");
    EXPECT_EQ(Grid->Col(), 4);
    EXPECT_EQ(Grid->ColWidths(4), 40);
    Drag(In(2, 0), In(2, 0));
    EXPECT_EQ(Log, "col13 col41 ") << "a click";
}

TEST_F(GridMoving, RowsToo) {
    Include(goRowMoving);
    Grid->SetRowHeights(2, 30);
    Show();
    Drag(In(0, 2), In(0, 1));
    EXPECT_EQ(Log, "row21 ");
    EXPECT_EQ(Rows(0), "021345");
    EXPECT_EQ(Rows(5), "021345");
    EXPECT_EQ(Columns(1), "012345");
    EXPECT_EQ(Grid->RowHeights(1), 30);
    EXPECT_EQ(Grid->Row(), 2);
}

TEST_F(GridMoving, BesideTheCellsTheGridScrolls) {
    Include(goRowMoving);
    Grid->SetRowCount(20);
    Show();
    PressAt(In(0, 1));
    for (int turn = 0; turn < 8; ++turn) {
        MoveMouse(Grid->ClientToScreen({10, 500 + turn}));
        Take();
    }
    EXPECT_GT(Grid->TopRow(), 3);
    ReleaseAt(Grid->ClientToScreen({10, 507}));
    Take();
    const int last = Grid->TopRow() + Grid->VisibleRowCount() - 1; // letting go may scroll once more
    EXPECT_EQ(Grid->Cells(0, last), "01");
    PressAt(In(0, last));
    for (int turn = 0; turn < 12; ++turn) {
        MoveMouse(Grid->ClientToScreen({10, 5 - turn}));
        Take();
    }
    EXPECT_EQ(Grid->TopRow(), 1);
    ReleaseAt(Grid->ClientToScreen({10, -6}));
    Take();
    EXPECT_EQ(Grid->Cells(0, 1), "01");
    EXPECT_EQ(Grid->Cells(0, 2), "02");
}

TEST_F(GridMoving, ABarShowsWhereItWillStand) {
    Include(goColMoving);
    Show();
    const auto marked = [&](int col, bool behind) {
        const TRect r = Grid->CellRect(col, 1);
        Grid->Update();
        return Grid->Canvas().Pixels((behind ? r.Right + 1 : r.Left) - 1, r.Top + 10) ==
               static_cast<TColor>(ColorToRGB(clHighlight));
    };
    Hold(In(1, 0), In(3, 0));
    EXPECT_TRUE(marked(3, true));
    EXPECT_FALSE(marked(2, true));
    Screenshot("grid-moving");
    MoveMouse(In(1, 0));
    Take();
    EXPECT_FALSE(marked(3, true));
    EXPECT_FALSE(marked(1, false)) << "where it is already";
    ReleaseAt(In(1, 0));
    Take();
    Hold(In(3, 0), In(2, 0));
    EXPECT_TRUE(marked(2, false));
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(PumpUntil([&] { return !marked(2, false); }));
    ReleaseAt(In(2, 0));
    Take();
    EXPECT_EQ(Log, "") << "Escape ended it";
    Include(goRowMoving);
    Hold(In(0, 0), In(3, 0));
    EXPECT_FALSE(marked(3, true)) << "fixed columns are not moved";
    ReleaseAt(In(3, 0));
    Hold(In(0, 0), In(0, 3));
    const TRect r = Grid->CellRect(1, 3);
    const auto isRowMarked = [&] {
        Grid->Update();
        return Grid->Canvas().Pixels(r.Right - 5, r.Bottom) == static_cast<TColor>(ColorToRGB(clHighlight));
    };
    EXPECT_FALSE(isRowMarked());
    ReleaseAt(In(0, 3));
    Take();
    Hold(In(0, 1), In(0, 3));
    EXPECT_TRUE(isRowMarked());
    ReleaseAt(In(0, 1));
    Take();
    Grid->SetColWidths(2, 1000); // its end is not seen
    Hold(In(1, 0), Grid->ClientToScreen({300, 5}));
    Grid->Update();
    EXPECT_EQ(Grid->Canvas().Pixels(Grid->ClientWidth() - 1, 60), static_cast<TColor>(ColorToRGB(clHighlight)));
}

TEST_F(GridMoving, WhatTakesTheMouseAwayEndsIt) {
    Include(goColMoving);
    Show();
    Hold(In(1, 0), In(3, 0));
    SendMessageA(Grid->Handle(), WM_CANCELMODE, 0, 0);
    ReleaseAt(In(3, 0));
    Take();
    EXPECT_EQ(Log, "");
    Include(goColSizing);
    const TRect r = Grid->CellRect(1, 0);
    const TPoint edge = Grid->ClientToScreen({r.Right, r.Top + 5});
    PressAt(edge);
    Take();
    SendMessageA(Grid->Handle(), WM_CANCELMODE, 0, 0);
    MoveMouse({edge.X + 20, edge.Y});
    Take();
    EXPECT_EQ(Grid->ColWidths(1), 64);
}

TEST_F(GridMoving, AButtonThatWasLetGoElsewhereEndsIt) {
    Include(goColMoving);
    Include(goColSizing);
    Show();
    const auto moveWithoutButton = [this] { SendMessageA(Grid->Handle(), WM_MOUSEMOVE, 0, MAKELPARAM(200, 5)); };
    Hold(In(1, 0), In(3, 0));
    moveWithoutButton();
    ReleaseAt(In(3, 0));
    Take();
    EXPECT_EQ(Log, "");
    const TRect r = Grid->CellRect(1, 0);
    const TPoint edge = Grid->ClientToScreen({r.Right, r.Top + 5});
    Hold(edge, {edge.X + 20, edge.Y});
    EXPECT_EQ(Grid->ColWidths(1), 84);
    moveWithoutButton();
    MoveMouse({edge.X + 40, edge.Y});
    Take();
    ReleaseAt({edge.X + 40, edge.Y});
    Take();
    EXPECT_EQ(Grid->ColWidths(1), 84);
}

TEST_F(GridMoving, TheProgramMayTakeTheColumnAway) {
    Include(goColMoving);
    Show();
    Hold(In(4, 0), In(2, 0));
    Grid->SetColCount(3);
    MoveMouse(In(1, 0));
    Take();
    ReleaseAt(In(1, 0));
    Take();
    EXPECT_EQ(Log, "");
    const auto drop = [this] { SendMessageA(Grid->Handle(), WM_LBUTTONUP, 0, MAKELPARAM(100, 5)); };
    Hold(In(2, 0), In(1, 0));
    Grid->SetColCount(2);
    drop();
    Grid->SetColCount(6);
    ReleaseAt(In(1, 0));
    Hold(In(1, 0), In(3, 0));
    Grid->SetColCount(3); // what was to make room
    drop();
    ReleaseAt(In(1, 0));
    Grid->SetColCount(6);
    Hold(In(1, 0), In(3, 0));
    Grid->SetFixedCols(2); // it is fixed now
    drop();
    ReleaseAt(In(1, 0));
    Take();
    EXPECT_EQ(Log, "");
    EXPECT_EQ(Columns(0), "012345");
}

TEST_F(GridMoving, ASizingEdgeIsNoHandle) {
    Include(goColMoving);
    Include(goColSizing);
    Show();
    const TRect r = Grid->CellRect(1, 0);
    const TPoint edge = Grid->ClientToScreen({r.Right, r.Top + 5});
    Drag(edge, {edge.X + 70, edge.Y});
    EXPECT_EQ(Log, "");
    EXPECT_EQ(Grid->ColWidths(1), 134);
    const TRect next = Grid->CellRect(2, 0);
    const TPoint end = Grid->ClientToScreen({next.Right, next.Top + 5});
    Drag(end, {end.X - 120, end.Y});
    EXPECT_EQ(Grid->ColWidths(2), 1);
    EXPECT_EQ(Log, "");
}

TEST_F(GridMoving, TheEditorGoesAlong) {
    Include(goColMoving);
    Include(goEditing);
    Include(goAlwaysShowEditor);
    Show();
    Grid->SetFocus();
    Grid->SetCol(2);
    ASSERT_TRUE(Grid->EditorMode());
    const HWND editor = FindDescendant(Grid->Handle(), "TEdit");
    Drag(In(2, 0), In(4, 0));
    EXPECT_EQ(Log, "col24 ");
    EXPECT_EQ(Grid->Col(), 4);
    EXPECT_EQ(RectIn(Grid->Handle(), editor).Left, Grid->CellRect(4, 1).Left + 2);
    EXPECT_EQ(TextOf(editor), "21");
    SendMessageA(editor, WM_CHAR, 'x', 0);
    EXPECT_EQ(Grid->Cells(4, 1), TextOf(editor));
}

TEST_F(GridMoving, AHandlerMayFreeTheGrid) {
    Include(goColMoving);
    Show();
    const TPoint from = In(1, 0);
    const TPoint to = In(2, 0);
    Grid->SetOnColumnMoved([this](TObject*, int, int) { Grid->Free(); });
    Drag(from, to);
    EXPECT_EQ(Form->ControlCount(), 0);
}

} // namespace
} // namespace kx
