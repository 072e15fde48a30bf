// SPDX-License-Identifier: MIT
// The dialog designer's preview.

#include "DialogDesignerFixture.h"

namespace kx::test {
namespace {

class DialogDesignerPreview : public TDialogDesignerTest {};

TStep CancelWhenShown(TComponent& dialog, TAction look = {}) {
    auto& common = dynamic_cast<TCommonDialog&>(dialog);
    return {"the dialog shows", Shown(common), [&common, look = std::move(look)] {
                if (look) {
                    look();
                }
                PressButton(ItemOf(common, IDCANCEL));
            }};
}

TEST_F(DialogDesignerPreview, APreviewLeavesPositionFitAndShiftsAsTheyWere) {
    AddForm("Second");
    Params.SetPosition(dpOwnerCenter);
    Customize({Perform("preview",
                       [] {
                           Choose(dpFormCenter);
                           Form().cbForm->SetDroppedDown(false);
                           Form().eX->SetText("20");
                           Form().eY->SetText("-30");
                           Form().chkFit->SetChecked(true);
                           Form().PageControl1->SetActivePage(Form().TabSheet3);
                           PressButton(Form().Button3->Handle());
                       }),
               CancelWhenShown(*Dialog,
                               [&] {
                                   EXPECT_FALSE(Form().Visible());
                                   EXPECT_EQ(Params.Position(), dpScrCenter) << "no form to be centred over";
                                   EXPECT_TRUE(Params.PosParams().FitToScreen());
                                   EXPECT_EQ(Params.PosParams().ShiftX(), 20);
                                   EXPECT_EQ(Params.PosParams().ShiftY(), -30);
                                   const TRect r = ScreenRectOf(Dialog->DlgHandle());
                                   EXPECT_NEAR((r.Left + r.Right) / 2.0, Screen().Width() / 2.0 + 20, 1);
                                   EXPECT_NEAR((r.Top + r.Bottom) / 2.0, Screen().Height() / 2.0 - 30, 1);
                               }),
               {"the designer is back", IsOpen<TDlgDsgnForm>(),
                [&] {
                    EXPECT_EQ(Form().rg1->ItemIndex(), dpFormCenter);
                    EXPECT_EQ(Form().eX->Text(), "20");
                }},
               PressCancel()});
    EXPECT_EQ(Params.Position(), dpOwnerCenter);
    EXPECT_FALSE(Params.PosParams().FitToScreen());
    EXPECT_EQ(Params.PosParams().ShiftX(), 3);
    EXPECT_EQ(Params.PosParams().ShiftY(), -4);
    EXPECT_EQ(Params.LeftFormName(), "Second");
}

TEST_F(DialogDesignerPreview, AfterAPreviewItIs300PixelsHighAndUsable) {
    AddForm("Preview");
    Params.SetLeftFormName("");
    EXPECT_TRUE(Customize({Perform("preview",
                                   [] {
                                       Form().SetHeight(500);
                                       PressButton(Form().Button3->Handle());
                                   }),
                           CancelWhenShown(*Dialog),
                           {"the designer is back", IsOpen<TDlgDsgnForm>(), [] {
                                EXPECT_EQ(Form().Height(), 300);
                                EXPECT_LE(Form().Button2->Top() + Form().Button2->Height(), Form().ClientHeight());
                                EXPECT_GE(Form().Button2->Top(),
                                          Form().PageControl1->Top() + Form().PageControl1->Height());
                                Screenshot("dialog-designer-after", Form().Handle());
                                Click(Form().Button2->Handle());
                            }}}));
}

TEST_F(DialogDesignerPreview, APreviewWithABadShiftRaisesTheErrorAndShowsNothing) {
    int height = 0;
    Customize({Perform("preview",
                       [&] {
                           height = Form().Height();
                           Choose(dpScrCenter);
                           Form().eX->SetText("1");
                           Form().eY->SetText("abc");
                           PressButton(Form().Button3->Handle());
                           EXPECT_THAT(TakeExceptions(), ElementsAre("'abc' is not a valid integer value"));
                           Form().eX->SetText("");
                           Form().eY->SetText("1");
                           PressButton(Form().Button3->Handle());
                           EXPECT_THAT(TakeExceptions(), ElementsAre("'' is not a valid integer value"));
                           EXPECT_TRUE(Form().Visible());
                           EXPECT_EQ(Form().Height(), height);
                       }),
               PressCancel()});
    EXPECT_EQ(Params.Position(), dpDefault);
    EXPECT_EQ(Params.PosParams().ShiftX(), 3);
}

TEST_F(DialogDesignerPreview, APreviewDocksTheChosenFormsAndResizesThemWhenAsked) {
    for (const bool resize : {true, false}) {
        TForm& side = AddForm(resize ? "Big" : "Small", 90, 60);
        TForm* copy = nullptr;
        Customize({Perform("preview",
                           [&] {
                               Form().cbLeft->SetText("");
                               Form().cbRight->SetText(side.Name());
                               Form().CheckBox1->SetChecked(resize);
                               PressButton(Form().Button3->Handle());
                           }),
                   // An empty side shows the form that the dialog names: here none that is open.
                   AnswerBox(IDOK, [](const std::string& text) { EXPECT_EQ(text, "Could not open form for preview"); }),
                   CancelWhenShown(*Dialog,
                                   [&] {
                                       copy = Params.RightForm();
                                       ASSERT_NE(copy, nullptr);
                                       EXPECT_NE(copy, &side);
                                       EXPECT_EQ(copy->Color(), clTeal);
                                   }),
                   Await("the designer is back", IsOpen<TDlgDsgnForm>()), PressCancel()});
        EXPECT_EQ(side.Height() > 60, resize);
        EXPECT_EQ(Params.RightForm(), nullptr);
    }
}

} // namespace
} // namespace kx::test
