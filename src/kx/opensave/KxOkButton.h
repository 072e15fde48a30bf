// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/ComponentRef.h"
#include "kx/opensave/KxFileDlgCore.h"
#include "kx/ui/controls/Menus.h"

namespace kx {

/// The OK button of a file dialog that has a menu: a form with a button of the library's in the place of the system's.
class TKxOkButton {
public:
    /// `dialog` is the one that the button is a part of.
    explicit TKxOkButton(TKxFileDlgCore& dialog) : FDialog(dialog) {}

    /// Opened by the button's arrow. Not owned; null: the system's button stays.
    TPopupMenu* Menu() const { return FPopupMenu.Get(); }
    void SetMenu(TPopupMenu* value) { FPopupMenu.Set(value); }

    /// Makes the button if one is wanted and missing, and shows or hides it by the dialog's visible controls.
    void Show();
    /// Puts the button where the system's own one is: the system moves that one alone when it lays out the dialog.
    void Align();
    void Free();

private:
    void Create(bool visible);

    TKxFileDlgCore& FDialog;
    TComponentRef<TPopupMenu> FPopupMenu;
    TComponentRef<TForm> FOKButtonFrm; ///< In the place of the OK button.
};

} // namespace kx
