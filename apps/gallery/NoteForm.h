// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx::gallery {

/// A note beside the files: what is typed into it arrives whole, in whatever script.
class TNoteForm : public TForm {
    KX_CLASS()

    explicit TNoteForm(TComponent* owner = nullptr);

    KX_FIELDS(TNoteForm, (TMemo, NoteMemo), (TLabel, FileLabel))
};

inline TNoteForm* NoteForm = nullptr;

} // namespace kx::gallery
