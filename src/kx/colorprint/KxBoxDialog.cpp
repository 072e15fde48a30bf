// What the dialogs without a child window of their own ask of the system.

#include "kx/colorprint/KxBoxDialog.h"

#include "kx/win/Windows.h"

namespace kx::detail {

bool IsLastMessage(const TMessage& message) { return message.Msg == WM_DESTROY; }

void SetTitle(HWND window, const std::string& title) { SetWindowTextA(window, title.c_str()); }

} // namespace kx::detail
