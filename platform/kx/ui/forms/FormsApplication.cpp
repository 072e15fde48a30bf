// SPDX-License-Identifier: MIT
// The application: its forms, its message loop, and its last resort for exceptions.

#include "kx/ui/forms/Forms.h"

#include "kx/core/Barrier.h"
#include "kx/core/FormText.h"
#include "kx/core/Lasting.h"
#include "kx/ui/controls/ControlHost.h"
#include "kx/ui/controls/MessageFrames.h"
#include "kx/ui/forms/FormsThreads.h"
#include "kx/ui/forms/HintTip.h"
#include "kx/win/Module.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <climits>

namespace kx {

namespace {

TApplication* TheApplication = nullptr;

constexpr UINT WM_RUNQUEUE = WM_APP + 1;
constexpr wchar_t ClassNameOfWindow[] = L"TApplication";

std::string Convert(std::string_view text, UINT from, UINT to) {
    if (text.empty() || GetACP() == CP_UTF8) {
        return std::string(text);
    }
    const int size = static_cast<int>(text.size());
    std::wstring wide(static_cast<size_t>(MultiByteToWideChar(from, 0, text.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(from, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
    const int wideSize = static_cast<int>(wide.size());
    std::string result(
        static_cast<size_t>(WideCharToMultiByte(to, 0, wide.data(), wideSize, nullptr, 0, nullptr, nullptr)), '\0');
    WideCharToMultiByte(to, 0, wide.data(), wideSize, result.data(), static_cast<int>(result.size()), nullptr, nullptr);
    return result;
}

/// What the portable layer has to know of the process's code page.
void InstallCodePage() {
    for (unsigned c = 0x80; c <= 0xFF; ++c) {
        SetLeadByte(static_cast<unsigned char>(c), IsDBCSLeadByte(static_cast<BYTE>(c)) != 0);
    }
    SetCodePageIsUtf8(GetACP() == CP_UTF8);
    SetFormTextCodec([](std::string_view utf8) { return Convert(utf8, CP_UTF8, CP_ACP); },
                     [](std::string_view ansi) { return Convert(ansi, CP_ACP, CP_UTF8); });
}

} // namespace

/// The application and the screen as controls see them. Most members make the application when there is none yet; those
/// that tell of an end do not.
class TFormsHost final : public IControlHost {
public:
    void ControlGone(const TControl& control) override {
        if (TheApplication) {
            TheApplication->ControlGone(control);
        }
    }
    void MouseOver(TControl* control, const TPoint& screenPoint) override {
        Application().MouseOver(control, screenPoint);
    }
    void HideHint() override { Application().EndHint(); }
    void CancelHint() override { Application().CancelHint(); }
    void MenuItemSelected(const std::string& hint) override {
        if (TheApplication) {
            TheApplication->SetHint(GetLongHint(hint));
        }
    }
    TCursor Cursor() const override { return Screen().Cursor(); }
    HCURSOR Cursors(TCursor cursor) const override { return Screen().Cursors(cursor); }
    void MessageDone(int frames) override {
        if (TheApplication && !TheApplication->FReleased.empty()) {
            TheApplication->MessageDone(frames);
        }
    }
};

namespace {

/// Installed when the program starts: an exception or a control's message may come before the application's first use.
const bool Installed = [] {
    static constinit TFormsHost host;
    SetControlHost(host);
    SetExceptionSink([] { Application().HandleException(nullptr); });
    SetLastingEnds(IsInLibrary()); // nobody uses it yet
    return true;
}();

} // namespace

TApplication& Application() {
    if (IsInLibrary()) {
        return LibraryApplication();
    }
    static TApplication application;
    return application;
}

/// Work for the message loop, queued by any thread.
struct TApplication::TQueue {
    SRWLOCK Lock = SRWLOCK_INIT;
    std::vector<std::function<void()>> Calls;
};

const TClass& TApplication::StaticClass() {
    static const TClassBuilder<TApplication> cls("TApplication", TComponent::StaticClass());
    return cls.Class();
}

TApplication* TApplication::Existing() { return TheApplication; }

TApplication::TApplication()
    : FQueue(std::make_unique<TQueue>()), FThreadId(GetCurrentThreadId()), FHintTip(std::make_unique<THintTip>()) {
    TheApplication = this;
    SetLastingEnds(false);
    AcceptSynchronized();
    InstallCodePage();
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_USEREX_CLASSES | ICC_PAGESCROLLER_CLASS};
    InitCommonControlsEx(&controls);

    WNDCLASSW info{};
    info.lpfnWndProc = WindowProc;
    info.hInstance = HInstance();
    info.lpszClassName = ClassNameOfWindow;
    RegisterClassW(&info);
    FHandle = CreateWindowExW(0, info.lpszClassName, L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, HInstance(), nullptr);
    if (!FHandle) {
        RaiseLastOSError();
    }
    for (const HINSTANCE module : {HInstance(), static_cast<HINSTANCE>(GetModuleHandleA(nullptr))}) {
        if (const HICON icon = FIcon.Empty() ? LoadIconA(module, "MAINICON") : nullptr) {
            FIcon.SetHandle(CopyIcon(icon));
        }
    }
}

TApplication::~TApplication() {
    EndThreads();
    Destroying();
    CancelHint();
    DestroyComponents(); // this may end threads of dialogs
    RefuseSynchronized();
    if (FHelpOpened) {
        WinHelpA(FHandle, FHelpFile.c_str(), HELP_QUIT, 0);
    }
    TheApplication = nullptr;
    DestroyWindow(FHandle);
    FHandle = nullptr;
    UnregisterClassW(ClassNameOfWindow, HInstance());
}

HWND TApplication::Handle() { return FHandle; }

std::string TApplication::ExeName() const {
    std::wstring path(0x8000, L'\0'); // as long as a path can be
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return FromWide(path);
}

std::string TApplication::Title() const {
    return FTitle.empty() ? ChangeFileExt(ExtractFileName(ExeName()), "") : FTitle;
}

void TApplication::SetBiDiMode(TBiDiMode value) {
    FBiDiMode = value;
    const std::vector<TCustomForm*> forms = Screen().FForms;
    for (TCustomForm* form : forms) {
        const auto& there = Screen().FForms; // the change of a form may end others
        if (std::find(there.begin(), there.end(), form) != there.end()) {
            form->FollowApplication();
        }
    }
}

void TApplication::Notification(TComponent* component, TOperation operation) {
    TComponent::Notification(component, operation);
    if (operation == opRemove && component == FMainForm) {
        FMainForm = nullptr;
    }
}

void TApplication::FormCreated(TCustomForm& form) {
    if (!FMainForm) {
        FMainForm = &form;
        form.FreeNotification(this);
    }
    form.AfterConstruction();
}

HWND TApplication::ActiveFormHandle() {
    const HWND active = GetActiveWindow();
    if (active && active != FHandle && IsWindowVisible(active)) {
        return active; // it may be a dialog of the system
    }
    if (!InOwnThread()) {
        return FHandle;
    }
    return FMainForm && FMainForm->HandleAllocated() ? FMainForm->WindowHandle() : FHandle;
}

int TApplication::MessageBox(const std::string& text, const std::string& caption, UINT flags) {
    const HWND owner = ActiveFormHandle();
    const HWND focus = ::GetFocus();
    CancelHint();
    ModalStarted();
    // The owner is left to the system, which enables it before the box goes: else some other program's window would
    // become the active one. Only a box that was destroyed instead of ended leaves its owner disabled.
    const bool ownerEnabled = IsWindowEnabled(owner) != 0;
    const TTaskWindowList disabled = DisableTaskWindows(owner);
    const int result = ::MessageBoxA(owner, text.c_str(), caption.c_str(), flags);
    EnableTaskWindows(disabled);
    if (ownerEnabled) {
        EnableWindow(owner, TRUE);
    }
    SetActiveWindow(owner);
    if (focus && IsWindow(focus) && IsWindowEnabled(focus)) {
        ::SetFocus(focus);
    }
    ModalFinished();
    return result;
}

bool TApplication::InOwnThread() const { return GetCurrentThreadId() == FThreadId; }

bool TApplication::HelpContext(int context) { return HelpCommand(HELP_CONTEXT, context); }

bool TApplication::HelpKeyword(const std::string& keyword) {
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): a handler may end the owner of the keyword
    const std::string text = keyword;
    return HelpCommand(HELP_KEY, reinterpret_cast<LPARAM>(text.c_str()));
}

bool TApplication::HelpCommand(uint16_t command, LPARAM data) {
    bool callHelp = true;
    FOnHelp(command, data, callHelp);
    if (!callHelp) {
        return true;
    }
    if (FHelpFile.empty() || !WinHelpA(FHandle, FHelpFile.c_str(), command, static_cast<ULONG_PTR>(data))) {
        return false;
    }
    FHelpOpened = true;
    return true;
}

// --- Exceptions

void TApplication::HandleException(TObject* sender) {
    if (!std::current_exception()) {
        return;
    }
    // A control of the framework loses the mouse capture. A button of a system dialog keeps it, or its click would be
    // lost: where a hook of the dialog fails at each message, nobody could leave the dialog any more.
    if (const HWND capture = GetCapture(); capture && FindControl(capture)) {
        SendMessageW(capture, WM_CANCELMODE, 0, 0);
    }
    const auto tell = [&](const std::exception& e) {
        bool told = false;
        Synchronize([&] {
            told = static_cast<bool>(FOnException);
            FOnException(sender, e);
        });
        if (!told) {
            ShowException(e);
        }
    };
    try {
        throw;
    } catch (const EAbort&) {
        // EAbort ends an operation silently.
    } catch (const std::exception& e) {
        tell(e);
    } catch (...) {
        tell(Exception("Unknown exception"));
    }
}

void TApplication::ShowException(const std::exception& e) { MessageBox(e.what(), Title(), MB_OK | MB_ICONSTOP); }

// --- Message loop

void TApplication::Run() {
    FTerminated = false;
    const TFieldScope running(*this, FRunLevel, FRunLevel + 1);
    if (FMainForm) {
        FMainForm->SetVisible(true);
    }
    while (!FTerminated) {
        Guarded([this] { HandleMessage(); });
    }
    EndThreads();
}

void TApplication::Terminate() {
    if (InOwnThread()) {
        PostQuitMessage(0);
    } else {
        QueueCall([] { PostQuitMessage(0); });
    }
}

void TApplication::ProcessMessages() {
    MSG message;
    while (ProcessMessage(message)) {
    }
    PassQuitOn();
}

void TApplication::HandleMessage() {
    MSG message;
    if (!ProcessMessage(message)) {
        Idle();
    }
}

bool TApplication::ProcessMessage(MSG& message) {
    if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        return false;
    }
    if (message.message == WM_QUIT) {
        if (InOwnThread()) {
            FTerminated = true;
            FQuitCode = static_cast<int>(message.wParam);
            FPassesQuitOn = FRunLevel == 0;
        }
        return false;
    }
    const detail::TMessageFrame frame;
    const bool handled = OfferMessage(message);
    if (!handled && message.hwnd == FHandle && message.message == WM_RUNQUEUE) {
        Guarded([this] { RunQueue(detail::TMessageFrame::Depth() - 1); }); // this message has released no form
    } else if (!handled) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return true;
}

bool TApplication::PreTranslateMessage(MSG& message) {
    const detail::TMessageFrame frame;
    return OfferMessage(message);
}

/// True: it is done.
bool TApplication::OfferMessage(MSG& message) {
    bool handled = false;
    if (InOwnThread()) {
        Guarded([&] { FOnMessage(message, handled); });
    }
    if (!handled) {
        Guarded([&] { handled = PreTranslate(message); });
    }
    return handled;
}

/// A loop of the framework has got the message that ends the program, and ends. Without Run a loop of the program's own
/// waits for it.
void TApplication::PassQuitOn() {
    if (InOwnThread() && std::exchange(FPassesQuitOn, false)) {
        FTerminated = false;
        PostQuitMessage(FQuitCode);
    }
}

bool TApplication::PreTranslate(MSG& message) {
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) {
        return false;
    }
    for (HWND window = message.hwnd; window; window = GetAncestor(window, GA_PARENT)) {
        if (TWinControl* const control = FindControl(window)) {
            return control->PreTranslate(message);
        }
    }
    return false;
}

void TApplication::Idle() {
    bool done = true;
    if (InOwnThread()) {
        Guarded([&] { DoIdle(done); });
    }
    if (done && !FTerminated) {
        WaitMessage();
    }
}

void TApplication::DoIdle(bool& done) { FOnIdle(this, done); }

// --- Hidden window

LRESULT CALLBACK TApplication::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return Guarded(LRESULT{0}, [&] {
        TApplication* const application = TheApplication;
        return application ? application->WndProc(window, message, wParam, lParam)
                           : DefWindowProcW(window, message, wParam, lParam);
    });
}

