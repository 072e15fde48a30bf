// SPDX-License-Identifier: MIT
// Views of the shell that behave as those of Windows.

#include "tests/support/ShellViews.h"

#include "support/WindowTools.h"

#include <shlobj.h>

namespace kx::test {

HWND ShellViewOf(HWND dialog) { return FindChild(dialog, "SHELLDLL_DefView"); }

void BrowseTo(HWND dialog, const std::string& folder) {
    auto* const browser = reinterpret_cast<IShellBrowser*>(SendMessageA(dialog, GetShellBrowserMessage, 0, 0));
    wchar_t path[MAX_PATH] = L"";
    MultiByteToWideChar(CP_ACP, 0, folder.c_str(), -1, path, MAX_PATH);
    LPITEMIDLIST pidl = nullptr;
    if (SUCCEEDED(SHParseDisplayName(path, nullptr, &pidl, 0, nullptr))) {
        browser->BrowseObject(pidl, SBSP_ABSOLUTE);
        CoTaskMemFree(pidl);
    }
}

// --- Views that come late

TLateView::TLateView(HWND dialog) : FDialog(dialog), FView(ShellViewOf(dialog)) { SetParent(FView, HWND_MESSAGE); }

void TLateView::Come() {
    if (IsWindow(FDialog) && IsWindow(FView) && GetParent(FView) != FDialog) {
        SetParent(FView, FDialog);
    }
}

// --- Windows that are not moved

TFrozenWindow::TFrozenWindow(HWND window)
    : FMessages(window, [this](TMessage& message) {
          if (message.Msg == WM_WINDOWPOSCHANGING) {
              message.LParamAs<WINDOWPOS>().flags |= SWP_NOMOVE | SWP_NOSIZE;
          }
          FMessages.CallPrevious(message);
      }) {}

// --- Virtual lists

TFeignedVirtualList::TFeignedVirtualList(HWND list)
    : FList(list), FMessages(list, [this](TMessage& message) {
          if (message.Msg != WM_STYLECHANGING && message.Msg != WM_STYLECHANGED) { // the list itself does not know
              FMessages.CallPrevious(message);
          }
      }) {
    SetVirtual(true);
}

TFeignedVirtualList::~TFeignedVirtualList() { SetVirtual(false); }

void TFeignedVirtualList::SetVirtual(bool value) {
    const LONG_PTR style = GetWindowLongPtrA(FList, GWL_STYLE) & ~LONG_PTR{LVS_OWNERDATA};
    SetWindowLongPtrA(FList, GWL_STYLE, value ? style | LVS_OWNERDATA : style);
}

LRESULT SendPastAll(HWND list, UINT message, WPARAM wParam, LPARAM lParam) {
    WNDCLASSA cls{};
    GetClassInfoA(nullptr, WC_LISTVIEWA, &cls);
    return CallWindowProcA(cls.lpfnWndProc, list, message, wParam, lParam);
}

void InsertUnseen(HWND list, int index) {
    char text[] = "unseen";
    LVITEMA item{};
    item.mask = LVIF_TEXT;
    item.iItem = index;
    item.pszText = text;
    SendPastAll(list, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
}

} // namespace kx::test
