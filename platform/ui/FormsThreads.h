#pragma once

#include "ui/Messages.h"

namespace kx {

/// Sent to the application's hidden window: other threads wait for work in its thread.
constexpr UINT WM_RUNSYNCHRONIZED = WM_APP + 2;

/// From now on no thread gets anything done by the application, nor those that wait for it now.
void RefuseSynchronized();

} // namespace kx
