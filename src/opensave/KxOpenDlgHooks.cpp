#include "opensave/KxOpenDlg.h"

#include "core/Barrier.h"
#include "ui/System.h"
#include "ui/Thunk.h"

// The hooks of the running dialog and what they watch over: the shell makes its view and its list anew with every
// change of folder.

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
    if (key != VK_DELETE || FLVOptions->EnableDelete()) {
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

/// Called for every message of the thread that a window has answered. Windows asks for the selection once the list of a
/// folder is complete.
void TKxCustomOpenDialog::MessageHandled(const CWPRETSTRUCT& message) {
    if (message.message == LVM_GETSELECTEDCOUNT && DlgHandle() && GetParent(GetParent(message.hwnd)) == DlgHandle() &&
        (RecreateHWnds() || HasUnfilteredEntries())) {
        ListRefilled();
    }
}

/// A window was made inside the dialog. Other systems than Windows fill the list of a new shell view before they tell
/// of it, and ask for no selection then.
void TKxCustomOpenDialog::ViewCreated() {
    if (RecreateHWnds() && FLVH) {
        if (Outlives(Existence(), [this] { ListRefilled(); })) {
            ShowFolderInPlaces(); // some ways into a folder bring no notification either
        }
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
        FLVH = list;
        list ? FListMessages.Install(list) : FListMessages.Uninstall();
    }
    FFilteredCount = -1;
    return true;
}

bool TKxCustomOpenDialog::HasUnfilteredEntries() const {
    return FExtFilter.Enabled() && SendMessageA(FLVH, LVM_GETITEMCOUNT, 0, 0) != FFilteredCount;
}

void TKxCustomOpenDialog::ListRefilled() {
    if (FFiltering) {
        return; // what the filter does to the list is no filling
    }
    if (FExtFilter.Enabled()) {
        const TAlive there(Existence());
        FFiltering = true;
        Guarded([&] {
            const std::string folder = GetSelPath(); // the application hears of the question and may free the dialog
            if (there) {
                FExtFilter.ProcessViaFilter(FLVH, folder);
            }
        });
        if (!there) {
            return;
        }
        FFiltering = false;
    }
    FFilteredCount = SendMessageA(FLVH, LVM_GETITEMCOUNT, 0, 0);
    PostRefreshListViewStyles();
}

/// The first folder's list, where it is there before the hooks are.
void TKxCustomOpenDialog::ShowFirstList() {
    if (RecreateHWnds() && FLVH) {
        ListRefilled();
    }
}

// --- Styles of the list

void TKxCustomOpenDialog::DoRefreshListView(TObject*) {
    FTimer.SetEnabled(false);
    if (!ShowsFileList() && IsWindowVisible(FDVH)) {
        // Some ways into a folder bring no notification.
        if (!Outlives(Existence(), [this] { RefreshSelCtrl(); })) {
            return;
        }
    }
    if (FLVH) {
        PostMessageA(FLVH, KxRefreshStylesMessage, 0, 0);
    }
}

void TKxCustomOpenDialog::RefreshListViewStyles() {
    const auto exStyle = static_cast<DWORD>(SendMessageA(FLVH, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0));
    const DWORD newExStyle = FLVOptions->ApplyToExStyle(exStyle);
    if (newExStyle != exStyle) {
        SendMessageA(FLVH, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(newExStyle));
    }
    const auto style = static_cast<DWORD>(GetWindowLongPtrA(FLVH, GWL_STYLE));
    const DWORD newStyle = FLVOptions->ApplyToStyle(style);
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
    if (HWND view = GetDVHandle()) {
        SendMessageA(view, WM_COMMAND, KxViewCommand(value), 0);
    }
}

TViewStyle TKxCustomOpenDialog::GetSelStyle() const { return KxClassicStyle(GetKxLVStyle()); }

} // namespace kx
