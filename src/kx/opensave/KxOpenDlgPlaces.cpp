// The full dialogs' own bar of places and their borrowed tool bar.

#include "kx/opensave/KxOpenDlg.h"

#include "kx/core/Barrier.h"
#include "kx/frame/KxWhileAlive.h"
#include "kx/opensave/KxNativePlacesBar.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <shlobj.h>

// The library's places bar and the application's tool bar in the running dialog.

namespace kx {

namespace {

constexpr int BarRoom = 90; ///< Pixels by which the dialog is widened for the places bar.

/// The place cannot be the folder: its path begins in another place. Asking the shell about a path on a share that does
/// not answer takes long.
bool LiesElsewhere(const TKxPlace& place, const std::string& folder) {
    if (place.PlaceSpecPath() != ftNone) {
        return false;
    }
    const std::string path = place.FolderPath();
    if (path.starts_with("::")) { // an object of the shell by its identifier, which is on no drive
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

bool TKxCustomOpenDialog::ShowCustomPlacesBar() const {
    return FPlaceOptions.Visible() && (!FPlaceOptions.Native() || !PlacesBarSupported());
}

// --- Making the bar

BOOL CALLBACK TKxCustomOpenDialog::MoveLeft1(HWND window, LPARAM delta) noexcept {
    Guarded([&] {
        if (const TKxCustomOpenDialog* const dialog = CreationControl()) { // none when another thread is freeing it
            KxMoveChild(dialog->FGlobals.GHandle1, window, RoomAtLeft(static_cast<int32_t>(delta), KxDlgFrame()), 0);
        }
    });
    return TRUE;
}

/// Moves everything in the dialog aside, and its label and combo box of folders together.
void TKxCustomOpenDialog::MakeRoomForPlaces() {
    if (!ShowCustomPlacesBar()) {
        return;
    }
    HWND dialog = DlgHandle();
    FGlobals.GHandle1 = dialog;
    HWND combo = GetDlgItem(dialog, KxFolderComboId);
    const TRect r = KxWindowRect(combo);
    SetWindowPos(combo, nullptr, 6, 6, CheckedAdd(Width(r), 45), Height(r),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_DEFERERASE);
    SetWindowPos(GetDlgItem(dialog, KxFolderLabelId), nullptr, -80, 8, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_DEFERERASE);
    KxEnumDirectChildren(dialog, MoveLeft1, BarRoom);
    const TRect outer = KxWindowRect(dialog);
    ResizeWindow(dialog, CheckedAdd(Width(outer), BarRoom), Height(outer));
}

void TKxCustomOpenDialog::CreatePlacesBar() {
    if (!ShowCustomPlacesBar()) {
        return;
    }
    auto* const form = NewForm<TKxPlacesBarFrm>(&Application());
    FPlaceForm.Set(form);
    form->SetParent(nullptr);
    form->SetParentWindow(DlgHandle());
    form->SetBorderStyle(bsNone);
    form->Panel1->SetBorderStyle(FPlaceOptions.BorderStyle());
    form->SetDialog(this);
    // The dialog is told of the window, and the application with it, as of a failure: each may free the dialog.
    const bool there = KxWhileAlive(
        Existence(), [this] { LoadPlaces(); },
        [=, this] {
            form->SetAcceptFiles(FPlaceOptions.AllowDrop());
            // Windows makes a scroller that scrolls while something is dragged a target of drops, in front of the form
            // that it covers, and the form would never hear of them.
            form->ps1->SetDragScroll(!FPlaceOptions.AllowDrop());
            FPBWidth = form->Panel1->BorderStyle() == bsSingle ? 91 : 87;
            form->SetBounds(4, 33, FPBWidth, form->Height());
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

/// The places that could be read are shown.
void TKxCustomOpenDialog::LoadPlaces() {
    if (!FPlaceOptions.RegistryKey().empty()) {
        Guarded([this] { FPlaceOptions.LoadFromRegistry(); });
    }
}

/// Right edge of the dialog's own part in client coordinates.
int32_t TKxCustomOpenDialog::OwnRight() {
    int width = 0;
    KxWithForms([&] {
        const TForm* const right = CustDlgParams().RightForm();
        width = right ? right->Width() : 0;
    });
    return CheckedSub(KxClientRect(DlgHandle()).Right, width);
}

/// The dialog's width does not count the frame metric by which its controls make room for the places, and counts the
/// bar's width in place of the room made for it. What is at the right edge would be cut off.
void TKxCustomOpenDialog::KeepInside() {
    if (!FPlaceForm) {
        return;
    }
    HWND dialog = DlgHandle();
    HWND bar = FTB;
    const int32_t edge = OwnRight();
    const bool there = Outlives(Existence(), [&] {
        KxWithForms([&] {
            if (TForm* const right = CustDlgParams().RightForm()) {
                right->SetLeft(edge);
            }
        });
    });
    RECT button{};
    const LRESULT last = SendMessageA(bar, TB_BUTTONCOUNT, 0, 0) - 1;
    if (there && SendMessageA(bar, TB_GETITEMRECT, static_cast<WPARAM>(last), reinterpret_cast<LPARAM>(&button))) {
        MapWindowPoints(bar, dialog, reinterpret_cast<POINT*>(&button), 2);
        KxMoveChild(dialog, bar, std::min<int32_t>(edge - button.right, 0), 0);
    }
}

/// The bar ends where the file type's combo box does.
void TKxCustomOpenDialog::FitPlacesBar() {
    TKxPlacesBarFrm* const form = FPlaceForm.Get();
    if (form && form->ParentWindow() == DlgHandle()) {
        const TRect type = KxWindowRect(Window().Item(KxFileTypeId));
        form->SetHeight(CheckedSub(type.Bottom, KxWindowRect(Window().ListPlaceholder()).Top));
    }
}

void TKxCustomOpenDialog::FreePlacesBar() {
    if (TKxPlacesBarFrm* const form = FPlaceForm.Get()) {
        form->SetDialog(nullptr);
        KxWhileAlive(
            *form, [=] { form->Hide(); }, [=] { form->SetParentWindow(nullptr); }, [=] { form->Free(); });
    }
}

// --- Following the dialog

void TKxCustomOpenDialog::ShowFolderInPlaces() {
    const TKxPlacesBarFrm* const form = FPlaceForm.Get();
    if (!form || !ShowCustomPlacesBar()) {
        return;
    }
    unique_pidl folder;
    if (!Outlives(Existence(), [&] { folder = Window().GetSelPathPidl(); })) {
        return;
    }
    const std::string folderPath = GetPathFromPIDL(folder.get());
    const int depth = DepthOf(folder.get());
    const auto shows = [&](const TKxPlace& place) {
        if (!folder || LiesElsewhere(place, folderPath)) {
            return false;
        }
        const unique_pidl pidl = place.GetPlacePidl(*FShellFolder.get());
        // Lists of different depth are different; to say so, the shell may look at all drives.
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

// --- The application's tool bar

namespace {

/// The bar tells the application of each step.
void GiveBack(TToolBar* bar, const TComponentRef<TWinControl>& home, bool visible, const TRect& rect) {
    KxWhileAlive(
        *bar, [=] { bar->SetVisible(visible); }, [=] { bar->SetParentWindow(nullptr); },
        [=, &home] { bar->SetParent(home.Get()); }, [=] { bar->SetBoundsRect(rect); });
}

} // namespace

void TKxCustomOpenDialog::TakeToolBar() {
    FTB = KxFindToolbar(DlgHandle());
    if (FTBOptions.Flat()) {
        MakeFlatButtons(FTB);
    }
    KxWithForms([this] { BorrowToolBar(); });
}

void TKxCustomOpenDialog::BorrowToolBar() {
    TToolBar* const bar = FTBOptions.CustomBar();
    if (!bar || !FTB) {
        return;
    }
    FBorrowedBar.Set(bar);
    TComponentRef<TWinControl> home; // known here too: the dialog may go on the way
    home.Set(bar->Parent());
    const bool visible = bar->Visible();
    const TRect before = bar->BoundsRect();
    FTBPrevParent.Set(bar->Parent());
    FTBPrevVisible = visible;
    FTBPrevRect = before;
    HWND dialog = DlgHandle();
    const TRect r = KxRectIn(dialog, FTB);
    const TAlive barAlive(*bar);
    const TAlive there(Existence());
    KxWhileAlive(
        {barAlive, there}, [=] { bar->SetParent(nullptr); }, [=] { bar->SetParentWindow(dialog); },
        [=] { bar->SetTop(CheckedSub(CheckedSub(CheckedAdd(r.Top, Height(r) / 2), bar->Height() / 2), 1)); },
        [=] { bar->SetLeft(r.Left); }, // until the first painting puts it at the other edge
        [=] { bar->Show(); });
    if (barAlive && !there) { // the step in whose midst the dialog gave it back has taken it away again
        GiveBack(bar, home, visible, before);
    }
}

/// To the right of the dialog's own tool bar, as far as there is room.
void TKxCustomOpenDialog::PlaceToolBar() {
    if (!FBorrowedBar.IsSet()) { // asked without waiting for the application's thread
        return;
    }
    KxWithForms([this] {
        if (TToolBar* const bar = FBorrowedBar.Get()) {
            const int32_t left = CheckedAdd(KxRectIn(DlgHandle(), FTB).Right, 1);
            const int32_t room = std::max(CheckedSub(OwnRight(), left), 0);
            bar->SetBounds(left, bar->Top(), std::min(Width(FTBPrevRect), room), bar->Height());
        }
    });
}

void TKxCustomOpenDialog::ReturnToolBar() {
    KxWithForms([this] {
        TToolBar* const bar = FBorrowedBar.Get();
        if (!bar) {
            return;
        }
        // What the bar is given back is read first: it tells the application of each step, which may free the dialog.
        FBorrowedBar.Set(nullptr);
        TComponentRef<TWinControl> home;
        home.Set(FTBPrevParent.Get());
        GiveBack(bar, home, FTBPrevVisible, FTBPrevRect);
    });
}

} // namespace kx
