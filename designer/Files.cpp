// SPDX-License-Identifier: MIT
// Whole files, and their names.

#include "designer/Files.h"

#include "kx/core/SysUtils.h"
#include "kx/win/FileStreams.h"
#include "kx/win/Windows.h"

namespace kx::designer {

std::string ReadWholeFile(const std::string& path) {
    TFileStream file(path, fmOpenRead | fmShareDenyNone);
    std::string bytes(static_cast<size_t>(file.Size()), '\0');
    if (!bytes.empty()) {
        file.ReadBuffer(bytes.data(), bytes.size());
    }
    return bytes;
}

namespace {

std::string SystemMessage(DWORD code) {
    try {
        RaiseLastOSError(code);
    } catch (const EOSError& error) {
        return error.Message();
    }
}

} // namespace

void WriteWholeFile(const std::string& path, const std::string& bytes) {
    const DWORD attributes = GetFileAttributesW(ToWide(path).c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        throw EFCreateError("The file " + path + " is read-only");
    }
    const std::string beside = path + ".~new";
    bool isWritten = false;
    DWORD reason = 0;
    {
        TFileStream file(beside, fmCreate);
        isWritten = file.Write(bytes.data(), bytes.size()) == bytes.size();
        reason = GetLastError();
    }
    if (isWritten &&
        MoveFileExW(ToWide(beside).c_str(), ToWide(path).c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        return;
    }
    reason = isWritten ? GetLastError() : reason;
    DeleteFileW(ToWide(beside).c_str());
    throw EWriteError("The file " + path + " cannot be written: " + SystemMessage(reason));
}

std::string FolderOfFile(const std::string& path) {
    const size_t at = path.find_last_of("\\/");
    return at == std::string::npos ? std::string() : path.substr(0, at);
}

std::string NameOfFile(const std::string& path) {
    const size_t at = path.find_last_of("\\/");
    return at == std::string::npos ? path : path.substr(at + 1);
}

std::string FullPath(const std::string& path) {
    const std::wstring wide = ToWide(path);
    std::wstring full(GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(GetFullPathNameW(wide.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full.empty() ? path : FromWide(full);
}

bool HasExtension(const std::string& path, const char* extension) {
    const std::string wanted = extension;
    return path.size() > wanted.size() && SameText(path.substr(path.size() - wanted.size()), wanted);
}

std::string RelativePath(const std::string& folder, const std::string& path) {
    // The folders that both have in common, whole ones only.
    size_t common = 0;
    for (size_t i = 0;; ++i) {
        const bool folderEnds = i == folder.size();
        const bool isEnd = folderEnds || folder[i] == '\\';
        if (isEnd && i < path.size() && path[i] == '\\') {
            common = i + 1;
        }
        if (folderEnds || i >= path.size() || !SameText(folder.substr(i, 1), path.substr(i, 1))) {
            break;
        }
    }
    if (common == 0) {
        return path;
    }
    std::string result;
    for (size_t i = common; i < folder.size(); ++i) {
        if (i == common || folder[i] == '\\') {
            result += "..\\";
        }
    }
    return result + path.substr(common);
}

std::string JoinPath(const std::string& folder, const std::string& path) {
    const bool isAbsolute = path.size() > 1 && (path[1] == ':' || path[0] == '\\' || path[0] == '/');
    return isAbsolute || folder.empty() ? path : FullPath(folder + "\\" + path);
}

} // namespace kx::designer
