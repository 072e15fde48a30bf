#pragma once

namespace kx::guard {

/// From now on hard faults (access violations, illegal instructions, divisions by zero, ...) are reported when they
/// touch the heap's blocks, or have code of this program on their stack, even when somebody handles them: inside window
/// procedures the system does so without a word. A call of std::terminate is reported too.
void GuardFaults();

} // namespace kx::guard
