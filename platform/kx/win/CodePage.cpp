// SPDX-License-Identifier: MIT
// Positions in texts of the code page.

#include "kx/win/CodePage.h"

#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

size_t WholeCharacters(std::string_view text, size_t length) {
    if (length >= text.size()) {
        return text.size();
    }
    if (GetACP() == CP_UTF8) {
        constexpr auto continues = [](char c) { return (static_cast<uint8_t>(c) & 0xC0) == 0x80; };
        while (length > 0 && continues(text[length])) {
            --length;
        }
        return length;
    }
    size_t whole = 0;
    for (size_t next = 0; next <= length;
         next += IsDBCSLeadByte(static_cast<BYTE>(text[next])) ? size_t{2} : size_t{1}) {
        whole = next;
    }
    return whole;
}

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<uint8_t>(c) < 0x80; });
}

std::string TextOfCharacter(char32_t character) { return FromWide(ToWide(character)); }

} // namespace kx
