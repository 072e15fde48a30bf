// SPDX-License-Identifier: MIT
// The docked form in which the kinds of files to be shown are chosen.

#include "KindsForm.h"

#include "TextFiles.h"

namespace kx::gallery {

const TClass& TKindsForm::StaticClass() {
    static const TClassBuilder<TKindsForm> cls("TKindsForm", TForm::StaticClass(),
                                               [](auto& c) { c.Method("BoxClick", &TKindsForm::BoxClick); });
    return cls.Class();
}

TKindsForm::TKindsForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

bool TKindsForm::Shows(const std::string& fileName) const {
    switch (KindOf(fileName)) {
    case TFileKind::Picture: return PicturesBox->Checked();
    case TFileKind::Text: return TextsBox->Checked();
    case TFileKind::Other: break;
    }
    return OthersBox->Checked();
}

} // namespace kx::gallery
