// SPDX-License-Identifier: MIT
// The words of a form's text.

#include "kx/core/FormTextLexer.h"

#include "kx/core/FilerTools.h"
#include "kx/core/FormTextBytes.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <system_error>

namespace kx::detail {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'; }
bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

std::optional<unsigned> HexDigit(char c) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(&c, &c + 1, value, 16);
    return error == std::errc{} && end == &c + 1 ? std::optional(value) : std::nullopt;
}

/// Some character of a string is given by a number that no byte has.
bool HasNumberBeyondBytes(std::string_view text) {
    for (size_t i = text.find_first_of("'#"); i < text.size(); i = text.find_first_of("'#", i)) {
        if (text[i] == '\'') {
            i = std::min(text.find_first_of("'\r\n", i + 1), text.size() - 1) + 1;
            continue;
        }
        ++i;
        const bool isHex = i < text.size() && text[i] == '$';
        i += isHex ? 1 : 0;
        uint32_t code = 0;
        const char* const end = text.data() + text.size();
        if (std::from_chars(text.data() + i, end, code, isHex ? 16 : 10).ec == std::errc{} && code > 0xFF) {
            return true;
        }
    }
    return false;
}

} // namespace

TFormTextLexer::TFormTextLexer(std::string_view text) : FSource(text) {
    if (FSource.starts_with(Utf8Mark)) {
        FSource.remove_prefix(Utf8Mark.size());
        FHasCharNumbers = true;
    }
    FHasCharNumbers = FHasCharNumbers || !IsAscii(FSource) || HasNumberBeyondBytes(FSource);
    int line = 1;
    for (size_t i = 0; i < FSource.size();) {
        const size_t length = Utf8Length(FSource, i);
        if (length == 0) {
            FailOn(line, "Invalid UTF-8");
        }
        line += FSource[i] == '\n' ? 1 : 0;
        i += length;
    }
    Next();
}

void TFormTextLexer::FailOn(int line, const std::string& message) {
    throw EParserError(message + " on line " + IntToStr(line));
}

size_t TFormTextLexer::SkipBlanks(size_t at, int& line) const {
    while (at < FSource.size() && IsBlank(FSource[at])) {
        line += FSource[at] == '\n' ? 1 : 0;
        ++at;
    }
    return at;
}

bool TFormTextLexer::IsFollowedBy(char c) const {
    int line = 0;
    const size_t at = SkipBlanks(FAt, line);
    return at < FSource.size() && FSource[at] == c;
}

void TFormTextLexer::Next() {
    FAt = SkipBlanks(FAt, FLine);
    FTokenLine = FLine;
    FText.clear();
    if (FAt == FSource.size()) {
        FToken = TFormToken::End;
        return;
    }
    const char c = Peek();
    const bool isSign = c == '-' || c == '+';
    if (IsLetter(c)) {
        ReadIdent();
    } else if (c == '\'' || c == '#') {
        ReadString();
    } else if (IsDigit(c) || c == '$' || (isSign && (IsDigit(Peek(1)) || Peek(1) == '$' || IsLetter(Peek(1))))) {
        const size_t start = FAt;
        ReadNumber();
        FText = FSource.substr(start, FAt - start);
    } else {
        FToken = TFormToken::Symbol;
        FSymbol = c;
        ++FAt;
    }
}

void TFormTextLexer::ReadIdent() {
    const size_t start = FAt;
    while (IsLetter(Peek()) || IsDigit(Peek()) || (Peek() == '.' && IsLetter(Peek(1)))) {
        ++FAt;
    }
    FToken = TFormToken::Ident;
    FText = FSource.substr(start, FAt - start);
}

// --- Strings

