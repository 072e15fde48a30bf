// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Handles.h"
#include "kx/win/WinTypes.h"

namespace kx {

/// This code is in a library that programs load and unload, and not in the program itself.
bool IsInLibrary();

/// Keeps the module with this code from being unloaded, whoever asks for that, until the handle is freed. It may be
/// freed only where the module's user still holds it too. @throws EOSError
unique_hmodule HoldModule();

} // namespace kx
