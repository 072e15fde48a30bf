// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/win/Windows.h"
#include "support/DialogDriver.h"

namespace kx::test {

/// Pumps by the application's message loop, which moves the focus and presses default buttons. It waits for longer
/// than a driver does, which tells more when it gives up.
inline bool FocusPump(const TCondition& condition) {
    const DWORD start = GetTickCount();
    while (!condition() && GetTickCount() - start < 40000) {
        Application().ProcessMessages();
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
        KeepFocus();
    }
    return condition();
}

} // namespace kx::test
