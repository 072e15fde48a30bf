// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/Menus.h"

// The command numbers of menu items: one for each item of the process.

namespace kx::detail {

/// Gives the item a number that no other item has. Numbers are not used again until all others were, so that a command
/// on its way to an item that is gone reaches nobody.
/// @throws EMenuError "Too many menu items"
WORD RegisterCommand(TMenuItem* item);
void UnregisterCommand(WORD command);
TMenuItem* FindCommand(WORD command); ///< Null when no item has the number.
TMenuItem* FindSubmenu(HMENU handle); ///< The item whose submenu that is; null when there is none.

} // namespace kx::detail
