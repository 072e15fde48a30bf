// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Alive.h"
#include "kx/core/Collections.h"
#include "kx/core/ComponentRef.h"
#include "kx/frame/KxShellDefs.h"
#include "kx/ui/controls/ControlTypes.h"

#include <array>
#include <string>
#include <vector>

// The places of a places bar: folders that the application and the user chose, and how the registry keeps them.

namespace kx {

class TKxPlaces;
class TKxPlacesBarOptions;
class TToolBar;

/// The special folders that a place can stand for, as they are offered to the user: ftDesktop, ftDrives, ftPersonal and
/// ftFavorites.
inline constexpr std::array<const char*, 4> KxPlaceFolderNames = {"CSIDL_DESKTOP", "CSIDL_DRIVES", "CSIDL_PERSONAL",
                                                                  "CSIDL_FAVORITES"};

/// One folder of a places bar: a special folder, else a folder whose path the registry holds, else a path. Setting a
/// property stores it and nothing else: the bar that shows the places is rebuilt by whoever changes them.
class TKxPlace : public TCollectionItem {
    KX_CLASS()

    using TCollectionItem::TCollectionItem;

    /// The life of the place, for `Outlives` and `TAlive`.
    const TLifetime& Lifetime() const { return FLife; }

    /// The caption: the one given by hand, or, with AutoCaption, one made from the folder.
    std::string PlaceName() const { return GetPlaceName(); }
    void SetPlaceName(const std::string& value) { FPlaceName = value; }
    const std::string& PlacePath() const { return FPlacePath; }
    void SetPlacePath(const std::string& value) { FPlacePath = value; }
    /// Where the registry holds the folder's path, as `ExtractRegStringValue` takes it.
    const std::string& PlaceRegPath() const { return FPlaceRegPath; }
    void SetPlaceRegPath(const std::string& value) { FPlaceRegPath = value; }
    TKxSpecShellFolder PlaceSpecPath() const { return FPlaceSpecPath; } ///< ftNone: no special folder.
    void SetPlaceSpecPath(TKxSpecShellFolder value) { FPlaceSpecPath = value; }
    const std::string& PlaceDesc() const { return FPlaceDesc; } ///< The button's hint.
    void SetPlaceDesc(const std::string& value) { FPlaceDesc = value; }
    const std::string& PlaceIconDll() const { return FPlaceIconDll; } ///< File that the icons are taken from.
    void SetPlaceIconDll(const std::string& value) { FPlaceIconDll = value; }
    int32_t PlaceIcon() const { return FPlaceIcon; } ///< Index of the icon in that file.
    void SetPlaceIcon(int32_t value) { FPlaceIcon = value; }
    int32_t PlaceHotIcon() const { return FPlaceHotIcon; } ///< The same of the icon of a hot or pressed button.
    void SetPlaceHotIcon(int32_t value) { FPlaceHotIcon = value; }
    bool AutoCaption() const { return FAutoCaption; }
    void SetAutoCaption(bool value) { FAutoCaption = value; }

    std::string GetPlaceName() const;
    std::string GetDisplayName() const override { return GetPlaceName(); }

    /// Path of the folder, unless it is a special one: its own, or the one that the registry holds.
    std::string FolderPath() const;
    /// Absolute item identifier list of the folder; empty when there is no such folder.
    unique_pidl GetPlacePidl(IShellFolder& desktopFolder) const;

    void Assign(const TPersistent* source) override;

private:
    int32_t FPlaceIcon = 0;
    int32_t FPlaceHotIcon = 0;
    std::string FPlaceDesc;
    std::string FPlaceIconDll;
    std::string FPlacePath;
    std::string FPlaceName;
    TKxSpecShellFolder FPlaceSpecPath = ftNone;
    std::string FPlaceRegPath;
    bool FAutoCaption = false;
    TLifetime FLife;
};

/// Implemented by whoever keeps references to places, in order to be told when those may have gone.
class IKxPlacesWatcher {
public:
    virtual void PlacesChanged() = 0; ///< Places were added, or have gone.
    virtual void PlacesGone() = 0;    ///< The collection goes, and all of its places.

protected:
    ~IKxPlacesWatcher() = default;
};

/// The places of a bar, the first one at its top.
class TKxPlaces : public TCollectionOf<TKxPlace> {
    KX_CLASS()

    /// `options` own the collection.
    explicit TKxPlaces(TKxPlacesBarOptions* options);
    ~TKxPlaces() override;

    /// From now on `watcher` is told, until it calls `Unwatch`, which it does before it goes, or the collection ends.
    void Watch(IKxPlacesWatcher& watcher) { FWatchers.push_back(&watcher); }
    void Unwatch(IKxPlacesWatcher& watcher) { std::erase(FWatchers, &watcher); }

    TKxPlace* Add() { return &TCollectionOf::Add(); }
    TKxPlace* Insert(int index) { return &TCollectionOf::Insert(index); }

