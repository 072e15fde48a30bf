// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/WinTypes.h"

#include <cstddef>

namespace kx {

/// A callable address that carries an object: a window procedure of its own for one object.
///
/// The system calls it as a WNDPROC; it replaces the first argument (the window, which the object knows) by the object
/// and jumps to the target function. The code is written once per page, before anything runs, and is read-execute only
/// from then on; what a thunk calls with is data beside it. A process that may not make code at run time (System()
/// tells) has `MaxBuiltIn` thunks, whose code is in the program; a window of the framework takes one, each subclassing
/// another.
///
/// A thunk is not on the stack while its target runs, so its object may go at any time. An address that was handed out
/// stays callable for the life of the module: after the thunk is gone it answers 0 until, as late as possible, another
/// thunk takes it. Whoever may still be called (a subclassed window) therefore keeps the thunk; see TSubclass.
class TThunk {
public:
    using TTarget = LRESULT(KX_CALLBACK*)(void* object, UINT message, WPARAM wParam, LPARAM lParam);

    static constexpr size_t MaxBuiltIn = 128;

    /// @throws EOSError when the system has no memory for more thunks, or all that are built in are taken.
    TThunk(TTarget target, void* object);
    TThunk(const TThunk&) = delete;
    TThunk& operator=(const TThunk&) = delete;
    ~TThunk();

    WNDPROC Procedure() const;

    static size_t Used(); ///< How many there are in the process: of controls, and of windows that are subclassed.

private:
    struct TSlot;
    friend class TThunkPool;
    TSlot* FSlot;
};

} // namespace kx
