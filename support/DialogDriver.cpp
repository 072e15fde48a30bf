// SPDX-License-Identifier: MIT
// Drives dialogs from inside their message loops.

#include "support/DialogDriver.h"

#include "kx/win/Handles.h"
#include "support/Screen.h"
#include "support/WindowTools.h"

#include <cstdio>
#include <mutex>
#include <thread>

namespace kx::test {

namespace {

constexpr UINT TickInterval = 10;      // milliseconds between two looks at the conditions
constexpr DWORD FocusPatience = 2'000; // milliseconds for which nobody may have the focus
constexpr DWORD Patience = 30'000;     // milliseconds for one step
constexpr DWORD ClosingInterval = 200; // milliseconds between two attempts to close what is open
constexpr int ClosingAttempts = 50;
constexpr UINT StuckExitCode = 98;

thread_local std::vector<TDialogDriver*> Runs; ///< The innermost last.

/// Who gets the keyboard's input, and in which mode.
std::string FocusState() {
    GUITHREADINFO info{};
    info.cbSize = sizeof(info);
    if (GetGUIThreadInfo(0, &info) == 0) {
        return "No thread has the foreground.\n";
    }
    const auto line = [](const char* what, HWND window) {
        return window ? std::string(what) + " " + ClassOf(window) + " \"" + TextOf(window) + "\" of thread " +
                            IntToStr(static_cast<int>(GetWindowThreadProcessId(window, nullptr))) + "\n"
                      : std::string(what) + " nobody\n";
    };
    return line("Active:", info.hwndActive) + line("Focus:", info.hwndFocus) + line("Captured by:", info.hwndCapture) +
           line("Menu of:", info.hwndMenuOwner);
}

/// Posts to the topmost menu, box, dialog or other window what ends it.
void CloseTopmost() {
    if (HWND menu = ShownMenu()) {
        GUITHREADINFO info{};
        info.cbSize = sizeof(info);
        if (GetGUIThreadInfo(GetWindowThreadProcessId(menu, nullptr), &info) != 0 && info.hwndMenuOwner) {
            PostMessageA(info.hwndMenuOwner, WM_CANCELMODE, 0, 0);
        }
        return;
    }
    HWND dialog = ActiveDialog();
    for (const int id : {IDCANCEL, IDNO, IDABORT, IDOK}) {
        if (dialog && GetDlgItem(dialog, id)) {
            PostMessageA(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0);
            return;
        }
    }
    for (HWND window : TopWindows()) {
        if (IsWindowEnabled(window) != 0) {
            PostMessageA(window, WM_CLOSE, 0, 0);
            return;
        }
    }
}

} // namespace

void KeepFocus() {
    static thread_local ULONGLONG lostAt = 0; // 0: somebody has it
    HWND foreground = GetForegroundWindow();
    const bool lost = !foreground || foreground == GetDesktopWindow();
    const ULONGLONG now = GetTickCount64();
    if (!lost || lostAt == 0) {
        lostAt = lost ? now : 0;
    } else if (now - lostAt > FocusPatience) {
        lostAt = 0;
        for (HWND window : TopWindows()) {
            if (IsWindowEnabled(window) != 0 && GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId()) {
                std::fprintf(stderr, "Nobody has the focus; it goes back to the window %s\n", ClassOf(window).c_str());
                SetForegroundWindow(window);
                return;
            }
        }
    }
}

/// Waits beside a run, in a thread of its own, and ends the run when it does not get on.
class TDialogDriver::TWatchdog {
public:
    explicit TWatchdog(const TDialogDriver& driver) : FDriver(driver), FThread([this] { Watch(); }) {}
    TWatchdog(const TWatchdog&) = delete;
    TWatchdog& operator=(const TWatchdog&) = delete;
    ~TWatchdog() {
        SetEvent(FOver.get());
        FThread.join();
    }

    /// A step was done; `pending` is what the run waits for now.
    void Progress(std::string pending) {
        const std::lock_guard lock(FMutex);
        FPending = std::move(pending);
        SetEvent(FProgress.get());
    }
    /// Ends the run as failed.
    void GiveUp(const std::string& reason) {
        const std::lock_guard lock(FMutex);
        FReason = reason;
        SetEvent(FGivenUp.get());
    }
    std::string Reason() const {
        const std::lock_guard lock(FMutex);
        return FReason;
    }

private:
    void Watch() {
        const HANDLE events[] = {FOver.get(), FGivenUp.get(), FProgress.get()};
        for (;;) {
            const DWORD state = WaitForMultipleObjects(3, events, FALSE, Patience);
            if (state == WAIT_OBJECT_0) {
                return;
            }
            if (state == WAIT_TIMEOUT || state == WAIT_OBJECT_0 + 1) {
                break;
            }
        }
        {
            const std::lock_guard lock(FMutex);
            if (FReason.empty()) {
                FReason = "nothing happened for 30 seconds; waiting for: " + FPending;
            }
        }
        Report();
        CloseAll();
    }

