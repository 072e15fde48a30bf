// SPDX-License-Identifier: MIT
// What the system's dialogs have in common, and message boxes.

#include "kx/ui/dialogs/Dialogs.h"

#include "kx/win/Dpi.h"
#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <cfloat>

namespace kx {

namespace {

DWORD ThreadOf(HWND window) { return GetWindowThreadProcessId(window, nullptr); }

bool InApplicationThread() { return ThreadOf(Application().Handle()) == GetCurrentThreadId(); }

bool CanTakeFocus(HWND window) {
    return IsWindow(window) != 0 && IsWindowVisible(window) != 0 && IsWindowEnabled(window) != 0;
}

/// Keeps the system, for the length of a scope, from boxes of its own about drives without a medium, which the dialog
/// meets when it looks around.
class TQuietDrives {
public:
    TQuietDrives() { SetThreadErrorMode(GetThreadErrorMode() | SEM_FAILCRITICALERRORS, &FBefore); }
    TQuietDrives(const TQuietDrives&) = delete;
    TQuietDrives& operator=(const TQuietDrives&) = delete;
    ~TQuietDrives() { SetThreadErrorMode(FBefore, nullptr); }

private:
    DWORD FBefore = 0;
};

/// Restores the floating-point settings of the thread at the end of a scope: drivers and extensions of the shell, which
/// run inside the dialog, change them and leave them so.
class TKeptFloatingPoint {
public:
    TKeptFloatingPoint() = default;
    TKeptFloatingPoint(const TKeptFloatingPoint&) = delete;
    TKeptFloatingPoint& operator=(const TKeptFloatingPoint&) = delete;
    ~TKeptFloatingPoint() {
        _clearfp(); // an error that they have left would be raised by the old settings
        _control87(FBefore, Kept);
    }

private:
    // Only 32-bit programs can set the precision.
    static constexpr unsigned Kept = _MCW_EM | _MCW_RC | (sizeof(void*) == 4 ? _MCW_PC : 0);

    unsigned FBefore = _control87(0, 0);
};

/// The application waits for a system dialog: its windows are disabled, and get the focus back at the end.
class TModalScope {
public:
    explicit TModalScope(HWND owner)
        : FActive(GetActiveWindow()), FFocus(GetFocus()), FOwner(owner), FOwnerEnabled(IsWindowEnabled(owner) != 0),
          FInApplicationThread(InApplicationThread()), FDpi(owner) {
        if (FInApplicationThread) {
            Application().ModalStarted();
        }
        // The owner is left to the system: it enables the owner before it hides the dialog, so that the owner becomes
        // the active window and not some other program's.
        FDisabled = DisableTaskWindows(owner);
    }
    TModalScope(const TModalScope&) = delete;
    TModalScope& operator=(const TModalScope&) = delete;
    ~TModalScope() {
        EnableTaskWindows(FDisabled);
        // Any of the windows may have died with the dialog. One that was destroyed, not ended, left its owner disabled.
        // Not every system leaves an owner disabled that was so before.
        if (IsWindow(FOwner) != 0) {
            EnableWindow(FOwner, FOwnerEnabled);
        }
        if (FActive != GetActiveWindow() && CanTakeFocus(FActive)) {
            SetActiveWindow(FActive);
        }
        if (FFocus != GetFocus() && CanTakeFocus(FFocus) && GetAncestor(FFocus, GA_ROOT) == GetActiveWindow()) {
            SetFocus(FFocus);
        }
        if (FInApplicationThread) {
            Guarded([] { Application().ModalFinished(); });
        }
    }

private:
    HWND FActive;
    HWND FFocus;
    HWND FOwner;
    bool FOwnerEnabled; ///< Before the dialog.
    bool FInApplicationThread;
    TTaskWindowList FDisabled;
    TDpiScope FDpi; ///< The dialog, and what is docked in it, see the screen as the owner does.
    TQuietDrives FQuietDrives;
    TKeptFloatingPoint FFloatingPoint;
};

/// Signals an event at the end of a scope.
class TSignalAtEnd {
public:
    explicit TSignalAtEnd(std::shared_ptr<void> event) : FEvent(std::move(event)) {}
    TSignalAtEnd(const TSignalAtEnd&) = delete;
    TSignalAtEnd& operator=(const TSignalAtEnd&) = delete;
    ~TSignalAtEnd() { SetEvent(FEvent.get()); }

private:
    std::shared_ptr<void> FEvent;
};

BOOL CALLBACK FindOwned(HWND window, LPARAM data) {
    auto& search = *reinterpret_cast<std::pair<HWND, HWND>*>(data); // the owner, and what it owns
    if (GetWindow(window, GW_OWNER) == search.first) {
        search.second = window;
    }
    return search.second == nullptr;
}

/// Destroys the boxes and dialogs that a dialog of this thread has opened, as destroying the dialog would.
void DestroyOwnedWindows(HWND dialog) {
    std::pair<HWND, HWND> search(dialog, nullptr);
    do {
        search.second = nullptr;
        EnumThreadWindows(GetCurrentThreadId(), FindOwned, reinterpret_cast<LPARAM>(&search));
    } while (search.second && DestroyWindow(search.second));
}

/// Sent to `Handle` by another thread: the component goes.
UINT CloseMessage() {
    static const UINT message = RegisterWindowMessageW(L"kx.TCommonDialog.Close");
    return message;
}

/// Answers a dialog or a message box, of whatever thread, with the most harmless of its buttons.
void CancelDialog(HWND dialog) {
    for (const int id : {IDCANCEL, IDNO, IDABORT, IDOK}) {
        if (GetDlgItem(dialog, id)) {
            PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0);
            return;
        }
    }
}

} // namespace

