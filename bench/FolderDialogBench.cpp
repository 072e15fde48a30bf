// SPDX-License-Identifier: MIT
// Measures the first paint of the folder dialog.

#include "Benches.h"

#include "Showing.h"
#include "kx/folder/KxFolderDlg.h"
#include "kx/win/Windows.h"

#include <shlobj.h>

namespace kx::bench {

namespace {

int CALLBACK DoNothing(HWND, UINT, LPARAM, LPARAM) { return 0; }

/// The browser as the library runs it.
void ShowBareBrowser(UINT flags) {
    unique_pidl root;
    SHGetSpecialFolderLocation(Application().Handle(), CSIDL_DESKTOP, root.put());
    char name[MAX_PATH] = "";
    BROWSEINFOA info{};
    info.hwndOwner = Application().Handle();
    info.pidlRoot = root.get();
    info.pszDisplayName = name;
    info.lpszTitle = "";
    info.ulFlags = flags;
    info.lpfn = DoNothing;
    const unique_pidl result(SHBrowseForFolderA(&info));
}

} // namespace

std::vector<TRow> MeasureFolderDialog() {
    TKxFolderDialog classic(&Application());
    TKxFolderDialog modern(&Application());
    modern.SetOptionsEx({ffNewDialogStyle});
    return {
        CompareFirstPaint(
            "first paint of the folder dialog", [] { ShowBareBrowser(0); }, [&] { classic.Execute(); }, 1.10),
        CompareFirstPaint(
            "the same in the new style", [] { ShowBareBrowser(BIF_NEWDIALOGSTYLE); }, [&] { modern.Execute(); }, 1.10)};
}

} // namespace kx::bench
