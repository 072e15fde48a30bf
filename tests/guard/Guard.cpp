// SPDX-License-Identifier: MIT
// Starts the guard and lets each report fail the test that runs, or else the program.

#include "tests/guard/Guards.h"
#include "tests/guard/PageHeap.h"
#include "tests/guard/Report.h"
#include "tests/support/HeapCount.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace kx::guard {

namespace {

long Told = 0;    ///< Reports that have failed a test.
long Outside = 0; ///< Reports between two tests.

class TGuardListener : public testing::EmptyTestEventListener {
    /// GoogleTest's list of all tests, which is there already, would take longer than most tests.
    void OnTestProgramStart(const testing::UnitTest&) override { GuardHeap(); }
    void OnTestStart(const testing::TestInfo& test) override {
        Outside += Reports() - Told;
        Told = Reports();
        SetRunningTest((std::string(test.test_suite_name()) + "." + test.name()).c_str());
    }
    void OnTestEnd(const testing::TestInfo&) override {
        CheckSwallowedThrow();
        if (Reports() > Told) {
            ADD_FAILURE() << "faults while the test ran: " << Reports() - Told
                          << "; the lines with \"guard:\" tell them";
        }
        Told = Reports();
        SetRunningTest("no test");
    }
    void OnTestIterationEnd(const testing::UnitTest&, int) override {
        Outside += Reports() - Told;
        Told = Reports();
        if (Outside > 0) {
            ADD_FAILURE() << "faults outside of the tests: " << Outside << "; the lines with \"guard:\" tell them";
        }
        Outside = 0;
    }
};

/// Runs as the very last thing of the program, behind the destructors of its globals.
void AtExit() {
    CheckLiveBlocks();
    if (Refusals() > 0) {
        std::fprintf(stderr, "guard: note: %zu allocations found no room and were not watched\n", Refusals());
    }
    if (Reports() > Told) {
        std::fprintf(stderr, "guard: faults behind the last test: %ld\n", Reports() - Told);
        std::fflush(nullptr);
        TerminateProcess(GetCurrentProcess(), 1);
    }
}

/// Before the constructors of all globals.
[[gnu::constructor(101)]] void Start() {
    GuardFaults();
    GuardThrows();
    GuardHandles();
    std::atexit(AtExit);
}

const bool Listening = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new TGuardListener);
    test::GuardedHeap = [] {
        const TLiveBlocks live = LiveBlocks();
        return test::THeapCount{static_cast<long>(live.Blocks), static_cast<long>(live.Bytes)};
    };
    return true;
}();

} // namespace

} // namespace kx::guard
