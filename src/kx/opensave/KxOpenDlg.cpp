// SPDX-License-Identifier: MIT
// The full open dialog: its run, the order of its steps, and the system's answers.

#include "kx/opensave/KxOpenDlg.h"

#include "kx/core/Barrier.h"
#include "kx/frame/KxWhileAlive.h"
#include "kx/opensave/KxFileDlgPublish.h"
#include "kx/opensave/KxNativePlacesBar.h"
#include "kx/win/Dpi.h"
#include "kx/win/FileStreams.h"
#include "kx/win/System.h"
#include "kx/win/Windows.h"

#include <commdlg.h>
#include <shlobj.h>

namespace kx {

template class TKxRunning<TKxCustomOpenDialog>;

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
        PublishMemory(c);
    });
    return cls.Class();
}

// --- Life

TKxCustomOpenDialog::TKxCustomOpenDialog(TComponent* owner)
    : TOpenDialog(owner), TKxFileDlgCore(static_cast<TOpenDialog&>(*this)), FExtFilter(this),
      FList(*this, *this, FExtFilter), FPlaces(*this, *this), FToolBars(*this), FOkButton(*this) {
    SetOptionsEx({ofExNoPlacesBar});
    FPlaces.Options().SetDlg(this);
}

TKxCustomOpenDialog::~TKxCustomOpenDialog() {
    CloseShown();
    // DoClose has left these out when one of its handlers freed the dialog.
    using T = TKxCustomOpenDialog;
    RunSteps<T>(*this, {&T::FreePlacesBar, &T::FreeOkButton, &T::ReturnToolBar});
}

TKxCustomOpenDialog* TKxCustomOpenDialog::CreationControl() { return TRunning::Dialog(); }

// --- Running

