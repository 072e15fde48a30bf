// SPDX-License-Identifier: MIT
#pragma once

#include "kx/frame/KxDlgCore.h"
#include "kx/frame/KxDlgMemory.h"
#include "kx/opensave/KxFileDlgWindow.h"
#include "kx/opensave/KxOpenSaveComm.h"

#include <functional>
#include <optional>
#include <string>

namespace kx {

/// What the library's file dialogs share, whatever else they do: their parts, their events, and the operations on the
/// running dialog. A dialog component inherits it beside TOpenDialog and hands it itself.
///
/// Operations on the running dialog do nothing and read as empty while the dialog is not shown.
class TKxFileDlgCore : public TKxDlgCore {
public:
    // --- Settings

    void SetTitle(const std::string& value); ///< Also that of the running dialog.
    TKxOpenDlgCaptions& DlgItemsCaptions() { return FCaptions; }
    const TKxOpenDlgCaptions& DlgItemsCaptions() const { return FCaptions; }
    TKxOpenDlgControls VisibleControls() const { return FCtrls; }
    void SetVisibleControls(TKxOpenDlgControls value) { SetVisibleCtrls(value); }
    /// Key below HKEY_CURRENT_USER in which dialogs of one purpose remember what the user has done: the folder and the
    /// filter of his last choice, and the size in which he left the dialog, whether he chose or not; in the full
    /// dialogs also the view style and the widths of the columns. The next Execute begins with them, but for what the
    /// program says itself: an InitialDir or a FileName with its folder, a FilterIndex other than 1, a view style in
    /// OnShow, a dialog that cannot be sized. What cannot be read is not remembered. Empty: nothing is.
    const std::string& RememberKey() const { return FRememberKey; }
    void SetRememberKey(const std::string& value) { FRememberKey = value; }

    // --- The running dialog

    HWND DlgHandle() const { return FDlgHandle; }          ///< The dialog window.
    HWND EditHandle() const { return Window().GetEdit(); } ///< The file name control.

    /// The selected names as the file name control shows them: several each in double quotes.
    std::string SelectedFiles() const { return GetSelFiles(); }
    void SetSelectedFiles(const std::string& value) { SetSelFiles(value); }
    /// The same as a list, which the dialog owns.
    const TStringList& SelectedFilesList() { return GetSelFilesList(); }
    void SetSelectedFilesList(const TStrings& value) { SetSelFilesList(value); }
    /// Path of the shown folder. Setting one that is no existing folder does nothing.
    std::string SelectedFolder() const { return Window().GetSelPath(); }
    void SetSelectedFolder(const std::string& value) { Window().SetSelPath(value); }
    /// Identifier list of the shown folder. The dialog owns it; it is valid until the next call.
    const ITEMIDLIST* SelectedFolderPidl() { return GetSelPathPidl(); }
    /// Text of the file name control.
    std::string FilenameText() const { return Window().GetFNameText(); }
    void SetFilenameText(const std::string& value) { Window().SetFNameText(value); }
    /// Has the system read the shown folder again.
    void RefreshFileList() const { Window().RefreshFileList(); }

    virtual std::string GetSelFiles() const { return Window().GetSelFiles(); }
    void SetSelFiles(const std::string& value);
    const TStringList& GetSelFilesList();
    void SetSelFilesList(const TStrings& value);
    const ITEMIDLIST* GetSelPathPidl();
    /// Keeps the set and, in the running dialog, shows and hides the controls by it.
    virtual void SetVisibleCtrls(TKxOpenDlgControls value);

    // --- For the parts of a dialog

    TKxFileDlgWindow Window() const { return TKxFileDlgWindow(FDlgHandle); }
    /// Right edge of the running dialog's own part in client coordinates: where a form docked right begins.
    int32_t OwnRight();

    // --- Events. Those named ...ing come before the system acts and may keep it from acting.

    const TNotifyEvent& OnDesktopNavigate() const { return FOnDesktop; }
    void SetOnDesktopNavigate(TNotifyEvent value) { FOnDesktop = std::move(value); }
    const TKxCtrlQueryEvent& OnDesktopNavigating() const { return FGoingDesktop; }
    void SetOnDesktopNavigating(TKxCtrlQueryEvent value) { FGoingDesktop = std::move(value); }
    const TNotifyEvent& OnUpLevelNavigate() const { return FGoParent; }
    void SetOnUpLevelNavigate(TNotifyEvent value) { FGoParent = std::move(value); }
    const TKxCtrlQueryEvent& OnUpLevelNavigating() const { return FGoingParent; }
    void SetOnUpLevelNavigating(TKxCtrlQueryEvent value) { FGoingParent = std::move(value); }
    /// Back to the folder shown before.
    const TNotifyEvent& OnLastFolderNavigate() const { return FGoLastFolder; }
    void SetOnLastFolderNavigate(TNotifyEvent value) { FGoLastFolder = std::move(value); }
    const TKxCtrlQueryEvent& OnLastFolderNavigating() const { return FGoingLastFolder; }
    void SetOnLastFolderNavigating(TKxCtrlQueryEvent value) { FGoingLastFolder = std::move(value); }
    const TKxCtrlQueryEvent& OnFolderCreating() const { return FCreatingFolder; }
    void SetOnFolderCreating(TKxCtrlQueryEvent value) { FCreatingFolder = std::move(value); }
    const TNotifyEvent& OnFilenameChange() const { return FChangeFName; } ///< The file name control's text changed.
    void SetOnFilenameChange(TNotifyEvent value) { FChangeFName = std::move(value); }
    const TKxCtrlQueryEvent& OnFilenameEntering() const { return FEnteringFName; } ///< OK was pressed.
    void SetOnFilenameEntering(TKxCtrlQueryEvent value) { FEnteringFName = std::move(value); }

protected:
    /// `dialog` is the component that this is a part of.
    explicit TKxFileDlgCore(TOpenDialog& dialog);
    ~TKxFileDlgCore() = default;