const TClass& TCommonDialog::StaticClass() {
    static const TClassBuilder<TCommonDialog> cls("TCommonDialog", TComponent::StaticClass(), [](auto& c) {
        c.Property("OnClose", &TCommonDialog::OnClose, &TCommonDialog::SetOnClose);
        c.Property("OnShow", &TCommonDialog::OnShow, &TCommonDialog::SetOnShow);
    });
    return cls.Class();
}

TCommonDialog::TCommonDialog(TComponent* owner) : TComponent(owner) {
    FSubclass.SetHandler([this](TMessage& message) { HandleMessage(message); });
}

TCommonDialog::~TCommonDialog() {
    CloseShown();
    for (TDialogHold* hold : FHolds) {
        hold->FDialog = nullptr;
    }
}

void TCommonDialog::BeforeDestruction() {
    CloseShown();
    TComponent::BeforeDestruction();
}

HWND TCommonDialog::DialogWindow() const { return FHandle; }

void TCommonDialog::DoShow() { FOnShow(this); }
void TCommonDialog::DoClose() { FOnClose(this); }

bool TCommonDialog::MessageHook(TMessage&) { return false; }
void TCommonDialog::WndProc(TMessage& message) { DefaultHandler(message); }
void TCommonDialog::DefaultHandler(TMessage& message) { FSubclass.CallPrevious(message); }

void TCommonDialog::AttachHandle(HWND window) {
    FSubclass.Install(window);
    FHandle = window;
    FEnding = false;
}

