// SPDX-License-Identifier: MIT
#pragma once

namespace kx::designer {

/// Puts the components of the framework on the palette, with the editors of their properties. Once, at the start.
void RegisterStandardPackage();

} // namespace kx::designer
