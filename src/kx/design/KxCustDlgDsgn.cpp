// SPDX-License-Identifier: MIT
// The dialog designer.

#include "kx/design/KxCustDlgDsgn.h"

#include "kx/core/Barrier.h"
#include "kx/design/KxServices.h"
#include "kx/frame/KxCustDlgParams.h"
#include "kx/ui/dialogs/Dialogs.h"

#include <algorithm>
#include <array>
#include <exception>

namespace kx {

const TClass& TDlgDsgnForm::StaticClass() {
    using T = TDlgDsgnForm;
    static const TClassBuilder<T> cls("TDlgDsgnForm", TForm::StaticClass(), [](auto& c) {
        c.Method("FormCreate", &T::FormCreate);
        c.Method("rg1Click", &T::rg1Click);
        c.Method("SpeedButton5Click", &T::SpeedButton5Click);
        c.Method("SpeedButton6Click", &T::SpeedButton6Click);
        c.Method("SpeedButton7Click", &T::SpeedButton7Click);
        c.Method("SpeedButton8Click", &T::SpeedButton8Click);
        c.Method("SpeedButton9Click", &T::SpeedButton9Click);
        c.Method("Button3Click", &T::Button3Click);
    });
    return cls.Class();
}

TDlgDsgnForm::TDlgDsgnForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

void TDlgDsgnForm::SetParams(TKxCustDlgParams* value) {
    if (FDialog) {
        RemoveFreeNotification(FDialog);
    }
    FParams = value;
    FDialog = value ? value->Dlg() : nullptr;
    if (FDialog) {
        FreeNotification(FDialog);
    }
}

void TDlgDsgnForm::Notification(TComponent* component, TOperation operation) {
    TForm::Notification(component, operation);
    if (operation == opRemove && component == FDialog) {
        FParams = nullptr;
        FDialog = nullptr;
        Close();
    }
}

void TDlgDsgnForm::FormCreate(TObject*) { rg1->SetItemIndex(0); }

void TDlgDsgnForm::rg1Click(TObject*) {
    const int index = rg1->ItemIndex();
    const std::array<TImage*, 5> pictures = {img1, img2, img3, img4, img2};
    if (index >= 0 && index < static_cast<int>(pictures.size())) {
        pictures[static_cast<size_t>(index)]->BringToFront();
    }
    const bool byForm = index == dpFormCenter;
    cbForm->SetEnabled(byForm);
    if (byForm && PageControl1->ActivePage() == TabSheet2 && cbForm->Text().empty()) {
        cbForm->SetDroppedDown(true);
    }
}

void TDlgDsgnForm::SpeedButton5Click(TObject*) {
    ShowMessage("Dialog Designer\n\nDocks forms to the dialogs of the system, and places them.");
}

void TDlgDsgnForm::SpeedButton6Click(TObject*) { OpenForm(*cbLeft); }
void TDlgDsgnForm::SpeedButton7Click(TObject*) { OpenForm(*cbTop); }
void TDlgDsgnForm::SpeedButton8Click(TObject*) { OpenForm(*cbRight); }
void TDlgDsgnForm::SpeedButton9Click(TObject*) { OpenForm(*cbBottom); }

/// Goes to the form in the form designer, and closes this window without storing anything.
void TDlgDsgnForm::OpenForm(const TComboBox& combo) {
    IProject* const project = GetActiveProject();
    const std::string name = combo.Text();
    const int count = project && !name.empty() ? project->ModuleCount() : 0;
    for (int i = 0; i < count; ++i) {
        IModule& module = project->Module(i);
        if (SameText(module.FormName(), name)) {
            module.Open();
            Close();
            for (int editor = 0; editor < module.EditorCount(); ++editor) {
                module.Editor(editor).Show();
            }
            return;
        }
    }
}

int KxTextToShift(const std::string& text) {
    const int64_t value = StrToInt(text);
    if (value < INT32_MIN || value > INT32_MAX) {
        throw EConvertError(Format("'%s' is not a valid integer value", {text}));
    }
    return static_cast<int>(value);
}

void TDlgDsgnForm::Button3Click(TObject*) {
    if (FParams) {
        const int shiftX = KxTextToShift(eX->Text()); // before anything changes
        const int shiftY = KxTextToShift(eY->Text());
        Preview(shiftX, shiftY);
    }
}

/// Shows the dialog with what is chosen here, and then gives the parameters back what they had.
void TDlgDsgnForm::Preview(int shiftX, int shiftY) {
    TKxCustDlgParams& params = *FParams;
    TKxPosParams& details = params.PosParams();
    const TKxDlgPosition position = params.Position();
    const bool fit = details.FitToScreen();
    const TPoint shift{details.ShiftX(), details.ShiftY()};
    const TAlive paramsAlive(params);
    const TAlive alive(*this);
    std::exception_ptr error; // kept until everything is as it was
    try {
        const auto shown = static_cast<TKxDlgPosition>(std::max(rg1->ItemIndex(), 0));
        // The form that the dialog would be centred over is not shown here.
        params.SetPosition(shown == dpFormCenter ? dpScrCenter : shown);
        details.SetFitToScreen(chkFit->Checked());
        details.SetShiftX(shiftX);
        details.SetShiftY(shiftY);
        Hide();
        KxPreviewDialog(*FDialog, cbLeft->Text(), cbTop->Text(), cbRight->Text(), cbBottom->Text(),
                        CheckBox1->Checked());
    } catch (...) {
        error = std::current_exception();
    }
    if (alive && FParams) {
        constexpr int heightAfterPreview = 300;
        SetHeight(heightAfterPreview);
        Show();
    }
    if (paramsAlive) {
        params.SetPosition(position);
        details.SetFitToScreen(fit);
        details.SetShiftX(shift.X);
        details.SetShiftY(shift.Y);
    }
    if (error) {
        std::rethrow_exception(error);
    }
}

} // namespace kx
