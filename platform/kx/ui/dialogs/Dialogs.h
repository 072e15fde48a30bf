// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Strings.h"
#include "kx/ui/forms/Forms.h"
#include "kx/win/Messages.h"
#include "kx/win/Subclass.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kx {

class TDialogHold;

/// A component that shows one of the system's dialogs.
///
/// While the dialog is shown, the application's other windows of this thread are disabled. An exception out of an event
/// goes to the application's exception handling and the dialog goes on.
///
/// A dialog component may be freed while it is shown, by `Free` or by its owner, also in its own events. `OnClose`
/// fires as usual. The system dialog ends as cancelled, with the boxes and dialogs that it opened, and the `Execute`
/// that shows it returns false without touching the component again.
///
/// The life of a dialog ends when it begins to go, before its `DoClose`. A descendant whose `Execute` or `DoClose` does
/// anything with the object after the inherited one asks whether it `Outlives` that. A destructor that is reached in
/// another way (`delete`) closes the dialog too, but by then the descendants are no part of the object any more: one
/// that overrides `DoClose` or subclasses windows calls `CloseShown` first thing in its own destructor.
class TCommonDialog : public TComponent {
    KX_CLASS()

    explicit TCommonDialog(TComponent* owner = nullptr);
    ~TCommonDialog() override;
    void BeforeDestruction() override;

    /// Shows the dialog and returns true when the user confirmed it.
    /// @throws EInvalidOperation "Dialog is already shown"
    /// @throws EInvalidOperation "The owner window of the dialog has been destroyed"
    virtual bool Execute() = 0;

    /// While the dialog is shown: the window through which the system talks to the component; else null. For the
    /// open and save dialogs a child of the dialog window, for all others the dialog window itself.
    HWND Handle() const { return FHandle; }
    /// The dialog's top-level window while it is shown, else null.
    virtual HWND DialogWindow() const;

    /// The window that the dialog belongs to, of the framework or of anybody: the dialog stays above it, it is disabled
    /// while the dialog is shown, and is the active one behind it. Of a child it is the top-level window around it. Not
    /// owned by the component; a change concerns the next showing. Null, or the desktop: the active window of this
    /// thread, else the active form's, else the application's.
    /// A dialog that is shown without blocking (TKxModelessDialog) stays above its owner, which can be used meanwhile.
    HWND OwnerWindow() const { return FOwnerWindow; }
    void SetOwnerWindow(HWND value) { FOwnerWindow = value; }

    const TNotifyEvent& OnShow() const { return FOnShow; }
    void SetOnShow(TNotifyEvent value) { FOnShow = std::move(value); }
    const TNotifyEvent& OnClose() const { return FOnClose; }
    void SetOnClose(TNotifyEvent value) { FOnClose = std::move(value); }

protected:
    virtual void DoShow();  ///< The dialog has its controls in their places and is about to become visible.
    virtual void DoClose(); ///< The dialog's windows are about to be destroyed.

    /// Every message of `Handle`, first. True: the message is answered by `message.Result`.
    virtual bool MessageHook(TMessage& message);
    /// Every message of `Handle` that MessageHook left. Descendants pass on what they do not consume.
    virtual void WndProc(TMessage& message);
    /// Gives the message to the window procedure that the system made for `Handle`.
    void DefaultHandler(TMessage& message);

    /// Takes `window` as `Handle` and subclasses it until it is destroyed. The system dialog's hook calls it when it
    /// learns of the window.
    void AttachHandle(HWND window);
    /// The attached dialog is complete: runs DoShow now, and DoClose when `Handle` is destroyed.
    void DialogShown();

    /// Runs the system's function while the application's other windows of this thread are disabled; `owner`, the
    /// system dialog's owner window, is the system's to disable. The focus goes back to where it was. False when the
    /// component was freed meanwhile.
    /// @throws EInvalidOperation when the component shows its dialog already.
    bool TaskModalDialog(HWND owner, const std::function<bool()>& dialogFunc);

    /// Owner window for the system dialog: OwnerWindow, or the window that stands for it. In other threads than the
    /// application's no form is asked for.
    /// @throws EInvalidOperation when OwnerWindow has been destroyed.
    HWND SystemOwner() const;

    /// Ends the component's life and closes the dialog if it is shown: for destructors only. When this returns, DoClose
    /// has run and the component has let go of the windows. They are gone from the screen. The system destroys them as
    /// soon as it is through with a message of theirs that it may be in the middle of.
    void CloseShown();

private:
    friend class TDialogHold;

    /// Has the system end its dialog without an answer, as soon as it can. Nothing is seen of it any more.
    virtual void EndSystemDialog(HWND dialog);

