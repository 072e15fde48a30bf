// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/Census.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace kx::test {

/// Showings of which a loss at every third one is more than the play of the census, and more of them for rarer losses.
inline constexpr int FewCycles = 28;
inline constexpr int ManyCycles = 60;

/// By how much the heap of a program that loses nothing may have grown: caches come and go.
inline constexpr long HeapBlockPlay = 8;
inline constexpr long HeapBytePlay = 4096;

/// How the census changes over `count` calls of `show`, the first ones left out: they fill caches. A heap may take
/// memory for many blocks of a size in advance: when it grows beyond its play, it is the next `count` calls that tell.
template <class F> TCensus Growth(int count, F show) {
    for (int i = 0; i < 5; ++i) {
        show();
    }
    TCensus growth;
    for (int turn = 0; turn < 2; ++turn) {
        const TCensus before = TakeCensus();
        for (int i = 0; i < count; ++i) {
            show();
        }
        growth = TakeCensus();
        for (size_t i = 0; i < growth.Counts.size(); ++i) {
            growth.Counts[i] -= before.Counts[i];
        }
        if (growth[TCensusKind::HeapByte] <= HeapBytePlay) {
            break;
        }
    }
    return growth;
}

/// What `work` leaves behind every time, as `Describe` tells it; empty: nothing. The caches that it fills at first, and
/// what the heap takes in advance, do not count.
template <class F, class Census> std::string LeftBehind(F work, Census census) {
    std::string left;
    work();
    for (int turn = 0; turn < 3; ++turn) {
        const TCensus before = census();
        work();
        left = Describe(before, census());
        if (left.empty()) {
            break;
        }
    }
    return left;
}

/// `ours`, the growth of so many showings, is no more than what the bare dialog loses in as many. The heap has some
/// play. So have, by `contexts`, the window contexts of programs whose threads draw at once: the
/// system keeps as many, each with a region and perhaps a bitmap, as have ever been in use at the same time.
inline void ExpectNoLoss(const TCensus& ours, int count, const TCensus& system, int systemCount, long contexts = 0) {
    for (size_t i = 0; i < ours.Counts.size(); ++i) {
        const long loss = std::max(0L, system.Counts[i] * count / systemCount);
        long play = 0;
        switch (static_cast<TCensusKind>(i)) {
        case TCensusKind::HeapBlock: play = HeapBlockPlay; break;
        case TCensusKind::HeapByte: play = HeapBytePlay; break;
        case TCensusKind::Bitmap:
        case TCensusKind::Region:
        case TCensusKind::WindowContext: play = contexts; break;
        default: break;
        }
        EXPECT_LE(ours.Counts[i], loss + play) << "kind " << i << " after " << count << " showings";
    }
}

} // namespace kx::test
