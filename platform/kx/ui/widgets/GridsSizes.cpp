// SPDX-License-Identifier: MIT
// The sizes of a grid's columns and rows, in the program, in form files and by the mouse.

#include "kx/core/Filer.h"
#include "kx/ui/widgets/Grids.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

namespace {

constexpr int Greatest = 1 << 24; // so that the edges of all visible cells fit into 32 bits
constexpr int Grip = 3;           // pixels on both sides of an edge where it can be dragged

} // namespace

// --- Places of cells. No loop takes more steps than there are pixels, or cells with a size of their own.

int TDrawGrid::TAxis::SizeOf(int cell) const {
    const auto own = Own.empty() ? Own.end() : Own.find(cell);
    return own == Own.end() ? Size : own->second;
}

int TDrawGrid::TAxis::Pitch(int64_t cell, int line) const {
    const int size = cell < Count ? SizeOf(static_cast<int>(cell)) : Size;
    return size == 0 ? 0 : size + line;
}

int64_t TDrawGrid::TAxis::Extent(int from, int to, int line) const {
    if (to < from) {
        return -Extent(to, from, line);
    }
    int64_t extent = (int64_t{to} - from) * (Size + line);
    for (auto own = Own.lower_bound(from); own != Own.end() && own->first < to; ++own) {
        extent += Pitch(own->first, line) - (Size + line);
    }
    return extent;
}

int TDrawGrid::TAxis::Shown(int client, int line) const {
    int64_t room = client - Extent(0, Fixed, line) + line;
    int64_t cell = First;
    for (; room > 0 && Pitch(cell, line) <= room; ++cell) {
        room -= Pitch(cell, line);
    }
    return static_cast<int>(cell - First);
}

int TDrawGrid::TAxis::LastFirst(int client, int line) const {
    int64_t room = client - Extent(0, Fixed, line) + line;
    int first = Count;
    while (first > Fixed && room > 0 && Pitch(first - 1, line) <= room) {
        room -= Pitch(--first, line);
    }
    return std::max(std::min(first, Count - 1), Fixed);
}

int64_t TDrawGrid::TAxis::Start(int cell, int line) const {
    return cell < Fixed ? Extent(0, cell, line) : Extent(0, Fixed, line) + Extent(First, cell, line);
}

int TDrawGrid::TAxis::At(int coordinate, int line) const {
    if (coordinate < 0) {
        return -1;
    }
    int64_t rest = coordinate;
    int cell = Fixed > 0 ? 0 : First;
    while (cell < Count && Pitch(cell, line) <= rest) {
        rest -= Pitch(cell, line);
        cell = cell + 1 == Fixed ? First : cell + 1;
    }
    return cell < Count ? cell : -1;
}

int TDrawGrid::TAxis::Toward(int coordinate, int shown, int line) const {
    int64_t rest = coordinate - Extent(0, Fixed, line);
    int64_t cell = First;
    if (rest < 0) {
        --cell;
    }
    while (rest >= 0 && cell < int64_t{First} + shown && Pitch(cell, line) <= rest) {
        rest -= Pitch(cell, line);
        ++cell;
    }
    return static_cast<int>(std::clamp<int64_t>(cell, Fixed, Count - 1));
}

int TDrawGrid::TAxis::EdgeAt(int coordinate, int line) const {
    for (const int beside : {coordinate - Grip, coordinate + Grip}) { // the cell before the edge, or the one behind it
        const int cell = At(beside, line);
        if (cell < 0) {
            continue;
        }
        const int64_t end = Start(cell, line) + SizeOf(cell);
        if (coordinate >= end - Grip && coordinate <= end + Grip) {
            return cell;
        }
    }
    return -1;
}

// --- Sizes

int TDrawGrid::SizeIn(const TAxis& axis, int cell) const {
    if (cell < 0 || cell >= axis.Count) {
        throw EInvalidOperation("Grid index out of range");
    }
    return axis.SizeOf(cell);
}

void TDrawGrid::SetSizeIn(TAxis& axis, int cell, int value) {
    if (SizeIn(axis, cell) != value) {
        axis.Own[cell] = std::clamp(value, 0, Greatest);
        if (value == axis.Size) {
            axis.Own.erase(cell);
        }
        LayoutChanged();
    }
}

/// A list of all sizes, as form files have it when there is one of its own.
void TDrawGrid::DefineSizes(TFiler& filer, std::string_view name, TAxis& axis) {
    const auto read = [this, &axis](TReader& reader) {
        reader.ReadListBegin();
        for (int cell = 0; !reader.EndOfList(); ++cell) {
            const int size = reader.ReadInteger();
            if (cell < axis.Count) {
                SetSizeIn(axis, cell, std::clamp(size, 0, Greatest));
            }
        }
        reader.ReadListEnd();
    };
    const auto write = [&axis](TWriter& writer) {
        writer.WriteListBegin();
        for (int cell = 0; cell < axis.Count; ++cell) {
            writer.WriteInteger(axis.SizeOf(cell));
        }
        writer.WriteListEnd();
    };
    const auto* const ancestor = dynamic_cast<const TDrawGrid*>(filer.Ancestor());
    const TAxis* const inherited = !ancestor ? nullptr : &axis == &FColumns ? &ancestor->FColumns : &ancestor->FRows;
    filer.DefineProperty(name, read, write, inherited ? axis.Own != inherited->Own : !axis.Own.empty());
}

void TDrawGrid::DefineProperties(TFiler& filer) {
    TCustomControl::DefineProperties(filer);
    DefineSizes(filer, "ColWidths", FColumns);
    DefineSizes(filer, "RowHeights", FRows);
}

// --- By the mouse

TDrawGrid::TSizing TDrawGrid::SizingAt(int x, int y) {
    const auto inFixed = [this](const TAxis& axis, int at) {
        return at >= 0 && at < axis.Extent(0, axis.Fixed, FLineWidth);
    };
    if (FOptions.Contains(goColSizing) && inFixed(FRows, y)) {
        const int col = FColumns.EdgeAt(x, FLineWidth);
        if (col >= 0) {
            return {&FColumns, col, x, FColumns.SizeOf(col)};
        }
    }
    if (FOptions.Contains(goRowSizing) && inFixed(FColumns, x)) {
        const int row = FRows.EdgeAt(y, FLineWidth);
        if (row >= 0) {
            return {&FRows, row, y, FRows.SizeOf(row)};
        }
    }
    return {};
}

bool TDrawGrid::ShowSizingCursor() {
    POINT mouse;
    if (!GetCursorPos(&mouse)) {
        return false;
    }
    const TPoint at = ScreenToClient(FromPOINT(mouse));
    const TSizing sizing = FSizing.Axis ? FSizing : SizingAt(at.X, at.Y);
    if (sizing.Axis) {
        const auto* const shape = sizing.Axis == &FColumns ? IDC_SIZEWE : IDC_SIZENS;
        ::SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(shape)));
    }
    return sizing.Axis != nullptr;
}

bool TDrawGrid::WantsKey(uint16_t key, TShiftState shift) {
    return (key == VK_TAB && FOptions.Contains(goTabs) && !shift.Contains(ssCtrl)) ||
           TCustomControl::WantsKey(key, shift);
}

} // namespace kx
