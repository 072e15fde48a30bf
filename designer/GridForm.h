// SPDX-License-Identifier: MIT
#pragma once

#include "designer/Snapping.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <string>

namespace kx::designer {

/// Asks for the grid of the forms. It does not close by OK before both lengths are right.
class TGridForm : public TForm {
    KX_CLASS()

    explicit TGridForm(TComponent* owner = nullptr);

    void SetGrid(const TDesignGrid& value);
    TDesignGrid Grid() const; ///< @throws EDesignError for a length that is no number, or too small or large.

    // --- Handlers

    void FormCloseQuery(TObject* sender, bool& canClose);

private:
    static int LengthIn(TEdit& edit, const std::string& name);

    KX_FIELDS(TGridForm, (TEdit, WidthEdit, HeightEdit), (TCheckBox, ShowCheck, SnapCheck))
};

} // namespace kx::designer
