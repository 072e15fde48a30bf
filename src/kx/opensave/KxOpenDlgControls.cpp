// The full dialogs' OK button with its menu, their list and their custom form.

#include "kx/opensave/KxOpenDlg.h"

#include "kx/core/Barrier.h"
#include "kx/dropdown/KxDropDownButton.h"
#include "kx/frame/KxWhileAlive.h"
#include "kx/win/Windows.h"

#include <commdlg.h>

// What the running dialog shows: its controls, the OK button with a menu, and what stands in the place of its list.

namespace kx {

// --- Visible controls

void TKxCustomOpenDialog::SetVisibleCtrls(TKxOpenDlgControls value) {
    if (Outlives(Existence(), [&] { TKxFileDlgCore::SetVisibleCtrls(value); })) {
        using T = TKxCustomOpenDialog;
        RunSteps<T>(*this, {&T::ShowOkButton, &T::RefreshSelCtrl});
    }
}

// --- The OK button with a menu

void TKxCustomOpenDialog::ShowOkButton() {
    HWND dialog = DlgHandle();
    const bool visible = VisibleControls().Contains(dcOkBtn);
    if (!dialog || !Outlives(Existence(), [&] { CreateOkButton(visible); })) {
        return;
    }
    if (TForm* const form = FOKButtonFrm.Get()) {
        form->SetVisible(visible);
        SendMessageA(dialog, CDM_HIDECONTROL, IDOK, 0);
    }
}

/// If there is to be one, and is not yet.
void TKxCustomOpenDialog::CreateOkButton(bool visible) {
    if (!visible || !FPopupMenu || FOKButtonFrm) {
        return;
    }
    HWND dialog = DlgHandle();
    HWND button = Window().Item(IDOK);
    HWND fileType = Window().Item(KxFileTypeId);
    const TRect r = KxRectIn(dialog, button);
    auto* const form = NewForm<TForm>(&Application());
    FOKButtonFrm.Set(form);
    form->SetBorderStyle(bsNone);
    form->SetParentWindow(dialog);
    FOKButton = new TKxBitBtn(form);
    FOKButton->SetParent(form);
    FOKButton->SetAlign(alClient);
    FOKButton->SetDropDownMenu(FPopupMenu.Get());
    const std::string& caption = DlgItemsCaptions().OK();
    FOKButton->SetCaption(caption.empty() ? KxWindowText(button) : caption);
    FOKButton->SetOnClick({this, &TKxCustomOpenDialog::DoOKClick, "DoOKClick"});
    // The dialog is told of the window, and the application with it, which may free the dialog and this form.
    KxWhileAlive(
        *form, [&] { form->SetBoundsRect(r); }, [&] { form->SetVisible(true); },
        [&] {
            SetWindowPos(form->Handle(), fileType, r.Left, r.Top, Width(r), Height(r), SWP_SHOWWINDOW | SWP_NOACTIVATE);
        });
}

/// The system moves its own button alone when the dialog is laid out.
void TKxCustomOpenDialog::AlignOkButton() {
    if (TForm* const form = FOKButtonFrm.Get()) {
        const TRect r = KxRectIn(DlgHandle(), Window().Item(IDOK));
        form->SetBounds(r.Left, r.Top, form->Width(), form->Height());
    }
}

void TKxCustomOpenDialog::FreeOkButton() {
    FOKButton = nullptr;
    if (TForm* const form = FOKButtonFrm.Get()) {
        form->Free();
    }
}

void TKxCustomOpenDialog::DoOKClick(TObject*) { CloseDialog(mrOk); }

// --- What the user selects with

std::string TKxCustomOpenDialog::GetSelFiles() const {
    return FListType == stCustom ? Window().GetFNameText() : TKxFileDlgCore::GetSelFiles();
}

void TKxCustomOpenDialog::SetLstType(TKxDlgSelectionType value) {
    FListType = value;
    RefreshSelCtrl();
}

void TKxCustomOpenDialog::RefreshSelCtrl() {
    if (!DlgHandle()) {
        return;
    }
    const auto showStandard = [this] { ShowStdSelectionCtrls(ShowsFileList()); };
    const auto showCustom = [this] {
        ShowCustomSelectionCtrl(!ShowsFileList() && VisibleControls().Contains(dcSelectionCtrl));
    };
    ShowsFileList() ? KxWhileAlive(Existence(), showCustom, showStandard)
                    : KxWhileAlive(Existence(), showStandard, showCustom);
}

namespace {

/// To the back of the dialog, and out of sight.
void PutAway(HWND window) {
    if (IsWindowVisible(window)) {
        SetWindowPos(window, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_HIDEWINDOW);
    }
}

void ShowInSize(HWND window, int width, int height) {
    const TRect r = KxWindowRect(window);
    const bool fits = Width(r) == width && Height(r) == height;
    if (window && (!fits || !(GetWindowLongPtrA(window, GWL_STYLE) & WS_VISIBLE))) {
        SetWindowPos(window, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    }
}

void SetEnabled(HWND window, bool enabled) {
    if (window && (IsWindowEnabled(window) != 0) != enabled) {
        EnableWindow(window, enabled);
    }
}

} // namespace

/// The shell view and the list box whose place it takes: one is the list, the other one never shows.
void TKxCustomOpenDialog::ShowStdSelectionCtrls(bool show) {
    HWND edit = EditHandle();
    const TRect r = CustDlgParams().CustRect(); // a width and a height
    HWND placeholder = Window().Item(KxListPlaceholderId);
    HWND view = Window().Item(KxShellViewId);
    HWND list = GetLVHandle(); // the view may have other children before it
    if (KxIsShellView(placeholder)) {
        std::swap(placeholder, view);
    }
    PutAway(placeholder);
    if (show) {
        ShowInSize(view, r.Right, r.Bottom);
        ShowInSize(list, r.Right, r.Bottom);
    } else {
        // Hiding alone leaves it the focus, and keys like Delete would go on reaching files that nobody sees.
        if (IsChild(view, GetFocus())) {
            SetFocus(edit); // which may free the dialog; its windows are there until it has ended
        }
        PutAway(view);
    }
    SetEnabled(placeholder, show);
    SetEnabled(view, show);
}

void TKxCustomOpenDialog::ShowCustomSelectionCtrl(bool show) {
    if (!show) {
        CustDlgParams().HideCustomForm();
        return;
    }
    KxWithForms([this] {
        TForm* const form = CustDlgParams().CustomForm();
        if (!form) {
            return;
        }
        HWND dialog = DlgHandle();
        const TRect r = CustDlgParams().CustRect();
        KxWhileAlive(
            {TAlive(*form), TAlive(Existence())}, [=] { form->SetParent(nullptr); },
            [=] { form->SetParentWindow(dialog); }, [=] { form->SetBounds(r.Left, r.Top, r.Right, r.Bottom); },
            [=] { form->SetVisible(true); }, [=] { form->Invalidate(); });
    });
}

} // namespace kx
