// SPDX-License-Identifier: MIT
// What grids say of themselves to screen readers.

#include "kx/ui/widgets/Grids.h"

#include <algorithm>

namespace kx {

namespace {

/// Whoever looks at all cells of a grid shall come to an end.
constexpr int64_t MostParts = 1'000'000;

} // namespace

int TDrawGrid::AccessiblePartCount() const {
    return static_cast<int>(std::min(int64_t{FColumns.Count} * FRows.Count, MostParts));
}

int TDrawGrid::PartOf(int col, int row) const {
    const int64_t part = int64_t{row} * FColumns.Count + col;
    return col >= 0 && row >= 0 && col < FColumns.Count && part < AccessiblePartCount() ? static_cast<int>(part) : -1;
}

TAccessibleInfo TDrawGrid::AccessibleInfo() const {
    TAccessibleInfo info = TCustomControl::AccessibleInfo();
    info.Role = arTable;
    info.State = FOptions.Contains(goRangeSelect) ? asMultiSelectable : 0;
    if (CanBeCurrent(FColumns.Current, FRows.Current)) {
        info.Value = CellText(FColumns.Current, FRows.Current);
    }
    return info;
}

/// A cell is known by the headers of its column and of its row, else by what is in it.
TAccessibleInfo TDrawGrid::AccessiblePart(int part) const {
    const int col = part % FColumns.Count;
    const int row = part / FColumns.Count;
    const bool inFixedRow = row < FRows.Fixed;
    const bool inFixedColumn = col < FColumns.Fixed;
    TAccessibleInfo info;
    info.Role = inFixedRow ? arColumnHeader : inFixedColumn ? arRowHeader : arCell;
    info.Value = CellText(col, row);
    if (inFixedRow || inFixedColumn) {
        info.Name = info.Value;
        return info;
    }
    const std::string column = FRows.Fixed > 0 ? CellText(col, FRows.Fixed - 1) : std::string();
    const std::string line = FColumns.Fixed > 0 ? CellText(FColumns.Fixed - 1, row) : std::string();
    info.Name = column + (column.empty() || line.empty() ? "" : ", ") + line;
    if (info.Name.empty()) {
        info.Name = info.Value;
    }
    const TGridRect selection = Selection();
    const bool selected =
        col >= selection.Left && col <= selection.Right && row >= selection.Top && row <= selection.Bottom;
    const bool focused = Focused() && col == FColumns.Current && row == FRows.Current;
    info.State = asSelectable | asFocusable | (selected ? asSelected : 0) | (focused ? asFocused : 0);
    info.Action = "Select";
    return info;
}

TRect TDrawGrid::AccessiblePartRect(int part) const {
    const TRect cell = CellRect(part % FColumns.Count, part / FColumns.Count);
    const TRect client = ClientRect();
    return {std::max(cell.Left, client.Left), std::max(cell.Top, client.Top), std::min(cell.Right, client.Right),
            std::min(cell.Bottom, client.Bottom)};
}

int TDrawGrid::AccessiblePartAt(const TPoint& point) const {
    int col = -1;
    int row = -1;
    MouseToCell(point.X, point.Y, col, row);
    return PartOf(col, row);
}

std::vector<int> TDrawGrid::SelectedParts() const {
    std::vector<int> parts;
    if (!CanBeCurrent(FColumns.Current, FRows.Current)) {
        return parts;
    }
    const TGridRect selection = Selection();
    for (int row = selection.Top; row <= selection.Bottom; ++row) {
        for (int col = selection.Left; col <= selection.Right; ++col) {
            const int part = PartOf(col, row);
            if (part < 0) {
                return parts; // none of those behind it is counted either
            }
            parts.push_back(part);
        }
    }
    return parts;
}

void TDrawGrid::AccessiblePartAction(int part) {
    const int col = part % FColumns.Count;
    const int row = part / FColumns.Count;
    if (CanBeCurrent(col, row)) {
        MoveTo(col, row, false);
    }
}

/// Cells that are not counted are told of as the grid's value.
void TDrawGrid::CurrentTold() {
    const int part = FocusedPart();
    if (part < 0) {
        TellAccessible(aeValueChange);
        return;
    }
    TellAccessible(aeSelection, part);
    if (Focused()) {
        TellAccessible(aeFocus, part);
    }
}

} // namespace kx
