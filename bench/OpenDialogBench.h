#pragma once

#include "Report.h"

namespace kx::bench {

/// Time from the call to the first paint, with nothing docked, with four docked forms of 20 controls, and of the full
/// dialog with these forms and its own places bar, each against the bare dialog opened in turn with ours.
std::vector<TRow> MeasureFirstPaint();

/// Cost of one sent null message through a dialog's pipeline, beyond what the bare window takes: without events against
/// the same for a procedure installed by SetWindowSubclass, and in the full dialog with its hooks and events.
std::vector<TRow> MeasureNullMessage();

} // namespace kx::bench
