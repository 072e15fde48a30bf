// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/win/Windows.h"

#include <functional>
#include <utility>

// A window that is not the framework's, for forms to be docked in: a plain dialog of the system.

namespace kx::test {

/// A dialog with an edit, OK and Cancel, made and run by the system alone.
class THostDialog {
public:
    int Ok = 0;
    int Cancel = 0;
    std::function<void()> OnDestroy; ///< In its WM_DESTROY.

    THostDialog() {
        Window = CreateDialogIndirectParamA(HInstance(), &Template().Header, nullptr, Procedure,
                                            reinterpret_cast<LPARAM>(this));
        CreateWindowExA(0, "EDIT", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 10, 10, 100, 20, Window,
                        reinterpret_cast<HMENU>(UINT_PTR{100}), nullptr, nullptr);
        CreateWindowExA(0, "BUTTON", "OK", WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON, 10, 40, 60, 20,
                        Window, reinterpret_cast<HMENU>(UINT_PTR{IDOK}), nullptr, nullptr);
        CreateWindowExA(0, "BUTTON", "Cancel", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 80, 40, 60, 20, Window,
                        reinterpret_cast<HMENU>(UINT_PTR{IDCANCEL}), nullptr, nullptr);
        SetWindowPos(Window, nullptr, 200, 150, 500, 420, SWP_NOZORDER | SWP_SHOWWINDOW);
    }
    ~THostDialog() { Destroy(); }

    void Destroy() {
        if (const HWND window = std::exchange(Window, nullptr)) {
            DestroyWindow(window);
        }
    }

    /// The dialog's own message loop, as the system runs it: our message loop has no part in it.
    bool PumpUntil(const std::function<bool()>& condition) {
        const DWORD end = GetTickCount() + 20000;
        while (!condition()) {
            MSG message;
            if (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
                if (!IsDialogMessageA(Window, &message)) {
                    TranslateMessage(&message);
                    DispatchMessageA(&message);
                }
            } else if (GetTickCount() > end) {
                return false;
            } else {
                MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
            }
        }
        return true;
    }

    HWND Window = nullptr;

private:
    struct TTemplate {
        DLGTEMPLATE Header;
        WORD Menu, Class, Title;
    };
    static const TTemplate& Template() {
        static const TTemplate result{
            {WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN, 0, 0, 0, 0, 100, 80}, 0, 0, 0};
        return result;
    }
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_INITDIALOG) {
            SetWindowLongPtrA(window, DWLP_USER, lParam);
        }
        auto* const self = reinterpret_cast<THostDialog*>(GetWindowLongPtrA(window, DWLP_USER));
        if (!self) {
            return FALSE;
        }
        if (message == WM_COMMAND) {
            self->Ok += LOWORD(wParam) == IDOK;
            self->Cancel += LOWORD(wParam) == IDCANCEL;
            return TRUE;
        }
        if (message == WM_DESTROY && self->OnDestroy) {
            self->OnDestroy();
        }
        return FALSE;
    }
};

} // namespace kx::test
