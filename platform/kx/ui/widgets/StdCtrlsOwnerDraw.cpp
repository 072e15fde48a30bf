// SPDX-License-Identifier: MIT
// Items that the program draws.

#include "kx/core/Barrier.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

void TComboBox::SetItemHeight(int value) {
    FItemHeight = std::max(value, 1);
    if (IsOwnerDrawn()) {
        RecreateWnd();
    }
}

void TComboBox::SetOnDrawItem(TDrawItemEvent value) {
    FOnDrawItem = std::move(value);
    Invalidate();
}

void TComboBox::MeasureItemNotification(MEASUREITEMSTRUCT& item) {
    int height = FItemHeight;
    const auto index = static_cast<int>(item.itemID);
    if (FStyle == csOwnerDrawVariable && index >= 0) {
        Guarded([&] { MeasureItem(index, height); });
    }
    item.itemHeight = static_cast<UINT>(std::max(height, 1));
}

void TComboBox::MeasureItem(int index, int& height) { FOnMeasureItem(this, index, height); }

void TComboBox::DrawItemNotification(const DRAWITEMSTRUCT& item) {
    static constexpr struct {
        UINT System;
        TOwnerDrawStateFlag Ours;
    } flags[] = {{ODS_SELECTED, odSelected},        {ODS_GRAYED, odGrayed}, {ODS_DISABLED, odDisabled},
                 {ODS_CHECKED, odChecked},          {ODS_FOCUS, odFocused}, {ODS_DEFAULT, odDefault},
                 {ODS_COMBOBOXEDIT, odComboBoxEdit}};
    TOwnerDrawState state;
    for (const auto& flag : flags) {
        if (item.itemState & flag.System) {
            state.Include(flag.Ours);
        }
    }
    const TAlive alive(*this);
    const TDrawTarget target(item.hDC);
    const TRect rect = FromRECT(item.rcItem);
    const bool selected = state.Contains(odSelected);
    TCanvas& canvas = *FCanvas;
    canvas.SetHandle(item.hDC);
    canvas.Font().Assign(&Font());
    canvas.Brush().SetColor(selected ? clHighlight : Color());
    if (selected) {
        canvas.Font().SetColor(clHighlightText);
    } else if (state.Contains(odDisabled)) {
        canvas.Font().SetColor(clGrayText);
    }
    canvas.FillRect(rect);
    const auto index = static_cast<int>(item.itemID);
    if (index >= 0 && index < FItems.Count()) {
        Guarded([&] { DrawItem(index, rect, state); });
    }
    if (alive && target.Lives()) { // else the canvas has let go of the context
        if (state.Contains(odFocused) && !HidesFocus()) {
            canvas.DrawFocusRect(rect);
        }
        canvas.SetHandle(nullptr);
    }
}

void TComboBox::DrawItem(int index, const TRect& rect, TOwnerDrawState state) {
    if (FOnDrawItem) {
        FOnDrawItem(this, index, rect, state);
    } else {
        FCanvas->TextRect(rect, rect.Left + 2, rect.Top, FItems.Get(index));
    }
}

} // namespace kx
