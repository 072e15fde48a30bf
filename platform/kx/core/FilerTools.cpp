// SPDX-License-Identifier: MIT
// Small parts of the binary form.

#include "kx/core/FilerTools.h"

#include <algorithm>
#include <bit>

namespace kx::detail {

namespace {

constexpr int MantissaBits = 52;
constexpr int DoubleBias = 1023;
constexpr int ExtendedBias = 16383;

/// `value` shifted right by `shift`, rounded to nearest, ties to even.
uint64_t ShiftRounded(uint64_t value, int shift) {
    if (shift > 64) {
        return 0;
    }
    const uint64_t kept = shift == 64 ? 0 : value >> shift;
    const uint64_t half = uint64_t{1} << (shift - 1);
    const uint64_t lost = value & (half | (half - 1));
    return kept + (lost > half || (lost == half && (kept & 1) != 0) ? 1 : 0);
}

} // namespace

double DecodeExtended(const std::array<unsigned char, 10>& bytes) {
    uint64_t mantissa = 0;
    for (size_t i = 8; i-- > 0;) {
        mantissa = mantissa << 8 | bytes[i];
    }
    const int exponent = (bytes[9] & 0x7F) << 8 | bytes[8];
    const uint64_t sign = static_cast<uint64_t>(bytes[9] >> 7) << 63;
    constexpr uint64_t infinity = uint64_t{0x7FF} << MantissaBits;
    if (exponent == 0x7FFF) {
        const bool isInfinity = (mantissa << 1) == 0;
        return std::bit_cast<double>(sign | infinity | (isInfinity ? 0 : uint64_t{1} << (MantissaBits - 1)));
    }
    if (mantissa == 0) {
        return std::bit_cast<double>(sign);
    }
    // The highest bit of the mantissa stands for 1; numbers that leave it clear are brought to that form.
    const int leading = std::countl_zero(mantissa);
    mantissa <<= leading;
    const int target = exponent - ExtendedBias + DoubleBias - leading;
    uint64_t bits = 0;
    if (target > 0) {
        // Carrying out of the mantissa raises the exponent, up to infinity: just what rounding asks for.
        bits = (static_cast<uint64_t>(target - 1) << MantissaBits) + ShiftRounded(mantissa, 63 - MantissaBits);
    } else {
        bits = ShiftRounded(mantissa, 63 - MantissaBits + 1 - target);
    }
    return std::bit_cast<double>(sign | (target > 0x7FE ? infinity : std::min(bits, infinity)));
}

size_t Utf8Length(std::string_view text, size_t at) {
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(at);
    if (lead < 0x80) {
        return 1;
    }
    const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() - at < length) {
        return 0;
    }
    for (size_t i = 1; i < length; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80) {
            return 0;
        }
    }
    const char32_t c = DecodeUtf8(text, at, length);
    const bool tooLong = (length == 3 && c < 0x800) || (length == 4 && c < 0x10000);
    return tooLong || c > 0x10FFFF || IsSurrogate(c) ? 0 : length;
}

bool IsUtf8(std::string_view text) {
    for (size_t i = 0; i < text.size();) {
        const size_t length = Utf8Length(text, i);
        if (length == 0) {
            return false;
        }
        i += length;
    }
    return true;
}

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char32_t DecodeUtf8(std::string_view text, size_t at, size_t length) {
    const auto lead = static_cast<unsigned char>(text[at]);
    if (length == 1) {
        return lead;
    }
    char32_t c = lead & (0xFFU >> (length + 1));
    for (size_t i = 1; i < length; ++i) {
        c = c << 6 | (static_cast<unsigned char>(text[at + i]) & 0x3F);
    }
    return c;
}

void AppendUtf8(std::string& text, char32_t c) {
    const auto tail = [&](int shift) { text.push_back(static_cast<char>(0x80 | ((c >> shift) & 0x3F))); };
    if (c < 0x80) {
        text.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
        text.push_back(static_cast<char>(0xC0 | c >> 6));
        tail(0);
    } else if (c < 0x10000) {
        text.push_back(static_cast<char>(0xE0 | c >> 12));
        tail(6);
        tail(0);
    } else {
        text.push_back(static_cast<char>(0xF0 | c >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

char32_t JoinSurrogates(char32_t high, char32_t low) {
    if (high < 0xD800 || high > 0xDBFF || low < 0xDC00 || low > 0xDFFF) {
        return 0;
    }
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

bool IsIdentPath(std::string_view text) {
    for (;;) {
        const size_t dot = std::min(text.find('.'), text.size());
        if (!IsValidIdent(text.substr(0, dot))) {
            return false;
        }
        if (dot == text.size()) {
            return true;
        }
        text.remove_prefix(dot + 1);
    }
}

} // namespace kx::detail
