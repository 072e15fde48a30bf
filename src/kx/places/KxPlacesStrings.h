// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace kx {

/// Texts of the places bar that are kept as resources of the program.
enum TKxPlacesString : uint16_t {
    SKxFileWithoutIcons = 65520,
    SKxIconFileFilter = 65521,
    SKxIconFileTitle = 65522,
    SKxConfirmPlaceDelete = 65523,
    SKxPlaceUnreachable = 65524
};

/// The text in the process's code page; empty when the program lacks it.
std::string LoadPlacesString(TKxPlacesString id);

} // namespace kx
