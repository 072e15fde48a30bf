// SPDX-License-Identifier: MIT
#pragma once

#include "GalleryPage.h"
#include "kx/opensave/KxOpenDlg.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx::gallery {

/// Texts of every script, in the dialog's own controls and in a form that is docked into it, at any resolution.
class TScriptsPage : public TGalleryPage {
    KX_CLASS()

    explicit TScriptsPage(TComponent* owner = nullptr);

    void AddTour(TTour& tour) override;

    void OpenButtonClick(TObject* sender);
    void DialogSelectionChange(TObject* sender);

private:
    KX_FIELDS(TScriptsPage, (TEdit, TitleEdit, OkEdit, CancelEdit, NameEdit), (TMemo, NoteMemo), (TLabel, ScaleLabel),
              (TButton, OpenButton), (TKxOpenDialog, Dialog))
};

} // namespace kx::gallery