LRESULT TApplication::WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_RUNQUEUE: RunQueue(detail::TMessageFrame::Depth()); return 0; // from a loop that is not the framework's
    case WM_RUNSYNCHRONIZED: RunSynchronized(); return 0;
    case WM_TIMER:
        if (wParam == HintTimerId) {
            HintTimer();
        }
        return 0;
    case WM_ACTIVATEAPP:
        if (wParam) {
            FOnActivate(this);
        } else {
            CancelHint();
            FOnDeactivate(this);
        }
        return 0;
    case WM_SYSCOLORCHANGE:
    case WM_SETTINGCHANGE: TellDockedControls(message, wParam, lParam); return 0;
    case WM_ENDSESSION:
        if (wParam) {
            Terminate();
        }
        return 0;
    default: return DefWindowProcW(window, message, wParam, lParam);
    }
}

void TApplication::QueueCall(std::function<void()> work) {
    AcquireSRWLockExclusive(&FQueue->Lock);
    FQueue->Calls.push_back(std::move(work));
    ReleaseSRWLockExclusive(&FQueue->Lock);
    PostMessageW(FHandle, WM_RUNQUEUE, 0, 0);
}

void TApplication::ReleaseLater(TCustomForm& form) {
    const auto isForm = [&](const TReleased& released) { return released.Form == &form; };
    if (std::none_of(FReleased.begin(), FReleased.end(), isForm)) {
        const int frames = InOwnThread() ? std::max(detail::TMessageFrame::Depth(), 1) : INT_MAX;
        FReleased.push_back({&form, frames});
        PostMessageW(FHandle, WM_RUNQUEUE, 0, 0);
    }
}

