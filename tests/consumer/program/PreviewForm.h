// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"

class TPreviewForm : public kx::TForm {
    KX_CLASS()
    explicit TPreviewForm(kx::TComponent* owner);
    KX_FIELDS(TPreviewForm, (kx::TLabel, HeadingLabel))
};
