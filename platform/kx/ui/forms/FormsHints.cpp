// SPDX-License-Identifier: MIT
// When hints show, and when they go.

#include "kx/ui/forms/Forms.h"

#include "kx/ui/forms/HintTip.h"
#include "kx/win/Windows.h"

namespace kx {

namespace {

/// The control if it has a hint, else the nearest one around it that has one.
TControl* HintedControl(TControl* control) {
    while (control && control->Hint().empty()) {
        control = control->Parent();
    }
    return control;
}

} // namespace

void TApplication::SetShowHint(bool value) {
    FShowHint = value;
    if (!value) {
        CancelHint();
    }
}

void TApplication::SetHint(const std::string& value) {
    if (FHint != value) {
        FHint = value;
        DoHint();
    }
}

void TApplication::DoHint() { FOnHint(this); }

HWND TApplication::HintHandle() const { return FHintTip->Handle(); }

/// The mouse moved over `control`; null: it left a window. That is told late: it may be over another one by now.
void TApplication::MouseOver(TControl* control, const TPoint& screenPoint) {
    if (!InOwnThread()) {
        return;
    }
    if (!control) {
        POINT mouse;
        GetCursorPos(&mouse);
        control = FindDragTarget(FromPOINT(mouse), true);
    }
    TControl* const hinted = HintedControl(control);
    const bool isOutdated = !hinted && FHintOfMouse; // its control may have gone meanwhile
    if (hinted == FHintControl && !isOutdated) {
        FHintPoint = screenPoint;
        return;
    }
    CancelHint();
    FHintControl = hinted;
    FHintPoint = screenPoint;
    if (hinted && FShowHint && hinted->ShowHint() && FHandle) {
        FHintWaiting = true;
        SetTimer(FHandle, HintTimerId, static_cast<UINT>(FHintPause), nullptr);
    }
    FHintOfMouse = hinted != nullptr;
    SetHint(hinted ? GetLongHint(hinted->Hint()) : std::string());
}

void TApplication::HintTimer() {
    StopHintTimer();
    if (!std::exchange(FHintWaiting, false)) {
        HideHint();
        return;
    }
    POINT mouse;
    GetCursorPos(&mouse);
    if (FHintControl && HintedControl(FindDragTarget(FromPOINT(mouse), true)) == FHintControl) {
        ActivateHint(FromPOINT(mouse));
    }
}

void TApplication::StopHintTimer() {
    if (FHandle) {
        KillTimer(FHandle, HintTimerId);
    }
}

void TApplication::ActivateHint(const TPoint& screenPoint) {
    if (!InOwnThread()) {
        return;
    }
    TControl* const control = HintedControl(FindDragTarget(screenPoint, true));
    if (!control || !control->ShowHint() || !FShowHint) {
        CancelHint();
        return;
    }
    const std::string hint = GetShortHint(control->Hint());
    FHintControl = control;
    if (hint.empty()) {
        return;
    }
    FHintTip->Show(FHandle, screenPoint, hint);
    FHintWaiting = false;
    SetTimer(FHandle, HintTimerId, static_cast<UINT>(FHintHidePause), nullptr);
}

void TApplication::HideHint() {
    if (!InOwnThread()) {
        QueueCall([this] { HideHint(); });
        return;
    }
    if (HintHandle()) {
        StopHintTimer();
        FHintTip->Hide();
    }
}

/// Hides the hint, or waits for it no longer. Until the mouse comes over another control, it does not come back.
void TApplication::EndHint() {
    if (!InOwnThread()) {
        QueueCall([this] { EndHint(); });
        return;
    }
    HideHint();
    if (std::exchange(FHintWaiting, false)) {
        StopHintTimer();
    }
}

void TApplication::CancelHint() {
    if (!InOwnThread()) {
        QueueCall([this] { CancelHint(); });
        return;
    }
    EndHint();
    FHintControl = nullptr;
}

} // namespace kx
