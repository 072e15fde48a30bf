// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kx::designer {

/// @throws EFOpenError for a file that is not there or held by others.
std::string ReadWholeFile(const std::string& path);
/// Writes the file beside itself and then puts it in its place: whatever fails, one of the two is there whole.
/// @throws EFCreateError, EWriteError: the file is as before.
void WriteWholeFile(const std::string& path, const std::string& bytes);

std::string FolderOfFile(const std::string& path); ///< Without a backslash at its end; empty without a folder.
std::string NameOfFile(const std::string& path);
std::string FullPath(const std::string& path);
bool HasExtension(const std::string& path, const char* extension); ///< ".dfm", in any letter case.
/// `path` as seen from the folder; as it is when that is on another drive.
std::string RelativePath(const std::string& folder, const std::string& path);
std::string JoinPath(const std::string& folder, const std::string& path); ///< `path` itself when it is absolute.

} // namespace kx::designer
