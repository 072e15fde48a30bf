// SPDX-License-Identifier: MIT
// How a control's window is made, placed, moved to another parent, and lost.

#include "kx/ui/controls/Controls.h"

#include "kx/core/Barrier.h"
#include "kx/core/Lasting.h"
#include "kx/ui/controls/MessageFrames.h"
#include "kx/ui/controls/ParentForm.h"
#include "kx/ui/controls/WindowClasses.h"
#include "kx/win/Dpi.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <climits>
#include <unordered_map>
#include <utility>

namespace kx {

namespace {

/// The controls by their windows. Dialogs may run on other threads with controls of their own.
class TWindowMap {
public:
    void Add(HWND window, TWinControl* control) {
        AcquireSRWLockExclusive(&FLock);
        FControls[window] = control;
        ReleaseSRWLockExclusive(&FLock);
    }
    void Remove(HWND window) {
        AcquireSRWLockExclusive(&FLock);
        FControls.erase(window);
        ReleaseSRWLockExclusive(&FLock);
    }
    TWinControl* Find(HWND window) {
        AcquireSRWLockShared(&FLock);
        const auto found = FControls.find(window);
        TWinControl* const control = found == FControls.end() ? nullptr : found->second;
        ReleaseSRWLockShared(&FLock);
        return control;
    }
    std::vector<HWND> All() {
        std::vector<HWND> all;
        AcquireSRWLockShared(&FLock);
        for (const auto& [window, control] : FControls) {
            all.push_back(window);
        }
        ReleaseSRWLockShared(&FLock);
        return all;
    }

private:
    SRWLOCK FLock = SRWLOCK_INIT;
    std::unordered_map<HWND, TWinControl*> FControls;
};

TWindowMap& Windows() {
    static auto& map = Lasting<TWindowMap>(); // windows may outlive static objects
    return map;
}

/// The control whose window this thread is creating; its window finds it here in its first message.
thread_local TWinControl* CreatingControl = nullptr;

} // namespace

TWinControl* FindControl(HWND window) { return window ? Windows().Find(window) : nullptr; }

void TellDockedControls(UINT message, WPARAM wParam, LPARAM lParam) {
    for (const HWND window : Windows().All()) {
        const HWND parent = GetAncestor(window, GA_PARENT);
        if (parent && parent != GetDesktopWindow() && !FindControl(parent)) {
            // With a limit of time: the thread of a modeless dialog may be busy.
            SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, 1000, nullptr);
        }
    }
}

HMENU TWinControl::NextControlId() {
    static LONG counter = 0;
    return reinterpret_cast<HMENU>(static_cast<UINT_PTR>(0xC000 | (InterlockedIncrement(&counter) & 0x1FFF)));
}

// --- Making and losing the window

HWND TWinControl::Handle() {
    return Outlives(*this, [this] { HandleNeeded(); }) ? FHandle : nullptr;
}

void TWinControl::HandleNeeded() {
    if (FHandle) {
        return;
    }
    const TAlive alive(*this);
    if (Parent()) {
        Parent()->HandleNeeded();
    }
    if (alive && !FHandle) { // the parent has usually made it with its own
        MakeHandle();
    }
}

void TWinControl::MakeHandle() {
    const TAlive alive(*this);
    try {
        CreateHandle();
    } catch (const EControlGone&) {
        if (alive) {
            throw; // another control has gone
        }
    }
}

void TWinControl::CreateParams(TCreateParams& params) {
    params.Caption = TControl::Text();
    params.Style = WS_CHILD | WS_CLIPSIBLINGS;
    if (Visible()) {
        params.Style |= WS_VISIBLE;
    }
    if (!Enabled()) {
        params.Style |= WS_DISABLED;
    }
    if (FTabStop) {
        params.Style |= WS_TABSTOP;
    }
    if (ControlStyle().Contains(csAcceptsControls)) {
        params.Style |= WS_CLIPCHILDREN;
        params.ExStyle |= WS_EX_CONTROLPARENT;
    }
    params.ExStyle |= BiDiExStyle();
    if (FAcceptFiles) {
        params.ExStyle |= WS_EX_ACCEPTFILES;
    }
    params.X = Left();
    params.Y = Top();
    params.Width = Width();
    params.Height = Height();
    params.WndParent = Parent() ? Parent()->FHandle : FParentWindow;
}

void TWinControl::CreateHandle() {
    MustOutlive([this] { CreateWnd(); });
    MustOutlive([this] { CreateChildHandles(); });
}

