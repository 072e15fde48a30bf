#include "folder/KxFolderDlg.h"

#include "core/Barrier.h"

namespace kx {

static_assert(constFolderOptions[ffBrowseForComputer] == BIF_BROWSEFORCOMPUTER);
static_assert(constFolderOptions[ffBrowseForPrinter] == BIF_BROWSEFORPRINTER);
static_assert(constFolderOptions[ffDontGoBelowDomain] == BIF_DONTGOBELOWDOMAIN);
static_assert(constFolderOptions[ffReturnFSAncestors] == BIF_RETURNFSANCESTORS);
static_assert(constFolderOptions[ffReturnOnlyFSDirs] == BIF_RETURNONLYFSDIRS);
static_assert(constFolderOptions[ffStatusText] == BIF_STATUSTEXT);
static_assert(constFolderOptionsEx[ffNoNewFolderButton] == BIF_NONEWFOLDERBUTTON);
static_assert(constFolderOptionsEx[ffNewDialogStyle] == BIF_NEWDIALOGSTYLE);
static_assert(constFolderOptionsEx[ffEditBox] == BIF_EDITBOX);
static_assert(constFolderOptionsEx[ffIncludeFiles] == BIF_BROWSEINCLUDEFILES);
static_assert(constFolderOptionsEx[ffIncludeUrls] == BIF_BROWSEINCLUDEURLS);
static_assert(constFolderOptionsEx[ffValidate] == BIF_VALIDATE);
static_assert(constFolderOptionsEx[ffShareable] == BIF_SHAREABLE);
static_assert(BFFM_ENABLEOK == 0x465 && BFFM_SETSTATUSTEXTA == 0x464 && BFFM_SETSELECTIONA == 0x466);

// --- Classes

const TClass& TKxCustomFolderDialog::StaticClass() {
    static const TClassBuilder<TKxCustomFolderDialog> cls("TKxCustomFolderDialog", TCommonDialog::StaticClass());
    return cls.Class();
}

const TClass& TKxFolderDialog::StaticClass() {
    using T = TKxFolderDialog;
    static const TClassBuilder<T> cls("TKxFolderDialog", TKxCustomFolderDialog::StaticClass(), [](auto& c) {
        c.Creatable();
        c.SubObject("CustDlgParams", &T::CustDlgParams, &T::SetCustDlgParams);
        c.SubObject("DlgItemsCaptions", &T::DlgItemsCaptions, nullptr);
        c.Property("InitialDir", &T::InitialDir, &T::SetInitialDir);
        c.Property("SpecialIniFolder", &T::SpecialIniFolder, &T::SetSpecialIniFolder);
        c.Property("StatusText", &T::StatusText, &T::SetStatusText);
        c.Property("Options", &T::Options, &T::SetOptions);
        c.Property("OptionsEx", &T::OptionsEx, &T::SetOptionsEx);
        c.Property("SelectionType", &T::SelectionType, &T::SetSelectionType).Default = stStandard;
        c.Reference("ParentForm", &T::ParentForm, &T::SetParentForm);
        c.Property("Text", &T::Text, &T::SetText);
        c.Property("Title", &T::Title, &T::SetTitle);
        c.Property("OnSelectionChange", &T::OnSelectionChange, &T::SetOnSelectionChange);
        c.Property("OnCanClose", &T::OnCanClose, &T::SetOnCanClose);
        c.Property("OnEventHook", &T::OnEventHook, &T::SetOnEventHook);
        c.Property("OnEventHooking", &T::OnEventHooking, &T::SetOnEventHooking);
    });
    return cls.Class();
}

TKxCustomFolderDialog::TKxCustomFolderDialog(TComponent* owner) : TCommonDialog(owner), TKxDlgCore(*this, true) {}

TKxCustomFolderDialog::~TKxCustomFolderDialog() {
    CloseShown();
    ReleaseWindow();
}

// --- Settings

void TKxCustomFolderDialog::SetIniFolder(const std::string& value) {
    FIniFolder = value;
    FSpecIniFolder = ftNone;
}

void TKxCustomFolderDialog::SetSpecIniFolder(TKxSpecShellFolder value) {
    FSpecIniFolder = value;
    if (value != ftNone) {
        FIniFolder.clear();
    }
}

void TKxCustomFolderDialog::SetOk(bool value) {
    FOK = value;
    FOkGiven = true;
    Tell(BFFM_ENABLEOK, 0, value ? 1 : 0);
}

void TKxCustomFolderDialog::SetStatus(const std::string& value) {
    FStatus = value;
    if (FOptions.Contains(ffStatusText)) {
        const std::string text = FStatus; // whoever handles the message may set another
        Tell(BFFM_SETSTATUSTEXTA, 0, reinterpret_cast<LPARAM>(text.c_str()));
    }
}

void TKxCustomFolderDialog::SetSelFolder(const std::string& value) {
    const std::string path = value;
    FSelFolder = path;
    Tell(BFFM_SETSELECTIONA, TRUE, reinterpret_cast<LPARAM>(path.c_str()));
}

void TKxCustomFolderDialog::SetSelPidl(LPCITEMIDLIST value) {
    // What was held lives on until the end: `value` may be it.
    const unique_pidl old = std::exchange(FSelPidl, CreatePIDLCopy(value));
    Tell(BFFM_SETSELECTIONA, FALSE, reinterpret_cast<LPARAM>(value));
}

void TKxCustomFolderDialog::SetSelType(TKxDlgSelectionType value) {
    FSelType = value;
    RefreshSelCtrl();
}

LRESULT TKxCustomFolderDialog::Tell(UINT message, WPARAM wParam, LPARAM lParam) const {
    return FDlgHandle ? SendMessageA(FDlgHandle, message, wParam, lParam) : 0;
}

// --- Running

namespace {

/// The calling thread is one in which components of the shell may live, as the new style's do.
class TApartment {
public:
    TApartment() : FEntered(SUCCEEDED(OleInitialize(nullptr))) {}
    TApartment(const TApartment&) = delete;
    TApartment& operator=(const TApartment&) = delete;
    ~TApartment() {
        if (FEntered) {
            OleUninitialize();
        }
    }

private:
    bool FEntered;
};

/// The text as it fits into a buffer of so many bytes, its end included.
std::string Fitting(const std::string& text, size_t buffer) {
    size_t end = 0;
    while (end < text.size()) {
        const size_t next = NextCharacter(text, end);
        if (next >= buffer) {
            break;
        }
        end = next;
    }
    return text.substr(0, end);
}

unique_pidl SpecialFolderPidl(TKxSpecShellFolder folder) {
    unique_pidl pidl;
    const HRESULT found = SHGetSpecialFolderLocation(Application().Handle(), constFolders[folder], pidl.put());
    if (!pidl) {
        throw EOSError("Can not get folder location (Pidl)", static_cast<uint32_t>(found));
    }
    return pidl;
}

} // namespace

/// One running of a dialog. Runnings nest in a thread; the browser's callback finds the innermost.
class TKxCustomFolderDialog::TRun {
public:
    explicit TRun(TKxCustomFolderDialog& dialog)
        : FDialog(dialog), FAlive(dialog.Alive()), FOuter(std::exchange(Innermost, this)) {}
    TRun(const TRun&) = delete;
    TRun& operator=(const TRun&) = delete;
    ~TRun() {
        if (Dialog()) {
            FDialog.EndRun();
        }
        Innermost = FOuter;
    }

