// SPDX-License-Identifier: MIT
// The colour dialog as the system has it.

#include "kx/ui/dialogs/DialogsColor.h"
#include "tests/support/TestDriver.h"
#include "tests/support/TestForms.h"

namespace kx {
namespace {

using namespace test;

constexpr int Red = 706;
constexpr int AddButton = 712;
constexpr int DefineButton = 719;
constexpr int ColorHelpButton = 1038;

void SetComponents(const TColorDialog& dialog, std::initializer_list<int> components) {
    int edit = Red;
    for (const int component : components) {
        SetDlgItemInt(dialog.Handle(), edit++, static_cast<UINT>(component), FALSE);
    }
}

TEST(ColorDialogComponent, AConfirmedColourIsTaken) {
    TColorDialog dialog;
    dialog.SetColor(clTeal);
    dialog.SetOptions({cdFullOpen});
    EXPECT_TRUE(RunDialog(dialog, [&] {
        EXPECT_EQ(TextOf(ItemOf(dialog, Red + 1)), "128");
        SetComponents(dialog, {10, 20, 30});
        Click(ItemOf(dialog, IDOK));
    }));
    EXPECT_EQ(dialog.Color(), static_cast<TColor>(RGB(10, 20, 30)));
}

TEST(ColorDialogComponent, ACancelledColourIsNotTaken) {
    TColorDialog dialog;
    dialog.SetColor(clTeal);
    EXPECT_FALSE(RunDialog(dialog, [&] {
        SetComponents(dialog, {10, 20, 30});
        Click(ItemOf(dialog, IDCANCEL));
    }));
    EXPECT_EQ(dialog.Color(), clTeal);
}

TEST(ColorDialogComponent, ASystemColourStartsAsItShows) {
    TColorDialog dialog;
    dialog.SetColor(clBtnShadow);
    EXPECT_TRUE(RunDialog(dialog, {Press(dialog, IDOK)}));
    EXPECT_EQ(static_cast<COLORREF>(dialog.Color()), GetSysColor(COLOR_BTNSHADOW));
}

TEST(ColorDialogComponent, OptionsReachTheDialog) {
    struct TSample {
        TColorDialogOptions Options;
        bool IsFull;
        bool CanOpen;
        bool HasHelp;
    };
    for (const TSample& sample : {TSample{{}, false, true, false}, TSample{{cdFullOpen}, true, false, false},
                                  TSample{{cdPreventFullOpen}, false, false, false},
                                  TSample{{cdShowHelp, cdAnyColor, cdSolidColor}, false, true, true}}) {
        TColorDialog dialog;
        dialog.SetOptions(sample.Options);
        Look(dialog, [&] {
            EXPECT_EQ(IsWindowVisible(ItemOf(dialog, Red)) != 0, sample.IsFull);
            EXPECT_EQ(IsWindowEnabled(ItemOf(dialog, DefineButton)) != 0, sample.CanOpen);
            EXPECT_EQ(IsWindowVisible(ItemOf(dialog, ColorHelpButton)) != 0, sample.HasHelp);
        });
    }
}

TEST(ColorDialogComponent, CustomColoursGoIntoTheDialogAndComeBackEvenWhenItIsCancelled) {
    TColorDialog dialog;
    dialog.SetOptions({cdFullOpen});
    dialog.CustomColors().Add("ColorB=FFEEDD");
    dialog.CustomColors().Add("ColorC=no colour");
    dialog.CustomColors().Add("ColorD=1000000");
    dialog.CustomColors().Add("ColorP=12");
    dialog.CustomColors().Add("ColorQ=000000");
    EXPECT_FALSE(RunDialog(dialog, [&] {
        SetComponents(dialog, {1, 2, 3});
        Click(ItemOf(dialog, AddButton));
        Click(ItemOf(dialog, IDCANCEL));
    }));
    ASSERT_EQ(dialog.CustomColors().Count(), TColorDialog::MaxCustomColors);
    EXPECT_EQ(dialog.CustomColors()[0], "ColorA=030201"); // the first box; the digits run from blue to red
    EXPECT_EQ(dialog.CustomColors()[1], "ColorB=FFEEDD");
    EXPECT_EQ(dialog.CustomColors()[2], "ColorC=FFFFFF");
    EXPECT_EQ(dialog.CustomColors()[3], "ColorD=FFFFFF");
    EXPECT_EQ(dialog.CustomColors()[15], "ColorP=000012");
}

TEST(ColorDialogComponent, OnShowComesBeforeItIsVisibleAndOnCloseBeforeItIsGone) {
    TColorDialog dialog;
    std::vector<std::string> log;
    dialog.SetOnShow([&](TObject* sender) {
        EXPECT_EQ(sender, &dialog);
        EXPECT_FALSE(IsWindowVisible(dialog.Handle()));
        EXPECT_NE(ItemOf(dialog, IDOK), nullptr);
        log.emplace_back("show");
    });
    dialog.SetOnClose([&](TObject* sender) {
        EXPECT_EQ(sender, &dialog);
        EXPECT_NE(ItemOf(dialog, IDOK), nullptr);
        log.emplace_back("close");
    });
    EXPECT_EQ(dialog.Handle(), nullptr);
    EXPECT_TRUE(RunDialog(dialog, {Press(dialog, IDOK)}));
    EXPECT_THAT(log, ElementsAre("show", "close"));
    EXPECT_EQ(dialog.Handle(), nullptr);
}

TEST(ColorDialogComponent, OtherWindowsWaitMeanwhile) {
    const TFormPtr owner(NewForm<TForm>(nullptr));
    const TFormPtr other(NewForm<TForm>(nullptr));
    owner->Show();
    other->Show();
    TColorDialog dialog;
    Look(dialog, [&] {
        EXPECT_FALSE(IsWindowEnabled(owner->Handle()));
        EXPECT_FALSE(IsWindowEnabled(other->Handle()));
        EXPECT_THROW(dialog.Execute(), EInvalidOperation);
    });
    EXPECT_TRUE(IsWindowEnabled(owner->Handle()));
    EXPECT_TRUE(IsWindowEnabled(other->Handle()));
}

TEST(ColorDialogComponent, MayBeFreedWhileItIsShown) {
    auto* dialog = new TColorDialog;
    int closed = 0;
    dialog->SetOnClose([&](TObject*) { ++closed; });
    EXPECT_FALSE(RunDialog(*dialog, [&] { dialog->Free(); }));
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(ActiveDialog(), nullptr);
}

} // namespace
} // namespace kx
