// SPDX-License-Identifier: MIT
// The system's own places bar.

#include "kx/opensave/KxNativePlacesBar.h"

#include "kx/win/System.h"
#include "kx/win/Windows.h"

#include <commdlg.h>
#include <cstddef>

namespace kx {

OPENFILENAMEA KxWithPlacesBar(const OPENFILENAMEA& record) {
    static_assert(sizeof(void*) != 4 || (sizeof record == 88 && offsetof(OPENFILENAMEA, FlagsEx) == 84));
    OPENFILENAMEA copy = record;
    copy.FlagsEx = 0;
    copy.lStructSize = sizeof copy;
    return copy;
}

bool PlacesBarSupported() {
    const TSystem& system = System();
    return PlacesBarSupported(system.Platform, system.Major, system.Minor);
}

} // namespace kx
