// SPDX-License-Identifier: MIT
// Frames on forms.

#include "kx/ui/forms/Frames.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/FormFiles.h"
#include "tests/support/TestDriver.h"
#include "tests/support/TestForms.h"
#include "tests/ui/ControlFixture.h"
#include "tests/ui/FocusPump.h"

namespace kx {
namespace {

using namespace test;

/// The frame of SampleFrame.dfm
class TSampleFrame : public TFrame {
    KX_CLASS()
    explicit TSampleFrame(TComponent* owner = nullptr) : TFrame(owner) { InitForm(*this, StaticClass()); }
    void OkButtonClick(TObject*) { ++Clicks; }

    KX_FIELDS(TSampleFrame, (TEdit, NameEdit), (TButton, OkButton))
    int Clicks = 0;
};

const TClass& TSampleFrame::StaticClass() {
    static const TClassBuilder<TSampleFrame> cls("TSampleFrame", TFrame::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Method("OkButtonClick", &TSampleFrame::OkButtonClick);
    });
    return cls.Class();
}

/// The form of FrameHost.dfm
class TFrameHostForm : public TForm {
    KX_CLASS()
    explicit TFrameHostForm(TComponent* owner = nullptr, bool fromFile = true) : TForm(owner) {
        if (fromFile) {
            InitForm(*this, StaticClass());
        }
    }
    void FirstOkButtonClick(TObject*) { ++Clicks; }

    KX_FIELDS(TFrameHostForm, (TSampleFrame, First, Second))
    int Clicks = 0;
};

const TClass& TFrameHostForm::StaticClass() {
    static const TClassBuilder<TFrameHostForm> cls("TFrameHostForm", TForm::StaticClass(), [](auto& c) {
        c.Method("FirstOkButtonClick", &TFrameHostForm::FirstOkButtonClick);
    });
    return cls.Class();
}

class Frames : public testing::Test {
protected:
    std::unique_ptr<TFrameHostForm, TFreeDeleter> Form{NewForm<TFrameHostForm>(nullptr)};
};

TEST_F(Frames, AreMadeByTheirOwnFormFile) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    auto* const frame = new TSampleFrame(form.get());
    EXPECT_EQ(frame->BoundsRect(), (TRect{0, 0, 160, 60}));
    ASSERT_NE(frame->NameEdit, nullptr);
    EXPECT_EQ(frame->NameEdit->Owner(), frame);
    EXPECT_EQ(frame->NameEdit->Parent(), frame);
    EXPECT_EQ(frame->NameEdit->Text(), "as made");
    frame->OkButton->Click();
    EXPECT_EQ(frame->Clicks, 1);
    auto* const another = new TSampleFrame(form.get()); // two of them can be there
    EXPECT_NE(another->Name(), frame->Name());
}

TEST_F(Frames, OfAFormHaveWhatTheFormSaysOfThem) {
    ASSERT_NE(Form->First, nullptr);
    ASSERT_NE(Form->Second, nullptr);
    EXPECT_EQ(Form->First->Parent(), Form.get());
    EXPECT_EQ(Form->First->Top(), 20);
    EXPECT_EQ(Form->First->NameEdit->Text(), "of the form");
    EXPECT_EQ(Form->First->NameEdit->Width(), 100) << "the frame's own";
    EXPECT_EQ(Form->Second->NameEdit->Text(), "as made");
    Form->First->OkButton->Click();
    EXPECT_EQ(Form->Clicks, 1);
    EXPECT_EQ(Form->First->Clicks, 0);
    Form->Second->OkButton->Click();
    EXPECT_EQ(Form->Second->Clicks, 1);
}

TEST_F(Frames, TheirControlsMoveAlong) {
    Form->Show();
    ASSERT_TRUE(PumpUntil([&] { return Form->Active(); }));
    const TRect before = ScreenRectOf(Form->First->NameEdit->Handle());
    Form->First->SetBounds(60, 40, 160, 60);
    const TRect after = ScreenRectOf(Form->First->NameEdit->Handle());
    EXPECT_EQ(after.Left - before.Left, 50);
    EXPECT_EQ(after.Top - before.Top, 20);
    EXPECT_EQ(Form->First->NameEdit->Left(), 8);
    Form->First->Hide();
    EXPECT_FALSE(IsWindowVisible(Form->First->NameEdit->Handle()));
}

