// SPDX-License-Identifier: MIT
// The colour dialog's controls, its place and its forms.

#include "ColorDialogTest.h"

namespace kx {
namespace {

using namespace test;

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

TEST_F(ColorDialog, TheButtonForSolidColoursIsHidden) {
    for (const TColorDialogOptions options : {TColorDialogOptions{}, TColorDialogOptions{cdFullOpen}}) {
        auto& dialog = NewDialog(options);
        Look(dialog, [&] { EXPECT_FALSE(IsWindowVisible(ItemOf(dialog, SolidButton))); });
    }
}

TEST_F(ColorDialog, TheChosenColourIsTheResult) {
    auto& dialog = NewDialog({cdFullOpen});
    dialog.SetColor(clTeal);
    EXPECT_TRUE(RunDialog(dialog,
                          [&] {
                              EXPECT_EQ(Components(dialog), "0,128,128");
                              SetComponents(dialog, 10, 20, 30);
                          },
                          {ClickItem(dialog, IDOK)}));
    EXPECT_EQ(dialog.Color(), static_cast<TColor>(RGB(10, 20, 30)));
}

// --- Order of the showing

TEST_F(ColorDialog, ItsClientAreaIsKnownOnceTheFormIsDocked) {
    const TFormPtr bottom = MakeForm(clMoneyGreen, 50, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    Look(dialog, [&] { EXPECT_EQ(dialog.CustDlgParams().ClientRect(), ClientRectOf(dialog.Handle())); });
}

// --- Placement

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
        const TFormPtr bottom = MakeForm(clMoneyGreen, 50, 60);
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
    const TFormPtr bottom = MakeForm(clMoneyGreen, 50, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    TColorDialog full(Owner.get());
    full.SetOptions({cdFullOpen});
    TRect fullClient;
    TRect shortClient;
    Look(full, [&] { fullClient = ClientRectOf(full.Handle()); });
    RunDialog(
        dialog,
        [&] {
            shortClient = ClientRectOf(dialog.Handle());
            Click(ItemOf(dialog, DefineButton));
        },
        {{"the full part is open", IsFull(dialog),
          [&] {
              EXPECT_EQ(ClientRectOf(dialog.Handle()), (TRect{0, 0, fullClient.Right, fullClient.Bottom + 60}));
              ExpectDocked(dialog, *bottom.get(), {0, shortClient.Bottom - 60, fullClient.Right, shortClient.Bottom});
              EXPECT_FALSE(IsWindowVisible(ItemOf(dialog, SolidButton)));
              Screenshot("color_opened", dialog.Handle());
          }},
         ClickItem(dialog, IDCANCEL)});
}

TEST_F(ColorDialog, ACommandToOpenWhatIsOpenDoesNotGrowTheWindow) {
    const TFormPtr bottom = MakeForm(clMoneyGreen, 50, 60);
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
    const TFormPtr bottom = MakeForm(clMoneyGreen, 50, 60);
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

} // namespace
} // namespace kx
