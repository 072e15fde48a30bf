// SPDX-License-Identifier: MIT
// Moving and selecting in a grid.

#include "kx/ui/widgets/Grids.h"

#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

// --- Scrolling

void TDrawGrid::SetLeftCol(int value) { ScrollTo(value, FRows.First); }
void TDrawGrid::SetTopRow(int value) { ScrollTo(FColumns.First, value); }

void TDrawGrid::ScrollTo(int left, int top) {
    left = std::clamp(left, FColumns.Fixed, FColumns.LastFirst(ClientWidth(), FLineWidth));
    top = std::clamp(top, FRows.Fixed, FRows.LastFirst(ClientHeight(), FLineWidth));
    if (left == FColumns.First && top == FRows.First) {
        return;
    }
    if (!HandleAllocated()) {
        FColumns.First = left;
        FRows.First = top;
        return;
    }
    // Paints first, or unpainted areas would be moved along. Handlers of the painting may change everything.
    if (!Outlives(*this, [this] { Update(); }) || !HandleAllocated()) {
        return;
    }
    const int64_t x = -FColumns.Extent(FColumns.First, left, FLineWidth);
    const int64_t y = -FRows.Extent(FRows.First, top, FLineWidth);
    FColumns.First = left;
    FRows.First = top;
    ScrollWindowBy(x, y);
    if (Outlives(*this, [this] { UpdateScrollBars(); })) {
        CellsMoved();
    }
}

/// Moves the part that is seen already, and leaves to painting what comes into view.
void TDrawGrid::ScrollWindowBy(int64_t x, int64_t y) {
    const RECT client = ToRECT(ClientRect());
    const auto scroll = [&](const TAxis& axis, int64_t distance, bool horizontal) {
        if (distance == 0) {
            return;
        }
        RECT area = client;
        LONG& begin = horizontal ? area.left : area.top;
        begin = static_cast<LONG>(
            std::min<int64_t>(axis.Extent(0, axis.Fixed, FLineWidth), horizontal ? area.right : area.bottom));
        const int extent = horizontal ? area.right - area.left : area.bottom - area.top;
        if (distance >= extent || -distance >= extent) {
            InvalidateRect(WindowHandle(), &area, FALSE);
        } else {
            const int by = static_cast<int>(distance);
            ScrollWindowEx(WindowHandle(), horizontal ? by : 0, horizontal ? 0 : by, &area, &area, nullptr, nullptr,
                           SW_INVALIDATE);
        }
    };
    if (x != 0 && y != 0) {
        Invalidate();
    } else {
        scroll(FColumns, x, true);
        scroll(FRows, y, false);
    }
}

void TDrawGrid::UpdateScrollBars() {
    if (!HandleAllocated() || FUpdatingBars) {
        return;
    }
    const TFieldScope updating(*this, FUpdatingBars, true);
    const TAlive alive(*this);             // a new bar takes room from the controls inside: their handlers run
    for (int turn = 0; turn < 2; ++turn) { // and it takes room from the other axis, which may need a bar then
        if (alive && (FScrollBars == ssHorizontal || FScrollBars == ssBoth)) {
            UpdateScrollBar(SB_HORZ, FColumns, ColumnsShown());
        }
        if (alive && (FScrollBars == ssVertical || FScrollBars == ssBoth)) {
            UpdateScrollBar(SB_VERT, FRows, RowsShown());
        }
    }
}

void TDrawGrid::UpdateScrollBar(int bar, const TAxis& axis, int shown) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMin = axis.Fixed;
    info.nMax = std::max(axis.Count - 1, axis.Fixed);
    info.nPage = static_cast<UINT>(std::max(shown, 1));
    info.nPos = axis.First;
    SetScrollInfo(WindowHandle(), bar, &info, TRUE);
}

