#pragma once

#include "GalleryPage.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx::gallery {

/// The system's own dialogs.
class TPlainPage : public TGalleryPage {
    KX_CLASS()

    explicit TPlainPage(TComponent* owner = nullptr);

    void AddTour(TTour& tour) override;

    void OpenButtonClick(TObject* sender);
    void SaveButtonClick(TObject* sender);

private:
    void Run(TOpenDialog& dialog);

    TEdit* TitleEdit = nullptr;
    TEdit* NameEdit = nullptr;
    TEdit* ExtensionEdit = nullptr;
    TCheckBox* SeveralBox = nullptr;
    TCheckBox* MustExistBox = nullptr;
    TCheckBox* OverwriteBox = nullptr;
    TCheckBox* HelpBox = nullptr;
    TCheckBox* ReadOnlyBox = nullptr;
    TCheckBox* SizeableBox = nullptr;
    TCheckBox* PlacesBox = nullptr;
    TCheckBox* KeepFolderBox = nullptr;
    TButton* OpenButton = nullptr;
    TOpenDialog* OpenDialog = nullptr;
    TSaveDialog* SaveDialog = nullptr;
};

} // namespace kx::gallery
