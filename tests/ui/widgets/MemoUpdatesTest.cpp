// SPDX-License-Identifier: MIT
// Memos whose lines change many at a time.

#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/FormFiles.h"
#include "tests/support/HeapCount.h"
#include "tests/support/ProcessorTime.h"
#include "tests/ui/ControlFixture.h"

#include <functional>
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
    /// The text in the window itself, past the control.
    static LRESULT CallEdit(TMemo& memo, UINT message, LPARAM lParam) {
        WNDCLASSA edit{};
        GetClassInfoA(nullptr, "EDIT", &edit);
        return CallWindowProcA(edit.lpfnWndProc, memo.WindowHandle(), message, 0, lParam);
    }
    static LRESULT LengthInWindow(TMemo& memo) { return CallEdit(memo, WM_GETTEXTLENGTH, 0); }
    static void SetTextUnnoticed(TMemo& memo, const char* text) {
        CallEdit(memo, WM_SETTEXT, reinterpret_cast<LPARAM>(text));
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

TEST_F(MemoUpdates, ALineBreakStaysWhatItWas) {
    Control->SetText("a\nb\rc\r\nd");
    EXPECT_EQ(Control->Lines().CommaText(), "a,b,c,d");
    Control->Lines().Put(0, "x");
    Control->Lines().Put(1, "y");
    EXPECT_EQ(Control->Text(), "x\ny\rc\r\nd");
    Control->Lines().Insert(1, "new");
    EXPECT_EQ(Control->Lines().CommaText(), "x,new,y,c,d");
}

TEST_F(MemoUpdates, ClearingIsOneOfTheChanges) {
    Show();
    int changes = 0;
    TStrings& lines = Control->Lines();
    Control->SetOnChange([&](TObject*) { ++changes; });
    lines.BeginUpdate();
    lines.Clear();
    lines.EndUpdate();
    EXPECT_EQ(changes, 0) << "there was nothing";
    Fill(2);
    changes = 0;
    lines.BeginUpdate();
    lines.Clear();
    EXPECT_EQ(changes, 0);
    lines.EndUpdate();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(Control->Text(), "");
}

TEST_F(MemoUpdates, InAWindowOfOthersTheControlHearsAtTheEndToo) {
    const HWND host = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 300, 300, nullptr, nullptr, nullptr, nullptr);
    TMemo memo;
    memo.SetParentWindow(host);
    memo.HandleNeeded();
    memo.Lines().BeginUpdate();
    memo.Lines().Add("a");
    memo.Lines().Add("b");
    EXPECT_EQ(memo.Lines().Count(), 2);
    EXPECT_EQ(memo.Lines()[1], "b");
    EXPECT_EQ(LengthInWindow(memo), 0);
    memo.Lines().EndUpdate();
    EXPECT_EQ(LengthInWindow(memo), 6);
    memo.SetParentWindow(nullptr);
    DestroyWindow(host);
}

TEST_F(MemoUpdates, WithoutAWindowLinesWithBreaksAreSeveralInTheEnd) {
    TStrings& lines = Control->Lines();
    lines.BeginUpdate();
    lines.Add("a\r\nb");
    lines.EndUpdate();
    EXPECT_EQ(lines.Count(), 2);
    lines.BeginUpdate();
    lines.Add("c");
    Show(); // the window has them from the first
    EXPECT_EQ(LengthInWindow(*Control), 9);
    lines.EndUpdate();
}

TEST_F(MemoUpdates, MessagesAboutTheTextFindItUpToDate) {
    Control->SetText("one\r\n");
    Show();
    TStrings& lines = Control->Lines();
    lines.BeginUpdate();
    lines.Add("two");
    DWORD end = 0;
    SendMessageA(Control->Handle(), EM_GETSEL, 0, reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(end, 10u) << "a change puts the caret behind it";
    SendMessageA(Control->Handle(), EM_SETSEL, 0, 1);
    lines.Add("three");
    SendMessageA(Control->Handle(), WM_CLEAR, 0, 0); // nothing is selected any more
    lines.EndUpdate();
    EXPECT_EQ(lines.CommaText(), "one,two,three");
    EXPECT_EQ(WindowText(), "one\r\ntwo\r\nthree\r\n");
}

TEST_F(MemoUpdates, AWindowThatHoldsSomethingElseGetsTheLines) {
    Fill(2);
    Show();
    EXPECT_EQ(Control->Lines().Count(), 2);
    SetTextUnnoticed(*Control, "foreign");
    Control->Lines().Add("more");
    EXPECT_EQ(WindowText(), "line 0\r\nline 1\r\nmore\r\n");
}

TEST_F(MemoUpdates, WhatChangedMeanwhileIsPaintedAtTheEnd) {
    Show();
    Control->Lines().BeginUpdate();
    Control->Lines().Add("one");
    EXPECT_EQ(Control->Text(), "one\r\n"); // the window has it now
    ValidateRect(Control->Handle(), nullptr);
    Control->Lines().EndUpdate();
    EXPECT_TRUE(GetUpdateRect(Control->Handle(), nullptr, FALSE));
}

/// What reads a form file with that many lines into a memo and looks at them in its window.
using TReading = std::function<void(int count, const std::string& file)>;

void ExpectTimeInProportion(int few, const TReading& read) {
    const auto timeOf = [&](int count) {
        std::string file = "object TMemo\r\n  WordWrap = False\r\n  Lines.Strings = (\r\n";
        for (int i = 1; i < count; ++i) {
            file += "    'short'\r\n";
        }
        file += "    'last')\r\nend\r\n";
        return Fastest([&] { read(count, file); });
    };
    const double small = timeOf(few);
    const double large = timeOf(4 * few);
    EXPECT_LT(large, 9 * small + 30) << small << " and " << large << " ms; quadratic would be 16 times as long";
}

TEST_F(MemoUpdates, TheLinesOfAFormFileTakeTimeInProportionToTheirNumber) {
    const auto expectLines = [](TMemo& memo, int count) {
        EXPECT_EQ(memo.Lines().Count(), count);
        EXPECT_EQ(memo.Lines()[count - 1], "last");
        EXPECT_EQ(SendMessageA(memo.Handle(), EM_GETLINECOUNT, 0, 0), count + 1);
    };
    const int few = GuardedHeap ? 1'000 : 5'000; // the guard makes a page of each line
    Show();
    ExpectTimeInProportion(few, [&](int count, const std::string& file) {
        ReadFormOver(*Control, file);
        expectLines(*Control, count);
    });
    ExpectTimeInProportion(few, [&](int count, const std::string& file) {
        TMemo memo;
        ReadFormOver(memo, file);
        memo.SetParent(Form.get()); // now there is a window
        expectLines(memo, count);
    });
}

} // namespace
} // namespace kx
