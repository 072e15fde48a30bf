// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/WinTypes.h"

#include <cstdint>
#include <string>

namespace kx {

/// A virtual key in the low byte and the keys held with it: scShift, scCtrl, scAlt. 0: none.
using TShortCut = uint16_t;
constexpr TShortCut scShift = 0x2000;
constexpr TShortCut scCtrl = 0x4000;
constexpr TShortCut scAlt = 0x8000;

constexpr TShortCut ShortCut(uint8_t key, TShortCut modifiers = 0) { return static_cast<TShortCut>(key | modifiers); }
std::string ShortCutToText(TShortCut shortCut);    ///< "Shift+Ctrl+F1"; empty for none, or a key without a name.
TShortCut TextToShortCut(const std::string& text); ///< Any letter case and order; 0 for a text that names none.
TShortCut ShortCutFromKeyMessage(WPARAM wParam, LPARAM lParam); ///< Of a WM_KEYDOWN or WM_SYSKEYDOWN.
/// The caption without the marks of its accelerator: "&Save && quit" becomes "Save & quit".
std::string StripHotkey(const std::string& caption);
/// The letter behind the accelerator mark in upper case; 0 without one, or when it is one beyond 16 bits.
wchar_t GetHotkey(const std::string& caption);
wchar_t UpperCaseLetter(wchar_t letter); ///< By the rules of the user's language.

} // namespace kx
