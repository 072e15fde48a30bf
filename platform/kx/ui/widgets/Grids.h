// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/Controls.h"
#include "kx/win/MouseWheel.h"

#include <map>

namespace kx {

enum TGridOption : uint8_t {
    goFixedVertLine, ///< Lines between fixed columns.
    goFixedHorzLine,
    goVertLine, ///< Lines between the other columns.
    goHorzLine,
    goRangeSelect,       ///< Mouse and keyboard with Shift select a rectangle of cells.
    goDrawFocusSelected, ///< The cell with the focus is drawn as selected too.
    goRowSizing,         ///< The user may drag the lines between the rows, in the fixed columns,
    goColSizing,         ///< and those between the columns, in the fixed rows.
    goRowMoving,         ///< The user may drag rows to other places, in the fixed columns,
    goColMoving,         ///< and columns, in the fixed rows.
    goEditing,           ///< The user may edit the cells of grids that have texts.
    goTabs,              ///< Tab goes from cell to cell.
    goRowSelect,         ///< Whole rows are selected, and no cell is edited.
    goAlwaysShowEditor,  ///< The current cell is always being edited, with goEditing.
    goThumbTracking      ///< Scrolls while the scroll bar is being dragged.
};
KX_ENUM(TGridOption, "goFixedVertLine", "goFixedHorzLine", "goVertLine", "goHorzLine", "goRangeSelect",
        "goDrawFocusSelected", "goRowSizing", "goColSizing", "goRowMoving", "goColMoving", "goEditing", "goTabs",
        "goRowSelect", "goAlwaysShowEditor", "goThumbTracking")
using TGridOptions = TSet<TGridOption>;

/// State of a cell: gdFocused is the current cell while the grid has the focus.
enum TGridDrawFlag : uint8_t { gdSelected, gdFocused, gdFixed };
KX_ENUM(TGridDrawFlag, "gdSelected", "gdFocused", "gdFixed")
using TGridDrawState = TSet<TGridDrawFlag>;

/// Draws a cell on the grid's `Canvas`, whose brush and font are those of the cell's state; `rect` is the cell without
/// its lines, in client coordinates.
using TDrawCellEvent = TEvent<void(TObject* sender, int col, int row, const TRect& rect, TGridDrawState state)>;
/// A cell is about to become the current one; a handler that sets `canSelect` to false refuses.
using TSelectCellEvent = TEvent<void(TObject* sender, int col, int row, bool& canSelect)>;
/// The user has dragged a column or a row to another place.
using TMovedEvent = TEvent<void(TObject* sender, int fromIndex, int toIndex)>;

/// A rectangle of cells; Right and Bottom belong to it.
struct TGridRect {
    int Left = 0;
    int Top = 0;
    int Right = 0;
    int Bottom = 0;

    friend bool operator==(const TGridRect&, const TGridRect&) = default;
};

/// Cells that the program draws. Fixed columns and rows stay where they are and cannot be selected.
/// Drawing and scrolling cost as much as there are cells to be seen, however many the grid has.
class TDrawGrid : public TCustomControl, public IAccessibleParts {
    KX_CLASS()

    explicit TDrawGrid(TComponent* owner = nullptr);

    int ColCount() const { return FColumns.Count; } ///< Fixed ones included; may be 0.
    void SetColCount(int value);
    int RowCount() const { return FRows.Count; }
    void SetRowCount(int value);
    /// @throws EInvalidOperation "Fixed column count must be less than column count"
    int FixedCols() const { return FColumns.Fixed; }
    void SetFixedCols(int value);
    /// @throws EInvalidOperation "Fixed row count must be less than row count"
    int FixedRows() const { return FRows.Fixed; }
    void SetFixedRows(int value);
    /// Pixels of each column, without its line; 1 to 2^24. Setting it gives all columns this width.
    int DefaultColWidth() const { return FColumns.Size; }
    void SetDefaultColWidth(int value);
    int DefaultRowHeight() const { return FRows.Size; }
    void SetDefaultRowHeight(int value);
    /// Pixels of one column, without its line; 0 hides it. @throws EInvalidOperation "Grid index out of range"
    int ColWidths(int col) const { return SizeIn(FColumns, col); }
    void SetColWidths(int col, int value) { SetSizeIn(FColumns, col, value); }
    int RowHeights(int row) const { return SizeIn(FRows, row); }
    void SetRowHeights(int row, int value) { SetSizeIn(FRows, row, value); }

