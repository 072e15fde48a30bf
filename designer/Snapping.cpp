// SPDX-License-Identifier: MIT
// Finds the places at which edges meet.

#include "designer/Snapping.h"

#include <cstdlib>
#include <initializer_list>
#include <optional>

namespace kx::designer {

namespace {

constexpr int Reach = 4; // pixels within which an edge is attracted

/// The nearest edge of others to one of the given edges, as the way to it; empty when none is near.
std::optional<int> WayToOther(const TSnapping& snapping, std::initializer_list<int> edges, bool isVertical) {
    std::optional<int> best;
    for (const TRect& other : snapping.Others) {
        for (const int at : {isVertical ? other.Left : other.Top, isVertical ? other.Right : other.Bottom}) {
            for (const int edge : edges) {
                const int way = at - edge;
                if (std::abs(way) <= Reach && (!best || std::abs(way) < std::abs(*best))) {
                    best = way;
                }
            }
        }
    }
    return best;
}

void AddGuides(const TSnapping& snapping, std::initializer_list<int> edges, bool isVertical,
               std::vector<TGuide>* guides) {
    if (!guides) {
        return;
    }
    for (const int edge : edges) {
        for (const TRect& other : snapping.Others) {
            const bool meets =
                edge == (isVertical ? other.Left : other.Top) || edge == (isVertical ? other.Right : other.Bottom);
            if (meets) {
                guides->push_back({isVertical, edge});
                break;
            }
        }
    }
}

} // namespace

int ToGrid(int value, int grid) {
    if (grid <= 1) {
        return value;
    }
    const int rest = ((value % grid) + grid) % grid;
    return value - rest + (rest * 2 >= grid ? grid : 0);
}

TPoint SnapMove(const TSnapping& snapping, const TRect& rect, std::vector<TGuide>* guides) {
    const std::optional<int> x =
        snapping.UseGuides ? WayToOther(snapping, {rect.Left, rect.Right}, true) : std::nullopt;
    const std::optional<int> y =
        snapping.UseGuides ? WayToOther(snapping, {rect.Top, rect.Bottom}, false) : std::nullopt;
    const TPoint way{x ? *x : ToGrid(rect.Left, snapping.Grid.X) - rect.Left,
                     y ? *y : ToGrid(rect.Top, snapping.Grid.Y) - rect.Top};
    if (snapping.UseGuides) {
        AddGuides(snapping, {rect.Left + way.X, rect.Right + way.X}, true, guides);
        AddGuides(snapping, {rect.Top + way.Y, rect.Bottom + way.Y}, false, guides);
    }
    return way;
}

int SnapEdge(const TSnapping& snapping, int at, bool isVertical, std::vector<TGuide>* guides) {
    const std::optional<int> way = snapping.UseGuides ? WayToOther(snapping, {at}, isVertical) : std::nullopt;
    const int snapped = way ? at + *way : ToGrid(at, isVertical ? snapping.Grid.X : snapping.Grid.Y);
    if (snapping.UseGuides) {
        AddGuides(snapping, {snapped}, isVertical, guides);
    }
    return snapped;
}

} // namespace kx::designer
