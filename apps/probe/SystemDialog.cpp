// SPDX-License-Identifier: MIT
// Shows the system's own file dialog.

#include "SystemDialog.h"

#include "kx/win/Windows.h"

#include <commdlg.h>

namespace kx::probe {

namespace {

TSystemDialog* Running = nullptr;

} // namespace

TSystemDialog::TSystemDialog(const std::string& folder) : FFolder(folder), FNames(MAX_PATH) {
    Record.lStructSize = sizeof Record;
    Record.lpstrFile = FNames.data();
    Record.nMaxFile = static_cast<DWORD>(FNames.size());
    Record.lpstrInitialDir = FFolder.c_str();
    Record.lpstrFilter = "All files\0*.*\0";
    Record.Flags = OFN_EXPLORER | OFN_ENABLEHOOK | OFN_ENABLESIZING | OFN_NOCHANGEDIR | OFN_HIDEREADONLY;
    Record.lpfnHook = Hook;
}

bool TSystemDialog::Run(bool save) {
    Running = this;
    const bool result =
        Script.Run([&] { return (save ? GetSaveFileNameA(&Record) : GetOpenFileNameA(&Record)) != FALSE; });
    Running = nullptr;
    return result;
}

UINT_PTR CALLBACK TSystemDialog::Hook(HWND window, UINT message, WPARAM, LPARAM lParam) {
    TSystemDialog& dialog = *Running;
    if (message == WM_INITDIALOG) {
        dialog.FRoot = GetParent(window);
        if (dialog.OnInit) {
            dialog.OnInit();
        }
    } else if (message == WM_NOTIFY && dialog.OnNotify) {
        dialog.OnNotify(reinterpret_cast<const NMHDR*>(lParam)->code);
    }
    return 0;
}

void TSystemDialog::Select(const std::string& text) const {
    LVITEMA state = {};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageA(List(), LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&state));
    const int index = text.empty() ? -1 : test::FindItem(List(), text);
    if (index >= 0) {
        state.state = state.stateMask;
        SendMessageA(List(), LVM_SETITEMSTATE, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&state));
    }
}

} // namespace kx::probe
