// SPDX-License-Identifier: MIT
// The entries of a file list.

#include "kx/opensave/KxShellList.h"

#include "kx/opensave/KxFileDlgControls.h"
#include "kx/win/FileStreams.h"
#include "kx/win/Windows.h"

#include <shlwapi.h>

namespace kx {

namespace {

unique_com<IShellView> ViewOf(HWND listView) {
    HWND view = GetParent(listView);
    unique_com<IShellView> shellView;
    if (!KxIsShellView(view)) {
        return shellView;
    }
    if (IShellBrowser* const browser = KxShellBrowserOf(GetParent(view))) {
        browser->QueryActiveShellView(shellView.put());
    }
    return shellView;
}

/// File name of an entry, of which only the last identifier is given; empty when the entry has no path.
std::string FileNameOf(const ITEMIDLIST* child) {
    // The identifier list is relative to its folder. Taken as an absolute one, it yields a path in some other folder,
    // whose last part is the entry's name all the same.
    return ExtractFileName(GetPathFromPIDL(child));
}

} // namespace

TKxShellList::TKxShellList(HWND listView)
    : FListView(listView), FVirtual((GetWindowLongPtrA(listView, GWL_STYLE) & LVS_OWNERDATA) != 0) {
    const unique_com<IShellView> view = ViewOf(listView);
    if (!view) {
        return;
    }
    view.get()->QueryInterface(IID_IFolderView, reinterpret_cast<void**>(FView.put()));
    view.get()->QueryInterface(KxShellFolderViewId, reinterpret_cast<void**>(FRemover.put()));
    if (FView) {
        FView.get()->GetFolder(IID_IShellFolder, reinterpret_cast<void**>(FFolder.put()));
    }
}

int TKxShellList::Count() const { return static_cast<int>(SendMessageW(FListView, LVM_GETITEMCOUNT, 0, 0)); }

bool TKxShellList::IsEdited() const { return SendMessageW(FListView, LVM_GETEDITCONTROL, 0, 0) != 0; }

LPARAM TKxShellList::ItemParam(int index) const {
    LVITEMW item{};
    item.mask = LVIF_PARAM;
    item.iItem = index;
    return SendMessageW(FListView, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)) ? item.lParam : 0;
}

TKxShellList::TEntry TKxShellList::At(int index, const std::string& folder) const {
    TEntry entry;
    entry.Index = index;
    if (!FVirtual) {
        entry.Param = ItemParam(index);
    } else if (FView) {
        FView.get()->Item(index, reinterpret_cast<LPITEMIDLIST*>(entry.Child.put()));
    }
    const auto* const child = FVirtual ? entry.Child.get() : reinterpret_cast<const ITEMIDLIST*>(entry.Param);
    if (AskShell(entry, child) || FVirtual) {
        return entry;
    }
    // An entry without a path has the name "folder\" and so counts as a folder.
    entry.Path = ExcludeTrailingPathDelimiter(folder) + '\\' + FileNameOf(child);
    entry.Kind = DirectoryExists(entry.Path) ? TEntry::TKind::Folder : TEntry::TKind::File;
    return entry;
}

/// Asks the shell what the entry is. The shell knows it without a look at the disk, which may be far away.
bool TKxShellList::AskShell(TEntry& entry, const ITEMIDLIST* child) const {
    SFGAOF traits = SFGAO_FOLDER | SFGAO_STREAM | SFGAO_FILESYSTEM;
    LPCITEMIDLIST asked = child;
    if (!FFolder || !child || FAILED(FFolder.get()->GetAttributesOf(1, &asked, &traits))) {
        return false;
    }
    // An archive that can be opened like a folder is a stream as well: to the user, and on the disk, it is a file. What
    // lies outside the file system has no path and counts as a folder.
    if (!(traits & SFGAO_FILESYSTEM) || (traits & (SFGAO_FOLDER | SFGAO_STREAM)) == SFGAO_FOLDER) {
        entry.Kind = TEntry::TKind::Folder;
        return true;
    }
    // The name for parsing has the extension, which the user may have had hidden in the one for display.
    STRRET name{};
    wchar_t* text = nullptr;
    if (FAILED(FFolder.get()->GetDisplayNameOf(child, SHGDN_FORPARSING, &name)) ||
        FAILED(StrRetToStrW(&name, child, &text))) {
        return false;
    }
    entry.Path = FromWide(text);
    CoTaskMemFree(text);
    entry.Kind = TEntry::TKind::File;
    return true;
}

bool TKxShellList::RemoveEntry(const TEntry& entry) const {
    if (FVirtual) {
        UINT index = 0;
        if (FRemover && entry.Child) {
            FRemover.get()->RemoveObject(entry.Child.get(), &index);
        }
        return true; // a shell that has not removed them will not do so in a further pass either
    }
    return ItemParam(entry.Index) == entry.Param &&
           SendMessageW(FListView, LVM_DELETEITEM, static_cast<WPARAM>(entry.Index), 0);
}

bool TKxShellList::Remove(const std::vector<TEntry>& entries) const {
    if (entries.empty()) {
        return true;
    }
    if (IsEdited()) {
        return false;
    }
    SendMessageW(FListView, WM_SETREDRAW, FALSE, 0);
    bool all = true;
    for (size_t i = entries.size(); all && i-- > 0;) { // backwards: each deletion moves all items behind it
        all = RemoveEntry(entries[i]);
    }
    SendMessageW(FListView, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(FListView, nullptr, TRUE);
    return all;
}

} // namespace kx
