// SPDX-License-Identifier: MIT
#pragma once

#include "kx/modeless/KxModelessDlg.h"
#include "kx/opensave/KxOpenDlg.h"
#include "kx/opensave/KxOpenLite.h"
#include "kx/opensave/KxSaveDlg.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/DialogTest.h"

#include <mutex>
#include <string>
#include <vector>

namespace kx::test {

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

/// Shows dialogs modelessly from the application's thread, where the tests run.
class TModelessTest : public TDialogTest {
protected:
    TModelessTest();

    /// A new dialog that starts in the folder, owned by the main form.
    template <class T = TKxOpenLiteDialog> T& NewDialog() {
        auto* dialog = new T(Main);
        dialog->SetInitialDir(Folder.Path());
        Runner->SetDialog(dialog);
        return *dialog;
    }

    /// Shows the runner's dialog and carries out the steps while the application's message loop runs, until the showing
    /// has ended.
    void Show(std::vector<TStep> steps);
    /// The same; the dialog shown, `act` runs in it, and then the steps.
    void Show(const TCommonDialog& dialog, TAction act, std::vector<TStep> steps = {});
    /// Shows and cancels it.
    void ShowAndCancel(TOpenDialog& dialog, const TAction& look = {});

    const DWORD MainThread = GetCurrentThreadId();
    TTempFolder Folder{"modeless"};
    TMainForm* const Main = static_cast<TMainForm*>(Owner.get());
    TKxModelessDialog* Runner; ///< The main form owns it.
    std::vector<bool> Results; ///< What OnDialogClosed told.
};

/// A step that moves the dialog to where it does not cover the main form.
TStep MoveAside(const TCommonDialog& dialog);

} // namespace kx::test
