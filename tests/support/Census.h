// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Windows.h"

#include <array>
#include <string>

namespace kx::test {

enum class TCensusKind {
    Pen,
    Brush,
    Font,
    Bitmap,
    Region,
    Palette,
    WindowContext,
    MemoryContext,
    Metafile,
    GdiObject, ///< Of any kind, on a system that does not tell them apart.
    Window,
    Menu,
    UserObject, ///< Likewise.
    HeapBlock,
    HeapByte,
    Thread
};

/// How many things of each kind this process holds. Takes no memory from the heap, which it may be counting.
struct TCensus {
    std::array<long, static_cast<size_t>(TCensusKind::Thread) + 1> Counts = {};

    long& operator[](TCensusKind kind) { return Counts[static_cast<size_t>(kind)]; }
    long operator[](TCensusKind kind) const { return Counts[static_cast<size_t>(kind)]; }
    friend TCensus operator+(const TCensus& a, const TCensus& b);
};

/// Counts drawing objects; takes a millisecond.
TCensus GdiCensus();
/// Counts this process's windows, message-only ones and children included, and menus.
TCensus UserCensus();
/// Counts what `new` and `malloc` handed out. Growth by a block or two may be a library's cache: repeat what is tested
/// and compare later ones.
TCensus HeapCensus();
TCensus ThreadCensus();
/// All of them.
TCensus TakeCensus();

/// What is different, one kind per line ("3 more bitmaps: 12 -> 15"); empty when nothing is.
std::string Describe(const TCensus& before, const TCensus& after);

} // namespace kx::test
