// SPDX-License-Identifier: MIT
// A form to type into.

#include "tests/support/TypingForm.h"

#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ComCtrlsTree.h"
#include "kx/ui/widgets/GridsString.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "support/Input.h"

namespace kx::test {

const std::initializer_list<TScript> AllScripts = {
    {"Cyrillic", L"Привет, ёж"},
    {"Greek", L"Καλημέρα ΰ"},
    {"Chinese", L"漢字 𠮷野家"},
    {"ArabicWithMarks", L"مَرْحَبًا"},
    {"Emoji", L"😀👍🏽 ok 👨‍👩‍👧"},
    {"WhatDeadKeysMake", L"éñôÅç€"},
};

const char* NameOf(TField field) {
    static constexpr const char* names[] = {"Edit", "Memo", "Combo", "ListLabel", "TreeLabel", "Cell"};
    return names[static_cast<int>(field)];
}

std::u32string CharactersOf(std::wstring_view text) {
    std::u32string characters;
    for (size_t i = 0; i < text.size(); ++i) {
        char32_t character = text[i];
        if (IS_HIGH_SURROGATE(text[i]) && i + 1 < text.size()) {
            character = 0x10000 + ((character & 0x3FF) << 10) + (text[++i] & 0x3FFu);
        }
        characters += character;
    }
    return characters;
}

TTypingForm::TTypingForm()
    : TForm(nullptr), FEdit(new TEdit(this)), FMemo(new TMemo(this)), FCombo(new TComboBox(this)),
      FList(new TListView(this)), FTree(new TTreeView(this)), FGrid(new TStringGrid(this)) {
    SetBounds(60, 60, 420, 240);
    int at = 0;
    for (TWinControl* const control : std::initializer_list<TWinControl*>{FEdit, FMemo, FCombo, FList, FTree, FGrid}) {
        control->SetParent(this);
        control->SetBounds(4 + at % 2 * 200, 4 + at / 2 * 66, 190, 60);
        ++at;
    }
    for (const TField field : {TField::Edit, TField::Memo, TField::Combo, TField::Cell}) {
        ControlOf(field).SetOnKeyPress([this](TObject*, char32_t& key) { Keys += key; });
    }
    const auto changed = [this](TField field) { return [this, field](TObject*) { Changes.push_back(Typed(field)); }; };
    FEdit->SetOnChange(changed(TField::Edit));
    FMemo->SetOnChange(changed(TField::Memo));
    FCombo->SetOnChange(changed(TField::Combo));
    FList->Items().Add().SetCaption("item");
    FTree->Items().Add(nullptr, "node");
    FGrid->SetColCount(2);
    FGrid->SetRowCount(2);
    FGrid->SetDefaultColWidth(90);
    FGrid->SetOptions(FGrid->Options() + TGridOptions{goEditing});
}

TWinControl& TTypingForm::ControlOf(TField field) {
    TWinControl* const controls[] = {FEdit, FMemo, FCombo, FList, FTree, FGrid};
    return *controls[static_cast<int>(field)];
}

HWND TTypingForm::EditOf(TField field) {
    HWND window = ControlOf(field).Handle();
    switch (field) {
    case TField::Edit:
    case TField::Memo: return window;
    case TField::ListLabel: return reinterpret_cast<HWND>(SendMessageW(window, LVM_GETEDITCONTROL, 0, 0));
    case TField::TreeLabel: return reinterpret_cast<HWND>(SendMessageW(window, TVM_GETEDITCONTROL, 0, 0));
    default: return FindWindowExW(window, nullptr, nullptr, nullptr);
    }
}

void TTypingForm::Enter(TField field) {
    ControlOf(field).SetFocus();
    if (field == TField::ListLabel) {
        SendMessageW(FList->Handle(), LVM_EDITLABELW, 0, 0);
    } else if (field == TField::TreeLabel) {
        FTree->Items()[0].EditText();
    }
    if (field == TField::Cell) {
        FGrid->SetEditorMode(false);
        FGrid->SetCells(FGrid->Col(), FGrid->Row(), "");
    } else {
        SetWindowTextW(EditOf(field), L"");
    }
    Keys.clear();
    Changes.clear();
}

bool TTypingForm::IsReady(TField field) {
    HWND focus = ::GetFocus();
    return focus && focus == (field == TField::Cell ? FGrid->Handle() : EditOf(field));
}

std::wstring TTypingForm::Typed(TField field) {
    HWND edit = EditOf(field);
    return IsWindowVisible(edit) ? WideWindowText(edit) : std::wstring();
}

void TTypingForm::Accept(TField field) {
    if (!TellsKeys(field)) {
        PressKey(VK_RETURN);
    }
}

std::string TTypingForm::Kept(TField field) {
    switch (field) {
    case TField::ListLabel: return FList->Items()[0].Caption();
    case TField::TreeLabel: return FTree->Items()[0].Text();
    case TField::Cell: return FGrid->Cells(FGrid->Col(), FGrid->Row());
    default: return ControlOf(field).Text();
    }
}

} // namespace kx::test
