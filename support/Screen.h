// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Windows.h"

#include <string>

namespace kx::test {

/// Writes a picture of the whole screen, or of `window` with its frame as it is seen on the screen, to the PNG file
/// `path`. What is waiting to be painted in this thread's windows is painted first. False when the screen has no such
/// part or the file cannot be written.
bool CaptureScreen(const std::string& path);
bool CaptureWindow(HWND window, const std::string& path);

} // namespace kx::test
