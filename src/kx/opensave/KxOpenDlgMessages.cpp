// The messages of the full dialogs' window, view and list.

#include "kx/opensave/KxOpenDlg.h"

#include "kx/core/Barrier.h"
#include "kx/frame/KxWhileAlive.h"
#include "kx/win/Windows.h"

#include <algorithm>

// The messages of the three windows that the dialog component takes over: the dialog, the shell view and the list.

namespace kx {

// --- The dialog window

TKxMsgVerdict TKxCustomOpenDialog::BeforeSystem(TMessage& message) {
    switch (message.Msg) {
    case WM_DESTROY: LeaveWindow(); return mvPass;
    case WM_SHOWWINDOW: ShowAsPlaced(); return mvPass;
    case WM_NCPAINT: WMNCPaint(); return mvPass;
    case WM_SIZE: WMSize(message); return mvPass;
    case WM_COMMAND:
        if (message.WParamLo() == IDOK) {
            ForgetShareViolation();
        }
        [[fallthrough]];
    default: return TKxFileDlgCore::BeforeSystem(message);
    }
}

void TKxCustomOpenDialog::AfterSystem(TMessage& message) {
    using T = TKxCustomOpenDialog;
    switch (message.Msg) {
    case WM_PAINT: AlignOkButton(); break;
    case WM_PARENTNOTIFY:
        if (message.WParamLo() == WM_CREATE && message.LParamWindow() == GetDVHandle()) {
            ListMayBeFilled();
            ShowFolderInPlaces(); // some ways into a folder bring no notification
        }
        break;
    case WM_SIZE:
        // Where the system has put its own controls is known only now.
        if (FPlaced) {
            RunSteps<T>(*this, {&T::PlaceToolBar, &T::FitPlacesBar, &T::AlignOkButton});
        }
        break;
    default: TKxFileDlgCore::AfterSystem(message);
    }
}

void TKxCustomOpenDialog::LeaveWindow() {
    if (Outlives(Existence(), [this] { ShrinkBack(ShowCustomPlacesBar() ? FPBWidth : 0); })) {
        FreePlacesBar();
    }
}

TPoint TKxCustomOpenDialog::FirstSize() {
    const TPoint size = TKxFileDlgCore::FirstSize();
    return {CheckedAdd(size.X, ShowCustomPlacesBar() ? FPBWidth : 0), size.Y};
}

void TKxCustomOpenDialog::ShowAsPlaced() {
    PlaceFirst([this] {
        using T = TKxCustomOpenDialog;
        RunSteps<T>(*this, {&T::KeepInside, &T::PlaceToolBar, &T::AlignOkButton, &T::FitPlacesBar, &T::RefreshSelCtrl});
    });
}

void TKxCustomOpenDialog::WMNCPaint() {
    using T = TKxCustomOpenDialog;
    RunSteps<T>(*this, {&T::ShowAsPlaced, &T::RefreshSelCtrl, &T::PushLowerControls, &T::FitPlacesBar});
}

namespace {

BOOL CALLBACK RepaintCtrl(HWND window, LPARAM) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE);
    return TRUE;
}

} // namespace

void TKxCustomOpenDialog::WMSize(TMessage& message) {
    TKxCustDlgParams& params = CustDlgParams();
    HWND dialog = DlgHandle();
    const auto growForm = [&] {
        bool grows = false;
        if (IsSizeable() && FListType == stCustom) {
            KxWithForms([&] {
                grows = params.CustomForm() != nullptr;
                GrowCustomForm(message.LParamLo(), message.LParamHi());
            });
        }
        if (grows) {
            KxEnumDirectChildren(dialog, RepaintCtrl, 0);
        }
    };
    const auto repaintForm = [&] {
        if (ShowsFileList()) {
            return; // the custom form is not seen, and the application's thread is not waited for
        }
        KxWithForms([&] {
            if (TForm* const custom = params.CustomForm()) {
                custom->Repaint();
            }
        });
    };
    KxWhileAlive(
        Existence(), growForm, [&] { params.OnResizeWindow(message); }, repaintForm);
}

/// By as much as the dialog's client area grows to this size.
void TKxCustomOpenDialog::GrowCustomForm(int32_t width, int32_t height) {
    if (TForm* const custom = CustDlgParams().CustomForm()) {
        const TRect& before = CustDlgParams().ClientRect();
        custom->SetBounds(custom->Left(), custom->Top(), CheckedAdd(custom->Width(), CheckedSub(width, before.Right)),
                          CheckedAdd(custom->Height(), CheckedSub(height, before.Bottom)));
    }
}

// --- The file list

