// SPDX-License-Identifier: MIT
// Reports access violations with our code on the stack, though the system swallows them.

#include "tests/guard/Guards.h"

#include "tests/guard/PageHeap.h"
#include "tests/guard/Report.h"

#include <algorithm>
#include <cstdio>
#include <exception>

namespace kx::guard {

namespace {

DWORD BusySlot = TLS_OUT_OF_INDEXES; ///< Of this thread's storage: its handler is at work.
std::terminate_handler PreviousTerminate = nullptr;

const char* HardFault(DWORD code) {
    switch (code) {
    case EXCEPTION_ACCESS_VIOLATION: return "access violation";
    case EXCEPTION_IN_PAGE_ERROR: return "page that cannot be read";
    case EXCEPTION_STACK_OVERFLOW: return "stack overflow";
    case EXCEPTION_ILLEGAL_INSTRUCTION: return "illegal instruction";
    case EXCEPTION_PRIV_INSTRUCTION: return "privileged instruction";
    case EXCEPTION_INT_DIVIDE_BY_ZERO: return "division by zero";
    case EXCEPTION_INT_OVERFLOW: return "overflow of a division";
    case EXCEPTION_DATATYPE_MISALIGNMENT: return "misaligned access";
    case EXCEPTION_ARRAY_BOUNDS_EXCEEDED: return "index out of bounds";
    case EXCEPTION_NONCONTINUABLE_EXCEPTION: return "going on behind a fatal exception";
    case 0xC0000374: return "damaged heap"; // STATUS_HEAP_CORRUPTION
    default: return nullptr;
    }
}

const char* AccessOf(ULONG_PTR kind) { return kind == 0 ? "read" : kind == 1 ? "write" : "execution"; }

void DescribeAccess(const EXCEPTION_RECORD& record, const TBlock* block, char (&text)[200]) {
    const ULONG_PTR address = record.ExceptionInformation[1];
    const char* access = AccessOf(record.ExceptionInformation[0]);
    if (!block) {
        std::snprintf(text, sizeof(text), "access violation: %s at 0x%zx", access, static_cast<size_t>(address));
        return;
    }
    const auto offset = static_cast<ptrdiff_t>(address - reinterpret_cast<ULONG_PTR>(block->Address));
    const bool inside = offset >= 0 && static_cast<size_t>(offset) < std::max<size_t>(block->Size, 1);
    std::snprintf(text, sizeof(text), "%s: %s at byte %td of a %sblock of %zu bytes taken by %s",
                  inside ? "use of a freed block" : "access outside of a block", access, offset,
                  block->State == TBlock::TState::Freed ? "freed " : "", block->Size, NameOf(block->Kind));
}

void ReportFault(const EXCEPTION_POINTERS& exception, const char* name) {
    const EXCEPTION_RECORD& record = *exception.ExceptionRecord;
    const bool isAccess = record.ExceptionCode == EXCEPTION_ACCESS_VIOLATION && record.NumberParameters >= 2;
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    const TBlock* block = isAccess ? BlockNear(reinterpret_cast<void*>(record.ExceptionInformation[1])) : nullptr;
    TTrace trace;
    trace.Capture(*exception.ContextRecord);
    bool ours = block != nullptr;
    TStackWalk walk(*exception.ContextRecord);
    do {
        ours = ours || IsOurCode(walk.Address());
    } while (!ours && walk.Next());
    if (!ours) {
        return;
    }
    char text[200];
    if (isAccess) {
        DescribeAccess(record, block, text);
    } else {
        std::snprintf(text, sizeof(text), "%s", name);
    }
    Report(text, trace, block);
}

LONG CALLBACK OnException(EXCEPTION_POINTERS* exception) {
    const TKeepLastError keep;
    if (TlsGetValue(BusySlot)) {
        return EXCEPTION_CONTINUE_SEARCH;
    }
    TlsSetValue(BusySlot, &BusySlot);
    NoteThrow(*exception);
    if (const char* name = HardFault(exception->ExceptionRecord->ExceptionCode)) {
        ReportFault(*exception, name);
    }
    TlsSetValue(BusySlot, nullptr);
    return EXCEPTION_CONTINUE_SEARCH;
}

void OnTerminate() {
    TTrace trace;
    trace.Capture(0);
    Report("terminate: an exception that nobody catches, or that left a callback or a noexcept function", trace);
    if (PreviousTerminate) {
        PreviousTerminate();
    }
}

} // namespace

void GuardFaults() {
    BusySlot = TlsAlloc();
    AddVectoredExceptionHandler(1, OnException);
    PreviousTerminate = std::set_terminate(OnTerminate);
}

} // namespace kx::guard
