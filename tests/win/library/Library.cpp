// SPDX-License-Identifier: MIT
// A library that has values for each thread and is unloaded.

#include "kx/win/PerThread.h"

#include <utility>

namespace kx {
namespace {

int* Going = nullptr; ///< Counts the values that go.

struct TValue {
    int Number = 0;
    ~TValue() { ++*Going; }
};

const TPerThread<TValue> Values;

} // namespace
} // namespace kx

extern "C" __declspec(dllexport) void WatchValues(int* going) { kx::Going = going; }

/// Sets the calling thread's value and returns the one before.
extern "C" __declspec(dllexport) int ExchangeValue(int number) { return std::exchange(kx::Values->Number, number); }
