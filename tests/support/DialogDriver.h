#pragma once

#include "kx/ui/dialogs/Dialogs.h"
#include "support/Input.h"
#include "support/TempFolder.h"
#include "support/WindowTools.h"

#include <functional>
#include <string>
#include <vector>

namespace kx::test {

using TCondition = std::function<bool()>;
using TAction = std::function<void()>;

/// What a test does inside a dialog: once `When` holds, `Do` runs. `What` names it in messages.
struct TStep {
    std::string What;
    TCondition When; ///< Empty: at once.
    TAction Do;      ///< Empty: nothing, the step only waits.
};

/// Carries out steps, one after the other, from inside whatever message loop runs on this thread: a dialog's, a message
/// box's, a menu's. The windows may belong to any thread of this process. An action may itself wait in a message loop
/// (press a button that opens a box): the next step then runs inside that loop. Runs may be nested; only the innermost
/// one acts.
///
/// When no step gets done for 30 seconds, or a step has a fatal failure or throws, the test fails: the driver prints
/// what it waited for and the trees of all windows, takes a picture of the screen, and closes every dialog, box and
/// menu, the topmost first, until the run ends. If even that does not end it, it ends the program.
class TDialogDriver {
public:
    TDialogDriver() = default;
    explicit TDialogDriver(std::vector<TStep> steps) : FSteps(std::move(steps)) {}
    TDialogDriver(const TDialogDriver&) = delete;
    TDialogDriver& operator=(const TDialogDriver&) = delete;

    /// Adds a step at the end; also while the steps run.
    TDialogDriver& Then(std::string what, TCondition when, TAction action = {});

    /// Runs `execute` and the steps, and returns the result of `execute`. Steps that were not done are a test failure.
    bool Run(const std::function<bool()>& execute);

private:
    class TWatchdog;

    static LRESULT CALLBACK TickerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void Tick();
    void Perform(const TStep& step);
    std::string Pending() const;

    std::vector<TStep> FSteps;
    size_t FNext = 0;
    TWatchdog* FWatchdog = nullptr;
};

bool RunDialog(const std::function<bool()>& execute, std::vector<TStep> steps);
/// Executes the dialog; the first step begins once it is shown.
bool RunDialog(TCommonDialog& dialog, std::vector<TStep> steps);

/// Runs this thread's message loop until the condition holds. A test failure, with the trees of all windows, when it
/// does not hold within the time; false then.
bool PumpUntil(const TCondition& condition, unsigned seconds = 30);

/// Picture of the screen, of a window, in the folder that the environment variable KX_SHOTS names (else "shots" in the
/// current folder): name.png. Returns the file's path, empty when it could not be written.
std::string Screenshot(const std::string& name, HWND window = nullptr);

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
/// Puts a name into a file dialog's edit and presses OK.
TStep EnterFileName(const TOpenDialog& dialog, const std::string& name);
TStep Perform(std::string what, TAction action);

} // namespace kx::test
