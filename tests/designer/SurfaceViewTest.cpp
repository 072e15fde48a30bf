// SPDX-License-Identifier: MIT
// What the surface shows, and what keys and single clicks do on it.

#include "WindowFixture.h"

#include "tests/ui/WheelLines.h"

#include <algorithm>

namespace kx::test {
namespace {

using designer::TOverlayItem;

class SurfaceView : public TDesignerWindowTest {
protected:
    SurfaceView() { Open(); }

    int CountOf(TOverlayItem::TKind kind) const {
        return static_cast<int>(std::ranges::count(Surface().Overlay().Items(), kind, &TOverlayItem::Kind));
    }
    std::vector<std::string> Badges() const {
        std::vector<std::string> badges;
        for (const TOverlayItem& item : Surface().Overlay().Items()) {
            if (item.Kind == TOverlayItem::Badge) {
                badges.push_back(item.Text);
            }
        }
        return badges;
    }
    SCROLLINFO BarOf(int bar) const {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_ALL;
        GetScrollInfo(Surface().WindowHandle(), bar, &info);
        return info;
    }
    void Scroll(UINT message, int command, int position = 0) const {
        SendMessageA(Surface().WindowHandle(), message, MAKEWPARAM(command, position), 0);
    }
    static void ShiftClick(TPoint screen) {
        keybd_event(VK_SHIFT, 0, 0, 0);
        ClickAt(screen);
        Settle();
        keybd_event(VK_SHIFT, 0, KEYEVENTF_KEYUP, 0);
        Settle();
    }
    void ChooseTool(const TClass& cls) {
        const TRect r = Window->ComponentPalette().Buttons().ButtonRect(&cls);
        ClickOn(Window->ComponentPalette().Buttons().ClientToScreen({r.Left + 15, r.Top + 15}));
        ASSERT_EQ(Surface().Tool(), &cls);
    }
};

// --- A form that is larger than the surface

TEST_F(SurfaceView, ALargeFormIsScrolledByItsBars) {
    TForm& form = Designer().Form();
    EXPECT_EQ(form.Left(), 16);
    EXPECT_EQ(form.Top(), 16);
    form.SetClientSize(1500, 1200);
    Settle();
    EXPECT_EQ(BarOf(SB_VERT).nMax, form.Height() + 31);
    EXPECT_EQ(BarOf(SB_HORZ).nMax, form.Width() + 31);
    EXPECT_EQ(static_cast<int>(BarOf(SB_VERT).nPage), Surface().ClientHeight());
    Scroll(WM_VSCROLL, SB_LINEDOWN);
    EXPECT_EQ(form.Top(), 0);
    EXPECT_EQ(form.Left(), 16);
    Scroll(WM_VSCROLL, SB_PAGEDOWN);
    EXPECT_EQ(form.Top(), -Surface().ClientHeight());
    Scroll(WM_VSCROLL, SB_PAGEUP);
    Scroll(WM_VSCROLL, SB_LINEUP);
    EXPECT_EQ(form.Top(), 16);
    Scroll(WM_VSCROLL, SB_BOTTOM);
    EXPECT_EQ(form.Top() + form.Height() + 16, Surface().ClientHeight());
    Scroll(WM_VSCROLL, SB_LINEDOWN);
    EXPECT_EQ(form.Top() + form.Height() + 16, Surface().ClientHeight()) << "there is no more";
    Scroll(WM_VSCROLL, SB_THUMBTRACK, 100);
    EXPECT_EQ(form.Top(), -84);
    EXPECT_EQ(BarOf(SB_VERT).nPos, 100);
    Scroll(WM_HSCROLL, SB_THUMBTRACK, 200);
    EXPECT_EQ(form.Left(), -184);
    EXPECT_EQ(BarOf(SB_HORZ).nPos, 200);
    Scroll(WM_VSCROLL, SB_TOP);
    EXPECT_EQ(form.Top(), 16);
    Designer().Undo();
    EXPECT_EQ(form.Left(), 16) << "a smaller form is in its corner";
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(SurfaceView, TheWheelScrolls) {
    TForm& form = Designer().Form();
    form.SetClientSize(1500, 1200);
    Surface().SetFocus();
    MoveMouse(At("OkButton"));
    Settle();
    const auto wheel = [](int turns) {
        mouse_event(MOUSEEVENTF_WHEEL, 0, 0, static_cast<DWORD>(turns * WHEEL_DELTA), 0);
        Settle();
    };
    wheel(-1);
    EXPECT_EQ(form.Top(), 16 - 48);
    wheel(-1);
    wheel(1);
    EXPECT_EQ(form.Top(), 16 - 48);
    keybd_event(VK_SHIFT, 0, 0, 0);
    wheel(-1);
    keybd_event(VK_SHIFT, 0, KEYEVENTF_KEYUP, 0);
    Settle();
    EXPECT_EQ(form.Left(), 16 - 48);
    EXPECT_EQ(form.Top(), 16 - 48);
}

TEST_F(SurfaceView, TheWheelScrollsAsManyLinesAsTheUserHasChosen) {
    TForm& form = Designer().Form();
    form.SetClientSize(1500, 1200);
    constexpr int line = 16;
    const auto turn = [&](int delta) {
        SendMessageA(Surface().WindowHandle(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(delta)), 0);
        return (16 - form.Top()) / line;
    };
    {
        const TWheelLines lines(5);
        EXPECT_EQ(turn(-WHEEL_DELTA), 5);
        EXPECT_EQ(turn(-2 * WHEEL_DELTA), 15);
        EXPECT_EQ(turn(WHEEL_DELTA), 10);
        EXPECT_EQ(turn(-WHEEL_DELTA / 6), 10);
        EXPECT_EQ(turn(-WHEEL_DELTA / 6), 11) << "two sixths of five";
        EXPECT_EQ(turn(WHEEL_DELTA / 6), 11) << "another direction starts anew";
        EXPECT_EQ(turn(WHEEL_DELTA / 6), 10);
        EXPECT_EQ(turn(3 * WHEEL_DELTA), 0);
    }
    const TWheelLines lines(WHEEL_PAGESCROLL);
    EXPECT_EQ(turn(-WHEEL_DELTA), Surface().ClientHeight() / line);
    EXPECT_EQ(form.Left(), 16);
}

TEST_F(SurfaceView, AWheelThatTiltsScrollsAcross) {
    TForm& form = Designer().Form();
    form.SetClientSize(3000, 1200);
    const TWheelLines lines(2);
    const auto tilt = [&](HWND window, int delta) {
        const TPoint at = CenterOf(Surface().WindowHandle());
        PostMessageA(window, WM_MOUSEHWHEEL, MAKEWPARAM(0, static_cast<WORD>(delta)), MAKELPARAM(at.X, at.Y));
        Settle();
    };
    tilt(Surface().WindowHandle(), WHEEL_DELTA);
    EXPECT_EQ(form.Left(), 16 - 32);
    tilt(The<TWinControl>("OkButton").Handle(), WHEEL_DELTA);
    EXPECT_EQ(form.Left(), 16 - 64) << "over a control as well";
    tilt(Surface().WindowHandle(), -WHEEL_DELTA);
    EXPECT_EQ(form.Left(), 16 - 32);
    EXPECT_EQ(form.Top(), 16);
    Scroll(WM_HSCROLL, SB_TOP);
    Window->SetWidth(800); // no form is much wider than the screen
    const TWheelLines page(WHEEL_PAGESCROLL);
    tilt(Surface().WindowHandle(), WHEEL_DELTA);
    EXPECT_EQ(form.Left(), 16 - Surface().ClientWidth() / 16 * 16);
}

TEST_F(SurfaceView, AnotherFormBeginsInItsCorner) {
    Designer().Form().SetClientSize(1500, 1200);
    const std::string other = Folder.AddFile("Other.dfm", "object Other: TOther\n  ClientHeight = 1300\n"
                                                          "  ClientWidth = 1400\nend\n");
    Scroll(WM_VSCROLL, SB_BOTTOM);
    Scroll(WM_HSCROLL, SB_BOTTOM);
    ASSERT_TRUE(Window->OpenPath(other));
    EXPECT_EQ(Designer().Form().Left(), 16);
    EXPECT_EQ(Designer().Form().Top(), 16);
}

// --- Marks

TEST_F(SurfaceView, JustTheFormThatIsChosenIsSeen) {
    TForm& first = Designer().Form();
    ASSERT_TRUE(Window->OpenPath(Folder.AddFile("Other.dfm", "object Other: TOther\nend\n")));
    EXPECT_FALSE(IsWindowVisible(first.WindowHandle()));
    EXPECT_TRUE(IsWindowVisible(Designer().Form().WindowHandle()));
    Window->OpenPath(Path);
    EXPECT_TRUE(IsWindowVisible(first.WindowHandle()));
}

TEST_F(SurfaceView, HandlesTellWhatCanBeSized) {
    ClickOn(At("NameEdit"));
    EXPECT_EQ(CountOf(TOverlayItem::Handle), 8);
    EXPECT_EQ(CountOf(TOverlayItem::DimHandle), 0);
    Designer().Select({&The("NameEdit"), &The("OkButton")});
    EXPECT_EQ(CountOf(TOverlayItem::Handle), 0);
    EXPECT_EQ(CountOf(TOverlayItem::DimHandle), 8) << "the corners of both";
    DragFrom(Corner("NameEdit", true, true), 40, 40);
    EXPECT_EQ(The("NameEdit").Width(), 121) << "of several none is sized";
    Designer().SelectOne(The("Box"));
    The("Box").SetAlign(alBottom);
    Designer().Record("Align");
    EXPECT_EQ(CountOf(TOverlayItem::Handle), 0);
    EXPECT_EQ(CountOf(TOverlayItem::DimHandle), 4);
    const TRect box = The("Box").BoundsRect();
    DragFrom(Corner("Box", true, false), 0, -30);
    EXPECT_EQ(The("Box").BoundsRect(), box) << "its parent places it";
}

TEST_F(SurfaceView, ThePointerTellsWhatADragWouldDo) {
    const auto isPointer = [](LPCSTR shape) {
        return Until([=] { return GetCursor() == LoadCursorA(nullptr, shape); });
    };
    ClickOn(At("NameEdit"));
    MoveMouse(Corner("NameEdit", false, false));
    EXPECT_TRUE(isPointer(IDC_SIZENWSE));
    MoveMouse(Corner("NameEdit", true, false));
    EXPECT_TRUE(isPointer(IDC_SIZENESW));
    MoveMouse({At("NameEdit").X, Corner("NameEdit", true, true).Y});
    EXPECT_TRUE(isPointer(IDC_SIZENS));
    MoveMouse({Corner("NameEdit", true, true).X, At("NameEdit").Y});
    EXPECT_TRUE(isPointer(IDC_SIZEWE));
    MoveMouse(At("Gauge"));
    EXPECT_TRUE(isPointer(IDC_ARROW));
    Surface().SetTool(&TButton::StaticClass());
    MoveMouse(At("NameEdit"));
    EXPECT_TRUE(isPointer(IDC_CROSS));
    Surface().SetTool(nullptr);
    The("Box").SetAlign(alBottom);
    Designer().Record("Align");
    Designer().SelectOne(The("Box"));
    MoveMouse(Corner("Box", true, false));
    EXPECT_TRUE(isPointer(IDC_ARROW)) << "its parent sizes it";
}

TEST_F(SurfaceView, LockedControlsHaveDimHandlesThatDoNothing) {
    ClickOn(At("NameEdit"));
    Window->Command("LockControls");
    EXPECT_EQ(CountOf(TOverlayItem::Handle), 0);
    EXPECT_EQ(CountOf(TOverlayItem::DimHandle), 4);
    DragFrom(Corner("NameEdit", true, true), 40, 40);
    ClickOn(At("NameEdit"));
    Press(VK_RIGHT, {VK_SHIFT});
    Designer().SelectOne(Designer().Form());
    const TRect r = Designer().Form().BoundsRect();
    DragFrom(Surface().ClientToScreen({r.Right + 4, r.Bottom + 4}), 40, 24);
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(SurfaceView, JustTheLowerAndTheRightHandleOfTheFormSizeIt) {
    const TRect r = Designer().Form().BoundsRect();
    DragFrom(Surface().ClientToScreen({r.Left - 4, r.Top - 4}), -12, -12);
    DragFrom(Surface().ClientToScreen({r.Left - 4, (r.Top + r.Bottom) / 2}), -12, 0);
    EXPECT_EQ(Text(), SampleForm);
    DragFrom(Surface().ClientToScreen({r.Right + 4, (r.Top + r.Bottom) / 2}), 40, 40);
    EXPECT_NEAR(Designer().Form().ClientWidth(), 360, 8);
    EXPECT_EQ(Designer().Form().ClientHeight(), 240);
}

TEST_F(SurfaceView, TheHandlesOfTheFormLookAsTheyAre) {
    const TRect r = Designer().Form().BoundsRect();
    RedrawWindow(Surface().WindowHandle(), nullptr, nullptr, RDW_UPDATENOW);
    const HDC dc = GetDC(Surface().WindowHandle());
    EXPECT_EQ(GetPixel(dc, r.Left - 4, r.Top - 4), GetSysColor(COLOR_BTNSHADOW));
    EXPECT_EQ(GetPixel(dc, r.Right + 4, r.Bottom + 4), RGB(255, 255, 255));
    ReleaseDC(Surface().WindowHandle(), dc);
}

TEST_F(SurfaceView, AFormThatIsMadeSmallerStaysUnderTheMouse) {
    TForm& form = Designer().Form();
    form.SetClientSize(300, 1200);
    Scroll(WM_VSCROLL, SB_BOTTOM);
    const int top = form.Top();
    const int height = form.Height();
    const TRect r = form.BoundsRect();
    const TPoint from = Surface().ClientToScreen({(r.Left + r.Right) / 2, r.Bottom + 4});
    PressAt(from);
    for (int i = 1; i <= 6; ++i) {
        MoveMouse({from.X, from.Y - 20 * i});
        Settle();
    }
    EXPECT_EQ(form.Top(), top);
    EXPECT_NEAR(form.Height(), height - 120, 8);
    ReleaseAt({from.X, from.Y - 120});
    Settle();
    EXPECT_GT(form.Top(), top) << "there is less to scroll";
}

TEST_F(SurfaceView, TheFrameOfTheFormIsTheForm) {
    ClickOn(At("OkButton"));
    const TRect r = Designer().Form().BoundsRect();
    const TPoint caption = Surface().ClientToScreen({(r.Left + r.Right) / 2, r.Top + 12});
    ClickOn(caption);
    EXPECT_EQ(Designer().Primary(), &Designer().Form());
    DragFrom({caption.X + 20, caption.Y}, 40, 30);
    EXPECT_EQ(Designer().Form().BoundsRect(), r) << "the form itself stays";
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(SurfaceView, AFrameWithoutAFormInItMarksWhatCannotBeSeen) {
    Designer().CreateComponent(TImage::StaticClass(), &Designer().Form(), {240, 160, 300, 220});
    EXPECT_EQ(CountOf(TOverlayItem::Empty), 1);
    EXPECT_EQ(CountOf(TOverlayItem::Ghost), 0);
}

TEST_F(SurfaceView, TheGridIsSeenAndCanBeHidden) {
    const COLORREF dots = GetSysColor(COLOR_BTNSHADOW);
    const COLORREF ground = GetSysColor(COLOR_BTNFACE);
    EXPECT_EQ(PixelOfForm(0, 200), dots);
    EXPECT_EQ(PixelOfForm(8, 208), dots);
    EXPECT_EQ(PixelOfForm(4, 204), ground);
    Window->Command("ShowGrid");
    EXPECT_EQ(PixelOfForm(8, 208), ground);
    Designer().Replace(Text(), "Text"); // another form object
    EXPECT_EQ(PixelOfForm(8, 208), ground);
    Window->Command("ShowGrid");
    EXPECT_EQ(PixelOfForm(8, 208), dots);
}

TEST_F(SurfaceView, NamesOfHiddenControlsAndIconsAreSeen) {
    The("OkButton").SetVisible(false);
    Designer().CreateComponent(TPopupMenu::StaticClass(), &Designer().Form(), {240, 160, 240, 160});
    TComponent* const menu =
        Designer().CreateComponent(TMainMenu::StaticClass(), &Designer().Form(), {240, 20, 240, 20});
    Designer().CreateComponent(TMenuItem::StaticClass(), menu, {});
    Settle();
    EXPECT_EQ(CountOf(TOverlayItem::Icon) + CountOf(TOverlayItem::SelectedIcon), 2) << "items are no icons";
    const unique_hrgn region(CreateRectRgn(0, 0, 0, 0));
    GetWindowRgn(Surface().Overlay().WindowHandle(), region.get());
    for (const TOverlayItem& item : Surface().Overlay().Items()) {
        if (item.Kind == TOverlayItem::Ghost) {
            const TRect& r = item.Bounds;
            EXPECT_TRUE(PtInRegion(region.get(), r.Left + 10, r.Top + 7));
            EXPECT_TRUE(PtInRegion(region.get(), r.Right - 1, r.Bottom - 5));
            EXPECT_TRUE(PtInRegion(region.get(), r.Left, r.Bottom - 5));
            EXPECT_TRUE(PtInRegion(region.get(), r.Left + 20, r.Bottom - 1));
            EXPECT_FALSE(PtInRegion(region.get(), item.Bounds.Left + 10, item.Bounds.Bottom - 3)) << "just a frame";
        } else if (item.Kind == TOverlayItem::Icon) {
            const TRect name = designer::IconNameRect(item);
            EXPECT_TRUE(PtInRegion(region.get(), (name.Left + name.Right) / 2, (name.Top + name.Bottom) / 2));
        }
    }
}

// --- Clicks

TEST_F(SurfaceView, TheRightButtonSelectsBeforeItsMenuComes) {
    int menus = 0;
    Surface().SetOnMenu([&](const TPoint&) { ++menus; });
    ClickAt(At("NameEdit"), mbRight);
    Settle();
    EXPECT_EQ(PrimaryName(), "NameEdit");
    EXPECT_EQ(menus, 1);
    Designer().Select({&The("OkButton"), &The("NameEdit")});
    ClickAt(At("NameEdit"), mbRight);
    Settle();
    EXPECT_EQ(Designer().SelectedComponents().size(), 2U) << "it is about all of them";
    const TRect r = Designer().Form().BoundsRect();
    ClickAt(Surface().ClientToScreen({(r.Left + r.Right) / 2, r.Top + 12}), mbRight);
    Settle();
    EXPECT_EQ(Designer().Primary(), &Designer().Form()) << "its frame";
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(SurfaceView, AnIconIsReachedByItsNameToo) {
    Designer().CreateComponent(TPopupMenu::StaticClass(), &Designer().Form(), {240, 160, 240, 160});
    ClickOn(OnForm(300, 20));
    ASSERT_EQ(Designer().Primary(), &Designer().Form());
    EXPECT_EQ(CountOf(TOverlayItem::Icon), 1);
    ClickOn(OnForm(225, 195));
    EXPECT_EQ(PrimaryName(), "PopupMenu1");
    EXPECT_EQ(CountOf(TOverlayItem::SelectedIcon), 1);
    EXPECT_EQ(CountOf(TOverlayItem::Icon), 0);
}

TEST_F(SurfaceView, ShiftKeepsTheFormOutOfTheSelection) {
    ClickOn(OnForm(300, 200));
    const TPoint edit = At("NameEdit");
    ShiftClick(edit);
    EXPECT_THAT(Designer().SelectedComponents(), ElementsAre(&The("NameEdit")));
    ShiftClick({edit.X + 20, edit.Y});
    EXPECT_THAT(Designer().SelectedComponents(), ElementsAre(&Designer().Form())) << "something is always selected";
}

TEST_F(SurfaceView, ShiftKeepsTheTool) {
    ChooseTool(TCheckBox::StaticClass());
    ShiftClick(OnForm(40, 120));
    ShiftClick(OnForm(40, 180));
    EXPECT_EQ(Surface().Tool(), &TCheckBox::StaticClass());
    ClickOn(OnForm(40, 210));
    EXPECT_TRUE(Has("CheckBox3"));
    EXPECT_EQ(Surface().Tool(), nullptr);
    EXPECT_EQ(Window->ComponentPalette().Buttons().Chosen(), nullptr);
}

TEST_F(SurfaceView, EscapeGivesTheToolBack) {
    ChooseTool(TCheckBox::StaticClass());
    Surface().SetFocus();
    Press(VK_ESCAPE);
    EXPECT_EQ(Surface().Tool(), nullptr);
    EXPECT_EQ(Window->ComponentPalette().Buttons().Chosen(), nullptr);
    ClickOn(OnForm(40, 180));
    EXPECT_EQ(Text(), SampleForm);
}

// --- Keys

TEST_F(SurfaceView, EnterEditsWhatIsSelected) {
    ClickOn(At("OkButton"));
    Press(VK_RETURN);
    EXPECT_THAT(Window->Status(), HasSubstr("OkButtonClick"));
    ClickOn(OnForm(300, 200));
    Press(VK_RETURN);
    EXPECT_THAT(Text(), HasSubstr("  OnCreate = FormCreate\n")) << "a form has another event";
}

TEST_F(SurfaceView, CtrlAndShiftMoveByTheGrid) {
    ClickOn(At("NameEdit"));
    Press(VK_RIGHT, {VK_CONTROL, VK_SHIFT});
    Press(VK_DOWN, {VK_CONTROL, VK_SHIFT});
    EXPECT_EQ(The("NameEdit").BoundsRect(), (TRect{88, 20, 209, 41}));
    Designer().SelectOne(Designer().Form());
    Press(VK_RIGHT, {VK_SHIFT});
    Press(VK_UP, {VK_SHIFT});
    EXPECT_EQ(Designer().Form().ClientWidth(), 321);
    EXPECT_EQ(Designer().Form().ClientHeight(), 239);
}

TEST_F(SurfaceView, NoControlIsSizedToNothing) {
    The("NameEdit").SetBounds(80, 12, 2, 2);
    Designer().Record("Size");
    Designer().SelectOne(The("NameEdit"));
    Surface().SetFocus();
    for (int i = 0; i < 4; ++i) {
        Press(VK_LEFT, {VK_SHIFT});
        Press(VK_UP, {VK_SHIFT});
    }
    EXPECT_EQ(The("NameEdit").Width(), 1);
    EXPECT_EQ(The("NameEdit").Height(), 1);
}

TEST_F(SurfaceView, ArrowsGoToTheNearestNeighbourOfTheSameParent) {
    for (const TRect& r :
         {TRect{100, 170, 120, 180}, TRect{160, 170, 180, 180}, TRect{130, 200, 150, 210}, TRect{220, 172, 240, 182}}) {
        Designer().CreateComponent(TButton::StaticClass(), &Designer().Form(), r);
    }
    Designer().SelectOne(The("Button1"));
    Surface().SetFocus();
    Press(VK_RIGHT);
    EXPECT_EQ(PrimaryName(), "Button2") << "Button3 is nearer, and aside";
    Press(VK_RIGHT);
    EXPECT_EQ(PrimaryName(), "Button4");
    Press(VK_LEFT);
    EXPECT_EQ(PrimaryName(), "Button2");
    Press(VK_DOWN);
    EXPECT_EQ(PrimaryName(), "Button3") << "it is lower than Button4";
    TButton foreign(nullptr); // what is no part of the file
    foreign.SetParent(&The<TPanel>("Box"));
    Designer().SelectOne(The("OkButton"));
    Press(VK_LEFT);
    Press(VK_UP);
    EXPECT_EQ(PrimaryName(), "OkButton") << "it has no neighbours in its box";
}

// --- Tab order

TEST_F(SurfaceView, TabOrderIsCountedInEachContainer) {
    Designer().CreateComponent(TEdit::StaticClass(), &The("Box"), {100, 16, 180, 37});
    TButton foreign(nullptr); // what a control may have put into itself
    foreign.SetParent(&The<TPanel>("Box"));
    Window->Command("ShowTabOrder");
    Settle();
    EXPECT_THAT(Badges(), ElementsAre("0", "1", "0", "1", "2")) << "the boxes first, what is in them behind";
    ClickOn(At("Gauge"));
    ClickOn(At("Edit1"));
    EXPECT_EQ(The<TWinControl>("Edit1").TabOrder(), 0) << "the box begins anew";
    ClickOn(At("OkButton"));
    EXPECT_EQ(The<TWinControl>("Gauge").TabOrder(), 0);
    EXPECT_EQ(The<TWinControl>("Edit1").TabOrder(), 0);
    EXPECT_EQ(The<TWinControl>("OkButton").TabOrder(), 1);
    ClickOn(At("NameLabel")); // no stop for Tab
    DoubleClickAt(At("OkButton"));
    Settle();
    EXPECT_TRUE(Surface().ShowsTabOrder());
    EXPECT_THAT(Window->Status(), testing::Not(HasSubstr("OkButtonClick"))) << "a double click is two clicks";
    Press(VK_ESCAPE);
    EXPECT_THAT(Badges(), IsEmpty());
}

} // namespace
} // namespace kx::test
