// SPDX-License-Identifier: MIT
// Tree views: settings, window and selection.

#include "kx/ui/widgets/ComCtrlsTree.h"

#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

const TClass& TTreeView::StaticClass() {
    static const TClassBuilder<TTreeView> cls("TTreeView", TWinControl::StaticClass(), [](auto& c) {
        using T = TTreeView;
        c.Creatable();
        c.Property("AutoExpand", &T::AutoExpand, &T::SetAutoExpand).Default = false;
        c.Property("BorderStyle", &T::BorderStyle, &T::SetBorderStyle).Default = bsSingle;
        c.Property("HideSelection", &T::HideSelection, &T::SetHideSelection).Default = true;
        c.Property("HotTrack", &T::HotTrack, &T::SetHotTrack).Default = false;
        c.Reference("Images", &T::Images, &T::SetImages);
        c.Property("Indent", &T::Indent, &T::SetIndent).Default = 19;
        c.Property("ParentColor", &T::ParentColor, &T::SetParentColor).Default = false;
        c.Property("ReadOnly", &T::ReadOnly, &T::SetReadOnly).Default = false;
        c.Property("RightClickSelect", &T::RightClickSelect, &T::SetRightClickSelect).Default = false;
        c.Property("RowSelect", &T::RowSelect, &T::SetRowSelect).Default = false;
        c.Property("ShowButtons", &T::ShowButtons, &T::SetShowButtons).Default = true;
        c.Property("ShowLines", &T::ShowLines, &T::SetShowLines).Default = true;
        c.Property("ShowRoot", &T::ShowRoot, &T::SetShowRoot).Default = true;
        c.Property("SortType", &T::SortType, &T::SetSortType).Default = stNone;
        c.Reference("StateImages", &T::StateImages, &T::SetStateImages);
        c.Property("TabStop", &T::TabStop, &T::SetTabStop).Default = true;
        c.Property("ToolTips", &T::ToolTips, &T::SetToolTips).Default = true;
        c.Property("OnChange", &T::OnChange, &T::SetOnChange);
        c.Property("OnChanging", &T::OnChanging, &T::SetOnChanging);
        c.Property("OnCollapsed", &T::OnCollapsed, &T::SetOnCollapsed);
        c.Property("OnCollapsing", &T::OnCollapsing, &T::SetOnCollapsing);
        c.Property("OnDeletion", &T::OnDeletion, &T::SetOnDeletion);
        c.Property("OnEdited", &T::OnEdited, &T::SetOnEdited);
        c.Property("OnEditing", &T::OnEditing, &T::SetOnEditing);
        c.Property("OnExpanded", &T::OnExpanded, &T::SetOnExpanded);
        c.Property("OnExpanding", &T::OnExpanding, &T::SetOnExpanding);
        c.SubObject("Items", &T::Items, &T::SetItems); // behind Images, which it needs
    });
    return cls.Class();
}

TTreeView::TTreeView(TComponent* owner) : TWinControl(owner), FItems(*this) {
    SetControlStyle({csClickEvents, csDoubleClicks});
    SetColor(clWindow);
    SetTabStop(true);
    SetBoundsFields(0, 0, 121, 97);
}

TTreeView::~TTreeView() {
    Destroying();
    DestroyHandle(); // while the nodes are there
}

// --- Window

void TTreeView::CreateParams(TCreateParams& params) {
    TWinControl::CreateParams(params);
    params.BaseClass = WC_TREEVIEWA;
    const auto add = [&](bool on, DWORD style) { params.Style |= on ? style : 0; };
    add(FShowButtons, TVS_HASBUTTONS);
    add(FShowLines, TVS_HASLINES);
    add(FShowRoot, TVS_LINESATROOT);
    add(!FHideSelection, TVS_SHOWSELALWAYS);
    add(!FReadOnly, TVS_EDITLABELS);
    add(FAutoExpand, TVS_SINGLEEXPAND);
    add(FHotTrack, TVS_TRACKSELECT);
    add(FRowSelect, TVS_FULLROWSELECT);
    add(!FToolTips, TVS_NOTOOLTIPS);
    add(UseRightToLeftReading(), TVS_RTLREADING);
    params.ExStyle |= FBorderStyle == bsSingle ? DWORD{WS_EX_CLIENTEDGE} : 0;
}

void TTreeView::CreateWnd() {
    FFilling = true;
    TWinControl::CreateWnd();
    FFilling = false;
    ApplyColors();
    ApplyImages();
    SendMessageW(WindowHandle(), TVM_SETINDENT, static_cast<WPARAM>(FIndent), 0);
    for (const auto& node : FItems.FRoots) {
        InsertIntoWindow(*node);
    }
    SelectInWindow();
}

