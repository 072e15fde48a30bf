// SPDX-License-Identifier: MIT
// Forms that are made from their files.

#include "tests/ui/SampleForms.h"

#include "kx/win/Windows.h"
#include "tests/support/ErrorOf.h"
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

TEST(FormFiles, AClassHasOneOrNot) {
    EXPECT_FALSE(HasFormFile(TForm::StaticClass()));
    EXPECT_TRUE(HasFormFile(TDerivedForm::StaticClass()));
    TForm form;
    EXPECT_EQ(ErrorOf<EResNotFound>([&] { InitForm(form, TForm::StaticClass()); }),
              "The program has no form file of TForm");
}

// --- Constructors that forget the form file

/// Has the form file of TBaseForm.
class TForgetfulForm : public TForm {
    KX_CLASS()
    explicit TForgetfulForm(TComponent* owner = nullptr) : TForm(owner) {}
};

const TClass& TForgetfulForm::StaticClass() {
    static const TClassBuilder<TForgetfulForm> cls("TBaseForm", TForm::StaticClass());
    return cls.Class();
}

/// Has the form file of TDerivedForm.
class TForgetfulChild : public TBaseForm {
    KX_CLASS()
    using TBaseForm::TBaseForm;
};

const TClass& TForgetfulChild::StaticClass() {
    static const TClassBuilder<TForgetfulChild> cls("TDerivedForm", TBaseForm::StaticClass());
    return cls.Class();
}

/// Has no form file of its own.
class TPlainChild : public TBaseForm {
    KX_CLASS()
    using TBaseForm::TBaseForm;
};

const TClass& TPlainChild::StaticClass() {
    static const TClassBuilder<TPlainChild> cls("TPlainChild", TBaseForm::StaticClass());
    return cls.Class();
}

std::string Forgotten(const std::string& cls) {
    return "The form file of " + cls + " was not read: its constructor does not call InitForm";
}

TEST(FormFiles, ThatAConstructorForgetsAreAnErrorAndNoEmptyWindow) {
    EXPECT_EQ(ErrorOf<EInvalidOperation>([] { NewForm<TForgetfulForm>(nullptr); }), Forgotten("TBaseForm"));
    EXPECT_EQ(ErrorOf<EInvalidOperation>([] { NewForm<TForgetfulChild>(nullptr); }), Forgotten("TDerivedForm"));
    TForgetfulForm form;
    for (int turn = 0; turn < 2; ++turn) {
        EXPECT_EQ(ErrorOf<EInvalidOperation>([&] { form.Show(); }), Forgotten("TBaseForm"));
    }
    EXPECT_EQ(ErrorOf<EInvalidOperation>([&] { form.ShowModal(); }), Forgotten("TBaseForm"));
    EXPECT_FALSE(form.HandleAllocated());
}

TEST(FormFiles, OfAnAncestorAreEnoughForAClassWithoutOne) {
    const std::unique_ptr<TPlainChild, TFreeDeleter> form(NewForm<TPlainChild>(nullptr));
    EXPECT_EQ(form->Creates, 1);
    EXPECT_NE(form->NameEdit, nullptr);
}

TEST(FormFiles, MayBeReadInAnotherWay) {
    TForgetfulForm form;
    ReadFormOver(form, "object Read: TBaseForm\r\n  Caption = 'read'\r\nend\r\n");
    form.AfterConstruction();
    EXPECT_EQ(form.Caption(), "read");
}

// --- Fields and components

/// What the debugger gets while it lives.
class TDebuggerOutput {
public:
    TDebuggerOutput() : FHandler(AddVectoredExceptionHandler(1, Hear)) { Heard().clear(); }
    ~TDebuggerOutput() { RemoveVectoredExceptionHandler(FHandler); }
    static std::string& Heard() {
        static std::string heard;
        return heard;
    }

private:
    static LONG CALLBACK Hear(EXCEPTION_POINTERS* pointers) {
        constexpr DWORD output = 0x40010006; // DBG_PRINTEXCEPTION_C
        const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
        if (record.ExceptionCode != output) {
            return EXCEPTION_CONTINUE_SEARCH;
        }
        Heard() += reinterpret_cast<const char*>(record.ExceptionInformation[1]);
        return EXCEPTION_CONTINUE_EXECUTION;
    }

    void* FHandler;
};

/// Has the form file of TBaseForm, with an edit "NameEdit" and a button "CloseButton", and fields of its own.
class TUnevenForm : public TForm {
    KX_CLASS()
    explicit TUnevenForm(bool checks) : TForm(nullptr) { InitForm(*this, StaticClass(), checks); }
    void FormCreate(TObject*) {}
    void CloseClick(TObject*) {}
    KX_FIELDS(TUnevenForm, (TEdit, nameedit, OtherEdit), (TLabel, NameLabel))
};

const TClass& TUnevenForm::StaticClass() {
    static const TClassBuilder<TUnevenForm> cls("TBaseForm", TForm::StaticClass(), [](auto& c) {
        c.Method("FormCreate", &TUnevenForm::FormCreate);
        c.Method("CloseClick", &TUnevenForm::CloseClick);
    });
    return cls.Class();
}

/// Has the form file of TDerivedForm, with a check box "Extra".
class TUnevenChild : public TBaseForm {
    KX_CLASS()
    TUnevenChild() : TBaseForm(nullptr) { InitForm(*this, StaticClass(), true); }
    KX_FIELDS(TUnevenChild, (TButton, CloseButton))
};

const TClass& TUnevenChild::StaticClass() {
    static const TClassBuilder<TUnevenChild> cls("TDerivedForm", TBaseForm::StaticClass());
    return cls.Class();
}

/// The same with a field.
class TEvenChild : public TBaseForm {
    KX_CLASS()
    TEvenChild() : TBaseForm(nullptr) { InitForm(*this, StaticClass(), true); }
    KX_FIELDS(TEvenChild, (TCheckBox, Extra))
};

const TClass& TEvenChild::StaticClass() {
    static const TClassBuilder<TEvenChild> cls("TDerivedForm", TBaseForm::StaticClass());
    return cls.Class();
}

TEST(FormFiles, ThatDoNotAgreeWithTheFieldsOfTheClassAreToldToTheDebugger) {
    RegisterClasses<TButton, TCheckBox>();
    const TDebuggerOutput output;
    {
        const TUnevenForm silent(false);
        EXPECT_EQ(output.Heard(), "");
    }
    const TUnevenForm form(true);
    EXPECT_EQ(output.Heard(), "TBaseForm and its form file do not agree:\n"
                              "  fields without a component: OtherEdit, NameLabel\n"
                              "  components without a field: CloseButton\n");
    EXPECT_NE(form.nameedit, nullptr) << "in any letter case";
    output.Heard().clear();
    const TUnevenChild child; // what the ancestor's file brought is its own affair
    EXPECT_EQ(output.Heard(), "TDerivedForm and its form file do not agree:\n  components without a field: Extra\n");
    output.Heard().clear();
    const TEvenChild even;
    EXPECT_EQ(output.Heard(), "");
}

TEST(FormFiles, AreToldOfInDebugBuildsOfTheProgram) {
#ifdef NDEBUG
    EXPECT_FALSE(ChecksFormFields);
#else
    EXPECT_TRUE(ChecksFormFields);
#endif
}

} // namespace
} // namespace kx
