#include "frame/KxDlgParamsPipeline.h"

#include "core/Barrier.h"
#include "frame/KxDlgParams.h"

namespace kx {

/// One message being handled, on the stack; messages nest.
class TKxDlgPipeline::TRun {
public:
    explicit TRun(TKxDlgPipeline& pipeline) : FPipeline(&pipeline), FOuter(pipeline.FRun) { pipeline.FRun = this; }
    TRun(const TRun&) = delete;
    TRun& operator=(const TRun&) = delete;
    ~TRun() {
        if (FPipeline) {
            FPipeline->FRun = FOuter;
        }
    }

    /// False when the pipeline has been freed meanwhile.
    bool Alive() const { return FPipeline != nullptr; }
    void Abandon() {
        for (TRun* run = this; run; run = run->FOuter) {
            run->FPipeline = nullptr;
        }
    }

private:
    TKxDlgPipeline* FPipeline;
    TRun* FOuter;
};

TKxDlgPipeline::TKxDlgPipeline(IDialog& dialog, bool tracksContextMenus)
    : FDialog(dialog), FTracksContextMenus(tracksContextMenus),
      FSubclass(TWndMethod(this, &TKxDlgPipeline::HandleMessage)) {}

TKxDlgPipeline::~TKxDlgPipeline() {
    if (FRun) {
        FRun->Abandon();
    }
}

void TKxDlgPipeline::HandleMessage(TMessage& message) {
    const TRun run(*this);
    const TKxMsgVerdict verdict = Ask(message, run);
    if (!run.Alive() || verdict == mvStop) {
        return;
    }
    if (verdict == mvPass) {
        FSubclass.CallPrevious(message); // works also when the dialog has just detached the pipeline
        if (run.Alive()) {
            FDialog.AfterSystem(message);
        }
    }
    if (run.Alive()) {
        FDialog.FireHook(message);
    }
}

TKxMsgVerdict TKxDlgPipeline::Ask(TMessage& message, const TRun& run) {
    try {
        bool allow = true;
        FDialog.FireHooking(message, allow);
        if (!run.Alive()) {
            return mvStop;
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
