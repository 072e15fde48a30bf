// SPDX-License-Identifier: MIT
// Grids of texts, and the editor in their cells.

#include "kx/ui/widgets/GridsString.h"

#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Windows.h"

namespace kx {

const TClass& TStringGrid::StaticClass() {
    static const TClassBuilder<TStringGrid> cls("TStringGrid", TDrawGrid::StaticClass(), [](auto& c) {
        using T = TStringGrid;
        c.Creatable();
        c.Property("OnGetEditText", &T::OnGetEditText, &T::SetOnGetEditText);
        c.Property("OnSetEditText", &T::OnSetEditText, &T::SetOnSetEditText);
    });
    return cls.Class();
}

/// The edit in the current cell. What it does not want, the grid gets.
class TStringGrid::TCellEdit : public TEdit {
public:
    explicit TCellEdit(TStringGrid& grid) : TEdit(nullptr), FGrid(grid) {
        SetBorderStyle(bsNone);
        SetTabStop(false);
        SetParentColor(true);
        SetOnChange([&grid](TObject*) { grid.EditorChanged(); });
        SetVisible(false);
        SetParent(&grid);
    }

protected:
    void KeyDown(uint16_t& key, TShiftState shift) override {
        if (Outlives(*this, [&] { FGrid.EditorKey(key, shift); })) {
            TEdit::KeyDown(key, shift);
        }
    }
    void KeyPress(char32_t& key) override {
        if (Outlives(*this, [&] { FGrid.KeyPress(key); })) {
            if (key == '\r' || key == '\x1B' || key == '\t') {
                key = 0; // a sound else
            }
            TEdit::KeyPress(key);
        }
    }
    void DoExit() override {
        if (Outlives(*this, [&] { TEdit::DoExit(); })) {
            FGrid.EditorLeft();
        }
    }
    bool WantsKey(uint16_t key, TShiftState shift) override {
        return key == VK_RETURN || key == VK_ESCAPE || FGrid.WantsKey(key, shift) || TEdit::WantsKey(key, shift);
    }

private:
    TStringGrid& FGrid;
};

TStringGrid::TStringGrid(TComponent* owner) : TDrawGrid(owner) {}

TStringGrid::~TStringGrid() {
    Destroying();
    FEditor = nullptr; // goes with the grid
    FEditing = false;
}

// --- Texts

namespace {

uint64_t KeyOf(int col, int row) {
    if (col < 0 || row < 0) {
        throw EInvalidOperation("Grid index out of range");
    }
    return uint64_t{static_cast<uint32_t>(col)} << 32 | static_cast<uint32_t>(row);
}

} // namespace

const std::string& TStringGrid::Cells(int col, int row) const {
    static const std::string none;
    const auto found = FCells.find(KeyOf(col, row));
    return found == FCells.end() ? none : found->second;
}

void TStringGrid::SetCells(int col, int row, const std::string& value) {
    const uint64_t key = KeyOf(col, row);
    if (value.empty()) {
        FCells.erase(key);
    } else {
        FCells[key] = value;
    }
    InvalidateCell(col, row);
    if (FEditing && !FFilling && col == FEditCol && row == FEditRow && FEditor->Text() != value) {
        const TFieldScope filling(*this, FFilling, true);
        FEditor->SetText(value);
    }
}

/// Brings each text to the column and the row that `moved` gives, and the editor along.
template <class F> void TStringGrid::MoveTexts(F&& moved) {
    std::unordered_map<uint64_t, std::string> cells;
    for (auto& [key, text] : FCells) {
        int col = static_cast<int>(key >> 32);
        int row = static_cast<int>(key & 0xFFFFFFFF);
        moved(col, row);
        cells[KeyOf(col, row)] = std::move(text);
    }
    FCells = std::move(cells);
    moved(FEditCol, FEditRow);
}

void TStringGrid::ColumnMoved(int from, int to) {
    MoveTexts([=](int& col, int&) { col = Moved(col, from, to); });
    TDrawGrid::ColumnMoved(from, to);
}

void TStringGrid::RowMoved(int from, int to) {
    MoveTexts([=](int&, int& row) { row = Moved(row, from, to); });
    TDrawGrid::RowMoved(from, to);
}

void TStringGrid::DrawCell(int col, int row, const TRect& rect, TGridDrawState state) {
    if (DefaultDrawing()) {
        const std::string text = Cells(col, row);
        const int left = UseRightToLeftAlignment() ? rect.Right - 2 - Canvas().TextWidth(text) : rect.Left + 2;
        const HDC dc = Canvas().Handle();
        const UINT align = GetTextAlign(dc);
        SetTextAlign(dc, align | (UseRightToLeftReading() ? UINT{TA_RTLREADING} : 0u));
        Canvas().TextRect(rect, left, rect.Top + 2, text);
        SetTextAlign(dc, align);
    }
    TDrawGrid::DrawCell(col, row, rect, state);
}

std::string TStringGrid::GetEditText(int col, int row) {
    std::string value = Cells(col, row);
    FOnGetEditText(this, col, row, value);
    return value;
}

void TStringGrid::SetEditText(int col, int row, const std::string& value) {
    if (Cells(col, row) != value) {
        const TFieldScope filling(*this, FFilling, true);
        SetCells(col, row, value);
        TellAccessible(aeValueChange, PartOf(col, row));
    }
    FOnSetEditText(this, col, row, value);
}

// --- Editing

bool TStringGrid::CanEdit() const {
    return Options().Contains(goEditing) && !Options().Contains(goRowSelect) && HandleAllocated() && Enabled() &&
           Col() >= FixedCols() && Col() < ColCount() && Row() >= FixedRows() && Row() < RowCount() && !IsDesigning();
}

void TStringGrid::SetEditorMode(bool value) {
    if (!value) {
        return HideEditor(true);
    }
    if (FEditing || !CanEdit()) {
        return;
    }
    const int col = Col();
    const int row = Row();
    std::string text;
    if (!Outlives(*this, [&] { text = GetEditText(col, row); })) {
        return;
    }
    if (!FEditor) {
        FEditor = new TCellEdit(*this);
    }
    FEditing = true;
    FEditCol = col;
    FEditRow = row;
    FBefore = Cells(col, row);
    {
        const TFieldScope filling(*this, FFilling, true);
        FEditor->SetText(text);
    }
    PlaceEditor();
    const TAlive alive(*this);
    FEditor->Show();
    if (alive && FEditing && FEditor->CanFocus()) {
        FEditor->SetFocus();
    }
    if (alive && FEditing) {
        FEditor->SelectAll();
    }
}

void TStringGrid::PlaceEditor() {
    const TRect cell = CellRect(FEditCol, FEditRow); // empty while the cell is scrolled away
    const bool isSeen = cell.Right > cell.Left && cell.Bottom > cell.Top;
    FEditor->SetBoundsRect(isSeen ? TRect{cell.Left + 2, cell.Top + 2, cell.Right, cell.Bottom}
                                  : TRect{-1000, -1000, -900, -980});
}

void TStringGrid::HideEditor(bool focusGrid) {
    if (!FEditing) {
        return;
    }
    FEditing = false;
    const TAlive alive(*this);
    InvalidateCell(FEditCol, FEditRow);
    if (focusGrid && FEditor->Focused() && CanFocus()) {
        SetFocus();
    }
    if (alive) {
        FEditor->Hide();
    }
}

void TStringGrid::EditorChanged() {
    if (FEditing && !FFilling) {
        SetEditText(FEditCol, FEditRow, FEditor->Text());
    }
}

void TStringGrid::CancelEdit() {
    if (FEditing && Cells(FEditCol, FEditRow) != FBefore) {
        const std::string before = FBefore;
        if (!Outlives(*this, [&] { SetEditText(FEditCol, FEditRow, before); })) {
            return;
        }
    }
    HideEditor(true);
}

/// The editor loses the focus: to the grid when another cell was chosen, or to another control.
void TStringGrid::EditorLeft() {
    if (!Options().Contains(goAlwaysShowEditor)) {
        HideEditor(false);
    }
}

void TStringGrid::EditorKey(uint16_t& key, TShiftState shift) {
    const bool moves = key == VK_UP || key == VK_DOWN || key == VK_PRIOR || key == VK_NEXT ||
                       (key == VK_TAB && Options().Contains(goTabs));
    if (key == VK_ESCAPE) {
        CancelEdit();
        key = 0;
    } else if (key == VK_RETURN) {
        HideEditor(true);
        key = 0;
    } else if (moves) {
        if (Outlives(*this, [&] { KeyDown(key, shift); })) { // keeps what was typed
            key = 0;
        }
    } else if (OnKeyDown()) {
        TWinControl::KeyDown(key, shift);
    }
}

void TStringGrid::CurrentChanged() {
    const TAlive alive(*this);
    TDrawGrid::CurrentChanged();
    if (alive && FEditing && (Col() != FEditCol || Row() != FEditRow)) {
        HideEditor(true);
    }
    if (alive && Options().Contains(goAlwaysShowEditor) && Focused()) {
        SetEditorMode(true);
    }
}

void TStringGrid::CellsMoved() {
    if (Outlives(*this, [this] { TDrawGrid::CellsMoved(); }) && FEditing) {
        PlaceEditor();
    }
}

void TStringGrid::KeyDown(uint16_t& key, TShiftState shift) {
    if (!Outlives(*this, [&] { TDrawGrid::KeyDown(key, shift); })) {
        return;
    }
    if (!FEditing && (key == VK_F2 || key == VK_RETURN) && !shift.Contains(ssAlt) && CanEdit()) {
        key = 0;
        SetEditorMode(true);
    }
}

/// A click on the cell that is the current one already edits it.
void TStringGrid::MouseDown(TMouseButton button, TShiftState shift, int x, int y) {
    int col = -1;
    int row = -1;
    MouseToCell(x, y, col, row);
    const bool again = button == mbLeft && Focused() && !shift.Contains(ssShift) && col == Col() && row == Row();
    if (Outlives(*this, [&] { TDrawGrid::MouseDown(button, shift, x, y); }) && again && col == Col() && row == Row()) {
        SetMouseCapture(false); // the mouse is the editor's now
        SetEditorMode(true);
    }
}

void TStringGrid::DoEnter() {
    if (Outlives(*this, [this] { TDrawGrid::DoEnter(); }) && Options().Contains(goAlwaysShowEditor)) {
        SetEditorMode(true);
    }
}

void TStringGrid::WndProc(TMessage& message) {
    // What is typed goes into the cell, in place of what is there.
    if (message.Msg == WM_CHAR && message.WParam >= ' ' && !FEditing && CanEdit()) {
        if (Outlives(*this, [this] { SetEditorMode(true); }) && FEditing) {
            message.Result = SendMessageW(FEditor->WindowHandle(), WM_CHAR, message.WParam, message.LParam);
        }
        return;
    }
    TDrawGrid::WndProc(message);
}

} // namespace kx
