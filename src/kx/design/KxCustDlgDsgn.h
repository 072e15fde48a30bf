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

    TPageControl* PageControl1 = nullptr;
    TTabSheet* TabSheet1 = nullptr; ///< The docked forms.
    TButton* Button1 = nullptr;     ///< Cancel
    TButton* Button2 = nullptr;     ///< OK
    TTabSheet* TabSheet3 = nullptr; ///< The preview.
    TButton* Button3 = nullptr;     ///< Shows the preview.
    TMemo* Memo1 = nullptr;
    TImage* Image1 = nullptr;
    TCheckBox* CheckBox1 = nullptr; ///< The preview changes the sizes of the designed forms.
    TPanel* Panel1 = nullptr;
    TComboBox* cbLeft = nullptr;
    TPanel* Panel2 = nullptr;
    TComboBox* cbTop = nullptr;
    TPanel* Panel3 = nullptr;
    TComboBox* cbRight = nullptr;
    TLabel* Label1 = nullptr;
    TPanel* Panel4 = nullptr;
    TComboBox* cbBottom = nullptr;
    TLabel* Label2 = nullptr;
    TPanel* Panel5 = nullptr;
    TLabel* Label3 = nullptr;
    TTabSheet* TabSheet2 = nullptr; ///< The position.
    TRadioGroup* rg1 = nullptr;     ///< The positions in the order of TKxDlgPosition.
    TPanel* Panel6 = nullptr;
    TLabel* Label4 = nullptr;
    TComboBox* cbForm = nullptr; ///< The form of dpFormCenter.
    TLabel* Label5 = nullptr;
    TLabel* Label7 = nullptr;
    TEdit* eX = nullptr;
    TEdit* eY = nullptr;
    TImage* img1 = nullptr; ///< Pictures of the positions, one over the other.
    TEdit* eTitle = nullptr;
    TLabel* Label8 = nullptr;
    TSpeedButton* SpeedButton5 = nullptr; ///< About
    TSpeedButton* SpeedButton6 = nullptr; ///< Opens the left form, ...
    TSpeedButton* SpeedButton7 = nullptr; ///< top, ...
    TSpeedButton* SpeedButton8 = nullptr; ///< right, ...
    TSpeedButton* SpeedButton9 = nullptr; ///< bottom.
    TLabel* Label6 = nullptr;
    TLabel* Label9 = nullptr;
    TCheckBox* chkFit = nullptr;
    TImage* img2 = nullptr;
    TImage* img3 = nullptr;
    TImage* img4 = nullptr;

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
