// SPDX-License-Identifier: MIT
#pragma once

#include "kx/graphics/Graphics.h"
#include "support/TempFolder.h"

#include <string>

namespace kx::test {

/// Colour of the icon of that number, which fills the icon.
TColor IconColor(int icon);

/// Makes a library of `count` icons of 32 x 32 pixels, whose colours are those from number `first` on, and returns its
/// full path.
std::string MakeIconLibrary(const TTempFolder& folder, const std::string& name, int count, int first = 0);

} // namespace kx::test
