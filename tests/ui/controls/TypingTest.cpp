// SPDX-License-Identifier: MIT
// What is typed in any script arrives whole, and is offered whole.

#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/CodePage.h"
#include "tests/support/FormTest.h"
#include "tests/support/TypingForm.h"

#include <map>

// Built twice: into a program whose code page is the system's, and into one whose code page is UTF-8.

namespace kx {
namespace {

using namespace test;

class Typing : public testing::TestWithParam<TField> {
protected:
    Typing() {
        Form.Show();
        EXPECT_TRUE(PumpUntil([this] { return Form.Active(); }));
    }

    TTypingForm Form;
};

TEST_P(Typing, ArrivesWholeInEveryScript) {
    const TField field = GetParam();
    for (const TScript& script : AllScripts) {
        SCOPED_TRACE(script.Name);
        const std::wstring text = script.Text;
        Form.Enter(field);
        ASSERT_TRUE(PumpUntil([&] { return Form.IsReady(field); }));
        TypeCharacters(text);
        ASSERT_TRUE(PumpUntil([&] { return Form.Typed(field).size() >= text.size(); }));
        EXPECT_EQ(Form.Typed(field), text);
        if (TTypingForm::TellsKeys(field)) {
            EXPECT_EQ(Form.Keys, CharactersOf(text));
        }
        if (TTypingForm::TellsChanges(field)) {
            std::vector<std::wstring> changes;
            std::wstring typed;
            for (const char32_t character : CharactersOf(text)) {
                typed += ToWide(character);
                changes.push_back(typed);
            }
            EXPECT_EQ(Form.Changes, changes);
        }
        Screenshot(std::string("typed_") + NameOf(field) + "_" + script.Name, Form.Handle());
        Form.Accept(field);
        EXPECT_TRUE(PumpUntil([&] { return Form.Kept(field) == FromWide(text); })) << Form.Kept(field);
    }
}

INSTANTIATE_TEST_SUITE_P(Fields, Typing, testing::ValuesIn(AllFields),
                         [](const auto& field) { return NameOf(field.param); });

// --- Characters by other messages

class Characters : public TFormTest {
protected:
    Characters() {
        Edit->SetOnKeyPress([this](TObject*, char32_t& key) {
            Keys += key;
            const auto other = Other.find(key);
            key = other == Other.end() ? key : other->second;
        });
        Show();
        Edit->SetFocus();
    }
    LRESULT Send(UINT message, WPARAM wParam) { return SendMessageW(Edit->Handle(), message, wParam, 1); }
    void SendUnits(std::wstring_view text) {
        for (const wchar_t unit : text) {
            Send(WM_CHAR, unit);
        }
    }
    std::wstring Text() { return WideWindowText(Edit->Handle()); }

