// SPDX-License-Identifier: MIT
// Folders as the shell knows them.

#include "kx/frame/KxShellDefs.h"

#include "kx/win/PathKind.h"
#include "kx/win/Registry.h"
#include "kx/win/Windows.h"

#include <cstring>
#include <memory>
#include <shlobj.h>

namespace kx {

static_assert(constFolders.size() == ftTemplates + 1);
static_assert(constFolders[ftNone] == -1976);
static_assert(constFolders[ftRecycleBin] == CSIDL_BITBUCKET);
static_assert(constFolders[ftCommonDesktopDir] == CSIDL_COMMON_DESKTOPDIRECTORY);
static_assert(constFolders[ftCommonPrograms] == CSIDL_COMMON_PROGRAMS);
static_assert(constFolders[ftCommonStartMenu] == CSIDL_COMMON_STARTMENU);
static_assert(constFolders[ftCommonStartup] == CSIDL_COMMON_STARTUP);
static_assert(constFolders[ftControls] == CSIDL_CONTROLS);
static_assert(constFolders[ftDesktop] == CSIDL_DESKTOP);
static_assert(constFolders[ftDesktopDir] == CSIDL_DESKTOPDIRECTORY);
static_assert(constFolders[ftDrives] == CSIDL_DRIVES);
static_assert(constFolders[ftFonts] == CSIDL_FONTS);
static_assert(constFolders[ftNethood] == CSIDL_NETHOOD);
static_assert(constFolders[ftNetwork] == CSIDL_NETWORK);
static_assert(constFolders[ftPersonal] == CSIDL_PERSONAL);
static_assert(constFolders[ftFavorites] == CSIDL_FAVORITES);
static_assert(constFolders[ftPrinters] == CSIDL_PRINTERS);
static_assert(constFolders[ftPrograms] == CSIDL_PROGRAMS);
static_assert(constFolders[ftRecent] == CSIDL_RECENT);
static_assert(constFolders[ftSendTo] == CSIDL_SENDTO);
static_assert(constFolders[ftStartMenu] == CSIDL_STARTMENU);
static_assert(constFolders[ftStartup] == CSIDL_STARTUP);
static_assert(constFolders[ftTemplates] == CSIDL_TEMPLATES);
static_assert(LVM_GETVIEW == 0x108F && LV_VIEW_ICON == 0 && LV_VIEW_DETAILS == 1 && LV_VIEW_SMALLICON == 2 &&
              LV_VIEW_LIST == 3 && LV_VIEW_TILE == 4);

namespace {

unique_com<IMalloc> ShellAllocator() {
    unique_com<IMalloc> allocator;
    SHGetMalloc(allocator.put());
    return allocator;
}

} // namespace

void detail::TPidlTraits::Close(ITEMIDLIST* pidl) {
    if (const auto allocator = ShellAllocator()) {
        allocator.get()->Free(pidl);
    }
}

// --- Names

namespace {

/// Where a folder's name stands.
struct TNameSource {
    HKEY Root;
    const char* Key; ///< Its default value is the name.
    UINT Resource;   ///< Of the shell's library.
    const char* Fallback;
};

bool IsText(TRegDataType type) { return type == TRegDataType::String || type == TRegDataType::ExpandString; }

std::string LookUpName(const TNameSource& source) {
    std::string name;
    {
        TRegistry registry;
        registry.SetRootKey(source.Root);
        if (registry.OpenKeyReadOnly(source.Key) && IsText(registry.GetDataType(""))) {
            name = registry.ReadString("");
        }
    }
    if (name.empty()) {
        name = LoadShellText(source.Resource);
    }
    return name.empty() ? source.Fallback : name;
}

} // namespace

std::string LoadShellText(UINT id) {
    const unique_hmodule shell(LoadLibraryA("SHELL32.DLL"));
    char text[254] = "";
    if (!shell || LoadStringA(shell.get(), id, text, sizeof text) < 1) {
        return {};
    }
    return text;
}

std::string GetSpecFolderName(TKxSpecShellFolder folder) {
    switch (folder) {
    case ftDesktop:
        // Deliberate: the classes root here, the user's own classes below, where one would expect the same root.
        return LookUpName({HKEY_CLASSES_ROOT, R"(\CLSID\{00021400-0000-0000-C000-000000000046})", 4162, "Desktop"});
    case ftDrives:
        return LookUpName({HKEY_CURRENT_USER, R"(\SOFTWARE\Classes\CLSID\{20D04FE0-3AEA-1069-A2D8-08002B30309D})", 9216,
                           "My Computer"});
    case ftPersonal:
        return LookUpName({HKEY_CURRENT_USER, R"(\SOFTWARE\Classes\CLSID\{450D8FBA-AD25-11D0-98A8-0800361B1103})", 9100,
                           "My Documents"});
    case ftFavorites: return "Favorites";
    case ftRecent: return "Recent";
    default: return {};
    }
}

void GetSpecFolders(TStrings& list) {
    for (const TKxSpecShellFolder folder : KxOfferedFolders) {
        list.Add(GetSpecFolderName(folder));
    }
}

// --- Item identifier lists

namespace {

/// The bytes behind the first item; `pidl` has one.
ITEMIDLIST* Behind(const ITEMIDLIST* pidl) {
    auto* const bytes = const_cast<BYTE*>(reinterpret_cast<const BYTE*>(pidl));
    return reinterpret_cast<ITEMIDLIST*>(bytes + pidl->mkid.cb);
}

} // namespace

ITEMIDLIST* GetNextItemID(const ITEMIDLIST* pidl) {
    if (!pidl || pidl->mkid.cb == 0) {
        return nullptr;
    }
    ITEMIDLIST* const next = Behind(pidl);
    return next->mkid.cb == 0 ? nullptr : next;
}

int GetPIDLSize(const ITEMIDLIST* pidl) {
    if (!pidl) {
        return 0;
    }
    int32_t size = sizeof pidl->mkid.cb; // the terminator
    for (; pidl; pidl = GetNextItemID(pidl)) {
        size = CheckedAdd(size, pidl->mkid.cb);
    }
    return size;
}

unique_pidl CreatePIDLCopy(const ITEMIDLIST* pidl) {
    const auto size = static_cast<size_t>(GetPIDLSize(pidl));
    const auto allocator = ShellAllocator();
    if (size == 0 || !allocator) {
        return {};
    }
    unique_pidl copy(static_cast<ITEMIDLIST*>(allocator.get()->Alloc(size)));
    if (copy) {
        std::memcpy(copy.get(), pidl, size);
        // Deliberate: only the first item is kept, where one would expect the whole list; callers copy single items.
        if (ITEMIDLIST* const second = GetNextItemID(copy.get())) {
            second->mkid.cb = 0;
        }
    }
    return copy;
}

HRESULT FindSpecialFolder(HWND owner, TKxSpecShellFolder folder, unique_pidl& pidl) {
    return SHGetSpecialFolderLocation(owner, constFolders[folder], reinterpret_cast<LPITEMIDLIST*>(pidl.put()));
}

HRESULT ParseFolderPath(IShellFolder& folder, const std::string& path, unique_pidl& pidl) {
    std::wstring name = ToWide(path);
    return folder.ParseDisplayName(nullptr, nullptr, name.data(), nullptr, reinterpret_cast<LPITEMIDLIST*>(pidl.put()),
                                   nullptr);
}

unique_pidl CreatePIDLFromPath(const std::string& path, const char* notThere) {
    unique_com<IShellFolder> desktop;
    const HRESULT found = SHGetDesktopFolder(desktop.put());
    if (FAILED(found)) {
        throw EOSError("Error getting IShellFolder interface", static_cast<uint32_t>(found));
    }
    unique_pidl pidl;
    // The shell would look for a computer that is not there for long.
    const HRESULT parsed = KindOfPath(path) == pkUnreachable ? HRESULT_FROM_WIN32(ERROR_BAD_NETPATH)
                                                             : ParseFolderPath(*desktop.get(), path, pidl);
    if (parsed != S_OK) {
        throw EOSError(notThere, static_cast<uint32_t>(parsed));
    }
    return pidl;
}

IShellBrowser* KxShellBrowserOf(HWND window) {
    constexpr UINT getShellBrowser = WM_USER + 7; // in no header of the system
    return reinterpret_cast<IShellBrowser*>(SendMessageW(window, getShellBrowser, 0, 0));
}

std::string GetPathFromPIDL(const ITEMIDLIST* pidl) {
    constexpr DWORD longest = 0x8000;
    const auto path = std::make_unique_for_overwrite<wchar_t[]>(longest);
    return pidl && SHGetPathFromIDListEx(pidl, path.get(), longest, GPFIDL_DEFAULT) ? FromWide(path.get())
                                                                                    : std::string();
}

} // namespace kx
