// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/ComCtrls.h"

namespace kx {

/// The dialog above which the tabs are, as far as the tabs need it.
class IKxTabsHost {
public:
    /// Shows the recent files in the place of the shown folder's files, or the folder's files again.
    virtual void ShowRecentFiles(bool recent) = 0;
    virtual void DoTabChanging(TTabControl& tabs, bool& allowChange) = 0;
    virtual void DoTabChange(TTabControl& tabs) = 0;

protected:
    ~IKxTabsHost() = default;
};

/// The row of tabs above an open dialog with recent files.
class TKxOpenExTopFrm : public TForm {
    KX_CLASS()

    explicit TKxOpenExTopFrm(TComponent* owner = nullptr);

    KX_FIELDS(TKxOpenExTopFrm, (TTabControl, TabControl1))

    /// Not owned; whoever frees it frees the form, or sets null, before.
    IKxTabsHost* Dlg() const { return FDlg; }
    void SetDlg(IKxTabsHost* value) { FDlg = value; }

    void TabControl1Change(TObject* sender);
    void TabControl1Changing(TObject* sender, bool& allowChange);

private:
    IKxTabsHost* FDlg = nullptr;
};

} // namespace kx
