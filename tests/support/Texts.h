// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Classes.h"

#include <string>
#include <vector>

namespace kx::test {

inline std::vector<std::string> TextsOf(const TStrings& strings) {
    std::vector<std::string> texts;
    for (int i = 0; i < strings.Count(); ++i) {
        texts.push_back(strings[i]);
    }
    return texts;
}

} // namespace kx::test
