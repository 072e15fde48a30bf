// SPDX-License-Identifier: MIT
// Leads every message of a dialog window through the events, the dialog and the system.

#include "kx/frame/KxDlgPipeline.h"

#include "kx/core/Barrier.h"
#include "kx/win/Windows.h"

namespace kx {

TKxDlgPipeline::TKxDlgPipeline(IDialog& dialog)
    : FDialog(dialog), FSubclass(TWndMethod(this, &TKxDlgPipeline::HandleMessage)) {}

void TKxDlgPipeline::HandleMessage(TMessage& message) {
    const TAlive alive(FLife);
    const TSubclass::TPrevious previous = FSubclass.Previous();
    int command = 0;
    const TKxMsgVerdict verdict = BeforeSystem(message, command);
    if (!alive && message.Msg == WM_DESTROY && verdict != mvStop) {
        message.Result = previous(message.Msg, message.WParam, message.LParam);
    }
    if (!alive || verdict == mvStop) {
        return;
    }
    if (verdict != mvSkip) {
        FSubclass.CallPrevious(message); // this works even when the dialog has just detached the pipeline
        if (alive) {
            FDialog.AfterSystem(message, command);
        }
    }
    if (alive && verdict != mvMute) {
        FDialog.DoHookEvent(message);
    }
}

TKxMsgVerdict TKxDlgPipeline::BeforeSystem(TMessage& message, int& command) {
    try {
        bool allow = true;
        if (!Outlives(FLife, [&] { FDialog.DoHookingEvent(message, allow); })) {
            return allow ? mvPass : mvStop;
        }
        // The system looks for a menu that has the letter, last of all.
        if (allow && message.Msg == WM_MENUCHAR && GetKeyState(VK_MENU) < 0) {
            bool taken = false;
            const auto offer = [&] { taken = FDialog.TakeAccelerator(static_cast<wchar_t>(message.WParamLo())); };
            if (!Outlives(FLife, offer) || taken) {
                message.Result = MAKELRESULT(0, MNC_CLOSE);
                return mvSkip;
            }
        }
        if (allow) {
            return FDialog.BeforeSystem(message, command);
        }
        if (message.Msg == WM_DESTROY) {
            Guarded([this] { FDialog.DestroyVetoed(); });
        }
        return mvStop;
    } catch (...) {
        ReportException();
        return message.Msg == WM_COMMAND ? mvStop : mvPass;
    }
}

} // namespace kx
