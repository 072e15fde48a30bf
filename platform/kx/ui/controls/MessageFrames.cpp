// SPDX-License-Identifier: MIT
// How many messages are being handled in a thread.

#include "kx/ui/controls/MessageFrames.h"

#include "kx/ui/controls/ControlHost.h"

namespace kx::detail {

TMessageFrame::~TMessageFrame() { ControlHost().MessageDone(--Count()); }

int& TMessageFrame::Count() noexcept {
    thread_local int count = 0;
    return count;
}

} // namespace kx::detail
