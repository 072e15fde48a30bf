// SPDX-License-Identifier: MIT
// Watches over the file list of the full dialogs: takes over each new list, filters it and styles it.

#include "kx/opensave/KxFileListWatch.h"

#include "kx/core/Barrier.h"
#include "kx/frame/KxWhileAlive.h"
#include "kx/win/System.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

namespace {

constexpr unsigned StyleDelay = 50; ///< Milliseconds in which the shell fills its list.

/// The shell's view knows thumbnails and tiles since system 5.1.
bool HasNewerShellView() {
    const TSystem& system = System();
    return system.Major >= 6 || (system.Major == 5 && system.Minor >= 1);
}

} // namespace

TKxFileListWatch::TKxFileListWatch(TKxFileDlgCore& dialog, IKxFileListHost& host, TKxFileFilter& filter)
    : FDialog(dialog), FHost(host), FFilter(filter), FListMessages(TWndMethod(this, &TKxFileListWatch::NewLVProc)),
      FViewMessages(TWndMethod(this, &TKxFileListWatch::NewDVProc)), FIsWinXP(HasNewerShellView()) {
    FTimer.SetEnabled(false);
    FTimer.SetInterval(StyleDelay);
    FTimer.SetOnTimer({this, &TKxFileListWatch::DoRefreshListView, "DoRefreshListView"});
}

// --- Keys

bool TKxFileListWatch::SwallowsKey(WPARAM key) const {
    if (key != VK_DELETE || Styles().EnableDelete()) {
        return false;
    }
    HWND list = FDialog.Window().GetLVHandle();
    return list && GetFocus() == list;
}

// --- Fillings of the list

/// The shell asks for the selection once the list of a folder is complete.
void TKxFileListWatch::MessageHandled(const CWPRETSTRUCT& message) {
    HWND dialog = FDialog.DlgHandle();
    if (message.message == LVM_GETSELECTEDCOUNT && dialog && GetParent(GetParent(message.hwnd)) == dialog) {
        MayBeFilled();
    }
}

/// Takes over the shell view and the file list that are there now. True when one of them is a new one.
bool TKxFileListWatch::TakeWindows() {
    HWND view = FDialog.Window().GetDVHandle();
    const bool isNewView = view != FDVH;
    if (isNewView) {
        FDVH = view;
        view ? FViewMessages.Install(view) : FViewMessages.Uninstall();
    }
    HWND list = FDialog.Window().GetLVHandle();
    if (list == FLVH && !isNewView) {
        return false;
    }
    if (list != FLVH) {
        LoseList();
        FLVH = list;
        list ? FListMessages.Install(list) : FListMessages.Uninstall();
    }
    return true;
}

void TKxFileListWatch::LoseList() {
    FLVH = nullptr;
    FColumns.clear();
    FRefilledPosted = false; // the posted message has gone with its list
    FFilteredCount = -1;
    FFilter.Forget();
}

LRESULT TKxFileListWatch::EntryCount() const { return SendMessageW(FLVH, LVM_GETITEMCOUNT, 0, 0); }

/// Takes the first folder's list, which may be there before the hooks. Windows makes its view later, several times.
void TKxFileListWatch::TakeFirst() {
    MayBeFilled();
    PostApplyStyles();
}

void TKxFileListWatch::MayBeFilled() {
    const bool isNew = TakeWindows();
    if (FLVH && (isNew || IsUnfiltered())) {
        PostListRefilled();
    }
}

void TKxFileListWatch::FillingBegins() {
    FFilter.Forget();
    FFilteredCount = -1;
    PostListRefilled();
}

/// Filters the list as soon as the shell, which may be in the middle of filling it, is done with its message.
void TKxFileListWatch::PostListRefilled() {
    if (FLVH && !FFiltering && !FRefilledPosted) {
        FRefilledPosted = PostMessageW(FLVH, KxListRefilledMessage, 0, 0) != FALSE;
    }
}

