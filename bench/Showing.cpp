// SPDX-License-Identifier: MIT
// Shows dialogs and takes the time.

#include "Showing.h"

#include "Report.h"
#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <array>
#include <cstdio>
#include <string_view>

namespace kx::bench {

namespace {

/// Watches one showing from below all subclassing: attached to the dialog's window when it is activated, before the
/// library learns of it.
struct TShowing {
    std::function<void(HWND)> OnIdle;
    HWND Dialog = nullptr;
    double FirstPaint = 0;
    bool Ended = false;
};

TShowing* Current = nullptr;

constexpr UINT_PTR ProbeId = 1;
constexpr UINT_PTR IdleTimer = 0x4B58;

LRESULT CALLBACK Probe(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR data) {
    auto& showing = *reinterpret_cast<TShowing*>(data);
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    if (message == WM_PAINT && showing.FirstPaint == 0) {
        showing.FirstPaint = Now();
        // A timer fires when nothing else waits: the list and the docked forms are painted by then too.
        SetTimer(window, IdleTimer, 1, nullptr);
    } else if (message == WM_TIMER && wParam == IdleTimer && !showing.Ended) {
        showing.Ended = true;
        KillTimer(window, IdleTimer);
        if (showing.OnIdle) {
            showing.OnIdle(window);
        }
        PostMessageA(window, WM_COMMAND, IDCANCEL, 0);
    } else if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, Probe, ProbeId);
    }
    return result;
}

LRESULT CALLBACK CbtHook(int code, WPARAM wParam, LPARAM lParam) {
    const auto window = reinterpret_cast<HWND>(wParam);
    char name[16] = "";
    if (code == HCBT_ACTIVATE && Current && !Current->Dialog && GetClassNameA(window, name, sizeof(name)) &&
        std::string_view(name) == "#32770") {
        Current->Dialog = window;
        SetWindowSubclass(window, Probe, ProbeId, reinterpret_cast<DWORD_PTR>(Current));
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

UINT_PTR CALLBACK EmptyHook(HWND, UINT, WPARAM, LPARAM) { return 0; }

/// The seconds from the call to the end of the dialog's first WM_PAINT.
double Show(const std::function<void()>& showDialog, std::function<void(HWND)> onIdle) {
    TShowing showing;
    showing.OnIdle = std::move(onIdle);
    Current = &showing;
    const unique_hhook hook(SetWindowsHookExA(WH_CBT, CbtHook, nullptr, GetCurrentThreadId()));
    const double start = Now();
    showDialog();
    Current = nullptr;
    return showing.FirstPaint - start;
}

} // namespace

void WithShownDialog(const std::function<void()>& showDialog, const std::function<void(HWND)>& measure) {
    Show(showDialog, measure);
}

TRow CompareFirstPaint(const std::string& what, const std::function<void()>& bare, const std::function<void()>& ours,
                       double limit, const char* against) {
    constexpr int warmUps = 3;
    constexpr int runs = 61;
    std::vector<double> bareTimes;
    std::vector<double> ourTimes;
    for (int i = 0; i < warmUps + runs; ++i) {
        const double bareTime = Show(bare, {}) * 1000;
        const double ourTime = Show(ours, {}) * 1000;
        if (i >= warmUps) {
            bareTimes.push_back(bareTime);
            ourTimes.push_back(ourTime);
        }
    }
    std::printf("  %s: 95th percentile %.1f ms, %s %.1f ms\n", what.c_str(), Percentile(ourTimes, 0.95), against,
                Percentile(bareTimes, 0.95));
    return ComparePairs(what, ourTimes, against, bareTimes, "ms", limit);
}

void ShowOpenDialogWith(LPOFNHOOKPROC hook, LPARAM data) {
    char file[MAX_PATH] = "";
    OPENFILENAMEA record{};
    record.lStructSize = sizeof(record);
    record.lpstrFile = file;
    record.nMaxFile = sizeof(file);
    record.Flags = OFN_EXPLORER | OFN_ENABLEHOOK | OFN_ENABLESIZING | OFN_HIDEREADONLY;
    record.lpfnHook = hook;
    record.lCustData = data;
    GetOpenFileNameA(&record);
}

void ShowBareOpenDialog() { ShowOpenDialogWith(EmptyHook, 0); }

void ShowBareColorDialog() {
    std::array<COLORREF, 16> colors{};
    CHOOSECOLORA record{};
    record.lStructSize = sizeof(record);
    record.lpCustColors = colors.data();
    record.Flags = CC_RGBINIT | CC_ENABLEHOOK;
    record.lpfnHook = EmptyHook;
    ChooseColorA(&record);
}

void ShowBarePrintDialog() {
    PRINTDLGA record{};
    record.lStructSize = sizeof(record);
    record.Flags = PD_ENABLEPRINTHOOK | PD_HIDEPRINTTOFILE | PD_NOPAGENUMS | PD_NOSELECTION | PD_NOWARNING;
    record.lpfnPrintHook = EmptyHook;
    PrintDlgA(&record);
    GlobalFree(record.hDevMode);
    GlobalFree(record.hDevNames);
}

} // namespace kx::bench
