// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Windows.h"

#include "Report.h"

#include <commdlg.h>

namespace kx::probe {

/// The system's own file dialog, with a hook and nothing else of ours.
class TSystemDialog {
public:
    explicit TSystemDialog(const std::string& folder);
    TSystemDialog(const TSystemDialog&) = delete;
    TSystemDialog& operator=(const TSystemDialog&) = delete;

    bool Run(bool save = false);

    HWND Root() const { return FRoot; } ///< Of the dialog; null before it is there.
    HWND View() const { return test::FindDescendant(FRoot, "SHELLDLL_DefView"); }
    HWND List() const { return test::FindDescendant(FRoot, "SysListView32"); }
    HWND Name() const { return test::FindDescendant(GetDlgItem(FRoot, 1148), "Edit"); }
    int ItemCount() const { return List() ? test::ItemCount(List()) : 0; }
    bool IsFilled() const { return ItemCount() > 0; }
    /// Selects the only item of that text, or with an empty one none.
    void Select(const std::string& text) const;
    void Press(int button) const { PostMessageA(FRoot, WM_COMMAND, static_cast<WPARAM>(button), 0); }

    OPENFILENAMEA Record{};
    TScript Script;
    std::function<void()> OnInit;
    std::function<void(UINT code)> OnNotify; ///< CDN_...

private:
    static UINT_PTR CALLBACK Hook(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    std::string FFolder;
    std::vector<char> FNames;
    HWND FRoot = nullptr;
};

} // namespace kx::probe
