// SPDX-License-Identifier: MIT
// Timers.

#include "kx/win/Timers.h"

#include "kx/core/Barrier.h"
#include "kx/core/Lasting.h"
#include "kx/win/ThreadWindow.h"
#include "kx/win/Windows.h"

#include <mutex>
#include <unordered_map>

namespace kx {

namespace {

/// The timers that run, by their system number. A message of a timer that was stopped meanwhile may still be on its
/// way, so numbers are not used again.
struct TRunningTimers {
    std::mutex Lock;
    std::unordered_map<UINT_PTR, TTimer*> ById;
    UINT_PTR LastId = 0;
};

TRunningTimers& Running() {
    static auto& timers = Lasting<TRunningTimers>(); // timers may outlive static objects
    return timers;
}

TTimer* FindTimer(UINT_PTR id) {
    const std::lock_guard lock(Running().Lock);
    const auto found = Running().ById.find(id);
    return found == Running().ById.end() ? nullptr : found->second;
}

void CALLBACK OnSystemTimer(HWND window, UINT, UINT_PTR id, DWORD) {
    Guarded([window, id] {
        if (TTimer* timer = FindTimer(id)) {
            timer->Timer();
        } else {
            KillTimer(window, id); // stopped by another thread, which could not do that
        }
    });
}

/// To which the timers of a thread belong.
constexpr TThreadWindow TimerWindow;

} // namespace

const TClass& TTimer::StaticClass() {
    static const TClassBuilder<TTimer> cls("TTimer", TComponent::StaticClass(), [](auto& c) {
        c.Property("Enabled", &TTimer::Enabled, &TTimer::SetEnabled).Default = true;
        c.Property("Interval", &TTimer::Interval, &TTimer::SetInterval).Default = 1000;
        c.Property("OnTimer", &TTimer::OnTimer, &TTimer::SetOnTimer);
        c.Creatable();
    });
    return cls.Class();
}

TTimer::TTimer(TComponent* owner) : TComponent(owner) {}

TTimer::~TTimer() { StopTimer(); }

void TTimer::SetEnabled(bool value) {
    if (value != FEnabled) {
        FEnabled = value;
        UpdateTimer();
    }
}

void TTimer::SetInterval(unsigned value) {
    if (value != FInterval) {
        FInterval = value;
        UpdateTimer();
    }
}

void TTimer::SetOnTimer(TNotifyEvent value) {
    const bool had = static_cast<bool>(FOnTimer);
    FOnTimer = std::move(value);
    if (had != static_cast<bool>(FOnTimer)) {
        UpdateTimer();
    }
}

void TTimer::Timer() { FOnTimer(this); }

void TTimer::StopTimer() {
    if (FId == 0) {
        return;
    }
    KillTimer(FWindow, FId);
    const std::lock_guard lock(Running().Lock);
    Running().ById.erase(FId);
    FId = 0;
}

/// Starts the timer anew, with its whole interval ahead, or stops it.
void TTimer::UpdateTimer() {
    StopTimer();
    if (!FEnabled || FInterval == 0 || !FOnTimer) {
        return;
    }
    FWindow = TimerWindow.Handle();
    {
        const std::lock_guard lock(Running().Lock);
        FId = ++Running().LastId;
        Running().ById[FId] = this;
    }
    if (!SetTimer(FWindow, FId, FInterval, OnSystemTimer)) {
        StopTimer();
        throw EOutOfMemory("Not enough timers available");
    }
}

} // namespace kx
