// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Alive.h"
#include "kx/win/PerThread.h"

#include <optional>
#include <utility>

namespace kx {

/// Makes a dialog the running one of its kind, T, in this thread for the length of a scope: that of its `Execute`.
/// Hooks and callbacks of the system get no object and find the dialog here. A handler of a dialog may run another one;
/// at the end of the inner scope the outer dialog is the running one again. A freed dialog counts as none.
template <class T> class TKxRunning {
public:
    explicit TKxRunning(T& dialog) : FBefore(std::exchange(*Current, TRef(dialog, this))) {}
    TKxRunning(const TKxRunning&) = delete;
    TKxRunning& operator=(const TKxRunning&) = delete;
    ~TKxRunning() {
        if (!FStays) {
            *Current = FBefore;
        } else if (Current->Scope == this) {
            Current->Scope = nullptr;
        }
    }

    /// The dialog stays the running one after the end of the scope, until another one runs or it is freed.
    void Stay() { FStays = true; }

    /// The running dialog of this thread, the innermost one; null when there is none, or when it has been freed.
    static T* Dialog() { return Current->Get(); }

    /// The dialog has closed: the outer one is the running one from now on, before the end of the scope. Does nothing
    /// when another dialog runs inside this one.
    static void Finish(const T& dialog) {
        if (Current->Dialog == &dialog && Current->Scope) {
            *Current = TRef(Current->Scope->FBefore);
        }
    }

private:
    struct TRef {
        TRef() = default;
        TRef(T& dialog, TKxRunning* scope) : Dialog(&dialog), Alive(dialog), Scope(scope) {}
        T* Get() const { return Alive && *Alive ? Dialog : nullptr; }

        T* Dialog = nullptr;
        std::optional<TAlive> Alive;
        TKxRunning* Scope = nullptr; ///< Null when its scope is over.
    };
    static inline const TPerThread<TRef> Current;

    TRef FBefore;
    bool FStays = false;
};

} // namespace kx
