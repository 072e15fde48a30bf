// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/Menus.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace guide {

using namespace kx;

// [options class]
class TOptionsForm : public TForm {
    KX_CLASS()

    explicit TOptionsForm(TComponent* owner);

    TNotifyEvent OnOpenAs; ///< An item of the menu was chosen.

    KX_FIELDS(TOptionsForm, (TCheckBox, CopyBox), (TPopupMenu, OpenMenu))

private:
    void CopyItemClick(TObject* sender);
};
// [options class]

inline TOptionsForm* OptionsForm = nullptr;

} // namespace guide
