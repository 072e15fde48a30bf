// SPDX-License-Identifier: MIT
// Programs that a test starts.

#include "tests/support/Process.h"

#include "kx/core/SysUtils.h"
#include "support/Programs.h"

#include <gtest/gtest.h>

namespace kx::test {

DWORD RunProgram(const std::string& path, const std::string& arguments, const std::function<void(DWORD process)>& use,
                 DWORD seconds) {
    TStartedProgram program;
    try {
        program = StartProgram(path, arguments);
    } catch (const Exception& e) {
        ADD_FAILURE() << e.what();
        return 0;
    }
    const HANDLE process = program.Process.get();
    DWORD code = 0;
    const ULONGLONG end = GetTickCount64() + seconds * 1000;
    while (use && WaitForSingleObject(process, 20) != WAIT_OBJECT_0 && GetTickCount64() < end) {
        use(program.Id);
    }
    const ULONGLONG now = GetTickCount64();
    if (WaitForSingleObject(process, now < end ? static_cast<DWORD>(end - now) : 0) != WAIT_OBJECT_0) {
        ADD_FAILURE() << path << " " << arguments << " does not end";
        TerminateProcess(process, 1);
    }
    GetExitCodeProcess(process, &code);
    return code;
}

} // namespace kx::test
