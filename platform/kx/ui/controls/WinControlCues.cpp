// SPDX-License-Identifier: MIT
// What the system says of the looks of a window, and whether marks for the keyboard are shown in it.

#include "kx/ui/controls/Controls.h"

#include "kx/win/Windows.h"

namespace kx {

TSystemLook& TWinControl::SystemLook() const {
    if (!FSystemLook) {
        FSystemLook = std::make_unique<TSystemLook>();
    }
    return *FSystemLook;
}

TTheme TWinControl::Theme(TThemeKind kind) const {
    return FHandle && !HighContrast() ? SystemLook().Theme(FHandle, kind) : TTheme();
}

bool TWinControl::HighContrast() const { return SystemLook().HighContrast(); }

// --- Marks for the keyboard
//
// All windows that are inside one top-level window agree about the marks. A window that wants a change asks the one
// around it, and the outermost one tells those inside.

namespace {

/// The user's last input in this thread was a key, and not a click.
thread_local bool LastInputWasKey = false;

/// The marks that a window which has just been opened does not show.
WPARAM HiddenAtFirst() {
    BOOL always = TRUE;
    SystemParametersInfoA(SPI_GETKEYBOARDCUES, 0, &always, 0);
    return always || LastInputWasKey ? 0 : UISF_HIDEACCEL | UISF_HIDEFOCUS;
}

} // namespace

UINT TWinControl::HiddenPrefix() const { return FHiddenCues & UISF_HIDEACCEL ? UINT{DT_HIDEPREFIX} : 0; }

bool TWinControl::HidesFocus() const { return (FHiddenCues & UISF_HIDEFOCUS) != 0; }

void TWinControl::InputSeen(bool isKey) { LastInputWasKey = isKey; }

/// A new window, or one that has come into another, shows what the windows around it show.
void TWinControl::TakeCues() {
    const HWND around = Parent() ? nullptr : GetAncestor(FHandle, GA_PARENT);
    const bool isInside = around && around != GetDesktopWindow();
    const TAlive alive(*this);
    const WPARAM hidden = Parent()   ? Parent()->FHiddenCues
                          : isInside ? static_cast<WPARAM>(SendMessageW(around, WM_QUERYUISTATE, 0, 0))
                                     : HiddenAtFirst();
    if (!alive) { // who hears of the question may have ended the dialog around, with all that is in it
        return;
    }
    const WPARAM more = hidden & ~FHiddenCues;
    const WPARAM less = FHiddenCues & ~hidden;
    const HWND window = FHandle;
    if (more != 0) {
        SendMessageW(window, WM_UPDATEUISTATE, MAKEWPARAM(UIS_SET, more), 0);
    }
    if (less != 0 && IsWindow(window)) {
        SendMessageW(window, WM_UPDATEUISTATE, MAKEWPARAM(UIS_CLEAR, less), 0);
    }
}

void TWinControl::ShowCues(WPARAM hidden) {
    if (FHiddenCues & hidden) {
        SendMessageW(FHandle, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, hidden), 0);
    }
}

void TWinControl::CuesWanted(const TMessage& message) {
    const HWND around = GetAncestor(FHandle, GA_PARENT);
    if (around && around != GetDesktopWindow()) {
        SendMessageW(around, message.Msg, message.WParam, message.LParam);
    } else if (message.WParamLo() == UIS_INITIALIZE) {
        TakeCues();
    } else {
        SendMessageW(FHandle, WM_UPDATEUISTATE, message.WParam, 0);
    }
}

/// The windows inside are told when something changes, by us and by systems that do so themselves.
void TWinControl::CuesChanged(TMessage& message) {
    const auto flags = static_cast<uint8_t>(message.WParamHi());
    const auto hidden =
        static_cast<uint8_t>(message.WParamLo() == UIS_SET ? FHiddenCues | flags : FHiddenCues & ~flags);
    if (hidden == FHiddenCues) {
        return;
    }
    FHiddenCues = hidden;
    const TMessage original = message;
    if (Outlives(*this, [&] { DefaultHandler(message); }) && Outlives(*this, [&] { TellInside(original, true); })) {
        Invalidate();
    }
}

} // namespace kx
