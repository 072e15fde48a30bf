// The way of every message of a dialog window.

#include "kx/frame/KxDlgPipeline.h"

#include "kx/core/Barrier.h"
#include "kx/frame/KxDlgParams.h"
#include "kx/win/Windows.h"

namespace kx {

TKxDlgPipeline::TKxDlgPipeline(IDialog& dialog, bool tracksContextMenus)
    : FDialog(dialog), FTracksContextMenus(tracksContextMenus),
      FSubclass(TWndMethod(this, &TKxDlgPipeline::HandleMessage)) {}

void TKxDlgPipeline::HandleMessage(TMessage& message) {
    const TAlive alive(FLife);
    const TSubclass::TPrevious previous = FSubclass.Previous();
    const TKxMsgVerdict verdict = Ask(message);
    if (!alive && message.Msg == WM_DESTROY && verdict != mvStop) {
        message.Result = previous(message.Msg, message.WParam, message.LParam);
    }
    if (!alive || verdict == mvStop) {
        return;
    }
    if (verdict == mvPass) {
        FSubclass.CallPrevious(message); // works also when the dialog has just detached the pipeline
        if (alive) {
            FDialog.AfterSystem(message);
        }
    }
    if (alive) {
        FDialog.FireHook(message);
    }
}

TKxMsgVerdict TKxDlgPipeline::Ask(TMessage& message) {
    try {
        bool allow = true;
        if (!Outlives(FLife, [&] { FDialog.FireHooking(message, allow); })) {
            return allow ? mvPass : mvStop;
        }
        if (allow && FTracksContextMenus) {
            TKxCustDlgParams::TrackContextMenus(allow, message);
        }
        return allow ? FDialog.BeforeSystem(message) : mvStop;
    } catch (...) {
        ReportException();
        return message.Msg == WM_COMMAND ? mvStop : mvPass;
    }
}

} // namespace kx
