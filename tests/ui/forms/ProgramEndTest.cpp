// SPDX-License-Identifier: MIT
// Static objects and threads at a program's end.

#include "tests/support/Process.h"

#include <gtest/gtest.h>

namespace kx {
namespace {

using test::RunProgram;

TEST(ProgramEnd, StaticObjectsMayUseMenusAndTimers) {
    EXPECT_EQ(RunProgram("program\\kx_ui_program.exe", "statics"), 7u);
}

TEST(ProgramEnd, ThreadsAskedToEndMayMakeAndFreeThreads) {
    EXPECT_EQ(RunProgram("program\\kx_ui_program.exe", "threads"), 7u);
}

} // namespace
} // namespace kx
