// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace kx {
class TComboBox;
class TEdit;
class TListView;
class TMemo;
class TStringGrid;
class TTreeView;
} // namespace kx

namespace kx::test {

/// What a user types into.
enum class TField { Edit, Memo, Combo, ListLabel, TreeLabel, Cell };
constexpr std::initializer_list<TField> AllFields = {TField::Edit,      TField::Memo,      TField::Combo,
                                                     TField::ListLabel, TField::TreeLabel, TField::Cell};
const char* NameOf(TField field);

/// Texts in scripts of all kinds: letters of two, three and four bytes in UTF-8, marks that combine, pictures of
/// several characters.
struct TScript {
    const char* Name;
    const wchar_t* Text;
};
extern const std::initializer_list<TScript> AllScripts;
std::u32string CharactersOf(std::wstring_view text);

/// A form with each of the fields. It notes what their events tell.
class TTypingForm : public TForm {
public:
    TTypingForm();

    std::u32string Keys;               ///< What OnKeyPress got.
    std::vector<std::wstring> Changes; ///< The field's texts when OnChange fired.

    void Enter(TField field);         ///< Goes into the field, and forgets what was noted.
    bool IsReady(TField field);       ///< What is typed goes into it.
    std::wstring Typed(TField field); ///< What stands in it.
    void Accept(TField field);        ///< Ends the editing of a label.
    std::string Kept(TField field);   ///< What the program reads then.
    /// Has OnKeyPress of the fields, and their OnChange.
    static bool TellsKeys(TField field) { return field != TField::ListLabel && field != TField::TreeLabel; }
    static bool TellsChanges(TField field) { return TellsKeys(field) && field != TField::Cell; }

private:
    HWND EditOf(TField field);
    TWinControl& ControlOf(TField field);

    TEdit* FEdit;
    TMemo* FMemo;
    TComboBox* FCombo;
    TListView* FList;
    TTreeView* FTree;
    TStringGrid* FGrid;
};

} // namespace kx::test
