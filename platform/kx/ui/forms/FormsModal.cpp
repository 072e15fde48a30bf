// SPDX-License-Identifier: MIT
// Forms that are shown until they are answered.

#include "kx/ui/forms/Forms.h"

#include "kx/win/Windows.h"

namespace kx {

// --- Windows of the thread

namespace {

struct TTaskWindowCollector {
    HWND Except;
    TTaskWindowList Windows;
};

BOOL CALLBACK CollectTaskWindow(HWND window, LPARAM param) {
    return Guarded(BOOL{TRUE}, [&]() -> BOOL {
        auto& collector = *reinterpret_cast<TTaskWindowCollector*>(param);
        if (window != collector.Except && IsWindowVisible(window) && IsWindowEnabled(window)) {
            collector.Windows.push_back(window);
        }
        return TRUE;
    });
}

} // namespace

TTaskWindowList DisableTaskWindows(HWND except) {
    TTaskWindowCollector collector{except, {}};
    EnumThreadWindows(GetCurrentThreadId(), CollectTaskWindow, reinterpret_cast<LPARAM>(&collector));
    for (const HWND window : collector.Windows) {
        EnableWindow(window, FALSE);
    }
    return std::move(collector.Windows);
}

void EnableTaskWindows(const TTaskWindowList& windows) {
    for (const HWND window : windows) {
        if (IsWindow(window)) {
            EnableWindow(window, TRUE);
        }
    }
}

// --- Modal forms

TModalResult TCustomForm::ShowModal() {
    if (Visible() || !Enabled() || FModal || ParentWindow() || Parent()) {
        throw EInvalidOperation("Cannot make a visible window modal");
    }
    Application().CancelHint();
    if (const HWND capture = GetCapture()) {
        SendMessageW(capture, WM_CANCELMODE, 0, 0);
    }
    if (!Outlives(*this, [this] { AfterConstruction(); })) {
        return mrCancel;
    }
    const TAlive alive(*this);
    FModal = true;
    FModalResult = mrNone;
    const HWND active = GetActiveWindow();
    if (HandleAllocated()) {
        SetWindowLongPtrA(WindowHandle(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(OwnerWindow()));
    }
    try {
        HandleNeeded(); // now, since the window that is to own it is still the active one
        if (!alive) {
            return mrCancel;
        }
        Application().ModalStarted();
    } catch (...) {
        if (alive) {
            FModal = false; // a form that counts as modal could never be shown again
        }
        throw;
    }
    const TTaskWindowList disabled = alive ? DisableTaskWindows(WindowHandle()) : TTaskWindowList();

    // Whatever happens, the other windows are enabled again.
    std::exception_ptr failure;
    TModalResult result = mrCancel;
    try {
        if (alive) {
            Show();
        }
        while (alive && FModalResult == mrNone) {
            if (HandleAllocated()) {
                Application().HandleMessage();
            }
            if (!alive) {
                break;
            }
            // A form without a window cannot be closed by anybody; the window may have gone with its owner.
            if (!HandleAllocated() || Application().Terminated()) {
                FModalResult = mrCancel;
            } else if (FModalResult != mrNone) {
                CloseModal();
            }
        }
        result = alive ? FModalResult : mrCancel;
    } catch (...) {
        failure = std::current_exception();
    }
    EnableTaskWindows(disabled); // before the form goes, or another program would become the active one
    if (active && IsWindow(active) && IsWindowEnabled(active)) {
        SetActiveWindow(active);
    }
    if (alive) {
        FModal = false;
        Hide(); // fires OnHide, which may free it
    }
    Application().PassQuitOn();
    Application().ModalFinished();
    if (failure) {
        std::rethrow_exception(failure);
    }
    return result;
}

/// The loop may be waiting for messages that the form cannot get any more.
void TCustomForm::WakeModalLoop() const {
    if (FModal) {
        PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
    }
}

/// A modal result was set: asks the form's handlers whether it may close.
void TCustomForm::CloseModal() {
    const TAlive alive(*this);
    bool stays = true; // holds when a handler fails
    Guarded([&] {
        if (!CloseQuery() || !alive) {
            return;
        }
        TCloseAction action = caHide;
        DoClose(action);
        stays = action == caNone;
        if (alive && action == caFree) {
            Release();
        }
    });
    if (alive && stays) {
        FModalResult = mrNone;
    }
}

void TApplication::ModalStarted() {
    if (InOwnThread() && ++FModalLevel == 1) {
        try {
            FOnModalBegin(this);
        } catch (...) {
            --FModalLevel; // the dialog is not shown
            throw;
        }
    }
}

void TApplication::ModalFinished() {
    if (InOwnThread() && FModalLevel > 0 && --FModalLevel == 0) {
        FOnModalEnd(this);
    }
}

} // namespace kx
