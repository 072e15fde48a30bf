// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/WinTypes.h"

namespace kx {

/// A hidden window of each thread that asks for it, made when it first does. The system destroys it with its thread,
/// since messages may come as long as the thread has a loop for them. For static objects alone.
class TThreadWindow {
public:
    /// The window has a class of its own, with that name and procedure.
    constexpr TThreadWindow(const wchar_t* className, WNDPROC procedure)
        : FClassName(className), FProcedure(procedure) {}
    /// The window does nothing and takes no part in what is told to all windows.
    constexpr TThreadWindow() = default;
    TThreadWindow(const TThreadWindow&) = delete;
    TThreadWindow& operator=(const TThreadWindow&) = delete;

    HWND Handle() const; ///< The calling thread's; null when the system cannot make it.

    /// Destroys the calling thread's windows, of all kinds, and gives back the classes. They come again when they are
    /// asked for. False: other threads that still run have windows.
    static bool ReleaseAll();

private:
    struct TWindows;

    HWND Make() const;

    const wchar_t* FClassName = nullptr;
    WNDPROC FProcedure = nullptr;
};

} // namespace kx