void TWinControl::CreateChildHandles() {
    const TAlive alive(*this);
    // The system puts each new window behind the others. Made in this order, they need not be arranged.
    for (TWinControl* control : WindowOrder()) {
        if (alive && FHandle && std::find(FTabList.begin(), FTabList.end(), control) != FTabList.end() &&
            !control->FHandle) {
            control->MakeHandle();
        }
    }
    // Handlers of a new window may add controls, or end those that are there.
    for (size_t i = 0; alive && FHandle && i < FControls.size(); ++i) {
        if (auto* const control = dynamic_cast<TWinControl*>(FControls[i]); control && !control->FHandle) {
            control->MakeHandle();
        }
    }
    if (alive) {
        ArrangeWindows();
    }
}

void TWinControl::CreateWnd() {
    TCreateParams params;
    CreateParams(params);
    if (!params.WndParent && (params.Style & WS_CHILD)) {
        throw EInvalidOperation(Format("Control '%s' has no parent window", {Name()}));
    }
    if (!FThunk) {
        FThunk = std::make_unique<TThunk>(MainWndProc, this);
    }
    const detail::TWindowClass windowClass = detail::WindowClassFor(ClassName(), params, InitialWndProc);
    FSystemClass = !params.BaseClass.empty();
    FDefWndProc = windowClass.DefWndProc;

    HWND window = nullptr;
    DWORD error = 0;
    std::wstring caption = ToWide(params.Caption);
    // Not every system takes a text of any length along while it makes a window.
    const std::wstring longText = caption.size() > SHRT_MAX ? std::exchange(caption, {}) : std::wstring();
    TWinControl* const outer = std::exchange(CreatingControl, this);
    const TDpiScope dpi(params.WndParent);
    MustOutlive([&] { // the system sizes some of its controls while it makes them
        window = CreateWindowExW(params.ExStyle, windowClass.Name.c_str(), caption.c_str(), params.Style, params.X,
                                 params.Y, params.Width, params.Height, params.WndParent,
                                 params.Style & WS_CHILD ? NextControlId() : nullptr, HInstance(), nullptr);
        error = GetLastError();
        CreatingControl = outer;
    });
    if (!window) {
        RaiseLastOSError(error);
    }
    // A form that had its window before it came into a mirrored dialog keeps its layout; so do those that get it there.
    if (FParentWindow && (params.ExStyle & WS_EX_LAYOUTRTL) == 0 && IsMirrored(window)) {
        const auto style = static_cast<DWORD>(GetWindowLongA(window, GWL_EXSTYLE));
        SetWindowLongA(window, GWL_EXSTYLE, static_cast<LONG>(style & ~static_cast<DWORD>(WS_EX_LAYOUTRTL)));
    }
    MustOutlive([this] { TakeCues(); });
    if (!longText.empty()) {
        MustOutlive([&] { SetWindowTextW(FHandle, longText.c_str()); });
    }
    if (FSystemClass) {
        MustOutlive([this] { SendMessageW(FHandle, WM_SETFONT, reinterpret_cast<WPARAM>(Font().Handle()), FALSE); });
    }
}

/// First message of a new window: from here on its own procedure gets them.
LRESULT CALLBACK TWinControl::InitialWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    TWinControl* const control = std::exchange(CreatingControl, nullptr);
    if (!control) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    control->RegisterWindow(window);
    return MainWndProc(control, message, wParam, lParam);
}

void TWinControl::RegisterWindow(HWND window) {
    FHandle = window;
    Windows().Add(window, this);
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(FThunk->Procedure()));
}

LRESULT CALLBACK TWinControl::MainWndProc(void* self, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const control = static_cast<TWinControl*>(self);
    const detail::TMessageFrame frame;
    TMessage m{message, wParam, lParam, 0};
    if (message != WM_NCDESTROY) {
        return Guarded(LRESULT{0}, [&] {
            control->WndProc(m);
            return m.Result;
        });
    }
    const TStillThere there(*control); // a destructor that destroys the window waits for the end of this message
    Guarded([&] { control->WndProc(m); });
    if (there) {
        control->WindowDestroyed();
    }
    return m.Result;
}

void TWinControl::WindowDestroyed() {
    if (FHandle) {
        Windows().Remove(FHandle);
        FHandle = nullptr;
    }
    ForgetSystemCall();
    FLastOrder.clear(); // the windows inside are gone too
    FSystemLook.reset();
    FHiddenCues = 0;
    FIsMouseIn = false;
    FMouseControl = nullptr;
    if (!Parent() && !FDestroyingWindow) {
        FParentWindow = nullptr;
        WindowLost();
    }
}

