// SPDX-License-Identifier: MIT
#pragma once

#include "GalleryPage.h"
#include "kx/opensave/KxOpenLite.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx::gallery {

/// Captions of the standard controls, and which of the controls are there.
class TCaptionsPage : public TGalleryPage {
    KX_CLASS()

    explicit TCaptionsPage(TComponent* owner = nullptr);

    void AddTour(TTour& tour) override;

    void TextsChange(TObject* sender);
    void OpenButtonClick(TObject* sender);
    void SaveButtonClick(TObject* sender);

private:
    void Run(TKxCustomOpenLiteDialog& dialog);
    TKxOpenDlgControls ChosenControls() const;

    KX_FIELDS(TCaptionsPage, (TComboBox, TextsCombo),
              (TEdit, OkEdit, CancelEdit, HelpEdit, LookInEdit, FileNameEdit, FileTypeEdit, ReadOnlyEdit),
              (TCheckBox, FolderComboBox, FolderLabelBox, ToolBarBox, OkBox, CancelBox, NameBox, NameLabelBox, TypeBox,
               TypeLabelBox),
              (TButton, OpenButton), (TKxOpenLiteDialog, OpenDialog), (TKxSaveLiteDialog, SaveDialog))
};

} // namespace kx::gallery
