#pragma once

#include "kx/ui/forms/Forms.h"
#include "tests/support/TestDriver.h"

#include <gtest/gtest.h>

namespace kx::test {

/// A form with one control.
template <class T> class TControlTest : public ::testing::Test {
protected:
    TControlTest() : Form(NewForm<TForm>(nullptr)), Control(new T(Form.get())) {
        Form->SetBounds(100, 100, 400, 300);
        Control->SetBounds(10, 10, 200, 100);
        Control->SetParent(Form.get());
    }
    void Show() {
        Form->Show();
        ASSERT_TRUE(PumpUntil([&] { return Form->Active(); }));
    }
    std::unique_ptr<TForm, TFreeDeleter> Form;
    T* Control;
};

} // namespace kx::test
