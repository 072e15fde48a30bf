// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Windows.h"

#include <string>
#include <vector>

namespace kx::test {

/// The window that the shell tells of a drop at that point: the one there, or the nearest of those around it that
/// accepts files. Null when none does.
HWND DropTargetAt(TPoint screen);

/// Sends the window what the shell sends when the user drops these files and folders on it. Returns when it has handled
/// that.
void DropOn(HWND window, const std::vector<std::string>& names);

} // namespace kx::test
