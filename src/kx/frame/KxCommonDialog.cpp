// SPDX-License-Identifier: MIT
// What all dialogs do alike.

#include "kx/frame/KxCommonDialog.h"

#include "kx/ui/controls/ControlTypes.h"
#include "kx/win/Windows.h"

namespace kx {

void KxCloseDialog(HWND handle, int modalResult) {
    if (modalResult != mrOk && modalResult != mrCancel) {
        return;
    }
    const int id = modalResult == mrOk ? IDOK : IDCANCEL;
    HWND button = GetDlgItem(handle, id);
    if (!IsWindowEnabled(button)) {
        return;
    }
    // A click by message may fail in a dialog that is not the active one. So this does what a click does, and sends the
    // command of the button itself.
    HWND focus = GetFocus();
    SetFocus(button);
    SendMessageW(handle, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(button));
    if (IsWindow(focus) && GetFocus() == button && IsWindowVisible(handle) && !IsWindowVisible(button)) {
        SetFocus(focus); // a hidden button would keep the focus where nobody sees it
    }
}

} // namespace kx