    void Report() const {
        const std::string picture = FDriver.PicturePath();
        if (!picture.empty() && !CaptureScreen(picture)) {
            std::fprintf(stderr, "Cannot write %s\n", picture.c_str());
        }
        std::fprintf(stderr, "Dialog run failed: %s\nPicture: %s\n%sWindows:\n%s", Reason().c_str(), picture.c_str(),
                     FocusState().c_str(), AllWindowTrees().c_str());
        std::fflush(stderr);
    }

    void CloseAll() const {
        for (int i = 0; i < ClosingAttempts; ++i) {
            CloseTopmost();
            if (WaitForSingleObject(FOver.get(), ClosingInterval) == WAIT_OBJECT_0) {
                return;
            }
        }
        std::fprintf(stderr, "The dialog cannot be closed; the program ends.\nWindows:\n%s", AllWindowTrees().c_str());
        std::fflush(stderr);
        TerminateProcess(GetCurrentProcess(), StuckExitCode);
    }

    unique_handle_object FOver{CreateEventA(nullptr, TRUE, FALSE, nullptr)};
    unique_handle_object FGivenUp{CreateEventA(nullptr, TRUE, FALSE, nullptr)};
    unique_handle_object FProgress{CreateEventA(nullptr, FALSE, FALSE, nullptr)};
    const TDialogDriver& FDriver;
    mutable std::mutex FMutex;
    std::string FPending;
    std::string FReason;
    std::thread FThread; // last: it uses the others
};

TDialogDriver& TDialogDriver::Then(std::string what, TCondition when, TAction action) {
    FSteps.push_back({std::move(what), std::move(when), std::move(action)});
    return *this;
}

bool TDialogDriver::Run(const std::function<bool()>& execute) {
    TWatchdog watchdog(*this);
    FWatchdog = &watchdog;
    FNext = 0;
    watchdog.Progress(Pending());
    Runs.push_back(this);
    // The timer of a window, not one with a procedure: the system keeps to itself the faults that come out of those.
    const unique_hwnd ticker(CreateWindowExA(0, "Static", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr));
    SetWindowLongPtrA(ticker.get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(TickerProc));
    SetTimer(ticker.get(), 1, TickInterval, nullptr);
    bool result = false;
    FFailure.clear();
    try {
        result = execute();
    } catch (const std::exception& e) {
        FFailure = std::string("the dialog raised: ") + e.what();
    }
    Runs.pop_back();
    FWatchdog = nullptr;
    const std::string reason = watchdog.Reason();
    if (!reason.empty()) {
        FFailure = reason;
    } else if (FFailure.empty() && FNext < FSteps.size()) {
        FFailure = "the dialog was closed before this was done: " + Pending();
    }
    return result;
}

LRESULT CALLBACK TDialogDriver::TickerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_TIMER) {
        return DefWindowProcA(window, message, wParam, lParam);
    }
    if (!Runs.empty()) {
        KeepFocus();
        Runs.back()->Tick();
    }
    return 0;
}

void TDialogDriver::Tick() {
    if (FNext >= FSteps.size() || !FWatchdog || !FWatchdog->Reason().empty()) {
        return;
    }
    try {
        const TStep step = FSteps[FNext]; // a copy: an action may add steps
        if (step.When && !step.When()) {
            return;
        }
        ++FNext; // first: the action may run a message loop, in which the next step's turn comes
        FWatchdog->Progress(Pending());
        Perform(step);
    } catch (const std::exception& e) {
        FWatchdog->GiveUp(std::string("a step raised: ") + e.what());
    } catch (...) {
        FWatchdog->GiveUp("a step raised something that is no exception of ours");
    }
}

void TDialogDriver::Perform(const TStep& step) {
    if (step.Do) {
        step.Do();
    }
}

void TDialogDriver::GiveUp(const std::string& reason) { FWatchdog->GiveUp(reason); }

std::string TDialogDriver::Pending() const {
    return FNext < FSteps.size() ? FSteps[FNext].What + " (step " + IntToStr(static_cast<int>(FNext) + 1) + ")"
                                 : "the end of the dialog, all steps being done";
}

bool IsShown(const TCommonDialog& dialog) {
    HWND window = dialog.DialogWindow();
    if (!window || IsWindowVisible(window) == 0 || IsWindowEnabled(window) == 0) {
        return false;
    }
    const auto* fileDialog = dynamic_cast<const TOpenDialog*>(&dialog);
    return !fileDialog || fileDialog->Options().Contains(ofOldStyleDialog) || FileListOf(window);
}

bool ShowsFolder(const TOpenDialog& dialog, const std::string& folder) {
    HWND window = dialog.DialogWindow();
    return window && FileListOf(window) &&
           ExcludeTrailingPathDelimiter(FolderOf(window)) == ExcludeTrailingPathDelimiter(folder);
}

} // namespace kx::test
