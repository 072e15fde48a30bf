// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Filer.h"

#include <string>
#include <string_view>

namespace kx::detail {

/// The three bytes that some editors put in front of UTF-8.
inline constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

enum class TFormToken : uint8_t { End, Ident, Integer, Float, String, Symbol };

/// The words of a form's text, one at a time; the first one is there from the beginning. The text outlives the lexer.
class TFormTextLexer {
public:
    /// @throws EParserError for a text that is no valid UTF-8.
    explicit TFormTextLexer(std::string_view text);

    void Next(); ///< @throws EParserError for what is no word.

    TFormToken Token() const { return FToken; }
    int Line() const { return FTokenLine; } ///< Where the word begins, from 1.
    /// Identifier, dots included; contents of a string, of all pieces that plus signs join; a number as it is spelled.
    const std::string& Text() const { return FText; }
    int64_t Integer() const { return FInteger; } ///< Of an integer; of a vaCurrency, in ten-thousandths.
    double Float() const { return FFloat; }
    TValueType FloatType() const { return FFloatType; } ///< vaDouble, vaSingle, vaDate or vaCurrency.
    bool IsSymbol(char symbol) const { return FToken == TFormToken::Symbol && FSymbol == symbol; }
    bool IsWord(std::string_view word) const { return FToken == TFormToken::Ident && SameText(FText, word); }
    bool IsFollowedBy(char c) const; ///< `c` is the next character behind the word and blanks.

    /// The bytes of a block whose opening brace is the current word; goes on to the word behind it.
    std::string Bytes();

    /// @throws EParserError "`message` on line 3": the line of the current word.
    [[noreturn]] void Fail(const std::string& message) const { FailOn(FTokenLine, message); }

private:
    [[noreturn]] static void FailOn(int line, const std::string& message);
    char Peek(size_t offset = 0) const { return FAt + offset < FSource.size() ? FSource[FAt + offset] : '\0'; }
    size_t SkipBlanks(size_t at, int& line) const;
    void ReadIdent();
    void ReadString();
    bool SkipPlus();
    void ReadQuoted(std::string& text);
    char32_t ReadCharCode();
    void ReadNumber();
    void ReadHexNumber(bool negative);
    void ReadFloat(std::string_view digits, bool negative);
    void ReadCurrency(std::string_view digits, bool negative);
    void ReadSpecialFloat(bool negative);
    TValueType ReadFloatSuffix();
    void SetInteger(std::string_view digits, int base, bool negative);

    std::string_view FSource;
    bool FHasCharNumbers = false; ///< Numbers in strings are those of characters, not bytes of a code page.
    size_t FAt = 0;
    int FLine = 1;
    TFormToken FToken = TFormToken::End;
    int FTokenLine = 1;
    char FSymbol = 0;
    std::string FText;
    int64_t FInteger = 0;
    double FFloat = 0;
    TValueType FFloatType = vaDouble;
};

} // namespace kx::detail
