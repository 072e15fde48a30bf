#include "support/DialogDriver.h"

#include "kx/ui/forms/Forms.h"
#include "kx/win/Handles.h"
#include "shared/Screen.h"

#include <atomic>
#include <cstdio>
#include <gtest/gtest.h>
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
thread_local bool Blocked = false;             ///< Nothing may act now: the message loop only paints.

/// Posts to a menu, box or dialog what ends it, as far as it has something of the kind.
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
    if (dialog) {
        PostMessageA(dialog, WM_CLOSE, 0, 0);
    }
}

/// Without a window manager the X server now and then drops the focus of a window shown a moment ago: it takes Wine's
/// request for one of before. Whoever sits before the screen would click the window, and so does this. Only when nobody
/// has the focus: what happens between windows is for the tests to judge.
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

std::string ShotsFolder() {
    char folder[MAX_PATH + 1] = "";
    const DWORD size = GetEnvironmentVariableA("KX_SHOTS", folder, sizeof(folder));
    const std::string path = size > 0 && size < sizeof(folder) ? folder : "shots";
    CreateDirectoryA(path.c_str(), nullptr);
    return path;
}

std::string TestName() {
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    return test ? std::string(test->test_suite_name()) + "." + test->name() : "test";
}

} // namespace

/// Waits beside a run, in a thread of its own, and ends the run when it does not get on.
class TDialogDriver::TWatchdog {
public:
    TWatchdog() : FThread([this] { Watch(); }) {}
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
        const std::string shot = Screenshot(TestName());
        std::fprintf(stderr, "Dialog run failed: %s\nPicture: %s\nWindows:\n%s", Reason().c_str(), shot.c_str(),
                     AllWindowTrees().c_str());
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
    TWatchdog watchdog;
    FWatchdog = &watchdog;
    FNext = 0;
    watchdog.Progress(Pending());
    Runs.push_back(this);
    // The timer of a window, not one with a procedure: the system keeps to itself the faults that come out of those.
    const unique_hwnd ticker(CreateWindowExA(0, "Static", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr));
    SetWindowLongPtrA(ticker.get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(TickerProc));
    SetTimer(ticker.get(), 1, TickInterval, nullptr);
    bool result = false;
    try {
        result = execute();
    } catch (const std::exception& e) {
        ADD_FAILURE() << "the dialog raised: " << e.what();
    }
    Runs.pop_back();
    FWatchdog = nullptr;
    const std::string reason = watchdog.Reason();
    if (!reason.empty()) {
        ADD_FAILURE() << reason;
    } else if (FNext < FSteps.size()) {
        ADD_FAILURE() << "the dialog was closed before this was done: " << Pending();
    }
    return result;
}

LRESULT CALLBACK TDialogDriver::TickerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_TIMER) {
        return DefWindowProcA(window, message, wParam, lParam);
    }
    if (!Runs.empty() && !Blocked) {
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
        SCOPED_TRACE("in the step: " + step.What);
        step.Do();
    }
    if (testing::Test::HasFatalFailure() && FWatchdog) {
        FWatchdog->GiveUp("the step failed: " + step.What);
    }
}

std::string TDialogDriver::Pending() const {
    return FNext < FSteps.size() ? FSteps[FNext].What : "the end of the dialog, all steps being done";
}

bool RunDialog(const std::function<bool()>& execute, std::vector<TStep> steps) {
    TDialogDriver driver(std::move(steps));
    return driver.Run(execute);
}

bool RunDialog(TCommonDialog& dialog, std::vector<TStep> steps) {
    steps.insert(steps.begin(), TStep{"the dialog is shown", Shown(dialog), {}});
    return RunDialog([&] { return dialog.Execute(); }, std::move(steps));
}

bool PumpUntil(const TCondition& condition, unsigned seconds) {
    const ULONGLONG end = GetTickCount64() + seconds * 1000ULL;
    while (!condition()) {
        if (GetTickCount64() > end) {
            ADD_FAILURE() << "it did not come about within " << seconds << " seconds. Windows:\n" << AllWindowTrees();
            Screenshot(TestName());
            return false;
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, TickInterval, QS_ALLINPUT);
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        KeepFocus();
    }
    return true;
}

std::string Screenshot(const std::string& name, HWND window) {
    const std::string path = ShotsFolder() + "\\" + name + ".png";
    Blocked = true;
    const bool written = window ? CaptureWindow(window, path) : CaptureScreen(path);
    Blocked = false;
    return written ? path : std::string();
}

TCondition Shown(const TCommonDialog& dialog) {
    return [&dialog] {
        HWND window = dialog.DialogWindow();
        if (!window || IsWindowVisible(window) == 0 || IsWindowEnabled(window) == 0) {
            return false;
        }
        const auto* fileDialog = dynamic_cast<const TOpenDialog*>(&dialog);
        return !fileDialog || fileDialog->Options().Contains(ofOldStyleDialog) || FileListOf(window);
    };
}

TCondition BoxShown() {
    return [] { return ShownMessageBox() != nullptr; };
}

TCondition NoBoxShown() {
    return [] { return ShownMessageBox() == nullptr; };
}

TCondition FolderIs(const TOpenDialog& dialog, const std::string& folder) {
    return [&dialog, folder] {
        HWND window = dialog.DialogWindow();
        return window && FileListOf(window) &&
               ExcludeTrailingPathDelimiter(FolderOf(window)) == ExcludeTrailingPathDelimiter(folder);
    };
}

TStep AnswerBox(int answer, std::function<void(const std::string& text)> check) {
    return {"a message box is shown", BoxShown(), [answer, check = std::move(check)] {
                HWND box = ShownMessageBox();
                if (check) {
                    check(MessageBoxText(box));
                }
                HWND button = FindChild(box, "Button", answer);
                EXPECT_TRUE(button) << "the box has no button " << answer << ":\n" << WindowTree(box);
                PressButton(button ? button : FindChild(box, "Button"));
            }};
}

TStep Press(const TCommonDialog& dialog, int buttonId) {
    return {"the button " + IntToStr(buttonId) + " can be pressed",
            [&dialog] { return dialog.DialogWindow() && IsWindowEnabled(dialog.DialogWindow()) != 0; },
            [&dialog, buttonId] { PressButton(FindChild(dialog.DialogWindow(), "Button", buttonId)); }};
}

TStep EnterFileName(const TOpenDialog& dialog, const std::string& name) {
    return {"the name " + name + " can be entered",
            [&dialog] { return dialog.DialogWindow() && IsWindowEnabled(dialog.DialogWindow()) != 0; },
            [&dialog, name] {
                HWND window = dialog.DialogWindow();
                SetWindowTextA(FileNameEditOf(window), name.c_str());
                PressButton(FindChild(window, "Button", IDOK));
            }};
}

TStep Perform(std::string what, TAction action) { return {std::move(what), {}, std::move(action)}; }

} // namespace kx::test
