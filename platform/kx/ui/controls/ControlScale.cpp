// SPDX-License-Identifier: MIT
// Controls at other resolutions than the one their sizes were written down for.

#include "kx/ui/controls/Controls.h"
#include "kx/ui/controls/ParentForm.h"
#include "kx/ui/controls/ScrollingControl.h"
#include "kx/win/Dpi.h"

namespace kx {

bool TControl::IsIncomplete() const {
    const TParentForm* const form = ParentFormOf(this);
    return IsLoading() || (form && form->FScalingFile);
}

int TControl::ScaleLength(int length) const { return ScaleValue(length, FFont->PixelsPerInch(), DefaultDpi); }

void TControl::ChangeScale(int to, int from) {
    FConstraints.ChangeScale(to, from);
    FMargins.ChangeScale(to, from);
    // The font comes last: a control that follows its text takes its size by it.
    if (Outlives(*this, [&] { ScaleBounds(to, from); }) && !FParentFont) {
        ScaleFont(to, from);
    }
}

void TControl::ScaleFont(int to, int from) {
    const TFieldScope following(*this, FFollowing, true);
    FFont->ChangeScale(to, from);
}

/// Width and height are scaled by themselves: equal controls stay equal.
void TControl::ScaleBounds(int to, int from) {
    SetBounds(ScaleValue(Left(), to, from), ScaleValue(Top(), to, from), ScaleValue(Width(), to, from),
              ScaleValue(Height(), to, from));
}

void TWinControl::ScaleForDpi(int to, int from) {
    if (to <= 0 || from <= 0) {
        throw EInvalidOperation(Format("Cannot scale from %s to %s", {IntToStr(from), IntToStr(to)}));
    }
    if (to != from) {
        ChangeScale(to, from);
    }
}

/// The controls inside keep their places until all have their sizes; then they are aligned once.
void TWinControl::ChangeScale(int to, int from) {
    FSystemLook.reset(); // themes have other pictures for other resolutions
    const TAlive alive(*this);
    {
        const TFieldScope aligning(*this, FAligning, true);
        FPadding.ChangeScale(to, from);
        for (size_t i = 0; alive && i < FControls.size(); ++i) { // handlers may add and remove controls
            FControls[i]->ChangeScale(to, from);
        }
        if (alive) {
            TControl::ChangeScale(to, from);
        }
    }
    if (alive) {
        for (TControl* control : FControls) {
            control->UpdateAnchorBase();
        }
        AlignControls();
    }
}

void TScrollingWinControl::ChangeScale(int to, int from) {
    const auto scale = [&] {
        const TFieldScope arranging(*this, FArranging, true);
        for (TControlScrollBar* bar : {&FHorz, &FVert}) {
            for (int* value : {&bar->FIncrement, &bar->FMargin, &bar->FRange, &bar->FPosition}) {
                *value = ScaleValue(*value, to, from);
            }
        }
        TWinControl::ChangeScale(to, from);
    };
    if (Outlives(*this, scale)) {
        AlignControls();
    }
}

} // namespace kx
