// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Components.h"
#include "kx/win/WinTypes.h"

namespace kx {

/// Fires `OnTimer` every `Interval` milliseconds while it is enabled, from the message loop of the thread that enabled
/// it. A handler may change, disable or free its own timer.
class TTimer : public TComponent {
    KX_CLASS()

    explicit TTimer(TComponent* owner = nullptr);
    ~TTimer() override;

    bool Enabled() const { return FEnabled; }
    void SetEnabled(bool value);
    unsigned Interval() const { return FInterval; } ///< Milliseconds; 0 stops the timer.
    void SetInterval(unsigned value);

    const TNotifyEvent& OnTimer() const { return FOnTimer; }
    void SetOnTimer(TNotifyEvent value);

    // Runs `OnTimer`.
    virtual void Timer();

private:
    void UpdateTimer();
    void StopTimer();

    bool FEnabled = true;
    unsigned FInterval = 1000;
    TNotifyEvent FOnTimer;
    UINT_PTR FId = 0; ///< Of the running system timer; 0: none.
    HWND FWindow = nullptr;
};

} // namespace kx
