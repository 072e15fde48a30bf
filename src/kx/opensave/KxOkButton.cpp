// SPDX-License-Identifier: MIT
// The OK button with a menu.

#include "kx/opensave/KxOkButton.h"

#include "kx/dropdown/KxDropDownButton.h"
#include "kx/frame/KxWhileAlive.h"
#include "kx/win/Dpi.h"
#include "kx/win/Windows.h"

#include <commdlg.h>

namespace kx {

void TKxOkButton::Show() {
    HWND dialog = FDialog.DlgHandle();
    const bool visible = FDialog.VisibleControls().Contains(dcOkBtn);
    if (!dialog || !Outlives(FDialog.Existence(), [&] { Create(visible); })) {
        return;
    }
    if (TForm* const form = FOKButtonFrm.Get()) {
        form->SetVisible(visible);
        SendMessageW(dialog, CDM_HIDECONTROL, IDOK, 0);
    }
}

void TKxOkButton::Create(bool visible) {
    if (!visible || !FPopupMenu || FOKButtonFrm) {
        return;
    }
    HWND dialog = FDialog.DlgHandle();
    HWND systemButton = FDialog.Window().Item(IDOK);
    HWND fileType = FDialog.Window().Item(KxFileTypeId);
    const TRect r = KxRectIn(dialog, systemButton);
    auto* const form = NewForm<TForm>(&Application());
    FOKButtonFrm.Set(form);
    form->SetBorderStyle(bsNone);
    form->SetParentWindow(dialog);
    auto* const button = new TKxBitBtn(form);
    button->SetParent(form);
    button->ScaleForDpi(WindowDpi(dialog), DefaultDpi);
    if (const LRESULT font = SendMessageW(systemButton, WM_GETFONT, 0, 0)) {
        button->Font().SetHandle(reinterpret_cast<HFONT>(font));
    }
    button->SetAlign(alClient);
    button->SetDropDownMenu(FPopupMenu.Get());
    const std::string& caption = FDialog.DlgItemsCaptions().OK();
    button->SetCaption(caption.empty() ? WindowText(systemButton) : caption);
    button->SetOnClick([&core = FDialog](TObject*) { core.CloseDialog(mrOk); });
    // The dialog is told of the new window. The application hears of that too, and may free the dialog and this form.
    KxWhileAlive(
        *form, [&] { form->SetBoundsRect(r); }, [&] { form->SetVisible(true); },
        [&] {
            SetWindowPos(form->Handle(), fileType, r.Left, r.Top, Width(r), Height(r), SWP_SHOWWINDOW | SWP_NOACTIVATE);
        });
}

void TKxOkButton::Align() {
    if (TForm* const form = FOKButtonFrm.Get()) {
        const TRect r = KxRectIn(FDialog.DlgHandle(), FDialog.Window().Item(IDOK));
        form->SetBounds(r.Left, r.Top, form->Width(), form->Height());
    }
}

void TKxOkButton::Free() {
    if (TForm* const form = FOKButtonFrm.Get()) {
        form->Free();
    }
}

} // namespace kx
