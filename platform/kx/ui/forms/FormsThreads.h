// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Messages.h"
#include "kx/win/Windows.h"

namespace kx {

class TApplication;

/// Sent to the application's hidden window: other threads wait for work in its thread.
constexpr UINT WM_RUNSYNCHRONIZED = WM_APP + 2;

/// Waits until `object` is signalled, and meanwhile answers what other threads send to windows of this one; messages
/// that were posted stay where they are.
void WaitAnswering(HANDLE object);

/// From now on the application does no more work for other threads. Those that wait for it now are let go.
void RefuseSynchronized();
void AcceptSynchronized(); ///< A new application does.

bool AreThreadsRunning(); ///< TThreads that have begun and are not over.

TApplication& LibraryApplication(); ///< That of a library, made when there is none.

} // namespace kx
