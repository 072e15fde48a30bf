#pragma once

#include <string>

namespace kx::designer {

/// The text of a new form in a file of that name: "PreviewForm.dfm" holds PreviewForm of class TPreviewForm.
/// @throws EDesignError when the name gives no identifier.
std::string NewFormText(const std::string& fileName);

} // namespace kx::designer
