#include "FormFixture.h"

namespace kx::sample {
namespace {

using testing::HasSubstr;

/// Readers that keep what they do not know, as form designers need them.
class FormKeeping : public FormTest {};

/// A form's text with these lines inside, two blanks in front of each
std::string FormOf(std::string_view lines) {
    std::string text = "object F: TForm\r\n";
    for (size_t start = 0; start < lines.size();) {
        const size_t end = std::min(lines.find('\n', start), lines.size());
        text += "  " + std::string(lines.substr(start, end - start)) + "\r\n";
        start = end + 1;
    }
    return text + "end\r\n";
}

void ExpectToComeBack(const std::string& text, const std::function<void(TReader&)>& prepare = {}) {
    const std::string binary = ToBinary(text);
    EXPECT_EQ(Written(*ReadKeeping(text, prepare)), text);
    EXPECT_EQ(Written(*ReadKeeping(binary, prepare)), text);
    EXPECT_EQ(Written(*ReadKeeping(binary, prepare), TStreamFormat::Binary), binary);
}

TButton& ButtonOf(TForm& form, std::string_view name) { return dynamic_cast<TButton&>(*form.FindComponent(name)); }

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
    EXPECT_EQ(error(false), "Error reading B.Font.Foo.Bar on line 3: Property Font.Foo.Bar does not exist");
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
    text.replace(text.find("'It'#39's '"), 11, "'It''s '");
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
    EXPECT_EQ(Written(*form), FormOf("Big = 7\nThing = 1\nLeft = 5\nCaption = 'b'\nOther = 2\nColor = 255"));
    form->SetLeft(0); // the default
    EXPECT_EQ(Written(*form), FormOf("Big = 7\nThing = 1\nCaption = 'b'\nOther = 2\nColor = 255"));
    form->SetLeft(5);
    form->SetCaption("a");
    EXPECT_EQ(Written(*form), FormOf("Big = 7\nThing = 1\nLeft = 5\nCaption = 'a'\nOther = 2\nColor = 255"));
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
    form->Columns().Column(0).SetTitle("changed");
    form->Columns().Column(0).Parts().Column(0).SetWidth(60);
    form->Columns().Add();
    form->Columns().Column(2).SetIndex(0);
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

// --- Classes that are not there

TEST_F(FormKeeping, ComponentsOfUnknownClassesComeBackWithAllThatIsInside) {
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

TEST_F(FormKeeping, OnPlaceholderNamesTheClassThatStandsIn) {
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

TEST_F(FormKeeping, WithoutAskingForItUnknownClassesAreErrors) {
    const std::string text = "object F: TForm\n object X: TNothing\n end\nend";
    EXPECT_THROW(ReadForm(text), EClassNotFound);
    EXPECT_EQ(ReadKeeping(text)->ComponentCount(), 1);
}

TEST_F(FormKeeping, ReferencesToAPlaceholderComeBack) {
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

TEST_F(FormKeeping, ComponentsOfAnAncestorThatIsNotThereComeBack) {
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

TEST_F(FormKeeping, ARootKeepsTheClassNameOfItsFile) {
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

TEST_F(FormKeeping, ARootOfAnUnknownClassIsOfTheClassThatOnPlaceholderNames) {
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

TEST_F(FormKeeping, AResourceIsNamedForTheClassOfTheFile) {
    TForm form;
    TMemoryStream stream("object MainForm: TMainForm end");
    ReadComponent(stream, &form, [](TReader& reader) { reader.SetKeepsUnknown(true); });
    EXPECT_THAT(Written(form, TStreamFormat::Resource), HasSubstr("TMAINFORM"));
}

TEST_F(FormKeeping, AClassNameTooLongForAFormIsAnErrorOfReading) {
    TMemoryStream stream(std::string("TPF0\xEF") + std::string(239, 'x') + std::string("\0\0\0", 3));
    TForm form;
    TReader reader(stream);
    reader.SetKeepsUnknown(true);
    EXPECT_EQ(reader.ReadRootComponent(&form), &form);
    EXPECT_EQ(form.FormClassName().size(), 239u);
    EXPECT_EQ(Written(form, TStreamFormat::Binary), stream.Bytes());
}

// --- Inherited forms

TEST_F(FormKeeping, ADescendantHoldsWhatItsOwnFileHolds) {
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

TEST_F(FormKeeping, WhatTheClassMakesAndTheFileDoesNotNameIsNotWrittenUntilItChanges) {
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
