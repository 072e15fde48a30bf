// SPDX-License-Identifier: MIT
#pragma once

#include "tests/guard/StackWalk.h"

namespace kx::guard {

struct TBlock;

/// Tells a fault on the error output: the running test, `what`, the stack of the access and, where a block of the heap
/// is concerned, those of its allocation and freeing. A fault told before is only counted. Takes no memory, so that it
/// can be called from anywhere; the addresses are named by tools/wine-run when the program has ended.
void Report(const char* what, const TTrace& access, const TBlock* block = nullptr);

/// How many faults there were so far, those told before included.
long Reports();

/// `name` is copied.
void SetRunningTest(const char* name);

/// Keeps the calling thread's last error, which the guard's own calls would change.
class TKeepLastError {
public:
    TKeepLastError() = default;
    TKeepLastError(const TKeepLastError&) = delete;
    TKeepLastError& operator=(const TKeepLastError&) = delete;
    ~TKeepLastError() { SetLastError(FError); }

private:
    DWORD FError = GetLastError();
};

} // namespace kx::guard
