#pragma once

#include "kx/win/Windows.h"

#include <memory>

namespace kx {

/// One T for each thread that asks for it, made when it first does and freed when the thread ends, or before that when
/// the library that it is in is unloaded. For static objects alone, and only where T has a destructor, in place of
/// thread_local: GCC's runtime library for Windows frees the memory of those before it runs their destructors.
template <class T> class TPerThread {
public:
    TPerThread() = default;
    TPerThread(const TPerThread&) = delete;
    TPerThread& operator=(const TPerThread&) = delete;
    ~TPerThread() {
        // A thread that ended after the unloading would call what is not there any more. At the end of a program other
        // threads may still use theirs.
        if (HInstance() != GetModuleHandleA(nullptr)) {
            FlsFree(FIndex);
        }
    }

    T& operator*() const {
        auto* value = static_cast<T*>(FlsGetValue(FIndex));
        if (!value) {
            auto made = std::make_unique<T>();
            FlsSetValue(FIndex, made.get());
            value = made.release();
        }
        return *value;
    }
    T* operator->() const { return &**this; }

private:
    static void WINAPI Free(void* value) { delete static_cast<T*>(value); }

    DWORD FIndex = FlsAlloc(Free);
};

} // namespace kx
