// SPDX-License-Identifier: MIT
#pragma once

#include "GalleryPage.h"
#include "kx/colorprint/KxPrintDlg.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <string>

namespace kx::gallery {

/// The print dialog: a docked form, captions, and what it tells about printers and copies.
class TPrintPage : public TGalleryPage {
    KX_CLASS()

    explicit TPrintPage(TComponent* owner = nullptr);

    void AddTour(TTour& tour) override;

    void PrintButtonClick(TObject* sender);

private:
    void ChooseParts();
    void ChooseCaptions();
    std::string Chosen() const;
    void ChangePrinterInTour();

    KX_FIELDS(TPrintPage, (TComboBox, SideCombo), (TCheckBox, PagesBox, SelectionBox, FileBox, CaptionsBox),
              (TEdit, TitleEdit, OkEdit), (TButton, PrintButton), (TKxPrintDialog, Dialog))
    std::string FResult; ///< Of the last showing; empty while it runs.
};

} // namespace kx::gallery
