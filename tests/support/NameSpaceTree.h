// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Windows.h"

namespace kx::test {

/// Gives a folder browser the windows that Windows has in the new style: the tree inside a control of the class
/// "SHBrowseForFolder ShellNameSpace Control", which takes the tree's place. Returns that control; null when the
/// browser has no tree.
HWND PutTreeIntoNameSpaceControl(HWND browser);

} // namespace kx::test
