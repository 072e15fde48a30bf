// SPDX-License-Identifier: MIT
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

    KX_FIELDS(TPlainPage, (TEdit, TitleEdit, NameEdit, ExtensionEdit),
              (TCheckBox, SeveralBox, MustExistBox, OverwriteBox, HelpBox, ReadOnlyBox, SizeableBox, PlacesBox,
               KeepFolderBox),
              (TButton, OpenButton), (TOpenDialog, OpenDialog), (TSaveDialog, SaveDialog))
};

} // namespace kx::gallery
