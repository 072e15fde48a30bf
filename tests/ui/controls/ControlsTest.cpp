// SPDX-License-Identifier: MIT
// Controls and their windows.

#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Handles.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/FormTest.h"

#include <algorithm>
#include <thread>

namespace kx {
namespace {

using namespace test;

class ControlsTest : public TFormTest {
protected:
    ControlsTest() { Form->SetBorderStyle(bsNone); }
};

/// Writes down what happens to it.
class TLoggingControl : public TCustomControl {
    KX_CLASS()

    using TCustomControl::TCustomControl;
    std::vector<std::string> Log;

    void WndProc(TMessage& message) override {
        switch (message.Msg) {
        case WM_NCCREATE: Log.emplace_back("nccreate"); break;
        case WM_CREATE: Log.emplace_back("create"); break;
        case WM_DESTROY: Log.emplace_back("destroy"); break;
        case WM_NCDESTROY: Log.emplace_back("ncdestroy"); break;
        default: break;
        }
        TCustomControl::WndProc(message);
    }
};

const TClass& TLoggingControl::StaticClass() {
    static const TClassBuilder<TLoggingControl> cls("TLoggingControl", TCustomControl::StaticClass());
    return cls.Class();
}

TEST_F(ControlsTest, TheWindowGetsItsMessagesFromTheFirstToTheLast) {
    auto* const control = Add<TLoggingControl>(0, 0, 50, 50);
    EXPECT_TRUE(control->Log.empty()) << "no window before it is needed";
    const HWND window = control->Handle();
    EXPECT_EQ(ClassOf(window), "TLoggingControl");
    EXPECT_TRUE(Form->HandleAllocated()) << "the parent's window comes first";
    EXPECT_EQ(FindControl(window), control);
    control->SetParent(nullptr);
    EXPECT_FALSE(control->HandleAllocated());
    EXPECT_EQ(FindControl(window), nullptr);
    EXPECT_EQ(control->Log, (std::vector<std::string>{"nccreate", "create", "destroy", "ncdestroy"}));
    EXPECT_THROW(control->Handle(), EInvalidOperation);
}

TEST_F(ControlsTest, OneThatEndsItsLifeBeforeItsWindowLeavesNothingInItsPlace) {
    class TEarlyEnding : public TCustomControl {
    public:
        explicit TEarlyEnding(TComponent* owner) : TCustomControl(owner) {}
        ~TEarlyEnding() override { EndLife(); }
    };
    auto* const control = Add<TEarlyEnding>(0, 0, 50, 50);
    const HWND window = control->Handle();
    control->Free();
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(FindControl(window), nullptr) << "the system gives the number to other windows";
}

TEST_F(ControlsTest, TheWindowIsWhereTheControlIs) {
    auto* const panel = Add<TPanel>(10, 20, 100, 50);
    auto* const inner = Add<TEdit>(5, 6, 40, 21, panel);
    Show();
    EXPECT_EQ(RectIn(Form->Handle(), panel->Handle()), (TRect{10, 20, 110, 70}));
    EXPECT_EQ(RectIn(panel->Handle(), inner->Handle()), (TRect{5, 6, 45, 27}));
    panel->SetLeft(30);
    EXPECT_EQ(RectIn(Form->Handle(), inner->Handle()), (TRect{35, 26, 75, 47}));
    EXPECT_EQ(panel->ClientToScreen({1, 2}), (TPoint{131, 122}));
    EXPECT_EQ(panel->ScreenToClient({131, 122}), (TPoint{1, 2}));
    SetWindowPos(panel->Handle(), nullptr, 1, 2, 33, 44, SWP_NOZORDER); // behind the framework's back
    EXPECT_EQ(panel->BoundsRect(), (TRect{1, 2, 34, 46}));
}

TEST_F(ControlsTest, ClientSizeIsRightWithAndWithoutAWindow) {
    auto* const edit = Add<TEdit>(0, 0, 100, 21);
    auto* const panel = Add<TPanel>(0, 0, 100, 50);
    panel->SetBorderStyle(bsSingle);
    const TRect editBefore = edit->ClientRect();
    const TRect panelBefore = panel->ClientRect();
    Form->SetBorderStyle(bsSizeable);
    Form->SetClientSize(300, 200);
    const TRect formBefore = Form->ClientRect();
    EXPECT_EQ(formBefore, (TRect{0, 0, 300, 200}));
    Show();
    EXPECT_EQ(edit->ClientRect(), editBefore);
    EXPECT_EQ(panel->ClientRect(), panelBefore);
    EXPECT_EQ(Form->ClientRect(), formBefore);
}

TEST_F(ControlsTest, AlignedControlsShareTheClientArea) {
    auto* const top = Add<TPanel>(0, 0, 10, 30);
    auto* const left = Add<TPanel>(0, 0, 40, 10);
    auto* const rest = Add<TPanel>(0, 0, 10, 10);
    auto* const bottom = Add<TPanel>(0, 0, 10, 20);
    rest->SetAlign(alClient);
    left->SetAlign(alLeft);
    bottom->SetAlign(alBottom);
    top->SetAlign(alTop);
    EXPECT_EQ(top->BoundsRect(), (TRect{0, 0, 400, 30}));
    EXPECT_EQ(bottom->BoundsRect(), (TRect{0, 280, 400, 300}));
    EXPECT_EQ(left->BoundsRect(), (TRect{0, 30, 40, 280}));
    EXPECT_EQ(rest->BoundsRect(), (TRect{40, 30, 400, 280}));
    Show();
    Form->SetBounds(100, 100, 500, 400);
    EXPECT_EQ(rest->BoundsRect(), (TRect{40, 30, 500, 380}));
    left->Hide();
    EXPECT_EQ(rest->BoundsRect(), (TRect{0, 30, 500, 380}));
}

TEST_F(ControlsTest, AnchoredControlsKeepTheirDistance) {
    auto* const right = Add<TButton>(300, 10, 50, 20);
    right->SetAnchors({akRight, akTop});
    auto* const wide = Add<TEdit>(10, 50, 300, 21);
    wide->SetAnchors({akLeft, akRight, akBottom});
    Show();
    Form->SetBounds(100, 100, 450, 330);
    EXPECT_EQ(right->BoundsRect(), (TRect{350, 10, 400, 30}));
    EXPECT_EQ(wide->BoundsRect(), (TRect{10, 80, 360, 101}));
    Form->SetBounds(100, 100, 400, 300);
    EXPECT_EQ(wide->BoundsRect(), (TRect{10, 50, 310, 71}));
}

TEST_F(ControlsTest, ConstraintsLimitTheSize) {
    auto* const panel = Add<TPanel>(0, 0, 100, 100);
    panel->Constraints().SetMinWidth(50);
    panel->Constraints().SetMaxHeight(80);
    EXPECT_EQ(panel->Height(), 80);
    panel->SetWidth(10);
    EXPECT_EQ(panel->Width(), 50);
}

TEST_F(ControlsTest, FontColourAndShowHintFollowTheParentUntilTheyAreSet) {
    auto* const panel = Add<TPanel>(0, 0, 100, 50);
    auto* const label = Add<TLabel>(0, 0, 50, 13, panel);
    Form->Font().SetHeight(-20);
    Form->SetColor(clRed);
    Form->SetShowHint(true);
    EXPECT_EQ(label->Font().Height(), -20);
    EXPECT_EQ(label->Color(), clRed);
    EXPECT_TRUE(label->ShowHint());
    panel->SetColor(clBlue);
    panel->Font().SetHeight(-11);
    EXPECT_FALSE(panel->ParentFont());
    EXPECT_EQ(label->Color(), clBlue);
    EXPECT_EQ(label->Font().Height(), -11);
    panel->SetParentColor(true);
    EXPECT_EQ(label->Color(), clRed);
}

TEST_F(ControlsTest, DirectChildrenAreTheWindowsInsideFromTheFront) {
    auto* const panel = Add<TPanel>(0, 0, 100, 50);
    auto* const edit = Add<TEdit>(0, 60, 50, 20);
    auto* const inner = Add<TEdit>(0, 0, 50, 20, panel);
    auto* const combo = Add<TComboBox>(0, 100, 50, 20); // has an edit of the system's inside
    Form->Handle();
    EXPECT_EQ(DirectChildren(Form->Handle()), (std::vector<HWND>{combo->Handle(), edit->Handle(), panel->Handle()}));
    EXPECT_EQ(DirectChildren(panel->Handle()), std::vector<HWND>{inner->Handle()});
    EXPECT_TRUE(DirectChildren(inner->Handle()).empty());
    EXPECT_TRUE(DirectChildren(reinterpret_cast<HWND>(1)).empty());
    panel->BringToFront();
    EXPECT_EQ(DirectChildren(Form->Handle()), (std::vector<HWND>{panel->Handle(), combo->Handle(), edit->Handle()}));
}

TEST_F(ControlsTest, MouseEventsComeInOrderWithClientCoordinates) {
    std::vector<std::string> log;
    auto* const panel = Add<TPanel>(50, 60, 100, 80);
    panel->SetOnMouseDown([&](TObject*, TMouseButton button, TShiftState shift, int x, int y) {
        log.push_back("down " + IntToStr(button) + " " + IntToStr(x) + "," + IntToStr(y) +
                      (shift.Contains(ssDouble) ? " double" : ""));
    });
    panel->SetOnMouseUp([&](TObject*, TMouseButton, TShiftState, int x, int y) {
        log.push_back("up " + IntToStr(x) + "," + IntToStr(y));
    });
    panel->SetOnClick([&](TObject*) { log.emplace_back("click"); });
    panel->SetOnDblClick([&](TObject*) { log.emplace_back("dblclick"); });
    Show();
    ClickAt(panel->ClientToScreen({10, 20}), mbRight);
    ASSERT_TRUE(PumpUntil([&] { return log.size() == 2; }));
    EXPECT_EQ(log, (std::vector<std::string>{"down 1 10,20", "up 10,20"}));
    log.clear();
    ClickAt(panel->ClientToScreen({3, 4}));
    ASSERT_TRUE(PumpUntil([&] { return log.size() == 3; }));
    EXPECT_EQ(log, (std::vector<std::string>{"down 0 3,4", "click", "up 3,4"}));
    log.clear();
    DoubleClickAt(panel->ClientToScreen({70, 70}));
    ASSERT_TRUE(PumpUntil([&] { return log.size() == 6; }));
    EXPECT_EQ(log, (std::vector<std::string>{"down 0 70,70", "click", "up 70,70", "dblclick", "down 0 70,70 double",
                                             "up 70,70"}));
}

TEST_F(ControlsTest, AGraphicControlGetsTheMouseOfItsParent) {
    std::vector<std::string> log;
    auto* const label = Add<TLabel>(20, 30, 60, 20);
    label->SetAutoSize(false);
    label->SetOnMouseEnter([&](TObject*) { log.emplace_back("enter"); });
    label->SetOnMouseLeave([&](TObject*) { log.emplace_back("leave"); });
    label->SetOnClick([&](TObject*) { log.emplace_back("click"); });
    label->SetOnMouseUp([&](TObject*, TMouseButton, TShiftState, int x, int y) {
        log.push_back("up " + IntToStr(x) + "," + IntToStr(y));
    });
    Show();
    MoveMouse(Form->ClientToScreen({200, 200}));
    ClickAt(label->ClientToScreen({7, 8}));
    ASSERT_TRUE(PumpUntil([&] { return log.size() == 3; }));
    EXPECT_EQ(log, (std::vector<std::string>{"enter", "click", "up 7,8"}));
    // The press keeps the mouse: released outside, it is no click.
    log.clear();
    PressAt(label->ClientToScreen({1, 1}));
    ReleaseAt(Form->ClientToScreen({150, 150}));
    ASSERT_TRUE(PumpUntil([&] { return !log.empty(); }));
    MoveMouse(Form->ClientToScreen({151, 151}));
    ASSERT_TRUE(PumpUntil([&] { return log.back() == "leave"; }));
    EXPECT_EQ(log, (std::vector<std::string>{"up 130,120", "leave"}));
}

TEST_F(ControlsTest, TheControlAtAPointOfTheScreenIsFound) {
    auto* const panel = Add<TPanel>(50, 60, 200, 100);
    auto* const label = Add<TLabel>(10, 10, 50, 20, panel);
    label->SetAutoSize(false);
    auto* const button = Add<TButton>(80, 10, 75, 25, panel);
    auto* const disabled = Add<TButton>(80, 50, 75, 25, panel);
    auto* const combo = Add<TComboBox>(50, 200, 100, 21);
    disabled->SetEnabled(false);
    Show();
    EXPECT_EQ(FindDragTarget(label->ClientToScreen({1, 1}), false), label);
    EXPECT_EQ(FindVCLWindow(label->ClientToScreen({1, 1})), panel);
    EXPECT_EQ(FindDragTarget(button->ClientToScreen({1, 1}), false), button);
    EXPECT_EQ(FindDragTarget(disabled->ClientToScreen({5, 5}), false), panel);
    EXPECT_EQ(FindDragTarget(disabled->ClientToScreen({5, 5}), true), disabled);
    EXPECT_EQ(FindVCLWindow(combo->ClientToScreen({20, 10})), combo) << "not the edit inside";
    EXPECT_EQ(FindVCLWindow({2, 2}), nullptr);
}

TEST_F(ControlsTest, NotificationsComeBackToTheControl) {
    auto* const button = Add<TButton>(0, 0, 75, 25);
    int clicks = 0;
    button->SetOnClick([&](TObject*) { ++clicks; });
    Show();
    SendMessageA(button->Handle(), BM_CLICK, 0, 0);
    EXPECT_EQ(clicks, 1);
    Click(button->Handle());
    EXPECT_TRUE(PumpUntil([&] { return clicks == 2; }));
}

TEST_F(ControlsTest, AForeignParentHandsNotificationsOn) {
    const HWND host =
        CreateWindowExA(0, "#32770", "", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr, nullptr, HInstance(), nullptr);
    TButton button;
    int clicks = 0;
    button.SetOnClick([&](TObject*) { ++clicks; });
    button.SetParentWindow(host);
    button.Show();
    EXPECT_EQ(GetParent(button.Handle()), host);
    TMessage m{WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(button.Handle()), BN_CLICKED),
               reinterpret_cast<LPARAM>(button.Handle()), 0};
    EXPECT_TRUE(ReflectMessage(m));
    EXPECT_EQ(clicks, 1);
    m.LParam = reinterpret_cast<LPARAM>(host);
    EXPECT_FALSE(ReflectMessage(m));
    DestroyWindow(host);
    EXPECT_FALSE(button.HandleAllocated()) << "went with its parent";
    EXPECT_EQ(button.ParentWindow(), nullptr);
}

TEST_F(ControlsTest, EventHandlersMayFreeTheirSender) {
    auto* button = Add<TButton>(0, 0, 75, 25);
    button->SetOnClick([&](TObject* sender) {
        sender->Free();
        button = nullptr;
    });
    auto* panel = Add<TPanel>(100, 0, 75, 25);
    panel->SetOnMouseDown([&](TObject* sender, TMouseButton, TShiftState, int, int) {
        sender->Free();
        panel = nullptr;
    });
    auto* edit = Add<TEdit>(0, 50, 75, 21);
    edit->SetOnKeyDown([&](TObject* sender, uint16_t&, TShiftState) {
        sender->Free();
        edit = nullptr;
    });
    auto* label = Add<TLabel>(0, 100, 75, 21);
    label->SetCaption("label");
    label->SetOnClick([&](TObject* sender) {
        sender->Free();
        label = nullptr;
    });
    Show();
    Click(button->Handle());
    EXPECT_TRUE(PumpUntil([&] { return !button; }));
    Click(panel->Handle());
    EXPECT_TRUE(PumpUntil([&] { return !panel; }));
    ClickAt(label->ClientToScreen({2, 2}));
    EXPECT_TRUE(PumpUntil([&] { return !label; }));
    edit->SetFocus();
    PressKey('A');
    EXPECT_TRUE(PumpUntil([&] { return !edit; }));
    EXPECT_EQ(Form->ControlCount(), 0);
}

TEST_F(ControlsTest, ExceptionsOfAllHandlersReachTheApplication) {
    TExceptionLog log;
    auto* const panel = Add<TPanel>(0, 0, 100, 100);
    auto* const button = Add<TButton>(150, 0, 75, 25);
    auto* const edit = Add<TEdit>(150, 50, 75, 21);
    auto* const paint = Add<TPaintBox>(150, 100, 50, 50);
    bool armed = false;
    const auto fail = [&](const char* what) {
        if (armed) {
            throw Exception(what);
        }
    };
    paint->SetOnPaint([&](TObject*) { fail("paint"); });
    panel->SetOnMouseDown([&](TObject*, TMouseButton, TShiftState, int, int) { fail("mouse down"); });
    panel->SetOnMouseUp([&](TObject*, TMouseButton, TShiftState, int, int) { fail("mouse up"); });
    panel->SetOnClick([&](TObject*) { fail("click"); });
    panel->SetOnResize([&](TObject*) { fail("resize"); });
    panel->SetOnContextPopup([&](TObject*, const TPoint&, bool&) { fail("context"); });
    button->SetOnClick([&](TObject*) { fail("button"); });
    edit->SetOnEnter([&](TObject*) { fail("enter"); });
    edit->SetOnExit([&](TObject*) { fail("exit"); });
    edit->SetOnChange([&](TObject*) { fail("change"); });
    edit->SetOnKeyDown([&](TObject*, uint16_t&, TShiftState) { fail("key down"); });
    edit->SetOnKeyPress([&](TObject*, char32_t&) { fail("key press"); });
    edit->SetOnKeyUp([&](TObject*, uint16_t&, TShiftState) { fail("key up"); });
    Form->SetOnShow([&](TObject*) { fail("show"); });
    Form->SetOnHide([&](TObject*) { fail("hide"); });
    Form->SetOnCloseQuery([&](TObject*, bool&) { fail("close query"); });
    armed = true;
    const auto reported = [&](const std::string& what) {
        const auto& all = log.Messages();
        return std::find(all.begin(), all.end(), what) != all.end();
    };
    Form->Show();
    EXPECT_TRUE(reported("show"));
    ASSERT_TRUE(PumpUntil([&] { return Form->Active() && reported("paint"); }));
    SetWindowPos(panel->Handle(), nullptr, 0, 0, 90, 90, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_TRUE(reported("resize"));
    ClickAt(panel->ClientToScreen({5, 5}));
    EXPECT_TRUE(PumpUntil([&] { return reported("mouse down") && reported("click"); }));
    SendMessageA(panel->Handle(), WM_LBUTTONUP, 0, 0);
    EXPECT_TRUE(reported("mouse up"));
    SendMessageA(panel->Handle(), WM_CONTEXTMENU, 0, 0);
    EXPECT_TRUE(reported("context"));
    SendMessageA(button->Handle(), BM_CLICK, 0, 0);
    EXPECT_TRUE(reported("button"));
    ::SetFocus(button->Handle());
    ::SetFocus(edit->Handle());
    EXPECT_TRUE(reported("enter"));
    PressKey('A');
    EXPECT_TRUE(PumpUntil([&] { return reported("key down") && reported("key press") && reported("key up"); }));
    edit->SetText("x");
    EXPECT_TRUE(reported("change"));
    ::SetFocus(button->Handle());
    EXPECT_TRUE(reported("exit"));
    SendMessageA(Form->Handle(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(reported("close query"));
    EXPECT_TRUE(Form->Visible()) << "a close that failed closes nothing";
    Form->Hide();
    EXPECT_TRUE(reported("hide"));
    armed = false;
    Form->Show();
    EXPECT_TRUE(PumpUntil([&] { return Form->Active(); })) << "the program goes on";
}

TEST_F(ControlsTest, RecreatingTheWindowKeepsWhatIsInIt) {
    auto* const panel = Add<TPanel>(0, 0, 200, 200);
    auto* const edit = Add<TEdit>(0, 0, 100, 21, panel);
    auto* const list = Add<TListBox>(0, 30, 100, 60, panel);
    list->Items().SetCommaText("a,b,c");
    Show();
    SetWindowTextA(edit->Handle(), "typed");
    list->SetItemIndex(2);
    edit->SetFocus();
    const HWND before = panel->Handle();
    panel->RecreateWnd();
    EXPECT_TRUE(panel->HandleAllocated());
    EXPECT_FALSE(IsWindow(before) && before != panel->Handle());
    EXPECT_EQ(TextOf(edit->Handle()), "typed");
    EXPECT_EQ(SendMessageA(list->Handle(), LB_GETCOUNT, 0, 0), 3);
    EXPECT_EQ(list->ItemIndex(), 2);
    EXPECT_TRUE(edit->Focused());
}

TEST_F(ControlsTest, AControlCannotBeItsOwnParent) {
    auto* const outer = Add<TPanel>(0, 0, 100, 100);
    auto* const inner = Add<TPanel>(0, 0, 50, 50, outer);
    EXPECT_THROW(outer->SetParent(outer), EInvalidOperation);
    EXPECT_THROW(outer->SetParent(inner), EInvalidOperation);
    EXPECT_EQ(inner->Parent(), outer);
}

TEST_F(ControlsTest, ABufferedPaintShowsTheGraphicControls) {
    auto* const box = Add<TPaintBox>(10, 10, 40, 40);
    box->SetOnPaint([&](TObject*) {
        box->Canvas().Brush().SetColor(clRed);
        box->Canvas().FillRect({0, 0, 100, 100}); // clipped to the control
    });
    Form->SetColor(clLime);
    Show();
    Form->Repaint();
    const TWindowDC dc(Form->Handle());
    EXPECT_EQ(GetPixel(dc.Handle(), 30, 30), COLORREF{0x0000FF});
    EXPECT_EQ(GetPixel(dc.Handle(), 5, 5), COLORREF{0x00FF00});
    EXPECT_EQ(GetPixel(dc.Handle(), 52, 30), COLORREF{0x00FF00});
}

TEST_F(ControlsTest, EachThreadHasAMouseCaptureOfItsOwn) {
    auto* const label = Add<TLabel>(0, 0, 50, 20);
    Show();
    label->SetMouseCapture(true);
    ASSERT_TRUE(label->MouseCapture());
    bool captured = false;
    bool still = true;
    std::thread([&] {
        const unique_hwnd host(CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 60, 60, nullptr, nullptr,
                                               HInstance(), nullptr));
        TLoggingControl other(nullptr);
        other.SetParentWindow(host.get());
        other.SetMouseCapture(true);
        captured = other.MouseCapture();
        other.SetMouseCapture(false);
        still = other.MouseCapture();
    }).join();
    EXPECT_TRUE(captured);
    EXPECT_FALSE(still);
    EXPECT_TRUE(label->MouseCapture());
    label->SetMouseCapture(false);
    EXPECT_FALSE(label->MouseCapture());
}

} // namespace
} // namespace kx
