#pragma once

#include <utility>

namespace kx {

/// Hands the exception that is being handled to the application (its OnException, else a message box). For `catch
/// (...)` of a callback only; never throws.
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

/// The same for work without a result.
template <class F> void Guarded(F&& f) noexcept {
    try {
        std::forward<F>(f)();
    } catch (...) {
        ReportException();
    }
}

} // namespace kx
