// SPDX-License-Identifier: MIT
// The folder dialog: its settings, its run, and the notifications of the browser.

#include "kx/folder/KxFolderDlg.h"

#include "kx/core/Barrier.h"
#include "kx/frame/KxRunning.h"
#include "kx/win/Apartment.h"
#include "kx/win/System.h"
#include "kx/win/Windows.h"

#include <bit>
#include <cstring>
#include <shellapi.h>
#include <shlobj.h>

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
        c.Property("RememberKey", &T::RememberKey, &T::SetRememberKey);
    });
    return cls.Class();
}

TKxCustomFolderDialog::TKxCustomFolderDialog(TComponent* owner)
    : TCommonDialog(owner), TKxDlgCore(static_cast<TCommonDialog&>(*this)) {}

TKxCustomFolderDialog::~TKxCustomFolderDialog() {
    CloseShown();
    LeaveWindow();
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
    TellOk();
}

void TKxCustomFolderDialog::SetStatus(const std::string& value) {
    FStatus = value;
    if (FOptions.Contains(ffStatusText)) {
        const std::string text = FStatus; // whoever handles the message may set another
        Tell(BFFM_SETSTATUSTEXTA, 0, reinterpret_cast<LPARAM>(text.c_str()));
    }
}

void TKxCustomFolderDialog::SetSelFolder(const std::string& value) {
    const auto path = std::string(value); // a copy, since a handler may change what `value` refers to
    FSelFolder = path;
    if (FInitializing) {
        FSelectAgain = [this, path] { Tell(BFFM_SETSELECTIONA, TRUE, reinterpret_cast<LPARAM>(path.c_str())); };
    }
    Tell(BFFM_SETSELECTIONA, TRUE, reinterpret_cast<LPARAM>(path.c_str()));
}

void TKxCustomFolderDialog::SetSelPidl(const ITEMIDLIST* value) {
    // The old list is freed at the end of this function: `value` may be that list.
    const unique_pidl old = std::exchange(FSelPidl, CreatePIDLCopy(value));
    if (FInitializing) {
        FSelectAgain = [this, list = std::make_shared<unique_pidl>(std::bit_cast<ITEMIDLIST*>(ILClone(value)))] {
            Tell(BFFM_SETSELECTIONA, FALSE, reinterpret_cast<LPARAM>(list->get()));
        };
    }
    Tell(BFFM_SETSELECTIONA, FALSE, reinterpret_cast<LPARAM>(value));
}

void TKxCustomFolderDialog::SetSelType(TKxDlgSelectionType value) {
    FSelType = value;
    RefreshSelCtrl();
}

void TKxCustomFolderDialog::TellOk() const {
    // Systems differ in which of the two parameters they look at.
    Tell(BFFM_ENABLEOK, FOK ? 1 : 0, FOK ? 1 : 0);
}

LRESULT TKxCustomFolderDialog::Tell(UINT message, WPARAM wParam, LPARAM lParam) const {
    return FDlgHandle ? SendMessageA(FDlgHandle, message, wParam, lParam) : 0;
}

// --- Running

namespace {

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

/// `buffer` is what the browser wrote. A name that does not fit into its MAX_PATH bytes is cut off, or missing.
std::string DisplayNameOf(const ITEMIDLIST* pidl, const char* buffer) {
    constexpr size_t longestCharacter = 4;
    const size_t length = std::strlen(buffer);
    SHFILEINFOW info{};
    const bool isWhole = length > 0 && length + longestCharacter < MAX_PATH;
    if (!isWhole &&
        SHGetFileInfoW(reinterpret_cast<LPCWSTR>(pidl), 0, &info, sizeof info, SHGFI_PIDL | SHGFI_DISPLAYNAME) != 0) {
        return FromWide(info.szDisplayName);
    }
    return buffer;
}

unique_pidl SpecialFolderPidl(TKxSpecShellFolder folder) {
    unique_pidl pidl;
    const HRESULT found = FindSpecialFolder(Application().Handle(), folder, pidl);
    if (!pidl) {
        throw EOSError("Can not get folder location (Pidl)", static_cast<uint32_t>(found));
    }
    return pidl;
}

} // namespace

/// One running of a dialog.
class TKxCustomFolderDialog::TRun {
public:
    explicit TRun(TKxCustomFolderDialog& dialog) : FDialog(dialog), FAlive(dialog), FRunning(dialog) {}
    TRun(const TRun&) = delete;
    TRun& operator=(const TRun&) = delete;
    ~TRun() {
        if (FAlive) {
            FDialog.EndRun();
        }
    }

    bool IsDialogAlive() const { return static_cast<bool>(FAlive); }

private:
    TKxCustomFolderDialog& FDialog;
    TAlive FAlive;
    TKxRunning<TKxCustomFolderDialog> FRunning; ///< Where the browser's callback finds the dialog.
};

TKxCustomFolderDialog* TKxCustomFolderDialog::Running() { return TKxRunning<TKxCustomFolderDialog>::Dialog(); }

