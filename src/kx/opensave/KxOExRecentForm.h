// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/ComCtrls.h"

namespace kx {

class TKxCustomOpenDialog;

/// The list of recent files that an open dialog shows in the place of its file list. An item's sub-items are the file's
/// folder and its full name.
class TKxOpenExRecentFrm : public TForm {
    KX_CLASS()

    explicit TKxOpenExRecentFrm(TComponent* owner = nullptr);

    KX_FIELDS(TKxOpenExRecentFrm, (TListView, ListView1))

    /// Not owned; whoever frees it frees the form, or sets null, before.
    TKxCustomOpenDialog* Dlg() const { return FDlg; }
    void SetDlg(TKxCustomOpenDialog* value) { FDlg = value; }

    /// Lists the files, full paths, in their order.
    void ShowFiles(const TStrings& files);

    void ListView1Change(TObject* sender, TListItem* item, TItemChange change);
    void ListView1DblClick(TObject* sender);

private:
    TKxCustomOpenDialog* FDlg = nullptr;
};

} // namespace kx
