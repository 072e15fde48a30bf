// SPDX-License-Identifier: MIT
// Moving, sizing and selecting on the form by dragging, in all its ways.

#include "WindowFixture.h"

#include "designer/Arrange.h"

namespace kx::test {
namespace {

using designer::TOverlayItem;

class SurfaceDrag : public TDesignerWindowTest {
protected:
    SurfaceDrag() {
        Open();
        Window->Command("ShowGuides"); // off
    }
    /// Presses the button at a point and moves on, without letting go.
    void StartDrag(TPoint from, int dx, int dy) {
        FAt = {from.X + dx, from.Y + dy};
        PressAt(from);
        MoveMouse({from.X + dx / 2, from.Y + dy / 2});
        MoveMouse(FAt);
        Settle();
    }
    void EndDrag() {
        ReleaseAt(FAt);
        Settle();
    }
    void DragWith(WORD held, TPoint from, int dx, int dy) {
        keybd_event(static_cast<BYTE>(held), 0, 0, 0);
        DragFrom(from, dx, dy);
        keybd_event(static_cast<BYTE>(held), 0, KEYEVENTF_KEYUP, 0);
        Settle();
    }
    /// A point beside the middle: what is pressed twice at one point is a double click.
    TPoint Beside(const std::string& name, int dx) const { return {At(name).X + dx, At(name).Y}; }
    TPoint IconPlace(const std::string& name) const { return designer::IconPlace(The<TComponent>(name)); }
    std::vector<TRect> MarksOf(TOverlayItem::TKind kind) const {
        std::vector<TRect> marks;
        for (const TOverlayItem& item : Surface().Overlay().Items()) {
            if (item.Kind == kind) {
                marks.push_back(item.Bounds);
            }
        }
        return marks;
    }

private:
    TPoint FAt{0, 0};
};

TEST_F(SurfaceDrag, EachHandleMovesItsEdges) {
    const TRect before = The("NameEdit").BoundsRect(); // (80, 12) to (201, 33)
    struct THandle {
        int X, Y; // 0: the left or upper edge, 1: the middle, 2: the other
    };
    for (const THandle& handle : {THandle{0, 0}, {1, 0}, {2, 0}, {2, 1}, {2, 2}, {1, 2}, {0, 2}, {0, 1}}) {
        Designer().SelectOne(The("NameEdit"));
        Settle();
        const TRect r = Surface().PlaceOf(The("NameEdit"));
        const TPoint at = Surface().ClientToScreen(
            {r.Left + (r.Right - r.Left) * handle.X / 2, r.Top + (r.Bottom - r.Top) * handle.Y / 2});
        DragFrom(at, 24, 13);
        TRect expected = before;
        (handle.X == 0 ? expected.Left : expected.Right) += handle.X == 1 ? 0 : handle.X == 0 ? 24 : 23; // to the grid
        (handle.Y == 0 ? expected.Top : expected.Bottom) += handle.Y == 1 ? 0 : handle.Y == 0 ? 12 : 15;
        EXPECT_EQ(The("NameEdit").BoundsRect(), expected) << handle.X << ", " << handle.Y;
        EXPECT_EQ(Designer().Steps().UndoText(), "Size");
        Designer().Undo();
        EXPECT_EQ(Text(), SampleForm);
    }
}

TEST_F(SurfaceDrag, AnEdgeDoesNotPassTheOneOnTheOtherSide) {
    ClickOn(At("NameEdit"));
    DragFrom(Corner("NameEdit", false, false), 200, 100);
    EXPECT_EQ(The("NameEdit").BoundsRect(), (TRect{200, 32, 201, 33}));
    Designer().Undo();
    DragFrom(Corner("NameEdit", true, true), -180, -60);
    EXPECT_EQ(The("NameEdit").BoundsRect(), (TRect{80, 12, 81, 13}));
}

TEST_F(SurfaceDrag, AMoveOfThreePixelsIsAClick) {
    Surface().SetGrid({{8, 8}, true, false}); // which would hide a smaller one
    DragFrom(At("OkButton"), 3, 3);
    EXPECT_EQ(Text(), SampleForm);
    EXPECT_FALSE(Designer().CanUndo());
    DragFrom(Beside("OkButton", 12), 0, 8);
    EXPECT_EQ(The("OkButton").Top(), 24) << "one way is enough";
    DragFrom(Beside("OkButton", -12), 4, 0);
    EXPECT_EQ(The("OkButton").Left(), 12);
}

TEST_F(SurfaceDrag, AltDoesNotSnap) {
    const TPoint from = At("OkButton");
    PressAt(from);
    keybd_event(VK_MENU, 0, 0, 0);
    MoveMouse({from.X + 10, from.Y + 5});
    MoveMouse({from.X + 21, from.Y + 10});
    ReleaseAt({from.X + 21, from.Y + 10});
    Settle();
    keybd_event(VK_MENU, 0, KEYEVENTF_KEYUP, 0);
    Settle();
    EXPECT_EQ(The("OkButton").Left(), 29);
    EXPECT_EQ(The("OkButton").Top(), 26);
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetCurrentThreadId(), &info);
    EXPECT_EQ(info.flags & GUI_INMENUMODE, 0U) << "the key is the drag's, and no way into the menu";
    Press(VK_RIGHT, {VK_CONTROL});
    EXPECT_EQ(The("OkButton").Left(), 30) << "nor are the next ones the menu's";
}

TEST_F(SurfaceDrag, AnotherButtonTakesTheDragBack) {
    StartDrag(At("OkButton"), 24, 16);
    ASSERT_EQ(The("OkButton").Left(), 32);
    bool hasMenu = false;
    Surface().SetOnMenu([&](const TPoint&) { hasMenu = true; });
    mouse_event(MOUSEEVENTF_RIGHTDOWN, 0, 0, 0, 0);
    Settle();
    EXPECT_EQ(The("OkButton").Left(), 8);
    mouse_event(MOUSEEVENTF_RIGHTUP, 0, 0, 0, 0);
    EndDrag();
    EXPECT_EQ(Text(), SampleForm);
    EXPECT_FALSE(Designer().CanUndo());
    EXPECT_TRUE(hasMenu);
}

TEST_F(SurfaceDrag, WhoeverTakesTheMouseTakesTheDragBack) {
    StartDrag(At("OkButton"), 24, 16);
    ASSERT_EQ(The("OkButton").Left(), 32);
    ReleaseCapture();
    EXPECT_EQ(The("OkButton").Left(), 8);
    EndDrag();
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(SurfaceDrag, NothingIsRecordedAndNoCopyIsMadeMeanwhile) {
    The("OkButton").SetCaption("before");
    Designer().Record("Caption");
    StartDrag(At("OkButton"), 24, 16);
    The("NameEdit").SetLeft(90);
    EXPECT_FALSE(Designer().Record("Elsewhere"));
    EXPECT_TRUE(Designer().IsBusy());
    EndDrag();
    EXPECT_FALSE(Designer().IsBusy());
    EXPECT_EQ(Designer().Steps().Position(), 2U);
    EXPECT_EQ(Designer().Steps().UndoText(), "Move");
    StartDrag(At("OkButton"), 24, 16);
    Designer().Replace(SampleForm, "Text"); // the form that was dragged on has gone
    EXPECT_FALSE(Designer().IsBusy());
    EndDrag();
    EXPECT_EQ(Text(), SampleForm);
    EXPECT_EQ(Designer().Steps().UndoText(), "Text");
}

TEST_F(SurfaceDrag, WhatIsInsideAMovedControlMovesAlongOnce) {
    Designer().Select({&The("Box"), &The("OkButton")});
    Settle();
    DragFrom(OnForm(180, 130), 16, 8); // on the box, beside the button
    EXPECT_EQ(The("Box").Left(), 32);
    EXPECT_EQ(The("Box").Top(), 56);
    EXPECT_EQ(The("OkButton").Left(), 8);
    Press(VK_RIGHT, {VK_CONTROL});
    EXPECT_EQ(The("Box").Left(), 33);
    EXPECT_EQ(The("OkButton").Left(), 8);
}

TEST_F(SurfaceDrag, SeveralControlsMoveTogetherAndAlignedOnesStay) {
    The("Box").SetAlign(alBottom);
    Designer().Record("Align");
    Designer().Select({&The("NameEdit"), &The("NameLabel"), &The("Box")});
    const TRect box = The("Box").BoundsRect();
    DragFrom(At("NameEdit"), 16, 12);
    EXPECT_EQ(The("NameEdit").Left(), 96);
    EXPECT_EQ(The("NameEdit").Top(), 24);
    EXPECT_EQ(The("NameLabel").Left(), 32);
    EXPECT_EQ(The("NameLabel").Top(), 28);
    EXPECT_EQ(The("Box").BoundsRect(), box);
    EXPECT_EQ(Designer().SelectedComponents().size(), 3U) << "they stay selected";
}

TEST_F(SurfaceDrag, IconsMoveAndComeBack) {
    Designer().CreateComponent(TPopupMenu::StaticClass(), &Designer().Form(), {240, 160, 240, 160});
    const std::string before = Text();
    Settle();
    DragFrom(At("PopupMenu1"), -16, 24);
    EXPECT_EQ(IconPlace("PopupMenu1"), (TPoint{224, 184}));
    EXPECT_EQ(Designer().Steps().UndoText(), "Move");
    Press(VK_LEFT, {VK_CONTROL});
    Press(VK_DOWN, {VK_CONTROL});
    EXPECT_EQ(IconPlace("PopupMenu1"), (TPoint{223, 185}));
    Designer().Undo();
    Designer().Undo();
    Designer().Undo();
    EXPECT_EQ(Text(), before);
    StartDrag(Beside("PopupMenu1", 8), -16, 24);
    ASSERT_EQ(IconPlace("PopupMenu1"), (TPoint{224, 184}));
    Press(VK_ESCAPE);
    EndDrag();
    EXPECT_EQ(IconPlace("PopupMenu1"), (TPoint{240, 160}));
    EXPECT_EQ(Text(), before);
}

TEST_F(SurfaceDrag, TheFormItselfIsNotMoved) {
    const TRect place = Designer().Form().BoundsRect();
    Designer().Select({&Designer().Form(), &The("NameEdit")});
    DragFrom(At("NameEdit"), 16, 12);
    EXPECT_EQ(Designer().Form().BoundsRect(), place);
    EXPECT_EQ(The("NameEdit").Left(), 96);
}

TEST_F(SurfaceDrag, AnotherFormTakesTheDragBack) {
    StartDrag(At("OkButton"), 24, 16);
    ASSERT_EQ(The("OkButton").Left(), 32);
    ASSERT_TRUE(Window->OpenPath(Folder.AddFile("Other.dfm", "object Other: TOther\nend\n")));
    EndDrag();
    EXPECT_FALSE(Designer().CanUndo());
    ASSERT_TRUE(Window->OpenPath(Path));
    EXPECT_EQ(The("OkButton").Left(), 8);
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(SurfaceDrag, ABandOnAFormThatGoesSelectsNothing) {
    StartDrag(OnForm(300, 230), -40, -30);
    Designer().Replace(SampleForm, "Text");
    EndDrag();
    EXPECT_THAT(Designer().SelectedComponents(), ElementsAre(&Designer().Form()));
    EXPECT_EQ(Text(), SampleForm);
}

// --- Guide lines

TEST_F(SurfaceDrag, GuideLinesShowAlongWhichEdgesAControlLies) {
    Window->Command("ShowGuides");
    TRect r = The("NameEdit").BoundsRect();
    StartDrag(At("NameEdit"), 80, 7); // its top comes near the label's, at 16, and its lower edge to 40
    EXPECT_EQ(The("NameEdit").Top(), 16);
    EXPECT_THAT(MarksOf(TOverlayItem::Guide), Contains(TRect{0, 16, Designer().Form().ClientWidth(), 17}));
    EXPECT_THAT(MarksOf(TOverlayItem::Handle), IsEmpty()) << "they would be in the way";
    EndDrag();
    EXPECT_THAT(MarksOf(TOverlayItem::Guide), IsEmpty());
    EXPECT_EQ(MarksOf(TOverlayItem::Handle).size(), 8U);
    Designer().Undo();
    r = The("OkButton").BoundsRect();
    // Inside the box lines are where its controls are.
    Designer().CreateComponent(TButton::StaticClass(), &The("Box"), {100, 60, 175, 85});
    StartDrag(At("Button1"), -90, 2);
    EXPECT_EQ(The("Button1").Left(), r.Left);
    const TPoint box = {The("Box").ClientOrigin().X - Designer().Form().ClientOrigin().X,
                        The("Box").ClientOrigin().Y - Designer().Form().ClientOrigin().Y};
    const int x = box.X + r.Left;
    EXPECT_THAT(MarksOf(TOverlayItem::Guide), Contains(TRect{x, 0, x + 1, Designer().Form().ClientHeight()}));
    EndDrag();
    StartDrag(Corner("Button1", true, true), 30, 8);
    EndDrag();
    EXPECT_THAT(MarksOf(TOverlayItem::Guide), IsEmpty());
}

TEST_F(SurfaceDrag, AnEdgeThatIsSizedMeetsTheOnesOfItsNeighbours) {
    Window->Command("ShowGuides");
    Designer().CreateComponent(TButton::StaticClass(), &The("Box"), {100, 60, 175, 85});
    Designer().SelectOne(The("OkButton"));
    Settle();
    StartDrag(Corner("OkButton", true, false), 15, 0); // from 83 to 98, near 100
    EXPECT_EQ(The("OkButton").Width(), 92);
    const int x = The("Box").ClientOrigin().X - Designer().Form().ClientOrigin().X + 100;
    EXPECT_THAT(MarksOf(TOverlayItem::Guide), Contains(TRect{x, 0, x + 1, Designer().Form().ClientHeight()}));
    EndDrag();
}

TEST_F(SurfaceDrag, HiddenNeighboursAndTheMovedOnesAttractNothing) {
    Window->Command("ShowGuides");
    The("NameLabel").SetVisible(false);
    Designer().Record("Hide");
    DragFrom(At("NameEdit"), 80, 6); // 18 is 2 from the label's top, and nearest to 16 of the grid, as 24 is
    EXPECT_EQ(The("NameEdit").Top(), 16);
    Designer().Undo();
    DragFrom(Beside("NameEdit", 20), 82, 0);
    EXPECT_EQ(The("NameEdit").Left(), 160) << "the grid";
}

TEST_F(SurfaceDrag, AControlDoesNotStickToItsOwnPlace) {
    Window->Command("ShowGuides");
    DragFrom(At("NameEdit"), 4, 0);
    EXPECT_EQ(The("NameEdit").Left(), 88);
}

// --- Rubber bands

TEST_F(SurfaceDrag, ABandEndsWhereTheButtonIsLetGo) {
    const auto send = [this](UINT message, WPARAM keys, TPoint inForm) {
        const TPoint at = Surface().ScreenToClient(OnForm(inForm.X, inForm.Y));
        SendMessageA(Surface().WindowHandle(), message, keys, MAKELPARAM(at.X, at.Y));
    };
    send(WM_LBUTTONDOWN, MK_LBUTTON, {2, 2});
    send(WM_LBUTTONUP, 0, {60, 34}); // no move was told
    EXPECT_THAT(Designer().SelectedComponents(), ElementsAre(&The("NameLabel")));
}

TEST_F(SurfaceDrag, AClickWithCtrlIsNoBand) {
    ClickOn(At("NameEdit"));
    keybd_event(VK_CONTROL, 0, 0, 0);
    ClickOn(At("Gauge"));
    keybd_event(VK_CONTROL, 0, KEYEVENTF_KEYUP, 0);
    Settle();
    EXPECT_THAT(Designer().SelectedComponents(), ElementsAre(&The("NameEdit")));
}

TEST_F(SurfaceDrag, CtrlDrawsABandInsideAContainer) {
    DragWith(VK_CONTROL, OnForm(180, 130), -130, -60);
    EXPECT_THAT(Designer().SelectedComponents(), ElementsAre(&The("OkButton")));
    EXPECT_EQ(Text(), SampleForm) << "nothing has moved";
    DragWith(VK_CONTROL, OnForm(190, 120), -30, -20);
    EXPECT_THAT(Designer().SelectedComponents(), ElementsAre(&The("Box"))) << "an empty one selects the container";
}

TEST_F(SurfaceDrag, ABandSelectsWhatItTouchesInItsOwnContainer) {
    DragFrom(OnForm(220, 170), -100, -30); // ends in the box, of whose controls it takes none
    EXPECT_THAT(Designer().SelectedComponents(), ElementsAre(&The("Box")));
    DragFrom(OnForm(2, 36), 60, 6); // between them all
    EXPECT_THAT(Designer().SelectedComponents(), ElementsAre(&Designer().Form()));
    DragFrom(OnForm(2, 2), 60, 8); // above them
    EXPECT_THAT(Designer().SelectedComponents(), ElementsAre(&Designer().Form()));
    DragFrom(OnForm(206, 2), 10, 40); // beside them
    EXPECT_THAT(Designer().SelectedComponents(), ElementsAre(&Designer().Form()));
    DragFrom(OnForm(2, 2), 3, 40); // a narrow one is still a band, and no click
    EXPECT_THAT(Designer().SelectedComponents(), ElementsAre(&Designer().Form()));
    DragFrom(OnForm(30, 2), 2, 40);
    EXPECT_THAT(Designer().SelectedComponents(), ElementsAre(&The("NameLabel")));
}

TEST_F(SurfaceDrag, ABandTakesIconsToo) {
    Designer().CreateComponent(TPopupMenu::StaticClass(), &Designer().Form(), {240, 160, 240, 160});
    Settle();
    DragFrom(OnForm(225, 230), 60, -60);
    EXPECT_THAT(Designer().SelectedComponents(), ElementsAre(&The<TComponent>("PopupMenu1")));
}

TEST_F(SurfaceDrag, ShiftAddsTheBandToTheSelection) {
    ClickOn(At("Gauge"));
    DragWith(VK_SHIFT, OnForm(2, 2), 60, 30);
    EXPECT_THAT(Designer().SelectedComponents(), UnorderedElementsAre(&The("Gauge"), &The("NameLabel")));
    DragFrom(OnForm(2, 2), 60, 30);
    EXPECT_THAT(Designer().SelectedComponents(), ElementsAre(&The("NameLabel")));
}

} // namespace
} // namespace kx::test
