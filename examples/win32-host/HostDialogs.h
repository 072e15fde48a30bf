// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string>

// The program's dialogs. Nothing here throws: the program's code is called by the system.

void StartDialogs(HWND window); ///< Once, when the main window is made: it hears of errors and owns the dialogs.
void EndDialogs();              ///< Once, when it goes.
/// For the message loop: true when the message is done.
bool OfferToDialogs(MSG& message);

/// The system's open dialog, with a form of the library at its right and a panel of plain controls at its bottom.
void ShowOpenDialog(HWND window);
/// One that leaves the main window usable.
void ShowBrowseDialog(HWND window);
