// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <type_traits>
#include <utility>

namespace kx {

/// The life of an object that foreign code may end: an event's handler, a message, a virtual method of another
/// component may free the object whose method is calling them. The object holds its life as a field; whoever calls
/// foreign code and goes on afterwards asks by `Outlives`, or by a `TAlive` taken before.
///
/// A life ends with its field, or sooner by `End`. A token may be asked in one thread while another one ends the life;
/// to take a token is to use the object.
class TLifetime {
public:
    constexpr TLifetime() noexcept = default;
    /// A copy of an object has a life of its own.
    TLifetime(const TLifetime&) noexcept {}
    TLifetime& operator=(const TLifetime&) noexcept { return *this; }
    ~TLifetime();

    /// From now on the object counts as gone. Can be called again.
    void End() noexcept;

private:
    friend class TAlive;

    struct TState {
        std::atomic<int> Users = 1; ///< The life itself and all who ask about it.
        std::atomic<bool> Over = false;

        void Leave() noexcept {
            if (Users.fetch_sub(1, std::memory_order_acq_rel) == 1) {
                delete this;
            }
        }
    };

    /// Made when somebody asks for the first time: most objects are never asked about.
    TState& State() const;
    static TState Ended;

    mutable std::atomic<TState*> FState{nullptr};
};

/// Tells whether an object still lives. Stays valid when the object has gone; may be copied and kept.
class [[nodiscard]] TAlive {
public:
    explicit TAlive(const TLifetime& life) : FState(&life.State()) { FState->Users.fetch_add(1); }
    /// Of an object that says by `Lifetime()` which life is its own.
    template <class T>
    requires requires(const T& object) { object.Lifetime(); }
    explicit TAlive(const T& object) : TAlive(object.Lifetime()) {}
    /// Of an object that there may be none of: nobody does not live.
    template <class T>
    requires requires(const T& object) { object.Lifetime(); }
    explicit TAlive(const T* object) : FState(object ? &object->Lifetime().State() : &TLifetime::Ended) {
        FState->Users.fetch_add(1);
    }

    TAlive(const TAlive& other) noexcept : FState(other.FState) { FState->Users.fetch_add(1); }
    TAlive& operator=(TAlive other) noexcept {
        std::swap(FState, other.FState);
        return *this;
    }
    ~TAlive() { FState->Leave(); }

    explicit operator bool() const noexcept { return !FState->Over.load(std::memory_order_acquire); }

private:
    TLifetime::TState* FState;
};

/// Like TAlive, for code that the object's destructor runs too: an object that is going already is there until that
/// code has returned.
class TStillThere {
public:
    template <class T> explicit TStillThere(const T& object) : FAlive(object), FIsGoing(!FAlive) {}

    explicit operator bool() const noexcept { return FIsGoing || FAlive; }

private:
    const TAlive FAlive;
    const bool FIsGoing;
};

/// Runs foreign code that may free `object`, and tells whether the object lives on. The answer cannot be overlooked:
///
///     if (!Outlives(*this, [&] { FOnResize(this); })) {
///         return; // no member may be touched any more
///     }
///
/// `object` is a TLifetime or says by `Lifetime()` which one is its own. What `foreign` throws comes out; a handler of
/// the exception that goes on with the object needs a TAlive of its own.
template <class T, class F> [[nodiscard]] bool Outlives(const T& object, F&& foreign) {
    const TAlive alive(object);
    std::forward<F>(foreign)();
    return static_cast<bool>(alive);
}

/// Gives a field of an object another value for the length of a scope, however the scope is left. When the object has
/// gone meanwhile, nothing is written.
///
///     const TFieldScope aligning(*this, FAligning, true);
template <class V> class [[nodiscard]] TFieldScope {
public:
    template <class T>
    TFieldScope(const T& object, V& field, std::type_identity_t<V> value)
        : FAlive(object), FField(field), FBefore(std::exchange(field, std::move(value))) {}
    TFieldScope(const TFieldScope&) = delete;
    TFieldScope& operator=(const TFieldScope&) = delete;
    ~TFieldScope() {
        if (FAlive) {
            FField = std::move(FBefore);
        }
    }

private:
    const TAlive FAlive;
    V& FField;
    V FBefore;
};

} // namespace kx
