// SPDX-License-Identifier: MIT
// Columns and rows of a grid that the user drags to other places.

#include "kx/ui/widgets/Grids.h"

#include <algorithm>

namespace kx {

int TDrawGrid::Moved(int index, int from, int to) {
    if (index == from) {
        return to;
    }
    if (index > from && index <= to) {
        return index - 1;
    }
    return index < from && index >= to ? index + 1 : index;
}

void TDrawGrid::TAxis::Move(int from, int to) {
    std::map<int, int> moved;
    for (const auto& [cell, size] : Own) {
        moved[Moved(cell, from, to)] = size;
    }
    Own = std::move(moved);
    Current = Moved(Current, from, to);
    Anchor = Moved(Anchor, from, to);
}

/// What a press on that cell begins to move, by the heads of columns and rows.
TDrawGrid::TMoving TDrawGrid::MovingAt(int col, int row) {
    const bool isHead = row < FRows.Fixed;
    const bool isSide = col < FColumns.Fixed; // beside the cells both are
    if (FOptions.Contains(goColMoving) && isHead && !isSide) {
        return {&FColumns, col, col};
    }
    if (FOptions.Contains(goRowMoving) && isSide && !isHead) {
        return {&FRows, row, row};
    }
    return {};
}

/// Beside the cells that are seen, the grid scrolls.
void TDrawGrid::DragTo(int x, int y) {
    const bool isColumn = FMoving.Axis == &FColumns;
    const TAxis& axis = *FMoving.Axis;
    if (FMoving.From >= axis.Count) {
        return EndMoving(false); // the program has taken it away
    }
    const int shown = std::max(isColumn ? ColumnsShown() : RowsShown(), 1);
    const int to = axis.Toward(isColumn ? x : y, shown, FLineWidth);
    if (to == FMoving.To) {
        return;
    }
    FMoving.To = to;
    Invalidate();
    const int first = to < axis.First ? to : std::max(axis.First, to - shown + 1);
    ScrollTo(isColumn ? first : FColumns.First, isColumn ? FRows.First : first);
}

void TDrawGrid::EndMoving(bool drop) {
    const TMoving moving = std::exchange(FMoving, {});
    if (!moving.Axis) {
        return;
    }
    Invalidate();
    const auto isThere = [&](int cell) { return cell >= moving.Axis->Fixed && cell < moving.Axis->Count; };
    if (!drop || moving.To == moving.From || !isThere(moving.From) || !isThere(moving.To)) {
        return;
    }
    moving.Axis->Move(moving.From, moving.To);
    const auto tell = [&] {
        moving.Axis == &FColumns ? ColumnMoved(moving.From, moving.To) : RowMoved(moving.From, moving.To);
    };
    if (Outlives(*this, tell)) {
        LayoutChanged();
    }
}

void TDrawGrid::ColumnMoved(int from, int to) { FOnColumnMoved(this, from, to); }
void TDrawGrid::RowMoved(int from, int to) { FOnRowMoved(this, from, to); }

/// A bar at the edge where the column or the row would come to stand.
void TDrawGrid::PaintDropMark() {
    if (!FMoving.Axis || FMoving.To == FMoving.From) {
        return;
    }
    constexpr int half = 1;
    const TAxis& axis = *FMoving.Axis;
    const int64_t start = axis.Start(FMoving.To, FLineWidth);
    const int64_t edge = FMoving.To > FMoving.From ? start + axis.Pitch(FMoving.To, FLineWidth) : start;
    const TRect client = ClientRect();
    const bool isColumn = &axis == &FColumns;
    const int64_t last = std::max((isColumn ? client.Right : client.Bottom) - half, half);
    const int at = static_cast<int>(std::clamp<int64_t>(edge, half, last));
    Canvas().Brush().SetColor(clHighlight);
    Canvas().FillRect(isColumn ? TRect{at - half, 0, at + half, client.Bottom}
                               : TRect{0, at - half, client.Right, at + half});
}

} // namespace kx
