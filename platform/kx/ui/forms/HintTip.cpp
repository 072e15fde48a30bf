// SPDX-License-Identifier: MIT
// The system's tool tip with a hint.

#include "kx/ui/forms/HintTip.h"

#include "kx/win/Dpi.h"
#include "kx/win/Monitors.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

namespace {

/// The part of the pointer's monitor that a hint may cover: not the system's bars, unless the pointer is over them.
TRect AreaFor(const TPoint& pointer) {
    const TMonitorPlace monitor = MonitorAt({pointer.X, pointer.Y, pointer.X + 1, pointer.Y + 1});
    const RECT free = ToRECT(monitor.Free);
    return PtInRect(&free, ToPOINT(pointer)) ? monitor.Free : monitor.Whole;
}

} // namespace

void THintTip::Show(HWND owner, const TPoint& pointer, const std::string& text) {
    // A new one each time: its font and colours are those that the user has chosen by now.
    FWindow.reset(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0,
                                  0, 0, 0, owner, nullptr, HInstance(), nullptr));
    const HWND tip = FWindow.get();
    if (!tip) {
        return;
    }
    const TRect area = AreaFor(pointer);
    std::wstring wide = ToWide(text);
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE; // the size that controls of all versions know
    tool.uFlags = TTF_TRACK | TTF_ABSOLUTE | TTF_TRANSPARENT;
    tool.hwnd = owner;
    tool.lpszText = wide.data();
    const auto send = [&](UINT message, WPARAM wParam, LPARAM lParam) {
        return SendMessageW(tip, message, wParam, lParam);
    };
    const auto info = reinterpret_cast<LPARAM>(&tool);
    send(TTM_SETMAXTIPWIDTH, 0, kx::Width(area) / 2); // only with a limit does it show several lines
    send(TTM_ADDTOOLW, 0, info);
    const int below = pointer.Y + SystemMetric(SM_CYCURSOR, WindowDpi(owner)) / 2 + 4;
    send(TTM_TRACKPOSITION, 0, MAKELPARAM(pointer.X, below));
    send(TTM_TRACKACTIVATE, TRUE, info);
    // Where there is no room, some systems put it beside the monitor, others on the first one.
    RECT r{};
    GetWindowRect(tip, &r);
    const TRect shown = FromRECT(r);
    const int left = std::max(area.Left, std::min(pointer.X, area.Right - kx::Width(shown)));
    const int top = std::max(area.Top, std::min(below, area.Bottom - kx::Height(shown)));
    SetWindowPos(tip, HWND_TOPMOST, left, top, 0, 0, SWP_NOACTIVATE | SWP_NOSIZE);
}

} // namespace kx