/// Filters what has come into the list. May free the dialog.
void TKxFileListWatch::ListRefilled() {
    FRefilledPosted = false;
    if (FFiltering || !FLVH) {
        return;
    }
    const TAlive there(FDialog.Existence());
    HWND list = FLVH;
    bool done = true;
    if (FFilter.Enabled()) {
        const TFieldScope filtering(FDialog.Existence(), FFiltering, true);
        Guarded([&] {
            // The application hears of the messages that ask for the folder, and may free the dialog.
            const std::string folder = FDialog.SelectedFolder();
            if (there) {
                done = FFilter.ProcessViaFilter(FLVH, folder, TKxFilterPass::Added);
            }
        });
    }
    if (!there || !FLVH) {
        return;
    }
    FFilteredCount = done && FLVH == list ? EntryCount() : -1; // -1: the timer filters it once more
    PostApplyStyles();
    if (Outlives(FDialog.Existence(), [this] { ApplyWantedStyle(); })) {
        ApplyColumns();
    }
}

void TKxFileListWatch::FilterNow() {
    if (FRefilledPosted) {
        ListRefilled();
    }
}

void TKxFileListWatch::Forget() {
    FListMessages.Uninstall();
    FViewMessages.Uninstall();
    LoseList();
    FDVH = nullptr;
    FWantedStyle.reset();
    FNotesLook = false;
}

// --- Styles of the list

void TKxFileListWatch::DoRefreshListView(TObject*) {
    FTimer.SetEnabled(false);
    MayBeFilled();
    if (FLVH) {
        PostMessageW(FLVH, KxRefreshStylesMessage, 0, 0);
        ApplyColumns();
    } else {
        PostApplyStyles(); // the shell has yet to make its list
    }
    FHost.ListLookedAfter();
}

void TKxFileListWatch::SetStyles(TKxListViewStyles* value) {
    FLVOptions = value ? value : &FOwnLVOptions;
    FLVOptionsLive = TAlive(*FLVOptions);
}

void TKxFileListWatch::ApplyStyles() {
    const auto exStyle = static_cast<DWORD>(SendMessageW(FLVH, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0));
    const DWORD newExStyle = Styles().ApplyToExStyle(exStyle);
    if (newExStyle != exStyle) {
        SendMessageW(FLVH, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(newExStyle));
    }
    const auto style = static_cast<DWORD>(GetWindowLongPtrA(FLVH, GWL_STYLE));
    const DWORD newStyle = Styles().ApplyToStyle(style);
    if (newStyle != style) {
        SetWindowLongPtrA(FLVH, GWL_STYLE, static_cast<LONG_PTR>(newStyle));
    }
}

TKxListViewStyle TKxFileListWatch::ViewStyle() const {
    HWND list = FDialog.Window().GetLVHandle();
    if (!list) {
        return lvsIcon;
    }
    // The order is that of the numbers that the list uses.
    constexpr TKxListViewStyle styles[] = {lvsIcon, lvsReport, lvsSmallIcon, lvsList, lvsTile};
    if (!FIsWinXP) {
        return styles[GetWindowLongPtrA(list, GWL_STYLE) & LVS_TYPEMASK];
    }
    const LRESULT view = SendMessageW(list, LVM_GETVIEW, 0, 0);
    if (view == LV_VIEW_ICON) {
        // Deliberate: the vertical spacing against the horizontal metric, where one would expect the vertical metric.
        const int spacing = HIWORD(SendMessageW(list, LVM_GETITEMSPACING, FALSE, 0));
        return spacing > GetSystemMetrics(SM_CXICONSPACING) ? lvsThumbnail : lvsIcon;
    }
    return view > 0 && view < static_cast<LRESULT>(std::size(styles)) ? styles[view] : lvsIcon;
}

void TKxFileListWatch::SetViewStyle(TKxListViewStyle value) {
    if (FDialog.Window().GetLVHandle()) {
        SendMessageW(FDialog.Window().GetDVHandle(), WM_COMMAND, KxViewCommand(value), 0);
    } else if (FDialog.DlgHandle()) {
        FWantedStyle = value;
    }
}

/// Applies a style that was set before there was a list. The events of the style may free the dialog.
void TKxFileListWatch::ApplyWantedStyle() {
    if (FWantedStyle) {
        SetViewStyle(*std::exchange(FWantedStyle, std::nullopt));
    }
}

