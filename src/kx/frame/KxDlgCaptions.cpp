// SPDX-License-Identifier: MIT
// The texts that replace those of the buttons.

#include "kx/frame/KxDlgCaptions.h"

#include "kx/win/Windows.h"

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

} // namespace kx
