// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace kx::test {

/// A binary block as a form file in text has it, as the last property of a component: `Items.NAME = {...}`.
inline std::string BlockFile(std::string_view head, std::string_view name, std::string_view bytes) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text = std::string(head) + "  Items." + std::string(name) + " = {";
    for (size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        text += i % 32 == 0 ? "\r\n    " : "";
        text += std::string{digits[byte >> 4], digits[byte & 15]};
    }
    return text + "}\r\nend\r\n";
}

/// The four bytes of a number in a block.
inline std::string BlockNumber(int32_t number) {
    std::string bytes(4, '\0');
    std::memcpy(bytes.data(), &number, 4);
    return bytes;
}

/// A text of a block, in UTF-16, behind its length.
inline std::string BlockText(const std::u16string& text) {
    std::string bytes(1, static_cast<char>(text.size()));
    for (const char16_t c : text) {
        bytes += {static_cast<char>(c & 0xFF), static_cast<char>(c >> 8)};
    }
    return bytes;
}

} // namespace kx::test
