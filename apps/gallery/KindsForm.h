// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <string>

namespace kx::gallery {

/// Check boxes for the kinds of files that a file dialog shows, docked on top of it.
class TKindsForm : public TForm {
    KX_CLASS()

    explicit TKindsForm(TComponent* owner = nullptr);

    bool ShowsFolders() const { return FoldersBox->Checked(); }
    bool Shows(const std::string& fileName) const; ///< Its kind is checked.
    TCheckBox& Pictures() const { return *PicturesBox; }

    /// Another kind has been checked, or one no more.
    void SetOnKindsChange(TNotifyEvent value) { FOnKindsChange = std::move(value); }

    void BoxClick(TObject* sender) { FOnKindsChange(sender); }

private:
    KX_FIELDS(TKindsForm, (TCheckBox, FoldersBox, PicturesBox, TextsBox, OthersBox))
    TNotifyEvent FOnKindsChange;
};

inline TKindsForm* KindsForm = nullptr;

} // namespace kx::gallery
