// SPDX-License-Identifier: MIT
// A form's text into its binary form.

#include "kx/core/FormText.h"

#include "kx/core/FilerTools.h"
#include "kx/core/FormTextLexer.h"

#include <algorithm>

namespace kx {

namespace {

using detail::TFormTextLexer;
using detail::TFormToken;

/// Reads the text of a form and writes its binary form.
class TFormTextReader {
public:
    TFormTextReader(std::string_view text, TValueWriter& writer, TFormLines* lines, int64_t start, TFormNumbers numbers)
        : FLexer(text), FWriter(writer), FLines(lines), FStart(start), FNumbers(numbers) {}

    void Convert() {
        FWriter.WriteSignature();
        Component();
        if (FLexer.Token() != TFormToken::End) {
            FLexer.Fail("Nothing is expected behind the form");
        }
    }

private:
    void Component();
    void Properties();
    void Value();
    void Ident();
    void Integer();
    void Spelling();
    void Float();
    void Symbol();
    void List();
    void Set();
    void Collection();

    bool IsKeyword(std::string_view word) const { return FLexer.IsWord(word) && !FLexer.IsFollowedBy('='); }
    bool IsComponent() const { return IsKeyword("object") || IsKeyword("inherited") || IsKeyword("inline"); }
    std::string Name();
    int32_t Position();
    void Expect(char symbol);
    void ExpectWord(std::string_view word);
    void WriteName(const std::string& name);
    void NotePlace();
    void Enter();

