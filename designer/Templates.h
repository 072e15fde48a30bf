// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kx::designer {

enum class TFormTemplate {
    Window, ///< A plain one.
    Dialog, ///< With OK and Cancel.
    Docked  ///< Without a frame, for a side of a dialog.
};

/// The text of a new form in a file of that name: "PreviewForm.dfm" holds PreviewForm of class TPreviewForm.
/// @throws EDesignError when the name gives no identifier.
std::string NewFormText(const std::string& fileName, TFormTemplate kind = TFormTemplate::Window);

} // namespace kx::designer
