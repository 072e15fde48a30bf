// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Collections.h"
#include "kx/core/ItemIterator.h"
#include "kx/core/Strings.h"
#include "kx/graphics/ImgList.h"
#include "kx/ui/controls/Controls.h"
#include "kx/ui/widgets/ListViewTypes.h"

namespace kx {

// --- TTabControl

/// A handler that sets `allowChange` to false keeps the tab.
using TTabChangingEvent = TEvent<void(TObject* sender, bool& allowChange)>;

/// What controls with a row of tabs have in common.
class TCustomTabControl : public TWinControl {
    KX_CLASS()

    explicit TCustomTabControl(TComponent* owner = nullptr);
    ~TCustomTabControl() override;

    int TabIndex() const; ///< -1: none.
    /// Does not fire OnChange.
    virtual void SetTabIndex(int value);
    bool HotTrack() const { return FHotTrack; } ///< The tab under the mouse is highlighted.
    void SetHotTrack(bool value);
    bool MultiLine() const { return FMultiLine; }
    void SetMultiLine(bool value);
    TRect DisplayRect() const; ///< The area below the tabs, in client coordinates.

    const TNotifyEvent& OnChange() const { return FOnChange; } ///< The user chose another tab.
    void SetOnChange(TNotifyEvent value) { FOnChange = std::move(value); }
    const TTabChangingEvent& OnChanging() const { return FOnChanging; }
    void SetOnChanging(TTabChangingEvent value) { FOnChanging = std::move(value); }

    bool HasThemedBackground() const override;

    void CreateParams(TCreateParams& params) override;
    void WndProc(TMessage& message) override;

protected:
    void CreateWnd() override;
    void SaveWindowState() override;
    void AdjustClientRect(TRect& rect) const override { rect = DisplayRect(); }
    void EraseBackground(HDC dc) override;
    virtual void Change();
    virtual bool CanChange();
    /// The user chooses a tab: asks, and tells.
    void Choose(int tabIndex);
    /// Alt and the letter that a tab's text marks by & choose the tab.
    bool DialogChar(wchar_t letter) override;

    TStrings& TabTexts() { return *FTabs; }
    const TStrings& TabTexts() const { return *FTabs; }

private:
    void TabsChanged();
    void FillTabs(HWND window) const;

    std::unique_ptr<TStringList> FTabs;
    int FTabIndex = -1; ///< While there is no window.
    bool FHotTrack = false;
    bool FMultiLine = false;
    TNotifyEvent FOnChange;
    TTabChangingEvent FOnChanging;
};

/// A row of tabs above an area for other controls. What each tab shows there is the program's business.
class TTabControl : public TCustomTabControl {
    KX_CLASS()

    using TCustomTabControl::TCustomTabControl;

    TStrings& Tabs() { return TabTexts(); }
    const TStrings& Tabs() const { return TabTexts(); }
    void SetTabs(const TStrings& value) { TabTexts().Assign(&value); }
};

// --- TListView

class TListView;
class TListItems;

/// A column of a report.
class TListColumn : public TCollectionItem {
    KX_CLASS()

    explicit TListColumn(TCollection* collection) : TCollectionItem(collection) {}

    const std::string& Caption() const { return FCaption; }
    void SetCaption(const std::string& value) { Set(FCaption, value); }
    int Width() const { return FWidth; } ///< Pixels; follows the user's dragging.
    void SetWidth(int value) { Set(FWidth, value); }
    TAlignment Alignment() const { return FAlignment; }
    void SetAlignment(TAlignment value) { Set(FAlignment, value); }

    void Assign(const TPersistent* source) override;

private:
    friend class TListView;
    template <class V> void Set(V& field, const V& value) {
        field = value;
        Changed(false);
    }

    std::string FCaption;
    int FWidth = 50;
    TAlignment FAlignment = taLeftJustify;
};

class TListColumns : public TCollectionOf<TListColumn> {
    KX_CLASS()

    explicit TListColumns(TListView& listView);

    TPersistent* GetOwner() const override;

protected:
    void Update(TCollectionItem* item) override;

private:
    TListView& FListView;
};

/// An item of a list view; owned by the list of items.
class TListItem : public TPersistent {
    KX_CLASS()

    explicit TListItem(TListItems& items);
    ~TListItem() override;

