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

    TComboBox* TextsCombo = nullptr;
    TEdit* OkEdit = nullptr;
    TEdit* CancelEdit = nullptr;
    TEdit* HelpEdit = nullptr;
    TEdit* LookInEdit = nullptr;
    TEdit* FileNameEdit = nullptr;
    TEdit* FileTypeEdit = nullptr;
    TEdit* ReadOnlyEdit = nullptr;
    TCheckBox* FolderComboBox = nullptr;
    TCheckBox* FolderLabelBox = nullptr;
    TCheckBox* ToolBarBox = nullptr;
    TCheckBox* OkBox = nullptr;
    TCheckBox* CancelBox = nullptr;
    TCheckBox* NameBox = nullptr;
    TCheckBox* NameLabelBox = nullptr;
    TCheckBox* TypeBox = nullptr;
    TCheckBox* TypeLabelBox = nullptr;
    TButton* OpenButton = nullptr;
    TKxOpenLiteDialog* OpenDialog = nullptr;
    TKxSaveLiteDialog* SaveDialog = nullptr;
};

} // namespace kx::gallery
