// SPDX-License-Identifier: MIT
// Where forms show first, and how they stick to the edges of the screen.

#include "tests/support/FormFiles.h"
#include "tests/support/FormTest.h"
#include "tests/support/ImportPatch.h"
#include "tests/ui/HostDialog.h"
#include "tests/ui/SecondMonitor.h"

#include <dwmapi.h>

namespace kx {
namespace {

using namespace test;

class FormPlace : public TFormTest {
protected:
    /// Where a new form of 300 x 200 pixels shows.
    static TPoint PlaceOf(TDefaultMonitor monitor, TPosition position = poScreenCenter) {
        const TFormPtr form(NewForm<TForm>(nullptr));
        form->SetBounds(7, 8, 300, 200);
        form->SetPosition(position);
        form->SetDefaultMonitor(monitor);
        form->Show();
        return {form->Left(), form->Top()};
    }
    static TPoint MiddleOf(const TRect& r) { return {(r.Left + r.Right - 300) / 2, (r.Top + r.Bottom - 200) / 2}; }
    /// Where a new form of that size shows that is to be in the middle of its owner.
    static TPoint PlaceOver(TForm& owner, int width, int height) {
        auto* const form = NewForm<TForm>(&owner);
        form->SetBounds(7, 8, width, height);
        form->SetPosition(poOwnerFormCenter);
        form->Show();
        return {form->Left(), form->Top()};
    }
};

TEST_F(FormPlace, TheMonitorIsTheOneOfTheActiveFormUnlessToldOtherwise) {
    const TPoint onFirst{(Screen().Width() - 300) / 2, (Screen().Height() - 200) / 2};
    Show();
    const TSecondMonitor second(Form->Handle());
    EXPECT_EQ(Form->DefaultMonitor(), dmActiveForm);
    EXPECT_EQ(PlaceOf(dmActiveForm), MiddleOf(TSecondMonitor::Whole));
    Form->SetFocus();
    ASSERT_TRUE(PumpUntil([&] { return Screen().ActiveForm() == Form.get(); }));
    EXPECT_EQ(PlaceOf(dmActiveForm, poDesktopCenter), onFirst);
    EXPECT_EQ(PlaceOf(dmPrimary), onFirst);
    EXPECT_EQ(PlaceOf(dmDesktop), onFirst);
    EXPECT_EQ(PlaceOf(dmMainForm), onFirst) << "there is none";
    EXPECT_EQ(PlaceOf(dmActiveForm, poDesigned), (TPoint{7, 8}));
}

TEST_F(FormPlace, TheMonitorMayBeTheOneOfTheMainForm) {
    ASSERT_EQ(Application().MainForm(), nullptr);
    TForm* main = nullptr;
    Application().CreateForm(&main);
    {
        const TSecondMonitor second(main->Handle());
        Show();
        EXPECT_EQ(PlaceOf(dmMainForm), MiddleOf(TSecondMonitor::Whole));
        EXPECT_NE(PlaceOf(dmActiveForm), MiddleOf(TSecondMonitor::Whole));
    }
    main->Free();
}

TEST_F(FormPlace, TheSystemChoosesWhatItIsAskedFor) {
    const auto boundsOf = [](TPosition position) {
        const TFormPtr form(NewForm<TForm>(nullptr));
        form->SetBounds(-3333, -3333, 301, 201);
        form->SetPosition(position);
        form->Show();
        return form->BoundsRect();
    };
    const TRect place = boundsOf(poDefaultPosOnly);
    EXPECT_GE(place.Left, 0);
    EXPECT_GE(place.Top, 0);
    EXPECT_EQ(Width(place), 301);
    EXPECT_EQ(Height(place), 201);
    const TRect size = boundsOf(poDefaultSizeOnly);
    EXPECT_EQ(size.Left, -3333);
    EXPECT_NE(Width(size), 301);
    const TRect both = boundsOf(poDefault);
    EXPECT_GE(both.Left, 0);
    EXPECT_NE(Width(both), 301);
    EXPECT_EQ(boundsOf(poDesigned), (TRect{-3333, -3333, -3333 + 301, -3333 + 201}));
}

TEST_F(FormPlace, TheSystemChoosesForWindowsOfTheScreenWithACaptionOnly) {
    for (const TFormBorderStyle style : {bsNone, bsDialog}) {
        const TFormPtr form(NewForm<TForm>(nullptr));
        form->SetBounds(41, 42, 301, 201);
        form->SetBorderStyle(style);
        form->SetPosition(poDefault);
        form->Show();
        EXPECT_EQ(form->BoundsRect(), (TRect{41, 42, 41 + 301, 42 + 201})) << style;
    }
    const THostDialog host;
    for (const TPosition position : {poDefault, poScreenCenter}) {
        const TFormPtr form(NewForm<TForm>(nullptr));
        form->SetBounds(41, 42, 301, 201);
        form->SetPosition(position);
        form->SetParentWindow(host.Window);
        form->Show();
        EXPECT_EQ(form->BoundsRect(), (TRect{41, 42, 41 + 301, 42 + 201})) << position;
        EXPECT_EQ(RectIn(host.Window, form->Handle()), form->BoundsRect());
        form->SetParentWindow(nullptr);
    }
}

TEST_F(FormPlace, ItIsInTheMiddleOfTheMainFormWhereThatIsThere) {
    TForm* main = nullptr;
    Application().CreateForm(&main);
    main->SetBounds(300, 250, 500, 400);
    main->SetPosition(poMainFormCenter);
    main->Show();
    EXPECT_EQ(main->Left(), (Screen().Width() - 500) / 2) << "over itself nothing can be";
    EXPECT_EQ(main->Top(), (Screen().Height() - 400) / 2);
    main->SetBounds(310, 260, 500, 400);
    for (const TPosition position : {poMainFormCenter, poOwnerFormCenter}) {
        EXPECT_EQ(PlaceOf(dmActiveForm, position), (TPoint{310 + 100, 260 + 100})) << position;
    }
    main->Free();
    EXPECT_EQ(PlaceOf(dmActiveForm, poMainFormCenter),
              (TPoint{(Screen().Width() - 300) / 2, (Screen().Height() - 200) / 2}));
}

TEST_F(FormPlace, ANewWindowIsWhereTheOldOneWas) {
    Form->SetPosition(poScreenCenter);
    Show();
    Form->SetBounds(33, 44, 255, 166);
    Form->RecreateWnd();
    EXPECT_EQ(Form->BoundsRect(), (TRect{33, 44, 33 + 255, 44 + 166}));
}

TEST_F(FormPlace, TheSystemChoosesOnce) {
    Form->SetPosition(poDefault);
    Show();
    Form->SetBounds(33, 44, 255, 166);
    Form->RecreateWnd();
    EXPECT_EQ(Form->BoundsRect(), (TRect{33, 44, 33 + 255, 44 + 166}));
}

TEST_F(FormPlace, OverADockedFormItIsWhereTheUserSeesThat) {
    Form->SetBorderStyle(bsNone);
    Form->SetBounds(50, 40, 300, 200);
    Show();
    const THostDialog host;
    Form->SetParentWindow(host.Window);
    const TRect seen = ScreenRectOf(Form->Handle());
    ASSERT_NE(seen, Form->BoundsRect());
    EXPECT_EQ(PlaceOver(*Form, 300, 200), (TPoint{seen.Left, seen.Top}));
    Form->SetParentWindow(nullptr);
}

TEST_F(FormPlace, TheCaptionIsNeverBeyondTheEdgesOfTheMonitor) {
    Form->SetBounds(20, 10, 200, 100);
    Show();
    EXPECT_EQ(PlaceOver(*Form, 240, 120), TPoint{});
    EXPECT_EQ(PlaceOver(*Form, 230, 110), (TPoint{5, 5}));
    EXPECT_EQ(PlaceOver(*Form, 280, 110), (TPoint{0, 5}));
    const TSecondMonitor second(Form->Handle());
    Form->SetBounds(-990, -90, 200, 100);
    EXPECT_EQ(PlaceOver(*Form, 210, 110), (TPoint{-995, -95}));
    EXPECT_EQ(PlaceOver(*Form, 300, 200), (TPoint{-1000, -100}));
    EXPECT_EQ(PlaceOver(*Form, 1100, 900), (TPoint{-1000, -100}));
}

// --- ScreenSnap

class ScreenSnap : public TFormTest {
protected:
    ScreenSnap() { Form->SetBounds(300, 300, 200, 100); }
    /// As the system's loop moves the window while the user drags its caption.
    TPoint DraggedTo(int x, int y, UINT flags = SWP_NOSIZE) {
        RECT place{x, y, x + 200, y + 100};
        SendMessageA(Form->Handle(), WM_ENTERSIZEMOVE, 0, 0);
        SendMessageA(Form->Handle(), WM_MOVING, 0, reinterpret_cast<LPARAM>(&place));
        const bool sizes = (flags & SWP_NOSIZE) == 0;
        SetWindowPos(Form->Handle(), nullptr, x, y, sizes ? 200 : 0, sizes ? 100 : 0,
                     SWP_NOZORDER | SWP_NOACTIVATE | flags);
        SendMessageA(Form->Handle(), WM_EXITSIZEMOVE, 0, 0);
        return {Form->Left(), Form->Top()};
    }
    static TRect FreeArea() {
        RECT r;
        SystemParametersInfoA(SPI_GETWORKAREA, 0, &r, 0);
        return FromRECT(r);
    }
};

TEST_F(ScreenSnap, ADraggedFormSticksToTheEdges) {
    const TRect area = FreeArea();
    Form->SetScreenSnap(true);
    EXPECT_EQ(Form->SnapBuffer(), 10);
    Show();
    EXPECT_EQ(DraggedTo(area.Left + 9, area.Top - 9), (TPoint{area.Left, area.Top}));
    EXPECT_EQ(DraggedTo(area.Left + 10, area.Top - 10), (TPoint{area.Left + 10, area.Top - 10}));
    EXPECT_EQ(DraggedTo(area.Right - 209, area.Bottom - 91), (TPoint{area.Right - 200, area.Bottom - 100}));
    EXPECT_EQ(DraggedTo(area.Right - 210, area.Bottom - 90), (TPoint{area.Right - 210, area.Bottom - 90}));
    Form->SetSnapBuffer(30);
    EXPECT_EQ(DraggedTo(area.Left + 29, area.Top + 29, 0), (TPoint{area.Left, area.Top}));
    Form->SetSnapBuffer(0);
    EXPECT_EQ(DraggedTo(area.Left + 1, 50), (TPoint{area.Left + 1, 50}));
}

TEST_F(ScreenSnap, ItSticksToTheFreeAreaOfItsMonitor) {
    Form->SetScreenSnap(true);
    Show();
    const TSecondMonitor second(Form->Handle());
    EXPECT_EQ(DraggedTo(-965, -65), (TPoint{-970, -60}));
    EXPECT_EQ(DraggedTo(-205, 595), (TPoint{-200, 600}));
    EXPECT_EQ(DraggedTo(-995, -95), (TPoint{-995, -95})) << "a bar is there";
}

TEST_F(ScreenSnap, ItDoesSoUnderTheMouse) {
    const TRect area = FreeArea();
    Form->SetBounds(area.Left + 60, area.Top + 60, 200, 100);
    Form->SetScreenSnap(true);
    Show();
    const TPoint caption{Form->Left() + 80, Form->Top() + GetSystemMetrics(SM_CYSIZEFRAME) + 5};
    const TPoint beside{caption.X - 55, caption.Y - 55};
    RunDialog( // the system moves it in a loop of its own
        [&] {
            PressAt(caption);
            return PumpUntil([&] { return Form->Left() == area.Left && !GetCapture(); });
        },
        {{"the caption is held", [&] { return GetCapture() == Form->Handle(); }, [&] { MoveMouse(beside); }},
         {"it sticks", [&] { return Form->Left() == area.Left; }, [&] { ReleaseAt(beside); }}});
    EXPECT_EQ(Form->Left(), area.Left);
    EXPECT_EQ(Form->Top(), area.Top);
}

TEST_F(ScreenSnap, OnlyTheUsersDraggingDoesIt) {
    Form->SetScreenSnap(true);
    Show();
    Form->SetBounds(5, 5, 200, 100);
    EXPECT_EQ(Form->Left(), 5) << "a program means what it says";
    RECT place{4, 4, 254, 154};
    SendMessageA(Form->Handle(), WM_ENTERSIZEMOVE, 0, 0);
    SendMessageA(Form->Handle(), WM_SIZING, WMSZ_TOPLEFT, reinterpret_cast<LPARAM>(&place));
    SetWindowPos(Form->Handle(), nullptr, 4, 4, 250, 150, SWP_NOZORDER | SWP_NOACTIVATE);
    SetWindowPos(Form->Handle(), nullptr, 4, 4, 250, 150, SWP_NOZORDER | SWP_NOACTIVATE); // the same once more
    SendMessageA(Form->Handle(), WM_EXITSIZEMOVE, 0, 0);
    EXPECT_EQ(Form->BoundsRect(), (TRect{4, 4, 254, 154})) << "the user sizes it";
    DraggedTo(300, 300);
    Form->SetBounds(5, 5, 200, 100);
    EXPECT_EQ(Form->Left(), 5) << "the user is done";
    Form->SetScreenSnap(false);
    Form->SetBounds(300, 300, 200, 100);
    EXPECT_EQ(DraggedTo(5, 5), (TPoint{5, 5}));
}

/// A system that draws the frames of windows itself, and leaves an edge of them transparent.
class TUnseenEdges {
public:
    explicit TUnseenEdges(RECT edges) { Edges = edges; }

private:
    static HRESULT WINAPI Attribute(HWND window, DWORD attribute, void* value, DWORD size) {
        if (attribute != DWMWA_EXTENDED_FRAME_BOUNDS || size != sizeof(RECT)) {
            return E_INVALIDARG;
        }
        auto& r = *static_cast<RECT*>(value);
        GetWindowRect(window, &r);
        r = {r.left + Edges.left, r.top + Edges.top, r.right - Edges.right, r.bottom - Edges.bottom};
        return S_OK;
    }
    inline static RECT Edges;
    TImportPatch FAttribute{"DwmGetWindowAttribute", reinterpret_cast<void*>(Attribute)};
};

TEST_F(ScreenSnap, TheEdgesThatTheUserSeesStick) {
    const TRect area = FreeArea();
    const int greatest = GetSystemMetrics(SM_CXSIZEFRAME) + GetSystemMetrics(SM_CXPADDEDBORDER);
    ASSERT_GE(greatest, 4);
    Form->SetScreenSnap(true);
    Show();
    {
        const TUnseenEdges edges({greatest, 1, greatest - 1, 2});
        EXPECT_EQ(DraggedTo(area.Left + 5, area.Top + 6), (TPoint{area.Left - greatest, area.Top - 1}));
        EXPECT_EQ(DraggedTo(area.Left + 10 - greatest, area.Top + 9),
                  (TPoint{area.Left + 10 - greatest, area.Top + 9}));
        EXPECT_EQ(DraggedTo(area.Right - 203, area.Bottom - 103),
                  (TPoint{area.Right - 200 + greatest - 1, area.Bottom - 100 + 2}));
    }
    for (const RECT edges : {RECT{greatest + 1, 0, 0, 0}, RECT{0, -1, 0, 0}, RECT{100, 100, -200, -100}}) {
        const TUnseenEdges otherUnits(edges);
        EXPECT_EQ(DraggedTo(area.Left + 5, area.Top + 6), (TPoint{area.Left, area.Top})) << "no frame is like that";
    }
}

TEST_F(ScreenSnap, ADockedFormStaysWhereItIsPut) {
    Form->SetScreenSnap(true);
    Form->SetBorderStyle(bsNone);
    Show();
    const HWND host = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 600, 500, nullptr, nullptr, nullptr, nullptr);
    Form->SetParentWindow(host);
    EXPECT_EQ(DraggedTo(5, 5), (TPoint{5, 5}));
    Form->SetParentWindow(nullptr);
    DestroyWindow(host);
}

TEST_F(ScreenSnap, TheSettingsComeFromAFormFile) {
    ReadFormOver(*Form, "object F: TForm ScreenSnap = True SnapBuffer = 20 DefaultMonitor = dmPrimary end");
    EXPECT_TRUE(Form->ScreenSnap());
    EXPECT_EQ(Form->SnapBuffer(), 20);
    const std::string text = FormTextOf(*Form);
    EXPECT_NE(text.find("  DefaultMonitor = dmPrimary\r\n"), std::string::npos);
    EXPECT_NE(text.find("  ScreenSnap = True\r\n  SnapBuffer = 20\r\n"), std::string::npos) << text;
}

TEST_F(ScreenSnap, NorDoesAFormInAControl) {
    const TFormPtr inner(NewForm<TForm>(nullptr));
    inner->SetBorderStyle(bsNone);
    inner->SetScreenSnap(true);
    Show();
    inner->SetParent(Form.get());
    inner->Show();
    RECT place{5, 5, 105, 105};
    SendMessageA(inner->Handle(), WM_MOVING, 0, reinterpret_cast<LPARAM>(&place));
    SetWindowPos(inner->Handle(), nullptr, 5, 5, 0, 0, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOSIZE);
    EXPECT_EQ(inner->Left(), 5);
    inner->SetParent(nullptr);
}

} // namespace
} // namespace kx
