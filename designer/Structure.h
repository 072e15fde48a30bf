// SPDX-License-Identifier: MIT
#pragma once

#include "designer/FormDesigner.h"
#include "kx/ui/widgets/ComCtrlsTree.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace kx::designer {

/// The components of a form as a tree. What is selected here is selected on the form, and the other way round; Ctrl
/// adds and takes away. Dragged onto the middle of another component, one moves into it; onto its upper or lower edge,
/// in front of it or behind it.
class TStructure : public TTreeView {
    KX_CLASS()

    explicit TStructure(TComponent* owner = nullptr);
    ~TStructure() override;

    void ShowForm(TFormDesigner* designer); ///< Null shows nothing.
    void UpdateSelection();
    TTreeNode* NodeOf(const std::string& name); ///< Of a component; null when it is not there.

    void WndProc(TMessage& message) override;

    void SetOnFailed(TEvent<void(const std::string& message)> value) { FOnFailed = std::move(value); }

protected:
    void Change(TTreeNode* node) override;
    bool CanEdit(TTreeNode*) override { return false; }
    void DragOver(TObject* source, int x, int y, TDragState state, bool& accept) override;
    void DragDrop(TObject* source, int x, int y) override;
    void DoEndDrag(TObject* target, int x, int y) override;

private:
    struct TRow {
        std::string Name;
        std::string Text;
        int Level;
        bool operator==(const TRow&) const = default;
    };
    /// Where dragged components would go.
    struct TPlace {
        TTreeNode* Node; ///< What the mouse is at.
        enum TSide { Before, Inside, After } Side;
        TComponent* Parent;
        TComponent* Next; ///< The one behind them; null: they become the last.
    };

    std::vector<TRow> RowsOf(TFormDesigner& designer) const;
    void Fill();
    const std::string& NameOf(const TTreeNode& node) const;
    TComponent* ComponentOf(const TTreeNode& node) const;
    std::optional<TPlace> PlaceAt(int x, int y) const;
    void ShowPlace(const std::optional<TPlace>& place);
    void MarkSelected(const std::set<std::string>& names);

    TFormDesigner* FDesigner = nullptr;
    std::vector<TRow> FRows;
    bool FAdding = false;  ///< The user clicks with Ctrl.
    bool FShowing = false; ///< The tree follows the form: no choice of the user's.
    TEvent<void(const std::string&)> FOnFailed;
};

} // namespace kx::designer
