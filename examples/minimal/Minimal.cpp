// SPDX-License-Identifier: MIT
// The system's open dialog with a form of the program docked to its right side.

#include "kx/opensave/KxOpenLite.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <windows.h>

using namespace kx;

class TPreviewForm : public TForm {
    KX_CLASS()
    explicit TPreviewForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); } // from PreviewForm.dfm
    KX_FIELDS(TPreviewForm, (TLabel, NameLabel))
};

const TClass& TPreviewForm::StaticClass() {
    static const TClassBuilder<TPreviewForm> cls("TPreviewForm", TForm::StaticClass());
    return cls.Class();
}

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    TPreviewForm* preview = nullptr;
    Application().CreateForm(&preview);
    TKxOpenLiteDialog dialog(&Application());
    dialog.CustDlgParams().SetPosition(dpScrCenter);
    dialog.CustDlgParams().SetRightFormName("PreviewForm");
    dialog.SetOnSelectionChange([&](TObject*) { preview->NameLabel->SetCaption(dialog.SelectedFiles()); });
    if (dialog.Execute()) {
        ShowMessage(dialog.FileName());
    }
    return 0;
}
