// SPDX-License-Identifier: MIT
#pragma once

#include "kx/frame/KxDlgCore.h"
#include "kx/frame/KxDlgMemory.h"
#include "kx/frame/KxShellDefs.h"

#include <array>
#include <functional>
#include <string>

namespace kx {

/// What the folder browser shows and lets the user choose.
enum TKxBrowseForFolderFlag : uint8_t {
    ffBrowseForComputer, ///< Only computers can be chosen.
    ffBrowseForPrinter,  ///< Only printers can be chosen.
    ffDontGoBelowDomain, ///< No network folders below a domain.
    ffReturnFSAncestors, ///< Only ancestors in the file system can be chosen.
    ffReturnOnlyFSDirs,  ///< Only folders of the file system can be chosen.
    ffStatusText         ///< The status text has a place; not in the new style.
};
KX_ENUM(TKxBrowseForFolderFlag, "ffBrowseForComputer", "ffBrowseForPrinter", "ffDontGoBelowDomain",
        "ffReturnFSAncestors", "ffReturnOnlyFSDirs", "ffStatusText")
using TKxBrowseForFolderFlags = TSet<TKxBrowseForFolderFlag>;

/// Flags of later versions of the browser. With any of them no forms are docked to the sides.
enum TKxBrowseForFolderFlagEx : uint8_t {
    ffNoNewFolderButton, ///< In the new style: no button that makes a folder.
    ffNewDialogStyle,    ///< Sizeable, with a button that makes a folder. Windows: not in a multithreaded apartment.
    ffEditBox,           ///< The user may type a name.
    ffIncludeFiles,      ///< The tree shows files too.
    ffIncludeUrls,
    ffValidate,
    ffShareable
};
KX_ENUM(TKxBrowseForFolderFlagEx, "ffNoNewFolderButton", "ffNewDialogStyle", "ffEditBox", "ffIncludeFiles",
        "ffIncludeUrls", "ffValidate", "ffShareable")
using TKxBrowseForFolderFlagsEx = TSet<TKxBrowseForFolderFlagEx>;

/// The system's browse flag (BIF_...) of each of them.
inline constexpr std::array<UINT, 6> constFolderOptions = {0x1000, 0x2000, 0x2, 0x8, 0x1, 0x4};
inline constexpr std::array<UINT, 7> constFolderOptionsEx = {0x200, 0x40, 0x10, 0x4000, 0x80, 0x20, 0x8000};
inline constexpr size_t numOfBrwsFlags = constFolderOptions.size();
inline constexpr size_t numOfBrwsFlagsEx = constFolderOptionsEx.size();

/// The shell's folder browser with captions, title, status text and placement of its own, the application's forms
/// docked to its sides, and, if wanted, a form of the application in place of its tree.
///
/// The browser may run in any thread; its events fire there.
class TKxCustomFolderDialog : public TCommonDialog, public TKxDlgCore {
    KX_CLASS()

    explicit TKxCustomFolderDialog(TComponent* owner = nullptr);
    ~TKxCustomFolderDialog() override;

    /// Runs the browser in the calling thread.
    /// @throws EOSError "Can not get folder location (Pidl)", "Error getting IShellFolder interface", "Error parsing
    ///         folder name to PIDL" when there is no root for the tree.
    bool Execute() override;

    // --- Settings

    TKxDlgCaptions& DlgItemsCaptions() { return FCaptions; }
    const TKxDlgCaptions& DlgItemsCaptions() const { return FCaptions; }
    /// Path of the folder that is the tree's root; empty: see SpecialIniFolder. Setting one clears the other.
    const std::string& InitialDir() const { return FIniFolder; }
    void SetInitialDir(const std::string& value) { SetIniFolder(value); }
    /// Special folder that is the tree's root; ftNone, without an InitialDir: the desktop.
    TKxSpecShellFolder SpecialIniFolder() const { return FSpecIniFolder; }
    void SetSpecialIniFolder(TKxSpecShellFolder value) { SetSpecIniFolder(value); }
    /// Line above the tree; shown only with ffStatusText.
    const std::string& StatusText() const { return FStatus; }
    void SetStatusText(const std::string& value) { SetStatus(value); }
    TKxBrowseForFolderFlags Options() const { return FOptions; }
    void SetOptions(TKxBrowseForFolderFlags value) { FOptions = value; }
    TKxBrowseForFolderFlagsEx OptionsEx() const { return FExOptions; }
    void SetOptionsEx(TKxBrowseForFolderFlagsEx value) { FExOptions = value; }
    /// Whether the tree is shown, or CustDlgParams' custom form in its place. May be changed while the dialog is shown.
    TKxDlgSelectionType SelectionType() const { return FSelType; }
    void SetSelectionType(TKxDlgSelectionType value) { SetSelType(value); }
    /// Form whose window owns the browser's. Null: the application's window owns it; where that window is invisible and
    /// the main form is shown, the active window. The form is not owned, and forgotten when it is freed.
    TForm* ParentForm() const { return FParentForm.Get(); }
    void SetParentForm(TForm* value) { FParentForm.Set(value); }
    /// Key below HKEY_CURRENT_USER in which dialogs of one purpose remember the folder that the user has chosen last,
    /// and the size in which he left a browser that can be sized, whether he chose or not. The next Execute begins with
    /// them, but for a folder outside of the tree's root, or one that the program selects in OnShow. Empty: nothing is
    /// remembered.
    const std::string& RememberKey() const { return FRememberKey; }
    void SetRememberKey(const std::string& value) { FRememberKey = value; }
    /// Instruction above the tree, of which the first 127 bytes are shown.
    const std::string& Text() const { return FTitle; }
    void SetText(const std::string& value) { FTitle = value; }

