// SPDX-License-Identifier: MIT
// Copies of designed forms, and dialogs that are shown with them before the program is compiled.

#include "PreviewFixture.h"

#include "kx/colorprint/KxColorDlg.h"
#include "kx/colorprint/KxPrintDlg.h"
#include "kx/design/KxDsgnPreviewDummy.h"
#include "kx/folder/KxFolderDlg.h"
#include "kx/opensave/KxOpenDlgEx.h"
#include "kx/opensave/KxOpenLite.h"
#include "kx/opensave/KxSaveDlg.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/Printers.h"

#include <tuple>

namespace kx::test {
namespace {

class Preview : public TPreviewTest {};

// --- Copies of forms

TEST_F(Preview, AFormUnderConstructionIsOneInADesigner) {
    TForm& designed = AddForm("SideForm");
    const TFormPtr running = MakeForm(clRed, 10, 10);
    running->SetName("Running");
    EXPECT_EQ(GetFormUnderConstruction("sideform"), &designed);
    EXPECT_EQ(GetFormUnderConstruction("Running"), nullptr);
    EXPECT_EQ(GetFormUnderConstruction("Nobody"), nullptr);
    EXPECT_EQ(GetFormUnderConstruction("Form1"), &Designer.Form());
}

TEST_F(Preview, ACopyHasAllButTheHandlers) {
    TForm& designed = AddForm("SideForm", 130, 70, clGreen);
    auto* const button = new TButton(&designed);
    button->SetName("Button1");
    button->SetCaption("Press");
    button->SetParent(&designed);
    SetEventOf(*button, "OnClick", "Button1Click");
    SetEventOf(designed, "OnShow", "FormShow");
    std::string file;
    std::unique_ptr<TForm> copy;
    Run([&] { copy = CreatePreviewForm("SideForm", file); }, {});
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy.get(), &designed);
    EXPECT_EQ(copy->ClassName(), "TForm");
    EXPECT_FALSE(copy->IsDesigning());
    EXPECT_EQ(copy->Color(), clGreen);
    EXPECT_EQ(copy->ClientWidth(), designed.ClientWidth());
    auto* const copied = dynamic_cast<TButton*>(copy->FindComponent("Button1"));
    ASSERT_NE(copied, nullptr);
    EXPECT_EQ(copied->Caption(), "Press");
    EXPECT_EQ(GetPropInfo(*copied, "OnClick").GetEvent(*copied), nullptr);
    EXPECT_EQ(GetPropInfo(*copy, "OnShow").GetEvent(*copy), nullptr);
    EXPECT_EQ(file, TempFile("SideForm"));
    TFormPtr again(NewForm<TForm>(nullptr));
    {
        TKxDfmFileStream reading(file, fmOpenRead | fmShareDenyNone);
        ReadFormForPreview(file, again.get()); // others may read it meanwhile
    }
    EXPECT_EQ(again->Color(), clGreen);
    EXPECT_TRUE(DeleteFileA(file.c_str()));
}

TEST_F(Preview, AFileWithoutItsHeaderIsRefused) {
    const TFormPtr form = MakeForm(clRed, 10, 10);
    const std::string file = Folder.AddFile("form.dfm", "object Form1: TForm\nend\n");
    EXPECT_THROW(ReadFormForPreview(file, form.get()), EInvalidImage);
    EXPECT_THROW(ReadFormForPreview(Folder.Path("missing.dfm"), form.get()), Exception);
    {
        const TFileStream writing(file, fmOpenReadWrite | fmShareDenyNone);
        EXPECT_THROW(ReadFormForPreview(file, form.get()), EFOpenError) << "somebody is writing it";
    }
}

TEST_F(Preview, AFormThatIsNotOpenIsTold) {
    std::string file;
    Run([&] { EXPECT_EQ(CreatePreviewForm("Nobody", file), nullptr); }, {CannotOpen()});
    EXPECT_EQ(file, "");
}

TEST_F(Preview, AFormThatCannotBeWrittenIsTold) {
    AddForm("SideForm");
    ASSERT_TRUE(CreateDirectoryA(TempFile("SideForm").c_str(), nullptr));
    std::string file;
    Run([&] { EXPECT_EQ(CreatePreviewForm("SideForm", file), nullptr); }, {CannotOpen()});
    RemoveDirectoryA(TempFile("SideForm").c_str());
}

/// A component that no form file can name.
class TNameless : public TComponent {
    KX_CLASS()
    using TComponent::TComponent;
};
const TClass& TNameless::StaticClass() {
    static const TClassBuilder<TNameless> cls("TNameless", TComponent::StaticClass());
    return cls.Class();
}

TEST_F(Preview, GoesOnWithoutAFormThatCannotBeRead) {
    TForm& broken = AddForm("Broken");
    (new TNameless(&broken))->SetName("Nameless1");
    AddForm("SideForm");
    Params.SetLeftFormName("Broken");
    Params.SetRightFormName("SideForm");
    Run([&] { KxPreviewDialog(*Dialog, {}, {}, {}, {}, true); }, {CannotOpen(),
                                                                  InDialog(*Dialog,
                                                                           [&] {
                                                                               EXPECT_EQ(Params.LeftForm(), nullptr);
                                                                               EXPECT_NE(Params.RightForm(), nullptr);
                                                                           }),
                                                                  Cancel(*Dialog)});
    EXPECT_EQ(Params.LeftFormName(), "Broken");
    EXPECT_EQ(broken.Height(), 60);
    EXPECT_EQ(GetFileAttributesA(TempFile("Broken").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetFileAttributesA(TempFile("SideForm").c_str()), INVALID_FILE_ATTRIBUTES);
}

// --- Any dialog

TEST_F(Preview, ReachesTheParametersAndTitleOfAnyDialog) {
    for (const TClass* cls :
         {&TKxOpenDialog::StaticClass(), &TKxSaveDialog::StaticClass(), &TKxOpenLiteDialog::StaticClass(),
          &TKxSaveLiteDialog::StaticClass(), &TKxPrintDialog::StaticClass(), &TKxFolderDialog::StaticClass(),
          &TKxColorDialog::StaticClass(), &TKxOpenDialogEx::StaticClass()}) {
        TComponent& dialog = *Add(*cls);
        EXPECT_EQ(&KxGetDlgParams(dialog), &dynamic_cast<ICommonDialog&>(dialog).GetCustDlgParams()) << cls->Name();
        KxSetDlgTitle(dialog, "Title of " + cls->Name());
        EXPECT_EQ(KxGetDlgTitle(dialog), "Title of " + cls->Name());
    }
    EXPECT_THROW(KxGetDlgParams(Designer.Form()), EPropertyError);
    EXPECT_THROW(KxGetDlgTitle(Designer.Form()), EPropertyError);
}

TEST_F(Preview, TheProjectsFormsAreThoseWithANameButTheExcludedOne) {
    Host.AddModule("Second");
    Host.AddModule("Text", mdOther);
    Host.AddModule("");
    TStringList list;
    list.Add("before");
    GetProjectForms(GetActiveProject(), list, nullptr);
    EXPECT_EQ(list.CommaText(), "before,Form1,Second");
    TComponent excluded(nullptr);
    excluded.SetName("SECOND");
    list.Clear();
    GetProjectForms(GetCurrentProject(), list, &excluded);
    EXPECT_EQ(list.CommaText(), "Form1");
    GetProjectForms(nullptr, list, nullptr);
    EXPECT_EQ(list.Count(), 1);
}

struct TDialogCase {
    const char* Name;
    const TClass& (*Class)();
};

class PreviewOf : public Preview, public testing::WithParamInterface<std::tuple<TDialogCase, bool>> {};

/// The sides of a dialog, in the order in which the previewed copies are made.
struct TSideCase {
    const char* FormName;
    bool (TKxCustDlgParams::*CanDock)() const;
    TForm* (TKxCustDlgParams::*Form)() const;
    void (TKxCustDlgParams::*SetName)(const std::string&);
    const std::string& (TKxCustDlgParams::*Name)() const;
};
using P = TKxCustDlgParams;
constexpr TSideCase SideCases[] = {
    {"LeftSide", &P::CanLeft, &P::LeftForm, &P::SetLeftPanel, &P::LeftFormName},
    {"TopSide", &P::CanTop, &P::TopForm, &P::SetTopPanel, &P::TopFormName},
    {"RightSide", &P::CanRight, &P::RightForm, &P::SetRightPanel, &P::RightFormName},
    {"BottomSide", &P::CanBottom, &P::BottomForm, &P::SetBottomPanel, &P::BottomFormName},
};

int IndexOnScreen(const TForm& form) {
    int index = Screen().FormCount() - 1;
    while (index >= 0 && Screen().Forms(index) != &form) {
        --index;
    }
    return index;
}

TEST_P(PreviewOf, DocksACopyOfEachForm) {
    const TDialogCase& dialogCase = std::get<0>(GetParam());
    const bool resize = std::get<1>(GetParam());
    if (&dialogCase.Class() == &TKxPrintDialog::StaticClass()) {
        ASSERT_FALSE(InstalledPrinters().empty()) << NoPrinters;
    }
    TComponent& dialog = *Add(dialogCase.Class());
    TKxCustDlgParams& params = ParamsOf(dialog);
    params.PosParams().SetFitToScreen(true);
    std::vector<const TSideCase*> sides;
    for (const TSideCase& side : SideCases) {
        if ((params.*side.CanDock)()) {
            sides.push_back(&side);
            AddForm(side.FormName, 90, 70);
            (params.*side.SetName)(side.FormName);
        }
    }
    ASSERT_FALSE(sides.empty());
    std::vector<TRect> docked; // of the copies
    Show(
        dialog,
        [&] {
            int last = -1; // of the copies among the screen's forms: those that were made first come first
            for (const TSideCase* side : sides) {
                TForm* const copy = (params.*side->Form)();
                ASSERT_NE(copy, nullptr) << side->FormName;
                EXPECT_GT(IndexOnScreen(*copy), last) << side->FormName;
                last = IndexOnScreen(*copy);
                EXPECT_NE(copy, GetFormUnderConstruction(side->FormName));
                EXPECT_EQ(GetParent(copy->Handle()), AsCommon(dialog).DialogWindow());
                EXPECT_TRUE(IsWindowVisible(copy->Handle()));
                EXPECT_TRUE(FileExists(TempFile(side->FormName)));
                docked.push_back(copy->BoundsRect());
            }
            Screenshot(std::string("preview-") + dialogCase.Name, AsCommon(dialog).DialogWindow());
        },
        resize);
    ASSERT_EQ(docked.size(), sides.size());
    for (size_t i = 0; i < sides.size(); ++i) {
        const TForm& form = *GetFormUnderConstruction(sides[i]->FormName);
        const bool upright = i % 2 == 0 && sides.size() > 1; // left and right
        const int height = kx::Height(docked[i]) + GetSystemMetrics(SM_CYCAPTION) + 2 * GetSystemMetrics(SM_CYFRAME);
        EXPECT_EQ(form.Height(), resize && upright ? height : 70) << sides[i]->FormName;
        EXPECT_EQ(form.Width(), resize && !upright ? kx::Width(docked[i]) : 90) << sides[i]->FormName;
        EXPECT_EQ((params.*sides[i]->Form)(), nullptr);
        EXPECT_EQ((params.*sides[i]->Name)(), sides[i]->FormName);
        EXPECT_FALSE(FileExists(TempFile(sides[i]->FormName)));
    }
}

INSTANTIATE_TEST_SUITE_P(Dialogs, PreviewOf,
                         testing::Combine(testing::Values(TDialogCase{"Open", TKxOpenDialog::StaticClass},
                                                          TDialogCase{"Save", TKxSaveDialog::StaticClass},
                                                          TDialogCase{"OpenLite", TKxOpenLiteDialog::StaticClass},
                                                          TDialogCase{"SaveLite", TKxSaveLiteDialog::StaticClass},
                                                          TDialogCase{"OpenEx", TKxOpenDialogEx::StaticClass},
                                                          TDialogCase{"Folder", TKxFolderDialog::StaticClass},
                                                          TDialogCase{"Color", TKxColorDialog::StaticClass},
                                                          TDialogCase{"Print", TKxPrintDialog::StaticClass}),
                                          testing::Bool()),
                         [](const auto& each) {
                             return std::string(std::get<0>(each.param).Name) +
                                    (std::get<1>(each.param) ? "Resizing" : "");
                         });

TEST_F(Preview, GivenNamesComeBeforeThoseOfTheDialog) {
    AddForm("SideForm", 80, 60, clRed);
    AddForm("Other", 80, 60, clBlue);
    Params.SetLeftFormName("SideForm");
    Params.SetBottomFormName("SideForm");
    Run([&] { KxPreviewDialog(*Dialog, "Other", {}, "Other", {}, false); },
        {InDialog(*Dialog,
                  [&] {
                      EXPECT_EQ(Params.LeftForm()->Color(), clBlue);
                      EXPECT_EQ(Params.TopForm(), nullptr);
                      EXPECT_EQ(Params.RightForm()->Color(), clBlue);
                      EXPECT_EQ(Params.BottomForm()->Color(), clRed);
                  }),
         Cancel(*Dialog)});
    EXPECT_EQ(Params.LeftFormName(), "SideForm");
    EXPECT_EQ(Params.RightFormName(), "");
    EXPECT_EQ(Params.BottomFormName(), "SideForm");
}

TEST_F(Preview, ASideWhoseStoredNameIsNotSupportedIsNeverLoaded) {
    Params.SetLeftFormName("Not supported");
    ASSERT_EQ(Params.LeftFormName(), "Not supported");
    Show(*Dialog, [&] { EXPECT_EQ(Params.LeftForm(), nullptr); }); // and no message that it cannot be opened
    EXPECT_EQ(Params.LeftFormName(), "Not supported");
}

TEST_F(Preview, ASideThatTheDialogDoesNotHaveIsNotLoaded) {
    AddForm("SideForm");
    auto* const color = Add<TKxColorDialog>();
    Run([&] { KxPreviewDialog(*color, "SideForm", "SideForm", "Nobody", {}, true); },
        {InDialog(*color, [&] { EXPECT_EQ(ParamsOf(*color).LeftForm(), nullptr); }), Cancel(*color)});
}

/// Dialogs of these names are shown beside the program, and cannot be previewed.
class TKxFindDialog : public TComponent {
    KX_CLASS()
    using TComponent::TComponent;
};
class TKxReplaceDialog : public TComponent {
    KX_CLASS()
    using TComponent::TComponent;
};
const TClass& TKxFindDialog::StaticClass() {
    static const TClassBuilder<TKxFindDialog> cls("TKxFindDialog", TComponent::StaticClass());
    return cls.Class();
}
const TClass& TKxReplaceDialog::StaticClass() {
    static const TClassBuilder<TKxReplaceDialog> cls("TKxReplaceDialog", TComponent::StaticClass());
    return cls.Class();
}

TEST_F(Preview, AFindOrReplaceDialogShowsTheMessageAndRunsNothing) {
    TKxFindDialog find(nullptr);
    TKxReplaceDialog replace(nullptr);
    for (TComponent* dialog : std::initializer_list<TComponent*>{&find, &replace}) {
        Run([&] { KxPreviewDialog(*dialog, {}, {}, {}, {}, false); }, {AnswerBox(IDOK, [](const std::string& text) {
                EXPECT_EQ(text, "Preview mode does not work with Find/Replace dialogs");
            })});
    }
}

// --- The tool bar that a dialog borrows

TEST_F(Preview, TheDialogBorrowsACopyOfItsToolBar) {
    TForm& owner = AddForm("BarForm");
    auto* const bar = new TToolBar(&owner);
    bar->SetName("ToolBar1");
    bar->SetParent(&owner);
    Dialog->ToolBar().SetCustomBar(bar);
    Show(*Dialog, [&] {
        TToolBar* const borrowed = Dialog->ToolBar().CustomBar();
        ASSERT_NE(borrowed, nullptr);
        EXPECT_NE(borrowed, bar);
        EXPECT_EQ(borrowed->Name(), "ToolBar1");
        EXPECT_TRUE(FileExists(TempFile("BarForm")));
    });
    EXPECT_EQ(Dialog->ToolBar().CustomBar(), bar);
    EXPECT_FALSE(FileExists(TempFile("BarForm")));
}

TEST_F(Preview, AToolBarThatCannotBeCopiedIsLeftAlone) {
    TToolBar loose(nullptr);
    Dialog->ToolBar().SetCustomBar(&loose);
    Show(*Dialog, [&] { EXPECT_EQ(Dialog->ToolBar().CustomBar(), &loose); });
    auto* const extended = Add<TKxOpenDialogEx>();
    TForm& owner = AddForm("BarForm");
    auto* const bar = new TToolBar(&owner);
    bar->SetName("ToolBar1");
    bar->SetParent(&owner);
    extended->ToolBar().SetCustomBar(bar);
    Show(*extended, [&] { EXPECT_EQ(extended->ToolBar().CustomBar(), bar); });
}

// --- What a preview leaves

TEST_F(Preview, WhatTheUserChoosesDoesNotGetIntoTheForm) {
    Dialog->PlacesBar().SetRegistryKey(Key.Path() + "\\Places");
    Dialog->PlacesBar().SetNative(false);
    Dialog->PlacesBar().Places().Add()->SetPlaceName("Stored");
    Dialog->PlacesBar().SaveToRegistry();
    Dialog->PlacesBar().Places()[0].SetPlaceName("Designed");
    Dialog->SetFilter("All|*.*|Text|*.txt");
    Dialog->SetFilterIndex(2);
    Run([&] { KxPreviewDialog(*Dialog, {}, {}, {}, {}, false); },
        {InDialog(*Dialog, [&] { EXPECT_EQ(Dialog->PlacesBar().Places().Count(), 2); }),
         EnterFileName(*Dialog, "drawing.txt")});
    EXPECT_EQ(Dialog->FileName(), "");
    EXPECT_EQ(Dialog->FilterIndex(), 2);
    ASSERT_EQ(Dialog->PlacesBar().Places().Count(), 1);
    EXPECT_EQ(Dialog->PlacesBar().Places()[0].PlaceName(), "Designed");

    auto* const color = Add<TKxColorDialog>();
    color->SetColor(clRed);
    Run([&] { KxPreviewDialog(*color, {}, {}, {}, {}, false); }, {InDialog(*color,
                                                                           [&] {
                                                                               SetDlgItemInt(color->DialogWindow(), 706,
                                                                                             12, FALSE); // the red part
                                                                           }),
                                                                  Press(*color, IDOK)});
    EXPECT_EQ(color->Color(), clRed);
}

TEST_F(Preview, PlacesThatDidNotChangeAreLeftAsTheyAre) {
    TKxPlace* const place = Dialog->PlacesBar().Places().Add();
    place->SetPlaceName("Designed");
    const TAlive alive(*place);
    Show(*Dialog);
    EXPECT_TRUE(alive) << "it may be selected in the designer";
}

TEST_F(Preview, ADialogThatIsFreedMeanwhileTakesNothingWithIt) {
    AddForm("SideForm");
    Params.SetLeftFormName("SideForm");
    Run([&] { KxPreviewDialog(*Dialog, {}, {}, {}, {}, true); },
        {InDialog(*Dialog, [&] { std::exchange(Dialog, nullptr)->Free(); })});
    EXPECT_FALSE(FileExists(TempFile("SideForm")));
}

TEST_F(Preview, AFormThatIsClosedMeanwhileIsNotResized) {
    TForm* const form = &AddForm("SideForm");
    Params.SetLeftFormName("SideForm");
    Show(
        *Dialog, [&] { form->SetName("Renamed"); }, true);
    EXPECT_EQ(form->Height(), 60);
}

// --- The window that a preview runs from

TEST_F(Preview, PreviewOpensAModelessWindowAndCustomizeIsModal) {
    ExecuteVerb(*Dialog, 1);
    TKxPreviewDummyFrm* const window = KxPreviewDummyFrm;
    ASSERT_NE(window, nullptr);
    EXPECT_FALSE(window->IsModal());
    EXPECT_EQ(window->Dlg(), Dialog);
    EXPECT_EQ(window->Owner(), nullptr);
    EXPECT_FALSE(IsRunning(*Dialog)());
    ASSERT_TRUE(PumpUntil(IsOpen<TKxPreviewDummyFrm>()));
    Screenshot("preview-window", window->Handle());
    EXPECT_EQ(Designer.ModifiedCount, 0);
    window->Close();
    EXPECT_TRUE(PumpUntil([] { return KxPreviewDummyFrm == nullptr; }));

    bool returned = false;
    Run(
        [&] {
            ExecuteVerb(*Dialog, 0);
            returned = true;
        },
        {{"the designer", IsOpen<TDlgDsgnForm>(), [&] {
              EXPECT_TRUE(Find<TDlgDsgnForm>()->IsModal());
              EXPECT_FALSE(returned);
              PressKey(VK_ESCAPE);
          }}});
    EXPECT_TRUE(returned);
}

TEST_F(Preview, ThePreviewVerbNeverResizesTheDesignedForms) {
    TForm& form = AddForm("SideForm", 95, 65);
    Params.SetLeftFormName("SideForm");
    Params.SetTopFormName("SideForm");
    ExecuteVerb(*Dialog, 1);
    Run([&] { PressButton(KxPreviewDummyFrm->Button1->Handle()); },
        {InDialog(*Dialog, [&] { EXPECT_NE(Params.LeftForm(), nullptr); }), Cancel(*Dialog)});
    EXPECT_EQ(form.Width(), 95);
    EXPECT_EQ(form.Height(), 65);
    EXPECT_TRUE(PumpUntil([] { return KxPreviewDummyFrm == nullptr; })) << "the window goes with the preview";
}

TEST_F(Preview, ASecondActivationRunsNoSecondPreview) {
    ExecuteVerb(*Dialog, 1);
    TKxPreviewDummyFrm* const window = KxPreviewDummyFrm;
    int shown = 0;
    Dialog->SetOnShow([&](TObject*) { ++shown; });
    Run([&] { PressButton(window->Button1->Handle()); },
        {InDialog(*Dialog, [&] { window->Button1Click(nullptr); }), Cancel(*Dialog)});
    EXPECT_EQ(shown, 1);
    window->Button1Click(nullptr); // it is about to go
    EXPECT_EQ(shown, 1);
    PumpUntil([] { return KxPreviewDummyFrm == nullptr; });
}

TEST_F(Preview, EachVerbHasItsOwnWindow) {
    ExecuteVerb(*Dialog, 1);
    TKxPreviewDummyFrm* const first = KxPreviewDummyFrm;
    ExecuteVerb(*Add<TKxFolderDialog>(), 1);
    TKxPreviewDummyFrm* const second = KxPreviewDummyFrm;
    EXPECT_NE(second, first);
    first->Free();
    EXPECT_EQ(KxPreviewDummyFrm, second);
    second->Free();
    EXPECT_EQ(KxPreviewDummyFrm, nullptr);
}

TEST_F(Preview, AWindowWhoseDialogHasGoneShowsNothing) {
    ExecuteVerb(*Dialog, 1);
    Dialog->Free();
    EXPECT_EQ(KxPreviewDummyFrm->Dlg(), nullptr);
    PressButton(KxPreviewDummyFrm->Button1->Handle());
    KxPreviewDummyFrm->Free();
}

} // namespace
} // namespace kx::test
