// SPDX-License-Identifier: MIT
#pragma once

#include "designer/FormDesigner.h"
#include "kx/core/Collections.h"
#include "kx/core/ComponentRef.h"
#include "kx/ide/DesignWindows.h"
#include "kx/ide/StockEditors.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <functional>
#include <string>
#include <vector>

namespace kx::designer {

/// The window in which the items of a collection are added, deleted and put into order. It stays open beside the form:
/// the item that is chosen here shows in the inspector, and what is done to the form elsewhere shows here. It closes
/// when the component or the form goes.
class TCollectionForm : public TDesignWindow {
    KX_CLASS()

    explicit TCollectionForm(TComponent* owner = nullptr);

    /// Shows a collection that a component of the form publishes; one that is shown already comes to the front.
    static void Edit(TFormDesigner& designer, const TCollection& collection);

    TListBox& Items() const { return *ItemList; }

    // --- Handlers

    void ItemListClick(TObject* sender);
    void AddButtonClick(TObject* sender);
    void DeleteButtonClick(TObject* sender);
    void UpButtonClick(TObject*) { Move(-1); }
    void DownButtonClick(TObject*) { Move(1); }
    void FormKeyDown(TObject* sender, uint16_t& key, TShiftState shift);
    void FormClose(TObject* sender, TCloseAction& action);

    void CreateParams(TCreateParams& params) override;

protected:
    void ItemDeleted(IDesigner& designer, TPersistent& item) override;
    void ItemsModified(IDesigner& designer) override;
    void SelectionChanged(IDesigner& designer, const TDesignSelection& selection) override;
    void DesignerClosed(IDesigner& designer, bool goingDormant) override;

private:
    bool Shows(const TCollection& collection) const { return FCollection == &collection; }
    bool Find();
    void GiveUp();
    void Refresh();
    void UpdateButtons();
    std::vector<int> Chosen() const;
    std::vector<int> SelectedInDesigner() const;
    void Choose(const std::vector<int>& indices);
    bool Do(const char* what, const std::function<void(TCollection& items)>& change);
    void Move(int by);

    KX_FIELDS(TCollectionForm, (TListBox, ItemList), (TButton, AddButton, DeleteButton, UpButton, DownButton))

    TFormDesigner* FDesigner = nullptr;
    TComponentRef<TComponent> FComponent; ///< None while another form takes the place of the one before.
    TCollection* FCollection = nullptr;
    std::string FComponentName;
    std::string FPath;              ///< Of the collection in its component, ".Panels".
    std::vector<int> FChosenBefore; ///< In the form that another one has replaced.
};

/// A collection: "..." opens a window with its items.
class TCollectionProperty : public TClassProperty {
public:
    using TClassProperty::TClassProperty;
    TPropertyAttributes GetAttributes() const override { return {paDialog, paReadOnly}; }
    std::string GetValue() const override; ///< "(3 items)"
    void Edit() override;
};

/// Registers these, and the command of components that publish collections.
void RegisterCollectionEditor();

} // namespace kx::designer
