// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/ComponentRef.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx {

/// The modeless window from which a dialog's preview runs. Closing it frees it.
class TKxPreviewDummyFrm : public TForm {
    KX_CLASS()

    explicit TKxPreviewDummyFrm(TComponent* owner = nullptr);
    ~TKxPreviewDummyFrm() override;

    KX_FIELDS(TKxPreviewDummyFrm, (TLabel, Label1), (TButton, Button1))

    TComponent* Dlg() const { return FDlg.Get(); } ///< The dialog to be shown; not owned, forgotten when it is freed.
    void SetDlg(TComponent* value) { FDlg.Set(value); }

    /// Shows the dialog, once, and closes the window.
    void Button1Click(TObject* sender);
    void FormClose(TObject* sender, TCloseAction& action);

private:
    TComponentRef<TComponent> FDlg;
    bool FPreviewed = false;
};

/// The latest window; null when it is gone.
extern TKxPreviewDummyFrm* KxPreviewDummyFrm;

} // namespace kx
