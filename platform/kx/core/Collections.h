// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Components.h"
#include "kx/core/ItemIterator.h"

namespace kx {

class TCollection;

/// One item of a collection. Its collection owns it; moving it to another collection moves the ownership.
class TCollectionItem : public TPersistent {
    KX_CLASS()

    /// `collection` is one of items of this class.
    explicit TCollectionItem(TCollection* collection);
    ~TCollectionItem() override;

    TCollection* Collection() const { return FCollection; }
    /// Moves the item to the end of another collection; with null, out of its own.
    /// @throws EInvalidCast when `value` is a collection of other items; the item stays where it is then.
    void SetCollection(TCollection* value);
    int Index() const; ///< Position in the collection; -1 without one.
    void SetIndex(int value);
    int ID() const { return FID; } ///< Unique in its collection, never used again.

    /// Text that a collection editor shows for the item.
    virtual std::string GetDisplayName() const { return ClassName(); }

    TPersistent* GetOwner() const override;
    std::string GetNamePath() const override;

protected:
    /// Tells the collection that the item changed; `allItems` when the whole collection did.
    void Changed(bool allItems);

private:
    friend class TCollection;

    std::unique_ptr<detail::TKept>* KeptPlace() override { return &FKept; }

    TCollection* FCollection = nullptr;
    int FID = 0;
    std::unique_ptr<detail::TKept> FKept;
};

/// An ordered list of items, which it owns. It makes its items itself, by the factory given to the constructor.
class TCollection : public TPersistent {
    KX_CLASS()

    using TCreateItem = std::function<TCollectionItem*(TCollection* collection)>;

    TCollection(const TClass& itemClass, TCreateItem createItem);
    ~TCollection() override;

    const TClass& ItemClass() const { return *FItemClass; }
    const TLifetime& Lifetime() const { return FLife; } ///< For `Outlives` and `TAlive`.
    int Count() const { return static_cast<int>(FItems.size()); }
    auto begin() const { return FItems.begin(); } ///< To go through the items, only as long as none comes or goes.
    auto end() const { return FItems.end(); }
    /// @throws EListError "List index out of bounds (%s)"
    TCollectionItem* GetItem(int index) const;
    void SetItem(int index, const TCollectionItem* value); ///< Copies `value` into the item at `index`.
    TCollectionItem* Add();                                ///< A new item at the end.
    TCollectionItem* Insert(int index);                    ///< A new item at `index`.
    void Delete(int index);
    void Clear();
    TCollectionItem* FindItemID(int id) const;

    /// Between these two, changes are gathered and `Update` runs once at the end. They nest.
    void BeginUpdate() { ++FUpdateCount; }
    void EndUpdate();

    void Assign(const TPersistent* source) override;

protected:
    /// Runs after a change: of one item, or, with null, of the list.
    virtual void Update(TCollectionItem* item);
    void Changed();

private:
    friend class TCollectionItem;
    void InsertItem(TCollectionItem* item);
    void RemoveItem(TCollectionItem* item);

    TLifetime FLife;
    const TClass* FItemClass;
    TCreateItem FCreateItem;
    std::vector<TCollectionItem*> FItems;
    int FUpdateCount = 0;
    int FNextID = 0;
};

/// A collection of items of class T, which has a constructor from the collection: `explicit T(TCollection*)`.
template <class T> class TCollectionOf : public TCollection {
public:
    using TIterator = TItemIterator<T, std::vector<TCollectionItem*>::const_iterator>;

    TIterator begin() const { return TIterator(TCollection::begin()); } ///< As long as no item comes or goes.
    TIterator end() const { return TIterator(TCollection::end()); }
    /// @throws EListError "List index out of bounds (%s)"
    T& operator[](int index) const { return *GetItem(index); }
    T* GetItem(int index) const { return static_cast<T*>(TCollection::GetItem(index)); }
    T& Add() { return static_cast<T&>(*TCollection::Add()); }
    T& Insert(int index) { return static_cast<T&>(*TCollection::Insert(index)); }
    T* FindItemID(int id) const { return static_cast<T*>(TCollection::FindItemID(id)); }

protected:
    TCollectionOf() : TCollection(T::StaticClass(), [](TCollection* items) { return new T(items); }) {}
};

} // namespace kx
