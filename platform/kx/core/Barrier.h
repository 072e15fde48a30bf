// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

namespace kx {

/// Who is told of an exception that cannot go on to a caller; it finds it in std::current_exception. The highest floor
/// of a program installs it. Null: nobody is told.
using TExceptionSink = void (*)();
void SetExceptionSink(TExceptionSink sink) noexcept;

/// Hands the exception that is being handled to the sink: the application's OnException, else a message box. For `catch
/// (...)` of a callback or a destructor only; never throws.
void ReportException() noexcept;

/// Runs `f` inside a system callback: an exception ends here, is handed to the application, and `fallback` is the
/// callback's answer. No exception may pass through the system: on 32 bits that ends the program.
template <class R, class F> R Guarded(R fallback, F&& f) noexcept {
    try {
        return std::forward<F>(f)();
    } catch (...) {
        ReportException();
        return fallback;
    }
}

/// The same for work without a result, and for what a destructor has others do: an exception that leaves it ends the
/// program.
template <class F> void Guarded(F&& f) noexcept {
    try {
        std::forward<F>(f)();
    } catch (...) {
        ReportException();
    }
}

} // namespace kx
