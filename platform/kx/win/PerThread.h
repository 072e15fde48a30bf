// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/WinTypes.h"

#include <atomic>
#include <memory>

namespace kx {

namespace detail {

/// A pointer for each thread, null at first, given to `free` when the thread ends. It is there before any code runs, so
/// that static objects of other sources may use it; the system is asked for room when the first thread sets it.
class TThreadValue {
public:
    using TFree = void(KX_CALLBACK*)(void* value);

    constexpr explicit TThreadValue(TFree free) : FFree(free) {}
    TThreadValue(const TThreadValue&) = delete;
    TThreadValue& operator=(const TThreadValue&) = delete;
    ~TThreadValue();

    void* Get() const;
    void Set(void* value) const;

private:
    static constexpr DWORD NoIndex = 0xFFFFFFFF; ///< FLS_OUT_OF_INDEXES

    TFree FFree;
    mutable std::atomic<DWORD> FIndex{NoIndex};
};

} // namespace detail

/// One T for each thread that asks for it, made when it first does and freed when the thread ends, or before that when
/// the library that it is in is unloaded. For static objects alone, and only where T has a destructor, in place of
/// thread_local: GCC's runtime library for Windows frees the memory of those before it runs their destructors.
template <class T> class TPerThread {
public:
    constexpr TPerThread() = default;

    T& operator*() const {
        auto* value = static_cast<T*>(FValue.Get());
        if (!value) {
            auto made = std::make_unique<T>();
            FValue.Set(made.get());
            value = made.release();
        }
        return *value;
    }
    T* operator->() const { return &**this; }

private:
    static void KX_CALLBACK Free(void* value) { delete static_cast<T*>(value); }

    detail::TThreadValue FValue{Free};
};

} // namespace kx
