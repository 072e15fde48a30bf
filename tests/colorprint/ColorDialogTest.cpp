#include "BoxDialogTest.h"

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

constexpr int Red = 706;
constexpr int Green = 707;
constexpr int Blue = 708;
constexpr int AddButton = 712;
constexpr int SolidButton = 713;
constexpr int DefineButton = 719;
constexpr int HelpButton = 1038;

class ColorDialog : public TBoxDialogTest {
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

// --- What is shown

TEST_F(ColorDialog, CaptionsGoToTheirControls) {
    auto& dialog = NewDialog({cdFullOpen, cdShowHelp});
    auto& captions = dialog.DlgItemsCaptions();
    captions.SetOK("&Take");
    captions.SetCancel("Lea&ve");
    captions.SetHelp("&Why");
    captions.SetAddCustomColor("&Keep it");
    captions.SetDefineCustomColor("&More");
    Look(dialog, [&] {
        EXPECT_EQ(ItemText(dialog, IDOK), "&Take");
        EXPECT_EQ(ItemText(dialog, IDCANCEL), "Lea&ve");
        EXPECT_EQ(ItemText(dialog, HelpButton), "&Why");
        EXPECT_EQ(ItemText(dialog, AddButton), "&Keep it");
        EXPECT_EQ(ItemText(dialog, DefineButton), "&More");
        Screenshot("color_captions", dialog.DialogWindow());
    });
}

TEST_F(ColorDialog, EmptyCaptionsLeaveTheSystemsTexts) {
    TColorDialog plain(Owner.get());
    auto& dialog = NewDialog();
    dialog.DlgItemsCaptions().SetDefineCustomColor("&More");
    std::vector<std::string> system;
    Look(plain, [&] {
        for (const int id : {IDOK, IDCANCEL, HelpButton, AddButton}) {
            system.push_back(ItemText(plain, id));
        }
    });
    Look(dialog, [&] {
        std::vector<std::string> ours;
        for (const int id : {IDOK, IDCANCEL, HelpButton, AddButton}) {
            ours.push_back(ItemText(dialog, id));
        }
        EXPECT_EQ(ours, system);
        EXPECT_EQ(ItemText(dialog, DefineButton), "&More");
    });
}

TEST_F(ColorDialog, ATitleReplacesTheSystemsAndAnEmptyOneDoesNot) {
    auto& dialog = NewDialog();
    std::string system;
    Look(dialog, [&] { system = TextOf(dialog.DialogWindow()); });
    EXPECT_NE(system, "");
    dialog.SetTitle("Pen colour");
    Look(dialog, [&] { EXPECT_EQ(TextOf(dialog.DialogWindow()), "Pen colour"); });
}

TEST_F(ColorDialog, TheButtonForSolidColoursIsHidden) {
    for (const TColorDialogOptions options : {TColorDialogOptions{}, TColorDialogOptions{cdFullOpen}}) {
        auto& dialog = NewDialog(options);
        Look(dialog, [&] { EXPECT_FALSE(IsWindowVisible(ItemOf(dialog, SolidButton))); });
    }
}

TEST_F(ColorDialog, TheChosenColourIsTheResult) {
    auto& dialog = NewDialog({cdFullOpen});
    dialog.SetColor(clTeal);
    EXPECT_TRUE(RunDialog(dialog, {{"the dialog is shown", Shown(dialog),
                                    [&] {
                                        EXPECT_EQ(Components(dialog), "0,128,128");
                                        SetComponents(dialog, 10, 20, 30);
                                    }},
                                   ClickItem(dialog, IDOK)}));
    EXPECT_EQ(dialog.Color(), static_cast<TColor>(RGB(10, 20, 30)));
}

// --- Order of the showing

TEST_F(ColorDialog, OnShowComesWhenAllIsDoneAndTheInternalNotificationBehindIt) {
    const TDockedForm bottom(clMoneyGreen, 50, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    dialog.CustDlgParams().SetPosition(dpScrCenter);
    dialog.SetTitle("Complete");
    std::vector<std::string> log;
    TRect place;
    dialog.SetOnShow([&](TObject* sender) {
        EXPECT_EQ(sender, &dialog);
        log.emplace_back("show");
        EXPECT_EQ(TextOf(dialog.Handle()), "Complete");
        EXPECT_EQ(GetParent(bottom->WindowHandle()), dialog.Handle());
        EXPECT_EQ(dialog.GetCommonDialogHandle(), dialog.Handle());
        EXPECT_FALSE(IsWindowVisible(dialog.Handle()));
        place = ScreenRectOf(dialog.Handle());
    });
    dialog.SetCommonDialogInternalShowEvent(Note(log, dialog, "internal"));
    Look(dialog, [&] { EXPECT_EQ(ScreenRectOf(dialog.Handle()), place); });
    EXPECT_THAT(log, ElementsAre("show", "internal"));
    EXPECT_EQ(dialog.GetCommonDialogHandle(), nullptr);
}

TEST_F(ColorDialog, TheInheritedOnShowIsAnEventOfItsOwnAndComesFirst) {
    auto& dialog = NewDialog();
    std::vector<std::string> log;
    static_cast<TCommonDialog&>(dialog).SetOnShow(Note(log, dialog, "inherited"));
    dialog.SetOnShow(Note(log, dialog, "own"));
    Look(dialog, [] {});
    EXPECT_THAT(log, ElementsAre("inherited", "own"));
}

TEST_F(ColorDialog, ItsClientAreaIsKnownOnceTheFormIsDocked) {
    const TDockedForm bottom(clMoneyGreen, 50, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    Look(dialog, [&] { EXPECT_EQ(dialog.CustDlgParams().ClientRect(), ClientRectOf(dialog.Handle())); });
}

// --- Placement

TEST_F(ColorDialog, IsPlacedWithItsForm) {
    const TDockedForm bottom(clMoneyGreen, 50, 77);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    dialog.CustDlgParams().SetPosition(dpScrCenter);
    dialog.CustDlgParams().PosParams().SetShiftX(11);
    dialog.CustDlgParams().PosParams().SetShiftY(-7);
    Look(dialog, [&] {
        const TRect r = ScreenRectOf(dialog.Handle());
        EXPECT_EQ(r.Left, (GetSystemMetrics(SM_CXSCREEN) - Width(r)) / 2 + 11);
        EXPECT_EQ(r.Top, (GetSystemMetrics(SM_CYSCREEN) - Height(r)) / 2 - 7);
    });
}

TEST_F(ColorDialog, IsCentredOverItsOwner) {
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetPosition(dpOwnerCenter);
    Look(dialog, [&] {
        const TRect r = ScreenRectOf(dialog.Handle());
        const TRect o = ScreenRectOf(Owner->Handle());
        EXPECT_EQ((r.Left + r.Right) / 2, (o.Left + o.Right) / 2);
        EXPECT_EQ((r.Top + r.Bottom) / 2, (o.Top + o.Bottom) / 2);
    });
}

TEST_F(ColorDialog, StaysWhereTheSystemPutsItButForItsShift) {
    auto& dialog = NewDialog();
    TRect system;
    Look(dialog, [&] { system = ScreenRectOf(dialog.Handle()); });
    TColorDialog plain(Owner.get());
    Look(plain, [&] { EXPECT_EQ(ScreenRectOf(plain.Handle()), system); });
    dialog.CustDlgParams().PosParams().SetShiftX(10);
    Look(dialog, [&] { EXPECT_EQ(ScreenRectOf(dialog.Handle()).Left, system.Left + 10); });
}

// --- Docking

TEST_F(ColorDialog, ABottomFormIsDockedInTheShortAndInTheFullDialog) {
    for (const TColorDialogOptions options : {TColorDialogOptions{}, TColorDialogOptions{cdFullOpen}}) {
        auto& dialog = NewDialog(options);
        TRect bare;
        Look(dialog, [&] { bare = ClientRectOf(dialog.Handle()); });
        const TDockedForm bottom(clMoneyGreen, 50, 60);
        dialog.CustDlgParams().SetBottomForm(bottom.get());
        Look(dialog, [&] {
            EXPECT_EQ(ClientRectOf(dialog.Handle()), (TRect{0, 0, bare.Right, bare.Bottom + 60}));
            ExpectDocked(dialog, *bottom.get(), {0, bare.Bottom, bare.Right, bare.Bottom + 60});
            Screenshot(options.IsEmpty() ? "color_short" : "color_full", dialog.Handle());
        });
        EXPECT_FALSE(bottom->IsDocked());
        EXPECT_FALSE(bottom->Visible());
    }
}

TEST_F(ColorDialog, OtherSidesThanTheBottomAreRefusedSilentlyAtRunTime) {
    auto& dialog = NewDialog();
    TKxCustDlgParams& params = dialog.CustDlgParams();
    params.SetLeftFormName("Any");
    params.SetTopFormName("Any");
    params.SetRightFormName("Any");
    params.SetBottomFormName("Any");
    EXPECT_EQ(params.LeftFormName() + params.TopFormName() + params.RightFormName(), "");
    EXPECT_EQ(params.BottomFormName(), "Any");
    EXPECT_FALSE(params.CanLeft() || params.CanTop() || params.CanRight());
    EXPECT_TRUE(params.CanBottom());
}

TEST_F(ColorDialog, OtherSidesThanTheBottomAreRefusedWithAMessageInAFormDesigner) {
    TKxColorDialog dialog(nullptr);
    dialog.SetDesigning(true);
    TKxCustDlgParams& params = dialog.CustDlgParams();
    const auto refused = [](const std::function<void()>& set, const std::string& side) {
        RunDialog(
            [&] {
                set();
                return true;
            },
            {AnswerBox(IDOK, [&](const std::string& text) {
                EXPECT_EQ(text, "KXQDialogs\rCould not insert " + side + " panel: not implemented in this version");
            })});
    };
    refused([&] { params.SetLeftFormName("Any"); }, "left");
    refused([&] { params.SetTopFormName("Any"); }, "top");
    refused([&] { params.SetRightFormName("Any"); }, "right");
    EXPECT_EQ(params.LeftFormName() + params.TopFormName() + params.RightFormName(), "");
    params.SetLeftFormName("Not supported"); // what a form designer shows is no mistake
}

TEST_F(ColorDialog, OpeningTheFullPartGrowsTheWindowByTheBottomFormAgain) {
    const TDockedForm bottom(clMoneyGreen, 50, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    TColorDialog full(Owner.get());
    full.SetOptions({cdFullOpen});
    TRect fullClient;
    TRect shortClient;
    Look(full, [&] { fullClient = ClientRectOf(full.Handle()); });
    RunDialog(
        dialog,
        {{"the dialog is shown", Shown(dialog),
          [&] {
              shortClient = ClientRectOf(dialog.Handle());
              Click(ItemOf(dialog, DefineButton));
          }},
         {"the full part is open", IsFull(dialog),
          [&] {
              EXPECT_EQ(ClientRectOf(dialog.Handle()), (TRect{0, 0, fullClient.Right, fullClient.Bottom + 60}));
              ExpectDocked(dialog, *bottom.get(), {0, shortClient.Bottom - 60, fullClient.Right, shortClient.Bottom});
              EXPECT_FALSE(IsWindowVisible(ItemOf(dialog, SolidButton)));
              Screenshot("color_opened", dialog.Handle());
          }},
         ClickItem(dialog, IDCANCEL)});
}

TEST_F(ColorDialog, ACommandToOpenWhatIsOpenDoesNotGrowTheWindow) {
    const TDockedForm bottom(clMoneyGreen, 50, 60);
    auto& dialog = NewDialog({cdFullOpen});
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    Look(dialog, [&] {
        const TRect client = ClientRectOf(dialog.Handle());
        for (int i = 0; i < 3; ++i) {
            SendMessageA(dialog.Handle(), WM_COMMAND, DefineButton, 0);
            EXPECT_EQ(ClientRectOf(dialog.Handle()), client);
        }
    });
}

TEST_F(ColorDialog, TheBottomFormFollowsTheWidthOfTheDialog) {
    const TDockedForm bottom(clMoneyGreen, 50, 60);
    auto& dialog = NewDialog({cdFullOpen});
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    Look(dialog, [&] {
        const TRect outer = ScreenRectOf(dialog.Handle());
        SetWindowPos(dialog.Handle(), nullptr, 0, 0, Width(outer) + 70, Height(outer), SWP_NOMOVE | SWP_NOZORDER);
        const TRect client = ClientRectOf(dialog.Handle());
        EXPECT_EQ(bottom->Width(), client.Right);
        EXPECT_EQ(dialog.CustDlgParams().ClientRect(), client);
    });
}

// --- The full part

TEST_F(ColorDialog, OpeningTheFullPartIsAskedAndTold) {
    auto& dialog = NewDialog();
    std::vector<std::string> log;
    dialog.SetOnFullOpening([&](TObject* sender, bool& allow) {
        EXPECT_EQ(sender, &dialog);
        EXPECT_TRUE(allow);
        EXPECT_FALSE(IsFull(dialog)());
        log.emplace_back("opening");
    });
    dialog.SetOnFullOpen([&](TObject* sender) {
        EXPECT_EQ(sender, &dialog);
        EXPECT_TRUE(IsFull(dialog)());
        log.emplace_back("open");
    });
    dialog.SetOnEventHook([&](TMessage& m) {
        if (m.Msg == WM_COMMAND && m.WParamLo() == DefineButton) {
            log.emplace_back("hook");
        }
    });
    RunDialog(dialog, {ClickItem(dialog, DefineButton), WaitFor("the full part is open", IsFull(dialog)),
                       ClickItem(dialog, IDCANCEL)});
    EXPECT_THAT(log, ElementsAre("opening", "open", "hook"));
}

TEST_F(ColorDialog, AVetoKeepsTheDialogInItsShortForm) {
    const TDockedForm bottom(clMoneyGreen, 50, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    std::vector<std::string> log;
    dialog.SetOnFullOpening(Answer(log, dialog, "opening", false));
    dialog.SetOnFullOpen(Note(log, dialog, "open"));
    TRect before;
    RunDialog(dialog, {{"the dialog is shown", Shown(dialog),
                        [&] {
                            before = ScreenRectOf(dialog.Handle());
                            Click(ItemOf(dialog, DefineButton));
                        }},
                       {"it has been asked", [&] { return !log.empty(); },
                        [&] {
                            EXPECT_FALSE(IsFull(dialog)());
                            EXPECT_EQ(ScreenRectOf(dialog.Handle()), before);
                        }},
                       ClickItem(dialog, IDCANCEL)});
    EXPECT_THAT(log, ElementsAre("opening"));
}

// --- Custom colours

TEST_F(ColorDialog, ACustomColourIsAskedForAndTold) {
    auto& dialog = NewDialog({cdFullOpen});
    std::vector<std::string> log;
    dialog.SetOnCustomColorAdding([&](TObject* sender, TColor& color, bool& allow) {
        EXPECT_EQ(sender, &dialog);
        EXPECT_TRUE(allow);
        log.push_back("adding " + ColorToString(color));
    });
    dialog.SetOnCustomColorAdd([&](TObject* sender, TColor color) {
        EXPECT_EQ(sender, &dialog);
        log.push_back("added " + ColorToString(color));
    });
    dialog.SetOnEventHook([&](TMessage& m) {
        if (m.Msg == WM_COMMAND && m.WParamLo() == AddButton) {
            log.emplace_back("hook");
        }
    });
    EXPECT_FALSE(RunDialog(dialog, {{"the dialog is shown", Shown(dialog), [&] { SetComponents(dialog, 0, 128, 128); }},
                                    ClickItem(dialog, AddButton),
                                    WaitFor("it is added", [&] { return log.size() == 3; }),
                                    ClickItem(dialog, IDCANCEL)}));
    EXPECT_THAT(log, ElementsAre("adding clTeal", "added clTeal", "hook"));
    EXPECT_EQ(dialog.CustomColors().Values("ColorA"), "808000"); // added for good, although the dialog was cancelled
}

TEST_F(ColorDialog, AChangedColourIsAddedAndTheOneBeforeIsTold) {
    for (const TColorDialogOptions options : {TColorDialogOptions{}, TColorDialogOptions{cdFullOpen}}) {
        auto& dialog = NewDialog(options);
        dialog.SetOnCustomColorAdding([](TObject*, TColor& color, bool&) { color = clBlue; });
        std::vector<TColor> told;
        dialog.SetOnCustomColorAdd([&](TObject*, TColor color) { told.push_back(color); });
        Look(dialog, [&] {
            SetComponents(dialog, 255, 128, 0);
            SendMessageA(dialog.Handle(), WM_COMMAND, AddButton, 0);
            EXPECT_EQ(Components(dialog), "0,0,255");
        });
        EXPECT_THAT(told, ElementsAre(static_cast<TColor>(RGB(255, 128, 0))));
        EXPECT_EQ(dialog.CustomColors().Values("ColorA"), "FF0000");
    }
}

TEST_F(ColorDialog, AChangedSystemColourIsAddedAsItShows) {
    auto& dialog = NewDialog({cdFullOpen});
    dialog.SetOnCustomColorAdding([](TObject*, TColor& color, bool&) { color = clBtnShadow; });
    const COLORREF rgb = GetSysColor(COLOR_BTNSHADOW);
    Look(dialog, [&] {
        SendMessageA(dialog.Handle(), WM_COMMAND, AddButton, 0);
        EXPECT_EQ(Components(dialog),
                  IntToStr(GetRValue(rgb)) + "," + IntToStr(GetGValue(rgb)) + "," + IntToStr(GetBValue(rgb)));
    });
}

TEST_F(ColorDialog, ARefusedColourIsNotAdded) {
    auto& dialog = NewDialog({cdFullOpen});
    int asked = 0;
    int told = 0;
    dialog.SetOnCustomColorAdding([&](TObject*, TColor& color, bool& allow) {
        ++asked;
        color = clRed;
        allow = false;
    });
    dialog.SetOnCustomColorAdd([&](TObject*, TColor) { ++told; });
    RunDialog(dialog, {{"the dialog is shown", Shown(dialog), [&] { SetComponents(dialog, 1, 2, 3); }},
                       ClickItem(dialog, AddButton),
                       {"it has been asked", [&] { return asked == 1; },
                        [&] { EXPECT_EQ(Components(dialog), "1,2,3") << "a refused colour is not written"; }},
                       ClickItem(dialog, IDCANCEL)});
    EXPECT_EQ(told, 0);
    EXPECT_EQ(dialog.CustomColors().Values("ColorA"), "FFFFFF");
}

TEST_F(ColorDialog, ATextThatIsNoNumberIsAConversionErrorAndNothingIsAdded) {
    auto& dialog = NewDialog({cdFullOpen});
    int events = 0;
    dialog.SetOnCustomColorAdding([&](TObject*, TColor&, bool&) { ++events; });
    dialog.SetOnCustomColorAdd([&](TObject*, TColor) { ++events; });
    RunDialog(dialog, {{"the dialog is shown", Shown(dialog), [&] { SetDlgItemTextA(dialog.Handle(), Green, ""); }},
                       ClickItem(dialog, AddButton),
                       WaitFor("the error is told", [&] { return HasExceptions(); }),
                       ClickItem(dialog, IDCANCEL)});
    EXPECT_THAT(TakeExceptions(), ElementsAre("'' is not a valid integer value"));
    EXPECT_EQ(events, 0);
    EXPECT_EQ(dialog.CustomColors().Values("ColorA"), "FFFFFF");
}

TEST_F(ColorDialog, AComponentAbove255IsARangeErrorAndNothingIsAdded) {
    auto& dialog = NewDialog({cdFullOpen});
    int events = 0;
    dialog.SetOnCustomColorAdd([&](TObject*, TColor) { ++events; });
    // The system corrects such a number when it hears of it.
    dialog.SetOnEventHooking(
        [](TObject*, TMessage& m, bool& allow) { allow = !(m.Msg == WM_COMMAND && m.WParamLo() == Blue); });
    Look(dialog, [&] {
        for (const char* text : {"256", "999", "-1", "2567"}) {
            SetDlgItemTextA(dialog.Handle(), Blue, text);
            SendMessageA(dialog.Handle(), WM_COMMAND, AddButton, 0);
            EXPECT_THAT(TakeExceptions(), ElementsAre("Range check error")) << text;
        }
        SetDlgItemTextA(dialog.Handle(), Blue, "2559"); // three characters are read
        SendMessageA(dialog.Handle(), WM_COMMAND, AddButton, 0);
    });
    EXPECT_EQ(events, 1);
}

// --- Closing and messages

TEST_F(ColorDialog, OnCanCloseMayKeepItOpen) {
    auto& dialog = NewDialog();
    int asked = 0;
    int reported = 0;
    dialog.SetOnCanClose([&](TObject* sender, bool& allow) {
        EXPECT_EQ(sender, &dialog);
        EXPECT_TRUE(allow);
        allow = ++asked > 1;
    });
    dialog.SetOnEventHook([&](TMessage& m) { reported += m.Msg == WM_COMMAND && m.WParam == IDOK ? 1 : 0; });
    EXPECT_TRUE(RunDialog(dialog, {ClickItem(dialog, IDOK),
                                   {"it has been asked", [&] { return asked == 1; },
                                    [&] {
                                        EXPECT_TRUE(IsWindowVisible(dialog.Handle()));
                                        EXPECT_EQ(reported, 0);
                                    }},
                                   ClickItem(dialog, IDOK)}));
    EXPECT_EQ(asked, 2);
}

TEST_F(ColorDialog, OnCanCloseIsNotAskedWhenItIsCancelled) {
    auto& dialog = NewDialog();
    dialog.SetOnCanClose([](TObject*, bool& allow) {
        ADD_FAILURE();
        allow = false;
    });
    EXPECT_FALSE(RunDialog(dialog, {ClickItem(dialog, IDCANCEL)}));
}

TEST_F(ColorDialog, ItCanBeClosedAsIfAButtonWasPressed) {
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

TEST_F(ColorDialog, AVetoedOkIsNeitherPassedOnNorReported) {
    auto& dialog = NewDialog();
    int vetoed = 0;
    int reported = 0;
    const auto isOk = [](const TMessage& m) { return m.Msg == WM_COMMAND && m.WParam == IDOK; };
    dialog.SetOnEventHooking([&](TObject* sender, TMessage& m, bool& allow) {
        EXPECT_EQ(sender, &dialog);
        if (isOk(m)) {
            ++vetoed;
            allow = false;
            m.Result = 4711;
        }
    });
    dialog.SetOnEventHook([&](TMessage& m) { reported += isOk(m) ? 1 : 0; });
    dialog.SetOnCanClose([](TObject*, bool&) { ADD_FAILURE(); });
    EXPECT_FALSE(RunDialog(dialog, {ClickItem(dialog, IDOK),
                                    {"it has been vetoed", [&] { return vetoed == 1; },
                                     [&] { EXPECT_EQ(SendMessageA(dialog.Handle(), WM_COMMAND, IDOK, 0), 4711); }},
                                    ClickItem(dialog, IDCANCEL)}));
    EXPECT_EQ(vetoed, 2);
    EXPECT_EQ(reported, 0);
}

TEST_F(ColorDialog, MessagesAreReportedOnceTheSystemHasAnswered) {
    auto& dialog = NewDialog();
    LRESULT result = 0;
    dialog.SetTitle("12345");
    dialog.SetOnEventHook([&](TMessage& m) {
        if (m.Msg == WM_GETTEXTLENGTH) {
            result = m.Result;
            m.Result = 99;
        }
    });
    Look(dialog, [&] { EXPECT_EQ(SendMessageA(dialog.Handle(), WM_GETTEXTLENGTH, 0, 0), 99); });
    EXPECT_EQ(result, 5);
}

TEST_F(ColorDialog, TheWindowHasItsOwnProcedureBackWhenItCloses) {
    auto& dialog = NewDialog();
    int after = 0;
    bool closed = false;
    dialog.SetOnClose([&](TObject*) { closed = true; });
    dialog.SetOnEventHooking([&](TObject*, TMessage& m, bool&) { after += closed && m.Msg != WM_DESTROY ? 1 : 0; });
    Look(dialog, [] {});
    EXPECT_TRUE(closed);
    EXPECT_EQ(after, 0);
}

TEST_F(ColorDialog, AVetoedDestructionUndocksTheFormAllTheSame) {
    const TDockedForm bottom(clMoneyGreen, 50, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    dialog.SetOnEventHooking([](TObject*, TMessage& m, bool& allow) { allow = m.Msg != WM_DESTROY; });
    int closed = 0;
    dialog.SetOnClose([&](TObject*) { ++closed; });
    Look(dialog, [] {});
    EXPECT_EQ(closed, 1);
    EXPECT_FALSE(bottom->IsDocked());
    EXPECT_EQ(dialog.Handle(), nullptr);
    dialog.SetOnEventHooking({});
    Look(dialog, [&] { EXPECT_TRUE(IsWindowVisible(bottom->WindowHandle())); });
    EXPECT_EQ(closed, 2);
}

TEST_F(ColorDialog, ContextMenusAreNotTracked) {
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

TEST_F(ColorDialog, SurvivesAFormFile) {
    TKxColorDialog dialog(nullptr);
    dialog.SetName("ColorDialog1");
    dialog.SetColor(clTeal);
    dialog.CustomColors().Add("ColorA=FFEEDD");
    dialog.SetOptions({cdFullOpen, cdAnyColor});
    dialog.SetTitle("Pen colour");
    dialog.CustDlgParams().SetBottomFormName("Samples");
    dialog.CustDlgParams().SetPosition(dpOwnerCenter);
    dialog.DlgItemsCaptions().SetOK("&Take");
    dialog.DlgItemsCaptions().SetAddCustomColor("&Keep");
    const std::string text = WriteText(dialog);
    for (const char* line :
         {"Color = clTeal", "CustomColors.Strings = (", "'ColorA=FFEEDD'", "Options = [cdFullOpen, cdAnyColor]",
          "CustDlgParams.Position = dpOwnerCenter", "CustDlgParams.BottomFormName = 'Samples'",
          "DlgItemsCaptions.OK = '&Take'", "DlgItemsCaptions.AddCustomColor = '&Keep'", "Title = 'Pen colour'"}) {
        EXPECT_THAT(text, HasSubstr(line));
    }
    TKxColorDialog copy(nullptr);
    ReadText(copy, text);
    EXPECT_EQ(WriteText(copy), text);
}

TEST_F(ColorDialog, PublishesItsPropertiesInTheirOrder) {
    EXPECT_THAT(OwnProperties(TKxColorDialog::StaticClass()),
                ElementsAre("CustDlgParams", "DlgItemsCaptions", "Title", "OnFullOpen", "OnFullOpening",
                            "OnCustomColorAdd", "OnCustomColorAdding", "OnEventHook", "OnEventHooking", "OnCanClose"));
    EXPECT_THAT(OwnProperties(TKxColorDlgCaptions::StaticClass()), ElementsAre("AddCustomColor", "DefineCustomColor"));
}

} // namespace
} // namespace kx
