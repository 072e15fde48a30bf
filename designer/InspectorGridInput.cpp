// SPDX-License-Identifier: MIT
// Mouse, keyboard and painting of the inspector's rows.

#include "designer/InspectorGrid.h"

#include "kx/win/Windows.h"

#include <algorithm>

namespace kx::designer {

void TInspectorGrid::MouseDown(TMouseButton button, TShiftState shift, int x, int y) {
    TCustomControl::MouseDown(button, shift, x, y);
    constexpr int reach = 3;
    if (button != mbLeft || shift.Contains(ssDouble)) { // whose double click has been answered
        return;
    }
    if (x >= Split() - reach && x <= Split() + reach) {
        FDragsSplit = true;
        return;
    }
    const int row = RowAt(y);
    if (row < 0) {
        return;
    }
    Choose(row, x);
}

void TInspectorGrid::Choose(int row, int x) {
    const std::string path = FRows[static_cast<size_t>(row)].Path;
    const bool expands = x < FirstIndent() + FRows[static_cast<size_t>(row)].Level * Indent();
    SelectRow(row);
    row = FindRow(path);
    if (row < 0 || !HandleAllocated()) {
        return;
    }
    const TRow& one = FRows[static_cast<size_t>(row)];
    if (one.CanExpand && expands) {
        Expand(row, !one.IsExpanded);
    } else if (x >= ButtonRect(row).Left && AttributesOf(*one.Editor).Contains(paDialog)) {
        EditRow(row);
    } else if (TWinControl* const field = Field(); field && field->CanFocus()) {
        field->SetFocus();
        field == &FEdit ? FEdit.SelectAll() : FCombo.SelectAll();
    }
}

void TInspectorGrid::MouseMove(TShiftState shift, int x, int y) {
    TCustomControl::MouseMove(shift, x, y);
    constexpr int reach = 3;
    if (FDragsSplit && ClientWidth() > 0) {
        FNameShare = std::clamp(x * 100 / ClientWidth(), 15, 85);
        PlaceField();
        Invalidate();
    }
    if (FDragsSplit || (x >= Split() - reach && x <= Split() + reach)) {
        ::SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_SIZEWE)));
    }
}

void TInspectorGrid::MouseUp(TMouseButton button, TShiftState shift, int x, int y) {
    TCustomControl::MouseUp(button, shift, x, y);
    FDragsSplit = false;
}

void TInspectorGrid::DblClick() {
    TCustomControl::DblClick();
    POINT mouse;
    GetCursorPos(&mouse);
    const int row = RowAt(ScreenToClient({mouse.x, mouse.y}).Y);
    if (row >= 0) {
        EditRow(row);
    }
}

void TInspectorGrid::FieldKey(uint16_t& key, TShiftState shift) {
    const bool isOpen = FSelected >= 0 && Field() == &FCombo && FCombo.DroppedDown();
    switch (key) {
    case VK_RETURN:
        if (shift.Contains(ssCtrl)) {
            EditRow(FSelected);
        } else {
            Commit();
            if (!FEdited && FSelected >= 0) {
                ShowField();
            }
        }
        break;
    case VK_ESCAPE: Revert(); break;
    case VK_UP:
    case VK_DOWN:
        if (isOpen || shift.Contains(ssAlt)) {
            return;
        }
        SelectRow(FSelected + (key == VK_UP ? -1 : 1));
        if (TWinControl* const field = Field(); field && field->CanFocus()) {
            field->SetFocus();
        }
        break;
    default: return;
    }
    key = 0;
}

bool TInspectorGrid::WantsKey(uint16_t key, TShiftState shift) {
    return key == VK_UP || key == VK_DOWN || key == VK_RETURN || TCustomControl::WantsKey(key, shift);
}

