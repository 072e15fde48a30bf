// SPDX-License-Identifier: MIT
#pragma once

#include "kx/frame/KxRunning.h"
#include "kx/opensave/KxFileDlgCore.h"
#include "kx/opensave/KxFileListWatch.h"
#include "kx/opensave/KxOkButton.h"
#include "kx/opensave/KxPlacesSlot.h"
#include "kx/opensave/KxToolBarLoan.h"

#include <optional>
#include <string>

namespace kx {

/// The system's open dialog, taken over: besides what the lite dialog does, it has the library's own places bar, a tool
/// bar borrowed from the application, an OK button with a menu, a form of the application in place of the file list,
/// styles and a filter for the file list, and events for its view style and for share violations.
///
/// Everything that concerns the running dialog reads as empty and does nothing while the dialog is not shown.
class TKxCustomOpenDialog : public TOpenDialog,
                            public TKxFileDlgCore,
                            public IKxFileListOwner,
                            public IKxPlacesHost,
                            private IKxFileListHost {
    KX_CLASS()

    explicit TKxCustomOpenDialog(TComponent* owner = nullptr);
    ~TKxCustomOpenDialog() override;

    bool Execute() override;

    // These members of the library's file dialogs take the place of the inherited ones.
    using TKxFileDlgCore::OnShow;
    using TKxFileDlgCore::SetOnShow;
    using TKxFileDlgCore::SetTitle;
    using TKxFileDlgCore::Title;

    // --- Parts

    TKxListViewStyles& ListViewStyles() { return FList.Styles(); }
    const TKxListViewStyles& ListViewStyles() const { return FList.Styles(); }
    /// Deliberate: takes the given object itself, where one would expect a copy. It is not owned. Null, or the end of
    /// the object, brings the dialog's own styles back.
    void SetLVOptions(TKxListViewStyles* value) { FList.SetStyles(value); }
    TKxPlacesBarOptions& PlacesBar() { return FPlaces.Options(); }
    const TKxPlacesBarOptions& PlacesBar() const { return FPlaces.Options(); }
    TKxFileFilter& ExtFilter() { return FExtFilter; }
    const TKxFileFilter& ExtFilter() const { return FExtFilter; }
    TKxToolBarOptions& ToolBar() { return FToolBars.Options(); }
    const TKxToolBarOptions& ToolBar() const { return FToolBars.Options(); }
    /// Gives the OK button an arrow that opens this menu. Not owned. Takes effect with the next showing of the button.
    TPopupMenu* OkButtonMenu() const { return FOkButton.Menu(); }
    void SetOkButtonMenu(TPopupMenu* value) { FOkButton.SetMenu(value); }

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
    /// Has the shell change it, as its View menu does. A shell that has not made the list yet changes it then.
    void SetFileListViewStyle(TKxListViewStyle value) { SetKxLVStyle(value); }
    TKxListViewStyle GetKxLVStyle() const { return FList.ViewStyle(); }
    void SetKxLVStyle(TKxListViewStyle value) { FList.SetViewStyle(value); }
    /// The same as one of the four classic styles: thumbnails and tiles are icons.
    TViewStyle SelectionStyle() const { return GetSelStyle(); }
    TViewStyle GetSelStyle() const { return KxClassicStyle(GetKxLVStyle()); }
    void RefreshFileList() override;
    /// Applies ListViewStyles to the list now.
    void RefreshListViewStyles() { FList.ApplyStyles(); }
    /// The same in 50 ms, when the shell has filled the list.
    void PostRefreshListViewStyles() { FList.PostApplyStyles(); }

    // --- The library's places bar

    /// The library's bar is the one to show: bars are wanted, and not the system's, or the system has none.
    bool ShowCustomPlacesBar() const { return FPlaces.IsWanted(); }
    TKxPlacesBarFrm* PlacesForm() const { return FPlaces.Form(); } ///< Null while it is not shown.

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

    std::string FirstFolder() const override { return StartFolder(); }
    int FirstFilterIndex() const override { return StartFilterIndex(); }
    void Remember() override;

    void DoShow() override;
    void DoClose() override;
    bool DoCanClose() override;
    void DoFolderChange() override;
    void DoTypeChange() override;

    void WMNotify(TMessage& message) override;
    TKxMsgVerdict BeforeSystem(TMessage& message, int& command) override;
    void AfterSystem(TMessage& message, int command) override;

private:
    /// The hooks of the running dialog. Each dialog has its own: one that is opened from inside another one's event may
    /// close before or after that one.
    struct TGlobals {
        unique_hhook g_KeybHook;
        unique_hhook g_WndHook;
    };

    // Running and showing
    void MeasureDialog();
    void MakeRoomForPlaces() { FPlaces.MakeRoom(); }
    void CreatePlacesBar() { FPlaces.Create(); }
    void TakeToolBar() { FToolBars.Take(); }
    void InstallHooks();
    void TakeFirstList() { FList.TakeFirst(); }
    void RecallLook();
    static LRESULT KX_CALLBACK NewKeybHook(int code, WPARAM key, LPARAM flags);
    static LRESULT KX_CALLBACK NewWndHook(int code, WPARAM wParam, LPARAM lParam);

    // Steps of the closing
    void SavePlaces() { FPlaces.Save(); }
    void FreePlacesBar() { FPlaces.Free(); }
    void FreeOkButton() { FOkButton.Free(); }
    void ReturnToolBar() { FToolBars.Return(); }
    void StopWatching();
    void FireInheritedClose();
    void ForgetList();

    // Steps of a change of folder, and of size
    void ShowFolderInPlaces() { FPlaces.ShowFolder(); }
    void ShowSelectionAgain();
    void ListMayBeFilled() { FList.MayBeFilled(); }
    void KeepInside() { FPlaces.KeepInside(FToolBars.OwnBar()); }
    void PlaceToolBar() { FToolBars.Place(); }
    void ShowOkButton() { FOkButton.Show(); }
    void AlignOkButton() { FOkButton.Align(); }
    void FitPlacesBar() { FPlaces.Fit(); }
    void PushLowerControls() { Window().PushLowerControls(CustDlgParams()); }

    // The list, or what is in its place
    bool ShowsFileList() const { return FListType == stStandard && VisibleControls().Contains(dcSelectionCtrl); }
    void ShowStdSelectionCtrls(bool show);
    void ShowCustomSelectionCtrl(bool show);
    void ViewStyleChanging(TViewStyle style, bool& allow) override { DoSelectionStyleChanging(style, allow); }
    void ViewStyleChanged(TViewStyle style) override { DoSelectionStyleChange(style); }
    void ListLookedAfter() override;

    // Files that others hold
    bool FRealHook(TMessage& message);
    void ForgetShareViolation();
    bool AllowsSharedFiles();
    void TellOfShareViolation(const std::string& fileName) const;

    // Messages of the dialog window
    int32_t AddedWidth() const override { return FPlaces.RoomWidth(); }
    void ShowAsPlaced();
    void WMNCPaint();
    void GrowCustomForm(int32_t width, int32_t height);
    void WMSize(TMessage& message);
    void LeaveWindow() override;

    TGlobals FGlobals;
    TKxFileFilter FExtFilter;
    TKxFileListWatch FList;
    TKxPlacesSlot FPlaces;
    TKxToolBarLoan FToolBars;
    TKxOkButton FOkButton;
    TKxDlgSelectionType FListType = stStandard;
    TKxViewStyleQueryEvent FOnStyleChanging;
    TKxViewStyleEvent FOnStyleChange;
    TKxShareViolationEvent FOnShareEvent;
    bool FShareAsked = false;         ///< The system has reported a share violation since OK was pressed.
    std::optional<bool> FShareAnswer; ///< What the application has said about that file, for the second question.
};

/// A program and the library's DLL have one running dialog in common.
extern template class TKxRunning<TKxCustomOpenDialog>;

/// The published open dialog.
class TKxOpenDialog : public TKxCustomOpenDialog {
    KX_CLASS()

    using TKxCustomOpenDialog::TKxCustomOpenDialog;
};

} // namespace kx
