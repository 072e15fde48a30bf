#pragma once

#include "GalleryPage.h"
#include "kx/opensave/KxOpenDlg.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <string>

namespace kx::gallery {

/// All that the full open dialog has: docked forms, places bar, borrowed tool bar, filter, styles, a button with a
/// menu.
class TOpenPage : public TGalleryPage {
    KX_CLASS()

    explicit TOpenPage(TComponent* owner = nullptr);
    ~TOpenPage() override;

    void AddTour(TTour& tour) override;

    void OpenButtonClick(TObject* sender);
    void ViewsButtonClick(TObject* sender);
    void ViewItemClick(TObject* sender);
    void OpenItemClick(TObject* sender);
    void DialogShow(TObject* sender);
    void DialogIncludeFile(TObject* sender, const std::string& fileName, bool& include);

private:
    void ConnectForms();
    void ChooseParts();
    void ChooseStyles();
    void RefuseInTour(TTour& tour);

    TComboBox* ViewCombo = nullptr;
    TCheckBox* GridBox = nullptr;
    TCheckBox* RowBox = nullptr;
    TCheckBox* HotTrackBox = nullptr;
    TCheckBox* RenameBox = nullptr;
    TCheckBox* DeleteBox = nullptr;
    TCheckBox* EmptyMenuBox = nullptr;
    TCheckBox* FileMenuBox = nullptr;
    TCheckBox* PreviewBox = nullptr;
    TCheckBox* KindsBox = nullptr;
    TCheckBox* EventsBox = nullptr;
    TComboBox* PlacesCombo = nullptr;
    TCheckBox* LendBox = nullptr;
    TCheckBox* FlatBox = nullptr;
    TCheckBox* MenuBox = nullptr;
    TToolBar* ViewBar = nullptr;
    TToolButton* ViewsButton = nullptr;
    TMenuItem* IconsItem = nullptr;
    TButton* OpenButton = nullptr;
    TPopupMenu* OpenMenu = nullptr;
    TKxOpenDialog* Dialog = nullptr;
    TImageList FGlyphs;
    std::string FHow; ///< The chosen item of the button's menu; empty: none.
};

} // namespace kx::gallery
