// SPDX-License-Identifier: MIT
// The library's places bar in the running dialog.

#include "kx/opensave/KxPlacesSlot.h"

#include "kx/core/Barrier.h"
#include "kx/frame/KxWhileAlive.h"
#include "kx/opensave/KxNativePlacesBar.h"
#include "kx/win/Dpi.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <shlobj.h>

namespace kx {

namespace {

/// Pixels by which the dialog is widened for the places bar.
int32_t BarRoom() { return SystemLength(90); }

/// The place cannot be the folder, since their paths lie on different drives or shares. To ask the shell about a share
/// that does not answer takes long.
bool LiesElsewhere(const TKxPlace& place, const std::string& folder) {
    if (place.PlaceSpecPath() != ftNone) {
        return false;
    }
    const std::string path = place.FolderPath();
    if (path.starts_with("::")) { // an object of the shell, given by its identifier, is on no drive
        return false;
    }
    return path.empty() || !SameText(ExtractFileDrive(path), ExtractFileDrive(folder));
}

/// Number of items in the list.
int DepthOf(const ITEMIDLIST* pidl) {
    int depth = 0;
    for (; pidl && pidl->mkid.cb != 0; pidl = GetNextItemID(pidl)) {
        ++depth;
    }
    return depth;
}

} // namespace

TKxPlacesSlot::TKxPlacesSlot(TKxFileDlgCore& dialog, IKxPlacesHost& host) : FDialog(dialog), FHost(host) {
    SHGetDesktopFolder(FShellFolder.put());
}

bool TKxPlacesSlot::IsWanted() const {
    return FPlaceOptions.Visible() && (!FPlaceOptions.Native() || !PlacesBarSupported());
}

// --- Making the bar

namespace {

/// What the enumeration of the dialog's children is about.
struct TRoom {
    HWND GHandle1; ///< The dialog window in which a places bar makes room for itself.
    int32_t Width;
};

} // namespace

BOOL CALLBACK TKxPlacesSlot::MoveLeft1(HWND window, LPARAM room) noexcept {
    Guarded([&] {
        const auto& [dialog, width] = *reinterpret_cast<const TRoom*>(room);
        KxMoveChild(dialog, window, RoomAtLeft(width, KxDlgFrame()), 0);
    });
    return TRUE;
}

void TKxPlacesSlot::MakeRoom() {
    if (!IsWanted()) {
        return;
    }
    HWND dialog = FDialog.DlgHandle();
    HWND combo = GetDlgItem(dialog, KxFolderComboId);
    const TRect r = KxWindowRect(combo);
    const int32_t edge = SystemLength(6);
    SetWindowPos(combo, nullptr, edge, edge, CheckedAdd(Width(r), SystemLength(45)), Height(r),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_DEFERERASE);
    SetWindowPos(GetDlgItem(dialog, KxFolderLabelId), nullptr, SystemLength(-80), SystemLength(8), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_DEFERERASE);
    const TRoom room{dialog, BarRoom()};
    KxEnumDirectChildren(dialog, MoveLeft1, reinterpret_cast<LPARAM>(&room));
    const TRect outer = KxWindowRect(dialog);
    ResizeWindow(dialog, CheckedAdd(Width(outer), BarRoom()), Height(outer));
}

void TKxPlacesSlot::Create() {
    if (!IsWanted()) {
        return;
    }
    auto* const form = NewForm<TKxPlacesBarFrm>(&Application());
    FPlaceForm.Set(form);
    form->SetParent(nullptr);
    form->SetParentWindow(FDialog.DlgHandle());
    form->SetBorderStyle(bsNone);
    form->Panel1->SetBorderStyle(FPlaceOptions.BorderStyle());
    form->SetDialog(&FHost);
    // The application hears of the new window, as the dialog does, and of failures. Its handlers may free the dialog.
    const bool there = KxWhileAlive(
        FDialog.Existence(), [this] { Load(); },
        [=, this] {
            form->SetAcceptFiles(FPlaceOptions.AllowDrop());
            // A scroller that scrolls while something is dragged is a target of drops on Windows. It covers the form,
            // which would never hear of a drop.
            form->ps1->SetDragScroll(!FPlaceOptions.AllowDrop());
            FPBWidth = SystemLength(form->Panel1->BorderStyle() == bsSingle ? 91 : 87);
            form->SetBounds(SystemLength(4), SystemLength(33), FPBWidth, form->Height());
            form->Show();
        });
    if (!there) {
        return;
    }
    form->ps1->SetAutoScroll(FPlaceOptions.AutoScroll());
    form->Changeplace1->SetEnabled(FPlaceOptions.AllowEdit());
    form->Deleteplace1->SetEnabled(FPlaceOptions.AllowDelete());
    form->SetPlaces(&FPlaceOptions.Places());
    FPlaceOptions.SetPlacesBar(form->ToolBar1);
    FPlaceOptions.Places().UpdatePlacesOn(*form->ToolBar1);
}

/// Reads the stored places. When that fails, those that were read before are shown.
void TKxPlacesSlot::Load() {
    if (!FPlaceOptions.RegistryKey().empty()) {
        Guarded([this] { FPlaceOptions.LoadFromRegistry(); });
    }
}

void TKxPlacesSlot::Save() {
    if (FPlaceOptions.Visible() && !FPlaceOptions.Native() && !FPlaceOptions.RegistryKey().empty()) {
        FPlaceOptions.SaveOnClose();
    }
}

/// The controls move by the room for the bar and the frame metric, but the dialog grows by the width of the bar alone:
/// what is at its right edge would be cut off.
void TKxPlacesSlot::KeepInside(HWND toolBar) {
    if (!FPlaceForm) {
        return;
    }
    HWND dialog = FDialog.DlgHandle();
    const int32_t edge = FDialog.OwnRight();
    const bool there = Outlives(FDialog.Existence(), [&] {
        KxInFormsThread([&] {
            if (TForm* const right = FDialog.CustDlgParams().RightForm()) {
                right->SetLeft(edge);
            }
        });
    });
    RECT button{};
    const LRESULT last = SendMessageW(toolBar, TB_BUTTONCOUNT, 0, 0) - 1;
    if (there && SendMessageW(toolBar, TB_GETITEMRECT, static_cast<WPARAM>(last), reinterpret_cast<LPARAM>(&button))) {
        MapWindowPoints(toolBar, dialog, reinterpret_cast<POINT*>(&button), 2);
        KxMoveChild(dialog, toolBar, std::min<int32_t>(edge - button.right, 0), 0);
    }
}

void TKxPlacesSlot::Fit() {
    TKxPlacesBarFrm* const form = FPlaceForm.Get();
    if (form && form->ParentWindow() == FDialog.DlgHandle()) {
        const TKxFileDlgWindow window = FDialog.Window();
        const TRect type = KxWindowRect(window.Item(KxFileTypeId));
        form->SetHeight(CheckedSub(type.Bottom, KxWindowRect(window.ListPlaceholder()).Top));
    }
}

void TKxPlacesSlot::Free() {
    if (TKxPlacesBarFrm* const form = FPlaceForm.Get()) {
        form->SetDialog(nullptr);
        KxWhileAlive(
            *form, [=] { form->Hide(); }, [=] { form->SetParentWindow(nullptr); }, [=] { form->Free(); });
    }
}

// --- Following the dialog

void TKxPlacesSlot::ShowFolder() {
    const TKxPlacesBarFrm* const form = FPlaceForm.Get();
    if (!form || !IsWanted()) {
        return;
    }
    unique_pidl folder;
    if (!Outlives(FDialog.Existence(), [&] { folder = FDialog.Window().GetSelPathPidl(); })) {
        return;
    }
    const std::string folderPath = GetPathFromPIDL(folder.get());
    const int depth = DepthOf(folder.get());
    const auto shows = [&](const TKxPlace& place) {
        if (!folder || LiesElsewhere(place, folderPath)) {
            return false;
        }
        const unique_pidl pidl = place.GetPlacePidl(*FShellFolder.get());
        // Lists of different depth are different. To say so, the shell may look at all drives: it is not asked.
        return pidl && DepthOf(pidl.get()) == depth &&
               HRESULT_CODE(FShellFolder.get()->CompareIDs(0, folder.get(), pidl.get())) == 0;
    };
    TToolBar& bar = *form->ToolBar1;
    const TKxPlaces& places = FPlaceOptions.Places();
    const int count = std::min(bar.ButtonCount(), places.Count());
    for (int i = 0; i < count; ++i) {
        if (bar.Buttons(i)->Down()) {
            if (!shows(places[i])) {
                bar.Buttons(i)->SetDown(false);
                bar.Buttons(i)->Repaint();
            }
            break;
        }
    }
    for (int i = 0; i < count; ++i) {
        if (shows(places[i])) {
            bar.Buttons(i)->SetDown(true);
            break;
        }
    }
}

} // namespace kx