/// In pieces that plus signs join: halves of a character, and bytes of one, may stand in two of them.
void TFormTextLexer::ReadString() {
    char32_t high = 0; // the first half of a character that is given in two codes
    std::string bytes; // of the code page, ASCII included: a letter may be the second byte of a character
    const auto flush = [&] {
        FText += BytesToUtf8(bytes);
        bytes.clear();
    };
    const auto check = [this](bool isValid) {
        if (!isValid) {
            FailOn(FLine, "Invalid character code");
        }
    };
    do {
        while (Peek() == '\'' || Peek() == '#') {
            if (Peek() == '\'') {
                check(high == 0);
                ReadQuoted(FHasCharNumbers ? FText : bytes);
                continue;
            }
            const bool hasZero = Peek(Peek(1) == '$' ? 2 : 1) == '0';
            char32_t c = ReadCharCode();
            if (!FHasCharNumbers && !hasZero && c <= 0xFF) {
                bytes.push_back(static_cast<char>(static_cast<unsigned char>(c)));
                continue;
            }
            flush();
            if (high != 0) {
                c = JoinSurrogates(high, c);
                high = 0;
                check(c != 0);
            } else if (c >= 0xD800 && c < 0xDC00) {
                high = c;
                continue;
            }
            check(c <= 0x10FFFF && !IsSurrogate(c));
            AppendUtf8(FText, c);
        }
    } while (SkipPlus());
    check(high == 0);
    flush();
    FToken = TFormToken::String;
}

/// A plus sign, and blanks around it, in front of a string. One in front of a number is its sign.
bool TFormTextLexer::SkipPlus() {
    int line = FLine;
    size_t at = SkipBlanks(FAt, line);
    const char behind = at + 1 < FSource.size() ? FSource[at + 1] : '\0';
    if (at == FSource.size() || FSource[at] != '+' || behind == '$' || IsDigit(behind) || IsLetter(behind)) {
        return false;
    }
    FAt = SkipBlanks(at + 1, line);
    FLine = line;
    if (Peek() != '\'' && Peek() != '#') {
        FailOn(FLine, "String expected");
    }
    return true;
}

void TFormTextLexer::ReadQuoted(std::string& text) {
    ++FAt;
    for (;;) {
        const size_t end = std::min(FSource.find_first_of("'\r\n", FAt), FSource.size());
        text += FSource.substr(FAt, end - FAt);
        FAt = end;
        if (Peek() != '\'') {
            FailOn(FLine, "The string has no end");
        }
        ++FAt;
        if (Peek() != '\'') {
            return;
        }
        text.push_back('\'');
        ++FAt;
    }
}

char32_t TFormTextLexer::ReadCharCode() {
    ++FAt;
    int base = 10;
    if (Peek() == '$') {
        base = 16;
        ++FAt;
    }
    uint32_t code = 0;
    const char* const start = FSource.data() + FAt;
    const auto [end, error] = std::from_chars(start, FSource.data() + FSource.size(), code, base);
    if (error != std::errc{}) {
        FailOn(FLine, "Invalid character code");
    }
    FAt += static_cast<size_t>(end - start);
    return code;
}

// --- Numbers

void TFormTextLexer::ReadNumber() {
    const bool negative = Peek() == '-';
    if (negative || Peek() == '+') {
        ++FAt;
    }
    if (IsLetter(Peek())) {
        return ReadSpecialFloat(negative);
    }
    if (Peek() == '$') {
        return ReadHexNumber(negative);
    }
    const size_t start = FAt;
    const auto skipDigits = [this] {
        while (IsDigit(Peek())) {
            ++FAt;
        }
    };
    skipDigits();
    bool isFloat = false;
    if (Peek() == '.' && IsDigit(Peek(1))) {
        isFloat = true;
        ++FAt;
        skipDigits();
    }
    const size_t signLength = Peek(1) == '+' || Peek(1) == '-' ? 1 : 0;
    if ((Peek() == 'e' || Peek() == 'E') && IsDigit(Peek(1 + signLength))) {
        isFloat = true;
        FAt += 1 + signLength;
        skipDigits();
    }
    const std::string_view digits = FSource.substr(start, FAt - start);
    FFloatType = ReadFloatSuffix();
    if (IsLetter(Peek()) || IsDigit(Peek())) {
        Fail("Invalid number");
    }
    if (isFloat || FFloatType != vaDouble) {
        ReadFloat(digits, negative);
    } else {
        SetInteger(digits, 10, negative);
    }
}

