// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/dialogs/Dialogs.h"

#include <functional>
#include <string>
#include <vector>

// Drives the system's dialogs as a user would, from inside their own message loops: for tests, and for programs that
// show what they can do by themselves.

namespace kx::test {

using TCondition = std::function<bool()>;
using TAction = std::function<void()>;

/// What is done inside a dialog: once `When` holds, `Do` runs. `What` names it in messages.
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
/// When no step gets done for 30 seconds, or a step throws, the run has failed: the driver prints what it waited for
/// and the trees of all windows, takes a picture of the screen, and closes every dialog, box, menu and window, the
/// topmost first, until the run ends. If even that does not end it, it ends the program.
class TDialogDriver {
public:
    TDialogDriver() = default;
    explicit TDialogDriver(std::vector<TStep> steps) : FSteps(std::move(steps)) {}
    TDialogDriver(const TDialogDriver&) = delete;
    TDialogDriver& operator=(const TDialogDriver&) = delete;
    virtual ~TDialogDriver() = default;

    /// Adds a step at the end; also while the steps run.
    TDialogDriver& Then(std::string what, TCondition when, TAction action = {});

    /// Runs `execute` and the steps, and returns the result of `execute`, false when it throws.
    bool Run(const std::function<bool()>& execute);
    /// Why the run failed, steps that were not done included; empty when all went well.
    const std::string& Failure() const { return FFailure; }

protected:
    /// Does what the step does.
    virtual void Perform(const TStep& step);
    /// The file that a picture of the screen goes to when the run fails; empty: none is taken.
    virtual std::string PicturePath() const { return {}; }
    /// Ends the run as failed, from inside a step.
    void GiveUp(const std::string& reason);

private:
    class TWatchdog;

    static LRESULT KX_CALLBACK TickerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void Tick();
    std::string Pending() const;

    std::vector<TStep> FSteps;
    size_t FNext = 0;
    TWatchdog* FWatchdog = nullptr;
    std::string FFailure;
};

/// Without a window manager the X server now and then drops the focus of a window shown a moment ago: it takes Wine's
/// request for one of before. Whoever sits before the screen would click the window, and so does this, once nobody has
/// had the focus for two seconds. What happens between windows is left alone.
void KeepFocus();

/// What a person would see and could act in.
bool IsShown(const TCommonDialog& dialog); ///< Visible and enabled; a file dialog also with its list.
bool ShowsFolder(const TOpenDialog& dialog, const std::string& folder); ///< Its files are listed.

} // namespace kx::test
