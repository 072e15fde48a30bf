// SPDX-License-Identifier: MIT
#pragma once

#include "kx/colorprint/KxColorDlg.h"
#include "kx/colorprint/KxPrintDlg.h"
#include "kx/folder/KxFolderDlg.h"
#include "kx/opensave/KxOpenDlg.h"
#include "kx/opensave/KxOpenDlgEx.h"
#include "kx/opensave/KxOpenLite.h"
#include "kx/opensave/KxSaveDlg.h"
#include "support/TempFolder.h"

#include <type_traits>

// Every kind of dialog that the library has.

namespace kx::test {

struct TDialogKind {
    const char* Name;
    /// Files of a dialog of files are in the folder.
    TCommonDialog* (*Make)(TComponent* owner, const TTempFolder& folder);
};

template <class T> TCommonDialog* MakeDialog(TComponent* owner, const TTempFolder& folder) {
    auto* dialog = new T(owner);
    if constexpr (std::is_base_of_v<TOpenDialog, T>) {
        dialog->SetInitialDir(folder.Path());
        dialog->SetFileName("one.txt");
    }
    return dialog;
}

/// A new dialog of the library is one line here.
inline constexpr TDialogKind DialogKinds[] = {
    {"OpenLite", MakeDialog<TKxOpenLiteDialog>}, {"SaveLite", MakeDialog<TKxSaveLiteDialog>},
    {"Open", MakeDialog<TKxOpenDialog>},         {"Save", MakeDialog<TKxSaveDialog>},
    {"Folder", MakeDialog<TKxFolderDialog>},     {"Color", MakeDialog<TKxColorDialog>},
    {"Print", MakeDialog<TKxPrintDialog>},       {"OpenEx", MakeDialog<TKxOpenDialogEx>},
};

} // namespace kx::test
