// SPDX-License-Identifier: MIT
// Shows the selected drawing beside the dialog's file list.

#include "PreviewForm.h"

namespace guide {

// [preview code]
const TClass& TPreviewForm::StaticClass() {
    static const TClassBuilder<TPreviewForm> cls("TPreviewForm", TForm::StaticClass());
    return cls.Class();
}

TPreviewForm::TPreviewForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

bool TPreviewForm::ShowFile(const std::string& fileName) {
    try {
        DrawingImage->Picture().LoadFromFile(fileName);
        NameLabel->SetCaption(ExtractFileName(fileName));
        return true;
    } catch (const EStreamError&) { // a file of another kind, a damaged one, or none at all
        DrawingImage->Picture().SetGraphic(nullptr);
        NameLabel->SetCaption("Nothing selected");
        return false;
    }
}
// [preview code]

} // namespace guide
