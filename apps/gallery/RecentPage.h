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

    TEdit* BrowseEdit = nullptr;
    TEdit* RecentEdit = nullptr;
    TComboBox* BeginCombo = nullptr;
    TEdit* CountEdit = nullptr;
    TCheckBox* RememberBox = nullptr;
    TCheckBox* EventsBox = nullptr;
    TListBox* FileList = nullptr;
    TButton* OpenButton = nullptr;
    TKxOpenDialogEx* Dialog = nullptr;
};

} // namespace kx::gallery
