// SPDX-License-Identifier: MIT
#pragma once

#include "tests/guard/StackWalk.h"

namespace kx::guard {

/// By which function memory is taken; it has to be given back by the one that belongs to it.
enum class TBlockKind : uint8_t { Malloc, New, ArrayNew };

/// What the page heap knows of a block.
struct TBlock {
    enum class TState : uint8_t { Unused, Live, Freed };

    TBlock* Next; ///< Freed after this one, of the same number of pages.
    char* Address;
    size_t Size;
    uint32_t Pages; ///< That hold data; one more before them can never be touched.
    TState State;
    TBlockKind Kind;
    TTrace Allocated;
    TTrace Freed; ///< Empty while the block lives.
};

struct TLiveBlocks {
    size_t Blocks;
    size_t Bytes;
};

constexpr size_t AnySize = SIZE_MAX;

/// Memory that ends at a page which cannot be touched, behind another such page; as a freed block cannot. Those are
/// used again, the oldest first, when there are many of them or no fresh pages left. Null when there is no room: the
/// page heap is bounded.
void* Allocate(size_t size, size_t alignment, TBlockKind kind);
/// False: it is no memory of the page heap. Memory that is given back twice, by the wrong function or with a wrong size
/// is reported, and so is one that was written before its begin or behind its end.
bool Release(void* memory, TBlockKind kind, size_t size = AnySize);
/// `memory` is a live block of the page heap.
bool IsLive(const void* memory);
size_t SizeOf(const void* memory);

/// The block at the address, or next to it, when it is in the page heap.
const TBlock* BlockNear(const void* address);
TLiveBlocks LiveBlocks();
/// Reports live blocks that were written before their begin or behind their end.
void CheckLiveBlocks();
/// How often there was no room.
size_t Refusals();

const char* NameOf(TBlockKind kind);

} // namespace kx::guard
