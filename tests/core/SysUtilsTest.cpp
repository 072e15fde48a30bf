// SPDX-License-Identifier: MIT
// Checked arithmetic, texts, file names and numbers.

#include "kx/core/SysUtils.h"
#include "kx/core/Types.h"
#include "tests/support/ErrorOf.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace kx {
namespace {

using test::ErrorOf;

/// Makes a byte a lead byte for the time of a test, as in the Japanese code page.
class TLeadByte {
public:
    explicit TLeadByte(unsigned char c) : FChar(c) { SetLeadByte(c, true); }
    TLeadByte(const TLeadByte&) = delete;
    TLeadByte& operator=(const TLeadByte&) = delete;
    ~TLeadByte() { SetLeadByte(FChar, false); }

private:
    unsigned char FChar;
};

// --- Arithmetic

TEST(CheckedArithmetic, GivesExactResultsUpToTheLimits) {
    EXPECT_EQ(CheckedAdd(INT32_MAX, 0), INT32_MAX);
    EXPECT_EQ(CheckedAdd(INT32_MAX, INT32_MIN), -1);
    EXPECT_EQ(CheckedSub(INT32_MIN, 0), INT32_MIN);
    EXPECT_EQ(CheckedSub(-1, INT32_MAX), INT32_MIN);
    EXPECT_EQ(CheckedMul(46340, 46340), 2147395600);
    EXPECT_EQ(CheckedMul(INT32_MIN, 1), INT32_MIN);
    EXPECT_EQ(CheckedSum(1, 2, 3, 4), 10);
}

TEST(CheckedArithmetic, RaisesBeyondTheLimits) {
    EXPECT_THROW(CheckedAdd(INT32_MAX, 1), EIntOverflow);
    EXPECT_THROW(CheckedAdd(INT32_MIN, -1), EIntOverflow);
    EXPECT_THROW(CheckedSub(INT32_MIN, 1), EIntOverflow);
    EXPECT_THROW(CheckedSub(0, INT32_MIN), EIntOverflow);
    EXPECT_THROW(CheckedMul(46341, 46341), EIntOverflow);
    EXPECT_THROW(CheckedMul(INT32_MIN, -1), EIntOverflow);
}

TEST(CheckedArithmetic, ASumIsCheckedAtEveryStep) {
    EXPECT_THROW(CheckedSum(INT32_MAX, 1, -1), EIntOverflow);
    EXPECT_EQ(CheckedSum(INT32_MAX, -1, 1), INT32_MAX);
}

TEST(CheckedArithmetic, WidthAndHeightAreChecked) {
    EXPECT_EQ(Width({10, 20, 110, 70}), 100);
    EXPECT_EQ(Height({10, 20, 110, 70}), 50);
    EXPECT_THROW(Width({INT32_MIN, 0, INT32_MAX, 0}), EIntOverflow);
    EXPECT_THROW(Height({0, -1, 0, INT32_MAX}), EIntOverflow);
}

// --- Text

TEST(Text, LettersOfAsciiChangeTheirCaseAndNoOthers) {
    EXPECT_EQ(UpperCase("az_09\xC3\xA4"), "AZ_09\xC3\xA4");
    EXPECT_EQ(LowerCase("AZ[\xC3\x84"), "az[\xC3\x84");
    EXPECT_TRUE(SameText("Button1", "BUTTON1"));
    EXPECT_FALSE(SameText("a", "ab"));
    EXPECT_FALSE(SameText("@", "`"));
}

TEST(Text, ComparesWithoutCaseAndByUnsignedBytes) {
    EXPECT_EQ(CompareText("", ""), 0);
    EXPECT_LT(CompareText("a", "B"), 0);
    EXPECT_GT(CompareText("b", "A"), 0);
    EXPECT_LT(CompareText("a", "AA"), 0);
    EXPECT_GT(CompareText("\xE4", "z"), 0);
}

TEST(Text, TheSecondByteOfACharacterIsNoLetter) {
    const TLeadByte lead(0x83);
    EXPECT_EQ(UpperCase("a\x83"
                        "ab"),
              "A\x83"
              "aB");
    EXPECT_FALSE(SameText("\x83"
                          "a",
                          "\x83"
                          "A"));
    EXPECT_TRUE(SameText("\x83"
                         "ab",
                         "\x83"
                         "aB"));
    EXPECT_EQ(FindChar("\x83=a=", '='), 3u);
    EXPECT_EQ(FindChar("\x83=", '='), std::string_view::npos);
    EXPECT_EQ(FindChar("a=b=", '=', 2), 3u);
}

TEST(Text, TrimTakesBlanksAndControlCharacters) {
    EXPECT_EQ(Trim(" \t\r\n a b \x01"), "a b");
    EXPECT_EQ(Trim(" \t"), "");
    EXPECT_EQ(Trim("\xC3\xA4"), "\xC3\xA4");
}

TEST(Text, FormatReplacesEachMarkByTheNextArgument) {
    EXPECT_EQ(Format("%s of %s, 100%%", {"1", "2"}), "1 of 2, 100%");
    EXPECT_EQ(Format("%s", {"%s"}), "%s");
    EXPECT_EQ(Format("%d %", {"x"}), "%d %");
    EXPECT_EQ(Format("%s%s", {"only one"}), "only one%s");
}

TEST(Text, IntegersInDecimalAndHexadecimal) {
    EXPECT_EQ(StrToInt("42"), 42);
    EXPECT_EQ(StrToInt(" -7 "), -7);
    EXPECT_EQ(StrToInt("+7"), 7);
    EXPECT_EQ(StrToInt("$fF"), 255);
    EXPECT_EQ(StrToInt("0x10"), 16);
    EXPECT_EQ(StrToInt("-9223372036854775808"), INT64_MIN);
    EXPECT_EQ(StrToInt("9223372036854775807"), INT64_MAX);
    EXPECT_EQ(IntToStr(INT64_MIN), "-9223372036854775808");
}

TEST(Text, WhatIsNoIntegerIsAnError) {
    for (const char* text : {"", " ", "x", "1x", "--1", "$", "0x", "$G", "1.5", "9223372036854775808", "- 1"}) {
        EXPECT_EQ(StrToIntDef(text, -99), -99) << text;
        EXPECT_EQ(ErrorOf<EConvertError>([&] { StrToInt(text); }),
                  "'" + std::string(text) + "' is not a valid integer value");
    }
}

// --- File names

TEST(FileNames, ANameEndsAtTheLastBackslashOrColon) {
    EXPECT_EQ(ExtractFileName("C:\\dir\\file.txt"), "file.txt");
    EXPECT_EQ(ExtractFileName("C:file.txt"), "file.txt");
    EXPECT_EQ(ExtractFileName("dir\\"), "");
    EXPECT_EQ(ExtractFileName("a/b"), "a/b");
    EXPECT_EQ(ExtractFilePath("C:\\dir\\file.txt"), "C:\\dir\\");
    EXPECT_EQ(ExtractFilePath("C:file.txt"), "C:");
    EXPECT_EQ(ExtractFilePath("file.txt"), "");
}

TEST(FileNames, AFolderLosesItsBackslashUnlessItIsARoot) {
    EXPECT_EQ(ExtractFileDir("C:\\dir\\file.txt"), "C:\\dir");
    EXPECT_EQ(ExtractFileDir("C:\\file.txt"), "C:\\");
    EXPECT_EQ(ExtractFileDir("\\file.txt"), "\\");
    EXPECT_EQ(ExtractFileDir("C:file.txt"), "C:");
    EXPECT_EQ(ExtractFileDir("\\\\server\\share\\file"), "\\\\server\\share");
    EXPECT_EQ(ExtractFileDir(""), "");
}

TEST(FileNames, DrivesAndShares) {
    EXPECT_EQ(ExtractFileDrive("C:\\dir"), "C:");
    EXPECT_EQ(ExtractFileDrive("\\\\server\\share\\dir"), "\\\\server\\share");
    EXPECT_EQ(ExtractFileDrive("\\\\server\\share"), "\\\\server\\share");
    EXPECT_EQ(ExtractFileDrive("\\\\server"), "\\\\server");
    EXPECT_EQ(ExtractFileDrive("dir\\file"), "");
    EXPECT_EQ(ExtractFileDrive(""), "");
}

TEST(FileNames, AnExtensionBeginsAtTheLastDotOfTheName) {
    EXPECT_EQ(ExtractFileExt("a\\b.c.txt"), ".txt");
    EXPECT_EQ(ExtractFileExt("a.b\\c"), "");
    EXPECT_EQ(ExtractFileExt("a."), ".");
    EXPECT_EQ(ExtractFileExt(""), "");
    EXPECT_EQ(ChangeFileExt("a\\b.txt", ".dfm"), "a\\b.dfm");
    EXPECT_EQ(ChangeFileExt("a.b\\c", ".dfm"), "a.b\\c.dfm");
    EXPECT_EQ(ChangeFileExt("a.txt", ""), "a");
}

TEST(FileNames, TrailingBackslashes) {
    EXPECT_EQ(IncludeTrailingPathDelimiter("C:\\dir"), "C:\\dir\\");
    EXPECT_EQ(IncludeTrailingPathDelimiter("C:\\dir\\"), "C:\\dir\\");
    EXPECT_EQ(ExcludeTrailingPathDelimiter("C:\\dir\\"), "C:\\dir");
    EXPECT_EQ(ExcludeTrailingPathDelimiter("C:\\dir"), "C:\\dir");
    EXPECT_EQ(ExcludeTrailingPathDelimiter(""), "");
}

TEST(Text, TheNextCharacterBeginsBehindAllBytesOfThisOne) {
    EXPECT_EQ(NextCharacter("ab", 0), 1u);
    EXPECT_EQ(NextCharacter("ab", 1), 2u);
    EXPECT_EQ(NextCharacter("ab", 2), 2u);
    EXPECT_EQ(NextCharacter("", 0), 0u);
    {
        const TLeadByte lead(0x83);
        EXPECT_EQ(NextCharacter("\x83\\b", 0), 2u);
        EXPECT_EQ(NextCharacter("\x83", 0), 1u) << "cut off";
    }
    const std::string text = "\xC3\xB6\xE2\x82\xAC"; // o with dots, and the euro sign
    EXPECT_EQ(NextCharacter(text, 0), 1u) << "a code page of single bytes";
    SetCodePageIsUtf8(true);
    EXPECT_EQ(NextCharacter(text, 0), 2u);
    EXPECT_EQ(NextCharacter(text, 2), 5u);
    EXPECT_EQ(NextCharacter(text.substr(0, 4), 2), 4u) << "cut off";
    SetCodePageIsUtf8(false);
}

TEST(Errors, ARangeErrorHasItsText) { EXPECT_EQ(ErrorOf<ERangeError>(RaiseRangeError), "Range check error"); }

TEST(FileNames, TheSecondByteOfACharacterIsNoBackslash) {
    const TLeadByte lead(0x83);
    const std::string so = "\x83\\"; // one letter
    EXPECT_EQ(ExtractFileName("C:\\" + so + "b.txt"), so + "b.txt");
    EXPECT_EQ(ExtractFilePath("C:\\a\\" + so), "C:\\a\\");
    EXPECT_EQ(IncludeTrailingPathDelimiter("C:\\" + so), "C:\\" + so + "\\");
    EXPECT_EQ(ExcludeTrailingPathDelimiter("C:\\" + so), "C:\\" + so);
    EXPECT_EQ(ExtractFileDrive("\\\\server\\" + so + "x\\dir"), "\\\\server\\" + so + "x");
}

// --- Exceptions

TEST(Exceptions, KnowTheirClassNameAndMessage) {
    try {
        throw EReadError("message");
    } catch (const EFilerError& error) {
        EXPECT_STREQ(error.ClassName(), "EReadError");
        EXPECT_STREQ(error.what(), "message");
    }
    const EOSError error("failed", 5);
    EXPECT_EQ(error.ErrorCode(), 5u);
    EXPECT_STREQ(error.ClassName(), "EOSError");
}

} // namespace
} // namespace kx
