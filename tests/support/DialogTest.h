// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/ExceptionLog.h"
#include "tests/support/TestDriver.h"
#include "tests/support/TestForms.h"

#include <string>
#include <vector>

namespace kx::test {

/// A form that owns the dialogs, and a look at the exceptions that reach the application: none is expected unless a
/// test takes them out.
class TDialogTest : public testing::Test {
protected:
    explicit TDialogTest(TForm* owner = NewOwner()) : Owner(owner) { Owner->Show(); }
    ~TDialogTest() override { EXPECT_THAT(FExceptions.Messages(), testing::IsEmpty()); }

    /// The messages of the exceptions so far; forgets them.
    std::vector<std::string> TakeExceptions() { return FExceptions.Take(); }
    bool HasExceptions() const { return !FExceptions.Messages().empty(); }

private:
    static TForm* NewOwner() {
        auto* const form = NewForm<TForm>(nullptr);
        form->SetCaption("Owner");
        form->SetBounds(260, 180, 500, 400);
        return form;
    }

    TExceptionLog FExceptions;

protected:
    TFormPtr Owner;
};

} // namespace kx::test
