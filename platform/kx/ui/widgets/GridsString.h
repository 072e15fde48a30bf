// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/widgets/Grids.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace kx {

/// The text of a cell that the user is about to edit; a handler may change what he gets.
using TGetEditEvent = TEvent<void(TObject* sender, int col, int row, std::string& value)>;
/// The user has changed the text of a cell, by a key for instance.
using TSetEditEvent = TEvent<void(TObject* sender, int col, int row, const std::string& value)>;

/// A grid of texts. With goEditing the user edits the current cell: he types, presses F2, or clicks it once more.
/// Return and the keys that lead to other cells keep what he typed, Escape brings back what was there.
class TStringGrid : public TDrawGrid {
    KX_CLASS()

    explicit TStringGrid(TComponent* owner = nullptr);
    ~TStringGrid() override;

    /// The text of a cell; of one that the grid does not have it is kept. @throws EInvalidOperation "Grid index out of
    /// range" for a negative number.
    const std::string& Cells(int col, int row) const;
    void SetCells(int col, int row, const std::string& value);
    bool EditorMode() const { return FEditing; } ///< The current cell is being edited.
    void SetEditorMode(bool value);

    const TGetEditEvent& OnGetEditText() const { return FOnGetEditText; }
    void SetOnGetEditText(TGetEditEvent value) { FOnGetEditText = std::move(value); }
    const TSetEditEvent& OnSetEditText() const { return FOnSetEditText; }
    void SetOnSetEditText(TSetEditEvent value) { FOnSetEditText = std::move(value); }

    void WndProc(TMessage& message) override;

protected:
    void DrawCell(int col, int row, const TRect& rect, TGridDrawState state) override;
    void CurrentChanged() override;
    void CellsMoved() override;
    void ColumnMoved(int from, int to) override;
    void RowMoved(int from, int to) override;
    void KeyDown(uint16_t& key, TShiftState shift) override;
    void MouseDown(TMouseButton button, TShiftState shift, int x, int y) override;
    void DoEnter() override;
    std::string CellText(int col, int row) const override { return Cells(col, row); }
    virtual std::string GetEditText(int col, int row);
    virtual void SetEditText(int col, int row, const std::string& value);

private:
    class TCellEdit;

    template <class F> void MoveTexts(F&& moved);
    bool CanEdit() const;
    void PlaceEditor();
    void HideEditor(bool focusGrid);
    void EditorChanged();
    void CancelEdit();
    void EditorKey(uint16_t& key, TShiftState shift);
    void EditorLeft();

    std::unordered_map<uint64_t, std::string> FCells; ///< The column in the upper half of the key.
    TCellEdit* FEditor = nullptr;                     ///< Inside the grid, which frees it; null until it is needed.
    bool FEditing = false;
    bool FFilling = false; ///< The editor gets a text that is the cell's already.
    int FEditCol = 0;
    int FEditRow = 0;
    std::string FBefore; ///< What the cell had when editing began.
    TGetEditEvent FOnGetEditText;
    TSetEditEvent FOnSetEditText;
};

} // namespace kx
