// SPDX-License-Identifier: MIT
// Docking in a system dialog whose layout is that of languages read from right to left.

#include "DockingFixture.h"

#include "tests/support/MirroredDialogs.h"

namespace kx {
namespace {

using namespace test;

using MirroredDocking = Docking;

TEST_F(MirroredDocking, TheFormsExchangeTheirSides) {
    DockByForm(AllSides);
    const TMirroredDialogs mirrored;
    LookPainted([&] {
        Screenshot("mirrored-docking", Window());
        ASSERT_TRUE(IsMirrored(Window()));
        const TRect client = ClientSize();
        ExpectFormsAround(client.Right, client.Bottom);
        const TRect outer = ScreenRectOf(Window());
        const TRect left = ScreenRectOf(FLeft->WindowHandle());
        const TRect right = ScreenRectOf(FRight->WindowHandle());
        EXPECT_GT(left.Left, (outer.Left + outer.Right) / 2);
        EXPECT_LT(right.Right, (outer.Left + outer.Right) / 2);
        EXPECT_EQ(Width(left), 120);
        EXPECT_EQ(Width(right), 70);
        // The dialog's own controls have room between them.
        for (const auto& child : FDialog.SystemChildren()) {
            if (IsWindowVisible(child.Window)) {
                const TRect r = ScreenRectOf(child.Window);
                EXPECT_LE(r.Right, left.Left) << IntToStr(GetDlgCtrlID(child.Window));
            }
        }
        EXPECT_FALSE(IsMirrored(FLeft->WindowHandle())) << "forms keep their own layout";
    });
}

TEST_F(MirroredDocking, TheFormsFollowTheSizeOfTheDialog) {
    DockByForm(AllSides);
    const TMirroredDialogs mirrored;
    LookPainted([&] {
        const TRect outer = ScreenRectOf(Window());
        SetWindowPos(Window(), nullptr, 0, 0, Width(outer) + 60, Height(outer) + 40, SWP_NOMOVE | SWP_NOZORDER);
        const TRect client = ClientSize();
        EXPECT_EQ(FBottom->Width(), client.Right);
        EXPECT_EQ(FLeft->Height(), client.Bottom - FBottom->Height());
        EXPECT_EQ(RectOf(*FLeft), FLeft->BoundsRect()) << "they know where they are";
        EXPECT_EQ(RectOf(*FTop), FTop->BoundsRect());
        // The system gives the next dialog the size of this one.
        SetWindowPos(Window(), nullptr, 0, 0, Width(outer), Height(outer), SWP_NOMOVE | SWP_NOZORDER);
    });
}

} // namespace
} // namespace kx
