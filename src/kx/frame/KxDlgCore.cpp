// SPDX-License-Identifier: MIT
// The steps that all dialogs share.

#include "kx/frame/KxDlgCore.h"

#include "kx/core/Barrier.h"
#include "kx/win/Windows.h"

namespace kx {

TKxDlgCore::TKxDlgCore(TCommonDialog& dialog) : FDialog(dialog), FPipeline(*this) { FParams.SetDlg(&dialog); }

void TKxDlgCore::AttachDialog(HWND window) {
    FPipeline.Attach(window);
    FDlgHandle = window;
}

void TKxDlgCore::DetachDialog() {
    FPipeline.Detach();
    FDlgHandle = nullptr;
    Application().HideHint();
}

void TKxDlgCore::DockForms() {
    Guarded([this] { FParams.ConnectForms(FDialog.DialogWindow()); });
}

void TKxDlgCore::ShowTitle() {
    const std::string title = FTitle; // handlers of the message may free the dialog with its title
    if (!title.empty()) {
        SetWindowTextA(FDlgHandle, title.c_str());
    }
}

void TKxDlgCore::FireShow() {
    if (Outlives(FExistence, [this] { Guarded([this] { FMyOnShow(&FDialog); }); })) {
        FOnInternalShow(&FDialog);
    }
}

} // namespace kx
