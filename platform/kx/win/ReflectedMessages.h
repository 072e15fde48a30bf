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

} // namespace kx
