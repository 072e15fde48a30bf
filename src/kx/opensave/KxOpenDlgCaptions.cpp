// SPDX-License-Identifier: MIT
// The texts that replace those of a file dialog's controls.

#include "kx/opensave/KxOpenDlgCaptions.h"

#include "kx/frame/KxShellDefs.h"
#include "kx/opensave/KxFileDlgControls.h"
#include "kx/opensave/KxFileDlgWindow.h"
#include "kx/win/Windows.h"

#include <commdlg.h>

#include <utility>

namespace kx {

const TClass& TKxOpenDlgCaptions::StaticClass() {
    using T = TKxOpenDlgCaptions;
    static const TClassBuilder<T> cls("TKxOpenDlgCaptions", TKxDlgCaptions::StaticClass(), [](auto& c) {
        c.Property("ReadOnlyFlag", &T::ReadOnlyFlag, &T::SetReadOnlyFlag);
        c.Property("FileType", &T::FileType, &T::SetFileType);
        c.Property("FileName", &T::FileName, &T::SetFileName);
        c.Property("LookIn", &T::LookIn, &T::SetLookIn);
    });
    return cls.Class();
}

void TKxOpenDlgCaptions::SetCaptions(HWND dialog) const {
    // All captions are read first: the application hears of each message, and may free the dialog with its captions.
    const std::pair<int, std::string> texts[] = {{IDOK, OK()},
                                                 {IDCANCEL, Cancel()},
                                                 {KxHelpButtonId, Help()},
                                                 {KxFolderLabelId, FLookIn},
                                                 {KxFileNameLabelId, FFileName},
                                                 {KxFileTypeLabelId, FFileType},
                                                 {KxReadOnlyId, FReadOnlyFlag}};
    for (const auto& [control, text] : texts) {
        if (!text.empty()) {
            SendMessageA(dialog, CDM_SETCONTROLTEXT, static_cast<WPARAM>(control),
                         reinterpret_cast<LPARAM>(text.c_str()));
        }
    }
}

void TKxOpenDlgCaptions::KeepOk(HWND dialog) const {
    if (WindowText(GetDlgItem(dialog, IDOK)) != OK()) {
        SetCaption(dialog, IDOK, OK());
    }
}

} // namespace kx
