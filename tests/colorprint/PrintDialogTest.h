// SPDX-License-Identifier: MIT
#pragma once

#include "BoxDialogTest.h"
#include "tests/support/Printers.h"

namespace kx::test {

inline constexpr int PropertiesButton = 1025;
inline constexpr int PrinterCombo = 1139;
inline constexpr int CopiesEdit = 1154;
inline constexpr int SheetCancel = 2;

struct TCaptionCase {
    const char* Name;
    int Control;
};

/// Every caption with its control.
inline constexpr TCaptionCase Captions[] = {{"OK", 1},
                                            {"Cancel", 2},
                                            {"Help", 1038},
                                            {"PrnProperties", 1025},
                                            {"PrnStatus", 1095},
                                            {"PrnWhere", 1097},
                                            {"PrnName", 1093},
                                            {"PrnComment", 1096},
                                            {"PrnType", 1094},
                                            {"CopNumber", 1092},
                                            {"CopCollate", 1041},
                                            {"RngAll", 1056},
                                            {"RngPages", 1058},
                                            {"RngPagesFrom", 1089},
                                            {"RngPagesTo", 1090},
                                            {"RngSelection", 1057},
                                            {"PrintToFile", 1040},
                                            {"GroupPrinter", 1075},
                                            {"GroupRange", 1072},
                                            {"GroupCopies", 1073}};

class PrintDialog : public TDialogTest {
protected:
    void SetUp() override {
        Printers = InstalledPrinters();
        ASSERT_GE(Printers.size(), 2u) << NoPrinters;
    }

    TKxPrintDialog& NewDialog() {
        auto* dialog = new TKxPrintDialog(Owner.get());
        dialog->SetOptions({poPrintToFile, poPageNums, poSelection, poHelp});
        dialog->SetMinPage(1);
        dialog->SetMaxPage(99);
        return *dialog;
    }

    static std::vector<std::string> AllTexts(const TCommonDialog& dialog) {
        std::vector<std::string> texts;
        for (const TCaptionCase& caption : Captions) {
            texts.push_back(ItemText(dialog, caption.Control));
        }
        return texts;
    }

    /// Steps that choose the other printer with the keyboard.
    static std::vector<TStep> TypeOtherPrinter(const TCommonDialog& dialog) {
        return {
            {"the box of printers can be clicked", Shown(dialog), [&] { SetFocus(ItemOf(dialog, PrinterCombo)); }},
            {"the box has the focus", [&] { return GetFocus() == ItemOf(dialog, PrinterCombo); },
             [&] { PressKey(SendMessageA(ItemOf(dialog, PrinterCombo), CB_GETCURSEL, 0, 0) == 0 ? VK_DOWN : VK_UP); }}};
    }

    /// The window of the printer's properties.
    static HWND SheetOf(const TCommonDialog& dialog) {
        HWND sheet = ActiveDialog();
        return sheet && sheet != dialog.DialogWindow() && FindChild(sheet, "SysTabControl32") ? sheet : nullptr;
    }
    static TCondition SheetShown(const TCommonDialog& dialog) {
        return [&dialog] { return SheetOf(dialog) != nullptr; };
    }

    std::vector<std::string> Printers; ///< The default one first.
};

} // namespace kx::test
