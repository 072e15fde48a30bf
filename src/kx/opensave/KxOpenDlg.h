#pragma once

#include "kx/frame/KxRunning.h"
#include "kx/opensave/KxFileDlgCore.h"
#include "kx/opensave/KxToolBarProps.h"
#include "kx/places/KxPlacesBarForm.h"
#include "kx/win/Handles.h"
#include "kx/win/Timers.h"

#include <optional>
#include <string>

namespace kx {

class TKxBitBtn;

/// The system's open dialog, taken over: besides what the lite dialog does, it has the library's own places bar, a tool
/// bar borrowed from the application, an OK button with a menu, a form of the application in place of the file list,
/// styles and a filter for the file list, and events for its view style and for share violations.
///
/// Everything that concerns the running dialog reads as empty and does nothing while the dialog is not shown.
class TKxCustomOpenDialog : public TOpenDialog, public TKxFileDlgCore, public IKxFileListOwner, public IKxPlacesHost {
    KX_CLASS()

    explicit TKxCustomOpenDialog(TComponent* owner = nullptr);
    ~TKxCustomOpenDialog() override;

    bool Execute() override;

    // Those of the library's file dialogs take the place of the inherited ones.
    using TKxFileDlgCore::OnShow;
    using TKxFileDlgCore::SetOnShow;
    using TKxFileDlgCore::SetTitle;
    using TKxFileDlgCore::Title;

    // --- Parts

    TKxListViewStyles& ListViewStyles() { return FLVOptionsLive ? *FLVOptions : FOwnLVOptions; }
    /// Deliberate: takes the given object itself, not a copy of it. Not owned: null, and the end of the object, give
    /// the dialog's own one back.
    void SetLVOptions(TKxListViewStyles* value);
    TKxPlacesBarOptions& PlacesBar() { return FPlaceOptions; }
    TKxFileFilter& ExtFilter() { return FExtFilter; }
    TKxToolBarOptions& ToolBar() { return FTBOptions; }
    /// Gives the OK button an arrow that opens this menu. Not owned. Takes effect with the next showing of the button.
    TPopupMenu* OkButtonMenu() const { return FPopupMenu.Get(); }
    void SetOkButtonMenu(TPopupMenu* value) { FPopupMenu.Set(value); }

    // --- What the user selects with

    TKxDlgSelectionType SelectionType() const { return FListType; }
    void SetSelectionType(TKxDlgSelectionType value) { SetLstType(value); }
    void SetLstType(TKxDlgSelectionType value);
    /// Shows the file list, the custom form or nothing, by SelectionType and VisibleControls.
    void RefreshSelCtrl();
    void SetVisibleCtrls(TKxOpenDlgControls value) override;
    /// With the custom selection: the file name control's text.
    std::string GetSelFiles() const override;

    // --- The file list

    HWND GetDVHandle() const { return Window().GetDVHandle(); } ///< The shell view.
    HWND GetLVHandle() const { return Window().GetLVHandle(); } ///< The list inside it.
    /// The view style that the shell shows its files in; lvsIcon while the dialog is not shown.
    TKxListViewStyle FileListViewStyle() const { return GetKxLVStyle(); }
    /// Has the shell change it, as its View menu does; as soon as it has made the list, when it has not yet.
    void SetFileListViewStyle(TKxListViewStyle value) { SetKxLVStyle(value); }
    TKxListViewStyle GetKxLVStyle() const;
    void SetKxLVStyle(TKxListViewStyle value);
    /// The same as one of the four classic styles: thumbnails and tiles are icons.
    TViewStyle SelectionStyle() const { return GetSelStyle(); }
    TViewStyle GetSelStyle() const;
    void RefreshFileList() override;
    /// Applies ListViewStyles to the list now.
    void RefreshListViewStyles();
    /// The same in 50 ms, when the shell has filled the list.
    void PostRefreshListViewStyles() { FTimer.SetEnabled(true); }

    // --- The library's places bar

    /// The library's bar is the one to show: bars are wanted, and not the system's, or the system has none.
    bool ShowCustomPlacesBar() const;
    TKxPlacesBarFrm* PlacesForm() const { return FPlaceForm.Get(); } ///< Null while it is not shown.

    // --- For the places bar and for tools