void TTreeView::SaveWindowState() {
    TWinControl::SaveWindowState();
    FFilling = true; // the window loses its items, while the nodes stay
    for (const auto& node : FItems.FRoots) {
        ForgetItems(*node);
    }
}

void TTreeView::ForgetItems(TTreeNode& node) {
    node.FItem = nullptr;
    for (const auto& child : node.FChildren) {
        ForgetItems(*child);
    }
}

void TTreeView::InsertIntoWindow(TTreeNode& node) {
    if (!HandleAllocated() || (node.FParent && !node.FParent->FItem)) {
        return;
    }
    const TFieldScope filling(*this, FFilling, true);
    const TTreeNode* const before = node.GetPrevSibling();
    TVINSERTSTRUCTW insert{};
    insert.hParent = node.FParent ? node.FParent->FItem : TVI_ROOT;
    insert.hInsertAfter = before ? before->FItem : TVI_FIRST;
    insert.item.mask = TVIF_PARAM;
    insert.item.lParam = reinterpret_cast<LPARAM>(&node);
    node.FItem = reinterpret_cast<HTREEITEM>(
        SendMessageW(WindowHandle(), TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
    const std::string stood = FItems.FStood;
    node.Show(TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_STATE | TVIF_CHILDREN);
    FItems.FStood = stood; // the nodes have not changed
    for (const auto& child : node.FChildren) {
        InsertIntoWindow(*child);
    }
    if (node.FExpanded) {
        SendMessageW(WindowHandle(), TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(node.FItem));
    }
}

void TTreeView::RemoveFromWindow(TTreeNode& node) {
    if (node.FItem) {
        const TFieldScope filling(*this, FFilling, true);
        SendMessageW(WindowHandle(), TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(node.FItem));
        ForgetItems(node);
    }
}

// --- Settings

void TTreeView::ApplyColors() {
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), TVM_SETBKCOLOR, 0, static_cast<LPARAM>(ColorToRGB(Color())));
        SendMessageW(WindowHandle(), TVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(ColorToRGB(Font().Color())));
    }
}

void TTreeView::ColorChanged() {
    TWinControl::ColorChanged();
    ApplyColors();
}

void TTreeView::FontChanged() {
    if (Outlives(*this, [this] { TWinControl::FontChanged(); })) {
        ApplyColors();
    }
}

void TTreeView::ApplyImages() {
    if (HandleAllocated()) {
        const auto set = [this](WPARAM which, TImageList* images) {
            SendMessageW(WindowHandle(), TVM_SETIMAGELIST, which,
                         reinterpret_cast<LPARAM>(images ? images->Handle() : nullptr));
        };
        set(TVSIL_NORMAL, FImages);
        set(TVSIL_STATE, FStateImages);
    }
}

void TTreeView::SetImageField(TImageList*& field, TImageList* value) {
    if (field == value) {
        return;
    }
    TImageList* const old = field;
    field = value;
    if (old && old != FImages && old != FStateImages) {
        RemoveFreeNotification(old);
    }
    if (value) {
        FreeNotification(value);
    }
    ApplyImages();
}

void TTreeView::Notification(TComponent* component, TOperation operation) {
    TWinControl::Notification(component, operation);
    if (operation == opRemove && (component == FImages || component == FStateImages)) {
        FImages = component == FImages ? nullptr : FImages;
        FStateImages = component == FStateImages ? nullptr : FStateImages;
        ApplyImages();
    }
}

void TTreeView::SetStyleField(bool& field, bool value) {
    if (field != value) {
        field = value;
        RecreateWnd();
    }
}

void TTreeView::SetBorderStyle(TBorderStyle value) {
    if (FBorderStyle != value) {
        FBorderStyle = value;
        RecreateWnd();
    }
}

int TTreeView::Indent() const {
    return HandleAllocated() ? static_cast<int>(SendMessageW(WindowHandle(), TVM_GETINDENT, 0, 0)) : FIndent;
}

void TTreeView::SetIndent(int value) {
    FIndent = std::max(value, 0);
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), TVM_SETINDENT, static_cast<WPARAM>(FIndent), 0);
    }
}

// --- Sorting

void TTreeView::SetSortType(TSortType value) {
    FSortType = value;
    if (!IsLoading() && (value == stText || value == stBoth)) {
        AlphaSort();
    }
}

void TTreeView::Loaded() {
    TWinControl::Loaded();
    if (FSortType == stText || FSortType == stBoth) {
        const std::string stood = FItems.FStood;
        AlphaSort();
        FItems.FStood = stood; // sorted again when it is read again
    }
}

void TTreeView::SortChildren(std::vector<std::unique_ptr<TTreeNode>>& nodes) {
    std::stable_sort(nodes.begin(), nodes.end(),
                     [](const auto& a, const auto& b) { return CompareText(a->Text(), b->Text()) < 0; });
    for (const auto& node : nodes) {
        SortChildren(node->FChildren);
    }
}

