// SPDX-License-Identifier: MIT
#pragma once

#include "GalleryPage.h"
#include "kx/opensave/KxOpenLite.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx::gallery {

/// The events of a file dialog, and how a program refuses what the user wants.
class TNavigationPage : public TGalleryPage {
    KX_CLASS()

    explicit TNavigationPage(TComponent* owner = nullptr);

    void AddTour(TTour& tour) override;

    void OpenButtonClick(TObject* sender);
    void DialogCanClose(TObject* sender, bool& canClose);
    void DialogFolderChange(TObject* sender);
    void DialogSelectionChange(TObject* sender);
    void DialogDesktopNavigate(TObject* sender);
    void DialogDesktopNavigating(TObject* sender, bool& allow);
    void DialogUpLevelNavigate(TObject* sender);
    void DialogUpLevelNavigating(TObject* sender, bool& allow);
    void DialogLastFolderNavigate(TObject* sender);
    void DialogLastFolderNavigating(TObject* sender, bool& allow);
    void DialogFolderCreating(TObject* sender, bool& allow);
    void DialogFilenameChange(TObject* sender);
    void DialogFilenameEntering(TObject* sender, bool& allow);
    void DialogEventHook(TMessage& message);
    void DialogEventHooking(TObject* sender, TMessage& message, bool& allow);

private:
    void Log(const std::string& event);

    KX_FIELDS(TNavigationPage,
              (TCheckBox, UpLevelBox, DesktopBox, LastFolderBox, NewFolderBox, NameBox, CloseBox, PinBox, CountBox),
              (TListBox, EventList), (TButton, OpenButton), (TKxOpenLiteDialog, Dialog))
    int FMessageCount = 0;
};

} // namespace kx::gallery
