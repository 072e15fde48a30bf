// SPDX-License-Identifier: MIT
// The nodes of a tree view.

#include "kx/ui/widgets/ComCtrlsTree.h"

#include "kx/win/Windows.h"

#include <algorithm>
#include <cstring>

namespace kx {

namespace {

using TNodeList = std::vector<std::unique_ptr<TTreeNode>>;

[[noreturn]] void OutOfBounds(int index) {
    throw EListError(Format("List index out of bounds (%s)", {IntToStr(index)}));
}

} // namespace

// --- TTreeNode

const TClass& TTreeNode::StaticClass() {
    static const TClassBuilder<TTreeNode> cls("TTreeNode", TPersistent::StaticClass());
    return cls.Class();
}

TTreeView& TTreeNode::TreeView() const { return FNodes.Owner(); }

/// Brings the window's item in line with the node.
void TTreeNode::Show(UINT mask) {
    FNodes.Changed();
    if (!FItem) {
        return;
    }
    std::wstring text = (mask & TVIF_TEXT) ? ToWide(FText) : std::wstring();
    TVITEMW item{};
    item.mask = TVIF_HANDLE | mask;
    item.hItem = FItem;
    item.pszText = text.data();
    item.iImage = FImageIndex;
    item.iSelectedImage = FSelectedIndex;
    item.stateMask = TVIS_STATEIMAGEMASK;
    item.state = INDEXTOSTATEIMAGEMASK(static_cast<UINT>(std::clamp(FStateIndex, 0, 15)));
    item.cChildren = HasChildren();
    SendMessageW(TreeView().WindowHandle(), TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void TTreeNode::SetText(const std::string& value) {
    FText = value;
    Show(TVIF_TEXT);
}

void TTreeNode::SetImage(int& field, int value) {
    field = value;
    Show(TVIF_IMAGE | TVIF_SELECTEDIMAGE);
}

void TTreeNode::SetImageIndex(int value) { SetImage(FImageIndex, value); }
void TTreeNode::SetSelectedIndex(int value) { SetImage(FSelectedIndex, value); }

void TTreeNode::SetStateIndex(int value) {
    FStateIndex = value;
    Show(TVIF_STATE);
}

void TTreeNode::SetHasChildren(bool value) {
    FHasChildren = value;
    Show(TVIF_CHILDREN);
}

void TTreeNode::Assign(const TPersistent* source) {
    const auto* const other = dynamic_cast<const TTreeNode*>(source);
    if (!other) {
        return TPersistent::Assign(source);
    }
    FText = other->FText;
    FImageIndex = other->FImageIndex;
    FSelectedIndex = other->FSelectedIndex;
    FStateIndex = other->FStateIndex;
    FData = other->FData;
    FHasChildren = other->FHasChildren;
    Show(TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_STATE | TVIF_CHILDREN);
}

// --- Place

TNodeList& TTreeNode::Siblings() const { return FParent ? FParent->FChildren : FNodes.FRoots; }

int TTreeNode::Level() const {
    int level = 0;
    for (const TTreeNode* node = FParent; node; node = node->FParent) {
        ++level;
    }
    return level;
}

int TTreeNode::Index() const {
    const TNodeList& siblings = Siblings();
    const auto own = std::find_if(siblings.begin(), siblings.end(), [this](const auto& n) { return n.get() == this; });
    return static_cast<int>(own - siblings.begin());
}

TTreeNode& TTreeNode::operator[](int index) const {
    if (index < 0 || index >= Count()) {
        OutOfBounds(index);
    }
    return *FChildren[static_cast<size_t>(index)];
}

TTreeNode* TTreeNode::GetFirstChild() const { return FChildren.empty() ? nullptr : FChildren.front().get(); }
TTreeNode* TTreeNode::GetLastChild() const { return FChildren.empty() ? nullptr : FChildren.back().get(); }

TTreeNode* TTreeNode::GetNextSibling() const {
    const auto next = static_cast<size_t>(Index()) + 1;
    return next < Siblings().size() ? Siblings()[next].get() : nullptr;
}

TTreeNode* TTreeNode::GetPrevSibling() const {
    const auto index = static_cast<size_t>(Index());
    return index > 0 ? Siblings()[index - 1].get() : nullptr;
}

TTreeNode* TTreeNode::GetNext() const {
    if (TTreeNode* const child = GetFirstChild()) {
        return child;
    }
    for (const TTreeNode* node = this; node; node = node->FParent) {
        if (TTreeNode* const next = node->GetNextSibling()) {
            return next;
        }
    }
    return nullptr;
}

bool TTreeNode::HasAsParent(const TTreeNode* node) const {
    for (const TTreeNode* above = FParent; above; above = above->FParent) {
        if (above == node) {
            return true;
        }
    }
    return false;
}

void TTreeNode::Delete() { FNodes.Delete(*this); }

void TTreeNode::DeleteChildren() {
    while (!FChildren.empty()) {
        FNodes.Delete(*FChildren.back());
    }
}

void TTreeNode::MoveTo(TTreeNode& destination, TNodeAttachMode mode) {
    if (&destination == this || destination.HasAsParent(this)) {
        throw EInvalidOperation("A node cannot be moved into itself");
    }
    TTreeView& view = TreeView();
    TNodeList& from = Siblings();
    TTreeNode* const parent = FParent;
    view.RemoveFromWindow(*this);
    std::unique_ptr<TTreeNode> self = std::move(from[static_cast<size_t>(Index())]);
    std::erase(from, nullptr);
    const bool inside = mode == naAddChild || mode == naAddChildFirst;
    FParent = inside ? &destination : destination.FParent;
    TNodeList& to = Siblings();
    const bool first = mode == naAddFirst || mode == naAddChildFirst;
    const auto place = first ? to.begin() : mode == naInsert ? to.begin() + destination.Index() : to.end();
    to.insert(place, std::move(self));
    FNodes.Changed();
    if (parent) {
        parent->ChildLeft();
    }
    view.InsertIntoWindow(*this);
    view.SelectInWindow();
}

void TTreeNode::ChildLeft() {
    if (FChildren.empty()) {
        FExpanded = false;
        Show(TVIF_CHILDREN);
    }
}

// --- State

void TTreeNode::SetExpanded(bool value) {
    if (value) {
        Expand(false);
    } else {
        Collapse(false);
    }
}

void TTreeNode::Expand(bool recurse) {
    if (!FExpanded && HasChildren() && !TreeView().Switch(*this, true)) {
        return; // the node may have gone
    }
    for (size_t i = 0; recurse && i < FChildren.size(); ++i) {
        FChildren[i]->Expand(true);
    }
}

void TTreeNode::Collapse(bool recurse) {
    if (FExpanded && !TreeView().Switch(*this, false)) {
        return;
    }
    for (size_t i = 0; recurse && i < FChildren.size(); ++i) {
        FChildren[i]->Collapse(true);
    }
}

bool TTreeNode::Selected() const { return TreeView().Selected() == this; }

void TTreeNode::SetSelected(bool value) {
    if (value != Selected()) {
        TreeView().SetSelected(value ? this : nullptr);
    }
}

void TTreeNode::MakeVisible() {
    if (FItem) {
        SendMessageW(TreeView().WindowHandle(), TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(FItem));
        return;
    }
    for (TTreeNode* above = FParent; above; above = above->FParent) {
        above->FExpanded = true;
    }
}

bool TTreeNode::EditText() {
    if (!FItem || TreeView().ReadOnly()) {
        return false;
    }
    TreeView().SetFocus();
    return SendMessageW(TreeView().WindowHandle(), TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(FItem)) != 0;
}

TRect TTreeNode::DisplayRect(bool textOnly) const {
    if (!FItem) {
        return {};
    }
    RECT r{};
    std::memcpy(&r, &FItem, sizeof(void*)); // so the system wants it
    return SendMessageW(TreeView().WindowHandle(), TVM_GETITEMRECT, textOnly, reinterpret_cast<LPARAM>(&r))
               ? FromRECT(r)
               : TRect{};
}

// --- TTreeNodes

const TClass& TTreeNodes::StaticClass() {
    static const TClassBuilder<TTreeNodes> cls("TTreeNodes", TPersistent::StaticClass());
    return cls.Class();
}

TTreeNodes::~TTreeNodes() = default;

TPersistent* TTreeNodes::GetOwner() const { return &FTreeView; }

int TTreeNodes::Count() const {
    int count = 0;
    for (const TTreeNode* node = GetFirstNode(); node; node = node->GetNext()) {
        ++count;
    }
    return count;
}

TTreeNode& TTreeNodes::operator[](int index) const {
    int place = index;
    for (TTreeNode* node = GetFirstNode(); node && place >= 0; node = node->GetNext(), --place) {
        if (place == 0) {
            return *node;
        }
    }
    OutOfBounds(index);
}

TTreeNode& TTreeNodes::Insert(TTreeNode* parent, int index, const std::string& text) {
    auto made = std::make_unique<TTreeNode>(*this);
    TTreeNode& node = *made;
    node.FText = text;
    node.FParent = parent;
    TNodeList& siblings = node.Siblings();
    siblings.insert(siblings.begin() + index, std::move(made));
    Changed();
    FTreeView.InsertIntoWindow(node);
    if (parent && parent->Count() == 1) {
        parent->Show(TVIF_CHILDREN);
    }
    return node;
}

TTreeNode& TTreeNodes::Add(TTreeNode* sibling, const std::string& text) {
    return AddChild(sibling ? sibling->FParent : nullptr, text);
}

TTreeNode& TTreeNodes::AddFirst(TTreeNode* sibling, const std::string& text) {
    return AddChildFirst(sibling ? sibling->FParent : nullptr, text);
}

TTreeNode& TTreeNodes::AddChild(TTreeNode* parent, const std::string& text) {
    return Insert(parent, parent ? parent->Count() : static_cast<int>(FRoots.size()), text);
}

TTreeNode& TTreeNodes::AddChildFirst(TTreeNode* parent, const std::string& text) { return Insert(parent, 0, text); }

TTreeNode& TTreeNodes::Insert(TTreeNode* sibling, const std::string& text) {
    return sibling ? Insert(sibling->FParent, sibling->Index(), text) : Add(nullptr, text);
}

void TTreeNodes::Delete(TTreeNode& node) {
    const TAlive alive(FTreeView);
    node.DeleteChildren();
    if (alive) {
        FTreeView.Leave(node);
    }
    if (alive) {
        FTreeView.Delete(&node);
    }
    if (!alive) {
        return;
    }
    FTreeView.RemoveFromWindow(node);
    TNodeList& siblings = node.Siblings();
    TTreeNode* const parent = node.FParent;
    const std::unique_ptr<TTreeNode> gone = std::move(siblings[static_cast<size_t>(node.Index())]);
    std::erase(siblings, nullptr);
    Changed();
    if (parent) {
        parent->ChildLeft();
    }
}

void TTreeNodes::Clear() {
    const TAlive alive(FTreeView);
    FTreeView.SelectAnother(nullptr); // else one after the other would be
    while (alive && !FRoots.empty()) {
        Delete(*FRoots.back());
    }
}

void TTreeNodes::BeginUpdate() {
    if (FUpdateCount++ == 0 && FTreeView.HandleAllocated()) {
        SendMessageW(FTreeView.WindowHandle(), WM_SETREDRAW, FALSE, 0);
    }
}

void TTreeNodes::EndUpdate() {
    if (--FUpdateCount == 0 && FTreeView.HandleAllocated()) {
        SendMessageW(FTreeView.WindowHandle(), WM_SETREDRAW, TRUE, 0);
        FTreeView.Invalidate();
    }
}

void TTreeNodes::CopyChildren(const TTreeNode* from, TTreeNode* to) {
    for (; from; from = from->GetNextSibling()) {
        TTreeNode& copy = AddChild(to, from->Text());
        copy.Assign(from);
        CopyChildren(from->GetFirstChild(), &copy);
    }
}

void TTreeNodes::Assign(const TPersistent* source) {
    const auto* const other = dynamic_cast<const TTreeNodes*>(source);
    if (!other) {
        return TPersistent::Assign(source);
    }
    if (other != this) {
        BeginUpdate();
        Clear();
        CopyChildren(other->GetFirstNode(), nullptr);
        EndUpdate();
        FStood = other->FStood;
        FStoodAsOld = other->FStoodAsOld;
    }
}

} // namespace kx
