#include "Report.h"

#include "kx/win/Timers.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <cstdio>

namespace kx::probe {

namespace {

constexpr unsigned TickInterval = 100;   // milliseconds
constexpr ULONGLONG StepPatience = 5000; // milliseconds

const char* const Questions[QuestionCount] = {
    "What is heard when the list has been filled: LVM_GETSELECTEDCOUNT in a WH_CALLWNDPROCRET hook, WM_SETREDRAW, "
    "WM_PARENTNOTIFY for the view?",
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

std::string Number(int64_t value) { return IntToStr(value); }

std::string Hex(uint64_t value) {
    char text[20];
    std::snprintf(text, sizeof text, "0x%llX", static_cast<unsigned long long>(value));
    return text;
}

std::string RectText(HWND window) {
    RECT r = {};
    if (!GetWindowRect(window, &r)) {
        return "none";
    }
    return Number(r.left) + "," + Number(r.top) + " " + Number(r.right - r.left) + "x" + Number(r.bottom - r.top);
}

std::string TextOf(HWND window) {
    wchar_t text[200] = {};
    SendMessageW(window, WM_GETTEXT, 200, reinterpret_cast<LPARAM>(text));
    return Utf8(text);
}

std::string ClassOf(HWND window) {
    char name[100] = "";
    GetClassNameA(window, name, sizeof name);
    return name;
}

std::string Utf8(std::wstring_view text) {
    std::string result(text.size() * 3, '\0');
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), result.data(),
                                         static_cast<int>(result.size()), nullptr, nullptr);
    result.resize(static_cast<size_t>(size));
    return result;
}

namespace {

struct TSearch {
    const char* Name;
    HWND Found;
};

BOOL CALLBACK LookAt(HWND window, LPARAM param) {
    auto& search = *reinterpret_cast<TSearch*>(param);
    search.Found = SameText(ClassOf(window), search.Name) ? window : nullptr;
    return search.Found == nullptr;
}

} // namespace

HWND FindInside(HWND window, const char* className) {
    TSearch search{className, nullptr};
    EnumChildWindows(window, LookAt, reinterpret_cast<LPARAM>(&search));
    return search.Found;
}

void TScript::Wait(unsigned milliseconds) {
    Then([this, milliseconds] { return GetTickCount64() - FSince >= milliseconds; }, [] {});
}

bool TScript::Run(const std::function<bool()>& dialog) {
    TTimer timer;
    timer.SetInterval(TickInterval);
    timer.SetOnTimer([this](TObject*) { Tick(); });
    FSince = GetTickCount64();
    return dialog();
}

void TScript::Tick() {
    if (FNext == FSteps.size()) {
        return;
    }
    const TStep step = FSteps[FNext];
    if (!step.When || step.When() || GetTickCount64() - FSince > StepPatience) {
        ++FNext;
        FSince = GetTickCount64();
        step.What(); // may run a loop of its own, in which the next steps are done
    }
}

TSampleFolder::TSampleFolder(int fileCount) : FFileCount(fileCount) {
    char temp[MAX_PATH] = "";
    GetTempPathA(MAX_PATH, temp);
    FPath = std::string(temp) + "kxprobe" + Number(GetCurrentProcessId());
    CreateDirectoryA(FPath.c_str(), nullptr);
    CreateDirectoryA((FPath + "\\inner").c_str(), nullptr);
    for (int i = 0; i < FFileCount; ++i) {
        CloseHandle(
            CreateFileA(FileName(i).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    }
}

TSampleFolder::~TSampleFolder() {
    for (int i = 0; i < FFileCount; ++i) {
        DeleteFileA(FileName(i).c_str());
    }
    RemoveDirectoryA((FPath + "\\inner").c_str());
    RemoveDirectoryA(FPath.c_str());
}

std::string TSampleFolder::FileName(int index) const { return FPath + "\\file " + Number(index) + ".txt"; }

} // namespace kx::probe
