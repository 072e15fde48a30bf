#include "opensave/KxOpenLite.h"

#include "opensave/KxFileDlgPublish.h"
#include "ui/PerThread.h"

namespace kx {

// --- Classes

const TClass& TKxCustomOpenLiteDialog::StaticClass() {
    static const TClassBuilder<TKxCustomOpenLiteDialog> cls("TKxCustomOpenLiteDialog", TOpenDialog::StaticClass());
    return cls.Class();
}

const TClass& TKxCustomSaveLiteDialog::StaticClass() {
    static const TClassBuilder<TKxCustomSaveLiteDialog> cls("TKxCustomSaveLiteDialog",
                                                            TKxCustomOpenLiteDialog::StaticClass());
    return cls.Class();
}

namespace {

/// What both dialogs publish, in its order.
template <class T> void Publish(TClassBuilder<T>& c) {
    c.Creatable();
    PublishTitle(c);
    PublishParams(c);
    c.SubObject("PlacesBar", &T::PlacesBar, nullptr);
    PublishNavigation(c);
    PublishInput(c);
}

} // namespace

const TClass& TKxOpenLiteDialog::StaticClass() {
    static const TClassBuilder<TKxOpenLiteDialog> cls("TKxOpenLiteDialog", TKxCustomOpenLiteDialog::StaticClass(),
                                                      [](auto& c) { Publish<TKxOpenLiteDialog>(c); });
    return cls.Class();
}

const TClass& TKxSaveLiteDialog::StaticClass() {
    static const TClassBuilder<TKxSaveLiteDialog> cls("TKxSaveLiteDialog", TKxCustomSaveLiteDialog::StaticClass(),
                                                      [](auto& c) { Publish<TKxSaveLiteDialog>(c); });
    return cls.Class();
}

// --- Running

TKxCustomOpenLiteDialog::TKxCustomOpenLiteDialog(TComponent* owner)
    : TOpenDialog(owner), TKxFileDlgCore(static_cast<TOpenDialog&>(*this)) {
    SetOptionsEx({ofExNoPlacesBar});
}

TKxCustomOpenLiteDialog::~TKxCustomOpenLiteDialog() { CloseShown(); }

namespace {

const TPerThread<TKxFormRef<TKxCustomOpenLiteDialog>> RunningDialogs;

} // namespace

TKxCustomOpenLiteDialog::TDialogRef& TKxCustomOpenLiteDialog::RunningRef() { return *RunningDialogs; }

TKxCustomOpenLiteDialog* TKxCustomOpenLiteDialog::Running() { return RunningRef().Get(); }

void TKxCustomOpenLiteDialog::PrepareExecution() {
    FPrevCreationControl.Set(Running());
    RunningRef().Set(this);
}

void TKxCustomOpenLiteDialog::FinishExecution() { RunningRef().Set(FPrevCreationControl.Get()); }

bool TKxCustomOpenLiteDialog::RunLite(TSystemDialog* dialog, OPENFILENAMEA& record) {
    TKxCustomOpenLiteDialog* const running = Running();
    if (running && PlacesBarSupported() && running->PlacesBar().Visible()) {
        // Deliberate: the system's answers in the record are not copied back; the file names are in its buffer.
        OPENFILENAMEA copy = KxWithPlacesBar(record);
        return dialog(&copy) != FALSE;
    }
    return dialog(&record) != FALSE;
}

bool TKxCustomOpenLiteDialog::Execute() {
    if (DlgHandle()) {
        return TOpenDialog::Execute(); // refuses, and the showing stays as it is
    }
    const std::weak_ptr<const void> alive = Alive();
    PrepareExecution();
    const bool confirmed = DoExecute([](OPENFILENAMEA& record) { return RunLite(GetOpenFileNameA, record); });
    if (!alive.expired()) {
        FinishExecution();
    }
    return confirmed;
}

bool TKxCustomSaveLiteDialog::Execute() {
    if (DlgHandle()) {
        return TOpenDialog::Execute(); // refuses, and the showing stays as it is
    }
    PrepareExecution();
    // Deliberate: unlike the open dialog it stays the running one afterwards; the next dialog takes its place.
    return DoExecute([](OPENFILENAMEA& record) { return RunLite(GetSaveFileNameA, record); });
}

// --- Showing

void TKxCustomOpenLiteDialog::DoShow() {
    const std::weak_ptr<const void> alive = Alive();
    TOpenDialog::DoShow();
    if (alive.expired()) {
        return;
    }
    AttachDialog();
    if (alive.expired()) {
        return;
    }
    using T = TKxCustomOpenLiteDialog;
    RunSteps<T>(*this, {&T::MeasureDialog, &T::DockForms, &T::MeasureList, &T::ShowVisibleCtrls, &T::FireShow});
}

/// Notes the outer size that the dialog, without the forms, is going to have.
void TKxCustomOpenLiteDialog::MeasureDialog() {
    if (!IsSizeable() || CX == 0) {
        const TRect outer = KxWindowRect(DlgHandle());
        CX = Width(outer);
        CY = Height(outer);
    }
}

void TKxCustomOpenLiteDialog::DoClose() {
    if (Alive().expired() && !FClosingWindow) { // the dialog is freed and leaves its window
        ShrinkBack();
    }
    DetachDialog();
    TOpenDialog::DoClose();
}

// --- Messages

void TKxCustomOpenLiteDialog::WMNotify(TMessage& message) {
    const UINT code = message.LParamAs<NMHDR>().code;
    if (Outlives(*this, [&] { TOpenDialog::WMNotify(message); })) {
        AfterNotification(code);
    }
}

TKxMsgVerdict TKxCustomOpenLiteDialog::BeforeSystem(TMessage& message) {
    switch (message.Msg) {
    case WM_DESTROY: ShrinkBack(); return mvPass;
    case WM_SHOWWINDOW: PlaceFirst(); return mvPass;
    case WM_NCPAINT:
        PlaceFirst();
        Window().PushLowerControls(CustDlgParams());
        return mvPass;
    case WM_SIZE: CustDlgParams().OnResizeWindow(message); return mvPass;
    default: return TKxFileDlgCore::BeforeSystem(message);
    }
}

} // namespace kx
