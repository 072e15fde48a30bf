// SPDX-License-Identifier: MIT
// Reports exceptions that leave a callback of the system.

#include "tests/guard/Guards.h"

#ifdef _WIN64

#include "tests/guard/Imports.h"
#include "tests/guard/Report.h"

#include <atomic>

namespace kx::guard {

namespace {

constexpr DWORD GccThrow = 0x20474343; ///< The code of the compiler's exceptions.
constexpr DWORD Unwinding = 2;         ///< EXCEPTION_UNWINDING: frames are left already.

/// An exception that was thrown and that nobody has offered to catch yet.
struct TThrow {
    std::atomic<DWORD> Thread;
    bool IsPending;
    uintptr_t Border; ///< Stack pointer of the first frame of the system above the throwing ones.
    TTrace Trace;
};

TThrow Throws[64]; ///< One for each thread that has ever thrown. More of them are not watched.
decltype(&RtlUnwindEx) SystemUnwind = nullptr;

TThrow* OfThisThread() {
    const DWORD thread = GetCurrentThreadId();
    for (TThrow& entry : Throws) {
        DWORD none = 0;
        if (entry.Thread == thread || entry.Thread.compare_exchange_strong(none, thread)) {
            return &entry;
        }
    }
    return nullptr;
}

/// 0 when the program's own frames reach up to where the walk ends.
uintptr_t BorderOf(const CONTEXT& context) {
    TStackWalk walk(context);
    bool inOurs = false; // what raises the exception lies in the system
    do {
        const bool ours = IsOurCode(walk.Address());
        // A thunk or another piece of code that belongs to no file is ours.
        if (inOurs && !ours && ModuleOf(walk.Address())) {
            return walk.StackPointer();
        }
        inOurs = inOurs || ours;
    } while (walk.Next());
    return 0;
}

/// The compiler's runtime, which raises an exception, is part of the module that throws. That of other libraries
/// catches too, and nobody watches it.
bool IsOfThisModule(const CONTEXT& context) {
    TStackWalk walk(context); // begins in the system
    return walk.Next() && IsOurCode(walk.Address());
}

/// The compiler's runtime calls it with the frame that catches, and again for each frame that cleans up.
void NTAPI Unwind(PVOID frame, PVOID address, PEXCEPTION_RECORD record, PVOID value, PCONTEXT context,
                  PUNWIND_HISTORY_TABLE history) {
    if (record && (record->ExceptionFlags & Unwinding) == 0) {
        TThrow* pending = OfThisThread();
        if (pending && pending->IsPending) {
            pending->IsPending = false;
            if (pending->Border != 0 && reinterpret_cast<uintptr_t>(frame) > pending->Border) {
                Report("exception left a callback: it is caught beyond frames of the system", pending->Trace);
            }
        }
    }
    SystemUnwind(frame, address, record, value, context, history);
}

} // namespace

void GuardThrows() {
    const TImport imports[] = {
        {"RtlUnwindEx", reinterpret_cast<void*>(Unwind), reinterpret_cast<void**>(&SystemUnwind)}};
    ReplaceImports(imports);
}

void NoteThrow(const EXCEPTION_POINTERS& exception) {
    if (exception.ExceptionRecord->ExceptionCode != GccThrow || !IsOfThisModule(*exception.ContextRecord)) {
        return;
    }
    CheckSwallowedThrow();
    if (TThrow* thrown = OfThisThread()) {
        thrown->Border = BorderOf(*exception.ContextRecord);
        thrown->Trace.Capture(*exception.ContextRecord);
        thrown->IsPending = true;
    }
}

void CheckSwallowedThrow() {
    TThrow* pending = OfThisThread();
    if (pending && pending->IsPending) {
        pending->IsPending = false;
        Report("exception left a callback: the system swallowed it", pending->Trace);
    }
}

} // namespace kx::guard

#else

namespace kx::guard {

void GuardThrows() {}
void NoteThrow(const EXCEPTION_POINTERS&) {}
void CheckSwallowedThrow() {}

} // namespace kx::guard

#endif
