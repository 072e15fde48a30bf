// SPDX-License-Identifier: MIT
// The dialog designer, as it is used.

#include "DialogDesignerFixture.h"

#include "kx/colorprint/KxColorDlg.h"

#include <climits>

namespace kx::test {
namespace {

class DialogDesigner : public TDialogDesignerTest {};

TEST_F(DialogDesigner, ShowsWhatTheDialogHas) {
    Params.SetTopFormName("T");
    Params.SetRightFormName("R");
    Params.SetBottomFormName("Third");
    Params.SetPosition(dpOwnerCenter);
    Params.PosParams().SetFormName("Third");
    Params.PosParams().SetFitToScreen(true);
    Dialog->SetTitle("Open a drawing");
    Customize({Perform("look",
                       [&] {
                           EXPECT_EQ(Form().cbLeft->Text(), "Second");
                           EXPECT_EQ(Form().cbTop->Text(), "T");
                           EXPECT_EQ(Form().cbRight->Text(), "R");
                           EXPECT_EQ(Form().cbBottom->Text(), "Third");
                           EXPECT_EQ(Form().cbForm->Text(), "Third");
                           EXPECT_EQ(Form().eX->Text(), "3");
                           EXPECT_EQ(Form().eY->Text(), "-4");
                           EXPECT_EQ(Form().eTitle->Text(), "Open a drawing");
                           EXPECT_EQ(Form().rg1->ItemIndex(), dpOwnerCenter);
                           EXPECT_TRUE(Form().chkFit->Checked());
                           EXPECT_TRUE(Form().CheckBox1->Checked());
                           EXPECT_EQ(Form().Params(), &Params);
                           EXPECT_EQ(Form().OrdVal, 0);
                           for (TComboBox* side : {Form().cbLeft, Form().cbTop, Form().cbRight, Form().cbBottom}) {
                               EXPECT_TRUE(side->Enabled());
                               EXPECT_THAT(TextsOf(*side), ElementsAre("Second", "Third"))
                                   << "all forms but the dialog's own";
                           }
                           EXPECT_THAT(TextsOf(*Form().cbForm), ElementsAre("Form1", "Second", "Third"));
                           Screenshot("dialog-designer-forms", Form().Handle());
                           Form().PageControl1->SetActivePage(Form().TabSheet2);
                           Form().Update();
                           Screenshot("dialog-designer-position", Form().Handle());
                           Form().PageControl1->SetActivePage(Form().TabSheet3);
                           Form().Update();
                           Screenshot("dialog-designer-preview", Form().Handle());
                       }),
               PressCancel()});
}

TEST_F(DialogDesigner, HasTheseTexts) {
    Customize(
        {Perform(
             "look",
             [&] {
                 TDlgDsgnForm& form = Form();
                 EXPECT_EQ(form.Caption(), "Dialog Designer");
                 EXPECT_EQ(form.BorderStyle(), bsDialog);
                 EXPECT_EQ(form.Position(), poScreenCenter);
                 EXPECT_EQ(form.TabSheet1->Caption(), "Forms");
                 EXPECT_EQ(form.TabSheet2->Caption(), "Position");
                 EXPECT_EQ(form.TabSheet3->Caption(), "Preview");
                 EXPECT_EQ(form.Label8->Caption(), "Enter dialog caption below:");
                 EXPECT_EQ(form.eTitle->Hint(), "Enter dialog title here");
                 EXPECT_EQ(form.eTitle->Color(), clNavy);
                 EXPECT_EQ(form.Label1->Caption(), "Top form");
                 EXPECT_EQ(form.Label6->Caption(), "Left form");
                 EXPECT_EQ(form.Label9->Caption(), "Right form");
                 EXPECT_EQ(form.Label2->Caption(), "Bottom form");
                 EXPECT_EQ(form.SpeedButton7->Hint(), "Edit top form");
                 EXPECT_EQ(form.SpeedButton6->Hint(), "Edit left form");
                 EXPECT_EQ(form.SpeedButton8->Hint(), "Edit right form");
                 EXPECT_EQ(form.SpeedButton9->Hint(), "Edit bottom form");
                 for (const TSpeedButton* button :
                      {form.SpeedButton6, form.SpeedButton7, form.SpeedButton8, form.SpeedButton9}) {
                     EXPECT_TRUE(button->Flat());
                 }
                 EXPECT_EQ(form.Label3->Caption(), "Original dialog rect");
                 EXPECT_EQ(form.Panel5->Color(), clInfoBk);
                 EXPECT_EQ(form.rg1->Caption(), "Dialog position");
                 EXPECT_EQ(form.rg1->Items().CommaText(), "Default,\"Screen Center\",\"MainForm Center\",\"Owner "
                                                          "Center\",\"Form Center\"");
                 EXPECT_EQ(form.Label4->Caption(), "Relative to:");
                 EXPECT_EQ(form.cbForm->Hint(), "Your  dialog will be centered relative to form selected here");
                 EXPECT_EQ(form.Label5->Caption(), "X shift:");
                 EXPECT_EQ(form.Label7->Caption(), "Y shift:");
                 EXPECT_EQ(form.chkFit->Caption(), "Fit to screen");
                 EXPECT_EQ(form.Button3->Caption(), "Press here to preview your dialog");
                 EXPECT_EQ(form.CheckBox1->Caption(), "Change custom forms' sizes if required");
                 EXPECT_TRUE(form.Memo1->ReadOnly());
                 TStringList note;
                 note.SetText(form.Memo1->Text());
                 ASSERT_EQ(note.Count(), 9);
                 EXPECT_EQ(note[0], "Please, keep in mind that you are still developing your dialog:");
                 EXPECT_EQ(note[1], "- message handlers do not work;");
                 EXPECT_EQ(note[2], "- dialog is displayed in the screen center if Position property is dpFormCenter.");
                 EXPECT_EQ(note[3], "- preview does not work with modeless Find/Replace dialogs.");
                 EXPECT_EQ(note[4], "");
                 EXPECT_EQ(note[5], "If \"Change custom forms sizes if required\" flag is checked then after this    ");
                 EXPECT_EQ(note[6], "preview forms you are using to extend your dialog will have that");
                 EXPECT_EQ(note[7], "width (for Top and Bottom forms) and height (for Left and Right forms) which ");
                 EXPECT_EQ(note[8], "are required to align with other parts of this dialog window.");
                 EXPECT_EQ(form.Button1->Caption(), "Cancel");
                 EXPECT_TRUE(form.Button1->Cancel());
                 EXPECT_EQ(form.Button1->ModalResult(), mrCancel);
                 EXPECT_EQ(form.Button2->Caption(), "OK");
                 EXPECT_TRUE(form.Button2->Default());
                 EXPECT_EQ(form.Button2->ModalResult(), mrOk);
             }),
         Perform("about", [] { Form().SpeedButton5->Click(); }),
         AnswerBox(IDOK, [](const std::string& text) { EXPECT_THAT(text, HasSubstr("Dialog Designer")); }),
         PressCancel()});
}

TEST_F(DialogDesigner, AFreshOneStandsAtTheDefault) {
    const std::unique_ptr<TDlgDsgnForm, TFreeDeleter> form(NewForm<TDlgDsgnForm>(nullptr));
    EXPECT_EQ(form->rg1->ItemIndex(), dpDefault);
    EXPECT_FALSE(form->cbForm->Enabled());
    EXPECT_EQ(form->PageControl1->ActivePage(), form->TabSheet1);
    EXPECT_EQ(form->Params(), nullptr);
}

TEST_F(DialogDesigner, OkStoresWhatWasEntered) {
    EXPECT_TRUE(Customize({Perform("enter",
                                   [&] {
                                       Form().cbTop->SetText("T");
                                       Form().cbBottom->SetText("B");
                                       Form().cbLeft->SetText("");
                                       Form().cbRight->SetText("Third");
                                       Form().cbForm->SetText("Second");
                                       Form().eX->SetText("-12");
                                       Form().eY->SetText("34");
                                       Form().eTitle->SetText("Choose");
                                       Form().chkFit->SetChecked(true);
                                       Choose(dpMainFormCenter);
                                   }),
                           PressOk()}));
    EXPECT_EQ(Params.TopFormName(), "T");
    EXPECT_EQ(Params.BottomFormName(), "B");
    EXPECT_EQ(Params.LeftFormName(), "");
    EXPECT_EQ(Params.RightFormName(), "Third");
    EXPECT_EQ(Params.PosParams().FormName(), "Second");
    EXPECT_EQ(Params.Position(), dpMainFormCenter);
    EXPECT_EQ(Params.PosParams().ShiftX(), -12);
    EXPECT_EQ(Params.PosParams().ShiftY(), 34);
    EXPECT_TRUE(Params.PosParams().FitToScreen());
    EXPECT_EQ(Dialog->Title(), "Choose");
    EXPECT_EQ(Find<TDlgDsgnForm>(), nullptr) << "the form is freed";
}

TEST_F(DialogDesigner, CancelAndCloseStoreNothing) {
    for (const bool byButton : {true, false}) {
        EXPECT_FALSE(Customize({Perform("enter",
                                        [&] {
                                            Form().cbLeft->SetText("Third");
                                            Form().eX->SetText("9");
                                            Form().eTitle->SetText("Choose");
                                            Choose(dpScrCenter);
                                        }),
                                byButton ? PressCancel() : Perform("Esc", [] { PressKey(VK_ESCAPE); })}));
        EXPECT_EQ(Params.LeftFormName(), "Second");
        EXPECT_EQ(Params.PosParams().ShiftX(), 3);
        EXPECT_EQ(Params.Position(), dpDefault);
        EXPECT_EQ(Dialog->Title(), "");
        EXPECT_EQ(Find<TDlgDsgnForm>(), nullptr);
    }
}

TEST_F(DialogDesigner, EmptyShiftsAreZero) {
    EXPECT_TRUE(Customize({Perform("clear",
                                   [] {
                                       Form().eX->SetText("");
                                       Form().eY->SetText("");
                                   }),
                           PressOk()}));
    EXPECT_EQ(Params.PosParams().ShiftX(), 0);
    EXPECT_EQ(Params.PosParams().ShiftY(), 0);
}

TEST_F(DialogDesigner, AbcAsXShowsAMessageAndStoresEverythingElse) {
    EXPECT_TRUE(Customize({Perform("enter",
                                   [&] {
                                       Form().eX->SetText("abc");
                                       Form().eY->SetText("77");
                                       Form().cbForm->SetText("Third");
                                       Form().eTitle->SetText("Choose");
                                       Form().chkFit->SetChecked(true);
                                       Choose(dpFormCenter);
                                   }),
                           PressOk(),
                           AnswerBox(IDOK, [](const std::string& text) { EXPECT_EQ(text, "Cound not set ShiftX"); })}));
    EXPECT_EQ(Params.PosParams().ShiftX(), 3) << "the old value";
    EXPECT_EQ(Params.PosParams().ShiftY(), 77);
    EXPECT_EQ(Params.PosParams().FormName(), "Third");
    EXPECT_EQ(Params.Position(), dpFormCenter);
    EXPECT_TRUE(Params.PosParams().FitToScreen());
    EXPECT_EQ(Dialog->Title(), "Choose");
}

TEST_F(DialogDesigner, EachBadShiftIsToldByItself) {
    EXPECT_TRUE(
        Customize({Perform("enter",
                           [&] {
                               Form().eX->SetText("2147483648");
                               Form().eY->SetText("1.5");
                           }),
                   PressOk(), AnswerBox(IDOK, [](const std::string& text) { EXPECT_EQ(text, "Cound not set ShiftX"); }),
                   AnswerBox(IDOK, [](const std::string& text) { EXPECT_EQ(text, "Cound not set ShiftY"); })}));
    EXPECT_EQ(Params.PosParams().ShiftX(), 3);
    EXPECT_EQ(Params.PosParams().ShiftY(), -4);
    EXPECT_EQ(KxTextToShift("-2147483648"), INT_MIN);
    EXPECT_EQ(KxTextToShift("2147483647"), INT_MAX);
    EXPECT_THROW(KxTextToShift("-2147483649"), EConvertError);
}

TEST_F(DialogDesigner, SidesThatTheDialogDoesNotHaveAreNotSupported) {
    auto* const color = Add<TKxColorDialog>();
    EXPECT_TRUE(Customize(*color, {Perform("look",
                                           [&] {
                                               for (TComboBox* side : {Form().cbLeft, Form().cbTop, Form().cbRight}) {
                                                   EXPECT_EQ(side->Text(), "Not supported");
                                                   EXPECT_FALSE(side->Enabled());
                                               }
                                               EXPECT_TRUE(Form().cbBottom->Enabled());
                                               Form().cbBottom->SetText("Second");
                                           }),
                                   PressOk()}));
    EXPECT_EQ(color->CustDlgParams().LeftFormName(), "");
    EXPECT_EQ(color->CustDlgParams().TopFormName(), "");
    EXPECT_EQ(color->CustDlgParams().RightFormName(), "");
    EXPECT_EQ(color->CustDlgParams().BottomFormName(), "Second");
}

TEST_F(DialogDesigner, FormCenterShowsThePictureOfScreenCenterAndEnablesTheForm) {
    const auto expect = [](TImage* picture, bool enabled) {
        EXPECT_EQ(TopPicture(), picture);
        EXPECT_EQ(Form().cbForm->Enabled(), enabled);
    };
    Params.PosParams().SetFormName("Third");
    Customize({Perform("choose",
                       [&] {
                           expect(Form().img1, false);
                           Choose(dpScrCenter);
                           expect(Form().img2, false);
                           Choose(dpMainFormCenter);
                           expect(Form().img3, false);
                           Choose(dpOwnerCenter);
                           expect(Form().img4, false);
                           Choose(dpFormCenter);
                           expect(Form().img2, true);
                           EXPECT_FALSE(Form().cbForm->DroppedDown()) << "a form is chosen already";
                           Choose(dpDefault);
                           expect(Form().img1, false);
                       }),
               PressCancel()});
}

TEST_F(DialogDesigner, FormCenterWithoutAFormDropsTheListDownOnItsPage) {
    Customize({Perform("choose",
                       [] {
                           Choose(dpOwnerCenter);
                           EXPECT_FALSE(Form().cbForm->DroppedDown());
                           Form().PageControl1->SetActivePage(Form().TabSheet1);
                           Form().rg1->SetItemIndex(dpFormCenter);
                           EXPECT_FALSE(Form().cbForm->DroppedDown()) << "its page does not show";
                           Choose(dpDefault);
                           Choose(dpFormCenter);
                           EXPECT_TRUE(Form().cbForm->DroppedDown());
                           Form().cbForm->SetDroppedDown(false);
                       }),
               PressCancel()});
}

TEST_F(DialogDesigner, AFormsButtonGoesToTheFormAndStoresNothing) {
    Host.AddModule("Twice", mdForm, 2);
    Host.AddModule("Twice", mdForm, 1);
    for (const auto& [combo, button] : {std::pair{&TDlgDsgnForm::cbLeft, &TDlgDsgnForm::SpeedButton6},
                                        {&TDlgDsgnForm::cbTop, &TDlgDsgnForm::SpeedButton7},
                                        {&TDlgDsgnForm::cbRight, &TDlgDsgnForm::SpeedButton8},
                                        {&TDlgDsgnForm::cbBottom, &TDlgDsgnForm::SpeedButton9}}) {
        Host.Log.clear();
        EXPECT_FALSE(Customize({Perform("open", [&, combo = combo, button = button] {
            for (TComboBox* side : {Form().cbLeft, Form().cbTop, Form().cbRight, Form().cbBottom}) {
                side->SetText("Third");
            }
            (Form().*combo)->SetText("twice");
            Form().eTitle->SetText("Choose");
            (Form().*button)->Click();
        })}));
        EXPECT_THAT(Host.Log, ElementsAre("open Twice", "show Twice 0", "show Twice 1")) << "the first of that name";
        EXPECT_EQ(Dialog->Title(), "");
        EXPECT_EQ(Params.LeftFormName(), "Second");
    }
}

TEST_F(DialogDesigner, AFormsButtonDoesNothingWithoutSuchAForm) {
    Host.AddModule("");
    EXPECT_TRUE(Customize({Perform("open",
                                   [&] {
                                       Form().cbTop->SetText("");
                                       Form().SpeedButton7->Click();
                                       Form().cbTop->SetText("Nobody");
                                       Form().SpeedButton7->Click();
                                       Host.HasProject = false;
                                       Form().cbTop->SetText("Second");
                                       Form().SpeedButton7->Click();
                                       EXPECT_EQ(Form().ModalResult(), mrNone);
                                   }),
                           PressOk()}));
    EXPECT_THAT(Host.Log, IsEmpty());
}

TEST_F(DialogDesigner, ClosesWhenItsDialogIsDeleted) {
    ExecuteVerb(*Add<TKxColorDialog>(), 2); // no such verb
    const auto editor = GetComponentEditor(*Dialog, Designer);
    RunDialog(
        [&] {
            editor->ExecuteVerb(0);
            return true;
        },
        {Await("the designer", IsOpen<TDlgDsgnForm>()), Perform("delete", [&] {
             TDlgDsgnForm& form = Form();
             Dialog->Free();
             EXPECT_EQ(form.Params(), nullptr);
             form.Button3->Click(); // there is nothing to preview
         })});
    EXPECT_EQ(Designer.ModifiedCount, 0);
}

// --- The ways to the designer

TEST_F(DialogDesigner, CancellingTheDesignerChangesNothingButTellsOfThePlaces) {
    const auto cancel = [&](TComponent& dialog) {
        RunDialog(
            [&] {
                ExecuteVerb(dialog, 0);
                return true;
            },
            {Await("the designer", IsOpen<TDlgDsgnForm>()), PressCancel()});
    };
    cancel(*Dialog);
    EXPECT_EQ(Designer.ModifiedCount, 1) << "of the places";
    cancel(*Add<TKxColorDialog>());
    EXPECT_EQ(Designer.ModifiedCount, 1) << "a dialog without places";
}

TEST_F(DialogDesigner, ConfirmingItTellsTheDesigner) {
    const auto confirm = [&](const std::function<void()>& open) {
        Designer.ModifiedCount = 0;
        RunDialog(
            [&] {
                open();
                return true;
            },
            {Await("the designer", IsOpen<TDlgDsgnForm>()), PressOk()});
        return Designer.ModifiedCount;
    };
    auto* const color = Add<TKxColorDialog>();
    EXPECT_EQ(confirm([&] { ExecuteVerb(*Dialog, 0); }), 2);
    EXPECT_EQ(confirm([&] { ExecuteVerb(*color, 0); }), 1);
    EXPECT_EQ(confirm([&] { EditorOf(*Dialog, "CustDlgParams")->Edit(); }), 2);
    EXPECT_EQ(confirm([&] { EditorOf(*color, "CustDlgParams")->Edit(); }), 1);
}

} // namespace
} // namespace kx::test
