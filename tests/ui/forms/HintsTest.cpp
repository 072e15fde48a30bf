// SPDX-License-Identifier: MIT
// Hints of controls.

#include "tests/support/TestDriver.h"
#include "tests/ui/SampleForms.h"
#include "tests/ui/SecondMonitor.h"

#include "kx/win/Monitors.h"
#include "tests/support/TestForms.h"

namespace kx {
namespace {

using namespace test;

TEST(Hints, ShowUnderTheMouseAndGoWithIt) {
    const std::unique_ptr<TAllControlsForm, TFreeDeleter> form(NewForm<TAllControlsForm>(nullptr));
    Application().SetHintPause(20);
    std::string longHint;
    Application().SetHint(""); // the mouse may have been over such a control before
    Application().SetOnHint([&](TObject*) { longHint = Application().Hint(); });
    form->Show();
    ASSERT_TRUE(PumpUntil([&] { return form->Active(); }));
    MoveMouse(CenterOf(form->Edit1->Handle()));
    ASSERT_TRUE(PumpUntil([&] { return Application().HintHandle() != nullptr; }));
    EXPECT_EQ(TextOf(Application().HintHandle()), "Titel");
    EXPECT_EQ(longHint, "Der Titel des Eintrags");
    EXPECT_TRUE(form->Active()) << "a hint takes no focus";
    MoveMouse(form->ClientToScreen({300, 365}));
    EXPECT_TRUE(PumpUntil([&] { return Application().HintHandle() == nullptr && longHint.empty(); }));

    Application().ActivateHint(CenterOf(form->Edit1->Handle()));
    EXPECT_NE(Application().HintHandle(), nullptr);
    Application().CancelHint();
    EXPECT_EQ(Application().HintHandle(), nullptr);
    Application().SetOnHint(nullptr);
    Application().SetHintPause(500);
}

TEST(Hints, AControlThatIsFreedTakesItsHintAlong) {
    const std::unique_ptr<TAllControlsForm, TFreeDeleter> form(NewForm<TAllControlsForm>(nullptr));
    form->Show();
    ASSERT_TRUE(PumpUntil([&] { return form->Active(); }));
    Application().ActivateHint(CenterOf(form->Edit1->Handle()));
    ASSERT_NE(Application().HintHandle(), nullptr);
    form->Edit1->Free();
    EXPECT_EQ(Application().HintHandle(), nullptr);
}

TEST(Hints, TheTextOfAControlThatHasGoneGoesWithTheNextMoveOfTheMouse) {
    const std::unique_ptr<TAllControlsForm, TFreeDeleter> form(NewForm<TAllControlsForm>(nullptr));
    form->Show();
    ASSERT_TRUE(PumpUntil([&] { return form->Active(); }));
    const TPoint free = form->ClientToScreen({300, 365});
    Application().SetHint("");
    MoveMouse(CenterOf(form->Edit1->Handle()));
    ASSERT_TRUE(PumpUntil([&] { return Application().Hint() == "Der Titel des Eintrags"; }));
    form->Edit1->Free();
    MoveMouse(free);
    EXPECT_TRUE(PumpUntil([&] { return Application().Hint().empty(); }));
    Application().SetHint("of the program");
    MoveMouse({free.X + 1, free.Y});
    ASSERT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
    EXPECT_EQ(Application().Hint(), "of the program") << "the mouse has come over nothing else";
    Application().SetHint("");
}

/// The system finds this window at all points.
class TWindowEverywhere {
public:
    explicit TWindowEverywhere(HWND window) { Window = window; }

private:
    static HWND WINAPI At(POINT) { return Window; }
    inline static HWND Window = nullptr;
    TImportPatch FAt{"WindowFromPoint", reinterpret_cast<void*>(At)};
};

TEST(Hints, StayOnTheMonitorOfThePointer) {
    const std::unique_ptr<TAllControlsForm, TFreeDeleter> form(NewForm<TAllControlsForm>(nullptr));
    form->Show();
    const TWindowEverywhere edit(form->Edit1->Handle());
    const TSecondMonitor second(nullptr);
    const auto hintAt = [&](const TPoint& point) {
        Application().ActivateHint(point);
        return ScreenRectOf(Application().HintHandle());
    };
    const TRect within = hintAt({-600, 200});
    EXPECT_EQ(within.Left, -600);
    EXPECT_GT(within.Top, 200);
    EXPECT_LT(Width(within), 200);
    const TRect high = hintAt({-1000, -100});
    EXPECT_EQ(high.Left, -1000);
    EXPECT_LT(high.Top, -50);
    const TRect corner = hintAt({-2, 698});
    EXPECT_EQ(corner.Right, 0);
    EXPECT_EQ(corner.Bottom, 700);
    std::string longHint;
    for (int i = 0; i < 200; ++i) {
        longHint += "many words ";
    }
    form->Edit1->SetHint(longHint);
    const int half = Width(TSecondMonitor::Whole) / 2;
    EXPECT_NEAR(Width(hintAt({-1000, 200})), half, 80);
    Application().CancelHint();
}

/// The form with all controls, the mouse over its first edit and hints that come at once.
class HintTips : public testing::Test {
protected:
    HintTips() : Form(NewForm<TAllControlsForm>(nullptr)) {
        Application().SetHintPause(20);
        Form->Show();
        EXPECT_TRUE(PumpUntil([&] { return Form->Active(); }));
        MoveMouse(Form->ClientToScreen({300, 365}));
        EXPECT_TRUE(PumpUntil([] { return MouseInputTaken(); }));
    }
    ~HintTips() override {
        Application().CancelHint();
        Application().SetHintPause(500);
    }
    static HWND Tip() { return Application().HintHandle(); }
    void Await() {
        MoveMouse(CenterOf(Form->Edit1->Handle()));
        ASSERT_TRUE(PumpUntil([] { return Tip() != nullptr; }));
    }
    /// More than long enough for a hint to come.
    static void Wait() {
        const ULONGLONG end = GetTickCount64() + 150;
        PumpUntil([=] { return GetTickCount64() > end; });
    }
    std::unique_ptr<TAllControlsForm, TFreeDeleter> Form;
};

TEST_F(HintTips, AreTheSystems) {
    Await();
    EXPECT_EQ(ClassOf(Tip()), "tooltips_class32");
    EXPECT_TRUE(IsWindowVisible(Tip()));
    EXPECT_TRUE(GetWindowLongA(Tip(), GWL_EXSTYLE) & WS_EX_TOPMOST);
    EXPECT_EQ(GetWindow(Tip(), GW_OWNER), Application().Handle());
    const POINT inside = ToPOINT(CenterOf(Tip()));
    EXPECT_NE(WindowFromPoint(inside), Tip()) << "the mouse acts on what is below";
    Screenshot("hint");
}

TEST_F(HintTips, ThereIsNeverMoreThanOne) {
    Application().ActivateHint(CenterOf(Form->Edit1->Handle()));
    const HWND first = Tip();
    Form->Edit1->SetHint("another one");
    Application().ActivateHint(CenterOf(Form->Edit1->Handle()));
    EXPECT_EQ(TextOf(Tip()), "another one");
    int shown = 0;
    for (const HWND window : TopWindows("tooltips_class32")) {
        shown += IsWindowVisible(window);
    }
    EXPECT_EQ(shown, 1);
    EXPECT_TRUE(first == Tip() || !IsWindow(first));
    Application().CancelHint();
    EXPECT_EQ(TopWindows("tooltips_class32").size(), 0u);
}

TEST_F(HintTips, AClickTakesThemAway) {
    Await();
    ClickAt(CenterOf(Form->Edit1->Handle()));
    EXPECT_TRUE(PumpUntil([] { return !Tip(); }));
    const TPoint at = CenterOf(Form->Edit1->Handle());
    MoveMouse({at.X + 3, at.Y});
    Wait();
    EXPECT_FALSE(Tip()) << "nor does it come back over the same control";
    MoveMouse(Form->ClientToScreen({300, 365}));
    ASSERT_TRUE(PumpUntil([] { return Application().Hint().empty(); }));
    Await();
}

TEST_F(HintTips, AKeyTakesThemAway) {
    Await();
    Form->Edit1->SetFocus();
    PressKey('A');
    EXPECT_TRUE(PumpUntil([] { return !Tip(); }));
    const TPoint at = CenterOf(Form->Edit1->Handle());
    MoveMouse({at.X + 3, at.Y});
    Wait();
    EXPECT_FALSE(Tip());
}

TEST_F(HintTips, NoneComesWhereTheUserHasClickedMeanwhile) {
    Application().SetHintPause(200);
    MoveMouse(CenterOf(Form->Edit1->Handle()));
    ASSERT_TRUE(PumpUntil([] { return !Application().Hint().empty(); }));
    ClickAt(CenterOf(Form->Edit1->Handle()));
    const ULONGLONG end = GetTickCount64() + 400;
    EXPECT_TRUE(PumpUntil([=] { return Tip() || GetTickCount64() > end; }));
    EXPECT_FALSE(Tip());
}

TEST_F(HintTips, GoWithTheWindowThatIsNoLongerActive) {
    Await();
    const TFormPtr other(NewForm<TForm>(nullptr));
    other->SetBounds(600, 600, 100, 100);
    other->Show();
    EXPECT_TRUE(PumpUntil([] { return !Tip(); }));
}

TEST_F(HintTips, HaveAsManyLinesAsTheirText) {
    const auto height = [&](const std::string& text) {
        Form->Edit1->SetHint(text);
        Application().ActivateHint(CenterOf(Form->Edit1->Handle()));
        return Height(ScreenRectOf(Tip()));
    };
    const int one = height("one");
    const int three = height("one\ntwo\r\nthree");
    EXPECT_GT(three, one + one);
    EXPECT_LT(three, 4 * one);
    std::string text;
    for (int i = 0; i < 100; ++i) {
        text += "many words ";
    }
    EXPECT_GT(height(text), one);
    EXPECT_LE(Width(ScreenRectOf(Tip())), Width(MonitorAt({0, 0, 1, 1}).Whole) / 2 + 40);
    Screenshot("hint-wrapped");
}

TEST_F(HintTips, ShowTextsInAnyScript) {
    const std::wstring text =
        GetACP() == CP_UTF8 ? L"\u00DCber \u0395\u03BB\u03BB\u03AC\u03B4\u03B1 \u6F22\u5B57 \xD83D\xDE00" : L"Uber";
    Form->Edit1->SetHint(FromWide(text));
    Application().ActivateHint(CenterOf(Form->Edit1->Handle()));
    EXPECT_EQ(WideWindowText(Tip()), text);
    Screenshot("hint-scripts", Tip());
}

TEST_F(HintTips, ShowTheirTextAsItIs) {
    Form->Edit1->SetHint("Save & close");
    Application().ActivateHint(CenterOf(Form->Edit1->Handle()));
    EXPECT_EQ(TextOf(Tip()), "Save & close");
    const int marked = Width(ScreenRectOf(Tip()));
    Form->Edit1->SetHint("Save  close");
    Application().ActivateHint(CenterOf(Form->Edit1->Handle()));
    EXPECT_GT(marked, Width(ScreenRectOf(Tip()))) << "the sign is one of the text's own";
    Form->Edit1->SetHint("");
    Application().ActivateHint(CenterOf(Form->Edit1->Handle()));
    EXPECT_NE(TextOf(Tip()), "Save  close");
}

TEST(Hints, KeepOffTheSystemsBars) {
    const std::unique_ptr<TAllControlsForm, TFreeDeleter> form(NewForm<TAllControlsForm>(nullptr));
    form->Show();
    const TWindowEverywhere edit(form->Edit1->Handle());
    const TSecondMonitor second(nullptr);
    form->Edit1->SetHint(std::string(200, 'x'));
    Application().ActivateHint({-965, -55});
    const TRect hint = ScreenRectOf(Application().HintHandle());
    EXPECT_GE(hint.Left, TSecondMonitor::Free.Left);
    EXPECT_GE(hint.Top, TSecondMonitor::Free.Top);
    Application().CancelHint();
}

} // namespace
} // namespace kx
