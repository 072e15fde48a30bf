// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace kx {

// Characters of texts in the process's code page.

/// `length` bytes of the text without the beginning of a character that would be cut there.
size_t WholeCharacters(std::string_view text, size_t length);

/// Every byte is a character of its own, and one of the first 128.
bool IsAscii(std::string_view text);

/// A character by its number in Unicode; what the code page does not hold is a question mark.
std::string TextOfCharacter(char32_t character);

} // namespace kx
