// SPDX-License-Identifier: MIT
// Writes the values of a binary form.

#include "kx/core/FormValues.h"

#include "kx/core/FilerTools.h"

#include <limits>

namespace kx {

namespace {

using detail::MaxShortString;

uint32_t CheckedLength(size_t length) {
    if (length > std::numeric_limits<uint32_t>::max()) {
        throw EWriteError("A value is too long for a form");
    }
    return static_cast<uint32_t>(length);
}

} // namespace

// --- Text

namespace {

struct TFormTextCodec {
    TFormTextConversion ToAnsi = nullptr;
    TFormTextConversion FromAnsi = nullptr;
};

TFormTextCodec FormTextCodec;

} // namespace

void SetFormTextCodec(TFormTextConversion utf8ToAnsi, TFormTextConversion ansiToUtf8) {
    FormTextCodec = {utf8ToAnsi, ansiToUtf8};
}

std::string FormTextToAnsi(std::string_view utf8) {
    return FormTextCodec.ToAnsi && !detail::IsAscii(utf8) ? FormTextCodec.ToAnsi(utf8) : std::string(utf8);
}

std::string AnsiToFormText(std::string_view ansi) {
    std::string text =
        FormTextCodec.FromAnsi && !detail::IsAscii(ansi) ? FormTextCodec.FromAnsi(ansi) : std::string(ansi);
    if (detail::IsUtf8(text)) {
        return text;
    }
    std::string mended;
    for (size_t i = 0; i < text.size();) {
        const size_t length = detail::Utf8Length(text, i);
        if (length == 0) {
            detail::AppendUtf8(mended, static_cast<unsigned char>(text[i++]));
        } else {
            mended.append(text, i, length);
            i += length;
        }
    }
    return mended;
}

// --- Values

void TValueWriter::FlushBuffer() {
    FStream.WriteBuffer(FBuffer.data(), FBuffer.size());
    FBuffer.clear();
}

void TValueWriter::WriteBoolean(bool value) { WriteValue(value ? vaTrue : vaFalse); }

void TValueWriter::WriteChar(char value) { WriteString({&value, 1}); }

void TValueWriter::WriteInteger(int64_t value) {
    if (value == static_cast<int8_t>(value)) {
        WriteValue(vaInt8);
        WriteNumber(static_cast<int8_t>(value));
    } else if (value == static_cast<int16_t>(value)) {
        WriteValue(vaInt16);
        WriteNumber(static_cast<int16_t>(value));
    } else if (value == static_cast<int32_t>(value)) {
        WriteValue(vaInt32);
        WriteNumber(static_cast<int32_t>(value));
    } else {
        WriteValue(vaInt64);
        WriteNumber(value);
    }
}

void TValueWriter::WriteFloat(double value) {
    WriteValue(vaDouble);
    WriteNumber(value);
}

void TValueWriter::WriteString(std::string_view ansi) { WriteText(AnsiToFormText(ansi)); }

void TValueWriter::WriteText(std::string_view utf8) {
    const bool isAscii = detail::IsAscii(utf8);
    if (isAscii && utf8.size() <= MaxShortString) {
        WriteValue(vaString);
        WriteStr(utf8);
        return;
    }
    WriteValue(isAscii ? vaLString : vaUTF8String);
    WriteNumber(CheckedLength(utf8.size()));
    Write(utf8.data(), utf8.size());
}

void TValueWriter::WriteIdent(std::string_view name) {
    if (SameText(name, "False")) {
        WriteValue(vaFalse);
    } else if (SameText(name, "True")) {
        WriteValue(vaTrue);
    } else if (SameText(name, "nil")) {
        WriteValue(vaNil);
    } else if (SameText(name, "Null")) {
        WriteValue(vaNull);
    } else {
        WriteValue(vaIdent);
        WriteStr(name);
    }
}

void TValueWriter::WriteSet(const TEnumInfo& elements, uint32_t bits) {
    WriteValue(vaSet);
    for (size_t i = 0; i < elements.Values.size(); ++i) {
        if ((bits >> i & 1) != 0) {
            WriteStr(elements.Values[i]);
        }
    }
    WriteStr({});
}

void TValueWriter::WriteBinary(std::string_view bytes) {
    WriteValue(vaBinary);
    WriteNumber(CheckedLength(bytes.size()));
    Write(bytes.data(), bytes.size());
}

// --- Parts of the format

void TValueWriter::WriteSignature() { Write("TPF0", 4); }

void TValueWriter::WritePrefix(TFilerFlags flags, int childPos) {
    if (flags.IsEmpty()) {
        return;
    }
    FBuffer.push_back(static_cast<char>(0xF0 | flags.Bits()));
    if (flags.Contains(ffChildPos)) {
        WriteInteger(childPos);
    }
}

void TValueWriter::WriteStr(std::string_view text) {
    if (text.size() > MaxShortString) {
        throw EWriteError(Format("The name %s... is too long for a form", {text.substr(0, 40)}));
    }
    WriteNumber(static_cast<uint8_t>(text.size()));
    Write(text.data(), text.size());
}

} // namespace kx
