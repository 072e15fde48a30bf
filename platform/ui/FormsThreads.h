#pragma once

#include "ui/Messages.h"

namespace kx {

/// Sent to the application's hidden window: other threads wait for work in its thread.
constexpr UINT WM_RUNSYNCHRONIZED = WM_APP + 2;

} // namespace kx