    /// The first place of that special folder, or, for ftNone, the first one without a special folder whose caption is
    /// `name`, in that letter case. Null when there is none.
    TKxPlace* PlaceViaName(const std::string& name, TKxSpecShellFolder specFolder) const;

    /// Frees all that the tool bar owns, even a button whose handler calls this, and makes a button for each place: the
    /// button at index i shows place i.
    /// @throws ERangeError for a place with a negative icon index, once all buttons are made; its icon is missing.
    void UpdatePlacesOn(TToolBar& toolBar) const;

    TPersistent* GetOwner() const override;

protected:
    void Update(TCollectionItem* item) override;

private:
    TKxPlacesBarOptions* FPBOptions;
    std::vector<IKxPlacesWatcher*> FWatchers;
};

/// Choice of the lite dialogs: the system's places bar or none.
class TKxPlacesBarLiteOptions : public TPersistent {
    KX_CLASS()

    bool Visible() const { return FVisible; }
    void SetVisible(bool value) { FVisible = value; }

private:
    bool FVisible = true;
};

/// The places bar of a dialog: what it shows, what the user may do to it and where its places are kept.
class TKxPlacesBarOptions : public TKxPlacesBarLiteOptions {
    KX_CLASS()

    TKxPlacesBarOptions();
    ~TKxPlacesBarOptions() override;

    /// Key below HKEY_CURRENT_USER that keeps the places; empty: they are not kept.
    const std::string& RegistryKey() const { return FRegKey; }
    void SetRegistryKey(const std::string& value) { FRegKey = value; }
    bool AllowEdit() const { return FCanEdit; } ///< The user may change a place.
    void SetAllowEdit(bool value) { FCanEdit = value; }
    bool AllowDelete() const { return FCanDel; }
    void SetAllowDelete(bool value) { FCanDel = value; }
    bool AllowDrop() const { return FCanDrop; } ///< Folders dropped on the bar become places.
    void SetAllowDrop(bool value) { FCanDrop = value; }
    bool AutoScroll() const { return FAutoScroll; } ///< The bar scrolls when its buttons do not fit.
    void SetAutoScroll(bool value) { FAutoScroll = value; }
    TKxPlaces& Places() { return FPlaces; }
    const TKxPlaces& Places() const { return FPlaces; }
    void SetPlaces(const TKxPlaces& value) { FPlaces.Assign(&value); } ///< Copies the places.
    TBorderStyle BorderStyle() const { return FBorder; }               ///< Of the panel around the bar.
    void SetBorderStyle(TBorderStyle value) { FBorder = value; }
    bool Native() const { return FNative; } ///< The system's places bar in place of the library's.
    void SetNative(bool value) { FNative = value; }

    /// The tool bar that shows the places, not owned; null when there is none, or when it has been freed.
    TToolBar* PlacesBar() const;
    void SetPlacesBar(TToolBar* value);
    TComponent* Dlg() const { return FDlg; } ///< The dialog that owns the options; null when there is none.
    void SetDlg(TComponent* value) { FDlg = value; }

    /// Merges the places that the registry key holds into the collection, in the registry's order: a stored place
    /// updates the one that `PlaceViaName` finds for it, or is added at the end. A key that is not there changes
    /// nothing, one of a place that cannot be opened is skipped.
    /// @throws ERegistryException for a place with a value of another type or without one of its numbers; the places
    ///         before it are read, those behind it are not. EInvalidOperation when RegistryKey is empty, as
    ///         one of nothing but backslashes is.
    void LoadFromRegistry();

    /// Replaces all keys below the registry key by those of the places; the key's own values stay. Does nothing when
    /// the key cannot be opened or made; a place whose key cannot be is skipped. True when the key holds all places.
    /// @throws ERegistryException when a value cannot be written, after all other places have been written.
    ///         EInvalidOperation when RegistryKey is empty: the keys to replace would be those of the whole user.
    bool SaveToRegistry() const;

    /// `SaveToRegistry` for a dialog that closes. It replaces no places that the user has not seen in the bar: it does
    /// nothing when the key holds places and the last `LoadFromRegistry` did not read all of them. That is so when the
    /// loading failed, when a key could not be opened, when RegistryKey was another one, or when nothing was loaded.
    /// @throws ERegistryException as `SaveToRegistry` does.
    void SaveOnClose() const;

    TPersistent* GetOwner() const override { return FDlg; }

private:
    std::string FRegKey;
    bool FCanEdit = true;
    bool FCanDel = true;
    bool FCanDrop = true;
    bool FAutoScroll = true;
    TKxPlaces FPlaces;
    TBorderStyle FBorder = bsNone;
    bool FNative = true;
    TComponentRef<TToolBar> FPlacesBar;
    TComponent* FDlg = nullptr;
    std::string FReadKey; ///< Key whose places the collection holds all; empty: none.
};

/// A string value below HKEY_CURRENT_USER: "\Key\Value", or the name of a value among the shell's own folders
/// ("Personal"). Empty when there is no such string.
std::string ExtractRegStringValue(const std::string& regPath);

} // namespace kx
