#pragma once

#include "support/DialogDriver.h"

#include <functional>
#include <gtest/gtest.h>
#include <utility>

namespace kx::test {

/// Frees a dialog of the library at each of the messages that come until it is shown and idle: shows a new one, from
/// `make`, for each of them. `behind`: when the system has answered the message, else before. `check` looks at what is
/// left each time.
template <class T>
void FreeAtEachMessage(bool behind, const std::function<T*()>& make, const std::function<void()>& check = {}) {
    constexpr UINT_PTR idleTimer = 77;
    bool idle = false;
    for (int number = 0; !idle; ++number) {
        T* dialog = make();
        T* const running = dialog;
        int messages = 0;
        const auto count = [&](const TMessage& m) {
            idle = idle || (m.Msg == WM_TIMER && m.WParam == idleTimer); // behind all painting
            if (dialog && (messages++ == number || idle)) {
                std::exchange(dialog, nullptr)->Free();
            }
        };
        if (behind) {
            dialog->SetOnEventHook([&](TMessage& m) { count(m); });
        } else {
            dialog->SetOnEventHooking([&](TObject*, TMessage& m, bool&) { count(m); });
        }
        dialog->SetOnShow([&](TObject*) { SetTimer(running->DialogWindow(), idleTimer, 1, nullptr); });
        EXPECT_FALSE(RunDialog([&] { return running->Execute(); }, {})) << "freed at message " << number;
        EXPECT_EQ(dialog, nullptr) << "it ended in another way at message " << number;
        EXPECT_EQ(ActiveDialog(), nullptr) << AllWindowTrees();
        if (check) {
            check();
        }
        ASSERT_FALSE(testing::Test::HasFailure()) << "at message " << number;
    }
}

} // namespace kx::test
