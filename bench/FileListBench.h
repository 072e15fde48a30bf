#pragma once

#include "Report.h"

namespace kx::bench {

/// The full dialog's file list: the filter's pass over 1,000, 10,000 and 100,000 entries, half of which it takes out,
/// against a bare loop that asks the file system the same questions and deletes the same entries; and a change of
/// folder with forced styles and the filter on, against the bare dialog's.
std::vector<TRow> MeasureFileList();

} // namespace kx::bench
