// SPDX-License-Identifier: MIT
#pragma once

#include "Report.h"
#include "kx/win/Windows.h"

#include <commdlg.h>
#include <functional>
#include <string>

namespace kx::bench {

/// Runs `showDialog`, which shows a system dialog modally in this thread, and calls `measure` with the dialog's window
/// once it has been painted and is idle. The dialog is then cancelled.
void WithShownDialog(const std::function<void()>& showDialog, const std::function<void(HWND dialog)>& measure);

/// The medians of the first paint of two dialogs, in milliseconds, and of their ratios; prints their 95th percentiles.
/// They are shown in turn, so that what happens on the machine meanwhile meets both. `bare` is the system's dialog
/// alone, or what `against` says.
TRow CompareFirstPaint(const std::string& what, const std::function<void()>& bare, const std::function<void()>& ours,
                       double limit, const char* against = "the bare system dialog");

/// The system's Open dialog, sizeable, with a hook and data for it.
void ShowOpenDialogWith(LPOFNHOOKPROC hook, LPARAM data);
/// The system's Open dialog as the library runs it, with a hook that does nothing.
void ShowBareOpenDialog();
/// The system's colour and print dialogs in the same way.
void ShowBareColorDialog();
void ShowBarePrintDialog();

} // namespace kx::bench
