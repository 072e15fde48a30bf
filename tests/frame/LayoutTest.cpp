// SPDX-License-Identifier: MIT
// Rectangles: fitting, centring, growing.

#include "kx/frame/KxDlgLayout.h"

#include "kx/core/SysUtils.h"

#include <gtest/gtest.h>

#include <limits>

namespace kx {
namespace {

constexpr int32_t Max = std::numeric_limits<int32_t>::max();
constexpr int32_t Min = std::numeric_limits<int32_t>::min();

TEST(FitRect, LeavesARectangleInsideTheScreenAlone) {
    EXPECT_EQ(FitRect({10, 20, 300, 400}, 1280, 1024), (TRect{10, 20, 300, 400}));
    EXPECT_EQ(FitRect({0, 0, 1280, 1024}, 1280, 1024), (TRect{0, 0, 1280, 1024}));
}

TEST(FitRect, MovesWhatHangsOutBackInWithItsSize) {
    EXPECT_EQ(FitRect({1200, 20, 1400, 120}, 1280, 1024), (TRect{1080, 20, 1280, 120}));
    EXPECT_EQ(FitRect({-30, 20, 170, 120}, 1280, 1024), (TRect{0, 20, 200, 120}));
    EXPECT_EQ(FitRect({10, 1000, 210, 1100}, 1280, 1024), (TRect{10, 924, 210, 1024}));
    EXPECT_EQ(FitRect({10, -5, 210, 95}, 1280, 1024), (TRect{10, 0, 210, 100}));
    EXPECT_EQ(FitRect({2000, 2000, 2100, 2200}, 1280, 1024), (TRect{1180, 824, 1280, 1024}));
}

TEST(FitRect, ARectangleLargerThanTheScreenEndsAtItsLeftAndTopEdge) {
    EXPECT_EQ(FitRect({-100, -50, 1900, 1950}, 1280, 1024), (TRect{0, 0, 2000, 2000}));
    EXPECT_EQ(FitRect({100, 50, 2100, 2050}, 1280, 1024), (TRect{0, 0, 2000, 2000}));
}

TEST(FitRect, AnExtentOfMoreThan32BitsIsAnOverflow) {
    EXPECT_THROW(FitRect({Min, 0, Max, 10}, 1280, 1024), EIntOverflow);
    EXPECT_THROW(FitRect({0, Min, 10, Max}, 1280, 1024), EIntOverflow);
    EXPECT_THROW(FitRect({Min, 0, 10, 10}, 1280, 1024), EIntOverflow);
}

TEST(CenterOnScreen, TruncatesTheHalfPixelTowardsZero) {
    EXPECT_EQ(CenterOnScreen({0, 0, 500, 300}, 1280, 1024), (TPoint{390, 362}));
    EXPECT_EQ(CenterOnScreen({7, 9, 508, 310}, 1280, 1024), (TPoint{389, 361}));
}

TEST(CenterOnScreen, AWindowLargerThanTheScreenGoesToItsEdge) {
    EXPECT_EQ(CenterOnScreen({10, 10, 1510, 310}, 1280, 1024), (TPoint{0, 362}));
    EXPECT_EQ(CenterOnScreen({10, 10, 510, 2010}, 1280, 1024), (TPoint{390, 0}));
}

TEST(CenterOnScreen, OverflowIsRaised) {
    EXPECT_THROW(CenterOnScreen({0, Min, 10, 10}, 1280, 1024), EIntOverflow);
    EXPECT_THROW(CenterOnScreen({0, 0, Min, 10}, 1280, 1024), EIntOverflow);
}

TEST(CenterOver, PutsOneCentreOnTheOther) {
    EXPECT_EQ(CenterOver({0, 0, 100, 50}, {200, 300, 400, 400}), (TPoint{250, 325}));
}

TEST(CenterOver, RoundsEachCentreForItself) {
    // A centre of 10.5 counts as 10 and one of -10.5 as -10.
    EXPECT_EQ(CenterOver({0, 0, 21, 21}, {0, 0, 30, 30}), (TPoint{5, 5}));
    EXPECT_EQ(CenterOver({-21, -21, 0, 0}, {0, 0, 30, 30}), (TPoint{4, 4}));
}

TEST(CenterOver, DoesNotFitToTheScreen) {
    EXPECT_EQ(CenterOver({0, 0, 500, 500}, {0, 0, 100, 100}), (TPoint{-200, -200}));
}

TEST(CenterOver, OverflowIsRaised) {
    EXPECT_THROW(CenterOver({0, Max, 10, Max}, {0, 0, 10, 10}), EIntOverflow);
    EXPECT_THROW(CenterOver({0, 0, 10, 10}, {Min, 0, Min, 10}), EIntOverflow);
    EXPECT_THROW(CenterOver({Min, 0, Min + 10, 10}, {0, 0, 10, 10}), EIntOverflow);
}

TEST(DockLayout, ABottomFormOf80GoesBelowTheClientAreaInItsFullWidth) {
    const TDockedExtents docked{.BottomHeight = 80};
    const TDockLayout layout = LayoutDocked(docked, 400, 300);
    EXPECT_EQ(layout.BottomTop, 300);
    EXPECT_EQ(layout.BottomWidth, 400);
    EXPECT_EQ(docked.TotalWidth(), 0);
    EXPECT_EQ(docked.TotalHeight(), 80);
}

TEST(DockLayout, ALeftFormBesideATopFormOf50IsHigherByIt) {
    const TDockLayout layout = LayoutDocked({.LeftWidth = 120, .TopHeight = 50}, 400, 300);
    EXPECT_EQ(layout.SideHeight, 350);
    EXPECT_EQ(layout.TopLeft, 120);
    EXPECT_EQ(layout.TopWidth, 400);
}

TEST(DockLayout, AllFourSurroundTheClientArea) {
    const TDockedExtents docked{.LeftWidth = 120, .TopHeight = 50, .RightWidth = 70, .BottomHeight = 80};
    EXPECT_EQ(LayoutDocked(docked, 400, 300), (TDockLayout{.SideHeight = 350,
                                                           .TopLeft = 120,
                                                           .TopWidth = 400,
                                                           .RightLeft = 520,
                                                           .BottomTop = 350,
                                                           .BottomWidth = 590}));
    EXPECT_EQ(docked.TotalWidth(), 190);
    EXPECT_EQ(docked.TotalHeight(), 130);
}

TEST(DockLayout, OverflowIsRaised) {
    EXPECT_THROW(LayoutDocked({.TopHeight = Max}, 400, 300), EIntOverflow);
    EXPECT_THROW(LayoutDocked({.LeftWidth = Max}, 400, 300), EIntOverflow);
    EXPECT_THROW(LayoutDocked({.LeftWidth = 400, .RightWidth = Max - 500}, 400, 300), EIntOverflow);
    EXPECT_THROW((TDockedExtents{.LeftWidth = Max, .RightWidth = 1}.TotalWidth()), EIntOverflow);
    EXPECT_THROW((TDockedExtents{.TopHeight = Max, .BottomHeight = 1}.TotalHeight()), EIntOverflow);
}

TEST(DockResize, EachFormAloneTakesTheWholeExtent) {
    EXPECT_EQ(ResizeDocked({.LeftWidth = 120}, 800, 600), (TDockedSizes{.LeftHeight = 600}));
    EXPECT_EQ(ResizeDocked({.TopHeight = 50}, 800, 600), (TDockedSizes{.TopWidth = 800}));
    EXPECT_EQ(ResizeDocked({.RightWidth = 70}, 800, 600), (TDockedSizes{.RightHeight = 600}));
    EXPECT_EQ(ResizeDocked({.BottomHeight = 80}, 800, 600), (TDockedSizes{.BottomWidth = 800}));
    EXPECT_EQ(ResizeDocked({}, 800, 600), TDockedSizes{});
}

TEST(DockResize, AllFourShareTheClientArea) {
    EXPECT_EQ(ResizeDocked({.LeftWidth = 120, .TopHeight = 50, .RightWidth = 70, .BottomHeight = 80}, 800, 600),
              (TDockedSizes{.TopWidth = 610, .LeftHeight = 520, .RightHeight = 520, .BottomWidth = 800}));
}

TEST(DockResize, TheSidesLeaveRoomForTheBottomFormOnly) {
    EXPECT_EQ(ResizeDocked({.LeftWidth = 120, .BottomHeight = 80}, 800, 600),
              (TDockedSizes{.LeftHeight = 520, .BottomWidth = 800}));
    EXPECT_EQ(ResizeDocked({.TopHeight = 50, .RightWidth = 70}, 800, 600),
              (TDockedSizes{.TopWidth = 730, .RightHeight = 600}));
}

TEST(DockResize, AgreesWithTheLayoutWhenTheDialogHasJustGrown) {
    for (int sides = 0; sides < 16; ++sides) {
        TDockedExtents docked;
        docked.LeftWidth = (sides & 1) != 0 ? std::optional<int32_t>(120) : std::nullopt;
        docked.TopHeight = (sides & 2) != 0 ? std::optional<int32_t>(50) : std::nullopt;
        docked.RightWidth = (sides & 4) != 0 ? std::optional<int32_t>(70) : std::nullopt;
        docked.BottomHeight = (sides & 8) != 0 ? std::optional<int32_t>(80) : std::nullopt;
        const TDockLayout layout = LayoutDocked(docked, 400, 300);
        const TDockedSizes sizes = ResizeDocked(docked, 400 + docked.TotalWidth(), 300 + docked.TotalHeight());
        EXPECT_EQ(sizes.LeftHeight, docked.LeftWidth ? layout.SideHeight : 0) << sides;
        EXPECT_EQ(sizes.RightHeight, docked.RightWidth ? layout.SideHeight : 0) << sides;
        EXPECT_EQ(sizes.TopWidth, docked.TopHeight ? layout.TopWidth : 0) << sides;
        EXPECT_EQ(sizes.BottomWidth, docked.BottomHeight ? layout.BottomWidth : 0) << sides;
    }
}

TEST(DockResize, OverflowIsRaised) {
    EXPECT_THROW(ResizeDocked({.LeftWidth = Max, .TopHeight = 1, .RightWidth = Max}, 5, 5), EIntOverflow);
    EXPECT_THROW(ResizeDocked({.LeftWidth = 1, .BottomHeight = Min}, 5, 5), EIntOverflow);
}

// --- Room for what stands beside the controls

TEST(DockRoom, CountsTheOtherExtentOfTheFrame) {
    const TDlgFrame frame{.Width = 3, .Height = 7};
    EXPECT_EQ(RoomAtLeft(120, frame), 127);
    EXPECT_EQ(RoomAtTop(50, frame), 53);
    EXPECT_THROW(RoomAtLeft(Max, frame), EIntOverflow);
    EXPECT_THROW(RoomAtTop(Max, frame), EIntOverflow);
}

} // namespace
} // namespace kx
