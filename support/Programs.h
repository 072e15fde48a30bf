// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <string>

namespace kx::test {

/// A program that has been started. It goes on when this does not exist any more.
struct TStartedProgram {
    unique_handle_object Process;
    DWORD Id = 0;
};

/// Starts the program of that path, relative to this program's folder. @throws Exception
TStartedProgram StartProgram(const std::string& path, const std::string& arguments = {});

} // namespace kx::test
