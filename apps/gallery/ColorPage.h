// SPDX-License-Identifier: MIT
#pragma once

#include "GalleryPage.h"
#include "kx/colorprint/KxColorDlg.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <string>

namespace kx::gallery {

/// The colour dialog: a docked form, captions, and a say in the colours that the user makes.
class TColorPage : public TGalleryPage {
    KX_CLASS()

    explicit TColorPage(TComponent* owner = nullptr);

    void AddTour(TTour& tour) override;

    void ChooseButtonClick(TObject* sender);

private:
    KX_FIELDS(TColorPage, (TPanel, SwatchPanel), (TCheckBox, FullBox, PreventBox, EventsBox, GrayBox),
              (TEdit, TitleEdit, DefineEdit, AddEdit), (TButton, ChooseButton), (TKxColorDialog, Dialog))
    std::string FResult; ///< Of the last showing: the colour; empty while it runs.
};

} // namespace kx::gallery
