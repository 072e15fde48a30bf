// SPDX-License-Identifier: MIT
// The lines of a form's text, for errors that are found in its binary form.

#include "kx/core/FormLines.h"

#include <algorithm>
#include <iterator>

namespace kx {

int TFormLines::LineAt(int64_t offset) const {
    const auto behind = std::upper_bound(FEntries.begin(), FEntries.end(), offset,
                                         [](int64_t value, const TEntry& entry) { return value < entry.Offset; });
    return behind == FEntries.begin() ? 1 : std::prev(behind)->Line;
}

} // namespace kx
