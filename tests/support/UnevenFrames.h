// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Windows.h"
#include "tests/support/ImportPatch.h"

namespace kx::test {

/// While this lives, the frames of dialogs are for the program not as wide as high: systems may have them so, and only
/// then the one shows that stands for the other.
class TUnevenFrames {
public:
    static constexpr int FrameWidth = 5;
    static constexpr int FrameHeight = 9;

private:
    static int WINAPI Metric(int index) {
        using TMetric = int WINAPI(int index);
        static auto* const system = reinterpret_cast<TMetric*>(
            reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("user32.dll"), "GetSystemMetrics")));
        switch (index) {
        case SM_CXDLGFRAME: return FrameWidth;
        case SM_CYDLGFRAME: return FrameHeight;
        default: return system(index);
        }
    }

    const TImportPatch FPatch{"GetSystemMetrics", reinterpret_cast<void*>(Metric)};
};

} // namespace kx::test
