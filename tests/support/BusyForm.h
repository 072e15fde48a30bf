// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <initializer_list>

namespace kx::test {

/// A form for docking with two edits and a button.
class TBusyForm : public TForm {
public:
    TBusyForm() : TForm(nullptr), First(new TEdit(this)), Second(new TEdit(this)), Button(new TButton(this)) {
        SetBounds(20, 20, 110, 90);
        int top = 2;
        for (TWinControl* const control : std::initializer_list<TWinControl*>{First, Second, Button}) {
            control->SetParent(this);
            control->SetBounds(2, top, 100, 24);
            top += 26;
        }
    }

    TEdit* First;
    TEdit* Second;
    TButton* Button;
};

} // namespace kx::test
