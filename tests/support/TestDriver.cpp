// SPDX-License-Identifier: MIT
// Runs dialogs for tests and reports to them.

#include "tests/support/TestDriver.h"

#include "support/Screen.h"

namespace kx::test {

namespace {

std::string ShotPath(const std::string& name) {
    char folder[MAX_PATH + 1] = "";
    const DWORD size = GetEnvironmentVariableA("KX_SHOTS", folder, sizeof(folder));
    const std::string path = size > 0 && size < sizeof(folder) ? folder : "shots";
    CreateDirectoryA(path.c_str(), nullptr);
    return path + "\\" + name + ".png";
}

std::string TestName() {
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    return test ? std::string(test->test_suite_name()) + "." + test->name() : "test";
}

} // namespace

bool TTestDriver::Run(const std::function<bool()>& execute) {
    const bool result = TDialogDriver::Run(execute);
    if (!Failure().empty()) {
        ADD_FAILURE() << Failure();
    }
    return result;
}

void TTestDriver::Perform(const TStep& step) {
    SCOPED_TRACE("in the step: " + step.What);
    TDialogDriver::Perform(step);
    if (testing::Test::HasFatalFailure()) {
        GiveUp("the step failed: " + step.What);
    }
}

std::string TTestDriver::PicturePath() const { return ShotPath(TestName()); }

bool RunDialog(const std::function<bool()>& execute, std::vector<TStep> steps) {
    TTestDriver driver(std::move(steps));
    return driver.Run(execute);
}

bool RunDialog(TCommonDialog& dialog, std::vector<TStep> steps) {
    steps.insert(steps.begin(), TStep{"the dialog is shown", Shown(dialog), {}});
    return RunDialog([&] { return dialog.Execute(); }, std::move(steps));
}

bool RunDialog(TCommonDialog& dialog, TAction act, std::vector<TStep> steps) {
    steps.insert(steps.begin(), Perform("act in the dialog", std::move(act)));
    return RunDialog(dialog, std::move(steps));
}

bool Look(TCommonDialog& dialog, TAction look) { return RunDialog(dialog, std::move(look), {Cancel(dialog)}); }

bool PumpUntil(const TCondition& condition, unsigned seconds) {
    const ULONGLONG end = GetTickCount64() + seconds * 1000ULL;
    while (!condition()) {
        if (GetTickCount64() > end) {
            ADD_FAILURE() << "it did not come about within " << seconds << " seconds. Windows:\n" << AllWindowTrees();
            Screenshot(TestName());
            return false;
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        KeepFocus();
    }
    return true;
}

std::string Screenshot(const std::string& name, HWND window) {
    const std::string path = ShotPath(name);
    return (window ? CaptureWindow(window, path) : CaptureScreen(path)) ? path : std::string();
}

HWND ItemOf(const TCommonDialog& dialog, int id) { return GetDlgItem(dialog.DialogWindow(), id); }

TCondition Shown(const TCommonDialog& dialog) {
    return [&dialog] { return IsShown(dialog); };
}

TCondition BoxShown() {
    return [] { return ShownMessageBox() != nullptr; };
}

TCondition NoBoxShown() {
    return [] { return ShownMessageBox() == nullptr; };
}

TCondition FolderIs(const TOpenDialog& dialog, const std::string& folder) {
    return [&dialog, folder] { return ShowsFolder(dialog, folder); };
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

TStep Cancel(const TCommonDialog& dialog) { return Press(dialog, IDCANCEL); }

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

TStep Await(std::string what, TCondition condition) { return {std::move(what), std::move(condition), {}}; }

} // namespace kx::test
