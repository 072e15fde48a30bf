#pragma once

#include "ui/Windows.h"

#include <functional>

namespace kx::bench {

/// Runs `showDialog`, which shows a system dialog modally in this thread, and returns the seconds from its call to the
/// end of the dialog's first WM_PAINT. The dialog is then cancelled.
double SecondsToFirstPaint(const std::function<void()>& showDialog);

/// Runs `showDialog` likewise and calls `measure` with the dialog's window once it has been painted and is idle.
void WithShownDialog(const std::function<void()>& showDialog, const std::function<void(HWND dialog)>& measure);

/// The system's Open dialog as the library runs it, with a hook that does nothing.
void ShowBareOpenDialog();

} // namespace kx::bench
