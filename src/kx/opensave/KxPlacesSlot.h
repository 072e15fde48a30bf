// SPDX-License-Identifier: MIT
#pragma once

#include "kx/opensave/KxFileDlgCore.h"
#include "kx/places/KxPlacesBarForm.h"

namespace kx {

/// The room at the left of a running file dialog, and the library's places bar that stands in it.
class TKxPlacesSlot {
public:
    /// `dialog` is the one that the bar stands in, `host` the same as the bar sees it.
    TKxPlacesSlot(TKxFileDlgCore& dialog, IKxPlacesHost& host);

    TKxPlacesBarOptions& Options() { return FPlaceOptions; }
    const TKxPlacesBarOptions& Options() const { return FPlaceOptions; }
    /// The library's bar is the one to show: bars are wanted, and not the system's, or the system has none.
    bool IsWanted() const;
    /// Width of the bar, in pixels; 0 when there is to be none.
    int32_t RoomWidth() const { return IsWanted() ? FPBWidth : 0; }
    TKxPlacesBarFrm* Form() const { return FPlaceForm.Get(); } ///< Null while it is not shown.

    /// Moves everything in the dialog aside, and its label and combo box of folders together.
    void MakeRoom();
    void Create();
    /// Brings back inside what making room has pushed over the dialog's right edge: the docked form and the dialog's
    /// own tool bar, `toolBar`.
    void KeepInside(HWND toolBar);
    void Fit(); ///< Lets the bar end where the file type's combo box does.
    /// Presses the button of the place that the dialog shows, and no other.
    void ShowFolder();
    void Save(); ///< Writes the places to the registry when the bar has shown them.
    void Free();

private:
    void Load();
    static BOOL KX_CALLBACK MoveLeft1(HWND window, LPARAM room) noexcept;

    TKxFileDlgCore& FDialog;
    IKxPlacesHost& FHost;
    int32_t FPBWidth = 0; ///< Width of the places bar, in pixels.
    TComponentRef<TKxPlacesBarFrm> FPlaceForm;
    TKxPlacesBarOptions FPlaceOptions;
    unique_com<IShellFolder> FShellFolder; ///< The desktop's.
};

} // namespace kx