bool TKxCustomFolderDialog::Execute() {
    HWND owner = nullptr;
    if (!Outlives(*this, [&] { owner = BrowserOwner(); })) { // making the parent form's window runs its handlers
        return false;
    }
    if (!FDlgHandle) { // else the dialog is shown already, and to show it once more is an error
        FMemory = TKxDlgMemory(FRememberKey);
    }
    bool confirmed = false;
    if (!Outlives(*this, [&] { confirmed = TaskModalDialog(owner, [this, owner] { return Browse(owner); }); })) {
        return false;
    }
    FMemory.Folder = FFolder;
    Guarded([&] { FMemory.Keep(confirmed); });
    return confirmed;
}

HWND TKxCustomFolderDialog::BrowserOwner() const {
    if (OwnerWindow()) {
        return SystemOwner();
    }
    HWND owner = nullptr;
    bool hasShownForm = false;
    KxInFormsThread([&] {
        owner = FParentForm ? FParentForm->Handle() : nullptr;
        const TCustomForm* const mainForm = Application().MainForm();
        hasShownForm = mainForm && mainForm->HandleAllocated() && IsWindowVisible(mainForm->WindowHandle());
    });
    if (owner) {
        return owner;
    }
    // A window that nobody sees does not keep the browser above the forms: the disabled main form would come in front
    // of it when the user returns from another program.
    const bool keepsAbove = IsWindowVisible(Application().Handle()) || !hasShownForm;
    return keepsAbove ? Application().Handle() : Application().ActiveFormHandle();
}

bool TKxCustomFolderDialog::Browse(HWND owner) {
    const TRun run(*this);
    const TApartment apartment(TApartmentKind::Ole); // it makes a window; hooks that hear of it may free the dialog
    if (!run.IsDialogAlive()) {
        return false;
    }
    const unique_pidl root = RootPidl();
    const std::string title = Fitting(FTitle, 128);
    std::array<char, MAX_PATH + 1> displayName{}; // ends in a zero whatever the system writes
    BROWSEINFOA info{};
    info.hwndOwner = owner;
    info.pidlRoot = root.get();
    info.pszDisplayName = displayName.data();
    info.lpszTitle = title.c_str();
    info.ulFlags = BrowseFlags();
    if (apartment.IsOtherKind() && !System().Wine) {
        info.ulFlags &= ~static_cast<UINT>(BIF_NEWDIALOGSTYLE); // whose tree needs OLE: its folders would not open
    }
    info.lpfn = BrowseCallBack;
    info.lParam = reinterpret_cast<LPARAM>(this);
    unique_pidl result(std::bit_cast<ITEMIDLIST*>(SHBrowseForFolderA(&info)));
    if (!run.IsDialogAlive()) {
        return false;
    }
    FPidl = std::move(result);
    if (!FPidl) {
        return false;
    }
    FFolder = GetPathFromPIDL(FPidl.get());
    FDispName = DisplayNameOf(FPidl.get(), displayName.data());
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
    FSelFolder.clear();
    FSelPidl.reset();
    FInitializing = false;
    FSelectAgain = nullptr;
    LeaveWindow(); // the application may have kept WM_DESTROY from the dialog
}

// --- Notifications of the browser

namespace {

/// What the dialog posts to the browser, so that it is done once the browser is through with its notification.
enum TLater : WPARAM { ltEnableOk, ltSelectAgain };

/// WParam is a TLater, LParam the number of the selection at the time of posting.
UINT LaterMessage() {
    static const UINT message = RegisterWindowMessageW(L"kx.TKxCustomFolderDialog.Later");
    return message;
}

} // namespace

int CALLBACK TKxCustomFolderDialog::BrowseCallBack(HWND window, UINT code, LPARAM param, LPARAM data) noexcept {
    // Deliberate: the dialog is the innermost running one, where one would expect the one in `data`.
    if (TKxCustomFolderDialog* const dialog = Running()) {
        Guarded([&] {
            if (code == BFFM_INITIALIZED) {
                dialog->FDlgHandle = window;
            }
            dialog->BrowseProc({code, static_cast<WPARAM>(param), data, 0});
        });
    } else if (code == BFFM_INITIALIZED) { // the dialog was freed before there was a window to close
        PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    }
    return 0;
}

void TKxCustomFolderDialog::BrowseProc(const TMessage& message) {
    switch (message.Msg) {
    case BFFM_INITIALIZED: Initialized(); break;
    case BFFM_SELCHANGED: SelChanged(reinterpret_cast<const ITEMIDLIST*>(message.WParam)); break;
    default: break;
    }
}

