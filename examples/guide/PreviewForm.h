// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <string>

namespace guide {

using namespace kx;

// [preview class]
class TPreviewForm : public TForm {
    KX_CLASS()

    explicit TPreviewForm(TComponent* owner);

    /// Shows a drawing. False, and nothing is shown, when the file is none.
    bool ShowFile(const std::string& fileName);

private:
    KX_FIELDS(TPreviewForm, (TImage, DrawingImage), (TLabel, NameLabel))
};

inline TPreviewForm* PreviewForm = nullptr;
// [preview class]

} // namespace guide
