#include "Tour.h"

#include "kx/opensave/KxFileDlgWindow.h"
#include "kx/ui/dialogs/Dialogs.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/win/Windows.h"
#include "shared/Screen.h"

#include <utility>

namespace kx::gallery {

namespace {

constexpr ULONGLONG patience = 30'000; // milliseconds
constexpr ULONGLONG closingTime = 5'000;
constexpr unsigned tickInterval = 30;

TKxFileDlgWindow PartsOf(const TOpenDialog& dialog) { return TKxFileDlgWindow(dialog.DialogWindow()); }

int FindFile(HWND list, const std::string& name) {
    LVFINDINFOA find{};
    find.flags = LVFI_STRING;
    find.psz = name.c_str();
    return static_cast<int>(
        SendMessageA(list, LVM_FINDITEMA, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&find)));
}

BOOL CALLBACK TakeDialog(HWND window, LPARAM result) {
    char name[8] = {};
    GetClassNameA(window, name, sizeof(name));
    if (std::string_view(name) != "#32770" || !IsWindowVisible(window) || !IsWindowEnabled(window)) {
        return TRUE;
    }
    *reinterpret_cast<HWND*>(result) = window;
    return FALSE;
}

/// The topmost dialog or message box of this thread that a user could act in.
HWND OpenDialogWindow() {
    HWND found = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), TakeDialog, reinterpret_cast<LPARAM>(&found));
    return found;
}

} // namespace

void PrintLine(const std::string& line) {
    const std::string text = line + "\n";
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

TTour::TTour(std::string folder) : FFolder(IncludeTrailingPathDelimiter(folder)) {
    CreateDirectoryA(ExcludeTrailingPathDelimiter(FFolder).c_str(), nullptr);
    FTimer.SetEnabled(false);
    FTimer.SetInterval(tickInterval);
    FTimer.SetOnTimer([this](TObject*) { Tick(); });
}

void TTour::Then(std::string what, TCondition when, TAction action) {
    FSteps.push_back({std::move(what), std::move(when), std::move(action)});
}

void TTour::Start() {
    FSince = GetTickCount64();
    FTimer.SetEnabled(true);
}

void TTour::Tick() {
    if (FClosing) {
        CloseNext();
        return;
    }
    if (FNext == FSteps.size()) {
        FTimer.SetEnabled(false);
        Application().Terminate();
        return;
    }
    const TStep& step = FSteps[FNext];
    try {
        if (step.When && !step.When()) {
            if (GetTickCount64() - FSince > patience) {
                Fail("waited in vain: " + step.What);
            }
            return;
        }
        ++FNext;
        FSince = GetTickCount64();
        if (step.Do) {
            const TAction action = step.Do;
            action();
        }
    } catch (const std::exception& e) {
        Fail(step.What + ": " + e.what());
    }
}

void TTour::Fail(const std::string& what) {
    PrintLine("tour: FAILED, " + what);
    FFailed = true;
    FClosing = true;
    FSince = GetTickCount64();
    CaptureScreen(FFolder + "failed.png");
}

void TTour::CloseNext() {
    if (GetTickCount64() - FSince > closingTime) {
        ExitProcess(1);
    }
    if (const HWND dialog = OpenDialogWindow()) {
        PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    } else {
        FTimer.SetEnabled(false);
        Application().Terminate();
    }
}

void TTour::Picture(const std::string& name) {
    const std::string path = FFolder + name + ".png";
    if (!CaptureWindow(Application().MainForm()->Handle(), path)) {
        Fail("cannot write " + path);
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

bool IsShown(const TCommonDialog& dialog) {
    const HWND window = dialog.DialogWindow();
    return window && IsWindowVisible(window) && IsWindowEnabled(window);
}

bool IsReady(const TOpenDialog& dialog) { return IsShown(dialog) && PartsOf(dialog).GetLVHandle() != nullptr; }

bool ShowsFolder(const TOpenDialog& dialog, const std::string& folder) {
    return IsReady(dialog) && SameText(ExcludeTrailingPathDelimiter(PartsOf(dialog).GetSelPath()), folder);
}

bool Lists(const TOpenDialog& dialog, const std::string& name) {
    return IsReady(dialog) && FindFile(PartsOf(dialog).GetLVHandle(), name) >= 0;
}

void SelectFile(const TOpenDialog& dialog, const std::string& name) {
    const HWND list = PartsOf(dialog).GetLVHandle();
    const int index = FindFile(list, name);
    if (index < 0) {
        throw Exception("the file list does not show " + name);
    }
    LVITEMA item{};
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageA(list, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item));
    item.state = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageA(list, LVM_SETITEMSTATE, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
    SendMessageA(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(index), FALSE);
    SetFocus(list);
}

void TypeName(const TOpenDialog& dialog, const std::string& name) {
    const TKxFileDlgWindow parts = PartsOf(dialog);
    SetFocus(parts.GetEdit());
    parts.SetFNameText(name);
}

std::string TypedName(const TOpenDialog& dialog) { return PartsOf(dialog).GetFNameText(); }

void PressButton(const TCommonDialog& dialog, int id) {
    SendMessageA(GetDlgItem(dialog.DialogWindow(), id), BM_CLICK, 0, 0);
}

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

HWND OpenMenuWindow() {
    const HWND menu = FindWindowA("#32768", nullptr);
    return IsWindowVisible(menu) ? menu : nullptr;
}

void ChooseLastInMenu() {
    PostMessageA(OpenMenuWindow(), WM_KEYDOWN, VK_UP, 0);
    PostMessageA(OpenMenuWindow(), WM_KEYDOWN, VK_RETURN, 0);
}

} // namespace kx::gallery
