// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Streams.h"
#include "kx/core/TypInfo.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

// The values of a binary form.

namespace kx {

/// The type byte in front of every value of a binary form.
enum TValueType : uint8_t {
    vaNull, ///< No value; also the end of a list, of properties and of components.
    vaList,
    vaInt8,
    vaInt16,
    vaInt32,
    vaExtended, ///< Ten bytes: sign, exponent and 64 bits of mantissa. Read, never written.
    vaString,   ///< A length byte, then characters of the ANSI code page.
    vaIdent,    ///< A length byte, then a name.
    vaFalse,
    vaTrue,
    vaBinary,  ///< A length of 32 bits, then bytes.
    vaSet,     ///< Names, each behind a length byte; an empty one ends the set.
    vaLString, ///< A length of 32 bits, then characters of the ANSI code page.
    vaNil,
    vaCollection,
    vaSingle,
    vaCurrency, ///< Ten-thousandths, as a 64-bit integer.
    vaDate,     ///< Days, as a double.
    vaWString,  ///< A length of 32 bits, counted in units, then UTF-16.
    vaInt64,
    vaUTF8String, ///< A length of 32 bits, then UTF-8.
    vaDouble,
    vaSpelled = 0x7F ///< In memory alone: a length byte and the spelling of the number whose value follows.
};

/// What becomes of the spelling of numbers: "$FF" and "1E3" are 255 and 1000.0 in other words.
enum class TFormNumbers : uint8_t {
    Plain,  ///< It is lost, as in every binary form that a file holds.
    Spelled ///< It stands beside the values, for readers that keep and for `ObjectBinaryToText`. For memory alone.
};

enum TFilerFlag : uint8_t {
    ffInherited, ///< Stands in an ancestor form; its values are read over the existing component.
    ffChildPos,  ///< The component's position among its parent's children follows.
    ffInline     ///< A component that brings components of its own, read from another form.
};
using TFilerFlags = TSet<TFilerFlag>;

/// How deep components, collections and lists may nest in a form file, all counted together.
inline constexpr int MaxFormNesting = 128;

/// The longest class name of a component: longer ones would look like a prefix byte in the binary form.
inline constexpr size_t MaxFormClassName = 0xEF;

/// Strings of a form file are Unicode, those of a component are in the process's ANSI code page. The two conversions
/// are installed once, at start-up; until then, and with null, the ANSI code page is taken to be UTF-8.
using TFormTextConversion = std::string (*)(std::string_view text);
void SetFormTextCodec(TFormTextConversion utf8ToAnsi, TFormTextConversion ansiToUtf8);
/// Text of a form file as the components hold it.
std::string FormTextToAnsi(std::string_view utf8);
/// The way back. Always valid UTF-8: a byte that is no part of a character stands for the character of its number.
std::string AnsiToFormText(std::string_view ansi);

namespace detail {

/// The unsigned integer of a number's size.
template <class T>
using TBitsOf = std::conditional_t<
    sizeof(T) == 1, uint8_t,
    std::conditional_t<sizeof(T) == 2, uint16_t, std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>>>;

template <class T> T FromBytes(const std::array<unsigned char, sizeof(T)>& bytes) {
    uint64_t bits = 0;
    for (size_t i = sizeof(T); i-- > 0;) {
        bits = bits << 8 | bytes[i];
    }
    return std::bit_cast<T>(static_cast<TBitsOf<T>>(bits));
}

template <class T> std::array<unsigned char, sizeof(T)> ToBytes(T value) {
    std::array<unsigned char, sizeof(T)> bytes{};
    const auto bits = std::bit_cast<TBitsOf<T>>(value);
    for (size_t i = 0; i < sizeof(T); ++i) {
        bytes[i] = static_cast<unsigned char>(bits >> (8 * i));
    }
    return bytes;
}

} // namespace detail

/// Writes the values that a binary form consists of.
class TValueWriter {
public:
    /// The stream outlives the writer. What is written reaches it by `FlushBuffer`.
    explicit TValueWriter(TStream& stream) : FStream(stream) {}
    TValueWriter(const TValueWriter&) = delete;
    TValueWriter& operator=(const TValueWriter&) = delete;

    // --- Values

    void WriteBoolean(bool value);
    void WriteChar(char value);
    void WriteInteger(int64_t value); ///< In the smallest integer type that holds it.
    void WriteFloat(double value);
    void WriteString(std::string_view ansi);
    void WriteIdent(std::string_view name); ///< "True", "False", "nil" and "Null" become their own types.
    void WriteSet(const TEnumInfo& elements, uint32_t bits);
    void WriteListBegin() { WriteValue(vaList); }
    void WriteListEnd() { WriteValue(vaNull); }
    void WriteBinary(std::string_view bytes);

    // --- Parts of the format

    void WriteSignature();
    void WritePrefix(TFilerFlags flags, int childPos);
    void WriteValue(TValueType type) { FBuffer.push_back(static_cast<char>(type)); }
    void WriteStr(std::string_view text);  ///< Characters behind a length byte. @throws EWriteError beyond 255.
    void WriteText(std::string_view utf8); ///< A string value.
    void Write(const void* data, size_t count) { FBuffer.append(static_cast<const char*>(data), count); }
    template <class T> void WriteNumber(T value) { ///< The bytes of a number, lowest first.
        const auto bytes = detail::ToBytes(value);
        Write(bytes.data(), bytes.size());
    }
    size_t Size() const { return FBuffer.size(); } ///< Bytes that wait to be flushed.
    void FlushBuffer();

protected:
    TStream& FStream;
    std::string FBuffer;
};

} // namespace kx
