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
    // What a click does, but by the command that the button sends: a click by message may fail in a dialog that is not
    // the active one.
    HWND focus = GetFocus();
    SetFocus(button);
    SendMessageA(handle, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(button));
    if (IsWindow(focus) && GetFocus() == button && IsWindowVisible(handle) && !IsWindowVisible(button)) {
        SetFocus(focus); // a hidden button would keep it where nobody sees it
    }
}

} // namespace kx
