#include "PrintDialogTest.h"

#include "kx/ui/controls/Menus.h"
#include "kx/win/Subclass.h"

#include <stdexcept>

namespace kx {
namespace {

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

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
    steps.push_back(WaitFor("it is told", [&] { return log.size() == 2; }));
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
    steps.push_back(WaitFor("it is chosen", [&] { return dialog.SelectedDevice() == Printers[1]; }));
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
    RunDialog(dialog, {{"the dialog is shown", Shown(dialog),
                        [&] {
                            SetFocus(ItemOf(dialog, CopiesEdit));
                            SendMessageA(ItemOf(dialog, CopiesEdit), EM_SETSEL, 0, -1);
                            dialog.SetOnCopiesChange([&](TObject* sender) {
                                EXPECT_EQ(sender, &dialog);
                                log.push_back(ItemText(dialog, CopiesEdit));
                            });
                            TypeText("12");
                        }},
                       WaitFor("it is typed", [&] { return log.size() >= 2; }),
                       ClickItem(dialog, IDOK)});
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

TEST_F(PrintDialog, OnCanCloseMayKeepItOpen) {
    auto& dialog = NewDialog();
    int asked = 0;
    dialog.SetOnCanClose([&](TObject* sender, bool& allow) {
        EXPECT_EQ(sender, &dialog);
        EXPECT_TRUE(allow);
        allow = ++asked > 1;
    });
    int reported = 0;
    dialog.SetOnEventHook([&](TMessage& m) { reported += m.Msg == WM_COMMAND && m.WParam == IDOK ? 1 : 0; });
    EXPECT_TRUE(RunDialog(dialog, {ClickItem(dialog, IDOK),
                                   {"it has been asked", [&] { return asked == 1; },
                                    [&] {
                                        EXPECT_TRUE(IsWindowVisible(dialog.Handle()));
                                        EXPECT_EQ(reported, 0);
                                    }},
                                   ClickItem(dialog, IDOK)}));
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(reported, 1);
}

TEST_F(PrintDialog, ItCanBeClosedAsIfAButtonWasPressed) {
    auto& dialog = NewDialog();
    bool allow = false;
    dialog.SetOnCanClose([&](TObject*, bool& canClose) { canClose = allow; });
    EXPECT_TRUE(RunDialog(dialog, {{"the dialog is shown", Shown(dialog), [&] {
                                        dialog.CloseDialog(3);
                                        dialog.CloseDialog(mrOk);
                                        EXPECT_TRUE(IsWindowVisible(dialog.Handle()));
                                        allow = true;
                                        dialog.CloseDialog(mrOk);
                                    }}}));
    EXPECT_FALSE(RunDialog(dialog, {{"the dialog is shown", Shown(dialog), [&] { dialog.CloseDialog(mrCancel); }}}));
    dialog.CloseDialog(mrOk); // not shown: nothing happens
}

TEST_F(PrintDialog, AVetoedOkIsNeitherPassedOnNorReported) {
    auto& dialog = NewDialog();
    int vetoed = 0;
    int reported = 0;
    const auto isOk = [](const TMessage& m) { return m.Msg == WM_COMMAND && m.WParam == IDOK; };
    dialog.SetOnEventHooking([&](TObject* sender, TMessage& m, bool& allow) {
        EXPECT_EQ(sender, &dialog);
        if (isOk(m)) {
            ++vetoed;
            allow = false;
        }
    });
    dialog.SetOnEventHook([&](TMessage& m) { reported += isOk(m) ? 1 : 0; });
    dialog.SetOnCanClose([](TObject*, bool&) { ADD_FAILURE(); });
    EXPECT_FALSE(RunDialog(dialog, {ClickItem(dialog, IDOK), WaitFor("it has been vetoed", [&] { return vetoed == 1; }),
                                    ClickItem(dialog, IDCANCEL)}));
    EXPECT_EQ(reported, 0);
}

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
    Look(dialog, [] {});
    EXPECT_THAT(after, Contains(static_cast<UINT>(WM_NCDESTROY)));
    EXPECT_EQ(dialog.GetCommonDialogHandle(), nullptr);
}

TEST_F(PrintDialog, AVetoedDestructionUndocksTheFormsAllTheSame) {
    const TDockedForm left(clMoneyGreen, 120, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetLeftForm(left.get());
    dialog.SetOnEventHooking([](TObject*, TMessage& m, bool& allow) { allow = m.Msg != WM_DESTROY; });
    Look(dialog, [] {});
    EXPECT_FALSE(left->IsDocked());
    EXPECT_EQ(dialog.Handle(), nullptr);
    dialog.SetOnEventHooking({});
    Look(dialog, [&] { EXPECT_TRUE(IsWindowVisible(left->WindowHandle())); });
}

TEST_F(PrintDialog, ContextMenusAreNotTracked) {
    const TDockedForm bottom(clMoneyGreen, 50, 60);
    TPopupMenu menu;
    bottom->SetPopupMenu(&menu);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    int reported = 0;
    dialog.SetOnEventHook([&](TMessage& m) { reported += m.Msg == WM_CONTEXTMENU ? 1 : 0; });
    Look(dialog, [&] {
        const TPoint centre = CenterOf(bottom->Handle());
        SendMessageA(dialog.Handle(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(bottom->Handle()),
                     MakeLParam(centre.X, centre.Y));
    });
    EXPECT_EQ(reported, 1);
}

// --- As a component

TEST_F(PrintDialog, SurvivesAFormFile) {
    TKxPrintDialog dialog(nullptr);
    dialog.SetName("PrintDialog1");
    dialog.SetCopies(3);
    dialog.SetOptions({poPageNums, poWarning});
    dialog.SetPrintRange(prPageNums);
    dialog.SetTitle("Print the drawing");
    dialog.CustDlgParams().SetLeftFormName("Samples");
    dialog.DlgItemsCaptions().SetGroupCopies("How many");
    dialog.DlgItemsCaptions().SetOK("&Print");
    const std::string text = WriteText(dialog);
    for (const char* line : {"Copies = 3", "Options = [poPageNums, poWarning]", "PrintRange = prPageNums",
                             "CustDlgParams.LeftFormName = 'Samples'", "DlgItemsCaptions.OK = '&Print'",
                             "DlgItemsCaptions.GroupCopies = 'How many'", "Title = 'Print the drawing'"}) {
        EXPECT_THAT(text, HasSubstr(line));
    }
    TKxPrintDialog copy(nullptr);
    ReadText(copy, text);
    EXPECT_EQ(WriteText(copy), text);
}

TEST_F(PrintDialog, PublishesItsPropertiesInTheirOrder) {
    EXPECT_THAT(OwnProperties(TKxPrintDialog::StaticClass()),
                ElementsAre("CustDlgParams", "DlgItemsCaptions", "Title", "OnEventHook", "OnEventHooking",
                            "OnPrinterChange", "OnPrinterChanging", "OnPrinterSetupShow", "OnPrinterSetupShowing",
                            "OnCopiesChange", "OnCanClose"));
    std::vector<std::string> captions{"OK", "Cancel", "Help"};
    for (const std::string& name : OwnProperties(TKxPrintDlgCaptions::StaticClass())) {
        captions.push_back(name);
    }
    std::vector<std::string> expected;
    for (const TCaptionCase& caption : Captions) {
        expected.emplace_back(caption.Name);
    }
    EXPECT_EQ(captions, expected);
}

} // namespace
} // namespace kx
