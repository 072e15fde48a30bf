#include "opensave/KxOpenSaveComm.h"

#include "opensave/KxFileDlgWindow.h"
#include "ui/System.h"

#include <cstddef>

namespace kx {

bool KxIsHeldByOthers(const std::string& fileName) {
    // Not in all headers of the system.
    constexpr DWORD recallOnOpen = 0x40000;
    constexpr DWORD recallOnDataAccess = 0x400000;
    constexpr DWORD storedElsewhere = FILE_ATTRIBUTE_OFFLINE | recallOnOpen | recallOnDataAccess;
    if ((GetFileAttributesA(fileName.c_str()) & storedElsewhere) != 0) {
        return false; // nor are files that are not there
    }
    const unique_hfile file(CreateFileA(fileName.c_str(), GENERIC_READ,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    return !file && GetLastError() == ERROR_SHARING_VIOLATION;
}

HWND KxFindToolbar(HWND dialog, int commandId) {
    // The system's places bar comes before it, and extensions of the shell may add more.
    HWND other = nullptr;
    HWND bar = FindWindowExA(dialog, GetWindow(nullptr, GW_HWNDNEXT), TOOLBARCLASSNAMEA, nullptr);
    while (bar && SendMessageA(bar, TB_COMMANDTOINDEX, static_cast<WPARAM>(commandId), 0) < 0) {
        if (!other && GetDlgCtrlID(bar) != KxNativePlacesBarId) {
            other = bar;
        }
        bar = FindWindowExA(dialog, bar, TOOLBARCLASSNAMEA, nullptr);
    }
    return bar ? bar : other;
}

bool KxIsShellView(HWND window) {
    char className[32] = "";
    return GetClassNameA(window, className, sizeof className) && SameText(className, "SHELLDLL_DefView");
}

void MakeFlatButtons(HWND toolBar) {
    SetWindowLongPtrA(toolBar, GWL_STYLE, GetWindowLongPtrA(toolBar, GWL_STYLE) | TBSTYLE_FLAT);
}

// --- TKxOpenDlgCaptions

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
    // All of them first: the application hears of each message, and may free the dialog with its captions.
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
    if (KxWindowText(GetDlgItem(dialog, IDOK)) != OK()) {
        SetCaption(dialog, IDOK, OK());
    }
}

// --- TKxListViewStyles

const TClass& TKxListViewStyles::StaticClass() {
    using T = TKxListViewStyles;
    static const TClassBuilder<T> cls("TKxListViewStyles", TPersistent::StaticClass(), [](auto& c) {
        c.Property("HotTrack", &T::HotTrack, &T::SetHotTrack).Default = false;
        c.Property("HotTrackStyles", &T::HotTrackStyles, &T::SetHotTrackStyles).Default = 0;
        c.Property("FlatScrollBars", &T::FlatScrollBars, &T::SetFlatScrollBars).Default = false;
        c.Property("GridLines", &T::GridLines, &T::SetGridLines).Default = false;
        c.Property("RowSelect", &T::RowSelect, &T::SetRowSelect).Default = false;
        c.Property("EnableRename", &T::EnableRename, &T::SetEnableRename).Default = true;
        c.Property("EnableDelete", &T::EnableDelete, &T::SetEnableDelete).Default = true;
        c.Property("PopupOnEmpty", &T::PopupOnEmpty, &T::SetPopupOnEmpty).Default = true;
        c.Property("PopupOnSelection", &T::PopupOnSelection, &T::SetPopupOnSelection).Default = true;
    });
    return cls.Class();
}

DWORD TKxListViewStyles::ApplyToExStyle(DWORD exStyle) const {
    const auto add = [&exStyle](bool wanted, DWORD bit) {
        if (wanted) {
            exStyle |= bit;
        }
    };
    const bool cold = FHotTrackStyles.Contains(htUnderlineCold);
    const bool hot = FHotTrackStyles.Contains(htUnderlineHot);
    add(FFlatScrollBars, LVS_EX_FLATSB);
    add(FRowSelect, LVS_EX_FULLROWSELECT);
    add(FHotTrack, LVS_EX_TRACKSELECT);
    add(FGridLines, LVS_EX_GRIDLINES);
    // The hand stands for one click and wins; underlines alone leave it at two.
    if (FHotTrackStyles.Contains(htHandPoint)) {
        exStyle |= LVS_EX_ONECLICKACTIVATE;
    } else {
        add(cold || hot, LVS_EX_TWOCLICKACTIVATE);
    }
    add(hot, LVS_EX_UNDERLINEHOT);
    add(cold, LVS_EX_UNDERLINECOLD);
    return exStyle;
}

DWORD TKxListViewStyles::ApplyToStyle(DWORD style) const {
    return FEnableEdit ? style : style & ~static_cast<DWORD>(LVS_EDITLABELS);
}

// --- Places bar

OPENFILENAMEA KxWithPlacesBar(const OPENFILENAMEA& record) {
    static_assert(sizeof(void*) != 4 || (sizeof record == 88 && offsetof(OPENFILENAMEA, FlagsEx) == 84));
    OPENFILENAMEA copy = record;
    copy.FlagsEx = 0;
    copy.lStructSize = sizeof copy;
    return copy;
}

bool PlacesBarSupported() {
    const TSystem& system = System();
    return PlacesBarSupported(system.Platform, system.Major, system.Minor);
}

} // namespace kx
