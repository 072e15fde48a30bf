// SPDX-License-Identifier: MIT
// Measures the memory of programs that show a dialog.

#include "Benches.h"

#include "HandWritten.h"
#include "Showing.h"
#include "kx/core/SysUtils.h"
#include "kx/win/Windows.h"
#include "support/Programs.h"

#include <psapi.h>

namespace kx::bench {

namespace {

/// KB of this program that no other one shares.
int OwnKilobytes() {
    PROCESS_MEMORY_COUNTERS memory{};
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
    return static_cast<int>(memory.PagefileUsage / 1024);
}

/// Of a program that shows the dialog: this one again, in another process.
double KilobytesOf(const char* dialog) {
    const test::TStartedProgram program = test::StartProgram("kx_bench.exe", std::string("shows ") + dialog);
    DWORD kilobytes = 0;
    if (WaitForSingleObject(program.Process.get(), 30'000) != WAIT_OBJECT_0) {
        TerminateProcess(program.Process.get(), 0);
    }
    GetExitCodeProcess(program.Process.get(), &kilobytes);
    if (kilobytes == 0) {
        throw Exception(std::string(dialog) + " does not tell its memory");
    }
    return kilobytes;
}

} // namespace

int ShowForMemory(const std::string& dialog) {
    int kilobytes = 0;
    const auto show = [&] { dialog == "ours" ? ShowFullDialog() : ShowHandWrittenDialog(true); };
    WithShownDialog(show, [&](HWND) { kilobytes = OwnKilobytes(); });
    return kilobytes;
}

std::vector<TRow> MeasureMemory() {
    std::vector<double> ours;
    std::vector<double> byHand;
    for (int i = 0; i < 9; ++i) {
        byHand.push_back(KilobytesOf("handwritten"));
        ours.push_back(KilobytesOf("ours"));
    }
    return {ComparePairs("memory, four forms and places", ours, "the same, written by hand", byHand, "KB", 1.2)};
}

} // namespace kx::bench
