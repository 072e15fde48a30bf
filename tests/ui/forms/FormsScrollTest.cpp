// SPDX-License-Identifier: MIT
// Forms that scroll, that take the size of what is in them, and that keep a border free.

#include "kx/ui/forms/Frames.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/ScrollBoxes.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/FormFiles.h"
#include "tests/support/FormTest.h"
#include "tests/ui/FocusPump.h"
#include "tests/ui/HostDialog.h"

namespace kx {
namespace {

using namespace test;

bool HasStyle(HWND window, DWORD style) { return (GetWindowLongA(window, GWL_STYLE) & static_cast<LONG>(style)) != 0; }

// --- AutoScroll

/// A form whose client area is of 200 x 100 pixels.
class ScrollingForm : public TFormTest {
protected:
    ScrollingForm() { Form->SetClientSize(200, 100); }
    bool Has(DWORD style) const { return HasStyle(Form->WindowHandle(), style); }
    static int PositionOf(HWND window, int bar) { return GetScrollPos(window, bar); }

    TPanel* Far = Add<TPanel>(10, 300, 50, 40);
};

TEST_F(ScrollingForm, ScrollsWhenItIsTold) {
    Show();
    EXPECT_FALSE(Form->AutoScroll());
    EXPECT_FALSE(Has(WS_VSCROLL));
    Form->SetAutoScroll(true);
    EXPECT_TRUE(Has(WS_VSCROLL));
    EXPECT_FALSE(Has(WS_HSCROLL));
    EXPECT_EQ(Form->VertScrollBar().Range(), 340);
    SendMessageA(Form->Handle(), WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ(Far->Top(), 292);
    EXPECT_EQ(PositionOf(Form->Handle(), SB_VERT), 8);
    Far->SetTop(20);
    EXPECT_FALSE(Has(WS_VSCROLL));
    EXPECT_EQ(Form->VertScrollBar().Position(), 0);
}

TEST_F(ScrollingForm, TheControlWithTheFocusComesIntoView) {
    auto* const first = Add<TEdit>(0, 0, 50, 20);
    auto* const edit = Add<TEdit>(0, 500, 50, 20);
    Form->SetAutoScroll(true);
    Show();
    first->SetFocus();
    EXPECT_EQ(first->Top(), 0);
    edit->SetFocus();
    EXPECT_EQ(edit->Top() + edit->Height(), Form->ClientHeight());
    first->SetFocus();
    EXPECT_EQ(first->Top(), 0);
}

TEST_F(ScrollingForm, TheWheelOverAnyControlScrollsIt) {
    auto* const button = Add<TButton>(0, 0, 50, 20);
    Form->SetAutoScroll(true);
    Show();
    SendMessageA(button->Handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
    EXPECT_EQ(Far->Top(), 300 - 3 * 8);
}

TEST_F(ScrollingForm, AWheelThatNothingScrollsGoesToTheWindowAround) {
    auto* const box = Add<TScrollBox>(0, 0, 50, 50);
    Form->SetAutoScroll(true);
    Show();
    SendMessageA(box->Handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
    EXPECT_EQ(Far->Top(), 300 - 3 * 8);
    int turns = 0;
    box->SetOnMouseWheel([&](TObject*, TShiftState, int, const TPoint&, bool&) { ++turns; });
    SendMessageA(box->Handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    EXPECT_EQ(turns, 1);
    EXPECT_EQ(Far->Top(), 300);
}

TEST_F(ScrollingForm, ItsFileHasTheSizeWithTheBars) {
    Form->SetAutoScroll(true);
    Show();
    const int width = Form->Width();
    const int height = Form->Height();
    const std::string text = FormTextOf(*Form);
    EXPECT_NE(text.find("  Width = " + std::to_string(width) + "\r\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("Client"), std::string::npos) << text;
    EXPECT_NE(text.find("  AutoScroll = True\r\n"), std::string::npos) << text;
    const TFormPtr copy(NewForm<TForm>(nullptr));
    RegisterClasses<TPanel>();
    ReadFormOver(*copy, text);
    copy->Show();
    EXPECT_EQ(copy->Width(), width);
    EXPECT_EQ(copy->Height(), height);
    EXPECT_TRUE(HasStyle(copy->Handle(), WS_VSCROLL));
    Form->SetAutoScroll(false);
    EXPECT_EQ(FormTextOf(*Form).find("Client"), std::string::npos) << "a range of its own";
    Form->HorzScrollBar().SetRange(10);
    Form->VertScrollBar().SetRange(0);
    EXPECT_EQ(FormTextOf(*Form).find("Client"), std::string::npos);
    Form->HorzScrollBar().SetRange(0);
    Form->VertScrollBar().SetRange(10);
    EXPECT_EQ(FormTextOf(*Form).find("Client"), std::string::npos);
    Form->VertScrollBar().SetRange(0);
    EXPECT_NE(FormTextOf(*Form).find("  ClientHeight = 100\r\n"), std::string::npos);
    EXPECT_EQ(FormTextOf(*Form).find("\r\n  Height"), std::string::npos);
}

TEST_F(ScrollingForm, KeepsItsBarsWhenItIsDockedAndOnItsOwnAgain) {
    Form->SetAutoScroll(true);
    Form->SetBorderStyle(bsNone);
    Form->SetBounds(0, 0, 200, 100);
    Show();
    Form->VertScrollBar().SetPosition(30);
    THostDialog host;
    Form->SetParentWindow(host.Window);
    EXPECT_TRUE(Has(WS_VSCROLL));
    EXPECT_EQ(Form->ClientWidth(), 200 - GetSystemMetrics(SM_CXVSCROLL));
    EXPECT_EQ(Form->Width(), 200);
    EXPECT_EQ(Far->Top(), 270);
    SendMessageA(Form->Handle(), WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ(Far->Top(), 262);
    Form->SetBounds(0, 0, 200, 400);
    EXPECT_FALSE(Has(WS_VSCROLL));
    EXPECT_EQ(Far->Top(), 300);
    Form->SetHeight(100);
    EXPECT_TRUE(Has(WS_VSCROLL));
    Form->SetParentWindow(nullptr);
    EXPECT_TRUE(Has(WS_VSCROLL));
    EXPECT_EQ(Form->ClientWidth(), 200 - GetSystemMetrics(SM_CXVSCROLL));
}

TEST_F(ScrollingForm, ANewWindowHasTheBarsAgain) {
    Form->SetAutoScroll(true);
    Show();
    Form->VertScrollBar().SetPosition(30);
    Form->RecreateWnd();
    EXPECT_TRUE(Has(WS_VSCROLL));
    EXPECT_EQ(PositionOf(Form->Handle(), SB_VERT), 30);
}

TEST_F(ScrollingForm, FramesScrollToo) {
    auto* const frame = Add<TFrame>(0, 0, 100, 60);
    auto* const inner = Add<TPanel>(0, 200, 40, 40, frame);
    ReadFormOver(*frame, "object Frame: TFrame AutoScroll = True VertScrollBar.Margin = 5 end");
    Show();
    EXPECT_EQ(frame->VertScrollBar().Range(), 245);
    frame->VertScrollBar().SetPosition(20);
    EXPECT_EQ(inner->Top(), 180);
}

TEST_F(ScrollingForm, NothingIsScrolledOrSizedBeforeItsFileIsRead) {
    Form->SetAutoScroll(true);
    Show();
    int resizes = 0;
    Form->SetOnResize([&](TObject*) {
        ++resizes;
        EXPECT_FALSE(Form->IsLoading());
    });
    Far->SetOnResize([&](TObject*) { EXPECT_FALSE(Form->IsLoading()); });
    Far->SetAnchors({akLeft, akTop, akRight});
    ReadFormOver(*Form, "object F: TForm AutoScroll = False HorzScrollBar.Range = 500 end");
    EXPECT_TRUE(Has(WS_HSCROLL));
    ReadFormOver(*Form, "object F: TForm AutoSize = True end");
    EXPECT_EQ(Form->ClientHeight(), 340);
    EXPECT_GT(resizes, 0);
}

TEST_F(ScrollingForm, AFormThatIsGoingKeepsItsBarsAndItsSize) {
    const auto resizesOf = [](bool autoSize) {
        int resizes = 0;
        {
            TForm form;
            form.SetBounds(50, 50, 300, 200);
            auto* const panel = new TPanel(&form);
            panel->SetBounds(10, 300, 50, 40);
            panel->SetParent(&form);
            form.SetAutoScroll(true);
            form.SetAutoSize(autoSize);
            form.SetConstraints(form.Constraints());
            form.Show();
            form.SetOnResize([&](TObject*) { ++resizes; });
            form.SetOnDestroy([&](TObject*) {
                panel->SetTop(10);
                panel->Realign();
                form.Realign();
                form.HorzScrollBar().SetRange(3000);
            });
        }
        return resizes;
    };
    EXPECT_EQ(resizesOf(false), 0);
    EXPECT_EQ(resizesOf(true), 0);
}

// --- AutoSize

class SizingForm : public TFormTest {
protected:
    TPoint Client() const { return {Form->ClientWidth(), Form->ClientHeight()}; }

    TPanel* Panel = Add<TPanel>(10, 20, 150, 80);
};

TEST_F(SizingForm, IsAsLargeAsItsControlsNeed) {
    Form->SetAutoSize(true);
    Show();
    EXPECT_EQ(Client(), (TPoint{160, 100}));
    Panel->SetWidth(200);
    EXPECT_EQ(Client(), (TPoint{210, 100}));
    auto* const other = Add<TButton>(0, 150, 75, 25);
    EXPECT_EQ(Client(), (TPoint{210, 175}));
    other->Hide();
    EXPECT_EQ(Client(), (TPoint{210, 100}));
    other->Show();
    other->Free();
    EXPECT_EQ(Client(), (TPoint{210, 100}));
    Form->Padding().SetRight(5);
    Form->Padding().SetBottom(7);
    EXPECT_EQ(Client(), (TPoint{215, 107}));
    Form->SetBounds(0, 0, 500, 400);
    EXPECT_EQ(Client(), (TPoint{215, 107})) << "it takes its size again";
    Form->SetAutoSize(false);
    Form->SetClientSize(300, 200);
    EXPECT_EQ(Client(), (TPoint{300, 200}));
}

TEST_F(SizingForm, ControlsThatFollowItDoNotHoldItBack) {
    auto* const top = Add<TPanel>(0, 0, 100, 30);
    top->SetAlign(alTop);
    auto* const right = Add<TButton>(250, 40, 75, 25);
    right->SetAnchors({akRight, akTop});
    Form->SetAutoSize(true);
    Show();
    EXPECT_EQ(Client(), (TPoint{160, 100}));
    EXPECT_EQ(top->Width(), 160);
    Panel->SetAlign(alClient); // now nobody keeps his place from left to right
    EXPECT_EQ(Client().X, 160);
}

TEST_F(SizingForm, WithoutControlsItKeepsItsSize) {
    Form->SetClientSize(300, 200);
    Panel->Free();
    Form->SetAutoSize(true);
    Show();
    EXPECT_EQ(Client(), (TPoint{300, 200}));
}

TEST_F(SizingForm, ConstraintsComeFirstAndTheRestIsScrolled) {
    Form->SetAutoSize(true);
    Form->SetAutoScroll(true);
    Form->Constraints().SetMaxHeight(120);
    Panel->SetHeight(300);
    Show();
    EXPECT_EQ(Form->Height(), 120);
    EXPECT_TRUE(HasStyle(Form->Handle(), WS_VSCROLL));
    EXPECT_EQ(Form->ClientWidth(), 160) << "beside the bar";
    Form->Constraints().SetMaxHeight(0);
    Form->Realign(); // a limit that goes takes effect with the next change
    EXPECT_FALSE(HasStyle(Form->Handle(), WS_VSCROLL));
    EXPECT_EQ(Client(), (TPoint{160, 320}));
}

TEST_F(SizingForm, ComesFromAFormFile) {
    RegisterClasses<TPanel>();
    const TFormPtr form(NewForm<TForm>(nullptr));
    ReadFormOver(*form, "object F: TForm AutoSize = True ClientWidth = 500 ClientHeight = 400 "
                        "object P: TPanel Left = 5 Top = 5 Width = 90 Height = 60 end end");
    EXPECT_EQ(form->ClientWidth(), 95);
    EXPECT_EQ(form->ClientHeight(), 65);
}

TEST_F(SizingForm, ADockedFormHasTheSizeThatItIsGiven) {
    Form->SetBorderStyle(bsNone);
    Form->SetAutoSize(true);
    Show();
    THostDialog host;
    Form->SetParentWindow(host.Window);
    Form->SetBounds(0, 0, 333, 222);
    EXPECT_EQ(Client(), (TPoint{333, 222}));
    Panel->SetWidth(155);
    EXPECT_EQ(Client(), (TPoint{333, 222}));
    Form->SetParentWindow(nullptr);
    EXPECT_EQ(Client(), (TPoint{165, 100}));
}

TEST_F(SizingForm, AFormThatFillsTheScreenGoesBackToItsOwnSize) {
    Form->SetAutoSize(true);
    Show();
    Form->SetWindowState(wsMaximized);
    EXPECT_GT(Form->ClientWidth(), 300);
    Panel->SetWidth(170);
    EXPECT_GT(Form->ClientWidth(), 300);
    Form->SetWindowState(wsNormal);
    EXPECT_EQ(Client(), (TPoint{180, 100}));
}

TEST_F(SizingForm, AlignedBoxesSizeOnlyWhatTheirParentLeavesToThem) {
    struct TCase {
        TAlign Align;
        TPoint Expected;
    };
    auto* const box = Add<TScrollBox>(0, 0, 60, 50);
    box->SetBorderStyle(bsNone);
    auto* const inner = Add<TPanel>(0, 0, 30, 20, box);
    inner->SetBounds(0, 0, 30, 20);
    Form->SetClientSize(300, 200);
    Show();
    const TCase cases[] = {{alNone, {30, 20}},  {alTop, {300, 20}},   {alBottom, {300, 20}},
                           {alLeft, {30, 200}}, {alRight, {30, 200}}, {alClient, {300, 200}}};
    for (const TCase& c : cases) {
        box->SetAutoSize(false);
        box->SetAlign(c.Align);
        box->SetAutoSize(true);
        EXPECT_EQ((TPoint{box->Width(), box->Height()}), c.Expected) << c.Align;
        int resizes = 0;
        box->SetOnResize([&](TObject*) { ++resizes; });
        inner->SetBounds(0, 0, 31, 21);
        EXPECT_EQ(resizes, c.Align == alClient ? 0 : 1) << c.Align;
        box->SetOnResize(nullptr);
        inner->SetBounds(0, 0, 30, 20);
    }
}

TEST_F(SizingForm, AHandlerMayFreeItWhileItIsSized) {
    Form->SetAutoSize(true);
    Show();
    Form->SetOnResize([&](TObject*) { Form.reset(); });
    Panel->SetWidth(220);
    EXPECT_FALSE(Form);
}

// --- BorderWidth

class FormBorder : public TFormTest {
protected:
    COLORREF PixelAt(int x, int y) const { // from the corner of the window
        const HDC dc = GetWindowDC(Form->WindowHandle());
        const COLORREF color = GetPixel(dc, x, y);
        ReleaseDC(Form->WindowHandle(), dc);
        return color;
    }
};

TEST_F(FormBorder, IsFreeAroundTheClientArea) {
    auto* const panel = Add<TPanel>(0, 0, 10, 10);
    panel->SetAlign(alClient);
    panel->SetColor(clBlue);
    Form->SetBorderStyle(bsNone);
    Form->SetColor(clRed);
    Form->SetBounds(50, 50, 200, 100);
    Form->SetBorderWidth(7);
    EXPECT_EQ(Form->ClientRect(), (TRect{0, 0, 186, 86})) << "before there is a window";
    Show();
    EXPECT_EQ(Form->ClientRect(), (TRect{0, 0, 186, 86}));
    EXPECT_EQ(Form->ClientOrigin(), (TPoint{57, 57}));
    EXPECT_TRUE(PumpUntil([&] { return PixelAt(3, 50) == RGB(255, 0, 0); }));
    for (const TPoint at :
         {TPoint{0, 0}, TPoint{6, 50}, TPoint{193, 50}, TPoint{199, 99}, TPoint{100, 6}, TPoint{100, 93}}) {
        EXPECT_EQ(PixelAt(at.X, at.Y), RGB(255, 0, 0)) << at.X << "," << at.Y;
    }
    EXPECT_NE(PixelAt(7, 50), RGB(255, 0, 0));
    EXPECT_NE(PixelAt(192, 92), RGB(255, 0, 0));
    Form->SetColor(clLime);
    EXPECT_TRUE(PumpUntil([&] { return PixelAt(3, 50) == RGB(0, 255, 0); }));
    Form->SetBorderWidth(0);
    EXPECT_EQ(panel->BoundsRect(), (TRect{0, 0, 200, 100}));
    Screenshot("form-border");
}

TEST_F(FormBorder, IsAroundTheScrollBarsToo) {
    Add<TPanel>(0, 0, 50, 500);
    Form->SetAutoScroll(true);
    Form->SetBorderStyle(bsNone);
    Form->SetColor(clRed);
    Form->SetBounds(50, 50, 200, 100);
    Form->SetBorderWidth(5);
    Show();
    const int bar = GetSystemMetrics(SM_CXVSCROLL);
    EXPECT_EQ(Form->ClientRect(), (TRect{0, 0, 190 - bar, 90}));
    EXPECT_TRUE(PumpUntil([&] { return PixelAt(197, 50) == RGB(255, 0, 0); }));
    EXPECT_EQ(PixelAt(195, 50), RGB(255, 0, 0));
    EXPECT_NE(PixelAt(194, 50), RGB(255, 0, 0)) << "the bar";
    EXPECT_NE(PixelAt(195 - bar, 50), RGB(255, 0, 0));
    EXPECT_EQ(PixelAt(100, 97), RGB(255, 0, 0));
    Form->HorzScrollBar().SetRange(1000);
    Form->VertScrollBar().SetRange(1000);
    EXPECT_EQ(Form->ClientHeight(), 90 - GetSystemMetrics(SM_CYHSCROLL));
    EXPECT_TRUE(PumpUntil([&] { return PixelAt(100, 94) != RGB(255, 0, 0); })) << "the other bar";
    EXPECT_EQ(PixelAt(100, 97), RGB(255, 0, 0));
    Form->SetBiDiMode(bdRightToLeft);
    EXPECT_TRUE(PumpUntil([&] { return PixelAt(5, 40) != RGB(255, 0, 0); })) << "the bar is left";
    EXPECT_EQ(PixelAt(4, 40), RGB(255, 0, 0));
    Screenshot("form-border-scroll");
}

TEST_F(FormBorder, ComesFromAFormFileWithTheClientSize) {
    ReadFormOver(*Form, "object F: TForm BorderWidth = 10 ClientWidth = 300 ClientHeight = 200 end");
    EXPECT_EQ(Form->ClientRect(), (TRect{0, 0, 300, 200}));
    Show();
    EXPECT_EQ(Form->ClientRect(), (TRect{0, 0, 300, 200}));
    EXPECT_NE(FormTextOf(*Form).find("  BorderWidth = 10\r\n"), std::string::npos);
    Form->SetBorderWidth(-3);
    EXPECT_EQ(Form->BorderWidth(), 0);
    Form->SetBorderWidth(INT_MAX);
    EXPECT_EQ(Form->BorderWidth(), 32767);
    EXPECT_EQ(Form->ClientRect(), TRect{});
}

TEST_F(FormBorder, StaysWhenTheFormIsDocked) {
    Form->SetBorderStyle(bsNone);
    Form->SetBounds(0, 0, 200, 100);
    Form->SetBorderWidth(5);
    Show();
    THostDialog host;
    Form->SetParentWindow(host.Window);
    EXPECT_EQ(Form->ClientRect(), (TRect{0, 0, 190, 90}));
    EXPECT_EQ(Form->Width(), 200);
}

} // namespace
} // namespace kx
