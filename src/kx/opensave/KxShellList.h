// SPDX-License-Identifier: MIT
#pragma once

#include "kx/frame/KxShellDefs.h"
#include "kx/win/Windows.h"

#include <shlobj.h>
#include <string>
#include <vector>

namespace kx {

/// IID of IShellFolderView. The system's headers know the interface, but not all of them its identifier.
inline constexpr GUID KxShellFolderViewId{0x37A378C0, 0xF82D, 0x11CE, {0xAE, 0x65, 0x08, 0x00, 0x2B, 0x2E, 0x12, 0x62}};

/// The file list of a system dialog with what the shell knows of its entries.
///
/// Such lists come in two kinds. The classic one keeps the identifier list of each entry in the item's parameter, and
/// is told by message to delete an item. The virtual one, which Windows has had since Vista, keeps nothing: its shell
/// view owns the entries, is asked for them and told to remove them. If such a list were told by message to delete an
/// item, it would lose the line at its end and go on showing the entry.
///
/// Whatever cannot be found out or done leaves the list as it is.
class TKxShellList {
public:
    struct TEntry {
        enum class TKind { Unknown, Folder, File };
        TKind Kind = TKind::Unknown;
        std::string Path; ///< Of a file, in full.
        int Index = 0;
        LPARAM Param = 0;  ///< Of the item of a classic list.
        unique_pidl Child; ///< Of a virtual list: relative to the shown folder.
    };

    /// Asks the dialog around the list for its shell view, by messages that the application may hear of.
    explicit TKxShellList(HWND listView);

    int Count() const;
    /// A name is being typed into the list. At the end the shell renames the entry that stands at the place of the
    /// edit: no entry may come or go meanwhile.
    bool IsEdited() const;
    /// `folder` is the path of the folder that the list shows.
    TEntry At(int index, const std::string& folder) const;
    /// Takes out entries in ascending order, drawing the list once for all of them. False when a name is being typed or
    /// the items are not those any more: some or all are left in the list then.
    bool Remove(const std::vector<TEntry>& entries) const;

private:
    bool AskShell(TEntry& entry, const ITEMIDLIST* child) const;
    bool RemoveEntry(const TEntry& entry) const;
    LPARAM ItemParam(int index) const;

    HWND FListView;
    bool FVirtual;
    unique_com<IFolderView> FView;
    unique_com<IShellFolderView> FRemover;
    unique_com<IShellFolder> FFolder; ///< The one that the view shows; null for a list without a view.
};

} // namespace kx
