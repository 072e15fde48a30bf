#pragma once

#include "core/Alive.h"
#include "frame/KxDlgParams.h"
#include "opensave/KxNamesList.h"
#include "places/KxPlaces.h"
#include "ui/ListViewTypes.h"

#include <commdlg.h>
#include <shlobj.h>

#include <array>
#include <memory>
#include <string>
#include <unordered_map>

namespace kx {

// --- Standard controls

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
    KxFolderComboId,   KxFolderLabelId, KxListPlaceholderId, IDOK, IDCANCEL, KxFileNameEditId,
    KxFileNameLabelId, KxFileTypeId,    KxFileTypeLabelId};

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

/// Texts that replace those of the standard controls; an empty one leaves the system's.
class TKxOpenDlgCaptions : public TKxDlgCaptions {
    KX_CLASS()

    const std::string& ReadOnlyFlag() const { return FReadOnlyFlag; } ///< Of the read-only check box.
    void SetReadOnlyFlag(const std::string& value) { FReadOnlyFlag = value; }
    const std::string& FileName() const { return FFileName; } ///< Of the file name's label.
    void SetFileName(const std::string& value) { FFileName = value; }
    const std::string& FileType() const { return FFileType; } ///< Of the file type's label.
    void SetFileType(const std::string& value) { FFileType = value; }
    const std::string& LookIn() const { return FLookIn; } ///< Of the folder's label.
    void SetLookIn(const std::string& value) { FLookIn = value; }

    void SetCaptions(HWND dialog) const override;
    /// Gives the OK button its caption again when the system has put another text in its place.
    void KeepOk(HWND dialog) const;

private:
    std::string FReadOnlyFlag;
    std::string FFileName;
    std::string FFileType;
    std::string FLookIn;
};

// --- File list

/// A view style of the file list.
enum TKxListViewStyle : uint8_t { lvsIcon, lvsSmallIcon, lvsList, lvsReport, lvsThumbnail, lvsTile };
KX_ENUM(TKxListViewStyle, "lvsIcon", "lvsSmallIcon", "lvsList", "lvsReport", "lvsThumbnail", "lvsTile")

/// Command of the shell view's View menu that switches to `style`.
constexpr WORD KxViewCommand(TKxListViewStyle style) { return static_cast<WORD>(0x7029 + style); }

/// The classic style nearest to `style`: thumbnails and tiles are icons.
constexpr TViewStyle KxClassicStyle(TKxListViewStyle style) {
    switch (style) {
    case lvsSmallIcon: return vsSmallIcon;
    case lvsList: return vsList;
    case lvsReport: return vsReport;
    default: return vsIcon;
    }
}

// Private messages of the full dialogs to their file list.
inline constexpr UINT KxRefreshStylesMessage = 3000; ///< It applies its forced styles.
inline constexpr UINT KxListRefilledMessage = 3001;  ///< The shell has put entries into it, which are to be filtered.

/// Styles that a dialog forces on its file list.
class TKxListViewStyles : public TPersistent {
    KX_CLASS()

    bool HotTrack() const { return FHotTrack; }
    void SetHotTrack(bool value) { FHotTrack = value; }
    TListHotTrackStyles HotTrackStyles() const { return FHotTrackStyles; }
    void SetHotTrackStyles(TListHotTrackStyles value) { FHotTrackStyles = value; }
    bool FlatScrollBars() const { return FFlatScrollBars; }
    void SetFlatScrollBars(bool value) { FFlatScrollBars = value; }
    bool GridLines() const { return FGridLines; }
    void SetGridLines(bool value) { FGridLines = value; }
    bool RowSelect() const { return FRowSelect; }
    void SetRowSelect(bool value) { FRowSelect = value; }
    bool EnableRename() const { return FEnableEdit; } ///< False: item names cannot be edited in place.
    void SetEnableRename(bool value) { FEnableEdit = value; }
    /// False: the Delete key does nothing in the file list, and its context menu's entry is gray where the system
    /// numbers it in one of the known ways.
    bool EnableDelete() const { return FEnableDelete; }
    void SetEnableDelete(bool value) { FEnableDelete = value; }
    bool PopupOnEmpty() const { return FFolderPopup; } ///< False: no context menu on the list's empty area.
    void SetPopupOnEmpty(bool value) { FFolderPopup = value; }
    bool PopupOnSelection() const { return FFilePopup; } ///< False: no context menu on selected items.
    void SetPopupOnSelection(bool value) { FFilePopup = value; }

    // Not published, and no dialog of the library reads them.
    bool ApplyViewStyle() const { return FApplyViewStyle; }
    void SetApplyViewStyle(bool value) { FApplyViewStyle = value; }
    TKxListViewStyle ViewStyle() const { return FViewStyle; }
    void SetViewStyle(TKxListViewStyle value) { FViewStyle = value; }

