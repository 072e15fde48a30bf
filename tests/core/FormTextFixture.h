// SPDX-License-Identifier: MIT
#pragma once

#include "FormFixture.h"

#include <initializer_list>
#include <string>

namespace kx::sample {

/// The text of a form whose only property `A` has this value, converted to the binary form and back.
inline std::string Converted(const std::string& value) {
    const std::string head = "object F: T\r\n  A = ";
    const std::string text = ToText(ToBinary("object F: T A = " + value + " end"));
    EXPECT_THAT(text, testing::StartsWith(head));
    return text.substr(head.size(), text.size() - head.size() - std::string("\r\nend\r\n").size());
}

/// The binary form of the value
inline std::string Value(const std::string& value) {
    const std::string head("TPF0\1T\1F\1A", 10);
    const std::string binary = ToBinary("object F: T A = " + value + " end");
    EXPECT_THAT(binary, testing::StartsWith(head));
    return binary.substr(head.size(), binary.size() - head.size() - 2);
}

inline std::string ParseError(const std::string& text) {
    return ErrorOf<EParserError>([&] { ToBinary(text); });
}

inline std::string Bytes(std::initializer_list<int> bytes) {
    std::string result;
    for (const int byte : bytes) {
        result.push_back(static_cast<char>(byte));
    }
    return result;
}

/// A binary form whose only property `A` has this value
inline std::string FormWith(const std::string& value) {
    return std::string("TPF0\1T\1F\1A", 10) + value + Bytes({0, 0});
}

inline std::string TextOf(const std::string& value) {
    const std::string text = ToText(FormWith(value));
    const size_t start = text.find("= ") + 2;
    return text.substr(start, text.rfind("\r\nend") - start);
}

} // namespace kx::sample
