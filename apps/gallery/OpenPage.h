// SPDX-License-Identifier: MIT
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

    KX_FIELDS(TOpenPage, (TComboBox, ViewCombo, PlacesCombo),
              (TCheckBox, GridBox, RowBox, HotTrackBox, RenameBox, DeleteBox, EmptyMenuBox, FileMenuBox, PreviewBox,
               KindsBox, EventsBox, LendBox, FlatBox, MenuBox),
              (TToolBar, ViewBar), (TToolButton, ViewsButton), (TMenuItem, IconsItem), (TButton, OpenButton),
              (TPopupMenu, OpenMenu), (TKxOpenDialog, Dialog))
    std::string FHow; ///< The chosen item of the button's menu; empty: none.
};

} // namespace kx::gallery
