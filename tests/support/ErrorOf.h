// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kx::test {

/// Message of the exception E that the action raises; "no error" when it raises none.
template <class E, class F> std::string ErrorOf(F&& action) {
    try {
        action();
    } catch (const E& error) {
        return error.Message();
    }
    return "no error";
}

} // namespace kx::test
