// Memos whose lines change many at a time.

#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/FormFiles.h"
#include "tests/support/ProcessorTime.h"
#include "tests/ui/ControlFixture.h"

#include <random>

namespace kx {
namespace {

using namespace test;

class MemoUpdates : public TControlTest<TMemo> {
protected:
    /// What another program would read.
    std::string WindowText() const {
        wchar_t text[4000];
        GetWindowTextW(Control->WindowHandle(), text, 4000);
        std::string ascii;
        for (const wchar_t* c = text; *c; ++c) {
            ascii += *c < 128 ? static_cast<char>(*c) : '?';
        }
        return ascii;
    }
    void Fill(int count) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += "line " + std::to_string(i) + "\r\n";
        }
        Control->SetText(text);
    }
};

TEST_F(MemoUpdates, TheControlHearsOfTheChangesAtTheirEnd) {
    Fill(3);
    Show();
    int changes = 0;
    Control->SetOnChange([&](TObject*) { ++changes; });
    Control->Lines().BeginUpdate();
    Control->Lines().Add("more");
    Control->Lines().BeginUpdate();
    Control->Lines().Delete(0);
    Control->Lines().EndUpdate();
    EXPECT_EQ(changes, 0) << "they nest";
    EXPECT_EQ(Control->Lines().CommaText(), "\"line 1\",\"line 2\",more");
    Control->Lines().EndUpdate();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(WindowText(), "line 1\r\nline 2\r\nmore\r\n");
    Control->Lines().BeginUpdate();
    Control->Lines().EndUpdate();
    EXPECT_EQ(changes, 1) << "nothing has changed";
}

TEST_F(MemoUpdates, WhoAsksTheControlMeanwhileGetsTheLinesAsTheyAre) {
    Show();
    TStrings& lines = Control->Lines();
    lines.BeginUpdate();
    lines.Add("one");
    EXPECT_EQ(Control->Text(), "one\r\n");
    lines.Add("two");
    EXPECT_EQ(WindowText(), "one\r\ntwo\r\n");
    lines.Add("three");
    EXPECT_EQ(SendMessageA(Control->Handle(), EM_GETLINECOUNT, 0, 0), 4);
    lines.Delete(0);
    Control->SelectAll();
    EXPECT_EQ(Control->SelText(), "two\r\nthree\r\n");
    lines.Add("four");
    SendMessageA(Control->Handle(), EM_SETSEL, 0, 0);
    SendMessageA(Control->Handle(), WM_CHAR, 'x', 0);
    EXPECT_EQ(lines.CommaText(), "xtwo,three,four");
    lines.EndUpdate();
    EXPECT_EQ(WindowText(), "xtwo\r\nthree\r\nfour\r\n");
}

TEST_F(MemoUpdates, ATextThatIsSetMeanwhileTakesThePlaceOfAllLines) {
    Show();
    TStrings& lines = Control->Lines();
    for (const bool byLines : {false, true}) {
        lines.BeginUpdate();
        lines.Add("old");
        byLines ? lines.SetText("new\r\n") : Control->SetText("new\r\n");
        EXPECT_EQ(lines.CommaText(), "new");
        lines.Add("more");
        lines.EndUpdate();
        EXPECT_EQ(WindowText(), "new\r\nmore\r\n");
    }
    lines.BeginUpdate();
    lines.Clear();
    lines.Clear();
    lines.Add("last");
    SetWindowTextA(Control->Handle(), "foreign");
    lines.EndUpdate();
    EXPECT_EQ(WindowText(), "foreign");
    EXPECT_EQ(lines.CommaText(), "foreign");
}

TEST_F(MemoUpdates, LinesThatStayKeepTheirPlaceOnTheScreen) {
    Fill(100);
    Show();
    SendMessageA(Control->Handle(), EM_LINESCROLL, 0, 50);
    ASSERT_EQ(SendMessageA(Control->Handle(), EM_GETFIRSTVISIBLELINE, 0, 0), 50);
    Control->Lines().Exchange(51, 52);
    // The control may bring its caret into view, but does not begin at the top again.
    EXPECT_NEAR(static_cast<double>(SendMessageA(Control->Handle(), EM_GETFIRSTVISIBLELINE, 0, 0)), 50, 5);
    EXPECT_EQ(Control->Lines()[51], "line 52");
    EXPECT_NE(WindowText().find("line 50\r\nline 52\r\nline 51\r\nline 53\r\n"), std::string::npos);
}

