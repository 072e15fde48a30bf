// SPDX-License-Identifier: MIT
// The tree of a form's components.

#include "designer/Structure.h"

#include "kx/core/Barrier.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <commctrl.h>

namespace kx::designer {

const TClass& TStructure::StaticClass() {
    static const TClassBuilder<TStructure> cls("TStructure", TTreeView::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

TStructure::TStructure(TComponent* owner) : TTreeView(owner) {
    SetDragMode(dmAutomatic);
    SetHideSelection(false);
    SetRightClickSelect(true);
}

TStructure::~TStructure() {
    FShowing = true; // what is selected while the nodes go means nothing
    Destroying();
}

// --- Rows

std::vector<TStructure::TRow> TStructure::RowsOf(TFormDesigner& designer) const {
    std::vector<TRow> rows;
    for (const TComponent* component : designer.AllComponents()) {
        int level = 0;
        for (const TComponent* around = component; around != &designer.Form(); ++level) {
            const TComponent* const parent = around->GetParentComponent();
            around = parent ? parent : &designer.Form();
        }
        rows.push_back({component->Name(), component->Name() + ": " + component->FormClassName(), level});
    }
    return rows;
}

void TStructure::ShowForm(TFormDesigner* designer) {
    FDesigner = designer;
    std::vector<TRow> rows = designer ? RowsOf(*designer) : std::vector<TRow>();
    if (rows != FRows) {
        std::set<std::string> collapsed;
        for (TTreeNode* node = Items().GetFirstNode(); node; node = node->GetNext()) {
            if (node->Count() > 0 && !node->Expanded()) {
                collapsed.insert(NameOf(*node));
            }
        }
        const std::string top = TopItem() ? NameOf(*TopItem()) : std::string();
        FRows = std::move(rows);
        const TFieldScope showing(*this, FShowing, true);
        Items().BeginUpdate();
        Fill();
        for (TTreeNode* node = Items().GetFirstNode(); node; node = node->GetNext()) {
            node->SetExpanded(collapsed.count(NameOf(*node)) == 0);
        }
        Items().EndUpdate();
        SetTopItem(NodeOf(top));
    }
    UpdateSelection();
}

void TStructure::Fill() {
    Items().Clear();
    std::vector<TTreeNode*> around; // the last node of each level
    for (size_t i = 0; i < FRows.size(); ++i) {
        const auto level = static_cast<size_t>(FRows[i].Level);
        around.resize(level);
        TTreeNode& node = Items().AddChild(level == 0 ? nullptr : around.back(), FRows[i].Text);
        node.SetData(reinterpret_cast<void*>(i));
        around.push_back(&node);
    }
}

const std::string& TStructure::NameOf(const TTreeNode& node) const {
    return FRows[reinterpret_cast<size_t>(node.Data())].Name;
}

TTreeNode* TStructure::NodeOf(const std::string& name) {
    TTreeNode* node = Items().GetFirstNode();
    while (node && NameOf(*node) != name) {
        node = node->GetNext();
    }
    return node;
}

TComponent* TStructure::ComponentOf(const TTreeNode& node) const {
    return !node.Parent() ? &FDesigner->Form() : FDesigner->Form().FindComponent(NameOf(node));
}

// --- Selection

void TStructure::UpdateSelection() {
    std::set<std::string> names;
    TTreeNode* first = nullptr;
    if (FDesigner) {
        for (const TComponent* component : FDesigner->SelectedComponents()) {
            TTreeNode* const node = NodeOf(component->Name());
            first = first ? first : node;
            names.insert(component->Name());
        }
    }
    const TFieldScope showing(*this, FShowing, true);
    SetSelected(first);
    MarkSelected(names);
}

/// Of several selected components the tree can select one; all of them are bold.
void TStructure::MarkSelected(const std::set<std::string>& names) {
    if (!HandleAllocated()) {
        return;
    }
    // The items of the window, in the order of the nodes
    const auto next = [this](HTREEITEM item, WPARAM which) {
        return reinterpret_cast<HTREEITEM>(
            SendMessageA(WindowHandle(), TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(item)));
    };
    HTREEITEM item = next(nullptr, TVGN_ROOT);
    for (size_t i = 0; item && i < FRows.size(); ++i) {
        TVITEMA info{};
        info.mask = TVIF_HANDLE | TVIF_STATE;
        info.hItem = item;
        info.stateMask = TVIS_BOLD;
        info.state = names.size() > 1 && names.count(FRows[i].Name) > 0 ? TVIS_BOLD : 0;
        SendMessageA(WindowHandle(), TVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&info));
        HTREEITEM following = next(item, TVGN_CHILD);
        for (HTREEITEM around = item; !following && around; around = next(around, TVGN_PARENT)) {
            following = next(around, TVGN_NEXT);
        }
        item = following;
    }
}

void TStructure::WndProc(TMessage& message) {
    const TFieldScope adding(*this, FAdding,
                             FAdding || (message.Msg == WM_LBUTTONDOWN && (message.WParam & MK_CONTROL) != 0));
    TTreeView::WndProc(message);
}

void TStructure::Change(TTreeNode* node) {
    TTreeView::Change(node);
    TComponent* const component = FShowing || !FDesigner || !node ? nullptr : ComponentOf(*node);
    if (!component) {
        return;
    }
    TDesignSelection selection;
    if (FAdding && component != &FDesigner->Form()) {
        selection = FDesigner->Selection();
        std::erase(selection, &FDesigner->Form());
        if (std::erase(selection, component) == 0) {
            selection.push_back(component);
        }
    }
    FDesigner->Select(selection.empty() ? TDesignSelection{component} : selection);
    UpdateSelection();
}

// --- Dragging

/// Empty where what is dragged cannot go.
std::optional<TStructure::TPlace> TStructure::PlaceAt(int x, int y) const {
    TTreeNode* const node = GetNodeAt(x, y);
    TComponent* const target = FDesigner && node ? ComponentOf(*node) : nullptr;
    if (!target) {
        return std::nullopt;
    }
    const auto can = [this](TComponent* parent, TComponent* before) {
        const std::vector<TComponent*> dragged = FDesigner->SelectedComponents();
        return parent && !dragged.empty() && std::ranges::find(dragged, before) == dragged.end() &&
               std::ranges::all_of(dragged,
                                   [&](TComponent* component) { return FDesigner->CanPlace(*component, *parent); });
    };
    const TRect row = node->DisplayRect(false);
    const int part = (y - row.Top) * 4 / std::max(kx::Height(row), 1); // a quarter is an edge
    TComponent* const parent = node->Parent() ? ComponentOf(*node->Parent()) : nullptr;
    const TPlace inside{node, TPlace::Inside, target, nullptr};
    const bool fitsInside = can(target, nullptr);
    if (part <= 0 && can(parent, target)) {
        return TPlace{node, TPlace::Before, parent, target};
    }
    if (fitsInside && (part < 3 || (node->Expanded() && node->Count() > 0))) {
        return inside;
    }
    TTreeNode* const following = node->GetNextSibling();
    if (TComponent* const next = following ? ComponentOf(*following) : nullptr; can(parent, next)) {
        return part < 2 ? TPlace{node, TPlace::Before, parent, target} : TPlace{node, TPlace::After, parent, next};
    }
    return fitsInside ? std::optional<TPlace>(inside) : std::nullopt;
}

/// A line for a place between components, the component's colour for one inside it.
void TStructure::ShowPlace(const std::optional<TPlace>& place) {
    SetDropTarget(place && place->Side == TPlace::Inside ? place->Node : nullptr);
    HTREEITEM item = nullptr;
    if (place && place->Side != TPlace::Inside) {
        const TRect row = place->Node->DisplayRect(true);
        TVHITTESTINFO hit{};
        hit.pt = {row.Left + 1, row.Top + 1};
        item =
            reinterpret_cast<HTREEITEM>(SendMessageA(WindowHandle(), TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
    }
    SendMessageA(WindowHandle(), TVM_SETINSERTMARK, place && place->Side == TPlace::After,
                 reinterpret_cast<LPARAM>(item));
}

void TStructure::DragOver(TObject* source, int x, int y, TDragState state, bool& accept) {
    const std::optional<TPlace> place = source == this ? PlaceAt(x, y) : std::nullopt;
    accept = place.has_value();
    ShowPlace(state == dsDragLeave ? std::nullopt : place);
}

void TStructure::DoEndDrag(TObject* target, int x, int y) {
    if (Outlives(*this, [&] { TTreeView::DoEndDrag(target, x, y); })) {
        ShowPlace(std::nullopt);
    }
}

void TStructure::DragDrop(TObject*, int x, int y) {
    const std::optional<TPlace> place = PlaceAt(x, y);
    ShowPlace(std::nullopt);
    if (!place) {
        return;
    }
    try {
        FDesigner->Place(FDesigner->SelectedComponents(), *place->Parent, place->Next);
    } catch (const std::exception& error) {
        FOnFailed(error.what());
    }
}

} // namespace kx::designer
