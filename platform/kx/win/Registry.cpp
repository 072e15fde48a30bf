// SPDX-License-Identifier: MIT
// The registry.

#include "kx/win/Registry.h"

#include "kx/core/SysUtils.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

namespace {

/// The key that names are relative to, and the rest of the name.
struct TLocation {
    HKEY Base;
    std::string Key;
};

TLocation Locate(const TRegistry& registry, const std::string& key) {
    const bool absolute = !key.empty() && key.front() == '\\';
    const HKEY current = registry.CurrentKey();
    return {absolute || !current ? registry.RootKey() : current, absolute ? key.substr(1) : key};
}

/// The bits of a registry's access that tell which of the two registries of a 64-bit Windows is meant: they go with
/// every opening of a key, whatever it is opened for.
REGSAM View(const TRegistry& registry) { return registry.Access() & (KEY_WOW64_32KEY | KEY_WOW64_64KEY); }

unique_hkey OpenBelow(const TLocation& location, REGSAM access) {
    unique_hkey key;
    if (RegOpenKeyExA(location.Base, location.Key.c_str(), 0, access, key.put()) != ERROR_SUCCESS) {
        return {};
    }
    return key;
}

[[noreturn]] void NoData(const std::string& name) {
    throw ERegistryException(Format("Failed to get data for '%s'", {name}));
}

[[noreturn]] void WrongType(const std::string& name) {
    throw ERegistryException(Format("Invalid data type for '%s'", {name}));
}

struct TValue {
    DWORD Type = REG_NONE;
    std::vector<uint8_t> Data;
};

/// False when there is no such value. Most values are short: they take one call of the system. A longer one may grow
/// between the answer that names its size and the next question, so the room for it at least doubles.
bool ReadValue(HKEY key, const std::string& name, TValue& value) {
    if (!key) {
        return false;
    }
    DWORD size = 256;
    LSTATUS status = ERROR_MORE_DATA;
    while (status == ERROR_MORE_DATA) {
        value.Data.resize(std::max(size_t{size}, value.Data.size() * 2));
        size = static_cast<DWORD>(value.Data.size());
        status = RegQueryValueExA(key, name.c_str(), nullptr, &value.Type, value.Data.data(), &size);
    }
    value.Data.resize(status == ERROR_SUCCESS ? size : 0);
    return status == ERROR_SUCCESS;
}

void WriteValue(HKEY key, const std::string& name, DWORD type, const void* data, size_t size) {
    if (!key || RegSetValueExA(key, name.c_str(), 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(size)) !=
                    ERROR_SUCCESS) {
        throw ERegistryException(Format("Failed to set data for '%s'", {name}));
    }
}

std::string ReadText(HKEY key, const std::string& name) {
    TValue value;
    if (!ReadValue(key, name, value) || value.Data.empty()) {
        return {};
    }
    if (value.Type != REG_SZ && value.Type != REG_EXPAND_SZ) {
        WrongType(name);
    }
    // The zero at the end may be missing: other programs leave it out.
    std::string text(reinterpret_cast<const char*>(value.Data.data()), value.Data.size());
    text.resize(std::min(text.find('\0'), text.size()));
    return text;
}

using TEnumerate = LSTATUS (*)(HKEY key, DWORD index, char* name, DWORD* length);

/// Names may be longer than the system says they can, so the room for them grows.
void ListNames(HKEY key, TStrings& names, TEnumerate enumerate) {
    std::string name(1024, '\0');
    DWORD index = 0;
    while (key) {
        auto length = static_cast<DWORD>(name.size());
        const LSTATUS status = enumerate(key, index, name.data(), &length);
        if (status == ERROR_MORE_DATA && name.size() < 0x10000) {
            name.resize(name.size() * 2);
        } else if (status == ERROR_SUCCESS) {
            names.Add(name.substr(0, length));
            ++index;
        } else {
            break;
        }
    }
}

LSTATUS EnumKey(HKEY key, DWORD index, char* name, DWORD* length) {
    return RegEnumKeyExA(key, index, name, length, nullptr, nullptr, nullptr, nullptr);
}

LSTATUS EnumValue(HKEY key, DWORD index, char* name, DWORD* length) {
    return RegEnumValueA(key, index, name, length, nullptr, nullptr, nullptr, nullptr);
}

bool NamesNothing(const std::string& key) { return key.find_first_not_of('\\') == std::string::npos; }

bool DeleteTree(const TLocation& location, REGSAM view) {
    const auto deleteKey = [&] {
        return RegDeleteKeyExA(location.Base, location.Key.c_str(), view, 0) == ERROR_SUCCESS;
    };
    // Most keys have none below them and go, values and all, with one call; one that has is refused.
    if (deleteKey()) {
        return true;
    }
    {
        const unique_hkey key = OpenBelow(location, DELETE | KEY_READ | KEY_SET_VALUE | view);
        if (!key || RegDeleteTreeA(key.get(), nullptr) != ERROR_SUCCESS) {
            return false;
        }
    }
    return deleteKey();
}

} // namespace

