// SPDX-License-Identifier: MIT
// The columns of a list view.

#include "kx/ui/widgets/ComCtrls.h"

#include "kx/win/Windows.h"

namespace kx {

/// Brings the window's columns in line with ours, and changes each in its place: with a column that is taken out the
/// system drops its texts.
void TListView::ApplyColumns() {
    while (FWindowColumns > FColumns.Count()) {
        SendMessageW(WindowHandle(), LVM_DELETECOLUMN, static_cast<WPARAM>(--FWindowColumns), 0);
    }
    for (int i = 0; i < FColumns.Count(); ++i) {
        ApplyColumn(i);
    }
}

void TListView::ApplyColumn(int index) {
    constexpr int formats[] = {LVCFMT_LEFT, LVCFMT_RIGHT, LVCFMT_CENTER};
    std::wstring caption = ToWide(FColumns[index].Caption());
    LVCOLUMNW column{};
    column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT | LVCF_SUBITEM;
    column.fmt = formats[BiDiAlignment(FColumns[index].Alignment())];
    column.cx = FColumns[index].Width();
    column.pszText = caption.data();
    column.iSubItem = index;
    const bool isNew = index >= FWindowColumns;
    SendMessageW(WindowHandle(), isNew ? LVM_INSERTCOLUMNW : LVM_SETCOLUMNW, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(&column));
    FWindowColumns += isNew ? 1 : 0;
}

/// A change of one column, or, with null, of their number or order.
void TListView::ColumnsChanged(const TCollectionItem* column) {
    if (!HandleAllocated() || FFilling) {
        return;
    }
    FFilling = true;
    if (column) {
        ApplyColumn(column->Index());
    } else {
        ApplyColumns();
        for (int i = 0; i < FItems.Count(); ++i) {
            FItems[i].ShowAt(i); // the columns may show other texts now
        }
    }
    FFilling = false;
}

/// The user drags a column's edge.
void TListView::HeaderChanged(const NMHEADERA& change) {
    if (!FFilling && change.pitem && (change.pitem->mask & HDI_WIDTH) && change.iItem >= 0 &&
        change.iItem < FColumns.Count()) {
        FColumns[change.iItem].FWidth = change.pitem->cxy;
    }
}

const TClass& TListColumn::StaticClass() {
    static const TClassBuilder<TListColumn> cls("TListColumn", TCollectionItem::StaticClass(), [](auto& c) {
        using T = TListColumn;
        c.Property("Alignment", &T::Alignment, &T::SetAlignment).Default = taLeftJustify;
        c.Property("Caption", &T::Caption, &T::SetCaption);
        c.Property("Width", &T::Width, &T::SetWidth).Default = 50;
    });
    return cls.Class();
}

void TListColumn::Assign(const TPersistent* source) {
    if (const auto* other = dynamic_cast<const TListColumn*>(source)) {
        FCaption = other->FCaption;
        FWidth = other->FWidth;
        FAlignment = other->FAlignment;
        Changed(false);
    } else {
        TCollectionItem::Assign(source);
    }
}

const TClass& TListColumns::StaticClass() {
    static const TClassBuilder<TListColumns> cls("TListColumns", TCollection::StaticClass());
    return cls.Class();
}

TListColumns::TListColumns(TListView& listView) : FListView(listView) {}

TPersistent* TListColumns::GetOwner() const { return &FListView; }

void TListColumns::Update(TCollectionItem* item) { FListView.ColumnsChanged(item); }

} // namespace kx
