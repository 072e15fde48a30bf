// SPDX-License-Identifier: MIT
#pragma once

#include "OpenDialogTest.h"

#include "tests/support/ShellViews.h"

#include <string>
#include <vector>

namespace kx::test {

/// How the dialog learns that its list was filled, whatever the shell tells of it, and what it does then.
class OpenDialogFilling : public TOpenDialogTest {
protected:
    OpenDialogFilling() {
        Folder.AddFile("three.log");
        Filter(Dialog);
    }

    /// Leaves text files in the list only, and notes which files it was asked about.
    void Filter(TKxOpenDialog& dialog) {
        dialog.ExtFilter().SetEnabled(true);
        dialog.SetOnIncludeFile([this](TObject*, const std::string& name, bool& include) {
            Asked.push_back(ExtractFileName(name));
            include = SameText(ExtractFileExt(name), ".txt");
        });
    }
    std::vector<std::string> TakeAsked() { return std::exchange(Asked, {}); }

    static void PaintNow(HWND window) { RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW); }
    /// The system tells of a file that has come.
    void TellOf(const std::string& path) {
        SHChangeNotify(SHCNE_CREATE, SHCNF_PATHA | SHCNF_FLUSH, path.c_str(), nullptr);
    }
    bool IsEdited() const { return SendMessageA(List(), LVM_GETEDITCONTROL, 0, 0) != 0; }
    /// The dialog's subclass is on the list.
    static bool IsTakenOver(const TKxOpenDialog& dialog) {
        HWND list = ListOf(dialog);
        const auto exStyle = [&] { return SendMessageA(list, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0); };
        EXPECT_EQ(exStyle() & LVS_EX_GRIDLINES, 0);
        SendMessageA(list, KxRefreshStylesMessage, 0, 0);
        return (exStyle() & LVS_EX_GRIDLINES) != 0;
    }

    std::vector<std::string> Asked;
};

} // namespace kx::test
