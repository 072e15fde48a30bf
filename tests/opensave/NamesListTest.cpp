// SPDX-License-Identifier: MIT
// Several file names in one text, each in double quotes.

#include "kx/opensave/KxNamesList.h"

#include <gtest/gtest.h>

namespace kx {
namespace {

std::string Split(const std::string& names) {
    TStringList list;
    list.Add("left over");
    KxCommonGetNamesList(names, list);
    std::string result;
    for (int i = 0; i < list.Count(); ++i) {
        result += "[" + list[i] + "]";
    }
    return result;
}

TEST(NamesList, SplitsNamesInDoubleQuotes) {
    EXPECT_EQ(Split("\"a.txt\" \"b.txt\""), "[a.txt][b.txt]");
    EXPECT_EQ(Split("\"a b.txt\"\"c.txt\" "), "[a b.txt][c.txt]");
}

TEST(NamesList, TakesATextWithoutQuotesAsOneName) {
    EXPECT_EQ(Split("c.txt"), "[c.txt]");
    EXPECT_EQ(Split("a b c.txt"), "[a b c.txt]");
}

TEST(NamesList, IgnoresQuotesThatDoNotStandFirst) {
    EXPECT_EQ(Split(" \"a.txt\" \"b.txt\""), "[ \"a.txt\" \"b.txt\"]");
    EXPECT_EQ(Split("x \"a.txt\""), "[x \"a.txt\"]");
}

TEST(NamesList, TakesATextWithOneQuoteAsItStands) {
    EXPECT_EQ(Split("\"d.txt"), "[\"d.txt]");
    EXPECT_EQ(Split("\""), "[\"]");
}

TEST(NamesList, DropsWhatFollowsTheLastClosedPair) {
    EXPECT_EQ(Split("\"a.txt\" \"b.txt"), "[a.txt]");
    EXPECT_EQ(Split("\"a.txt\" tail"), "[a.txt]");
}

TEST(NamesList, KeepsAnEmptyNameInQuotes) {
    EXPECT_EQ(Split("\"\""), "[]");
    EXPECT_EQ(Split("\"\" \"a\""), "[][a]");
}

TEST(NamesList, SplitsAnEmptyTextIntoNothing) { EXPECT_EQ(Split(""), ""); }

TEST(NamesList, SteersClearOfSecondBytesThatLookLikeQuotes) {
    const bool was = IsLeadByte('\x81');
    SetLeadByte(0x81, true);
    EXPECT_EQ(Split("\"a\x81\"b\" \"c\""), "[a\x81\"b][c]");
    SetLeadByte(0x81, was);
}

TEST(NamesList, RendersOneNameWithALineBreakAndMoreInQuotes) {
    TStringList list;
    EXPECT_EQ(KxNamesListText(list), "");
    list.Add("a.txt");
    EXPECT_EQ(KxNamesListText(list), "a.txt\r\n");
    list.Add("b c.txt");
    EXPECT_EQ(KxNamesListText(list), "\"a.txt\" \"b c.txt\"");
    list.Add("d");
    EXPECT_EQ(KxNamesListText(list), "\"a.txt\" \"b c.txt\" \"d\"");
}

} // namespace
} // namespace kx