    HWND GetCommonDialogHandle() const override { return DlgHandle(); }
    std::string GetSelPath() const override { return SelectedFolder(); }
    void SetSelPath(const std::string& path) override { SetSelectedFolder(path); }
    void SetFNameText(const std::string& text) override { SetFilenameText(text); }

    /// The dialog of this thread that runs, the innermost one; null when there is none.
    static TKxCustomOpenDialog* CreationControl();

    // --- Events

    /// The user is about to show the files in another style.
    const TKxViewStyleQueryEvent& OnSelectionStyleChanging() const { return FOnStyleChanging; }
    void SetOnSelectionStyleChanging(TKxViewStyleQueryEvent value) { FOnStyleChanging = std::move(value); }
    const TKxViewStyleEvent& OnSelectionStyleChange() const { return FOnStyleChange; }
    void SetOnSelectionStyleChange(TKxViewStyleEvent value) { FOnStyleChange = std::move(value); }
    /// Another program holds the chosen file. The answer is one of the system's OFN_SHARE... numbers; -1, as it comes,
    /// leaves the case to the system.
    const TKxShareViolationEvent& OnShareViolation() const { return FOnShareEvent; }
    void SetOnShareViolation(TKxShareViolationEvent value) { FOnShareEvent = std::move(value); }
    /// The event of ExtFilter.
    const TKxFileFilterEvent& OnIncludeFile() const { return FExtFilter.OnIncludeFile(); }
    void SetOnIncludeFile(TKxFileFilterEvent value) { FExtFilter.SetOnIncludeFile(std::move(value)); }

protected:
    using TRunning = TKxRunning<TKxCustomOpenDialog>;
    /// Makes this the running dialog while the result lives. Whoever runs the dialog in a way of their own calls it
    /// first.
    [[nodiscard]] TRunning PrepareExecution() { return TRunning(*this); }
    /// One of the two wrappers below, run by the component as its system dialog.
    using TWrapper = bool(OPENFILENAMEA& record);
    bool ExecuteWith(TWrapper* wrapper);
    /// The system's dialogs, with its places bar when the running component wants that one.
    static bool GetOpenFileNameWrapper(OPENFILENAMEA& record);
    static bool GetSaveFileNameWrapper(OPENFILENAMEA& record);

    // Fire their events
    virtual void DoSelectionStyleChanging(TViewStyle style, bool& allow) { FOnStyleChanging(this, style, allow); }
    virtual void DoSelectionStyleChange(TViewStyle style) { FOnStyleChange(this, style); }
    virtual void DoShareViolation(int32_t& result, const std::string& fileName) {
        FOnShareEvent(this, result, fileName);
    }

    void DoShow() override;
    void DoClose() override;
    bool DoCanClose() override;
    void DoFolderChange() override;
    void DoTypeChange() override;

    void WMNotify(TMessage& message) override;
    TKxMsgVerdict BeforeSystem(TMessage& message) override;
    void AfterSystem(TMessage& message) override;

private:
    /// What hook procedures and enumerations know of the running dialog. Each dialog has its own: one that is opened
    /// from inside another one's event may close before or after that one.
    struct TGlobals {
        unique_hhook g_KeybHook;
        unique_hhook g_WndHook;
        HWND GHandle1 = nullptr; ///< The dialog window in which a places bar makes room for itself.
    };

    // Running and showing
    void MeasureDialog();
    void ShowSelectionAgain();
    bool AllowsSharedFiles();
    void TellOfShareViolation(const std::string& fileName) const;
    void InstallHooks();
    static LRESULT KX_CALLBACK NewKeybHook(int code, WPARAM key, LPARAM flags);
    static LRESULT KX_CALLBACK NewWndHook(int code, WPARAM wParam, LPARAM lParam);
    void MessageHandled(const CWPRETSTRUCT& message);
    bool SwallowsKey(WPARAM key) const;

    // Steps of the closing
    void SavePlaces();
    void LeaveAtLast();
    void StopWatching();
    void FireInheritedClose();
    void ForgetList();

    // Places bar
    void MakeRoomForPlaces();
    void CreatePlacesBar();
    void LoadPlaces();
    int32_t OwnRight();
    void KeepInside();
    void FitPlacesBar();
    void FreePlacesBar();
    void ShowFolderInPlaces();
    static BOOL KX_CALLBACK MoveLeft1(HWND window, LPARAM delta) noexcept;

