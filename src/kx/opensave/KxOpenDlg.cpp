// The full open dialog.

#include "kx/opensave/KxOpenDlg.h"

#include "kx/core/Barrier.h"
#include "kx/frame/KxWhileAlive.h"
#include "kx/opensave/KxFileDlgPublish.h"
#include "kx/opensave/KxNativePlacesBar.h"
#include "kx/win/FileStreams.h"
#include "kx/win/System.h"
#include "kx/win/Windows.h"

#include <commdlg.h>
#include <shlobj.h>

namespace kx {

namespace {

constexpr unsigned StyleDelay = 50; ///< Milliseconds in which the shell fills its list.

/// The shell's view knows thumbnails and tiles since system 5.1.
bool HasNewerShellView() {
    const TSystem& system = System();
    return system.Major >= 6 || (system.Major == 5 && system.Minor >= 1);
}

} // namespace

// --- Classes

const TClass& TKxCustomOpenDialog::StaticClass() {
    static const TClassBuilder<TKxCustomOpenDialog> cls("TKxCustomOpenDialog", TOpenDialog::StaticClass());
    return cls.Class();
}

const TClass& TKxOpenDialog::StaticClass() {
    using T = TKxOpenDialog;
    static const TClassBuilder<T> cls("TKxOpenDialog", TKxCustomOpenDialog::StaticClass(), [](auto& c) {
        c.Creatable();
        PublishTitle(c);
        PublishSelection(c);
        c.Reference("OkButtonMenu", &T::OkButtonMenu, &T::SetOkButtonMenu);
        c.Property("OnIncludeFile", &T::OnIncludeFile, &T::SetOnIncludeFile);
        PublishNavigation(c);
        c.Property("OnSelectionStyleChange", &T::OnSelectionStyleChange, &T::SetOnSelectionStyleChange);
        c.Property("OnSelectionStyleChanging", &T::OnSelectionStyleChanging, &T::SetOnSelectionStyleChanging);
        PublishInput(c);
        c.Property("OnShareViolation", &T::OnShareViolation, &T::SetOnShareViolation);
    });
    return cls.Class();
}

// --- Life

TKxCustomOpenDialog::TKxCustomOpenDialog(TComponent* owner)
    : TOpenDialog(owner), TKxFileDlgCore(static_cast<TOpenDialog&>(*this)), FExtFilter(this),
      FListMessages(TWndMethod(this, &TKxCustomOpenDialog::NewLVProc)),
      FViewMessages(TWndMethod(this, &TKxCustomOpenDialog::NewDVProc)), FIsWinXP(HasNewerShellView()) {
    SetOptionsEx({ofExNoPlacesBar});
    FPlaceOptions.SetDlg(this);
    SHGetDesktopFolder(FShellFolder.put());
    FTimer.SetEnabled(false);
    FTimer.SetInterval(StyleDelay);
    FTimer.SetOnTimer({this, &TKxCustomOpenDialog::DoRefreshListView, "DoRefreshListView"});
}

TKxCustomOpenDialog::~TKxCustomOpenDialog() {
    CloseShown();
    // When a handler freed the dialog while it closed:
    using T = TKxCustomOpenDialog;
    RunSteps<T>(*this, {&T::FreePlacesBar, &T::FreeOkButton, &T::ReturnToolBar});
}

TKxCustomOpenDialog* TKxCustomOpenDialog::CreationControl() { return TRunning::Dialog(); }

// --- Running

bool TKxCustomOpenDialog::ExecuteWith(TWrapper* wrapper) {
    return DoExecute([this, wrapper](OPENFILENAMEA& record) {
        const TRunning running = PrepareExecution(); // each time that the system has to show it
        return wrapper(record);
    });
}

bool TKxCustomOpenDialog::Execute() { return ExecuteWith(GetOpenFileNameWrapper); }

namespace {

using TSystemDialog = BOOL WINAPI(OPENFILENAMEA* record);

bool RunWithPlacesBar(TSystemDialog* dialog, OPENFILENAMEA& record, bool placesBar) {
    if (!placesBar) {
        return dialog(&record) != FALSE;
    }
    OPENFILENAMEA copy = KxWithPlacesBar(record);
    const bool confirmed = dialog(&copy) != FALSE;
    record = copy;
    return confirmed;
}

bool WantsNativePlacesBar(TKxCustomOpenDialog* dialog) {
    return dialog && PlacesBarSupported() && dialog->PlacesBar().Native() && dialog->PlacesBar().Visible();
}

} // namespace

bool TKxCustomOpenDialog::GetOpenFileNameWrapper(OPENFILENAMEA& record) {
    return RunWithPlacesBar(GetOpenFileNameA, record, WantsNativePlacesBar(CreationControl()));
}

bool TKxCustomOpenDialog::GetSaveFileNameWrapper(OPENFILENAMEA& record) {
    return RunWithPlacesBar(GetSaveFileNameA, record, WantsNativePlacesBar(CreationControl()));
}

// --- Showing. The order of the steps is what applications rely on.

void TKxCustomOpenDialog::DoShow() {
    SetOptionsEx({ofExNoPlacesBar});
    using T = TKxCustomOpenDialog;
    if (KxWhileAlive(
            Existence(), [this] { TOpenDialog::DoShow(); },
            [this] {
                ForgetShareViolation();
                AttachDialog();
            })) {
        RunSteps<T>(*this,
                    {&T::MeasureDialog, &T::MakeRoomForPlaces, &T::CreatePlacesBar, &T::TakeToolBar, &T::DockForms,
                     &T::MeasureList, &T::ShowVisibleCtrls, &T::InstallHooks, &T::TakeFirstList, &T::FireShow});
    }
}

/// Notes the outer size that the dialog, without what is added to it, is going to have.
void TKxCustomOpenDialog::MeasureDialog() {
    const TRect outer = KxWindowRect(DlgHandle());
    if (IsSizeable() && CX != 0) {
        return; // as the user left it
    }
    const bool roomy = IsSizeable() && ShowCustomPlacesBar();
    CX = CheckedAdd(Width(outer), roomy ? 40 : 0);
    CY = CheckedAdd(Height(outer), roomy ? 70 : 0);
}

void TKxCustomOpenDialog::DoClose() {
    FTimer.SetEnabled(false);
    using T = TKxCustomOpenDialog;
    // The places first: what comes behind tells the application. The bar is still there when the application has kept
    // WM_DESTROY from the dialog.
    RunSteps<T>(*this, {&T::SavePlaces, &T::LeaveAtLast, &T::FreePlacesBar, &T::FreeOkButton, &T::ReturnToolBar,
                        &T::DetachDialog, &T::StopWatching, &T::FireInheritedClose, &T::ForgetList});
}

void TKxCustomOpenDialog::SavePlaces() {
    if (FPlaceOptions.Visible() && !FPlaceOptions.Native() && !FPlaceOptions.RegistryKey().empty()) {
        FPlaceOptions.SaveOnClose();
    }
}

/// The dialog is freed and leaves a window that has not been destroyed yet.
void TKxCustomOpenDialog::LeaveAtLast() {
    if (TKxDlgCore::IsGoing() && !FClosingWindow) {
        LeaveWindow();
    }
}

void TKxCustomOpenDialog::StopWatching() {
    FGlobals = {};
    TRunning::Finish(*this);
}

void TKxCustomOpenDialog::FireInheritedClose() { TOpenDialog::DoClose(); }

void TKxCustomOpenDialog::ForgetList() {
    FListMessages.Uninstall();
    FViewMessages.Uninstall();
    LoseList();
    FDVH = nullptr;
    FWantedStyle.reset();
    FTB = nullptr;
}

// --- Answers of the system

void TKxCustomOpenDialog::DoFolderChange() {
    if (Outlives(Existence(), [this] { TOpenDialog::DoFolderChange(); }) && DlgHandle()) {
        using T = TKxCustomOpenDialog;
        RunSteps<T>(*this, {&T::ShowFolderInPlaces, &T::ShowSelectionAgain, &T::ListMayBeFilled,
                            &T::PostRefreshListViewStyles});
    }
}

/// The shell shows a new list, whatever stands in the place of the one before.
void TKxCustomOpenDialog::ShowSelectionAgain() {
    if (FPlaced) {
        RefreshSelCtrl();
    }
}

/// The shell is about to read the folder again.
void TKxCustomOpenDialog::DoTypeChange() {
    FillingBegins();
    TOpenDialog::DoTypeChange();
}

void TKxCustomOpenDialog::WMNotify(TMessage& message) {
    if (FRealHook(message)) {
        return;
    }
    const UINT code = message.LParamAs<NMHDR>().code;
    if (code == CDN_SELCHANGE) {
        ForgetShareViolation();
    }
    if (Outlives(Existence(), [&] { TOpenDialog::WMNotify(message); })) {
        AfterNotification(code);
    }
}

/// True: the notification of a share violation has been answered.
bool TKxCustomOpenDialog::FRealHook(TMessage& message) {
    if (static_cast<int>(message.LParamAs<NMHDR>().code) != static_cast<int>(CDN_SHAREVIOLATION)) {
        return false;
    }
    const char* const fileName = message.LParamAs<OFNOTIFYA>().pszFile;
    ForgetShareViolation();
    FShareAsked = true;
    int32_t result = -1;
    if (!Outlives(Existence(), [&] { DoShareViolation(result, fileName ? fileName : ""); }) && result == -1) {
        result = OFN_SHARENOWARN; // no word of the system's about a file that nobody will open
    }
    message.Result = result;
    return result != -1;
}

void TKxCustomOpenDialog::ForgetShareViolation() {
    FShareAsked = false;
    FShareAnswer.reset();
}

/// Windows asks twice about a file for which it has reported a share violation: once is enough for the application.
bool TKxCustomOpenDialog::DoCanClose() {
    if (const std::optional<bool> answer = std::exchange(FShareAnswer, std::nullopt)) {
        return *answer;
    }
    if (!std::exchange(FShareAsked, false)) {
        return AllowsSharedFiles() && TOpenDialog::DoCanClose();
    }
    FShareAnswer = false; // if the handler fails
    bool allowed = false;
    if (Outlives(Existence(), [&] { allowed = TOpenDialog::DoCanClose(); })) {
        FShareAnswer = allowed;
    }
    return allowed;
}

void TKxCustomOpenDialog::TellOfShareViolation(const std::string& fileName) const {
    HWND dialog = DlgHandle();
    const std::string text = fileName + "\nThis file is in use.\nSelect a new name or close the file.";
    std::string title;
    if (Outlives(Existence(), [&] { title = KxWindowText(dialog); })) {
        MessageBoxA(dialog, text.c_str(), title.c_str(), MB_OK | MB_ICONWARNING);
    }
}

/// Windows asks about a file that another program holds before it takes the user's choice. Other systems do not, and
/// the dialog asks by itself. As on Windows OFN_SHAREWARN and OFN_SHARENOWARN refuse the file, the first one with a
/// message; no answer leaves it to the system, which takes the file.
bool TKxCustomOpenDialog::AllowsSharedFiles() {
    if (Options().Contains(ofShareAware) || Options().Contains(ofNoValidate)) {
        return true;
    }
    for (int i = 0; i < Files().Count(); ++i) {
        const std::string name = Files().Get(i);
        if (!FileIsHeldByOthers(name)) {
            continue;
        }
        int32_t result = -1;
        if (!Outlives(Existence(), [&] { DoShareViolation(result, name); })) {
            return false;
        }
        if (result == OFN_SHAREWARN) {
            TellOfShareViolation(name);
        }
        if (result == OFN_SHAREWARN || result == OFN_SHARENOWARN) {
            return false;
        }
    }
    return true;
}

} // namespace kx
