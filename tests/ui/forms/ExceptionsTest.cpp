// SPDX-License-Identifier: MIT
// Exceptions while a button holds the mouse.

#include "kx/core/Barrier.h"
#include "kx/win/Handles.h"
#include "kx/win/Windows.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/TestForms.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace kx {
namespace {

using namespace test;

void Fail() {
    Guarded([] { throw std::runtime_error("in a callback"); });
}

/// A button of the system's, such as its dialogs have, which is being pressed.
class PressedButton : public testing::Test {
protected:
    void SetUp() override { SetCapture(Button.get()); }
    void TearDown() override { ReleaseCapture(); }

    unique_hwnd Button{
        CreateWindowExA(0, "BUTTON", "", WS_POPUP | WS_VISIBLE, 0, 0, 50, 20, nullptr, nullptr, HInstance(), nullptr)};
};

TEST_F(PressedButton, KeepsTheMouseWhenAnExceptionIsHandled) {
    const TExceptionLog log;
    Fail();
    EXPECT_EQ(log.Messages(), std::vector<std::string>{"in a callback"});
    EXPECT_EQ(GetCapture(), Button.get());
}

TEST(PressedControl, LetsGoOfTheMouseWhenAnExceptionIsHandled) {
    const TExceptionLog log;
    const TFormPtr form(new TForm(nullptr));
    form->Show();
    SetCapture(form->Handle());
    Fail();
    EXPECT_EQ(GetCapture(), nullptr);
}

} // namespace
} // namespace kx