void TDrawGrid::Scrolled(int bar, const TMessage& message) {
    const bool horizontal = bar == SB_HORZ;
    const TAxis& axis = horizontal ? FColumns : FRows;
    const int page = std::max(horizontal ? ColumnsShown() : RowsShown(), 1);
    int64_t to = axis.First;
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS; // the message itself carries 16 bits only
    switch (message.WParamLo()) {
    case SB_LINEUP: --to; break;
    case SB_LINEDOWN: ++to; break;
    case SB_PAGEUP: to -= page; break;
    case SB_PAGEDOWN: to += page; break;
    case SB_TOP: to = axis.Fixed; break;
    case SB_BOTTOM: to = axis.Count; break;
    case SB_THUMBTRACK:
        if (!FOptions.Contains(goThumbTracking)) {
            return;
        }
        [[fallthrough]];
    case SB_THUMBPOSITION:
        GetScrollInfo(WindowHandle(), bar, &info);
        to = info.nTrackPos;
        break;
    default: return;
    }
    const int target = static_cast<int>(std::clamp<int64_t>(to, axis.Fixed, axis.Count));
    ScrollTo(horizontal ? target : FColumns.First, horizontal ? FRows.First : target);
}

void TDrawGrid::WndProc(TMessage& message) {
    switch (message.Msg) {
    case WM_HSCROLL:
    case WM_VSCROLL:
        if (!message.LParamWindow()) {
            Scrolled(message.Msg == WM_HSCROLL ? SB_HORZ : SB_VERT, message);
            return;
        }
        break;
    case WM_MOUSEWHEEL: {
        if (MouseWheelUsed(message)) {
            return;
        }
        const bool rows = FRows.Count - FRows.Fixed > RowsShown();
        const int by = FWheel.Lines(static_cast<int16_t>(message.WParamHi()), rows ? RowsShown() : ColumnsShown());
        const auto to = [by](const TAxis& axis) {
            return static_cast<int>(std::clamp<int64_t>(int64_t{axis.First} + by, axis.Fixed, axis.Count));
        };
        ScrollTo(rows ? FColumns.First : to(FColumns), rows ? to(FRows) : FRows.First);
        return;
    }
    case WM_SETCURSOR:
        if (message.LParamLo() == HTCLIENT && ShowSizingCursor()) {
            message.Result = TRUE;
            return;
        }
        break;
    case WM_CANCELMODE:
        FSizing = {};
        EndMoving(false);
        break;
    case WM_GETDLGCODE:
        TCustomControl::WndProc(message);
        message.Result |= DLGC_WANTARROWS;
        return;
    default: break;
    }
    TCustomControl::WndProc(message);
}

// --- Selection

TGridRect TDrawGrid::Selection() const {
    if (FOptions.Contains(goRowSelect)) {
        return {FColumns.Fixed, std::min(FRows.Anchor, FRows.Current), std::max(FColumns.Count - 1, FColumns.Fixed),
                std::max(FRows.Anchor, FRows.Current)};
    }
    return {std::min(FColumns.Anchor, FColumns.Current), std::min(FRows.Anchor, FRows.Current),
            std::max(FColumns.Anchor, FColumns.Current), std::max(FRows.Anchor, FRows.Current)};
}

bool TDrawGrid::CanBeCurrent(int col, int row) const {
    return col >= FColumns.Fixed && col < FColumns.Count && row >= FRows.Fixed && row < FRows.Count;
}

void TDrawGrid::CheckCell(int col, int row) const {
    if (!CanBeCurrent(col, row)) {
        throw EInvalidOperation("Grid index out of range");
    }
}

void TDrawGrid::SetSelection(const TGridRect& value) {
    CheckCell(value.Left, value.Top);
    CheckCell(value.Right, value.Bottom);
    InvalidateSelection(Selection());
    FColumns.Anchor = value.Left;
    FRows.Anchor = value.Top;
    FColumns.Current = value.Right;
    FRows.Current = value.Bottom;
    InvalidateSelection(Selection());
    if (Outlives(*this, [this] { ShowCurrent(); })) {
        CurrentTold();
        CurrentChanged();
    }
}

