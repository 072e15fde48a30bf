// SPDX-License-Identifier: MIT
// Hidden windows of threads.

#include "kx/win/ThreadWindow.h"

#include "kx/win/PerThread.h"
#include "kx/win/Windows.h"

#include <atomic>
#include <map>

namespace kx {

namespace {

constinit std::atomic<int> Count{0}; ///< Of all threads.

} // namespace

/// Those of one thread.
struct TThreadWindow::TWindows {
    std::map<const TThreadWindow*, HWND> ByKind;

    TWindows() = default;
    TWindows(const TWindows&) = delete;
    TWindows& operator=(const TWindows&) = delete;
    ~TWindows() { Count -= static_cast<int>(ByKind.size()); } // the thread ends, and they with it

    static const TPerThread<TWindows> All;
};

const TPerThread<TThreadWindow::TWindows> TThreadWindow::TWindows::All;

HWND TThreadWindow::Handle() const {
    const auto [place, isNew] = TWindows::All->ByKind.try_emplace(this);
    if (isNew) {
        ++Count;
    }
    if (!place->second) {
        place->second = Make();
    }
    return place->second;
}

HWND TThreadWindow::Make() const {
    if (!FProcedure) {
        return CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, HInstance(), nullptr);
    }
    WNDCLASSW cls = {};
    cls.lpfnWndProc = FProcedure;
    cls.hInstance = HInstance();
    cls.lpszClassName = FClassName;
    RegisterClassW(&cls); // it fails when another thread has done so
    return CreateWindowExW(WS_EX_TOOLWINDOW, FClassName, L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, HInstance(),
                           nullptr);
}

bool TThreadWindow::ReleaseAll() {
    auto& windows = TWindows::All->ByKind;
    Count -= static_cast<int>(windows.size());
    for (const auto& [kind, window] : windows) {
        DestroyWindow(window);
        if (kind->FProcedure) {
            UnregisterClassW(kind->FClassName, HInstance());
        }
    }
    windows.clear();
    return Count == 0;
}

} // namespace kx
