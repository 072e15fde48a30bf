#pragma once

#include "tests/support/Census.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace kx::test {

/// Showings of which a loss at every third one is more than the play of the census, and more of them for rarer losses.
inline constexpr int FewCycles = 28;
inline constexpr int ManyCycles = 60;

/// How the census changes over `count` calls of `show`, the first ones left out: they fill caches.
template <class F> TCensus Growth(int count, F show) {
    for (int i = 0; i < 5; ++i) {
        show();
    }
    const TCensus before = TakeCensus();
    for (int i = 0; i < count; ++i) {
        show();
    }
    TCensus growth = TakeCensus();
    for (size_t i = 0; i < growth.Counts.size(); ++i) {
        growth.Counts[i] -= before.Counts[i];
    }
    return growth;
}

/// `ours`, the growth of so many showings, is no more than what the bare dialog loses in as many. The heap has some
/// play: caches come and go. So have, by `contexts`, the window contexts of programs whose threads draw at once: the
/// system keeps as many, each with a region and perhaps a bitmap, as have ever been in use at the same time.
inline void ExpectNoLoss(const TCensus& ours, int count, const TCensus& system, int systemCount, long contexts = 0) {
    for (size_t i = 0; i < ours.Counts.size(); ++i) {
        const long loss = std::max(0L, system.Counts[i] * count / systemCount);
        long play = 0;
        switch (static_cast<TCensusKind>(i)) {
        case TCensusKind::HeapBlock: play = 8; break;
        case TCensusKind::HeapByte: play = 4096; break;
        case TCensusKind::Bitmap:
        case TCensusKind::Region:
        case TCensusKind::WindowContext: play = contexts; break;
        default: break;
        }
        EXPECT_LE(ours.Counts[i], loss + play) << "kind " << i << " after " << count << " showings";
    }
}

} // namespace kx::test
