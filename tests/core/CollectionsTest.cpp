// SPDX-License-Identifier: MIT
// Collections and their items.

#include "kx/core/Collections.h"
#include "kx/core/TypInfo.h"

#include <gmock/gmock.h>

#include <memory>

namespace kx {
namespace {

using testing::ElementsAre;

class TEntry : public TCollectionItem {
    KX_CLASS()
    using TCollectionItem::TCollectionItem;
    int Value() const { return FValue; }
    void SetValue(int value) {
        FValue = value;
        Changed(false);
    }
    void Assign(const TPersistent* source) override {
        const auto* entry = dynamic_cast<const TEntry*>(source);
        entry ? SetValue(entry->Value()) : TCollectionItem::Assign(source);
    }

private:
    int FValue = 0;
};

class TEntries : public TCollectionOf<TEntry> {
    KX_CLASS()
    TEntry& AddValue(int value) {
        TEntry& entry = Add();
        entry.SetValue(value);
        return entry;
    }
    std::vector<int> Values() const {
        std::vector<int> values;
        for (const TEntry& entry : *this) {
            values.push_back(entry.Value());
        }
        return values;
    }
    using TCollection::Changed;
    std::vector<TCollectionItem*> Updates;

protected:
    void Update(TCollectionItem* item) override { Updates.push_back(item); }
};

/// An item of other collections.
class TOther : public TCollectionItem {
    KX_CLASS()
    using TCollectionItem::TCollectionItem;
};

class TLoudEntry : public TEntry {
    KX_CLASS()
    using TEntry::TEntry;
};

const TClass& TOther::StaticClass() {
    static const TClassBuilder<TOther> cls("TOther", TCollectionItem::StaticClass());
    return cls.Class();
}

const TClass& TLoudEntry::StaticClass() {
    static const TClassBuilder<TLoudEntry> cls("TLoudEntry", TEntry::StaticClass());
    return cls.Class();
}

const TClass& TEntry::StaticClass() {
    static const TClassBuilder<TEntry> cls("TEntry", TCollectionItem::StaticClass(),
                                           [](auto& c) { c.Property("Value", &TEntry::Value, &TEntry::SetValue); });
    return cls.Class();
}

const TClass& TEntries::StaticClass() {
    static const TClassBuilder<TEntries> cls("TEntries", TCollection::StaticClass());
    return cls.Class();
}

TEST(Collection, KeepsItsItemsInOrder) {
    TEntries entries;
    for (const int value : {1, 2, 3}) {
        entries.AddValue(value);
    }
    EXPECT_THAT(entries.Values(), ElementsAre(1, 2, 3));
    entries.Insert(1).SetValue(9);
    EXPECT_THAT(entries.Values(), ElementsAre(1, 9, 2, 3));
    entries.GetItem(3)->SetIndex(0);
    EXPECT_THAT(entries.Values(), ElementsAre(3, 1, 9, 2));
    EXPECT_EQ(entries.GetItem(2)->Index(), 2);
    entries.Delete(1);
    EXPECT_THAT(entries.Values(), ElementsAre(3, 9, 2));
    entries.Clear();
    EXPECT_EQ(entries.Count(), 0);
    EXPECT_EQ(&entries.ItemClass(), &TEntry::StaticClass());
}

TEST(Collection, IndicesOutOfBoundsAreErrors) {
    TEntries entries;
    entries.AddValue(1);
    EXPECT_THROW(entries.GetItem(1), EListError);
    EXPECT_THROW(entries.GetItem(-1), EListError);
    EXPECT_THROW(entries.Delete(1), EListError);
    EXPECT_THROW(entries.Insert(2), EListError);
    EXPECT_THROW(entries.Insert(-1), EListError);
    EXPECT_THROW(entries.GetItem(0)->SetIndex(1), EListError);
    EXPECT_THAT(entries.Values(), ElementsAre(1));
}

TEST(Collection, AnItemThatCannotBeMadeLeavesItTellingOfChanges) {
    class TFailing : public TCollection {
    public:
        TFailing()
            : TCollection(TEntry::StaticClass(), [this](TCollection* c) -> TCollectionItem* {
                  if (Fails) {
                      throw Exception("no item");
                  }
                  return new TEntry(c);
              }) {}
        bool Fails = true;
        int Updates = 0;

    protected:
        void Update(TCollectionItem*) override { ++Updates; }
    };
    TFailing items;
    EXPECT_THROW(items.Insert(0), Exception);
    EXPECT_EQ(items.Count(), 0);
    items.Fails = false;
    const int before = items.Updates;
    items.Insert(0);
    EXPECT_EQ(items.Count(), 1);
    EXPECT_EQ(items.Updates, before + 1);
}

TEST(Collection, IdsAreNeverUsedAgain) {
    TEntries entries;
    entries.AddValue(1);
    const int id = entries.AddValue(2).ID();
    entries.Delete(1);
    EXPECT_EQ(entries.FindItemID(id), nullptr);
    const TEntry& next = entries.AddValue(3);
    EXPECT_NE(next.ID(), id);
    EXPECT_EQ(entries.FindItemID(next.ID()), &next);
}

TEST(Collection, ChangesAreTold) {
    TEntries entries;
    TEntry& entry = entries.AddValue(1);
    EXPECT_THAT(entries.Updates, ElementsAre(nullptr, &entry)); // the list, then the item
    entries.Updates.clear();
    entries.BeginUpdate();
    entries.BeginUpdate();
    entries.AddValue(2);
    entry.SetValue(5);
    entries.EndUpdate();
    EXPECT_TRUE(entries.Updates.empty());
    entries.EndUpdate();
    EXPECT_THAT(entries.Updates, ElementsAre(nullptr));
    entries.Updates.clear();
    entries.Clear();
    EXPECT_THAT(entries.Updates, ElementsAre(nullptr));
}

TEST(Collection, AssignCopiesTheItems) {
    TEntries source;
    source.AddValue(1);
    source.AddValue(2);
    TEntries dest;
    dest.AddValue(9);
    dest.Updates.clear();
    dest.Assign(&source);
    EXPECT_THAT(dest.Values(), ElementsAre(1, 2));
    EXPECT_THAT(dest.Updates, ElementsAre(nullptr));
    EXPECT_NE(dest.GetItem(0), source.GetItem(0));
    dest.Assign(&dest);
    EXPECT_EQ(dest.Count(), 2);
    TPersistent other;
    EXPECT_THROW(dest.Assign(&other), EConvertError);
    TEntry single(nullptr);
    single.SetValue(7);
    dest.SetItem(1, &single);
    EXPECT_THAT(dest.Values(), ElementsAre(1, 7));
}

TEST(Collection, AnItemThatIsFreedLeavesItsCollection) {
    TEntries entries;
    TEntry& first = entries.AddValue(1);
    entries.AddValue(2);
    delete &first;
    EXPECT_THAT(entries.Values(), ElementsAre(2));
}

TEST(Collection, ItemsMoveBetweenCollections) {
    TEntries one;
    TEntries two;
    TEntry& entry = one.AddValue(1);
    entry.SetCollection(&two);
    EXPECT_EQ(one.Count(), 0);
    EXPECT_EQ(entry.Collection(), &two);
    EXPECT_EQ(entry.GetOwner(), &two);
    entry.SetCollection(nullptr);
    EXPECT_EQ(entry.Index(), -1);
    delete &entry;
}

TEST(Collection, AnItemOfAnotherClassStaysWhereItIs) {
    TEntries entries;
    entries.AddValue(1);
    TCollection others(TOther::StaticClass(), [](TCollection* c) { return new TOther(c); });
    TCollectionItem* const other = others.Add();
    try {
        other->SetCollection(&entries);
        FAIL() << "accepted";
    } catch (const EInvalidCast& error) {
        EXPECT_EQ(error.Message(), "A TOther cannot be an item of a collection of TEntry");
    }
    EXPECT_EQ(other->Collection(), &others);
    EXPECT_EQ(others.Count(), 1);
    EXPECT_THAT(entries.Values(), ElementsAre(1));
}

TEST(Collection, AnItemOfADescendantClassIsAccepted) {
    TEntries entries;
    TCollection loud(TLoudEntry::StaticClass(), [](TCollection* c) { return new TLoudEntry(c); });
    static_cast<TEntry*>(loud.Add())->SetValue(5);
    loud.GetItem(0)->SetCollection(&entries);
    EXPECT_THAT(entries.Values(), ElementsAre(5));
    EXPECT_EQ(loud.Count(), 0);
}

TEST(Collection, CanBeGoneThrough) {
    TEntries entries;
    const TCollection& collection = entries;
    EXPECT_EQ(collection.begin(), collection.end());
    entries.AddValue(1);
    entries.AddValue(2);
    std::vector<int> values;
    for (const TCollectionItem* item : collection) {
        values.push_back(static_cast<const TEntry*>(item)->Value());
    }
    EXPECT_THAT(values, ElementsAre(1, 2));
}

TEST(Collection, PathsNameTheIndex) {
    TEntries entries;
    entries.AddValue(1);
    EXPECT_EQ(entries.AddValue(2).GetNamePath(), "TEntries[1]");
    EXPECT_EQ(entries.GetItem(0)->GetDisplayName(), "TEntry");
}

} // namespace
} // namespace kx
