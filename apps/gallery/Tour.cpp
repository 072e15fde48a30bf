// SPDX-License-Identifier: MIT
// Walks through the gallery.

#include "Tour.h"

#include "kx/opensave/KxFileDlgWindow.h"
#include "kx/ui/dialogs/Dialogs.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/win/Windows.h"
#include "support/Input.h"
#include "support/Screen.h"

namespace kx::gallery {

namespace {

TKxFileDlgWindow PartsOf(const TOpenDialog& dialog) { return TKxFileDlgWindow(dialog.DialogWindow()); }

HWND ListOf(const TOpenDialog& dialog) { return FileListOf(dialog.DialogWindow()); }

} // namespace

void PrintLine(const std::string& line) {
    const std::string text = line + "\n";
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

TTour::TTour(const std::string& folder) : FFolder(IncludeTrailingPathDelimiter(folder)) {
    CreateDirectoryA(ExcludeTrailingPathDelimiter(FFolder).c_str(), nullptr);
}

bool TTour::Walk() {
    Then("the end", {}, [] { Application().Terminate(); });
    Run([] {
        Application().Run();
        return true;
    });
    if (!Failure().empty()) {
        PrintLine("tour: FAILED, " + Failure());
    }
    return Failure().empty() && !FFailed;
}

void TTour::Picture(const std::string& name) {
    const std::string path = FFolder + name + ".png";
    if (!CaptureWindow(Application().MainForm()->Handle(), path)) {
        throw Exception("cannot write " + path);
    }
}

void TTour::Expect(const std::string& page, const std::string& result, const std::string& expected) {
    if (result == expected) {
        PrintLine(page + ": " + result);
    } else {
        PrintLine(page + ": FAILED, returned \"" + result + "\", expected \"" + expected + "\"");
        FFailed = true;
    }
}

bool Lists(const TOpenDialog& dialog, const std::string& name) {
    return IsShown(dialog) && FindItem(ListOf(dialog), name) >= 0;
}

void SelectFile(const TOpenDialog& dialog, const std::string& name) {
    if (!SelectItem(ListOf(dialog), name)) {
        throw Exception("the file list does not show " + name);
    }
    SendMessageA(ListOf(dialog), LVM_ENSUREVISIBLE, static_cast<WPARAM>(FindItem(ListOf(dialog), name)), FALSE);
    SetFocus(ListOf(dialog));
}

void TypeName(const TOpenDialog& dialog, const std::string& name) {
    const TKxFileDlgWindow parts = PartsOf(dialog);
    SetFocus(parts.GetEdit());
    parts.SetFNameText(name);
}

std::string TypedName(const TOpenDialog& dialog) { return PartsOf(dialog).GetFNameText(); }

void PressButton(const TCommonDialog& dialog, int id) { test::PressButton(GetDlgItem(dialog.DialogWindow(), id)); }

void PressReturn(const TOpenDialog& dialog) {
    const HWND button = PartsOf(dialog).Item(IDOK);
    SendMessageA(dialog.DialogWindow(), WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), reinterpret_cast<LPARAM>(button));
}

void MoveDialog(const TOpenDialog& dialog, int x, int y) {
    const TCustomForm& mainForm = *Application().MainForm();
    SetWindowPos(dialog.DialogWindow(), nullptr, mainForm.Left() + x, mainForm.Top() + y, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void PressToolButton(const TOpenDialog& dialog, int command) {
    // The tool bar's button sends its command to the dialog, with the tool bar's window beside it.
    const HWND window = dialog.DialogWindow();
    HWND bar = nullptr;
    while ((bar = FindWindowExA(window, bar, TOOLBARCLASSNAMEA, nullptr)) != nullptr &&
           SendMessageA(bar, TB_COMMANDTOINDEX, static_cast<WPARAM>(command), 0) < 0) {
    }
    if (!bar) {
        throw Exception("the dialog has no tool button " + IntToStr(command));
    }
    SendMessageA(window, WM_COMMAND, MAKEWPARAM(command, 0), reinterpret_cast<LPARAM>(bar));
}

// --- Controls of the library

void ClickToolButton(TToolBar& bar, const std::string& caption) {
    for (int i = 0; i < bar.ButtonCount(); ++i) {
        const TToolButton& button = *bar.Buttons(i);
        if (button.Caption() == caption) {
            const LPARAM at = MAKELPARAM(button.Left() + button.Width() / 2, button.Top() + button.Height() / 2);
            PostMessageA(bar.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, at);
            PostMessageA(bar.Handle(), WM_LBUTTONUP, 0, at);
            return;
        }
    }
    throw Exception("the tool bar has no button " + caption);
}

void ChooseLastInMenu() {
    PostMessageA(ShownMenu(), WM_KEYDOWN, VK_UP, 0);
    PostMessageA(ShownMenu(), WM_KEYDOWN, VK_RETURN, 0);
}

} // namespace kx::gallery
