// SPDX-License-Identifier: MIT
// Edits and memos.

#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/ProcessorTime.h"
#include "tests/ui/ControlFixture.h"

#include <algorithm>
#include <climits>

// Built twice: into a program whose code page is the system's, and into one whose code page is UTF-8.

namespace kx {
namespace {

using namespace test;

class Edit : public TControlTest<TEdit> {};

TEST_F(Edit, SelectionIsReadAndReplaced) {
    Control->SetText("hello world");
    Show();
    Control->SetSelStart(6);
    Control->SetSelLength(5);
    EXPECT_EQ(Control->SelText(), "world");
    Control->SetSelText("there");
    EXPECT_EQ(Control->Text(), "hello there");
    Control->SelectAll();
    EXPECT_EQ(Control->SelLength(), 11);
}

TEST_F(Edit, OnChangeFiresForTypingAndSetting) {
    int changes = 0;
    Control->SetText("first");
    Control->SetOnChange([&](TObject*) { ++changes; });
    Show();
    EXPECT_EQ(changes, 0) << "making the window changes nothing";
    Control->SetText("second");
    EXPECT_EQ(changes, 1);
    Control->SetText("second");
    EXPECT_EQ(changes, 1);
}

TEST_F(Edit, ReadOnlyMaxLengthAndPasswordReachTheWindow) {
    Show();
    Control->SetMaxLength(3);
    Control->SetFocus();
    TypeText("abcd");
    PressKey(VK_HOME);
    EXPECT_TRUE(PumpUntil([&] { return Control->Text() == "abc" && Control->SelStart() == 0; }));
    Control->SetReadOnly(true);
    EXPECT_NE(GetWindowLongA(Control->Handle(), GWL_STYLE) & ES_READONLY, 0);
    Control->SetPasswordChar('*');
    EXPECT_EQ(Control->Text(), "abc");
    EXPECT_EQ(SendMessageA(Control->Handle(), EM_GETPASSWORDCHAR, 0, 0), '*');
}

class Memo : public TControlTest<TMemo> {};

TEST_F(Memo, LinesAreTheText) {
    Control->Lines().Add("one");
    Control->Lines().Add("two");
    EXPECT_EQ(Control->Text(), "one\r\ntwo\r\n");
    Show();
    Control->Lines().Insert(1, "between");
    EXPECT_EQ(Control->Lines().CommaText(), "one,between,two");
    Control->Lines().Delete(0);
    EXPECT_EQ(TextOf(Control->Handle()), "between\r\ntwo\r\n");
    Control->Lines().Clear();
    EXPECT_EQ(Control->Text(), "");
}

TEST_F(Edit, PositionsAreBytesOfTheText) {
    const std::string head = FromUtf8("Größe");
    const std::string middle = FromUtf8("äöü");
    const std::string text = head + middle + FromUtf8("ß.");
    Control->SetText(text);
    Show();
    Control->SetSelStart(static_cast<int>(head.size()));
    EXPECT_EQ(Control->SelStart(), static_cast<int>(head.size()));
    EXPECT_EQ(Control->SelLength(), 0);
    Control->SetSelLength(static_cast<int>(middle.size()));
    EXPECT_EQ(Control->SelText(), middle);
    EXPECT_EQ(Control->SelLength(), static_cast<int>(middle.size()));
    EXPECT_EQ(text.substr(static_cast<size_t>(Control->SelStart()), static_cast<size_t>(Control->SelLength())), middle);
    Control->SelectAll();
    EXPECT_EQ(Control->SelText(), text);
    EXPECT_EQ(Control->SelLength(), static_cast<int>(text.size()));
}

TEST_F(Edit, PositionsCountTheBytesOfCharactersOfEveryLength) {
    std::vector<std::string> characters{"a", FromUtf8("é")};
    for (const char* longer : {"Ж", "ﷺ", "中", "\xF0\x9F\x98\x80", "\xF0\xA0\xAE\xB7"}) {
        if (CodePageHolds(longer)) {
            characters.push_back(FromUtf8(longer));
        }
    }
    std::string text;
    for (const std::string& character : characters) {
        text += character;
    }
    Control->SetText(text);
    Show();
    int at = 0;
    for (const std::string& character : characters) {
        const auto size = static_cast<int>(character.size());
        Control->SetSelStart(at);
        Control->SetSelLength(size);
        EXPECT_EQ(Control->SelText(), character);
        EXPECT_EQ(Control->SelStart(), at);
        EXPECT_EQ(Control->SelLength(), size);
        for (int inside = 1; inside < size; ++inside) {
            Control->SetSelLength(inside);
            EXPECT_EQ(Control->SelLength(), 0) << "a part of a character is none of it";
            Control->SetSelStart(at + inside);
            EXPECT_EQ(Control->SelStart(), at);
        }
        at += size;
    }
    Control->SetSelStart(static_cast<int>(characters[0].size()));
    Control->SetSelLength(static_cast<int>(text.size()));
    Control->SetSelText(characters.back());
    EXPECT_EQ(Control->Text(), characters[0] + characters.back());
    EXPECT_EQ(Control->SelStart(), static_cast<int>(Control->Text().size()));
}

TEST_F(Edit, WhatIsPastedIsNotCutInsideACharacter) {
    Show();
    auto* const source = Add<TMemo>(10, 150, 100, 30);
    SetWindowTextW(source->Handle(), L"ab\U0001F600cd");
    source->SelectAll();
    SendMessageW(source->Handle(), WM_COPY, 0, 0);
    std::vector<std::wstring> changes;
    Control->SetOnChange([&](TObject*) { changes.push_back(WideWindowText(Control->Handle())); });
    const auto pasted = [&](int maxLength) {
        Control->SetText("");
        Control->SetMaxLength(maxLength);
        changes.clear();
        SendMessageW(Control->Handle(), WM_PASTE, 0, 0);
        return WideWindowText(Control->Handle());
    };
    EXPECT_EQ(pasted(3), L"ab");
    EXPECT_EQ(changes, std::vector<std::wstring>{L"ab"});
    EXPECT_EQ(pasted(4), L"ab\U0001F600");
    EXPECT_EQ(changes, std::vector<std::wstring>{L"ab\U0001F600"});
    EXPECT_EQ(pasted(0), L"ab\U0001F600cd");
    auto* const combo = Add<TComboBox>(10, 190, 100, 24);
    combo->SetMaxLength(3);
    HWND edit = FindWindowExW(combo->Handle(), nullptr, L"EDIT", nullptr);
    SendMessageW(edit, WM_PASTE, 0, 0);
    EXPECT_EQ(WideWindowText(edit), L"ab");
}

TEST_F(Edit, MaxLengthDoesNotLimitTextThatTheProgramSelects) {
    Control->SetMaxLength(3);
    Show();
    Control->SetSelText("longer");
    EXPECT_EQ(Control->Text(), "longer");
    EXPECT_EQ(SendMessageW(Control->Handle(), EM_GETLIMITTEXT, 0, 0), 3);
}

TEST_F(Edit, APositionInsideACharacterIsItsBeginning) {
    const std::string first = FromUtf8("ä");
    const std::string text = first + FromUtf8("ö.");
    Control->SetText(text);
    Show();
    for (int at = 0; at <= static_cast<int>(text.size()); ++at) {
        int beginning = 0;
        for (const size_t whole : {size_t{0}, first.size(), 2 * first.size(), text.size()}) {
            beginning = static_cast<int>(whole) <= at ? static_cast<int>(whole) : beginning;
        }
        Control->SetSelStart(at);
        EXPECT_EQ(Control->SelStart(), beginning) << at;
    }
}

TEST_F(Edit, PositionsOutsideTheTextAreItsEnds) {
    Control->SetText("hello");
    Show();
    Control->SetSelStart(100);
    EXPECT_EQ(Control->SelStart(), 5);
    Control->SetSelStart(-3);
    EXPECT_EQ(Control->SelStart(), 0);
    Control->SetSelStart(2);
    Control->SetSelLength(INT_MAX);
    EXPECT_EQ(Control->SelText(), "llo");
    Control->SetSelLength(-1);
    EXPECT_EQ(Control->SelLength(), 0);
    EXPECT_EQ(Control->SelStart(), 2);
}

TEST_F(Edit, ACaretInsideACharacterBeyond16BitsIsAtItsBeginning) {
    const char* const clef = "\xF0\x9D\x84\x9E";
    if (!CodePageHolds(clef)) {
        EXPECT_NE(GetACP(), static_cast<UINT>(CP_UTF8));
        return;
    }
    Control->SetText(std::string("a") + clef + "b");
    Show();
    SendMessageW(Control->Handle(), EM_SETSEL, 2, 3);
    EXPECT_EQ(Control->SelStart(), 1);
    EXPECT_EQ(Control->SelText(), clef);
}

TEST_F(Edit, MaxLengthCountsCharacters) {
    Show();
    Control->SetMaxLength(4);
    const std::string letter = FromUtf8("ä");
    const std::string text = letter + letter + letter;
    Control->SetText(text + text); // what the program sets is not limited
    EXPECT_EQ(Control->Text(), text + text);
    Control->SetText(text);
    Control->SetSelStart(static_cast<int>(text.size()));
    Control->SetFocus();
    TypeText("xyz");
    PressKey(VK_HOME);
    ASSERT_TRUE(PumpUntil([&] { return Control->SelStart() == 0; }));
    EXPECT_EQ(Control->Text(), text + "x");
    Control->SetMaxLength(-1);
    EXPECT_EQ(Control->MaxLength(), 0) << "no limit";
}

TEST_F(Edit, APasswordCharacterThatIsNoneLeavesTheSystems) {
    Control->SetText("secret");
    Control->SetPasswordChar('\xB7');
    Show();
    const LRESULT shown = SendMessageW(Control->Handle(), EM_GETPASSWORDCHAR, 0, 0);
    EXPECT_NE(shown, 0) << "the text would show";
    if (GetACP() == CP_UTF8) {
        EXPECT_NE(GetWindowLongA(Control->Handle(), GWL_STYLE) & ES_PASSWORD, 0);
        EXPECT_TRUE(shown == L'*' || shown == 0x25CF) << shown;
    } else {
        EXPECT_EQ(static_cast<uint8_t>(shown), 0xB7);
    }
}

TEST_F(Memo, EachChangeOfALineFiresOnceAndShowsTheNewLines) {
    std::vector<std::string> seen;
    Control->SetText("a\r\nb");
    Show();
    Control->SetOnChange([&](TObject*) { seen.push_back(Control->Lines().CommaText()); });
    TStrings& lines = Control->Lines();
    EXPECT_EQ(lines.Add("c"), 2);
    EXPECT_EQ(TextOf(Control->Handle()), "a\r\nb\r\nc\r\n");
    lines.Put(1, "B");
    lines.Insert(0, FromUtf8("ä"));
    lines.Delete(1);
    EXPECT_EQ(seen, (std::vector<std::string>{"a,b,c", "a,B,c", FromUtf8("ä") + ",a,B,c", FromUtf8("ä") + ",B,c"}));
    lines.Put(2, FromUtf8("ü"));
    lines.Insert(2, "x");
    EXPECT_EQ(Control->Text(), FromUtf8("ä\r\nB\r\nx\r\nü\r\n"));
    EXPECT_EQ(seen.size(), 6u);
    Control->SetText("other");
    EXPECT_EQ(seen.back(), "other");
    EXPECT_EQ(seen.size(), 7u);
}

TEST_F(Memo, TheLinesAreReadAgainAfterEveryOtherChange) {
    Control->Lines().Add("one");
    Show();
    EXPECT_EQ(Control->Lines().Count(), 1);
    Control->SetFocus();
    Control->SetSelStart(0);
    TypeText("x");
    PressKey(VK_RETURN);
    ASSERT_TRUE(PumpUntil([&] { return Control->Lines().Count() == 2; }));
    EXPECT_EQ(Control->Lines().CommaText(), "x,one");
    Control->SetSelText("two ");
    EXPECT_EQ(Control->Lines().CommaText(), "x,\"two one\"");
    SetWindowTextA(Control->Handle(), "new");
    EXPECT_EQ(Control->Lines().CommaText(), "new");
    SendMessageA(Control->Handle(), EM_SETSEL, 0, 1);
    SendMessageA(Control->Handle(), WM_CLEAR, 0, 0);
    EXPECT_EQ(Control->Lines().Get(0), "ew");
    Control->RecreateWnd();
    Control->Lines().Add("more");
    EXPECT_EQ(TextOf(Control->Handle()), "ew\r\nmore\r\n");
}

TEST_F(Memo, AHandlerOfAChangeMayChangeTheTextAgain) {
    Show();
    Control->SetOnChange([&](TObject*) {
        if (Control->Lines().Count() == 1) {
            Control->SelectAll();
            Control->SetSelText("two\r\nlines");
        }
    });
    Control->Lines().Add("one");
    EXPECT_EQ(Control->Lines().CommaText(), "two,lines");
    EXPECT_EQ(TextOf(Control->Handle()), "two\r\nlines");
}

TEST_F(Memo, AHandlerOfAChangeMayFreeTheMemo) {
    Show();
    bool freed = false;
    Control->SetOnChange([&](TObject*) {
        Control->Free();
        freed = true;
    });
    Control->Lines().Add("one");
    EXPECT_TRUE(freed);
}

TEST_F(Memo, LinesWithLineEndsInThemAreSeveralLines) {
    for (const bool shown : {false, true}) {
        if (shown) {
            Control->Lines().Clear();
            Show();
        }
        Control->Lines().Add("a\nb");
        EXPECT_EQ(Control->Lines().CommaText(), "a,b");
        Control->Lines().Insert(1, "c");
        EXPECT_EQ(Control->Lines().CommaText(), "a,c,b");
        Control->Lines().Delete(0);
        EXPECT_EQ(Control->Lines().CommaText(), "c,b");
    }
}

TEST_F(Memo, TheLetterCaseOfTheControlIsThatOfItsLines) {
    Control->SetCharCase(ecUpperCase);
    Show();
    Control->Lines().Add("abc");
    EXPECT_EQ(Control->Lines().Get(0), "ABC");
}

TEST_F(Memo, MaxLengthDoesNotLimitLinesThatTheProgramAdds) {
    Control->SetMaxLength(5);
    Show();
    Control->Lines().Add("longer than five");
    EXPECT_EQ(Control->Text(), "longer than five\r\n");
    Control->SetFocus();
    TypeText("x");
    PressKey(VK_HOME, {VK_CONTROL});
    ASSERT_TRUE(PumpUntil([&] { return Control->SelStart() == 0; }));
    EXPECT_EQ(Control->Text(), "longer than five\r\n") << "what the user types is limited again";
}

TEST_F(Memo, WithoutAWindowTheLinesAreTheTextToo) {
    Control->Lines().Add("a");
    Control->SetText("");
    EXPECT_EQ(Control->Lines().Count(), 0);
    Control->Lines().Add("b");
    Control->SetText(Control->Text() + "c");
    EXPECT_EQ(Control->Lines().CommaText(), "b,c");
    Control->Lines().Add("d");
    EXPECT_THROW(Control->Lines().Insert(4, "x"), EStringListError);
    EXPECT_THROW(Control->Lines().Insert(-1, "x"), EStringListError);
    EXPECT_THROW(Control->Lines().Delete(3), EStringListError);
    EXPECT_THROW(Control->Lines().Put(3, "x"), EStringListError);
    EXPECT_THROW(Control->Lines().Get(3), EStringListError);
    Show();
    EXPECT_EQ(TextOf(Control->Handle()), "b\r\nc\r\nd\r\n");
    DestroyWindow(Form->Handle());
    Control->Lines().Delete(0);
    EXPECT_EQ(Control->Text(), "c\r\nd\r\n");
}

TEST_F(Memo, UnderAForeignWindowTheLinesAreWhatTheWindowHolds) {
    Show();
    const HWND host = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 300, 300, nullptr, nullptr, nullptr, nullptr);
    TMemo memo;
    memo.SetParentWindow(host);
    memo.HandleNeeded();
    memo.Lines().Add("a");
    EXPECT_EQ(memo.Lines().Count(), 1);
    SendMessageA(memo.Handle(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>("b\r\n"));
    EXPECT_EQ(memo.Lines().CommaText(), "a,b");
    memo.SetParentWindow(nullptr);
    DestroyWindow(host);
}

TEST_F(Memo, TheKeysThatItWantsAreThoseOfItsSettings) {
    Show();
    const auto wants = [&](WPARAM key) {
        MSG message{};
        message.hwnd = Control->Handle();
        message.message = WM_KEYDOWN;
        message.wParam = key;
        const auto code =
            SendMessageA(Control->Handle(), WM_GETDLGCODE, key, reinterpret_cast<LPARAM>(key ? &message : nullptr));
        return (code & (key ? DLGC_WANTMESSAGE : DLGC_WANTTAB)) != 0;
    };
    EXPECT_TRUE(wants(VK_RETURN));
    EXPECT_FALSE(wants(VK_TAB));
    EXPECT_FALSE(wants(0)) << "Tab in general";
    Control->SetWantTabs(true);
    EXPECT_TRUE(wants(VK_TAB));
    EXPECT_TRUE(wants(0));
    Control->SetWantReturns(false);
    EXPECT_FALSE(wants(VK_RETURN));
}

TEST_F(Memo, WordsWrapOrTheTextGoesSideways) {
    const auto scrollsSideways = [&] { return (GetWindowLongA(Control->Handle(), GWL_STYLE) & ES_AUTOHSCROLL) != 0; };
    Show();
    EXPECT_FALSE(scrollsSideways());
    Control->SetWordWrap(false);
    EXPECT_TRUE(scrollsSideways());
}

TEST_F(Memo, FourTimesAsManyLinesTakeNotMuchMoreThanFourTimesAsLong) {
    const auto fill = [&](int count) {
        Control->Lines().Clear();
        for (int i = 0; i < count; ++i) {
            Control->Lines().Add("a line of some length");
        }
        int length = 0;
        for (int i = 0; i < Control->Lines().Count(); ++i) {
            length += static_cast<int>(Control->Lines()[i].size());
        }
        EXPECT_EQ(length, 21 * count);
    };
    for (const bool shown : {false, true}) {
        if (shown) {
            Control->Lines().Clear();
            Show();
        }
        const double few = Fastest([&] { fill(500); });
        const double many = Fastest([&] { fill(2000); });
        EXPECT_LT(many, 9 * few + 30) << few << " and " << many << " ms; quadratic would be 16 times as long";
    }
}

/// Beyond what some systems take along while they make a window.
template <class T> void ExpectAnyTextInANewWindow(TForm& form) {
    for (const int length : {SHRT_MAX, SHRT_MAX + 1, 1'000'000}) {
        int changes = 0;
        T edit;
        if (auto* const memo = dynamic_cast<TMemo*>(static_cast<TObject*>(&edit))) {
            memo->SetWordWrap(false); // the system would look for blanks
        }
        edit.SetOnChange([&](TObject*) { ++changes; });
        const std::string text(static_cast<size_t>(length), 'x');
        edit.SetText(text);
        changes = 0;
        edit.SetParent(&form);
        edit.HandleNeeded();
        EXPECT_TRUE(edit.Text() == text) << length;
        EXPECT_EQ(GetWindowTextLengthW(edit.Handle()), length);
        edit.RecreateWnd();
        EXPECT_TRUE(edit.Text() == text) << length;
        EXPECT_EQ(changes, 0);
        EXPECT_FALSE(edit.Modified());
    }
}

TEST_F(Edit, WhatTheUserChangedStaysChangedInANewWindow) {
    Control->SetText("first");
    Show();
    EXPECT_FALSE(Control->Modified());
    Control->SetFocus();
    TypeText("x");
    EXPECT_TRUE(PumpUntil([&] { return Control->Modified(); }));
    Control->SetReadOnly(true);
    Control->RecreateWnd();
    EXPECT_TRUE(Control->Modified());
    Control->SetText("other");
    EXPECT_FALSE(Control->Modified());
    Control->SetModified(true);
    Control->SetParent(nullptr);
    EXPECT_FALSE(Control->HandleAllocated());
    EXPECT_TRUE(Control->Modified());
    Control->SetText("without a window");
    EXPECT_FALSE(Control->Modified());
    Control->SetParent(Form.get());
    EXPECT_FALSE(Control->Modified());
}

TEST_F(Edit, ANewWindowGetsAnyTextAndNobodyIsTold) { ExpectAnyTextInANewWindow<TEdit>(*Form); }

TEST_F(Memo, ANewWindowGetsAnyTextAndNobodyIsTold) { ExpectAnyTextInANewWindow<TMemo>(*Form); }

} // namespace
} // namespace kx
