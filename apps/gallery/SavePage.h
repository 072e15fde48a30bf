// SPDX-License-Identifier: MIT
#pragma once

#include "GalleryPage.h"
#include "kx/opensave/KxSaveDlg.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <string>

namespace kx::gallery {

/// The full save dialog, and what it tells about files that are in use.
class TSavePage : public TGalleryPage {
    KX_CLASS()

    explicit TSavePage(TComponent* owner = nullptr);

    void AddTour(TTour& tour) override;

    void SaveButtonClick(TObject* sender);
    void DialogIncludeFile(TObject* sender, const std::string& fileName, bool& include);

private:
    void ConnectForms();
    void ChooseParts();
    void ShareViolation(int32_t& result, const std::string& fileName);

    KX_FIELDS(TSavePage, (TEdit, NameEdit, ExtensionEdit, OkEdit),
              (TCheckBox, OverwriteBox, HoldBox, FilterBox, EventsBox, SizeableBox),
              (TComboBox, ShareCombo, PlacesCombo), (TButton, SaveButton), (TKxSaveDialog, Dialog))
    std::string FPattern; ///< Names that the dialog shows.
};

} // namespace kx::gallery