    TFormTextLexer FLexer;
    TValueWriter& FWriter;
    TFormLines* FLines;
    int64_t FStart;
    TFormNumbers FNumbers;
    int FNesting = 0;
};

// --- Words

void TFormTextReader::Expect(char symbol) {
    if (!FLexer.IsSymbol(symbol)) {
        FLexer.Fail(Format("'%s' expected", {std::string_view(&symbol, 1)}));
    }
    FLexer.Next();
}

void TFormTextReader::ExpectWord(std::string_view word) {
    if (!FLexer.IsWord(word)) {
        FLexer.Fail(Format("%s expected", {word}));
    }
    FLexer.Next();
}

/// An identifier without dots
std::string TFormTextReader::Name() {
    if (FLexer.Token() != TFormToken::Ident || FLexer.Text().find('.') != std::string::npos) {
        FLexer.Fail("Identifier expected");
    }
    std::string name = FLexer.Text();
    FLexer.Next();
    return name;
}

/// "[3]"
int32_t TFormTextReader::Position() {
    Expect('[');
    if (FLexer.Token() != TFormToken::Integer || FLexer.Integer() < INT32_MIN || FLexer.Integer() > INT32_MAX) {
        FLexer.Fail("Position expected");
    }
    const auto position = static_cast<int32_t>(FLexer.Integer());
    FLexer.Next();
    Expect(']');
    return position;
}

void TFormTextReader::WriteName(const std::string& name) {
    constexpr size_t maxName = 255;
    if (name.size() > maxName) {
        FLexer.Fail("The name is too long");
    }
    FWriter.WriteStr(name);
}

/// What is written next stands on this line.
void TFormTextReader::NotePlace() {
    if (FLines) {
        FLines->Add(FStart + static_cast<int64_t>(FWriter.Size()), FLexer.Line());
    }
}

void TFormTextReader::Enter() {
    if (++FNesting > MaxFormNesting) {
        FLexer.Fail("The form is nested too deeply");
    }
}

// --- Components

void TFormTextReader::Component() {
    Enter();
    NotePlace();
    TFilerFlags flags;
    if (FLexer.IsWord("inherited")) {
        flags.Include(ffInherited);
    } else if (FLexer.IsWord("inline")) {
        flags.Include(ffInline);
    } else if (!FLexer.IsWord("object")) {
        FLexer.Fail("object, inherited or inline expected");
    }
    FLexer.Next();
    std::string name;
    std::string className = Name();
    if (FLexer.IsSymbol(':')) {
        FLexer.Next();
        name = std::move(className);
        className = Name();
    }
    if (className.size() > MaxFormClassName) {
        FLexer.Fail("The class name is too long");
    }
    int32_t childPos = -1;
    if (FLexer.IsSymbol('[')) {
        flags.Include(ffChildPos);
        childPos = Position();
    }
    FWriter.WritePrefix(flags, childPos);
    WriteName(className);
    WriteName(name);
    Properties();
    while (IsComponent()) {
        Component();
    }
    FWriter.WriteListEnd();
    ExpectWord("end");
    --FNesting;
}

/// Properties, and the end of their list in the binary form
void TFormTextReader::Properties() {
    while (FLexer.Token() == TFormToken::Ident && !IsComponent() && !IsKeyword("end")) {
        NotePlace();
        WriteName(FLexer.Text());
        FLexer.Next();
        Expect('=');
        NotePlace();
        Value();
    }
    FWriter.WriteListEnd();
}

// --- Values

void TFormTextReader::Value() {
    switch (FLexer.Token()) {
    case TFormToken::Ident: return Ident();
    case TFormToken::Integer: return Integer();
    case TFormToken::Float: return Float();
    case TFormToken::String: FWriter.WriteText(FLexer.Text()); return FLexer.Next();
    case TFormToken::Symbol: return Symbol();
    case TFormToken::End: break;
    }
    FLexer.Fail("Value expected");
}

void TFormTextReader::Ident() {
    constexpr size_t maxName = 255;
    if (FLexer.Text().size() > maxName) {
        FLexer.Fail("The name is too long");
    }
    FWriter.WriteIdent(FLexer.Text());
    FLexer.Next();
}

void TFormTextReader::Integer() {
    if (FLexer.Text() != IntToStr(FLexer.Integer())) {
        Spelling();
    }
    FWriter.WriteInteger(FLexer.Integer());
    FLexer.Next();
}

/// The number as the text has it, in front of its value
void TFormTextReader::Spelling() {
    if (FNumbers == TFormNumbers::Spelled && FLexer.Text().size() <= detail::MaxShortString) {
        FWriter.WriteValue(vaSpelled);
        FWriter.WriteStr(FLexer.Text());
    }
}

void TFormTextReader::Float() {
    Spelling();
    const TValueType type = FLexer.FloatType();
    FWriter.WriteValue(type);
    switch (type) {
    case vaSingle: FWriter.WriteNumber(static_cast<float>(FLexer.Float())); break;
    case vaCurrency: FWriter.WriteNumber(FLexer.Integer()); break;
    default: FWriter.WriteNumber(FLexer.Float()); break;
    }
    FLexer.Next();
}

void TFormTextReader::Symbol() {
    if (FLexer.IsSymbol('(')) {
        List();
    } else if (FLexer.IsSymbol('[')) {
        Set();
    } else if (FLexer.IsSymbol('<')) {
        Collection();
    } else if (FLexer.IsSymbol('{')) {
        FWriter.WriteBinary(FLexer.Bytes());
    } else {
        FLexer.Fail("Value expected");
    }
}

void TFormTextReader::List() {
    Enter();
    FLexer.Next();
    FWriter.WriteListBegin();
    while (!FLexer.IsSymbol(')')) {
        if (FLexer.IsWord("Null")) {
            FLexer.Fail("Null would end the list"); // both are the same byte in the binary form
        }
        NotePlace();
        Value();
    }
    FLexer.Next();
    FWriter.WriteListEnd();
    --FNesting;
}

void TFormTextReader::Set() {
    FLexer.Next();
    FWriter.WriteValue(vaSet);
    while (!FLexer.IsSymbol(']')) {
        WriteName(Name());
        if (!FLexer.IsSymbol(']')) {
            Expect(',');
        }
    }
    FLexer.Next();
    FWriter.WriteStr({});
}

void TFormTextReader::Collection() {
    Enter();
    FLexer.Next();
    FWriter.WriteValue(vaCollection);
    while (!FLexer.IsSymbol('>')) {
        ExpectWord("item");
        NotePlace();
        if (FLexer.IsSymbol('[')) {
            FWriter.WriteInteger(Position());
        }
        FWriter.WriteListBegin();
        Properties();
        ExpectWord("end");
    }
    FLexer.Next();
    FWriter.WriteListEnd();
    --FNesting;
}

} // namespace

void ObjectTextToBinary(TStream& text, TStream& binary, TFormLines* lines, TFormNumbers numbers) {
    std::string source(static_cast<size_t>(std::max<int64_t>(text.Size() - text.Position(), 0)), '\0');
    text.ReadBuffer(source.data(), source.size());
    TValueWriter writer(binary);
    TFormTextReader(source, writer, lines, binary.Position(), numbers).Convert();
    writer.FlushBuffer();
}

} // namespace kx