    /// Null when it has been freed meanwhile.
    TKxCustomFolderDialog* Dialog() const { return FAlive.expired() ? nullptr : &FDialog; }

    static thread_local TRun* Innermost;

private:
    TKxCustomFolderDialog& FDialog;
    std::weak_ptr<const void> FAlive;
    TRun* FOuter;
};

thread_local TKxCustomFolderDialog::TRun* TKxCustomFolderDialog::TRun::Innermost = nullptr;

TKxCustomFolderDialog* TKxCustomFolderDialog::Running() {
    return TRun::Innermost ? TRun::Innermost->Dialog() : nullptr;
}

bool TKxCustomFolderDialog::Execute() {
    HWND owner = FParentForm ? FParentForm->Handle() : Application().Handle();
    return TaskModalDialog(owner, [this, owner] { return Browse(owner); });
}

bool TKxCustomFolderDialog::Browse(HWND owner) {
    const TApartment apartment;
    const TRun run(*this);
    const unique_pidl root = RootPidl();
    const std::string title = Fitting(FTitle, 128);
    char displayName[MAX_PATH] = "";
    BROWSEINFOA info{};
    info.hwndOwner = owner;
    info.pidlRoot = root.get();
    info.pszDisplayName = displayName;
    info.lpszTitle = title.c_str();
    info.ulFlags = BrowseFlags();
    info.lpfn = BrowseCallBack;
    info.lParam = reinterpret_cast<LPARAM>(this);
    unique_pidl result(SHBrowseForFolderA(&info));
    if (!run.Dialog()) {
        return false;
    }
    FPidl = std::move(result);
    if (!FPidl) {
        return false;
    }
    FFolder = GetPathFromPIDL(FPidl.get());
    FDispName = displayName;
    return true;
}

UINT TKxCustomFolderDialog::BrowseFlags() const {
    UINT flags = 0;
    for (size_t i = 0; i < numOfBrwsFlags; ++i) {
        flags |= FOptions.Contains(static_cast<TKxBrowseForFolderFlag>(i)) ? constFolderOptions[i] : 0;
    }
    for (size_t i = 0; i < numOfBrwsFlagsEx; ++i) {
        flags |= FExOptions.Contains(static_cast<TKxBrowseForFolderFlagEx>(i)) ? constFolderOptionsEx[i] : 0;
    }
    return flags;
}

unique_pidl TKxCustomFolderDialog::RootPidl() const {
    if (FSpecIniFolder != ftNone) {
        return SpecialFolderPidl(FSpecIniFolder);
    }
    return FIniFolder.empty() ? SpecialFolderPidl(ftDesktop)
                              : CreatePIDLFromPath(FIniFolder, "Error parsing folder name to PIDL");
}

void TKxCustomFolderDialog::EndRun() {
    ReleaseWindow(); // when the application kept the window's destruction from the dialog
    FSelFolder.clear();
    FSelPidl.reset();
}

// --- Notifications of the browser

int CALLBACK TKxCustomFolderDialog::BrowseCallBack(HWND window, UINT code, LPARAM param, LPARAM data) noexcept {
    // Deliberate: the dialog is that of the innermost running, where one would expect the one in `data`.
    if (TKxCustomFolderDialog* const dialog = Running()) {
        Guarded([&] {
            if (code == BFFM_INITIALIZED) {
                dialog->FDlgHandle = window;
            }
            dialog->BrowseProc({code, static_cast<WPARAM>(param), data, 0});
        });
    } else if (code == BFFM_INITIALIZED) { // freed before there was a window to close
        PostMessageA(window, WM_COMMAND, IDCANCEL, 0);
    }
    return 0;
}

void TKxCustomFolderDialog::BrowseProc(const TMessage& message) {
    switch (message.Msg) {
    case BFFM_INITIALIZED: Initialized(); break;
    case BFFM_SELCHANGED: SelChanged(reinterpret_cast<LPCITEMIDLIST>(message.WParam)); break;
    default: break;
    }
}

void TKxCustomFolderDialog::Initialized() {
    const auto alive = Alive();
    AttachHandle(FDlgHandle);
    AttachDialog(FDlgHandle);
    // The application hears of all this and may free the dialog.
    if (!Title().empty()) {
        SetWindowTextA(FDlgHandle, Fitting(Title(), 255).c_str());
    }
    if (!alive.expired()) {
        FExOptions.IsEmpty() ? DockForms() : FParams.SetIcon2(FDlgHandle);
    }
    if (!alive.expired()) {
        DialogShown();
    }
    if (!alive.expired() && !FStatus.empty()) {
        SetStatus(std::string(FStatus));
    }
}

void TKxCustomFolderDialog::SelChanged(LPCITEMIDLIST selection) {
    FSelPidl = CreatePIDLCopy(selection);
    FSelFolder = GetPathFromPIDL(selection);
    const auto alive = Alive();
    FOkGiven = false;
    Guarded([this] { DoSelectionChange(); });
    if (!alive.expired() && FOkGiven && FDlgHandle) {
        // Wine enables the button by its own rules behind this notification: what the event said comes after that.
        PostMessageA(FDlgHandle, BFFM_ENABLEOK, 0, FOK ? 1 : 0);
    }
}

// --- Showing

void TKxCustomFolderDialog::DoShow() {
    using T = TKxCustomFolderDialog;
    RunSteps<T>(*this, {&T::ShowSelCtrl, &T::SetCaptions, &T::Place, &T::FireInheritedShow, &T::FireShow});
}

void TKxCustomFolderDialog::ShowSelCtrl() {
    if (const HWND tree = FindTree()) {
        MeasureTree(tree);
        RefreshSelCtrl();
    }
}

void TKxCustomFolderDialog::SetCaptions() { FCaptions.SetCaptions(FDlgHandle); }

void TKxCustomFolderDialog::FireInheritedShow() { TCommonDialog::DoShow(); }

void TKxCustomFolderDialog::DoClose() {
    const auto alive = Alive();
    const bool going = alive.expired(); // then the destructor waits for this
    Guarded([this] { TCommonDialog::DoClose(); });
    if (going || !alive.expired()) {
        ReleaseWindow();
    }
}

/// Gives the browser's window back to the system and takes the forms out of it.
void TKxCustomFolderDialog::ReleaseWindow() {
    if (FDlgHandle) {
        DetachDialog();
        FParams.DisconnectForms();
    }
}

TKxMsgVerdict TKxCustomFolderDialog::BeforeSystem(TMessage& message) {
    if (message.Msg == WM_COMMAND && message.WParamLo() == IDOK) {
        return DoCanClose() ? mvPass : mvStop;
    }
    return mvPass; // WM_DESTROY comes to DoClose by way of the framework's dialog
}

bool TKxCustomFolderDialog::DoCanClose() {
    bool canClose = true;
    FOnCanClose(this, canClose);
    return canClose;
}

// --- The selection control

namespace {

/// Activation of a form that is part of a foreign window, which the system does not activate.
struct TFormAccess : TForm {
    static void ActivateDocked(TForm& form) { (form.*(&TFormAccess::Activate))(); }
};

} // namespace

/// The folder tree; null when there is none.
HWND TKxCustomFolderDialog::FindTree() const {
    HWND tree = FindWindowExA(FDlgHandle, nullptr, WC_TREEVIEWA, nullptr);
    if (!tree || tree != GetWindow(FDlgHandle, GW_CHILD)) {
        return tree;
    }
    // Windows has the tree behind its first child, Wine's browser in the new style in front of all others.
    HWND behind = FindWindowExA(FDlgHandle, tree, WC_TREEVIEWA, nullptr);
    return behind ? behind : tree;
}

void TKxCustomFolderDialog::MeasureTree(HWND tree) {
    const TRect outer = KxRectIn(FDlgHandle, tree);
    const TRect client = KxClientRect(tree);
    int32_t width = CheckedAdd(client.Right, GetSystemMetrics(SM_CXDLGFRAME));
    if ((GetWindowLongA(tree, GWL_STYLE) & WS_VSCROLL) != 0) {
        width = CheckedAdd(width, GetSystemMetrics(SM_CXVSCROLL));
    }
    // Deliberate: a horizontal scroll bar is not counted, where one would expect its height to be added.
    const int32_t height = CheckedAdd(client.Bottom, GetSystemMetrics(SM_CYDLGFRAME));
    FSelRect = {outer.Left, outer.Top, CheckedAdd(outer.Left, width), CheckedAdd(outer.Top, height)};
}

void TKxCustomFolderDialog::RefreshSelCtrl() {
    const auto alive = Alive();
    if (FSelType == stCustom) {
        ShowStdSelectionCtrl(false);
        if (!alive.expired()) {
            ShowCustSelectionCtrl(true);
        }
    } else {
        ShowCustSelectionCtrl(false);
        if (!alive.expired()) {
            ShowStdSelectionCtrl(true);
        }
    }
}

void TKxCustomFolderDialog::ShowCustSelectionCtrl(bool show) {
    if (!show) {
        if (FDlgHandle) {
            FParams.HideCustomForm();
        }
        return;
    }
    KxWithForms([this] {
        TForm* form = FParams.CustomForm();
        if (!FDlgHandle || !form) {
            return;
        }
        const auto alive = Alive();
        form->SetParent(nullptr);
        form->SetParentWindow(FDlgHandle);
        form->SetBounds(FSelRect.Left, FSelRect.Top, Width(FSelRect), Height(FSelRect));
        form->Show();
        if (!alive.expired() && FParams.CustomForm() == form) { // neither freed nor replaced by its OnShow
            TFormAccess::ActivateDocked(*form);
        }
    });
}

void TKxCustomFolderDialog::ShowStdSelectionCtrl(bool show) {
    if (!FDlgHandle) {
        return;
    }
    if (HWND tree = FindTree()) {
        const bool isShown = (GetWindowLongA(tree, GWL_STYLE) & WS_VISIBLE) != 0;
        if (isShown != show) { // showing it once more would cost as much as the first time
            ShowWindow(tree, show ? SW_SHOW : SW_HIDE);
        }
        return;
    }
    MessageBoxA(FDlgHandle,
                show ? "Could not show window. Child SysTreeView32 not found."
                     : "Could not hide window. Child SysTreeView32 not found.",
                "Error", MB_OK | MB_ICONERROR);
}

} // namespace kx
