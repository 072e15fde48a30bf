// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Strings.h"
#include "kx/win/Handles.h"
#include "kx/win/WinTypes.h"

#include <array>
#include <cstddef>
#include <string>

// The library's vocabulary for the shell: its special folders by name, and item identifier lists (PIDLs). The list
// view's LVM_GETVIEW and LV_VIEW_... constants come with the system's headers.

namespace kx {

/// A special folder of the shell.
enum TKxSpecShellFolder : uint8_t {
    ftNone,
    ftRecycleBin,
    ftCommonDesktopDir,
    ftCommonPrograms,
    ftCommonStartMenu,
    ftCommonStartup,
    ftControls,
    ftDesktop,
    ftDesktopDir,
    ftDrives,
    ftFonts,
    ftNethood,
    ftNetwork,
    ftPersonal,
    ftFavorites,
    ftPrinters,
    ftPrograms,
    ftRecent,
    ftSendTo,
    ftStartMenu,
    ftStartup,
    ftTemplates
};
KX_ENUM(TKxSpecShellFolder, "ftNone", "ftRecycleBin", "ftCommonDesktopDir", "ftCommonPrograms", "ftCommonStartMenu",
        "ftCommonStartup", "ftControls", "ftDesktop", "ftDesktopDir", "ftDrives", "ftFonts", "ftNethood", "ftNetwork",
        "ftPersonal", "ftFavorites", "ftPrinters", "ftPrograms", "ftRecent", "ftSendTo", "ftStartMenu", "ftStartup",
        "ftTemplates")

/// The shell's identifier (CSIDL) of each special folder. The shell has none for ftNone: callers test for that before.
inline constexpr std::array<int32_t, 22> constFolders = {-1976, 10, 25, 23, 22, 24, 3, 0, 16, 17, 20,
                                                         19,    18, 5,  6,  4,  2,  8, 9, 11, 7,  21};

/// The special folders that are offered to the user, in this order.
inline constexpr std::array<TKxSpecShellFolder, 4> KxOfferedFolders = {ftDesktop, ftDrives, ftPersonal, ftFavorites};

namespace detail {

struct TPidlTraits {
    using THandle = ITEMIDLIST*;
    static void Close(ITEMIDLIST* pidl);
};

} // namespace detail

/// Sole owner of an item identifier list, freed by the shell's allocator. That aligns its memory, but to Visual C++ the
/// pointers of the shell's functions are `__unaligned` ones on 64 bits: what they put out, or return, is cast.
using unique_pidl = unique_handle<detail::TPidlTraits>;

/// Display name of ftDesktop, ftDrives, ftPersonal, ftFavorites and ftRecent: from the registry, else from the shell's
/// own texts, else a fixed English one. Empty for every other folder.
std::string GetSpecFolderName(TKxSpecShellFolder folder);

/// A text of the shell's own library, at most 253 bytes of it; empty when it has none of that number.
std::string LoadShellText(UINT id);

/// Appends the names of KxOfferedFolders, in this order.
void GetSpecFolders(TStrings& list);

/// The item behind the first one of the list; null for the last item, an empty list and null.
ITEMIDLIST* GetNextItemID(const ITEMIDLIST* pidl);

/// Size of the whole list in bytes, its terminator included; 0 for null.
int GetPIDLSize(const ITEMIDLIST* pidl);

/// A list of the source's first item alone, in an allocation of the size of the whole source; empty when there is no
/// memory, or no source.
unique_pidl CreatePIDLCopy(const ITEMIDLIST* pidl);

/// Absolute list of a path in the file system.
/// @throws EOSError "Error getting IShellFolder interface", and `notThere` for a path that is not there.
unique_pidl CreatePIDLFromPath(const std::string& path,
                               const char* notThere = "Error parsing folder name to PIDL(does folder exist?)");

/// Looks up where a special folder, not ftNone, is; `owner` is the window in which the shell may ask the user. `pidl`
/// is an absolute list, or empty when there is no such folder.
HRESULT FindSpecialFolder(HWND owner, TKxSpecShellFolder folder, unique_pidl& pidl);

/// Parses a path as `folder` names it. There is no window in which the shell could ask the user. `pidl` is empty unless
/// the result is S_OK.
HRESULT ParseFolderPath(IShellFolder& folder, const std::string& path, unique_pidl& pidl);

/// The browser of a window that holds a shell view; null when it has none. It is lent, without a reference.
IShellBrowser* KxShellBrowserOf(HWND window);

/// Path of an absolute list; empty when it is no object of the file system.
std::string GetPathFromPIDL(const ITEMIDLIST* pidl);

} // namespace kx