void TKxCustomOpenDialog::NewLVProc(TMessage& message) {
    switch (message.Msg) {
    case KxRefreshStylesMessage: RefreshListViewStyles(); return;
    case KxListRefilledMessage:
        if (FRefilledPosted) {
            ListRefilled();
        }
        return;
    case WM_PAINT:
        // Whatever came into the list, and however it did: the user sees it when it is filtered.
        if (IsUnfiltered() && !Outlives(Existence(), [this] { ListRefilled(); })) {
            return;
        }
        break;
    case WM_DESTROY:
        FListMessages.Uninstall();
        LoseList();
        PostRefreshListViewStyles(); // finds the next one
        break;
    case WM_STYLECHANGING:
        if (!FIsWinXP && static_cast<int>(message.WParam) == GWL_STYLE) {
            ViewStyleChanging(message);
            return;
        }
        break;
    case WM_SETREDRAW:
        if (Outlives(Existence(), [&] { FListMessages.CallPrevious(message); }) && message.WParam) {
            PostListRefilled(); // lists let themselves be drawn again when they are complete
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
            PostRefreshListViewStyles();
        }
        break;
    default: break;
    }
    FListMessages.CallPrevious(message);
}

/// Older shells change the style of their list and tell nobody else.
void TKxCustomOpenDialog::ViewStyleChanging(TMessage& message) {
    constexpr TViewStyle styles[] = {vsIcon, vsReport, vsSmallIcon, vsList};
    auto& change = message.LParamAs<STYLESTRUCT>();
    const TViewStyle style = styles[change.styleNew & LVS_TYPEMASK];
    if (style == SelectionStyle()) {
        FListMessages.CallPrevious(message);
        return;
    }
    bool allow = true;
    if (!Outlives(Existence(), [&] { Guarded([&] { DoSelectionStyleChanging(style, allow); }); })) {
        return;
    }
    if (!allow) {
        change.styleNew = change.styleOld;
    }
    if (Outlives(Existence(), [&] { FListMessages.CallPrevious(message); }) && allow) {
        DoSelectionStyleChange(style);
    }
}

// --- The shell view

void TKxCustomOpenDialog::NewDVProc(TMessage& message) {
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

/// Newer shells change the view by a command of theirs, whoever asks for it. True: the command has been dealt with.
bool TKxCustomOpenDialog::ViewStyleCommand(TMessage& message) {
    if (message.WParam < KxViewCommand(lvsIcon) || message.WParam > KxViewCommand(lvsTile)) {
        PostRefreshListViewStyles();
        return false;
    }
    const auto style = KxClassicStyle(static_cast<TKxListViewStyle>(message.WParam - KxViewCommand(lvsIcon)));
    bool allow = true;
    if (Outlives(Existence(), [&] { DoSelectionStyleChanging(style, allow); }) && allow) {
        KxWhileAlive(
            Existence(), [&] { FViewMessages.CallPrevious(message); }, [&] { DoSelectionStyleChange(style); },
            [this] { PostRefreshListViewStyles(); });
    }
    return true;
}

/// Without renaming the list has no style for it, but the shell makes lists that have it and can be quicker to begin.
bool TKxCustomOpenDialog::RefusesRenaming(const TMessage& message) const {
    const auto& header = message.LParamAs<NMHDR>();
    const bool begins = header.code == LVN_BEGINLABELEDITA || header.code == LVN_BEGINLABELEDITW;
    return begins && header.hwndFrom == FLVH && !LVOptions().EnableRename();
}

int TKxCustomOpenDialog::SelectedCount() const {
    return static_cast<int>(SendMessageA(GetLVHandle(), LVM_GETSELECTEDCOUNT, 0, 0));
}

bool TKxCustomOpenDialog::IsMenuAllowed() const {
    return SelectedCount() > 0 ? LVOptions().PopupOnSelection() : LVOptions().PopupOnEmpty();
}

/// The menu of files ends with delete, rename, a separator and properties. Of the numbers of a command the first two
/// are those of two generations of the shell on Windows, the third that of other systems.
void TKxCustomOpenDialog::DisableMenuItems(HMENU menu) const {
    const int count = GetMenuItemCount(menu);
    const auto disable = [=](int position, std::initializer_list<UINT> commands) {
        const UINT command = GetMenuItemID(menu, position);
        if (std::find(commands.begin(), commands.end(), command) != commands.end()) {
            EnableMenuItem(menu, command, MF_BYCOMMAND | MF_GRAYED);
        }
    };
    if (!LVOptions().EnableRename()) {
        disable(count - 3, {30738, 30995, 80});
    }
    if (!LVOptions().EnableDelete()) {
        disable(count - 4, {30737, 30994, 17});
    }
}

} // namespace kx
