#include "opensave/KxOpenDlg.h"

#include "core/Barrier.h"
#include "dropdown/KxDropDownButton.h"

// What the running dialog shows: its controls, the OK button with a menu, and what stands in the place of its list.

namespace kx {

// --- Visible controls

void TKxCustomOpenDialog::SetVisibleCtrls(TKxOpenDlgControls value) {
    const std::weak_ptr<const void> alive = Alive(); // the application may free the dialog when it hears of this
    TKxFileDlgCore::SetVisibleCtrls(value);
    if (!alive.expired() && DlgHandle()) {
        ShowOkButton(value.Contains(dcOkBtn));
    }
    if (!alive.expired()) {
        RefreshSelCtrl();
    }
}

// --- The OK button with a menu

void TKxCustomOpenDialog::ShowOkButton(bool visible) {
    HWND button = Window().Item(IDOK);
    if (visible && FPopupMenu && !FOKButtonFrm) {
        CreateOkButton(button);
    }
    if (TForm* const form = FOKButtonFrm.Get()) {
        form->SetVisible(visible);
        SendMessageA(DlgHandle(), CDM_HIDECONTROL, IDOK, 0);
    }
}

void TKxCustomOpenDialog::CreateOkButton(HWND button) {
    auto* const form = NewForm<TForm>(&Application());
    FOKButtonFrm.Set(form);
    form->SetBorderStyle(bsNone);
    form->SetParentWindow(DlgHandle());
    FOKButton = new TKxBitBtn(form);
    FOKButton->SetParent(form);
    FOKButton->SetAlign(alClient);
    FOKButton->SetDropDownMenu(FPopupMenu.Get());
    const std::string& caption = DlgItemsCaptions().OK();
    FOKButton->SetCaption(caption.empty() ? KxWindowText(button) : caption);
    FOKButton->SetOnClick({this, &TKxCustomOpenDialog::DoOKClick, "DoOKClick"});
    const TRect r = KxRectIn(DlgHandle(), button);
    form->SetBoundsRect(r);
    form->SetVisible(true);
    SetWindowPos(form->Handle(), Window().Item(KxFileTypeId), r.Left, r.Top, Width(r), Height(r),
                 SWP_SHOWWINDOW | SWP_NOACTIVATE);
}

/// The system moves its own button alone when the dialog is laid out.
void TKxCustomOpenDialog::AlignOkButton() {
    if (TForm* const form = FOKButtonFrm.Get()) {
        const TRect r = KxRectIn(DlgHandle(), Window().Item(IDOK));
        form->SetBounds(r.Left, r.Top, form->Width(), form->Height());
    }
}

void TKxCustomOpenDialog::FreeOkButton() {
    if (TForm* const form = FOKButtonFrm.Get()) {
        form->Free();
    }
    FOKButton = nullptr;
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
    if (ShowsFileList()) {
        ShowCustomSelectionCtrl(false);
        ShowStdSelectionCtrls(true);
    } else {
        ShowStdSelectionCtrls(false);
        ShowCustomSelectionCtrl(VisibleControls().Contains(dcSelectionCtrl));
    }
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

bool IsShellView(HWND window) {
    char className[32] = {};
    return GetClassNameA(window, className, sizeof className) && SameText(className, "SHELLDLL_DefView");
}

} // namespace

/// The shell view and the list box whose place it takes: one is the list, the other one never shows.
void TKxCustomOpenDialog::ShowStdSelectionCtrls(bool show) {
    HWND placeholder = Window().Item(KxListPlaceholderId);
    HWND view = Window().Item(KxShellViewId);
    if (IsShellView(placeholder)) {
        std::swap(placeholder, view);
    }
    PutAway(placeholder);
    if (show) {
        const TRect& r = CustDlgParams().CustRect(); // a width and a height
        ShowInSize(view, r.Right, r.Bottom);
        ShowInSize(GetWindow(view, GW_CHILD), r.Right, r.Bottom);
    } else {
        // Hiding alone leaves it the focus, and keys like Delete would go on reaching files that nobody sees.
        if (IsChild(view, GetFocus())) {
            SetFocus(EditHandle());
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
        const TRect& r = CustDlgParams().CustRect();
        form->SetParent(nullptr);
        form->SetParentWindow(DlgHandle());
        form->SetBounds(r.Left, r.Top, r.Right, r.Bottom);
        form->SetVisible(true);
        form->Invalidate();
    });
}

} // namespace kx
