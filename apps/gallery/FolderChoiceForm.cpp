// SPDX-License-Identifier: MIT
// The form in the place of the folder tree.

#include "FolderChoiceForm.h"

#include "SampleFiles.h"

namespace kx::gallery {

const TClass& TFolderChoiceForm::StaticClass() {
    static const TClassBuilder<TFolderChoiceForm> cls("TFolderChoiceForm", TForm::StaticClass(), [](auto& c) {
        c.Method("FolderListClick", &TFolderChoiceForm::FolderListClick);
    });
    return cls.Class();
}

TFolderChoiceForm::TFolderChoiceForm(TComponent* owner) : TForm(owner) {
    InitForm(*this, StaticClass());
    for (const char* folder : {"Drawings", "Letters", "Müller & Söhne", "Чертежи"}) {
        FolderList->Items().Add(folder);
    }
}

void TFolderChoiceForm::Choose(const std::string& name) {
    FolderList->SetItemIndex(FolderList->Items().IndexOf(name));
    FolderListClick(FolderList);
}

void TFolderChoiceForm::ShowChosen(const std::string& folder) {
    const int index = FolderList->Items().IndexOf(ExtractFileName(folder));
    const bool isSample = index >= 0 && SameText(folder, Samples().Path(FolderList->Items()[index]));
    FolderList->SetItemIndex(isSample ? index : -1);
}

void TFolderChoiceForm::FolderListClick(TObject*) {
    if (FolderList->ItemIndex() >= 0) {
        FOnChoose(Samples().Path(FolderList->Items()[FolderList->ItemIndex()]));
    }
}

} // namespace kx::gallery
