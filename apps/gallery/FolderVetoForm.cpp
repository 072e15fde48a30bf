// The docked form in which the events of the folder dialog are refused.

#include "FolderVetoForm.h"

namespace kx::gallery {

const TClass& TFolderVetoForm::StaticClass() {
    static const TClassBuilder<TFolderVetoForm> cls("TFolderVetoForm", TForm::StaticClass(), [](auto& c) {
        c.Field("CloseBox", &TFolderVetoForm::CloseBox);
        c.Field("MoveBox", &TFolderVetoForm::MoveBox);
        c.Field("EmptyBox", &TFolderVetoForm::EmptyBox);
        c.Field("ChoiceBox", &TFolderVetoForm::ChoiceBox);
        c.Method("ChoiceBoxClick", &TFolderVetoForm::ChoiceBoxClick);
    });
    return cls.Class();
}

TFolderVetoForm::TFolderVetoForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

} // namespace kx::gallery
