#pragma once

#include "support/Census.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace kx::test {

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
/// play: caches come and go.
inline void ExpectNoLoss(const TCensus& ours, int count, const TCensus& system, int systemCount) {
    for (size_t i = 0; i < ours.Counts.size(); ++i) {
        const long loss = std::max(0L, system.Counts[i] * count / systemCount);
        const auto kind = static_cast<TCensusKind>(i);
        const long play = kind == TCensusKind::HeapBlock ? 8 : kind == TCensusKind::HeapByte ? 4096 : 0;
        EXPECT_LE(ours.Counts[i], loss + play) << "kind " << i << " after " << count << " showings";
    }
}

} // namespace kx::test
