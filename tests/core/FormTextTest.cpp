// SPDX-License-Identifier: MIT
// Form texts become binary forms and texts again.

#include "FormTextFixture.h"

#include <cmath>
#include <limits>

namespace kx::sample {
namespace {

using testing::HasSubstr;

class FormText : public FormTest {};

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

TEST_F(FormText, ASpellingThatSaysSomethingElseThanItsNumberIsNotWritten) {
    const auto text = [](const std::string& spelling, const std::string& value) {
        return TextOf(Bytes({vaSpelled, int(spelling.size())}) + spelling + value);
    };
    const std::string five = Bytes({vaInt8, 5});
    const std::string half = Bytes({vaSingle, 0, 0, 0, 0x3F});
    EXPECT_EQ(text("$5", five), "$5");
    EXPECT_EQ(text("5E-1s", half), "5E-1s");
    for (const std::string other : {"6", "5.0", "5c", "'5'", "abc", "", " 5", "5 ", "5 end", "\xFF", "("}) {
        EXPECT_EQ(text(other, five), "5") << other;
    }
    for (const std::string other : {"0.5", "0.5d", "0.25s", "1"}) {
        EXPECT_EQ(text(other, half), "0.5s") << other;
    }
    EXPECT_EQ(text("1.5c", Bytes({vaCurrency, 0x10, 0x27, 0, 0, 0, 0, 0, 0})), "1c");
    EXPECT_EQ(text("a", Bytes({vaIdent, 1, 'a'})), "a");
    EXPECT_EQ(text("$5", Bytes({vaString, 1, '5'})), "'5'");
    EXPECT_THROW(text("5", Bytes({vaSpelled, 1, '5'}) + five), EReadError);
    const std::string name(vaSpelled, 'n'); // its length is no type of a value
    const std::string form = "object F: " + name + "\r\n  " + name + " = 5\r\nend\r\n";
    EXPECT_EQ(ToText(ToBinary(form)), form);
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
