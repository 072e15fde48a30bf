// SPDX-License-Identifier: MIT
#pragma once

#include "GalleryPage.h"
#include "kx/modeless/KxModelessDlg.h"
#include "kx/opensave/KxOpenDlg.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx::gallery {

/// An open dialog that stays open beside the window, which can be used meanwhile.
class TModelessPage : public TGalleryPage {
    KX_CLASS()

    explicit TModelessPage(TComponent* owner = nullptr);

    void AddTour(TTour& tour) override;

    void ShowButtonClick(TObject* sender);
    void NoteButtonClick(TObject* sender);
    /// In the dialog's thread, as all events of the dialog.
    void DialogSelectionChange(TObject* sender);
    void RunnerDialogClosed(TObject* sender, bool dialogResult);

private:
    void SelectionChanged();

    KX_FIELDS(TModelessPage, (TComboBox, PlacesCombo), (TCheckBox, PreviewBox), (TButton, ShowButton, NoteButton),
              (TLabel, SelectedLabel), (TMemo, NotesMemo), (TKxOpenDialog, Dialog), (TKxModelessDialog, Runner))
};

} // namespace kx::gallery