bool TKxCustomOpenDialog::ExecuteWith(TWrapper* wrapper) {
    return RunRemembering([this, wrapper] {
        return DoExecute([this, wrapper](OPENFILENAMEA& record) {
            const TRunning running = PrepareExecution(); // the system may have to show the dialog more than once
            return wrapper(record);
        });
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
        RunSteps<T>(*this, {&T::MeasureDialog, &T::MakeRoomForPlaces, &T::CreatePlacesBar, &T::TakeToolBar,
                            &T::DockForms, &T::MeasureList, &T::ShowVisibleCtrls, &T::InstallHooks, &T::TakeFirstList,
                            &T::RecallLook, &T::FireShow});
    }
}

/// Notes the outer size that the dialog, without what is added to it, is going to have.
void TKxCustomOpenDialog::MeasureDialog() {
    const TRect outer = KxWindowRect(DlgHandle());
    if (IsSizeable() && CX != 0) {
        return; // as the user left it
    }
    const bool roomy = IsSizeable() && ShowCustomPlacesBar();
    CX = CheckedAdd(Width(outer), roomy ? SystemLength(40) : 0);
    CY = CheckedAdd(Height(outer), roomy ? SystemLength(70) : 0);
}

/// The list shows as the user left it, unless the application sets something else in OnShow.
void TKxCustomOpenDialog::RecallLook() {
    if (!Memory().IsOn()) {
        return;
    }
    TKxFileListLook look;
    look.Columns = Memory().Columns;
    if (Memory().ViewStyle.value_or(lvsTile + 1) <= lvsTile) {
        look.Style = static_cast<TKxListViewStyle>(*Memory().ViewStyle);
    }
    FList.SetLook(look);
}

void TKxCustomOpenDialog::Remember() {
    const TKxFileListLook look = FList.Look();
    if (look.Style) {
        Memory().ViewStyle = *look.Style;
    }
    Memory().Columns = look.Columns;
}

void TKxCustomOpenDialog::DoClose() {
    FList.Stop();
    using T = TKxCustomOpenDialog;
    // The places are saved first: the other steps tell the application, which may free the dialog. There is a bar to
    // free when the application has kept WM_DESTROY from the dialog.
    RunSteps<T>(*this, {&T::SavePlaces, &T::LeaveAtLast, &T::FreePlacesBar, &T::FreeOkButton, &T::ReturnToolBar,
                        &T::DetachDialog, &T::StopWatching, &T::FireInheritedClose, &T::ForgetList});
}

void TKxCustomOpenDialog::StopWatching() {
    FGlobals = {};
    TRunning::Finish(*this);
}

void TKxCustomOpenDialog::FireInheritedClose() { TOpenDialog::DoClose(); }

void TKxCustomOpenDialog::ForgetList() {
    FList.Forget();
    FToolBars.Forget();
}

// --- Hooks. They get no object and find the dialog that runs.

void TKxCustomOpenDialog::InstallHooks() {
    const DWORD thread = GetCurrentThreadId();
    FGlobals.g_KeybHook.reset(SetWindowsHookExA(WH_KEYBOARD, NewKeybHook, HInstance(), thread));
    // Wine's shell does not ask for the selection when it has filled its list, so that watching would be of no use. And
    // a watched message takes Wine a hundred times as long.
    FGlobals.g_WndHook.reset(System().Wine ? nullptr
                                           : SetWindowsHookExA(WH_CALLWNDPROCRET, NewWndHook, HInstance(), thread));
}

LRESULT CALLBACK TKxCustomOpenDialog::NewKeybHook(int code, WPARAM key, LPARAM flags) {
    const TKxCustomOpenDialog* const dialog = CreationControl();
    if (code >= 0 && dialog && dialog->FList.SwallowsKey(key)) {
        return 1;
    }
    return CallNextHookEx(nullptr, code, key, flags);
}

LRESULT CALLBACK TKxCustomOpenDialog::NewWndHook(int code, WPARAM wParam, LPARAM lParam) {
    if (code < 0) {
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }
    if (TKxCustomOpenDialog* const dialog = CreationControl()) {
        Guarded([=] { dialog->FList.MessageHandled(*reinterpret_cast<const CWPRETSTRUCT*>(lParam)); });
    }
    return 0; // Deliberate: the next hook is not called, where one would expect it to be.
}

// --- Answers of the system

void TKxCustomOpenDialog::DoFolderChange() {
    if (Outlives(Existence(), [this] { TOpenDialog::DoFolderChange(); }) && DlgHandle()) {
        using T = TKxCustomOpenDialog;
        RunSteps<T>(*this, {&T::ShowFolderInPlaces, &T::ShowSelectionAgain, &T::ListMayBeFilled,
                            &T::PostRefreshListViewStyles});
    }
}

/// The shell shows the list of the new folder, even where the custom form stood in place of the old one.
void TKxCustomOpenDialog::ShowSelectionAgain() {
    if (FPlaced) {
        RefreshSelCtrl();
    }
}

/// The shell is about to read the folder again.
void TKxCustomOpenDialog::DoTypeChange() {
    FList.FillingBegins();
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
        result = OFN_SHARENOWARN; // the dialog has been freed: the system need not speak of a file that nobody opens
    }
    message.Result = result;
    return result != -1;
}

void TKxCustomOpenDialog::ForgetShareViolation() {
    FShareAsked = false;
    FShareAnswer.reset();
}

