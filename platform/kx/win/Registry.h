// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Objects.h"
#include "kx/core/Strings.h"
#include "kx/win/Handles.h"
#include "kx/win/WinTypes.h"

#include <string>
#include <vector>

namespace kx {

KX_EXCEPTION(ERegistryException, Exception);

enum class TRegDataType : uint8_t { Unknown, String, ExpandString, Integer, Binary };

/// Reads and writes the registry. One key is open at a time; key names are relative to it, or, with a leading backslash
/// or while none is open, to the root key. Value names are those of the open key; "" is its default value.
class TRegistry : public TObject {
    KX_CLASS()

    explicit TRegistry(REGSAM access = 0xF003F /* KEY_ALL_ACCESS */);
    ~TRegistry() override;

    HKEY RootKey() const { return FRootKey; } ///< HKEY_CURRENT_USER at first.
    void SetRootKey(HKEY value);              ///< Closes the open key.
    /// Rights that keys are opened with. KEY_WOW64_64KEY or KEY_WOW64_32KEY holds for all that is done with keys.
    REGSAM Access() const { return FAccess; }
    void SetAccess(REGSAM value) { FAccess = value; }

    HKEY CurrentKey() const { return FCurrentKey.get(); }           ///< Null while none is open.
    const std::string& CurrentPath() const { return FCurrentPath; } ///< Of the open key below the root key.

    /// Opens a key in place of the one that is open. False leaves everything as it was.
    bool OpenKey(const std::string& key, bool canCreate);
    bool OpenKeyReadOnly(const std::string& key);
    void CloseKey();

    bool KeyExists(const std::string& key) const;
    /// Makes the key and those above it; one that exists already is fine.
    /// @throws ERegistryException "Failed to create key %s"
    void CreateKey(const std::string& key);
    /// Deletes the key with all keys below it. False when it is not there or cannot be deleted, for a name of nothing
    /// but backslashes, and, while the root key itself is open, for every name without a leading backslash.
    bool DeleteKey(const std::string& key);
    /// Names of the keys below the open one, in the registry's order; replaces what is in `names`.
    void GetKeyNames(TStrings& names) const;
    bool HasSubKeys() const;

    void GetValueNames(TStrings& names) const;
    bool ValueExists(const std::string& name) const;
    bool DeleteValue(const std::string& name);
    TRegDataType GetDataType(const std::string& name) const; ///< Unknown for a missing value too.
    int GetDataSize(const std::string& name) const;          ///< Bytes; -1 for a missing value.

    /// A missing or empty value reads as the empty string. Characters behind a zero byte are left out.
    /// @throws ERegistryException "Invalid data type for '%s'" when the value is no string.
    std::string ReadString(const std::string& name) const;
    /// @throws ERegistryException "Failed to get data for '%s'" for a missing value,
    ///         "Invalid data type for '%s'" for one that is no integer.
    int32_t ReadInteger(const std::string& name) const;
    bool ReadBool(const std::string& name) const { return ReadInteger(name) != 0; }
    /// Up to `size` bytes; returns how many there were.
    /// @throws ERegistryException "Failed to get data for '%s'" when it is missing or longer than `size`.
    size_t ReadBinaryData(const std::string& name, void* buffer, size_t size) const;

    /// @throws ERegistryException "Failed to set data for '%s'"; so do all that write.
    void WriteString(const std::string& name, const std::string& value);
    void WriteExpandString(const std::string& name, const std::string& value);
    void WriteInteger(const std::string& name, int32_t value);
    void WriteBool(const std::string& name, bool value) { WriteInteger(name, value ? 1 : 0); }
    void WriteBinaryData(const std::string& name, const void* data, size_t size);

private:
    bool Open(const std::string& key, bool canCreate, REGSAM access);

    HKEY FRootKey;
    REGSAM FAccess;
    unique_hkey FCurrentKey;
    std::string FCurrentPath;
};

/// The key's name from the root key, whatever key is open: one backslash in front and none at the end. Empty for a name
/// of nothing but backslashes, which would mean the root key itself.
std::string KeyFromRoot(const std::string& key);

/// A registry key used like an INI file: a section is a key below the open one, an identifier one of its values. All
/// values are strings.
class TRegIniFile : public TRegistry {
    KX_CLASS()

    /// Opens the key `fileName` below HKEY_CURRENT_USER and creates it if it is missing; empty opens the root itself.
    explicit TRegIniFile(const std::string& fileName = {}, REGSAM access = 0xF003F /* KEY_ALL_ACCESS */);

    const std::string& FileName() const { return FFileName; }

    using TRegistry::DeleteKey;
    using TRegistry::ReadBool;
    using TRegistry::ReadInteger;
    using TRegistry::ReadString;
    using TRegistry::WriteBool;
    using TRegistry::WriteInteger;
    using TRegistry::WriteString;

    /// `fallback` for a missing value or section, and, with integers, for a text that is none. Booleans are true for
    /// every text that is a number but 0.
    std::string ReadString(const std::string& section, const std::string& ident, const std::string& fallback) const;
    int32_t ReadInteger(const std::string& section, const std::string& ident, int32_t fallback) const;
    bool ReadBool(const std::string& section, const std::string& ident, bool fallback) const;

    /// Creates the section if it is missing. Booleans are written as "1" and "0".
    void WriteString(const std::string& section, const std::string& ident, const std::string& value);
    void WriteInteger(const std::string& section, const std::string& ident, int32_t value);
    void WriteBool(const std::string& section, const std::string& ident, bool value);

    void ReadSection(const std::string& section, TStrings& idents) const;
    void ReadSections(TStrings& sections) const;
    void ReadSectionValues(const std::string& section, TStrings& values) const; ///< As "ident=value".
    void EraseSection(const std::string& section);
    void DeleteKey(const std::string& section, const std::string& ident);

private:
    const std::string FFileName;
};

} // namespace kx
