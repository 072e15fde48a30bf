// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Alive.h"
#include "kx/win/Subclass.h"

namespace kx {

/// What becomes of a message of the dialog window.
enum TKxMsgVerdict : uint8_t {
    mvPass, ///< Goes to the system, then to OnEventHook.
    mvMute, ///< Goes to the system only.
    mvSkip, ///< Goes to OnEventHook only.
    mvStop  ///< Goes nowhere; its result stays as it is.
};

/// The way of every message of a dialog window that a component has taken over: OnEventHooking, which may veto; the
/// dialog's own cases; the system; the dialog's own cases; OnEventHook.
///
/// An exception on the way to the system goes to the application and stops a command (WM_COMMAND). Any other message
/// still reaches the system, which must see its own painting, sizing and closing. The dialog may detach the pipeline,
/// or be freed with it, in the middle of a message. Then nobody else gets that message, unless it is WM_DESTROY: the
/// system needs it to free what it has.
class TKxDlgPipeline {
public:
    /// The dialog component, as the pipeline sees it.
    class IDialog {
    public:
        virtual void DoHookingEvent(TMessage& message, bool& allow) = 0; ///< Fires OnEventHooking.
        virtual void DoHookEvent(TMessage& message) = 0;                 ///< Fires OnEventHook.
        /// OnEventHooking has vetoed WM_DESTROY. The window goes all the same, and what is left in it goes with it.
        virtual void DestroyVetoed() {}
        /// The dialog's own cases, before the system gets the message. `command` comes as 0. A dialog that recognises a
        /// WM_COMMAND stores there which of its commands it is.
        virtual TKxMsgVerdict BeforeSystem(TMessage& message, int& command) = 0;
        /// The dialog's own cases once the system has answered. Not called for messages that did not go to the system.
        virtual void AfterSystem(TMessage& message, int command) = 0;
        /// A letter was pressed with Alt which is no accelerator of the control with the focus, nor of one of the
        /// system's. True: somebody else has taken it.
        virtual bool TakeAccelerator(wchar_t) { return false; }

    protected:
        ~IDialog() = default;
    };

    explicit TKxDlgPipeline(IDialog& dialog);
    TKxDlgPipeline(const TKxDlgPipeline&) = delete;
    TKxDlgPipeline& operator=(const TKxDlgPipeline&) = delete;

    void Attach(HWND window) { FSubclass.Install(window); } ///< @throws EOSError
    void Detach() { FSubclass.Uninstall(); }                ///< Gives the window its own procedure back.

private:
    void HandleMessage(TMessage& message);
    TKxMsgVerdict BeforeSystem(TMessage& message, int& command);

    IDialog& FDialog;
    TSubclass FSubclass;
    TLifetime FLife;
};

} // namespace kx
