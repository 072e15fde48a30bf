// SPDX-License-Identifier: MIT
#pragma once

#include "kx/opensave/KxOpenDlg.h"

namespace kx {

/// The system's save dialog, taken over as the open dialog is.
class TKxCustomSaveDialog : public TKxCustomOpenDialog {
    KX_CLASS()

    using TKxCustomOpenDialog::TKxCustomOpenDialog;

    bool Execute() override;

private:
    void PublishedExecute() { Execute(); } ///< Published methods have no result.
};

/// The published save dialog.
class TKxSaveDialog : public TKxCustomSaveDialog {
    KX_CLASS()

    using TKxCustomSaveDialog::TKxCustomSaveDialog;
};

} // namespace kx
