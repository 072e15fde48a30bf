// SPDX-License-Identifier: MIT
// What the lite and the full file dialogs share.

#include "kx/opensave/KxFileDlgCore.h"

#include "kx/core/Barrier.h"
#include "kx/core/SysUtils.h"
#include "kx/frame/KxWhileAlive.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <commdlg.h>

namespace kx {

TKxFileDlgCore::TKxFileDlgCore(TOpenDialog& dialog) : TKxDlgCore(dialog), FDialog(dialog) {}

void TKxFileDlgCore::SetTitle(const std::string& value) {
    TKxDlgCore::SetTitle(value);
    Window().SetTitle(value);
}

// --- What is remembered

void TKxFileDlgCore::Recall() {
    FMemory = TKxDlgMemory(FRememberKey);
    FIsSizeRecalled = FMemory.Size && IsSizeable();
    if (FIsSizeRecalled) {
        CX = FMemory.Size->X;
        CY = FMemory.Size->Y;
    }
}

bool TKxFileDlgCore::RunRemembering(const std::function<bool()>& execute) {
    if (!FDlgHandle) { // else the dialog is shown already, and to show it once more is an error
        Recall();
        FPlaced = false;
    }
    bool confirmed = false;
    if (!Outlives(Existence(), [&] { confirmed = execute(); })) {
        return false;
    }
    if (FPlaced) {
        Guarded([&] {
            RememberChoice(confirmed);
            Remember();
            FMemory.Keep(confirmed);
        });
    }
    return confirmed;
}

void TKxFileDlgCore::RememberChoice(bool confirmed) {
    if (confirmed) {
        FMemory.Folder = ExtractFileDir(FDialog.FileName());
    }
    if (IsSizeable()) {
        FMemory.Size = TPoint{CX, CY};
    }
}

std::string TKxFileDlgCore::StartFolder() const {
    const bool isSet = !FDialog.InitialDir().empty() || !ExtractFilePath(FDialog.FileName()).empty();
    return isSet ? FDialog.InitialDir() : FMemory.ExistingFolder();
}

/// A filter that the dialog does not have is not remembered: the program may have been given others meanwhile.
int TKxFileDlgCore::StartFilterIndex() const {
    const auto bars = std::count(FDialog.Filter().begin(), FDialog.Filter().end(), '|');
    const int filters = static_cast<int>((bars + 1) / 2);
    const int remembered = FMemory.Filter.value_or(0);
    const bool isSet = FDialog.FilterIndex() != 1;
    return !isSet && remembered >= 1 && remembered <= filters ? remembered : FDialog.FilterIndex();
}

// --- Selection

void TKxFileDlgCore::SetSelFiles(const std::string& value) {
    if (FDlgHandle) {
        KxCommonGetNamesList(value, FSelFiles);
        Window().SetFNameText(value);
    }
}

const TStringList& TKxFileDlgCore::GetSelFilesList() {
    static const TStringList none;
    std::string files;
    if (!Outlives(Existence(), [&] { files = GetSelFiles(); })) {
        return none;
    }
    KxCommonGetNamesList(files, FSelFiles);
    return FSelFiles;
}

void TKxFileDlgCore::SetSelFilesList(const TStrings& value) {
    if (FDlgHandle) {
        if (&value != &FSelFiles) {
            FSelFiles.Assign(&value);
        }
        Window().SetFNameText(KxNamesListText(FSelFiles));
    }
}

const ITEMIDLIST* TKxFileDlgCore::GetSelPathPidl() {
    unique_pidl folder;
    if (!Outlives(Existence(), [&] { folder = Window().GetSelPathPidl(); })) {
        return nullptr;
    }
    FSelPathIDList = std::move(folder);
    return FSelPathIDList.get();
}

void TKxFileDlgCore::SetVisibleCtrls(TKxOpenDlgControls value) {
    FCtrls = value;
    Window().ShowControls(FCtrls);
}

// --- Showing

void TKxFileDlgCore::AttachDialog() {
    FClosingWindow = false;
    FFirstTimeFlag = false;
    FPlaced = false;
    FPlacedAt.reset();
    TKxDlgCore::AttachDialog(FDialog.DialogWindow());
    FParams.SetClientRect(KxClientRect(FDlgHandle));
    if (!Title().empty()) {
        Window().SetTitle(Title());
    }
}

void TKxFileDlgCore::MeasureList() { FParams.SetCustRect(Window().SelectionRect()); }

void TKxFileDlgCore::ShowVisibleCtrls() {
    if (Outlives(Existence(), [this] { SetVisibleCtrls(FCtrls); })) {
        FCaptions.SetCaptions(FDlgHandle);
    }
}

void TKxFileDlgCore::FireShow() {
    FFirstTimeFlag = true;
    FMemory.Filter = ShownFilter();
    TKxDlgCore::FireShow();
}

/// Outer size, in pixels, in which the dialog comes up. @throws EIntOverflow
TPoint TKxFileDlgCore::FirstSize() const {
    const TPoint size{CheckedSum(FParams.IncX(), CX, AddedWidth()), CheckedAdd(FParams.IncY(), CY)};
    // The size may have been remembered on a larger screen, or of a dialog with smaller forms.
    return FIsSizeRecalled ? KxFitSize(FDlgHandle, size) : size;
}

/// The system gives a sizeable dialog, when it is complete, the size of the last one. It would lay the dialog out for
/// that size, and once more for the first size.
void TKxFileDlgCore::SetFirstSize(WINDOWPOS& change) const {
    if (FFirstTimeFlag && (change.flags & SWP_NOSIZE) == 0 && !IsWindowVisible(FDlgHandle) && !IsZoomed(FDlgHandle)) {
        const TPoint size = FirstSize();
        change.cx = size.X;
        change.cy = size.Y;
    }
}

namespace {

WINDOWPLACEMENT PlacementOf(HWND window) {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(window, &placement);
    return placement;
}

/// The window may have been moved in the middle of a painting. What lay outside its former place would stay unpainted,
/// and the system may be about to paint with the clipping of that place.
void RepaintWhole(HWND dialog) {
    RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

} // namespace

/// A maximised dialog gets the size when it is restored. The system may show it maximised because it was so last time.
void TKxFileDlgCore::SetOuterSize(int32_t width, int32_t height) {
    if (!IsZoomed(FDlgHandle)) {
        ResizeWindow(FDlgHandle, width, height);
        return;
    }
    WINDOWPLACEMENT placement = PlacementOf(FDlgHandle);
    RECT& normal = placement.rcNormalPosition;
    normal.right = CheckedAdd(normal.left, width);
    normal.bottom = CheckedAdd(normal.top, height);
    placement.showCmd = IsWindowVisible(FDlgHandle) ? SW_SHOWMAXIMIZED : SW_HIDE;
    SetWindowPlacement(FDlgHandle, &placement);
}

void TKxFileDlgCore::PlaceAgain() {
    const std::optional<TPoint> placed = std::exchange(FPlacedAt, std::nullopt);
    const TRect now = KxWindowRect(FDlgHandle);
    if (placed && *placed != TPoint{now.Left, now.Top} && !IsZoomed(FDlgHandle)) {
        HWND dialog = FDlgHandle; // the application hears of the move
        Place();
        RepaintWhole(dialog);
    }
}

void TKxFileDlgCore::PlaceFirst(const std::function<void()>& arrange) {
    if (!std::exchange(FFirstTimeFlag, false)) { // cleared first: what follows may paint the frame, which comes here
        PlaceAgain();
        return;
    }
    HWND window = FDlgHandle;
    const TPoint size = FirstSize();
    KxWhileAlive(
        Existence(), [&] { SetOuterSize(size.X, size.Y); },
        [&] {
            if (arrange) {
                Guarded(arrange);
            }
        },
        [&] {
            FPlaced = true;
            Window().ClipUnderForms();
            if (!IsZoomed(window)) {
                Place();
            }
        },
        [&] {
            if (!IsWindowVisible(window)) {
                const TRect placed = KxWindowRect(window);
                FPlacedAt = {placed.Left, placed.Top};
            }
            RepaintWhole(window);
        });
}

void TKxFileDlgCore::LeaveWindow() {
    FClosingWindow = true;
    HWND window = FDlgHandle;
    const int32_t addedWidth = AddedWidth();
    const TRect outer = IsZoomed(window) ? FromRECT(PlacementOf(window).rcNormalPosition) : KxWindowRect(window);
    if (!Outlives(Existence(), [this] { FParams.DisconnectForms(); })) {
        return;
    }
    CX = CheckedSub(CheckedSub(Width(outer), FParams.IncX()), addedWidth);
    CY = CheckedSub(Height(outer), FParams.IncY());
    SetOuterSize(CX, CY);
}

/// Number of the chosen filter from 1; nothing for a dialog without filters.
std::optional<int> TKxFileDlgCore::ShownFilter() const {
    HWND types = Window().Item(KxFileTypeId);
    const LRESULT index = types && !FDialog.Filter().empty() ? SendMessageW(types, CB_GETCURSEL, 0, 0) : CB_ERR;
    return index >= 0 ? std::optional(static_cast<int>(index) + 1) : std::nullopt;
}

void TKxFileDlgCore::LeaveAtLast() {
    if (IsGoing() && !FClosingWindow) {
        LeaveWindow();
    }
}

// --- Messages

TKxMsgVerdict TKxFileDlgCore::BeforeSystem(TMessage& message, int& command) {
    bool allow = true;
    switch (message.Msg) {
    case WM_DESTROY: LeaveWindow(); return mvPass;
    case WM_WINDOWPOSCHANGING: SetFirstSize(message.LParamAs<WINDOWPOS>()); return mvPass;
    case WM_GETMINMAXINFO: return FClosingWindow ? mvSkip : mvPass; // a dialog that shrinks has no least size
    case WM_CONTEXTMENU: TKxCustDlgParams::TrackContextMenus(allow, message); return allow ? mvPass : mvSkip;
    case WM_COMMAND: {
        const TKxFileDlgCommand found = Window().CommandOf(message);
        command = static_cast<int>(found);
        return AllowsCommand(found) ? mvPass : mvStop;
    }
    default: return mvPass;
    }
}

/// Asks the application before the user navigates, makes a folder or takes what is selected.
bool TKxFileDlgCore::AllowsCommand(TKxFileDlgCommand command) {
    bool allow = true;
    switch (command) {
    case TKxFileDlgCommand::Ok:
        if (IsFilenameEntered()) {
            DoFilenameEntering(allow);
        }
        break;
    case TKxFileDlgCommand::NewFolder: DoFolderCreating(allow); break;
    case TKxFileDlgCommand::Desktop: DoDesktopNavigating(allow); break;
    case TKxFileDlgCommand::UpLevel: DoUpLevelNavigating(allow); break;
    case TKxFileDlgCommand::LastFolder: DoLastFolderNavigating(allow); break;
    case TKxFileDlgCommand::FileNameChanged:
    case TKxFileDlgCommand::Other: break;
    }
    return allow;
}

void TKxFileDlgCore::AfterSystem(TMessage& message, int command) {
    if (message.Msg == WM_COMMAND && message.LParam && message.LParamWindow() == Window().GetEdit() &&
        !Outlives(Existence(), [this] { FCaptions.KeepOk(FDlgHandle); })) {
        return;
    }
    switch (static_cast<TKxFileDlgCommand>(command)) {
    case TKxFileDlgCommand::Desktop: DoDesktopNavigate(); break;
    case TKxFileDlgCommand::UpLevel: DoUpLevelNavigate(); break;
    case TKxFileDlgCommand::LastFolder: DoLastFolderNavigate(); break;
    case TKxFileDlgCommand::FileNameChanged: DoFilenameChange(); break;
    case TKxFileDlgCommand::Ok:
    case TKxFileDlgCommand::NewFolder:
    case TKxFileDlgCommand::Other: break;
    }
}

/// The system gives its OK button another text whenever the selection, the folder or the file type changes.
void TKxFileDlgCore::AfterNotification(UINT code) {
    if (code == CDN_TYPECHANGE) {
        FMemory.Filter = ShownFilter(); // the system may empty the list of filters before its window goes
    }
    if (code == CDN_SELCHANGE || code == CDN_FOLDERCHANGE || code == CDN_TYPECHANGE) {
        FCaptions.KeepOk(FDlgHandle);
    }
}

int32_t TKxFileDlgCore::OwnRight() {
    int width = 0;
    KxInFormsThread([&] {
        const TForm* const right = CustDlgParams().RightForm();
        width = right ? right->Width() : 0;
    });
    return CheckedSub(KxClientRect(DlgHandle()).Right, width);
}

} // namespace kx
