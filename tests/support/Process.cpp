// SPDX-License-Identifier: MIT
// Programs that a test starts.

#include "tests/support/Process.h"

#include "kx/core/SysUtils.h"
#include "kx/win/Handles.h"

#include <gtest/gtest.h>

namespace kx::test {

DWORD RunProgram(const std::string& path, const std::string& arguments, const std::function<void(DWORD process)>& use,
                 DWORD seconds) {
    char self[MAX_PATH];
    GetModuleFileNameA(nullptr, self, MAX_PATH);
    std::string command = "\"" + ExtractFilePath(std::string(self)) + path + "\" " + arguments;
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process)) {
        ADD_FAILURE() << "cannot start " << command;
        return 0;
    }
    const unique_handle_object handle(process.hProcess);
    const unique_handle_object thread(process.hThread);
    DWORD code = 0;
    const ULONGLONG end = GetTickCount64() + seconds * 1000;
    while (use && WaitForSingleObject(handle.get(), 20) != WAIT_OBJECT_0 && GetTickCount64() < end) {
        use(process.dwProcessId);
    }
    const ULONGLONG now = GetTickCount64();
    if (WaitForSingleObject(handle.get(), now < end ? static_cast<DWORD>(end - now) : 0) != WAIT_OBJECT_0) {
        ADD_FAILURE() << command << " does not end";
        TerminateProcess(handle.get(), 1);
    }
    GetExitCodeProcess(handle.get(), &code);
    return code;
}

} // namespace kx::test
