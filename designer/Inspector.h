// SPDX-License-Identifier: MIT
#pragma once

#include "designer/InspectorGrid.h"
#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ExtCtrls.h"

namespace kx::designer {

/// The inspector: the components to choose from, a filter, and the properties or events of what is selected.
class TInspector : public TPanel {
    KX_CLASS()

    explicit TInspector(TComponent* owner = nullptr);
    ~TInspector() override;

    void ShowSelection(TFormDesigner* designer); ///< Null shows nothing.
    void UpdateValues();
    TInspectorGrid& Grid() { return FGrid; }
    TComboBox& Components() { return FComponents; }
    TTabControl& Tabs() { return FTabs; }
    TEdit& Filter() { return FFilter; }

private:
    void FillComponents();
    void ShowHintOfRow();

    TFormDesigner* FDesigner = nullptr;
    TComboBox FComponents;
    TPanel FFilterRow;
    TLabel FFilterLabel;
    TEdit FFilter;
    TTabControl FTabs;
    TInspectorGrid FGrid;
    TPanel FHintPanel;
};

} // namespace kx::designer
