#include "frame/KxDlgParams.h"

#include "core/Barrier.h"

#include <optional>

namespace kx {

thread_local HWND GHandle = nullptr;

TRect KxWindowRect(HWND window) {
    RECT r{};
    GetWindowRect(window, &r);
    return FromRECT(r);
}

TRect KxClientRect(HWND window) {
    RECT r{};
    GetClientRect(window, &r);
    return FromRECT(r);
}

TRect KxRectIn(HWND container, HWND window) {
    RECT r{};
    GetWindowRect(window, &r);
    MapWindowPoints(nullptr, container, reinterpret_cast<POINT*>(&r), 2);
    return FromRECT(r);
}

namespace {

int32_t ScreenWidth() { return GetSystemMetrics(SM_CXSCREEN); }
int32_t ScreenHeight() { return GetSystemMetrics(SM_CYSCREEN); }

/// What is there already stays: the system asks and tells the window of each move, whether it moves it or not.
void MoveWindowTo(HWND window, const TPoint& corner) {
    const TRect r = KxWindowRect(window);
    if (r.Left == corner.X && r.Top == corner.Y) {
        return;
    }
    SetWindowPos(window, nullptr, corner.X, corner.Y, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOREDRAW | SWP_NOACTIVATE | SWP_DEFERERASE);
}

/// `find` names the form; without one it is the main form.
template <class F> void CenterOverForm(HWND window, F find) {
    std::optional<TRect> place;
    KxWithForms([&] {
        TCustomForm* form = find();
        if (!form) {
            form = Application().MainForm();
        }
        if (form) {
            place = KxWindowRect(form->Handle());
        }
    });
    if (place) {
        MoveWindowTo(window, CenterOver(KxWindowRect(window), *place));
    } else {
        KxCenterWindow(window);
    }
}

/// The form that owns the dialog component; null when something else, or nothing, owns it.
TCustomForm* OwnerForm(const TKxCustDlgParams& params) {
    return params.Dlg() ? dynamic_cast<TCustomForm*>(params.Dlg()->Owner()) : nullptr;
}

/// Nothing that is seen covers it but what stays in front of all.
bool IsOnTop(HWND window) {
    for (HWND above = GetWindow(window, GW_HWNDPREV); above; above = GetWindow(above, GW_HWNDPREV)) {
        if (IsWindowVisible(above) && (GetWindowLongA(above, GWL_EXSTYLE) & WS_EX_TOPMOST) == 0) {
            return false;
        }
    }
    return true;
}

} // namespace

void KxFitRectToScreen(TRect& rect) { rect = FitRect(rect, ScreenWidth(), ScreenHeight()); }

void KxCenterWindow(HWND window) {
    MoveWindowTo(window, CenterOnScreen(KxWindowRect(window), ScreenWidth(), ScreenHeight()));
}

void KxSetPosition(HWND window, const TKxCustDlgParams& params) {
    const TKxPosParams& details = params.PosParams();
    // All of it first: a handler of the messages that moving sends may free the dialog, and with it the parameters.
    const TPoint shift{details.ShiftX(), details.ShiftY()};
    const bool fitToScreen = details.FitToScreen();
    switch (params.Position()) {
    case dpDefault: break;
    case dpScrCenter: KxCenterWindow(window); break;
    case dpMainFormCenter: CenterOverForm(window, [] { return static_cast<TCustomForm*>(nullptr); }); break;
    case dpOwnerCenter: CenterOverForm(window, [&] { return OwnerForm(params); }); break;
    case dpFormCenter: CenterOverForm(window, [&] { return details.Form(); }); break;
    }
    const TRect placed = KxWindowRect(window);
    MoveWindowTo(window, {CheckedAdd(placed.Left, shift.X), CheckedAdd(placed.Top, shift.Y)});
    if (fitToScreen) {
        TRect fitted = KxWindowRect(window);
        KxFitRectToScreen(fitted);
        MoveWindowTo(window, {fitted.Left, fitted.Top});
    }
}

void ResizeWindow(HWND handle, int width, int height) {
    const TRect r = KxWindowRect(handle);
    if (Width(r) == width && Height(r) == height && IsOnTop(handle)) {
        return; // as it is to be already
    }
    // Deliberate: without SWP_NOZORDER, which one would expect, so that the window comes to the top as well.
    // Erased is with the next painting: at once, everything in the dialog would be erased once more before it is shown.
    SetWindowPos(handle, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOACTIVATE | SWP_DEFERERASE);
}

void KxMoveChild(HWND dialog, HWND window, int32_t dx, int32_t dy) {
    if (GetParent(window) != dialog) {
        return;
    }
    const TRect r = KxRectIn(dialog, window);
    SetWindowPos(window, nullptr, CheckedAdd(r.Left, dx), CheckedAdd(r.Top, dy), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_DEFERERASE);
}

void KxEnumDirectChildren(HWND window, WNDENUMPROC callback, LPARAM data) {
    for (HWND child : DirectChildren(window)) {
        // The application hears of what is done to one, and may end others.
        if (IsWindow(child) && !callback(child, data)) {
            return;
        }
    }
}

TDlgFrame KxDlgFrame() { return {GetSystemMetrics(SM_CXDLGFRAME), GetSystemMetrics(SM_CYDLGFRAME)}; }

BOOL CALLBACK MoveLeft(HWND window, LPARAM delta) noexcept {
    Guarded([&] {
        KxMoveChild(GHandle, window, RoomAtLeft(static_cast<int32_t>(delta), KxDlgFrame()), 0);
        if (IsWindow(window)) { // not if it was a control of the application, and went at the move
            RedrawWindow(window, nullptr, nullptr, 0);
        }
    });
    return TRUE;
}

BOOL CALLBACK MoveDown(HWND window, LPARAM delta) noexcept {
    Guarded([&] { KxMoveChild(GHandle, window, 0, RoomAtTop(static_cast<int32_t>(delta), KxDlgFrame())); });
    return TRUE;
}

} // namespace kx
