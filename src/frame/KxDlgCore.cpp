#include "frame/KxDlgCore.h"

#include "core/Barrier.h"

namespace kx {

TKxDlgCore::TKxDlgCore(TCommonDialog& dialog, bool tracksContextMenus)
    : FDialog(dialog), FPipeline(*this, tracksContextMenus) {
    FParams.SetDlg(&dialog);
}

void TKxDlgCore::AttachDialog(HWND window) {
    FPipeline.Attach(window);
    FDlgHandle = window;
}

void TKxDlgCore::DetachDialog() {
    FPipeline.Detach();
    Application().HideHint();
    FDlgHandle = nullptr;
}

void TKxDlgCore::DockForms() {
    Guarded([this] { FParams.ConnectForms(FDialog.DialogWindow()); });
}

void TKxDlgCore::FireShow() {
    const TNotifyEvent internalShow = FOnInternalShow;
    const std::weak_ptr<const void> alive = FAlive;
    Guarded([this] { FMyOnShow(&FDialog); });
    if (!alive.expired()) {
        internalShow(&FDialog);
    }
}

} // namespace kx
