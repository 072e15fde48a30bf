// SPDX-License-Identifier: MIT
#pragma once

#include "support/WindowTools.h"

#include <string>
#include <vector>

namespace kx::test {

/// A visible control of a dialog.
struct TPart {
    HWND Window;
    TRect Rect; ///< Of what it shows, in the dialog's client coordinates.
    std::string Name() const;
};

std::vector<TPart> VisibleParts(HWND dialog);

/// Every visible part of the dialog lies inside its client area, and none overlaps a docked form.
void ExpectCleanLayout(HWND dialog);

} // namespace kx::test
