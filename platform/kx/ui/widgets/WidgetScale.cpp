// SPDX-License-Identifier: MIT
// What widgets measure in pixels besides their bounds, at other resolutions.

#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ComCtrlsBars.h"
#include "kx/ui/widgets/ComCtrlsPageScroller.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/ui/widgets/ComCtrlsTree.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/Grids.h"
#include "kx/ui/widgets/Splitters.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Dpi.h"

#include <algorithm>

namespace kx {

namespace {

/// Values below 0 have a meaning of their own.
int ScaleUnlessNegative(int value, int to, int from) { return value < 0 ? value : ScaleValue(value, to, from); }

} // namespace

void TListView::ChangeScale(int to, int from) {
    if (Outlives(*this, [&] { TWinControl::ChangeScale(to, from); })) {
        for (int i = 0; i < FColumns.Count(); ++i) {
            FColumns[i].SetWidth(ScaleUnlessNegative(FColumns[i].Width(), to, from));
        }
    }
}

void TTreeView::ChangeScale(int to, int from) {
    if (Outlives(*this, [&] { TWinControl::ChangeScale(to, from); })) {
        SetIndent(ScaleValue(Indent(), to, from));
    }
}

void TStatusBar::ChangeScale(int to, int from) {
    if (Outlives(*this, [&] { TWinControl::ChangeScale(to, from); })) {
        for (int i = 0; i < FPanels.Count(); ++i) {
            FPanels[i].SetWidth(ScaleUnlessNegative(FPanels[i].Width(), to, from));
        }
    }
}

void TToolBar::ChangeScale(int to, int from) {
    const auto scale = [&] {
        BeginUpdate();
        FButtonWidth = ScaleValue(FButtonWidth, to, from);
        FButtonHeight = ScaleValue(FButtonHeight, to, from);
        FIndent = ScaleValue(FIndent, to, from);
        TWinControl::ChangeScale(to, from);
    };
    if (Outlives(*this, scale)) {
        ApplySizes();
        EndUpdate();
    }
}

void TPageScroller::ChangeScale(int to, int from) {
    if (Outlives(*this, [&] { TWinControl::ChangeScale(to, from); })) {
        SetButtonSize(ScaleValue(FButtonSize, to, from));
        SetMargin(ScaleValue(FMargin, to, from));
    }
}

void TPanel::ChangeScale(int to, int from) {
    FBorderWidth = ScaleValue(FBorderWidth, to, from);
    TCustomControl::ChangeScale(to, from);
}

void TSplitter::ChangeScale(int to, int from) {
    FMinSize = std::max(ScaleValue(FMinSize, to, from), 1);
    TGraphicControl::ChangeScale(to, from);
}

void TSpeedButton::ChangeScale(int to, int from) {
    FMargin = ScaleUnlessNegative(FMargin, to, from);
    FSpacing = ScaleUnlessNegative(FSpacing, to, from);
    FGlyph.Stretch(ScaleValue(FGlyph.Width() / FNumGlyphs, to, from) * FNumGlyphs,
                   ScaleValue(FGlyph.Height(), to, from));
    TGraphicControl::ChangeScale(to, from);
}

void TComboBox::ChangeScale(int to, int from) {
    if (Outlives(*this, [&] { TWinControl::ChangeScale(to, from); })) {
        SetItemHeight(ScaleValue(FItemHeight, to, from));
    }
}

void TDrawGrid::ChangeScale(int to, int from) {
    for (TAxis* const axis : {&FColumns, &FRows}) {
        axis->Size = std::max(ScaleValue(axis->Size, to, from), 1);
        for (auto& [cell, size] : axis->Own) {
            size = ScaleValue(size, to, from);
        }
    }
    if (Outlives(*this, [&] { TCustomControl::ChangeScale(to, from); })) {
        LayoutChanged();
    }
}

} // namespace kx
