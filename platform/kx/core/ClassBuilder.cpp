// SPDX-License-Identifier: MIT
// What classes say of the types of their properties.

#include "kx/core/ClassBuilder.h"

namespace kx::detail {

namespace {

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
}

bool IsIdentChar(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

} // namespace

std::string TypeNameIn(std::string_view function) {
    // "... [with T = kx::TColor]", "... [T = kx::TColor]", "... FunctionNamedFor<enum kx::TColor>(void)"
    constexpr std::string_view ours = "T = ";
    constexpr std::string_view theirs = "FunctionNamedFor<";
    const bool isOurs = function.find(ours) != std::string_view::npos;
    const std::string_view before = isOurs ? ours : theirs;
    const size_t start = function.find(before) + before.size();
    const size_t end = isOurs ? function.rfind(']') : function.rfind(">(");
    std::string name(function.substr(start, end - start));
    for (const std::string_view text : {"std::__cxx11::basic_string<char>", "std::basic_string<char>",
                                        "std::basic_string<char,struct std::char_traits<char>,class "
                                        "std::allocator<char> >"}) {
        ReplaceAll(name, text, "$"); // a name without a namespace, until all others have lost theirs
    }
    for (const std::string_view word : {"class ", "struct ", "enum ", "__cdecl", "(anonymous namespace)::",
                                        "{anonymous}::", "`anonymous namespace'::", "(void)"}) {
        ReplaceAll(name, word, word == "(void)" ? "()" : "");
    }
    for (size_t colons = name.find("::"); colons != std::string::npos; colons = name.find("::")) {
        size_t first = colons;
        while (first > 0 && IsIdentChar(name[first - 1])) {
            --first;
        }
        name.erase(first, colons + 2 - first);
    }
    ReplaceAll(name, " *", "*");
    ReplaceAll(name, " &", "&");
    ReplaceAll(name, " (", "(");
    ReplaceAll(name, "$", "std::string");
    ReplaceAll(name, ", ", ",");
    ReplaceAll(name, ",", ", ");
    return name;
}

std::string NumberTypeName(size_t size, bool isSigned) {
    switch (size) {
    case 1: return isSigned ? "ShortInt" : "Byte";
    case 2: return isSigned ? "SmallInt" : "Word";
    case 4: return isSigned ? "Integer" : "Cardinal";
    default: return isSigned ? "Int64" : "UInt64";
    }
}

void DescribeNamed(TPropInfo& p, TTypeKind kind, const TEnumInfo& values) {
    const auto count = static_cast<int64_t>(values.Values.size());
    p.Kind = kind;
    p.Enum = &values;
    p.MinValue = 0;
    p.MaxValue = kind == TTypeKind::Set ? (int64_t{1} << count) - 1 : count - 1;
}

} // namespace kx::detail
