#include "opensave/KxOpenSaveComm.h"

namespace kx {

namespace {

/// File name of the shell's entry at `index`; empty when it has no path.
std::string EntryFileName(HWND listView, int index) {
    char text[MAX_PATH] = {};
    LVITEMA item{};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    item.iItem = index;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    char path[MAX_PATH] = {};
    // The entry's identifier list is relative to its folder. Taken as a full one, as here, it yields a path in some
    // other folder; its last part is the entry's name all the same.
    if (!SendMessageA(listView, LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item)) || !item.lParam ||
        !SHGetPathFromIDListA(reinterpret_cast<LPCITEMIDLIST>(item.lParam), path)) {
        return {};
    }
    return ExtractFileName(path);
}

/// Deletes items of a list, which is drawn again once, at the end, if at all.
class TDeletions {
public:
    explicit TDeletions(HWND listView) : FListView(listView) {}
    TDeletions(const TDeletions&) = delete;
    TDeletions& operator=(const TDeletions&) = delete;
    ~TDeletions() {
        if (FBegun) {
            SendMessageA(FListView, WM_SETREDRAW, TRUE, 0);
            InvalidateRect(FListView, nullptr, TRUE);
        }
    }

    bool Delete(int index) {
        if (!std::exchange(FBegun, true)) {
            SendMessageA(FListView, WM_SETREDRAW, FALSE, 0);
        }
        return SendMessageA(FListView, LVM_DELETEITEM, static_cast<WPARAM>(index), 0) != FALSE;
    }

private:
    HWND FListView;
    bool FBegun = false;
};

} // namespace

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

bool TKxFileFilter::Includes(const std::string& fileName) {
    // An entry without a path has the name "folder\" and so counts as a folder.
    if (KxDirectoryExists(fileName)) {
        return FShowFolders;
    }
    bool include = true;
    FOnFilter(this, fileName, include);
    return include;
}

void TKxFileFilter::ProcessViaFilter(HWND listView, const std::string& folder) {
    if (!FEnabled) {
        return;
    }
    const std::string prefix = ExcludeTrailingPathDelimiter(folder) + '\\';
    TDeletions deletions(listView);
    int i = 0;
    // The count is asked for again each time: deletions change it, and the handler may too.
    while (i < SendMessageA(listView, LVM_GETITEMCOUNT, 0, 0)) {
        if (Includes(prefix + EntryFileName(listView, i)) || !deletions.Delete(i)) {
            ++i;
        }
    }
}

} // namespace kx
