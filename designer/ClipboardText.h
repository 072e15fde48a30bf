// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/WinTypes.h"

#include <string>

namespace kx::designer {

std::string ClipboardText(); ///< Empty when the clipboard holds no text.
/// @throws EOSError when another program holds the clipboard.
void SetClipboardText(HWND owner, const std::string& text);

} // namespace kx::designer
