#include "opensave/KxOpenDlg.h"

#include "core/Barrier.h"
#include "opensave/KxFileDlgPublish.h"
#include "ui/System.h"

namespace kx {

namespace {

/// The innermost running dialog of the thread. Raw, since references that watch their target are costly to have in each
/// thread: the dialog takes itself out.
thread_local TKxCustomOpenDialog* RunningDialog = nullptr;

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
      FViewMessages(TWndMethod(this, &TKxCustomOpenDialog::NewDVProc)) {
    FIsWinXP = HasNewerShellView();
    SetOptionsEx({ofExNoPlacesBar});
    FPlaceOptions.SetDlg(this);
    SHGetDesktopFolder(FShellFolder.put());
    FTimer.SetEnabled(false);
    FTimer.SetInterval(StyleDelay);
    FTimer.SetOnTimer({this, &TKxCustomOpenDialog::DoRefreshListView, "DoRefreshListView"});
}

TKxCustomOpenDialog::~TKxCustomOpenDialog() {
    CloseShown();
    ForgetCreationControl();
}

TKxCustomOpenDialog* TKxCustomOpenDialog::CreationControl() { return RunningDialog; }

TKxCustomOpenDialog::TGlobals& TKxCustomOpenDialog::Globals() {
    static thread_local TGlobals globals;
    return globals;
}

// --- Running

void TKxCustomOpenDialog::PrepareExecution() {
    Fg_PrevCreationControl.Set(RunningDialog);
    RunningDialog = this;
}

/// For a run that ended without a showing.
void TKxCustomOpenDialog::ForgetCreationControl() {
    if (RunningDialog == this) {
        RunningDialog = Fg_PrevCreationControl.Get();
    }
}

bool TKxCustomOpenDialog::ExecuteWith(TWrapper* wrapper) {
    if (DlgHandle()) {
        return TOpenDialog::Execute(); // refuses, and the showing stays as it is
    }
    const std::weak_ptr<const void> alive = Alive();
    PrepareExecution();
    bool confirmed = false;
    try {
        confirmed = DoExecute([this, wrapper](OPENFILENAMEA& record) {
            RunningDialog = this; // also when the system has to show it a second time
            return wrapper(record);
        });
    } catch (...) {
        ForgetCreationControl();
        throw;
    }
    if (!alive.expired()) {
        ForgetCreationControl();
    }
    return confirmed;
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
    return RunWithPlacesBar(GetOpenFileNameA, record, WantsNativePlacesBar(RunningDialog));
}

bool TKxCustomOpenDialog::GetSaveFileNameWrapper(OPENFILENAMEA& record) {
    return RunWithPlacesBar(GetSaveFileNameA, record, WantsNativePlacesBar(RunningDialog));
}

// --- Showing. The order of the steps is what applications rely on.

void TKxCustomOpenDialog::DoShow() {
    const std::weak_ptr<const void> alive = Alive();
    SetOptionsEx({ofExNoPlacesBar});
    TOpenDialog::DoShow();
    if (alive.expired()) {
        return;
    }
    Fg_Globals = Globals();
    ForgetShareViolation();
    AttachDialog();
    if (alive.expired()) {
        return;
    }
    using T = TKxCustomOpenDialog;
    RunSteps<T>(*this, {&T::MeasureDialog, &T::MakeRoomForPlaces, &T::CreatePlacesBar, &T::TakeToolBar, &T::DockForms,
                        &T::MeasureList, &T::ShowVisibleCtrls, &T::InstallHooks, &T::ShowFirstList, &T::FireShow});
}

/// Notes the outer size that the dialog, without what is added to it, is going to have.
void TKxCustomOpenDialog::MeasureDialog() {
    const TRect outer = KxWindowRect(DlgHandle());
    TRect& outermost = Globals().StaticRect;
    if (outermost.Bottom == 0) {
        outermost = outer;
    }
    if (IsSizeable() && CX != 0) {
        return; // as the user left it
    }
    const bool roomy = IsSizeable() && ShowCustomPlacesBar();
    CX = CheckedAdd(Width(outer), roomy ? 40 : 0);
    CY = CheckedAdd(Height(outer), roomy ? 70 : 0);
}

void TKxCustomOpenDialog::DoClose() {
    const std::weak_ptr<const void> alive = Alive();
    const bool going = alive.expired(); // the closing is part of the dialog's end
    FTimer.SetEnabled(false);
    if (going && !FClosingWindow) {
        LeaveWindow();
    }
    FreePlacesBar(); // still there when the application kept WM_DESTROY from the dialog
    FreeOkButton();
    ReturnToolBar();
    if (FPlaceOptions.Visible() && !FPlaceOptions.Native() && !FPlaceOptions.RegistryKey().empty()) {
        Guarded([this] { FPlaceOptions.SaveOnClose(); });
    }
    if (!going && alive.expired()) {
        return; // freed by a handler of a report
    }
    DetachDialog();
    RunningDialog = nullptr;
    RemoveHooks();
    RunningDialog = Fg_PrevCreationControl.Get();
    TOpenDialog::DoClose();
    if (!going && alive.expired()) {
        return;
    }
    FListMessages.Uninstall();
    FViewMessages.Uninstall();
    FLVH = nullptr;
    FDVH = nullptr;
    FTB = nullptr;
}

// --- Answers of the system

void TKxCustomOpenDialog::DoFolderChange() {
    const std::weak_ptr<const void> alive = Alive();
    TOpenDialog::DoFolderChange();
    if (alive.expired() || !DlgHandle()) {
        return;
    }
    ShowFolderInPlaces();
    if (FPlaced) {
        RefreshSelCtrl(); // the shell shows a new list, whatever stands in the place of the one before
    }
    PostRefreshListViewStyles();
}

void TKxCustomOpenDialog::WMNotify(TMessage& message) {
    if (FRealHook(message)) {
        return;
    }
    const UINT code = message.LParamAs<NMHDR>().code;
    if (code == CDN_SELCHANGE) {
        ForgetShareViolation();
    }
    if (Outlives(*this, [&] { TOpenDialog::WMNotify(message); })) {
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
    DoShareViolation(result, fileName ? fileName : "");
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
        const TAlive alive(*this);
        return AllowsSharedFiles() && alive && TOpenDialog::DoCanClose();
    }
    FShareAnswer = false; // if the handler fails
    bool allowed = false;
    if (Outlives(*this, [&] { allowed = TOpenDialog::DoCanClose(); })) {
        FShareAnswer = allowed;
    }
    return allowed;
}

/// Windows asks about a file that another program holds before it takes the user's choice. Other systems do not, and
/// the dialog asks by itself. As on Windows OFN_SHAREWARN and OFN_SHARENOWARN refuse the file, the first one with a
/// message; no answer leaves it to the system, which takes the file.
bool TKxCustomOpenDialog::AllowsSharedFiles() {
    if (Options().Contains(ofShareAware) || Options().Contains(ofNoValidate)) {
        return true;
    }
    const std::weak_ptr<const void> alive = Alive();
    for (int i = 0; i < Files().Count(); ++i) {
        const std::string name = Files().Get(i);
        if (!KxIsHeldByOthers(name)) {
            continue;
        }
        int32_t result = -1;
        DoShareViolation(result, name);
        if (alive.expired()) {
            return false;
        }
        if (result == OFN_SHAREWARN) {
            const std::string text = name + "\nThis file is in use.\nSelect a new name or close the file.";
            MessageBoxA(DlgHandle(), text.c_str(), KxWindowText(DlgHandle()).c_str(), MB_OK | MB_ICONWARNING);
        }
        if (result == OFN_SHAREWARN || result == OFN_SHARENOWARN) {
            return false;
        }
    }
    return true;
}

} // namespace kx
