// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Windows.h"

#include <algorithm>

namespace kx::test {

/// Milliseconds of processor time that this process has taken so far, in steps of some ten. What else the machine does
/// meanwhile does not count.
inline double ProcessorTime() {
    FILETIME created;
    FILETIME exited;
    FILETIME kernel;
    FILETIME user;
    GetProcessTimes(GetCurrentProcess(), &created, &exited, &kernel, &user);
    const auto milliseconds = [](const FILETIME& time) {
        const ULARGE_INTEGER value = {{time.dwLowDateTime, time.dwHighDateTime}};
        return static_cast<double>(value.QuadPart) / 10'000;
    };
    return milliseconds(kernel) + milliseconds(user);
}

/// Milliseconds of processor time that `work` takes, the best of three.
template <class F> double Fastest(F&& work) {
    double best = 0;
    for (int turn = 0; turn < 3; ++turn) {
        const double begin = ProcessorTime();
        work();
        const double taken = ProcessorTime() - begin;
        best = turn == 0 ? taken : std::min(best, taken);
    }
    return best;
}

} // namespace kx::test
