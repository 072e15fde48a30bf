// The tree of a form's components.

#include "designer/Structure.h"

#include <algorithm>

namespace kx::designer {

const TClass& TStructure::StaticClass() {
    static const TClassBuilder<TStructure> cls("TStructure", TListBox::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

TStructure::TStructure(TComponent* owner) : TListBox(owner) {
    SetMultiSelect(true);
    SetDragMode(dmAutomatic);
}

TStructure::~TStructure() = default;

void TStructure::ShowForm(TFormDesigner* designer) {
    FDesigner = designer;
    TStringList rows;
    FNames.clear();
    if (designer) {
        for (const TComponent* component : designer->AllComponents()) {
            std::string indent;
            for (const TComponent* around = component; around != &designer->Form();) {
                indent += "      ";
                const TComponent* const parent = around->GetParentComponent();
                around = parent ? parent : &designer->Form();
            }
            FNames.push_back(component->Name());
            rows.Add(indent + component->Name() + ": " + component->FormClassName());
        }
    }
    if (!Items().Equals(rows)) {
        const int top = TopIndex();
        SetItems(rows);
        SetTopIndex(std::min(top, rows.Count()));
    }
    UpdateSelection();
}

int TStructure::RowOf(const std::string& name) const {
    const auto found = std::ranges::find(FNames, name);
    return found == FNames.end() ? -1 : static_cast<int>(found - FNames.begin());
}

void TStructure::UpdateSelection() {
    if (!FDesigner || !HandleAllocated()) {
        return;
    }
    std::vector<bool> wanted(FNames.size());
    for (const TComponent* component : FDesigner->SelectedComponents()) {
        const int row = RowOf(component->Name());
        if (row >= 0) {
            wanted[static_cast<size_t>(row)] = true;
        }
    }
    for (int i = 0; i < static_cast<int>(wanted.size()) && i < Items().Count(); ++i) {
        if (Selected(i) != wanted[static_cast<size_t>(i)]) {
            SetSelected(i, wanted[static_cast<size_t>(i)]);
        }
    }
}

void TStructure::Click() {
    TListBox::Click();
    if (!FDesigner) {
        return;
    }
    TDesignSelection selection;
    for (TComponent* component : FDesigner->AllComponents()) {
        const int row = RowOf(component->Name());
        if (row >= 0 && row < Items().Count() && Selected(row)) {
            selection.push_back(component);
        }
    }
    if (!selection.empty()) {
        FDesigner->Select(selection);
    }
}

void TStructure::DragOver(TObject* source, int x, int y, TDragState, bool& accept) {
    accept = source == this && FDesigner && ItemAtPos({x, y}) >= 0;
}

void TStructure::DragDrop(TObject*, int x, int y) {
    const int row = ItemAtPos({x, y});
    if (!FDesigner || row < 0) {
        return;
    }
    TComponent* target = &FDesigner->Form();
    if (row > 0) {
        target = FDesigner->Form().FindComponent(FNames[static_cast<size_t>(row)]);
    }
    for (TComponent* component : FDesigner->SelectedComponents()) {
        if (!target || component == target || component == &FDesigner->Form()) {
            continue;
        }
        TComponent* const parent = AcceptsControls(*target) ? target : target->GetParentComponent();
        try {
            FDesigner->MoveInto(*component, parent ? *parent : FDesigner->Form());
        } catch (const Exception& error) {
            FOnFailed(error.Message());
        }
    }
}

} // namespace kx::designer
