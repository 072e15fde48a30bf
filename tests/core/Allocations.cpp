// SPDX-License-Identifier: MIT
// Counts what the program allocates.

#include "Allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<bool> Counting{false};
std::atomic<size_t> TotalBytes{0};
std::atomic<size_t> LargestBytes{0};

} // namespace

// The array forms call these; the standard library's temporary buffers use the one that returns null.
void* operator new(size_t size, const std::nothrow_t&) noexcept {
    if (Counting) {
        TotalBytes += size;
        if (size > LargestBytes) {
            LargestBytes = size;
        }
    }
    return std::malloc(size > 0 ? size : 1);
}

void* operator new(size_t size) {
    if (void* memory = operator new(size, std::nothrow)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }

namespace kx::sample {

TAllocations::TAllocations() {
    TotalBytes = 0;
    LargestBytes = 0;
    Counting = true;
}

TAllocations::~TAllocations() { Counting = false; }

size_t TAllocations::Total() const { return TotalBytes; }
size_t TAllocations::Largest() const { return LargestBytes; }

} // namespace kx::sample
