// SPDX-License-Identifier: MIT
// Values of each thread, by the system's fiber-local storage, which calls back at a thread's end.

#include "kx/win/PerThread.h"

#include "kx/win/Module.h"
#include "kx/win/Windows.h"

namespace kx::detail {

TThreadValue::TThreadValue(TFree free) : FIndex(FlsAlloc(free)) {}

TThreadValue::~TThreadValue() {
    // A thread that ended after the unloading would call what is not there any more. At the end of a program other
    // threads may still use theirs.
    if (IsInLibrary()) {
        FlsFree(FIndex);
    }
}

void* TThreadValue::Get() const { return FlsGetValue(FIndex); }

void TThreadValue::Set(void* value) const { FlsSetValue(FIndex, value); }

} // namespace kx::detail
