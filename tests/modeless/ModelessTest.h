#pragma once

#include "kx/modeless/KxModelessDlg.h"
#include "kx/opensave/KxOpenDlg.h"
#include "kx/opensave/KxOpenLite.h"
#include "kx/opensave/KxSaveDlg.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/TestDriver.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace kx::test {

using TFormPtr = std::unique_ptr<TForm, TFreeDeleter>;

inline DWORD ThreadOf(HWND window) { return GetWindowThreadProcessId(window, nullptr); }

/// A form that the application finds by the name "NoteForm".
class TNoteForm : public TForm {
    KX_CLASS()

    explicit TNoteForm(TComponent* owner = nullptr);
    TEdit* Edit;
};

/// The application's own window: a button and an edit.
class TMainForm : public TForm {
public:
    explicit TMainForm(TComponent* owner = nullptr);
    TButton* Button;
    TEdit* Edit;
    int Clicks = 0;
    std::vector<DWORD> ClickThreads;
};

/// Shows dialogs modelessly from the application's thread, where the tests run. No exception is expected at the
/// application unless a test takes it.
class TModelessTest : public testing::Test {
protected:
    TModelessTest();
    ~TModelessTest() override;

    /// A new dialog that starts in the folder, owned by the main form.
    template <class T = TKxOpenLiteDialog> T& NewDialog() {
        auto* dialog = new T(Main.get());
        dialog->SetInitialDir(Folder.Path());
        Runner->SetDialog(dialog);
        return *dialog;
    }

    /// Shows the runner's dialog and carries out the steps while the application's message loop runs, until the showing
    /// has ended.
    void Show(std::vector<TStep> steps);
    /// Shows and cancels it.
    void ShowAndCancel(TOpenDialog& dialog, const TAction& look = {});

    std::vector<std::string> TakeExceptions();

    const DWORD MainThread = GetCurrentThreadId();
    TTempFolder Folder{"modeless"};
    std::unique_ptr<TMainForm, TFreeDeleter> Main;
    TKxModelessDialog* Runner; ///< The main form owns it.
    std::vector<bool> Results; ///< What OnDialogClosed told.

private:
    TExceptionEvent FPrevious;
    std::vector<std::string> FExceptions;
};

/// A step that only waits.
inline TStep Await(std::string what, TCondition condition) { return {std::move(what), std::move(condition), {}}; }

/// A step that moves the dialog to where it does not cover the main form.
TStep MoveAside(const TCommonDialog& dialog);

} // namespace kx::test