TEST_F(MemoUpdates, AnySeriesOfChangesLeavesTheLinesOfAList) {
    Show();
    std::mt19937 random(7);
    const auto below = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    TStringList wanted;
    TStrings& lines = Control->Lines();
    for (int turn = 0; turn < 200; ++turn) {
        lines.BeginUpdate();
        for (int i = below(6); i >= 0; --i) {
            const std::string text = below(4) == 0 ? "" : std::to_string(below(1000));
            const int count = wanted.Count();
            const int deed = count == 0 ? 0 : below(10);
            const int at = below(count + (deed < 5 ? 1 : 0));
            const bool clears = below(40) == 0;
            for (TStrings* const list : {static_cast<TStrings*>(&wanted), &lines}) {
                if (clears) {
                    list->Clear();
                } else if (deed < 5) {
                    list->Insert(at, text);
                } else if (deed < 7) {
                    list->Delete(at);
                } else {
                    list->Put(at, text);
                }
            }
        }
        lines.EndUpdate();
        ASSERT_EQ(WindowText(), wanted.Text()) << turn;
        ASSERT_EQ(lines.Text(), wanted.Text()) << turn;
    }
}

TEST_F(MemoUpdates, TheLetterCaseIsThatOfTheControl) {
    Control->SetCharCase(ecUpperCase);
    Show();
    Control->Lines().SetCommaText("one,two");
    EXPECT_EQ(Control->Text(), "ONE\r\nTWO\r\n");
    EXPECT_EQ(Control->Lines().CommaText(), "ONE,TWO");
}

TEST_F(MemoUpdates, AZeroInALineCutsOffThatLineAlone) {
    Show();
    Control->Lines().BeginUpdate();
    Control->Lines().Add(std::string("one\0more", 8));
    Control->Lines().Add("two");
    Control->Lines().EndUpdate();
    EXPECT_EQ(WindowText(), "one\r\ntwo\r\n");
    EXPECT_EQ(Control->Lines().CommaText(), "one,two");
}

TEST_F(MemoUpdates, AHandlerMayFreeTheMemoAtTheEnd) {
    Show();
    TMemo* memo = Control;
    memo->SetOnChange([&](TObject*) { std::exchange(memo, nullptr)->Free(); });
    memo->Lines().BeginUpdate();
    memo->Lines().Add("a");
    Control->Lines().EndUpdate();
    EXPECT_EQ(memo, nullptr);
    EXPECT_EQ(Form->ControlCount(), 0);
}

TEST_F(MemoUpdates, WithoutAWindowTheLinesReachItWhenItIsMade) {
    Control->Lines().BeginUpdate();
    Control->Lines().Add("one");
    Show();
    EXPECT_EQ(WindowText(), "one\r\n");
    Control->Lines().Add("two");
    Control->Lines().EndUpdate();
    EXPECT_EQ(WindowText(), "one\r\ntwo\r\n");
}

TEST_F(MemoUpdates, AFileOfFourMegabytesFillsAShownMemoInSeconds) {
    std::string file = "object TMemo\r\n  Lines.Strings = (\r\n";
    constexpr int count = 80'000;
    for (int i = 0; i < count; ++i) {
        file += "    'a line of the text that somebody has typed in'\r\n";
    }
    file += "    'last')\r\nend\r\n";
    Control->SetWordWrap(false);
    Show();
    const double begin = ProcessorTime();
    ReadFormOver(*Control, file);
    EXPECT_EQ(Control->Lines().Count(), count + 1);
    EXPECT_EQ(SendMessageA(Control->Handle(), EM_GETLINECOUNT, 0, 0), count + 2);
    EXPECT_LT(ProcessorTime() - begin, 30'000);
}

} // namespace
} // namespace kx
