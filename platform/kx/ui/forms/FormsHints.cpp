// Hints, and the window that shows them.

#include "kx/ui/forms/Forms.h"

#include "kx/win/Monitors.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

/// The small window that shows a hint.
class THintWindow : public TCustomControl {
    KX_CLASS()

    THintWindow() {
        SetColor(clInfoBk);
        Font().SetColor(clInfoText);
        Hide();
    }

    /// Shows `text` below the pointer, whose place on the screen is given, or as near as its monitor allows.
    void ActivateHint(const TPoint& pointer, const std::string& text) {
        SetText(text);
        HandleNeeded();
        const TRect monitor = MonitorAt({pointer.X, pointer.Y, pointer.X + 1, pointer.Y + 1}).Whole;
        TRect r{0, 0, kx::Width(monitor) / 2, 0};
        Canvas().Font().Assign(&Font());
        Canvas().DrawText(text, r, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
        const int width = r.Right + 8;
        const int height = r.Bottom + 6;
        const int below = pointer.Y + GetSystemMetrics(SM_CYCURSOR) / 2 + 4;
        const int left = std::max(monitor.Left, std::min(pointer.X, monitor.Right - width));
        const int top = std::max(monitor.Top, std::min(below, monitor.Bottom - height));
        SetWindowPos(WindowHandle(), HWND_TOPMOST, left, top, width, height, SWP_NOACTIVATE | SWP_SHOWWINDOW);
        Repaint();
    }

    void Deactivate() { DestroyHandle(); }

protected:
    void CreateParams(TCreateParams& params) override {
        TCustomControl::CreateParams(params);
        params.Style = WS_POPUP | WS_BORDER;
        params.ExStyle = WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_NOACTIVATE;
        params.ClassStyle |= CS_SAVEBITS;
        params.WndParent = Application().Handle();
    }

    void WndProc(TMessage& message) override {
        if (message.Msg == WM_NCHITTEST) {
            message.Result = HTTRANSPARENT; // the mouse acts on the window below
        } else {
            TCustomControl::WndProc(message);
        }
    }

    void Paint() override {
        TRect r = ClientRect();
        r.Left += 3;
        r.Top += 2;
        Canvas().Font().Assign(&Font());
        Canvas().Brush().SetStyle(bsClear);
        Canvas().DrawText(Text(), r, DT_WORDBREAK | DT_NOPREFIX);
    }
};

const TClass& THintWindow::StaticClass() {
    static const TClassBuilder<THintWindow> cls("THintWindow", TCustomControl::StaticClass());
    return cls.Class();
}

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

HWND TApplication::HintHandle() const {
    return FHintWindow && FHintWindow->HandleAllocated() ? FHintWindow->WindowHandle() : nullptr;
}

/// The mouse moved over `control`; null: it left the program's windows.
void TApplication::MouseOver(TControl* control, const TPoint& screenPoint) {
    if (!InOwnThread()) {
        return;
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
    if (!FHintWindow) {
        FHintWindow = std::make_unique<THintWindow>();
    }
    static_cast<THintWindow&>(*FHintWindow).ActivateHint(screenPoint, hint);
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
        static_cast<THintWindow&>(*FHintWindow).Deactivate();
    }
}

void TApplication::CancelHint() {
    if (!InOwnThread()) {
        QueueCall([this] { CancelHint(); });
        return;
    }
    HideHint();
    if (FHintWaiting) {
        StopHintTimer();
        FHintWaiting = false;
    }
    FHintControl = nullptr;
}

} // namespace kx
