// SPDX-License-Identifier: MIT
// Strings in form texts.

#include "FormTextFixture.h"

#include "kx/core/FilerTools.h"

namespace kx::sample {
namespace {

using testing::HasSubstr;

class FormTextStrings : public FormTest {};

TEST_F(FormTextStrings, StringsAreWrittenInAscii) {
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

TEST_F(FormTextStrings, NumbersOfOldTextsAreBytesOfTheCodePage) {
    EXPECT_EQ(Converted("#127#128#129#159#160#255"), "#127#8364#129#376#160#255");
    EXPECT_EQ(Converted("#$80'a'"), "#8364'a'");
    EXPECT_EQ(Converted("'#300'#128"), "'#300'#8364") << "what is quoted is no number";
}

TEST_F(FormTextStrings, NumbersOfNewTextsAreThoseOfCharacters) {
    EXPECT_EQ(Converted("#128#256"), "#0128#256");
    EXPECT_EQ(Converted("#128#255"), "#8364#255");
    EXPECT_EQ(Converted("#128#$100"), "#0128#256");
    EXPECT_EQ(Converted("#128'\xC3\xA9'"), "#0128#233");
    EXPECT_EQ(ToText(ToBinary("\xEF\xBB\xBFobject F: T A = #128 end")), "object F: T\r\n  A = #0128\r\nend\r\n");
    EXPECT_EQ(ToText(ToBinary("object F: T A = #128 B = 'it''s'#9#1076 end")),
              "object F: T\r\n  A = #0128\r\n  B = 'it'#39's'#9#1076\r\nend\r\n");
}

TEST_F(FormTextStrings, ANumberWithAZeroInFrontIsACharactersInAnyText) {
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

TEST_F(FormTextStrings, TheCodePageOfOldTextsCanBeSaid) {
    SetFormTextBytes(FromPairs);
    EXPECT_EQ(Converted("'x'#131'Ay'#130#160'z'"), "'x'#1072'y'#1072'z'") << "the second byte may be a letter";
    EXPECT_EQ(Converted("#0233"), "#0233");
    EXPECT_EQ(Converted("#233#1072"), "#0233#1072");
    SetFormTextBytes([](std::string_view) { return std::string("\xFF"); });
    EXPECT_EQ(Converted("#128"), "#8364") << "what is no UTF-8 is not taken";
    SetFormTextBytes(nullptr);
    EXPECT_EQ(Converted("#233"), "#233");
}

TEST_F(FormTextStrings, ACharacterMayBeSplitBetweenTwoPieces) {
    EXPECT_EQ(Converted("#55357 +\n#56832"), "#55357#56832");
    EXPECT_EQ(Converted("'a'#55357+#56832'b'"), "'a'#55357#56832'b'");
    for (const std::string code :
         {"#55357 + 'x'", "#55357'x'#56832", "#55357 + ''", "#55357 + #65", "#55357 + #55357", "'' + #56832"}) {
        EXPECT_EQ(ParseError("object F: T\n A = " + code + "\nend"), "Invalid character code on line 2") << code;
    }
    SetFormTextBytes(FromPairs);
    EXPECT_EQ(Converted("'x'#131 +\n'Ay'"), "'x'#1072'y'");
    SetFormTextBytes(nullptr);
}

TEST_F(FormTextStrings, APlusInFrontOfANumberIsItsSign) {
    EXPECT_EQ(Converted("('a' +5)"), "(\r\n    'a'\r\n    5)");
    EXPECT_EQ(Converted("('a' +$F)"), "(\r\n    'a'\r\n    15)");
    EXPECT_EQ(Converted("('a' +Inf)"), "(\r\n    'a'\r\n    +Inf)");
    EXPECT_EQ(Converted("('a' + 'b')"), "(\r\n    'ab')");
}

TEST_F(FormTextStrings, AStringInPiecesStandsWhereTheFirstOneDoes) {
    EXPECT_THAT(ErrorOf<EReadError>([] { ReadForm("object F: TForm\n Left = 'a' +\n 'b'\nend"); }),
                testing::EndsWith("on line 2"));
    EXPECT_EQ(ParseError("object F: T\n A = 'a' +\n 'open\nend"), "The string has no end on line 3");
    EXPECT_EQ(ParseError("object F: T\n A = 'a' +\n #x\nend"), "Invalid character code on line 3");
    EXPECT_EQ(ParseError("object F: T\n A = 'a' +"), "String expected on line 2");
}

TEST_F(FormTextStrings, EveryCharacterReadsBackFromItsAscii) {
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

TEST_F(FormTextStrings, LongStringsAreBrokenIntoLines) {
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

TEST_F(FormTextStrings, BadStringsAreErrors) {
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

TEST_F(FormTextStrings, WideStringsBecomeUtf8) {
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

TEST_F(FormTextStrings, AByteThatIsNoCharacterStandsForTheCharacterOfItsNumber) {
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

TEST_F(FormTextStrings, ComponentsHoldStringsInTheAnsiCodePage) {
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

TEST_F(FormTextStrings, ACharacterPropertyHoldsAnyByte) {
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

TEST_F(FormTextStrings, AStringThatIsNoUtf8IsWrittenAsReadableText) {
    TForm form;
    form.SetCaption("a\xFF");
    const std::string text = Written(form);
    EXPECT_EQ(text, "object TForm\r\n  Caption = 'a'#255\r\nend\r\n");
    EXPECT_EQ(Written(*ReadForm(text)), text);
    EXPECT_EQ(ToText(Written(form, TStreamFormat::Binary)), text);
}

} // namespace
} // namespace kx::sample