    TEdit* Edit = Add<TEdit>(0, 0, 200, 24);
    std::map<char32_t, char32_t> Other; ///< What the handler makes of characters.
    std::u32string Keys;
};

TEST_F(Characters, OfEveryLengthCanBeSuppressedAndReplaced) {
    Other = {{U'\u00E9', 0}, {U'\U0001F600', 0}, {U'x', U'\U0001F642'}, {U'\U0001F641', U'y'}, {U'\u4E2D', U'\u0416'}};
    SendUnits(L"a\u00E9\U0001F600x\U0001F641\u4E2Db");
    EXPECT_EQ(Text(), L"a\U0001F642y\u0416b");
    EXPECT_EQ(Keys, U"a\u00E9\U0001F600x\U0001F641\u4E2Db");
}

TEST_F(Characters, ThatAHandlerMakesOfNumbersWithoutOneAreNotTyped) {
    Other = {{U'a', char32_t{0xD800}}, {U'b', char32_t{0xDFFF}}, {U'c', char32_t{0x110000}}, {U'd', U'\U0010FFFF'}};
    SendUnits(L"abcde");
    EXPECT_EQ(Text(), L"\U0010FFFFe");
}

TEST_F(Characters, AreOfferedToTheFormFirst) {
    std::u32string seen;
    Form->SetKeyPreview(true);
    Form->SetOnKeyPress([&](TObject*, char32_t& key) {
        seen += key;
        key = key == U'\U0001F600' ? 0 : key;
    });
    SendUnits(L"\U0001F600\U0001F601");
    EXPECT_EQ(seen, U"\U0001F600\U0001F601");
    EXPECT_EQ(Keys, U"\U0001F601");
    EXPECT_EQ(Text(), L"\U0001F601");
}

TEST_F(Characters, HalfOnesAreNone) {
    Send(WM_CHAR, 0xDE00);
    Send(WM_CHAR, 0xD83D);
    Send(WM_CHAR, L'a');
    Send(WM_CHAR, 0xDE00);
    EXPECT_EQ(Keys, U"a");
    EXPECT_EQ(Text(), L"a");
}

TEST_F(Characters, OfInputMethodsAreTypedOnce) {
    Send(WM_IME_CHAR, 0x4E2D);
    Send(WM_IME_CHAR, 0xD83D);
    Send(WM_IME_CHAR, 0xDE00);
    Application().ProcessMessages(); // in which the system would send WM_CHAR
    EXPECT_EQ(Keys, U"\u4E2D\U0001F600");
    EXPECT_EQ(Text(), L"\u4E2D\U0001F600");
}

TEST_F(Characters, ComeByTheirNumbersFromOtherPrograms) {
    EXPECT_EQ(Send(WM_UNICHAR, UNICODE_NOCHAR), TRUE);
    EXPECT_EQ(Keys, U"");
    Send(WM_UNICHAR, 0x416);
    Send(WM_UNICHAR, 0x1F600);
    Send(WM_UNICHAR, 0xD800);
    Application().ProcessMessages();
    EXPECT_EQ(Keys, U"\u0416\U0001F600");
    EXPECT_EQ(Text(), L"\u0416\U0001F600");
}

TEST_F(Characters, OfAComboBoxComeByOtherMessagesToo) {
    auto* const combo = Add<TComboBox>(0, 40, 200, 24);
    std::u32string keys;
    combo->SetOnKeyPress([&](TObject*, char32_t& key) { keys += key; });
    HWND edit = FindWindowExW(combo->Handle(), nullptr, L"EDIT", nullptr);
    EXPECT_EQ(SendMessageW(edit, WM_UNICHAR, UNICODE_NOCHAR, 0), TRUE);
    SendMessageW(edit, WM_UNICHAR, 0x1F600, 1);
    SendMessageW(edit, WM_IME_CHAR, 0x4E2D, 1);
    Application().ProcessMessages();
    EXPECT_EQ(keys, U"\U0001F600\u4E2D");
    EXPECT_EQ(WideWindowText(edit), L"\U0001F600\u4E2D");
}

TEST_F(Characters, BeyondTheRoomOfAnEditAreNotTakenByHalves) {
    auto* const combo = Add<TComboBox>(0, 40, 200, 24);
    HWND comboEdit = FindWindowExW(combo->Handle(), nullptr, L"EDIT", nullptr);
    Edit->SetMaxLength(3);
    combo->SetMaxLength(3);
    for (HWND window : {Edit->Handle(), comboEdit}) {
        for (const wchar_t unit : std::wstring(L"ab\U0001F600c\U0001F600")) {
            SendMessageW(window, WM_CHAR, unit, 1);
        }
        EXPECT_EQ(WideWindowText(window), L"abc");
        SendMessageW(window, EM_SETSEL, 0, 1);
        for (const wchar_t unit : std::wstring(L"\U0001F600")) {
            SendMessageW(window, WM_CHAR, unit, 1);
        }
        EXPECT_EQ(WideWindowText(window), L"abc");
        SendMessageW(window, EM_SETSEL, 0, 2);
        for (const wchar_t unit : std::wstring(L"\U0001F600")) {
            SendMessageW(window, WM_CHAR, unit, 1);
        }
        EXPECT_EQ(WideWindowText(window), L"\U0001F600c");
    }
}

TEST_F(Characters, HandlersMayFreeTheControlBetween) {
    Edit->SetOnKeyPress([&](TObject*, char32_t&) { Edit->Free(); });
    HWND window = Edit->Handle();
    SendUnits(L"\U0001F600");
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(Characters, HaveATextInTheCodePage) {
    EXPECT_EQ(TextOfCharacter(U'x'), "x");
    EXPECT_EQ(TextOfCharacter(U'\u00E4'), FromUtf8("ä"));
    const char* const smile = "\xF0\x9F\x98\x80";
    if (CodePageHolds(smile)) {
        EXPECT_EQ(TextOfCharacter(U'\U0001F600'), smile);
    }
    EXPECT_EQ(TextOfCharacter(char32_t{0xD800}), "");
    EXPECT_EQ(TextOfCharacter(char32_t{0x110000}), "");
}

} // namespace
} // namespace kx
