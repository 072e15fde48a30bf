// SPDX-License-Identifier: MIT
// Timers.

#include "kx/win/Timers.h"
#include "tests/support/Cycles.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

namespace kx {
namespace {

using namespace test;

/// Handles messages until the condition holds; false when it does not within ten seconds.
bool PumpUntil(const std::function<bool()>& condition) {
    const ULONGLONG end = GetTickCount64() + 10000;
    while (!condition()) {
        if (GetTickCount64() > end) {
            return false;
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageA(&message);
        }
    }
    return true;
}

TEST(Timer, StartsEnabledWithASecondAndFiresOnlyWithAHandler) {
    TTimer timer;
    EXPECT_TRUE(timer.Enabled());
    EXPECT_EQ(timer.Interval(), 1000u);
    int fired = 0;
    timer.SetInterval(10);
    timer.SetOnTimer([&](TObject* sender) {
        EXPECT_EQ(sender, &timer);
        ++fired;
    });
    EXPECT_TRUE(PumpUntil([&] { return fired >= 3; }));
}

TEST(Timer, DoesNotFireWhileDisabledNorWithoutAnInterval) {
    TTimer stopped;
    TTimer zero;
    TTimer clock;
    int ticks = 0;
    const auto never = [](TObject*) { ADD_FAILURE(); };
    stopped.SetInterval(10);
    stopped.SetOnTimer(never);
    stopped.SetEnabled(false);
    zero.SetInterval(0);
    zero.SetOnTimer(never);
    clock.SetInterval(10);
    clock.SetOnTimer([&](TObject*) { ++ticks; });
    EXPECT_TRUE(PumpUntil([&] { return ticks >= 5; }));
}

TEST(Timer, MayDisableItself) {
    TTimer timer;
    TTimer clock;
    int fired = 0;
    int ticks = 0;
    timer.SetInterval(10);
    timer.SetOnTimer([&](TObject*) {
        ++fired;
        timer.SetEnabled(false);
    });
    clock.SetInterval(10);
    clock.SetOnTimer([&](TObject*) { ++ticks; });
    EXPECT_TRUE(PumpUntil([&] { return fired == 1 && ticks >= 5; }));
    EXPECT_EQ(fired, 1);
    timer.SetEnabled(true);
    EXPECT_TRUE(PumpUntil([&] { return fired == 2; }));
}

TEST(Timer, MayFreeItself) {
    auto* timer = new TTimer;
    int fired = 0;
    timer->SetInterval(10);
    timer->SetOnTimer([&](TObject*) {
        ++fired;
        timer->Free();
    });
    TTimer clock;
    int ticks = 0;
    clock.SetInterval(10);
    clock.SetOnTimer([&](TObject*) { ++ticks; });
    EXPECT_TRUE(PumpUntil([&] { return fired == 1 && ticks >= 5; }));
    EXPECT_EQ(fired, 1);
}

TEST(Timer, AMessageThatWaitsReachesNoFreedTimer) {
    auto timer = std::make_unique<TTimer>();
    timer->SetInterval(1);
    timer->SetOnTimer([](TObject*) { ADD_FAILURE(); });
    MSG message = {};
    const auto waiting = [&] { return PeekMessageA(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE) != 0; };
    const ULONGLONG end = GetTickCount64() + 10000;
    while (!waiting() && GetTickCount64() < end) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_TIMER);
    }
    ASSERT_EQ(message.message, UINT{WM_TIMER});
    timer.reset();
    TTimer successor; // may get the old one's place in memory
    successor.SetOnTimer([](TObject*) { ADD_FAILURE(); });
    DispatchMessageA(&message);
}

TEST(Timer, AnExceptionOfItsHandlerDoesNotStopIt) {
    TTimer timer;
    int fired = 0;
    timer.SetInterval(10);
    timer.SetOnTimer([&](TObject*) {
        if (++fired == 1) {
            throw EAbort("once");
        }
    });
    EXPECT_TRUE(PumpUntil([&] { return fired >= 2; }));
}

TEST(Timer, FiresInTheThreadThatStartedIt) {
    std::thread([] {
        TTimer timer;
        bool fired = false;
        const DWORD thread = GetCurrentThreadId();
        timer.SetInterval(10);
        timer.SetOnTimer([&](TObject*) {
            EXPECT_EQ(GetCurrentThreadId(), thread);
            fired = true;
        });
        EXPECT_TRUE(PumpUntil([&] { return fired; }));
    }).join();
}

TEST(Timer, ThousandsOfThemLeaveNothingBehind) {
    const auto work = [] {
        for (int i = 0; i < 1000; ++i) {
            TTimer timer;
            timer.SetOnTimer([](TObject*) {});
            timer.SetInterval(500);
            timer.SetEnabled(false);
            timer.SetEnabled(true);
        }
    };
    EXPECT_EQ(LeftBehind(work, TakeCensus), "");
}

} // namespace
} // namespace kx