// --- TRegistry

const TClass& TRegistry::StaticClass() {
    static const TClassBuilder<TRegistry> cls("TRegistry", TObject::StaticClass());
    return cls.Class();
}

TRegistry::TRegistry(REGSAM access) : FRootKey(HKEY_CURRENT_USER), FAccess(access) {}

TRegistry::~TRegistry() = default;

void TRegistry::SetRootKey(HKEY value) {
    if (value != FRootKey) {
        CloseKey();
        FRootKey = value;
    }
}

void TRegistry::CloseKey() {
    FCurrentKey.reset();
    FCurrentPath.clear();
}

bool TRegistry::Open(const std::string& key, bool canCreate, REGSAM access) {
    const TLocation location = Locate(*this, key);
    unique_hkey opened;
    if (canCreate && !location.Key.empty()) {
        if (RegCreateKeyExA(location.Base, location.Key.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr,
                            opened.put(), nullptr) != ERROR_SUCCESS) {
            return false;
        }
    } else {
        opened = OpenBelow(location, access);
        if (!opened) {
            return false;
        }
    }
    if (location.Base != FCurrentKey.get()) {
        FCurrentPath = location.Key;
    } else if (!location.Key.empty()) {
        FCurrentPath += '\\' + location.Key;
    }
    FCurrentKey = std::move(opened);
    return true;
}

bool TRegistry::OpenKey(const std::string& key, bool canCreate) { return Open(key, canCreate, FAccess); }

bool TRegistry::OpenKeyReadOnly(const std::string& key) { return Open(key, false, KEY_READ | View(*this)); }

bool TRegistry::KeyExists(const std::string& key) const {
    return static_cast<bool>(OpenBelow(Locate(*this, key), KEY_READ | View(*this)));
}

void TRegistry::CreateKey(const std::string& key) {
    const TLocation location = Locate(*this, key);
    unique_hkey created;
    if (RegCreateKeyExA(location.Base, location.Key.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, FAccess, nullptr,
                        created.put(), nullptr) != ERROR_SUCCESS) {
        throw ERegistryException(Format("Failed to create key %s", {key}));
    }
}

bool TRegistry::DeleteKey(const std::string& key) {
    const TLocation location = Locate(*this, key);
    // No name stands for the open key or the root; those are not meant. Nor is what is found below a root that was
    // opened: whoever lists and deletes it holds it for a key of his own, and all of the user's keys would go.
    const bool belowRoot = location.Base == FCurrentKey.get() && NamesNothing(FCurrentPath);
    return !NamesNothing(location.Key) && !belowRoot && DeleteTree(location, View(*this));
}

void TRegistry::GetKeyNames(TStrings& names) const {
    names.Clear();
    ListNames(FCurrentKey.get(), names, EnumKey);
}

bool TRegistry::HasSubKeys() const {
    DWORD count = 0;
    return FCurrentKey &&
           RegQueryInfoKeyA(FCurrentKey.get(), nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr,
                            nullptr, nullptr, nullptr) == ERROR_SUCCESS &&
           count > 0;
}

void TRegistry::GetValueNames(TStrings& names) const {
    names.Clear();
    ListNames(FCurrentKey.get(), names, EnumValue);
}

bool TRegistry::ValueExists(const std::string& name) const { return GetDataSize(name) >= 0; }

bool TRegistry::DeleteValue(const std::string& name) {
    return FCurrentKey && RegDeleteValueA(FCurrentKey.get(), name.c_str()) == ERROR_SUCCESS;
}

TRegDataType TRegistry::GetDataType(const std::string& name) const {
    DWORD type = REG_NONE;
    if (!FCurrentKey ||
        RegQueryValueExA(FCurrentKey.get(), name.c_str(), nullptr, &type, nullptr, nullptr) != ERROR_SUCCESS) {
        return TRegDataType::Unknown;
    }
    switch (type) {
    case REG_SZ: return TRegDataType::String;
    case REG_EXPAND_SZ: return TRegDataType::ExpandString;
    case REG_DWORD: return TRegDataType::Integer;
    case REG_BINARY: return TRegDataType::Binary;
    default: return TRegDataType::Unknown;
    }
}

