// SPDX-License-Identifier: MIT
// Themes of the system, and what else it says of looks.

#include "kx/win/Themes.h"

#include "kx/win/Dpi.h"
#include "kx/win/System.h"
#include "kx/win/Windows.h"

#include <uxtheme.h>
#include <vssym32.h>

namespace kx {

namespace {

/// The manifest that is in force gives our windows the controls that themes draw.
bool HasThemedControls() {
    ACTCTX_SECTION_KEYED_DATA data{};
    data.cbSize = sizeof data;
    return FindActCtxSectionStringW(0, nullptr, ACTIVATION_CONTEXT_SECTION_WINDOW_CLASS_REDIRECTION, L"Button",
                                    &data) != 0;
}

bool ThemesDrawControls() {
    return IsThemeActive() && IsAppThemed() && (GetThemeAppProperties() & STAP_ALLOW_CONTROLS) && HasThemedControls();
}

HANDLE OpenTheme(HWND window, TThemeKind kind) {
    constexpr const wchar_t* names[] = {L"BUTTON", L"EDIT", L"HEADER", L"TAB", L"TOOLBAR"};
    const wchar_t* const name = names[static_cast<size_t>(kind)];
    using TOpenForDpi = HANDLE(WINAPI*)(HWND window, LPCWSTR classes, UINT dpi); // since Windows 10
    static const auto openForDpi = SystemFunction<TOpenForDpi>("uxtheme.dll", "OpenThemeDataForDpi");
    return openForDpi ? openForDpi(window, name, static_cast<UINT>(WindowDpi(window))) : OpenThemeData(window, name);
}

} // namespace

void detail::TThemeTraits::Close(HANDLE theme) { CloseThemeData(theme); }

// --- TTheme

void TTheme::Draw(HDC dc, int part, int state, const TRect& rect) const { Draw(dc, part, state, rect, rect); }

void TTheme::Draw(HDC dc, int part, int state, const TRect& rect, const TRect& clip) const {
    const RECT whole = ToRECT(rect);
    const RECT shown = ToRECT(clip);
    DrawThemeBackground(FTheme, dc, part, state, &whole, &shown);
}

TRect TTheme::Inside(HDC dc, int part, int state, const TRect& rect) const {
    const RECT whole = ToRECT(rect);
    RECT inside = whole;
    return SUCCEEDED(GetThemeBackgroundContentRect(FTheme, dc, part, state, &whole, &inside)) ? FromRECT(inside) : rect;
}

COLORREF TTheme::TextColor(int part, int state, COLORREF otherwise) const {
    COLORREF color = 0;
    return SUCCEEDED(GetThemeColor(FTheme, part, state, TMT_TEXTCOLOR, &color)) ? color : otherwise;
}

// --- TSystemLook

TTheme TSystemLook::Theme(HWND window, TThemeKind kind) {
    TEntry& entry = FThemes[static_cast<size_t>(kind)];
    if (!entry.Asked) {
        entry.Asked = true;
        entry.Theme.reset(ThemesDrawControls() ? OpenTheme(window, kind) : nullptr);
    }
    return TTheme(entry.Theme.get());
}

bool TSystemLook::HighContrast() {
    if (!FHighContrast) {
        HIGHCONTRASTW info{};
        info.cbSize = sizeof info;
        FHighContrast = SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof info, &info, 0) &&
                        (info.dwFlags & HCF_HIGHCONTRASTON) != 0;
    }
    return *FHighContrast;
}

void TSystemLook::Changed() { *this = {}; }

} // namespace kx
