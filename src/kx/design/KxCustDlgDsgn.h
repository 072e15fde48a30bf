// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ComCtrlsPages.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/ExtCtrlsRadioGroup.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <cstdint>
#include <string>

namespace kx {

class TKxCustDlgParams;

/// The dialog designer: which forms are docked to a dialog, where it shows, and its title. `ShowTemplateDesigner` fills
/// it and stores what the user has confirmed; the form itself changes nothing for good.
class TDlgDsgnForm : public TForm {
    KX_CLASS()

    explicit TDlgDsgnForm(TComponent* owner = nullptr);

    // --- Components, owned by the form

    KX_FIELDS(TDlgDsgnForm, (TPageControl, PageControl1),
              (TTabSheet, TabSheet1 /* The docked forms. */, TabSheet3 /* The preview. */,
               TabSheet2 /* The position. */),
              (TButton, Button1 /* Cancel */, Button2 /* OK */, Button3 /* Shows the preview. */), (TMemo, Memo1),
              (TImage, Image1, img1 /* Pictures of the positions, one over the other. */, img2, img3, img4),
              (TCheckBox, CheckBox1 /* The preview changes the sizes of the designed forms. */, chkFit),
              (TPanel, Panel1, Panel2, Panel3, Panel4, Panel5, Panel6),
              (TComboBox, cbLeft, cbTop, cbRight, cbBottom, cbForm /* The form of dpFormCenter. */),
              (TLabel, Label1, Label2, Label3, Label4, Label5, Label7, Label8, Label6, Label9),
              (TRadioGroup, rg1 /* The positions in the order of TKxDlgPosition. */), (TEdit, eX, eY, eTitle),
              (TSpeedButton, SpeedButton5 /* About */, SpeedButton6 /* Opens the left form, ... */,
               SpeedButton7 /* top, ... */, SpeedButton8 /* right, ... */, SpeedButton9 /* bottom. */))

    int32_t OrdVal = 0; ///< Not used.
    /// The parameters that are edited; not owned. Null when their dialog has gone: then the window closes.
    TKxCustDlgParams* Params() const { return FParams; }
    void SetParams(TKxCustDlgParams* value);

    // --- Handlers

    void FormCreate(TObject* sender);
    void rg1Click(TObject* sender);
    void SpeedButton5Click(TObject* sender);
    void SpeedButton6Click(TObject* sender);
    void SpeedButton7Click(TObject* sender);
    void SpeedButton8Click(TObject* sender);
    void SpeedButton9Click(TObject* sender);
    /// Shows the dialog with what is chosen here. @throws EConvertError for a shift that is no number
    void Button3Click(TObject* sender);

protected:
    void Notification(TComponent* component, TOperation operation) override;

private:
    void OpenForm(const TComboBox& combo);
    void Preview(int shiftX, int shiftY);

    TKxCustDlgParams* FParams = nullptr;
    TComponent* FDialog = nullptr; ///< That owns the parameters.
};

/// The pixels that the text of a shift means. @throws EConvertError for a text that is no number, or too large a one
int KxTextToShift(const std::string& text);

} // namespace kx