int TRegistry::GetDataSize(const std::string& name) const {
    DWORD size = 0;
    if (!FCurrentKey ||
        RegQueryValueExA(FCurrentKey.get(), name.c_str(), nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS) {
        return -1;
    }
    return static_cast<int>(size);
}

std::string TRegistry::ReadString(const std::string& name) const { return ReadText(FCurrentKey.get(), name); }

int32_t TRegistry::ReadInteger(const std::string& name) const {
    TValue value;
    if (!ReadValue(FCurrentKey.get(), name, value)) {
        NoData(name);
    }
    int32_t result = 0;
    if (value.Type != REG_DWORD || value.Data.size() != sizeof(result)) {
        WrongType(name);
    }
    std::copy(value.Data.begin(), value.Data.end(), reinterpret_cast<uint8_t*>(&result));
    return result;
}

size_t TRegistry::ReadBinaryData(const std::string& name, void* buffer, size_t size) const {
    TValue value;
    if (!ReadValue(FCurrentKey.get(), name, value) || value.Data.size() > size) {
        NoData(name);
    }
    std::copy(value.Data.begin(), value.Data.end(), static_cast<uint8_t*>(buffer));
    return value.Data.size();
}

void TRegistry::WriteString(const std::string& name, const std::string& value) {
    WriteValue(FCurrentKey.get(), name, REG_SZ, value.c_str(), value.size() + 1);
}

void TRegistry::WriteExpandString(const std::string& name, const std::string& value) {
    WriteValue(FCurrentKey.get(), name, REG_EXPAND_SZ, value.c_str(), value.size() + 1);
}

void TRegistry::WriteInteger(const std::string& name, int32_t value) {
    WriteValue(FCurrentKey.get(), name, REG_DWORD, &value, sizeof(value));
}

void TRegistry::WriteBinaryData(const std::string& name, const void* data, size_t size) {
    WriteValue(FCurrentKey.get(), name, REG_BINARY, data, size);
}

std::string KeyFromRoot(const std::string& key) {
    std::string name = key;
    while (name != ExcludeTrailingPathDelimiter(name)) {
        name = ExcludeTrailingPathDelimiter(name);
    }
    name.erase(0, name.find_first_not_of('\\'));
    return name.empty() ? name : '\\' + name;
}

// --- TRegIniFile

namespace {

/// Missing values, unlike empty ones, read as nothing.
bool ReadIdent(const unique_hkey& section, const std::string& ident, std::string& text) {
    if (!section ||
        RegQueryValueExA(section.get(), ident.c_str(), nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
        return false;
    }
    text = ReadText(section.get(), ident);
    return true;
}

} // namespace

const TClass& TRegIniFile::StaticClass() {
    static const TClassBuilder<TRegIniFile> cls("TRegIniFile", TRegistry::StaticClass());
    return cls.Class();
}

TRegIniFile::TRegIniFile(const std::string& fileName, REGSAM access) : TRegistry(access), FFileName(fileName) {
    OpenKey(fileName, true);
}

std::string TRegIniFile::ReadString(const std::string& section, const std::string& ident,
                                    const std::string& fallback) const {
    std::string text;
    return ReadIdent(OpenBelow(Locate(*this, section), KEY_READ | View(*this)), ident, text) ? text : fallback;
}

int32_t TRegIniFile::ReadInteger(const std::string& section, const std::string& ident, int32_t fallback) const {
    const int64_t value = StrToIntDef(ReadString(section, ident, {}), fallback);
    return value == static_cast<int32_t>(value) ? static_cast<int32_t>(value) : fallback;
}

bool TRegIniFile::ReadBool(const std::string& section, const std::string& ident, bool fallback) const {
    return ReadInteger(section, ident, fallback ? 1 : 0) != 0;
}

void TRegIniFile::WriteString(const std::string& section, const std::string& ident, const std::string& value) {
    CreateKey(section);
    const unique_hkey key = OpenBelow(Locate(*this, section), Access());
    WriteValue(key.get(), ident, REG_SZ, value.c_str(), value.size() + 1);
}

void TRegIniFile::WriteInteger(const std::string& section, const std::string& ident, int32_t value) {
    WriteString(section, ident, IntToStr(value));
}

void TRegIniFile::WriteBool(const std::string& section, const std::string& ident, bool value) {
    WriteString(section, ident, value ? "1" : "0");
}

void TRegIniFile::ReadSection(const std::string& section, TStrings& idents) const {
    idents.Clear();
    ListNames(OpenBelow(Locate(*this, section), KEY_READ | View(*this)).get(), idents, EnumValue);
}

void TRegIniFile::ReadSections(TStrings& sections) const { GetKeyNames(sections); }

void TRegIniFile::ReadSectionValues(const std::string& section, TStrings& values) const {
    TStringList idents;
    ReadSection(section, idents);
    values.Clear();
    for (int i = 0; i < idents.Count(); ++i) {
        values.Add(idents[i] + '=' + ReadString(section, idents[i], {}));
    }
}

void TRegIniFile::EraseSection(const std::string& section) { TRegistry::DeleteKey(section); }

void TRegIniFile::DeleteKey(const std::string& section, const std::string& ident) {
    if (const unique_hkey key = OpenBelow(Locate(*this, section), Access())) {
        RegDeleteValueA(key.get(), ident.c_str());
    }
}

} // namespace kx