    /// The list's extended style and window style with these styles applied. Extended bits are only ever added, so that
    /// a style taken back stays on the list until the shell makes a new one.
    DWORD ApplyToExStyle(DWORD exStyle) const;
    DWORD ApplyToStyle(DWORD style) const;

    const TLifetime& Lifetime() const { return FLife; } ///< Dialogs may be given an object that they do not own.

private:
    TLifetime FLife;
    bool FFlatScrollBars = false;
    bool FRowSelect = false;
    bool FHotTrack = false;
    bool FEnableEdit = true;
    bool FEnableDelete = true;
    bool FGridLines = false;
    TListHotTrackStyles FHotTrackStyles;
    bool FFolderPopup = true;
    bool FFilePopup = true;
    bool FApplyViewStyle = false;
    TKxListViewStyle FViewStyle = lvsList;
};

/// True when somebody has the file open and shares it with nobody. Files whose content is stored elsewhere are not
/// asked about: to open them may fetch it.
bool KxIsHeldByOthers(const std::string& fileName);

// --- File filter

using TKxViewStyleQueryEvent = TEvent<void(TObject* sender, TViewStyle style, bool& allowChange)>;
using TKxViewStyleEvent = TEvent<void(TObject* sender, TViewStyle style)>;
using TKxFolderCreationEvent = TEvent<void(TObject* sender, std::string& newFolderName)>;
using TKxShareViolationEvent = TEvent<void(TObject* sender, int32_t& dlgResult, const std::string& fileName)>;
using TKxFileFilterEvent = TEvent<void(TObject* sender, const std::string& fileName, bool& includeFile)>;

/// What a file filter asks of the dialog that owns it, when that has a list to filter.
class IKxFileListOwner {
public:
    virtual ~IKxFileListOwner() = default;
    /// Has the system read the shown folder again; does nothing while the dialog is not shown.
    virtual void RefreshFileList() = 0;
};

/// Which files a pass of the filter asks about.
enum class TKxFilterPass : uint8_t {
    All,  ///< All of them.
    Added ///< Those that no pass has asked about since the list was filled. The others keep their answers.
};

/// Takes entries out of a file list after the shell has filled it.
class TKxFileFilter : public TPersistent {
    KX_CLASS()

    /// `owner` is the dialog, which owns the filter and outlives it.
    explicit TKxFileFilter(TComponent* owner) : FOwner(owner) {}

    bool ShowFolders() const { return FShowFolders; }
    /// Takes effect at once in a dialog that is an IKxFileListOwner; the other two with the list's next filling.
    void SetShowFolders(bool value);
    bool Enabled() const { return FEnabled; }
    void SetEnabled(bool value) { FEnabled = value; }
    /// Asked for each file, never for a folder. The sender is the filter itself, `fileName` is a full path.
    const TKxFileFilterEvent& OnIncludeFile() const { return FOnFilter; }
    void SetOnIncludeFile(TKxFileFilterEvent value) { FOnFilter = std::move(value); }

    /// Takes out of `listView`, a list of the shell's, what is to be left out. `folder` is the path of the folder that
    /// the list shows.
    ///
    /// False: something has kept the pass from taking out all of it, and it is to be repeated: a name is being typed
    /// into the list, or the handler had the list change. The handler may free the filter, too.
    bool ProcessViaFilter(HWND listView, const std::string& folder, TKxFilterPass pass = TKxFilterPass::All);

    /// The list is not, or not for long, what it was: a pass that is under way ends, and the next one asks about every
    /// file.
    void Forget();

    TPersistent* GetOwner() const override { return FOwner; }

private:
    bool Includes(const std::string& fileName);

    bool FShowFolders = true;
    bool FEnabled = false;
    TKxFileFilterEvent FOnFilter;
    TComponent* FOwner;
    TLifetime FLife;                                ///< The handler may free the filter.
    unsigned FPass = 0;                             ///< Number of the pass that counts: the latest one.
    std::unordered_map<std::string, bool> FAnswers; ///< Of the handler, by the file's name, since the list was filled.
};

// --- Places bar

/// A copy of the record of a file dialog by which the system shows its places bar.
OPENFILENAMEA KxWithPlacesBar(const OPENFILENAMEA& record);

/// True on systems whose file dialogs have a places bar; false too when the system's version cannot be read.
bool PlacesBarSupported();
/// The same for a given version: platform 2 is the NT line, 1 the 9x line.
constexpr bool PlacesBarSupported(DWORD platform, DWORD major, DWORD minor) {
    return (platform == VER_PLATFORM_WIN32_NT && major >= 5) ||
           (platform == VER_PLATFORM_WIN32_WINDOWS && (major > 4 || (major == 4 && minor >= 90)));
}

} // namespace kx
