// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Windows.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace kx::guard {

/// Goes up a stack of this thread, frame by frame. Takes no memory and no lock, and reads nothing outside of the stack,
/// so that it serves a fault handler and the heap alike. It ends early where a frame cannot be understood. In 32-bit
/// programs it goes by frame pointers: code compiled without them is passed over.
class TStackWalk {
public:
    /// Begins at its own caller.
    TStackWalk();
    /// Begins where the thread was, at a fault for example.
    explicit TStackWalk(const CONTEXT& context);

    /// False at the end of the stack.
    bool Next();
    /// Inside the instruction that the frame executes, so that it belongs to the line of a call.
    void* Address() const { return FAddress; }
    /// Grows from frame to frame.
    uintptr_t StackPointer() const;

private:
    bool OnStack(uintptr_t address) const { return address >= FLimit && address + sizeof(void*) <= FBase; }
    void ReadLimits();

    CONTEXT FContext;
    void* FAddress;
    uintptr_t FLimit = 0;
    uintptr_t FBase = 0;
};

/// The innermost frames of a stack.
struct TTrace {
    static constexpr size_t Depth = 12;

    uint32_t Count = 0;
    void* Frames[Depth];

    /// From this function's caller on, but for the innermost `skipped` frames.
    void Capture(size_t skipped);
    void Capture(const CONTEXT& context);
    std::span<void* const> All() const { return {Frames, Count}; }

private:
    void Collect(TStackWalk& walk, size_t skipped);
};

/// Start of the program's own file in memory.
const char* OurFile();

/// Whether the address is in the program's own file, and not in a library of the system.
bool IsOurCode(const void* address);

/// Start of the loaded file that holds the address; null for memory that came from no file.
const char* ModuleOf(const void* address);

} // namespace kx::guard