    /// The current cell; (0, 0) when there is none. Setting it selects that cell alone and brings it into view, and
    /// asks OnSelectCell.
    /// @throws EInvalidOperation "Grid index out of range" for a fixed cell or one that does not exist.
    int Col() const { return FColumns.Current; }
    void SetCol(int value);
    int Row() const { return FRows.Current; }
    void SetRow(int value);
    /// The first cell behind the fixed ones that is shown; brought into the range that can be.
    int LeftCol() const { return FColumns.First; }
    void SetLeftCol(int value);
    int TopRow() const { return FRows.First; }
    void SetTopRow(int value);
    int VisibleColCount() const; ///< Columns behind the fixed ones that are seen in full.
    int VisibleRowCount() const;
    TGridRect Selection() const;
    /// @throws EInvalidOperation "Grid index out of range"
    void SetSelection(const TGridRect& value);

    TRect CellRect(int col, int row) const; ///< In client coordinates, without its lines; empty when it is not shown.
    /// The cell at a point of the client area; -1 beside the cells.
    void MouseToCell(int x, int y, int& col, int& row) const;
    void InvalidateCell(int col, int row);

    TGridOptions Options() const { return FOptions; }
    void SetOptions(TGridOptions value);
    TScrollStyle ScrollBars() const { return FScrollBars; }
    void SetScrollBars(TScrollStyle value);
    TBorderStyle BorderStyle() const { return FBorderStyle; }
    void SetBorderStyle(TBorderStyle value);
    TColor FixedColor() const { return FFixedColor; }
    void SetFixedColor(TColor value);
    int GridLineWidth() const { return FLineWidth; } ///< Pixels.
    void SetGridLineWidth(int value);
    bool DefaultDrawing() const { return FDefaultDrawing; } ///< Cells are filled before OnDrawCell, and get a focus.
    void SetDefaultDrawing(bool value);

    const TMovedEvent& OnColumnMoved() const { return FOnColumnMoved; }
    void SetOnColumnMoved(TMovedEvent value) { FOnColumnMoved = std::move(value); }
    const TMovedEvent& OnRowMoved() const { return FOnRowMoved; }
    void SetOnRowMoved(TMovedEvent value) { FOnRowMoved = std::move(value); }
    const TDrawCellEvent& OnDrawCell() const { return FOnDrawCell; }
    void SetOnDrawCell(TDrawCellEvent value);
    const TSelectCellEvent& OnSelectCell() const { return FOnSelectCell; }
    void SetOnSelectCell(TSelectCellEvent value) { FOnSelectCell = std::move(value); }

    void CreateParams(TCreateParams& params) override;
    void WndProc(TMessage& message) override;
    void DefineProperties(TFiler& filer) override;

    // --- Screen readers: the cells, row by row, as far as they are counted

    TAccessibleInfo AccessibleInfo() const override;
    int AccessiblePartCount() const override;
    TAccessibleInfo AccessiblePart(int part) const override;
    TRect AccessiblePartRect(int part) const override;
    int AccessiblePartAt(const TPoint& point) const override;
    int FocusedPart() const override { return PartOf(FColumns.Current, FRows.Current); }
    std::vector<int> SelectedParts() const override;
    void AccessiblePartAction(int part) override; ///< Makes the cell the current one.

protected:
    void ChangeScale(int to, int from) override;
    void CreateWnd() override;
    void Paint() override;
    void EraseBackground(HDC) override {} // every pixel gets painted
    void Resize() override;
    void DoEnter() override;
    void DoExit() override;
    void KeyDown(uint16_t& key, TShiftState shift) override;
    void MouseDown(TMouseButton button, TShiftState shift, int x, int y) override;
    void MouseMove(TShiftState shift, int x, int y) override;
    void MouseUp(TMouseButton button, TShiftState shift, int x, int y) override;
    virtual void DrawCell(int col, int row, const TRect& rect, TGridDrawState state);
    virtual bool SelectCell(int col, int row);
    /// The current cell has changed, or has been selected once more.
    virtual void CurrentChanged() {}
    /// The cells have got other places or sizes.
    virtual void CellsMoved() {}
    /// A column or a row has got another place, with its size, and the current cell has gone along.
    virtual void ColumnMoved(int from, int to);
    virtual void RowMoved(int from, int to);
    static int Moved(int index, int from, int to); ///< The place that an index has then.
    bool WantsKey(uint16_t key, TShiftState shift) override;
    TPoint KeyboardMenuPoint() const override;
    /// What screen readers are told to be in a cell.
    virtual std::string CellText(int, int) const { return {}; }
    int PartOf(int col, int row) const; ///< The number of a cell among the parts; -1 when it is not counted.
    void CurrentTold();                 ///< Screen readers hear of the current cell.

private:
    /// Columns or rows. Cell i behind the fixed ones is shown when it is not before `First`.
    struct TAxis {
        int Count = 5;
        int Fixed = 1;
        int Size = 64;
        int First = 1;
        int Current = 1;
        int Anchor = 1;         ///< Other end of the selection.
        std::map<int, int> Own; ///< Sizes of cells that have not the common one.