TEST_F(Frames, TheTabKeyGoesThroughThem) {
    Form->Show();
    ASSERT_TRUE(PumpUntil([&] { return Form->Active(); }));
    Form->First->NameEdit->SetFocus();
    for (TWinControl* next :
         std::initializer_list<TWinControl*>{Form->First->OkButton, Form->Second->NameEdit, Form->Second->OkButton}) {
        PressKey(VK_TAB);
        EXPECT_TRUE(FocusPump([&] { return next->Focused(); })) << next->Name();
    }
}

TEST_F(Frames, AFormIsWrittenWithWhatIsInsideThem) {
    const std::string text = FormTextOf(*Form);
    EXPECT_NE(text.find("  inline First: TSampleFrame\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("    inherited NameEdit: TEdit\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("      Text = 'of the form'\r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("OnClick = FirstOkButtonClick\r\n"), std::string::npos) << text;
    const std::unique_ptr<TFrameHostForm, TFreeDeleter> copy(new TFrameHostForm(nullptr, false));
    ReadFormOver(*copy, text);
    copy->AfterConstruction(); // its file has been read, in another way
    EXPECT_EQ(copy->First->NameEdit->Text(), "of the form");
    EXPECT_EQ(copy->Second->NameEdit->Text(), "as made");
}

/// A class with the form file of SampleFrame.dfm, which its constructor forgets.
class TForgetfulFrame : public TFrame {
    KX_CLASS()
    explicit TForgetfulFrame(TComponent* owner = nullptr) : TFrame(owner) {}
};

const TClass& TForgetfulFrame::StaticClass() {
    static const TClassBuilder<TForgetfulFrame> cls("TSampleFrame", TFrame::StaticClass(),
                                                    [](auto& c) { c.Creatable(); });
    return cls.Class();
}

TEST_F(Frames, OfWhichTheConstructorForgetsTheFormFileAreAnError) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    form->HandleNeeded();
    TForgetfulFrame frame;
    const std::string message = "The form file of TSampleFrame was not read: its constructor does not call InitForm";
    EXPECT_EQ(ErrorOf<EInvalidOperation>([&] { frame.SetParent(form.get()); }), message);
    EXPECT_FALSE(frame.HandleAllocated());
    frame.SetParent(nullptr);
    // What a form says of the frame is not the frame's own file.
    const TFormPtr host(NewForm<TForm>(nullptr));
    TMemoryStream file("object F: TForm\r\n  inline First: TSampleFrame\r\n    Left = 10\r\n  end\r\nend\r\n");
    ReadComponent(file, host.get(), [](TReader& reader) {
        reader.SetOnFindComponentClass([](TReader&, const std::string& name, const TClass*& cls) {
            cls = name == "TSampleFrame" ? &TForgetfulFrame::StaticClass() : cls;
        });
    });
    EXPECT_EQ(ErrorOf<EInvalidOperation>([&] { host->HandleNeeded(); }), message);
}

TEST_F(Frames, ADesignerWritesTheFormFileAsItStands) {
    const std::string stands = "object F: TFrameHostForm\r\n"
                               "  inline First: TSampleFrame\r\n"
                               "    Left = 10\r\n"
                               "    inherited OkButton: TButton\r\n"
                               "      Caption = 'Go'\r\n"
                               "    end\r\n"
                               "  end\r\n"
                               "end\r\n";
    const TFormPtr form(NewForm<TForm>(nullptr));
    TMemoryStream stream(stands);
    RegisterClasses<TSampleFrame>();
    ReadComponent(stream, form.get(), [](TReader& reader) { reader.SetKeepsUnknown(true); });
    EXPECT_EQ(FormTextOf(*form), stands);
    auto& frame = dynamic_cast<TSampleFrame&>(*form->FindComponent("First"));
    EXPECT_EQ(frame.OkButton->Caption(), "Go");
    EXPECT_EQ(frame.NameEdit->Text(), "as made");
}

} // namespace
} // namespace kx
