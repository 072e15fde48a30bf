#include "BoxDialogTest.h"
#include "support/Printers.h"
#include "ui/Menus.h"

#include <stdexcept>

namespace kx {
namespace {

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr int PropertiesButton = 1025;
constexpr int CollateBox = 1041;
constexpr int PrinterCombo = 1139;
constexpr int CopiesEdit = 1154;
constexpr int HelpButton = 1038;
constexpr int SheetCancel = 2;

struct TCaptionCase {
    const char* Name;
    int Control;
};

/// Every caption with its control.
constexpr TCaptionCase Captions[] = {{"OK", 1},
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

class PrintDialog : public TBoxDialogTest {
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

// --- What is shown

TEST_F(PrintDialog, EachCaptionGoesToItsControl) {
    auto& dialog = NewDialog();
    for (const TCaptionCase& caption : Captions) {
        SetStrProp(dialog.DlgItemsCaptions(), caption.Name, caption.Name);
    }
    Look(dialog, [&] {
        for (const TCaptionCase& caption : Captions) {
            EXPECT_EQ(ItemText(dialog, caption.Control), caption.Name);
        }
        Screenshot("print_captions", dialog.DialogWindow());
    });
}

TEST_F(PrintDialog, EmptyCaptionsLeaveTheSystemsTexts) {
    TPrintDialog plain(Owner.get());
    auto& dialog = NewDialog();
    plain.SetOptions(dialog.Options());
    std::vector<std::string> system;
    Look(plain, [&] { system = AllTexts(plain); });
    dialog.DlgItemsCaptions().SetGroupCopies("How many");
    Look(dialog, [&] {
        std::vector<std::string> ours = AllTexts(dialog);
        EXPECT_EQ(ours.back(), "How many");
        ours.back() = system.back();
        EXPECT_EQ(ours, system);
    });
}

TEST_F(PrintDialog, ATitleReplacesTheSystemsAndAnEmptyOneDoesNot) {
    auto& dialog = NewDialog();
    std::string system;
    Look(dialog, [&] { system = TextOf(dialog.DialogWindow()); });
    EXPECT_NE(system, "");
    dialog.SetTitle("Print the drawing");
    Look(dialog, [&] { EXPECT_EQ(TextOf(dialog.DialogWindow()), "Print the drawing"); });
}

TEST_F(PrintDialog, OnShowComesWhenAllIsDoneAndTheInternalNotificationBehindIt) {
    const TDockedForm right(clMoneyGreen, 120, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetRightForm(right.get());
    dialog.CustDlgParams().SetPosition(dpScrCenter);
    dialog.SetTitle("Complete");
    std::vector<std::string> log;
    TRect place;
    static_cast<TCommonDialog&>(dialog).SetOnShow(Note(log, dialog, "inherited"));
    dialog.SetOnShow([&](TObject* sender) {
        EXPECT_EQ(sender, &dialog);
        log.emplace_back("show");
        EXPECT_EQ(TextOf(dialog.Handle()), "Complete");
        EXPECT_EQ(GetParent(right->WindowHandle()), dialog.Handle());
        EXPECT_EQ(dialog.GetCommonDialogHandle(), dialog.Handle());
        EXPECT_EQ(dialog.SelectedDevice(), Printers[0]);
        EXPECT_FALSE(IsWindowVisible(dialog.Handle()));
        place = ScreenRectOf(dialog.Handle());
    });
    dialog.SetCommonDialogInternalShowEvent(Note(log, dialog, "internal"));
    Look(dialog, [&] { EXPECT_EQ(ScreenRectOf(dialog.Handle()), place); });
    EXPECT_THAT(log, ElementsAre("inherited", "show", "internal"));
    EXPECT_EQ(dialog.GetCommonDialogHandle(), nullptr);
}

// --- Placement and docking

TEST_F(PrintDialog, IsPlacedWithItsForms) {
    const TDockedForm bottom(clMoneyGreen, 50, 77);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    dialog.CustDlgParams().SetPosition(dpScrCenter);
    dialog.CustDlgParams().PosParams().SetShiftX(11);
    Look(dialog, [&] {
        const TRect r = ScreenRectOf(dialog.Handle());
        EXPECT_EQ(r.Left, (GetSystemMetrics(SM_CXSCREEN) - Width(r)) / 2 + 11);
        EXPECT_EQ(r.Top, (GetSystemMetrics(SM_CYSCREEN) - Height(r)) / 2);
    });
}

TEST_F(PrintDialog, StaysWhereTheSystemPutsIt) {
    TPrintDialog plain(Owner.get());
    auto& dialog = NewDialog();
    plain.SetOptions(dialog.Options());
    TRect system;
    Look(plain, [&] { system = ScreenRectOf(plain.Handle()); });
    Look(dialog, [&] { EXPECT_EQ(ScreenRectOf(dialog.Handle()), system); });
}

class PrintDialogSides : public PrintDialog, public testing::WithParamInterface<int> {};

TEST_P(PrintDialogSides, FormsLieAroundTheDialog) {
    constexpr int leftW = 110;
    constexpr int topH = 45;
    constexpr int rightW = 130;
    constexpr int bottomH = 60;
    const TDockedForm left(clMoneyGreen, leftW, 33);
    const TDockedForm top(clSkyBlue, 44, topH);
    const TDockedForm right(clCream, rightW, 55);
    const TDockedForm bottom(clSilver, 66, bottomH);
    auto& dialog = NewDialog();
    TRect bare;
    TRect bareOk;
    Look(dialog, [&] {
        bare = ClientRectOf(dialog.Handle());
        bareOk = RectIn(dialog.Handle(), ItemOf(dialog, IDOK));
    });
    const int sides = GetParam();
    const int l = (sides & 1) != 0 ? leftW : 0;
    const int t = (sides & 2) != 0 ? topH : 0;
    const int r = (sides & 4) != 0 ? rightW : 0;
    const int b = (sides & 8) != 0 ? bottomH : 0;
    TKxCustDlgParams& params = dialog.CustDlgParams();
    params.SetLeftForm(l != 0 ? left.get() : nullptr);
    params.SetTopForm(t != 0 ? top.get() : nullptr);
    params.SetRightForm(r != 0 ? right.get() : nullptr);
    params.SetBottomForm(b != 0 ? bottom.get() : nullptr);
    params.SetPosition(dpScrCenter);
    Look(dialog, [&] {
        EXPECT_EQ(ClientRectOf(dialog.Handle()), (TRect{0, 0, bare.Right + l + r, bare.Bottom + t + b}));
        if (l != 0) {
            ExpectDocked(dialog, *left.get(), {0, 0, l, t + bare.Bottom});
        }
        if (t != 0) {
            ExpectDocked(dialog, *top.get(), {l, 0, l + bare.Right, t});
        }
        if (r != 0) {
            ExpectDocked(dialog, *right.get(), {l + bare.Right, 0, l + bare.Right + r, t + bare.Bottom});
        }
        if (b != 0) {
            ExpectDocked(dialog, *bottom.get(), {0, t + bare.Bottom, l + bare.Right + r, t + bare.Bottom + b});
        }
        const int dx = l != 0 ? l + GetSystemMetrics(SM_CYDLGFRAME) : 0;
        const int dy = t != 0 ? t + GetSystemMetrics(SM_CXDLGFRAME) : 0;
        EXPECT_EQ(RectIn(dialog.Handle(), ItemOf(dialog, IDOK)),
                  (TRect{bareOk.Left + dx, bareOk.Top + dy, bareOk.Right + dx, bareOk.Bottom + dy}));
        Screenshot("print_sides_" + IntToStr(sides), dialog.Handle());
    });
    for (const TDockedForm* form : {&left, &top, &right, &bottom}) {
        EXPECT_FALSE((*form)->IsDocked());
        EXPECT_FALSE((*form)->Visible());
    }
}

INSTANTIATE_TEST_SUITE_P(All, PrintDialogSides, testing::Range(0, 16));

TEST_F(PrintDialog, FormsDoNotFollowTheSizeOfTheDialog) {
    const TDockedForm bottom(clMoneyGreen, 50, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    Look(dialog, [&] {
        const int width = bottom->Width();
        const TRect outer = ScreenRectOf(dialog.Handle());
        SetWindowPos(dialog.Handle(), nullptr, 0, 0, Width(outer) + 70, Height(outer), SWP_NOMOVE | SWP_NOZORDER);
        EXPECT_EQ(bottom->Width(), width);
    });
}

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
