// SPDX-License-Identifier: MIT
// Values of each thread, by the system's fiber-local storage, which calls back at a thread's end.

#include "kx/win/PerThread.h"

#include "kx/win/Module.h"
#include "kx/win/Windows.h"

namespace kx::detail {

static_assert(FLS_OUT_OF_INDEXES == 0xFFFFFFFF);

TThreadValue::~TThreadValue() {
    // A thread that ended after the unloading would call what is not there any more. At the end of a program other
    // threads may still use theirs.
    if (FIndex != NoIndex && IsInLibrary()) {
        FlsFree(FIndex);
    }
}

void* TThreadValue::Get() const {
    const DWORD index = FIndex;
    return index != NoIndex ? FlsGetValue(index) : nullptr;
}

void TThreadValue::Set(void* value) const {
    if (FIndex == NoIndex) {
        const DWORD fresh = FlsAlloc(FFree);
        DWORD before = NoIndex;
        if (!FIndex.compare_exchange_strong(before, fresh)) {
            FlsFree(fresh); // another thread was faster
        }
    }
    FlsSetValue(FIndex, value);
}

} // namespace kx::detail
