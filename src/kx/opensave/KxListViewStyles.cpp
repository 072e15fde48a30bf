// SPDX-License-Identifier: MIT
// The styles that a dialog forces on its file list.

#include "kx/opensave/KxListViewStyles.h"

#include "kx/win/Windows.h"

namespace kx {

const TClass& TKxListViewStyles::StaticClass() {
    using T = TKxListViewStyles;
    static const TClassBuilder<T> cls("TKxListViewStyles", TPersistent::StaticClass(), [](auto& c) {
        c.Property("HotTrack", &T::HotTrack, &T::SetHotTrack).Default = false;
        c.Property("HotTrackStyles", &T::HotTrackStyles, &T::SetHotTrackStyles).Default = 0;
        c.Property("FlatScrollBars", &T::FlatScrollBars, &T::SetFlatScrollBars).Default = false;
        c.Property("GridLines", &T::GridLines, &T::SetGridLines).Default = false;
        c.Property("RowSelect", &T::RowSelect, &T::SetRowSelect).Default = false;
        c.Property("EnableRename", &T::EnableRename, &T::SetEnableRename).Default = true;
        c.Property("EnableDelete", &T::EnableDelete, &T::SetEnableDelete).Default = true;
        c.Property("PopupOnEmpty", &T::PopupOnEmpty, &T::SetPopupOnEmpty).Default = true;
        c.Property("PopupOnSelection", &T::PopupOnSelection, &T::SetPopupOnSelection).Default = true;
    });
    return cls.Class();
}

DWORD TKxListViewStyles::ApplyToExStyle(DWORD exStyle) const {
    const auto add = [&exStyle](bool wanted, DWORD bit) {
        if (wanted) {
            exStyle |= bit;
        }
    };
    const bool cold = FHotTrackStyles.Contains(htUnderlineCold);
    const bool hot = FHotTrackStyles.Contains(htUnderlineHot);
    add(FFlatScrollBars, LVS_EX_FLATSB);
    add(FRowSelect, LVS_EX_FULLROWSELECT);
    add(FHotTrack, LVS_EX_TRACKSELECT);
    add(FGridLines, LVS_EX_GRIDLINES);
    // The hand means activation by one click and wins; underlines alone mean two clicks.
    if (FHotTrackStyles.Contains(htHandPoint)) {
        exStyle |= LVS_EX_ONECLICKACTIVATE;
    } else {
        add(cold || hot, LVS_EX_TWOCLICKACTIVATE);
    }
    add(hot, LVS_EX_UNDERLINEHOT);
    add(cold, LVS_EX_UNDERLINECOLD);
    return exStyle;
}

DWORD TKxListViewStyles::ApplyToStyle(DWORD style) const {
    return FEnableEdit ? style : style & ~static_cast<DWORD>(LVS_EDITLABELS);
}

} // namespace kx
