// SPDX-License-Identifier: MIT
#pragma once

#include "GalleryPage.h"
#include "Views.h"
#include "kx/opensave/KxOpenLite.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx::gallery {

/// Forms docked into the system's open dialog, and the dialog's place on the screen.
class TDockingPage : public TGalleryPage {
    KX_CLASS()

    explicit TDockingPage(TComponent* owner = nullptr);

    void AddTour(TTour& tour) override;

    void SideClick(TObject* sender);
    void PositionChange(TObject* sender);
    void ReferenceClick(TObject* sender);
    void OpenButtonClick(TObject* sender);
    void DialogFolderChange(TObject* sender);
    void DialogSelectionChange(TObject* sender);

private:
    void ConnectForms();

    KX_FIELDS(TDockingPage, (TCheckBox, LeftBox, TopBox, RightBox, BottomBox, FitBox, ReferenceBox, PlacesBox),
              (TComboBox, PositionCombo), (TEdit, ShiftXEdit, ShiftYEdit), (TDockSketch, Sketch), (TButton, OpenButton),
              (TKxOpenLiteDialog, Dialog))
};

} // namespace kx::gallery
