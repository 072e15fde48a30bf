// SPDX-License-Identifier: MIT
// Reads places from the registry and writes them to it.

#include "kx/places/KxPlaces.h"
#include "kx/win/Registry.h"
#include "kx/win/Windows.h"

#include <exception>
#include <map>
#include <set>

// How the registry keeps places: below RegistryKey one key for each, Place_0, Place_1, ..., with nine values.

namespace kx {

namespace {

/// The special folder of a stored number. Only four come back; a place of any other one becomes a place of its path.
TKxSpecShellFolder GetTypedSpecFolder(int32_t value) {
    for (const TKxSpecShellFolder folder : KxOfferedFolders) {
        if (constFolders[folder] == value) {
            return folder;
        }
    }
    return ftNone;
}

std::string PlacesKey(const std::string& registryKey) {
    std::string key = KeyFromRoot(registryKey);
    if (key.empty()) {
        throw EInvalidOperation("The registry key of the places is empty");
    }
    return key;
}

/// The key is not there. A key that merely cannot be opened is not missing.
bool IsMissing(const std::string& keyFromRoot) {
    unique_hkey key;
    return RegOpenKeyExA(HKEY_CURRENT_USER, keyFromRoot.c_str() + 1, 0, KEY_READ, key.put()) == ERROR_FILE_NOT_FOUND;
}

bool HasNoKeysBelow(const std::string& keyFromRoot) {
    TRegistry registry;
    return registry.OpenKeyReadOnly(keyFromRoot) ? !registry.HasSubKeys() : IsMissing(keyFromRoot);
}

void WritePlace(TRegistry& key, const TKxPlace& place) {
    key.WriteString("Name", place.GetPlaceName());
    key.WriteString("Path", place.PlacePath());
    key.WriteString("RegPath", place.PlaceRegPath());
    key.WriteString("IconDll", place.PlaceIconDll());
    key.WriteInteger("Icon", place.PlaceIcon());
    key.WriteInteger("IconHot", place.PlaceHotIcon());
    key.WriteString("Hint", place.PlaceDesc());
    key.WriteInteger("SpecFolder", constFolders[place.PlaceSpecPath()]);
    key.WriteBool("AutoCaption", place.AutoCaption());
}

void ReadPlace(const TRegistry& key, TKxPlace& place) {
    place.SetPlaceName(key.ReadString("Name"));
    place.SetPlacePath(key.ReadString("Path"));
    place.SetPlaceRegPath(key.ReadString("RegPath"));
    place.SetPlaceIconDll(key.ReadString("IconDll"));
    place.SetPlaceIcon(key.ReadInteger("Icon"));
    place.SetPlaceHotIcon(key.ReadInteger("IconHot"));
    place.SetPlaceDesc(key.ReadString("Hint"));
    place.SetPlaceSpecPath(GetTypedSpecFolder(key.ReadInteger("SpecFolder")));
    place.SetAutoCaption(key.ReadBool("AutoCaption"));
}

/// Finds places as `TKxPlaces::PlaceViaName` does while many of them are read. The time for one place does not grow
/// with their number.
class TPlaceIndex {
public:
    explicit TPlaceIndex(TKxPlaces& places) : FPlaces(places) {
        for (int i = 0; i < places.Count(); ++i) {
            Insert(i);
        }
    }

    /// The number of the place in the collection; a new place is added when there is none. The finder forgets the place
    /// until it is inserted again.
    int Take(const std::string& name, TKxSpecShellFolder folder) {
        const auto found = FIndices.find(KeyOf(name, folder));
        if (found == FIndices.end()) {
            FPlaces.Add();
            return FPlaces.Count() - 1;
        }
        const int first = *found->second.begin();
        found->second.erase(first);
        if (found->second.empty()) {
            FIndices.erase(found);
        }
        return first;
    }

    void Insert(int index) {
        const TKxPlace& place = FPlaces[index];
        const bool named = place.PlaceSpecPath() == ftNone;
        FIndices[KeyOf(named ? place.GetPlaceName() : std::string(), place.PlaceSpecPath())].insert(index);
    }

private:
    using TKey = std::pair<TKxSpecShellFolder, std::string>;

    /// Names play no part in finding a special folder.
    static TKey KeyOf(const std::string& name, TKxSpecShellFolder folder) {
        return {folder, folder == ftNone ? name : std::string()};
    }

    TKxPlaces& FPlaces;
    std::map<TKey, std::set<int>> FIndices;
};

} // namespace

void TKxPlacesBarOptions::LoadFromRegistry() {
    FReadKey.clear();
    const std::string base = PlacesKey(FRegKey);
    TRegistry registry;
    if (!registry.OpenKeyReadOnly(base)) {
        FReadKey = IsMissing(base) ? base : std::string();
        return;
    }
    // Deliberate: the places come in the registry's order, with Place_10 before Place_2, where one would expect the
    // order of the numbers.
    TStringList names;
    registry.GetKeyNames(names);
    TPlaceIndex index(FPlaces);
    TRegistry key;
    bool readAll = true;
    for (int i = 0; i < names.Count(); ++i) {
        if (!key.OpenKeyReadOnly(base + '\\' + names[i])) {
            readAll = false;
            continue;
        }
        const std::string name = key.ReadString("Name");
        const int at = index.Take(name, GetTypedSpecFolder(key.ReadInteger("SpecFolder")));
        ReadPlace(key, FPlaces[at]);
        index.Insert(at);
    }
    FReadKey = readAll ? base : std::string();
}

void TKxPlacesBarOptions::SaveOnClose() const {
    const std::string base = KeyFromRoot(FRegKey);
    if (!base.empty() && (base == FReadKey || HasNoKeysBelow(base))) {
        SaveToRegistry();
    }
}

bool TKxPlacesBarOptions::SaveToRegistry() const {
    const std::string base = PlacesKey(FRegKey);
    TRegistry registry;
    if (!registry.OpenKey(base, true)) {
        return false;
    }
    TStringList names;
    registry.GetKeyNames(names);
    for (int i = 0; i < names.Count(); ++i) {
        registry.DeleteKey(names[i]);
    }
    std::exception_ptr failure;
    TRegistry key;
    bool savedAll = true;
    for (int i = 0; i < FPlaces.Count(); ++i) {
        if (!key.OpenKey(base + "\\Place_" + IntToStr(i), true)) {
            savedAll = false;
            continue;
        }
        try {
            WritePlace(key, FPlaces[i]);
        } catch (const ERegistryException&) {
            // Another process that saves its places may have deleted this key meanwhile. The other places are read.
            failure = std::current_exception();
        }
    }
    if (failure) {
        std::rethrow_exception(failure);
    }
    return savedAll;
}

std::string ExtractRegStringValue(const std::string& regPath) {
    std::string key = R"(\Software\Microsoft\Windows\CurrentVersion\Explorer\Shell Folders)";
    std::string value = regPath;
    if (regPath.starts_with('\\')) {
        size_t last = 0;
        for (size_t at = 0; at != std::string::npos; at = FindChar(regPath, '\\', at + 1)) {
            last = at;
        }
        key = regPath.substr(0, last + 1);
        value = regPath.substr(last + 1);
    }
    TRegistry registry;
    if (regPath.empty() || !registry.OpenKeyReadOnly(key)) {
        return {};
    }
    const TRegDataType type = registry.GetDataType(value);
    const bool isText = type == TRegDataType::String || type == TRegDataType::ExpandString;
    return isText ? registry.ReadString(value) : std::string();
}

} // namespace kx
