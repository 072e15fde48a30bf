// SPDX-License-Identifier: MIT
#pragma once

#include "TextFiles.h"
#include "Views.h"
#include "kx/opensave/KxFileDlgCore.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <string>

namespace kx::gallery {

/// A look into the selected file, docked to the right of a file dialog.
class TPreviewForm : public TForm {
    KX_CLASS()

    explicit TPreviewForm(TComponent* owner = nullptr);

    /// Shows the file; a folder, or a name of no file, shows nothing.
    void ShowFile(const std::string& fileName);
    void ShowSelection(const TKxFileDlgCore& dialog); ///< The file that is selected in the shown dialog.
    void SetEncoding(TEncoding value);                ///< Of text files.

    bool ShowsPicture() const { return PictureView->Visible() && PictureView->Picture().Graphic() != nullptr; }

private:
    void ShowPicture();
    void ShowText();
    void ShowNothing();

    KX_FIELDS(TPreviewForm, (TLabel, NameLabel, SizeLabel, DateLabel), (TPictureView, PictureView), (TMemo, TextMemo))
    std::string FFileName;
    TEncoding FEncoding = TEncoding::Detect;
};

inline TPreviewForm* PreviewForm = nullptr;

} // namespace kx::gallery
