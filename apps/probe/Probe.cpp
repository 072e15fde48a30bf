// SPDX-License-Identifier: MIT
#include "Report.h"

#include "kx/core/Barrier.h"
#include "kx/ui/forms/Forms.h"
#include "kx/win/FileStreams.h"
#include "kx/win/Windows.h"

#include <cstdio>
#include <cstdlib>
#include <ole2.h>

// windows_probe [FILE [COUNT]]   opens dialogs by itself for a minute, and writes what it found out about this system
// to FILE, windows-probe.txt if none is named. COUNT is the number of files that one dialog selects, 3000 at first.

namespace kx::probe {

namespace {

std::string SystemText() {
    using TGetVersion = LONG(WINAPI*)(OSVERSIONINFOW*);
    const auto getVersion = reinterpret_cast<TGetVersion>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("ntdll.dll"), "RtlGetVersion")));
    OSVERSIONINFOW version = {};
    version.dwOSVersionInfoSize = sizeof version;
    if (getVersion) {
        getVersion(&version);
    }
    const bool wine = GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
    return "Windows " + IntToStr(version.dwMajorVersion) + "." + IntToStr(version.dwMinorVersion) + "." +
           IntToStr(version.dwBuildNumber) + (wine ? " (Wine)" : "") + ", " + IntToStr(int64_t{sizeof(void*)} * 8) +
           " bits, code page " + IntToStr(GetACP()) + "\r\n";
}

int Run(const std::string& fileName, int count) {
    TReport report;
    const auto write = [&](const std::string& end) {
        TFileStream file(fileName, fmCreate);
        const std::string text = SystemText() + report.Text() + end;
        file.WriteBuffer(text.data(), text.size());
    };
    const auto ask = [&](const char* what, auto&& question) {
        std::printf("%s\n", what);
        std::fflush(stdout);
        Guarded(question);
        write("(cut off here)\r\n"); // should the next question end the program
    };
    Application().SetOnException([](TObject*, const std::exception& e) { std::printf("failed: %s\n", e.what()); });
    OleInitialize(nullptr);
    ask("the open dialog", [&] { AskOpenDialog(report, 10); });
    ask("a large selection", [&] { AskSelection(report, count); });
    ask("the save dialog", [&] { AskSaveDialog(report); });
    ask("a page scroller", [&] { AskPageScroller(report); });
    ask("a docked form", [&] { AskDockedForm(report); });
    write("");
    OleUninitialize();
    std::printf("%s%s\n%d of %d questions are answered, in %s\n", SystemText().c_str(), report.Text().c_str(),
                report.AnsweredCount(), QuestionCount, fileName.c_str());
    return report.AnsweredCount() == QuestionCount ? 0 : 1;
}

} // namespace

} // namespace kx::probe

int main(int argc, char** argv) {
    return kx::probe::Run(argc > 1 ? argv[1] : "windows-probe.txt", argc > 2 ? std::atoi(argv[2]) : 3000);
}
