#include "opensave/KxOpenSaveComm.h"

#include <vector>

namespace kx {

namespace {

/// File name of the shell's entry at `index`; empty when it has no path.
std::string EntryFileName(HWND listView, int index) {
    LVITEMA item{};
    item.mask = LVIF_PARAM;
    item.iItem = index;
    char path[MAX_PATH] = {};
    // The entry's identifier list is relative to its folder. Taken as a full one, as here, it yields a path in some
    // other folder; its last part is the entry's name all the same.
    if (!SendMessageA(listView, LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item)) || !item.lParam ||
        !SHGetPathFromIDListA(reinterpret_cast<LPCITEMIDLIST>(item.lParam), path)) {
        return {};
    }
    return ExtractFileName(path);
}

/// Items to be deleted, in ascending order. They go at the end, the last one first, since each deletion moves all items
/// behind it; and the list is drawn again once for all of them.
class TDeletions {
public:
    explicit TDeletions(HWND listView) : FListView(listView) {}
    TDeletions(const TDeletions&) = delete;
    TDeletions& operator=(const TDeletions&) = delete;
    ~TDeletions() {
        if (FItems.empty()) {
            return;
        }
        SendMessageA(FListView, WM_SETREDRAW, FALSE, 0);
        for (size_t i = FItems.size(); i-- > 0;) {
            SendMessageA(FListView, LVM_DELETEITEM, static_cast<WPARAM>(FItems[i]), 0);
        }
        SendMessageA(FListView, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(FListView, nullptr, TRUE);
    }

    void Add(int index) { FItems.push_back(index); }

private:
    HWND FListView;
    std::vector<int> FItems;
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
    TDeletions deletions(listView); // also when the handler throws
    // The count is asked for each time: the handler may change it.
    for (int i = 0; i < SendMessageA(listView, LVM_GETITEMCOUNT, 0, 0); ++i) {
        bool included = false;
        if (!Outlives(FLife, [&] { included = Includes(prefix + EntryFileName(listView, i)); })) {
            return; // the handler has freed the dialog, and with it the list
        }
        if (!included) {
            deletions.Add(i);
        }
    }
}

} // namespace kx
