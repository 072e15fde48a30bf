// The dialog designer.

#include "kx/design/KxCustDlgDsgn.h"

#include "kx/core/Barrier.h"
#include "kx/design/KxServices.h"
#include "kx/frame/KxCustDlgParams.h"
#include "kx/ui/dialogs/Dialogs.h"

#include <array>
#include <exception>

namespace kx {

const TClass& TDlgDsgnForm::StaticClass() {
    using T = TDlgDsgnForm;
    static const TClassBuilder<T> cls("TDlgDsgnForm", TForm::StaticClass(), [](auto& c) {
        c.Field("PageControl1", &T::PageControl1);
        c.Field("TabSheet1", &T::TabSheet1);
        c.Field("Button1", &T::Button1);
        c.Field("Button2", &T::Button2);
        c.Field("TabSheet3", &T::TabSheet3);
        c.Field("Button3", &T::Button3);
        c.Field("Memo1", &T::Memo1);
        c.Field("Image1", &T::Image1);
        c.Field("CheckBox1", &T::CheckBox1);
        c.Field("Panel1", &T::Panel1);
        c.Field("cbLeft", &T::cbLeft);
        c.Field("Panel2", &T::Panel2);
        c.Field("cbTop", &T::cbTop);
        c.Field("Panel3", &T::Panel3);
        c.Field("cbRight", &T::cbRight);
        c.Field("Label1", &T::Label1);
        c.Field("Panel4", &T::Panel4);
        c.Field("cbBottom", &T::cbBottom);
        c.Field("Label2", &T::Label2);
        c.Field("Panel5", &T::Panel5);
        c.Field("Label3", &T::Label3);
        c.Field("TabSheet2", &T::TabSheet2);
        c.Field("rg1", &T::rg1);
        c.Field("Panel6", &T::Panel6);
        c.Field("Label4", &T::Label4);
        c.Field("cbForm", &T::cbForm);
        c.Field("Label5", &T::Label5);
        c.Field("Label7", &T::Label7);
        c.Field("eX", &T::eX);
        c.Field("eY", &T::eY);
        c.Field("img1", &T::img1);
        c.Field("eTitle", &T::eTitle);
        c.Field("Label8", &T::Label8);
        c.Field("SpeedButton5", &T::SpeedButton5);
        c.Field("SpeedButton6", &T::SpeedButton6);
        c.Field("SpeedButton7", &T::SpeedButton7);
        c.Field("SpeedButton8", &T::SpeedButton8);
        c.Field("SpeedButton9", &T::SpeedButton9);
        c.Field("Label6", &T::Label6);
        c.Field("Label9", &T::Label9);
        c.Field("chkFit", &T::chkFit);
        c.Field("img2", &T::img2);
        c.Field("img3", &T::img3);
        c.Field("img4", &T::img4);
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
