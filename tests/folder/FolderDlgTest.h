#pragma once

#include "kx/folder/KxFolderDlg.h"
#include "tests/support/TestDriver.h"
#include "tests/support/Painted.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace kx::test {

using TFormPtr = std::unique_ptr<TForm, TFreeDeleter>;

TFormPtr MakeForm(TColor color, int width, int height);

/// A form that docking finds by its name, "PaneForm" in any letter case.
class TPaneForm : public TForm {
    KX_CLASS()

    explicit TPaneForm(TComponent* owner);
};

/// A step that only waits.
inline TStep Await(std::string what, TCondition condition) { return {std::move(what), std::move(condition), {}}; }

// --- The running browser

constexpr int TitleId = 0x3742; ///< Of the browser's controls.
constexpr int StatusId = 0x3743;
constexpr int NameLabelId = 0x3744;
constexpr int NameId = 0x3745;
constexpr int NewFolderId = 0x3746;

HWND ItemOf(const TKxCustomFolderDialog& dialog, int id);
HWND TreeOf(HWND browser);
HWND TreeOf(const TKxCustomFolderDialog& dialog);

/// A part of the tree: the item and those below it that are expanded.
std::vector<std::string> TreeTexts(HWND tree);
HTREEITEM FindTreeItem(HWND tree, const std::string& text); ///< Null when it is not shown.
/// Clicks the item's text with the mouse.
void ClickTreeItem(HWND tree, const std::string& text);
/// Selects the item by message.
void SelectTreeItem(HWND tree, const std::string& text);

/// A folder that holds the folders "alpha" and "beta", a folder in the latter, and a file; a form that owns the
/// dialogs; and a look at the exceptions that reach the application: none is expected unless a test takes them out.
class TFolderDlgTest : public testing::Test {
protected:
    TFolderDlgTest();
    ~TFolderDlgTest() override;

    /// A new dialog, owned by `Owner`, with the folder as the tree's root.
    TKxFolderDialog& NewDialog();

    /// Runs the dialog; `look` acts in it once it is shown, then it is cancelled.
    bool Look(TKxCustomFolderDialog& dialog, const TAction& look);
    /// Selects an item and presses OK.
    static TStep Choose(const TKxCustomFolderDialog& dialog, const std::string& item);
    static TStep Cancel(const TKxCustomFolderDialog& dialog) { return Press(dialog, IDCANCEL); }

    /// The messages of the exceptions so far; forgets them.
    std::vector<std::string> TakeExceptions();

    TTempFolder Folder{"folder"};
    TFormPtr Owner;

private:
    TExceptionEvent FPrevious;
    std::vector<std::string> FExceptions;
};

} // namespace kx::test
