// SPDX-License-Identifier: MIT
#pragma once

#include "designer/FormDesigner.h"

namespace kx::designer {

// What the designer does with the places of the selected controls. Each is one step to undo. The first selected control
// is the one that the others follow. Controls that their parent aligns keep their places.

enum TEdge { Left, Right, Top, Bottom, HorizontalMiddle, VerticalMiddle };
void AlignSelected(TFormDesigner& designer, TEdge edge);
void SpaceSelected(TFormDesigner& designer, bool horizontally);      ///< The same distances between all of them.
void SizeSelected(TFormDesigner& designer, bool width, bool height); ///< As wide, as high as the first.
void CenterSelected(TFormDesigner& designer, bool horizontally);     ///< All together in the middle of their parent.
void MoveSelectedToGrid(TFormDesigner& designer, const TPoint& grid);
/// By the keyboard: moves the selected components, or makes the controls larger.
void NudgeSelected(TFormDesigner& designer, int x, int y, bool size);

/// The place of a component that is no control.
TPoint IconPlace(const TComponent& component);
void SetIconPlace(TComponent& component, const TPoint& place);

} // namespace kx::designer
