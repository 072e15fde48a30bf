// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/TypInfo.h"

namespace kx {

/// How a list view shows its items.
enum TViewStyle : uint8_t { vsIcon, vsSmallIcon, vsList, vsReport };
KX_ENUM(TViewStyle, "vsIcon", "vsSmallIcon", "vsList", "vsReport")

/// When a list or a tree sorts what is in it: when the program's data of an item is set, its text, or either.
enum TSortType : uint8_t { stNone, stData, stText, stBoth };
KX_ENUM(TSortType, "stNone", "stData", "stText", "stBoth")

/// How a list view marks the item under the mouse.
enum TListHotTrackStyle : uint8_t { htHandPoint, htUnderlineCold, htUnderlineHot };
KX_ENUM(TListHotTrackStyle, "htHandPoint", "htUnderlineCold", "htUnderlineHot")
using TListHotTrackStyles = TSet<TListHotTrackStyle>;

} // namespace kx
