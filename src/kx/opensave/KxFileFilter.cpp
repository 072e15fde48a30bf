// SPDX-License-Identifier: MIT
// Takes entries out of a file list.

#include "kx/opensave/KxFileFilter.h"

#include "kx/opensave/KxShellList.h"

namespace kx {

const TClass& TKxFileFilter::StaticClass() {
    using T = TKxFileFilter;
    static const TClassBuilder<T> cls("TKxFileFilter", TPersistent::StaticClass(), [](auto& c) {
        c.Property("ShowFolders", &T::ShowFolders, &T::SetShowFolders).Default = true;
        c.Property("Enabled", &T::Enabled, &T::SetEnabled).Default = false;
        c.Property("OnIncludeFile", &T::OnIncludeFile, &T::SetOnIncludeFile);
    });
    return cls.Class();
}

void TKxFileFilter::SetShowFolders(bool value) {
    FShowFolders = value;
    if (auto* list = dynamic_cast<IKxFileListOwner*>(FOwner)) {
        list->RefreshFileList();
    }
}

void TKxFileFilter::Forget() {
    ++FPass;
    FAnswers.clear();
}

/// Asks the handler, unless it has answered before. It may free the filter or end the pass.
bool TKxFileFilter::Includes(const std::string& fileName) {
    const auto known = FAnswers.find(fileName);
    if (known != FAnswers.end()) {
        return known->second;
    }
    const TAlive alive(FLife);
    const unsigned pass = FPass;
    bool include = true;
    FOnFilter(this, fileName, include);
    if (alive && pass == FPass) {
        FAnswers.emplace(fileName, include);
    }
    return include;
}

bool TKxFileFilter::ProcessViaFilter(HWND listView, const std::string& folder, TKxFilterPass pass) {
    using TKind = TKxShellList::TEntry::TKind;
    if (!FEnabled) {
        return true;
    }
    if (pass == TKxFilterPass::All) {
        Forget();
    }
    const TAlive alive(FLife);
    const unsigned number = ++FPass;
    const auto isOver = [&] { return !alive || number != FPass; };
    const TKxShellList list(listView);
    if (isOver() || list.IsEdited()) {
        return false;
    }
    const int count = list.Count();
    std::vector<TKxShellList::TEntry> unwanted;
    try {
        for (int i = 0; i < count; ++i) {
            TKxShellList::TEntry entry = list.At(i, folder);
            const bool included = entry.Kind == TKind::Unknown || // stays in the list
                                  (entry.Kind == TKind::Folder ? FShowFolders : Includes(entry.Path));
            if (isOver()) {
                return false;
            }
            if (!included) {
                unwanted.push_back(std::move(entry));
            }
        }
    } catch (...) {
        if (!isOver()) {
            list.Remove(unwanted); // those that the handler refused before it failed
        }
        throw;
    }
    // When the handler has let entries come or go, the other entries may stand elsewhere.
    return list.Count() == count && list.Remove(unwanted);
}

} // namespace kx