void TDrawGrid::SetCol(int value) {
    CheckCell(value, FRows.Current);
    MoveTo(value, FRows.Current, false);
}

void TDrawGrid::SetRow(int value) {
    CheckCell(FColumns.Current, value);
    MoveTo(FColumns.Current, value, false);
}

bool TDrawGrid::SelectCell(int col, int row) {
    bool canSelect = true;
    FOnSelectCell(this, col, row, canSelect);
    return canSelect;
}

bool TDrawGrid::MoveTo(int col, int row, bool extend) {
    extend = extend && FOptions.Contains(goRangeSelect);
    const bool moves = col != FColumns.Current || row != FRows.Current;
    if (moves) {
        const TAlive alive(*this);
        if (!SelectCell(col, row) || !alive || !CanBeCurrent(col, row)) {
            return false;
        }
    }
    const TGridRect old = Selection();
    InvalidateCell(FColumns.Current, FRows.Current);
    FColumns.Current = col;
    FRows.Current = row;
    if (!extend) {
        FColumns.Anchor = col;
        FRows.Anchor = row;
    }
    if (Selection() != old) {
        InvalidateSelection(old);
        InvalidateSelection(Selection());
    }
    InvalidateCell(col, row);
    if (Outlives(*this, [this] { ShowCurrent(); })) {
        CurrentTold();
        CurrentChanged();
    }
    return true;
}

void TDrawGrid::InvalidateSelection(const TGridRect& selection) {
    const int right =
        static_cast<int>(std::min<int64_t>(selection.Right, int64_t{FColumns.First} + ColumnsShown() + 1));
    const int bottom = static_cast<int>(std::min<int64_t>(selection.Bottom, int64_t{FRows.First} + RowsShown() + 1));
    for (int row = std::max(selection.Top, FRows.First); row <= bottom; ++row) {
        for (int col = std::max(selection.Left, FColumns.First); col <= right; ++col) {
            InvalidateCell(col, row);
        }
    }
}

void TDrawGrid::ShowCurrent() {
    const auto first = [](const TAxis& axis, int shown) {
        if (axis.Current < axis.First) {
            return axis.Current;
        }
        const int64_t last = int64_t{axis.First} + std::max(shown, 1) - 1;
        return axis.Current > last ? static_cast<int>(axis.First + (axis.Current - last)) : axis.First;
    };
    ScrollTo(first(FColumns, ColumnsShown()), first(FRows, RowsShown()));
}

// --- Keyboard and mouse

void TDrawGrid::FocusMoved() { InvalidateSelection(Selection()); }

void TDrawGrid::DoEnter() {
    FocusMoved();
    CurrentTold();
    TCustomControl::DoEnter();
}

void TDrawGrid::DoExit() {
    FocusMoved();
    TCustomControl::DoExit();
}

