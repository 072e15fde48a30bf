// SPDX-License-Identifier: MIT
// The code page of forms' texts that older tools have written.

#include "kx/core/FormTextBytes.h"

#include "kx/core/FilerTools.h"

namespace kx {

namespace {

std::string (*Convert)(std::string_view bytes) = nullptr;

/// What Windows-1252 has in the place of the control characters 128 to 159; without a character of their own these
/// bytes stay what they are.
constexpr char16_t Windows1252[] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                    0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

} // namespace

void SetFormTextBytes(std::string (*bytesToUtf8)(std::string_view bytes)) { Convert = bytesToUtf8; }

std::string detail::BytesToUtf8(std::string_view bytes) {
    if (IsAscii(bytes)) {
        return std::string(bytes);
    }
    if (Convert) {
        std::string text = Convert(bytes);
        if (IsUtf8(text)) {
            return text;
        }
    }
    std::string text;
    for (const char byte : bytes) {
        const auto c = static_cast<unsigned char>(byte);
        AppendUtf8(text, c >= 0x80 && c < 0xA0 ? char32_t{Windows1252[c - 0x80]} : char32_t{c});
    }
    return text;
}

} // namespace kx
