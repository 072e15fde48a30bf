// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/WinTypes.h"
#include "tests/support/ImportPatch.h"

#include <vector>

// The looks that the user chooses for all programs.

namespace kx::test {

/// Tells all windows of this thread of a new theme, as the system does.
void TellThemeChanged();

/// The theme draws what the framework draws for the length of a scope, as if the program's manifest asked for it. The
/// system's own controls stay as they are.
class TThemed {
public:
    TThemed();
    TThemed(const TThemed&) = delete;
    TThemed& operator=(const TThemed&) = delete;
    ~TThemed();

private:
    TImportPatch FFinds;
};

/// No theme draws for the length of a scope, whatever the program's manifest asks for.
class TUnthemed {
public:
    TUnthemed();
    TUnthemed(const TUnthemed&) = delete;
    TUnthemed& operator=(const TUnthemed&) = delete;
    ~TUnthemed();

private:
    DWORD FBefore;
};

/// The system says for the length of a scope that the user needs strong contrasts. Colours and themes stay as they are,
/// and nobody is told.
class THighContrastSetting {
public:
    THighContrastSetting();

private:
    TImportPatch FAsked;
};

/// High contrast for the length of a scope: white, and some light colours, on black.
class THighContrast {
public:
    THighContrast();
    THighContrast(const THighContrast&) = delete;
    THighContrast& operator=(const THighContrast&) = delete;
    ~THighContrast();

private:
    TUnthemed FUnthemed;
    std::vector<COLORREF> FOld;
    THighContrastSetting FSetting;
};

/// Whether the system always shows marks for the keyboard, for the length of a scope.
class TKeyboardCues {
public:
    explicit TKeyboardCues(bool always);
    TKeyboardCues(const TKeyboardCues&) = delete;
    TKeyboardCues& operator=(const TKeyboardCues&) = delete;
    ~TKeyboardCues();

private:
    BOOL FBefore = TRUE;
};

} // namespace kx::test
