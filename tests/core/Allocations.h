// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace kx::sample {

/// Counts what the program asks operator new for while it lives.
class TAllocations {
public:
    TAllocations();
    TAllocations(const TAllocations&) = delete;
    TAllocations& operator=(const TAllocations&) = delete;
    ~TAllocations();

    size_t Total() const;   ///< Bytes, whether freed meanwhile or not.
    size_t Largest() const; ///< Bytes of the largest single request.
};

} // namespace kx::sample
