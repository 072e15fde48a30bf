// SPDX-License-Identifier: MIT
#pragma once

#include <span>

namespace kx::guard {

/// A function of the system that this program calls, and what it shall call instead.
struct TImport {
    const char* Name;
    void* Replacement;
    void** Original; ///< Is set to the system's function when the program imports it.
};

/// Replaces entries of the program's import table. So all calls from its own code are seen, those of libraries linked
/// into it included, and none that the system's libraries make.
void ReplaceImports(std::span<const TImport> imports);

} // namespace kx::guard
