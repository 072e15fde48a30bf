// SPDX-License-Identifier: MIT
#pragma once

#include "designer/DesignedForm.h"

#include <string>

namespace kx::designer {

/// Shows a form as a program would, without its handlers, on a screen of so many dots per inch. The form is the
/// caller's; closed by the user, it hides.
/// @throws EReadError and others for a form that cannot be read
TForm* MakeRunningForm(const std::string& state, int dotsPerInch, const TAncestorFiles& ancestors = {});

} // namespace kx::designer