    // Fire their events
    virtual void DoFolderCreating(bool& allow) { FCreatingFolder(&FDialog, allow); }
    virtual void DoDesktopNavigating(bool& allow) { FGoingDesktop(&FDialog, allow); }
    virtual void DoDesktopNavigate() { FOnDesktop(&FDialog); }
    virtual void DoUpLevelNavigating(bool& allow) { FGoingParent(&FDialog, allow); }
    virtual void DoUpLevelNavigate() { FGoParent(&FDialog); }
    virtual void DoLastFolderNavigating(bool& allow) { FGoingLastFolder(&FDialog, allow); }
    virtual void DoLastFolderNavigate() { FGoLastFolder(&FDialog); }
    virtual void DoHookQueryEvent(TMessage& message, bool& allow) { TKxDlgCore::DoHookingEvent(message, allow); }
    void DoHookingEvent(TMessage& message, bool& allow) final { DoHookQueryEvent(message, allow); }
    virtual void DoFilenameEntering(bool& allow) { FEnteringFName(&FDialog, allow); }
    virtual void DoFilenameChange() { FChangeFName(&FDialog); }

    /// Runs the dialog by `execute`, which tells whether the user has chosen, with what RememberKey holds, and keeps
    /// there what came of it. False when the dialog was freed meanwhile.
    bool RunRemembering(const std::function<bool()>& execute);
    /// Of the running dialog, or of the one that has just been closed.
    TKxDlgMemory& Memory() { return FMemory; }
    /// The dialog is closed, and what else is remembered of it is to be taken into the memory.
    virtual void Remember() {}
    /// What the dialog is to begin with: what the program has set, else what is remembered.
    std::string StartFolder() const;
    int StartFilterIndex() const;

    bool IsSizeable() const { return FDialog.Options().Contains(ofEnableSizing); }

    // --- Pieces of a showing

    /// Takes over the dialog window.
    void AttachDialog();
    /// Notes where the file list is, once the forms are docked.
    void MeasureList();
    /// Shows and hides the dialog's controls as wanted, and gives them their captions.
    void ShowVisibleCtrls();
    /// The dialog is complete: fires OnShow and the internal notification, whose handlers may free it.
    void FireShow();
    /// Width in pixels of what the dialog has besides the system's own controls and the docked forms.
    virtual int32_t AddedWidth() const { return 0; }
    /// Gives the dialog window, once in a showing, its first size and its place. Between the two, `arrange`, if any,
    /// puts into place what depends on the size.
    ///
    /// To be called when the window is about to become visible, so that its former size is neither seen nor painted. To
    /// be called again in its first non-client painting: it may have become visible without a message, and a system
    /// that remembers where its dialogs were may have moved it meanwhile; then it is placed once more. A maximised
    /// dialog stays maximised and gets the size when it is restored.
    void PlaceFirst(const std::function<void()>& arrange = {});
    /// The dialog window is being destroyed, or the dialog is freed and leaves it: undocks the forms, takes their room
    /// and the added width from the window, and remembers its size, as the system does.
    virtual void LeaveWindow();
    /// Leaves a window that has not been destroyed before the dialog is freed.
    void LeaveAtLast();

    // --- Messages of the dialog window

    /// The dialog's own cases before the system gets the message; this class knows the commands and context menus.
    TKxMsgVerdict BeforeSystem(TMessage& message, int& command) override;
    void AfterSystem(TMessage& message, int command) override;
    /// To be called when the system has handled this notification, which the component's `Handle` has got.
    void AfterNotification(UINT code);
    /// Whether OnFilenameEntering is asked about the OK command that has come.
    virtual bool IsFilenameEntered() const { return true; }

    int32_t CX = 0; ///< Remembered outer size of the dialog in pixels, without docked forms; 0: not measured yet.
    int32_t CY = 0;
    TKxOpenDlgCaptions FCaptions;
    bool FClosingWindow = false; ///< The dialog window is being destroyed.
    TKxOpenDlgControls FCtrls = KxAllOpenDlgControls;
    bool FFirstTimeFlag = false; ///< The dialog is complete, but not placed yet.
    bool FPlaced = false;        ///< The dialog has its first size and place.

private:
    TPoint FirstSize() const;
    void SetFirstSize(WINDOWPOS& change) const;
    void SetOuterSize(int32_t width, int32_t height);
    void PlaceAgain();
    bool AllowsCommand(TKxFileDlgCommand command);
    void Recall();
    void RememberChoice(bool confirmed);
    std::optional<int> ShownFilter() const;

    TOpenDialog& FDialog;
    std::string FRememberKey;
    TKxDlgMemory FMemory;
    bool FIsSizeRecalled = false;    ///< CX and CY come from the memory.
    std::optional<TPoint> FPlacedAt; ///< Where the dialog was placed, until its first painting.
    TStringList FSelFiles;
    unique_pidl FSelPathIDList;
    TKxCtrlQueryEvent FCreatingFolder;
    TKxCtrlQueryEvent FGoingParent;
    TKxCtrlQueryEvent FGoingDesktop;
    TKxCtrlQueryEvent FEnteringFName;
    TKxCtrlQueryEvent FGoingLastFolder;
    TNotifyEvent FOnDesktop;
    TNotifyEvent FGoParent;
    TNotifyEvent FGoLastFolder;
    TNotifyEvent FChangeFName;
};

} // namespace kx
