// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

namespace kx {

/// Which line of a text each part of the binary form made from it stands on.
class TFormLines {
public:
    void Add(int64_t offset, int line) { FEntries.push_back({offset, line}); } ///< Offsets come in ascending order.
    int LineAt(int64_t offset) const; ///< Of the last entry not behind `offset`; 1 when there is none.

private:
    struct TEntry {
        int64_t Offset;
        int Line;
    };
    std::vector<TEntry> FEntries;
};

} // namespace kx
