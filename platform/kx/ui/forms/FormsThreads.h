#pragma once

#include "kx/win/Messages.h"
#include "kx/win/Windows.h"

namespace kx {

/// Sent to the application's hidden window: other threads wait for work in its thread.
constexpr UINT WM_RUNSYNCHRONIZED = WM_APP + 2;

/// Waits until `object` is signalled, and meanwhile answers what other threads send to windows of this one; messages
/// that were posted stay where they are.
void WaitAnswering(HANDLE object);

/// From now on no thread gets anything done by the application, nor those that wait for it now.
void RefuseSynchronized();

} // namespace kx
