// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"

namespace kx::gallery {

/// A window over which dialogs can be centred.
class TReferenceForm : public TForm {
    KX_CLASS()

    explicit TReferenceForm(TComponent* owner = nullptr);
};

inline TReferenceForm* ReferenceForm = nullptr;

} // namespace kx::gallery
