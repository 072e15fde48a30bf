#pragma once

#include "GalleryPage.h"
#include "kx/modeless/KxModelessDlg.h"
#include "kx/opensave/KxOpenDlg.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx::gallery {

/// An open dialog that stays open beside the window, which can be used meanwhile.
class TModelessPage : public TGalleryPage {
    KX_CLASS()

    explicit TModelessPage(TComponent* owner = nullptr);

    void AddTour(TTour& tour) override;

    void ShowButtonClick(TObject* sender);
    void NoteButtonClick(TObject* sender);
    /// In the dialog's thread, as all events of the dialog.
    void DialogSelectionChange(TObject* sender);
    void RunnerDialogClosed(TObject* sender, bool dialogResult);

private:
    void SelectionChanged();

    TComboBox* PlacesCombo = nullptr;
    TCheckBox* PreviewBox = nullptr;
    TButton* ShowButton = nullptr;
    TLabel* SelectedLabel = nullptr;
    TButton* NoteButton = nullptr;
    TMemo* NotesMemo = nullptr;
    TKxOpenDialog* Dialog = nullptr;
    TKxModelessDialog* Runner = nullptr;
};

} // namespace kx::gallery
