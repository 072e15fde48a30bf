// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <string>
#include <vector>

namespace kx::gallery {

/// Favourite folders, docked to the left of a file dialog.
class TFavouritesForm : public TForm {
    KX_CLASS()

    explicit TFavouritesForm(TComponent* owner = nullptr);

    /// The user wants to go to a folder.
    using TNavigateEvent = TEvent<void(const std::string& folder)>;
    void SetOnNavigate(TNavigateEvent value) { FOnNavigate = std::move(value); }

    void Add(const std::string& title, const std::string& folder);
    /// The dialog shows `folder` now: it is the one that can be added, and marked if it is a favourite.
    void SetCurrentFolder(const std::string& folder);
    /// Goes to a favourite as if it had been clicked.
    void Choose(const std::string& title);

    void FolderListClick(TObject* sender);
    void AddButtonClick(TObject* sender);

private:
    int IndexOf(const std::string& folder) const;

    KX_FIELDS(TFavouritesForm, (TListBox, FolderList), (TButton, AddButton))
    std::vector<std::string> FFolders; ///< Of the list's lines.
    std::string FCurrent;
    TNavigateEvent FOnNavigate;
};

inline TFavouritesForm* FavouritesForm = nullptr;

} // namespace kx::gallery