bool TTreeView::AlphaSort() {
    for (const auto& node : FItems.FRoots) {
        RemoveFromWindow(*node);
    }
    SortChildren(FItems.FRoots);
    FItems.Changed();
    for (const auto& node : FItems.FRoots) {
        InsertIntoWindow(*node);
    }
    SelectInWindow();
    return true;
}

// --- Selection

bool TTreeView::Has(const TTreeNode* node) const {
    const TTreeNode* found = FItems.GetFirstNode();
    while (found && found != node) {
        found = found->GetNext();
    }
    return found != nullptr;
}

void TTreeView::SelectInWindow() {
    if (HandleAllocated()) {
        const TFieldScope filling(*this, FFilling, true);
        SendMessageW(WindowHandle(), TVM_SELECTITEM, TVGN_CARET,
                     reinterpret_cast<LPARAM>(FSelected ? FSelected->FItem : nullptr));
    }
}

void TTreeView::SetSelected(TTreeNode* value) {
    if (value != FSelected) {
        bool may = false;
        if (Outlives(*this, [&] { may = CanChange(value); }) && may && (!value || Has(value))) {
            SelectAnother(value);
        }
    }
}

void TTreeView::SelectAnother(TTreeNode* node) {
    if (node != FSelected) {
        FSelected = node;
        SelectInWindow();
        Change(node);
    }
}

void TTreeView::Leave(const TTreeNode& node) {
    if (&node == FDropTarget) {
        SetDropTarget(nullptr);
    }
    if (&node == FSelected) {
        TTreeNode* const next = node.GetNextSibling();
        TTreeNode* const previous = node.GetPrevSibling();
        SelectAnother(next ? next : previous ? previous : node.Parent());
    }
}

void TTreeView::SetDropTarget(TTreeNode* value) {
    FDropTarget = value;
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), TVM_SELECTITEM, TVGN_DROPHILITE,
                     reinterpret_cast<LPARAM>(value ? value->FItem : nullptr));
    }
}

namespace {

TTreeNode* NodeOfItem(HWND window, LRESULT item) {
    TVITEMW info{};
    info.mask = TVIF_HANDLE | TVIF_PARAM;
    info.hItem = reinterpret_cast<HTREEITEM>(item);
    return item && SendMessageW(window, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&info))
               ? reinterpret_cast<TTreeNode*>(info.lParam)
               : nullptr;
}

} // namespace

TTreeNode* TTreeView::TopItem() const {
    return HandleAllocated()
               ? NodeOfItem(WindowHandle(), SendMessageW(WindowHandle(), TVM_GETNEXTITEM, TVGN_FIRSTVISIBLE, 0))
               : nullptr;
}

void TTreeView::SetTopItem(TTreeNode* value) {
    if (HandleAllocated() && value) {
        SendMessageW(WindowHandle(), TVM_SELECTITEM, TVGN_FIRSTVISIBLE, reinterpret_cast<LPARAM>(value->FItem));
    }
}

TTreeNode* TTreeView::GetNodeAt(int x, int y) const {
    if (!HandleAllocated()) {
        return nullptr;
    }
    TVHITTESTINFO hit{};
    hit.pt = {x, y};
    return NodeOfItem(WindowHandle(), SendMessageW(WindowHandle(), TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
}

// --- Expanding

bool TTreeView::MaySwitch(TTreeNode& node, bool expand) {
    bool may = false;
    return Outlives(*this, [&] { may = expand ? CanExpand(&node) : CanCollapse(&node); }) && may && Has(&node);
}

bool TTreeView::Switch(TTreeNode& node, bool expand) {
    const TAlive alive(*this);
    if (!MaySwitch(node, expand) || (expand && node.FChildren.empty())) {
        return false;
    }
    if (node.FItem) { // the system tells of it only the first time
        const TFieldScope filling(*this, FFilling, true);
        SendMessageW(WindowHandle(), TVM_EXPAND, expand ? TVE_EXPAND : TVE_COLLAPSE,
                     reinterpret_cast<LPARAM>(node.FItem));
    }
    Switched(node, expand);
    return alive && Has(&node);
}

void TTreeView::Switched(TTreeNode& node, bool expand) {
    node.FExpanded = expand;
    if (!expand && FSelected && FSelected->HasAsParent(&node)) {
        SelectAnother(&node); // as the system does
    }
    (expand ? FOnExpanded : FOnCollapsed)(this, &node);
}

void TTreeView::FullExpand() {
    for (size_t i = 0; i < FItems.FRoots.size(); ++i) {
        FItems.FRoots[i]->Expand(true);
    }
}

void TTreeView::FullCollapse() {
    for (size_t i = 0; i < FItems.FRoots.size(); ++i) {
        FItems.FRoots[i]->Collapse(true);
    }
}

} // namespace kx
