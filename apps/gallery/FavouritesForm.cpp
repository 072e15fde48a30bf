// SPDX-License-Identifier: MIT
// The docked form with folders to go to.

#include "FavouritesForm.h"

#include <algorithm>

namespace kx::gallery {

const TClass& TFavouritesForm::StaticClass() {
    static const TClassBuilder<TFavouritesForm> cls("TFavouritesForm", TForm::StaticClass(), [](auto& c) {
        c.Method("FolderListClick", &TFavouritesForm::FolderListClick);
        c.Method("AddButtonClick", &TFavouritesForm::AddButtonClick);
    });
    return cls.Class();
}

TFavouritesForm::TFavouritesForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

void TFavouritesForm::Add(const std::string& title, const std::string& folder) {
    FFolders.push_back(folder);
    FolderList->Items().Add(title);
}

void TFavouritesForm::SetCurrentFolder(const std::string& folder) {
    FCurrent = folder;
    const int index = IndexOf(folder);
    FolderList->SetItemIndex(index);
    AddButton->SetEnabled(index < 0 && !folder.empty());
}

void TFavouritesForm::Choose(const std::string& title) {
    FolderList->SetItemIndex(FolderList->Items().IndexOf(title));
    FolderListClick(FolderList);
}

void TFavouritesForm::FolderListClick(TObject*) {
    const int index = FolderList->ItemIndex();
    if (index >= 0) {
        FOnNavigate(FFolders[static_cast<size_t>(index)]);
    }
}

void TFavouritesForm::AddButtonClick(TObject*) {
    const std::string name = ExtractFileName(FCurrent);
    Add(name.empty() ? FCurrent : name, FCurrent);
    SetCurrentFolder(FCurrent);
}

int TFavouritesForm::IndexOf(const std::string& folder) const {
    const auto found =
        std::find_if(FFolders.begin(), FFolders.end(), [&folder](const std::string& f) { return SameText(f, folder); });
    return found == FFolders.end() ? -1 : static_cast<int>(found - FFolders.begin());
}

} // namespace kx::gallery
