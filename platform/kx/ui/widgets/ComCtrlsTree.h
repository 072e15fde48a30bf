// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Components.h"
#include "kx/core/ItemIterator.h"
#include "kx/core/SystemNames.h"
#include "kx/graphics/ImgList.h"
#include "kx/ui/controls/Controls.h"
#include "kx/ui/widgets/ListViewTypes.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

struct _TREEITEM; // what an HTREEITEM of the system points to

namespace kx {

class TTreeNodes;
class TTreeView;

/// Where `TTreeNode::MoveTo` puts the node.
enum TNodeAttachMode : uint8_t {
    naAdd,           ///< As the last one beside the destination.
    naAddFirst,      ///< As the first one beside it.
    naAddChild,      ///< As its last child.
    naAddChildFirst, ///< As its first child.
    naInsert         ///< In front of it.
};

/// A node of a tree view; owned by the list of nodes.
class TTreeNode : public TPersistent {
    KX_CLASS()

    explicit TTreeNode(TTreeNodes& nodes) : FNodes(nodes) {}

    const std::string& Text() const { return FText; }
    void SetText(const std::string& value);
    int ImageIndex() const { return FImageIndex; } ///< In the tree view's images; -1: none.
    void SetImageIndex(int value);
    int SelectedIndex() const { return FSelectedIndex; } ///< The same while the node is selected.
    void SetSelectedIndex(int value);
    int StateIndex() const { return FStateIndex; } ///< In the state images, from 1 on; -1: none.
    void SetStateIndex(int value);
    void* Data() const { return FData; } ///< The program's.
    void SetData(void* value) { FData = value; }

    // --- Place

    TTreeNode* Parent() const { return FParent; } ///< Null for a node of the top level.
    int Level() const;                            ///< 0 for those.
    int Index() const;                            ///< Beside its siblings.
    using TIterator = TItemIterator<TTreeNode, std::vector<std::unique_ptr<TTreeNode>>::const_iterator>;
    TIterator begin() const { return TIterator(FChildren.begin()); } ///< The children, as long as none comes or goes.
    TIterator end() const { return TIterator(FChildren.end()); }
    int Count() const { return static_cast<int>(FChildren.size()); }
    /// The children. @throws EListError "List index out of bounds (%s)"
    TTreeNode& operator[](int index) const;
    TTreeNode* GetFirstChild() const;
    TTreeNode* GetLastChild() const;
    TTreeNode* GetNextSibling() const;
    TTreeNode* GetPrevSibling() const;
    TTreeNode* GetNext() const;                    ///< In the order from top to bottom as if all were expanded.
    bool HasAsParent(const TTreeNode* node) const; ///< `node` is above it, on any level.
    /// @throws EInvalidOperation for a destination that is the node itself or inside it.
    void MoveTo(TTreeNode& destination, TNodeAttachMode mode);
    void Delete(); ///< Takes the node and those inside it off the tree and frees them.
    void DeleteChildren();

    // --- State

    bool HasChildren() const { return FHasChildren || !FChildren.empty(); }
    /// Shows a button for children that come when the node is expanded, by OnExpanding.
    void SetHasChildren(bool value);
    bool Expanded() const { return FExpanded; }
    /// Asks OnExpanding or OnCollapsing. A node without children cannot be expanded.
    void SetExpanded(bool value);
    void Expand(bool recurse);
    void Collapse(bool recurse);
    bool Selected() const;
    void SetSelected(bool value);
    void MakeVisible(); ///< Expands those above it and scrolls.
    bool EditText();    ///< The user may change the text from now on; false: not now.
    /// In client coordinates, the text alone or the whole row; empty when it does not show.
    TRect DisplayRect(bool textOnly) const;

    TTreeView& TreeView() const;
    void Assign(const TPersistent* source) override; ///< Text, images and data, without the children.

private:
    friend class TTreeNodes;
    friend class TTreeView;
    void Show(UINT mask);
    void SetImage(int& field, int value);
    void ChildLeft();
    std::vector<std::unique_ptr<TTreeNode>>& Siblings() const;

