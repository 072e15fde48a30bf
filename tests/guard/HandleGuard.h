#pragma once

namespace kx::guard {

/// From now on calls by the program that hand a dead window, menu, drawing context or drawing object to the system are
/// reported. Null is no dead handle. Functions that are the way to ask whether a handle lives are not watched.
void GuardHandles();

} // namespace kx::guard