/// Windows asks twice about a file for which it has reported a share violation. The application is asked once.
bool TKxCustomOpenDialog::DoCanClose() {
    if (const std::optional<bool> answer = std::exchange(FShareAnswer, std::nullopt)) {
        return *answer;
    }
    if (!std::exchange(FShareAsked, false)) {
        return AllowsSharedFiles() && TOpenDialog::DoCanClose();
    }
    FShareAnswer = false; // stays the answer if the handler fails
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
    if (Outlives(Existence(), [&] { title = WindowText(dialog); })) {
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

// --- Visible controls

void TKxCustomOpenDialog::SetVisibleCtrls(TKxOpenDlgControls value) {
    if (Outlives(Existence(), [&] { TKxFileDlgCore::SetVisibleCtrls(value); })) {
        using T = TKxCustomOpenDialog;
        RunSteps<T>(*this, {&T::ShowOkButton, &T::RefreshSelCtrl});
    }
}

// --- What the user selects with

std::string TKxCustomOpenDialog::GetSelFiles() const {
    return FListType == stCustom ? Window().GetFNameText() : TKxFileDlgCore::GetSelFiles();
}

void TKxCustomOpenDialog::SetLstType(TKxDlgSelectionType value) {
    FListType = value;
    RefreshSelCtrl();
}

void TKxCustomOpenDialog::RefreshSelCtrl() {
    if (!DlgHandle()) {
        return;
    }
    const auto showStandard = [this] { ShowStdSelectionCtrls(ShowsFileList()); };
    const auto showCustom = [this] {
        ShowCustomSelectionCtrl(!ShowsFileList() && VisibleControls().Contains(dcSelectionCtrl));
    };
    ShowsFileList() ? KxWhileAlive(Existence(), showCustom, showStandard)
                    : KxWhileAlive(Existence(), showStandard, showCustom);
}

void TKxCustomOpenDialog::ShowStdSelectionCtrls(bool show) {
    const TRect& r = CustDlgParams().CustRect(); // its Right and Bottom are a width and a height
    Window().ShowFileList(show, r.Right, r.Bottom);
}

void TKxCustomOpenDialog::ShowCustomSelectionCtrl(bool show) {
    if (!show) {
        CustDlgParams().HideCustomForm();
        return;
    }
    KxInFormsThread([this] {
        TForm* const form = CustDlgParams().CustomForm();
        if (!form) {
            return;
        }
        HWND dialog = DlgHandle();
        const TRect r = CustDlgParams().CustRect();
        KxWhileAlive(
            {TAlive(*form), TAlive(Existence())}, [=] { form->SetParent(nullptr); },
            [=] { form->SetParentWindow(dialog); }, [=] { form->SetBounds(r.Left, r.Top, r.Right, r.Bottom); },
            [=] { form->SetVisible(true); }, [=] { form->Invalidate(); });
    });
}

void TKxCustomOpenDialog::RefreshFileList() {
    FList.FillingBegins();
    if (Outlives(Existence(), [this] { TKxFileDlgCore::RefreshFileList(); })) {
        FList.FilterNow(); // the caller finds the list filtered
    }
}

void TKxCustomOpenDialog::ListLookedAfter() {
    if (!ShowsFileList() && IsWindowVisible(FList.View())) {
        RefreshSelCtrl(); // some ways into a folder bring no notification
    }
}

// --- Messages of the dialog window

TKxMsgVerdict TKxCustomOpenDialog::BeforeSystem(TMessage& message, int& command) {
    switch (message.Msg) {
    case WM_SHOWWINDOW: ShowAsPlaced(); return mvPass;
    case WM_NCPAINT: WMNCPaint(); return mvPass;
    case WM_SIZE: WMSize(message); return mvPass;
    case WM_COMMAND:
        if (message.WParamLo() == IDOK) {
            ForgetShareViolation();
        }
        [[fallthrough]];
    default: return TKxFileDlgCore::BeforeSystem(message, command);
    }
}

void TKxCustomOpenDialog::AfterSystem(TMessage& message, int command) {
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
    default: TKxFileDlgCore::AfterSystem(message, command);
    }
}

void TKxCustomOpenDialog::LeaveWindow() {
    if (Outlives(Existence(), [this] { TKxFileDlgCore::LeaveWindow(); })) {
        FreePlacesBar();
    }
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
            KxInFormsThread([&] {
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
            return; // nobody sees the custom form: the application's thread need not be waited for
        }
        KxInFormsThread([&] {
            if (TForm* const custom = params.CustomForm()) {
                custom->Repaint();
            }
        });
    };
    KxWhileAlive(
        Existence(), growForm, [&] { params.OnResizeWindow(message); }, repaintForm);
}

/// Grows the custom form by as much as the dialog's client area grows to this size.
void TKxCustomOpenDialog::GrowCustomForm(int32_t width, int32_t height) {
    if (TForm* const custom = CustDlgParams().CustomForm()) {
        const TRect& before = CustDlgParams().ClientRect();
        custom->SetBounds(custom->Left(), custom->Top(), CheckedAdd(custom->Width(), CheckedSub(width, before.Right)),
                          CheckedAdd(custom->Height(), CheckedSub(height, before.Bottom)));
    }
}

} // namespace kx
