// SPDX-License-Identifier: MIT
#pragma once

namespace kx::test {

struct THeapCount {
    long Blocks;
    long Bytes;
};

/// Set when the program's memory comes from another heap than the runtime library's: counts what it has handed out.
inline THeapCount (*GuardedHeap)() = nullptr;

} // namespace kx::test
