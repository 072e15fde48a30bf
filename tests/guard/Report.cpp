// SPDX-License-Identifier: MIT
// Prints what a guard has found.

#include "tests/guard/Report.h"

#include "tests/guard/PageHeap.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace kx::guard {

namespace {

constexpr size_t MostTold = 30; ///< Whoever has so many faults knows.

std::atomic<long> Count;
char RunningTest[200] = "no test";
SRWLOCK ReportLock = SRWLOCK_INIT;
uintptr_t ToldKeys[MostTold]; ///< Of each fault told something like a hash of its stack.
size_t ToldCount = 0;

[[gnu::format(gnu_printf, 1, 2)]] void Print(const char* format, ...) {
    static char line[600]; // under the lock
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(line, sizeof(line), format, arguments);
    va_end(arguments);
    DWORD written = 0;
    const auto size = static_cast<size_t>(length < 0 ? 0 : length);
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), line, static_cast<DWORD>(size < sizeof(line) ? size : sizeof(line) - 1),
              &written, nullptr);
}

uintptr_t KeyOf(const char* what, const TTrace& access) {
    uintptr_t key = static_cast<unsigned char>(what[0]);
    for (size_t i = 0; i < access.Count && i < 6; ++i) {
        key = key * 31 + reinterpret_cast<uintptr_t>(access.Frames[i]);
    }
    return key;
}

bool IsNew(uintptr_t key) {
    for (size_t i = 0; i < ToldCount; ++i) {
        if (ToldKeys[i] == key) {
            return false;
        }
    }
    if (ToldCount == MostTold) {
        return false;
    }
    ToldKeys[ToldCount++] = key;
    return true;
}

/// The name that a library gives itself. Asking the system would take the loader's lock.
const char* NameOf(const char* module) {
    if (IsOurCode(module)) {
        return "program";
    }
    const auto* headers =
        reinterpret_cast<const IMAGE_NT_HEADERS*>(module + reinterpret_cast<const IMAGE_DOS_HEADER*>(module)->e_lfanew);
    const DWORD exports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress;
    return exports == 0 ? "unnamed" : module + reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(module + exports)->Name;
}

void PrintTrace(const char* title, const TTrace& trace) {
    Print("guard:   %s:\n", title);
    for (void* frame : trace.All()) {
        if (const char* module = ModuleOf(frame)) {
            Print("guard:     %s+0x%zx\n", NameOf(module),
                  static_cast<size_t>(static_cast<const char*>(frame) - module));
        } else {
            Print("guard:     %p\n", frame);
        }
    }
}

} // namespace

void Report(const char* what, const TTrace& access, const TBlock* block) {
    const TKeepLastError keep;
    ++Count;
    AcquireSRWLockExclusive(&ReportLock);
    if (IsNew(KeyOf(what, access))) {
        Print("guard: %s\n", what);
        Print("guard:   in %s, thread %lx\n", RunningTest, GetCurrentThreadId());
        PrintTrace("by", access);
        if (block) {
            PrintTrace("allocated by", block->Allocated);
        }
        if (block && block->Freed.Count > 0) {
            PrintTrace("freed by", block->Freed);
        }
        Print("guard: end\n");
    }
    ReleaseSRWLockExclusive(&ReportLock);
}

long Reports() { return Count; }

void SetRunningTest(const char* name) {
    AcquireSRWLockExclusive(&ReportLock);
    std::strncpy(RunningTest, name, sizeof(RunningTest) - 1);
    ReleaseSRWLockExclusive(&ReportLock);
}

} // namespace kx::guard
