#pragma once

#include "kx/win/Windows.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace kx::probe {

constexpr int QuestionCount = 12;

/// The questions and what was found out, as the text that a user sends.
class TReport {
public:
    /// A line of the answer to a question, 1 to 12.
    void Say(int question, const std::string& line);
    int AnsweredCount() const;
    std::string Text() const;

private:
    std::array<std::vector<std::string>, QuestionCount> FAnswers;
};

std::string Number(int64_t value);
std::string Hex(uint64_t value);
std::string RectText(HWND window); ///< In screen coordinates.
std::string TextOf(HWND window);   ///< In UTF-8.
std::string ClassOf(HWND window);
std::string Utf8(std::wstring_view text);
/// The first window of that class inside another one, at any depth; null: none.
HWND FindInside(HWND window, const char* className);

/// Steps that are carried out one after the other inside a dialog's own loop. A step waits for its condition; when that
/// does not come true within five seconds, the step is done all the same, since the answer may be that it does not.
class TScript {
public:
    void Then(std::function<bool()> when, std::function<void()> what) {
        FSteps.push_back({std::move(when), std::move(what)});
    }
    void Wait(unsigned milliseconds); ///< For what happens by itself.
    /// Runs the dialog and the steps.
    bool Run(const std::function<bool()>& dialog);

private:
    struct TStep {
        std::function<bool()> When;
        std::function<void()> What;
    };
    void Tick();

    std::vector<TStep> FSteps;
    size_t FNext = 0;
    ULONGLONG FSince = 0;
};

// --- The questions

void AskOpenDialog(TReport& report, int fileCount); ///< 1, 2, 4 to 8
void AskSelection(TReport& report, int fileCount);  ///< 3
void AskSaveDialog(TReport& report);                ///< 11
void AskDockedForm(TReport& report);                ///< 9, 10
void AskPageScroller(TReport& report);              ///< 12

/// A folder of the probe's own, for as long as this lives, with so many files and a folder `inner`.
class TSampleFolder {
public:
    explicit TSampleFolder(int fileCount);
    TSampleFolder(const TSampleFolder&) = delete;
    TSampleFolder& operator=(const TSampleFolder&) = delete;
    ~TSampleFolder();
    const std::string& Path() const { return FPath; }

private:
    std::string FileName(int index) const;

    int FFileCount;
    std::string FPath;
};

} // namespace kx::probe
