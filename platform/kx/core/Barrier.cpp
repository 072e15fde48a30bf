// SPDX-License-Identifier: MIT
// Exceptions that cannot go on to a caller.

#include "kx/core/Barrier.h"

#include <atomic>

namespace kx {

namespace {

std::atomic<TExceptionSink> Sink{nullptr};

} // namespace

void SetExceptionSink(TExceptionSink sink) noexcept { Sink = sink; }

void ReportException() noexcept {
    try {
        if (const TExceptionSink sink = Sink) {
            sink();
        }
    } catch (...) {
        // The handler of exceptions failed itself. There is nobody left to tell.
    }
}

} // namespace kx
