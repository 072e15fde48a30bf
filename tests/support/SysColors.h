// SPDX-License-Identifier: MIT
#pragma once

#include "kx/graphics/Graphics.h"

#include <vector>

namespace kx::test {

/// Other system colours for the length of a scope, all different from each other and from what pictures have.
class TSysColors {
public:
    TSysColors() {
        for (const int index : Indices) {
            FOld.push_back(GetSysColor(index));
        }
        const COLORREF colors[] = {0xB0C0D0, 0xF0E0FF, 0x506070};
        SetSysColors(3, Indices, colors);
    }
    TSysColors(const TSysColors&) = delete;
    TSysColors& operator=(const TSysColors&) = delete;
    ~TSysColors() { SetSysColors(3, Indices, FOld.data()); }

private:
    static constexpr int Indices[] = {COLOR_BTNFACE, COLOR_BTNHIGHLIGHT, COLOR_BTNSHADOW};
    std::vector<COLORREF> FOld;
};

} // namespace kx::test