void TInspectorGrid::KeyDown(uint16_t& key, TShiftState shift) {
    TCustomControl::KeyDown(key, shift);
    if (key == VK_RETURN && FSelected >= 0) {
        EditRow(FSelected);
    } else if (key == VK_UP || key == VK_DOWN) {
        SelectRow(FSelected + (key == VK_UP ? -1 : 1));
    } else if ((key == VK_ADD || key == VK_SUBTRACT) && FSelected >= 0) {
        Expand(FSelected, key == VK_ADD);
    }
}

// --- Painting

void TInspectorGrid::Paint() {
    TCanvas& canvas = Canvas();
    canvas.SetFont(Font());
    canvas.Brush().SetColor(clWindow);
    canvas.FillRect(ClientRect());
    for (int i = 0; i < RowCount(); ++i) {
        const TRow& row = FRows[static_cast<size_t>(i)];
        const TRect r = RowRect(i);
        if (r.Bottom < 0 || r.Top > ClientHeight()) {
            continue;
        }
        const bool isSelected = i == FSelected;
        const int left = FirstIndent() + row.Level * Indent();
        TRect name{left, r.Top, Split() - 2, r.Top + RowHeight() - 1};
        canvas.Brush().SetColor(isSelected ? clHighlight : clWindow);
        if (isSelected) {
            canvas.FillRect({0, r.Top, Split(), r.Top + RowHeight() - 1});
        }
        canvas.Font().SetStyle({});
        canvas.Font().SetColor(isSelected ? clHighlightText : clWindowText);
        canvas.DrawText(row.Name, name, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
        if (row.CanExpand) {
            constexpr int half = 4;
            const TPoint middle{left - FirstIndent() / 2, r.Top + RowHeight() / 2};
            const TRect box{middle.X - half, middle.Y - half, middle.X + half + 1, middle.Y + half + 1};
            canvas.Brush().SetColor(clWindow);
            canvas.FillRect(box);
            canvas.Brush().SetColor(clBtnShadow);
            canvas.FrameRect(box);
            canvas.Brush().SetColor(clWindowText);
            canvas.FillRect({middle.X - 2, middle.Y, middle.X + 3, middle.Y + 1});
            if (!row.IsExpanded) {
                canvas.FillRect({middle.X, middle.Y - 2, middle.X + 1, middle.Y + 3});
            }
        }
        TRect value = ValueRect(i);
        value.Left += 3;
        canvas.Brush().SetColor(clWindow);
        canvas.Font().SetColor(AttributesOf(*row.Editor).Contains(paReadOnly) ? clGrayText : clWindowText);
        canvas.Font().SetStyle(RowIsBold(i) ? TFontStyles{fsBold} : TFontStyles{});
        if (!isSelected) {
            canvas.DrawText(ValueOf(*row.Editor), value, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
        } else if (AttributesOf(*row.Editor).Contains(paDialog)) {
            TRect button = ButtonRect(i);
            RECT frame{button.Left, button.Top, button.Right, button.Bottom};
            DrawFrameControl(canvas.Handle(), &frame, DFC_BUTTON, DFCS_BUTTONPUSH);
            canvas.Brush().SetStyle(bsClear);
            canvas.DrawText("...", button, DT_SINGLELINE | DT_CENTER | DT_VCENTER);
            canvas.Brush().SetStyle(bsSolid);
        }
        if (isSelected && !FError.empty()) {
            TRect error{4, r.Top + RowHeight(), r.Right - 2, r.Bottom - 1};
            canvas.Brush().SetColor(clInfoBk);
            canvas.FillRect({0, r.Top + RowHeight(), r.Right, r.Bottom - 1});
            canvas.Font().SetStyle({});
            canvas.Font().SetColor(clRed);
            canvas.DrawText(FError, error, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
        }
        canvas.Brush().SetColor(clBtnFace);
        canvas.FillRect({0, r.Bottom - 1, r.Right, r.Bottom});
        canvas.FillRect({Split(), r.Top, Split() + 1, r.Top + RowHeight()}); // an error has the whole line below
    }
}

} // namespace kx::designer
