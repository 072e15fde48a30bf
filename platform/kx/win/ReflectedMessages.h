// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Windows.h"

namespace kx {

/// Notifications that a control's parent gets (WM_COMMAND, WM_NOTIFY, WM_CTLCOLOR..., WM_DRAWITEM, ...) come back to
/// the control under their own number plus this one.
constexpr UINT CN_BASE = 0xBC00;
constexpr UINT CN_COMMAND = CN_BASE + WM_COMMAND;
constexpr UINT CN_NOTIFY = CN_BASE + WM_NOTIFY;
constexpr UINT CN_DRAWITEM = CN_BASE + WM_DRAWITEM;
constexpr UINT CN_MEASUREITEM = CN_BASE + WM_MEASUREITEM;
constexpr UINT CN_CTLCOLORSTATIC = CN_BASE + WM_CTLCOLORSTATIC;

/// A screen reader wants what it was told of as an action. It is posted, since what is done then may take long: the
/// number of the part in WPARAM, 0 for all of the control, whose address is in LPARAM.
constexpr UINT CM_ACCESSIBLEACTION = 0xB000;

} // namespace kx
