// SPDX-License-Identifier: MIT
// The inspector as a whole.

#include "designer/Inspector.h"

#include "designer/CollectionPaths.h"

namespace kx::designer {

const TClass& TInspector::StaticClass() {
    static const TClassBuilder<TInspector> cls("TInspector", TPanel::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

TInspector::TInspector(TComponent* owner) : TPanel(owner) {
    constexpr int lineHeight = 21;
    constexpr int tabHeight = 22;
    int top = 0;
    const auto place = [&](TControl& control, int height) {
        control.SetBounds(0, top, Width(), height);
        control.SetAlign(alTop);
        control.SetParent(this);
        top += height;
    };
    FComponents.SetStyle(csDropDownList);
    FComponents.SetDropDownCount(20);
    FComponents.SetHint("The component that is selected");
    place(FComponents, lineHeight);
    constexpr int labelWidth = 36;
    FFilterRow.SetBevelOuter(bvNone);
    place(FFilterRow, lineHeight);
    FFilterLabel.SetAutoSize(false);
    FFilterLabel.SetLayout(tlCenter);
    FFilterLabel.SetCaption(" Fi&lter");
    FFilterLabel.SetFocusControl(&FFilter);
    FFilterLabel.SetBounds(0, 0, labelWidth, lineHeight);
    FFilterLabel.SetAlign(alLeft);
    FFilterLabel.SetParent(&FFilterRow);
    FFilter.SetAlign(alClient);
    FFilter.SetParent(&FFilterRow);
    FFilter.SetHint("Show just the properties whose names contain this");
    place(FTabs, tabHeight);
    FTabs.Tabs().Add("Properties");
    FTabs.Tabs().Add("Events");
    FTabs.SetTabIndex(0);
    FHintPanel.SetBounds(0, Height() - lineHeight, Width(), lineHeight);
    FHintPanel.SetAlign(alBottom);
    FHintPanel.SetAlignment(taLeftJustify);
    FHintPanel.SetBevelOuter(bvLowered);
    FHintPanel.SetParent(this);
    FGrid.SetAlign(alClient);
    FGrid.SetParent(this);

    FComponents.SetOnChange([this](TObject*) {
        const int index = FComponents.ItemIndex();
        if (FDesigner && index >= 0) {
            const std::vector<TComponent*> all = FDesigner->AllComponents();
            if (index < static_cast<int>(all.size())) {
                FDesigner->SelectOne(*all[static_cast<size_t>(index)]);
            }
        }
    });
    FFilter.SetOnChange([this](TObject*) { FGrid.SetFilter(FFilter.Text()); });
    FTabs.SetOnChange([this](TObject*) { FGrid.SetShowsEvents(FTabs.TabIndex() == 1); });
    FGrid.SetOnRowSelected([this](TObject*) { ShowHintOfRow(); });
}

TInspector::~TInspector() {
    Destroying();
    FComponents.SetOnChange(nullptr);
    FFilter.SetOnChange(nullptr);
    FGrid.SetOnRowSelected(nullptr);
}

void TInspector::ShowSelection(TFormDesigner* designer) {
    FDesigner = designer;
    FillComponents();
    FGrid.ShowSelection(designer);
    ShowHintOfRow();
}

void TInspector::UpdateValues() {
    FillComponents();
    FGrid.UpdateValues();
}

/// One line for each component of the form; the selected one is chosen, none when there are several. An item of a
/// collection has a line as long as it is selected.
void TInspector::FillComponents() {
    TStringList lines;
    int chosen = -1;
    if (FDesigner) {
        const TDesignSelection selected = FDesigner->Selection();
        const TPersistent* const single = selected.size() == 1 ? selected.front() : nullptr;
        for (const TComponent* component : FDesigner->AllComponents()) {
            if (component == single) {
                chosen = lines.Count();
            }
            lines.Add(TitleOf(*FDesigner, *component));
        }
        if (single && chosen < 0) {
            chosen = lines.Add(TitleOf(*FDesigner, *single));
        }
    }
    if (!FComponents.Items().Equals(lines)) {
        FComponents.SetItems(lines);
    }
    FComponents.SetItemIndex(chosen);
}

void TInspector::ShowHintOfRow() {
    const int row = FGrid.SelectedRow();
    FHintPanel.SetCaption(row < 0 ? std::string() : " " + FGrid.RowHint(row));
}

} // namespace kx::designer