    TTreeNodes& FNodes;
    TTreeNode* FParent = nullptr;
    std::vector<std::unique_ptr<TTreeNode>> FChildren;
    ::_TREEITEM* FItem = nullptr; ///< In the window.
    std::string FText;
    int FImageIndex = 0;
    int FSelectedIndex = 0;
    int FStateIndex = -1;
    void* FData = nullptr;
    bool FHasChildren = false;
    bool FExpanded = false;
};

/// The nodes of a tree view, which it owns. Form files hold them as Items.NodeData; older ones as Items.Data.
class TTreeNodes : public TPersistent {
    KX_CLASS()

    explicit TTreeNodes(TTreeView& treeView) : FTreeView(treeView) {}
    ~TTreeNodes() override;

    /// A place among the nodes of all levels, from top to bottom.
    struct TPosition {
        TTreeNode* Node = nullptr; ///< Null behind the last one.

        TTreeNode* operator*() const { return Node; }
        TPosition& operator++() {
            Node = Node->GetNext();
            return *this;
        }
        TPosition operator++(int) { return {std::exchange(Node, Node->GetNext())}; }
        bool operator==(const TPosition&) const = default;
    };
    using TIterator = TItemIterator<TTreeNode, TPosition>;
    TIterator begin() const { return TIterator({GetFirstNode()}); } ///< As long as no node comes or goes.
    TIterator end() const { return TIterator(); }
    int Count() const; ///< Of all levels.
    /// By their order from top to bottom, all levels. @throws EListError "List index out of bounds (%s)"
    TTreeNode& operator[](int index) const;
    TTreeNode* GetFirstNode() const { return FRoots.empty() ? nullptr : FRoots.front().get(); }
    /// A new node, the last one beside `sibling`; with null, of the top level.
    TTreeNode& Add(TTreeNode* sibling, const std::string& text);
    TTreeNode& AddFirst(TTreeNode* sibling, const std::string& text);
    TTreeNode& AddChild(TTreeNode* parent, const std::string& text); ///< Its last child; with null, of the top level.
    TTreeNode& AddChildFirst(TTreeNode* parent, const std::string& text);
    TTreeNode& Insert(TTreeNode* sibling, const std::string& text); ///< In front of it.
    void Delete(TTreeNode& node);
    void Clear();
    void BeginUpdate();
    void EndUpdate();
    TTreeView& Owner() const { return FTreeView; }
    TPersistent* GetOwner() const override;
    void Assign(const TPersistent* source) override;
    void DefineProperties(TFiler& filer) override;

private:
    friend class TTreeNode;
    friend class TTreeView;
    TTreeNode& Insert(TTreeNode* parent, int index, const std::string& text);
    void CopyChildren(const TTreeNode* from, TTreeNode* to);
    void Changed() { FStood.clear(); }
    void ReadData(TStream& stream, bool isOld);
    void WriteData(TStream& stream) const;

    TTreeView& FTreeView;
    std::vector<std::unique_ptr<TTreeNode>> FRoots;
    int FUpdateCount = 0;
    std::string FStood;       ///< The block of the form file, as long as nothing has changed; else empty.
    bool FStoodAsOld = false; ///< It was Data.
};

using TTVChangedEvent = TEvent<void(TObject* sender, TTreeNode* node)>; ///< `node` is null when none is selected.
using TTVChangingEvent = TEvent<void(TObject* sender, TTreeNode* node, bool& allowChange)>;
using TTVExpandingEvent = TEvent<void(TObject* sender, TTreeNode* node, bool& allowExpansion)>;
using TTVCollapsingEvent = TEvent<void(TObject* sender, TTreeNode* node, bool& allowCollapse)>;
using TTVExpandedEvent = TEvent<void(TObject* sender, TTreeNode* node)>;
using TTVEditingEvent = TEvent<void(TObject* sender, TTreeNode* node, bool& allowEdit)>;
/// The user has changed the text of a node to `text`, which a handler may change.
using TTVEditedEvent = TEvent<void(TObject* sender, TTreeNode* node, std::string& text)>;

/// A tree of nodes that can be expanded.
class TTreeView : public TWinControl {
    KX_CLASS()

