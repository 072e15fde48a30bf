// SPDX-License-Identifier: MIT
// Collections of items that their owner publishes.

#include "kx/core/Collections.h"

#include "kx/core/Barrier.h"
#include "kx/core/KeptForm.h"
#include "kx/core/Updates.h"

#include <algorithm>

namespace kx {

// --- TCollectionItem

const TClass& TCollectionItem::StaticClass() {
    static const TClassBuilder<TCollectionItem> cls("TCollectionItem", TPersistent::StaticClass());
    return cls.Class();
}

TCollectionItem::TCollectionItem(TCollection* collection) {
    if (collection) {
        collection->InsertItem(this); // of which class it will be is not known yet
    }
}

TCollectionItem::~TCollectionItem() {
    Guarded([this] { SetCollection(nullptr); }); // the collection tells others
}

void TCollectionItem::SetCollection(TCollection* value) {
    if (FCollection == value) {
        return;
    }
    if (value && !InheritsFrom(value->ItemClass())) {
        throw EInvalidCast(
            Format("A %s cannot be an item of a collection of %s", {ClassName(), value->ItemClass().Name()}));
    }
    if (FCollection) {
        FCollection->RemoveItem(this);
    }
    if (value) {
        value->InsertItem(this);
    }
}

int TCollectionItem::Index() const {
    if (!FCollection) {
        return -1;
    }
    const auto& items = FCollection->FItems;
    return static_cast<int>(std::find(items.begin(), items.end(), this) - items.begin());
}

void TCollectionItem::SetIndex(int value) {
    const int current = Index();
    if (current < 0 || current == value) {
        return;
    }
    FCollection->GetItem(value); // checks the index
    auto& items = FCollection->FItems;
    items.erase(items.begin() + current);
    items.insert(items.begin() + value, this);
    Changed(true);
}

TPersistent* TCollectionItem::GetOwner() const { return FCollection; }

std::string TCollectionItem::GetNamePath() const {
    return FCollection ? FCollection->GetNamePath() + "[" + IntToStr(Index()) + "]" : ClassName();
}

void TCollectionItem::Changed(bool allItems) {
    if (FCollection && FCollection->FUpdateCount == 0) {
        FCollection->Update(allItems ? nullptr : this);
    }
}

// --- TCollection

const TClass& TCollection::StaticClass() {
    static const TClassBuilder<TCollection> cls("TCollection", TPersistent::StaticClass());
    return cls.Class();
}

TCollection::TCollection(const TClass& itemClass, TCreateItem createItem)
    : FItemClass(&itemClass), FCreateItem(std::move(createItem)) {}

TCollection::~TCollection() {
    ++FUpdateCount; // nobody is left to be told
    Clear();
}

TCollectionItem* TCollection::GetItem(int index) const {
    if (index < 0 || index >= Count()) {
        throw EListError(Format("List index out of bounds (%s)", {IntToStr(index)}));
    }
    return FItems[static_cast<size_t>(index)];
}

void TCollection::SetItem(int index, const TCollectionItem* value) { GetItem(index)->Assign(value); }

TCollectionItem* TCollection::Add() {
    TCollectionItem* item = nullptr;
    AsOneUpdate(*this, [&] { item = FCreateItem(this); }); // told of when the item is complete
    return item;
}

TCollectionItem* TCollection::Insert(int index) {
    if (index < 0 || index > Count()) {
        throw EListError(Format("List index out of bounds (%s)", {IntToStr(index)}));
    }
    TCollectionItem* item = nullptr;
    AsOneUpdate(*this, [&] {
        item = FCreateItem(this);
        item->SetIndex(index);
    });
    return item;
}

void TCollection::Delete(int index) { GetItem(index)->Free(); }

void TCollection::Clear() {
    if (FItems.empty()) {
        return;
    }
    AsOneUpdate(*this, [this] {
        while (!FItems.empty()) {
            FItems.back()->Free(); // takes itself off the list
        }
    });
}

TCollectionItem* TCollection::FindItemID(int id) const {
    const auto found = std::find_if(FItems.begin(), FItems.end(), [id](auto* item) { return item->FID == id; });
    return found == FItems.end() ? nullptr : *found;
}

void TCollection::EndUpdate() {
    if (--FUpdateCount == 0) {
        Update(nullptr);
    }
}

void TCollection::Assign(const TPersistent* source) {
    const auto* const other = dynamic_cast<const TCollection*>(source);
    if (!other) {
        TPersistent::Assign(source);
        return;
    }
    if (other == this) {
        return;
    }
    AsOneUpdate(*this, [&] {
        Clear();
        for (const TCollectionItem* item : other->FItems) {
            Add()->Assign(item);
        }
    });
}

void TCollection::Update(TCollectionItem*) {}

void TCollection::Changed() {
    if (FUpdateCount == 0) {
        Update(nullptr);
    }
}

void TCollection::InsertItem(TCollectionItem* item) {
    FItems.push_back(item);
    item->FCollection = this;
    item->FID = FNextID++;
    Changed();
}

void TCollection::RemoveItem(TCollectionItem* item) {
    const auto at = std::find(FItems.rbegin(), FItems.rend(), item);
    FItems.erase(std::next(at).base());
    item->FCollection = nullptr;
    Changed();
}

} // namespace kx
