#include "ui/Windows.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace kx {

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
