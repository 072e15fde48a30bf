// SPDX-License-Identifier: MIT
// The docked form for what a program opens and in which way.

#include "AccessForm.h"

namespace kx::gallery {

const TClass& TAccessForm::StaticClass() {
    static const TClassBuilder<TAccessForm> cls(
        "TAccessForm", TForm::StaticClass(), [](auto& c) { c.Method("EncodingChange", &TAccessForm::EncodingChange); });
    return cls.Class();
}

TAccessForm::TAccessForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

void TAccessForm::EncodingChange(TObject*) {
    // The lines of the box stand in the order of the enumeration.
    FOnEncodingChange(static_cast<TEncoding>(EncodingCombo->ItemIndex()));
}

} // namespace kx::gallery
