// SPDX-License-Identifier: MIT
// Makes folders and files that go at the end.

#include "support/TempFolder.h"

#include "kx/core/SysUtils.h"
#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx::test {

namespace {

std::wstring WideOfUtf8(std::string_view text) {
    const int size = static_cast<int>(text.size());
    std::wstring wide(static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

void RemoveTree(const std::wstring& folder) {
    WIN32_FIND_DATAW entry;
    HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &entry);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            const std::wstring name = entry.cFileName;
            if (name == L"." || name == L"..") {
                continue;
            }
            const std::wstring path = folder + L"\\" + name;
            SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
                RemoveTree(path);
            } else {
                DeleteFileW(path.c_str());
            }
        } while (FindNextFileW(search, &entry) != 0);
        FindClose(search);
    }
    RemoveDirectoryW(folder.c_str());
}

/// Makes every folder of `path`, from the position behind `root` on.
void MakeFolders(const std::wstring& path, size_t root) {
    for (size_t at = path.find(L'\\', root); at != std::wstring::npos; at = path.find(L'\\', at + 1)) {
        CreateDirectoryW(path.substr(0, at).c_str(), nullptr);
    }
    CreateDirectoryW(path.c_str(), nullptr);
}

/// The path under which Wine makes a new file at once. Under its Windows path it first reads the whole folder in search
/// of the name in another letter case, which makes a folder of thousands slow to fill.
std::wstring PathForMaking(const std::wstring& path) {
    using TUnixName = char*(CDECL*)(const wchar_t* path);
    static const auto unixName = reinterpret_cast<TUnixName>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "wine_get_unix_file_name")));
    const size_t name = path.rfind(L'\\');
    char* const folder = unixName ? unixName(path.substr(0, name).c_str()) : nullptr;
    if (!folder) {
        return path;
    }
    std::wstring result = L"\\\\?\\unix" + WideOfUtf8(folder) + path.substr(name);
    HeapFree(GetProcessHeap(), 0, folder);
    std::replace(result.begin(), result.end(), L'/', L'\\');
    return result;
}

} // namespace

std::string FromUtf8(std::string_view text) { return FromWide(WideOfUtf8(text)); }
std::string ToUtf8(std::string_view text) {
    const std::wstring wide = ToWide(text);
    const int size = static_cast<int>(wide.size());
    const int needed = WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<size_t>(needed), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, utf8.data(), needed, nullptr, nullptr);
    return utf8;
}
bool CodePageHolds(std::string_view utf8) { return ToUtf8(FromUtf8(utf8)) == utf8; }

TTempFolder::TTempFolder(std::string_view name) {
    static int count = 0;
    wchar_t base[MAX_PATH + 1];
    GetTempPathW(MAX_PATH + 1, base);
    FPath = base + WideOfUtf8(name) + L"_" + std::to_wstring(GetCurrentProcessId()) + L"_" + std::to_wstring(++count);
    RemoveTree(FPath);
    MakeFolders(FPath, FPath.find(L'\\') + 1);
    if (GetFileAttributesW(FPath.c_str()) == INVALID_FILE_ATTRIBUTES) {
        throw Exception("cannot make the folder " + Path());
    }
    // The paths that dialogs give back are long ones.
    wchar_t full[MAX_PATH + 1];
    const DWORD size = GetLongPathNameW(FPath.c_str(), full, MAX_PATH + 1);
    if (size > 0 && size <= MAX_PATH) {
        FPath = full;
    }
}

TTempFolder::~TTempFolder() {
    // A dialog may have made the folder the current one, and a current folder cannot be removed.
    wchar_t current[MAX_PATH + 1] = L"";
    GetCurrentDirectoryW(MAX_PATH + 1, current);
    if (std::wstring(current).compare(0, FPath.size(), FPath) == 0) {
        SetCurrentDirectoryW(FPath.substr(0, FPath.rfind(L'\\')).c_str());
    }
    RemoveTree(FPath);
}

std::wstring TTempFolder::Wide(std::string_view name) const { return FPath + L"\\" + WideOfUtf8(name); }

std::string TTempFolder::Path() const { return FromWide(FPath); }
std::string TTempFolder::Path(std::string_view name) const { return FromWide(Wide(name)); }

std::string TTempFolder::AddFile(std::string_view name, std::string_view content) const {
    const std::wstring path = Wide(name);
    MakeFolders(path.substr(0, path.rfind(L'\\')), FPath.size());
    const unique_hfile file(CreateFileW(PathForMaking(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    if (!file || WriteFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &written, nullptr) == 0) {
        throw Exception("cannot write " + std::string(name) + " (error " + IntToStr(GetLastError()) + ")");
    }
    return FromWide(path);
}

std::string TTempFolder::AddFolder(std::string_view name) const {
    const std::wstring path = Wide(name);
    MakeFolders(path, FPath.size());
    return FromWide(path);
}

bool TTempFolder::Contains(std::string_view name) const {
    return GetFileAttributesW(Wide(name).c_str()) != INVALID_FILE_ATTRIBUTES;
}

} // namespace kx::test
