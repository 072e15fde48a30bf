#pragma once

#include "designer/FormDesigner.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <string>
#include <vector>

namespace kx::designer {

/// The components of a form, each below the one that it is in. What is selected here is selected on the form, and the
/// other way round. Dragged onto another component, one moves into it; dropped beside one, it goes to its place.
class TStructure : public TListBox {
    KX_CLASS()

    explicit TStructure(TComponent* owner = nullptr);
    ~TStructure() override;

    void ShowForm(TFormDesigner* designer); ///< Null shows nothing.
    void UpdateSelection();
    /// The row of a component; -1 when it is not there.
    int RowOf(const std::string& name) const;

    void SetOnFailed(TEvent<void(const std::string& message)> value) { FOnFailed = std::move(value); }

protected:
    void Click() override;
    void DragOver(TObject* source, int x, int y, TDragState state, bool& accept) override;
    void DragDrop(TObject* source, int x, int y) override;

private:
    TFormDesigner* FDesigner = nullptr;
    std::vector<std::string> FNames; ///< Of the components, row by row.
    TEvent<void(const std::string&)> FOnFailed;
};

} // namespace kx::designer
