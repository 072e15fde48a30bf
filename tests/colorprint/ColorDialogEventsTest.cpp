// SPDX-License-Identifier: MIT
// What the colour dialog asks and tells.

#include "ColorDialogTest.h"

#include "kx/ui/controls/Menus.h"
#include "kx/win/Subclass.h"

namespace kx {
namespace {

using namespace test;

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
    RunDialog(dialog, {ClickItem(dialog, DefineButton), Await("the full part is open", IsFull(dialog)),
                       ClickItem(dialog, IDCANCEL)});
    EXPECT_THAT(log, ElementsAre("opening", "open", "hook"));
}

TEST_F(ColorDialog, AVetoKeepsTheDialogInItsShortForm) {
    const TFormPtr bottom = MakeForm(clMoneyGreen, 50, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    std::vector<std::string> log;
    dialog.SetOnFullOpening(Answer(log, dialog, "opening", false));
    dialog.SetOnFullOpen(Note(log, dialog, "open"));
    TRect before;
    RunDialog(dialog,
              [&] {
                  before = ScreenRectOf(dialog.Handle());
                  Click(ItemOf(dialog, DefineButton));
              },
              {{"it has been asked", [&] { return !log.empty(); },
                [&] {
                    EXPECT_FALSE(IsFull(dialog)());
                    EXPECT_EQ(ScreenRectOf(dialog.Handle()), before);
                }},
               ClickItem(dialog, IDCANCEL)});
    EXPECT_THAT(log, ElementsAre("opening"));
}

/// A dialog of a system that does not open the full part, and does not close by OK.
class TShortDialog : public TKxColorDialog {
public:
    using TKxColorDialog::TKxColorDialog;

protected:
    void DoShow() override {
        FBelow.Install(Handle());
        TKxColorDialog::DoShow();
    }

private:
    TSubclass FBelow{[this](TMessage& m) {
        if (m.Msg != WM_COMMAND || (m.WParamLo() != DefineButton && m.WParamLo() != IDOK)) {
            FBelow.CallPrevious(m);
        }
    }};
};

TEST_F(ColorDialog, AFullPartThatDoesNotOpenMakesNoRoomForTheForm) {
    const TFormPtr bottom = MakeForm(clMoneyGreen, 50, 60);
    TShortDialog dialog(Owner.get());
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    int told = 0;
    dialog.SetOnFullOpen([&](TObject*) { ++told; });
    Look(dialog, [&] {
        const TRect before = ScreenRectOf(dialog.Handle());
        SendMessageA(dialog.Handle(), WM_COMMAND, DefineButton, 0);
        EXPECT_EQ(ScreenRectOf(dialog.Handle()), before);
    });
    EXPECT_EQ(told, 1);
}

TEST_F(ColorDialog, OnlyAClickOnOkAsksWhetherItMayClose) {
    TShortDialog dialog(Owner.get());
    int asked = 0;
    dialog.SetOnCanClose([&](TObject*, bool&) { ++asked; });
    Look(dialog, [&] {
        SendMessageA(dialog.Handle(), WM_COMMAND, MAKEWPARAM(IDOK, BN_SETFOCUS), 0);
        EXPECT_EQ(asked, 0);
        SendMessageA(dialog.Handle(), WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
        EXPECT_EQ(asked, 1);
    });
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
    EXPECT_FALSE(RunDialog(dialog, [&] { SetComponents(dialog, 0, 128, 128); },
                           {ClickItem(dialog, AddButton), Await("it is added", [&] { return log.size() == 3; }),
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
    RunDialog(dialog, [&] { SetComponents(dialog, 1, 2, 3); },
              {ClickItem(dialog, AddButton),
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
    RunDialog(dialog, [&] { SetDlgItemTextA(dialog.Handle(), Green, ""); },
              {ClickItem(dialog, AddButton), Await("the error is told", [&] { return HasExceptions(); }),
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

TEST_F(ColorDialog, TheWindowHasItsOwnProcedureBackWhenItCloses) {
    auto& dialog = NewDialog();
    int after = 0;
    bool closed = false;
    dialog.SetOnClose([&](TObject*) { closed = true; });
    dialog.SetOnEventHooking([&](TObject*, TMessage& m, bool&) { after += closed && m.Msg != WM_DESTROY ? 1 : 0; });
    Look(dialog);
    EXPECT_TRUE(closed);
    EXPECT_EQ(after, 0);
}

} // namespace
} // namespace kx