    void HandleMessage(TMessage& message);
    void CloseFromInside(HWND dialog);
    void CloseFromOutside(const std::shared_ptr<void>& over) const;
    void CancelShown() const;
    const TDialogHold* HoldOfAnotherThread() const;
    bool IsHeldForThisThread() const; ///< It is shown here without blocking the thread that it lives in.
    HWND TopLevelOwner() const;

    HWND FHandle = nullptr;
    HWND FOwnerWindow = nullptr;
    TSubclass FSubclass;
    std::vector<TDialogHold*> FHolds;
    std::shared_ptr<void> FRunning; ///< Signalled when the TaskModalDialog that shows the dialog is over; else null.
    bool FShown = false;            ///< Between DoShow and DoClose.
    bool FEnding = false;           ///< The dialog's windows are being destroyed.
    TNotifyEvent FOnShow;
    TNotifyEvent FOnClose;
};

/// Keeps a dialog component from going while another thread executes it. It is made in the thread that the component
/// lives in, before the other one begins, and ends there too, once the other one has left `Execute`.
///
/// Whoever frees the component meanwhile has its dialog cancelled and waits, handling messages, until the hold ends. A
/// handler of the dialog that frees the component does not wait, be it in the executing thread or by Synchronize.
class TDialogHold {
public:
    /// `threadId` is the thread that is going to execute the dialog.
    TDialogHold(TCommonDialog& dialog, DWORD threadId);
    TDialogHold(const TDialogHold&) = delete;
    TDialogHold& operator=(const TDialogHold&) = delete;
    ~TDialogHold();

    TCommonDialog* Dialog() const { return FDialog; } ///< Null once it has gone.
    bool IsWanted() const;                            ///< Nobody has begun to free it.
    /// Cancels the dialog, if it is shown, or the topmost of the boxes and dialogs that it has opened. It does not
    /// wait, and several calls may be needed until all are closed.
    void Cancel() const;

private:
    friend class TCommonDialog;

    TCommonDialog* FDialog;
    DWORD FThreadId;
    std::shared_ptr<void> FOver; ///< Signalled when this ends.
};

enum TOpenOption : uint8_t {
    ofReadOnly, ///< In: the read-only box starts checked. Out: it was checked.
    ofOverwritePrompt,
    ofHideReadOnly,
    ofNoChangeDir, ///< The process's current folder stays as it is.
    ofShowHelp,
    ofNoValidate,
    ofAllowMultiSelect,
    ofExtensionDifferent, ///< Out: the chosen file has another extension than DefaultExt.
    ofPathMustExist,
    ofFileMustExist,
    ofCreatePrompt,
    ofShareAware,
    ofNoReadOnlyReturn,
    ofNoTestFileCreate,
    ofNoNetworkButton,
    ofNoLongNames,
    ofOldStyleDialog, ///< The dialog from before the Explorer. It has no child window and reports no changes.
    ofNoDereferenceLinks,
    ofEnableIncludeNotify, ///< OnIncludeItem fires.
    ofEnableSizing,
    ofDontAddToRecent,
    ofForceShowHidden
};
KX_ENUM(TOpenOption, "ofReadOnly", "ofOverwritePrompt", "ofHideReadOnly", "ofNoChangeDir", "ofShowHelp", "ofNoValidate",
        "ofAllowMultiSelect", "ofExtensionDifferent", "ofPathMustExist", "ofFileMustExist", "ofCreatePrompt",
        "ofShareAware", "ofNoReadOnlyReturn", "ofNoTestFileCreate", "ofNoNetworkButton", "ofNoLongNames",
        "ofOldStyleDialog", "ofNoDereferenceLinks", "ofEnableIncludeNotify", "ofEnableSizing", "ofDontAddToRecent",
        "ofForceShowHidden")
using TOpenOptions = TSet<TOpenOption>;

enum TOpenOptionEx : uint8_t {
    ofExNoPlacesBar ///< The system shows no places bar.
};
KX_ENUM(TOpenOptionEx, "ofExNoPlacesBar")
using TOpenOptionsEx = TSet<TOpenOptionEx>;

/// Asked for each file before the system lists it. The shell decides whether it honours the answer. A handler's source
/// includes <commdlg.h>, which declares the record.
using TIncludeItemEvent = TEvent<void(const OFNOTIFYEXA& notification, bool& include)>;

/// The system's dialog for choosing files to open, in its Explorer style.
///
/// `Handle` is the child window that the system makes for hooks, the last child of the dialog window. It is there from
/// DoShow to DoClose.
class TOpenDialog : public TCommonDialog {
    KX_CLASS()

    explicit TOpenDialog(TComponent* owner = nullptr);
    ~TOpenDialog() override;

    bool Execute() override;
    HWND DialogWindow() const override;

