// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/FormTest.h"

#include <gtest/gtest.h>

namespace kx::test {

/// A form with one control.
template <class T> class TControlTest : public TFormTest {
protected:
    T* Control = Add<T>(10, 10, 200, 100);
};

} // namespace kx::test
