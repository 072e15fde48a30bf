// SPDX-License-Identifier: MIT
// A form that is docked into the dialog; what is on it comes from PreviewForm.dfm.

#include "PreviewForm.h"

TPreviewForm::TPreviewForm(kx::TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

const kx::TClass& TPreviewForm::StaticClass() {
    static const kx::TClassBuilder<TPreviewForm> cls("TPreviewForm", TForm::StaticClass());
    return cls.Class();
}