void TKxCustomFolderDialog::Initialized() {
    const TAlive alive(*this);
    FInitializing = true;
    AttachHandle(FDlgHandle);
    AttachDialog(FDlgHandle);
    // The application hears of all this and may free the dialog.
    if (!Title().empty()) {
        SetWindowTextA(FDlgHandle, Fitting(Title(), 255).c_str());
    }
    if (alive) {
        FExOptions.IsEmpty() ? DockForms() : FParams.SetIcon2(FDlgHandle);
    }
    using T = TKxCustomFolderDialog;
    if (alive && RunSteps<T>(*this, {&T::RecallSize, &T::RecallFolder})) {
        DialogShown();
    }
    if (alive && !FStatus.empty()) {
        SetStatus(std::string(FStatus));
    }
    if (alive) {
        FInitializing = false;
        if (FSelectAgain) {
            PostMessageW(FDlgHandle, LaterMessage(), ltSelectAgain, FSelection);
        }
    }
}

namespace {

bool IsSizeable(HWND window) { return (GetWindowLongA(window, GWL_STYLE) & WS_THICKFRAME) != 0; }

/// The folder lies below `root`, or is it.
bool LiesBelow(const std::string& folder, const std::string& root) {
    const std::string base = IncludeTrailingPathDelimiter(root);
    const std::string path = IncludeTrailingPathDelimiter(folder);
    return path.size() >= base.size() && SameText(path.substr(0, base.size()), base);
}

} // namespace

void TKxCustomFolderDialog::RecallSize() {
    if (FMemory.Size && IsSizeable(FDlgHandle)) {
        const TPoint size = KxFitSize(FDlgHandle, *FMemory.Size);
        ResizeWindow(FDlgHandle, size.X, size.Y);
    }
}

void TKxCustomFolderDialog::RecallFolder() {
    const std::string folder = FMemory.ExistingFolder();
    const bool isInTree = FSpecIniFolder == ftNone && (FIniFolder.empty() || LiesBelow(folder, FIniFolder));
    if (!folder.empty() && isInTree) {
        SetSelFolder(folder);
    }
}

void TKxCustomFolderDialog::RememberSize() {
    // The application may have vetoed the message that tells the window's end.
    if (IsWindow(FDlgHandle) && IsSizeable(FDlgHandle)) {
        const TRect outer = KxWindowRect(FDlgHandle);
        FMemory.Size = TPoint{Width(outer), Height(outer)};
    }
}

/// Windows makes a selection that it is told in BFFM_INITIALIZED, but goes on building the tree afterwards and scrolls
/// the selection out of sight.
void TKxCustomFolderDialog::SelectAgain() {
    const std::function<void()> select = std::exchange(FSelectAgain, nullptr);
    if (!select || !Outlives(*this, select)) {
        return;
    }
    if (HWND tree = FindTree()) {
        const LRESULT item = SendMessageW(tree, TVM_GETNEXTITEM, TVGN_CARET, 0);
        SendMessageW(tree, TVM_ENSUREVISIBLE, 0, item);
    }
}

void TKxCustomFolderDialog::SelChanged(const ITEMIDLIST* selection) {
    ++FSelection;
    FSelPidl = CreatePIDLCopy(selection);
    FSelFolder = GetPathFromPIDL(selection);
    FOkGiven = false;
    if (!Outlives(*this, [this] { Guarded([this] { DoSelectionChange(); }); })) {
        return;
    }
    if (FOkGiven && FDlgHandle && System().Wine) {
        // Wine enables the button by rules of its own after this notification. What the event said is posted, so that
        // it comes later.
        PostMessageW(FDlgHandle, LaterMessage(), ltEnableOk, FSelection);
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
    const TStillThere there(*this);
    Guarded([this] { TCommonDialog::DoClose(); });
    if (there) {
        LeaveWindow();
    }
}

/// Gives the browser's window back to the system and takes the forms out of it. Their handlers may free the dialog.
void TKxCustomFolderDialog::LeaveWindow() {
    if (FDlgHandle) {
        RememberSize();
        DetachDialog();
        FParams.DisconnectForms();
    }
}

TKxMsgVerdict TKxCustomFolderDialog::BeforeSystem(TMessage& message, int&) {
    if (message.Msg == WM_CONTEXTMENU) {
        bool allow = true;
        TKxCustDlgParams::TrackContextMenus(allow, message);
        return allow ? mvPass : mvStop;
    }
    if (message.Msg == WM_COMMAND && message.WParamLo() == IDOK) {
        return DoCanClose() ? mvPass : mvStop;
    }
    if (message.Msg == LaterMessage()) {
        if (message.WParam == ltSelectAgain) {
            SelectAgain();
        } else if (message.LParam == FSelection) { // else the event of a later selection has decided
            TellOk();
        }
        return mvStop;
    }
    return mvPass; // WM_DESTROY comes to DoClose by way of the framework's dialog
}

void TKxCustomFolderDialog::AfterSystem(TMessage& message, int) {
    if (message.Msg == WM_SIZE) {
        FollowTree();
    }
}

bool TKxCustomFolderDialog::DoCanClose() {
    bool canClose = true;
    FOnCanClose(this, canClose);
    return canClose;
}

} // namespace kx