    const std::string& Caption() const { return FCaption; }
    void SetCaption(const std::string& value);
    TStrings& SubItems() { return *FSubItems; } ///< Texts of the columns behind the first, and more if one likes.
    const TStrings& SubItems() const { return *FSubItems; }
    int ImageIndex() const { return FImageIndex; } ///< In the list view's images; -1: none.
    void SetImageIndex(int value);
    int StateIndex() const { return FStateIndex; } ///< In the state images; -1: none.
    void SetStateIndex(int value);
    void* Data() const { return FData; } ///< The program's.
    void SetData(void* value);
    bool Selected() const;
    void SetSelected(bool value);
    int Index() const;
    void Delete(); ///< Takes the item off the list and frees it.
    void Assign(const TPersistent* source) override;

private:
    friend class TListView;
    friend class TListItems;
    void Changed();
    void Show();
    void ShowAt(int index);

    TListItems& FItems;
    std::string FCaption;
    std::unique_ptr<TStringList> FSubItems;
    int FImageIndex = -1;
    int FStateIndex = -1;
    int FOverlayIndex = -1;              ///< Of the form file.
    std::vector<int16_t> FSubItemImages; ///< The same.
    void* FData = nullptr;
    size_t FRank = 0;          ///< Its place while the window is being sorted.
    bool FWasSelected = false; ///< While there is no window.
};

/// The items of a list view, which it owns. Form files hold them as Items.Data, those of other tools as Items.ItemData.
class TListItems : public TPersistent {
    KX_CLASS()

    using TIterator = TItemIterator<TListItem, std::vector<std::unique_ptr<TListItem>>::const_iterator>;

    explicit TListItems(TListView& listView) : FListView(listView) {}

    TIterator begin() const { return TIterator(FItems.begin()); } ///< As long as no item comes or goes.
    TIterator end() const { return TIterator(FItems.end()); }
    int Count() const { return static_cast<int>(FItems.size()); }
    /// @throws EListError "List index out of bounds (%s)"
    TListItem& operator[](int index) const;
    TListItem& Add() { return Insert(Count()); }
    TListItem& Insert(int index);
    void Delete(int index);
    void Clear();
    int IndexOf(const TListItem* item) const;
    void BeginUpdate();
    void EndUpdate();
    TListView& Owner() const { return FListView; }
    TPersistent* GetOwner() const override;
    void Assign(const TPersistent* source) override;
    void DefineProperties(TFiler& filer) override;

private:
    friend class TListItem;
    friend class TListView;
    void Changed() { FStood.clear(); }
    void ReadData(TStream& stream, bool isOld);
    void ReadItems(std::string_view bytes, bool isOld);
    void WriteData(TStream& stream) const;
    bool IsSame(const TListItems* other) const;

    TListView& FListView;
    std::vector<std::unique_ptr<TListItem>> FItems;
    int FUpdateCount = 0;
    unsigned FMoves = 0;      ///< How often items have come or gone.
    bool FSortsLater = false; ///< What is due at the end of the update.
    std::string FStood;       ///< The block of the form file, as long as nothing has changed; else empty.
    bool FStoodAsOld = false; ///< It was Data.
};

enum TItemChange : uint8_t { ctText, ctImage, ctState };
using TLVChangeEvent = TEvent<void(TObject* sender, TListItem* item, TItemChange change)>;
using TLVSelectItemEvent = TEvent<void(TObject* sender, TListItem* item, bool selected)>;
/// Compares two items for sorting: `compare` is to be below 0 when `item1` comes first, above 0 when `item2` does.
using TLVCompareEvent = TEvent<void(TObject* sender, TListItem* item1, TListItem* item2, int data, int& compare)>;
using TLVColumnClickEvent = TEvent<void(TObject* sender, TListColumn* column)>;

/// A list of items as icons, names, or a report with columns.
class TListView : public TWinControl {
    KX_CLASS()

    explicit TListView(TComponent* owner = nullptr);
    ~TListView() override;

    TListItems& Items() { return FItems; }
    const TListItems& Items() const { return FItems; }
    void SetItems(const TListItems& value) { FItems.Assign(&value); }
    TListColumns& Columns() { return FColumns; }
    const TListColumns& Columns() const { return FColumns; }
    void SetColumns(const TListColumns& value) { FColumns.Assign(&value); }
    TListItem* Selected() const; ///< The first selected item; null: none.
    void SetSelected(TListItem* value);
    int ItemIndex() const; ///< Index of `Selected`; -1: none.
    void SetItemIndex(int value);
    /// Sorts the items by OnCompare, or by their captions in any letter case; equal ones keep their order. False: a
    /// handler has added or deleted items, and all stay where they are.
    bool AlphaSort() { return CustomSort(0); }
    bool CustomSort(int data); ///< The same; OnCompare gets `data`.

