// SPDX-License-Identifier: MIT
// The form that a dialog is centred over.

#include "ReferenceForm.h"

namespace kx::gallery {

const TClass& TReferenceForm::StaticClass() {
    static const TClassBuilder<TReferenceForm> cls("TReferenceForm", TForm::StaticClass());
    return cls.Class();
}

TReferenceForm::TReferenceForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

} // namespace kx::gallery
