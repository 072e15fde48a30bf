// SPDX-License-Identifier: MIT
// The texts of the places' forms and menus.

#include "kx/places/KxPlacesStrings.h"

#include "kx/win/Windows.h"

#include <array>

namespace kx {

std::string LoadPlacesString(TKxPlacesString id) {
    std::array<char, 512> text{};
    const int length = LoadStringA(HInstance(), id, text.data(), static_cast<int>(text.size()));
    return {text.data(), static_cast<size_t>(length)};
}

} // namespace kx
