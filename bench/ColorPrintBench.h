#pragma once

#include "Report.h"

namespace kx::bench {

/// First paint of the colour and of the print dialog with nothing docked, beside that of the system's alone.
std::vector<TRow> MeasureColor();
std::vector<TRow> MeasurePrint();

} // namespace kx::bench
