// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

namespace kx::designer {

/// The whole program: registers the components of the framework and then those of `packages`, shows the designer with
/// what the command line names, and runs until it is closed. The result is the program's.
int RunDesigner(const std::vector<void (*)()>& packages);

} // namespace kx::designer
