// Hints of controls.

#include "tests/support/TestDriver.h"
#include "tests/ui/SampleForms.h"
#include "tests/ui/SecondMonitor.h"

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

} // namespace
} // namespace kx
