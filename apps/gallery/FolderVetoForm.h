// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx::gallery {

/// What the folder dialog refuses and shows, docked below it.
class TFolderVetoForm : public TForm {
    KX_CLASS()

    explicit TFolderVetoForm(TComponent* owner = nullptr);

    void SetOnChoiceClick(TNotifyEvent value) { FOnChoiceClick = std::move(value); }

    void ChoiceBoxClick(TObject*) { FOnChoiceClick(this); }

    KX_FIELDS(TFolderVetoForm, (TCheckBox, CloseBox, MoveBox, EmptyBox, ChoiceBox))

private:
    TNotifyEvent FOnChoiceClick;
};

inline TFolderVetoForm* FolderVetoForm = nullptr;

} // namespace kx::gallery
