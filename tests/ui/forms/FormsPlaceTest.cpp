// Where forms show first, and how they stick to the edges of the screen.

#include "tests/support/FormFiles.h"
#include "tests/support/FormTest.h"
#include "tests/support/ImportPatch.h"

namespace kx {
namespace {

using namespace test;

/// A second monitor, right of the first one, with a bar of the system's at its top.
class TSecondMonitor {
public:
    static constexpr RECT Whole{2000, 100, 3000, 900};
    static constexpr RECT Free{2000, 140, 3000, 900};

    /// The window is on it.
    explicit TSecondMonitor(HWND window) { Window = window; }
    ~TSecondMonitor() { Window = nullptr; }

private:
    static HMONITOR Second() { return reinterpret_cast<HMONITOR>(UINT_PTR{0x5EC0}); }
    static HMONITOR WINAPI OfWindow(HWND window, DWORD flags) {
        return window == Window ? Second() : MonitorFromPoint({}, flags); // the patched functions would call themselves
    }
    static HMONITOR WINAPI OfRect(const RECT* rect, DWORD flags) {
        RECT both;
        return IntersectRect(&both, rect, &Whole) ? Second() : MonitorFromPoint({}, flags);
    }
    static BOOL WINAPI InfoOf(HMONITOR monitor, MONITORINFO* info) {
        if (monitor != Second()) {
            return GetMonitorInfoW(monitor, info);
        }
        info->rcMonitor = Whole;
        info->rcWork = Free;
        return TRUE;
    }

    inline static HWND Window = nullptr;
    TImportPatch FOfWindow{"MonitorFromWindow", reinterpret_cast<void*>(OfWindow)};
    TImportPatch FOfRect{"MonitorFromRect", reinterpret_cast<void*>(OfRect)};
    TImportPatch FInfo{"GetMonitorInfoA", reinterpret_cast<void*>(InfoOf)};
};

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
    static TPoint MiddleOf(const RECT& r) { return {(r.left + r.right - 300) / 2, (r.top + r.bottom - 200) / 2}; }
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

TEST_F(FormPlace, TheSystemChoosesOnce) {
    Form->SetPosition(poDefault);
    Show();
    Form->SetBounds(33, 44, 255, 166);
    Form->RecreateWnd();
    EXPECT_EQ(Form->BoundsRect(), (TRect{33, 44, 33 + 255, 44 + 166}));
}

// --- ScreenSnap

class ScreenSnap : public TFormTest {
protected:
    ScreenSnap() { Form->SetBounds(300, 300, 200, 100); }
    /// As the system's loop moves the window while the user drags its caption.
    TPoint DraggedTo(int x, int y, UINT flags = SWP_NOSIZE) {
        SendMessageA(Form->Handle(), WM_ENTERSIZEMOVE, 0, 0);
        SetWindowPos(Form->Handle(), nullptr, x, y, 200, 100, SWP_NOZORDER | SWP_NOACTIVATE | flags);
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
    EXPECT_EQ(DraggedTo(2005, 145), (TPoint{2000, 140}));
    EXPECT_EQ(DraggedTo(2805, 795), (TPoint{2800, 800}));
}

TEST_F(ScreenSnap, OnlyTheUsersDraggingDoesIt) {
    Form->SetScreenSnap(true);
    Show();
    Form->SetBounds(5, 5, 200, 100);
    EXPECT_EQ(Form->Left(), 5) << "a program means what it says";
    SendMessageA(Form->Handle(), WM_ENTERSIZEMOVE, 0, 0);
    SetWindowPos(Form->Handle(), nullptr, 4, 4, 250, 150, SWP_NOZORDER | SWP_NOACTIVATE);
    SendMessageA(Form->Handle(), WM_EXITSIZEMOVE, 0, 0);
    EXPECT_EQ(Form->BoundsRect(), (TRect{4, 4, 254, 154})) << "the user sizes it";
    Form->SetScreenSnap(false);
    Form->SetBounds(300, 300, 200, 100);
    EXPECT_EQ(DraggedTo(5, 5), (TPoint{5, 5}));
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

} // namespace
} // namespace kx
