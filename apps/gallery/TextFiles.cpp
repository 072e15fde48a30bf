// SPDX-License-Identifier: MIT
// Reads and writes text files in their encodings.

#include "TextFiles.h"

#include "kx/win/FileStreams.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <string_view>

namespace kx::gallery {

namespace {

constexpr size_t readLimit = 65536; // bytes; a preview shows the beginning

std::wstring Decode(std::string_view bytes, UINT codePage) {
    if (bytes.empty()) {
        return {};
    }
    const int count = static_cast<int>(bytes.size());
    std::wstring text(static_cast<size_t>(MultiByteToWideChar(codePage, 0, bytes.data(), count, nullptr, 0)), L'\0');
    MultiByteToWideChar(codePage, 0, bytes.data(), count, text.data(), static_cast<int>(text.size()));
    return text;
}

bool IsUtf8(std::string_view bytes) {
    return bytes.empty() || MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, bytes.data(),
                                                static_cast<int>(bytes.size()), nullptr, 0) > 0;
}

/// `bytes` without the part of a character that a cut at the limit may have left at its end.
std::string_view WholeCharacters(std::string_view bytes) {
    const auto isInner = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
    size_t end = bytes.size();
    while (end > 0 && bytes.size() - end < 3 && isInner(bytes[end - 1])) {
        --end;
    }
    const bool isCut = end > 0 && static_cast<unsigned char>(bytes[end - 1]) >= 0xC0 && !IsUtf8(bytes.substr(end - 1));
    return isCut ? bytes.substr(0, end - 1) : bytes;
}

UINT CodePageOf(TEncoding encoding, std::string_view bytes) {
    switch (encoding) {
    case TEncoding::Utf8: return CP_UTF8;
    case TEncoding::Western: return 1252;
    case TEncoding::Cyrillic: return 1251;
    case TEncoding::Japanese: return 932;
    case TEncoding::Detect: break;
    }
    return IsUtf8(bytes) ? CP_UTF8 : 1252;
}

std::string WithLineBreaks(const std::string& text) {
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' || text[i] == '\n') {
            result += "\r\n";
            i += text.compare(i, 2, "\r\n") == 0 ? 1U : 0U;
        } else if (text[i] != '\0') {
            result += text[i];
        }
    }
    return result;
}

bool HasExtension(const std::string& fileName, std::initializer_list<std::string_view> extensions) {
    const std::string extension = ExtractFileExt(fileName);
    for (const std::string_view known : extensions) {
        if (SameText(extension, known)) {
            return true;
        }
    }
    return false;
}

} // namespace

std::string ReadText(const std::string& fileName, TEncoding encoding) {
    TFileStream file(fileName, fmOpenRead | fmShareDenyNone);
    std::string content(static_cast<size_t>(std::min<int64_t>(file.Size(), readLimit)), '\0');
    content.resize(file.Read(content.data(), content.size()));
    std::string_view bytes = WholeCharacters(content);
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (bytes.substr(0, byteOrderMark.size()) == byteOrderMark) {
        bytes.remove_prefix(byteOrderMark.size());
    }
    return WithLineBreaks(FromWide(Decode(bytes, CodePageOf(encoding, bytes))));
}

std::string SizeText(uint64_t bytes) {
    if (bytes < 10'240) {
        return IntToStr(static_cast<int64_t>(bytes)) + (bytes == 1 ? " byte" : " bytes");
    }
    return bytes < 10'485'760 ? IntToStr(static_cast<int64_t>(bytes / 1024)) + " KB"
                              : IntToStr(static_cast<int64_t>(bytes / 1'048'576)) + " MB";
}

TFileKind KindOf(const std::string& fileName) {
    if (HasExtension(fileName, {".bmp", ".ico"})) {
        return TFileKind::Picture;
    }
    return HasExtension(fileName, {".txt", ".log", ".ini", ".csv"}) ? TFileKind::Text : TFileKind::Other;
}

TFileFacts FactsOf(const std::string& fileName) {
    TFileFacts facts;
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (GetFileAttributesExA(fileName.c_str(), GetFileExInfoStandard, &data) == 0) {
        return facts;
    }
    facts.IsFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    facts.IsFile = !facts.IsFolder;
    facts.Size = facts.IsFile ? SizeText(uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow) : std::string();
    FILETIME local;
    SYSTEMTIME time;
    if (FileTimeToLocalFileTime(&data.ftLastWriteTime, &local) != 0 && FileTimeToSystemTime(&local, &time) != 0) {
        char date[64] = {};
        char clock[64] = {};
        GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &time, nullptr, date, sizeof(date));
        GetTimeFormatA(LOCALE_USER_DEFAULT, TIME_NOSECONDS, &time, nullptr, clock, sizeof(clock));
        facts.Modified = std::string(date) + " " + clock;
    }
    return facts;
}

} // namespace kx::gallery
