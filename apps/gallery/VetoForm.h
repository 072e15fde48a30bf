// SPDX-License-Identifier: MIT
#pragma once

#include "EventLogForm.h"
#include "kx/opensave/KxOpenDlgEx.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx::gallery {

/// The events of a full file dialog as they happen, and check boxes that refuse what the user is about to do; docked
/// below the dialog.
class TVetoForm : public TForm {
    KX_CLASS()

    explicit TVetoForm(TComponent* owner = nullptr);

    /// Clears the log and takes over the events of the dialog, which `VetoForm` outlives.
    void Attach(TKxCustomOpenDialog& dialog);
    void Attach(TKxOpenDialogEx& dialog); ///< Its tabs besides.

    /// The attached dialog shows another folder, or another selection.
    void SetOnSelect(TNotifyEvent value) { FOnSelect = std::move(value); }

    TEventLogForm& Log() const { return *FLog; }

    KX_FIELDS(TVetoForm,
              (TCheckBox, UpLevelBox, DesktopBox, LastFolderBox, NewFolderBox, StyleBox, NameBox, CloseBox, MoveBox,
               TabBox),
              (TPanel, LogPanel))

private:
    void AttachNavigation(TKxCustomOpenDialog& dialog);
    void AttachSelection(TKxCustomOpenDialog& dialog);

    TEventLogForm* FLog = nullptr; ///< Owned.
    TNotifyEvent FOnSelect;
};

inline TVetoForm* VetoForm = nullptr;

} // namespace kx::gallery
