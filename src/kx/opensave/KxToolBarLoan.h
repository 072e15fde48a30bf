// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/ComponentRef.h"
#include "kx/opensave/KxFileDlgCore.h"
#include "kx/opensave/KxToolBarProps.h"

namespace kx {

/// The tool bars of a running file dialog: its own one for navigation, and one of the application's that it borrows and
/// shows beside that. The application's bar belongs to the thread of the forms, and is touched in that thread alone.
class TKxToolBarLoan {
public:
    /// `dialog` is the one whose tool bars these are.
    explicit TKxToolBarLoan(TKxFileDlgCore& dialog) : FDialog(dialog) {}

    TKxToolBarOptions& Options() { return FTBOptions; }
    const TKxToolBarOptions& Options() const { return FTBOptions; }
    HWND OwnBar() const { return FTB; } ///< The dialog's own tool bar; null while it is not shown.

    void Take();   ///< Finds the dialog's own bar and borrows the application's.
    void Place();  ///< Puts the borrowed bar to the right of the dialog's own, as far as there is room.
    void Return(); ///< Gives the borrowed bar back, as it was.
    void Forget() { FTB = nullptr; }

private:
    void Borrow();

    TKxFileDlgCore& FDialog;
    TKxToolBarOptions FTBOptions;
    HWND FTB = nullptr;
    TComponentRef<TToolBar> FBorrowedBar;
    TComponentRef<TWinControl> FTBPrevParent;
    TRect FTBPrevRect;
    bool FTBPrevVisible = false;
};

} // namespace kx
