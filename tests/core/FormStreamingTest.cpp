// SPDX-License-Identifier: MIT
// Whole forms read and written.

#include "FormFixture.h"

namespace kx::sample {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class FormStreaming : public FormTest {};

TEST_F(FormStreaming, ReadsEveryKindOfValueFromText) {
    const auto form = ReadForm(RichForm);
    ASSERT_TRUE(form);
    EXPECT_EQ(form->Name(), "Form1");
    EXPECT_EQ(form->Caption(), "It's \r\ncaf\xC3\xA9 on a ");
    EXPECT_EQ(form->Left(), -70000);
    EXPECT_FALSE(form->Enabled());
    EXPECT_EQ(form->Align(), alClient);
    EXPECT_EQ(form->Options(), (TOptions{opWrap, opLast}));
    EXPECT_EQ(form->Color(), TColor{255});
    EXPECT_EQ(form->Key(), '*');
    EXPECT_EQ(form->Big(), 5000000000);
    EXPECT_EQ(form->Ratio(), 0.1);
    EXPECT_EQ(form->Font().Name(), "Tahoma");
    EXPECT_EQ(form->Font().Size(), 10);
    EXPECT_EQ(form->Font().Shadow().Depth(), 3);
    ASSERT_EQ(form->Items().Count(), 3);
    EXPECT_EQ(form->Items()[2], "three");
    ASSERT_EQ(form->Columns().Count(), 2);
    EXPECT_EQ(form->Columns()[0].Title(), "A");
    EXPECT_EQ(form->Columns()[1].Width(), 7);
    ASSERT_EQ(form->Columns()[0].Parts().Count(), 1);
    EXPECT_EQ(form->Picture.size(), 34u);
    EXPECT_EQ(form->Picture[33], 0x21);
    EXPECT_THAT(form->Numbers, ElementsAre(1, -2, 300000));
}

TEST_F(FormStreaming, BindsReferencesToComponentsThatComeLater) {
    const auto form = ReadForm(RichForm);
    auto* const button1 = form->FindComponent("Button1");
    ASSERT_TRUE(button1);
    EXPECT_EQ(form->Target(), form.get());
    EXPECT_EQ(form->Button(), button1);
    ASSERT_TRUE(form->Service());
    EXPECT_EQ(form->Service()->Serve(), 42);
    EXPECT_EQ(form->Columns()[0].Link(), button1);
    EXPECT_EQ(form->Columns()[0].Parts()[0].Link(), form->FindComponent("Server1"));
    EXPECT_EQ(form->MoreColumns[0].Link(), form->FindComponent("Panel1"));
    EXPECT_EQ(dynamic_cast<TButton*>(button1)->Target(), form->FindComponent("Panel1"));
    EXPECT_EQ(dynamic_cast<TButton*>(form->FindComponent("Button2"))->Target(), button1);
    EXPECT_FALSE(form->ComponentState().Contains(csFixups));
}

TEST_F(FormStreaming, BindsEventsToMethodsOfTheForm) {
    const auto form = ReadForm(RichForm);
    form->OnClick()(form.get());
    EXPECT_EQ(form->Clicked, form.get());
    EXPECT_EQ(form->OnClick(), TNotifyEvent(form.get(), &TForm::Button1Click));
    EXPECT_TRUE(form->Columns()[0].OnClick());
}

TEST_F(FormStreaming, BindsPublishedFields) {
    const auto form = ReadForm(RichForm);
    EXPECT_EQ(form->Button1, form->FindComponent("Button1"));
    EXPECT_EQ(form->Server1, form->FindComponent("Server1"));
    delete form->Button1;
    EXPECT_EQ(form->Button1, nullptr);
}

TEST_F(FormStreaming, ComponentsGetParentsAndTheFormAsOwner) {
    const auto form = ReadForm(RichForm);
    auto* const panel = dynamic_cast<TPanel*>(form->FindComponent("Panel1"));
    ASSERT_TRUE(panel);
    EXPECT_EQ(form->Button1->GetParentComponent(), panel);
    EXPECT_EQ(form->Button1->Owner(), form.get());
    EXPECT_EQ(panel->ChildCount(), 2);
    EXPECT_EQ(form->ComponentCount(), 4);
}

TEST_F(FormStreaming, LoadedRunsOnChildrenBeforeTheirParentAndOnTheRootLast) {
    const auto form = ReadForm(RichForm);
    EXPECT_THAT(TControl::LoadedOrder, ElementsAre("Button1", "Button2", "Panel1", "Form1"));
    EXPECT_FALSE(form->IsLoading());
    EXPECT_FALSE(form->Button1->IsLoading());
}

TEST_F(FormStreaming, WrittenTextIsTheTextThatWasRead) {
    const auto form = ReadForm(RichForm);
    std::string expected = Lines(RichForm);
    // The writer has its own way with what is beyond ASCII, and with a name of the form itself.
    expected.replace(expected.find("'caf\xC3\xA9 on"), 9, "'caf'#233' on");
    expected.replace(expected.find("Form1.Button1"), 13, "Button1");
    EXPECT_EQ(Written(*form), expected);
}

TEST_F(FormStreaming, WriteReadWriteIsIdenticalInEveryFormat) {
    const auto form = ReadForm(RichForm);
    for (const TStreamFormat format : {TStreamFormat::Binary, TStreamFormat::Resource, TStreamFormat::Text}) {
        const std::string first = Written(*form, format);
        const auto again = ReadForm(first);
        EXPECT_EQ(Written(*again, format), first);
    }
}

TEST_F(FormStreaming, TextToBinaryToTextIsIdentical) {
    const std::string text = Written(*ReadForm(RichForm));
    const std::string binary = ToBinary(text);
    EXPECT_EQ(ToText(binary), text);
    EXPECT_EQ(ToBinary(ToText(binary)), binary);
}

TEST_F(FormStreaming, DefaultsAreNotWritten) {
    TForm form;
    form.SetName("Form1");
    EXPECT_EQ(Written(form), "object Form1: TForm\r\nend\r\n");
    form.SetCaption("x");
    EXPECT_EQ(Written(form), "object Form1: TForm\r\n  Caption = 'x'\r\nend\r\n");
}

TEST_F(FormStreaming, ReadsOverAnExistingInstance) {
    TForm form;
    form.SetCaption("before");
    form.SetLeft(12);
    auto* const old = new TButton(&form);
    old->SetName("Old");
    TMemoryStream stream("object Form1: TForm Caption = 'after' object New: TButton end end");
    EXPECT_EQ(ReadComponent(stream, &form), &form);
    EXPECT_EQ(form.Caption(), "after");
    EXPECT_EQ(form.Left(), 12);
    EXPECT_EQ(form.FindComponent("Old"), old);
    EXPECT_TRUE(form.FindComponent("New"));
}

TEST_F(FormStreaming, TheClassInTheFileDoesNotMatterForAnExistingRoot) {
    TForm form;
    TMemoryStream stream("object Other: TSomethingElse Left = 3 end");
    ReadComponent(stream, &form);
    EXPECT_EQ(form.Left(), 3);
    EXPECT_EQ(form.Name(), "Other");
}

TEST_F(FormStreaming, InheritedComponentsAreReadOverTheExistingOnes) {
    const auto form = ReadForm(RichForm);
    auto* const button = form->Button1;
    TMemoryStream stream("inherited Form2: TForm Left = 1"
                         " inherited Panel1: TPanel inherited Button1: TButton Caption = 'Close' end"
                         "  object Button3: TButton Target = Button1 end end end");
    ReadComponent(stream, form.get());
    EXPECT_EQ(form->Name(), "Form2");
    EXPECT_EQ(form->Button1, button);
    EXPECT_EQ(button->Caption(), "Close");
    EXPECT_TRUE(button->ComponentState().Contains(csAncestor));
    auto* const added = dynamic_cast<TButton*>(form->FindComponent("Button3"));
    ASSERT_TRUE(added);
    EXPECT_EQ(added->Target(), button);
    EXPECT_EQ(added->GetParentComponent(), form->FindComponent("Panel1"));
}

TEST_F(FormStreaming, AnInheritedComponentWithoutAncestorIsAnError) {
    EXPECT_THAT(ErrorOf<EReadError>([] { ReadForm("object F: TForm\n inherited B: TButton\n end\nend"); }),
                HasSubstr("Error reading B on line 2: Ancestor for 'B' not found"));
}

TEST_F(FormStreaming, ADescendantHoldsJustTheDifferences) {
    const auto ancestor = ReadForm(RichForm);
    const auto form = ReadForm(RichForm);
    form->Button1->SetCaption("Close");
    form->SetLeft(0); // the default, but not what the ancestor has
    form->Font().Shadow().SetDepth(9);
    form->Columns()[0].SetTitle("B");
    form->SetTarget(nullptr);
    form->SetOnClick(nullptr);
    form->Items().Add("four");
    auto* const added = new TButton(form.get());
    added->SetName("Added");
    added->SetParentComponent(form->FindComponent("Panel1"));
    const std::string difference = Written(*form, TStreamFormat::Text, ancestor.get());
    EXPECT_EQ(difference, Lines(R"(inherited Form1: TForm
  Left = 0
  Font.Shadow.Depth = 9
  Items.Strings = (
    'one'
    ''
    'three'
    'four')
  Columns = <
    item
      Title = 'B'
      Link = Button1
      OnClick = Button1Click
      Parts = <
        item
          Title = 'inner'
          Link = Server1
        end>
    end
    item
      Width = 7
    end>
  Target = nil
  OnClick = nil
  Picture = {
    000102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F
    2021}
  Numbers = (
    1
    -2
    300000)
  MoreColumns = <
    item
      Link = Panel1
    end>
  inherited Panel1: TPanel
    inherited Button1: TButton
      Caption = 'Close'
    end
    object Added: TButton
    end
  end
end
)"));
    TMemoryStream stream(difference);
    ReadComponent(stream, ancestor.get());
    EXPECT_EQ(Written(*ancestor), Written(*form));
}

TEST_F(FormStreaming, AnUnchangedDescendantIsAnEmptyRoot) {
    const std::string text = "object F: TForm Caption = 'x' object B: TButton Caption = 'y' end end";
    const auto ancestor = ReadForm(text);
    const auto form = ReadForm(text);
    EXPECT_EQ(Written(*form, TStreamFormat::Text, ancestor.get()), "inherited F: TForm\r\nend\r\n");
}

TEST_F(FormStreaming, GlobalLoadingRunsLoadedOnceForAllFormsReadIntoAnInstance) {
    TForm form;
    {
        TGlobalLoading loading;
        TMemoryStream ancestor("object F: TForm object A: TButton end end");
        ReadComponent(ancestor, &form);
        EXPECT_TRUE(form.IsLoading());
        EXPECT_TRUE(TControl::LoadedOrder.empty());
        TMemoryStream descendant("inherited F: TForm inherited A: TButton end object B: TButton end end");
        ReadComponent(descendant, &form);
        loading.NotifyLoaded();
    }
    EXPECT_THAT(TControl::LoadedOrder, ElementsAre("A", "B", "F"));
    EXPECT_FALSE(form.IsLoading());
}

TEST_F(FormStreaming, InlineComponentsKeepTheirFlagAndNamespace) {
    // The component that an inline one brings along stands in for its own form here.
    class TInlineFrame : public TPanel {
    public:
        explicit TInlineFrame(TComponent* owner) : TPanel(owner) {
            auto* const inner = new TButton(this);
            inner->SetName("Inner");
            inner->SetParentComponent(this);
        }
        static const TClass& StaticClass() {
            static const TClassBuilder<TInlineFrame> cls("TInlineFrame", TPanel::StaticClass(),
                                                         [](auto& c) { c.Creatable(); });
            return cls.Class();
        }
        const TClass& ClassType() const override { return StaticClass(); }
    };
    RegisterClasses<TInlineFrame>();
    const std::string text = Lines(R"(object F: TForm
  Target = Frame1.Inner
  inline Frame1: TInlineFrame
    inherited Inner: TButton
      Caption = 'inside'
      Target = Owner
      Button = F.Outer
    end
  end
  object Outer: TButton
  end
end
)");
    const auto form = ReadForm(text);
    auto* const frame = form->FindComponent("Frame1");
    ASSERT_TRUE(frame);
    EXPECT_TRUE(frame->ComponentState().Contains(csInline));
    auto* const inner = dynamic_cast<TButton*>(frame->FindComponent("Inner"));
    EXPECT_EQ(inner->Caption(), "inside");
    EXPECT_EQ(inner->Target(), frame);
    EXPECT_EQ(inner->Button(), form->FindComponent("Outer"));
    EXPECT_EQ(form->Target(), inner);
    EXPECT_EQ(Written(*form), text);
}

// --- Classes

TEST_F(FormStreaming, ClassesOfPublishedFieldsNeedNoRegistration) {
    class TPlainForm : public TForm {
    public:
        class TGadget : public TButton {
        public:
            using TButton::TButton;
            static const TClass& StaticClass() {
                static const TClassBuilder<TGadget> cls("TGadget", TButton::StaticClass(),
                                                        [](auto& c) { c.Creatable(); });
                return cls.Class();
            }
            const TClass& ClassType() const override { return StaticClass(); }
        };
        TGadget* Gadget1 = nullptr;
        static const TClass& StaticClass() {
            static const TClassBuilder<TPlainForm> cls("TPlainForm", TForm::StaticClass(),
                                                       [](auto& c) { c.Field("Gadget1", &TPlainForm::Gadget1); });
            return cls.Class();
        }
        const TClass& ClassType() const override { return StaticClass(); }
    };
    TPlainForm form;
    TMemoryStream stream("object F: TPlainForm object Gadget1: TGadget end object Gadget2: TGadget end end");
    ReadComponent(stream, &form);
    EXPECT_EQ(GetClass("TGadget"), nullptr);
    EXPECT_EQ(form.Gadget1, form.FindComponent("Gadget1"));
    EXPECT_TRUE(form.FindComponent("Gadget2"));
}

TEST_F(FormStreaming, OnFindComponentClassSuppliesUnknownClasses) {
    const auto form = ReadForm("object F: TForm object X: TUnknown end end", [](TReader& reader) {
        reader.SetOnFindComponentClass([](TReader&, const std::string& name, const TClass*& cls) {
            cls = name == "TUnknown" ? &TPanel::StaticClass() : nullptr;
        });
    });
    EXPECT_TRUE(form->FindComponent("X"));
}

TEST_F(FormStreaming, OnErrorMaySkipWhatCannotBeRead) {
    std::vector<std::string> messages;
    const auto form = ReadForm(R"(object F: TForm
  Nonsense = (1 2 <item A = {00} end> [a, b] nil 1.5 'x')
  Left = 'no number'
  Columns = <
    item
      Wrong = 1
      Title = 'kept'
    end>
  Button = P
  object X: TUnknown
    Left = 1
    object Y: TButton
    end
  end
  object P: TPanel
    Caption = 'read'
  end
end
)",
                               [&](TReader& reader) {
                                   reader.SetOnError([&](TReader&, const std::string& message, bool& handled) {
                                       messages.push_back(message);
                                       handled = true;
                                   });
                               });
    ASSERT_TRUE(form);
    EXPECT_EQ(form->Columns()[0].Title(), "kept");
    EXPECT_EQ(form->ComponentCount(), 1);
    EXPECT_EQ(dynamic_cast<TPanel*>(form->FindComponent("P"))->Caption(), "read");
    EXPECT_THAT(messages,
                ElementsAre(HasSubstr("F.Nonsense on line 2: Property Nonsense does not exist in TForm"),
                            HasSubstr("F.Left: Invalid property value"), HasSubstr("Wrong on line 6"),
                            HasSubstr("X on line 10: Class TUnknown not found"), HasSubstr("F.Button on line 9")));
}

// --- Stored tests

class TStoredTest : public TComponent {
    KX_CLASS()
    std::string Text() const { return FText; }
    void SetText(const std::string& value) { FText = value; }
    double Number() const { return FNumber; }
    void SetNumber(double value) { FNumber = value; }
    bool IsStored = true;

private:
    std::string FText = "initial";
    double FNumber = 1;
};

const TClass& TStoredTest::StaticClass() {
    static const TClassBuilder<TStoredTest> cls("TStoredTest", TComponent::StaticClass(), [](auto& c) {
        const auto stored = [](const TObject& o) { return static_cast<const TStoredTest&>(o).IsStored; };
        c.Property("Text", &TStoredTest::Text, &TStoredTest::SetText).Stored = stored;
        c.Property("Number", &TStoredTest::Number, &TStoredTest::SetNumber).Stored = stored;
    });
    return cls.Class();
}

TEST_F(FormStreaming, AStoredTestDecidesAloneAboutEmptyValues) {
    TStoredTest component;
    component.SetText("");
    component.SetNumber(0);
    EXPECT_EQ(Written(component), "object TStoredTest\r\n  Text = ''\r\n  Number = 0.0\r\nend\r\n");
    component.IsStored = false;
    EXPECT_EQ(Written(component), "object TStoredTest\r\nend\r\n");
}

TEST_F(FormStreaming, DesigningReachesTheComponentsThatAreRead) {
    TForm form;
    form.SetDesigning(true);
    TMemoryStream stream("object F: TForm object B: TButton end end");
    ReadComponent(stream, &form);
    EXPECT_TRUE(form.FindComponent("B")->IsDesigning());
}

TEST_F(FormStreaming, ACollectionIsUpdatedOnceWhenItHasBeenRead) {
    const auto form = ReadForm("object F: TForm Columns = < item end item end item end > end");
    EXPECT_EQ(form->Columns().Updates, 1);
}

TEST_F(FormStreaming, AComponentThatAnotherOneFreesInItsLoadedIsNotToldAnyMore) {
    class TImpatient : public TButton {
    public:
        using TButton::TButton;
        void Loaded() override {
            TButton::Loaded();
            Owner()->FindComponent("Late")->Free();
        }
        static const TClass& StaticClass() {
            static const TClassBuilder<TImpatient> cls("TImpatient", TButton::StaticClass(),
                                                       [](auto& c) { c.Creatable(); });
            return cls.Class();
        }
        const TClass& ClassType() const override { return StaticClass(); }
    };
    RegisterClasses<TImpatient>();
    const auto form = ReadForm("object F: TForm object A: TImpatient end object Late: TButton end"
                               " object B: TButton end end");
    EXPECT_THAT(TControl::LoadedOrder, ElementsAre("A", "B", "F"));
}

// --- Where designers show components that are no controls

TEST_F(FormStreaming, ComponentsThatAreNoControlsHaveADesignPosition) {
    const std::string text =
        Lines("object F: TForm\n  object S: TServer\n    Tag = 5\n    Left = 40\n    Top = -3\n  end\n"
              "  object T: TServer\n    Top = 32767\n  end\n"
              "  object U: TServer\n    Left = -32768\n  end\nend\n");
    const auto form = ReadForm(text);
    const TComponent& server = *form->FindComponent("S");
    EXPECT_EQ(server.DesignInfo(), int32_t(0xFFFD0028));
    EXPECT_EQ(form->FindComponent("T")->DesignInfo(), 0x7FFF0000);
    EXPECT_EQ(form->FindComponent("U")->DesignInfo(), 0x8000);
    EXPECT_EQ(Written(*form), text);
    EXPECT_EQ(Written(*ReadForm(Written(*form, TStreamFormat::Binary))), text);
}

TEST_F(FormStreaming, ADesignPositionThatIsUnsignedIsReadAsSigned) {
    const auto form = ReadForm("object F: TForm object S: TServer Left = 65535 Top = 32768 end end");
    EXPECT_THAT(Written(*form), HasSubstr("    Left = -1\r\n    Top = -32768\r\n"));
    for (const std::string value : {"65536", "-32769"}) {
        EXPECT_EQ(
            ErrorOf<EReadError>([&] { ReadForm("object F: TForm object S: TServer\n Top = " + value + " end end"); }),
            "Error reading S.Top: The position " + value + " is out of range on line 2");
    }
}

TEST_F(FormStreaming, AControlHasNoDesignPositionBesideItsOwn) {
    const auto form = ReadForm("object F: TForm object B: TButton Left = 7 end end");
    form->FindComponent("B")->SetDesignInfo(0x00050006); // no Top is published
    EXPECT_EQ(Written(*form), Lines("object F: TForm\n  object B: TButton\n    Left = 7\n    Top = 5\n  end\nend\n"));
}

TEST_F(FormStreaming, ADescendantHoldsTheDesignPositionThatDiffers) {
    const auto ancestor = ReadForm("object F: TForm object S: TServer Left = 7 Top = 8 end end");
    const auto form = ReadForm("object F: TForm object S: TServer Left = 0 Top = 8 end end");
    const std::string difference = Written(*form, TStreamFormat::Text, ancestor.get());
    EXPECT_EQ(difference, Lines("inherited F: TForm\n  inherited S: TServer\n    Left = 0\n  end\nend\n"));
}

// --- Properties without a meaning

TEST_F(FormStreaming, PropertiesOfOlderSystemsAreReadOver) {
    const std::string lines = "Ctl3D = False\nExplicitLeft = 3\nexplicittop = 4\nGlassFrame.Enabled = True\n"
                              "GlassFrame.Left = 5\nStyleElements = [seFont]\nDesignSize = (\n  1\n  2)\n"
                              "OldCreateOrder = False\nImeName = 'x'\nTextHeight = 13\nCaption = 'a'";
    const std::string text = FormOf(lines + "\nobject B: TButton\n  ParentCtl3D = False\nend");
    const auto form = ReadForm(text);
    EXPECT_EQ(form->Caption(), "a");
    EXPECT_EQ(Written(*form), FormOf("Caption = 'a'\nobject B: TButton\nend"));
    EXPECT_EQ(Written(*ReadKeeping(text)), text);
    for (const std::string other : {"Ctl2D = False", "Ctl3DX = False", "Font.Ctl3D = False", "X.Ctl3D = 1",
                                    "Columns = < item Ctl3D = False end >"}) {
        EXPECT_THROW(ReadForm("object F: TForm " + other + " end"), EReadError) << other;
    }
}

} // namespace
} // namespace kx::sample