void TCommonDialog::DialogShown() {
    FShown = true;
    if (IsHeldForThisThread() && IsWindow(FOwnerWindow)) {
        if (HWND owner = TopLevelOwner()) {
            SetWindowLongPtrA(DialogWindow(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
        }
    }
    DoShow();
}

void TCommonDialog::HandleMessage(TMessage& message) {
    if (message.Msg == CloseMessage()) {
        CloseFromInside(DialogWindow());
        return;
    }
    const TSubclass::TPrevious previous = FSubclass.Previous();
    const TStillThere there(*this); // CloseShown, which a destructor calls, waits for this message
    if (message.Msg == WM_DESTROY) {
        FEnding = true;
        if (std::exchange(FShown, false)) {
            Guarded([this] { DoClose(); });
            if (!there) { // a handler of OnClose has freed it
                message.Result = previous(message.Msg, message.WParam, message.LParam);
                return;
            }
        }
    } else if (message.Msg == WM_NCDESTROY) {
        FHandle = nullptr;
    }
    if (!MessageHook(message) && there) {
        WndProc(message);
    }
}

bool TCommonDialog::TaskModalDialog(HWND owner, const std::function<bool()>& dialogFunc) {
    if (FRunning) {
        throw EInvalidOperation("Dialog is already shown");
    }
    const std::shared_ptr<void> running(CreateEventA(nullptr, TRUE, FALSE, nullptr), CloseHandle);
    const TSignalAtEnd signal(running);
    const TAlive alive(*this);
    bool result = false;
    FRunning = running;
    try {
        const TModalScope modal(owner); // the application's windows hear of it, and may free the component
        result = alive && dialogFunc();
    } catch (...) {
        if (alive) {
            FRunning.reset();
        }
        throw;
    }
    if (!alive) {
        return false;
    }
    FRunning.reset();
    return result;
}

/// Null when no owner window is set.
HWND TCommonDialog::TopLevelOwner() const {
    if (!FOwnerWindow || FOwnerWindow == GetDesktopWindow()) { // which the system would disable for all programs
        return nullptr;
    }
    if (!IsWindow(FOwnerWindow)) {
        throw EInvalidOperation("The owner window of the dialog has been destroyed");
    }
    return GetAncestor(FOwnerWindow, GA_ROOT);
}

HWND TCommonDialog::SystemOwner() const {
    if (HWND owner = TopLevelOwner()) {
        // The system disables the window that it is given. One that stays usable becomes the owner when the dialog is
        // there.
        return IsHeldForThisThread() ? Application().Handle() : owner;
    }
    HWND active = GetActiveWindow();
    if (active) {
        return active;
    }
    return InApplicationThread() ? Application().ActiveFormHandle() : Application().Handle();
}

void TCommonDialog::CloseShown() {
    EndLife();
    while (const TDialogHold* const hold = HoldOfAnotherThread()) {
        if (Application().IsAwaitedBy(hold->FThreadId)) {
            break; // a handler of the dialog frees it
        }
        CloseFromOutside(std::shared_ptr<void>(hold->FOver));
    }
    HWND dialog = DialogWindow();
    if (!FRunning || !dialog || FEnding) {
        return; // a dialog without a window yet asks for its life when it gets one
    }
    const DWORD thread = ThreadOf(dialog);
    if (thread == GetCurrentThreadId()) {
        CloseFromInside(dialog);
    } else if (Application().IsAwaitedBy(thread)) {
        SendMessageW(FHandle, CloseMessage(), 0, 0); // the thread answers messages, but waits for this one
    } else {
        CloseFromOutside(std::shared_ptr<void>(FRunning));
    }
}

const TDialogHold* TCommonDialog::HoldOfAnotherThread() const {
    const auto hold = std::find_if(FHolds.begin(), FHolds.end(),
                                   [](const TDialogHold* h) { return h->FThreadId != GetCurrentThreadId(); });
    return hold == FHolds.end() ? nullptr : *hold;
}

bool TCommonDialog::IsHeldForThisThread() const {
    return std::any_of(FHolds.begin(), FHolds.end(),
                       [](const TDialogHold* hold) { return hold->FThreadId == GetCurrentThreadId(); });
}

/// Ends the dialog and lets go of it. The system may be in the middle of a message of its windows and needs them until
/// then: here they only vanish.
void TCommonDialog::CloseFromInside(HWND dialog) {
    FEnding = true;
    if (std::exchange(FShown, false)) {
        Guarded([this] { DoClose(); });
    }
    FSubclass.Uninstall();
    FHandle = nullptr;
    SendMessageW(dialog, WM_CANCELMODE, 0, 0); // a menu or a drag of its own
    DestroyOwnedWindows(dialog);
    EndSystemDialog(dialog);
    // The message loops of the destroyed windows notice that they are over when a message wakes them.
    PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
}

void TCommonDialog::EndSystemDialog(HWND dialog) { EndDialog(dialog, 0); }

/// Cancels the box that the dialog has opened, else the dialog itself unless it is going anyway: Wine 10 loses its way
/// among the controls of a window that another thread destroys.
void TCommonDialog::CancelShown() const {
    HWND dialog = DialogWindow();
    HWND box = GetLastActivePopup(dialog);
    if (box != dialog || !FEnding) {
        CancelDialog(box);
    }
}

/// Cancels the dialog, which runs in another thread, and handles messages until `over` is signalled: that thread may
/// need them handled in order to end.
void TCommonDialog::CloseFromOutside(const std::shared_ptr<void>& over) const {
    constexpr DWORD patience = 100; // milliseconds until the next box, if one is open, is answered
    HANDLE event = over.get();
    DWORD state = WAIT_TIMEOUT;
    while (state != WAIT_OBJECT_0) {
        if (state == WAIT_TIMEOUT) {
            CancelShown();
        } else {
            Application().ProcessMessages();
        }
        state = MsgWaitForMultipleObjects(1, &event, FALSE, patience, QS_ALLINPUT);
    }
}

// --- TDialogHold

TDialogHold::TDialogHold(TCommonDialog& dialog, DWORD threadId)
    : FDialog(&dialog), FThreadId(threadId), FOver(CreateEventA(nullptr, TRUE, FALSE, nullptr), CloseHandle) {
    dialog.FHolds.push_back(this);
}

TDialogHold::~TDialogHold() {
    if (FDialog) {
        std::erase(FDialog->FHolds, this);
    }
    SetEvent(FOver.get());
}

bool TDialogHold::IsWanted() const { return FDialog && TAlive(*FDialog); }

void TDialogHold::Cancel() const {
    if (FDialog) {
        FDialog->CancelShown();
    }
}

void ShowMessage(const std::string& text) { Application().MessageBox(text, Application().Title(), MB_OK); }

} // namespace kx
