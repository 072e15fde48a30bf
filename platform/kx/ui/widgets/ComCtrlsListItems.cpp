// SPDX-License-Identifier: MIT
// The items of list views, and how they are sorted.

#include "kx/ui/widgets/ComCtrls.h"

#include "kx/win/Windows.h"

#include <algorithm>
#include <utility>

namespace kx {

const TClass& TListItems::StaticClass() {
    static const TClassBuilder<TListItems> cls("TListItems", TPersistent::StaticClass());
    return cls.Class();
}

TListItem& TListItems::operator[](int index) const {
    if (index < 0 || index >= Count()) {
        throw EListError(Format("List index out of bounds (%s)", {IntToStr(index)}));
    }
    return *FItems[static_cast<size_t>(index)];
}

TListItem& TListItems::Insert(int index) {
    if (index < 0 || index > Count()) {
        throw EListError(Format("List index out of bounds (%s)", {IntToStr(index)}));
    }
    TListItem& item = **FItems.insert(FItems.begin() + index, std::make_unique<TListItem>(*this));
    ++FMoves;
    Changed();
    if (FListView.HandleAllocated()) {
        FListView.InsertIntoWindow(index);
    }
    return item;
}

void TListItems::Delete(int index) {
    (*this)[index]; // checks the index
    if (FListView.HandleAllocated()) {
        SendMessageW(FListView.WindowHandle(), LVM_DELETEITEM, static_cast<WPARAM>(index), 0);
    }
    FItems.erase(FItems.begin() + index);
    ++FMoves;
    Changed();
}

void TListItems::Clear() {
    if (FListView.HandleAllocated()) {
        SendMessageW(FListView.WindowHandle(), LVM_DELETEALLITEMS, 0, 0);
    }
    FItems.clear();
    ++FMoves;
    Changed();
}

int TListItems::IndexOf(const TListItem* item) const {
    for (size_t i = 0; i < FItems.size(); ++i) {
        if (FItems[i].get() == item) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

void TListItems::BeginUpdate() {
    if (FUpdateCount++ == 0 && FListView.HandleAllocated()) {
        SendMessageW(FListView.WindowHandle(), WM_SETREDRAW, FALSE, 0);
    }
}

void TListItems::EndUpdate() {
    if (--FUpdateCount > 0) {
        return;
    }
    if (FListView.HandleAllocated()) {
        SendMessageW(FListView.WindowHandle(), WM_SETREDRAW, TRUE, 0);
        FListView.Invalidate();
    }
    if (std::exchange(FSortsLater, false)) {
        FListView.AlphaSort();
    }
}

const TClass& TListItem::StaticClass() {
    static const TClassBuilder<TListItem> cls("TListItem", TPersistent::StaticClass());
    return cls.Class();
}

TListItem::TListItem(TListItems& items) : FItems(items), FSubItems(std::make_unique<TStringList>()) {
    FSubItems->SetOnChange([this](TObject*) { Changed(); });
}

TListItem::~TListItem() = default;

int TListItem::Index() const { return FItems.IndexOf(this); }

void TListItem::SetCaption(const std::string& value) {
    FCaption = value;
    Changed();
    if (FItems.FListView.SortsBy(stText)) {
        FItems.FListView.SortAfter(*this);
    }
}

void TListItem::SetImageIndex(int value) {
    FImageIndex = value;
    Changed();
}

void TListItem::SetStateIndex(int value) {
    FStateIndex = value;
    Changed();
}

void TListItem::SetData(void* value) {
    FData = value;
    if (FItems.FListView.SortsBy(stData)) {
        FItems.FListView.SortAfter(*this);
    }
}

void TListItem::Assign(const TPersistent* source) {
    if (const auto* other = dynamic_cast<const TListItem*>(source)) {
        FCaption = other->FCaption;
        FImageIndex = other->FImageIndex;
        FStateIndex = other->FStateIndex;
        FOverlayIndex = other->FOverlayIndex;
        FSubItemImages = other->FSubItemImages;
        FData = other->FData;
        FSubItems->Assign(other->FSubItems.get()); // which tells of the change
    } else {
        TPersistent::Assign(source);
    }
}

void TListItem::Changed() {
    FItems.Changed();
    Show();
}

/// Brings the window's texts and image in line with the item's.
void TListItem::Show() {
    if (FItems.Owner().HandleAllocated()) {
        ShowAt(Index());
    }
}

void TListItem::ShowAt(int index) {
    if (index < 0) {
        return;
    }
    const HWND window = FItems.Owner().WindowHandle();
    std::wstring text = ToWide(FCaption);
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_STATE;
    item.stateMask = LVIS_STATEIMAGEMASK;
    item.state = INDEXTOSTATEIMAGEMASK(static_cast<UINT>(std::clamp(FStateIndex + 1, 0, 15)));
    item.iItem = index;
    item.iImage = FImageIndex;
    item.pszText = text.data();
    SendMessageW(window, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    item.mask = LVIF_TEXT;
    for (int i = 1; i < FItems.Owner().Columns().Count(); ++i) {
        text = i <= FSubItems->Count() ? ToWide(FSubItems->Get(i - 1)) : std::wstring();
        item.iSubItem = i;
        item.pszText = text.data();
        SendMessageW(window, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
}

bool TListItem::Selected() const {
    const TListView& view = FItems.Owner();
    if (!view.HandleAllocated()) {
        return FWasSelected;
    }
    return SendMessageW(view.WindowHandle(), LVM_GETITEMSTATE, static_cast<WPARAM>(Index()), LVIS_SELECTED) != 0;
}

void TListItem::SetSelected(bool value) {
    FWasSelected = value;
    if (FItems.Owner().HandleAllocated()) {
        LVITEMW item{};
        item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        item.state = value ? item.stateMask : 0;
        SendMessageW(FItems.Owner().WindowHandle(), LVM_SETITEMSTATE, static_cast<WPARAM>(Index()),
                     reinterpret_cast<LPARAM>(&item));
    }
}

void TListItem::Delete() { FItems.Delete(Index()); }

void TListView::InsertIntoWindow(int index) {
    LVITEMW item{};
    item.mask = LVIF_PARAM;
    item.iItem = index;
    item.lParam = reinterpret_cast<LPARAM>(&FItems[index].FRank);
    SendMessageW(WindowHandle(), LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    FItems[index].ShowAt(index);
}

void TListItems::Assign(const TPersistent* source) {
    const auto* const other = dynamic_cast<const TListItems*>(source);
    if (!other) {
        return TPersistent::Assign(source);
    }
    if (other == this) {
        return;
    }
    BeginUpdate();
    Clear();
    for (const auto& item : other->FItems) {
        Add().Assign(item.get());
    }
    FSortsLater = FListView.FSortType != stNone;
    EndUpdate();
}

TPersistent* TListItems::GetOwner() const { return &FListView; }

// --- Sorting

void TListView::SetSortType(TSortType value) {
    FSortType = value;
    if (value != stNone && !IsLoading()) {
        AlphaSort();
    }
}

void TListView::Loaded() {
    TWinControl::Loaded();
    if (FSortType != stNone) {
        const std::string stood = FItems.FStood;
        if (Outlives(*this, [this] { AlphaSort(); })) {
            FItems.FStood = stood; // sorted again when it is read again
        }
    }
}

int TListView::Compare(TListItem* item1, TListItem* item2, int data) {
    int compare = 0;
    if (FOnCompare) {
        FOnCompare(this, item1, item2, data, compare);
    } else {
        compare = CompareText(item1->Caption(), item2->Caption());
    }
    return compare;
}

/// The items beside it come before it and after it already.
bool TListView::IsInPlace(TListItem& item) {
    const int index = item.Index();
    const unsigned moves = FItems.FMoves;
    const TAlive alive(*this);
    const bool isBehind = index == 0 || Compare(&FItems[index - 1], &item, 0) <= 0;
    if (!isBehind || !alive || FItems.FMoves != moves) {
        return !alive;
    }
    return index + 1 == FItems.Count() || Compare(&item, &FItems[index + 1], 0) <= 0;
}

/// The item has got another caption or other data.
void TListView::SortAfter(TListItem& item) {
    if (FItems.FUpdateCount > 0) {
        FItems.FSortsLater = true;
        return;
    }
    bool isInPlace = true;
    if (Outlives(*this, [&] { isInPlace = IsInPlace(item); }) && !isInPlace) {
        AlphaSort();
    }
}

/// Whatever the handler answers, and if it changes the list or ends it, nothing is lost: its answers decide about a
/// copy of the order, from runs of one item to runs of two, of four and so on.
bool TListView::CustomSort(int data) {
    const size_t count = FItems.FItems.size();
    const unsigned moves = FItems.FMoves;
    const TAlive alive(*this);
    std::vector<TListItem*> order;
    for (const auto& item : FItems.FItems) {
        order.push_back(item.get());
    }
    std::vector<TListItem*> merged(count);
    for (size_t run = 1; run < count; run *= 2) {
        for (size_t begin = 0; begin < count; begin += 2 * run) {
            const size_t middle = std::min(begin + run, count);
            const size_t end = std::min(middle + run, count);
            size_t left = begin;
            size_t right = middle;
            for (size_t to = begin; to < end; ++to) {
                bool takesRight = left == middle;
                if (left < middle && right < end) {
                    takesRight = Compare(order[left], order[right], data) > 0;
                    if (!alive || FItems.FMoves != moves) {
                        return false;
                    }
                }
                merged[to] = order[takesRight ? right++ : left++];
            }
        }
        order.swap(merged);
    }
    for (size_t i = 0; i < count; ++i) {
        order[i]->FRank = i;
    }
    std::sort(FItems.FItems.begin(), FItems.FItems.end(),
              [](const auto& a, const auto& b) { return a->FRank < b->FRank; });
    FItems.Changed();
    SortWindow();
    return true;
}

namespace {

int CALLBACK CompareRanks(LPARAM a, LPARAM b, LPARAM) {
    const auto rank = [](LPARAM item) { return *reinterpret_cast<const size_t*>(item); };
    return rank(a) < rank(b) ? -1 : rank(a) > rank(b);
}

} // namespace

/// The window's items keep their states.
void TListView::SortWindow() {
    if (HandleAllocated()) {
        const TFieldScope filling(*this, FFilling, true);
        SendMessageW(WindowHandle(), LVM_SORTITEMS, 0, reinterpret_cast<LPARAM>(&CompareRanks));
    }
}

} // namespace kx
