// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Messages.h"

namespace kx {

/// Watches and changes the messages of a window that is not the framework's own.
///
/// `Install` replaces the window's procedure; each message then goes to the handler, which passes it on by
/// `CallPrevious`, or answers it in `message.Result`. `Uninstall`, or the end of this object, puts the replaced
/// procedure back when ours is still the window's topmost one; when somebody else subclassed the window after us, ours
/// stays as a pass-through until the window goes. A window that is destroyed uninstalls by itself after its last
/// message.
///
/// The window stays what it was, a Unicode or an ANSI window: in messages that carry text, the text is UTF-16 when
/// `IsWindowUnicode`, else in the process's code page, for the handler as for the replaced procedure.
///
/// The handler may uninstall, free this object or destroy the window while it runs. Exceptions of the handler go to the
/// application; the message counts as answered then. Only the thread of the window may use it.
class TSubclass {
public:
    TSubclass() = default;
    explicit TSubclass(TWndMethod handler) : FHandler(std::move(handler)) {}
    TSubclass(HWND window, TWndMethod handler) : FHandler(std::move(handler)) { Install(window); }
    TSubclass(const TSubclass&) = delete;
    TSubclass& operator=(const TSubclass&) = delete;
    ~TSubclass();

    void SetHandler(TWndMethod value) { FHandler = std::move(value); }

    /// Uninstalls from another window first. @throws EOSError when `window` is none, or another process's.
    void Install(HWND window);
    void Uninstall();
    bool Installed() const { return FSite != nullptr; }

    HWND Handle() const; ///< The window; null when not installed.

    /// A replaced procedure, to be called when this object may have gone.
    class TPrevious {
    public:
        WNDPROC Procedure() const { return FProcedure; }
        /// 0 when nothing was installed.
        LRESULT operator()(UINT message, WPARAM wParam, LPARAM lParam) const;

    private:
        friend class TSubclass;
        HWND FWindow = nullptr;
        WNDPROC FProcedure = nullptr;
        bool FUnicode = false; ///< As the window was when its procedure was replaced.
    };
    TPrevious Previous() const;

    /// The replaced procedure's answer; inside the handler also after it uninstalled. 0 when not installed.
    LRESULT CallPrevious(UINT message, WPARAM wParam, LPARAM lParam) const;
    /// Puts the replaced procedure's answer into `message.Result`.
    void CallPrevious(TMessage& message) const {
        message.Result = CallPrevious(message.Msg, message.WParam, message.LParam);
    }

private:
    struct TSite;
    struct TFrame;
    TSite* FSite = nullptr;     ///< Lives as long as the window may call it.
    TFrame* FRunning = nullptr; ///< Innermost call of the handler.
    TWndMethod FHandler;
};

} // namespace kx
