// SPDX-License-Identifier: MIT
// What the print dialog asks and tells.

#include "PrintDialogTest.h"

#include "kx/ui/controls/Menus.h"
#include "kx/win/Subclass.h"

#include <stdexcept>

namespace kx {
namespace {

using namespace test;

// --- The printer

TEST_F(PrintDialog, TheSelectedDeviceIsTheOneThatTheDialogOpensWith) {
    auto& dialog = NewDialog();
    EXPECT_EQ(dialog.SelectedDevice(), "");
    Look(dialog, [&] {
        EXPECT_EQ(dialog.SelectedDevice(), Printers[0]);
        EXPECT_EQ(ItemText(dialog, PrinterCombo), Printers[0]);
    });
    EXPECT_EQ(dialog.SelectedDevice(), Printers[0]);
}

TEST_F(PrintDialog, AnotherPrinterIsAskedForAndTold) {
    auto& dialog = NewDialog();
    std::vector<std::string> log;
    dialog.SetOnPrinterChanging([&](TObject* sender, bool& allow) {
        EXPECT_EQ(sender, &dialog);
        EXPECT_TRUE(allow);
        log.push_back("changing " + dialog.SelectedDevice());
    });
    dialog.SetOnPrinterChange([&](TObject* sender) {
        EXPECT_EQ(sender, &dialog);
        log.push_back("changed " + dialog.SelectedDevice());
    });
    bool hooked = false;
    dialog.SetOnEventHook([&](TMessage& m) {
        hooked |= m.Msg == WM_COMMAND && m.WParamLo() == PrinterCombo && m.WParamHi() == CBN_SELCHANGE;
    });
    std::vector<TStep> steps = TypeOtherPrinter(dialog);
    steps.push_back(Await("it is told", [&] { return log.size() == 2; }));
    steps.push_back(ClickItem(dialog, IDOK));
    EXPECT_TRUE(RunDialog(dialog, std::move(steps)));
    EXPECT_THAT(log, ElementsAre("changing " + Printers[0], "changed " + Printers[1]));
    EXPECT_EQ(dialog.Printer().Device(), Printers[1]);
    EXPECT_EQ(dialog.SelectedDevice(), Printers[1]);
    EXPECT_FALSE(hooked) << "this one message is not reported to OnEventHook";
}

TEST_F(PrintDialog, ARefusedPrinterLeavesTheOneBefore) {
    auto& dialog = NewDialog();
    std::vector<std::string> log;
    dialog.SetOnPrinterChanging(Answer(log, dialog, "changing", false));
    dialog.SetOnPrinterChange(Note(log, dialog, "changed"));
    std::vector<TStep> steps = TypeOtherPrinter(dialog);
    steps.push_back({"it has been asked", [&] { return !log.empty(); },
                     [&] {
                         EXPECT_EQ(dialog.SelectedDevice(), Printers[0]);
                         EXPECT_EQ(ItemText(dialog, PrinterCombo), Printers[0]);
                     }});
    steps.push_back(ClickItem(dialog, IDOK));
    EXPECT_TRUE(RunDialog(dialog, std::move(steps)));
    EXPECT_THAT(log, ElementsAre("changing"));
    EXPECT_EQ(dialog.Printer().Device(), Printers[0]);
}

TEST_F(PrintDialog, ARefusalOnceThePrinterBeforeIsGoneDoesNotEmptyTheBox) {
    auto& dialog = NewDialog();
    int asked = 0;
    dialog.SetOnPrinterChanging([&](TObject*, bool& allow) {
        ++asked;
        HWND combo = GetDlgItem(dialog.Handle(), PrinterCombo);
        const LRESULT before = SendMessageA(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                            reinterpret_cast<LPARAM>(Printers[0].c_str()));
        SendMessageA(combo, CB_DELETESTRING, static_cast<WPARAM>(before), 0);
        allow = false;
    });
    std::vector<TStep> steps = TypeOtherPrinter(dialog);
    steps.push_back({"it has been asked", [&] { return asked == 1; },
                     [&] { EXPECT_EQ(ItemText(dialog, PrinterCombo), Printers[1]); }});
    steps.push_back(ClickItem(dialog, IDCANCEL));
    RunDialog(dialog, std::move(steps));
}

TEST_F(PrintDialog, AQueryForAPrinterThatFailsIsNoConsent) {
    auto& dialog = NewDialog();
    dialog.SetOnPrinterChanging([](TObject*, bool&) { throw std::runtime_error("changing"); });
    std::vector<TStep> steps = TypeOtherPrinter(dialog);
    steps.push_back({"it has failed", [&] { return HasExceptions(); },
                     [&] {
                         EXPECT_EQ(dialog.SelectedDevice(), Printers[0]);
                         EXPECT_EQ(ItemText(dialog, PrinterCombo), Printers[0]);
                     }});
    steps.push_back(ClickItem(dialog, IDCANCEL));
    EXPECT_FALSE(RunDialog(dialog, std::move(steps)));
    EXPECT_THAT(TakeExceptions(), ElementsAre("changing"));
}

TEST_F(PrintDialog, TheNextShowingBeginsWithTheChosenPrinter) {
    auto& dialog = NewDialog();
    std::vector<TStep> steps = TypeOtherPrinter(dialog);
    steps.push_back(Await("it is chosen", [&] { return dialog.SelectedDevice() == Printers[1]; }));
    steps.push_back(ClickItem(dialog, IDOK));
    EXPECT_TRUE(RunDialog(dialog, std::move(steps)));
    Look(dialog, [&] { EXPECT_EQ(dialog.SelectedDevice(), Printers[1]); });
}

// --- The printer's properties

TEST_F(PrintDialog, ThePropertiesAreAskedForAndToldWhenTheyAreClosed) {
    auto& dialog = NewDialog();
    std::vector<std::string> log;
    dialog.SetOnPrinterSetupShowing(Answer(log, dialog, "showing"));
    dialog.SetOnPrinterSetupShow([&](TObject* sender) {
        EXPECT_EQ(sender, &dialog);
        EXPECT_EQ(SheetOf(dialog), nullptr);
        log.emplace_back("shown");
    });
    dialog.SetOnEventHook([&](TMessage& m) {
        if (m.Msg == WM_COMMAND && m.WParamLo() == PropertiesButton && m.WParamHi() == BN_CLICKED) {
            log.emplace_back("hook");
        }
    });
    RunDialog(dialog, {ClickItem(dialog, PropertiesButton),
                       {"the properties are shown", SheetShown(dialog),
                        [&] {
                            EXPECT_THAT(log, ElementsAre("showing"));
                            Screenshot("print_properties");
                            Click(GetDlgItem(SheetOf(dialog), SheetCancel));
                        }},
                       ClickItem(dialog, IDCANCEL)});
    EXPECT_THAT(log, ElementsAre("showing", "shown", "hook"));
}

TEST_F(PrintDialog, RefusedPropertiesAreNotShown) {
    auto& dialog = NewDialog();
    std::vector<std::string> log;
    dialog.SetOnPrinterSetupShowing(Answer(log, dialog, "showing", false));
    dialog.SetOnPrinterSetupShow(Note(log, dialog, "shown"));
    RunDialog(dialog,
              {ClickItem(dialog, PropertiesButton),
               {"it has been asked", [&] { return !log.empty(); }, [&] { EXPECT_EQ(SheetOf(dialog), nullptr); }},
               ClickItem(dialog, IDCANCEL)});
    EXPECT_THAT(log, ElementsAre("showing"));
}

/// A dialog whose system does nothing at a command but to close when it is cancelled.
class TDeafDialog : public TKxPrintDialog {
public:
    using TKxPrintDialog::TKxPrintDialog;

protected:
    void DoShow() override {
        FBelow.Install(Handle());
        TKxPrintDialog::DoShow();
    }

private:
    TSubclass FBelow{[this](TMessage& m) {
        if (m.Msg != WM_COMMAND || m.WParamLo() == IDCANCEL) {
            FBelow.CallPrevious(m);
        }
    }};
};

TEST_F(PrintDialog, ARefusedPrinterLeavesTheOneOfThatVeryName) {
    auto& dialog = NewDialog();
    dialog.SetOnPrinterChanging([](TObject*, bool& allow) { allow = false; });
    Look(dialog, [&] {
        HWND combo = ItemOf(dialog, PrinterCombo);
        const std::string shown = ItemText(dialog, PrinterCombo);
        const std::string longer = shown + " 2"; // of a second one like it
        SendMessageA(combo, CB_INSERTSTRING, 0, reinterpret_cast<LPARAM>(longer.c_str()));
        SendMessageA(combo, CB_SETCURSEL, 0, 0);
        SendMessageA(dialog.Handle(), WM_COMMAND, MAKEWPARAM(PrinterCombo, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(combo));
        EXPECT_EQ(ItemText(dialog, PrinterCombo), shown);
    });
}

TEST_F(PrintDialog, OneNotificationOfEachControlIsToldAndNoOther) {
    TDeafDialog dialog(Owner.get());
    std::vector<std::string> log;
    const auto ask = [&](const char* name) { return [&log, name](TObject*, bool&) { log.emplace_back(name); }; };
    const auto tell = [&](const char* name) { return [&log, name](TObject*) { log.emplace_back(name); }; };
    const auto notify = [&](int control, int notification) {
        SendMessageA(dialog.Handle(), WM_COMMAND, MAKEWPARAM(control, notification),
                     reinterpret_cast<LPARAM>(ItemOf(dialog, control)));
    };
    dialog.SetOnCanClose(ask("closing"));
    dialog.SetOnPrinterSetupShowing(ask("showing"));
    dialog.SetOnPrinterSetupShow(tell("shown"));
    dialog.SetOnPrinterChanging(ask("changing"));
    dialog.SetOnPrinterChange(tell("changed"));
    Look(dialog, [&] {
        dialog.SetOnCopiesChange(tell("copies"));
        notify(IDOK, BN_SETFOCUS);
        notify(PropertiesButton, BN_SETFOCUS);
        notify(PrinterCombo, CBN_DROPDOWN);
        notify(CopiesEdit, EN_UPDATE);
        EXPECT_THAT(log, testing::IsEmpty());
        notify(IDOK, BN_CLICKED);
        notify(PropertiesButton, BN_CLICKED);
        notify(PrinterCombo, CBN_SELCHANGE);
        notify(CopiesEdit, EN_CHANGE);
    });
    EXPECT_THAT(log, ElementsAre("closing", "showing", "shown", "changing", "changed", "copies"));
}

// --- Copies

TEST_F(PrintDialog, TypingCopiesIsToldOncePerChange) {
    auto& dialog = NewDialog();
    std::vector<std::string> log;
    RunDialog(dialog,
              [&] {
                  SetFocus(ItemOf(dialog, CopiesEdit));
                  SendMessageA(ItemOf(dialog, CopiesEdit), EM_SETSEL, 0, -1);
                  dialog.SetOnCopiesChange([&](TObject* sender) {
                      EXPECT_EQ(sender, &dialog);
                      log.push_back(ItemText(dialog, CopiesEdit));
                  });
                  TypeText("12");
              },
              {Await("it is typed", [&] { return log.size() >= 2; }), ClickItem(dialog, IDOK)});
    EXPECT_THAT(log, ElementsAre("1", "12"));
    EXPECT_EQ(dialog.Copies(), 12);
}

TEST_F(PrintDialog, AVetoedMessageOfTheCopiesIsNotTold) {
    auto& dialog = NewDialog();
    int told = 0;
    int vetoed = 0;
    dialog.SetOnCopiesChange([&](TObject*) { ++told; });
    Look(dialog, [&] {
        told = 0;
        dialog.SetOnEventHooking([&](TObject*, TMessage& m, bool& allow) {
            allow = !(m.Msg == WM_COMMAND && m.WParamLo() == CopiesEdit && m.WParamHi() == EN_CHANGE);
            vetoed += allow ? 0 : 1;
        });
        SetDlgItemTextA(dialog.Handle(), CopiesEdit, "7");
        dialog.SetOnEventHooking({});
    });
    EXPECT_EQ(vetoed, 1);
    EXPECT_EQ(told, 0);
}

// --- Closing and messages

TEST_F(PrintDialog, TheWindowKeepsItsProcedureToTheLastMessage) {
    auto& dialog = NewDialog();
    std::vector<UINT> after;
    bool closed = false;
    dialog.SetOnClose([&](TObject*) { closed = true; });
    dialog.SetOnEventHooking([&](TObject*, TMessage& m, bool&) {
        if (closed) {
            after.push_back(m.Msg);
        }
    });
    Look(dialog);
    EXPECT_THAT(after, Contains(static_cast<UINT>(WM_NCDESTROY)));
    EXPECT_EQ(dialog.GetCommonDialogHandle(), nullptr);
}

} // namespace
} // namespace kx
