// SPDX-License-Identifier: MIT
#pragma once

namespace kx {

/// Whether the end of this module frees what `Lasting` has made. False at first, and in programs always: at their end
/// windows, threads and other static objects may still use it. True in a library as long as nobody can.
void SetLastingEnds(bool value) noexcept;

namespace detail {

void NoteLasting(void* object, void (*free)(void* object));

} // namespace detail

/// A new object that stays as long as this module, for static references alone:
///
///     TScreen& Screen() {
///         static auto& screen = Lasting<TScreen>(); // forms may outlive static objects
///         return screen;
///     }
///
/// The youngest one goes first; see SetLastingEnds.
template <class T> T& Lasting() {
    auto* const object = new T;
    detail::NoteLasting(object, [](void* o) { delete static_cast<T*>(o); });
    return *object;
}

} // namespace kx
