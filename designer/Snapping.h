#pragma once

#include "kx/core/Types.h"

#include <vector>

namespace kx::designer {

/// A line along which edges lie.
struct TGuide {
    bool IsVertical;
    int At; ///< Its x, or its y.
};

/// What there is to snap to while something is moved or sized. All rectangles are in the same coordinates.
struct TSnapping {
    int Grid = 8; ///< Pixels; 0 and 1: none.
    bool UseGuides = true;
    std::vector<TRect> Others; ///< Whose edges attract those of what is moved.
};

/// How far to move on from `rect` so that an edge meets another one's, or the left upper corner the grid. `guides`, if
/// not null, receives the lines on which it lies then.
TPoint SnapMove(const TSnapping& snapping, const TRect& rect, std::vector<TGuide>* guides);
/// Where an edge that is dragged to `at` goes: to another one's edge, or to the grid.
int SnapEdge(const TSnapping& snapping, int at, bool isVertical, std::vector<TGuide>* guides);

/// The nearest multiple of the grid.
int ToGrid(int value, int grid);

} // namespace kx::designer
