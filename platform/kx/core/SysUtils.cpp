// SPDX-License-Identifier: MIT
// Texts, numbers and file names.

#include "kx/core/SysUtils.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <system_error>

namespace kx {

namespace {

std::array<bool, 256> LeadBytes{};
bool CodePageIsUtf8 = false;

char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

template <class Convert> std::string Map(std::string_view text, Convert convert) {
    std::string result;
    result.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        if (IsLeadByte(text[i]) && i + 1 < text.size()) {
            result.push_back(text[i++]);
            result.push_back(text[i]);
        } else {
            result.push_back(convert(text[i]));
        }
    }
    return result;
}

std::optional<int64_t> ParseInt(std::string_view text) {
    bool negative = false;
    if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
        negative = text[0] == '-';
        text.remove_prefix(1);
    }
    int base = 10;
    if (!text.empty() && text[0] == '$') {
        base = 16;
        text.remove_prefix(1);
    } else if (text.size() > 1 && text[0] == '0' && Lower(text[1]) == 'x') {
        base = 16;
        text.remove_prefix(2);
    }
    uint64_t magnitude = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), magnitude, base);
    if (error != std::errc{} || end != text.data() + text.size()) {
        return std::nullopt;
    }
    constexpr uint64_t limit = uint64_t{1} << 63;
    if (magnitude > (negative ? limit : limit - 1)) {
        return std::nullopt;
    }
    return negative ? static_cast<int64_t>(~magnitude + 1) : static_cast<int64_t>(magnitude);
}

/// Index of the last character that is one of `delimiters`, never the second byte of a longer one; npos if none is.
size_t LastDelimiter(std::string_view text, std::string_view delimiters) {
    size_t last = std::string_view::npos;
    for (size_t i = 0; i < text.size(); ++i) {
        if (IsLeadByte(text[i])) {
            ++i;
        } else if (delimiters.find(text[i]) != std::string_view::npos) {
            last = i;
        }
    }
    return last;
}

bool EndsInBackslash(std::string_view path) { return !path.empty() && LastDelimiter(path, "\\") == path.size() - 1; }

} // namespace

bool IsLeadByte(char c) { return LeadBytes[static_cast<unsigned char>(c)]; }
void SetLeadByte(unsigned char c, bool isLead) { LeadBytes[c] = isLead; }
void SetCodePageIsUtf8(bool value) { CodePageIsUtf8 = value; }

void RaiseRangeError() { throw ERangeError("Range check error"); }

size_t NextCharacter(std::string_view text, size_t at) {
    if (at >= text.size()) {
        return text.size();
    }
    at += IsLeadByte(text[at]) ? 2u : 1u;
    const auto continues = [&] { return (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80; };
    while (CodePageIsUtf8 && at < text.size() && continues()) {
        ++at;
    }
    return std::min(at, text.size());
}

size_t FindChar(std::string_view text, char c, size_t start) {
    for (size_t i = start; i < text.size(); ++i) {
        if (text[i] == c) {
            return i;
        }
        if (IsLeadByte(text[i])) {
            ++i;
        }
    }
    return std::string_view::npos;
}

std::string UpperCase(std::string_view text) { return Map(text, Upper); }
std::string LowerCase(std::string_view text) { return Map(text, Lower); }

bool SameText(std::string_view a, std::string_view b) { return a.size() == b.size() && CompareText(a, b) == 0; }

int CompareText(std::string_view a, std::string_view b) {
    const size_t common = a.size() < b.size() ? a.size() : b.size();
    bool isTrail = false; // the second byte of a character is no letter, whatever it looks like
    for (size_t i = 0; i < common; ++i) {
        const char charA = isTrail ? a[i] : Upper(a[i]);
        const char charB = isTrail ? b[i] : Upper(b[i]);
        const int difference = static_cast<unsigned char>(charA) - static_cast<unsigned char>(charB);
        if (difference != 0) {
            return difference;
        }
        isTrail = !isTrail && IsLeadByte(a[i]);
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

std::string Trim(std::string_view text) {
    const auto isBlank = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return std::string(text);
}

std::string IntToStr(int64_t value) { return std::to_string(value); }

int64_t StrToInt(std::string_view text) {
    const std::string trimmed = Trim(text);
    if (const auto value = ParseInt(trimmed)) {
        return *value;
    }
    throw EConvertError(Format("'%s' is not a valid integer value", {text}));
}

int64_t StrToIntDef(std::string_view text, int64_t fallback) { return ParseInt(Trim(text)).value_or(fallback); }

std::string Format(std::string_view pattern, std::initializer_list<std::string_view> args) {
    std::string result;
    auto next = args.begin();
    for (size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != '%' || i + 1 == pattern.size()) {
            result.push_back(pattern[i]);
            continue;
        }
        ++i;
        if (pattern[i] == 's' && next != args.end()) {
            result.append(*next++);
        } else if (pattern[i] == '%') {
            result.push_back('%');
        } else {
            result.append({'%', pattern[i]});
        }
    }
    return result;
}

std::string ExtractFileName(std::string_view path) {
    const size_t at = LastDelimiter(path, "\\:");
    return std::string(at == std::string_view::npos ? path : path.substr(at + 1));
}

std::string ExtractFilePath(std::string_view path) {
    const size_t at = LastDelimiter(path, "\\:");
    return std::string(at == std::string_view::npos ? std::string_view{} : path.substr(0, at + 1));
}

std::string ExtractFileDir(std::string_view path) {
    std::string dir = ExtractFilePath(path);
    // The backslash of a root belongs to its name: "C:\", "\", and the "\\" in front of a server.
    if (dir.size() > 1 && EndsInBackslash(dir)) {
        const std::string_view head(dir.data(), dir.size() - 1);
        if (head.back() != ':' && !EndsInBackslash(head)) {
            dir.pop_back();
        }
    }
    return dir;
}

std::string ExtractFileDrive(std::string_view path) {
    if (path.size() >= 2 && path[1] == ':') {
        return std::string(path.substr(0, 2));
    }
    if (path.size() >= 2 && path[0] == '\\' && path[1] == '\\') {
        const size_t server = FindChar(path, '\\', 2);
        if (server == std::string_view::npos) {
            return std::string(path);
        }
        return std::string(path.substr(0, FindChar(path, '\\', server + 1)));
    }
    return {};
}

std::string ExtractFileExt(std::string_view path) {
    const size_t at = LastDelimiter(path, ".\\:");
    return std::string(at != std::string_view::npos && path[at] == '.' ? path.substr(at) : std::string_view{});
}

std::string ChangeFileExt(std::string_view path, std::string_view extension) {
    const std::string stem(path.substr(0, path.size() - ExtractFileExt(path).size()));
    return stem + std::string(extension);
}

std::string IncludeTrailingPathDelimiter(std::string_view path) {
    return EndsInBackslash(path) ? std::string(path) : std::string(path) + '\\';
}

std::string ExcludeTrailingPathDelimiter(std::string_view path) {
    return std::string(EndsInBackslash(path) ? path.substr(0, path.size() - 1) : path);
}

} // namespace kx
