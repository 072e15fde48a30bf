// SPDX-License-Identifier: MIT
#pragma once

#include "support/DialogDriver.h"
#include "support/Input.h"
#include "support/TempFolder.h"
#include "support/WindowTools.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kx::test {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

/// A driver for tests: a run that fails, and a fatal failure in a step, fail the test.
class TTestDriver : public TDialogDriver {
public:
    using TDialogDriver::TDialogDriver;

    /// Runs `execute` and the steps, and returns the result of `execute`.
    bool Run(const std::function<bool()>& execute);

protected:
    void Perform(const TStep& step) override;
    std::string PicturePath() const override;
};

bool RunDialog(const std::function<bool()>& execute, std::vector<TStep> steps);
/// Executes the dialog; the first step begins once it is shown.
bool RunDialog(TCommonDialog& dialog, std::vector<TStep> steps);
/// Executes the dialog; `act` runs in it once it is shown, and then the steps.
bool RunDialog(TCommonDialog& dialog, TAction act, std::vector<TStep> steps = {});
/// Executes the dialog; `look` runs in it once it is shown, then it is cancelled.
bool Look(TCommonDialog& dialog, TAction look = {});

/// Runs this thread's message loop until the condition holds. A test failure, with the trees of all windows, when it
/// does not hold within the time; false then.
bool PumpUntil(const TCondition& condition, unsigned seconds = 30);

/// Picture of the screen, of a window, in the folder that the environment variable KX_SHOTS names (else "shots" in the
/// current folder): name.png. Returns the file's path, empty when it could not be written.
std::string Screenshot(const std::string& name, HWND window = nullptr);

/// The control of that id in the dialog.
HWND ItemOf(const TCommonDialog& dialog, int id);

// --- Conditions

TCondition Shown(const TCommonDialog& dialog); ///< Visible and enabled; a file dialog also with its list.
TCondition BoxShown();                         ///< A message box waits for an answer.
TCondition NoBoxShown();
TCondition FolderIs(const TOpenDialog& dialog, const std::string& folder); ///< Its files are listed.

// --- Steps that tests have in common

/// Answers the message box that comes up; `answer` is the id of its button. `check` gets its text.
TStep AnswerBox(int answer, std::function<void(const std::string& text)> check = {});
/// Presses a button of the dialog by message.
TStep Press(const TCommonDialog& dialog, int buttonId);
TStep Cancel(const TCommonDialog& dialog);
/// Puts a name into a file dialog's edit and presses OK.
TStep EnterFileName(const TOpenDialog& dialog, const std::string& name);
TStep Perform(std::string what, TAction action);
TStep Await(std::string what, TCondition condition); ///< It only waits.

} // namespace kx::test
