// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Streams.h"
#include "kx/core/Strings.h"
#include "kx/win/Handles.h"
#include "kx/win/WinTypes.h"

#include <string>

namespace kx {

KX_EXCEPTION(EFCreateError, EStreamError);
KX_EXCEPTION(EFOpenError, EStreamError);

/// How a file is opened; one of fmOpen... and one of fmShare... are added up.
constexpr unsigned fmCreate = 0xFFFF; ///< Makes the file, or empties one that exists; nobody else may open it.
constexpr unsigned fmOpenRead = 0x0000;
constexpr unsigned fmOpenWrite = 0x0001;
constexpr unsigned fmOpenReadWrite = 0x0002;
constexpr unsigned fmShareExclusive = 0x0010;
constexpr unsigned fmShareDenyWrite = 0x0020;
constexpr unsigned fmShareDenyRead = 0x0030;
constexpr unsigned fmShareDenyNone = 0x0040;

/// A file on disk.
class TFileStream : public TStream {
    KX_CLASS()

    /// @throws EFCreateError "Cannot create file \"%s\". %s", EFOpenError "Cannot open file \"%s\". %s"
    TFileStream(const std::string& fileName, unsigned mode);

    const std::string& FileName() const { return FFileName; }

    size_t Read(void* buffer, size_t count) override;
    size_t Write(const void* buffer, size_t count) override;
    int64_t Seek(int64_t offset, TSeekOrigin origin) override;
    void SetSize(int64_t value) override;

private:
    std::string FFileName;
    unique_hfile FHandle;
};

/// A resource of a module, read only.
class TResourceStream : public TStaticMemoryStream {
    KX_CLASS()

    /// @throws EResNotFound "Resource %s not found"
    TResourceStream(HINSTANCE module, const std::string& name, LPCSTR type);
    TResourceStream(HINSTANCE module, int id, LPCSTR type);

private:
    explicit TResourceStream(std::string_view bytes) : TStaticMemoryStream(bytes.data(), bytes.size()) {}
};

/// True when a file, not a folder, of that name exists.
bool FileExists(const std::string& fileName);
/// True when a folder of that name exists. A share that does not answer takes long to say so.
bool DirectoryExists(const std::string& path);

/// True when somebody has the file open and shares it with nobody. Files whose content is stored elsewhere are not
/// asked about: to open them may fetch it.
bool FileIsHeldByOthers(const std::string& fileName);

/// All texts of the list, as in its `Text`. @throws EFOpenError, EFCreateError
void LoadFromFile(TStrings& strings, const std::string& fileName);
void SaveToFile(const TStrings& strings, const std::string& fileName);

} // namespace kx
