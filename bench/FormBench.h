#pragma once

#include "Report.h"

namespace kx::bench {

/// Reading forms of 100, 1,000 and 10,000 components, from binary and from text: what one of them costs.
std::vector<TRow> MeasureForms();

} // namespace kx::bench
