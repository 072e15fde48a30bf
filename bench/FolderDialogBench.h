#pragma once

#include "Report.h"

namespace kx::bench {

/// The folder dialog with nothing docked against the bare browser: time from the call to the first paint.
std::vector<TRow> MeasureFolderDialog();

} // namespace kx::bench
