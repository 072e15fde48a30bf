// SPDX-License-Identifier: MIT
// Starts other programs.

#include "support/Programs.h"

#include "kx/core/SysUtils.h"

namespace kx::test {

TStartedProgram StartProgram(const std::string& path, const std::string& arguments) {
    char self[MAX_PATH];
    GetModuleFileNameA(nullptr, self, MAX_PATH);
    std::string command = "\"" + ExtractFilePath(std::string(self)) + path + "\" " + arguments;
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process)) {
        throw Exception("cannot start " + command);
    }
    const unique_handle_object thread(process.hThread);
    return {unique_handle_object(process.hProcess), process.dwProcessId};
}

} // namespace kx::test
