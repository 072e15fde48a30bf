#pragma once

#include "Report.h"

namespace kx::bench {

/// Time from the call to the first paint, with nothing docked and with four docked forms of 20 controls, each against
/// the bare dialog opened in turn with ours.
std::vector<TRow> MeasureFirstPaint();

/// Cost of one sent null message through a dialog's pipeline without events, beyond what the bare window takes, against
/// the same for a procedure installed by SetWindowSubclass.
std::vector<TRow> MeasureNullMessage();

} // namespace kx::bench
