// SPDX-License-Identifier: MIT
// Forms are designed by mouse and keyboard.

#include "WindowFixture.h"

namespace kx::test {
namespace {

class DesignSurface : public TDesignerWindowTest {
protected:
    DesignSurface() { Open(); }
};

TEST_F(DesignSurface, ShowsTheFormWithWhatIsOnIt) {
    EXPECT_TRUE(IsWindowVisible(Designer().Form().WindowHandle()));
    EXPECT_TRUE(IsWindowVisible(The<TWinControl>("OkButton").WindowHandle()));
    EXPECT_EQ(PrimaryName(), Designer().Form().Name());
    EXPECT_EQ(Text(), SampleForm) << "showing it changes nothing";
    Screenshot("designer", Window->Handle());
}

TEST_F(DesignSurface, AClickSelectsWithoutPressingAnything) {
    bool clicked = false;
    The<TButton>("OkButton").SetOnClick([&](TObject*) { clicked = true; });
    ClickOn(At("OkButton"));
    EXPECT_EQ(PrimaryName(), "OkButton");
    EXPECT_FALSE(clicked);
    EXPECT_FALSE(The<TWinControl>("OkButton").Focused());
    EXPECT_TRUE(Surface().Focused());
    ClickOn(At("NameLabel"));
    EXPECT_EQ(PrimaryName(), "NameLabel");
    ClickOn(OnForm(300, 200));
    EXPECT_EQ(Designer().Primary(), &Designer().Form());
    EXPECT_FALSE(Designer().CanUndo());
}

TEST_F(DesignSurface, ShiftAddsToTheSelectionAndTakesAway) {
    ClickOn(At("NameLabel"));
    const auto shiftClick = [this](const char* name) {
        keybd_event(VK_SHIFT, 0, 0, 0);
        ClickAt(At(name));
        keybd_event(VK_SHIFT, 0, KEYEVENTF_KEYUP, 0);
        Settle();
    };
    shiftClick("NameEdit");
    shiftClick("OkButton");
    shiftClick("NameLabel");
    EXPECT_THAT(Designer().SelectedComponents(), ElementsAre(&The("NameEdit"), &The("OkButton")));
}

TEST_F(DesignSurface, DraggingMovesAndIsOneStep) {
    Window->Command("ShowGuides");
    DragFrom(At("OkButton"), 21, 10);
    EXPECT_EQ(The("OkButton").Left(), 32) << "on the grid";
    EXPECT_EQ(The("OkButton").Top(), 24);
    EXPECT_EQ(PrimaryName(), "OkButton");
    Press('Z', {VK_CONTROL});
    EXPECT_EQ(Text(), SampleForm);
    EXPECT_FALSE(Designer().CanUndo());
    Press('Y', {VK_CONTROL});
    EXPECT_EQ(The("OkButton").Left(), 32);
}

TEST_F(DesignSurface, HandlesSize) {
    Window->Command("ShowGuides");
    ClickOn(At("NameEdit"));
    DragFrom(Corner("NameEdit", true, true), 30, 9);
    EXPECT_EQ(The("NameEdit").Width(), 152) << "the right edge is at 232";
    EXPECT_EQ(The("NameEdit").Height(), 28);
    EXPECT_EQ(The("NameEdit").Left(), 80);
}

TEST_F(DesignSurface, EscapeWhileDraggingPutsEverythingBack) {
    const TPoint from = At("OkButton");
    PressAt(from);
    MoveMouse({from.X + 10, from.Y + 10});
    MoveMouse({from.X + 40, from.Y + 10});
    ASSERT_TRUE(Until([&] { return The("OkButton").Left() != 8; }));
    Press(VK_ESCAPE);
    EXPECT_EQ(The("OkButton").Left(), 8);
    ReleaseAt({from.X + 40, from.Y + 10});
    Settle();
    EXPECT_EQ(Text(), SampleForm);
    EXPECT_FALSE(Designer().CanUndo());
}

TEST_F(DesignSurface, ARubberBandSelectsWhatItMeets) {
    DragFrom(OnForm(2, 2), 210, 34);
    EXPECT_THAT(Designer().SelectedComponents(), UnorderedElementsAre(&The("NameLabel"), &The("NameEdit")));
}

TEST_F(DesignSurface, TheFormIsSizedByItsHandles) {
    const TRect r = Designer().Form().BoundsRect();
    const TPoint corner = Surface().ClientToScreen({r.Right + 4, r.Bottom + 4});
    DragFrom(corner, 40, 24);
    EXPECT_GT(Designer().Form().ClientWidth(), 350);
    EXPECT_GT(Designer().Form().ClientHeight(), 255);
    EXPECT_TRUE(Designer().CanUndo());
    Press('Z', {VK_CONTROL});
    EXPECT_EQ(Designer().Form().ClientWidth(), 320);
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(DesignSurface, KeysMoveSizeAndSelect) {
    ClickOn(At("NameEdit"));
    Press(VK_RIGHT, {VK_CONTROL});
    Press(VK_DOWN, {VK_CONTROL});
    EXPECT_EQ(The("NameEdit").BoundsRect(), (TRect{81, 13, 202, 34}));
    Press(VK_RIGHT, {VK_SHIFT});
    Press(VK_UP, {VK_SHIFT});
    EXPECT_EQ(The("NameEdit").BoundsRect(), (TRect{81, 13, 203, 33}));
    Press(VK_LEFT);
    EXPECT_EQ(PrimaryName(), "NameLabel");
    ClickOn(At("OkButton"));
    Press(VK_ESCAPE);
    EXPECT_EQ(PrimaryName(), "Box");
    Press(VK_ESCAPE);
    EXPECT_EQ(Designer().Primary(), &Designer().Form());
    Press(VK_TAB);
    EXPECT_EQ(PrimaryName(), "NameLabel");
    Press(VK_TAB, {VK_SHIFT});
    EXPECT_EQ(Designer().Primary(), &Designer().Form());
}

TEST_F(DesignSurface, DeleteCutCopyAndPaste) {
    ClickOn(At("OkButton"));
    Press('C', {VK_CONTROL});
    Press(VK_DELETE);
    EXPECT_FALSE(Has("OkButton"));
    EXPECT_EQ(PrimaryName(), "Box");
    Press('V', {VK_CONTROL});
    EXPECT_EQ(The<TComponent>("OkButton").GetParentComponent(), &The("Box"));
    Press('V', {VK_CONTROL});
    EXPECT_TRUE(Has("Button1"));
}

TEST_F(DesignSurface, DisabledAndInvisibleControlsAreReached) {
    The("NameEdit").SetEnabled(false);
    The("OkButton").SetVisible(false);
    Designer().Record("State");
    Settle();
    ClickOn(At("NameEdit"));
    EXPECT_EQ(PrimaryName(), "NameEdit");
    ClickOn(At("OkButton"));
    EXPECT_EQ(PrimaryName(), "OkButton");
    EXPECT_THAT(Surface().Overlay().Items(),
                Contains(testing::Field(&designer::TOverlayItem::Kind, designer::TOverlayItem::Ghost)));
}

TEST_F(DesignSurface, LockedControlsStay) {
    Window->Command("LockControls");
    DragFrom(At("OkButton"), 20, 10);
    Press(VK_RIGHT, {VK_CONTROL});
    EXPECT_EQ(PrimaryName(), "OkButton");
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(DesignSurface, TabOrderIsGivenByClicks) {
    Window->Command("ShowTabOrder");
    Settle();
    ClickOn(At("Box"));
    ClickOn(At("NameEdit"));
    Press(VK_ESCAPE);
    EXPECT_FALSE(Surface().ShowsTabOrder());
    EXPECT_EQ(The<TWinControl>("Box").TabOrder(), 0);
    EXPECT_EQ(The<TWinControl>("NameEdit").TabOrder(), 1);
}

TEST_F(DesignSurface, AComponentOfThePaletteIsDropped) {
    TRect r = Window->ComponentPalette().Buttons().ButtonRect(&TCheckBox::StaticClass());
    ClickOn(Window->ComponentPalette().Buttons().ClientToScreen({r.Left + 15, r.Top + 15}));
    EXPECT_EQ(Surface().Tool(), &TCheckBox::StaticClass());
    ClickOn(OnForm(40, 120)); // inside the box, whose corner is at (16, 48)
    EXPECT_EQ(Surface().Tool(), nullptr);
    ASSERT_TRUE(Has("CheckBox1"));
    EXPECT_EQ(The("CheckBox1").Parent(), &The("Box"));
    EXPECT_EQ(The("CheckBox1").Left(), 24);
    EXPECT_EQ(The("CheckBox1").Top(), 72);
    EXPECT_EQ(PrimaryName(), "CheckBox1");
    r = Window->ComponentPalette().Buttons().ButtonRect(&TPanel::StaticClass());
    ClickOn(Window->ComponentPalette().Buttons().ClientToScreen({r.Left + 15, r.Top + 15}));
    DragFrom(OnForm(16, 160), 100, 50);
    EXPECT_EQ(The("Panel1").BoundsRect(), (TRect{16, 160, 120, 208})) << "as large as it was drawn";
}

TEST_F(DesignSurface, AComponentIsDraggedFromThePalette) {
    keybd_event(VK_SHIFT, 0, 0, 0);
    ClickAt(At("NameLabel")); // which does not keep the tool that is dropped later
    keybd_event(VK_SHIFT, 0, KEYEVENTF_KEYUP, 0);
    Settle();
    const TRect r = Window->ComponentPalette().Buttons().ButtonRect(&TCheckBox::StaticClass());
    const TPoint from = Window->ComponentPalette().Buttons().ClientToScreen({r.Left + 15, r.Top + 15});
    const TPoint to = OnForm(40, 120);
    DragFrom(from, to.X - from.X, to.Y - from.Y);
    ASSERT_TRUE(Has("CheckBox1"));
    EXPECT_EQ(The("CheckBox1").Parent(), &The("Box"));
    EXPECT_EQ(The("CheckBox1").Left(), 24);
    EXPECT_EQ(The("CheckBox1").Top(), 72);
    EXPECT_EQ(Surface().Tool(), nullptr);
    EXPECT_EQ(Window->ComponentPalette().Buttons().Chosen(), nullptr);
}

TEST_F(DesignSurface, HandlesOfTheFormGoWithItsSelection) {
    const TRect r = Designer().Form().BoundsRect();
    const auto pixel = [&] {
        RedrawWindow(Surface().WindowHandle(), nullptr, nullptr, RDW_UPDATENOW);
        const HDC dc = GetDC(Surface().WindowHandle());
        const COLORREF color = GetPixel(dc, r.Right + 4, r.Bottom + 4);
        ReleaseDC(Surface().WindowHandle(), dc);
        return color;
    };
    EXPECT_EQ(pixel(), RGB(255, 255, 255));
    ClickOn(At("OkButton"));
    EXPECT_EQ(pixel(), GetSysColor(COLOR_APPWORKSPACE));
}

TEST_F(DesignSurface, WhatIsUnderTheFrameOfTheFormIsNotReachedThere) {
    The("NameEdit").SetTop(-12);
    Designer().Record("Move");
    const TRect edit = Surface().PlaceOf(The("NameEdit"));
    ClickOn(Surface().ClientToScreen({(edit.Left + edit.Right) / 2, edit.Top + 4}));
    EXPECT_EQ(Designer().Primary(), &Designer().Form());
    ClickOn(Surface().ClientToScreen({(edit.Left + edit.Right) / 2 + 20, edit.Bottom - 4}));
    EXPECT_EQ(PrimaryName(), "NameEdit");
}

} // namespace
} // namespace kx::test
