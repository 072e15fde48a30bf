// SPDX-License-Identifier: MIT
// A heap whose freed blocks cannot be touched.

#include "tests/guard/PageHeap.h"

#include "tests/guard/Report.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace kx::guard {

namespace {

constexpr size_t PageSize = 4096;
constexpr size_t ArenaSize = sizeof(void*) == 8 ? size_t{4} << 30 : size_t{640} << 20;
/// Each live block is a mapping of its own between two others, and the kernel under Wine gives a process 65530.
constexpr size_t MostLive = 24'000;
/// A page that is kept out of reach and let in again takes less than half the time of a fresh one. A freed block stays
/// out of reach until so many are live or freed.
constexpr size_t MostKept = 28'000;
constexpr size_t MarkedBefore = 64;   ///< Bytes before a block that are looked at when it is freed.
constexpr unsigned char Mark = 0xB5;  ///< Around a block, in its pages.
constexpr unsigned char Fresh = 0xCD; ///< In a new block, as far as it is small.
constexpr size_t MostFilled = 4096;
constexpr size_t MostPagesKept = 4;
constexpr size_t Classes = 16; ///< Blocks of more pages than that wait together.

struct TQueue {
    TBlock* First = nullptr;
    TBlock* Last = nullptr;
};

SRWLOCK Lock = SRWLOCK_INIT;
char* Arena = nullptr;
TBlock* Blocks = nullptr; ///< A block whose first page has the number n is found at n / 2: no block has less than two.
size_t PagesTotal = 0;
size_t PagesUsed = 0;
TQueue Waiting[Classes + 1]; ///< Freed blocks by their number of pages, the oldest first.
size_t WaitingBlocks = 0;
TLiveBlocks Live = {};
size_t Refused = 0;

class TLocked {
public:
    TLocked() { AcquireSRWLockExclusive(&Lock); }
    TLocked(const TLocked&) = delete;
    TLocked& operator=(const TLocked&) = delete;
    ~TLocked() { ReleaseSRWLockExclusive(&Lock); }
};

char* Reserve(size_t size) { return static_cast<char*>(VirtualAlloc(nullptr, size, MEM_RESERVE, PAGE_NOACCESS)); }

/// Half of it, and half of that, will do where the address space is in pieces.
bool HasArena() {
    for (size_t size = ArenaSize; !Arena && size >= ArenaSize / 8; size /= 2) {
        Arena = Reserve(size);
        PagesTotal = size / PageSize;
    }
    if (Arena && !Blocks) {
        const size_t records = (PagesTotal / 2 + 1) * sizeof(TBlock);
        Blocks = static_cast<TBlock*>(VirtualAlloc(nullptr, records, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
    }
    return Blocks;
}

bool InArena(const void* address) {
    return Arena && static_cast<size_t>(static_cast<const char*>(address) - Arena) < PagesTotal * PageSize;
}

size_t PageOf(const void* address) { return static_cast<size_t>(static_cast<const char*>(address) - Arena) / PageSize; }

char* DataOf(const TBlock& block) {
    // A block begins in the first of its data pages.
    return Arena + PageOf(block.Address) * PageSize;
}

TBlock* TakeFresh(size_t pages, char*& data) {
    if (PagesUsed + 1 + pages + 1 > PagesTotal) { // the last page stays behind the last block
        return nullptr;
    }
    TBlock* block = Blocks + PagesUsed / 2;
    data = Arena + (PagesUsed + 1) * PageSize;
    PagesUsed += 1 + pages;
    block->Pages = static_cast<uint32_t>(pages);
    return block;
}

TBlock* TakeOldest(size_t pages, char*& data) {
    TQueue& queue = Waiting[std::min(pages, Classes)];
    TBlock* before = nullptr;
    TBlock* block = queue.First;
    while (block && block->Pages < pages) {
        before = block;
        block = block->Next;
    }
    if (block) {
        (before ? before->Next : queue.First) = block->Next;
        if (queue.Last == block) {
            queue.Last = before;
        }
        --WaitingBlocks;
        data = DataOf(*block);
    }
    return block;
}

void Enqueue(TBlock& block) {
    TQueue& queue = Waiting[std::min<size_t>(block.Pages, Classes)];
    block.Next = nullptr;
    (queue.Last ? queue.Last->Next : queue.First) = &block;
    queue.Last = &block;
    ++WaitingBlocks;
}

/// Nothing can touch its pages from now on. Those of a small block keep what they hold.
void PutOutOfReach(const TBlock& block) {
    const size_t size = block.Pages * PageSize;
    DWORD before = 0;
    if (block.Pages > MostPagesKept || !VirtualProtect(DataOf(block), size, PAGE_NOACCESS, &before)) {
        VirtualFree(DataOf(block), size, MEM_DECOMMIT);
    }
}

/// Sets, or looks at, the bytes around a block that are on its own pages.
template <class F> bool AroundBlock(const TBlock& block, F each) {
    char* const data = DataOf(block);
    // A block used again may have more pages than it needs; those behind its end stay out of reach.
    const size_t used = static_cast<size_t>(block.Address - data) + std::max<size_t>(block.Size, 1);
    char* const end = data + (used + PageSize - 1) / PageSize * PageSize;
    char* const before = block.Address - std::min<size_t>(MarkedBefore, static_cast<size_t>(block.Address - data));
    return each(before, block.Address) && each(block.Address + block.Size, end);
}

void MarkAround(const TBlock& block) {
    AroundBlock(block, [](char* from, char* to) {
        std::memset(from, Mark, static_cast<size_t>(to - from));
        return true;
    });
}

bool IsIntact(const TBlock& block) {
    return AroundBlock(block, [](const char* from, const char* to) {
        return std::all_of(from, to, [](char c) { return static_cast<unsigned char>(c) == Mark; });
    });
}

/// The block at exactly this address; null when there was none.
TBlock* BlockOf(const void* memory) {
    const size_t page = PageOf(memory);
    TBlock* block = page == 0 ? nullptr : Blocks + (page - 1) / 2;
    return block && block->State != TBlock::TState::Unused && block->Address == memory ? block : nullptr;
}

/// What is wrong with giving the block back so, as a text; empty when nothing is.
void Judge(const TBlock& block, TBlockKind kind, size_t size, char (&text)[200]) {
    if (block.State == TBlock::TState::Freed) {
        std::snprintf(text, sizeof(text), "double free of a block of %zu bytes", block.Size);
    } else if (block.Kind != kind) {
        std::snprintf(text, sizeof(text), "mismatch: a block of %zu bytes taken by %s is given back to %s", block.Size,
                      NameOf(block.Kind), NameOf(kind));
    } else if (size != AnySize && size != block.Size) {
        std::snprintf(text, sizeof(text), "wrong size: a block of %zu bytes is given back as one of %zu", block.Size,
                      size);
    } else if (!IsIntact(block)) {
        std::snprintf(text, sizeof(text), "written outside: the bytes around a block of %zu bytes were changed",
                      block.Size);
    }
}

} // namespace

[[gnu::noinline]] void* Allocate(size_t size, size_t alignment, TBlockKind kind) {
    if (size > ArenaSize / 2 || alignment > PageSize) {
        return nullptr;
    }
    const TKeepLastError keep;
    const size_t rounded = (std::max<size_t>(size, 1) + alignment - 1) / alignment * alignment;
    const size_t pages = (rounded + PageSize - 1) / PageSize;
    TTrace trace;
    trace.Capture(1);
    const TLocked locked;
    char* data = nullptr;
    TBlock* block = nullptr;
    if (HasArena() && Live.Blocks < MostLive) {
        block = Live.Blocks + WaitingBlocks < MostKept ? nullptr : TakeOldest(pages, data);
        block = block ? block : TakeFresh(pages, data);
        block = block ? block : TakeOldest(pages, data);
    }
    if (!block || !VirtualAlloc(data, pages * PageSize, MEM_COMMIT, PAGE_READWRITE)) {
        ++Refused;
        return nullptr;
    }
    block->Address = data + pages * PageSize - rounded;
    block->Size = size;
    block->Kind = kind;
    block->Allocated = trace;
    block->Freed.Count = 0;
    block->State = TBlock::TState::Live;
    ++Live.Blocks;
    Live.Bytes += size;
    MarkAround(*block);
    std::memset(block->Address, Fresh, std::min(size, MostFilled)); // pages never used take no time
    return block->Address;
}

[[gnu::noinline]] bool Release(void* memory, TBlockKind kind, size_t size) {
    if (!InArena(memory)) {
        return false;
    }
    const TKeepLastError keep;
    TTrace trace;
    trace.Capture(1);
    TBlock* block = nullptr;
    char wrong[200] = "";
    {
        const TLocked locked;
        block = BlockOf(memory);
        if (block) {
            Judge(*block, kind, size, wrong);
        }
        if (block && block->State == TBlock::TState::Live) {
            block->State = TBlock::TState::Freed;
            block->Freed = trace;
            --Live.Blocks;
            Live.Bytes -= block->Size;
            PutOutOfReach(*block);
            Enqueue(*block);
        }
    }
    if (!block) {
        Report("foreign pointer: something inside the heap that is no block is given back", trace, BlockNear(memory));
    } else if (wrong[0] != 0) {
        Report(wrong, trace, block);
    }
    return true;
}

bool IsLive(const void* memory) {
    const TLocked locked;
    const TBlock* block = InArena(memory) ? BlockOf(memory) : nullptr;
    return block && block->State == TBlock::TState::Live;
}

size_t SizeOf(const void* memory) {
    const TLocked locked;
    return BlockOf(memory)->Size;
}

const TBlock* BlockNear(const void* address) {
    // Without the lock: whoever asks may have met the address while it was held.
    if (!InArena(address) || !Blocks) {
        return nullptr;
    }
    const auto distance = [address](const TBlock& block) {
        const char* at = static_cast<const char*>(address);
        return at < block.Address ? block.Address - at
                                  : std::max<ptrdiff_t>(at - block.Address - static_cast<ptrdiff_t>(block.Size), 0);
    };
    const TBlock* nearest = nullptr;
    // The page may belong to a block that begins far below, and be the one before the next block.
    for (size_t i = PageOf(address) / 2 + 1, found = 0; found < 3; --i) {
        const TBlock& block = Blocks[i];
        if (block.State != TBlock::TState::Unused) {
            ++found;
            nearest = !nearest || distance(block) < distance(*nearest) ? &block : nearest;
        }
        if (i == 0) {
            break;
        }
    }
    return nearest;
}

TLiveBlocks LiveBlocks() {
    const TLocked locked;
    return Live;
}

void CheckLiveBlocks() {
    for (size_t i = 0; Blocks && i <= PagesUsed / 2; ++i) {
        const TBlock& block = Blocks[i];
        if (block.State == TBlock::TState::Live && !IsIntact(block)) {
            char text[200];
            std::snprintf(text, sizeof(text), "written outside: the bytes around a block of %zu bytes were changed",
                          block.Size);
            Report(text, block.Allocated, &block);
        }
    }
}

size_t Refusals() { return Refused; }

const char* NameOf(TBlockKind kind) {
    switch (kind) {
    case TBlockKind::Malloc: return "malloc";
    case TBlockKind::New: return "new";
    case TBlockKind::ArrayNew: return "new[]";
    }
    return "";
}

} // namespace kx::guard
