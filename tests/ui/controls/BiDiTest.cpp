// SPDX-License-Identifier: MIT
// Right-to-left controls.

#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/GridsString.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Handles.h"
#include "tests/support/FormFiles.h"
#include "tests/support/FormTest.h"

// Reading order of controls.

namespace kx {
namespace {

using namespace test;

class BiDi : public TFormTest {
protected:
    BiDi() { Form->SetBorderStyle(bsNone); }
    static DWORD ExStyle(TWinControl& control) {
        constexpr DWORD all = WS_EX_RTLREADING | WS_EX_RIGHT | WS_EX_LEFTSCROLLBAR;
        return static_cast<DWORD>(GetWindowLongA(control.Handle(), GWL_EXSTYLE)) & all;
    }
    /// Columns, first and last, of the control's rectangle in which its text is.
    TPoint TextColumns(TControl& control) {
        Form->Update();
        const TWindowDC dc(Form->Handle());
        TPoint columns{-1, -1};
        for (int x = 0; x < control.Width(); ++x) {
            for (int y = 0; y < control.Height(); ++y) {
                if (GetPixel(dc.Handle(), control.Left() + x, control.Top() + y) == RGB(255, 0, 0)) {
                    columns = {columns.X < 0 ? x : columns.X, x};
                }
            }
        }
        return columns;
    }
};

TEST_F(BiDi, IsLeftToRightAndFollowsTheParentAtFirst) {
    const TLabel label;
    EXPECT_EQ(label.BiDiMode(), bdLeftToRight);
    EXPECT_TRUE(label.ParentBiDiMode());
    EXPECT_FALSE(label.UseRightToLeftReading());
    EXPECT_EQ(label.DrawTextBiDiModeFlags(DT_CENTER), UINT{DT_CENTER});
}

TEST_F(BiDi, FollowsTheParentUntilItIsSet) {
    auto* const panel = Add<TPanel>(0, 0, 100, 50);
    auto* const label = Add<TLabel>(0, 0, 50, 13, panel);
    Form->SetBiDiMode(bdRightToLeft);
    EXPECT_FALSE(Form->ParentBiDiMode());
    EXPECT_EQ(panel->BiDiMode(), bdRightToLeft);
    EXPECT_EQ(label->BiDiMode(), bdRightToLeft);
    EXPECT_TRUE(label->ParentBiDiMode());
    panel->SetBiDiMode(bdRightToLeft);
    EXPECT_FALSE(panel->ParentBiDiMode()) << "even to what it was";
    Form->SetBiDiMode(bdRightToLeftReadingOnly);
    EXPECT_EQ(label->BiDiMode(), bdRightToLeft);
    panel->SetParentBiDiMode(true);
    EXPECT_EQ(label->BiDiMode(), bdRightToLeftReadingOnly);
    EXPECT_EQ(Add<TEdit>(0, 60, 50, 20, panel)->BiDiMode(), bdRightToLeftReadingOnly);
}

TEST_F(BiDi, TheModesDecideOnReadingAlignmentAndScrollBar) {
    TLabel label;
    const struct {
        TBiDiMode Mode;
        bool Reading, Alignment, ScrollBar;
    } cases[] = {{bdLeftToRight, false, false, false},
                 {bdRightToLeft, true, true, true},
                 {bdRightToLeftNoAlign, true, false, true},
                 {bdRightToLeftReadingOnly, true, false, false}};
    for (const auto& c : cases) {
        label.SetBiDiMode(c.Mode);
        EXPECT_EQ(label.UseRightToLeftReading(), c.Reading) << c.Mode;
        EXPECT_EQ(label.UseRightToLeftAlignment(), c.Alignment) << c.Mode;
        EXPECT_EQ(label.UseRightToLeftScrollBar(), c.ScrollBar) << c.Mode;
        EXPECT_EQ(label.DrawTextBiDiModeFlags(DT_CENTER), c.Reading ? UINT{DT_CENTER | DT_RTLREADING} : UINT{DT_CENTER})
            << c.Mode;
        EXPECT_EQ(label.BiDiAlignment(taLeftJustify), c.Alignment ? taRightJustify : taLeftJustify) << c.Mode;
        EXPECT_EQ(label.BiDiAlignment(taRightJustify), c.Alignment ? taLeftJustify : taRightJustify) << c.Mode;
        EXPECT_EQ(label.BiDiAlignment(taCenter), taCenter) << c.Mode;
    }
}

TEST_F(BiDi, WindowsOfControlsHaveTheStylesOfTheMode) {
    TWinControl* const controls[] = {Add<TEdit>(0, 0, 100, 20),       Add<TButton>(0, 30, 100, 20),
                                     Add<TListBox>(0, 60, 100, 40),   Add<TComboBox>(0, 110, 100, 20),
                                     Add<TCheckBox>(0, 140, 100, 20), Add<TListView>(0, 170, 100, 40),
                                     Add<TPanel>(0, 220, 100, 40)};
    Form->Show();
    const struct {
        TBiDiMode Mode;
        DWORD ExStyle;
    } cases[] = {{bdRightToLeft, WS_EX_RTLREADING | WS_EX_RIGHT | WS_EX_LEFTSCROLLBAR},
                 {bdRightToLeftNoAlign, WS_EX_RTLREADING | WS_EX_LEFTSCROLLBAR},
                 {bdRightToLeftReadingOnly, WS_EX_RTLREADING},
                 {bdLeftToRight, 0}};
    for (const auto& c : cases) {
        Form->SetBiDiMode(c.Mode);
        EXPECT_EQ(ExStyle(*Form), c.ExStyle) << c.Mode;
        for (TWinControl* control : controls) {
            EXPECT_EQ(ExStyle(*control), c.ExStyle) << control->ClassName() << " " << c.Mode;
        }
    }
}

TEST_F(BiDi, AChangeKeepsWhatTheUserSees) {
    auto* const edit = Add<TEdit>(0, 0, 100, 20);
    auto* const list = Add<TListBox>(0, 60, 100, 40);
    list->Items().Add("one");
    list->Items().Add("two");
    Form->Show();
    SetWindowTextA(edit->Handle(), "typed");
    list->SetItemIndex(1);
    edit->SetFocus();
    Form->SetBiDiMode(bdRightToLeft);
    EXPECT_EQ(edit->Text(), "typed");
    EXPECT_EQ(list->ItemIndex(), 1);
    EXPECT_TRUE(edit->Focused());
}

TEST_F(BiDi, TextsThatStandLeftStandRight) {
    auto* const label = Add<TLabel>(10, 10, 200, 20);
    label->SetAutoSize(false);
    label->SetCaption("text");
    auto* const group = Add<TGroupBox>(10, 50, 200, 60);
    group->SetCaption("text");
    Form->Font().SetColor(clRed);
    Form->Show();
    const TPoint labelLeft = TextColumns(*label);
    ASSERT_EQ(labelLeft.X < 5, true) << labelLeft.X;
    Form->SetBiDiMode(bdRightToLeft);
    const TPoint labelRight = TextColumns(*label);
    EXPECT_GT(labelRight.X, 150);
    EXPECT_EQ(labelRight.Y - labelRight.X, labelLeft.Y - labelLeft.X);
    Screenshot("bidi", Form->Handle());
    Form->SetBiDiMode(bdRightToLeftReadingOnly);
    EXPECT_EQ(TextColumns(*label).X, labelLeft.X);
}

TEST_F(BiDi, ColumnsOfListsAreAlignedTheOtherWay) {
    auto* const list = Add<TListView>(0, 0, 300, 100);
    list->SetViewStyle(vsReport);
    for (const TAlignment alignment : {taLeftJustify, taLeftJustify, taCenter, taRightJustify}) {
        list->Columns().Add().SetAlignment(alignment);
    }
    Show();
    const auto format = [&](int column) {
        LVCOLUMNW info{};
        info.mask = LVCF_FMT;
        SendMessageW(list->Handle(), LVM_GETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&info));
        return info.fmt & LVCFMT_JUSTIFYMASK;
    };
    EXPECT_EQ(format(1), LVCFMT_LEFT);
    Form->SetBiDiMode(bdRightToLeft);
    EXPECT_EQ(format(1), LVCFMT_RIGHT);
    EXPECT_EQ(format(2), LVCFMT_CENTER);
    EXPECT_EQ(format(3), LVCFMT_LEFT);
    EXPECT_EQ(list->Columns()[3].Alignment(), taRightJustify);
    Form->SetBiDiMode(bdRightToLeftNoAlign);
    EXPECT_EQ(format(3), LVCFMT_RIGHT);
}

TEST_F(BiDi, TextsOfCellsStandAtTheRight) {
    auto* const grid = Add<TStringGrid>(0, 0, 200, 100);
    grid->SetFixedCols(0);
    grid->SetFixedRows(0);
    grid->SetOptions({});
    grid->Font().SetColor(clRed);
    grid->SetCells(1, 1, "II");
    Show();
    const auto columns = [&] {
        grid->Repaint();
        const TRect cell = grid->CellRect(1, 1);
        const TWindowDC dc(grid->Handle());
        TPoint red{-1, -1};
        for (int x = cell.Left; x < cell.Right; ++x) {
            for (int y = cell.Top; y < cell.Bottom; ++y) {
                if (GetPixel(dc.Handle(), x, y) == RGB(255, 0, 0)) {
                    red = {red.X < 0 ? x - cell.Left : red.X, cell.Right - x};
                }
            }
        }
        return red;
    };
    const TPoint left = columns();
    EXPECT_LT(left.X, 6);
    EXPECT_GT(left.Y, 20);
    Form->SetBiDiMode(bdRightToLeft);
    Screenshot("grid-right", Form->Handle());
    const TPoint right = columns();
    EXPECT_GT(right.X, 20);
    EXPECT_LT(right.Y, 6);
    Form->SetBiDiMode(bdRightToLeftNoAlign);
    EXPECT_EQ(columns(), left);
}

TEST_F(BiDi, IsStoredWhenItDoesNotFollow) {
    auto* const label = Add<TLabel>(0, 0, 50, 13);
    label->SetName("Label1");
    const auto written = [&] { return FormTextOf(*Form); };
    EXPECT_EQ(written().find("BiDiMode"), std::string::npos);
    Form->SetBiDiMode(bdRightToLeft);
    EXPECT_NE(written().find("  BiDiMode = bdRightToLeft\r\n  ParentBiDiMode = False\r\n"), std::string::npos)
        << written();
    EXPECT_EQ(written().find("    BiDiMode"), std::string::npos) << "the label follows";
    label->SetBiDiMode(bdLeftToRight);
    EXPECT_NE(written().find("    BiDiMode = bdLeftToRight\r\n    ParentBiDiMode = False\r\n"), std::string::npos)
        << written();
}

} // namespace
} // namespace kx
