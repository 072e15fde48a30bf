#pragma once

#include "Report.h"

namespace kx::bench {

/// The library's places bar: making the buttons of 200 places against plain tool buttons, and painting one button
/// against a system button that its owner draws with the same icon and caption.
std::vector<TRow> MeasurePlacesBar();

} // namespace kx::bench
