#pragma once

#include "Report.h"
#include "ui/Windows.h"

#include <functional>
#include <string>

namespace kx::bench {

/// Runs `showDialog`, which shows a system dialog modally in this thread, and returns the seconds from its call to the
/// end of the dialog's first WM_PAINT. The dialog is then cancelled.
double SecondsToFirstPaint(const std::function<void()>& showDialog);

/// Time to the first paint of our dialog against that of the bare one. Shows the two in turn, so that what happens on
/// the machine meanwhile meets both.
TRow CompareFirstPaint(const std::string& what, const std::function<void()>& ours,
                       const std::function<void()>& bareDialog, double limit);

/// Runs `showDialog` likewise and calls `measure` with the dialog's window once it has been painted and is idle.
void WithShownDialog(const std::function<void()>& showDialog, const std::function<void(HWND dialog)>& measure);

/// The system's Open dialog as the library runs it, with a hook that does nothing.
void ShowBareOpenDialog();

} // namespace kx::bench
