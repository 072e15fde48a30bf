#include "PreviewForm.h"

namespace kx::gallery {

namespace {

bool HasExtension(const std::string& fileName, std::initializer_list<std::string_view> extensions) {
    const std::string extension = ExtractFileExt(fileName);
    for (const std::string_view known : extensions) {
        if (SameText(extension, known)) {
            return true;
        }
    }
    return false;
}

} // namespace

const TClass& TPreviewForm::StaticClass() {
    static const TClassBuilder<TPreviewForm> cls("TPreviewForm", TForm::StaticClass(), [](auto& c) {
        c.Field("NameLabel", &TPreviewForm::NameLabel);
        c.Field("PictureView", &TPreviewForm::PictureView);
        c.Field("TextMemo", &TPreviewForm::TextMemo);
        c.Field("SizeLabel", &TPreviewForm::SizeLabel);
        c.Field("DateLabel", &TPreviewForm::DateLabel);
    });
    return cls.Class();
}

TPreviewForm::TPreviewForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

void TPreviewForm::ShowFile(const std::string& fileName) {
    FFileName = fileName;
    const TFileFacts facts = FactsOf(fileName);
    NameLabel->SetCaption(facts.IsFile ? ExtractFileName(fileName) : "Nothing selected");
    SizeLabel->SetCaption(facts.IsFile ? facts.Size : "");
    DateLabel->SetCaption(facts.IsFile ? facts.Modified : "");
    if (!facts.IsFile) {
        ShowNothing();
    } else if (HasExtension(fileName, {".bmp", ".ico"})) {
        ShowPicture();
    } else if (HasExtension(fileName, {".txt", ".log", ".ini", ".csv"})) {
        ShowText();
    } else {
        ShowNothing();
    }
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
