// SPDX-License-Identifier: MIT
// Grids: their cells and how they are drawn.

#include "kx/ui/widgets/Grids.h"

#include "kx/ui/controls/Looks.h"
#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <vsstyle.h>

#include <algorithm>

namespace kx {

namespace {

/// Keeps the drawing inside a rectangle until the end of the scope.
class TClipScope {
public:
    TClipScope(const TDrawTarget& target, const TRect& rect)
        : FTarget(target), FOld(CreateRectRgn(0, 0, 0, 0)), FHadClip(GetClipRgn(target.Handle(), FOld.get()) == 1) {
        IntersectClipRect(target.Handle(), rect.Left, rect.Top, rect.Right, rect.Bottom);
    }
    TClipScope(const TClipScope&) = delete;
    TClipScope& operator=(const TClipScope&) = delete;
    ~TClipScope() {
        if (FTarget.Lives()) {
            SelectClipRgn(FTarget.Handle(), FHadClip ? FOld.get() : nullptr);
        }
    }

private:
    TDrawTarget FTarget;
    unique_hrgn FOld;
    bool FHadClip;
};

} // namespace

const TClass& TDrawGrid::StaticClass() {
    static const TClassBuilder<TDrawGrid> cls("TDrawGrid", TCustomControl::StaticClass(), [](auto& c) {
        using T = TDrawGrid;
        c.Creatable();
        c.Property("BorderStyle", &T::BorderStyle, &T::SetBorderStyle).Default = bsSingle;
        c.Property("ColCount", &T::ColCount, &T::SetColCount).Default = 5;
        c.Property("DefaultColWidth", &T::DefaultColWidth, &T::SetDefaultColWidth).Default = 64;
        c.Property("DefaultDrawing", &T::DefaultDrawing, &T::SetDefaultDrawing).Default = true;
        c.Property("DefaultRowHeight", &T::DefaultRowHeight, &T::SetDefaultRowHeight).Default = 24;
        c.Property("FixedColor", &T::FixedColor, &T::SetFixedColor).Default = clBtnFace;
        c.Property("FixedCols", &T::FixedCols, &T::SetFixedCols).Default = 1;
        c.Property("RowCount", &T::RowCount, &T::SetRowCount).Default = 5;
        c.Property("FixedRows", &T::FixedRows, &T::SetFixedRows).Default = 1;
        c.Property("GridLineWidth", &T::GridLineWidth, &T::SetGridLineWidth).Default = 1;
        c.Property("Options", &T::Options, &T::SetOptions).Default =
            TGridOptions{goFixedVertLine, goFixedHorzLine, goVertLine, goHorzLine, goRangeSelect}.Bits();
        c.Property("ParentColor", &T::ParentColor, &T::SetParentColor).Default = false;
        c.Property("ScrollBars", &T::ScrollBars, &T::SetScrollBars).Default = ssBoth;
        c.Property("TabStop", &T::TabStop, &T::SetTabStop).Default = true;
        c.Property("OnColumnMoved", &T::OnColumnMoved, &T::SetOnColumnMoved);
        c.Property("OnDrawCell", &T::OnDrawCell, &T::SetOnDrawCell);
        c.Property("OnRowMoved", &T::OnRowMoved, &T::SetOnRowMoved);
        c.Property("OnSelectCell", &T::OnSelectCell, &T::SetOnSelectCell);
    });
    return cls.Class();
}

TDrawGrid::TDrawGrid(TComponent* owner) : TCustomControl(owner) {
    SetControlStyle({csCaptureMouse, csClickEvents, csDoubleClicks, csOpaque});
    SetBoundsFields(0, 0, 320, 120);
    SetColor(clWindow);
    SetTabStop(true);
    FRows.Size = 24;
}

// --- Columns and rows

void TDrawGrid::SetCounts(TAxis& axis, int count, int fixed) {
    axis.Count = std::max(count, 0);
    axis.Fixed = fixed;
    const int last = std::max(axis.Count - 1, axis.Fixed);
    axis.Current = std::clamp(axis.Current, axis.Fixed, last);
    axis.Anchor = std::clamp(axis.Anchor, axis.Fixed, last);
    axis.First = std::clamp(axis.First, axis.Fixed, last);
    axis.Own.erase(axis.Own.lower_bound(axis.Count), axis.Own.end());
    LayoutChanged();
}

void TDrawGrid::SetColCount(int value) { SetCounts(FColumns, value, std::max(std::min(FColumns.Fixed, value - 1), 0)); }

void TDrawGrid::SetRowCount(int value) { SetCounts(FRows, value, std::max(std::min(FRows.Fixed, value - 1), 0)); }

void TDrawGrid::SetFixedCols(int value) {
    if (value < 0 || (value > 0 && value >= FColumns.Count)) {
        throw EInvalidOperation("Fixed column count must be less than column count");
    }
    FColumns.First = FColumns.Current = FColumns.Anchor = value;
    SetCounts(FColumns, FColumns.Count, value);
}

void TDrawGrid::SetFixedRows(int value) {
    if (value < 0 || (value > 0 && value >= FRows.Count)) {
        throw EInvalidOperation("Fixed row count must be less than row count");
    }
    FRows.First = FRows.Current = FRows.Anchor = value;
    SetCounts(FRows, FRows.Count, value);
}

void TDrawGrid::SetSize(int& field, int least, int value) {
    constexpr int greatest = 1 << 24; // so that the edges of all visible cells fit into 32 bits
    field = std::clamp(value, least, greatest);
    LayoutChanged();
}

void TDrawGrid::SetDefaultColWidth(int value) {
    FColumns.Own.clear();
    SetSize(FColumns.Size, 1, value);
}

void TDrawGrid::SetDefaultRowHeight(int value) {
    FRows.Own.clear();
    SetSize(FRows.Size, 1, value);
}

void TDrawGrid::SetGridLineWidth(int value) { SetSize(FLineWidth, 0, value); }

void TDrawGrid::LayoutChanged() {
    Invalidate();
    const TAlive alive(*this);
    if (HandleAllocated()) {
        UpdateScrollBars();
        if (alive) {
            ScrollTo(FColumns.First, FRows.First);
        }
    }
    if (alive) {
        CellsMoved();
    }
}

int TDrawGrid::VisibleColCount() const { return std::min(ColumnsShown(), FColumns.Count - FColumns.First); }
int TDrawGrid::VisibleRowCount() const { return std::min(RowsShown(), FRows.Count - FRows.First); }

TRect TDrawGrid::CellRect(int col, int row) const {
    const auto shown = [](const TAxis& axis, int cell) {
        return cell >= 0 && cell < axis.Count && (cell < axis.Fixed || cell >= axis.First);
    };
    const int64_t left = FColumns.Start(col, FLineWidth);
    const int64_t top = FRows.Start(row, FLineWidth);
    if (!shown(FColumns, col) || !shown(FRows, row) || left >= ClientWidth() || top >= ClientHeight()) {
        return {};
    }
    const int x = static_cast<int>(left);
    const int y = static_cast<int>(top);
    return {x, y, x + FColumns.SizeOf(col), y + FRows.SizeOf(row)};
}

void TDrawGrid::MouseToCell(int x, int y, int& col, int& row) const {
    col = FColumns.At(x, FLineWidth);
    row = FRows.At(y, FLineWidth);
    if (col < 0 || row < 0) {
        col = row = -1;
    }
}

void TDrawGrid::InvalidateCell(int col, int row) {
    const RECT r = ToRECT(CellRect(col, row));
    if (HandleAllocated() && !IsRectEmpty(&r)) {
        InvalidateRect(WindowHandle(), &r, FALSE);
    }
}

// --- Settings

void TDrawGrid::SetOptions(TGridOptions value) {
    FOptions = value;
    if (!FOptions.Contains(goRangeSelect)) {
        FColumns.Anchor = FColumns.Current;
        FRows.Anchor = FRows.Current;
    }
    Invalidate();
}

void TDrawGrid::SetScrollBars(TScrollStyle value) {
    if (FScrollBars != value) {
        FScrollBars = value;
        RecreateWnd();
    }
}

void TDrawGrid::SetBorderStyle(TBorderStyle value) {
    if (FBorderStyle != value) {
        FBorderStyle = value;
        RecreateWnd();
    }
}

void TDrawGrid::SetFixedColor(TColor value) {
    FFixedColor = value;
    Invalidate();
}

void TDrawGrid::SetDefaultDrawing(bool value) {
    FDefaultDrawing = value;
    Invalidate();
}

void TDrawGrid::SetOnDrawCell(TDrawCellEvent value) {
    FOnDrawCell = std::move(value);
    Invalidate();
}

void TDrawGrid::CreateParams(TCreateParams& params) {
    TCustomControl::CreateParams(params);
    params.ExStyle |= FBorderStyle == bsSingle ? DWORD{WS_EX_CLIENTEDGE} : 0;
    params.Style |= FScrollBars == ssHorizontal || FScrollBars == ssBoth ? DWORD{WS_HSCROLL} : 0;
    params.Style |= FScrollBars == ssVertical || FScrollBars == ssBoth ? DWORD{WS_VSCROLL} : 0;
}

void TDrawGrid::CreateWnd() {
    TCustomControl::CreateWnd();
    LayoutChanged();
}

void TDrawGrid::Resize() {
    if (Outlives(*this, [this] { LayoutChanged(); })) {
        TCustomControl::Resize();
    }
}

// --- Drawing

TGridDrawState TDrawGrid::StateOf(int col, int row) const {
    TGridDrawState state;
    if (col < FColumns.Fixed || row < FRows.Fixed) {
        return state.Include(gdFixed);
    }
    const TGridRect s = Selection();
    if (col >= s.Left && col <= s.Right && row >= s.Top && row <= s.Bottom) {
        state.Include(gdSelected);
    }
    if (col == FColumns.Current && row == FRows.Current && Focused()) {
        state.Include(gdFocused);
    }
    return state;
}

void TDrawGrid::Paint() {
    const TRect client = ClientRect();
    const TDrawTarget target(Canvas().Handle());
    int64_t right = FColumns.Extent(0, FColumns.Fixed, FLineWidth);
    int64_t bottom = FRows.Extent(0, FRows.Fixed, FLineWidth);
    const auto next = [](const TAxis& axis, int cell) { return cell + 1 == axis.Fixed ? axis.First : cell + 1; };
    const auto first = [](const TAxis& axis) { return axis.Fixed > 0 ? 0 : axis.First; };
    for (int row = first(FRows); row < FRows.Count; row = next(FRows, row)) {
        const int64_t top = FRows.Start(row, FLineWidth);
        if (top >= client.Bottom) {
            break;
        }
        bottom = top + FRows.Pitch(row, FLineWidth);
        for (int col = first(FColumns); col < FColumns.Count; col = next(FColumns, col)) {
            const TRect cell = CellRect(col, row);
            if (cell == TRect{}) {
                break;
            }
            if (cell.Right == cell.Left || cell.Bottom == cell.Top) {
                continue; // hidden
            }
            right = cell.Right + FLineWidth;
            const RECT whole{cell.Left, cell.Top, cell.Right + FLineWidth, cell.Bottom + FLineWidth};
            if (RectVisible(target.Handle(), &whole) &&
                (!Outlives(*this, [&] { PaintCell(col, row, cell); }) || !target.Lives())) {
                return;
            }
        }
    }
    if (FColumns.Count == 0 || FRows.Count == 0) {
        right = bottom = 0;
    }
    Canvas().Brush().SetColor(Color());
    if (right < client.Right) {
        Canvas().FillRect({static_cast<int32_t>(right), 0, client.Right, client.Bottom});
    }
    if (bottom < client.Bottom) {
        Canvas().FillRect({0, static_cast<int32_t>(bottom), client.Right, client.Bottom});
    }
    PaintDropMark();
}

void TDrawGrid::PaintCell(int col, int row, const TRect& rect) {
    const TGridDrawState state = StateOf(col, row);
    const bool fixed = state.Contains(gdFixed);
    const bool highlighted =
        state.Contains(gdSelected) && (!state.Contains(gdFocused) || FOptions.Contains(goDrawFocusSelected));
    const TTheme theme = FDefaultDrawing && fixed && FFixedColor == clBtnFace ? Theme(TThemeKind::Header) : TTheme();
    PaintLines(rect, fixed, static_cast<bool>(theme));
    TCanvas& canvas = Canvas();
    canvas.Font().Assign(&Font());
    canvas.Brush().SetColor(fixed ? FFixedColor : Color());
    if (FDefaultDrawing && highlighted) {
        canvas.Brush().SetColor(clHighlight);
        canvas.Font().SetColor(clHighlightText);
    }
    if (theme) {
        theme.Draw(canvas.Handle(), HP_HEADERITEM, HIS_NORMAL, rect);
        canvas.Brush().SetStyle(bsClear);
        canvas.Font().SetColor(ThemedTextColor(Font().Color(), theme, HP_HEADERITEM, HIS_NORMAL));
    } else {
        canvas.FillRect(rect); // the program may leave parts of the cell undrawn
    }
    const TDrawTarget target(canvas.Handle());
    const auto draw = [&] {
        const TClipScope clip(target, rect);
        DrawCell(col, row, rect, state);
    };
    if (!Outlives(*this, draw) || !target.Lives()) {
        return;
    }
    if (FDefaultDrawing && fixed && !theme) {
        RECT edge = ToRECT(rect);
        DrawEdge(canvas.Handle(), &edge, BDR_RAISEDINNER, BF_RECT);
    }
    if (FDefaultDrawing && state.Contains(gdFocused) && !FOptions.Contains(goRowSelect) && !HidesFocus()) {
        canvas.DrawFocusRect(rect);
    }
}

/// Draws the lines right of the cell and below it, or the background where no lines are wanted.
void TDrawGrid::PaintLines(const TRect& cell, bool fixed, bool themed) {
    TColor line = fixed ? clBlack : clSilver;
    if (HighContrast()) {
        line = fixed ? clWindowText : clBtnShadow;
    } else if (themed) {
        line = clBtnShadow;
    }
    const TColor none = fixed ? FFixedColor : Color();
    TCanvas& canvas = Canvas();
    canvas.Brush().SetColor(FOptions.Contains(fixed ? goFixedVertLine : goVertLine) ? line : none);
    canvas.FillRect({cell.Right, cell.Top, cell.Right + FLineWidth, cell.Bottom + FLineWidth});
    canvas.Brush().SetColor(FOptions.Contains(fixed ? goFixedHorzLine : goHorzLine) ? line : none);
    canvas.FillRect({cell.Left, cell.Bottom, cell.Right + FLineWidth, cell.Bottom + FLineWidth});
}

void TDrawGrid::DrawCell(int col, int row, const TRect& rect, TGridDrawState state) {
    FOnDrawCell(this, col, row, rect, state);
}

} // namespace kx