    // Tool bar
    void TakeToolBar();
    void BorrowToolBar();
    void PlaceToolBar();
    void ReturnToolBar();

    // Controls
    void ShowOkButton();
    void CreateOkButton(bool visible);
    void AlignOkButton();
    void FreeOkButton();
    void DoOKClick(TObject* sender);
    bool ShowsFileList() const { return FListType == stStandard && VisibleControls().Contains(dcSelectionCtrl); }
    void ShowStdSelectionCtrls(bool show);
    void ShowCustomSelectionCtrl(bool show);

    // File list
    const TKxListViewStyles& LVOptions() const { return FLVOptionsLive ? *FLVOptions : FOwnLVOptions; }
    bool RecreateHWnds();
    LRESULT EntryCount() const;
    void TakeFirstList();
    void ListMayBeFilled();
    void FillingBegins();
    void PostListRefilled();
    bool IsUnfiltered() const { return FRefilledPosted || EntryCount() != FFilteredCount; }
    void ListRefilled();
    void LoseList();
    void ApplyWantedStyle();
    void DoRefreshListView(TObject* sender);

    // Messages
    bool FRealHook(TMessage& message);
    void ForgetShareViolation();
    void NewLVProc(TMessage& message);
    void NewDVProc(TMessage& message);
    bool ViewStyleCommand(TMessage& message);
    void ViewStyleChanging(TMessage& message);
    bool RefusesRenaming(const TMessage& message) const;
    void DisableMenuItems(HMENU menu) const;
    bool IsMenuAllowed() const;
    int SelectedCount() const;
    TPoint FirstSize() override;
    void ShowAsPlaced();
    void PushLowerControls() { Window().PushLowerControls(CustDlgParams()); }
    void WMNCPaint();
    void GrowCustomForm(int32_t width, int32_t height);
    void WMSize(TMessage& message);
    void LeaveWindow();

    int32_t FPBWidth = 0; ///< Width of the places bar, in pixels.
    TGlobals FGlobals;
    TKxToolBarOptions FTBOptions;
    TComponentRef<TKxPlacesBarFrm> FPlaceForm;
    TKxFileFilter FExtFilter;
    TKxPlacesBarOptions FPlaceOptions;
    HWND FLVH = nullptr; ///< The file list that is subclassed.
    HWND FDVH = nullptr; ///< The shell view that is subclassed.
    HWND FTB = nullptr;  ///< The dialog's own navigation tool bar.
    TComponentRef<TToolBar> FBorrowedBar;
    TComponentRef<TWinControl> FTBPrevParent;
    TRect FTBPrevRect;
    bool FTBPrevVisible = false;
    TKxListViewStyles FOwnLVOptions;
    TKxListViewStyles* FLVOptions = &FOwnLVOptions; ///< Those in force while they live.
    TAlive FLVOptionsLive{FOwnLVOptions};
    TSubclass FListMessages;
    TSubclass FViewMessages;
    TKxDlgSelectionType FListType = stStandard;
    TKxViewStyleQueryEvent FOnStyleChanging;
    TKxViewStyleEvent FOnStyleChange;
    TKxShareViolationEvent FOnShareEvent;
    unique_com<IShellFolder> FShellFolder; ///< The desktop's.
    TComponentRef<TPopupMenu> FPopupMenu;
    TComponentRef<TForm> FOKButtonFrm; ///< Holds FOKButton in the place of the OK button.
    TKxBitBtn* FOKButton = nullptr;
    TTimer FTimer;
    bool FShareAsked = false;                     ///< The system has reported a share violation since OK was pressed.
    std::optional<bool> FShareAnswer;             ///< To its question whether such a file may be taken.
    const bool FIsWinXP;                          ///< The shell's view has the commands of system 5.1 and later.
    bool FRefilledPosted = false;                 ///< KxListRefilledMessage is under way to the list.
    bool FFiltering = false;                      ///< The filter runs: what it does to the list is no refilling.
    LRESULT FFilteredCount = -1;                  ///< Entries that the filter left in the list; -1: it has yet to run.
    std::optional<TKxListViewStyle> FWantedStyle; ///< Set before there was a list.
};

/// The published open dialog.
class TKxOpenDialog : public TKxCustomOpenDialog {
    KX_CLASS()

    using TKxCustomOpenDialog::TKxCustomOpenDialog;
};

} // namespace kx
