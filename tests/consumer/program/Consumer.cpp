// SPDX-License-Identifier: MIT
// Shows an open dialog with a docked form and looks whether all that belongs to it has arrived in this program. Ends
// with 0 when it has.

#include "PreviewForm.h"

#include "kx/core/Version.h"
#include "kx/opensave/KxOpenDlg.h"
#include "kx/places/KxPlacesStrings.h"

#include <windows.h>

#include <cstdio>

namespace {

kx::TKxOpenDialog* Dialog = nullptr;
TPreviewForm* Preview = nullptr;
int Failures = 0;
bool Shown = false;

void Expect(bool condition, const char* what) {
    if (!condition) {
        std::printf("not so: %s\n", what);
        ++Failures;
    }
}

/// Looks at the dialog as soon as it is seen, and closes it.
void CALLBACK Look(HWND, UINT, UINT_PTR timer, DWORD) {
    const HWND dialog = Dialog->GetCommonDialogHandle();
    if (!IsWindowVisible(dialog)) {
        return;
    }
    KillTimer(nullptr, timer);
    Shown = true;
    Expect(IsChild(dialog, Preview->Handle()) && IsWindowVisible(Preview->Handle()), "the form is docked and seen");
    Expect(Preview->HeadingLabel && Preview->HeadingLabel->Caption() == "From the form file", "its form file is there");
    PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
}

/// A dialog that does not come or go must not keep whoever waits for this program.
DWORD WINAPI GiveUp(void*) {
    Sleep(60000);
    std::puts("not so: the dialog is shown and closed within a minute");
    std::fflush(stdout);
    TerminateProcess(GetCurrentProcess(), 3);
    return 0;
}

} // namespace

int main() {
    CloseHandle(CreateThread(nullptr, 0, GiveUp, nullptr, 0, nullptr));
    Expect(kx::LibraryVersion() == kx::HeaderVersion, "headers and library have the same version");
    Expect(!kx::LoadPlacesString(kx::SKxIconFileTitle).empty(), "the texts of the places bar are there");
    Expect(FindResourceA(nullptr, MAKEINTRESOURCEA(1), MAKEINTRESOURCEA(24)) != nullptr,
           "the manifest is there"); // RT_MANIFEST

    kx::Application().CreateForm(&Preview);
    kx::TKxOpenDialog dialog(&kx::Application());
    Dialog = &dialog;
    dialog.CustDlgParams().SetRightFormName("PreviewForm");
    dialog.SetOnShow([](kx::TObject*) { SetTimer(nullptr, 0, 20, Look); });
    Expect(!dialog.Execute(), "the dialog is cancelled");
    Expect(Shown, "the dialog is shown");
    std::printf("kxqdlgs70 %s, %d bits: %d failures\n", kx::LibraryVersionText(), static_cast<int>(8 * sizeof(void*)),
                Failures);
    return Failures;
}
