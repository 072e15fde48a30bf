// SPDX-License-Identifier: MIT
// Grids of texts.

#include "kx/ui/widgets/GridsString.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/FormFiles.h"
#include "tests/ui/ControlFixture.h"
#include "tests/ui/FocusPump.h"

namespace kx {
namespace {

using namespace test;
using TLines = std::vector<std::string>;

/// Five columns and rows, the first ones fixed: cells of 64 x 24 pixels, lines of one.
class StringGrid : public TFormTest {
protected:
    StringGrid() {
        Form->SetBorderStyle(bsNone);
        Grid->SetBorderStyle(bsNone);
    }
    ~StringGrid() override { ReleaseAt({5, 5}); }

    void Include(TGridOption option) {
        TGridOptions options = Grid->Options();
        Grid->SetOptions(options.Include(option));
    }
    TPoint At(int x, int y) { return Grid->ClientToScreen({x, y}); }
    TPoint In(int col, int row) {
        const TRect r = Grid->CellRect(col, row);
        return At((r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2);
    }
    /// The text in the editor; "none" while there is none to be seen.
    std::string Editor() {
        const HWND editor = FindDescendant(Grid->Handle(), "TEdit");
        return editor && IsWindowVisible(editor) ? TextOf(editor) : "none";
    }
    void ShowEditing() {
        Include(goEditing);
        Show();
        Grid->SetFocus();
    }
    bool Taken() {
        return PumpUntil([] { return MouseInputTaken(); });
    }

    TStringGrid* Grid = Add<TStringGrid>(20, 20, 340, 140);
};

// --- Texts

TEST_F(StringGrid, CellsHaveTexts) {
    EXPECT_EQ(Grid->Cells(1, 1), "");
    Grid->SetCells(1, 2, "a");
    Grid->SetCells(2, 1, "b");
    Grid->SetCells(100, 7, "outside");
    EXPECT_EQ(Grid->Cells(1, 2), "a");
    EXPECT_EQ(Grid->Cells(2, 1), "b");
    EXPECT_EQ(Grid->Cells(100, 7), "outside");
    Grid->SetCells(1, 2, "");
    EXPECT_EQ(Grid->Cells(1, 2), "");
    EXPECT_THROW(Grid->SetCells(-1, 0, ""), EInvalidOperation);
    EXPECT_THROW(Grid->Cells(0, -1), EInvalidOperation);
}

TEST_F(StringGrid, TextsAreDrawnInTheirCells) {
    Show();
    const auto drawn = [&](int col, int row) {
        Grid->Update();
        const TRect r = Grid->CellRect(col, row);
        int dark = 0;
        for (int y = r.Top + 2; y < r.Bottom - 2; ++y) {
            for (int x = r.Left + 2; x < r.Right - 2; ++x) {
                dark += Grid->Canvas().Pixels(x, y) == clBlack ? 1 : 0;
            }
        }
        return dark > 0;
    };
    EXPECT_FALSE(drawn(2, 2));
    Grid->SetCells(2, 2, "MMM");
    EXPECT_TRUE(drawn(2, 2));
    EXPECT_FALSE(drawn(3, 2));
    Grid->SetCells(0, 1, "MMM");
    EXPECT_TRUE(drawn(0, 1));
    Grid->SetDefaultDrawing(false);
    EXPECT_FALSE(drawn(2, 2));
}

// --- Sizes

TEST_F(StringGrid, ColumnsAndRowsHaveSizesOfTheirOwn) {
    Show();
    Grid->SetColWidths(1, 100);
    Grid->SetRowHeights(2, 40);
    EXPECT_EQ(Grid->ColWidths(1), 100);
    EXPECT_EQ(Grid->ColWidths(2), 64);
    EXPECT_EQ(Grid->CellRect(1, 1), (TRect{65, 25, 165, 49}));
    EXPECT_EQ(Grid->CellRect(2, 2), (TRect{166, 50, 230, 90}));
    EXPECT_EQ(Grid->CellRect(2, 3), (TRect{166, 91, 230, 115}));
    int col = 0;
    int row = 0;
    Grid->MouseToCell(165, 89, col, row);
    EXPECT_EQ(std::pair(col, row), std::pair(1, 2));
    Grid->MouseToCell(166, 91, col, row);
    EXPECT_EQ(std::pair(col, row), std::pair(2, 3));
    EXPECT_EQ(Grid->VisibleColCount(), 3);
    EXPECT_EQ(Grid->VisibleRowCount(), 3);
    Grid->SetColWidths(1, 64);
    EXPECT_EQ(Grid->CellRect(2, 1).Left, 130);
    Grid->SetColWidths(1, 0); // hides it
    EXPECT_EQ(Grid->CellRect(2, 1).Left, 65);
    Grid->MouseToCell(65, 30, col, row);
    EXPECT_EQ(col, 2);
    Grid->SetDefaultColWidth(50);
    EXPECT_EQ(Grid->ColWidths(1), 50);
    EXPECT_THROW(Grid->SetColWidths(5, 10), EInvalidOperation);
    EXPECT_THROW(Grid->RowHeights(-1), EInvalidOperation);
}

TEST_F(StringGrid, ScrollingGoesByTheSizes) {
    Grid->SetColCount(10);
    Grid->SetRowCount(3);
    Grid->SetColWidths(1, 200);
    Show();
    EXPECT_EQ(Grid->VisibleColCount(), 2);
    Grid->SetCol(2);
    EXPECT_EQ(Grid->LeftCol(), 1) << "two fit";
    Grid->SetCol(3);
    EXPECT_EQ(Grid->LeftCol(), 2);
    Grid->SetLeftCol(9);
    EXPECT_EQ(Grid->LeftCol(), 6) << "the last four fit";
    Grid->SetColWidths(9, 200);
    Grid->SetLeftCol(9);
    EXPECT_EQ(Grid->LeftCol(), 8);
    Grid->SetLeftCol(3);
    EXPECT_EQ(Grid->CellRect(3, 1).Left, 65);
    EXPECT_EQ(Grid->CellRect(0, 1).Left, 0);
}

TEST_F(StringGrid, FixedColumnsStayWhenTheOthersScroll) {
    Grid->SetColCount(30);
    Grid->SetCells(0, 1, "MMM");
    Show();
    Grid->Update();
    const auto row = [&] {
        Grid->Update();
        std::vector<TColor> pixels;
        for (int x = 2; x < 60; ++x) {
            pixels.push_back(Grid->Canvas().Pixels(x, 36));
        }
        return pixels;
    };
    const auto before = row();
    Grid->SetLeftCol(9);
    EXPECT_EQ(row(), before);
    Grid->SetLeftCol(10);
    EXPECT_EQ(row(), before);
    Grid->SetLeftCol(9);
    EXPECT_EQ(row(), before);
}

TEST_F(StringGrid, TheUserDragsTheLinesBetweenFixedCells) {
    Show();
    const auto drag = [&](TPoint from, TPoint to) {
        PressAt(At(from.X, from.Y));
        MoveMouse(At((from.X + to.X) / 2, (from.Y + to.Y) / 2));
        ASSERT_TRUE(Taken());
        MoveMouse(At(to.X, to.Y));
        ASSERT_TRUE(Taken());
        ReleaseAt(At(to.X, to.Y));
        ASSERT_TRUE(Taken());
    };
    drag({129, 10}, {150, 10});
    EXPECT_EQ(Grid->ColWidths(1), 64) << "only when he may";
    Include(goColSizing);
    drag({129, 10}, {150, 10});
    EXPECT_EQ(Grid->ColWidths(1), 85);
    drag({64, 10}, {60, 10});
    EXPECT_EQ(Grid->ColWidths(0), 60);
    drag({61 + 86, 30}, {100, 30}); // not in a fixed row
    EXPECT_EQ(Grid->ColWidths(1), 85);
    drag({10, 49}, {10, 60});
    EXPECT_EQ(Grid->RowHeights(1), 24);
    Include(goRowSizing);
    drag({10, 49}, {10, 60});
    EXPECT_EQ(Grid->RowHeights(1), 35);
    drag({61 + 85, 10}, {2, 10});
    EXPECT_EQ(Grid->ColWidths(1), 1);
}

TEST_F(StringGrid, SizesComeBackFromAFormFile) {
    ReadFormOver(*Grid, "object G: TStringGrid\n ColCount = 3\n RowCount = 2\n ColWidths = (\n  64\n  20\n  64\n  7)\n"
                        " RowHeights = (\n  24\n  30)\nend\n");
    EXPECT_EQ(Grid->ColWidths(1), 20);
    EXPECT_EQ(Grid->RowHeights(1), 30);
    std::string text = FormTextOf(*Grid);
    EXPECT_NE(text.find("  ColWidths = (\r\n    64\r\n    20\r\n    64)\r\n  RowHeights = (\r\n    24\r\n    30)\r\n"),
              std::string::npos)
        << text;
    Grid->SetColWidths(1, 64);
    text = FormTextOf(*Grid);
    EXPECT_EQ(text.find("ColWidths"), std::string::npos);
}

// --- Editing

TEST_F(StringGrid, TypingReplacesTheText) {
    Grid->SetCells(1, 1, "before");
    ShowEditing();
    TypeText("new");
    ASSERT_TRUE(PumpUntil([&] { return Editor() == "new"; }));
    EXPECT_TRUE(Grid->EditorMode());
    EXPECT_EQ(Grid->Cells(1, 1), "new") << "the program sees it at once";
    PressKey(VK_RETURN);
    EXPECT_TRUE(PumpUntil([&] { return !Grid->EditorMode(); }));
    EXPECT_EQ(Editor(), "none");
    EXPECT_TRUE(Grid->Focused());
    EXPECT_EQ(Grid->Cells(1, 1), "new");
}

TEST_F(StringGrid, EscapeBringsBackWhatWasThere) {
    Grid->SetCells(1, 1, "before");
    ShowEditing();
    PressKey(VK_F2);
    ASSERT_TRUE(PumpUntil([&] { return Editor() == "before"; }));
    TypeText("x");
    ASSERT_TRUE(PumpUntil([&] { return Grid->Cells(1, 1) == "x"; }));
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(PumpUntil([&] { return !Grid->EditorMode(); }));
    EXPECT_EQ(Grid->Cells(1, 1), "before");
}

TEST_F(StringGrid, ArrowsKeepTheTextAndGoOn) {
    ShowEditing();
    TypeText("a");
    ASSERT_TRUE(PumpUntil([&] { return Editor() == "a"; }));
    PressKey(VK_DOWN);
    EXPECT_TRUE(PumpUntil([&] { return Grid->Row() == 2; }));
    EXPECT_EQ(Editor(), "none");
    EXPECT_EQ(Grid->Cells(1, 1), "a");
    TypeText("b");
    ASSERT_TRUE(PumpUntil([&] { return Editor() == "b"; }));
    EXPECT_EQ(Grid->Cells(1, 2), "b");
}

TEST_F(StringGrid, AClickOnTheCurrentCellEditsIt) {
    Grid->SetCells(2, 2, "two");
    ShowEditing();
    ClickAt(In(2, 2));
    ASSERT_TRUE(PumpUntil([&] { return Grid->Col() == 2 && Grid->Row() == 2; }));
    ASSERT_TRUE(Taken());
    EXPECT_EQ(Editor(), "none");
    ClickAt(In(2, 2));
    EXPECT_TRUE(PumpUntil([&] { return Editor() == "two"; }));
    ClickAt(In(3, 3));
    EXPECT_TRUE(PumpUntil([&] { return Editor() == "none" && Grid->Col() == 3; }));
}

TEST_F(StringGrid, CellsAreEditedOnlyWhereTheyMayBe) {
    Show();
    Grid->SetFocus();
    TypeText("a");
    PressKey(VK_F2);
    PressKey(VK_DOWN);
    ASSERT_TRUE(PumpUntil([&] { return Grid->Row() == 2; }));
    EXPECT_FALSE(Grid->EditorMode());
    Include(goEditing);
    Include(goRowSelect);
    Grid->SetEditorMode(true);
    EXPECT_FALSE(Grid->EditorMode());
    EXPECT_EQ(Grid->Cells(1, 1), "");
}

TEST_F(StringGrid, HandlersSeeWhatIsEdited) {
    TLines log;
    Grid->SetCells(1, 1, "1.50");
    Grid->SetOnGetEditText([](TObject*, int col, int row, std::string& value) {
        EXPECT_EQ(std::pair(col, row), std::pair(1, 1));
        value = "150";
    });
    Grid->SetOnSetEditText([&](TObject*, int, int, const std::string& value) { log.push_back(value); });
    ShowEditing();
    Grid->SetEditorMode(true);
    EXPECT_EQ(Editor(), "150");
    EXPECT_EQ(Grid->Cells(1, 1), "1.50");
    EXPECT_TRUE(log.empty());
    TypeText("7");
    EXPECT_TRUE(PumpUntil([&] { return !log.empty(); }));
    EXPECT_EQ(log, TLines{"7"});
    Grid->SetCells(1, 1, "set"); // by the program
    EXPECT_EQ(Editor(), "set");
    EXPECT_EQ(log, TLines{"7"});
}

TEST_F(StringGrid, TheEditorStaysWhereItShallAlwaysBe) {
    Include(goAlwaysShowEditor);
    Grid->SetCells(1, 2, "below");
    ShowEditing();
    EXPECT_TRUE(PumpUntil([&] { return Editor().empty(); }));
    PressKey(VK_DOWN);
    EXPECT_TRUE(PumpUntil([&] { return Editor() == "below"; }));
}

TEST_F(StringGrid, TabGoesFromCellToCellWhenItShall) {
    auto* const edit = Add<TEdit>(20, 200, 60, 20);
    Show();
    Grid->SetFocus();
    PressKey(VK_TAB);
    EXPECT_TRUE(FocusPump([&] { return edit->Focused(); }));
    Include(goTabs);
    Grid->SetFocus();
    Grid->SetCol(4);
    PressKey(VK_TAB);
    EXPECT_TRUE(FocusPump([&] { return Grid->Col() == 1 && Grid->Row() == 2; }));
    PressKey(VK_TAB, {VK_SHIFT});
    EXPECT_TRUE(FocusPump([&] { return Grid->Col() == 4 && Grid->Row() == 1; }));
    EXPECT_TRUE(Grid->Focused());
}

TEST_F(StringGrid, TheEditorGoesAlongWhenTheGridScrolls) {
    Grid->SetColCount(30);
    ShowEditing();
    Grid->SetEditorMode(true);
    const HWND editor = FindDescendant(Grid->Handle(), "TEdit");
    EXPECT_EQ(RectIn(Grid->Handle(), editor).Left, 67);
    Grid->SetColWidths(0, 80);
    EXPECT_EQ(RectIn(Grid->Handle(), editor).Left, 83);
    Grid->SetLeftCol(5);
    EXPECT_LT(RectIn(Grid->Handle(), editor).Right, 0) << "its cell is not to be seen";
}

TEST_F(StringGrid, HandlersMayFreeTheGrid) {
    ShowEditing();
    Grid->SetOnSetEditText([&](TObject*, int, int, const std::string&) { Grid->Free(); });
    bool freed = false;
    struct TWatcher : TComponent {
        explicit TWatcher(bool& gone) : Gone(gone) {}
        void Notification(TComponent*, TOperation operation) override { Gone = Gone || operation == opRemove; }
        bool& Gone;
    } watcher(freed);
    Grid->FreeNotification(&watcher);
    TypeText("a");
    EXPECT_TRUE(PumpUntil([&] { return freed; }));
}

} // namespace
} // namespace kx
