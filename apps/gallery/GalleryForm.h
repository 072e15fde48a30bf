// SPDX-License-Identifier: MIT
#pragma once

#include "GalleryPage.h"
#include "Views.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <string>
#include <vector>

namespace kx::gallery {

/// The main window: the list of pages, the chosen page, and what the dialogs returned.
class TGalleryForm : public TForm {
    KX_CLASS()

    explicit TGalleryForm(TComponent* owner = nullptr);

    /// Adds the steps that show all pages without a user.
    void AddTour(TTour& tour);

    void PageListChange(TObject* sender);

private:
    void Report(const std::string& text);

    KX_FIELDS(TGalleryForm, (TPanel, PagePanel), (TPageList, PageList), (TLabel, TitleLabel, HintLabel),
              (TMemo, OutputMemo))
    std::vector<TGalleryPage*> FPages; ///< Owned by the form.
    TGalleryPage* FPage = nullptr;     ///< The one that is shown.
};

} // namespace kx::gallery
