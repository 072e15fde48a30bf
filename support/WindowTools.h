// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Windows.h"

#include <climits>
#include <string>
#include <string_view>
#include <vector>

namespace kx::test {

constexpr int AnyId = INT_MIN;

std::string ClassOf(HWND window);
/// Text of any length; of a control that does not answer within a second, "(hung)".
std::string TextOf(HWND window);

TRect ScreenRectOf(HWND window);
/// Rectangle of `window` in the client coordinates of `container`.
TRect RectIn(HWND container, HWND window);
TRect ClientRectOf(HWND window);

/// The first direct child, in Z order from the top, of that class in any letter case and that control id; null when
/// there is none. An empty class stands for every class.
HWND FindChild(HWND parent, std::string_view className, int id = AnyId);
/// The same among all descendants.
HWND FindDescendant(HWND parent, std::string_view className, int id = AnyId);

/// This process's visible top-level windows of that class, in Z order from the top.
std::vector<HWND> TopWindows(std::string_view className = {});
/// The topmost visible window of class "#32770" that is enabled: the one that waits for the user. Null when there is
/// none.
HWND ActiveDialog();
/// The topmost message box; null when there is none.
HWND ShownMessageBox();
std::string MessageBoxText(HWND box);
/// The popup menu that is open on top; null when there is none.
HWND ShownMenu();

/// Class, id, text, screen rectangle and state of the window and its descendants, one line each.
std::string WindowTree(HWND window);
/// The trees of all of this process's visible top-level windows.
std::string AllWindowTrees();

// --- The system's file dialog. `dialog` is its top-level window.

HWND FileListOf(HWND dialog);     ///< The list view with the files; null before it exists.
HWND FileNameEditOf(HWND dialog); ///< The edit in which the user types names.
std::string FolderOf(HWND dialog);

int ItemCount(HWND listView);
std::string ItemText(HWND listView, int index);
std::vector<std::string> ItemTexts(HWND listView);
int FindItem(HWND listView, std::string_view text); ///< -1 when there is none.
/// Middle of the item's text, in screen coordinates.
TPoint ItemCenter(HWND listView, int index);
/// Selects just the item of that text. False when there is none.
bool SelectItem(HWND listView, std::string_view text);
/// Selects all items. The parent is told of the last one only: it would look at the whole selection for each.
void SelectAllItems(HWND listView);

} // namespace kx::test