/// A message has been handled; `frames` are still under way.
void TApplication::MessageDone(int frames) {
    const auto waited = [=](const TReleased& released) { return released.Frames == frames + 1; };
    if (InOwnThread() && std::any_of(FReleased.begin(), FReleased.end(), waited)) {
        PostMessageW(FHandle, WM_RUNQUEUE, 0, 0);
    }
}

/// `frames` messages are being handled around this one. A form that was released in one of them stays until that
/// message is done.
void TApplication::RunQueue(int frames) {
    const auto isDone = [=](const TReleased& released) { return released.Frames > frames; };
    for (;;) {
        const auto done = std::find_if(FReleased.begin(), FReleased.end(), isDone);
        if (done == FReleased.end()) {
            break;
        }
        TCustomForm* const form = done->Form;
        FReleased.erase(done);
        form->Free();
    }
    AcquireSRWLockExclusive(&FQueue->Lock);
    const auto calls = std::exchange(FQueue->Calls, {});
    ReleaseSRWLockExclusive(&FQueue->Lock);
    for (const auto& call : calls) {
        Guarded(call);
    }
}

/// A control goes: nothing may refer to it any more.
void TApplication::ControlGone(const TControl& control) {
    if (!InOwnThread()) {
        return; // nothing refers to it
    }
    std::erase_if(FReleased, [&](const TReleased& released) { return released.Form == &control; });
    if (Screen().FActiveControl == &control) {
        Screen().FActiveControl = nullptr;
    }
    if (FHintControl == &control) {
        FHintControl = nullptr;
        CancelHint();
    }
}

} // namespace kx
