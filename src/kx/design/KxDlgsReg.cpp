// SPDX-License-Identifier: MIT
// Tells the form designer of the dialogs and their editors.

#include "kx/design/KxDlgsReg.h"

#include "kx/colorprint/KxColorDlg.h"
#include "kx/colorprint/KxPrintDlg.h"
#include "kx/core/Barrier.h"
#include "kx/design/KxCustDlgDsgn.h"
#include "kx/design/KxDsgnPreviewDummy.h"
#include "kx/design/KxPBarDsgnForm.h"
#include "kx/design/KxServices.h"
#include "kx/folder/KxFolderDlg.h"
#include "kx/frame/KxCustDlgParams.h"
#include "kx/ide/Palette.h"
#include "kx/modeless/KxModelessDlg.h"
#include "kx/opensave/KxOpenDlgEx.h"
#include "kx/opensave/KxOpenLite.h"
#include "kx/opensave/KxSaveDlg.h"
#include "kx/ui/dialogs/Dialogs.h"

#include <algorithm>

namespace kx {

namespace {

/// The places of an open or save dialog; null for other dialogs.
TKxPlaces* PlacesOf(TComponent& dialog) {
    auto* const fileDialog = dynamic_cast<TKxCustomOpenDialog*>(&dialog); // a save dialog is one too
    return fileDialog ? &fileDialog->PlacesBar().Places() : nullptr;
}

/// What follows the dialog designer, whether the user has confirmed it or not.
void AfterTemplateDesigner(TComponent& dialog, IDesigner& designer) {
    RefreshPlacesBarEditor(dialog);
    if (HasPlacesBar(dialog)) {
        designer.Modified();
    }
}

void OfferForms(const TComponent* exclude, const TPropertyEditor::TValueProc& proc) {
    TStringList names;
    GetProjectForms(GetActiveProject(), names, exclude);
    for (int i = 0; i < names.Count(); ++i) {
        proc(names[i]);
    }
}

} // namespace

// --- Property editors

void TKxPlacesProperty::Edit() {
    auto* const places = dynamic_cast<TKxPlaces*>(PropInfo().GetObj(Instance()));
    if (!places) {
        return;
    }
    if (TKxPBarEditFrm* const open = FindPlacesEditor(*places)) {
        open->Show();
        if (open->WindowState() == wsMinimized) {
            open->SetWindowState(wsNormal);
        }
        open->SetFocus(); // to bring it to the front does not make it the active one
        return;
    }
    auto* const editor = NewForm<TKxPBarEditFrm>(&Application());
    editor->StorageModule = Designer().Root();
    editor->SetPlaces(places);
    const auto* const options = dynamic_cast<TKxPlacesBarOptions*>(places->GetOwner());
    editor->SetCaption("Places of " + (options && options->Dlg() ? options->Dlg()->Name() : std::string()));
    editor->Prop = shared_from_this();
    editor->Show();
    editor->RefreshBar();
}

TPropertyAttributes TKxDlgParamsProperty::GetAttributes() const {
    return TClassProperty::GetAttributes() + TPropertyAttributes{paDialog, paAutoUpdate};
}

void TKxDlgParamsProperty::Edit() {
    auto* const params = dynamic_cast<TKxCustDlgParams*>(PropInfo().GetObj(Instance()));
    dlg.Set(params ? params->Dlg() : nullptr);
    if (!dlg) {
        return;
    }
    const auto keep = shared_from_this();
    if (ShowTemplateDesigner(*dlg.Get())) {
        Modified();
    }
    if (dlg) {
        AfterTemplateDesigner(*dlg.Get(), Designer());
    }
}

void TKxPrjFormsListProperty::GetValues(const TValueProc& proc) { OfferForms(nullptr, proc); }

void TKxPrjFormsListProperty2::GetValues(const TValueProc& proc) { OfferForms(Designer().Root(), proc); }

// --- The component editor

void TKxDlgParamsEditor::ExecuteVerb(int index) {
    if (index == 0) {
        TComponent& dialog = Component();
        IDesigner& designer = Designer(); // the editor may go with the dialog
        const TAlive alive(dialog);
        if (ShowTemplateDesigner(dialog)) {
            designer.Modified();
        }
        if (alive) {
            AfterTemplateDesigner(dialog, designer);
        }
    } else if (index == 1) {
        KxPreviewDummyFrm = NewForm<TKxPreviewDummyFrm>(nullptr);
        KxPreviewDummyFrm->SetDlg(&Component());
        KxPreviewDummyFrm->Show();
    }
}

std::string TKxDlgParamsEditor::GetVerb(int index) const {
    return index == 0 ? "Customize..." : index == 1 ? "Preview..." : "";
}

// --- The dialog designer

namespace {

struct TDesignedSide {
    TComboBox* TDlgDsgnForm::*Combo;
    const std::string& (TKxCustDlgParams::*Name)() const;
    void (TKxCustDlgParams::*SetName)(const std::string& value);
    bool (TKxCustDlgParams::*CanDock)() const;
};

using TDsgn = TDlgDsgnForm;
using TParams = TKxCustDlgParams;
constexpr TDesignedSide LeftSide{&TDsgn::cbLeft, &TParams::LeftFormName, &TParams::SetLeftPanel, &TParams::CanLeft};
constexpr TDesignedSide TopSide{&TDsgn::cbTop, &TParams::TopFormName, &TParams::SetTopPanel, &TParams::CanTop};
constexpr TDesignedSide RightSide{&TDsgn::cbRight, &TParams::RightFormName, &TParams::SetRightPanel,
                                  &TParams::CanRight};
constexpr TDesignedSide BottomSide{&TDsgn::cbBottom, &TParams::BottomFormName, &TParams::SetBottomPanel,
                                   &TParams::CanBottom};

void LoadDesigner(TDlgDsgnForm& form, TComponent& dialog, TKxCustDlgParams& params) {
    IProject* const project = GetActiveProject();
    for (const TDesignedSide& side : {LeftSide, TopSide, RightSide, BottomSide}) {
        GetProjectForms(project, (form.*side.Combo)->Items(), dialog.Owner());
    }
    GetProjectForms(project, form.cbForm->Items(), nullptr);
    for (const TDesignedSide& side : {TopSide, BottomSide, LeftSide, RightSide}) {
        (form.*side.Combo)->SetText((params.*side.Name)());
    }
    form.SetParams(&params);
    form.cbForm->SetText(params.PosParams().FormName());
    form.eX->SetText(IntToStr(params.PosParams().ShiftX()));
    form.eY->SetText(IntToStr(params.PosParams().ShiftY()));
    form.eTitle->SetText(KxGetDlgTitle(dialog));
    form.rg1->SetItemIndex(params.Position());
    form.chkFit->SetChecked(params.PosParams().FitToScreen());
    for (const TDesignedSide& side : {LeftSide, TopSide, RightSide, BottomSide}) {
        if (!(params.*side.CanDock)()) {
            (form.*side.Combo)->SetText("Not supported");
            (form.*side.Combo)->SetEnabled(false);
        }
    }
}

/// Sets a shift to what was typed. A text that is no number is told, and the old value stays; the dialog may go
/// meanwhile.
template <class T> void StoreShift(const std::string& text, const char* failure, T set) {
    try {
        set(text.empty() ? 0 : KxTextToShift(text));
    } catch (const Exception&) {
        ShowMessage(failure);
    }
}

/// False when the dialog has gone.
bool StoreDesigner(const TDlgDsgnForm& form, TComponent& dialog, TKxCustDlgParams& params) {
    const TAlive alive(dialog);
    for (const TDesignedSide& side : {TopSide, BottomSide, LeftSide, RightSide}) {
        (params.*side.SetName)((form.*side.Combo)->Text());
    }
    TKxPosParams& details = params.PosParams();
    details.SetFormName(form.cbForm->Text());
    params.SetPosition(static_cast<TKxDlgPosition>(
        std::clamp(form.rg1->ItemIndex(), static_cast<int>(dpDefault), static_cast<int>(dpFormCenter))));
    // Deliberate: "Cound", where one would expect "Could".
    StoreShift(form.eX->Text(), "Cound not set ShiftX", [&](int value) { details.SetShiftX(value); });
    if (alive) {
        StoreShift(form.eY->Text(), "Cound not set ShiftY", [&](int value) { details.SetShiftY(value); });
    }
    if (alive) {
        details.SetFitToScreen(form.chkFit->Checked());
        KxSetDlgTitle(dialog, form.eTitle->Text());
    }
    return static_cast<bool>(alive);
}

} // namespace

bool ShowTemplateDesigner(TComponent& dialog) {
    const TAlive alive(dialog);
    TKxCustDlgParams& params = KxGetDlgParams(dialog);
    const std::unique_ptr<TDlgDsgnForm, TFreeDeleter> form(NewForm<TDlgDsgnForm>(&Application()));
    LoadDesigner(*form, dialog, params);
    return form->ShowModal() == mrOk && alive && StoreDesigner(*form, dialog, params);
}

bool HasPlacesBar(TComponent& dialog) { return PlacesOf(dialog) != nullptr; }

void RefreshPlacesBarEditor(TComponent& dialog) {
    const TKxPlaces* const places = PlacesOf(dialog);
    TKxPBarEditFrm* const editor = places ? FindPlacesEditor(*places) : nullptr;
    if (editor) {
        editor->RefreshBar();
    }
}

// --- Registration

void KxDlgsReg::Register() {
    for (const TClass* cls :
         {&TKxOpenDialog::StaticClass(), &TKxOpenLiteDialog::StaticClass(), &TKxSaveLiteDialog::StaticClass(),
          &TKxOpenDialogEx::StaticClass(), &TKxSaveDialog::StaticClass(), &TKxPrintDialog::StaticClass(),
          &TKxFolderDialog::StaticClass(), &TKxColorDialog::StaticClass(), &TKxModelessDialog::StaticClass()}) {
        RegisterComponents("Dialogs", {cls});
    }
    RegisterHeader("kx/opensave/KxOpenDlg.h", {&TKxOpenDialog::StaticClass()});
    RegisterHeader("kx/opensave/KxOpenDlgEx.h", {&TKxOpenDialogEx::StaticClass()});
    RegisterHeader("kx/opensave/KxSaveDlg.h", {&TKxSaveDialog::StaticClass()});
    RegisterHeader("kx/opensave/KxOpenLite.h", {&TKxOpenLiteDialog::StaticClass(), &TKxSaveLiteDialog::StaticClass()});
    RegisterHeader("kx/colorprint/KxPrintDlg.h", {&TKxPrintDialog::StaticClass()});
    RegisterHeader("kx/colorprint/KxColorDlg.h", {&TKxColorDialog::StaticClass()});
    RegisterHeader("kx/folder/KxFolderDlg.h", {&TKxFolderDialog::StaticClass()});
    RegisterHeader("kx/modeless/KxModelessDlg.h", {&TKxModelessDialog::StaticClass()});
    RegisterPropertyEditor(TKxCustDlgParams::StaticClass(), nullptr, {}, MakePropertyEditor<TKxDlgParamsProperty>);
    for (const char* name : {"TopFormName", "LeftFormName", "BottomFormName", "RightFormName", "CustFormName"}) {
        RegisterPropertyEditor("string", &TKxCustDlgParams::StaticClass(), name,
                               MakePropertyEditor<TKxPrjFormsListProperty2>);
    }
    RegisterPropertyEditor("string", &TKxPosParams::StaticClass(), "FormName",
                           MakePropertyEditor<TKxPrjFormsListProperty>);
    RegisterPropertyEditor(TKxPlaces::StaticClass(), &TKxPlacesBarOptions::StaticClass(), "Places",
                           MakePropertyEditor<TKxPlacesProperty>);
    for (const TClass* cls : {&TKxCustomOpenDialog::StaticClass(), &TKxCustomOpenLiteDialog::StaticClass()}) {
        RegisterPropertyEditor("set of TOpenOptionEx", cls, "OptionsEx", HiddenProperty);
    }
    for (const TClass* cls :
         {&TKxOpenDialog::StaticClass(), &TKxSaveDialog::StaticClass(), &TKxOpenLiteDialog::StaticClass(),
          &TKxSaveLiteDialog::StaticClass(), &TKxPrintDialog::StaticClass(), &TKxFolderDialog::StaticClass(),
          &TKxColorDialog::StaticClass(), &TKxOpenDialogEx::StaticClass()}) {
        RegisterComponentEditor<TKxDlgParamsEditor>(*cls);
    }
}

} // namespace kx
