// SPDX-License-Identifier: MIT
// Resolutions of screens, and of the windows on them.

#include "kx/win/Dpi.h"

#include "kx/win/Handles.h"
#include "kx/win/System.h"
#include "kx/win/Windows.h"

#include <gtest/gtest.h>

namespace kx {
namespace {

/// False on systems before Windows 10 1607, which know one way only.
bool HasAwareness() { return FindSystemFunction("user32.dll", "SetThreadDpiAwarenessContext") != nullptr; }

/// How a thread sees the screen, as Windows 10 has it.
enum TAwareness { Unaware, SystemAware, PerMonitorAware };

void* SetContext(void* context) {
    const auto set = SystemFunction<void*(WINAPI*)(void*)>("user32.dll", "SetThreadDpiAwarenessContext");
    return set(context);
}

TAwareness Awareness() {
    const auto get = SystemFunction<void*(WINAPI*)()>("user32.dll", "GetThreadDpiAwarenessContext");
    const auto ask = SystemFunction<int(WINAPI*)(void*)>("user32.dll", "GetAwarenessFromDpiAwarenessContext");
    return static_cast<TAwareness>(ask(get()));
}

/// The thread sees the screen in that way; as at first at the end of the scope.
class TThreadAware {
public:
    explicit TThreadAware(TAwareness awareness)
        : FBefore(SetContext(reinterpret_cast<void*>(INT_PTR{-1} - awareness))) {} // NOLINT(performance-no-int-to-ptr)
    TThreadAware(const TThreadAware&) = delete;
    TThreadAware& operator=(const TThreadAware&) = delete;
    ~TThreadAware() { SetContext(FBefore); }

private:
    void* FBefore;
};

class Dpi : public testing::Test {
protected:
    void SetUp() override {
        if (!HasAwareness()) {
            GTEST_SKIP() << "Windows before 10 1607 knows one way only";
        }
    }
    static unique_hwnd Window(TAwareness awareness) {
        const TThreadAware aware(awareness);
        return unique_hwnd(CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                           GetModuleHandleA(nullptr), nullptr));
    }
};

TEST_F(Dpi, AScopeTakesOverTheWayOfAWindow) {
    const unique_hwnd system = Window(SystemAware);
    const unique_hwnd monitor = Window(PerMonitorAware);
    const TThreadAware aware(SystemAware);
    {
        const TDpiScope scope(monitor.get());
        EXPECT_EQ(Awareness(), PerMonitorAware);
        {
            const TDpiScope inner(system.get());
            EXPECT_EQ(Awareness(), SystemAware);
        }
        EXPECT_EQ(Awareness(), PerMonitorAware);
        const TDpiScope nothing(nullptr);
        EXPECT_EQ(Awareness(), PerMonitorAware);
    }
    EXPECT_EQ(Awareness(), SystemAware);
}

TEST_F(Dpi, AProgramThatKnowsOfNoOtherResolutionHasTheUsualOne) {
    const unique_hwnd unaware = Window(Unaware);
    EXPECT_EQ(WindowDpi(unaware.get()), DefaultDpi);
    const TThreadAware aware(Unaware);
    EXPECT_EQ(SystemDpi(), DefaultDpi);
    EXPECT_EQ(WindowDpi(nullptr), DefaultDpi);
    EXPECT_EQ(WindowDpi(reinterpret_cast<HWND>(UINT_PTR{0xDEAD})), DefaultDpi) << "no such window";
}

TEST_F(Dpi, MeasuresGrowWithTheResolution) {
    EXPECT_EQ(SystemMetric(SM_CXVSCROLL, SystemDpi()), GetSystemMetrics(SM_CXVSCROLL));
    EXPECT_GT(SystemMetric(SM_CXVSCROLL, 4 * SystemDpi()), 2 * GetSystemMetrics(SM_CXVSCROLL));
}

} // namespace
} // namespace kx
