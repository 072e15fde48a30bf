// SPDX-License-Identifier: MIT
#pragma once

namespace kx::bench {

/// The system's open dialog with what the library would put into it, written by hand: no framework, plain windows. Four
/// panels of 20 controls each stand at its sides and follow its size; with `places`, a tool bar with four places of the
/// shell at its left besides.
void ShowHandWrittenDialog(bool places);

} // namespace kx::bench
