// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/win/Windows.h"

namespace kx::test {

/// A form whose window has the system's layout from right to left.
class TMirroredForm : public TForm {
public:
    using TForm::TForm;
    void CreateParams(TCreateParams& params) override {
        TForm::CreateParams(params);
        params.ExStyle |= WS_EX_LAYOUTRTL;
    }
};

} // namespace kx::test
