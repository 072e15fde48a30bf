// SPDX-License-Identifier: MIT
// The docked form in which the events of the folder dialog are refused.

#include "FolderVetoForm.h"

namespace kx::gallery {

const TClass& TFolderVetoForm::StaticClass() {
    static const TClassBuilder<TFolderVetoForm> cls("TFolderVetoForm", TForm::StaticClass(), [](auto& c) {
        c.Method("ChoiceBoxClick", &TFolderVetoForm::ChoiceBoxClick);
    });
    return cls.Class();
}

TFolderVetoForm::TFolderVetoForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

} // namespace kx::gallery
