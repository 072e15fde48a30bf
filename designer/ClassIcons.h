// SPDX-License-Identifier: MIT
#pragma once

#include "kx/graphics/Graphics.h"

#include <string>

namespace kx::designer {

constexpr int ClassIconSize = 24;

/// Draws the picture of a class: the program's bitmap resource of the class's name in capital letters, whose lower left
/// pixel is transparent; without one, a picture of our own for the standard classes, else the first letters of the name
/// on a sheet. Null draws the arrow of the mouse.
void DrawClassIcon(TCanvas& canvas, const TRect& rect, const TClass* cls);

} // namespace kx::designer