    /// Extension, without its dot, for names that the user types without one.
    const std::string& DefaultExt() const { return FDefaultExt; }
    void SetDefaultExt(const std::string& value) { FDefaultExt = value; }
    /// Full path of the chosen file, the first of several; before the showing, the name to start with.
    const std::string& FileName() const { return FFileName; }
    void SetFileName(const std::string& value);
    /// Pairs of a description and its patterns: "Text|*.txt;*.log|All files|*.*".
    const std::string& Filter() const { return FFilter; }
    void SetFilter(const std::string& value) { FFilter = value; }
    int FilterIndex() const { return FFilterIndex; } ///< Counted from 1.
    void SetFilterIndex(int value) { FFilterIndex = value; }
    /// Folder to start in. When it is empty or names a missing folder, the dialog starts in the current one. A folder
    /// on another computer is left to the system, which decides itself where to start when that is missing.
    const std::string& InitialDir() const { return FInitialDir; }
    void SetInitialDir(const std::string& value) { FInitialDir = value; }
    TOpenOptions Options() const { return FOptions; }
    void SetOptions(TOpenOptions value) { FOptions = value; }
    TOpenOptionsEx OptionsEx() const { return FOptionsEx; }
    void SetOptionsEx(TOpenOptionsEx value) { FOptionsEx = value; }
    const std::string& Title() const { return FTitle; } ///< Empty: the system's title.
    void SetTitle(const std::string& value) { FTitle = value; }

    /// Full paths of all chosen files.
    const TStrings& Files() const { return FFiles; }

    const TCloseQueryEvent& OnCanClose() const { return FOnCanClose; }
    void SetOnCanClose(TCloseQueryEvent value) { FOnCanClose = std::move(value); }
    const TNotifyEvent& OnFolderChange() const { return FOnFolderChange; }
    void SetOnFolderChange(TNotifyEvent value) { FOnFolderChange = std::move(value); }
    const TNotifyEvent& OnSelectionChange() const { return FOnSelectionChange; }
    void SetOnSelectionChange(TNotifyEvent value) { FOnSelectionChange = std::move(value); }
    const TNotifyEvent& OnTypeChange() const { return FOnTypeChange; }
    void SetOnTypeChange(TNotifyEvent value) { FOnTypeChange = std::move(value); }
    const TIncludeItemEvent& OnIncludeItem() const { return FOnIncludeItem; }
    void SetOnIncludeItem(TIncludeItemEvent value) { FOnIncludeItem = std::move(value); }

protected:
    /// The system's function that shows the dialog, or a wrapper of it. A wrapper may hand a copy of the record to the
    /// system and may keep to itself what the system writes into that copy: the file names travel in the record's
    /// buffer and arrive in any case, the filter index and the flags only in the record given to the wrapper.
    using TSystemDialogFunc = std::function<bool(OPENFILENAMEA& record)>;

    /// Shows the dialog by `dialogFunc`. Descendants call this from their Execute. `dialogFunc` is called again without
    /// a name when the system refuses the name to start with, and with more room when the chosen names need it.
    bool DoExecute(const TSystemDialogFunc& dialogFunc);
    /// Why the system's function failed, by its CommDlgExtendedError.
    virtual DWORD SystemError() const;

    /// What the dialog begins with.
    virtual std::string FirstFolder() const { return FInitialDir; }
    virtual int FirstFilterIndex() const { return FFilterIndex; }

    virtual bool DoCanClose(); ///< FileName and Files are the user's choice already. False: the dialog stays open.
    virtual void DoFolderChange();
    virtual void DoSelectionChange();
    virtual void DoTypeChange();
    virtual void DoIncludeItem(const OFNOTIFYEXA& notification, bool& include);

    void WndProc(TMessage& message) override;
    /// Every notification that the system sends to `Handle`.
    virtual void WMNotify(TMessage& message);

private:
    struct TRun;

    static UINT_PTR KX_CALLBACK HookProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void SystemDialogCreated(HWND window);
    void EndSystemDialog(HWND dialog) override;
    bool AllowsClose();
    void IncludeItem(TMessage& message);
    void TakeFiles();

    std::string FDefaultExt;
    std::string FFileName;
    std::string FFilter;
    std::string FInitialDir;
    std::string FTitle;
    TStringList FFiles;
    int FFilterIndex = 1;
    TOpenOptions FOptions{ofHideReadOnly, ofEnableSizing};
    TOpenOptionsEx FOptionsEx;
    TRun* FRun = nullptr; ///< Of the DoExecute that shows the dialog.
    TCloseQueryEvent FOnCanClose;
    TNotifyEvent FOnFolderChange;
    TNotifyEvent FOnSelectionChange;
    TNotifyEvent FOnTypeChange;
    TIncludeItemEvent FOnIncludeItem;
};

/// The system's dialog for choosing a name to save under.
class TSaveDialog : public TOpenDialog {
    KX_CLASS()

    using TOpenDialog::TOpenDialog;

    bool Execute() override;
};

/// Shows a message box with an OK button and the application's title.
void ShowMessage(const std::string& text);

} // namespace kx
