// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <exception>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace kx {

/// Base of every exception that the framework raises.
class Exception : public std::exception {
public:
    explicit Exception(std::string message) : FMessage(std::move(message)) {}

    const std::string& Message() const { return FMessage; }
    const char* what() const noexcept override { return FMessage.c_str(); }

    /// Name of the exception's class, as users see it ("EReadError").
    virtual const char* ClassName() const { return "Exception"; }

private:
    std::string FMessage;
};

/// Declares an exception class that adds nothing but its name.
#define KX_EXCEPTION(Name, Base)                                                                                       \
    class Name : public Base {                                                                                         \
    public:                                                                                                            \
        using Base::Base;                                                                                              \
        const char* ClassName() const override { return #Name; }                                                       \
    }

KX_EXCEPTION(EAbort, Exception); ///< Ends an operation silently; never shown to the user.
KX_EXCEPTION(EConvertError, Exception);
KX_EXCEPTION(EIntOverflow, Exception);
KX_EXCEPTION(ERangeError, Exception);
KX_EXCEPTION(EInvalidCast, Exception);
KX_EXCEPTION(EOutOfMemory, Exception);
KX_EXCEPTION(EInvalidOperation, Exception);
KX_EXCEPTION(EListError, Exception);
KX_EXCEPTION(EStringListError, Exception);
KX_EXCEPTION(EComponentError, Exception);
KX_EXCEPTION(EPropertyError, Exception);
KX_EXCEPTION(EStreamError, Exception);
KX_EXCEPTION(EFilerError, EStreamError);
KX_EXCEPTION(EReadError, EFilerError);
KX_EXCEPTION(EWriteError, EFilerError);
KX_EXCEPTION(EClassNotFound, EFilerError);
KX_EXCEPTION(EMethodNotFound, EFilerError);
KX_EXCEPTION(EInvalidImage, EFilerError);
KX_EXCEPTION(EResNotFound, Exception);
KX_EXCEPTION(EParserError, Exception);

/// A failed call of the operating system; carries the system's error number.
class EOSError : public Exception {
public:
    EOSError(std::string message, uint32_t errorCode) : Exception(std::move(message)), FErrorCode(errorCode) {}

    uint32_t ErrorCode() const { return FErrorCode; }
    const char* ClassName() const override { return "EOSError"; }

private:
    uint32_t FErrorCode;
};

/// @throws ERangeError "Range check error"
[[noreturn]] void RaiseRangeError();

// --- Text. Letters beyond ASCII are left alone unless a routine says otherwise.

std::string UpperCase(std::string_view text);            ///< ASCII letters only.
std::string LowerCase(std::string_view text);            ///< ASCII letters only.
bool SameText(std::string_view a, std::string_view b);   ///< Equal but for the case of ASCII letters.
int CompareText(std::string_view a, std::string_view b); ///< <0, 0, >0; ASCII letters compare without case.
std::string Trim(std::string_view text);                 ///< Without blanks and control characters at both ends.
std::string IntToStr(int64_t value);
/// @throws EConvertError "'%s' is not a valid integer value". Accepts decimal, and hexadecimal behind "$" or "0x".
int64_t StrToInt(std::string_view text);
int64_t StrToIntDef(std::string_view text, int64_t fallback);

/// Replaces each "%s" of the pattern by the next argument; "%%" stands for one per cent sign.
std::string Format(std::string_view pattern, std::initializer_list<std::string_view> args);

// --- Multi-byte code pages. A lead byte and the byte behind it are one character, whose second byte may look like a
// backslash or a quote. The window layer announces the lead bytes of the process's code page, or that it is UTF-8,
// once, at start-up; UTF-8 has no lead bytes, since no byte of a longer character looks like an ASCII one there.

bool IsLeadByte(char c);
void SetLeadByte(unsigned char c, bool isLead);
void SetCodePageIsUtf8(bool value);

/// Where the character at `at` ends; at most the text's length.
size_t NextCharacter(std::string_view text, size_t at);

/// Position of the first `c` that is a character of its own, from `start` on; npos when there is none.
size_t FindChar(std::string_view text, char c, size_t start = 0);

// --- Parts of a file name. '\' separates folders, ':' ends a drive; '/' counts as a letter.

std::string ExtractFileName(std::string_view path); ///< Behind the last backslash or drive colon.
std::string ExtractFilePath(std::string_view path); ///< Up to and including the last backslash or drive colon.
std::string ExtractFileDir(std::string_view path); ///< As ExtractFilePath without the backslash, unless it is a root's.
std::string ExtractFileDrive(std::string_view path); ///< "C:", or "\\server\share".
std::string ExtractFileExt(std::string_view path);   ///< With its dot; empty when there is none.
std::string ChangeFileExt(std::string_view path, std::string_view extension); ///< `extension` with its dot.
std::string IncludeTrailingPathDelimiter(std::string_view path);
std::string ExcludeTrailingPathDelimiter(std::string_view path);

} // namespace kx
