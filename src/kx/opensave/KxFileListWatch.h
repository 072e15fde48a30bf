// SPDX-License-Identifier: MIT
#pragma once

#include "kx/opensave/KxFileDlgCore.h"
#include "kx/win/Timers.h"

#include <optional>
#include <vector>

namespace kx {

/// What the watch over a file list asks of, and tells, the dialog that has the list. Each call may free the dialog.
class IKxFileListHost {
public:
    /// The user is about to show the files in another style.
    virtual void ViewStyleChanging(TViewStyle style, bool& allow) = 0;
    virtual void ViewStyleChanged(TViewStyle style) = 0;
    /// The shell has had time to finish: the dialog looks whether the list, or what is in its place, shows as wanted.
    virtual void ListLookedAfter() = 0;

protected:
    ~IKxFileListHost() = default;
};

/// How a file list shows its files.
struct TKxFileListLook {
    std::optional<TKxListViewStyle> Style; ///< Nothing: as the shell likes it.
    std::vector<int> Columns;              ///< Widths in lvsReport, in pixels; empty: as the shell likes them.
};

/// Watches over the file list of a running dialog. The shell makes its view and its list anew with every change of
/// folder, and fills the list when it has the time. The watch takes each new list over, filters what comes into it and
/// gives it its styles.
class TKxFileListWatch {
public:
    /// `dialog` is the one that has the list, `host` the same as the watch sees it.
    TKxFileListWatch(TKxFileDlgCore& dialog, IKxFileListHost& host, TKxFileFilter& filter);

    // --- Styles

    TKxListViewStyles& Styles() { return FLVOptionsLive ? *FLVOptions : FOwnLVOptions; }
    const TKxListViewStyles& Styles() const { return FLVOptionsLive ? *FLVOptions : FOwnLVOptions; }
    /// The given object itself, not a copy of it. Not owned: null, and the end of the object, give the own one back.
    void SetStyles(TKxListViewStyles* value);
    void ApplyStyles();
    void PostApplyStyles() { FTimer.SetEnabled(true); } ///< In 50 ms, when the shell has filled the list.

    TKxListViewStyle ViewStyle() const; ///< lvsIcon while there is no list.
    /// Has the shell change it; as soon as it has made the list, when it has not yet.
    void SetViewStyle(TKxListViewStyle value);

    /// Gives the list this look, as soon as the shell has made it, and the columns to each list that follows; from now
    /// on until the dialog is closed, `Look` tells how the user has changed that.
    void SetLook(const TKxFileListLook& value);
    const TKxFileListLook& Look() const { return FLook; }

    // --- The list

    HWND View() const { return FDVH; } ///< The shell view that is taken over; null while there is none.

    void TakeFirst();
    /// To be called for everything that may mean a new list or new entries: the shell's question for the selection, a
    /// view that is made inside the dialog, another folder, the timer. Systems leave some of these out, and repeat
    /// some.
    void MayBeFilled();
    /// The shell reads the folder again. The filter asks anew: the application may give other answers by now.
    void FillingBegins();
    /// Filters the list now if its filtering is pending. May free the dialog.
    void FilterNow();

    void Stop() { FTimer.SetEnabled(false); }
    void Forget(); ///< The dialog is closed.

    // --- For the hooks of the dialog's thread

    bool SwallowsKey(WPARAM key) const;
    /// Any window of the thread has answered a message.
    void MessageHandled(const CWPRETSTRUCT& message);

private:
    bool TakeWindows();
    void LoseList();
    LRESULT EntryCount() const;
    bool IsUnfiltered() const { return FRefilledPosted || EntryCount() != FFilteredCount; }
    void PostListRefilled();
    void ListRefilled();
    void ApplyWantedStyle();
    void ApplyColumns();
    void NoteLook();
    void DoRefreshListView(TObject* sender);

    void NewLVProc(TMessage& message);
    void ListStyleChanging(TMessage& message);

    void NewDVProc(TMessage& message);
    bool ViewStyleCommand(TMessage& message);
    bool RefusesRenaming(const TMessage& message) const;
    int SelectedCount() const;
    bool IsMenuAllowed() const;
    void DisableMenuItems(HMENU menu) const;

    TKxFileDlgCore& FDialog;
    IKxFileListHost& FHost;
    TKxFileFilter& FFilter;
    HWND FLVH = nullptr; ///< The file list that is subclassed.
    HWND FDVH = nullptr; ///< The shell view that is subclassed.
    TSubclass FListMessages;
    TSubclass FViewMessages;
    TKxListViewStyles FOwnLVOptions;
    TKxListViewStyles* FLVOptions = &FOwnLVOptions; ///< Those in force while they live.
    TAlive FLVOptionsLive{FOwnLVOptions};
    TTimer FTimer;
    const bool FIsWinXP;                          ///< The shell's view has the commands of system 5.1 and later.
    bool FRefilledPosted = false;                 ///< KxListRefilledMessage is under way to the list.
    bool FFiltering = false;                      ///< The filter runs: what it does to the list is no refilling.
    LRESULT FFilteredCount = -1;                  ///< Entries that the filter left in the list; -1: it has yet to run.
    std::optional<TKxListViewStyle> FWantedStyle; ///< Set before there was a list.
    TKxFileListLook FLook;
    bool FNotesLook = false;   ///< SetLook was called in this showing.
    std::vector<int> FColumns; ///< Widths that the list had before the user saw them; empty: he has not seen them.
};

} // namespace kx