    explicit TTreeView(TComponent* owner = nullptr);
    ~TTreeView() override;

    TTreeNodes& Items() { return FItems; }
    const TTreeNodes& Items() const { return FItems; }
    void SetItems(const TTreeNodes& value) { FItems.Assign(&value); }
    TTreeNode* Selected() const { return FSelected; }     ///< Null: none.
    void SetSelected(TTreeNode* value);                   ///< Asks OnChanging, and fires OnChange.
    TTreeNode* DropTarget() const { return FDropTarget; } ///< Highlighted while something is dragged over it.
    void SetDropTarget(TTreeNode* value);
    TTreeNode* TopItem() const; ///< The first one that is seen; null without a window.
    void SetTopItem(TTreeNode* value);
    TTreeNode* GetNodeAt(int x, int y) const; ///< In client coordinates; null beside the nodes.
    void FullExpand();
    void FullCollapse();
    bool IsEditing() const;
    bool AlphaSort(); ///< Sorts all nodes by their texts, in any letter case.

    bool AutoExpand() const { return FAutoExpand; } ///< A node that is selected is expanded, the one before collapsed.
    void SetAutoExpand(bool value) { SetStyleField(FAutoExpand, value); }
    TBorderStyle BorderStyle() const { return FBorderStyle; }
    void SetBorderStyle(TBorderStyle value);
    bool HideSelection() const { return FHideSelection; } ///< Selection shows only with the focus.
    void SetHideSelection(bool value) { SetStyleField(FHideSelection, value); }
    bool HotTrack() const { return FHotTrack; }
    void SetHotTrack(bool value) { SetStyleField(FHotTrack, value); }
    TImageList* Images() const { return FImages; } ///< Not owned.
    void SetImages(TImageList* value) { SetImageField(FImages, value); }
    TImageList* StateImages() const { return FStateImages; } ///< Not owned.
    void SetStateImages(TImageList* value) { SetImageField(FStateImages, value); }
    int Indent() const; ///< Pixels of a level.
    void SetIndent(int value);
    bool ReadOnly() const { return FReadOnly; } ///< The user cannot edit the texts.
    void SetReadOnly(bool value) { SetStyleField(FReadOnly, value); }
    bool RightClickSelect() const { return FRightClickSelect; } ///< The right button selects too.
    void SetRightClickSelect(bool value) { FRightClickSelect = value; }
    bool RowSelect() const { return FRowSelect; } ///< The selection covers the whole row; only without lines.
    void SetRowSelect(bool value) { SetStyleField(FRowSelect, value); }
    bool ShowButtons() const { return FShowButtons; }
    void SetShowButtons(bool value) { SetStyleField(FShowButtons, value); }
    bool ShowLines() const { return FShowLines; }
    void SetShowLines(bool value) { SetStyleField(FShowLines, value); }
    bool ShowRoot() const { return FShowRoot; } ///< Lines and buttons for the top level too.
    void SetShowRoot(bool value) { SetStyleField(FShowRoot, value); }
    TSortType SortType() const { return FSortType; } ///< With stText and stBoth the nodes are sorted when it is set.
    void SetSortType(TSortType value);
    bool ToolTips() const { return FToolTips; } ///< Texts that are cut off are shown below the mouse.
    void SetToolTips(bool value) { SetStyleField(FToolTips, value); }

