// SPDX-License-Identifier: MIT
// Keys that do what menu items and actions do, as texts, and the letters marked by "&".

#include "kx/ui/controls/ShortCuts.h"

#include "kx/win/Windows.h"

namespace kx {

namespace {

struct TKeyName {
    uint8_t Key;
    const char* Name;
};

constexpr TKeyName KeyNames[] = {
    {VK_BACK, "BkSp"},      {VK_TAB, "Tab"},     {VK_ESCAPE, "Esc"},     {VK_RETURN, "Enter"}, {VK_SPACE, "Space"},
    {VK_PRIOR, "PgUp"},     {VK_NEXT, "PgDn"},   {VK_END, "End"},        {VK_HOME, "Home"},    {VK_LEFT, "Left"},
    {VK_UP, "Up"},          {VK_RIGHT, "Right"}, {VK_DOWN, "Down"},      {VK_INSERT, "Ins"},   {VK_DELETE, "Del"},
    {VK_MULTIPLY, "Num *"}, {VK_ADD, "Num +"},   {VK_SUBTRACT, "Num -"}, {VK_DIVIDE, "Num /"}, {VK_DECIMAL, "Num ."},
};

struct TModifierName {
    TShortCut Modifier;
    const char* Name;
};

constexpr TModifierName ModifierNames[] = {{scShift, "Shift+"}, {scCtrl, "Ctrl+"}, {scAlt, "Alt+"}};

std::string KeyName(uint8_t key) {
    for (const TKeyName& entry : KeyNames) {
        if (entry.Key == key) {
            return entry.Name;
        }
    }
    if ((key >= '0' && key <= '9') || (key >= 'A' && key <= 'Z')) {
        return {static_cast<char>(key)};
    }
    if (key >= VK_NUMPAD0 && key <= VK_NUMPAD9) {
        return "Num " + IntToStr(key - VK_NUMPAD0);
    }
    if (key >= VK_F1 && key <= VK_F24) {
        return "F" + IntToStr(key - VK_F1 + 1);
    }
    return {};
}

} // namespace

std::string ShortCutToText(TShortCut shortCut) {
    const std::string key = KeyName(static_cast<uint8_t>(shortCut & 0xFF));
    if (key.empty()) {
        return {};
    }
    std::string text;
    for (const TModifierName& entry : ModifierNames) {
        if (shortCut & entry.Modifier) {
            text += entry.Name;
        }
    }
    return text + key;
}

TShortCut TextToShortCut(const std::string& text) {
    std::string_view rest = text;
    TShortCut modifiers = 0;
    for (bool found = true; found;) {
        found = false;
        for (const TModifierName& entry : ModifierNames) {
            const std::string_view name = entry.Name;
            if (SameText(rest.substr(0, name.size()), name)) {
                modifiers |= entry.Modifier;
                rest.remove_prefix(name.size());
                found = true;
            }
        }
    }
    for (int key = 1; key <= 0xFF; ++key) {
        const auto code = static_cast<uint8_t>(key);
        const std::string name = KeyName(code);
        if (!name.empty() && SameText(rest, name)) {
            return ShortCut(code, modifiers);
        }
    }
    return 0;
}

TShortCut ShortCutFromKeyMessage(WPARAM wParam, LPARAM lParam) {
    constexpr LPARAM altHeld = 0x20000000;
    TShortCut modifiers = 0;
    if (GetKeyState(VK_SHIFT) < 0) {
        modifiers |= scShift;
    }
    if (GetKeyState(VK_CONTROL) < 0) {
        modifiers |= scCtrl;
    }
    if (lParam & altHeld) {
        modifiers |= scAlt;
    }
    return wParam > 0xFF ? TShortCut{0} : ShortCut(static_cast<uint8_t>(wParam), modifiers);
}

// A "&" marks the character behind it; "&&" is the character itself.

std::string StripHotkey(const std::string& caption) {
    std::string text;
    for (size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == '&') {
            ++i;
        }
        if (i < caption.size()) {
            text += caption[i];
            if (IsLeadByte(caption[i]) && i + 1 < caption.size()) {
                text += caption[++i];
            }
        }
    }
    return text;
}

wchar_t GetHotkey(const std::string& caption) {
    const std::wstring text = ToWide(caption);
    size_t mark = text.find(L'&');
    while (mark != std::wstring::npos && mark + 1 < text.size()) {
        if (text[mark + 1] != L'&') {
            const bool isHalf = IS_HIGH_SURROGATE(text[mark + 1]); // no key message holds such a character
            return isHalf ? L'\0' : UpperCaseLetter(text[mark + 1]);
        }
        mark = text.find(L'&', mark + 2);
    }
    return 0;
}

wchar_t UpperCaseLetter(wchar_t letter) {
    wchar_t upper = letter;
    LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_UPPERCASE | LCMAP_LINGUISTIC_CASING, &letter, 1, &upper, 1);
    return upper;
}

} // namespace kx
