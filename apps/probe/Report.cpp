// SPDX-License-Identifier: MIT
// The questions, the answers, and the steps inside a dialog.

#include "Report.h"

#include "kx/win/Windows.h"

#include <algorithm>
#include <cstdio>

namespace kx::probe {

namespace {

constexpr ULONGLONG StepPatience = 5000; // milliseconds

const char* const Questions[QuestionCount] = {
    ("What is heard when the list has been filled: LVM_GETSELECTEDCOUNT in a WH_CALLWNDPROCRET hook, WM_SETREDRAW, "
     "WM_PARENTNOTIFY for the view?"), // one question on two lines
    "Is the list virtual? What does LVM_GETITEM say, what do LVM_DELETEITEM and RemoveObject do?",
    "Is a buffer used that CDN_SELCHANGE put into the record of the A function?",
    "Where are the view and control 1120 after a resize and after a change of folder?",
    "When does the dialog get its remembered size, position and state?",
    "Which commands does the tool bar have, which style the look-in box?",
    "Which items have the menus of a file and of the background?",
    "Are the windows Unicode ones, before and after they are subclassed?",
    "Which characters reach an edit of a docked form?",
    "Does a file dropped on a place's button arrive?",
    "What does the OK button of a Save dialog say, for a folder and for a file?",
    "Are the arrows of a page scroller right when its child is replaced?",
};

} // namespace

void TReport::Say(int question, const std::string& line) {
    FAnswers[static_cast<size_t>(question - 1)].push_back(line);
}

int TReport::AnsweredCount() const {
    return static_cast<int>(
        std::count_if(FAnswers.begin(), FAnswers.end(), [](const auto& lines) { return !lines.empty(); }));
}

std::string TReport::Text() const {
    std::string text;
    for (size_t i = 0; i < FAnswers.size(); ++i) {
        text += IntToStr(static_cast<int64_t>(i + 1)) + ". " + Questions[i] + "\r\n";
        for (const std::string& line : FAnswers[i]) {
            text += "   " + line + "\r\n";
        }
    }
    return text;
}

std::string Hex(uint64_t value) {
    char text[20];
    std::snprintf(text, sizeof text, "0x%llX", static_cast<unsigned long long>(value));
    return text;
}

std::string RectText(HWND window) {
    const TRect r = test::ScreenRectOf(window);
    return IsWindow(window)
               ? IntToStr(r.Left) + "," + IntToStr(r.Top) + " " + IntToStr(Width(r)) + "x" + IntToStr(Height(r))
               : "none";
}

std::string TextOf(HWND window) {
    wchar_t text[200] = {};
    SendMessageW(window, WM_GETTEXT, 200, reinterpret_cast<LPARAM>(text));
    return Utf8(text);
}

std::string Utf8(std::wstring_view text) {
    std::string result(text.size() * 3, '\0');
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), result.data(),
                                         static_cast<int>(result.size()), nullptr, nullptr);
    result.resize(static_cast<size_t>(size));
    return result;
}

void TScript::Then(std::function<bool()> when, std::function<void()> what) {
    FDriver.Then(
        "an answer",
        [this, when = std::move(when)] { return !when || when() || GetTickCount64() - FSince > StepPatience; },
        [this, what = std::move(what)] {
            FSince = GetTickCount64();
            what(); // may run a loop of its own, in which the next steps are done
        });
}

void TScript::Wait(unsigned milliseconds) {
    Then([this, milliseconds] { return GetTickCount64() - FSince >= milliseconds; }, [] {});
}

bool TScript::Run(const std::function<bool()>& dialog) {
    FSince = GetTickCount64();
    const bool result = FDriver.Run(dialog);
    if (!FDriver.Failure().empty()) {
        std::printf("failed: %s\n", FDriver.Failure().c_str());
    }
    return result;
}

TSampleFolder::TSampleFolder(int fileCount) {
    FFolder.AddFolder("inner");
    for (int i = 0; i < fileCount; ++i) {
        FFolder.AddFile("file " + IntToStr(i) + ".txt");
    }
}

} // namespace kx::probe
