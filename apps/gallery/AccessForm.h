// SPDX-License-Identifier: MIT
#pragma once

#include "TextFiles.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx::gallery {

/// How the chosen file is to be opened, docked below a file dialog.
class TAccessForm : public TForm {
    KX_CLASS()

    explicit TAccessForm(TComponent* owner = nullptr);

    bool ReadOnly() const { return ReadOnlyBox->Checked(); }
    std::string EncodingName() const { return EncodingCombo->Text(); }

    using TEncodingEvent = TEvent<void(TEncoding encoding)>;
    void SetOnEncodingChange(TEncodingEvent value) { FOnEncodingChange = std::move(value); }

    void EncodingChange(TObject* sender);

private:
    KX_FIELDS(TAccessForm, (TComboBox, EncodingCombo), (TCheckBox, ReadOnlyBox))
    TEncodingEvent FOnEncodingChange;
};

inline TAccessForm* AccessForm = nullptr;

} // namespace kx::gallery
