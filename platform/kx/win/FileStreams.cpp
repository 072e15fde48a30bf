// SPDX-License-Identifier: MIT
// Files and resources as streams.

#include "kx/win/FileStreams.h"

#include "kx/win/Windows.h"

namespace kx {

namespace {

/// The system's words for an error, without the full stop and the end of line behind them.
std::string SystemMessage(DWORD code) {
    char text[512];
    DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0, text,
                                  sizeof(text), nullptr);
    while (length > 0 && (text[length - 1] == '\n' || text[length - 1] == '\r')) {
        --length;
    }
    return {text, length};
}

DWORD DesiredAccess(unsigned mode) {
    switch (mode & 3) {
    case fmOpenRead: return GENERIC_READ;
    case fmOpenWrite: return GENERIC_WRITE;
    default: return GENERIC_READ | GENERIC_WRITE;
    }
}

DWORD ShareMode(unsigned mode) {
    switch (mode & 0xF0) {
    case fmShareDenyWrite: return FILE_SHARE_READ;
    case fmShareDenyRead: return FILE_SHARE_WRITE;
    case fmShareDenyNone: return FILE_SHARE_READ | FILE_SHARE_WRITE;
    default: return 0;
    }
}

HANDLE OpenFileHandle(const std::string& fileName, unsigned mode) {
    if (mode == fmCreate) {
        return CreateFileW(ToWide(fileName).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    }
    return CreateFileW(ToWide(fileName).c_str(), DesiredAccess(mode), ShareMode(mode), nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

} // namespace

// --- TFileStream

const TClass& TFileStream::StaticClass() {
    static const TClassBuilder<TFileStream> cls("TFileStream", TStream::StaticClass());
    return cls.Class();
}

TFileStream::TFileStream(const std::string& fileName, unsigned mode)
    : FFileName(fileName), FHandle(OpenFileHandle(fileName, mode)) {
    if (!FHandle) {
        const std::string reason = SystemMessage(GetLastError());
        if (mode == fmCreate) {
            throw EFCreateError(Format("Cannot create file \"%s\". %s", {fileName, reason}));
        }
        throw EFOpenError(Format("Cannot open file \"%s\". %s", {fileName, reason}));
    }
}

namespace {

constexpr size_t MaxTransfer = size_t{1} << 30; ///< Bytes per call of the system, which counts in 32 bits.

} // namespace

size_t TFileStream::Read(void* buffer, size_t count) {
    auto* bytes = static_cast<uint8_t*>(buffer);
    size_t done = 0;
    while (done < count) {
        DWORD part = 0;
        const auto wanted = static_cast<DWORD>(count - done < MaxTransfer ? count - done : MaxTransfer);
        if (!ReadFile(FHandle.get(), bytes + done, wanted, &part, nullptr) || part == 0) {
            break;
        }
        done += part;
    }
    return done;
}

size_t TFileStream::Write(const void* buffer, size_t count) {
    const auto* bytes = static_cast<const uint8_t*>(buffer);
    size_t done = 0;
    while (done < count) {
        DWORD part = 0;
        const auto wanted = static_cast<DWORD>(count - done < MaxTransfer ? count - done : MaxTransfer);
        if (!WriteFile(FHandle.get(), bytes + done, wanted, &part, nullptr) || part == 0) {
            break;
        }
        done += part;
    }
    return done;
}

int64_t TFileStream::Seek(int64_t offset, TSeekOrigin origin) {
    static const DWORD methods[] = {FILE_BEGIN, FILE_CURRENT, FILE_END};
    LARGE_INTEGER distance;
    LARGE_INTEGER position;
    distance.QuadPart = offset;
    if (!SetFilePointerEx(FHandle.get(), distance, &position, methods[static_cast<size_t>(origin)])) {
        throw EStreamError("Stream seek error");
    }
    return position.QuadPart;
}

void TFileStream::SetSize(int64_t value) {
    SetPosition(value);
    if (!SetEndOfFile(FHandle.get())) {
        throw EStreamError("Stream write error");
    }
}

// --- TResourceStream

namespace {

std::string_view FindBytes(HINSTANCE module, LPCSTR name, LPCSTR type, const std::string& shownName) {
    const HRSRC found = FindResourceA(module, name, type);
    const HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
    if (!loaded) {
        throw EResNotFound(Format("Resource %s not found", {shownName}));
    }
    return {static_cast<const char*>(LockResource(loaded)), SizeofResource(module, found)};
}

} // namespace

const TClass& TResourceStream::StaticClass() {
    static const TClassBuilder<TResourceStream> cls("TResourceStream", TStaticMemoryStream::StaticClass());
    return cls.Class();
}

TResourceStream::TResourceStream(HINSTANCE module, const std::string& name, LPCSTR type)
    : TResourceStream(FindBytes(module, name.c_str(), type, name)) {}

TResourceStream::TResourceStream(HINSTANCE module, int id, LPCSTR type)
    : TResourceStream(FindBytes(module, MAKEINTRESOURCEA(id), type, IntToStr(id))) {}

// --- Files

bool FileExists(const std::string& fileName) {
    const DWORD attributes = GetFileAttributesW(ToWide(fileName).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool DirectoryExists(const std::string& path) {
    const DWORD attributes = GetFileAttributesW(ToWide(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool FileIsHeldByOthers(const std::string& fileName) {
    // Not in all headers of the system.
    constexpr DWORD recallOnOpen = 0x40000;
    constexpr DWORD recallOnDataAccess = 0x400000;
    constexpr DWORD storedElsewhere = FILE_ATTRIBUTE_OFFLINE | recallOnOpen | recallOnDataAccess;
    if ((GetFileAttributesW(ToWide(fileName).c_str()) & storedElsewhere) != 0) {
        return false; // nor are files that are not there
    }
    const unique_hfile file(CreateFileW(ToWide(fileName).c_str(), GENERIC_READ,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    return !file && GetLastError() == ERROR_SHARING_VIOLATION;
}

void LoadFromFile(TStrings& strings, const std::string& fileName) {
    TFileStream file(fileName, fmOpenRead | fmShareDenyWrite);
    strings.LoadFromStream(file);
}

void SaveToFile(const TStrings& strings, const std::string& fileName) {
    TFileStream file(fileName, fmCreate);
    strings.SaveToStream(file);
}

} // namespace kx
