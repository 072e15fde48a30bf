// SPDX-License-Identifier: MIT
// The docked form that shows the selected file.

#include "PreviewForm.h"

namespace kx::gallery {

const TClass& TPreviewForm::StaticClass() {
    static const TClassBuilder<TPreviewForm> cls("TPreviewForm", TForm::StaticClass());
    return cls.Class();
}

TPreviewForm::TPreviewForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

void TPreviewForm::ShowFile(const std::string& fileName) {
    FFileName = fileName;
    const TFileFacts facts = FactsOf(fileName);
    NameLabel->SetCaption(facts.IsFile ? ExtractFileName(fileName) : "Nothing selected");
    SizeLabel->SetCaption(facts.IsFile ? facts.Size : "");
    DateLabel->SetCaption(facts.IsFile ? facts.Modified : "");
    const TFileKind kind = facts.IsFile ? KindOf(fileName) : TFileKind::Other;
    switch (kind) {
    case TFileKind::Picture: ShowPicture(); break;
    case TFileKind::Text: ShowText(); break;
    case TFileKind::Other: ShowNothing(); break;
    }
}

void TPreviewForm::ShowSelection(const TKxFileDlgCore& dialog) {
    const std::string name = dialog.SelectedFiles();
    ShowFile(name.empty() ? name : IncludeTrailingPathDelimiter(dialog.SelectedFolder()) + name);
}

void TPreviewForm::SetEncoding(TEncoding value) {
    FEncoding = value;
    ShowFile(FFileName);
}

void TPreviewForm::ShowPicture() {
    try {
        PictureView->Picture().LoadFromFile(FFileName);
    } catch (const EStreamError&) { // a damaged picture, or one that another program is writing
        ShowNothing();
        return;
    }
    PictureView->Show();
    TextMemo->Hide();
}

void TPreviewForm::ShowText() {
    try {
        TextMemo->SetText(ReadText(FFileName, FEncoding));
    } catch (const EStreamError& e) {
        TextMemo->SetText(e.Message());
    }
    TextMemo->Show();
    PictureView->Hide();
}

void TPreviewForm::ShowNothing() {
    PictureView->Picture().SetGraphic(nullptr);
    PictureView->Show();
    TextMemo->Hide();
}

} // namespace kx::gallery
