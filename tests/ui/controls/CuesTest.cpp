// SPDX-License-Identifier: MIT
// Marks for the keyboard: underlined letters and frames around what has the focus.

#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/Grids.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Handles.h"
#include "kx/win/Subclass.h"
#include "tests/support/FormTest.h"
#include "tests/support/Pictures.h"
#include "tests/support/SystemLooks.h"
#include "tests/ui/FocusPump.h"
#include "tests/ui/HostDialog.h"

namespace kx {
namespace {

using namespace test;

constexpr LRESULT Both = UISF_HIDEACCEL | UISF_HIDEFOCUS;

LRESULT StateOf(HWND window) { return SendMessageW(window, WM_QUERYUISTATE, 0, 0); }

class Cues : public TFormTest {
protected:
    Cues() {
        Form->SetBorderStyle(bsNone);
        Click({2, 2}); // the last input is no key
        Edit->SetTabStop(true);
    }
    ~Cues() override { Click({2, 2}); }
    static void Click(const TPoint& at) {
        const TFormPtr form(MakeForm(clRed, 50, 50));
        form->Show();
        SendMessageW(form->Handle(), WM_LBUTTONDOWN, 0, MAKELPARAM(at.X, at.Y));
        SendMessageW(form->Handle(), WM_LBUTTONUP, 0, MAKELPARAM(at.X, at.Y));
    }
    std::vector<uint32_t> Seen(TControl& control) {
        RedrawWindow(Form->Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        const TPoint at = Form->ScreenToClient(control.ClientToScreen({0, 0}));
        const TWindowDC dc(Form->Handle());
        return PixelsOf(dc.Handle(), {at.X, at.Y, at.X + control.Width(), at.Y + control.Height()});
    }
    TEdit* Edit = Add<TEdit>(200, 10, 80, 22);
    TButton* Button = Add<TButton>(300, 10, 80, 25);
};

TEST_F(Cues, AreHiddenAtFirstUnlessTheUserWantsThemAlways) {
    {
        const TKeyboardCues never(false);
        Show();
        EXPECT_EQ(StateOf(Form->Handle()), Both);
        EXPECT_EQ(StateOf(Edit->Handle()), Both) << "the controls inside too";
        auto* const late = Add<TPanel>(10, 10, 50, 50);
        EXPECT_EQ(StateOf(late->Handle()), Both);
    }
    const TKeyboardCues always(true);
    const TFormPtr other(MakeForm(clRed, 50, 50));
    EXPECT_EQ(StateOf(other->Handle()), 0);
}

TEST_F(Cues, AreShownInAFormThatTheKeyboardHasOpened) {
    const TKeyboardCues never(false);
    Show();
    SendMessageW(Edit->Handle(), WM_KEYDOWN, VK_SPACE, 0);
    const TFormPtr next(MakeForm(clRed, 50, 50));
    EXPECT_EQ(StateOf(next->Handle()), 0);
    SendMessageW(Edit->Handle(), WM_LBUTTONDOWN, 0, 0);
    SendMessageW(Edit->Handle(), WM_LBUTTONUP, 0, 0);
    const TFormPtr third(MakeForm(clRed, 50, 50));
    EXPECT_EQ(StateOf(third->Handle()), Both);
}

TEST_F(Cues, TabAndArrowsShowTheFocusAndAltShowsAll) {
    const TKeyboardCues never(false);
    Show();
    Edit->SetFocus();
    PressKey('A');
    PressKey(VK_LEFT); // the edit's own
    ASSERT_TRUE(FocusPump([&] { return Edit->Text() == "a"; }));
    Application().ProcessMessages();
    EXPECT_EQ(StateOf(Form->Handle()), Both);
    PressKey(VK_TAB);
    ASSERT_TRUE(FocusPump([&] { return Button->Focused(); }));
    EXPECT_EQ(StateOf(Form->Handle()), UISF_HIDEACCEL);
    EXPECT_EQ(StateOf(Edit->Handle()), UISF_HIDEACCEL);
    SendMessageW(Form->Handle(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_SET, UISF_HIDEFOCUS), 0);
    ASSERT_EQ(StateOf(Edit->Handle()), Both);
    PressKey(VK_RIGHT);
    ASSERT_TRUE(FocusPump([&] { return Edit->Focused(); }));
    EXPECT_EQ(StateOf(Form->Handle()), UISF_HIDEACCEL);
    PressKey(VK_MENU);
    EXPECT_TRUE(FocusPump([&] { return StateOf(Form->Handle()) == 0; }));
    EXPECT_EQ(StateOf(Button->Handle()), 0);
    PressKey(VK_MENU); // the menu of the window has been entered
}

TEST_F(Cues, UnderlinesFollow) {
    const TKeyboardCues always(true);
    auto* const label = Add<TLabel>(10, 10, 80, 20);
    auto* const box = Add<TGroupBox>(10, 40, 100, 40);
    auto* const panel = Add<TPanel>(10, 90, 100, 30);
    auto* const button = Add<TSpeedButton>(10, 130, 100, 26);
    auto* const gray = Add<TLabel>(120, 10, 80, 20);
    const std::vector<TControl*> all{label, box, panel, button, gray};
    label->SetCaption("&Label");
    box->SetCaption("&Box");
    panel->SetCaption("&Panel");
    button->SetCaption("&Button");
    gray->SetCaption("&Gray");
    gray->SetEnabled(false);
    Show();
    std::vector<std::vector<uint32_t>> with;
    for (TControl* const control : all) {
        with.push_back(Seen(*control));
    }
    const auto changed = [&] {
        std::vector<bool> different;
        for (size_t i = 0; i < all.size(); ++i) {
            different.push_back(Seen(*all[i]) != with[i]);
        }
        return different;
    };
    SendMessageW(label->Parent()->WindowHandle(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_SET, UISF_HIDEFOCUS), 0);
    EXPECT_THAT(changed(), Each(false));
    SendMessageW(panel->Handle(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_SET, UISF_HIDEACCEL), 0);
    EXPECT_THAT(changed(), Each(true)) << "all on the form, whichever asks";
    const auto shown = [&](const std::string& caption) {
        label->SetCaption(caption);
        return Seen(*label);
    };
    EXPECT_EQ(shown("This && &that"), shown("This && that")) << "nothing else of the text changes";
    label->SetCaption("&Label");
    SendMessageW(panel->Handle(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEACCEL), 0);
    EXPECT_THAT(changed(), Each(false));
}

TEST_F(Cues, TheFocusOfAGridFollows) {
    const TKeyboardCues always(true);
    auto* const grid = Add<TDrawGrid>(10, 10, 180, 100);
    Show();
    grid->SetFocus();
    Application().ProcessMessages();
    const auto with = Seen(*grid);
    SendMessageW(grid->Handle(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_SET, UISF_HIDEACCEL), 0);
    EXPECT_EQ(Seen(*grid), with);
    SendMessageW(grid->Handle(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_SET, UISF_HIDEFOCUS), 0);
    EXPECT_NE(Seen(*grid), with);
    SendMessageW(grid->Handle(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
    EXPECT_EQ(Seen(*grid), with);
}

/// Gives a window a procedure that keeps its marks as the system's windows do.
class TCueKeeper {
public:
    explicit TCueKeeper(HWND window) { FSubclass.Install(window); }
    LRESULT State = Both;
    int Asked = 0;

private:
    void Handle(TMessage& message) {
        if (message.Msg == WM_QUERYUISTATE) {
            message.Result = State;
        } else if (message.Msg == WM_CHANGEUISTATE) {
            ++Asked;
        } else {
            FSubclass.CallPrevious(message);
        }
    }
    TSubclass FSubclass{[this](TMessage& message) { Handle(message); }};
};

TEST_F(Cues, OfADockedFormAreThoseOfTheDialog) {
    const TKeyboardCues always(true);
    Form->HandleNeeded();
    ASSERT_EQ(StateOf(Edit->Handle()), 0);
    THostDialog host;
    TCueKeeper keeper(host.Window);
    Form->SetParentWindow(host.Window);
    EXPECT_EQ(StateOf(Edit->Handle()), Both);
    SendMessageW(Edit->Handle(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS), 0);
    EXPECT_EQ(keeper.Asked, 1) << "the dialog decides";
    EXPECT_EQ(StateOf(Edit->Handle()), Both);
    keeper.State = 0;
    SendMessageW(Form->Handle(), WM_UPDATEUISTATE, MAKEWPARAM(UIS_CLEAR, Both), 0);
    EXPECT_EQ(StateOf(Edit->Handle()), 0);
    keeper.State = Both;
    Form->SetParentWindow(nullptr);
    EXPECT_EQ(StateOf(Edit->Handle()), 0) << "a form of its own again";
}

TEST_F(Cues, EachWindowIsToldOnce) {
    const TKeyboardCues always(true);
    class TCounting : public TPanel {
    public:
        using TPanel::TPanel;
        int Told = 0;
        void WndProc(TMessage& message) override {
            Told += message.Msg == WM_UPDATEUISTATE;
            TPanel::WndProc(message);
        }
    };
    auto* const outer = Add<TPanel>(10, 10, 100, 100);
    auto* const inner = Add<TCounting>(10, 10, 50, 50, outer);
    Show();
    inner->Told = 0;
    for (int i = 0; i < 2; ++i) { // the second time, nothing changes
        SendMessageW(Form->Handle(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_SET, Both), 0);
        EXPECT_EQ(inner->Told, 1);
    }
}

TEST_F(Cues, AHandlerMayFreeTheControl) {
    const TKeyboardCues always(true);
    class TGoing : public TPanel {
    public:
        using TPanel::TPanel;
        void WndProc(TMessage& message) override {
            if (message.Msg == WM_UPDATEUISTATE) {
                Parent()->Free();
            } else {
                TPanel::WndProc(message);
            }
        }
    };
    auto* const outer = Add<TPanel>(10, 10, 100, 100);
    Add<TGoing>(10, 10, 50, 50, outer);
    auto* const last = Add<TPanel>(120, 10, 50, 50);
    Show();
    const int count = Form->ControlCount();
    SendMessageW(Form->Handle(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_SET, Both), 0);
    EXPECT_EQ(Form->ControlCount(), count - 1);
    EXPECT_EQ(StateOf(last->Handle()), Both);
}

} // namespace
} // namespace kx
