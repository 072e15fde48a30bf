// SPDX-License-Identifier: MIT
// A binary form into its text.

#include "kx/core/FormText.h"

#include "kx/core/FilerTools.h"
#include "kx/core/FormTextLexer.h"
#include "kx/core/TypInfo.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace kx {

namespace {

constexpr size_t MaxLineText = 64;  // characters of a string on one line
constexpr size_t BytesPerLine = 32; // of a block
constexpr int64_t CurrencyUnit = 10000;

/// Writes the text of a binary form.
class TFormTextWriter {
public:
    TFormTextWriter(TStream& binary, std::string_view lineBreak) : FReader(binary), FLineBreak(lineBreak) {}

    std::string Convert() {
        FReader.ReadSignature();
        Component();
        return std::move(FText);
    }

private:
    void Component();
    void Properties();
    void Value();
    void TypedValue(TValueType type);
    void ValueBehind(TValueType type);
    void List();
    void Set();
    void Collection();
    void Binary();
    void String();
    void Currency();
    void Float(double value, std::string_view suffix = {});
    template <class T> void FloatDigits(T value, std::string_view suffix);

    std::string Ident();
    void NewLine();
    void Enter();
    void Leave() {
        --FLevel;
        --FNesting;
    }

    TReader FReader;
    std::string_view FLineBreak;
    std::string FText;
    int FLevel = 0;   // of indentation
    int FNesting = 0; // as a reader of the form counts it
};

void TFormTextWriter::NewLine() {
    FText += FLineBreak;
    FText.append(static_cast<size_t>(FLevel) * 2, ' ');
}

/// A level of nesting: the text could not be read again beyond what a reader takes.
void TFormTextWriter::Enter() {
    if (++FNesting > MaxFormNesting) {
        FReader.ReadError("The form is nested too deeply");
    }
    ++FLevel;
}

/// A name that the text may hold without quotes
std::string TFormTextWriter::Ident() {
    std::string name = FReader.ReadStr();
    if (!detail::IsIdentPath(name) || SameText(name, "Null")) { // Null would read as the end of a list
        FReader.ReadError("Invalid name");
    }
    return name;
}

void TFormTextWriter::Component() {
    TFilerFlags flags;
    int childPos = -1;
    FReader.ReadPrefix(flags, childPos);
    FText += flags.Contains(ffInherited) ? "inherited " : flags.Contains(ffInline) ? "inline " : "object ";
    const std::string className = FReader.ReadStr();
    const std::string name = FReader.ReadStr();
    if (!IsValidIdent(className) || !(name.empty() || IsValidIdent(name))) {
        FReader.ReadError("Invalid name of a component or its class");
    }
    FText += name.empty() ? className : name + ": " + className;
    if (flags.Contains(ffChildPos)) {
        FText += " [" + IntToStr(childPos) + "]";
    }
    Enter();
    Properties();
    while (!FReader.EndOfList()) {
        NewLine();
        Component();
    }
    FReader.ReadListEnd();
    Leave();
    NewLine();
    FText += "end";
    if (FLevel == 0) {
        FText += FLineBreak;
    }
}

void TFormTextWriter::Properties() {
    while (!FReader.EndOfList()) {
        NewLine();
        FText += Ident();
        FText += " = ";
        Value();
    }
    FReader.ReadListEnd();
}

namespace {

/// Both spell the same number of the same type.
bool SpellTheSame(const std::string& a, const std::string& b) {
    using detail::TFormToken;
    try {
        const detail::TFormTextLexer left(a);
        const detail::TFormTextLexer right(b);
        const bool areNumbers = left.Token() == TFormToken::Integer || left.Token() == TFormToken::Float;
        return areNumbers && left.Text() == a && left.Token() == right.Token() && left.Integer() == right.Integer() &&
               left.FloatType() == right.FloatType() &&
               std::bit_cast<uint64_t>(left.Float()) == std::bit_cast<uint64_t>(right.Float());
    } catch (const EParserError&) {
        return false;
    }
}

} // namespace

void TFormTextWriter::Value() {
    const TValueType type = FReader.NextValue();
    const std::string spelling = FReader.Spelling();
    const size_t start = FText.size();
    TypedValue(type);
    if (!spelling.empty() && SpellTheSame(spelling, FText.substr(start))) {
        FText.replace(start, std::string::npos, spelling);
    }
}

void TFormTextWriter::TypedValue(TValueType type) {
    switch (type) {
    case vaString:
    case vaLString:
    case vaWString:
    case vaUTF8String: return String();
    case vaInt8:
    case vaInt16:
    case vaInt32:
    case vaInt64: FText += IntToStr(FReader.ReadInt64()); return;
    case vaExtended:
    case vaDouble: return Float(FReader.ReadFloat());
    case vaBinary: return Binary();
    default: FReader.ReadValue(); return ValueBehind(type);
    }
}

/// The value behind its type byte
void TFormTextWriter::ValueBehind(TValueType type) {
    switch (type) {
    case vaNull: FText += "Null"; return;
    case vaNil: FText += "nil"; return;
    case vaFalse: FText += "False"; return;
    case vaTrue: FText += "True"; return;
    case vaIdent: FText += Ident(); return;
    case vaSingle: return FloatDigits(FReader.ReadNumber<float>(), "s");
    case vaDate: return Float(FReader.ReadNumber<double>(), "d");
    case vaCurrency: return Currency();
    case vaSet: return Set();
    case vaList: return List();
    case vaCollection: return Collection();
    default: FReader.ReadError(Format("Unknown value type %s", {IntToStr(type)}));
    }
}

void TFormTextWriter::List() {
    FText += "(";
    Enter();
    while (!FReader.EndOfList()) {
        NewLine();
        Value();
    }
    FReader.ReadListEnd();
    Leave();
    FText += ")";
}

void TFormTextWriter::Set() {
    FText += "[";
    for (bool first = true;; first = false) {
        const std::string name = FReader.ReadStr();
        if (name.empty()) {
            break;
        }
        if (!IsValidIdent(name)) {
            FReader.ReadError("Invalid name in a set");
        }
        FText += first ? "" : ", ";
        FText += name;
    }
    FText += "]";
}

void TFormTextWriter::Collection() {
    FText += "<";
    Enter();
    while (!FReader.EndOfList()) {
        NewLine();
        FText += "item";
        const TValueType type = FReader.NextValue();
        if (type == vaInt8 || type == vaInt16 || type == vaInt32) {
            FText += " [" + IntToStr(FReader.ReadInteger()) + "]";
        }
        FReader.ReadListBegin();
        ++FLevel;
        Properties();
        --FLevel;
        NewLine();
        FText += "end";
    }
    FReader.ReadListEnd();
    Leave();
    FText += ">";
}

void TFormTextWriter::Binary() {
    constexpr std::string_view digits = "0123456789ABCDEF";
    TMemoryStream block;
    FReader.ReadBinary(block);
    const std::string_view bytes = block.Bytes();
    FText += "{";
    ++FLevel;
    for (size_t i = 0; i < bytes.size(); ++i) {
        if (i % BytesPerLine == 0) {
            NewLine();
        }
        const auto byte = static_cast<unsigned char>(bytes[i]);
        FText.push_back(digits[byte >> 4]);
        FText.push_back(digits[byte & 0xF]);
    }
    --FLevel;
    FText += "}";
}

namespace {

/// "#233" for a character of UTF-8. Two numbers beyond the first 65536; with a zero in front where readers would take
/// the number for a byte of another character.
std::string CharNumber(std::string_view utf8) {
    const char32_t c = detail::DecodeUtf8(utf8, 0, utf8.size());
    if (c > 0xFFFF) {
        return "#" + IntToStr(0xD800 + ((c - 0x10000) >> 10)) + "#" + IntToStr(0xDC00 + (c & 0x3FF));
    }
    const char byte = static_cast<char>(static_cast<unsigned char>(c & 0xFF));
    const bool isAmbiguous = c >= 0x80 && c <= 0xFF && detail::BytesToUtf8({&byte, 1}) != utf8;
    return (isAmbiguous ? "#0" : "#") + IntToStr(c);
}

} // namespace

/// Quotes around ASCII, numbers for all else and for quotes; long texts in pieces, each on a line of its own.
void TFormTextWriter::String() {
    const std::string text = FReader.ReadText();
    std::vector<std::string> lines(1);
    size_t count = 0;
    bool quoted = false;
    const auto quote = [&](bool on) {
        if (on != quoted) {
            lines.back().push_back('\'');
            quoted = on;
        }
    };
    for (size_t i = 0; i < text.size(); ++count) {
        if (count >= MaxLineText) {
            quote(false);
            lines.emplace_back();
            count = 0;
        }
        const size_t length = detail::Utf8Length(text, i);
        const char c = text[i];
        const bool isPlain = c >= ' ' && c <= '~' && c != '\'';
        quote(isPlain);
        lines.back() += isPlain ? std::string(1, c) : CharNumber(std::string_view(text).substr(i, length));
        count += length > 3 ? 1 : 0; // two units of UTF-16
        i += length;
    }
    quote(false);
    if (text.empty()) {
        lines.back() = "''";
    }
    ++FLevel;
    for (size_t i = 0; i < lines.size(); ++i) {
        FText += i > 0 ? " +" : "";
        if (lines.size() > 1) {
            NewLine();
        }
        FText += lines[i];
    }
    --FLevel;
}

void TFormTextWriter::Currency() {
    const auto value = FReader.ReadNumber<int64_t>();
    const int64_t fraction = value % CurrencyUnit;
    FText += value < 0 ? "-" : "";
    FText += IntToStr(std::abs(value / CurrencyUnit));
    std::string digits = IntToStr(CurrencyUnit + std::abs(fraction)).substr(1);
    while (!digits.empty() && digits.back() == '0') {
        digits.pop_back();
    }
    FText += digits.empty() ? "c" : "." + digits + "c";
}

void TFormTextWriter::Float(double value, std::string_view suffix) { FloatDigits(value, suffix); }

/// The shortest digits that give the same number again
template <class T> void TFormTextWriter::FloatDigits(T value, std::string_view suffix) {
    if (std::isnan(value)) {
        FText += "+NaN";
    } else if (std::isinf(value)) {
        FText += value < 0 ? "-Inf" : "+Inf";
    } else {
        char buffer[64];
        const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
        const std::string_view digits(buffer, static_cast<size_t>(end - buffer));
        FText += digits;
        if (suffix.empty() && digits.find_first_of(".e") == std::string_view::npos) {
            FText += ".0"; // else it would be an integer
        }
    }
    FText += suffix;
}

} // namespace

