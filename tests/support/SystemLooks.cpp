// SPDX-License-Identifier: MIT
// The looks that the user chooses for all programs.

#include "tests/support/SystemLooks.h"

#include "kx/win/Windows.h"

#include <uxtheme.h>

namespace kx::test {

namespace {

BOOL WINAPI FindsThemedControls(DWORD, const GUID*, ULONG, LPCWSTR, ACTCTX_SECTION_KEYED_DATA*) { return TRUE; }

BOOL CALLBACK TellTheme(HWND window, LPARAM) {
    SendMessageW(window, WM_THEMECHANGED, 0, 0);
    return TRUE;
}

BOOL CALLBACK TellThemeInside(HWND window, LPARAM) {
    TellTheme(window, 0);
    EnumChildWindows(window, TellTheme, 0);
    return TRUE;
}

constexpr struct {
    int Index;
    COLORREF Color;
} Colors[] = {{COLOR_WINDOW, 0},
              {COLOR_WINDOWTEXT, 0xFFFFFF},
              {COLOR_WINDOWFRAME, 0xFFFFFF},
              {COLOR_BTNFACE, 0},
              {COLOR_BTNTEXT, 0xFFFFFF},
              {COLOR_BTNSHADOW, 0x808080},
              {COLOR_BTNHIGHLIGHT, 0xC0C0C0},
              {COLOR_3DLIGHT, 0x202020},
              {COLOR_3DDKSHADOW, 0xFFFFFF},
              {COLOR_GRAYTEXT, 0x3FF23F},
              {COLOR_HIGHLIGHT, 0xFFEB1A},
              {COLOR_HIGHLIGHTTEXT, 0},
              {COLOR_INFOBK, 0},
              {COLOR_INFOTEXT, 0xFFFFFF}};

void SetColors(const std::vector<COLORREF>& colors) {
    std::vector<int> indices;
    for (const auto& color : Colors) {
        indices.push_back(color.Index);
    }
    SetSysColors(static_cast<int>(indices.size()), indices.data(), colors.data());
}

/// All else goes by the function of the other text format, which is not replaced.
BOOL WINAPI ParametersWithHighContrast(UINT action, UINT number, void* data, UINT update) {
    if (action == SPI_GETHIGHCONTRAST) {
        static_cast<HIGHCONTRASTW*>(data)->dwFlags = HCF_HIGHCONTRASTON;
        return TRUE;
    }
    return SystemParametersInfoA(action, number, data, update);
}

} // namespace

void TellThemeChanged() { EnumThreadWindows(GetCurrentThreadId(), TellThemeInside, 0); }

TThemed::TThemed() : FFinds("FindActCtxSectionStringW", reinterpret_cast<void*>(FindsThemedControls)) {
    TellThemeChanged();
}

TThemed::~TThemed() { TellThemeChanged(); }

TUnthemed::TUnthemed() : FBefore(GetThemeAppProperties()) {
    SetThemeAppProperties(STAP_ALLOW_NONCLIENT);
    TellThemeChanged();
}

TUnthemed::~TUnthemed() {
    SetThemeAppProperties(FBefore);
    TellThemeChanged();
}

THighContrastSetting::THighContrastSetting()
    : FAsked("SystemParametersInfoW", reinterpret_cast<void*>(ParametersWithHighContrast)) {}

THighContrast::THighContrast() {
    std::vector<COLORREF> colors;
    for (const auto& color : Colors) {
        FOld.push_back(GetSysColor(color.Index));
        colors.push_back(color.Color);
    }
    SetColors(colors);
}

THighContrast::~THighContrast() { SetColors(FOld); }

TKeyboardCues::TKeyboardCues(bool always) {
    SystemParametersInfoA(SPI_GETKEYBOARDCUES, 0, &FBefore, 0);
    SystemParametersInfoA(SPI_SETKEYBOARDCUES, 0, reinterpret_cast<void*>(static_cast<UINT_PTR>(always)), 0);
}

TKeyboardCues::~TKeyboardCues() {
    SystemParametersInfoA(SPI_SETKEYBOARDCUES, 0, reinterpret_cast<void*>(static_cast<UINT_PTR>(FBefore)), 0);
}

} // namespace kx::test
