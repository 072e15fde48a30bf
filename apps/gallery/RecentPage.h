// SPDX-License-Identifier: MIT
#pragma once

#include "GalleryPage.h"
#include "kx/opensave/KxOpenDlgEx.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx::gallery {

/// The open dialog with a second tab for recent files, which the registry keeps.
class TRecentPage : public TGalleryPage {
    KX_CLASS()

    explicit TRecentPage(TComponent* owner = nullptr);

    void AddTour(TTour& tour) override;

    void OpenButtonClick(TObject* sender);
    void ForgetButtonClick(TObject* sender);

private:
    void UseKey(const char* key);
    void Remember();
    void ShowStored();
    void AddEndOfTour(TTour& tour);

    KX_FIELDS(TRecentPage, (TEdit, BrowseEdit, RecentEdit, CountEdit), (TComboBox, BeginCombo),
              (TCheckBox, RememberBox, EventsBox), (TListBox, FileList), (TButton, OpenButton),
              (TKxOpenDialogEx, Dialog))
};

} // namespace kx::gallery
