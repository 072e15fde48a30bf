// SPDX-License-Identifier: MIT
// List views: settings, window and selection.

#include "kx/ui/widgets/ComCtrls.h"

#include "kx/win/ReflectedMessages.h"
#include "kx/win/Windows.h"

namespace kx {

const TClass& TListView::StaticClass() {
    static const TClassBuilder<TListView> cls("TListView", TWinControl::StaticClass(), [](auto& c) {
        using T = TListView;
        c.Creatable();
        c.Property("BorderStyle", &T::BorderStyle, &T::SetBorderStyle).Default = bsSingle;
        c.SubObject("Columns", &T::Columns, &T::SetColumns);
        c.Property("GridLines", &T::GridLines, &T::SetGridLines).Default = false;
        c.Property("HideSelection", &T::HideSelection, &T::SetHideSelection).Default = true;
        c.Reference("LargeImages", &T::LargeImages, &T::SetLargeImages);
        c.Property("MultiSelect", &T::MultiSelect, &T::SetMultiSelect).Default = false;
        c.Property("ParentColor", &T::ParentColor, &T::SetParentColor).Default = false;
        c.Property("ReadOnly", &T::ReadOnly, &T::SetReadOnly).Default = false;
        c.Property("RowSelect", &T::RowSelect, &T::SetRowSelect).Default = false;
        c.Property("ShowColumnHeaders", &T::ShowColumnHeaders, &T::SetShowColumnHeaders).Default = true;
        c.Reference("SmallImages", &T::SmallImages, &T::SetSmallImages);
        c.Property("SortType", &T::SortType, &T::SetSortType).Default = stNone;
        c.Reference("StateImages", &T::StateImages, &T::SetStateImages);
        c.Property("TabStop", &T::TabStop, &T::SetTabStop).Default = true;
        c.Property("ViewStyle", &T::ViewStyle, &T::SetViewStyle).Default = vsIcon;
        c.Property("OnChange", &T::OnChange, &T::SetOnChange);
        c.Property("OnColumnClick", &T::OnColumnClick, &T::SetOnColumnClick);
        c.Property("OnCompare", &T::OnCompare, &T::SetOnCompare);
        c.Property("OnSelectItem", &T::OnSelectItem, &T::SetOnSelectItem);
        c.SubObject("Items", &T::Items, &T::SetItems); // behind Columns, whose number decides what is seen of them
    });
    return cls.Class();
}

TListView::TListView(TComponent* owner) : TWinControl(owner), FItems(*this), FColumns(*this) {
    SetControlStyle({csClickEvents, csDoubleClicks});
    SetColor(clWindow);
    SetTabStop(true);
    SetBoundsFields(0, 0, 250, 150);
}

TListView::~TListView() {
    Destroying();
    DestroyHandle(); // while the items are there
}

void TListView::CreateParams(TCreateParams& params) {
    TWinControl::CreateParams(params);
    params.BaseClass = WC_LISTVIEWA;
    constexpr DWORD views[] = {LVS_ICON, LVS_SMALLICON, LVS_LIST, LVS_REPORT};
    params.Style |= views[FViewStyle] | LVS_SHAREIMAGELISTS;
    params.Style |= FMultiSelect ? 0 : DWORD{LVS_SINGLESEL};
    params.Style |= FHideSelection ? 0 : DWORD{LVS_SHOWSELALWAYS};
    params.Style |= FReadOnly ? 0 : DWORD{LVS_EDITLABELS};
    params.Style |= FShowColumnHeaders ? 0 : DWORD{LVS_NOCOLUMNHEADER};
    params.ExStyle |= FBorderStyle == bsSingle ? DWORD{WS_EX_CLIENTEDGE} : 0;
}

void TListView::CreateWnd() {
    FFilling = true;
    TWinControl::CreateWnd();
    ApplyExtendedStyle();
    ApplyColors();
    ApplyImages();
    FWindowColumns = 0;
    ApplyColumns();
    for (int i = 0; i < FItems.Count(); ++i) {
        InsertIntoWindow(i);
        if (FItems[i].FWasSelected) {
            FItems[i].SetSelected(true);
        }
    }
    FFilling = false;
}

void TListView::SaveWindowState() {
    TWinControl::SaveWindowState();
    FFilling = true; // the window loses its items, while ours stay: handlers are not told
    for (const auto& item : FItems.FItems) {
        item->FWasSelected = item->Selected();
    }
}

// --- Settings

void TListView::ApplyExtendedStyle() {
    const DWORD style = (FRowSelect ? DWORD{LVS_EX_FULLROWSELECT} : 0) | (FGridLines ? DWORD{LVS_EX_GRIDLINES} : 0);
    SendMessageW(WindowHandle(), LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES,
                 static_cast<LPARAM>(style));
}

void TListView::ApplyColors() {
    const auto back = static_cast<LPARAM>(ColorToRGB(Color()));
    SendMessageW(WindowHandle(), LVM_SETBKCOLOR, 0, back);
    SendMessageW(WindowHandle(), LVM_SETTEXTBKCOLOR, 0, back);
    SendMessageW(WindowHandle(), LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(ColorToRGB(Font().Color())));
}

void TListView::ColorChanged() {
    TWinControl::ColorChanged();
    if (HandleAllocated()) {
        ApplyColors();
    }
}

void TListView::FontChanged() {
    if (Outlives(*this, [this] { TWinControl::FontChanged(); }) && HandleAllocated()) {
        ApplyColors();
    }
}

void TListView::ApplyImages() {
    const auto set = [this](WPARAM which, TImageList* images) {
        SendMessageW(WindowHandle(), LVM_SETIMAGELIST, which,
                     reinterpret_cast<LPARAM>(images ? images->Handle() : nullptr));
    };
    set(LVSIL_SMALL, FSmallImages);
    set(LVSIL_NORMAL, FLargeImages);
    set(LVSIL_STATE, FStateImages);
}

void TListView::SetImages(TImageList*& field, TImageList* value) {
    field = value; // the old one may still serve as another of the lists, and goes on telling when it goes
    if (value) {
        FreeNotification(value);
    }
    if (HandleAllocated()) {
        ApplyImages();
    }
}

void TListView::SetSmallImages(TImageList* value) { SetImages(FSmallImages, value); }
void TListView::SetLargeImages(TImageList* value) { SetImages(FLargeImages, value); }
void TListView::SetStateImages(TImageList* value) { SetImages(FStateImages, value); }

void TListView::Notification(TComponent* component, TOperation operation) {
    TWinControl::Notification(component, operation);
    for (TImageList** const images : {&FSmallImages, &FLargeImages, &FStateImages}) {
        if (operation == opRemove && component == *images) {
            *images = nullptr;
            if (HandleAllocated()) {
                ApplyImages();
            }
        }
    }
}

void TListView::SetStyleField(bool& field, bool value) {
    if (field != value) {
        field = value;
        RecreateWnd();
    }
}

void TListView::SetBorderStyle(TBorderStyle value) {
    if (FBorderStyle != value) {
        FBorderStyle = value;
        RecreateWnd();
    }
}

void TListView::SetViewStyle(TViewStyle value) {
    if (FViewStyle != value) {
        FViewStyle = value;
        RecreateWnd();
    }
}

void TListView::SetGridLines(bool value) { SetStyleField(FGridLines, value); }
void TListView::SetHideSelection(bool value) { SetStyleField(FHideSelection, value); }
void TListView::SetMultiSelect(bool value) { SetStyleField(FMultiSelect, value); }
void TListView::SetReadOnly(bool value) { SetStyleField(FReadOnly, value); }
void TListView::SetRowSelect(bool value) { SetStyleField(FRowSelect, value); }
void TListView::SetShowColumnHeaders(bool value) { SetStyleField(FShowColumnHeaders, value); }

// --- Selection and notifications

int TListView::ItemIndex() const {
    if (HandleAllocated()) {
        return static_cast<int>(SendMessageW(WindowHandle(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    }
    for (int i = 0; i < FItems.Count(); ++i) {
        if (FItems[i].FWasSelected) {
            return i;
        }
    }
    return -1;
}

void TListView::SetItemIndex(int value) { SetSelected(value < 0 ? nullptr : &FItems[value]); }

TListItem* TListView::Selected() const {
    const int index = ItemIndex();
    return index < 0 || index >= FItems.Count() ? nullptr : &FItems[index];
}

void TListView::SetSelected(TListItem* value) {
    for (int i = 0; i < FItems.Count(); ++i) {
        if (&FItems[i] != value && FItems[i].Selected()) {
            FItems[i].SetSelected(false);
        }
    }
    if (value) {
        value->SetSelected(true);
    }
}

void TListView::WndProc(TMessage& message) {
    if (message.Msg == CN_NOTIFY) {
        Notified(message);
        return;
    }
    if (message.Msg == WM_NOTIFY) { // of the header inside
        const auto& change = message.LParamAs<NMHEADERA>();
        if (change.hdr.code == HDN_ITEMCHANGEDA || change.hdr.code == HDN_ITEMCHANGEDW) {
            HeaderChanged(change);
        }
    }
    TWinControl::WndProc(message);
}

void TListView::Notified(TMessage& message) {
    switch (message.LParamAs<NMHDR>().code) {
    case LVN_ITEMCHANGED: ItemChanged(message.LParamAs<NMLISTVIEW>()); break;
    case LVN_COLUMNCLICK: {
        const int column = message.LParamAs<NMLISTVIEW>().iSubItem;
        if (column >= 0 && column < FColumns.Count()) {
            ColClick(&FColumns[column]);
        }
        break;
    }
    case LVN_ENDLABELEDITA: { // a parent that is not the framework's may ask for texts of this kind
        const LVITEMA& item = message.LParamAs<NMLVDISPINFOA>().item;
        if (item.pszText && item.iItem >= 0 && item.iItem < FItems.Count()) {
            FItems[item.iItem].FCaption = item.pszText;
            FItems.Changed();
            message.Result = TRUE;
        }
        break;
    }
    case LVN_ENDLABELEDITW: {
        const LVITEMW& item = message.LParamAs<NMLVDISPINFOW>().item;
        if (item.pszText && item.iItem >= 0 && item.iItem < FItems.Count()) {
            FItems[item.iItem].FCaption = FromWide(item.pszText);
            FItems.Changed();
            message.Result = TRUE;
        }
        break;
    }
    default: break;
    }
}

void TListView::ItemChanged(const NMLISTVIEW& info) {
    if (FFilling || IsDestroying() || info.iItem < 0 || info.iItem >= FItems.Count()) {
        return;
    }
    TListItem* const item = &FItems[info.iItem];
    const TAlive alive(*this);
    if (info.uChanged & LVIF_STATE) {
        Change(item, ctState);
        const UINT changed = info.uNewState ^ info.uOldState;
        if (alive && (changed & LVIS_SELECTED) && FItems.IndexOf(item) >= 0) {
            DoSelectItem(item, (info.uNewState & LVIS_SELECTED) != 0);
        }
    } else if (info.uChanged & LVIF_TEXT) {
        Change(item, ctText);
    }
}

void TListView::Change(TListItem* item, TItemChange change) { FOnChange(this, item, change); }
void TListView::DoSelectItem(TListItem* item, bool selected) { FOnSelectItem(this, item, selected); }
void TListView::ColClick(TListColumn* column) { FOnColumnClick(this, column); }

} // namespace kx
