// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace kx {

/// Older tools write what is beyond ASCII as the bytes of their code page, #228 for instance, newer ones as its number
/// in UTF-16. A text that begins with the mark of UTF-8, or holds characters beyond ASCII as they are, or any number
/// above 255, comes from a newer one. In all others, 128 to 255 are bytes, and this conversion knows the code page.
/// Until one is installed, and with null, it is Windows-1252, whose bytes from 160 on are the characters of these
/// numbers.
///
/// Written text is ASCII. A number that would not be read as the character's is written with a zero in front, #0128;
/// that is a character's number in any text.
void SetFormTextBytes(std::string (*bytesToUtf8)(std::string_view bytes));

namespace detail {

/// Bytes of a form's text in the code page of older tools, as UTF-8.
std::string BytesToUtf8(std::string_view bytes);

} // namespace detail

} // namespace kx
