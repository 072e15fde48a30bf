// SPDX-License-Identifier: MIT
// The program's allocations go through the page heap.

#include "tests/guard/Guards.h"

#include "tests/guard/Imports.h"
#include "tests/guard/PageHeap.h"
#include "tests/guard/Report.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <malloc.h>
#include <new>

// The functions by which the program takes and gives back memory. What the page heap has no room for comes from the
// system's heap, and what it does not know goes there. Memory that the system hands out itself is not seen here.

namespace kx::guard {

namespace {

constexpr size_t MallocAlignment = 2 * sizeof(void*);

using TMalloc = void*(__cdecl*)(size_t);
using TRealloc = void*(__cdecl*)(void*, size_t);
using TFree = void(__cdecl*)(void*);

TFree SystemFree = nullptr;
TRealloc SystemRealloc = nullptr;
TMalloc SystemMalloc = nullptr;
void* Unused = nullptr;
bool Guarded = false;

template <class F> F FromRuntime(const char* name) {
    return reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("msvcrt.dll"), name)));
}

/// Memory may be asked for before anything of the guard has begun.
void FindSystem() {
    if (!SystemFree) {
        SystemMalloc = FromRuntime<TMalloc>("malloc");
        SystemRealloc = FromRuntime<TRealloc>("realloc");
        SystemFree = FromRuntime<TFree>("free");
    }
}

bool IsOfSystem(void* memory) { return HeapValidate(reinterpret_cast<HANDLE>(_get_heap_handle()), 0, memory) != 0; }

[[gnu::noinline]] void* Take(size_t size, TBlockKind kind) {
    void* memory = Guarded ? Allocate(size, MallocAlignment, kind) : nullptr;
    if (!memory) {
        FindSystem();
        memory = SystemMalloc(size);
    }
    return memory;
}

[[gnu::noinline]] void GiveBack(void* memory, TBlockKind kind, size_t size = AnySize) {
    if (!memory || Release(memory, kind, size)) {
        return;
    }
    if (!IsOfSystem(memory)) {
        char text[200];
        std::snprintf(text, sizeof(text), "foreign pointer: %p, which is no block, is given back to %s", memory,
                      NameOf(kind));
        TTrace trace;
        trace.Capture(0);
        Report(text, trace);
        return;
    }
    FindSystem();
    SystemFree(memory);
}

void* TakeNew(size_t size, TBlockKind kind) {
    void* memory = Take(size, kind);
    if (!memory) {
        throw std::bad_alloc();
    }
    return memory;
}

void* TakeAligned(size_t size, std::align_val_t alignment, TBlockKind kind) {
    const size_t larger = std::max(static_cast<size_t>(alignment), MallocAlignment);
    void* memory = Guarded ? Allocate(size, larger, kind) : nullptr;
    if (!memory) {
        memory = _aligned_malloc(size, static_cast<size_t>(alignment));
    }
    return memory;
}

void* TakeNewAligned(size_t size, std::align_val_t alignment, TBlockKind kind) {
    void* memory = TakeAligned(size, alignment, kind);
    if (!memory) {
        throw std::bad_alloc();
    }
    return memory;
}

void GiveBackAligned(void* memory, TBlockKind kind, size_t size = AnySize) {
    if (memory && !Release(memory, kind, size)) {
        _aligned_free(memory);
    }
}

void* __cdecl Malloc(size_t size) { return Take(size, TBlockKind::Malloc); }

void* __cdecl Calloc(size_t count, size_t size) {
    if (size != 0 && count > SIZE_MAX / size) {
        return nullptr;
    }
    void* memory = Take(count * size, TBlockKind::Malloc);
    return memory ? std::memset(memory, 0, count * size) : nullptr;
}

void __cdecl Free(void* memory) { GiveBack(memory, TBlockKind::Malloc); }

void* __cdecl Realloc(void* memory, size_t size) {
    if (!memory) {
        return Take(size, TBlockKind::Malloc);
    }
    if (!IsLive(memory) && IsOfSystem(memory)) {
        FindSystem();
        return SystemRealloc(memory, size);
    }
    if (size == 0 || !IsLive(memory)) { // what is no block is reported there
        GiveBack(memory, TBlockKind::Malloc);
        return nullptr;
    }
    void* moved = Take(size, TBlockKind::Malloc);
    if (moved) {
        std::memcpy(moved, memory, std::min(size, SizeOf(memory)));
        GiveBack(memory, TBlockKind::Malloc);
    }
    return moved;
}

} // namespace

void GuardHeap() {
    FindSystem();
    const TImport imports[] = {
        {"malloc", reinterpret_cast<void*>(Malloc), &Unused},
        {"calloc", reinterpret_cast<void*>(Calloc), &Unused},
        {"realloc", reinterpret_cast<void*>(Realloc), &Unused},
        {"free", reinterpret_cast<void*>(Free), &Unused},
    };
    ReplaceImports(imports);
    Guarded = true;
}

} // namespace kx::guard

using kx::guard::GiveBack;
using kx::guard::GiveBackAligned;
using kx::guard::Take;
using kx::guard::TakeAligned;
using kx::guard::TakeNew;
using kx::guard::TakeNewAligned;
using enum kx::guard::TBlockKind;

void* operator new(size_t size) { return TakeNew(size, New); }
void* operator new[](size_t size) { return TakeNew(size, ArrayNew); }
void* operator new(size_t size, const std::nothrow_t&) noexcept { return Take(size, New); }
void* operator new[](size_t size, const std::nothrow_t&) noexcept { return Take(size, ArrayNew); }
void* operator new(size_t size, std::align_val_t alignment) { return TakeNewAligned(size, alignment, New); }
void* operator new[](size_t size, std::align_val_t alignment) { return TakeNewAligned(size, alignment, ArrayNew); }
void* operator new(size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return TakeAligned(size, alignment, New);
}
void* operator new[](size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return TakeAligned(size, alignment, ArrayNew);
}

void operator delete(void* memory) noexcept { GiveBack(memory, New); }
void operator delete[](void* memory) noexcept { GiveBack(memory, ArrayNew); }
void operator delete(void* memory, size_t size) noexcept { GiveBack(memory, New, size); }
void operator delete[](void* memory, size_t size) noexcept { GiveBack(memory, ArrayNew, size); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { GiveBack(memory, New); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { GiveBack(memory, ArrayNew); }
void operator delete(void* memory, std::align_val_t) noexcept { GiveBackAligned(memory, New); }
void operator delete[](void* memory, std::align_val_t) noexcept { GiveBackAligned(memory, ArrayNew); }
void operator delete(void* memory, size_t size, std::align_val_t) noexcept { GiveBackAligned(memory, New, size); }
void operator delete[](void* memory, size_t size, std::align_val_t) noexcept {
    GiveBackAligned(memory, ArrayNew, size);
}
void operator delete(void* memory, std::align_val_t, const std::nothrow_t&) noexcept { GiveBackAligned(memory, New); }
void operator delete[](void* memory, std::align_val_t, const std::nothrow_t&) noexcept {
    GiveBackAligned(memory, ArrayNew);
}
