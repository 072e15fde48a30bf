#pragma once

#include "Report.h"

namespace kx::bench {

/// Saving and loading the places of a places bar: 1,000 of them against the bare registry calls that move the same
/// values, and one of 1,000 against one of 100, beyond what the registry's own time grows.
std::vector<TRow> MeasurePlaces();

} // namespace kx::bench
