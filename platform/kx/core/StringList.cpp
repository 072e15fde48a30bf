// SPDX-License-Identifier: MIT
// Lists of strings in memory.

#include "kx/core/Strings.h"

#include "kx/core/ClassBuilder.h"

#include <algorithm>

namespace kx {

const TClass& TStringList::StaticClass() {
    static const TClassBuilder<TStringList> cls("TStringList", TStrings::StaticClass());
    return cls.Class();
}

std::string TStringList::Get(int index) const {
    CheckIndex(index);
    return FItems[static_cast<size_t>(index)].Text;
}

void TStringList::Put(int index, const std::string& text) {
    CheckUnsorted();
    CheckIndex(index);
    DoChanging();
    FItems[static_cast<size_t>(index)].Text = text;
    DoChange();
}

TObject* TStringList::GetObject(int index) const {
    CheckIndex(index);
    return FItems[static_cast<size_t>(index)].Object;
}

void TStringList::PutObject(int index, TObject* object) {
    CheckIndex(index);
    DoChanging();
    FItems[static_cast<size_t>(index)].Object = object;
    DoChange();
}

void TStringList::Clear() {
    if (FItems.empty()) {
        return;
    }
    DoChanging();
    FItems.clear();
    DoChange();
}

void TStringList::Delete(int index) {
    CheckIndex(index);
    DoChanging();
    FItems.erase(FItems.begin() + index);
    DoChange();
}

void TStringList::Insert(int index, const std::string& text) {
    CheckUnsorted();
    if (index != Count()) {
        CheckIndex(index);
    }
    InsertItem(index, text);
}

int TStringList::Add(const std::string& text) {
    int index = Count();
    if (FSorted && FindSorted(text, index)) {
        if (FDuplicates == dupIgnore) {
            return index;
        }
        if (FDuplicates == dupError) {
            throw EStringListError("String list does not allow duplicates");
        }
    }
    InsertItem(index, text);
    return index;
}

void TStringList::InsertItem(int index, const std::string& text) {
    DoChanging();
    FItems.insert(FItems.begin() + index, TItem{text, nullptr});
    DoChange();
}

int TStringList::IndexOf(const std::string& text) const {
    if (FSorted) {
        int index = 0;
        return FindSorted(text, index) ? index : -1;
    }
    const auto found =
        std::find_if(FItems.begin(), FItems.end(), [&](const TItem& item) { return Compare(item.Text, text) == 0; });
    return found == FItems.end() ? -1 : static_cast<int>(found - FItems.begin());
}

void TStringList::Exchange(int a, int b) {
    CheckUnsorted();
    CheckIndex(a);
    CheckIndex(b);
    DoChanging();
    std::swap(FItems[static_cast<size_t>(a)], FItems[static_cast<size_t>(b)]);
    DoChange();
}

void TStringList::Move(int from, int to) {
    CheckUnsorted();
    TStrings::Move(from, to);
}

void TStringList::Sort() {
    if (FSorted || FItems.size() < 2) {
        return;
    }
    DoChanging();
    SortItems();
    DoChange();
}

void TStringList::SortItems() {
    std::stable_sort(FItems.begin(), FItems.end(),
                     [this](const TItem& a, const TItem& b) { return Compare(a.Text, b.Text) < 0; });
}

void TStringList::SetSorted(bool value) {
    if (FSorted == value) {
        return;
    }
    if (value) {
        Sort();
    }
    FSorted = value;
}

void TStringList::SetCaseSensitive(bool value) {
    if (FCaseSensitive == value) {
        return;
    }
    FCaseSensitive = value;
    if (FSorted) {
        FSorted = false;
        SetSorted(true);
    }
}

int TStringList::Compare(const std::string& a, const std::string& b) const {
    return FCaseSensitive ? a.compare(b) : CompareText(a, b);
}

bool TStringList::FindSorted(const std::string& text, int& index) const {
    const auto at =
        std::lower_bound(FItems.begin(), FItems.end(), text,
                         [this](const TItem& item, const std::string& t) { return Compare(item.Text, t) < 0; });
    index = static_cast<int>(at - FItems.begin());
    return at != FItems.end() && Compare(at->Text, text) == 0;
}

void TStringList::CheckUnsorted() const {
    if (FSorted) {
        throw EStringListError("Operation not allowed on sorted string list");
    }
}

void TStringList::DoChange() {
    if (UpdateCount() == 0) {
        FOnChange(this);
    }
}

void TStringList::DoChanging() {
    if (UpdateCount() == 0) {
        FOnChanging(this);
    }
}

void TStringList::SetUpdateState(bool updating) {
    if (updating) {
        DoChanging();
    } else {
        DoChange();
    }
}

} // namespace kx
