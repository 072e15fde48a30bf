// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Windows.h"

#include <functional>
#include <string>

namespace kx::test {

/// Runs the program of that path, relative to this program's folder, and returns its exit code. A test failure when it
/// cannot be started or does not end in time; it is ended then. As long as it runs, `use` is called again and again
/// with the id of its process, to use its windows.
DWORD RunProgram(const std::string& path, const std::string& arguments,
                 const std::function<void(DWORD process)>& use = {}, DWORD seconds = 30);

} // namespace kx::test
