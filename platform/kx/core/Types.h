// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace kx {

/// A point, in pixels; the coordinate space is named by whoever hands it out.
struct TPoint {
    int32_t X = 0;
    int32_t Y = 0;

    friend bool operator==(const TPoint&, const TPoint&) = default;
};

/// A rectangle, in pixels. Right and Bottom lie one past the last pixel inside.
struct TRect {
    int32_t Left = 0;
    int32_t Top = 0;
    int32_t Right = 0;
    int32_t Bottom = 0;

    friend bool operator==(const TRect&, const TRect&) = default;
};

/// Signed 32-bit arithmetic that never wraps.
/// @throws EIntOverflow when the exact result does not fit into 32 bits.
int32_t CheckedAdd(int32_t a, int32_t b);
int32_t CheckedSub(int32_t a, int32_t b);
int32_t CheckedMul(int32_t a, int32_t b);

/// Adds any number of summands from left to right, each step checked.
template <class... Rest> int32_t CheckedSum(int32_t first, Rest... rest) {
    ((first = CheckedAdd(first, rest)), ...);
    return first;
}

/// Width and height of a rectangle, checked like every other difference.
inline int32_t Width(const TRect& r) { return CheckedSub(r.Right, r.Left); }
inline int32_t Height(const TRect& r) { return CheckedSub(r.Bottom, r.Top); }

} // namespace kx
