// SPDX-License-Identifier: MIT
// The form with a note that is docked into a dialog.

#include "NoteForm.h"

namespace kx::gallery {

const TClass& TNoteForm::StaticClass() {
    static const TClassBuilder<TNoteForm> cls("TNoteForm", TForm::StaticClass());
    return cls.Class();
}

TNoteForm::TNoteForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

} // namespace kx::gallery