        int SizeOf(int cell) const;
        int Pitch(int64_t cell, int line) const;          ///< With its line; 0 of a hidden one.
        int64_t Extent(int from, int to, int line) const; ///< Of the cells from one up to the other; may be negative.
        int Shown(int client, int line) const;            ///< Cells from the first one on that fit in full.
        int LastFirst(int client, int line) const;
        int64_t Start(int cell, int line) const;               ///< Client coordinate of a cell that is shown.
        int At(int coordinate, int line) const;                ///< -1 beside the cells.
        int Toward(int coordinate, int shown, int line) const; ///< Beside the cells the next one there.
        int EdgeAt(int coordinate, int line) const;            ///< The cell whose end is there; -1: none.
        void Move(int from, int to);
    };

    /// The user drags the end of a column or a row.
    struct TSizing {
        TAxis* Axis = nullptr; ///< Null: he does not.
        int Cell = 0;
        int From = 0; ///< Where the button went down.
        int Size = 0; ///< Of the cell at that time.
    };

    /// The user drags a column or a row to another place.
    struct TMoving {
        TAxis* Axis = nullptr; ///< Null: he does not.
        int From = 0;
        int To = 0;
    };

    int ColumnsShown() const { return FColumns.Shown(ClientWidth(), FLineWidth); }
    int RowsShown() const { return FRows.Shown(ClientHeight(), FLineWidth); }
    void SetCounts(TAxis& axis, int count, int fixed);
    void SetSize(int& field, int least, int value);
    int SizeIn(const TAxis& axis, int cell) const;
    void SetSizeIn(TAxis& axis, int cell, int value);
    void DefineSizes(TFiler& filer, std::string_view name, TAxis& axis);
    TSizing SizingAt(int x, int y);
    bool ShowSizingCursor();
    TMoving MovingAt(int col, int row);
    void DragTo(int x, int y);
    void EndMoving(bool drop);
    void PaintDropMark();
    void LayoutChanged();
    void ScrollWindowBy(int64_t x, int64_t y);
    void FocusMoved();
    void ScrollTo(int left, int top);
    void UpdateScrollBars();
    void UpdateScrollBar(int bar, const TAxis& axis, int shown);
    void Scrolled(int bar, const TMessage& message);
    bool MoveTo(int col, int row, bool extend);
    void ShowCurrent();
    bool CanBeCurrent(int col, int row) const; ///< A cell that exists and is not fixed.
    void CheckCell(int col, int row) const;
    void InvalidateSelection(const TGridRect& selection);
    void PaintCell(int col, int row, const TRect& rect);
    void PaintLines(const TRect& cell, bool fixed, bool themed);
    TGridDrawState StateOf(int col, int row) const;

    TAxis FColumns;
    TAxis FRows;
    TGridOptions FOptions{goFixedVertLine, goFixedHorzLine, goVertLine, goHorzLine, goRangeSelect};
    TScrollStyle FScrollBars = ssBoth;
    TBorderStyle FBorderStyle = bsSingle;
    TColor FFixedColor = clBtnFace;
    int FLineWidth = 1;
    bool FDefaultDrawing = true;
    bool FSelecting = false; ///< By the mouse, whose button is down.
    bool FUpdatingBars = false;
    TSizing FSizing;
    TMoving FMoving;
    TMouseWheel FWheel;
    TMovedEvent FOnColumnMoved;
    TMovedEvent FOnRowMoved;
    TDrawCellEvent FOnDrawCell;
    TSelectCellEvent FOnSelectCell;
};

} // namespace kx
