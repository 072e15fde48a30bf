// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/ComponentRef.h"
#include "kx/ide/ComponentEditors.h"
#include "kx/ide/StockEditors.h"

namespace kx {

/// The places of a places bar: "..." opens their editor.
class TKxPlacesProperty : public TClassProperty {
public:
    using TClassProperty::TClassProperty;
    TPropertyAttributes GetAttributes() const override { return {paDialog, paAutoUpdate}; }
    void Edit() override;
};

/// The parameters of a dialog: "..." opens the dialog designer.
class TKxDlgParamsProperty : public TClassProperty {
public:
    using TClassProperty::TClassProperty;
    TPropertyAttributes GetAttributes() const override;
    void Edit() override;

private:
    TComponentRef<TComponent> dlg; ///< The dialog that is edited; empty when it has gone.
};

/// Buttons of a tool bar. Not used.
class TKxTBButtonsProperty : public TClassProperty {
public:
    using TClassProperty::TClassProperty;
};

/// The name of a form of the project.
class TKxPrjFormsListProperty : public TStringProperty {
public:
    using TStringProperty::TStringProperty;
    TPropertyAttributes GetAttributes() const override { return {paValueList}; }
    void GetValues(const TValueProc& proc) override;
};

/// The same without the form that is being designed: it cannot be docked to a dialog of its own.
class TKxPrjFormsListProperty2 : public TKxPrjFormsListProperty {
public:
    using TKxPrjFormsListProperty::TKxPrjFormsListProperty;
    void GetValues(const TValueProc& proc) override;
};

/// What the user can do with a dialog component: customize and preview it.
class TKxDlgParamsEditor : public TComponentEditor {
public:
    using TComponentEditor::TComponentEditor;
    void ExecuteVerb(int index) override;
    std::string GetVerb(int index) const override;
    int GetVerbCount() const override { return 2; }
};

/// Lets the user change the dialog in the dialog designer. True when he has confirmed it and the dialog has changed.
bool ShowTemplateDesigner(TComponent& dialog);
/// The dialog is an open or save dialog with a places bar.
bool HasPlacesBar(TComponent& dialog);
/// The open editor of the dialog's places, if there is one, makes its bar anew.
void RefreshPlacesBarEditor(TComponent& dialog);

namespace KxDlgsReg {

/// Tells the form designer of the library's dialogs and their editors.
void Register();

} // namespace KxDlgsReg

} // namespace kx
