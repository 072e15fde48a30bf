// SPDX-License-Identifier: MIT
// Finds its way in C++ code.

#include "designer/CodeText.h"

#include <algorithm>

namespace kx::designer {

namespace {

bool IsWordChar(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// Behind the quoted text that begins at `at`; a text that nothing ends goes to the end of its line.
size_t EndOfQuoted(std::string_view code, size_t at) {
    const char quote = code[at];
    for (size_t i = at + 1; i < code.size() && code[i] != '\n'; ++i) {
        if (code[i] == '\\') {
            ++i;
        } else if (code[i] == quote) {
            return i + 1;
        }
    }
    return std::min(code.find('\n', at), code.size());
}

/// Behind R"name(...)name", whose quote is at `at`.
size_t EndOfRaw(std::string_view code, size_t at) {
    const size_t open = code.find('(', at);
    if (open == std::string_view::npos) {
        return code.size();
    }
    const std::string end = ")" + std::string(code.substr(at + 1, open - at - 1)) + "\"";
    const size_t found = code.find(end, open);
    return found == std::string_view::npos ? code.size() : found + end.size();
}

/// Behind what begins at `at`, when that is a comment or quoted; else `at`.
size_t EndOfSilent(std::string_view code, size_t at) {
    if (code.substr(at, 2) == "//") {
        return std::min(code.find('\n', at), code.size());
    }
    if (code.substr(at, 2) == "/*") {
        const size_t end = code.find("*/", at + 2);
        return end == std::string_view::npos ? code.size() : end + 2;
    }
    const bool isDigitSeparator = code[at] == '\'' && at > 0 && IsWordChar(code[at - 1]);
    if (code[at] == '"' && at > 0 && code[at - 1] == 'R') {
        return EndOfRaw(code, at);
    }
    return code[at] == '"' || (code[at] == '\'' && !isDigitSeparator) ? EndOfQuoted(code, at) : at;
}

} // namespace

std::string BareCode(std::string_view code) {
    std::string bare(code);
    for (size_t i = 0; i < code.size();) {
        const size_t end = EndOfSilent(code, i);
        for (size_t j = i; j < end; ++j) {
            bare[j] = code[j] == '\n' || code[j] == '\r' ? code[j] : ' ';
        }
        i = std::max(end, i + 1);
    }
    return bare;
}

size_t FindWord(std::string_view code, std::string_view word, size_t from) {
    for (size_t at = code.find(word, from); at != std::string_view::npos; at = code.find(word, at + 1)) {
        const size_t end = at + word.size();
        if ((at == 0 || !IsWordChar(code[at - 1])) && (end == code.size() || !IsWordChar(code[end]))) {
            return at;
        }
    }
    return std::string_view::npos;
}

size_t MatchingBracket(std::string_view bare, size_t open) {
    constexpr std::string_view opening = "({[";
    constexpr std::string_view closing = ")}]";
    int depth = 0;
    for (size_t i = open; i < bare.size(); ++i) {
        if (opening.find(bare[i]) != std::string_view::npos) {
            ++depth;
        } else if (closing.find(bare[i]) != std::string_view::npos && --depth == 0) {
            return i;
        }
    }
    return std::string_view::npos;
}

size_t SkipBlanks(std::string_view code, size_t from) {
    return std::min(code.find_first_not_of(" \t\r\n", from), code.size());
}

size_t LineStart(std::string_view code, size_t at) {
    const size_t before = at == 0 ? std::string_view::npos : code.rfind('\n', at - 1);
    return before == std::string_view::npos ? 0 : before + 1;
}

} // namespace kx::designer
