// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/TestDriver.h"
#include "tests/support/TestForms.h"

namespace kx::test {

/// A form of 400 x 300 pixels, with controls on it.
class TFormTest : public testing::Test {
protected:
    TFormTest() : Form(NewForm<TForm>(nullptr)) { Form->SetBounds(100, 100, 400, 300); }

    /// A new control of the form's, on it or on another parent.
    template <class T> T* Add(int left, int top, int width, int height, TWinControl* parent = nullptr) {
        auto* const control = new T(Form.get());
        control->SetBounds(left, top, width, height);
        control->SetParent(parent ? parent : Form.get());
        return control;
    }
    void Show() {
        Form->Show();
        ASSERT_TRUE(PumpUntil([&] { return Form->Active(); }));
    }
    static TPoint Middle(TControl& control) {
        return control.ClientToScreen({control.Width() / 2, control.Height() / 2});
    }

    TFormPtr Form;
};

} // namespace kx::test
