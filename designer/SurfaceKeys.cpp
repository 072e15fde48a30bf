// SPDX-License-Identifier: MIT
// What the keyboard does on a form.

#include "designer/Arrange.h"
#include "designer/Surface.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <cstdlib>

namespace kx::designer {

bool TDesignSurface::WantsKey(uint16_t key, TShiftState shift) {
    switch (key) {
    case VK_TAB:
    case VK_ESCAPE:
    case VK_RETURN:
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN: return FDesigner != nullptr;
    default: return TCustomControl::WantsKey(key, shift);
    }
}

void TDesignSurface::KeyDown(uint16_t& key, TShiftState shift) {
    TCustomControl::KeyDown(key, shift);
    if (!FDesigner) {
        return;
    }
    switch (key) {
    case VK_ESCAPE:
        if (FDrag != TDrag::None) {
            CancelDrag();
        } else if (FTool) {
            FTool = nullptr;
            FOnToolUsed(this);
        } else if (FShowsTabOrder) {
            SetShowsTabOrder(false);
        } else {
            FDesigner->SelectParent();
        }
        break;
    case VK_TAB: SelectNextComponent(!shift.Contains(ssShift)); break;
    case VK_RETURN: FOnEdit(this); break;
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN: ArrowKey(key, shift); break;
    default: return;
    }
    key = 0;
}

/// Ctrl moves by a pixel, Shift sizes by one; both together move by the grid. Alone they select.
void TDesignSurface::ArrowKey(uint16_t key, TShiftState shift) {
    const bool ctrl = shift.Contains(ssCtrl);
    const bool sizes = shift.Contains(ssShift) && !ctrl;
    const TPoint step = ctrl && shift.Contains(ssShift) ? FGrid.Size : TPoint{1, 1};
    const int x = key == VK_LEFT ? -1 : key == VK_RIGHT ? 1 : 0;
    const int y = key == VK_UP ? -1 : key == VK_DOWN ? 1 : 0;
    if (ctrl || sizes) {
        NudgeSelected(*FDesigner, x * step.X, y * step.Y, sizes);
    } else {
        SelectNearest(x, y);
    }
}

void TDesignSurface::SelectNextComponent(bool forward) {
    const std::vector<TComponent*> all = FDesigner->AllComponents();
    const auto at = std::ranges::find(all, FDesigner->Primary());
    const size_t index = at == all.end() ? 0 : static_cast<size_t>(at - all.begin());
    FDesigner->SelectOne(*all[(index + (forward ? 1 : all.size() - 1)) % all.size()]);
}

/// The neighbour of the same parent that is nearest in that direction.
void TDesignSurface::SelectNearest(int dx, int dy) {
    const auto* const primary = dynamic_cast<TControl*>(FDesigner->Primary());
    if (!primary || !primary->Parent() || primary == &FDesigner->Form()) {
        SelectNextComponent(dx + dy > 0);
        return;
    }
    const auto middle = [](const TControl& control) {
        const TRect r = control.BoundsRect();
        return TPoint{(r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2};
    };
    const TPoint from = middle(*primary);
    TControl* best = nullptr;
    int bestWay = 0;
    for (int i = 0; i < primary->Parent()->ControlCount(); ++i) {
        TControl* const control = primary->Parent()->Controls(i);
        const TPoint to = middle(*control);
        const int along = (to.X - from.X) * dx + (to.Y - from.Y) * dy;
        const int aside = std::abs((to.X - from.X) * dy) + std::abs((to.Y - from.Y) * dx);
        const int way = along + 2 * aside;
        if (control != primary && control->Owner() == &FDesigner->Form() && along > 0 && (!best || way < bestWay)) {
            best = control;
            bestWay = way;
        }
    }
    if (best) {
        FDesigner->SelectOne(*best);
    }
}

} // namespace kx::designer