    TBorderStyle BorderStyle() const { return FBorderStyle; }
    void SetBorderStyle(TBorderStyle value);
    bool GridLines() const { return FGridLines; }
    void SetGridLines(bool value);
    bool HideSelection() const { return FHideSelection; } ///< Selection shows only with the focus.
    void SetHideSelection(bool value);
    bool MultiSelect() const { return FMultiSelect; }
    void SetMultiSelect(bool value);
    bool ReadOnly() const { return FReadOnly; } ///< The user cannot edit the captions.
    void SetReadOnly(bool value);
    bool RowSelect() const { return FRowSelect; } ///< The selection covers the whole row of a report.
    void SetRowSelect(bool value);
    bool ShowColumnHeaders() const { return FShowColumnHeaders; }
    void SetShowColumnHeaders(bool value);
    /// When the items are sorted by themselves; within Items.BeginUpdate and EndUpdate at the end.
    TSortType SortType() const { return FSortType; }
    void SetSortType(TSortType value);
    TViewStyle ViewStyle() const { return FViewStyle; }
    void SetViewStyle(TViewStyle value);
    TImageList* SmallImages() const { return FSmallImages; } ///< Not owned.
    void SetSmallImages(TImageList* value);
    TImageList* LargeImages() const { return FLargeImages; } ///< Not owned.
    void SetLargeImages(TImageList* value);
    TImageList* StateImages() const { return FStateImages; } ///< Not owned.
    void SetStateImages(TImageList* value);

    const TLVChangeEvent& OnChange() const { return FOnChange; }
    void SetOnChange(TLVChangeEvent value) { FOnChange = std::move(value); }
    const TLVCompareEvent& OnCompare() const { return FOnCompare; }
    void SetOnCompare(TLVCompareEvent value) { FOnCompare = std::move(value); }
    const TLVSelectItemEvent& OnSelectItem() const { return FOnSelectItem; }
    void SetOnSelectItem(TLVSelectItemEvent value) { FOnSelectItem = std::move(value); }
    const TLVColumnClickEvent& OnColumnClick() const { return FOnColumnClick; }
    void SetOnColumnClick(TLVColumnClickEvent value) { FOnColumnClick = std::move(value); }

    void CreateParams(TCreateParams& params) override;
    void WndProc(TMessage& message) override;
    void Loaded() override;

protected:
    void ChangeScale(int to, int from) override;
    void CreateWnd() override;
    void SaveWindowState() override;
    void ColorChanged() override;
    void FontChanged() override;
    void Notification(TComponent* component, TOperation operation) override;
    virtual int Compare(TListItem* item1, TListItem* item2, int data);
    virtual void Change(TListItem* item, TItemChange change);
    virtual void DoSelectItem(TListItem* item, bool selected);
    virtual void ColClick(TListColumn* column);

private:
    friend class TListColumns;
    friend class TListItem;
    friend class TListItems;
    void SetStyleField(bool& field, bool value);
    void SetImages(TImageList*& field, TImageList* value);
    void ApplyColumns();
    void ApplyColumn(int index);
    void ColumnsChanged(const TCollectionItem* column);
    void HeaderChanged(const NMHEADERA& change);
    void ApplyExtendedStyle();
    void ApplyColors();
    void ApplyImages();
    void InsertIntoWindow(int index);
    bool SortsBy(TSortType type) const { return FSortType == type || FSortType == stBoth; }
    bool IsInPlace(TListItem& item);
    void SortAfter(TListItem& item);
    void SortWindow();
    void Notified(TMessage& message);
    void ItemChanged(const NMLISTVIEW& info);

    TListItems FItems;
    TListColumns FColumns;
    TImageList* FSmallImages = nullptr;
    TImageList* FLargeImages = nullptr;
    TImageList* FStateImages = nullptr;
    TSortType FSortType = stNone;
    TBorderStyle FBorderStyle = bsSingle;
    TViewStyle FViewStyle = vsIcon;
    bool FGridLines = false;
    bool FHideSelection = true;
    bool FMultiSelect = false;
    bool FReadOnly = false;
    bool FRowSelect = false;
    bool FShowColumnHeaders = true;
    int FWindowColumns = 0; ///< Columns that the window has.
    bool FFilling = false;  ///< The window is being filled: nothing happens to the items.
    TLVChangeEvent FOnChange;
    TLVCompareEvent FOnCompare;
    TLVSelectItemEvent FOnSelectItem;
    TLVColumnClickEvent FOnColumnClick;
};

} // namespace kx
