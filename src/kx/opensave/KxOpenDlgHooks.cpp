// The watch over the file list of the full dialogs.

#include "kx/opensave/KxOpenDlg.h"

#include "kx/core/Barrier.h"
#include "kx/win/System.h"
#include "kx/win/Thunk.h"
#include "kx/win/Windows.h"

// The hooks of the running dialog and what they watch over: the shell makes its view and its list anew with every
// change of folder, and fills the list when it has the time.

namespace kx {

void TKxCustomOpenDialog::InstallHooks() {
    const DWORD thread = GetCurrentThreadId();
    FGlobals.g_KeybHook.reset(SetWindowsHookExA(WH_KEYBOARD, NewKeybHook, HInstance(), thread));
    // Wine's shell does not ask for the selection when it has filled its list: nothing would come of watching, and a
    // watched message takes it a hundred times as long.
    FGlobals.g_WndHook.reset(System().Wine ? nullptr
                                           : SetWindowsHookExA(WH_CALLWNDPROCRET, NewWndHook, HInstance(), thread));
}

// --- Keys

LRESULT CALLBACK TKxCustomOpenDialog::NewKeybHook(int code, WPARAM key, LPARAM flags) {
    const TKxCustomOpenDialog* const dialog = CreationControl();
    if (code >= 0 && dialog && dialog->SwallowsKey(key)) {
        return 1;
    }
    return CallNextHookEx(nullptr, code, key, flags);
}

bool TKxCustomOpenDialog::SwallowsKey(WPARAM key) const {
    if (key != VK_DELETE || LVOptions().EnableDelete()) {
        return false;
    }
    HWND list = GetLVHandle();
    return list && GetFocus() == list;
}

// --- Fillings of the list

LRESULT CALLBACK TKxCustomOpenDialog::NewWndHook(int code, WPARAM wParam, LPARAM lParam) {
    if (code < 0) {
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }
    if (TKxCustomOpenDialog* const dialog = CreationControl()) {
        Guarded([=] { dialog->MessageHandled(*reinterpret_cast<const CWPRETSTRUCT*>(lParam)); });
    }
    return 0; // Deliberate: the next hook is not called, as one would expect.
}

/// Called for every message of the thread that a window has answered. The shell asks for the selection once the list of
/// a folder is complete.
void TKxCustomOpenDialog::MessageHandled(const CWPRETSTRUCT& message) {
    if (message.message == LVM_GETSELECTEDCOUNT && DlgHandle() && GetParent(GetParent(message.hwnd)) == DlgHandle()) {
        ListMayBeFilled();
    }
}

/// Takes over the shell view and the file list that are there now. True when one of them is a new one.
bool TKxCustomOpenDialog::RecreateHWnds() {
    HWND view = GetDVHandle();
    const bool isNewView = view != FDVH;
    if (isNewView) {
        FDVH = view;
        view ? FViewMessages.Install(view) : FViewMessages.Uninstall();
    }
    HWND list = GetLVHandle();
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

void TKxCustomOpenDialog::LoseList() {
    FLVH = nullptr;
    FRefilledPosted = false; // what was posted went to the list that has gone
    FFilteredCount = -1;
    FExtFilter.Forget();
}

LRESULT TKxCustomOpenDialog::EntryCount() const { return SendMessageA(FLVH, LVM_GETITEMCOUNT, 0, 0); }

/// The first folder's list, where it is there before the hooks are. Windows makes its view later, and several times.
void TKxCustomOpenDialog::TakeFirstList() {
    ListMayBeFilled();
    PostRefreshListViewStyles();
}

/// For all that may mean a new list or new entries. No system tells of each of them, and of some more than once: the
/// shell's question for the selection, a view that is made inside the dialog, another folder, the timer.
void TKxCustomOpenDialog::ListMayBeFilled() {
    const bool isNew = RecreateHWnds();
    if (FLVH && (isNew || IsUnfiltered())) {
        PostListRefilled();
    }
}

/// The shell reads the folder again, and the application may have come to other answers.
void TKxCustomOpenDialog::FillingBegins() {
    FExtFilter.Forget();
    FFilteredCount = -1;
    PostListRefilled();
}

/// Filters the list as soon as the shell, which may be in the middle of filling it, is done with its message.
void TKxCustomOpenDialog::PostListRefilled() {
    if (FLVH && !FFiltering && !FRefilledPosted) {
        FRefilledPosted = PostMessageA(FLVH, KxListRefilledMessage, 0, 0) != FALSE;
    }
}

/// Filters what has come into the list. May free the dialog.
void TKxCustomOpenDialog::ListRefilled() {
    FRefilledPosted = false;
    if (FFiltering || !FLVH) {
        return;
    }
    const TAlive there(Existence());
    HWND list = FLVH;
    bool done = true;
    if (FExtFilter.Enabled()) {
        const TFieldScope filtering(Existence(), FFiltering, true);
        Guarded([&] {
            const std::string folder = GetSelPath(); // the application hears of the question and may free the dialog
            if (there) {
                done = FExtFilter.ProcessViaFilter(FLVH, folder, TKxFilterPass::Added);
            }
        });
    }
    if (!there || !FLVH) {
        return;
    }
    FFilteredCount = done && FLVH == list ? EntryCount() : -1; // -1: the timer tries it again
    PostRefreshListViewStyles();
    ApplyWantedStyle();
}

void TKxCustomOpenDialog::RefreshFileList() {
    FillingBegins();
    if (Outlives(Existence(), [this] { TKxFileDlgCore::RefreshFileList(); }) && FRefilledPosted) {
        ListRefilled(); // the caller finds the list filtered
    }
}

// --- Styles of the list

void TKxCustomOpenDialog::DoRefreshListView(TObject*) {
    FTimer.SetEnabled(false);
    ListMayBeFilled();
    if (FLVH) {
        PostMessageA(FLVH, KxRefreshStylesMessage, 0, 0);
    } else {
        PostRefreshListViewStyles(); // the shell has yet to make its list
    }
    if (!ShowsFileList() && IsWindowVisible(FDVH)) {
        RefreshSelCtrl(); // some ways into a folder bring no notification
    }
}

void TKxCustomOpenDialog::SetLVOptions(TKxListViewStyles* value) {
    FLVOptions = value ? value : &FOwnLVOptions;
    FLVOptionsLive = TAlive(*FLVOptions);
}

void TKxCustomOpenDialog::RefreshListViewStyles() {
    const auto exStyle = static_cast<DWORD>(SendMessageA(FLVH, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0));
    const DWORD newExStyle = LVOptions().ApplyToExStyle(exStyle);
    if (newExStyle != exStyle) {
        SendMessageA(FLVH, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(newExStyle));
    }
    const auto style = static_cast<DWORD>(GetWindowLongPtrA(FLVH, GWL_STYLE));
    const DWORD newStyle = LVOptions().ApplyToStyle(style);
    if (newStyle != style) {
        SetWindowLongPtrA(FLVH, GWL_STYLE, static_cast<LONG_PTR>(newStyle));
    }
}

TKxListViewStyle TKxCustomOpenDialog::GetKxLVStyle() const {
    HWND list = GetLVHandle();
    if (!list) {
        return lvsIcon;
    }
    // In the order of the numbers that the list uses.
    constexpr TKxListViewStyle styles[] = {lvsIcon, lvsReport, lvsSmallIcon, lvsList, lvsTile};
    if (!FIsWinXP) {
        return styles[GetWindowLongPtrA(list, GWL_STYLE) & LVS_TYPEMASK];
    }
    const LRESULT view = SendMessageA(list, LVM_GETVIEW, 0, 0);
    if (view == LV_VIEW_ICON) {
        // Deliberate: the vertical spacing against the horizontal metric, where one would expect the vertical one.
        const int spacing = HIWORD(SendMessageA(list, LVM_GETITEMSPACING, FALSE, 0));
        return spacing > GetSystemMetrics(SM_CXICONSPACING) ? lvsThumbnail : lvsIcon;
    }
    return view > 0 && view < static_cast<LRESULT>(std::size(styles)) ? styles[view] : lvsIcon;
}

void TKxCustomOpenDialog::SetKxLVStyle(TKxListViewStyle value) {
    if (GetLVHandle()) {
        SendMessageA(GetDVHandle(), WM_COMMAND, KxViewCommand(value), 0);
    } else if (DlgHandle()) {
        FWantedStyle = value;
    }
}

/// A style that was set before there was a list to show it. The events of the style may free the dialog.
void TKxCustomOpenDialog::ApplyWantedStyle() {
    if (FWantedStyle) {
        SetKxLVStyle(*std::exchange(FWantedStyle, std::nullopt));
    }
}

TViewStyle TKxCustomOpenDialog::GetSelStyle() const { return KxClassicStyle(GetKxLVStyle()); }

} // namespace kx
