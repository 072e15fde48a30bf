// SPDX-License-Identifier: MIT
// Lists of texts.

#include "kx/core/Strings.h"
#include "kx/core/Streams.h"
#include "kx/core/TypInfo.h"
#include "tests/support/Texts.h"

#include <gmock/gmock.h>

namespace kx {
namespace {

using test::TextsOf;
using testing::ElementsAre;
using testing::IsEmpty;

/// A list that keeps nothing but what every list must have, so that the common part does the rest.
class TPlainList : public TStrings {
public:
    int Count() const override { return static_cast<int>(FTexts.size()); }
    std::string Get(int index) const override {
        CheckIndex(index);
        return FTexts[size_t(index)];
    }
    void Clear() override { FTexts.clear(); }
    void Delete(int index) override {
        CheckIndex(index);
        FTexts.erase(FTexts.begin() + index);
    }
    void Insert(int index, const std::string& text) override { FTexts.insert(FTexts.begin() + index, text); }

private:
    std::vector<std::string> FTexts;
};

template <class T> class AnyStrings : public testing::Test {
protected:
    T List;
};
using ListTypes = testing::Types<TStringList, TPlainList>;
TYPED_TEST_SUITE(AnyStrings, ListTypes);

TYPED_TEST(AnyStrings, AddInsertDeleteMoveAndExchange) {
    TStrings& list = this->List;
    EXPECT_EQ(list.Add("a"), 0);
    EXPECT_EQ(list.Add("c"), 1);
    list.Insert(1, "b");
    EXPECT_THAT(TextsOf(list), ElementsAre("a", "b", "c"));
    list.Move(0, 2);
    EXPECT_THAT(TextsOf(list), ElementsAre("b", "c", "a"));
    list.Move(2, 1);
    EXPECT_THAT(TextsOf(list), ElementsAre("b", "a", "c"));
    list.Exchange(0, 2);
    EXPECT_THAT(TextsOf(list), ElementsAre("c", "a", "b"));
    list.Put(1, "z");
    list.Delete(0);
    EXPECT_THAT(TextsOf(list), ElementsAre("z", "b"));
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
}

TYPED_TEST(AnyStrings, IndicesOutOfBoundsAreErrors) {
    TStrings& list = this->List;
    list.Add("a");
    for (const int index : {-1, 1}) {
        EXPECT_THROW(list.Get(index), EStringListError);
        EXPECT_THROW(list.GetObject(index), EStringListError);
        EXPECT_THROW(list.PutObject(index, nullptr), EStringListError);
        EXPECT_THROW(list.Put(index, ""), EStringListError);
        EXPECT_THROW(list.Delete(index), EStringListError);
        EXPECT_THROW(list.Move(0, index), EStringListError);
        EXPECT_THROW(list.Move(index, 0), EStringListError);
        EXPECT_THROW(list.Exchange(0, index), EStringListError);
    }
    EXPECT_THAT(TextsOf(list), ElementsAre("a"));
}

TYPED_TEST(AnyStrings, TextSplitsAtEveryKindOfLineEnd) {
    TStrings& list = this->List;
    list.SetText("a\r\nb\nc\rd\r\n\r\n\n");
    EXPECT_THAT(TextsOf(list), ElementsAre("a", "b", "c", "d", "", ""));
    EXPECT_EQ(list.Text(), "a\r\nb\r\nc\r\nd\r\n\r\n\r\n");
    list.SetText("last");
    EXPECT_THAT(TextsOf(list), ElementsAre("last"));
    list.SetText("");
    EXPECT_THAT(TextsOf(list), IsEmpty());
    EXPECT_EQ(list.Text(), "");
    list.SetText("\n");
    EXPECT_THAT(TextsOf(list), ElementsAre(""));
}

TYPED_TEST(AnyStrings, CommaTextQuotesWhatNeedsIt) {
    TStrings& list = this->List;
    for (const char* text : {"plain", "two words", "a,b", "say \"hi\"", "", "\ttab"}) {
        list.Add(text);
    }
    const std::string text = R"(plain,"two words","a,b","say ""hi""",,"	tab")";
    EXPECT_EQ(list.CommaText(), text);
    list.SetCommaText(text);
    EXPECT_EQ(list.CommaText(), text);
    EXPECT_EQ(list.Count(), 6);
}

TYPED_TEST(AnyStrings, CommaTextSplitsAtCommasAndBlanks) {
    TStrings& list = this->List;
    list.SetCommaText(" a , b  c,, \"d\"e ");
    EXPECT_THAT(TextsOf(list), ElementsAre("a", "b", "c", "", "d", "e"));
    list.SetCommaText("");
    EXPECT_THAT(TextsOf(list), IsEmpty());
    list.SetCommaText("a,");
    EXPECT_THAT(TextsOf(list), ElementsAre("a", ""));
    list.SetCommaText("\"open");
    EXPECT_THAT(TextsOf(list), ElementsAre("open"));
    list.SetCommaText("\"\"");
    EXPECT_THAT(TextsOf(list), ElementsAre(""));
    EXPECT_EQ(list.CommaText(), "\"\"");
}

TYPED_TEST(AnyStrings, NamesAndValues) {
    TStrings& list = this->List;
    list.SetText("one=1\nplain\nTwo=2=2\n=empty name\nonce=x\nonce=y");
    EXPECT_EQ(list.Names(0), "one");
    EXPECT_EQ(list.Names(1), "");
    EXPECT_EQ(list.Values("ONE"), "1");
    EXPECT_EQ(list.Values("two"), "2=2");
    EXPECT_EQ(list.Values("plain"), "");
    EXPECT_EQ(list.Values("missing"), "");
    EXPECT_EQ(list.Values("once"), "x");
    list.SetValue("one", "11");
    list.SetValue("three", "3");
    list.SetValue("Two", "");
    list.SetValue("missing", "");
    EXPECT_THAT(TextsOf(list), ElementsAre("one=11", "plain", "=empty name", "once=x", "once=y", "three=3"));
}

TYPED_TEST(AnyStrings, AssignAddAndCompare) {
    TStrings& list = this->List;
    TStringList source;
    source.SetText("a\nb");
    list.Add("old");
    list.Assign(&source);
    EXPECT_TRUE(list.Equals(source));
    list.Assign(&list);
    list.AddStrings(list);
    EXPECT_THAT(TextsOf(list), ElementsAre("a", "b", "a", "b"));
    EXPECT_FALSE(list.Equals(source));
    source.SetText("A\nb\na\nb");
    EXPECT_FALSE(list.Equals(source)); // case matters
    EXPECT_EQ(list.IndexOf("B"), 1);
    EXPECT_EQ(list.IndexOf("x"), -1);
    TPersistent other;
    EXPECT_THROW(list.Assign(&other), EConvertError);
}

TYPED_TEST(AnyStrings, LoadsAndSavesAsText) {
    TStrings& list = this->List;
    TMemoryStream stream("skipped\nfirst\r\nsecond");
    stream.SetPosition(8);
    list.LoadFromStream(stream);
    EXPECT_THAT(TextsOf(list), ElementsAre("first", "second"));
    TMemoryStream saved;
    list.SaveToStream(saved);
    EXPECT_EQ(saved.Bytes(), "first\r\nsecond\r\n");
}

TEST(StringList, KeepsObjectsWithTheirTexts) {
    TPersistent a;
    TPersistent b;
    TStringList list;
    EXPECT_EQ(list.AddObject("a", &a), 0);
    list.InsertObject(0, "b", &b);
    EXPECT_EQ(list.GetObject(0), &b);
    list.Exchange(0, 1);
    list.Move(0, 1);
    list.Put(1, "aa");
    EXPECT_EQ(list.GetObject(1), &a);
    TStringList copy;
    copy.Assign(&list);
    EXPECT_EQ(copy.GetObject(1), &a);
    list.Delete(0);
    EXPECT_EQ(list.GetObject(0), &a);
    TPlainList plain;
    plain.AddObject("x", &a);
    EXPECT_EQ(plain.GetObject(0), nullptr); // a list without room for objects
}

TEST(StringList, ASortedListKeepsItsOrder) {
    TStringList list;
    list.SetText("pear\nApple\nfig");
    list.SetSorted(true);
    EXPECT_THAT(TextsOf(list), ElementsAre("Apple", "fig", "pear"));
    EXPECT_EQ(list.Add("banana"), 1);
    EXPECT_EQ(list.IndexOf("FIG"), 2);
    EXPECT_EQ(list.IndexOf("grape"), -1);
    EXPECT_THROW(list.Insert(0, "x"), EStringListError);
    EXPECT_THROW(list.Put(0, "x"), EStringListError);
    EXPECT_THROW(list.Exchange(0, 1), EStringListError);
    EXPECT_THROW(list.Move(0, 1), EStringListError);
    EXPECT_THAT(TextsOf(list), ElementsAre("Apple", "banana", "fig", "pear"));
    list.SetSorted(false);
    list.Insert(0, "x");
    EXPECT_EQ(list.Count(), 5);
}

TEST(StringList, DuplicatesInASortedList) {
    TStringList list;
    list.SetSorted(true);
    list.Add("a");
    EXPECT_EQ(list.Add("A"), 0); // ignored
    EXPECT_THAT(TextsOf(list), ElementsAre("a"));
    list.SetDuplicates(dupError);
    EXPECT_THROW(list.Add("A"), EStringListError);
    list.SetDuplicates(dupAccept);
    list.Add("A");
    EXPECT_EQ(list.Count(), 2);
    TStringList unsorted;
    unsorted.SetDuplicates(dupError);
    unsorted.Add("a");
    unsorted.Add("a"); // only sorted lists look
    EXPECT_EQ(unsorted.Count(), 2);
}

TEST(StringList, CaseMayMatter) {
    TStringList list;
    list.SetText("b\nB\na");
    list.SetCaseSensitive(true);
    EXPECT_EQ(list.IndexOf("B"), 1);
    EXPECT_EQ(list.IndexOf("A"), -1);
    list.SetSorted(true);
    EXPECT_THAT(TextsOf(list), ElementsAre("B", "a", "b"));
    list.SetCaseSensitive(false);
    EXPECT_THAT(TextsOf(list), ElementsAre("a", "B", "b"));
    EXPECT_TRUE(list.Sorted());
}

TEST(StringList, ChangesAreToldBeforeAndAfter) {
    TStringList list;
    std::string log;
    list.SetOnChanging([&](TObject*) { log += "<" + IntToStr(list.Count()); });
    list.SetOnChange([&](TObject* sender) {
        EXPECT_EQ(sender, &list);
        log += ">" + IntToStr(list.Count());
    });
    list.Add("a");
    EXPECT_EQ(log, "<0>1");
    log.clear();
    list.Clear();
    list.Clear(); // nothing to do
    EXPECT_EQ(log, "<1>0");
    log.clear();
    list.BeginUpdate();
    list.BeginUpdate();
    list.Add("a");
    list.Add("b");
    list.EndUpdate();
    EXPECT_EQ(log, "<0");
    list.EndUpdate();
    EXPECT_EQ(log, "<0>2");
    log.clear();
    list.SetText("x\ny\nz");
    EXPECT_EQ(log, "<2>3");
}

TEST(StringList, AChangeHandlerMayFreeTheList) {
    auto* const list = new TStringList;
    int calls = 0;
    list->SetOnChange([&calls](TObject* sender) {
        ++calls;
        delete sender;
    });
    list->Add("a");
    EXPECT_EQ(calls, 1);
}

TEST(StringList, AnErrorWithinAnUpdateEndsIt) {
    TStringList list;
    list.SetSorted(true);
    list.SetDuplicates(dupError);
    int changes = 0;
    list.SetOnChange([&](TObject*) {
        ++changes;
        throw EAbort("the handler fails as well");
    });
    EXPECT_THROW(list.SetText("a\na"), EStringListError); // the first error counts
    EXPECT_EQ(changes, 1);
    EXPECT_THROW(list.Add("b"), EAbort); // told again: the update is over
}

TEST(StringList, TextsHoldAnyByte) {
    TStringList list;
    list.Add(std::string("a\0b", 3));
    EXPECT_EQ(list.Text(), std::string("a\0b\r\n", 5));
    list.SetText(std::string("a\0b\nc", 5));
    EXPECT_EQ(list[0], std::string("a\0b", 3));
}

TEST(StringList, CanBeGoneThrough) {
    TStringList list;
    EXPECT_EQ(list.begin(), list.end());
    list.SetCommaText("one,two,three");
    const TStrings& strings = list;
    std::string all;
    for (const std::string text : strings) {
        all += text + ";";
    }
    EXPECT_EQ(all, "one;two;three;");
    auto at = strings.begin();
    EXPECT_EQ(*at++, "one");
    EXPECT_EQ(*++at, "three");
}

} // namespace
} // namespace kx
