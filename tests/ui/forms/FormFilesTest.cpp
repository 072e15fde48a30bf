// Forms that are made from their files.

#include "tests/ui/SampleForms.h"

#include "tests/support/FormFiles.h"
#include "tests/support/TestDriver.h"

namespace kx {
namespace {

using namespace test;
using TControlsFormPtr = std::unique_ptr<TAllControlsForm, TFreeDeleter>;

TEST(FormFiles, FillTheFieldsAndThePropertiesOfTheForm) {
    const TControlsFormPtr form(NewForm<TAllControlsForm>(nullptr));
    EXPECT_EQ(form->Name().substr(0, 15), "AllControlsForm");
    EXPECT_EQ(form->Caption(), "All controls");
    EXPECT_EQ(form->ClientWidth(), 560);
    EXPECT_EQ(form->ClientHeight(), 372);
    EXPECT_EQ(form->Left(), 120);
    ASSERT_NE(form->Edit1, nullptr);
    EXPECT_EQ(form->ActiveControl(), form->Edit1);
    EXPECT_EQ(form->Edit1->Parent(), form.get());
    EXPECT_EQ(form->RadioButton2->Parent(), form->GroupBox1);
    EXPECT_TRUE(form->RadioButton1->Checked());
    EXPECT_TRUE(form->CheckBox1->Checked());
    EXPECT_EQ(form->Label1->FocusControl(), form->Edit1);
    EXPECT_EQ(form->ListBox1->Items().CommaText(), "one,two,three");
    EXPECT_EQ(form->Memo1->Lines().Count(), 2);
    EXPECT_EQ(form->ComboBox2->Text(), "beta");
    EXPECT_EQ(form->TabControl1->Tabs()[1], "Zuletzt verwendet");
    EXPECT_EQ(form->ListView1->Columns()[1].Width(), 250);
    EXPECT_EQ(form->OkButton->ModalResult(), mrOk);
    EXPECT_EQ(form->CancelButton->ModalResult(), mrCancel);
    EXPECT_EQ(form->ListBox1->PopupMenu(), form->PopupMenu1);
    EXPECT_TRUE(form->SpeedButton1->Down());
    EXPECT_EQ(form->DrawGrid1->ColCount(), 12);
    EXPECT_EQ(form->DrawGrid1->FixedRows(), 0);
    EXPECT_EQ(form->PageScroller1->Control(), form->ToolBar1);
    EXPECT_EQ(form->ToolBar1->Buttons(1), form->ToolButton2);
    EXPECT_TRUE(form->ToolButton2->Down());
    EXPECT_EQ(form->ToolBar1->RowCount(), 2);
    EXPECT_EQ(form->Font().Name(), "MS Sans Serif");
    EXPECT_EQ(form->Edit1->Font().Height(), -11);
    EXPECT_TRUE(form->Edit1->ShowHint()) << "follows the form";
}

TEST(FormFiles, TextsKeepTheirUmlautsInTheWindow) {
    const TControlsFormPtr form(NewForm<TAllControlsForm>(nullptr));
    form->HandleNeeded();
    wchar_t text[40];
    GetWindowTextW(form->Edit1->WindowHandle(), text, 40);
    EXPECT_EQ(std::wstring(text), L"\u00DCbersicht");
}

TEST(FormFiles, ControlsKeepTheTabOrderOfTheFile) {
    const TControlsFormPtr form(NewForm<TAllControlsForm>(nullptr));
    EXPECT_EQ(form->Edit1->TabOrder(), 0);
    EXPECT_EQ(form->CheckBox1->TabOrder(), 1);
    EXPECT_EQ(form->CancelButton->TabOrder(), 10);
    EXPECT_EQ(form->RadioButton2->TabOrder(), 1);
}

TEST(FormFiles, HandlersAreBoundToTheFormsMethods) {
    const TControlsFormPtr form(NewForm<TAllControlsForm>(nullptr));
    EXPECT_EQ(form->Log, std::vector<std::string>{"create"});
    form->OkButton->Click();
    EXPECT_EQ(form->Log.back(), "ok");
    EXPECT_EQ(form->ModalResult(), mrOk);
    form->Show();
    EXPECT_EQ(form->Log.back(), "show");
}

TEST(FormFiles, AnInheritedFormIsReadOverItsAncestorsForm) {
    const std::unique_ptr<TDerivedForm, TFreeDeleter> form(NewForm<TDerivedForm>(nullptr));
    EXPECT_EQ(form->Caption(), "Derived");
    EXPECT_EQ(form->ClientWidth(), 300);
    EXPECT_EQ(form->ClientHeight(), 100) << "the ancestor's";
    EXPECT_EQ(form->NameEdit->Text(), "derived");
    EXPECT_EQ(form->NameEdit->Left(), 8);
    EXPECT_EQ(form->NameEdit->Width(), 200);
    EXPECT_EQ(form->Extra->Parent(), form.get());
    EXPECT_EQ(form->ControlCount(), 3);
    form->CloseButton->Click();
    EXPECT_EQ(form->Closes, 1) << "handlers of the ancestor work";
}

TEST(FormFiles, OnCreateRunsOnceOnTheCompleteForm) {
    const std::unique_ptr<TDerivedForm, TFreeDeleter> form(NewForm<TDerivedForm>(nullptr));
    EXPECT_EQ(form->Creates, 1);
    EXPECT_EQ(form->CreatedAs, "TDerivedForm");
    form->Show();
    form->Hide();
    EXPECT_EQ(form->Creates, 1);
}

TEST(FormFiles, OnCreateOfAPlainlyMadeFormRunsBeforeItsWindowIsMade) {
    TDerivedForm form;
    EXPECT_EQ(form.Creates, 0);
    form.HandleNeeded();
    EXPECT_EQ(form.Creates, 1);
    EXPECT_EQ(form.CreatedAs, "TDerivedForm");
}

TEST(FormFiles, OnDestroyRunsWhileTheFormIsStillThere) {
    std::vector<std::string> log;
    auto* const form = NewForm<TAllControlsForm>(nullptr);
    form->DestroyLog = &log;
    form->Free();
    EXPECT_EQ(log, std::vector<std::string>{"destroy Edit1"});

    TComponent owner;
    NewForm<TAllControlsForm>(&owner)->DestroyLog = &log;
    owner.DestroyComponents();
    EXPECT_EQ(log.size(), 2u);
}

TEST(FormFiles, OnDestroyOfALocalFormDoesNotCallAMethodOfTheGoneForm) {
    std::vector<std::string> log;
    {
        TAllControlsForm form;
        form.HandleNeeded();
        form.DestroyLog = &log;
    }
    EXPECT_TRUE(log.empty());
    int calls = 0;
    {
        TForm form;
        form.SetOnDestroy([&](TObject*) { ++calls; });
    }
    EXPECT_EQ(calls, 1);
}

TEST(FormFiles, AWrittenFormReadsBackTheSame) {
    const TControlsFormPtr form(NewForm<TAllControlsForm>(nullptr));
    form->HandleNeeded(); // what the windows hold is written too
    const std::string first = FormTextOf(*form);
    form->Show();
    form->Hide();
    EXPECT_EQ(FormTextOf(*form), first);

    TAllControlsForm copy;
    for (int i = copy.ControlCount(); i-- > 0;) {
        copy.Controls(i)->Free();
    }
    copy.PopupMenu1->Free();
    ReadFormOver(copy, first);
    copy.HandleNeeded();
    copy.SetName(form->Name());
    EXPECT_EQ(FormTextOf(copy), first);
}

TEST(FormFiles, AClassWithoutAFormFileKeepsItsDefaults) {
    EXPECT_FALSE(HasFormFile(TForm::StaticClass()));
    EXPECT_TRUE(HasFormFile(TDerivedForm::StaticClass()));
    TForm form;
    InitForm(form, TForm::StaticClass());
    EXPECT_EQ(form.Width(), 320);
}

} // namespace
} // namespace kx
