#include "opensave/KxFileDlgCore.h"

#include "core/Barrier.h"

namespace kx {

TKxFileDlgCore::TKxFileDlgCore(TOpenDialog& dialog) : TKxDlgCore(dialog), FDialog(dialog) {}

void TKxFileDlgCore::SetTitle(const std::string& value) {
    TKxDlgCore::SetTitle(value);
    Window().SetTitle(value);
}

// --- Selection

void TKxFileDlgCore::SetSelFiles(const std::string& value) {
    if (FDlgHandle) {
        KxCommonGetNamesList(value, FSelFiles);
        Window().SetFNameText(value);
    }
}

const TStringList& TKxFileDlgCore::GetSelFilesList() {
    KxCommonGetNamesList(GetSelFiles(), FSelFiles);
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

LPCITEMIDLIST TKxFileDlgCore::GetSelPathPidl() {
    FSelPathIDList = Window().GetSelPathPidl();
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
    TKxDlgCore::AttachDialog(GetParent(FDialog.Handle()));
    FParams.SetClientRect(KxClientRect(FDlgHandle));
    if (!Title().empty()) {
        Window().SetTitle(Title());
    }
}

void TKxFileDlgCore::MeasureList() { FParams.SetCustRect(Window().SelectionRect()); }

void TKxFileDlgCore::ShowVisibleCtrls() {
    const std::weak_ptr<const void> alive = Living();
    SetVisibleCtrls(FCtrls);
    if (!alive.expired()) {
        FCaptions.SetCaptions(FDlgHandle);
    }
}

void TKxFileDlgCore::FireShow() {
    FFirstTimeFlag = true;
    TKxDlgCore::FireShow();
}

/// The system gives a sizeable dialog, when it is complete, the size of the last one. It would lay it out for that and
/// once more for the first size.
void TKxFileDlgCore::ComeInFirstSize(WINDOWPOS& change) {
    if (FFirstTimeFlag && (change.flags & SWP_NOSIZE) == 0 && !IsWindowVisible(FDlgHandle)) {
        const TPoint size = FirstSize();
        change.cx = size.X;
        change.cy = size.Y;
    }
}

void TKxFileDlgCore::PlaceFirst(const std::function<void()>& arrange) {
    if (!std::exchange(FFirstTimeFlag, false)) { // now, since what follows may paint the frame
        return;
    }
    const std::weak_ptr<const void> alive = Living(); // the application hears of what follows
    const TPoint size = FirstSize();
    ResizeWindow(FDlgHandle, size.X, size.Y);
    if (!alive.expired() && arrange) {
        Guarded(arrange);
    }
    if (alive.expired()) {
        return;
    }
    FPlaced = true;
    Window().ClipUnderForms();
    Place();
    // In the middle of a painting, what lay outside the window's former place on the screen would stay unpainted, and
    // the system may be about to paint with the clipping of that place.
    RedrawWindow(FDlgHandle, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

void TKxFileDlgCore::ShrinkBack(int32_t extraWidth) {
    FClosingWindow = true;
    const TRect outer = KxWindowRect(FDlgHandle);
    FParams.DisconnectForms();
    const int32_t width = CheckedSub(CheckedSub(Width(outer), FParams.IncX()), extraWidth);
    const int32_t height = CheckedSub(Height(outer), FParams.IncY());
    ResizeWindow(FDlgHandle, width, height);
    CX = width;
    CY = height;
}

// --- Messages

TKxMsgVerdict TKxFileDlgCore::BeforeSystem(TMessage& message) {
    bool allow = true;
    switch (message.Msg) {
    case WM_WINDOWPOSCHANGING: ComeInFirstSize(message.LParamAs<WINDOWPOS>()); return mvPass;
    case WM_GETMINMAXINFO: return FClosingWindow ? mvSkip : mvPass; // a dialog that shrinks back has no least size
    case WM_CONTEXTMENU: TKxCustDlgParams::TrackContextMenus(allow, message); return allow ? mvPass : mvSkip;
    case WM_COMMAND: return AllowsCommand(Window().CommandOf(message)) ? mvPass : mvStop;
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

void TKxFileDlgCore::AfterSystem(TMessage& message) {
    switch (message.Msg == WM_COMMAND ? Window().CommandOf(message) : TKxFileDlgCommand::Other) {
    case TKxFileDlgCommand::Desktop: DoDesktopNavigate(); break;
    case TKxFileDlgCommand::UpLevel: DoUpLevelNavigate(); break;
    case TKxFileDlgCommand::LastFolder: DoLastFolderNavigate(); break;
    case TKxFileDlgCommand::FileNameChanged: DoFilenameChange(); break;
    case TKxFileDlgCommand::Ok:
    case TKxFileDlgCommand::NewFolder:
    case TKxFileDlgCommand::Other: break;
    }
}

} // namespace kx
