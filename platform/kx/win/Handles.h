#pragma once

#include "kx/win/Windows.h"

#include <utility>

namespace kx {

/// Sole owner of a system handle, freed in the way that `Traits` names. Traits: `using THandle`, `static void
/// Close(THandle)`, and `static THandle Null()` where that is not zero.
template <class Traits> class unique_handle {
public:
    using THandle = typename Traits::THandle;

    static THandle Null() {
        if constexpr (requires { Traits::Null(); }) {
            return Traits::Null();
        } else {
            return THandle{};
        }
    }

    unique_handle() = default;
    explicit unique_handle(THandle handle) : FHandle(handle) {}
    unique_handle(unique_handle&& other) noexcept : FHandle(other.release()) {}
    unique_handle& operator=(unique_handle&& other) noexcept {
        reset(other.release());
        return *this;
    }
    unique_handle(const unique_handle&) = delete;
    unique_handle& operator=(const unique_handle&) = delete;
    ~unique_handle() { reset(); }

    THandle get() const { return FHandle; }
    explicit operator bool() const { return FHandle != Null(); }

    /// Gives the handle away: the caller frees it.
    THandle release() { return std::exchange(FHandle, Null()); }
    void reset(THandle handle = Null()) {
        const THandle old = std::exchange(FHandle, handle);
        if (old != Null() && old != handle) {
            Traits::Close(old);
        }
    }
    /// Frees what is held and returns the place where a system function puts a new handle.
    THandle* put() {
        reset();
        return &FHandle;
    }

private:
    THandle FHandle = Null();
};

namespace detail {

/// Traits of a handle type H that `Function` frees.
template <class H, auto Function> struct THandleTraits {
    using THandle = H;
    static void Close(H handle) { Function(handle); }
};

template <class H> struct TGdiTraits {
    using THandle = H;
    static void Close(H handle) { DeleteObject(handle); }
};

struct TFileTraits {
    using THandle = HANDLE;
    static HANDLE Null() { return INVALID_HANDLE_VALUE; }
    static void Close(HANDLE handle) { CloseHandle(handle); }
};

struct TImageListTraits {
    using THandle = HIMAGELIST;
    static void Close(HIMAGELIST handle) { ImageList_Destroy(handle); }
};

} // namespace detail

using unique_hwnd = unique_handle<detail::THandleTraits<HWND, DestroyWindow>>;
using unique_hicon = unique_handle<detail::THandleTraits<HICON, DestroyIcon>>;
using unique_hmenu = unique_handle<detail::THandleTraits<HMENU, DestroyMenu>>;
using unique_hhook = unique_handle<detail::THandleTraits<HHOOK, UnhookWindowsHookEx>>;
using unique_hkey = unique_handle<detail::THandleTraits<HKEY, RegCloseKey>>;
using unique_hmodule = unique_handle<detail::THandleTraits<HMODULE, FreeLibrary>>;
using unique_handle_object = unique_handle<detail::THandleTraits<HANDLE, CloseHandle>>; ///< Threads, events, ...
using unique_hfile = unique_handle<detail::TFileTraits>;
using unique_hbitmap = unique_handle<detail::TGdiTraits<HBITMAP>>;
using unique_hbrush = unique_handle<detail::TGdiTraits<HBRUSH>>;
using unique_hfont = unique_handle<detail::TGdiTraits<HFONT>>;
using unique_hpen = unique_handle<detail::TGdiTraits<HPEN>>;
using unique_hrgn = unique_handle<detail::TGdiTraits<HRGN>>;
using unique_hdc = unique_handle<detail::THandleTraits<HDC, DeleteDC>>; ///< A context made by CreateCompatibleDC.
using unique_himagelist = unique_handle<detail::TImageListTraits>;

/// A lock held for the length of a scope.
class TExclusiveLock {
public:
    explicit TExclusiveLock(SRWLOCK& lock) : FLock(lock) { AcquireSRWLockExclusive(&lock); }
    TExclusiveLock(const TExclusiveLock&) = delete;
    TExclusiveLock& operator=(const TExclusiveLock&) = delete;
    ~TExclusiveLock() { ReleaseSRWLockExclusive(&FLock); }

private:
    SRWLOCK& FLock;
};

/// A window's device context, or the screen's for a null window, given back at the end of the scope.
class TWindowDC {
public:
    explicit TWindowDC(HWND window) : FWindow(window), FHandle(GetDC(window)) {}
    TWindowDC(const TWindowDC&) = delete;
    TWindowDC& operator=(const TWindowDC&) = delete;
    ~TWindowDC() {
        if (!FWindow || IsWindow(FWindow)) { // a window takes its contexts along
            ReleaseDC(FWindow, FHandle);
        }
    }
    HDC Handle() const { return FHandle; }

private:
    HWND FWindow;
    HDC FHandle;
};

/// A context that foreign code runs on, or beside. One of a window goes with the window; not so one in memory.
class TDrawTarget {
public:
    explicit TDrawTarget(HDC dc) : FDC(dc), FWindow(WindowFromDC(dc)) {}
    HDC Handle() const { return FDC; }
    /// It can still be used.
    bool Lives() const { return !FWindow || IsWindow(FWindow); }

private:
    HDC FDC;
    HWND FWindow; ///< Null in memory.
};

/// An object selected into a context for the length of a scope.
class TSelectObject {
public:
    TSelectObject(HDC dc, HGDIOBJ object) : FDC(dc), FOld(SelectObject(dc, object)) {}
    TSelectObject(const TSelectObject&) = delete;
    TSelectObject& operator=(const TSelectObject&) = delete;
    ~TSelectObject() { SelectObject(FDC, FOld); }

private:
    HDC FDC;
    HGDIOBJ FOld;
};

} // namespace kx
