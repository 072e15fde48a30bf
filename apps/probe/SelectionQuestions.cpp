// SPDX-License-Identifier: MIT
// Asks about large selections and about the save dialog.

#include "SystemDialog.h"

#include "kx/win/Windows.h"

#include <commdlg.h>
#include <cstring>

namespace kx::probe {

void AskSelection(TReport& report, int fileCount) {
    const TSampleFolder folder(fileCount);
    TSystemDialog dialog(folder.Path());
    // The larger buffer ends at a page that cannot be touched.
    constexpr SIZE_T room = 0x100000;
    auto* const larger = static_cast<char*>(VirtualAlloc(nullptr, room + 0x1000, MEM_RESERVE, PAGE_NOACCESS));
    VirtualAlloc(larger, room, MEM_COMMIT, PAGE_READWRITE);
    char first[300] = "";
    dialog.Record.Flags |= OFN_ALLOWMULTISELECT;
    dialog.Record.lpstrFile = first;
    dialog.Record.nMaxFile = sizeof first;
    dialog.OnNotify = [&](UINT code) {
        if (code == CDN_SELCHANGE) {
            dialog.Record.lpstrFile = larger;
            dialog.Record.nMaxFile = room;
        }
    };
    dialog.Script.Then(
        [&] { return dialog.IsFilled(); },
        [&] {
            LVITEMA state = {};
            state.state = state.stateMask = LVIS_SELECTED;
            SendMessageA(dialog.List(), LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&state));
            dialog.Select("inner"); // a folder in the selection would be opened
            for (int i = 0; i < dialog.ItemCount(); ++i) {
                state.state = test::ItemText(dialog.List(), i) == "inner" ? 0 : LVIS_SELECTED;
                SendMessageA(dialog.List(), LVM_SETITEMSTATE, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&state));
            }
        });
    dialog.Script.Wait(500);
    dialog.Script.Then({}, [&] {
        report.Say(3, IntToStr(SendMessageA(dialog.List(), LVM_GETSELECTEDCOUNT, 0, 0)) + " of " +
                          IntToStr(dialog.ItemCount()) + " items are selected");
        dialog.Press(IDOK);
    });
    dialog.Script.Wait(2000);
    dialog.Script.Then({}, [&] {
        report.Say(3, "OK did not close the dialog");
        dialog.Press(IDCANCEL);
    });
    const bool chosen = dialog.Run();
    const auto count = [](const char* names) {
        int number = 0;
        for (; *names; names += std::strlen(names) + 1) {
            ++number;
        }
        return number;
    };
    first[sizeof first - 1] = first[sizeof first - 2] = 0;
    report.Say(3, "returned " + IntToStr(chosen) + ", error " + Hex(CommDlgExtendedError()) +
                      "; texts in the first buffer " + IntToStr(count(first)) + ", in the one of CDN_SELCHANGE " +
                      IntToStr(count(larger)));
    VirtualFree(larger, 0, MEM_RELEASE);
}

void AskSaveDialog(TReport& report) {
    const TSampleFolder folder(10);
    TSystemDialog dialog(folder.Path());
    const auto say = [&](const std::string& what) {
        report.Say(11, what + ": \"" + TextOf(GetDlgItem(dialog.Root(), IDOK)) + "\"");
    };
    dialog.Script.Then([&] { return dialog.IsFilled(); },
                       [&] {
                           say("at first");
                           SetWindowTextA(GetDlgItem(dialog.Root(), IDOK), "Own");
                           say("given a text");
                           dialog.Select("inner");
                       });
    dialog.Script.Wait(500);
    dialog.Script.Then({}, [&] {
        say("a folder is selected");
        SetFocus(dialog.List());
    });
    dialog.Script.Wait(500);
    dialog.Script.Then({}, [&] {
        say("the list has the focus");
        dialog.Select("file 1.txt");
    });
    dialog.Script.Wait(500);
    dialog.Script.Then({}, [&] {
        say("a file is selected");
        dialog.Press(IDCANCEL);
    });
    dialog.Run(true);
}

} // namespace kx::probe
