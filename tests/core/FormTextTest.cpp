// Form texts become binary forms and texts again.

#include "FormFixture.h"

#include "kx/core/FilerTools.h"

#include <cmath>
#include <limits>

namespace kx::sample {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class FormText : public FormTest {};

/// The text of a form whose only property `A` has this value, converted to the binary form and back.
std::string Converted(const std::string& value) {
    const std::string head = "object F: T\r\n  A = ";
    const std::string text = ToText(ToBinary("object F: T A = " + value + " end"));
    EXPECT_THAT(text, StartsWith(head));
    return text.substr(head.size(), text.size() - head.size() - std::string("\r\nend\r\n").size());
}

/// The binary form of the value
std::string Value(const std::string& value) {
    const std::string head("TPF0\1T\1F\1A", 10);
    const std::string binary = ToBinary("object F: T A = " + value + " end");
    EXPECT_THAT(binary, StartsWith(head));
    return binary.substr(head.size(), binary.size() - head.size() - 2);
}

std::string ParseError(const std::string& text) {
    return ErrorOf<EParserError>([&] { ToBinary(text); });
}

std::string Bytes(std::initializer_list<int> bytes) {
    std::string result;
    for (const int byte : bytes) {
        result.push_back(static_cast<char>(byte));
    }
    return result;
}

/// A binary form whose only property `A` has this value
std::string FormWith(const std::string& value) { return std::string("TPF0\1T\1F\1A", 10) + value + Bytes({0, 0}); }

std::string TextOf(const std::string& value) {
    const std::string text = ToText(FormWith(value));
    const size_t start = text.find("= ") + 2;
    return text.substr(start, text.rfind("\r\nend") - start);
}

// --- The binary form

TEST_F(FormText, ABinaryFormBeginsWithItsSignatureClassAndName) {
    EXPECT_EQ(ToBinary("object Form1: TForm end"), std::string("TPF0\5TForm\5Form1\0\0", 18));
}

TEST_F(FormText, InheritedInlineAndPositionsBecomeAPrefix) {
    EXPECT_EQ(ToBinary("inherited F: T end"), std::string("TPF0\xF1\1T\1F\0\0", 11));
    EXPECT_EQ(ToBinary("inline F: T end"), std::string("TPF0\xF4\1T\1F\0\0", 11));
    EXPECT_EQ(ToBinary("object F: T [3] end"), std::string("TPF0\xF2\2\3\1T\1F\0\0", 13));
    for (const std::string text :
         {"inherited F: T [-2]\r\nend\r\n", "inline F: T\r\nend\r\n", "object T [7]\r\nend\r\n"}) {
        EXPECT_EQ(ToText(ToBinary(text)), text);
    }
}

TEST_F(FormText, IntegersTakeTheSmallestType) {
    EXPECT_EQ(Value("-128"), Bytes({vaInt8, 0x80}));
    EXPECT_EQ(Value("128"), Bytes({vaInt16, 0x80, 0}));
    EXPECT_EQ(Value("-32769"), Bytes({vaInt32, 0xFF, 0x7F, 0xFF, 0xFF}));
    EXPECT_EQ(Value("2147483648"), Bytes({vaInt64, 0, 0, 0, 0x80, 0, 0, 0, 0}));
    EXPECT_EQ(Value("$fF"), Bytes({vaInt16, 0xFF, 0}));
    EXPECT_EQ(Value("-$10"), Bytes({vaInt8, 0xF0}));
    EXPECT_EQ(Value("+5"), Bytes({vaInt8, 5}));
    EXPECT_EQ(Converted("-9223372036854775808"), "-9223372036854775808");
    EXPECT_EQ(Converted("$7FFFFFFFFFFFFFFF"), "9223372036854775807");
}

TEST_F(FormText, EachTypeHasItsNumber) {
    EXPECT_EQ(Value("Null"), Bytes({0}));
    EXPECT_EQ(Value("(1)"), Bytes({1, 2, 1, 0}));
    EXPECT_EQ(Value("'a'"), Bytes({6, 1, 'a'}));
    EXPECT_EQ(Value("clRed"), Bytes({7, 5, 'c', 'l', 'R', 'e', 'd'}));
    EXPECT_EQ(Value("false"), Bytes({8}));
    EXPECT_EQ(Value("TRUE"), Bytes({9}));
    EXPECT_EQ(Value("{ 01 aB }"), Bytes({10, 2, 0, 0, 0, 1, 0xAB}));
    EXPECT_EQ(Value("[a, b]"), Bytes({11, 1, 'a', 1, 'b', 0}));
    EXPECT_EQ(Value("[]"), Bytes({11, 0}));
    EXPECT_EQ(Value("nil"), Bytes({13}));
    EXPECT_EQ(Value("< item B = 1 end >"), Bytes({14, 1, 1, 'B', 2, 1, 0, 0}));
    EXPECT_EQ(Value("< item [5] end >"), Bytes({14, 2, 5, 1, 0, 0}));
    EXPECT_EQ(Value("1.5s"), Bytes({15, 0, 0, 0xC0, 0x3F}));
    EXPECT_EQ(Value("1.5c"), Bytes({16, 0x98, 0x3A, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Value("1.5d"), Bytes({17, 0, 0, 0, 0, 0, 0, 0xF8, 0x3F}));
    EXPECT_EQ(Value("'\xC3\xA9'"), Bytes({20, 2, 0, 0, 0, 0xC3, 0xA9}));
    EXPECT_EQ(Value("1.5"), Bytes({21, 0, 0, 0, 0, 0, 0, 0xF8, 0x3F}));
    EXPECT_EQ(Value("'" + std::string(256, 'x') + "'").substr(0, 5), Bytes({12, 0, 1, 0, 0}));
}

// --- Numbers

TEST_F(FormText, FloatsKeepEveryDigitAndNoMore) {
    for (const std::string text : {"0.1",
                                   "1.0",
                                   "-0.0",
                                   "1e+100",
                                   "5e-324",
                                   "1.7976931348623157e+308",
                                   "12345.678",
                                   "+Inf",
                                   "-Inf",
                                   "+NaN",
                                   "1.5s",
                                   "0.1s",
                                   "3s",
                                   "+Infs",
                                   "12.3456c",
                                   "-0.0001c",
                                   "922337203685477.5807c",
                                   "-922337203685477.5808c",
                                   "0c",
                                   "2d",
                                   "36526.25d"}) {
        EXPECT_EQ(Converted(text), text);
    }
    EXPECT_EQ(Converted("1E3"), "1000.0");
    EXPECT_EQ(Converted("100.2500c"), "100.25c");
}

TEST_F(FormText, ExtendedNumbersBecomeTheNearestDouble) {
    const auto extended = [](int exponent, uint64_t mantissa) {
        std::string value = Bytes({vaExtended});
        for (int i = 0; i < 8; ++i) {
            value.push_back(static_cast<char>(mantissa >> (8 * i)));
        }
        return TextOf(value + Bytes({exponent & 0xFF, exponent >> 8}));
    };
    constexpr uint64_t one = uint64_t{1} << 63;
    EXPECT_EQ(extended(0x3FFF, one), "1.0");
    EXPECT_EQ(extended(0xBFFF, one), "-1.0");
    EXPECT_EQ(extended(0, 0), "0.0");
    EXPECT_EQ(extended(0x8000, 0), "-0.0");
    EXPECT_EQ(extended(0x3FFB, 0xCCCCCCCCCCCCCCCD), "0.1");
    EXPECT_EQ(extended(0x4000, 0xC90FDAA22168C235), "3.141592653589793");
    EXPECT_EQ(extended(0x3FFF, one | 0x400), "1.0");                // a tie, to even
    EXPECT_EQ(extended(0x3FFF, one | 0xC00), "1.0000000000000004"); // a tie, to even, upwards
    EXPECT_EQ(extended(0x3FFF, one | 0x401), "1.0000000000000002"); // just above a tie
    EXPECT_EQ(extended(0x3FFF, 0xFFFFFFFFFFFFFFFF), "2.0");         // rounding carries
    EXPECT_EQ(extended(0x43FE, 0xFFFFFFFFFFFFF800), "1.7976931348623157e+308");
    EXPECT_EQ(extended(0x43FE, 0xFFFFFFFFFFFFFFFF), "+Inf"); // rounds out of range
    EXPECT_EQ(extended(0x43FF, one), "+Inf");
    EXPECT_EQ(extended(0x7FFE, one), "+Inf");
    EXPECT_EQ(extended(0xFFFF, one), "-Inf");
    EXPECT_EQ(extended(0x7FFF, one | 1), "+NaN");
    EXPECT_EQ(extended(0x3C01, one), "2.2250738585072014e-308"); // the smallest normal number
    EXPECT_EQ(extended(0x3C00, one), "1.1125369292536007e-308"); // below it
    EXPECT_EQ(extended(0x3BCD, one), "5e-324");                  // the smallest number
    EXPECT_EQ(extended(0x3BCC, one), "0.0");                     // half of it, to even
    EXPECT_EQ(extended(0x3BCC, one | 1), "5e-324");
    EXPECT_EQ(extended(0, 1), "0.0");
    EXPECT_EQ(extended(0x4000, one >> 1), "1.0"); // the leading bit clear
}

TEST_F(FormText, NumbersOutOfRangeAreErrors) {
    for (const std::string text : {"9223372036854775808", "-9223372036854775809", "$FFFFFFFFFFFFFFFFF", "1e999",
                                   "1e-999", "1e50s", "1e15c", "1.23456c", "922337203685477.5808c"}) {
        EXPECT_THAT(ParseError("object F: T\n A = " + text + "\nend"), HasSubstr("on line 2")) << text;
    }
    for (const std::string text :
         {"$", "5x", "1.5x", "-", "+", "-x", "+Infx", "1.", "1.5.5", "--1", "$5G", "1e", "1e+"}) {
        EXPECT_THAT(ParseError("object F: T\n A = " + text + "\nend"), HasSubstr("on line ")) << text;
    }
}

// --- Strings

TEST_F(FormText, StringsAreWrittenInAscii) {
    EXPECT_EQ(Converted("''"), "''");
    EXPECT_EQ(Converted("''''"), "#39");
    EXPECT_EQ(Converted("'it''s'"), "'it'#39's'");
    EXPECT_EQ(Converted("' ~'#127"), "' ~'#127");
    EXPECT_EQ(Converted("#9'a'#13#10'b'#0"), "#9'a'#13#10'b'#0");
    EXPECT_EQ(Converted("#65#$42#228#8364#128512"), "'AB'#228#8364#55357#56832");
    EXPECT_EQ(Converted("#55357#56832"), "#55357#56832"); // two halves of UTF-16
    EXPECT_EQ(Converted("#65535#65536#1114111"), "#65535#55296#56320#56319#57343");
    EXPECT_EQ(Converted("'gr\xC3\xBC\xC3\x9F'"), "'gr'#252#223");
    EXPECT_EQ(Converted("'a' + 'b' +\n'c'"), "'abc'");
    EXPECT_EQ(Converted("'tab\there'"), "'tab'#9'here'");
}

TEST_F(FormText, NumbersOfOldTextsAreBytesOfTheCodePage) {
    EXPECT_EQ(Converted("#127#128#129#159#160#255"), "#127#8364#129#376#160#255");
    EXPECT_EQ(Converted("#$80'a'"), "#8364'a'");
    EXPECT_EQ(Converted("'#300'#128"), "'#300'#8364") << "what is quoted is no number";
}

TEST_F(FormText, NumbersOfNewTextsAreThoseOfCharacters) {
    EXPECT_EQ(Converted("#128#256"), "#0128#256");
    EXPECT_EQ(Converted("#128#255"), "#8364#255");
    EXPECT_EQ(Converted("#128#$100"), "#0128#256");
    EXPECT_EQ(Converted("#128'\xC3\xA9'"), "#0128#233");
    EXPECT_EQ(ToText(ToBinary("\xEF\xBB\xBFobject F: T A = #128 end")), "object F: T\r\n  A = #0128\r\nend\r\n");
    EXPECT_EQ(ToText(ToBinary("object F: T A = #128 B = 'it''s'#9#1076 end")),
              "object F: T\r\n  A = #0128\r\n  B = 'it'#39's'#9#1076\r\nend\r\n");
}

TEST_F(FormText, ANumberWithAZeroInFrontIsACharactersInAnyText) {
    EXPECT_EQ(Converted("#0128#128'a'#$080"), "#0128#8364'a'#0128");
    EXPECT_EQ(Converted("#00233#0"), "#233#0");
}

/// A code page in which each byte beyond ASCII and the one behind it are one character; a lone one is a question mark.
std::string FromPairs(std::string_view bytes) {
    std::string text;
    for (size_t i = 0; i < bytes.size(); ++i) {
        const bool isLead = static_cast<unsigned char>(bytes[i]) >= 0x80;
        text += !isLead ? std::string(1, bytes[i]) : ++i < bytes.size() ? std::string("\xD0\xB0") : std::string("?");
    }
    return text;
}

TEST_F(FormText, TheCodePageOfOldTextsCanBeSaid) {
    SetFormTextBytes(FromPairs);
    EXPECT_EQ(Converted("'x'#131'Ay'#130#160'z'"), "'x'#1072'y'#1072'z'") << "the second byte may be a letter";
    EXPECT_EQ(Converted("#0233"), "#0233");
    EXPECT_EQ(Converted("#233#1072"), "#0233#1072");
    SetFormTextBytes([](std::string_view) { return std::string("\xFF"); });
    EXPECT_EQ(Converted("#128"), "#8364") << "what is no UTF-8 is not taken";
    SetFormTextBytes(nullptr);
    EXPECT_EQ(Converted("#233"), "#233");
}

TEST_F(FormText, EveryCharacterReadsBackFromItsAscii) {
    for (const char32_t last : {char32_t{0x2FF}, char32_t{0xFF}}) {
        std::string all;
        for (char32_t c = 1; c <= last; ++c) {
            detail::AppendUtf8(all, c);
        }
        TForm form;
        form.SetCaption(all);
        const std::string text = Written(form);
        EXPECT_TRUE(detail::IsAscii(text));
        EXPECT_EQ(ReadForm(text)->Caption(), all);
    }
}

TEST_F(FormText, LongStringsAreBrokenIntoLines) {
    const std::string letters(64, 'x');
    EXPECT_EQ(Converted("'" + letters + "'"), "'" + letters + "'");
    EXPECT_EQ(Converted("'" + letters + "y'"), "\r\n    '" + letters + "' +\r\n    'y'");
    std::string umlauts;
    for (int i = 0; i < 65; ++i) {
        umlauts += "\xC3\xA4";
    }
    std::string numbers;
    for (int i = 0; i < 64; ++i) {
        numbers += "#228";
    }
    EXPECT_EQ(Converted("'" + umlauts + "'"), "\r\n    " + numbers + " +\r\n    #228");
    EXPECT_EQ(Converted("'" + letters.substr(1) + "'#128512'y'"),
              "\r\n    '" + letters.substr(1) + "'#55357#56832 +\r\n    'y'")
        << "a character stays in one piece";
}

TEST_F(FormText, BadStringsAreErrors) {
    EXPECT_EQ(ParseError("object F: T\n A = 'open\n B = 'x'\nend"), "The string has no end on line 2");
    EXPECT_EQ(ParseError("object F: T\n A = 'a' +\n 5\nend"), "String expected on line 3");
    for (const std::string code :
         {"#", "#x", "#$", "#1114112", "#55296", "#56320", "#55296'x'", "#55296#65", "#99999999999"}) {
        EXPECT_EQ(ParseError("object F: T\n A = " + code + "\nend"), "Invalid character code on line 2") << code;
    }
    for (const std::string bytes :
         {"\xFF", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82", "\x80"}) {
        EXPECT_EQ(ParseError("object F: T\n\n A = '" + bytes + "'\nend"), "Invalid UTF-8 on line 3");
    }
}

TEST_F(FormText, WideStringsBecomeUtf8) {
    EXPECT_EQ(TextOf(Bytes({vaWString, 4, 0, 0, 0, 'a', 0, 0xAC, 0x20, 0x3D, 0xD8, 0x00, 0xDE})),
              "'a'#8364#55357#56832");
    EXPECT_THAT(ErrorOf<EReadError>([] { TextOf(Bytes({vaWString, 1, 0, 0, 0, 0x3D, 0xD8})); }), HasSubstr("offset"));
    EXPECT_THAT(ErrorOf<EReadError>([] {
                    TextOf(Bytes({vaWString, 2, 0, 0, 0, 0x3D, 0xD8, 'a', 0}));
                }),
                HasSubstr("Half a character"));
    EXPECT_THAT(ErrorOf<EReadError>([] {
                    TextOf(Bytes({vaWString, 1, 0, 0, 0, 0x00, 0xDE}));
                }),
                HasSubstr("Half a character"));
}

TEST_F(FormText, AByteThatIsNoCharacterStandsForTheCharacterOfItsNumber) {
    EXPECT_EQ(TextOf(Bytes({vaString, 3, 'a', 0xE9, 'b'})), "'a'#233'b'");
    EXPECT_THAT(ErrorOf<EReadError>([] { TextOf(Bytes({vaUTF8String, 1, 0, 0, 0, 0xE9})); }), HasSubstr("UTF-8"));
}

std::string ToLatin1(std::string_view utf8) {
    std::string text;
    for (size_t i = 0; i < utf8.size(); ++i) {
        const auto c = static_cast<unsigned char>(utf8[i]);
        text += c == 0xC3 ? static_cast<char>(static_cast<unsigned char>(utf8[++i]) + 0x40) : utf8[i];
    }
    return text;
}
std::string FromLatin1(std::string_view text) {
    std::string utf8;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        utf8 += byte < 0x80 ? std::string(1, c)
                            : std::string{static_cast<char>(0xC0 | byte >> 6), static_cast<char>(0x80 | (byte & 0x3F))};
    }
    return utf8;
}

TEST_F(FormText, ComponentsHoldStringsInTheAnsiCodePage) {
    SetFormTextCodec(ToLatin1, FromLatin1);
    const std::string text = "object F: TForm\r\n  Caption = 'gr'#252'n'\r\n  Key = #233\r\nend\r\n";
    {
        const auto form = ReadForm(text);
        EXPECT_EQ(form->Caption(), "gr\xFCn");
        EXPECT_EQ(form->Key(), '\xE9');
        EXPECT_EQ(Written(*form), text);
    }
    SetFormTextCodec(nullptr, nullptr);
    EXPECT_EQ(ReadForm(text)->Caption(), "gr\xC3\xBCn");
}

TEST_F(FormText, ACharacterPropertyHoldsAnyByte) {
    for (int byte = 1; byte < 256; ++byte) {
        TForm form;
        form.SetKey(static_cast<char>(byte));
        const std::string text = Written(form);
        EXPECT_EQ(ReadForm(text)->Key(), form.Key()) << byte;
        EXPECT_EQ(Written(*ReadForm(text)), text);
    }
    EXPECT_THAT(ErrorOf<EReadError>([] { ReadForm("object F: TForm Key = 'ab' end"); }), HasSubstr("F.Key"));
    EXPECT_THAT(ErrorOf<EReadError>([] { ReadForm("object F: TForm Key = #8364 end"); }), HasSubstr("F.Key"));
}

TEST_F(FormText, AStringThatIsNoUtf8IsWrittenAsReadableText) {
    TForm form;
    form.SetCaption("a\xFF");
    const std::string text = Written(form);
    EXPECT_EQ(text, "object TForm\r\n  Caption = 'a'#255\r\nend\r\n");
    EXPECT_EQ(Written(*ReadForm(text)), text);
    EXPECT_EQ(ToText(Written(form, TStreamFormat::Binary)), text);
}

// --- Words

TEST_F(FormText, KeywordsMayBeInAnyLetterCase) {
    EXPECT_EQ(ToText(ToBinary("OBJECT F: T A = < ITEM End > Inherited B: U enD InLine C: V END END")),
              "object F: T\r\n  A = <\r\n    item\r\n    end>\r\n  inherited B: U\r\n  end\r\n  inline C: V\r\n  "
              "end\r\nend\r\n");
}

TEST_F(FormText, PropertiesMayBeNamedLikeKeywords) {
    const std::string text = "object F: T\r\n  Object = 1\r\n  End = 2\r\n  Item = 3\r\n  Inline.End = 4\r\nend\r\n";
    EXPECT_EQ(ToText(ToBinary(text)), text);
    const std::string names = "object end: object\r\nend\r\n";
    EXPECT_EQ(ToText(ToBinary(names)), names);
}

TEST_F(FormText, BracesAreBlocksAndNoComments) {
    EXPECT_THAT(ParseError("object F: T { a comment }\nend"), HasSubstr("end expected on line 1"));
    EXPECT_EQ(ParseError("object F: T A = {\n01\n2 }\nend"), "Invalid block of bytes on line 3");
    EXPECT_EQ(ParseError("object F: T A = {\n01"), "The block of bytes has no end on line 2");
    EXPECT_EQ(Converted("{}"), "{}");
    EXPECT_THAT(ParseError("object F: T A = { 0 1 } end"), HasSubstr("Invalid block of bytes"));
}

TEST_F(FormText, AMarkInFrontOfUtf8IsSkipped) {
    EXPECT_EQ(ToBinary("\xEF\xBB\xBFobject F: T end"), ToBinary("object F: T end"));
    TMemoryStream stream("\xEF\xBB\xBF object F: TForm end");
    EXPECT_EQ(TestStreamFormat(stream), TStreamFormat::Text);
}

TEST_F(FormText, BadTextNamesTheLine) {
    EXPECT_EQ(ParseError(""), "object, inherited or inline expected on line 1");
    EXPECT_EQ(ParseError("\n\nobjects F: T end"), "object, inherited or inline expected on line 3");
    EXPECT_EQ(ParseError("object F:\nend"), "end expected on line 2"); // a class may be named so
    EXPECT_EQ(ParseError("object F: T\n A 5\nend"), "'=' expected on line 2");
    EXPECT_EQ(ParseError("object F: T\n A =\nend"), "end expected on line 3"); // a value may read so
    EXPECT_EQ(ParseError("object F: T\n A = ;\nend"), "Value expected on line 2");
    EXPECT_EQ(ParseError("object F: T\n 5 = A\nend"), "end expected on line 2");
    EXPECT_EQ(ParseError("object F: T\n A = [x y]\nend"), "',' expected on line 2");
    EXPECT_EQ(ParseError("object F: T\n A = [1]\nend"), "Identifier expected on line 2");
    EXPECT_EQ(ParseError("object F: T\n A = (1 2\nend\n"), "Value expected on line 4");
    EXPECT_EQ(ParseError("object F: T\n A = (\nNull)\nend"), "Null would end the list on line 3");
    EXPECT_EQ(ParseError("object F: T\n A = <\n thing\n end>\nend"), "item expected on line 3");
    EXPECT_EQ(ParseError("object F: T\n A = <\n item\n"), "end expected on line 4");
    EXPECT_EQ(ParseError("object F: T [x] end"), "Position expected on line 1");
    EXPECT_EQ(ParseError("object F: T [1 end"), "']' expected on line 1");
    EXPECT_EQ(ParseError("object F.G: T end"), "Identifier expected on line 1");
    EXPECT_EQ(ParseError("object F: T\nend\nend"), "Nothing is expected behind the form on line 3");
    EXPECT_EQ(ParseError("object F: T\n object G: U\n A = 1\n B = 2\nend"), "end expected on line 5");
    EXPECT_EQ(ParseError("object F: T\n A = \xC3\xA9\nend"), "Value expected on line 2");
}

TEST_F(FormText, NamesThatAreTooLongForTheBinaryFormAreErrors) {
    const std::string longName(256, 'x');
    EXPECT_THAT(ParseError("object " + longName + ": T end"), HasSubstr("too long on line 1"));
    EXPECT_THAT(ParseError("object F: T " + longName + " = 1 end"), HasSubstr("too long"));
    EXPECT_THAT(ParseError("object F: T A = " + longName + " end"), HasSubstr("too long"));
    EXPECT_THAT(ParseError("object F: T A = [" + longName + "] end"), HasSubstr("too long"));
    EXPECT_THAT(ParseError("object F: " + std::string(240, 'x') + " end"), HasSubstr("too long"));
    const std::string longest = "object " + longName.substr(1) + ": " + std::string(239, 'x') + "\r\nend\r\n";
    EXPECT_EQ(ToText(ToBinary(longest)), longest);
}

TEST_F(FormText, AFailedConversionWritesNothing) {
    TMemoryStream source("object F: T A = 1 B = ? end");
    TMemoryStream binary("kept");
    binary.Seek(0, TSeekOrigin::End);
    EXPECT_THROW(ObjectTextToBinary(source, binary), EParserError);
    EXPECT_EQ(binary.Bytes(), "kept");
    TMemoryStream bad("TPF0\1T");
    TMemoryStream text;
    EXPECT_THROW(ObjectBinaryToText(bad, text), EReadError);
    EXPECT_EQ(text.Size(), 0);
}

TEST_F(FormText, ABinaryFormWhoseNamesAreNoIdentifiersHasNoText) {
    EXPECT_THROW(ToText(std::string("TPF0\3T T\1F\0\0", 12)), EReadError);
    EXPECT_THROW(ToText(std::string("TPF0\1T\1-\0\0", 10)), EReadError);
    EXPECT_THROW(ToText(std::string("TPF0\0\1F\0\0", 9)), EReadError);
    EXPECT_THROW(ToText(std::string("TPF0\1T\1F\2A-\2\1\0\0", 15)), EReadError);
    EXPECT_THROW(TextOf(Bytes({vaIdent, 3, 'a', ' ', 'b'})), EReadError);
    EXPECT_THROW(TextOf(Bytes({vaIdent, 0})), EReadError);
    EXPECT_THROW(TextOf(Bytes({vaSet, 1, '\n', 0})), EReadError);
    EXPECT_EQ(TextOf(Bytes({vaIdent, 3, 'a', '.', 'b'})), "a.b");
}

// --- Formats

TEST_F(FormText, FormatsAreToldByTheirBeginning) {
    const auto format = [](std::string_view bytes) {
        TMemoryStream stream(bytes);
        const TStreamFormat result = TestStreamFormat(stream);
        EXPECT_EQ(stream.Position(), 0);
        return result;
    };
    EXPECT_EQ(format("TPF0\1T"), TStreamFormat::Binary);
    EXPECT_EQ(format(std::string_view("\xFF\x0A\0X", 4)), TStreamFormat::Resource);
    EXPECT_EQ(format(" \r\n Object F"), TStreamFormat::Text);
    EXPECT_EQ(format("inherited\tF"), TStreamFormat::Text);
    EXPECT_EQ(format("inline F"), TStreamFormat::Text);
    for (const std::string_view other : {"", "TPF", "TPF1", "object", "objects F", "\xFF\x0A", "BM"}) {
        EXPECT_EQ(format(other), TStreamFormat::Unknown) << other;
    }
    EXPECT_THAT(ErrorOf<EInvalidImage>([] { ReadForm("GIF89a"); }), HasSubstr("Invalid stream format"));
}

TEST_F(FormText, AResourceHoldsAHeaderNamedForTheClass) {
    TMemoryStream text("object Form1: TMyForm end");
    TMemoryStream resource;
    ObjectTextToResource(text, resource);
    const std::string form = ToBinary("object Form1: TMyForm end");
    const std::string header = std::string("\xFF\x0A\0TMYFORM\0\x30\x10", 13) + Bytes({int(form.size()), 0, 0, 0});
    EXPECT_EQ(resource.Bytes(), header + form);
    resource.SetPosition(0);
    EXPECT_EQ(ReadResHeader(resource), form.size());
    resource.SetPosition(0);
    TMemoryStream back;
    ObjectResourceToText(resource, back);
    EXPECT_EQ(back.Bytes(), "object Form1: TMyForm\r\nend\r\n");
}

TEST_F(FormText, ABadResourceHeaderIsAnError) {
    const std::string good = Written(*ReadForm("object F: TForm end"), TStreamFormat::Resource);
    const size_t header = good.find("TPF0");
    for (size_t size = 0; size < header; ++size) {
        TMemoryStream stream(good.substr(0, size));
        EXPECT_THROW(ReadResHeader(stream), EInvalidImage) << size;
    }
    TMemoryStream endless(std::string("\xFF\x0A\0", 3) + std::string(1000, 'x'));
    EXPECT_THAT(ErrorOf<EInvalidImage>([&] { ReadResHeader(endless); }), HasSubstr("name of the resource"));
    TMemoryStream other("TPF0");
    EXPECT_THROW(ReadResHeader(other), EInvalidImage);
}

TEST_F(FormText, TheLinesOfATextAreKnownByTheOffsetsOfItsBinaryForm) {
    TMemoryStream text("\nobject F: T\n A = 1\n B =\n  2\nobject G: U\nend\nend");
    TMemoryStream binary;
    TFormLines lines;
    ObjectTextToBinary(text, binary, &lines);
    const std::string_view bytes = binary.Bytes();
    EXPECT_EQ(lines.LineAt(0), 1);
    EXPECT_EQ(lines.LineAt(int64_t(bytes.find("\1T\1F"))), 2);
    EXPECT_EQ(lines.LineAt(int64_t(bytes.find("\1A"))), 3);
    EXPECT_EQ(lines.LineAt(int64_t(bytes.find("\1B"))), 4);
    EXPECT_EQ(lines.LineAt(int64_t(bytes.find("\1B")) + 2), 5);
    EXPECT_EQ(lines.LineAt(int64_t(bytes.find("\1U\1G"))), 6);
}

TEST_F(FormText, LinesEndAsTheyAreWanted) {
    const std::string text = "object F: TF\n  Caption = 'a'\nend\n";
    TMemoryStream binary(ToBinary(text));
    TMemoryStream written;
    ObjectBinaryToText(binary, written, LineBreakOf(text));
    EXPECT_EQ(written.Bytes(), text);
    EXPECT_EQ(LineBreakOf("a\r\nb\n"), "\r\n");
    EXPECT_EQ(LineBreakOf("a\nb\r\n"), "\n");
    EXPECT_EQ(LineBreakOf("\n"), "\n");
    EXPECT_EQ(LineBreakOf("no end"), "\r\n");
}

} // namespace
} // namespace kx::sample
