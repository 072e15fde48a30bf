// SPDX-License-Identifier: MIT
// The docked form with a search field.

#include "FilterForm.h"

#include "kx/win/Windows.h"

namespace kx::gallery {

const TClass& TFilterEdit::StaticClass() {
    static const TClassBuilder<TFilterEdit> cls("TFilterEdit", TEdit::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

bool TFilterEdit::WantsKey(uint16_t key, TShiftState shift) { return key == VK_RETURN || TEdit::WantsKey(key, shift); }

const TClass& TFilterForm::StaticClass() {
    static const TClassBuilder<TFilterForm> cls("TFilterForm", TForm::StaticClass(), [](auto& c) {
        c.Method("ShowButtonClick", &TFilterForm::ShowButtonClick);
        c.Method("AllButtonClick", &TFilterForm::AllButtonClick);
        c.Method("FilterEditKeyPress", &TFilterForm::FilterEditKeyPress);
    });
    return cls.Class();
}

TFilterForm::TFilterForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

void TFilterForm::ShowButtonClick(TObject*) {
    const std::string text = Trim(FilterEdit->Text());
    FOnFilter(text.empty() ? "*.*" : "*" + text + "*");
}

void TFilterForm::AllButtonClick(TObject*) {
    FilterEdit->SetText("");
    FOnFilter("*.*");
}

void TFilterForm::FilterEditKeyPress(TObject*, char32_t& key) {
    if (key == '\r') {
        key = '\0';
        ShowButtonClick(FilterEdit);
    }
}

} // namespace kx::gallery
