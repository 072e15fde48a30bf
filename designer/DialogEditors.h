// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ide/StockEditors.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx::designer {

/// A window in which lines of text are edited. `ShowModal` returns mrOk when they are to be taken.
class TLinesForm : public TForm {
    KX_CLASS()

    explicit TLinesForm(TComponent* owner = nullptr);

    TMemo& Lines() const { return *LinesMemo; }

    void LinesMemoChange(TObject* sender);

private:
    KX_FIELDS(TLinesForm, (TMemo, LinesMemo), (TLabel, CountLabel), (TButton, OkButton, CancelButton))
};

/// A list of texts: "..." opens a window with the lines.
class TStringsProperty : public TClassProperty {
public:
    using TClassProperty::TClassProperty;
    TPropertyAttributes GetAttributes() const override { return {paDialog, paReadOnly}; }
    std::string GetValue() const override; ///< "3 lines"
    bool IsDefault() const override;
    void Edit() override;
};

/// A picture: "..." loads a file.
class TPictureProperty : public TClassProperty {
public:
    using TClassProperty::TClassProperty;
    TPropertyAttributes GetAttributes() const override { return {paDialog, paReadOnly}; }
    std::string GetValue() const override; ///< "32 x 32"; "(none)"
    bool IsDefault() const override;
    void Edit() override;
};

/// A colour, by name or number: "..." opens the system's dialog.
class TColorProperty : public TIntegerProperty {
public:
    using TIntegerProperty::TIntegerProperty;
    TPropertyAttributes GetAttributes() const override;
    std::string GetValue() const override; ///< A name, or "$00BBGGRR".
    void Edit() override;
};

/// A font: "..." opens the system's dialog.
class TFontProperty : public TClassProperty {
public:
    using TClassProperty::TClassProperty;
    TPropertyAttributes GetAttributes() const override;
    void Edit() override;
};

/// Keys that choose a command, as "Ctrl+S".
class TShortCutProperty : public TIntegerProperty {
public:
    using TIntegerProperty::TIntegerProperty;
    TPropertyAttributes GetAttributes() const override { return {paMultiSelect, paValueList, paRevertable}; }
    std::string GetValue() const override;
    void SetValue(const std::string& value) override; ///< Empty: none. @throws EPropertyError for no keys.
    void GetValues(const TValueProc& proc) override;
};

/// Registers these, and what the menus of menus and pages offer.
void RegisterDialogEditors();

} // namespace kx::designer
