// SPDX-License-Identifier: MIT
// The mouse wheel's events.

#include "kx/ui/widgets/ScrollBoxes.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/FormTest.h"

#include <gmock/gmock.h>

namespace kx {
namespace {

using namespace test;
using testing::ElementsAre;

class MouseWheel : public TFormTest {
protected:
    static LRESULT Turn(TWinControl& control, int delta, WPARAM keys = 0) {
        return SendMessageA(control.Handle(), WM_MOUSEWHEEL, keys | static_cast<WPARAM>(static_cast<WORD>(delta)) << 16,
                            MAKELPARAM(-7, 40));
    }
    /// Logs what the control's events tell.
    void Listen(TWinControl& control, const std::string& name, bool uses) {
        control.SetOnMouseWheel(
            [this, name](TObject*, TShiftState shift, int delta, const TPoint& position, bool& handled) {
                EXPECT_EQ(position, (TPoint{-7, 40}));
                Log.push_back(name + std::to_string(delta) + (shift.Contains(ssCtrl) ? "c" : ""));
                handled = UsesTurn;
            });
        const auto notch = [this, uses](const std::string& what) {
            return [this, uses, what](TObject*, TShiftState, const TPoint& position, bool& handled) {
                EXPECT_EQ(position, (TPoint{-7, 40}));
                Log.push_back(what);
                handled = uses;
            };
        };
        control.SetOnMouseWheelUp(notch(name + "up"));
        control.SetOnMouseWheelDown(notch(name + "down"));
    }
    std::vector<std::string> Log;
    bool UsesTurn = false;
};

TEST_F(MouseWheel, EachTurnIsToldAndEachWholeNotchAfterIt) {
    auto* const button = Add<TButton>(0, 0, 80, 30);
    Show();
    Listen(*button, "", true);
    EXPECT_EQ(Turn(*button, 120, MK_CONTROL), 1);
    EXPECT_THAT(std::exchange(Log, {}), ElementsAre("120c", "up"));
    Turn(*button, -240);
    EXPECT_THAT(std::exchange(Log, {}), ElementsAre("-240", "down", "down"));
    Turn(*button, 80);
    Turn(*button, 80);
    EXPECT_THAT(std::exchange(Log, {}), ElementsAre("80", "80", "up"));
    Turn(*button, -160);
    EXPECT_THAT(std::exchange(Log, {}), ElementsAre("-160", "down")) << "the 40 that were left count";
    UsesTurn = true;
    EXPECT_EQ(Turn(*button, 120), 1);
    EXPECT_THAT(std::exchange(Log, {}), ElementsAre("120"));
}

TEST_F(MouseWheel, WhatNobodyUsesGoesToTheControlAround) {
    auto* const button = Add<TButton>(0, 0, 80, 30);
    Show();
    Listen(*button, "b", false);
    Listen(*Form, "f", true);
    Turn(*button, 120);
    EXPECT_THAT(std::exchange(Log, {}), ElementsAre("b120", "bup", "f120", "fup"));
    Listen(*button, "b", true);
    Turn(*button, 120);
    EXPECT_THAT(std::exchange(Log, {}), ElementsAre("b120", "bup"));
}

TEST_F(MouseWheel, AHandlerKeepsAScrollBoxFromScrolling) {
    auto* const box = Add<TScrollBox>(0, 0, 100, 100);
    Add<TButton>(0, 0, 50, 1000, box);
    Show();
    Listen(*box, "", true);
    Turn(*box, -120);
    EXPECT_EQ(box->VertScrollBar().Position(), 0);
    Listen(*box, "", false);
    Turn(*box, -120);
    EXPECT_GT(box->VertScrollBar().Position(), 0);
}

TEST_F(MouseWheel, AHandlerMayFreeTheControl) {
    for (const bool atOnce : {true, false}) {
        auto* button = Add<TButton>(0, 0, 80, 30);
        Show();
        if (atOnce) {
            button->SetOnMouseWheel([&](TObject*, TShiftState, int, const TPoint&, bool&) { button->Free(); });
        } else {
            button->SetOnMouseWheelUp([&](TObject*, TShiftState, const TPoint&, bool&) { button->Free(); });
        }
        Turn(*button, 360);
        EXPECT_EQ(Form->ControlCount(), 0);
    }
}

} // namespace
} // namespace kx
