// SPDX-License-Identifier: MIT
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
    EXPECT_EQ(form->Columns()[0].Title(), "x");
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

// --- References that wait

/// Finds OtherForm as long as it lives.
struct TFinding {
    explicit TFinding(TComponent& form) {
        OtherForm = &form;
        RegisterFindGlobalComponentProc(FindOtherForm);
    }
    ~TFinding() { UnregisterFindGlobalComponentProc(FindOtherForm); }
};

std::string Waiting(const TObject& object, std::string_view property) {
    return PendingReference(object, GetPropInfo(object, property));
}

TEST_F(FormBinding, AReferenceWaitsForAFormThatComesLater) {
    const std::string text = "object F: TForm\r\n  Columns = <\r\n    item\r\n      Link = Later.B\r\n    end>\r\n"
                             "  Target = Later\r\n  Button = Later.B\r\nend\r\n";
    const auto form = ReadForm(text);
    EXPECT_EQ(form->Target(), nullptr);
    EXPECT_EQ(Waiting(*form, "Target"), "Later");
    EXPECT_EQ(Waiting(*form, "Button"), "Later.B");
    EXPECT_EQ(Waiting(form->Columns()[0], "Link"), "Later.B");
    EXPECT_EQ(Waiting(*form, "Service"), "");
    EXPECT_EQ(Written(*form), text) << "written by name while it waits";
    EXPECT_EQ(Written(*ReadForm(Written(*form, TStreamFormat::Binary))), text);

    TForm later;
    const TFinding finding(later);
    TMemoryStream stream("object Later: TForm object B: TButton end end");
    ReadComponent(stream, &later);
    EXPECT_EQ(form->Target(), &later);
    EXPECT_EQ(form->Button(), later.FindComponent("B"));
    EXPECT_EQ(form->Columns()[0].Link(), later.FindComponent("B"));
    EXPECT_EQ(Waiting(*form, "Target"), "");
    EXPECT_EQ(Written(*form), text);
    form->SetTarget(nullptr);
    EXPECT_EQ(Written(*form).find("Target"), std::string::npos);
}

TEST_F(FormBinding, AFormMadeWithoutAFileIsFoundWhenItsMakerSaysSo) {
    const auto form = ReadForm("object F: TForm Target = Later Button = Later.B end");
    TForm later;
    later.SetName("Later");
    const TFinding finding(later);
    EXPECT_EQ(form->Target(), nullptr);
    GlobalFixupReferences();
    EXPECT_EQ(form->Target(), &later);
    EXPECT_EQ(Waiting(*form, "Button"), "Later.B") << "there is no such component yet";
    auto* const button = new TButton(&later);
    button->SetName("B");
    GlobalFixupReferences();
    EXPECT_EQ(form->Button(), button);
}

TEST_F(FormBinding, AReferenceThatGotAnotherTargetKeepsIt) {
    const auto form = ReadForm("object F: TForm Target = Later Button = Later.B end");
    form->SetTarget(form.get());
    DropPendingReference(*form, GetPropInfo(*form, "Button"));
    EXPECT_EQ(Waiting(*form, "Button"), "");
    EXPECT_EQ(Waiting(*form, "Target"), "Later");
    TForm later;
    later.SetName("Later");
    const TFinding finding(later);
    (new TButton(&later))->SetName("B");
    GlobalFixupReferences();
    EXPECT_EQ(form->Target(), form.get());
    EXPECT_EQ(form->Button(), nullptr);
}

TEST_F(FormBinding, AReferenceOfAComponentThatHasGoneWaitsNoMore) {
    auto form =
        ReadForm("object F: TForm Columns = < item Link = Later end > object B: TButton Target = Later end end");
    form->FindComponent("B")->Free();
    form->Columns().Clear();
    TForm later;
    later.SetName("Later");
    const TFinding finding(later);
    GlobalFixupReferences();
    form = ReadForm("object F: TForm Target = Other end");
    form.reset();
    GlobalFixupReferences();
}

TEST_F(FormBinding, AReferenceThatIsReadAgainWaitsForItsLatestName) {
    const auto form = ReadForm("object F: TForm Target = First end");
    TMemoryStream stream("object F: TForm Target = Second end");
    ReadComponent(stream, form.get());
    EXPECT_EQ(Waiting(*form, "Target"), "Second");
    TMemoryStream last("object F: TForm Target = nil end");
    ReadComponent(last, form.get());
    EXPECT_EQ(Waiting(*form, "Target"), "");
}

TEST_F(FormBinding, AWaitingReferenceOfAnotherClassStaysNull) {
    const auto form = ReadForm("object F: TForm Button = Later Target = Later end");
    TForm later;
    later.SetName("Later");
    const TFinding finding(later);
    GlobalFixupReferences();
    EXPECT_EQ(form->Button(), nullptr);
    EXPECT_EQ(form->Target(), &later);
}

TEST_F(FormBinding, ADescendantHoldsTheWaitingReferenceThatDiffers) {
    const auto ancestor = ReadForm("object F: TForm Target = Later Button = Later.B end");
    const auto form = ReadForm("object F: TForm Target = Later Button = Later.C end");
    EXPECT_EQ(Written(*form, TStreamFormat::Text, ancestor.get()),
              "inherited F: TForm\r\n  Button = Later.C\r\nend\r\n");
}

} // namespace
} // namespace kx::sample