void TWinControl::SaveWindowState() { TControl::SetText(Text()); }

void TWinControl::DestroyHandle() {
    if (!FHandle) {
        return;
    }
    const HWND window = FHandle;
    const TFieldScope destroying(*this, FDestroyingWindow, true);
    const TStillThere there(*this);
    if (GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId()) {
        LeaveBusyWindows();
        if (there && FHandle == window && FSystemCall) {
            LeaveWindow();
        } else {
            DestroyWindow(window);
        }
    }
    // Only the thread that has made a window can destroy it. Another thread lets go of it.
    if (there && FHandle == window) {
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(FDefWndProc));
        WindowDestroyed();
    }
}

void TWinControl::RecreateWnd() {
    if (!FHandle) {
        return;
    }
    const HWND focus = ::GetFocus();
    TWinControl* focused = nullptr; // a control may have the focus in a window of the system's inside its own
    if (focus == FHandle || IsChild(FHandle, focus)) {
        for (HWND window = focus; !focused; window = GetAncestor(window, GA_PARENT)) {
            focused = FindControl(window);
        }
    }
    const TAlive focusedAlive(focused);
    if (!Outlives(*this, [this] { DestroyHandle(); }) || !Outlives(*this, [this] { HandleNeeded(); })) {
        return;
    }
    if (Parent()) {
        Parent()->ArrangeWindows();
    }
    if (focused && focusedAlive && focused->FHandle) {
        ::SetFocus(focused->FHandle);
    }
}

void TWinControl::SetAcceptFiles(bool value) {
    FAcceptFiles = value;
    if (FHandle) {
        const LONG style = GetWindowLongA(FHandle, GWL_EXSTYLE);
        constexpr LONG bit = WS_EX_ACCEPTFILES;
        SetWindowLongA(FHandle, GWL_EXSTYLE, value ? style | bit : style & ~bit);
    }
}

void TWinControl::SetParentWindow(HWND value) {
    if (Parent() || FParentWindow == value) {
        return;
    }
    ChangeParentWindow(value, [=, this] {
        if (FHandle && value) {
            ChangeParent(FHandle, value);
        } else if (Outlives(*this, [this] { DestroyHandle(); }) && value) {
            HandleNeeded();
        }
    });
}

void TWinControl::ChangeParentWindow(HWND value, const std::function<void()>& carryOut) {
    const HWND old = std::exchange(FParentWindow, value);
    const TAlive alive(*this);
    try {
        carryOut();
    } catch (...) {
        const auto isThere = [=, this] {
            return FHandle && GetAncestor(FHandle, GA_PARENT) == (value ? value : GetDesktopWindow());
        };
        if (alive && FParentWindow == value && !isThere()) {
            FParentWindow = old;
        }
        throw;
    }
}

void TWinControl::ChangeParent(HWND window, HWND parent) {
    SetLastError(ERROR_SUCCESS);
    // Handlers of the move's messages may destroy the window: that is no error of the system's.
    if (!::SetParent(window, parent) && GetLastError() != ERROR_SUCCESS && IsWindow(window)) {
        RaiseLastOSError();
    }
}

void TWinControl::SetParent(TWinControl* value) {
    TWinControl* const old = Parent();
    if (old == value || (value && IsGoing())) {
        return;
    }
    CheckParent(value); // it throws: nothing must have been changed by then
    const TAlive alive(*this);
    const TAlive valueAlive(value);
    // Handlers of the focus and of sizes run at each step. They may free everybody, or move the control elsewhere.
    const auto goesOn = [&](TWinControl* parent) { return alive && Parent() == parent && (!value || valueAlive); };
    const bool hadFocus = FHandle && value && ::GetFocus() == FHandle;
    if (TParentForm* const form = FHandle && old ? ParentFormOf(old) : nullptr) {
        form->ControlGone(*this);
        if (!form->IsDestroying() && form->HandleAllocated()) {
            form->FocusLeaves(*this); // a focus that stays in it would reach nobody
        }
    }
    if (goesOn(old)) {
        DestroyHandle();
    }
    if (!goesOn(old)) {
        return;
    }
    if (value) {
        FParentWindow = nullptr;
    }
    TControl::SetParent(value);
    if (!goesOn(value) || !value || !value->FHandle) {
        return;
    }
    HandleNeeded();
    if (goesOn(value)) {
        value->ArrangeWindows();
        if (hadFocus && CanFocus()) {
            SetFocus();
        }
    }
}

} // namespace kx