void TFormTextLexer::ReadHexNumber(bool negative) {
    ++FAt;
    const size_t start = FAt;
    while (HexDigit(Peek())) {
        ++FAt;
    }
    SetInteger(FSource.substr(start, FAt - start), 16, negative);
}

void TFormTextLexer::SetInteger(std::string_view digits, int base, bool negative) {
    uint64_t magnitude = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), magnitude, base);
    constexpr uint64_t limit = uint64_t{1} << 63;
    if (error == std::errc::result_out_of_range || magnitude > (negative ? limit : limit - 1)) {
        Fail("The number is too large");
    }
    if (error != std::errc{} || IsLetter(Peek())) {
        Fail("Invalid number");
    }
    FInteger = static_cast<int64_t>(negative ? ~magnitude + 1 : magnitude);
    FToken = TFormToken::Integer;
}

TValueType TFormTextLexer::ReadFloatSuffix() {
    TValueType type = vaDouble;
    switch (Peek()) {
    case 's':
    case 'S': type = vaSingle; break;
    case 'd':
    case 'D': type = vaDate; break;
    case 'c':
    case 'C': type = vaCurrency; break;
    default: return type;
    }
    ++FAt;
    return type;
}

void TFormTextLexer::ReadFloat(std::string_view digits, bool negative) {
    FToken = TFormToken::Float;
    if (FFloatType == vaCurrency) {
        return ReadCurrency(digits, negative);
    }
    std::errc error{};
    if (FFloatType == vaSingle) {
        float value = 0;
        error = std::from_chars(digits.data(), digits.data() + digits.size(), value).ec;
        FFloat = static_cast<double>(value);
    } else {
        error = std::from_chars(digits.data(), digits.data() + digits.size(), FFloat).ec;
    }
    if (error != std::errc{}) {
        Fail("The number is out of range");
    }
    FFloat = negative ? -FFloat : FFloat;
}

/// Money is exact: up to four digits behind the point.
void TFormTextLexer::ReadCurrency(std::string_view digits, bool negative) {
    constexpr size_t places = 4;
    const size_t point = std::min(digits.find('.'), digits.size());
    std::string all(digits.substr(0, point));
    const std::string fraction(digits.substr(std::min(point + 1, digits.size())));
    if (fraction.size() > places || digits.find_first_of("eE") != std::string_view::npos) {
        Fail("Invalid number");
    }
    all += fraction + std::string(places - fraction.size(), '0');
    SetInteger(all, 10, negative);
    FToken = TFormToken::Float;
}

/// "+Inf", "-Inf" and "+NaN": numbers without digits carry a sign, which tells them from identifiers.
void TFormTextLexer::ReadSpecialFloat(bool negative) {
    const std::string_view word = FSource.substr(FAt, 3);
    if (SameText(word, "Inf")) {
        FFloat = std::numeric_limits<double>::infinity();
    } else if (SameText(word, "NaN")) {
        FFloat = std::numeric_limits<double>::quiet_NaN();
    } else {
        Fail("Invalid number");
    }
    FFloat = negative ? -FFloat : FFloat;
    FAt += word.size();
    FFloatType = ReadFloatSuffix();
    if (FFloatType == vaCurrency || IsLetter(Peek()) || IsDigit(Peek())) {
        Fail("Invalid number");
    }
    FToken = TFormToken::Float;
}

// --- Blocks

std::string TFormTextLexer::Bytes() {
    std::string bytes;
    for (;;) {
        FAt = SkipBlanks(FAt, FLine);
        if (Peek() == '}') {
            ++FAt;
            Next();
            return bytes;
        }
        const auto high = HexDigit(Peek());
        const auto low = HexDigit(Peek(1));
        if (!high || !low) {
            FailOn(FLine, FAt < FSource.size() ? "Invalid block of bytes" : "The block of bytes has no end");
        }
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(*high << 4 | *low)));
        FAt += 2;
    }
}

} // namespace kx::detail
