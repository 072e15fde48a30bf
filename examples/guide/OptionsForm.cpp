// SPDX-License-Identifier: MIT
// What can be chosen for the drawing, below the dialog's file list.

#include "OptionsForm.h"

namespace guide {

// [options code]
const TClass& TOptionsForm::StaticClass() {
    static const TClassBuilder<TOptionsForm> cls("TOptionsForm", TForm::StaticClass(), [](auto& c) {
        c.Method("CopyItemClick", &TOptionsForm::CopyItemClick); // OnClick = CopyItemClick in the form file
    });
    return cls.Class();
}

TOptionsForm::TOptionsForm(TComponent* owner) : TForm(owner) {
    RegisterClasses<TMenuItem>(); // in the form file, but not among the fields
    InitForm(*this, StaticClass());
}

void TOptionsForm::CopyItemClick(TObject* sender) {
    CopyBox->SetChecked(true);
    OnOpenAs(sender);
}
// [options code]

} // namespace guide
