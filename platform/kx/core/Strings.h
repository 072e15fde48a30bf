// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Components.h"
#include "kx/core/SystemNames.h"

#include <cstddef>
#include <iterator>

namespace kx {

class TStream;

/// A list of texts, each with an object reference that the list does not own. Descendants say where they are kept.
class TStrings : public TPersistent {
    KX_CLASS()

    virtual int Count() const = 0;
    /// @throws EStringListError "List index out of bounds (%s)" for an index outside the list; so do all the others.
    virtual std::string Get(int index) const = 0;
    virtual void Put(int index, const std::string& text);
    virtual TObject* GetObject(int index) const;
    KX_AS_SYSTEM_NAMES(TObject*, GetObject, (int index), (index), const)
    virtual void PutObject(int index, TObject* object);
    virtual void Clear() = 0;
    virtual void Delete(int index) = 0;
    virtual void Insert(int index, const std::string& text) = 0;

    virtual int Add(const std::string& text); ///< Returns the new text's index.
    int AddObject(const std::string& text, TObject* object);
    virtual void InsertObject(int index, const std::string& text, TObject* object);
    virtual void AddStrings(const TStrings& strings);
    virtual int IndexOf(const std::string& text) const; ///< -1 when there is none; compares without case.
    virtual void Exchange(int a, int b);
    virtual void Move(int from, int to);

    std::string operator[](int index) const { return Get(index); }

    /// To go through the texts.
    class TIterator {
    public:
        using value_type = std::string;
        using difference_type = std::ptrdiff_t;
        using reference = std::string;
        using pointer = void;
        using iterator_category = std::input_iterator_tag;

        TIterator() = default;
        TIterator(const TStrings& strings, int index) : FStrings(&strings), FIndex(index) {}
        std::string operator*() const { return FStrings->Get(FIndex); }
        TIterator& operator++() {
            ++FIndex;
            return *this;
        }
        TIterator operator++(int) {
            TIterator before = *this;
            ++FIndex;
            return before;
        }
        friend bool operator==(const TIterator& a, const TIterator& b) { return a.FIndex == b.FIndex; }

    private:
        const TStrings* FStrings = nullptr;
        int FIndex = 0;
    };
    TIterator begin() const { return {*this, 0}; }
    TIterator end() const { return {*this, Count()}; }

    /// All texts, each followed by a carriage return and a line feed. Setting splits at CR, LF or CR LF.
    std::string Text() const;
    virtual void SetText(std::string_view text);
    /// All texts separated by commas, in double quotes where needed; setting splits likewise.
    std::string CommaText() const;
    void SetCommaText(std::string_view text);

    std::string Names(int index) const;                ///< Before the first "="; empty without one.
    std::string Values(const std::string& name) const; ///< Behind the "=" of the first text of that name.
    void SetValue(const std::string& name, const std::string& value); ///< An empty value deletes the text.

    bool Equals(const TStrings& other) const; ///< Same texts in the same order, case matters.

    void LoadFromStream(TStream& stream);
    void SaveToStream(TStream& stream) const;

    /// Between these two, descendants may hold back their notifications. They nest.
    void BeginUpdate();
    void EndUpdate();

    void Assign(const TPersistent* source) override;
    void DefineProperties(TFiler& filer) override; ///< Streams the texts as "Strings".

protected:
    virtual void SetUpdateState(bool updating);
    int UpdateCount() const { return FUpdateCount; }
    void CheckIndex(int index) const;

private:
    int FUpdateCount = 0;
};

enum TDuplicates : uint8_t { dupIgnore, dupAccept, dupError };

/// A list of texts in memory.
class TStringList : public TStrings {
    KX_CLASS()

    int Count() const override { return static_cast<int>(FItems.size()); }
    std::string Get(int index) const override;
    void Put(int index, const std::string& text) override; ///< @throws EStringListError in a sorted list.
    TObject* GetObject(int index) const override;
    void PutObject(int index, TObject* object) override;
    void Clear() override;
    void Delete(int index) override;
    void Insert(int index, const std::string& text) override; ///< @throws EStringListError in a sorted list.
    int Add(const std::string& text) override;
    int IndexOf(const std::string& text) const override;
    void Exchange(int a, int b) override; ///< @throws EStringListError in a sorted list.
    void Move(int from, int to) override; ///< @throws EStringListError in a sorted list.
    void Sort();

    bool Sorted() const { return FSorted; }
    void SetSorted(bool value);
    bool CaseSensitive() const { return FCaseSensitive; }
    void SetCaseSensitive(bool value);
    TDuplicates Duplicates() const { return FDuplicates; } ///< What `Add` does with a known text in a sorted list.
    void SetDuplicates(TDuplicates value) { FDuplicates = value; }

    const TNotifyEvent& OnChange() const { return FOnChange; }
    void SetOnChange(TNotifyEvent value) { FOnChange = std::move(value); }
    const TNotifyEvent& OnChanging() const { return FOnChanging; }
    void SetOnChanging(TNotifyEvent value) { FOnChanging = std::move(value); }

protected:
    virtual void DoChange();
    virtual void DoChanging();
    void SetUpdateState(bool updating) override;

private:
    struct TItem {
        std::string Text;
        TObject* Object = nullptr;
    };
    int Compare(const std::string& a, const std::string& b) const;
    bool FindSorted(const std::string& text, int& index) const;
    void InsertItem(int index, const std::string& text);
    void SortItems();
    void CheckUnsorted() const;

    std::vector<TItem> FItems;
    bool FSorted = false;
    bool FCaseSensitive = false;
    TDuplicates FDuplicates = dupIgnore;
    TNotifyEvent FOnChange;
    TNotifyEvent FOnChanging;
};

} // namespace kx
