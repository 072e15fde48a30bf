// SPDX-License-Identifier: MIT
#pragma once

#include "kx/places/KxPlaces.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx::gallery {

/// Replaces the places by some that lead to the samples, and one of the shell's.
void AddSamplePlaces(TKxPlaces& places);

/// Applies the choice of a box with the lines none, the system's, the library's.
void ChoosePlacesBar(TKxPlacesBarOptions& bar, const TComboBox& choice);

} // namespace kx::gallery
