// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace kx::gallery {

/// How the bytes of a text file stand for characters.
enum class TEncoding { Detect, Utf8, Western, Cyrillic, Japanese };

/// The beginning of a text file, in the process's code page and with a carriage return and line feed behind each line.
/// `Detect` takes bytes that are valid UTF-8 for that, and all others for Western ones.
/// @throws EFOpenError
std::string ReadText(const std::string& fileName, TEncoding encoding);

/// "12 KB", "1204 bytes" and the like.
std::string SizeText(uint64_t bytes);

enum class TFileKind { Picture, Text, Other };
TFileKind KindOf(const std::string& fileName); ///< By its extension.

struct TFileFacts {
    bool IsFile = false;
    bool IsFolder = false;
    std::string Size;
    std::string Modified; ///< In the user's own format.
};
TFileFacts FactsOf(const std::string& fileName);

} // namespace kx::gallery
