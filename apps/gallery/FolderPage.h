// SPDX-License-Identifier: MIT
#pragma once

#include "GalleryPage.h"
#include "kx/folder/KxFolderDlg.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <string>

namespace kx::gallery {

/// The folder dialog.
class TFolderPage : public TGalleryPage {
    KX_CLASS()

    explicit TFolderPage(TComponent* owner = nullptr);

    void AddTour(TTour& tour) override;

    void BrowseButtonClick(TObject* sender);
    void DialogSelectionChange(TObject* sender);
    void DialogCanClose(TObject* sender, bool& canClose);
    void DialogEventHooking(TObject* sender, TMessage& message, bool& allowDispatch);

private:
    void ApplyTexts();
    void ApplyBrowser();
    void ApplyForms();
    void AddEndOfTour(TTour& tour);

    KX_FIELDS(TFolderPage, (TEdit, TitleEdit, TextEdit, StatusEdit, OkEdit, CancelEdit), (TComboBox, RootCombo),
              (TCheckBox, DisksBox, FilesBox, NewStyleBox, NameBox, EventsBox, VetoesBox, ChoiceBox),
              (TButton, BrowseButton), (TKxFolderDialog, Dialog))
    std::string FLastFolder; ///< That the last dialog returned; empty when it was cancelled.
};

} // namespace kx::gallery