// --- The look that is remembered

namespace {

/// Width of each column that the list has, in pixels.
std::vector<int> ColumnWidths(HWND list) {
    const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    const LRESULT count = header ? SendMessageW(header, HDM_GETITEMCOUNT, 0, 0) : 0;
    std::vector<int> widths;
    for (LRESULT i = 0; i < count; ++i) {
        widths.push_back(static_cast<int>(SendMessageW(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(i), 0)));
    }
    return widths;
}

} // namespace

void TKxFileListWatch::SetLook(const TKxFileListLook& value) {
    FLook = value;
    FNotesLook = true;
    FColumns.clear();
    if (FLook.Style && (!FLVH || ViewStyle() != *FLook.Style)) {
        SetViewStyle(*FLook.Style); // the application may veto it, and free the dialog
    }
}

/// Each list comes with widths of the shell's own. They can be set only where the columns are seen, and columns of
/// another number are those of another kind of folder.
void TKxFileListWatch::ApplyColumns() {
    if (!FNotesLook || !FColumns.empty() || !FLVH || ViewStyle() != lvsReport) {
        return;
    }
    if (ColumnWidths(FLVH).size() == FLook.Columns.size()) {
        for (size_t i = 0; i < FLook.Columns.size(); ++i) {
            SendMessageW(FLVH, LVM_SETCOLUMNWIDTH, i, FLook.Columns[i]);
        }
    }
    FColumns = ColumnWidths(FLVH);
}

/// The list, or its present style, is about to go. Widths that the user has not changed are not his: other folders may
/// have other columns.
void TKxFileListWatch::NoteLook() {
    if (!FNotesLook) {
        return;
    }
    FLook.Style = ViewStyle();
    if (FLook.Style == lvsReport && !FColumns.empty() && ColumnWidths(FLVH) != FColumns) {
        FLook.Columns = ColumnWidths(FLVH);
        FColumns = FLook.Columns;
    }
}

// --- Messages of the list

void TKxFileListWatch::NewLVProc(TMessage& message) {
    switch (message.Msg) {
    case KxRefreshStylesMessage: ApplyStyles(); return;
    case KxListRefilledMessage:
        if (FRefilledPosted) {
            ListRefilled();
        }
        return;
    case WM_PAINT:
        // In whatever way entries came into the list, the user is to see it filtered.
        if (IsUnfiltered() && !Outlives(FDialog.Existence(), [this] { ListRefilled(); })) {
            return;
        }
        break;
    case WM_DESTROY:
        NoteLook();
        FListMessages.Uninstall();
        LoseList();
        PostApplyStyles(); // the timer finds the next list
        break;
    case WM_STYLECHANGING:
        if (!FIsWinXP && static_cast<int>(message.WParam) == GWL_STYLE) {
            ListStyleChanging(message);
            return;
        }
        break;
    case WM_SETREDRAW:
        if (Outlives(FDialog.Existence(), [&] { FListMessages.CallPrevious(message); }) && message.WParam) {
            PostListRefilled(); // the shell lets a list be drawn again when it is complete
        }
        return;
    case LVM_INSERTITEMA:
    case LVM_INSERTITEMW: PostListRefilled(); break;
    case LVM_SETITEMCOUNT: message.WParam ? PostListRefilled() : FillingBegins(); break;
    case LVM_DELETEALLITEMS: FillingBegins(); break;
    case WM_KEYDOWN:
        if (message.WParam == VK_F5) {
            FillingBegins();
        }
        break;
    case WM_STYLECHANGED:
        if (!FIsWinXP) {
            PostApplyStyles();
        }
        break;
    default: break;
    }
    FListMessages.CallPrevious(message);
}

