// SPDX-License-Identifier: MIT
// The dialog designer when something goes wrong or goes away meanwhile.

#include "DialogDesignerFixture.h"

#include "kx/design/KxDsgnPreviewDummy.h"
#include "tests/support/ErrorOf.h"

#include <memory>

namespace kx::test {
namespace {

class DialogDesignerFailures : public TDialogDesignerTest {
protected:
    /// Answers the message that a shift cannot be set, once the dialog has gone.
    TStep DeleteTheDialogAt(const std::string& message) {
        return AnswerBox(IDOK, [this, message](const std::string& text) {
            EXPECT_EQ(text, message);
            std::exchange(Dialog, nullptr)->Free();
        });
    }
};

TEST_F(DialogDesignerFailures, ItsDialogMayGoWhileABadShiftIsTold) {
    EXPECT_FALSE(Customize({Perform("enter",
                                    [] {
                                        Form().eX->SetText("abc");
                                        Form().eY->SetText("def");
                                    }),
                            PressOk(), DeleteTheDialogAt("Cound not set ShiftX")}))
        << "and nothing more is told";
}

TEST_F(DialogDesignerFailures, ItsDialogMayGoWhileTheSecondBadShiftIsTold) {
    EXPECT_FALSE(Customize(
        {Perform("enter", [] { Form().eY->SetText("def"); }), PressOk(), DeleteTheDialogAt("Cound not set ShiftY")}));
}

TEST_F(DialogDesignerFailures, ItsDialogMayGoDuringAPreview) {
    AddForm("Second");
    EXPECT_FALSE(Customize({Perform("preview", [] { PressButton(Form().Button3->Handle()); }),
                            {"the dialog shows", IsRunning(*Dialog), [&] {
                                 TDlgDsgnForm& form = Form();
                                 std::exchange(Dialog, nullptr)->Free();
                                 EXPECT_EQ(form.Params(), nullptr);
                                 EXPECT_FALSE(form.Visible());
                             }}}));
    EXPECT_EQ(Find<TDlgDsgnForm>(), nullptr);
}

TEST_F(DialogDesignerFailures, ClosesWhenTheFormOfItsDialogIsDeleted) {
    auto other = std::make_unique<TTestDesigner>();
    auto* const dialog = static_cast<TKxOpenDialog*>(other->CreateComponent(TKxOpenDialog::StaticClass(), nullptr, {}));
    EXPECT_FALSE(Customize(*dialog, {Perform("delete", [&] {
        NotifyDesignerClosed(*other, false);
        other.reset();
    })}));
    EXPECT_EQ(Find<TDlgDsgnForm>(), nullptr);
}

TEST_F(DialogDesignerFailures, AFormThatCannotBeOpenedIsToldAndTheDesignerStays) {
    Host.OnLog = [](const std::string&) { throw Exception("line 3: 'end' expected"); };
    EXPECT_TRUE(Customize({Perform("open",
                                   [&] {
                                       Form().cbLeft->SetText("Third");
                                       EXPECT_EQ(ErrorOf<Exception>([] { Form().SpeedButton6->Click(); }),
                                                 "line 3: 'end' expected");
                                       EXPECT_EQ(Form().ModalResult(), mrNone);
                                   }),
                           PressOk()}));
    EXPECT_THAT(Host.Log, ElementsAre("open Third"));
    EXPECT_EQ(Params.LeftFormName(), "Third");
}

TEST_F(DialogDesignerFailures, AFormsButtonOpensItThenClosesThenShows) {
    std::vector<TModalResult> results;
    Host.OnLog = [&](const std::string&) { results.push_back(Form().ModalResult()); };
    EXPECT_FALSE(Customize({Perform("open", [] {
        Form().cbLeft->SetText("Third");
        Form().SpeedButton6->Click();
    })}));
    EXPECT_THAT(results, ElementsAre(mrNone, mrCancel));
}

TEST_F(DialogDesignerFailures, WithoutAChosenPositionItIsTheDefault) {
    AddForm("Second");
    Params.SetPosition(dpOwnerCenter);
    EXPECT_TRUE(Customize({Perform("preview",
                                   [] {
                                       Form().rg1->SetItemIndex(-1);
                                       PressButton(Form().Button3->Handle());
                                   }),
                           {"the dialog shows", IsRunning(*Dialog),
                            [&] {
                                EXPECT_EQ(Params.Position(), dpDefault);
                                PressButton(ItemOf(*Dialog, IDCANCEL));
                            }},
                           {"the designer is back", IsOpen<TDlgDsgnForm>(), [&] {
                                EXPECT_EQ(Params.Position(), dpOwnerCenter);
                                Click(Form().Button2->Handle());
                            }}}));
    EXPECT_EQ(Params.Position(), dpDefault);
}

TEST_F(DialogDesignerFailures, AVerbThatDoesNotExistDoesNothing) {
    ExecuteVerb(*Dialog, 2);
    ExecuteVerb(*Dialog, -1);
    EXPECT_EQ(KxPreviewDummyFrm, nullptr);
    EXPECT_EQ(Find<TDlgDsgnForm>(), nullptr);
    EXPECT_EQ(Designer.ModifiedCount, 0);
}

} // namespace
} // namespace kx::test
