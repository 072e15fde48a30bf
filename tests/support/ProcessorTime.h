#pragma once

#include "kx/win/Windows.h"

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

} // namespace kx::test
