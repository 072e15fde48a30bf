// SPDX-License-Identifier: MIT
// A reader that keeps what it does not know, and what is written of that.

#include "FormFixture.h"

namespace kx::sample {
namespace {

using testing::HasSubstr;

/// Readers that keep what they do not know, as form designers need them.
class FormKeeping : public FormTest {};

// --- Properties

TEST_F(FormKeeping, PropertiesThatNobodyKnowsComeBackWhereTheyStood) {
    ExpectToComeBack(FormOf("First = 1\n"
                            "Caption = 'known'\n"
                            "Small = -1\n"
                            "Large = 5000000000\n"
                            "Exact = 0.1s\n"
                            "Money = 12.3456c\n"
                            "Day = 36526.25d\n"
                            "Number = 1.5\n"
                            "Yes = True\n"
                            "No = False\n"
                            "Nobody = nil\n"
                            "Nothing = Null\n"
                            "Named = alSomewhere\n"
                            "Other = Form2.Images\n"
                            "Text = 'text'\n"
                            "Choice = [one, two]\n"
                            "NoChoice = []\n"
                            "Left = 5\n"
                            "Block = {\n"
                            "  0102FF}\n"
                            "List = (\n"
                            "  'a'\n"
                            "  (\n"
                            "    1\n"
                            "    nil))\n"
                            "Things = <\n"
                            "  item\n"
                            "    A = 1\n"
                            "  end\n"
                            "  item [3]\n"
                            "    B = <\n"
                            "      item\n"
                            "      end>\n"
                            "  end>\n"
                            "Font.Size = 12\n"
                            "Font.Foo.Bar = 3\n"
                            "Font.Foo.Last = 4\n"
                            "Font.Shadow.Unknown = 'x'\n"
                            "Font.Name = 'Tahoma'\n"
                            "HorzScrollBar.Visible = False\n"
                            "OnMouseWheel = FormMouseWheel\n"
                            "object B: TButton\n"
                            "  WordWrap = True\n"
                            "  Caption = 'inside'\n"
                            "end"));
}

TEST_F(FormKeeping, WithoutAskingForItPropertiesThatNobodyKnowsAreErrors) {
    const auto error = [](bool keeps) {
        return ErrorOf<EReadError>([&] {
            ReadForm("object F: TForm\n object B: TButton\n  Font.Foo.Bar = 1\n end\nend",
                     [&](TReader& reader) { reader.SetKeepsUnknown(keeps); });
        });
    };
    EXPECT_EQ(error(false), "Error reading B.Font.Foo.Bar on line 3: Property Font.Foo.Bar does not exist in TButton");
    EXPECT_EQ(error(true), "no error");
    TMemoryStream stream;
    TReader reader(stream);
    EXPECT_FALSE(reader.KeepsUnknown());
    reader.SetKeepsUnknown(true);
    EXPECT_TRUE(reader.KeepsUnknown());
    reader.SetKeepsUnknown(false);
    EXPECT_FALSE(reader.KeepsUnknown());
}

TEST_F(FormKeeping, PropertiesThatCannotBeSetAreKept) {
    ExpectToComeBack(FormOf("ChildCount = 3\nCaption.Length = 5\nFont.Size.Unit = 1"));
}

TEST_F(FormKeeping, ValuesThatNoPropertyTakesAreErrorsUnlessOnErrorLetsThemPass) {
    const std::string text = FormOf("Caption = 'x'\nAlign = alNowhere\nLeft = 'far'\nBig = 7");
    EXPECT_EQ(ErrorOf<EReadError>([&] { ReadKeeping(text); }),
              "Error reading F.Align: Invalid property value: alNowhere is no TAlign on line 3");
    ExpectToComeBack(text, [](TReader& reader) {
        reader.SetOnError([](TReader&, const std::string&, bool& handled) { handled = true; });
    });
}

TEST_F(FormKeeping, AllKindsOfPropertiesComeBackAsTheyStood) {
    std::string text = Lines(RichForm);
    text.replace(text.find("'caf\xC3\xA9 on"), 9, "'caf'#233' on"); // written text is ASCII
    ExpectToComeBack(text);
}

TEST_F(FormKeeping, OrderAndValuesThatAreDefaultsComeBackAsTheyStood) {
    ExpectToComeBack(FormOf("Enabled = True\ncaption = ''\nLeft = 0\nRatio = 1\nAlign = ALNONE\nColor = 255\nTag = 0"));
}

TEST_F(FormKeeping, APropertyThatIsThereTwiceComesBackTwice) {
    const std::string text = FormOf("Left = 1\nCaption = 'a'\nLeft = 2\nThing = 1\nThing = 2");
    ExpectToComeBack(text);
    const auto form = ReadKeeping(text);
    EXPECT_EQ(form->Left(), 2);
    form->SetLeft(3);
    EXPECT_EQ(Written(*form), FormOf("Left = 3\nCaption = 'a'\nThing = 1\nThing = 2"));
}

TEST_F(FormKeeping, WhatHasChangedIsWrittenAtItsPlace) {
    const auto form = ReadKeeping(FormOf("Big = 7\nThing = 1\nLeft = 5\nCaption = 'a'\nOther = 2\nColor = $FF"));
    form->SetCaption("b");
    EXPECT_EQ(Written(*form), FormOf("Big = 7\nThing = 1\nLeft = 5\nCaption = 'b'\nOther = 2\nColor = $FF"));
    form->SetLeft(0); // the default
    EXPECT_EQ(Written(*form), FormOf("Big = 7\nThing = 1\nCaption = 'b'\nOther = 2\nColor = $FF"));
    form->SetLeft(5);
    form->SetCaption("a");
    EXPECT_EQ(Written(*form), FormOf("Big = 7\nThing = 1\nLeft = 5\nCaption = 'a'\nOther = 2\nColor = $FF"));
    form->SetColor(TColor{0});
    EXPECT_EQ(Written(*form), FormOf("Big = 7\nThing = 1\nLeft = 5\nCaption = 'a'\nOther = 2\nColor = clBlack"));
}

TEST_F(FormKeeping, WhatIsNewStandsBehindWhatItFollowsInItsClass) {
    const auto form = ReadKeeping(FormOf("Thing = 1\nBig = 7\nOther = 2\nCaption = 'a'\nLast = 3"));
    form->SetTag(9);         // in front of all others
    form->SetLeft(5);        // behind Caption
    form->SetEnabled(false); // behind Left
    form->SetRatio(0.5);     // behind Big
    EXPECT_EQ(Written(*form), FormOf("Tag = 9\nThing = 1\nBig = 7\nRatio = 0.5\nOther = 2\nCaption = 'a'\nLeft = 5\n"
                                     "Enabled = False\nLast = 3"));
}

TEST_F(FormKeeping, WhatIsNewIsWrittenThoughTheFileHasNothing) {
    const auto form = ReadKeeping("object F: TForm end");
    form->SetCaption("a");
    auto* const button = new TButton(form.get());
    button->SetName("B");
    button->SetParentComponent(form.get());
    EXPECT_EQ(Written(*form), FormOf("Caption = 'a'\nobject B: TButton\nend"));
}

TEST_F(FormKeeping, ItemsKeepWhatNobodyKnowsWhenOthersComeAndGo) {
    const auto form = ReadKeeping(FormOf("Columns = <\n"
                                         "  item\n"
                                         "    Foo = 1\n"
                                         "    Title = 'first'\n"
                                         "  end\n"
                                         "  item\n"
                                         "    Title = 'second'\n"
                                         "    Parts = <\n"
                                         "      item\n"
                                         "        Bar = 2\n"
                                         "      end>\n"
                                         "    Width = 50\n"
                                         "  end\n"
                                         "  item\n"
                                         "    Title = 'third'\n"
                                         "    Foo = 3\n"
                                         "  end>"));
    form->Columns().Delete(0);
    form->Columns()[0].SetTitle("changed");
    form->Columns()[0].Parts()[0].SetWidth(60);
    form->Columns().Add();
    form->Columns()[2].SetIndex(0);
    EXPECT_EQ(Written(*form), FormOf("Columns = <\n"
                                     "  item\n"
                                     "  end\n"
                                     "  item\n"
                                     "    Title = 'changed'\n"
                                     "    Parts = <\n"
                                     "      item\n"
                                     "        Width = 60\n"
                                     "        Bar = 2\n"
                                     "      end>\n"
                                     "    Width = 50\n"
                                     "  end\n"
                                     "  item\n"
                                     "    Title = 'third'\n"
                                     "    Foo = 3\n"
                                     "  end>"));
}

// --- Numbers

constexpr char Spellings[] = "Left = $1A\n"
                             "Big = -$8\n"
                             "Ratio = 1E3\n"
                             "Color = $00FF\n"
                             "Hex = $7fffFFFF\n"
                             "Large = -$8000000000000000\n"
                             "Zeros = 007\n"
                             "Signed = +7\n"
                             "Small = 1.50e-3\n"
                             "Exact = 0.1s\n"
                             "Digits = 0.1000000000000000055511151231257827021181583404541015625\n"
                             "Day = 36526.250d\n"
                             "Money = -922337203685477.5808c\n"
                             "Coin = 12.30c\n"
                             "Minus = -0.0\n"
                             "Nothing = +NaN\n"
                             "Text = '$1A'\n"
                             "List = (\n"
                             "  $A\n"
                             "  (\n"
                             "    1E2\n"
                             "    nil))\n"
                             "Columns = <\n"
                             "  item\n"
                             "    Width = $32\n"
                             "    Foo = $1\n"
                             "  end>\n"
                             "Things = <\n"
                             "  item [3]\n"
                             "    A = $1\n"
                             "    B = <\n"
                             "      item\n"
                             "        C = 1E2\n"
                             "      end>\n"
                             "    D = [one, two]\n"
                             "  end\n"
                             "  item\n"
                             "  end>\n"
                             "object X: TUnknown\n"
                             "  A = $1\n"
                             "  inherited Y: TButton [2]\n"
                             "    Tag = $2\n"
                             "    object Z: TOther\n"
                             "    end\n"
                             "  end\n"
                             "  object V: TButton\n"
                             "  end\n"
                             "end";

TEST_F(FormKeeping, NumbersOfATextComeBackAsTheyAreSpelled) {
    const std::string text = FormOf(Spellings);
    const auto form = ReadKeeping(text);
    EXPECT_EQ(Written(*form), text);
    EXPECT_EQ(Written(*form, TStreamFormat::Binary), ToBinary(text)) << "the binary form of files knows no spelling";
    form->SetLeft(27);
    form->SetColor(TColor{254});
    EXPECT_THAT(Written(*form), HasSubstr("  Left = 27\r\n  Big = -$8\r\n  Ratio = 1E3\r\n  Color = 254\r\n"));
}

TEST_F(FormKeeping, ABinaryFormInMemoryMayHoldTheSpelling) {
    const std::string text = FormOf(Spellings);
    TMemoryStream binary;
    TWriter writer(binary);
    writer.SetNumbers(TFormNumbers::Spelled);
    writer.WriteRootComponent(*ReadKeeping(text));
    EXPECT_NE(binary.Bytes(), ToBinary(text));
    EXPECT_EQ(ToText(binary.Bytes()), text);
    EXPECT_EQ(Written(*ReadKeeping(binary.Bytes())), text);
    EXPECT_EQ(Written(*ReadKeeping(binary.Bytes()), TStreamFormat::Binary), ToBinary(text));
    TMemoryStream source(text);
    TMemoryStream converted;
    ObjectTextToBinary(source, converted, nullptr, TFormNumbers::Spelled);
    EXPECT_EQ(converted.Bytes(), binary.Bytes());
    const auto form = ReadForm("object F: TForm Left = $1A Ratio = 1E3 end");
    EXPECT_EQ(form->Left(), 26);
    EXPECT_EQ(form->Ratio(), 1000);
}

// --- Events

TEST_F(FormKeeping, HandlersThatNoClassHasComeBackByName) {
    const std::string text = FormOf("OnClick = FormWhatever\nColumns = <\n  item\n    OnClick = ItemWhatever\n  end>\n"
                                    "object B: TButton\n  OnClick = Button1Click\nend");
    ExpectToComeBack(text);
    const auto form = ReadKeeping(text);
    form->OnClick()(form.get());
    EXPECT_EQ(form->Clicked, nullptr);
    ASSERT_TRUE(form->OnClick().Target());
    EXPECT_EQ(form->OnClick().Target()->MethodName(), "FormWhatever");
    ButtonOf(*form, "B").OnClick()(form.get());
    EXPECT_EQ(form->Clicked, form.get()) << "what the class has is bound";
    form->SetOnClick(TNotifyEvent::FromTarget(std::make_shared<TMethodName>("Renamed")));
    EXPECT_THAT(Written(*form), HasSubstr("\r\n  OnClick = Renamed\r\n"));
    form->SetOnClick(nullptr);
    EXPECT_EQ(Written(*form).find("Renamed"), std::string::npos);
    EXPECT_THAT(ErrorOf<EReadError>([&] { ReadForm(text); }), HasSubstr("Method FormWhatever not found"));
}

TEST_F(FormKeeping, AHandlerOfAnotherSignatureIsAnErrorAllTheSame) {
    EXPECT_THAT(ErrorOf<EReadError>([] { ReadKeeping("object F: TForm OnClick = FormDropped end"); }),
                HasSubstr("F.OnClick"));
}

TEST_F(FormKeeping, OnFindEventHasTheFirstWordAboutAHandler) {
    const auto form = ReadKeeping("object F: TForm OnClick = Nothing end", [](TReader& reader) {
        reader.SetOnFindEvent([](TReader&, const std::string&, TEventTargetPtr& target, bool& error) {
            EXPECT_TRUE(error);
            EXPECT_FALSE(target);
            error = false;
        });
    });
    EXPECT_FALSE(form->OnClick().Target());
}

TEST_F(FormKeeping, OnFindEventMayKeepANameWithoutAReaderThatKeeps) {
    const std::string text = FormOf("OnClick = Nothing");
    const auto form = ReadForm(text, [](TReader& reader) {
        reader.SetOnFindEvent([](TReader&, const std::string& name, TEventTargetPtr& target, bool& error) {
            target = std::make_shared<TMethodName>(name);
            error = false;
        });
    });
    EXPECT_EQ(Written(*form), text);
}

// --- Names

TEST_F(FormKeeping, ReferencesFollowAComponentThatIsRenamed) {
    const auto form = ReadKeeping(FormOf("Foo = 1\nTarget = F.B\nButton = B\nobject B: TButton\nend"));
    form->FindComponent("B")->SetName("C");
    EXPECT_EQ(Written(*form), FormOf("Foo = 1\nTarget = C\nButton = C\nobject C: TButton\nend"));
}

TEST_F(FormKeeping, ReferencesByTheFormsNameFollowTheFormThatIsRenamed) {
    const std::string columns = "Columns = <\n  item\n    Link = F.B\n    Foo = 1\n  end>\n";
    const std::string text = FormOf("Foo = 1\nTarget = F.B\n" + columns + "object B: TButton\n  Target = F.B\nend");
    ExpectToComeBack(text);
    const auto form = ReadKeeping(text);
    form->SetName("G");
    std::string renamed = FormOf("Foo = 1\nTarget = B\nColumns = <\n  item\n    Link = B\n    Foo = 1\n  end>\n"
                                 "object B: TButton\n  Target = B\nend");
    EXPECT_EQ(Written(*form), renamed.replace(7, 1, "G"));
}

TComponent* Taken = nullptr;

TEST_F(FormKeeping, AFormWhoseNameIsTakenIsWrittenUnderTheNameOfItsFile) {
    TForm other;
    other.SetName("F");
    Taken = &other;
    const TFindGlobalComponent find = [](const std::string& name) { return name == "F" ? Taken : nullptr; };
    RegisterFindGlobalComponentProc(find);
    const std::string text = FormOf("Target = F.B\nobject B: TButton\nend");
    const auto form = ReadKeeping(text);
    UnregisterFindGlobalComponentProc(find);
    EXPECT_EQ(form->Name(), "F_1");
    EXPECT_EQ(Written(*form), text);
    form->SetName("G");
    EXPECT_THAT(Written(*form), HasSubstr("object G: TForm"));
}

// --- The order of components

TEST_F(FormKeeping, ComponentsComeBackInTheOrderOfTheFileUntilTheyAreMoved) {
    const std::string server = "object S: TServer\nend\n";
    const std::string button = "object B: TButton\nend\n";
    const std::string panel = "object P: TPanel\nend\n";
    ExpectToComeBack(FormOf(server + button + panel));
    const auto form = ReadKeeping(FormOf(server + button + panel));
    auto* const added = new TButton(form.get());
    added->SetName("N");
    added->SetParentComponent(form.get());
    EXPECT_EQ(Written(*form), FormOf(server + button + "object N: TButton\nend\n" + panel));
    added->Free();
    ButtonOf(*form, "B").SetParentComponent(form.get()); // to the end of the controls
    EXPECT_EQ(Written(*form), FormOf(panel + button + server));
    form->FindComponent("P")->Free();
    EXPECT_EQ(Written(*form), FormOf(server + button));
}

TEST_F(FormKeeping, AComponentThatMovedIntoAnotherOneStandsWhereItIsThere) {
    const auto form = ReadKeeping(FormOf("object B: TButton\nend\nobject P: TPanel\n  object C: TButton\n  end\nend"));
    ButtonOf(*form, "B").SetParentComponent(form->FindComponent("P"));
    EXPECT_EQ(Written(*form), FormOf("object P: TPanel\n  object C: TButton\n  end\n  object B: TButton\n  end\nend"));
}

TEST_F(FormKeeping, AComponentInsideOneThatHoldsNoneComesBackThere) {
    const std::string text = FormOf("object S: TServer\n"
                                    "  object B: TButton\n"
                                    "  end\n"
                                    "  object T: TServer\n"
                                    "    object U: TServer\n"
                                    "    end\n"
                                    "  end\n"
                                    "end\n"
                                    "object P: TPanel\n"
                                    "  object V: TServer\n"
                                    "  end\n"
                                    "  object C: TButton\n"
                                    "  end\n"
                                    "end");
    ExpectToComeBack(text);
    const auto form = ReadKeeping(text);
    ButtonOf(*form, "B").SetParentComponent(form->FindComponent("P"));
    form->FindComponent("S")->Free();
    EXPECT_EQ(Written(*form), FormOf("object P: TPanel\n"
                                     "  object V: TServer\n"
                                     "  end\n"
                                     "  object B: TButton\n"
                                     "  end\n"
                                     "  object C: TButton\n"
                                     "  end\n"
                                     "end\n"
                                     "object T: TServer\n"
                                     "  object U: TServer\n"
                                     "  end\n"
                                     "end"))
        << "the order of the file goes with the first control that comes between";
}

// --- Errors

TEST_F(FormKeeping, WhatIsKeptIsStillChecked) {
    const auto keeping = [](const std::string& form) { return ErrorOf<EReadError>([&] { ReadKeeping(form); }); };
    const std::string head("TPF0\5TForm\1F", 12);
    EXPECT_THAT(keeping(head + "\3Foo\x16"), HasSubstr("Unknown value type 22 at offset 16"));
    EXPECT_THAT(keeping(head + "\3Foo\6\5ab"), HasSubstr("Unexpected end of the form at offset"));
    EXPECT_THAT(keeping(head + "\3Foo" + std::string(200, '\1')), HasSubstr("nested too deeply"));
    std::string inside = head + std::string("\0", 1);
    for (int i = 0; i < 200; ++i) {
        inside += std::string("\2TX\0\0", 5);
    }
    EXPECT_THAT(keeping(inside), HasSubstr("nested too deeply"));
}

TEST_F(FormKeeping, AFormThatFailsLeavesItsRootAsItWas) {
    TForm form;
    TMemoryStream stream("object G: TX Foo = 1 object B: TButton end Left = ");
    EXPECT_THROW(ReadComponent(stream, &form, [](TReader& reader) { reader.SetKeepsUnknown(true); }), EParserError);
    EXPECT_EQ(Written(form), "object TForm\r\nend\r\n");
    TMemoryStream again("object G: TX Foo = 1 object B: TButton Left = 'x' end end");
    EXPECT_THROW(ReadComponent(again, &form, [](TReader& reader) { reader.SetKeepsUnknown(true); }), EReadError);
    form.SetName("");
    EXPECT_EQ(Written(form), "object TForm\r\nend\r\n");
}

} // namespace
} // namespace kx::sample
