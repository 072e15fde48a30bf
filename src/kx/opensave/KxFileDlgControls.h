// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/TypInfo.h"
#include "kx/win/WinTypes.h"

#include <array>

namespace kx {

/// A standard control of the system's open and save dialogs.
enum TKxOpenDlgControl : uint8_t {
    dcFolderCombo, ///< The folder combo box.
    dcFolderLabel,
    dcSelectionCtrl, ///< The file list.
    dcOkBtn,
    dcCancelBtn,
    dcFileName,
    dcFileNameLabel,
    dcFileType,
    dcFileTypeLabel,
    dcToolBar ///< The navigation tool bar.
};
KX_ENUM(TKxOpenDlgControl, "dcFolderCombo", "dcFolderLabel", "dcSelectionCtrl", "dcOkBtn", "dcCancelBtn", "dcFileName",
        "dcFileNameLabel", "dcFileType", "dcFileTypeLabel", "dcToolBar")
using TKxOpenDlgControls = TSet<TKxOpenDlgControl>;

inline constexpr TKxOpenDlgControls KxAllOpenDlgControls{dcFolderCombo,   dcFolderLabel, dcSelectionCtrl, dcOkBtn,
                                                         dcCancelBtn,     dcFileName,    dcFileNameLabel, dcFileType,
                                                         dcFileTypeLabel, dcToolBar};

// Control ids of the system's file dialogs.
inline constexpr int KxOkId = 1;
inline constexpr int KxCancelId = 2;
inline constexpr int KxFileNameEditId = 1152;  ///< The file name control of a dialog with the classic edit,
inline constexpr int KxFileNameComboId = 1148; ///< and of one with the newer combo box.
inline constexpr int KxFileNameLabelId = 1090;
inline constexpr int KxFileTypeId = 1136;
inline constexpr int KxFileTypeLabelId = 1089;
inline constexpr int KxFolderComboId = 1137;
inline constexpr int KxFolderLabelId = 1091;
inline constexpr int KxListPlaceholderId = 1120;
inline constexpr int KxShellViewId = 1121;
inline constexpr int KxReadOnlyId = 1040;
inline constexpr int KxHelpButtonId = 1038;
inline constexpr int KxNativePlacesBarId = 1184; ///< The system's own places bar, a tool bar like the navigation bar.

/// Control id of each standard control. The tool bar has none: it is found by its class.
inline constexpr std::array<int, dcToolBar> KxOpenDlgControlIds{
    KxFolderComboId,  KxFolderLabelId,   KxListPlaceholderId, KxOkId,           KxCancelId,
    KxFileNameEditId, KxFileNameLabelId, KxFileTypeId,        KxFileTypeLabelId};

// Commands of the navigation tool bar.
inline constexpr WORD KxCmdUpLevel = 40961;
inline constexpr WORD KxCmdNewFolder = 40962;
inline constexpr WORD KxCmdDesktop = 40969;
inline constexpr WORD KxCmdLastFolder = 40971;

/// The navigation tool bar of the dialog window: its first direct child of that class that has the button `commandId`.
/// When none has it, the first one that is not the system's places bar; null when there is none.
HWND KxFindToolbar(HWND dialog, int commandId = KxCmdUpLevel);

/// True for the shell view of a dialog, the window that holds the file list.
bool KxIsShellView(HWND window);

/// Gives a tool bar flat buttons. There is no way back while its dialog is open.
void MakeFlatButtons(HWND toolBar);

} // namespace kx
