// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Windows.h"
#include "support/DialogDriver.h"
#include "support/TempFolder.h"
#include "support/WindowTools.h"

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace kx::probe {

using test::ClassOf;

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

std::string Hex(uint64_t value);
std::string RectText(HWND window); ///< In screen coordinates.
std::string TextOf(HWND window);   ///< In UTF-8.
std::string Utf8(std::wstring_view text);

/// Steps that are carried out one after the other inside a dialog's own loop. A step waits for its condition; when that
/// does not come true within five seconds, the step is done all the same, since the answer may be that it does not.
class TScript {
public:
    void Then(std::function<bool()> when, std::function<void()> what);
    void Wait(unsigned milliseconds); ///< For what happens by itself.
    /// Runs the dialog and the steps.
    bool Run(const std::function<bool()>& dialog);

private:
    test::TDialogDriver FDriver;
    ULONGLONG FSince = 0; ///< Tick count when the last step was done.
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
    std::string Path() const { return FFolder.Path(); }

private:
    test::TTempFolder FFolder{"kxprobe"};
};

} // namespace kx::probe
