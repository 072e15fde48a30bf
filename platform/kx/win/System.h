// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

namespace kx {

/// What the library has to know of the system that it runs on. Everything that asks for it asks here.
struct TSystem {
    /// The program runs under Wine, whose dialogs are made like those of Windows but behave otherwise here and there.
    bool Wine = false;
    /// The line of systems, 2 for NT, and the version in it, as far as the system tells. All are 0 when it cannot be
    /// read.
    unsigned Platform = 2;
    unsigned Major = 6;
    unsigned Minor = 1;
    /// The process may make code at run time. Its makers, or the administrator, can have Windows forbid it.
    bool DynamicCode = true;
};

/// The system as it is, or as a TAssumedSystem says.
const TSystem& System();

/// The address of a function of a system library that is loaded; null where the system does not have it.
void* FindSystemFunction(const char* library, const char* name);

/// The same as a function of type `F`.
template <class F> F SystemFunction(const char* library, const char* name) {
    return reinterpret_cast<F>(FindSystemFunction(library, name));
}

/// For tests: while this lives, the library takes the system for `assumed`. Made and destroyed while no dialog is
/// shown.
class TAssumedSystem {
public:
    explicit TAssumedSystem(const TSystem& assumed);
    TAssumedSystem(const TAssumedSystem&) = delete;
    TAssumedSystem& operator=(const TAssumedSystem&) = delete;
    ~TAssumedSystem();

private:
    std::optional<TSystem> FBefore;
};

} // namespace kx
