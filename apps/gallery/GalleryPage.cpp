// SPDX-License-Identifier: MIT
// What all pages share.

#include "GalleryPage.h"

#include "SampleFiles.h"

namespace kx::gallery {

const TClass& TGalleryPage::StaticClass() {
    static const TClassBuilder<TGalleryPage> cls("TGalleryPage", TForm::StaticClass());
    return cls.Class();
}

TGalleryPage::TGalleryPage(TComponent* owner) : TForm(owner) {}

void TGalleryPage::RunDialog(TOpenDialog& dialog, const std::string& fileName) {
    dialog.SetInitialDir(Samples().Folder());
    dialog.SetFileName(fileName);
    const bool isConfirmed = dialog.Execute();
    FLastResult = isConfirmed ? dialog.FileName() : std::string();
    if (!isConfirmed) {
        Report(dialog.ClassName() + " was cancelled.");
        return;
    }
    std::string text = dialog.ClassName() + " returned";
    for (int i = 0; i < dialog.Files().Count(); ++i) {
        text += "\r\n    " + dialog.Files()[i];
    }
    Report(text);
}

} // namespace kx::gallery
