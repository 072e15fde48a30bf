// SPDX-License-Identifier: MIT
#pragma once

#include "kx/graphics/Graphics.h"
#include "kx/win/Themes.h"

#include <string>

// What controls that draw themselves have in common.

namespace kx {

/// The colour of a text on a part of a theme: `own`, that of the control's font, when the program has chosen one, else
/// the theme's.
TColor ThemedTextColor(TColor own, const TTheme& theme, int part, int state);

/// Draws the text of something disabled in the canvas's font: engraved in the classic way, else plain and gray, as it
/// has to be where a theme draws and where contrasts have to be strong. `format`: DT_ flags.
void DrawDisabledText(TCanvas& canvas, const std::string& text, const TRect& rect, UINT format, bool engraved);

} // namespace kx