void TDrawGrid::KeyDown(uint16_t& key, TShiftState shift) {
    const TAlive alive(*this);
    TCustomControl::KeyDown(key, shift);
    if (alive && key == VK_ESCAPE) {
        EndMoving(false);
    }
    if (!alive || key == 0 || FColumns.Count == 0 || FRows.Count == 0 || shift.Contains(ssAlt)) {
        return;
    }
    const bool ctrl = shift.Contains(ssCtrl);
    int64_t col = FColumns.Current;
    int64_t row = FRows.Current;
    const int columnPage = ctrl ? std::max(ColumnsShown(), 1) : 1;
    const int rowPage = std::max(RowsShown(), 1);
    switch (key) {
    case VK_LEFT: col -= columnPage; break;
    case VK_RIGHT: col += columnPage; break;
    case VK_UP: row -= ctrl ? rowPage : 1; break;
    case VK_DOWN: row += ctrl ? rowPage : 1; break;
    case VK_PRIOR: row = ctrl ? FRows.First : row - rowPage; break;
    case VK_NEXT: row = ctrl ? int64_t{FRows.First} + rowPage - 1 : row + rowPage; break;
    case VK_HOME:
        col = FColumns.Fixed;
        row = ctrl ? FRows.Fixed : row;
        break;
    case VK_END:
        col = FColumns.Count - 1;
        row = ctrl ? FRows.Count - 1 : row;
        break;
    case VK_TAB: // to the next cell, of the next row behind the last one, and the other way round
        if (!FOptions.Contains(goTabs)) {
            return;
        }
        col += shift.Contains(ssShift) ? -1 : 1;
        if (col < FColumns.Fixed || col >= FColumns.Count) {
            row += col < FColumns.Fixed ? -1 : 1;
            row = row < FRows.Fixed ? FRows.Count - 1 : row >= FRows.Count ? FRows.Fixed : row;
            col = col < FColumns.Fixed ? FColumns.Count - 1 : FColumns.Fixed;
        }
        shift.Exclude(ssShift);
        break;
    default: return;
    }
    const auto within = [](const TAxis& axis, int64_t cell) {
        return static_cast<int>(std::clamp<int64_t>(cell, axis.Fixed, axis.Count - 1));
    };
    const int toCol = within(FColumns, col);
    const int toRow = within(FRows, row);
    if (toCol != FColumns.Current || toRow != FRows.Current || !shift.Contains(ssShift)) {
        MoveTo(toCol, toRow, shift.Contains(ssShift));
    }
}

/// At the current cell, as far as it is seen.
TPoint TDrawGrid::KeyboardMenuPoint() const {
    const TRect cell = CellRect(FColumns.Current, FRows.Current);
    const TRect client = ClientRect();
    return {std::clamp(cell.Left, 0, client.Right), std::clamp(cell.Bottom, 0, client.Bottom)};
}

void TDrawGrid::MouseDown(TMouseButton button, TShiftState shift, int x, int y) {
    const TAlive alive(*this);
    if (button == mbLeft) {
        if (CanFocus()) {
            SetFocus();
        }
        int col = -1;
        int row = -1;
        if (alive) {
            MouseToCell(x, y, col, row);
            FSizing = SizingAt(x, y);
            FMoving = FSizing.Axis ? TMoving{} : MovingAt(col, row);
        }
        if (alive && col >= FColumns.Fixed && row >= FRows.Fixed) {
            FSelecting = true;
            MoveTo(col, row, shift.Contains(ssShift));
        }
    }
    if (alive) {
        TCustomControl::MouseDown(button, shift, x, y);
    }
}

void TDrawGrid::MouseMove(TShiftState shift, int x, int y) {
    const TAlive alive(*this);
    if (!shift.Contains(ssLeft)) { // the button was let go where the grid does not hear of it
        FSizing = {};
        EndMoving(false);
    }
    if (FSizing.Axis) {
        const int moved = (FSizing.Axis == &FColumns ? x : y) - FSizing.From;
        SetSizeIn(*FSizing.Axis, FSizing.Cell, std::max(FSizing.Size + moved, 1));
    }
    if (alive && FMoving.Axis) {
        DragTo(x, y);
    }
    if (alive && FSelecting && shift.Contains(ssLeft) && FColumns.Count > 0 && FRows.Count > 0) {
        // A point beside the visible cells means the next cell there, so that the grid scrolls.
        const int col = FColumns.Toward(x, ColumnsShown(), FLineWidth);
        const int row = FRows.Toward(y, RowsShown(), FLineWidth);
        if (col != FColumns.Current || row != FRows.Current) {
            MoveTo(col, row, true);
        }
    }
    if (alive) {
        TCustomControl::MouseMove(shift, x, y);
    }
}

void TDrawGrid::MouseUp(TMouseButton button, TShiftState shift, int x, int y) {
    if (button == mbLeft) {
        FSelecting = false;
        FSizing = {};
        if (!Outlives(*this, [this] { EndMoving(true); })) {
            return;
        }
    }
    TCustomControl::MouseUp(button, shift, x, y);
}

} // namespace kx
