// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/WinTypes.h"

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

/// How each kind of handle is freed.
template <class H> struct THandleTraits {
    using THandle = H;
    static void Close(H handle);
};
template <> void THandleTraits<HANDLE>::Close(HANDLE handle);
template <> void THandleTraits<HBITMAP>::Close(HBITMAP handle);
template <> void THandleTraits<HBRUSH>::Close(HBRUSH handle);
template <> void THandleTraits<HDC>::Close(HDC handle);
template <> void THandleTraits<HFONT>::Close(HFONT handle);
template <> void THandleTraits<HHOOK>::Close(HHOOK handle);
template <> void THandleTraits<HICON>::Close(HICON handle);
template <> void THandleTraits<HIMAGELIST>::Close(HIMAGELIST handle);
template <> void THandleTraits<HKEY>::Close(HKEY handle);
template <> void THandleTraits<HMENU>::Close(HMENU handle);
template <> void THandleTraits<HMODULE>::Close(HMODULE handle);
template <> void THandleTraits<HPEN>::Close(HPEN handle);
template <> void THandleTraits<HRGN>::Close(HRGN handle);
template <> void THandleTraits<HWND>::Close(HWND handle);

struct TFileTraits : THandleTraits<HANDLE> {
    static HANDLE Null(); ///< INVALID_HANDLE_VALUE
};

template <class I> struct TComTraits {
    using THandle = I*;
    static void Close(I* object) { object->Release(); }
};

} // namespace detail

/// One reference to a COM object.
template <class I> using unique_com = unique_handle<detail::TComTraits<I>>;
using unique_hwnd = unique_handle<detail::THandleTraits<HWND>>;
using unique_hicon = unique_handle<detail::THandleTraits<HICON>>;
using unique_hmenu = unique_handle<detail::THandleTraits<HMENU>>;
using unique_hhook = unique_handle<detail::THandleTraits<HHOOK>>;
using unique_hkey = unique_handle<detail::THandleTraits<HKEY>>;
using unique_hmodule = unique_handle<detail::THandleTraits<HMODULE>>;
using unique_handle_object = unique_handle<detail::THandleTraits<HANDLE>>; ///< Threads, events, ...
using unique_hfile = unique_handle<detail::TFileTraits>;
using unique_hbitmap = unique_handle<detail::THandleTraits<HBITMAP>>;
using unique_hbrush = unique_handle<detail::THandleTraits<HBRUSH>>;
using unique_hfont = unique_handle<detail::THandleTraits<HFONT>>;
using unique_hpen = unique_handle<detail::THandleTraits<HPEN>>;
using unique_hrgn = unique_handle<detail::THandleTraits<HRGN>>;
using unique_hdc = unique_handle<detail::THandleTraits<HDC>>; ///< A context made by CreateCompatibleDC.
using unique_himagelist = unique_handle<detail::THandleTraits<HIMAGELIST>>;

/// The device context of a window's client area, or of its frame too, or the screen's for a null window, given back at
/// the end of the scope.
class TWindowDC {
public:
    explicit TWindowDC(HWND window, bool withFrame = false);
    TWindowDC(const TWindowDC&) = delete;
    TWindowDC& operator=(const TWindowDC&) = delete;
    ~TWindowDC();
    HDC Handle() const { return FHandle; }

private:
    HWND FWindow;
    HDC FHandle;
};

/// A context that foreign code runs on, or beside. One of a window goes with the window; not so one in memory.
class TDrawTarget {
public:
    explicit TDrawTarget(HDC dc);
    HDC Handle() const { return FDC; }
    /// It can still be used.
    bool Lives() const;

private:
    HDC FDC;
    HWND FWindow; ///< Null in memory.
};

/// An object selected into a context for the length of a scope.
class TSelectObject {
public:
    TSelectObject(HDC dc, HGDIOBJ object);
    TSelectObject(const TSelectObject&) = delete;
    TSelectObject& operator=(const TSelectObject&) = delete;
    ~TSelectObject();

private:
    HDC FDC;
    HGDIOBJ FOld;
};

} // namespace kx
