// References, names and handlers of a form that is read.

#include "FormFixture.h"

namespace kx::sample {
namespace {

using testing::HasSubstr;

/// References and events, which are bound by name.
class FormBinding : public FormTest {};

// --- Names and references

TEST_F(FormBinding, ANameThatNobodyKnowsMakesTheReferenceNull) {
    const auto form = ReadForm("object F: TForm Target = Nobody Button = Other.Nobody Service = nil end");
    EXPECT_EQ(form->Target(), nullptr);
    EXPECT_EQ(form->Button(), nullptr);
    EXPECT_EQ(form->Service(), nullptr);
}

TComponent* OtherForm = nullptr;
TComponent* FindOtherForm(const std::string& name) { return SameText(name, OtherForm->Name()) ? OtherForm : nullptr; }

TEST_F(FormBinding, ReferencesReachComponentsOfOtherForms) {
    const auto other = ReadForm("object Other: TForm object B: TButton end end");
    OtherForm = other.get();
    RegisterFindGlobalComponentProc(FindOtherForm);
    const std::string text = "object F: TForm\r\n  Target = Other\r\n  Button = Other.B\r\nend\r\n";
    {
        const auto form = ReadForm(text);
        EXPECT_EQ(form->Target(), other.get());
        EXPECT_EQ(form->Button(), other->FindComponent("B"));
        EXPECT_EQ(Written(*form), text);
    }
    UnregisterFindGlobalComponentProc(FindOtherForm);
    EXPECT_EQ(ReadForm(text)->Target(), nullptr);
}

TEST_F(FormBinding, ASecondFormOfANameGetsAnotherName) {
    const auto first = ReadForm("object Main: TForm end");
    OtherForm = first.get();
    RegisterFindGlobalComponentProc(FindOtherForm);
    const auto second = ReadForm("object Main: TForm Target = Main.B object B: TButton Target = Main end end");
    UnregisterFindGlobalComponentProc(FindOtherForm);
    EXPECT_EQ(second->Name(), "Main_1");
    EXPECT_EQ(second->Target(), second->FindComponent("B"));
    EXPECT_EQ(dynamic_cast<TButton*>(second->FindComponent("B"))->Target(), second.get());
}

TEST_F(FormBinding, OnReferenceNameMayReplaceTheName) {
    const auto form = ReadForm("object F: TForm Target = Old object B: TButton end end", [](TReader& reader) {
        reader.SetOnReferenceName([](TReader&, std::string& name) { name = name == "Old" ? "B" : name; });
    });
    EXPECT_EQ(form->Target(), form->FindComponent("B"));
}

TEST_F(FormBinding, OnSetNameMayReplaceTheName) {
    const auto form = ReadForm("object F: TForm object B: TButton end end", [](TReader& reader) {
        reader.SetOnSetName([](TReader&, TComponent*, std::string& name) { name += "Copy"; });
    });
    EXPECT_EQ(form->Name(), "FCopy");
    EXPECT_TRUE(form->FindComponent("BCopy"));
}

TEST_F(FormBinding, AReferenceOfAnotherClassIsAnError) {
    const std::string form = "object F: TForm\n Button = P\n object P: TPanel\n end\nend";
    EXPECT_THAT(ErrorOf<EReadError>([&] { ReadForm(form); }),
                HasSubstr("Error reading F.Button on line 2: Invalid class typecast"));
}

TEST_F(FormBinding, AReferenceInAnItemThatALaterValueReplacedIsForgotten) {
    const auto form = ReadForm("object F: TForm Columns = < item Link = B end item Link = B end >"
                               " Columns = < item Title = 'x' end > Target = B Target = nil"
                               " object B: TButton end end");
    ASSERT_EQ(form->Columns().Count(), 1);
    EXPECT_EQ(form->Columns().Column(0).Title(), "x");
    EXPECT_EQ(form->Target(), nullptr);
}

TEST_F(FormBinding, ComponentsWithoutANameAreReadAndWritten) {
    const std::string text = "object TForm\r\n  object TButton\r\n    Caption = 'x'\r\n  end\r\nend\r\n";
    const auto form = ReadForm(text);
    EXPECT_EQ(form->ComponentCount(), 1);
    EXPECT_EQ(Written(*form), text);
}

TEST_F(FormBinding, AReferenceToAComponentWithoutANameIsNotWritten) {
    TForm form;
    form.SetTarget(new TButton(&form));
    EXPECT_EQ(Written(form), "object TForm\r\n  object TButton\r\n  end\r\nend\r\n");
}

// --- Events

TEST_F(FormBinding, AnUnknownMethodIsAnErrorUnlessOnFindEventAcceptsIt) {
    const std::string text = "object F: TForm\n OnClick = Nothing\nend";
    EXPECT_THAT(ErrorOf<EReadError>([&] { ReadForm(text); }),
                HasSubstr("Error reading F.OnClick on line 2: Method Nothing not found"));
    const auto form = ReadForm(text, [](TReader& reader) {
        reader.SetOnFindEvent([](TReader&, const std::string& name, TEventTargetPtr& target, bool& error) {
            EXPECT_EQ(name, "Nothing");
            EXPECT_TRUE(error);
            EXPECT_FALSE(target);
            error = false;
        });
    });
    EXPECT_FALSE(form->OnClick());
}

TEST_F(FormBinding, OnFindEventMayReplaceTheHandler) {
    int calls = 0;
    const auto form = ReadForm("object F: TForm OnClick = Button1Click end", [&](TReader& reader) {
        reader.SetOnFindEvent([&](TReader&, const std::string&, TEventTargetPtr& target, bool&) {
            EXPECT_TRUE(target);
            target = TNotifyEvent([&calls](TObject*) { ++calls; }).Target();
        });
    });
    form->OnClick()(nullptr);
    EXPECT_EQ(calls, 1);
}

TEST_F(FormBinding, AMethodOfAnotherSignatureIsAnError) {
    EXPECT_THAT(ErrorOf<EReadError>([] { ReadForm("object F: TForm OnClick = FormDropped end"); }),
                HasSubstr("F.OnClick"));
}

TEST_F(FormBinding, AHandlerWithoutANameIsNotWritten) {
    TForm form;
    form.SetOnClick([](TObject*) {});
    EXPECT_EQ(Written(form), "object TForm\r\nend\r\n");
}

TEST_F(FormBinding, ALookupCanBeOverridden) {
    class TPreviewReader : public TReader {
    public:
        using TReader::TReader;

    protected:
        TEventTargetPtr FindMethod(TComponent&, const std::string&) override { return nullptr; }
        const TClass& FindComponentClass(const std::string&) override { return TPanel::StaticClass(); }
    };
    TMemoryStream binary(ToBinary("object F: TForm OnClick = Missing object X: TUnknown end end"));
    TForm form;
    TPreviewReader(binary).ReadRootComponent(&form);
    EXPECT_FALSE(form.OnClick());
    EXPECT_EQ(form.Components(0)->ClassName(), "TPanel");
}

} // namespace
} // namespace kx::sample
