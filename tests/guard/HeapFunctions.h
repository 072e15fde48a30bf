#pragma once

namespace kx::guard {

/// From now on malloc and its kind work on the page heap; new and delete always do.
void GuardHeap();

} // namespace kx::guard