/// Older shells change the view by the style of their list, and this message alone tells of it.
void TKxFileListWatch::ListStyleChanging(TMessage& message) {
    constexpr TViewStyle styles[] = {vsIcon, vsReport, vsSmallIcon, vsList};
    auto& change = message.LParamAs<STYLESTRUCT>();
    const TViewStyle style = styles[change.styleNew & LVS_TYPEMASK];
    if (style == KxClassicStyle(ViewStyle())) {
        FListMessages.CallPrevious(message);
        return;
    }
    bool allow = true;
    if (!Outlives(FDialog.Existence(), [&] { Guarded([&] { FHost.ViewStyleChanging(style, allow); }); })) {
        return;
    }
    if (!allow) {
        change.styleNew = change.styleOld;
    }
    NoteLook();
    if (Outlives(FDialog.Existence(), [&] { FListMessages.CallPrevious(message); }) && allow) {
        FHost.ViewStyleChanged(style);
    }
}

// --- Messages of the shell view

void TKxFileListWatch::NewDVProc(TMessage& message) {
    switch (message.Msg) {
    case WM_COMMAND:
        if (FIsWinXP && ViewStyleCommand(message)) {
            return;
        }
        break;
    case WM_DESTROY:
        FViewMessages.Uninstall();
        FDVH = nullptr;
        break;
    case WM_CONTEXTMENU:
        if (!IsMenuAllowed()) {
            message.Result = 1;
            return;
        }
        break;
    case WM_NOTIFY:
        if (RefusesRenaming(message)) {
            message.Result = TRUE;
            return;
        }
        break;
    case WM_INITMENUPOPUP:
        if (message.LParamLo() == 0 && SelectedCount() > 0) {
            DisableMenuItems(reinterpret_cast<HMENU>(message.WParam));
        }
        break;
    default: break;
    }
    FViewMessages.CallPrevious(message);
}

/// Newer shells change the view by a command, whoever asks for the change. True: the command has been dealt with.
bool TKxFileListWatch::ViewStyleCommand(TMessage& message) {
    if (message.WParam < KxViewCommand(lvsIcon) || message.WParam > KxViewCommand(lvsTile)) {
        PostApplyStyles();
        return false;
    }
    const auto style = KxClassicStyle(static_cast<TKxListViewStyle>(message.WParam - KxViewCommand(lvsIcon)));
    bool allow = true;
    if (Outlives(FDialog.Existence(), [&] { FHost.ViewStyleChanging(style, allow); }) && allow) {
        KxWhileAlive(
            FDialog.Existence(), [this] { NoteLook(); }, [&] { FViewMessages.CallPrevious(message); },
            [&] { FHost.ViewStyleChanged(style); }, [this] { PostApplyStyles(); });
    }
    return true;
}

/// When renaming is off, the list loses the style for it. But the shell makes lists that have the style, and may begin
/// to rename before it is taken away.
bool TKxFileListWatch::RefusesRenaming(const TMessage& message) const {
    const auto& header = message.LParamAs<NMHDR>();
    const bool begins = header.code == LVN_BEGINLABELEDITA || header.code == LVN_BEGINLABELEDITW;
    return begins && header.hwndFrom == FLVH && !Styles().EnableRename();
}

int TKxFileListWatch::SelectedCount() const {
    return static_cast<int>(SendMessageW(FDialog.Window().GetLVHandle(), LVM_GETSELECTEDCOUNT, 0, 0));
}

bool TKxFileListWatch::IsMenuAllowed() const {
    return SelectedCount() > 0 ? Styles().PopupOnSelection() : Styles().PopupOnEmpty();
}

/// The menu of files ends with delete, rename, a separator and properties. Each command has three numbers: those of two
/// generations of the shell on Windows, and that of other systems.
void TKxFileListWatch::DisableMenuItems(HMENU menu) const {
    const int count = GetMenuItemCount(menu);
    const auto disable = [=](int position, std::initializer_list<UINT> commands) {
        const UINT command = GetMenuItemID(menu, position);
        if (std::find(commands.begin(), commands.end(), command) != commands.end()) {
            EnableMenuItem(menu, command, MF_BYCOMMAND | MF_GRAYED);
        }
    };
    if (!Styles().EnableRename()) {
        disable(count - 3, {30738, 30995, 80});
    }
    if (!Styles().EnableDelete()) {
        disable(count - 4, {30737, 30994, 17});
    }
}

} // namespace kx
