// SPDX-License-Identifier: MIT
#pragma once

#include "BoxDialogTest.h"

namespace kx::test {

inline constexpr int Red = 706;
inline constexpr int Green = 707;
inline constexpr int Blue = 708;
inline constexpr int AddButton = 712;
inline constexpr int SolidButton = 713;
inline constexpr int DefineButton = 719;
inline constexpr int HelpButton = 1038;

class ColorDialog : public TDialogTest {
protected:
    TKxColorDialog& NewDialog(TColorDialogOptions options = {}) {
        auto* dialog = new TKxColorDialog(Owner.get());
        dialog->SetOptions(options);
        return *dialog;
    }

    /// The three edits, as "1,2,3".
    static std::string Components(const TCommonDialog& dialog) {
        return ItemText(dialog, Red) + "," + ItemText(dialog, Green) + "," + ItemText(dialog, Blue);
    }
    static void SetComponents(const TCommonDialog& dialog, int red, int green, int blue) {
        SetDlgItemInt(dialog.DialogWindow(), Red, static_cast<UINT>(red), FALSE);
        SetDlgItemInt(dialog.DialogWindow(), Green, static_cast<UINT>(green), FALSE);
        SetDlgItemInt(dialog.DialogWindow(), Blue, static_cast<UINT>(blue), FALSE);
    }
    static TCondition IsFull(const TCommonDialog& dialog) {
        return [&dialog] { return IsWindowVisible(ItemOf(dialog, Red)) != 0; };
    }
};

} // namespace kx::test
