// SPDX-License-Identifier: MIT
// Places, and the folders that they mean.

#include "kx/places/KxPlaces.h"

#include "kx/ui/widgets/ComCtrlsToolBar.h"

#include <algorithm>

namespace kx {

// --- TKxPlace

const TClass& TKxPlace::StaticClass() {
    using T = TKxPlace;
    static const TClassBuilder<T> cls("TKxPlace", TCollectionItem::StaticClass(), [](auto& c) {
        c.Property("PlaceName", &T::PlaceName, &T::SetPlaceName);
        c.Property("PlacePath", &T::PlacePath, &T::SetPlacePath);
        c.Property("PlaceRegPath", &T::PlaceRegPath, &T::SetPlaceRegPath);
        c.Property("PlaceSpecPath", &T::PlaceSpecPath, &T::SetPlaceSpecPath);
        c.Property("PlaceDesc", &T::PlaceDesc, &T::SetPlaceDesc);
        c.Property("PlaceIconDll", &T::PlaceIconDll, &T::SetPlaceIconDll);
        c.Property("PlaceIcon", &T::PlaceIcon, &T::SetPlaceIcon);
        c.Property("PlaceHotIcon", &T::PlaceHotIcon, &T::SetPlaceHotIcon);
        c.Property("AutoCaption", &T::AutoCaption, &T::SetAutoCaption);
    });
    return cls.Class();
}

std::string TKxPlace::GetPlaceName() const {
    if (!FAutoCaption) {
        return FPlaceName;
    }
    if (FPlaceSpecPath != ftNone) {
        return GetSpecFolderName(FPlaceSpecPath);
    }
    // Deliberate: the caption comes from the reference to the registry itself, where one would expect it to come from
    // the path that the reference means.
    const std::string& path = FPlaceRegPath.empty() ? FPlacePath : FPlaceRegPath;
    const std::string name = ExtractFileName(path);
    return name.empty() ? ExtractFilePath(path) : name;
}

std::string TKxPlace::FolderPath() const {
    return FPlaceRegPath.empty() ? FPlacePath : ExtractRegStringValue(FPlaceRegPath);
}

unique_pidl TKxPlace::GetPlacePidl(IShellFolder& desktopFolder) const {
    unique_pidl pidl;
    if (std::find(KxOfferedFolders.begin(), KxOfferedFolders.end(), FPlaceSpecPath) != KxOfferedFolders.end()) {
        FindSpecialFolder(nullptr, FPlaceSpecPath, pidl);
    } else { // Deliberate: every other special folder counts as a plain path, where one would expect that folder.
        ParseFolderPath(desktopFolder, FolderPath(), pidl);
    }
    return pidl;
}

void TKxPlace::Assign(const TPersistent* source) {
    const auto* const place = dynamic_cast<const TKxPlace*>(source);
    if (!place) {
        TCollectionItem::Assign(source);
        return;
    }
    FPlaceIcon = place->FPlaceIcon;
    FPlaceHotIcon = place->FPlaceHotIcon;
    FPlaceDesc = place->FPlaceDesc;
    FPlacePath = place->FPlacePath;
    FPlaceRegPath = place->FPlaceRegPath;
    FPlaceIconDll = place->FPlaceIconDll;
    FPlaceName = place->FPlaceName;
    FAutoCaption = place->FAutoCaption;
    FPlaceSpecPath = place->FPlaceSpecPath;
}

// --- TKxPlaces

const TClass& TKxPlaces::StaticClass() {
    static const TClassBuilder<TKxPlaces> cls("TKxPlaces", TCollection::StaticClass());
    return cls.Class();
}

TKxPlaces::TKxPlaces(TKxPlacesBarOptions* options) : FPBOptions(options) {}

TKxPlaces::~TKxPlaces() {
    while (!FWatchers.empty()) {
        IKxPlacesWatcher* const watcher = FWatchers.back();
        FWatchers.pop_back();
        watcher->PlacesGone();
    }
}

void TKxPlaces::Update(TCollectionItem* item) {
    TCollection::Update(item);
    if (!item) {
        const std::vector<IKxPlacesWatcher*> watchers = FWatchers; // a watcher that is told may leave
        for (IKxPlacesWatcher* const watcher : watchers) {
            watcher->PlacesChanged();
        }
    }
}

TKxPlace* TKxPlaces::PlaceViaName(const std::string& name, TKxSpecShellFolder specFolder) const {
    for (int i = 0; i < Count(); ++i) {
        TKxPlace& place = (*this)[i];
        if (place.PlaceSpecPath() == specFolder && (specFolder != ftNone || place.GetPlaceName() == name)) {
            return &place;
        }
    }
    return nullptr;
}

TPersistent* TKxPlaces::GetOwner() const { return FPBOptions; }

// --- TKxPlacesBarOptions

const TClass& TKxPlacesBarOptions::StaticClass() {
    using T = TKxPlacesBarOptions;
    static const TClassBuilder<T> cls("TKxPlacesBarOptions", TKxPlacesBarLiteOptions::StaticClass(), [](auto& c) {
        c.Property("RegistryKey", &T::RegistryKey, &T::SetRegistryKey);
        c.Property("AllowEdit", &T::AllowEdit, &T::SetAllowEdit).Default = true;
        c.Property("AllowDelete", &T::AllowDelete, &T::SetAllowDelete).Default = true;
        c.Property("AllowDrop", &T::AllowDrop, &T::SetAllowDrop).Default = true;
        c.Property("AutoScroll", &T::AutoScroll, &T::SetAutoScroll).Default = true;
        c.SubObject("Places", &T::Places, &T::SetPlaces);
        c.Property("BorderStyle", &T::BorderStyle, &T::SetBorderStyle).Default = bsNone;
        c.Property("Native", &T::Native, &T::SetNative).Default = true;
    });
    return cls.Class();
}

TKxPlacesBarOptions::TKxPlacesBarOptions() : FPlaces(this) {}

TKxPlacesBarOptions::~TKxPlacesBarOptions() = default;

TToolBar* TKxPlacesBarOptions::PlacesBar() const { return FPlacesBar.Get(); }

void TKxPlacesBarOptions::SetPlacesBar(TToolBar* value) { FPlacesBar.Set(value); }

} // namespace kx
