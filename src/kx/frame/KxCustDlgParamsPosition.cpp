// SPDX-License-Identifier: MIT
// Where a dialog shows.

#include "kx/frame/KxCustDlgParams.h"

#include "kx/frame/KxDlgGeometry.h"
#include "kx/ui/dialogs/Dialogs.h"
#include "kx/win/Windows.h"

namespace kx {

namespace {

int32_t ScreenWidth() { return GetSystemMetrics(SM_CXSCREEN); }
int32_t ScreenHeight() { return GetSystemMetrics(SM_CYSCREEN); }

/// A window that is there already is not moved: the system asks the window about each move and tells it afterwards,
/// even when nothing moves.
void MoveWindowTo(HWND window, const TPoint& corner) {
    const TRect r = KxWindowRect(window);
    if (r.Left == corner.X && r.Top == corner.Y) {
        return;
    }
    SetWindowPos(window, nullptr, corner.X, corner.Y, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOREDRAW | SWP_NOACTIVATE | SWP_DEFERERASE);
}

/// Centres the window over the form that `find` names; when it names none, over the main form.
template <class F> void CenterOverForm(HWND window, F find) {
    std::optional<TRect> place;
    KxInFormsThread([&] {
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

/// Centres the window over the one that the dialog belongs to. False when none is set.
bool CenterOverOwnerWindow(HWND window, const TKxCustDlgParams& params) {
    const auto* const dialog = dynamic_cast<const TCommonDialog*>(params.Dlg());
    HWND owner = dialog ? GetAncestor(dialog->OwnerWindow(), GA_ROOT) : nullptr;
    if (!owner || owner == GetDesktopWindow()) {
        return false;
    }
    MoveWindowTo(window, CenterOver(KxWindowRect(window), KxWindowRect(owner)));
    return true;
}

/// The form that owns the dialog component; null when something else, or nothing, owns it.
TCustomForm* OwnerForm(const TKxCustDlgParams& params) {
    return params.Dlg() ? dynamic_cast<TCustomForm*>(params.Dlg()->Owner()) : nullptr;
}

} // namespace

void KxFitRectToScreen(TRect& rect) { rect = FitRect(rect, ScreenWidth(), ScreenHeight()); }

void KxCenterWindow(HWND window) {
    MoveWindowTo(window, CenterOnScreen(KxWindowRect(window), ScreenWidth(), ScreenHeight()));
}

void KxSetPosition(HWND window, const TKxCustDlgParams& params) {
    const TKxPosParams& details = params.PosParams();
    // All parameters are read first: handlers of the messages that moving sends may free the dialog with them.
    const TPoint shift{details.ShiftX(), details.ShiftY()};
    const bool fitToScreen = details.FitToScreen();
    switch (params.Position()) {
    case dpDefault: break;
    case dpScrCenter: KxCenterWindow(window); break;
    case dpMainFormCenter: CenterOverForm(window, [] { return static_cast<TCustomForm*>(nullptr); }); break;
    case dpOwnerCenter:
        if (!CenterOverOwnerWindow(window, params)) {
            CenterOverForm(window, [&] { return OwnerForm(params); });
        }
        break;
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

} // namespace kx
