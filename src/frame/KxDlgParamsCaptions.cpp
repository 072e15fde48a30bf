#include "frame/KxDlgParams.h"

namespace kx {

namespace {

constexpr int HelpButton = 1038; // the common dialogs' pshHelp

} // namespace

const TClass& TKxDlgCaptions::StaticClass() {
    using C = TKxDlgCaptions;
    static const TClassBuilder<C> cls("TKxDlgCaptions", TPersistent::StaticClass(), [](auto& c) {
        c.Property("OK", &C::OK, &C::SetOK);
        c.Property("Cancel", &C::Cancel, &C::SetCancel);
        c.Property("Help", &C::Help, &C::SetHelp);
    });
    return cls.Class();
}

void TKxDlgCaptions::SetCaptions(HWND handle) const {
    SetCaption(handle, IDOK, FOk);
    SetCaption(handle, IDCANCEL, FCancel);
    SetCaption(handle, HelpButton, FHelp);
}

void TKxDlgCaptions::SetCaption(HWND handle, int controlId, const std::string& text) {
    if (!text.empty()) {
        SetWindowTextA(GetDlgItem(handle, controlId), text.c_str());
    }
}

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
