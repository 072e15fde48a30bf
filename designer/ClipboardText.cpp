// Text in the clipboard.

#include "designer/ClipboardText.h"

#include "kx/core/SysUtils.h"
#include "kx/win/Windows.h"

namespace kx::designer {

std::string ClipboardText() {
    std::string text;
    if (OpenClipboard(nullptr)) {
        if (const HANDLE data = GetClipboardData(CF_TEXT)) {
            if (const auto* const chars = static_cast<const char*>(GlobalLock(data))) {
                text = chars;
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
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    if (void* const chars = memory ? GlobalLock(memory) : nullptr) {
        memcpy(chars, text.c_str(), text.size() + 1);
        GlobalUnlock(memory);
        SetClipboardData(CF_TEXT, memory);
    }
    CloseClipboard();
}

} // namespace kx::designer
