// SPDX-License-Identifier: MIT
// The open dialog's windows stay Unicode or ANSI.

#include "OpenDialogTest.h"

#include "kx/win/Handles.h"

#include <commdlg.h>

namespace kx {
namespace {

using namespace test;

/// Which of the dialog's windows are Unicode ones, and which kind of notification each wants from a window inside it.
std::string KindsOf(HWND dialog) {
    HWND list = FileListOf(dialog);
    HWND view = GetParent(list);
    HWND header = FindChild(list, WC_HEADERA);
    HWND edit = FileNameEditOf(dialog);
    std::string kinds;
    const auto note = [&](const char* name, HWND window, HWND inner) {
        const LRESULT format = SendMessageW(window, WM_NOTIFYFORMAT, reinterpret_cast<WPARAM>(inner), NF_QUERY);
        kinds += std::string(name) + (IsWindowUnicode(window) ? " W" : " A") +
                 (format == NFR_UNICODE ? "w "
                  : format == NFR_ANSI  ? "a "
                                        : "? ");
    };
    note("dialog", dialog, view);
    note("view", view, list);
    note("list", list, header);
    kinds += std::string("name") + (IsWindowUnicode(edit) ? " W" : " A");
    return kinds;
}

UINT_PTR CALLBACK NoHook(HWND, UINT, WPARAM, LPARAM) { return 0; }

class OpenDialogKinds : public TOpenDialogTest {
protected:
    /// The same of the system's dialog that nobody has touched.
    std::string KindsOfTheBareDialog() const {
        std::string kinds;
        const std::string folder = Folder.Path();
        char name[MAX_PATH] = "";
        OPENFILENAMEA record{};
        record.lStructSize = sizeof record;
        record.hwndOwner = Owner->Handle();
        record.lpstrFile = name;
        record.nMaxFile = MAX_PATH;
        record.lpstrInitialDir = folder.c_str();
        record.Flags = OFN_EXPLORER | OFN_ENABLEHOOK | OFN_ENABLESIZING;
        record.lpfnHook = NoHook;
        TTestDriver driver({{"it is shown", [] { return ActiveDialog() && FileListOf(ActiveDialog()); },
                             [&] {
                                 kinds = KindsOf(ActiveDialog());
                                 PostMessageA(ActiveDialog(), WM_COMMAND, IDCANCEL, 0);
                             }}});
        driver.Run([&] { return GetOpenFileNameA(&record) != FALSE; });
        return kinds;
    }
};

TEST_F(OpenDialogKinds, TheWindowsStayWhatTheSystemMadeThem) {
    const std::string bare = KindsOfTheBareDialog();
    EXPECT_THAT(bare, testing::HasSubstr("list Ww"));
    std::string kinds;
    Look(Dialog, [&] { kinds = KindsOf(Dialog.DlgHandle()); });
    EXPECT_EQ(kinds, bare);
}

TEST_F(OpenDialogKinds, TextsOfAnyScriptReachTheDialogsWindows) {
    Look(Dialog, [&] {
        HWND dialog = Dialog.DlgHandle();
        HWND edit = FileNameEditOf(dialog);
        for (HWND window : {GetParent(FileListOf(dialog)), edit}) {
            ASSERT_TRUE(IsWindowUnicode(window)) << ClassOf(window);
            SetWindowTextW(window, L"\u0416\u4E2D\u20AC"); // of which the code page has one at most
            wchar_t text[20] = {};
            GetWindowTextW(window, text, 20);
            EXPECT_STREQ(text, L"\u0416\u4E2D\u20AC") << ClassOf(window);
        }
        SendMessageW(edit, EM_SETSEL, 0, -1);
        SendMessageW(edit, WM_CHAR, 0x416, 0);
        wchar_t text[20] = {};
        GetWindowTextW(edit, text, 20);
        EXPECT_STREQ(text, L"\u0416");
    });
}

} // namespace
} // namespace kx
