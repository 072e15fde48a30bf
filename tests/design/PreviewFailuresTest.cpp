// SPDX-License-Identifier: MIT
// Previews that fail, and what they leave behind.

#include "PreviewFixture.h"

#include "kx/colorprint/KxColorDlg.h"
#include "kx/design/KxDsgnPreviewDummy.h"
#include "kx/opensave/KxSaveDlg.h"
#include "tests/support/ErrorOf.h"

namespace kx::test {
namespace {

/// A dialog that the system does not show.
class TFailingDialog : public TKxColorDialog {
    KX_CLASS()
    using TKxColorDialog::TKxColorDialog;
    bool Execute() override {
        const TForm* const form = CustDlgParams().BottomForm();
        Seen = form ? form->Color() : clNone;
        throw Exception("no dialog today");
    }
    TColor Seen = clNone; ///< Of the form that was docked at the bottom.
};
const TClass& TFailingDialog::StaticClass() {
    static const TClassBuilder<TFailingDialog> cls("TFailingDialog", TKxColorDialog::StaticClass(),
                                                   [](auto& c) { c.Creatable(); });
    return cls.Class();
}

/// A component whose value can be designed, but not read back.
class TFragile : public TComponent {
    KX_CLASS()
    using TComponent::TComponent;
    const std::string& Text() const { return FText; }
    void SetText(const std::string& value) {
        if (!IsDesigning()) {
            throw Exception("broken");
        }
        FText = value;
    }

private:
    std::string FText;
};
const TClass& TFragile::StaticClass() {
    static const TClassBuilder<TFragile> cls("TFragile", TComponent::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("Text", &TFragile::Text, &TFragile::SetText);
    });
    return cls.Class();
}

class PreviewFailures : public TPreviewTest {
protected:
    static TToolBar& AddBar(TForm& owner, const std::string& name) {
        auto* const bar = new TToolBar(&owner);
        bar->SetName(name);
        bar->SetParent(&owner);
        return *bar;
    }
};

TEST_F(PreviewFailures, ADialogThatFailsIsAsBeforeAndItsErrorComesOut) {
    const TForm& side = AddForm("SideForm", 90, 60, clGreen);
    auto* const dialog = Add<TFailingDialog>();
    dialog->CustDlgParams().SetBottomPanel("SideForm");
    dialog->SetColor(clRed);
    EXPECT_EQ(ErrorOf<Exception>([&] { KxPreviewDialog(*dialog, {}, {}, {}, {}, true); }), "no dialog today");
    EXPECT_EQ(dialog->Seen, clGreen);
    EXPECT_EQ(dialog->CustDlgParams().BottomForm(), nullptr);
    EXPECT_EQ(dialog->CustDlgParams().BottomFormName(), "SideForm");
    EXPECT_FALSE(FileExists(TempFile("SideForm")));
    EXPECT_EQ(side.Height(), 60);
}

TEST_F(PreviewFailures, TheWindowGoesWithAPreviewThatFails) {
    ExecuteVerb(*Add<TFailingDialog>(), 1);
    PressButton(KxPreviewDummyFrm->Button1->Handle());
    EXPECT_THAT(TakeExceptions(), ElementsAre("no dialog today"));
    EXPECT_TRUE(PumpUntil([] { return KxPreviewDummyFrm == nullptr; }));
}

TEST_F(PreviewFailures, AFormWhoseComponentRefusesItsValueIsTold) {
    RegisterClasses<TFragile>();
    TForm& broken = AddForm("Broken");
    auto* const fragile = new TFragile(&broken);
    fragile->SetName("Fragile1");
    fragile->SetDesigning(true);
    fragile->SetText("handle with care");
    Params.SetTopFormName("Broken");
    Run([&] { KxPreviewDialog(*Dialog, {}, {}, {}, {}, true); },
        {CannotOpen(), InDialog(*Dialog, [&] { EXPECT_EQ(Params.TopForm(), nullptr); }), Cancel(*Dialog)});
    EXPECT_EQ(Params.TopFormName(), "Broken");
    EXPECT_FALSE(FileExists(TempFile("Broken")));
}

TEST_F(PreviewFailures, ASideThatIsAskedForAsNotSupportedIsNotLoaded) {
    AddForm("SideForm");
    Params.SetRightFormName("SideForm");
    Run([&] { KxPreviewDialog(*Dialog, "Not supported", {}, {}, {}, true); },
        {InDialog(*Dialog, [&] { EXPECT_EQ(Params.LeftForm(), nullptr); }), Cancel(*Dialog)});
    EXPECT_EQ(Params.LeftFormName(), "");
}

TEST_F(PreviewFailures, OneFormMayDockAtSeveralSides) {
    const TForm& side = AddForm("SideForm", 90, 60);
    Run([&] { KxPreviewDialog(*Dialog, "SideForm", "SideForm", {}, {}, true); },
        {InDialog(*Dialog,
                  [&] {
                      ASSERT_NE(Params.LeftForm(), nullptr);
                      ASSERT_NE(Params.TopForm(), nullptr);
                      EXPECT_NE(Params.LeftForm(), Params.TopForm());
                  }),
         Cancel(*Dialog)});
    EXPECT_GT(side.Height(), 60) << "as the left form";
    EXPECT_GT(side.Width(), 90) << "as the top form";
    EXPECT_FALSE(FileExists(TempFile("SideForm")));
}

// --- The tool bar that a dialog borrows

TEST_F(PreviewFailures, ASaveDialogBorrowsItsToolBarToo) {
    auto* const save = Add<TKxSaveDialog>();
    TForm& owner = AddForm("BarForm");
    AddBar(owner, "Other");
    TToolBar& bar = AddBar(owner, "ToolBar1");
    save->ToolBar().SetCustomBar(&bar);
    save->CustDlgParams().SetLeftFormName("BarForm");
    Show(*save, [&] {
        const TToolBar* const borrowed = save->ToolBar().CustomBar();
        ASSERT_NE(borrowed, nullptr);
        EXPECT_NE(borrowed, &bar);
        EXPECT_EQ(borrowed->Name(), "ToolBar1");
        EXPECT_NE(borrowed->Owner(), save->CustDlgParams().LeftForm()) << "the tool bar has a copy of its own";
    });
    EXPECT_EQ(save->ToolBar().CustomBar(), &bar);
    EXPECT_FALSE(FileExists(TempFile("BarForm")));
}

TEST_F(PreviewFailures, AToolBarOfAFormThatIsNotOpenIsToldAndLeftAlone) {
    const TFormPtr running = MakeForm(clRed, 80, 40);
    running->SetName("Running");
    TToolBar& bar = AddBar(*running, "ToolBar1");
    Dialog->ToolBar().SetCustomBar(&bar);
    Run([&] { KxPreviewDialog(*Dialog, {}, {}, {}, {}, false); },
        {CannotOpen(), InDialog(*Dialog, [&] { EXPECT_EQ(Dialog->ToolBar().CustomBar(), &bar); }), Cancel(*Dialog)});
    EXPECT_EQ(Dialog->ToolBar().CustomBar(), &bar);
}

TEST_F(PreviewFailures, AToolBarThatIsFreedMeanwhileIsForgotten) {
    TForm& owner = AddForm("BarForm");
    TToolBar* bar = &AddBar(owner, "ToolBar1");
    Dialog->ToolBar().SetCustomBar(bar);
    Show(*Dialog, [&] { std::exchange(bar, nullptr)->Free(); });
    EXPECT_EQ(Dialog->ToolBar().CustomBar(), nullptr);
}

TEST_F(PreviewFailures, ADialogThatIsFreedMeanwhileTakesItsToolBarWithIt) {
    TForm& owner = AddForm("BarForm");
    const TToolBar& bar = AddBar(owner, "ToolBar1");
    const TAlive alive(bar);
    Dialog->ToolBar().SetCustomBar(&AddBar(owner, "ToolBar2"));
    Run([&] { KxPreviewDialog(*Dialog, {}, {}, {}, {}, false); },
        {InDialog(*Dialog, [&] { std::exchange(Dialog, nullptr)->Free(); })});
    EXPECT_TRUE(alive);
    EXPECT_FALSE(FileExists(TempFile("BarForm")));
}

// --- The dialog's values

TEST_F(PreviewFailures, TextsListsAndNumbersComeBackWhateverHandlersDo) {
    auto* const color = Add<TKxColorDialog>();
    color->CustomColors().SetText("ColorA=112233\n");
    color->SetTitle("Designed");
    color->CustDlgParams().PosParams().SetShiftX(4);
    Show(*color, [&] {
        color->CustomColors().SetText("ColorA=445566\nColorB=1\n");
        color->SetTitle("Changed");
        color->CustDlgParams().PosParams().SetShiftX(5);
        color->CustDlgParams().SetPosition(dpScrCenter);
    });
    ASSERT_EQ(color->CustomColors().Count(), 1);
    EXPECT_EQ(color->CustomColors()[0], "ColorA=112233");
    EXPECT_EQ(color->Title(), "Designed");
    EXPECT_EQ(color->CustDlgParams().PosParams().ShiftX(), 4);
    EXPECT_EQ(color->CustDlgParams().Position(), dpDefault);
}

} // namespace
} // namespace kx::test
