// SPDX-License-Identifier: MIT
#pragma once

#include "kx/frame/KxDlgParams.h"
#include "kx/ui/dialogs/Dialogs.h"
#include "kx/ui/forms/Threads.h"

#include <functional>
#include <list>
#include <memory>

namespace kx {

class TKxModelessDialog;

/// The dialog that was shown has ended. `dialogResult`: the user confirmed it.
using TKxDialogClosedEvent = TEvent<void(TObject* sender, bool dialogResult)>;

/// References that forget their forms when those are freed.
using TComponentRefs = std::list<TComponentRef<TForm>>;

/// One showing of a dialog: the thread, with an apartment of OLE, in which the dialog executes and its events fire. The
/// thread frees itself at the end.
class TKxModelessThread : public TThread {
    KX_CLASS()

    TKxModelessThread();

    ICommonDialog* Dialog() const; ///< Null when there is none, or when it has been freed.
    /// To be called before the thread runs. Until the thread ends, the dialog tells it when it is shown.
    void SetDialog(ICommonDialog* value);
    TKxModelessDialog* ModelessDialog() const { return FModelessDialog; } ///< It runs for this; null once that is gone.
    void SetModelessDialog(TKxModelessDialog* value) { FModelessDialog = value; }
    bool DialogResult() const { return FDialogResult; } ///< What the dialog's Execute returned.
    void ComponentGone(const TComponent* component);    ///< Forgets the dialog, if this is it.

    /// The dialog is shown: the application can be used again.
    void OnInitDialog1(TObject* sender);

protected:
    void Execute() override;
    void DoTerminate() override;
    void TerminatedSet() override;

private:
    static void EnableTaskWindows();
    static BOOL KX_CALLBACK DoEnableWindow(HWND window, LPARAM) noexcept;
    void ReleaseDialog();

    ICommonDialog* FDialog = nullptr;
    const TComponent* FComponent = nullptr; ///< The dialog.
    TKxModelessDialog* FModelessDialog = nullptr;
    std::unique_ptr<TDialogHold> FHold; ///< On a dialog of the framework. The application's thread alone touches it.
    TComponentRefs FForms;              ///< Forms whose windows were made for the showing.
    TNotifyEvent FShowBefore;           ///< The dialog's internal notification before this showing.
    bool FDialogResult = false;
};

/// Shows a dialog of the library without blocking the application: `Show` returns at once, the dialog runs in a thread
/// of its own, and all windows of the application can be used meanwhile.
///
/// The dialog's events, its message events included, fire in its thread; what their handlers do with forms and controls
/// of the application goes through `TThread::Synchronize`. Docked forms stay the application's, and so do their events.
/// OnDialogClosed fires in the application's thread.
///
/// The dialog component may be freed at any time, which closes the dialog. So does the end of the application. When
/// this component is freed the dialog stays open, and nobody hears of its end.
class TKxModelessDialog : public TComponent {
    KX_CLASS()

    explicit TKxModelessDialog(TComponent* owner = nullptr);
    ~TKxModelessDialog() override;

    /// The dialog component to show, not owned; forgotten when it is freed. A change concerns the next showing.
    ICommonDialog* Dialog() const { return FDialog; }
    void SetDialog(ICommonDialog* value);

    /// Shows the dialog; brings it to the top when it is shown already. Forms named in its CustDlgParams are looked up
    /// now and docked as forms: the names are forgotten. Without a dialog the showing fails: OnDialogClosed tells
    /// False.
    void Show();
    /// Has no effect, whether the dialog is shown or not. CloseDialog of the dialog closes it.
    void Close();
    bool Closed() const { return GetClosed(); } ///< The dialog is not shown by this component.
    bool GetClosed() const;
    bool DialogResult() const { return FResult; } ///< Of the last showing that ended.
    /// The showing that is under way; in OnDialogClosed its FatalException tells why it failed. Null: there is none.
    TKxModelessThread* Thread() const { return FThread; }

    const TKxDialogClosedEvent& OnDialogClosed() const { return FOnClosed; }
    void SetOnDialogClosed(TKxDialogClosedEvent value) { FOnClosed = std::move(value); }
    /// Was meant for `Close`, and is kept for form files. True at first.
    bool AutoClosePopups() const { return FAutoClosePopups; }
    void SetAutoClosePopups(bool value) { FAutoClosePopups = value; }

    /// Finds the forms that the dialog names and makes their windows, in the application's thread. Handlers of the
    /// forms may free the dialog: it is not touched when it is not `wanted` any more.
    /// Returns the forms, whose parent the application's hidden window is now.
    static TComponentRefs CreateDockedForms(
        ICommonDialog& dialog, const std::function<bool()>& wanted = [] { return true; });

protected:
    void Notification(TComponent* component, TOperation operation) override;

private:
    void DoDialogClosed(TObject* sender);

    bool FAutoClosePopups = true;
    ICommonDialog* FDialog = nullptr;
    TComponent* FComponent = nullptr; ///< The dialog.
    TKxDialogClosedEvent FOnClosed;
    bool FResult = false;
    TKxModelessThread* FThread = nullptr; ///< Frees itself.
};

} // namespace kx
