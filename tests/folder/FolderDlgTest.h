// SPDX-License-Identifier: MIT
#pragma once

#include "kx/folder/KxFolderDlg.h"
#include "tests/support/DialogTest.h"
#include "tests/support/Painted.h"

#include <string>
#include <vector>

namespace kx::test {

/// A form that docking finds by its name, "PaneForm" in any letter case.
class TPaneForm : public TForm {
    KX_CLASS()

    explicit TPaneForm(TComponent* owner);
};

// --- The running browser

constexpr int TitleId = 0x3742; ///< Of the browser's controls.
constexpr int StatusId = 0x3743;
constexpr int NameLabelId = 0x3744;
constexpr int NameId = 0x3745;
constexpr int NewFolderId = 0x3746;

HWND TreeOf(HWND browser);
HWND TreeOf(const TKxCustomFolderDialog& dialog);

/// A part of the tree: the item and those below it that are expanded.
std::vector<std::string> TreeTexts(HWND tree);
HTREEITEM FindTreeItem(HWND tree, const std::string& text); ///< Null when it is not shown.
/// Clicks the item's text with the mouse.
void ClickTreeItem(HWND tree, const std::string& text);
/// Selects the item by message.
void SelectTreeItem(HWND tree, const std::string& text);

/// A folder that holds the folders "alpha" and "beta", a folder in the latter, and a file.
class TFolderDlgTest : public TDialogTest {
protected:
    TFolderDlgTest();
    ~TFolderDlgTest() override;

    /// A new dialog, owned by `Owner`, with the folder as the tree's root.
    TKxFolderDialog& NewDialog();

    /// Selects an item and presses OK.
    static TStep Choose(const TKxCustomFolderDialog& dialog, const std::string& item);

    TTempFolder Folder{"folder"};
};

} // namespace kx::test
