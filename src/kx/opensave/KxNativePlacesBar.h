// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/WinTypes.h"

namespace kx {

/// A copy of the record of a file dialog by which the system shows its places bar.
OPENFILENAMEA KxWithPlacesBar(const OPENFILENAMEA& record);

/// True on systems whose file dialogs have a places bar; false too when the system's version cannot be read.
bool PlacesBarSupported();
/// The same for a given version: platform 2 is the NT line, 1 the 9x line.
constexpr bool PlacesBarSupported(DWORD platform, DWORD major, DWORD minor) {
    return (platform == 2 && major >= 5) || (platform == 1 && (major > 4 || (major == 4 && minor >= 90)));
}

} // namespace kx
