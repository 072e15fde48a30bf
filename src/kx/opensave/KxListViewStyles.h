// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Alive.h"
#include "kx/core/Components.h"
#include "kx/ui/widgets/ListViewTypes.h"
#include "kx/win/WinTypes.h"

namespace kx {

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
inline constexpr UINT KxRefreshStylesMessage = 3000; ///< The list is to get its forced styles.
inline constexpr UINT KxListRefilledMessage = 3001;  ///< The list has new entries, which are to be filtered.

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

} // namespace kx
