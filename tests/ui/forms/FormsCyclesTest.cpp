// SPDX-License-Identifier: MIT
// Showings of forms leave nothing behind.

#include "tests/ui/SampleForms.h"

#include "tests/support/Census.h"
#include "tests/support/TestDriver.h"

namespace kx {
namespace {

using namespace test;

/// Runs `cycle` until what is made on first use is there, then 120 times more: nothing may be left over.
void ExpectNoGrowth(const std::function<void()>& cycle) {
    for (int i = 0; i < 20; ++i) {
        cycle();
    }
    const TCensus before = TakeCensus();
    for (int i = 0; i < 120; ++i) {
        cycle();
    }
    TCensus after = TakeCensus();
    // A cache here and there may grow by a block; a leak would be one per cycle, or at every third.
    EXPECT_LT(after[TCensusKind::HeapBlock] - before[TCensusKind::HeapBlock], 40);
    EXPECT_LT(after[TCensusKind::HeapByte] - before[TCensusKind::HeapByte], 8000);
    after[TCensusKind::HeapBlock] = before[TCensusKind::HeapBlock];
    after[TCensusKind::HeapByte] = before[TCensusKind::HeapByte];
    EXPECT_EQ(Describe(before, after), "");
}

TEST(Cycles, FormsShownAndFreedLeaveNothingBehind) {
    ExpectNoGrowth([] {
        const std::unique_ptr<TAllControlsForm, TFreeDeleter> form(NewForm<TAllControlsForm>(nullptr));
        form->Show();
        form->Repaint();
        Application().ProcessMessages();
    });
}

TEST(Cycles, DockingAndLeavingLeavesNothingBehind) {
    const std::unique_ptr<TAllControlsForm, TFreeDeleter> form(NewForm<TAllControlsForm>(nullptr));
    form->SetBorderStyle(bsNone);
    bool dies = false;
    ExpectNoGrowth([&] {
        const HWND host = CreateWindowExA(0, "#32770", "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200, nullptr, nullptr,
                                          HInstance(), nullptr);
        form->SetParentWindow(host);
        form->Show();
        if (std::exchange(dies, !dies)) {
            form->Hide();
            form->SetParentWindow(nullptr);
        }
        DestroyWindow(host);
        Application().ProcessMessages();
    });
}

TEST(Cycles, RecreatedWindowsLeaveNothingBehind) {
    const std::unique_ptr<TAllControlsForm, TFreeDeleter> form(NewForm<TAllControlsForm>(nullptr));
    form->Show();
    ExpectNoGrowth([&] {
        form->RecreateWnd();
        Application().ProcessMessages();
    });
}

} // namespace
} // namespace kx
