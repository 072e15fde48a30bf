#pragma once

#include "kx/win/Windows.h"

#include <string>

namespace kx::test {

/// Runs the program of that path, relative to this program's folder, and returns its exit code. A test failure when it
/// cannot be started or does not end within half a minute; it is ended then.
DWORD RunProgram(const std::string& path, const std::string& arguments);

} // namespace kx::test
