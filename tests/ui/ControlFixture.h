#pragma once

#include "tests/support/FormTest.h"

#include <gtest/gtest.h>

namespace kx::test {

/// Pumps by the application's message loop, which moves the focus and presses default buttons.
inline bool FocusPump(const TCondition& condition) {
    const DWORD start = GetTickCount();
    while (!condition() && GetTickCount() - start < 20000) {
        Application().ProcessMessages();
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    }
    return condition();
}

/// A form with one control.
template <class T> class TControlTest : public TFormTest {
protected:
    T* Control = Add<T>(10, 10, 200, 100);
};

} // namespace kx::test
