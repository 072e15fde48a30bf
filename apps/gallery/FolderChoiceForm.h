// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <string>

namespace kx::gallery {

/// A short list of folders to choose from, shown in place of the folder dialog's tree.
class TFolderChoiceForm : public TForm {
    KX_CLASS()

    explicit TFolderChoiceForm(TComponent* owner = nullptr);

    /// Receives the path of the folder that the user chooses.
    using TChooseEvent = TEvent<void(const std::string& folder)>;
    void SetOnChoose(TChooseEvent value) { FOnChoose = std::move(value); }

    void Choose(const std::string& name);       ///< As the user does.
    void ShowChosen(const std::string& folder); ///< Marks the folder, if the list has it.

    void FolderListClick(TObject* sender);

private:
    KX_FIELDS(TFolderChoiceForm, (TListBox, FolderList))
    TChooseEvent FOnChoose;
};

inline TFolderChoiceForm* FolderChoiceForm = nullptr;

} // namespace kx::gallery
