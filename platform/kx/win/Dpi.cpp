// SPDX-License-Identifier: MIT
// Resolutions of screens. What newer systems know of them is asked by address: older ones lack these functions.

#include "kx/win/Dpi.h"

#include "kx/win/Handles.h"
#include "kx/win/System.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <cstdint>
#include <type_traits>

namespace kx {

namespace {

using TContext = void*; // DPI_AWARENESS_CONTEXT, which not all compilers' headers have

struct TUserFunctions {
    UINT(WINAPI* GetDpiForSystem)();
    UINT(WINAPI* GetDpiForWindow)(HWND window);
    int(WINAPI* GetSystemMetricsForDpi)(int index, UINT dpi);
    TContext(WINAPI* SetThreadDpiAwarenessContext)(TContext context);
    TContext(WINAPI* GetWindowDpiAwarenessContext)(HWND window);
};

const TUserFunctions& User() {
    static const TUserFunctions functions = [] {
        TUserFunctions f{};
        const auto find = [](auto& function, const char* name) {
            function = SystemFunction<std::decay_t<decltype(function)>>("user32.dll", name);
        };
        find(f.GetDpiForSystem, "GetDpiForSystem");
        find(f.GetDpiForWindow, "GetDpiForWindow");
        find(f.GetSystemMetricsForDpi, "GetSystemMetricsForDpi");
        find(f.SetThreadDpiAwarenessContext, "SetThreadDpiAwarenessContext");
        find(f.GetWindowDpiAwarenessContext, "GetWindowDpiAwarenessContext");
        return f;
    }();
    return functions;
}

} // namespace

int ScaleValue(int value, int to, int from) {
    const int64_t product = int64_t{value} * to;
    const int64_t half = product < 0 ? -from / 2 : from / 2;
    return static_cast<int>(std::clamp<int64_t>((product + half) / from, INT32_MIN, INT32_MAX));
}

int SystemDpi() {
    if (const auto ask = User().GetDpiForSystem) {
        return static_cast<int>(ask());
    }
    static const int value = GetDeviceCaps(TWindowDC(nullptr).Handle(), LOGPIXELSY);
    return value;
}

int SystemLength(int length) { return ScaleValue(length, SystemDpi(), DefaultDpi); }

int WindowDpi(HWND window) {
    const auto ask = User().GetDpiForWindow;
    const UINT dpi = ask && window ? ask(window) : 0; // 0: there is no such window
    return dpi != 0 ? static_cast<int>(dpi) : SystemDpi();
}

int SystemMetric(int index, int dpi) {
    const auto ask = User().GetSystemMetricsForDpi;
    return ask ? ask(index, static_cast<UINT>(dpi)) : GetSystemMetrics(index);
}

TDpiScope::TDpiScope(HWND window) {
    if (window && User().GetWindowDpiAwarenessContext && User().SetThreadDpiAwarenessContext) {
        if (const TContext context = User().GetWindowDpiAwarenessContext(window)) {
            FBefore = User().SetThreadDpiAwarenessContext(context);
        }
    }
}

TDpiScope::~TDpiScope() {
    if (FBefore) {
        User().SetThreadDpiAwarenessContext(FBefore);
    }
}

} // namespace kx
