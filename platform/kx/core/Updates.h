// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

namespace kx {

/// Makes changes of a list between its BeginUpdate and EndUpdate, so that they are told as one. The update ends also
/// when a change throws; what those who are told throw then is dropped, else it comes out.
template <class T, class F> void AsOneUpdate(T& list, F&& changes) {
    list.BeginUpdate();
    try {
        std::forward<F>(changes)();
    } catch (...) {
        try {
            list.EndUpdate();
        } catch (...) {
            // The exception that led here is the one to tell.
        }
        throw;
    }
    list.EndUpdate();
}

} // namespace kx
