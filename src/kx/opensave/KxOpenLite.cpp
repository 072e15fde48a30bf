// SPDX-License-Identifier: MIT
// The lite open and save dialogs: their run and their steps.

#include "kx/opensave/KxOpenLite.h"

#include "kx/frame/KxWhileAlive.h"
#include "kx/opensave/KxFileDlgPublish.h"
#include "kx/opensave/KxNativePlacesBar.h"
#include "kx/win/Windows.h"

#include <commdlg.h>

namespace kx {

template class TKxRunning<TKxCustomOpenLiteDialog>;

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
    PublishMemory(c);
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

TKxCustomOpenLiteDialog* TKxCustomOpenLiteDialog::Running() { return TRunning::Dialog(); }

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
    const TRunning running = PrepareExecution();
    return RunRemembering(
        [this] { return DoExecute([](OPENFILENAMEA& record) { return RunLite(GetOpenFileNameA, record); }); });
}

bool TKxCustomSaveLiteDialog::Execute() {
    TRunning running = PrepareExecution();
    // Deliberate: unlike the open dialog it stays the running one afterwards; the next dialog takes its place.
    running.Stay();
    return RunRemembering(
        [this] { return DoExecute([](OPENFILENAMEA& record) { return RunLite(GetSaveFileNameA, record); }); });
}

// --- Showing

void TKxCustomOpenLiteDialog::DoShow() {
    using T = TKxCustomOpenLiteDialog;
    if (KxWhileAlive(
            Existence(), [this] { TOpenDialog::DoShow(); }, [this] { AttachDialog(); })) {
        RunSteps<T>(*this, {&T::MeasureDialog, &T::DockForms, &T::MeasureList, &T::ShowVisibleCtrls, &T::FireShow});
    }
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
    using T = TKxCustomOpenLiteDialog;
    RunSteps<T>(*this, {&T::LeaveAtLast, &T::DetachDialog, &T::FireInheritedClose});
}

void TKxCustomOpenLiteDialog::FireInheritedClose() { TOpenDialog::DoClose(); }

// --- Messages

void TKxCustomOpenLiteDialog::WMNotify(TMessage& message) {
    const UINT code = message.LParamAs<NMHDR>().code;
    if (Outlives(Existence(), [&] { TOpenDialog::WMNotify(message); })) {
        AfterNotification(code);
    }
}

TKxMsgVerdict TKxCustomOpenLiteDialog::BeforeSystem(TMessage& message, int& command) {
    switch (message.Msg) {
    case WM_SHOWWINDOW: PlaceFirst(); return mvPass;
    case WM_NCPAINT:
        if (Outlives(Existence(), [this] { PlaceFirst(); })) {
            Window().PushLowerControls(CustDlgParams());
        }
        return mvPass;
    case WM_SIZE: CustDlgParams().OnResizeWindow(message); return mvPass;
    default: return TKxFileDlgCore::BeforeSystem(message, command);
    }
}

} // namespace kx
