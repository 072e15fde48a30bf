// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Alive.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace kx {

/// Runs pieces of foreign code that may free what they are about, one after the other and only as long as all of
/// `alive` live. Tells whether they live on; a piece may use them without asking.
template <class... F> bool KxWhileAlive(std::initializer_list<TAlive> alive, F&&... pieces) {
    const auto live = [&] { return std::all_of(alive.begin(), alive.end(), [](const TAlive& a) { return bool(a); }); };
    return (... && (static_cast<void>(std::forward<F>(pieces)()), live()));
}

/// The same about one object that `TAlive` can be asked about.
template <class T, class... F> bool KxWhileAlive(const T& object, F&&... pieces) {
    return KxWhileAlive({TAlive(object)}, std::forward<F>(pieces)...);
}

} // namespace kx
