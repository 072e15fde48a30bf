// SPDX-License-Identifier: MIT
// Sums and products that are checked.

#include "kx/core/Types.h"

#include "kx/core/SysUtils.h"

namespace kx {

namespace {

int32_t Narrow(int64_t exact) {
    if (exact < INT32_MIN || exact > INT32_MAX) {
        throw EIntOverflow("Integer overflow");
    }
    return static_cast<int32_t>(exact);
}

} // namespace

int32_t CheckedAdd(int32_t a, int32_t b) { return Narrow(int64_t{a} + b); }
int32_t CheckedSub(int32_t a, int32_t b) { return Narrow(int64_t{a} - b); }
int32_t CheckedMul(int32_t a, int32_t b) { return Narrow(int64_t{a} * b); }

} // namespace kx
