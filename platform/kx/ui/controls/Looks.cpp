// SPDX-License-Identifier: MIT
// What controls that draw themselves have in common.

#include "kx/ui/controls/Looks.h"

namespace kx {

TColor ThemedTextColor(TColor own, const TTheme& theme, int part, int state) {
    if (own != clWindowText) {
        return own;
    }
    return static_cast<TColor>(theme.TextColor(part, state, ColorToRGB(clBtnText)));
}

void DrawDisabledText(TCanvas& canvas, const std::string& text, const TRect& rect, UINT format, bool engraved) {
    canvas.Brush().SetStyle(bsClear);
    if (engraved) {
        TRect light{rect.Left + 1, rect.Top + 1, rect.Right + 1, rect.Bottom + 1};
        canvas.Font().SetColor(clBtnHighlight);
        canvas.DrawText(text, light, format);
    }
    TRect r = rect;
    canvas.Font().SetColor(engraved ? clBtnShadow : clGrayText);
    canvas.DrawText(text, r, format);
}

} // namespace kx