void ObjectBinaryToText(TStream& binary, TStream& text, std::string_view lineBreak) {
    const std::string converted = TFormTextWriter(binary, lineBreak).Convert();
    text.WriteBuffer(converted.data(), converted.size());
}

// These are here because programs that only read forms shall not get the writer along: the linker takes objects whole.

void ObjectResourceToText(TStream& resource, TStream& text) {
    ReadResHeader(resource);
    ObjectBinaryToText(resource, text);
}

void WriteComponent(TStream& stream, TComponent& root, TStreamFormat format, TComponent* ancestor,
                    const std::function<void(TWriter&)>& prepare) {
    TMemoryStream binary;
    TWriter writer(format == TStreamFormat::Binary ? stream : binary);
    writer.SetNumbers(format == TStreamFormat::Text ? TFormNumbers::Spelled : TFormNumbers::Plain);
    if (prepare) {
        prepare(writer);
    }
    writer.WriteDescendent(root, ancestor);
    binary.SetPosition(0);
    switch (format) {
    case TStreamFormat::Binary: return;
    case TStreamFormat::Text: return ObjectBinaryToText(binary, stream);
    case TStreamFormat::Resource:
        WriteResHeader(stream, root.FormClassName(), static_cast<uint32_t>(binary.Size()));
        stream.WriteBuffer(binary.Memory(), binary.Bytes().size());
        return;
    default: throw EWriteError("Unknown format of a form");
    }
}

} // namespace kx
