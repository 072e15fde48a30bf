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

    TCheckBox* LeftBox = nullptr;
    TCheckBox* TopBox = nullptr;
    TCheckBox* RightBox = nullptr;
    TCheckBox* BottomBox = nullptr;
    TComboBox* PositionCombo = nullptr;
    TEdit* ShiftXEdit = nullptr;
    TEdit* ShiftYEdit = nullptr;
    TCheckBox* FitBox = nullptr;
    TCheckBox* ReferenceBox = nullptr;
    TCheckBox* PlacesBox = nullptr;
    TDockSketch* Sketch = nullptr;
    TButton* OpenButton = nullptr;
    TKxOpenLiteDialog* Dialog = nullptr;
};

} // namespace kx::gallery
