// SPDX-License-Identifier: MIT
// Damaged form files are errors, and nothing worse.

#include "Allocations.h"
#include "FormFixture.h"

namespace kx::sample {
namespace {

using testing::HasSubstr;

/// Whatever is read, what is left behind is nothing: see FormTest::TearDown.
class FormBadInput : public FormTest {};

/// A little form that has a component inside, a collection, a set, a reference and an event.
constexpr std::string_view SmallForm = "object F: TForm Caption = 'ab' Options = [opWrap] Columns = < item Title = 'x' "
                                       "Link = B end > Target = B OnClick = Button1Click Numbers = (1 2) "
                                       "object B: TButton Left = 300 Ratio = 0.5 Picture = {0102} end end";

/// Reads, expecting success or an error of the framework. What was read must be written and read again alike.
void ReadAnything(const std::string& form) {
    std::string written;
    try {
        TMemoryStream stream(form);
        const TOwned<TComponent> root(ReadComponent(stream, nullptr));
        written = Written(*root, TStreamFormat::Binary);
    } catch (const Exception& error) {
        EXPECT_FALSE(error.Message().empty());
        return;
    }
    TMemoryStream stream(written);
    const TOwned<TComponent> again(ReadComponent(stream, nullptr));
    EXPECT_EQ(Written(*again, TStreamFormat::Binary), written);
}

/// Converts a binary form, expecting text that gives itself again, or an error of the framework.
void ConvertAnything(const std::string& form) {
    std::string text;
    try {
        text = ToText(form);
    } catch (const Exception&) {
        return;
    }
    EXPECT_EQ(ToText(ToBinary(text)), text);
}

TEST_F(FormBadInput, ABinaryFormCutOffAnywhereIsAnError) {
    const std::string form = Written(*ReadForm(RichForm), TStreamFormat::Binary);
    for (size_t size = 0; size < form.size(); ++size) {
        TMemoryStream stream(form.substr(0, size));
        TForm root;
        auto* const kept = new TButton(&root);
        const std::string error = ErrorOf<EReadError>([&] { TReader(stream).ReadRootComponent(&root); });
        EXPECT_THAT(error, HasSubstr("at offset ")) << size;
        ASSERT_EQ(root.ComponentCount(), 1) << size;
        EXPECT_EQ(root.Components(0), kept);
        EXPECT_EQ(root.ChildCount(), 0);
        EXPECT_EQ(root.Button1, nullptr);
        EXPECT_TRUE((root.ComponentState() - TComponentState{csInline}).IsEmpty()) << size;
        TMemoryStream again(form.substr(0, size));
        EXPECT_THROW(ReadComponent(again, nullptr), Exception) << size;
        EXPECT_THROW(ToText(form.substr(0, size)), EReadError) << size;
    }
}

TEST_F(FormBadInput, ATextFormCutOffAnywhereIsAnError) {
    const std::string form(RichForm.substr(0, RichForm.find_last_of('d') + 1));
    ASSERT_TRUE(form.ends_with("end"));
    for (size_t size = 0; size < form.size(); ++size) {
        TMemoryStream stream(form.substr(0, size));
        TMemoryStream binary;
        const std::string error = ErrorOf<EParserError>([&] { ObjectTextToBinary(stream, binary); });
        EXPECT_THAT(error, HasSubstr(" on line ")) << size;
    }
}

TEST_F(FormBadInput, EverySingleByteOfABinaryFormMayBeWrong) {
    const std::string form = ToBinary(SmallForm);
    for (size_t i = 0; i < form.size(); ++i) {
        for (int value = 0; value < 256; ++value) {
            std::string mutated = form;
            mutated[i] = static_cast<char>(value);
            ReadAnything(mutated);
            ConvertAnything(mutated);
        }
    }
}

TEST_F(FormBadInput, EverySingleByteOfATextFormMayBeWrong) {
    for (size_t i = 0; i < SmallForm.size(); ++i) {
        for (int value = 0; value < 256; ++value) {
            std::string mutated(SmallForm);
            mutated[i] = static_cast<char>(value);
            ReadAnything(mutated);
        }
    }
}

TEST_F(FormBadInput, EveryByteOfAFormMayBeMissingOrDoubled) {
    const std::string form = ToBinary(SmallForm);
    for (size_t i = 0; i < form.size(); ++i) {
        ReadAnything(form.substr(0, i) + form.substr(i + 1));
        ReadAnything(form.substr(0, i) + form.substr(i, 1) + form.substr(i));
    }
    for (size_t i = 0; i < SmallForm.size(); ++i) {
        ReadAnything(std::string(SmallForm.substr(0, i)) + std::string(SmallForm.substr(i + 1)));
    }
}

// --- Lengths and nesting

std::string FormWithCaption(const std::string& value) {
    return std::string("TPF0\5TForm\1F\7Caption", 20) + value + std::string(2, '\0');
}

TEST_F(FormBadInput, AbsurdLengthsAreErrorsAndAllocateNothing) {
    for (const char type : {char(vaLString), char(vaUTF8String), char(vaWString), char(vaBinary)}) {
        for (const std::string length : {"\xFF\xFF\xFF\xFF", "\xFF\xFF\xFF\x7F", "\xFF\xFF\xFF\x0F"}) {
            const std::string form = FormWithCaption(type + length + "abc");
            const TAllocations allocations;
            EXPECT_THAT(ErrorOf<EReadError>([&] { ReadForm(form); }), HasSubstr("Error reading F.Caption"))
                << int(type);
            EXPECT_THAT(ErrorOf<EReadError>([&] { ToText(form); }), HasSubstr("The length ")) << int(type);
            EXPECT_THAT(ErrorOf<EReadError>([&] {
                            ReadForm(form, [](TReader& reader) {
                                reader.SetOnError([](TReader&, const std::string&, bool& handled) { handled = true; });
                            });
                        }),
                        HasSubstr("The length "));
            EXPECT_LT(allocations.Largest(), 10000u);
            EXPECT_LT(allocations.Total(), 200000u);
        }
    }
}

TEST_F(FormBadInput, DeepNestingIsAnErrorInText) {
    std::string components;
    std::string lists = "object F: TForm A = ";
    std::string collections = "object F: TForm A = ";
    std::string columns = "object F: TForm Columns = ";
    for (int i = 0; i < 10000; ++i) {
        components += "object P" + IntToStr(i) + ": TPanel\n";
        lists += "(";
        collections += "<item A = ";
        columns += "<item Parts = ";
    }
    for (const std::string& text : {components, lists, collections, columns}) {
        EXPECT_THAT(ErrorOf<EParserError>([&] { ReadForm(text); }), HasSubstr("nested too deeply on line "));
    }
}

TEST_F(FormBadInput, DeepNestingIsAnErrorInTheBinaryForm) {
    std::string components = "TPF0";
    std::string lists = FormWithCaption("").substr(0, 20);
    std::string columns("TPF0\5TForm\1F\7Columns", 20);
    for (int i = 0; i < 10000; ++i) {
        components += std::string("\6TPanel\0\0", 9);
        lists += "\1";
        columns += std::string("\x0E\1\5Parts", 8);
    }
    const auto skipUnknown = [](TReader& reader) {
        reader.SetOnError([](TReader&, const std::string&, bool& handled) { handled = true; });
    };
    EXPECT_THAT(ErrorOf<EReadError>([&] { ReadForm(components); }), HasSubstr("nested too deeply at offset "));
    EXPECT_THAT(ErrorOf<EReadError>([&] { ReadForm(columns); }), HasSubstr("nested too deeply at offset "));
    EXPECT_THAT(ErrorOf<EReadError>([&] { ReadForm(lists, skipUnknown); }), HasSubstr("nested too deeply at offset "));
    for (const std::string& form : {components, lists, columns}) {
        EXPECT_THAT(ErrorOf<EReadError>([&] { ToText(form); }), HasSubstr("nested too deeply at offset "));
    }
}

TEST_F(FormBadInput, NestingUpToTheLimitIsReadAndWritten) {
    const auto nested = [](int depth) {
        std::string text = "object F: TForm\n";
        for (int i = 1; i < depth; ++i) {
            text += "object P" + IntToStr(i) + ": TPanel\n";
        }
        for (int i = 0; i < depth; ++i) {
            text += "end\n";
        }
        return text;
    };
    const auto form = ReadForm(nested(MaxFormNesting));
    const std::string binary = Written(*form, TStreamFormat::Binary);
    EXPECT_EQ(Written(*ReadForm(binary), TStreamFormat::Binary), binary);
    EXPECT_THROW(ReadForm(nested(MaxFormNesting + 1)), EParserError);

    auto* deepest = dynamic_cast<TControl*>(form->FindComponent("P" + IntToStr(MaxFormNesting - 1)));
    ASSERT_TRUE(deepest);
    (new TPanel(form.get()))->SetParentComponent(deepest);
    TMemoryStream stream;
    EXPECT_THAT(ErrorOf<EWriteError>([&] { WriteComponent(stream, *form, TStreamFormat::Binary); }),
                HasSubstr("nested too deeply"));
    EXPECT_EQ(stream.Size(), 0);
}

TEST_F(FormBadInput, MemoryIsBoundedByTheSizeOfTheForm) {
    // The worst that bytes can ask for are items: two bytes for each.
    std::string form("TPF0\5TForm\1F\7Columns\x0E", 21);
    for (int i = 0; i < 10000; ++i) {
        form += std::string("\1\0", 2);
    }
    const TAllocations allocations;
    EXPECT_THROW(ReadForm(form), EReadError); // cut off
    EXPECT_LT(allocations.Total(), form.size() * (sizeof(TColumn) + sizeof(TColumns)) * 2);
}

TEST_F(FormBadInput, TheMemoryThatReadingTakesGrowsAsTheForm) {
    const auto total = [](int count) {
        std::string text = "object F: TForm\n";
        for (int i = 0; i < count; ++i) {
            text += "object B" + IntToStr(i) + ": TButton\n Caption = 'x'\n Target = B" + IntToStr(i / 2) + "\nend\n";
        }
        text += "end";
        const TAllocations allocations;
        const auto form = ReadForm(text);
        EXPECT_EQ(form->ComponentCount(), count);
        return static_cast<double>(allocations.Total());
    };
    const double small = total(1000);
    EXPECT_LT(total(4000), small * 5);
}

// --- Errors

std::string ReadErrorOf(const std::string& text) {
    return ErrorOf<EFilerError>([&] { ReadForm(text); });
}

TEST_F(FormBadInput, UnknownClassesAreErrors) {
    EXPECT_EQ(ErrorOf<EClassNotFound>([] { ReadForm("\nobject F: TNothing\nend"); }),
              "Error reading TNothing on line 2: Class TNothing not found");
    EXPECT_EQ(ErrorOf<EClassNotFound>(
                  [] { ReadForm("object F: TForm\n object B: TButton\n end\n object X: TNothing\nend end"); }),
              "Error reading X on line 4: Class TNothing not found");
    EXPECT_EQ(ErrorOf<EClassNotFound>([] { ReadForm(ToBinary("object F: TForm object X: TNothing end end")); }),
              "Error reading X at offset 13: Class TNothing not found");
}

TEST_F(FormBadInput, ClassesThatCannotBeCreatedAreErrors) {
    EXPECT_EQ(ReadErrorOf("object F: TForm\n object X: TControl\n end\nend"),
              "Error reading X on line 2: Class TControl cannot be created by name");
}

TEST_F(FormBadInput, UnknownPropertiesAreErrors) {
    EXPECT_EQ(ReadErrorOf("object F: TForm\n object B: TButton\n Wdith = 1\n end\nend"),
              "Error reading B.Wdith on line 3: Property Wdith does not exist in TButton");
    EXPECT_EQ(ReadErrorOf("object F: TForm\n Font.Colour = 1\nend"),
              "Error reading F.Font.Colour on line 2: Property Font.Colour does not exist in TForm");
    EXPECT_EQ(ReadErrorOf("object F: TForm\n Caption.Length = 1\nend"),
              "Error reading F.Caption.Length on line 2: Property Caption has no properties of its own");
    EXPECT_EQ(ReadErrorOf("object F: TForm\n Columns = <\n item\n Heigth = 1\n end>\nend"),
              "Error reading TColumns[0].Heigth on line 4: Property Heigth does not exist in TColumn");
    EXPECT_EQ(ReadErrorOf("object F: TForm\n ChildCount = 1\nend"),
              "Error reading F.ChildCount on line 2: Property ChildCount is read-only");
    EXPECT_EQ(ErrorOf<EReadError>([] { ReadForm(ToBinary("object F: TForm Nothing = 1 end")); }),
              "Error reading F.Nothing at offset 12: Property Nothing does not exist in TForm");
}

TEST_F(FormBadInput, ValuesOfTheWrongTypeAreErrors) {
    const std::vector<std::pair<std::string, std::vector<std::string>>> accepted{
        {"Left", {"1", "-2147483648"}},
        {"Big", {"1", "-2147483648", "5000000000"}},
        {"Ratio", {"1", "-2147483648", "5000000000", "1.5", "1.5s", "1.5c", "1.5d"}},
        {"Caption", {"'x'", "'long'", "'\xC3\xA9'"}},
        {"Key", {"'x'", "'\xC3\xA9'"}},
        {"Enabled", {"True", "False"}},
        {"Align", {"alTop"}},
        {"Options", {"[]", "[opLast]"}},
        {"Color", {"1", "clRed", "-2147483648"}},
        {"Target", {"nil", "clRed", "alTop"}},
        {"Service", {"nil", "clRed", "alTop"}},
        {"OnClick", {"nil"}},
        {"Font", {}},
        {"Columns", {"<>"}},
        {"Items.Strings", {"()", "('a')"}},
        {"Picture", {"{01}"}},
        {"Numbers", {"()", "(1)"}},
        {"Font.Size", {"1", "-2147483648"}}};
    const std::vector<std::string> values{"1",     "-2147483648", "5000000000", "1.5",      "1.5s",      "1.5c", "1.5d",
                                          "'x'",   "'long'",      "'\xC3\xA9'", "True",     "False",     "nil",  "Null",
                                          "alTop", "clRed",       "[]",         "[opLast]", "[clRed]",   "<>",   "()",
                                          "('a')", "(1)",         "(True)",     "{01}",     "<item end>"};
    for (const auto& [name, good] : accepted) {
        for (const std::string& value : values) {
            const std::string text = "object F: TForm\n\n " + name + " = " + value + "\nend";
            const std::string error = ReadErrorOf(text);
            const bool isGood = std::count(good.begin(), good.end(), value) > 0;
            if (isGood || (name == "Columns" && value == "<item end>")) {
                EXPECT_EQ(error, "no error") << text;
            } else {
                EXPECT_THAT(error, AllOf(HasSubstr("Error reading F." + name), HasSubstr("on line 3"))) << text;
            }
        }
    }
}

TEST_F(FormBadInput, ValuesOutOfRangeAreErrors) {
    EXPECT_THAT(ReadErrorOf("object F: TForm\n Left = 2147483648\nend"), HasSubstr("F.Left on line 2"));
    EXPECT_THAT(ReadErrorOf("object F: TForm\n Align = alNowhere\nend"),
                HasSubstr("F.Align: Invalid property value: alNowhere is no TAlign on line 2"));
    EXPECT_THAT(ReadErrorOf("object F: TForm\n Numbers = (1\n 3000000000)\nend"),
                HasSubstr("F.Numbers: The integer 3000000000 is out of range on line 3"));
}

TEST_F(FormBadInput, APropertyWithoutANameIsAnErrorAndItsValueIsNotTakenForMore) {
    const auto form = [](const std::string& name) {
        return std::string("TPF0\5TForm\1F", 12) + static_cast<char>(name.size()) + name +
               std::string("\6\1x\0\0", 5); // the string "x", the ends of both lists
    };
    EXPECT_EQ(ReadErrorOf(form("Caption")), "no error");
    EXPECT_EQ(ReadErrorOf(form("Font.")), "Error reading F.Font. at offset 12: Property Font. does not exist in TForm");
    EXPECT_EQ(ReadErrorOf(form("Font.Shadow.")),
              "Error reading F.Font.Shadow. at offset 12: Property Font.Shadow. does not exist in TForm");
    EXPECT_EQ(ReadErrorOf(form(".")), "Error reading F.. at offset 12: Property . does not exist in TForm");

    // Skipped, it takes its value with it.
    TMemoryStream stream(std::string("TPF0\5TForm\1F\5Font.\6\1x\4Left\2\7\0\0", 30));
    const TOwned<TForm> read(dynamic_cast<TForm*>(ReadComponent(stream, nullptr, [](TReader& reader) {
        reader.SetOnError([](TReader&, const std::string&, bool& handled) { handled = true; });
    })));
    EXPECT_EQ(read->Left(), 7);
}

TEST_F(FormBadInput, AReferenceOfACollectionThatALaterValueFreedIsForgotten) {
    // Replaces its columns whenever it reads them.
    class TReplacing : public TControl {
    public:
        using TControl::TControl;
        void DefineProperties(TFiler& filer) override {
            filer.DefineProperty(
                "Own",
                [this](TReader& reader) {
                    Own = std::make_unique<TColumns>();
                    reader.ReadValue();
                    reader.ReadCollection(*Own);
                },
                {}, false);
        }
        std::unique_ptr<TColumns> Own;
        static const TClass& StaticClass() {
            static const TClassBuilder<TReplacing> cls("TReplacing", TControl::StaticClass(),
                                                       [](auto& c) { c.Creatable(); });
            return cls.Class();
        }
        const TClass& ClassType() const override { return StaticClass(); }
    };
    RegisterClasses<TReplacing>();
    const auto form = ReadForm("object F: TForm object R: TReplacing Own = < item Link = A end >"
                               " Own = < item Link = B end > end object A: TButton end object B: TButton end end");
    const auto& columns = *dynamic_cast<TReplacing&>(*form->FindComponent("R")).Own;
    ASSERT_EQ(columns.Count(), 1);
    EXPECT_EQ(columns[0].Link(), form->FindComponent("B"));
}

TEST_F(FormBadInput, AnErrorOfASetterIsAnErrorOfTheForm) {
    EXPECT_EQ(ReadErrorOf("object F: TForm\n object B: TButton\n Caption = 'refused'\n end\nend"),
              "Error reading B.Caption on line 3: This caption is refused");
}

TEST_F(FormBadInput, NamesThatAreTakenOrNoNamesAreErrors) {
    EXPECT_EQ(ReadErrorOf("object F: TForm\n object B: TButton\n end\n object B: TPanel\n end\nend"),
              "Error reading B on line 4: A component named B already exists");
    EXPECT_THAT(ReadErrorOf(std::string("TPF0\5TForm\1F\0\7TButton\2A-\0\0\0\0", 28)),
                HasSubstr("Error reading A- at offset 13: 'A-' is not a valid component name"));
}

TEST_F(FormBadInput, AComponentThatIsNotOfItsFieldsClassIsAnError) {
    EXPECT_EQ(ReadErrorOf("object F: TForm\n object Button1: TPanel\n end\nend"),
              "Error reading Button1 on line 2: Component Button1 is a TPanel, not a TButton");
}

TEST_F(FormBadInput, AFailedReadOverAnInstanceRemovesWhatItAdded) {
    const auto form = ReadForm(RichForm);
    auto* const panel = dynamic_cast<TPanel*>(form->FindComponent("Panel1"));
    const int before = TControl::Alive;
    TMemoryStream stream("inherited Form1: TForm inherited Panel1: TPanel object New1: TPanel object New2: TButton end"
                         " end end object New3: TServer end object Bad: TNothing end end");
    EXPECT_THROW(ReadComponent(stream, form.get()), EClassNotFound);
    EXPECT_EQ(TControl::Alive, before);
    EXPECT_EQ(form->ComponentCount(), 4);
    EXPECT_EQ(panel->ChildCount(), 2);
    EXPECT_FALSE(form->IsLoading());
    EXPECT_FALSE(panel->IsLoading());
    EXPECT_FALSE(panel->ComponentState().Contains(csReading));
}

class TMoody : public TButton {
    KX_CLASS()
    explicit TMoody(TComponent* owner) : TButton(owner) {
        if (FailsIn == 1) {
            throw EInvalidOperation("No button today");
        }
    }
    void Loaded() override {
        TButton::Loaded();
        if (FailsIn == 2) {
            throw EInvalidOperation("Not loaded today");
        }
        if (FailsIn == 3) {
            throw EAbort("Stopped");
        }
    }
    static inline int FailsIn = 0;
};
const TClass& TMoody::StaticClass() {
    static const TClassBuilder<TMoody> cls("TMoody", TButton::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

TEST_F(FormBadInput, FailingConstructorsAndLoadedLeaveNothingBehind) {
    RegisterClasses<TMoody>();
    const std::string text =
        "object F: TForm\n object A: TButton\n end\n object M: TMoody\n end\n object B: TPanel end end";
    TMoody::FailsIn = 1;
    EXPECT_EQ(ReadErrorOf(text), "Error reading M on line 4: No button today");
    TMoody::FailsIn = 2;
    TForm form;
    TMemoryStream stream(text);
    EXPECT_THROW(ReadComponent(stream, &form), EInvalidOperation);
    EXPECT_EQ(form.ComponentCount(), 0);
    EXPECT_FALSE(form.IsLoading());
    TMoody::FailsIn = 3;
    EXPECT_THROW(ReadForm(text), EAbort);
    TMoody::FailsIn = 0;
    EXPECT_EQ(ReadForm(text)->ComponentCount(), 3);
}

TEST_F(FormBadInput, UnknownFlagsOfAComponentAreErrors) {
    EXPECT_THAT(ErrorOf<EReadError>([] { ReadForm(std::string("TPF0\xF8\5TForm\1F\0\0", 15)); }),
                HasSubstr("Unknown flags of a component at offset 4"));
}

TEST_F(FormBadInput, UnknownValueTypesAreErrors) {
    const std::string form = FormWithCaption("\x16");
    EXPECT_THAT(ErrorOf<EReadError>([&] { ReadForm(form); }), HasSubstr("F.Caption"));
    EXPECT_THAT(ErrorOf<EReadError>([&] { ToText(form); }), HasSubstr("Unknown value type 22 at offset"));
}

} // namespace
} // namespace kx::sample
