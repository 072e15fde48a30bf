// SPDX-License-Identifier: MIT
#pragma once

namespace sample {

/// Puts the component on the page "Samples" of the palette, with an editor that shows the stars, and commands of its
/// own.
void RegisterStarRating();

} // namespace sample
