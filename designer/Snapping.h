// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Types.h"

#include <vector>

namespace kx::designer {

/// The dots on a form that is designed.
struct TDesignGrid {
    static constexpr int Least = 2;
    static constexpr int Greatest = 128;
    TPoint Size{8, 8}; ///< Pixels from one dot to the next.
    bool IsShown = true;
    bool Snaps = true; ///< The mouse moves and sizes from dot to dot.
    bool operator==(const TDesignGrid&) const = default;
};

/// A line along which edges lie.
struct TGuide {
    bool IsVertical;
    int At; ///< Its x, or its y.
};

/// What there is to snap to while something is moved or sized. All rectangles are in the same coordinates.
struct TSnapping {
    TPoint Grid = TDesignGrid().Size; ///< Pixels; 0 and 1: none.
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
