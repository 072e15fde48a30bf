// SPDX-License-Identifier: MIT
#pragma once

#include "EventLogForm.h"
#include "kx/colorprint/KxColorDlg.h"
#include "kx/colorprint/KxPrintDlg.h"
#include "kx/ui/widgets/ExtCtrls.h"

namespace kx::gallery {

/// The events of a colour or a print dialog as they happen, and check boxes that refuse what the user is about to do;
/// docked to a side of the dialog.
class TChoiceForm : public TForm {
    KX_CLASS()

    explicit TChoiceForm(TComponent* owner = nullptr);

    /// Clears the log and takes over the events of the dialog, which `ChoiceForm` outlives.
    void Attach(TKxColorDialog& dialog);
    void Attach(TKxPrintDialog& dialog);

    TEventLogForm& Log() const { return *FLog; }

    KX_FIELDS(TChoiceForm,
              (TCheckBox, FirstBox /* The full part, or another printer. */,
               SecondBox /* A custom colour, or the printer's properties. */, CloseBox),
              (TPanel, LogPanel))

private:
    void Begin(const std::string& first, const std::string& second);

    TEventLogForm* FLog = nullptr; ///< Owned.
    int FWidth = 0;                ///< Its own size.
    int FHeight = 0;
};

inline TChoiceForm* ChoiceForm = nullptr;

} // namespace kx::gallery
