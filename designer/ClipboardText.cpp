// SPDX-License-Identifier: MIT
// Text in the clipboard.

#include "designer/ClipboardText.h"

#include "kx/core/SysUtils.h"
#include "kx/win/Windows.h"

#include <cstring>

namespace kx::designer {

std::string ClipboardText() {
    std::string text;
    if (OpenClipboard(nullptr)) {
        if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
            if (const auto* const chars = static_cast<const wchar_t*>(GlobalLock(data))) {
                text = FromWide(chars);
                GlobalUnlock(data);
            }
        }
        CloseClipboard();
    }
    return text;
}

void SetClipboardText(HWND owner, const std::string& text) {
    if (!OpenClipboard(owner)) {
        RaiseLastOSError();
    }
    EmptyClipboard();
    // As UTF-16: other programs would take text of our code page for text of the system's.
    const std::wstring wide = ToWide(text);
    const size_t size = (wide.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    if (void* const chars = memory ? GlobalLock(memory) : nullptr) {
        memcpy(chars, wide.c_str(), size);
        GlobalUnlock(memory);
        SetClipboardData(CF_UNICODETEXT, memory);
    }
    CloseClipboard();
}

} // namespace kx::designer
