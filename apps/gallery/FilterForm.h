// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <string>

namespace kx::gallery {

/// Where the names to show are typed. Return is its own: in a file dialog it would press the dialog's button.
class TFilterEdit : public TEdit {
    KX_CLASS()

    explicit TFilterEdit(TComponent* owner = nullptr) : TEdit(owner) {}

protected:
    bool WantsKey(uint16_t key, TShiftState shift) override;
};

/// A search field, docked on top of a file dialog: the dialog shows only names that contain what is typed.
class TFilterForm : public TForm {
    KX_CLASS()

    explicit TFilterForm(TComponent* owner = nullptr);

    /// The dialog should show the names that match `pattern`.
    using TFilterEvent = TEvent<void(const std::string& pattern)>;
    void SetOnFilter(TFilterEvent value) { FOnFilter = std::move(value); }

    void ShowButtonClick(TObject* sender);
    void AllButtonClick(TObject* sender);
    void FilterEditKeyPress(TObject* sender, char32_t& key);

private:
    KX_FIELDS(TFilterForm, (TFilterEdit, FilterEdit))
    TFilterEvent FOnFilter;
};

inline TFilterForm* FilterForm = nullptr;

} // namespace kx::gallery
