// SPDX-License-Identifier: MIT
// Components whose classes are not there, and those that stand in for them.

#include "FormFixture.h"

namespace kx::sample {
namespace {

using testing::HasSubstr;

/// Forms and components whose classes are not there, read by who keeps what he does not know.
class FormPlaceholders : public FormTest {};

// --- Classes that are not there

TEST_F(FormPlaceholders, ComponentsOfUnknownClassesComeBackWithAllThatIsInside) {
    const std::string text = FormOf("object B: TButton\n"
                                    "end\n"
                                    "object Pages: TPageControl\n"
                                    "  Left = 5\n"
                                    "  Top = 500000\n"
                                    "  Tag = 7\n"
                                    "  ActivePage = Page1\n"
                                    "  Tabs.Strings = (\n"
                                    "    'a')\n"
                                    "  object Page1: TTabSheet\n"
                                    "    Caption = 'one'\n"
                                    "    object Inner: TButton\n"
                                    "    end\n"
                                    "  end\n"
                                    "  inline TFrame9\n"
                                    "    inherited X: TButton [2]\n"
                                    "    end\n"
                                    "  end\n"
                                    "end\n"
                                    "object P: TPanel\n"
                                    "  inline Frame1: TFrame1 [1]\n"
                                    "    Foo = 1\n"
                                    "    inherited X: TEdit\n"
                                    "    end\n"
                                    "  end\n"
                                    "end");
    ExpectToComeBack(text);
    const auto form = ReadKeeping(text);
    TComponent* const pages = form->FindComponent("Pages");
    ASSERT_TRUE(pages);
    EXPECT_TRUE(pages->IsPlaceholder());
    EXPECT_EQ(pages->ClassName(), "TComponent");
    EXPECT_EQ(pages->FormClassName(), "TPageControl");
    EXPECT_EQ(pages->Tag(), 7);
    EXPECT_EQ(form->FindComponent("Inner"), nullptr);
    EXPECT_FALSE(form->FindComponent("B")->IsPlaceholder());
    EXPECT_EQ(form->FindComponent("B")->FormClassName(), "TButton");
    pages->SetName("Sheets");
    pages->SetTag(8);
    std::string changed = text;
    changed.replace(changed.find("Pages"), 5, "Sheets");
    changed.replace(changed.find("Tag = 7"), 7, "Tag = 8");
    EXPECT_EQ(Written(*form), changed);
    pages->Free();
    EXPECT_EQ(Written(*form).find("TabSheet"), std::string::npos);
}

TEST_F(FormPlaceholders, OnPlaceholderNamesTheClassThatStandsIn) {
    const auto standIn = [](TReader& reader) {
        reader.SetOnPlaceholder([](TReader& r, const std::string& name, const TClass*& cls) {
            EXPECT_EQ(name, "TGauge");
            EXPECT_EQ(cls, &TComponent::StaticClass());
            EXPECT_TRUE(r.Root());
            cls = &TPanel::StaticClass();
        });
    };
    const std::string gauge = "object P: TPanel\n"
                              "  object G: TGauge\n"
                              "    Left = 5\n"
                              "    Progress = 30\n"
                              "    Caption = 55\n"
                              "    Columns = <\n"
                              "      item\n"
                              "        Width = 'wide'\n"
                              "      end>\n"
                              "    object Needle: TNeedle\n"
                              "    end\n"
                              "  end\n"
                              "  object B: TButton\n"
                              "  end\n"
                              "end\n";
    ExpectToComeBack(FormOf(gauge + "object S: TServer\nend"), standIn);
    const auto form = ReadKeeping(FormOf(gauge), standIn);
    auto* const panel = dynamic_cast<TPanel*>(form->FindComponent("G"));
    ASSERT_TRUE(panel);
    EXPECT_EQ(panel->Left(), 5);
    EXPECT_EQ(panel->GetParentComponent(), form->FindComponent("P"));
    EXPECT_TRUE(panel->IsPlaceholder());
    panel->SetLeft(6);
    std::string moved = FormOf(gauge);
    EXPECT_EQ(Written(*form), moved.replace(moved.find("= 5"), 3, "= 6"));
}

TEST_F(FormPlaceholders, WithoutAskingForItUnknownClassesAreErrors) {
    const std::string text = "object F: TForm\n object X: TNothing\n end\nend";
    EXPECT_THROW(ReadForm(text), EClassNotFound);
    EXPECT_EQ(ReadKeeping(text)->ComponentCount(), 1);
}

TEST_F(FormPlaceholders, ReferencesToAPlaceholderComeBack) {
    const std::string text = FormOf("Target = X\n"
                                    "Button = X\n"
                                    "Service = X\n"
                                    "object X: TNothing\n"
                                    "  object Inner: TButton\n"
                                    "  end\n"
                                    "end\n"
                                    "object B: TButton\n"
                                    "  Target = Inner\n"
                                    "end");
    ExpectToComeBack(text);
    const auto form = ReadKeeping(text);
    EXPECT_EQ(form->Target(), form->FindComponent("X"));
    EXPECT_EQ(form->Button(), nullptr);
    form->SetButton(&ButtonOf(*form, "B"));
    EXPECT_THAT(Written(*form), HasSubstr("\r\n  Button = B\r\n"));
    EXPECT_THAT(ErrorOf<EReadError>([] { ReadKeeping(FormOf("Button = P\nobject P: TPanel\nend")); }),
                HasSubstr("Invalid class typecast"));
}

TEST_F(FormPlaceholders, ComponentsOfAnAncestorThatIsNotThereComeBack) {
    const std::string text = FormOf("inherited B: TButton [2]\n"
                                    "  Caption = 'changed'\n"
                                    "  Left = 0\n"
                                    "  object C: TButton\n"
                                    "  end\n"
                                    "end\n"
                                    "inherited D: TButton\n"
                                    "end");
    ExpectToComeBack(text);
    const auto form = ReadKeeping(text);
    EXPECT_TRUE(form->FindComponent("B")->IsPlaceholder());
    EXPECT_EQ(form->FindComponent("B")->FormClassName(), "TButton");
    EXPECT_THAT(ErrorOf<EReadError>([&] { ReadForm(text); }), HasSubstr("Ancestor for 'B' not found"));
}

// --- The form itself

TEST_F(FormPlaceholders, ARootKeepsTheClassNameOfItsFile) {
    for (const std::string head : {"object MainForm: TMainForm", "inherited MainForm: TMainForm", "inline X: TX",
                                   "object MainForm: TMainForm [3]", "object tform"}) {
        const std::string text = head + "\r\n  Foo = 1\r\n  object B: TButton\r\n  end\r\nend\r\n";
        TForm form;
        TMemoryStream stream(text);
        ReadComponent(stream, &form, [](TReader& reader) { reader.SetKeepsUnknown(true); });
        EXPECT_EQ(Written(form), text);
        EXPECT_EQ(Written(form, TStreamFormat::Binary), ToBinary(text));
        EXPECT_FALSE(form.IsPlaceholder());
        EXPECT_TRUE(form.FindComponent("B"));
    }
}

TEST_F(FormPlaceholders, ARootOfAnUnknownClassIsOfTheClassThatOnPlaceholderNames) {
    const std::string text = "object MainForm: TMainForm\r\n  Left = 3\r\n  object B: TButton\r\n  end\r\nend\r\n";
    const auto plainForm = [](TReader& reader) {
        reader.SetOnPlaceholder([](TReader& r, const std::string&, const TClass*& cls) {
            EXPECT_EQ(r.Root(), nullptr);
            EXPECT_EQ(cls, nullptr);
            cls = &TForm::StaticClass();
        });
    };
    ExpectToComeBack(text, plainForm);
    const auto form = ReadKeeping(text, plainForm);
    EXPECT_EQ(form->FormClassName(), "TMainForm");
    EXPECT_EQ(form->ClassName(), "TForm");
    EXPECT_EQ(form->Left(), 3);
    EXPECT_EQ(ErrorOf<EClassNotFound>([&] { ReadKeeping(text); }),
              "Error reading TMainForm on line 1: Class TMainForm not found");
    EXPECT_THROW(ReadForm(text, plainForm), EFilerError);
}

TEST_F(FormPlaceholders, AResourceIsNamedForTheClassOfTheFile) {
    TForm form;
    TMemoryStream stream("object MainForm: TMainForm end");
    ReadComponent(stream, &form, [](TReader& reader) { reader.SetKeepsUnknown(true); });
    EXPECT_THAT(Written(form, TStreamFormat::Resource), HasSubstr("TMAINFORM"));
}

TEST_F(FormPlaceholders, AClassNameTooLongForAFormIsAnErrorOfReading) {
    TMemoryStream stream(std::string("TPF0\xEF") + std::string(239, 'x') + std::string("\0\0\0", 3));
    TForm form;
    TReader reader(stream);
    reader.SetKeepsUnknown(true);
    EXPECT_EQ(reader.ReadRootComponent(&form), &form);
    EXPECT_EQ(form.FormClassName().size(), 239u);
    EXPECT_EQ(Written(form, TStreamFormat::Binary), stream.Bytes());
}

// --- Inherited forms

TEST_F(FormPlaceholders, ADescendantHoldsWhatItsOwnFileHolds) {
    const std::string base = FormOf("Caption = 'base'\n"
                                    "Foo = 1\n"
                                    "object P: TPanel\n"
                                    "  Bar = 2\n"
                                    "  object B: TButton\n"
                                    "    Left = 5\n"
                                    "  end\n"
                                    "end\n"
                                    "object X: TNothing\n"
                                    "  object Inner: TButton\n"
                                    "  end\n"
                                    "end");
    const std::string derived = "inherited F: TDerived\r\n"
                                "  Caption = 'base'\r\n"
                                "  inherited P: TPanel\r\n"
                                "    inherited B: TButton [0]\r\n"
                                "      Caption = 'derived'\r\n"
                                "      Foo = 2\r\n"
                                "    end\r\n"
                                "    object C: TButton\r\n"
                                "    end\r\n"
                                "  end\r\n"
                                "  inherited X: TNothing\r\n"
                                "    Thing = 1\r\n"
                                "    inherited Inner: TButton\r\n"
                                "      Left = 1\r\n"
                                "    end\r\n"
                                "  end\r\n"
                                "end\r\n";
    const auto read = [](TForm& form, const std::string& text) {
        TMemoryStream stream(text);
        ReadComponent(stream, &form, [](TReader& reader) { reader.SetKeepsUnknown(true); });
    };
    TForm ancestor;
    read(ancestor, base);
    TForm form;
    {
        TGlobalLoading loading;
        read(form, base);
        read(form, derived);
        loading.NotifyLoaded();
    }
    EXPECT_EQ(Written(form, TStreamFormat::Text, &ancestor), derived);
    EXPECT_EQ(Written(form), derived) << "what the ancestor was is kept too";
    EXPECT_TRUE(form.FindComponent("X")->IsPlaceholder());
    EXPECT_EQ(form.FindComponent("Inner"), nullptr) << "what is inside a placeholder stays unread";
    ButtonOf(form, "B").SetLeft(0); // not what the ancestor has
    form.SetLeft(9);
    std::string changed = derived;
    changed.replace(changed.find("      Foo = 2"), 0, "      Left = 0\r\n");
    changed.replace(changed.find("  inherited P"), 0, "  Left = 9\r\n");
    EXPECT_EQ(Written(form, TStreamFormat::Text, &ancestor), changed);
    EXPECT_EQ(Written(ancestor), base);
}

TEST_F(FormPlaceholders, WhatTheClassMakesAndTheFileDoesNotNameIsNotWrittenUntilItChanges) {
    TForm form;
    auto* const made = new TButton(&form);
    made->SetName("Made");
    made->SetParentComponent(&form);
    made->SetCaption("by the class");
    const std::string text = FormOf("object B: TButton\nend");
    TMemoryStream stream(text);
    ReadComponent(stream, &form, [](TReader& reader) { reader.SetKeepsUnknown(true); });
    EXPECT_EQ(Written(form), text);
    made->SetLeft(5);
    EXPECT_EQ(Written(form), FormOf("object Made: TButton\n  Left = 5\nend\nobject B: TButton\nend"));
}

} // namespace
} // namespace kx::sample