    void SetIniFolder(const std::string& value);
    void SetSpecIniFolder(TKxSpecShellFolder value);
    void SetStatus(const std::string& value);
    void SetSelType(TKxDlgSelectionType value);

    // --- What was chosen

    /// Path of the folder chosen last; empty when it is none of the file system. Cancelling leaves it as it was.
    const std::string& Folder() const { return FFolder; }
    /// Display name that the system gave for it.
    const std::string& DispName() const { return FDispName; }
    /// Identifier list of the last Execute's result; null when it was cancelled. The dialog owns it.
    const ITEMIDLIST* Pidl() const { return FPidl.get(); }

    // --- The running dialog

    /// Whether the OK button is to be enabled. Reads the value given last, not the button's state. While the dialog is
    /// not shown, the value is merely kept.
    bool Ok() const { return FOK; }
    void SetOk(bool value);
    /// Path of what is selected in the tree. Setting it selects that folder; while the dialog is not shown it is merely
    /// kept, and forgotten at the end of the next Execute.
    const std::string& SelFolder() const { return FSelFolder; }
    void SetSelFolder(const std::string& value);
    /// First item of the selection's absolute identifier list, valid until the selection changes. Setting it takes the
    /// whole list.
    const ITEMIDLIST* SelPidl() const { return FSelPidl.get(); }
    void SetSelPidl(const ITEMIDLIST* value);

    // --- Events

    /// Another item of the tree is selected.
    const TNotifyEvent& OnSelectionChange() const { return FOnSelChange; }
    void SetOnSelectionChange(TNotifyEvent value) { FOnSelChange = std::move(value); }
    /// OK was pressed; may keep the dialog open. `Folder` is not the user's choice yet, `SelFolder` is.
    const TCloseQueryEvent& OnCanClose() const { return FOnCanClose; }
    void SetOnCanClose(TCloseQueryEvent value) { FOnCanClose = std::move(value); }
    using TCommonDialog::OnShow;
    using TCommonDialog::SetOnShow;

    /// The folder dialog that runs in this thread, of nested ones the innermost; null when there is none.
    static TKxCustomFolderDialog* Running();

protected:
    virtual void DoSelectionChange() { FOnSelChange(this); }

    void DoShow() override;
    void DoClose() override;
    virtual bool DoCanClose(); ///< False: the dialog stays open.

    /// A notification of the browser: its code, and in WParam what comes with it.
    void BrowseProc(const TMessage& message);

private:
    class TRun;

    static int KX_CALLBACK BrowseCallBack(HWND window, UINT code, LPARAM param, LPARAM data) noexcept;

    HWND BrowserOwner() const;
    bool Browse(HWND owner);
    unique_pidl RootPidl() const;
    UINT BrowseFlags() const;
    void Initialized();
    void RecallSize();
    void RecallFolder();
    void RememberSize();
    void SelChanged(const ITEMIDLIST* selection);
    void LeaveWindow();
    void EndRun();
    void SelectAgain();
    void TellOk() const;
    LRESULT Tell(UINT message, WPARAM wParam, LPARAM lParam) const;

    // Steps of the showing
    void ShowSelCtrl();
    void SetCaptions();
    void FireInheritedShow();

    HWND FindTree() const;
    HWND ControlOf(HWND tree) const;
    void MeasureTree(HWND tree);
    void FollowTree();
    void RefreshSelCtrl();
    void ShowCustSelectionCtrl(bool show);
    void ShowStdSelectionCtrl(bool show);

    // The dialog's own cases of its window's messages
    TKxMsgVerdict BeforeSystem(TMessage& message, int&) override;
    void AfterSystem(TMessage& message, int) override;

    std::string FRememberKey;
    TKxDlgMemory FMemory; ///< Of the running dialog.
    std::string FFolder;
    std::string FIniFolder;
    std::string FTitle;
    TKxDlgCaptions FCaptions;
    TNotifyEvent FOnSelChange;
    TCloseQueryEvent FOnCanClose;
    bool FOK = false;
    bool FOkGiven = false;              ///< SetOk was called since the last change of the selection.
    LPARAM FSelection = 0;              ///< Number of the selection.
    bool FInitializing = false;         ///< The browser is still in its BFFM_INITIALIZED.
    std::function<void()> FSelectAgain; ///< Makes the selection that was made meanwhile; empty: there is none.
    std::string FStatus;
    TKxBrowseForFolderFlags FOptions;
    unique_pidl FPidl;
    unique_pidl FSelPidl;
    std::string FSelFolder;
    std::string FDispName;
    TKxSpecShellFolder FSpecIniFolder = ftNone;
    TKxDlgSelectionType FSelType = stStandard;
    TRect FSelRect; ///< Place of the tree, in client coordinates of the browser, for the custom form.
    TComponentRef<TForm> FParentForm;
    TKxBrowseForFolderFlagsEx FExOptions;
};

/// The published folder dialog.
class TKxFolderDialog : public TKxCustomFolderDialog {
    KX_CLASS()

    using TKxCustomFolderDialog::TKxCustomFolderDialog;
};

} // namespace kx