    const TTVChangedEvent& OnChange() const { return FOnChange; }
    void SetOnChange(TTVChangedEvent value) { FOnChange = std::move(value); }
    const TTVChangingEvent& OnChanging() const { return FOnChanging; }
    void SetOnChanging(TTVChangingEvent value) { FOnChanging = std::move(value); }
    const TTVExpandedEvent& OnCollapsed() const { return FOnCollapsed; }
    void SetOnCollapsed(TTVExpandedEvent value) { FOnCollapsed = std::move(value); }
    const TTVCollapsingEvent& OnCollapsing() const { return FOnCollapsing; }
    void SetOnCollapsing(TTVCollapsingEvent value) { FOnCollapsing = std::move(value); }
    const TTVExpandedEvent& OnDeletion() const { return FOnDeletion; } ///< A node is about to be freed.
    void SetOnDeletion(TTVExpandedEvent value) { FOnDeletion = std::move(value); }
    const TTVEditedEvent& OnEdited() const { return FOnEdited; }
    void SetOnEdited(TTVEditedEvent value) { FOnEdited = std::move(value); }
    const TTVEditingEvent& OnEditing() const { return FOnEditing; }
    void SetOnEditing(TTVEditingEvent value) { FOnEditing = std::move(value); }
    const TTVExpandedEvent& OnExpanded() const { return FOnExpanded; }
    void SetOnExpanded(TTVExpandedEvent value) { FOnExpanded = std::move(value); }
    const TTVExpandingEvent& OnExpanding() const { return FOnExpanding; }
    void SetOnExpanding(TTVExpandingEvent value) { FOnExpanding = std::move(value); }

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
    bool WantsKey(uint16_t key, TShiftState shift) override;
    void DragOver(TObject* source, int x, int y, TDragState state, bool& accept) override;
    void DoEndDrag(TObject* target, int x, int y) override;
    virtual bool CanChange(TTreeNode* node);
    virtual void Change(TTreeNode* node);
    virtual bool CanExpand(TTreeNode* node);
    virtual bool CanCollapse(TTreeNode* node);
    virtual bool CanEdit(TTreeNode* node);
    virtual void Edit(TTreeNode* node, std::string& text);
    virtual void Delete(TTreeNode* node);

private:
    friend class TTreeNode;
    friend class TTreeNodes;
    void SetStyleField(bool& field, bool value);
    void SetImageField(TImageList*& field, TImageList* value);
    void ApplyColors();
    void ApplyImages();
    void InsertIntoWindow(TTreeNode& node); ///< With those inside it; does nothing without a window.
    void RemoveFromWindow(TTreeNode& node);
    static void ForgetItems(TTreeNode& node);
    void SelectInWindow();                 ///< Brings the window's selection in line with ours.
    void SelectAnother(TTreeNode* node);   ///< Without asking. Fires OnChange when that is a change.
    void Leave(const TTreeNode& node);     ///< It is about to go.
    bool Has(const TTreeNode* node) const; ///< Compares addresses: the node may have been freed.
    /// Asks, expands or collapses, and tells; false when nothing came of it, or the node has gone.
    bool Switch(TTreeNode& node, bool expand);
    bool MaySwitch(TTreeNode& node, bool expand);
    void Switched(TTreeNode& node, bool expand);
    void SortChildren(std::vector<std::unique_ptr<TTreeNode>>& nodes);
    void Notified(TMessage& message);
    void EditEnded(TTreeNode* node, std::string text);
    void RightClicked();
    TTreeNode* NodeOf(LPARAM data) const { return reinterpret_cast<TTreeNode*>(data); }

    TTreeNodes FItems;
    TTreeNode* FSelected = nullptr;
    TTreeNode* FDropTarget = nullptr;
    TImageList* FImages = nullptr;
    TImageList* FStateImages = nullptr;
    TBorderStyle FBorderStyle = bsSingle;
    TSortType FSortType = stNone;
    int FIndent = 19;
    bool FAutoExpand = false;
    bool FHideSelection = true;
    bool FHotTrack = false;
    bool FReadOnly = false;
    bool FRightClickSelect = false;
    bool FRowSelect = false;
    bool FShowButtons = true;
    bool FShowLines = true;
    bool FShowRoot = true;
    bool FToolTips = true;
    bool FFilling = false; ///< The window follows the nodes: no event says so.
    TTVChangedEvent FOnChange;
    TTVChangingEvent FOnChanging;
    TTVExpandedEvent FOnCollapsed;
    TTVCollapsingEvent FOnCollapsing;
    TTVExpandedEvent FOnDeletion;
    TTVEditedEvent FOnEdited;
    TTVEditingEvent FOnEditing;
    TTVExpandedEvent FOnExpanded;
    TTVExpandingEvent FOnExpanding;
};

} // namespace kx
