// SPDX-License-Identifier: MIT
// Reads the binary form, value by value.

#include "kx/core/FilerSession.h"
#include "kx/core/FormLines.h"

#include <algorithm>

namespace kx {

namespace {

std::string_view TypeName(TValueType type) {
    switch (type) {
    case vaNull: return "the end of a list";
    case vaList: return "a list";
    case vaInt8:
    case vaInt16:
    case vaInt32:
    case vaInt64: return "an integer";
    case vaExtended:
    case vaSingle:
    case vaCurrency:
    case vaDate:
    case vaDouble: return "a floating-point number";
    case vaString:
    case vaLString:
    case vaWString:
    case vaUTF8String: return "a string";
    case vaIdent: return "a name";
    case vaFalse: return "False";
    case vaTrue: return "True";
    case vaBinary: return "a block of bytes";
    case vaSet: return "a set";
    case vaNil: return "nil";
    case vaCollection: return "a collection";
    case vaSpelled: break; // of a number that does not follow
    }
    return "a value of unknown type";
}

bool IsIntegerType(TValueType type) { return type == vaInt8 || type == vaInt16 || type == vaInt32 || type == vaInt64; }

} // namespace

TReader::TReader(TStream& stream, size_t bufferSize)
    : FStream(stream), FBuffer(std::max<size_t>(bufferSize, 1)), FBufferStart(stream.Position()), FSize(stream.Size()) {
}

TReader::~TReader() {
    try {
        FStream.SetPosition(Position()); // gives back what was read ahead
    } catch (const Exception&) {
        // A stream that cannot go back keeps its position.
    }
}

// --- Errors

std::string TReader::Place(int64_t position) const {
    return FLines ? "on line " + IntToStr(FLines->LineAt(position)) : "at offset " + IntToStr(position);
}

void TReader::Fail(int64_t position, const std::string& message) const {
    throw TFailure(message + " " + Place(position), false);
}

void TReader::WrongType(TValueType found, std::string_view expected) const {
    Fail(Position() - 1, Format("Invalid property value: %s expected, %s found", {expected, TypeName(found)}));
}

void TReader::Enter() {
    if (++FNesting > MaxFormNesting) {
        ReadError("The form is nested too deeply");
    }
}

// --- Bytes

void TReader::Fill() {
    FBufferStart += static_cast<int64_t>(FBufferEnd);
    FBufferPos = 0;
    FBufferEnd = 0;
    FBufferEnd = FStream.Read(FBuffer.data(), FBuffer.size());
    if (FBufferEnd == 0) {
        ReadError("Unexpected end of the form");
    }
}

void TReader::SetPosition(int64_t position) {
    FSpelling.clear();
    const int64_t offset = position - FBufferStart;
    if (offset >= 0 && offset <= static_cast<int64_t>(FBufferEnd)) {
        FBufferPos = static_cast<size_t>(offset);
        return;
    }
    FStream.SetPosition(position);
    FBufferStart = position;
    FBufferPos = 0;
    FBufferEnd = 0;
}

void TReader::Read(void* buffer, size_t count) {
    auto* to = static_cast<char*>(buffer);
    while (count > 0) {
        if (FBufferPos == FBufferEnd) {
            Fill();
        }
        const size_t part = std::min(count, FBufferEnd - FBufferPos);
        std::copy_n(FBuffer.data() + FBufferPos, part, to);
        FBufferPos += part;
        to += part;
        count -= part;
    }
}

void TReader::SkipBytes(size_t count) {
    if (count > static_cast<uint64_t>(std::max<int64_t>(Remaining(), 0))) {
        ReadError("Unexpected end of the form");
    }
    SetPosition(Position() + static_cast<int64_t>(count));
}

std::string TReader::ReadChars(size_t count) {
    std::string text(count, '\0');
    Read(text.data(), count);
    return text;
}

std::string TReader::ReadAgain(int64_t start) {
    const auto size = static_cast<size_t>(Position() - start);
    SetPosition(start);
    return ReadChars(size);
}

/// A length of 32 bits, counted in units. Nothing is allocated for it before it is known to fit into the stream.
size_t TReader::ReadLength(size_t unitSize) {
    const int64_t start = Position();
    const auto length = ReadNumber<uint32_t>();
    if (static_cast<int64_t>(length) > Remaining() / static_cast<int64_t>(unitSize)) {
        Fail(start, Format("The length %s goes beyond the end of the form", {IntToStr(length)}));
    }
    return length;
}

std::string TReader::ReadStr() { return ReadChars(ReadNumber<uint8_t>()); }

// --- Values

uint8_t TReader::NextByte() {
    if (FBufferPos == FBufferEnd) {
        Fill();
    }
    return static_cast<uint8_t>(FBuffer[FBufferPos]);
}

TValueType TReader::NextValue() {
    if (NextByte() == vaSpelled) {
        ++FBufferPos;
        FSpelling = ReadStr();
    }
    return static_cast<TValueType>(NextByte());
}

TValueType TReader::ReadValue() {
    const TValueType type = NextValue();
    ++FBufferPos;
    FSpelling.clear();
    return type;
}

bool TReader::EndOfList() { return NextByte() == vaNull; }

void TReader::ReadListBegin() {
    const TValueType type = ReadValue();
    if (type != vaList) {
        WrongType(type, TypeName(vaList));
    }
}

void TReader::ReadListEnd() {
    const TValueType type = ReadValue();
    if (type != vaNull) {
        WrongType(type, TypeName(vaNull));
    }
}

bool TReader::ReadBoolean() {
    const TValueType type = ReadValue();
    if (type != vaTrue && type != vaFalse) {
        WrongType(type, "True or False");
    }
    return type == vaTrue;
}

int64_t TReader::ReadInt64() {
    const TValueType type = ReadValue();
    switch (type) {
    case vaInt8: return ReadNumber<int8_t>();
    case vaInt16: return ReadNumber<int16_t>();
    case vaInt32: return ReadNumber<int32_t>();
    case vaInt64: return ReadNumber<int64_t>();
    default: WrongType(type, TypeName(vaInt32));
    }
}

int32_t TReader::ReadInteger() {
    const int64_t start = Position();
    const int64_t value = ReadInt64();
    if (value < INT32_MIN || value > INT32_MAX) {
        Fail(start, Format("The integer %s is out of range", {IntToStr(value)}));
    }
    return static_cast<int32_t>(value);
}

double TReader::ReadFloat() {
    const TValueType type = NextValue();
    if (IsIntegerType(type)) {
        return static_cast<double>(ReadInt64());
    }
    ReadValue();
    switch (type) {
    case vaExtended: {
        std::array<unsigned char, 10> bytes;
        Read(bytes.data(), bytes.size());
        return detail::DecodeExtended(bytes);
    }
    case vaSingle: return static_cast<double>(ReadNumber<float>());
    case vaCurrency: return static_cast<double>(ReadNumber<int64_t>()) / 10000;
    case vaDate:
    case vaDouble: return ReadNumber<double>();
    default: WrongType(type, "a number");
    }
}

std::string TReader::ReadWideText() {
    const size_t length = ReadLength(sizeof(char16_t));
    std::string text;
    for (size_t i = 0; i < length; ++i) {
        char32_t c = ReadNumber<uint16_t>();
        if (detail::IsSurrogate(c)) {
            const int64_t start = Position();
            c = ++i < length ? detail::JoinSurrogates(c, ReadNumber<uint16_t>()) : 0;
            if (c == 0) {
                Fail(start, "Half a character in UTF-16 text");
            }
        }
        detail::AppendUtf8(text, c);
    }
    return text;
}

std::string TReader::ReadText() {
    const int64_t start = Position();
    const TValueType type = ReadValue();
    switch (type) {
    case vaString: return AnsiToFormText(ReadStr());
    case vaLString: return AnsiToFormText(ReadChars(ReadLength(1)));
    case vaWString: return ReadWideText();
    case vaUTF8String: {
        std::string text = ReadChars(ReadLength(1));
        if (!detail::IsUtf8(text)) {
            Fail(start, "A string is no valid UTF-8");
        }
        return text;
    }
    default: WrongType(type, TypeName(vaString));
    }
}

std::string TReader::ReadString() {
    const TValueType type = NextValue();
    if (type == vaString || type == vaLString) {
        ReadValue();
        return type == vaString ? ReadStr() : ReadChars(ReadLength(1));
    }
    return FormTextToAnsi(ReadText());
}

char TReader::ReadChar() {
    const int64_t start = Position();
    const std::string text = ReadString();
    if (text.size() == 1) {
        return text[0];
    }
    // A byte that is no character by itself is written as the character of its number.
    if (!text.empty() && detail::Utf8Length(text, 0) == text.size()) {
        const char32_t c = detail::DecodeUtf8(text, 0, text.size());
        if (c < 0x100) {
            return static_cast<char>(static_cast<unsigned char>(c));
        }
    }
    Fail(start, "Invalid property value: a single character expected");
}

std::string TReader::ReadIdent() {
    const TValueType type = ReadValue();
    switch (type) {
    case vaIdent: return ReadStr();
    case vaFalse: return "False";
    case vaTrue: return "True";
    case vaNil: return "nil";
    case vaNull: return "Null";
    default: WrongType(type, TypeName(vaIdent));
    }
}

uint32_t TReader::ReadSet(const TEnumInfo& elements) {
    const TValueType type = ReadValue();
    if (type != vaSet) {
        WrongType(type, TypeName(vaSet));
    }
    uint32_t bits = 0;
    for (;;) {
        const int64_t start = Position();
        const std::string name = ReadStr();
        if (name.empty()) {
            return bits;
        }
        const auto ordinal = elements.Find(name);
        if (!ordinal) {
            Fail(start, Format("Invalid property element: %s", {name}));
        }
        bits |= uint32_t{1} << *ordinal;
    }
}

void TReader::ReadBinary(TStream& stream) {
    const TValueType type = ReadValue();
    if (type != vaBinary) {
        WrongType(type, TypeName(vaBinary));
    }
    for (size_t left = ReadLength(1); left > 0;) {
        if (FBufferPos == FBufferEnd) {
            Fill();
        }
        const size_t part = std::min(left, FBufferEnd - FBufferPos);
        stream.WriteBuffer(FBuffer.data() + FBufferPos, part);
        FBufferPos += part;
        left -= part;
    }
}

void TReader::SkipValue() {
    const TValueType type = ReadValue();
    switch (type) {
    case vaNull:
    case vaFalse:
    case vaTrue:
    case vaNil: return;
    case vaInt8: return SkipBytes(1);
    case vaInt16: return SkipBytes(2);
    case vaInt32:
    case vaSingle: return SkipBytes(4);
    case vaInt64:
    case vaCurrency:
    case vaDate:
    case vaDouble: return SkipBytes(8);
    case vaExtended: return SkipBytes(10);
    case vaString:
    case vaIdent: return SkipBytes(ReadNumber<uint8_t>());
    case vaBinary:
    case vaLString:
    case vaUTF8String: return SkipBytes(ReadLength(1));
    case vaWString: return SkipBytes(ReadLength(2) * 2);
    case vaSet:
        while (const auto length = ReadNumber<uint8_t>()) {
            SkipBytes(length);
        }
        return;
    case vaList:
    case vaCollection: {
        const detail::TRestore nesting(FNesting);
        Enter();
        while (!EndOfList()) {
            if (type == vaList) {
                SkipValue();
                continue;
            }
            if (IsIntegerType(NextValue())) {
                SkipValue();
            }
            ReadListBegin();
            SkipProperties();
        }
        return ReadListEnd();
    }
    case vaSpelled: break;
    }
    Fail(Position() - 1, Format("Unknown value type %s", {IntToStr(type)}));
}

/// Properties up to the end of their list, that included.
void TReader::SkipProperties() {
    while (!EndOfList()) {
        SkipBytes(ReadNumber<uint8_t>());
        SkipValue();
    }
    ReadListEnd();
}

// --- Parts of the format

void TReader::ReadSignature() {
    const int64_t start = Position();
    std::array<char, 4> signature;
    Read(signature.data(), signature.size());
    if (std::string_view(signature.data(), signature.size()) != "TPF0") {
        Fail(start, "Invalid stream format: no form");
    }
}

void TReader::ReadPrefix(TFilerFlags& flags, int& childPos) {
    constexpr unsigned prefixMark = 0xF0;
    flags = {};
    childPos = -1;
    const unsigned byte = NextByte();
    if ((byte & prefixMark) != prefixMark) {
        return;
    }
    ++FBufferPos;
    flags = TFilerFlags::FromBits(byte & ~prefixMark);
    if (!(flags - TFilerFlags{ffInherited, ffChildPos, ffInline}).IsEmpty()) {
        Fail(Position() - 1, "Unknown flags of a component");
    }
    if (flags.Contains(ffChildPos)) {
        childPos = ReadInteger();
    }
}

} // namespace kx
