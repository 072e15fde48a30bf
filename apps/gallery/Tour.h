#pragma once

#include "kx/win/Timers.h"
#include "kx/win/Windows.h"

#include <functional>
#include <string>
#include <vector>

namespace kx {
class TCommonDialog;
class TOpenDialog;
class TToolBar;
} // namespace kx

namespace kx::gallery {

/// The gallery's walk through its own pages: steps, each of which waits for its condition and then acts, from inside
/// whatever message loop runs, as a user's hand would. What a step does may itself wait, by opening a dialog: the next
/// steps then run inside that dialog.
///
/// When a step's condition does not come true for 30 seconds, or a step throws, the tour has failed: it says so, takes
/// a picture of the screen and closes every dialog that is still open.
class TTour {
public:
    using TCondition = std::function<bool()>;
    using TAction = std::function<void()>;

    /// `folder` receives the pictures; it is made if it is not there.
    explicit TTour(std::string folder);

    /// Adds a step. An empty condition holds at once; an empty action only waits.
    void Then(std::string what, TCondition when, TAction action = {});
    /// Starts with the first step, from the message loop, and terminates the application after the last.
    void Start();

    /// Writes name.png into the folder: the main window with the dialog in front of it, once all is painted.
    void Picture(const std::string& name);
    /// Prints "page: result", and that it is wrong when it is not the expected one.
    void Expect(const std::string& page, const std::string& result, const std::string& expected);

    bool Passed() const { return !FFailed; } ///< All steps were done and all results were the expected ones.

private:
    struct TStep {
        std::string What;
        TCondition When;
        TAction Do;
    };

    void Tick();
    void Fail(const std::string& what);
    void CloseNext();

    std::string FFolder;
    std::vector<TStep> FSteps;
    size_t FNext = 0;
    ULONGLONG FSince = 0; ///< Tick count when the current step began to wait.
    bool FFailed = false;
    bool FClosing = false;
    TTimer FTimer;
};

/// Prints a line on standard output, in UTF-8.
void PrintLine(const std::string& line);

// --- Any running dialog of the system

bool IsShown(const TCommonDialog& dialog); ///< Visible and enabled.
void PressButton(const TCommonDialog& dialog, int id);

// --- The running file dialog, as a user sees it. `dialog` is shown.

bool IsReady(const TOpenDialog& dialog);                                ///< Visible, enabled, with its files listed.
bool ShowsFolder(const TOpenDialog& dialog, const std::string& folder); ///< Its files are listed.
bool Lists(const TOpenDialog& dialog, const std::string& name);
void SelectFile(const TOpenDialog& dialog, const std::string& name); ///< In the file list.
void TypeName(const TOpenDialog& dialog, const std::string& name);   ///< Into the file name control.
std::string TypedName(const TOpenDialog& dialog);
void PressReturn(const TOpenDialog& dialog); ///< The focus stays where it is.
/// Moves the dialog to a place inside the main window, in pixels from its corner.
void MoveDialog(const TOpenDialog& dialog, int x, int y);
void PressToolButton(const TOpenDialog& dialog, int command); ///< Of the dialog's tool bar.

// --- Controls of the library

void ClickToolButton(TToolBar& bar, const std::string& caption); ///< By messages of the mouse, which wait in the queue.
HWND OpenMenuWindow();                                           ///< Null when no menu is open.
void ChooseLastInMenu();

} // namespace kx::gallery
