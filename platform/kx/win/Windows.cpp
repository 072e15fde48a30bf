// SPDX-License-Identifier: MIT
// Texts as the system has them, the module, and the system's errors.

#include "kx/win/Windows.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace kx {

std::wstring ToWide(std::string_view text) {
    const int size = static_cast<int>(text.size());
    std::wstring wide(static_cast<size_t>(MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string FromWide(std::wstring_view text) {
    const int size = static_cast<int>(text.size());
    std::string narrow(
        static_cast<size_t>(WideCharToMultiByte(CP_ACP, 0, text.data(), size, nullptr, 0, nullptr, nullptr)), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), size, narrow.data(), static_cast<int>(narrow.size()), nullptr, nullptr);
    return narrow;
}

std::wstring ToWide(char32_t character) {
    if (character <= 0xFFFF) {
        const auto unit = static_cast<wchar_t>(character);
        return IS_HIGH_SURROGATE(unit) || IS_LOW_SURROGATE(unit) ? std::wstring() : std::wstring(1, unit);
    }
    if (character > 0x10FFFF) {
        return {};
    }
    const char32_t rest = character - 0x10000;
    return {static_cast<wchar_t>(HIGH_SURROGATE_START + (rest >> 10)),
            static_cast<wchar_t>(LOW_SURROGATE_START + (rest & 0x3FF))};
}

bool IsMirrored(HWND window) { return (GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0; }

std::string WindowText(HWND window) { return FromWide(WideWindowText(window)); }

std::wstring WideWindowText(HWND window) {
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

HINSTANCE HInstance() { return reinterpret_cast<HINSTANCE>(&__ImageBase); }

void RaiseLastOSError(DWORD code) {
    char text[512];
    DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0, text,
                                  sizeof text, nullptr);
    while (length > 0 && (text[length - 1] == '\n' || text[length - 1] == '\r' || text[length - 1] == '.')) {
        --length;
    }
    throw EOSError(Format("System Error.  Code: %s.\r\n%s", {IntToStr(code), std::string_view(text, length)}), code);
}

} // namespace kx
