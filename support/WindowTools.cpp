// SPDX-License-Identifier: MIT
// Reads windows as a user sees them.

#include "support/WindowTools.h"

#include "kx/core/SysUtils.h"
#include "kx/win/Subclass.h"

#include <commdlg.h>
#include <cstring>

namespace kx::test {

namespace {

constexpr std::string_view DialogClass = "#32770";
constexpr int MessageBoxTextId = 0xFFFF;
constexpr int FileNameComboId = 1148;
constexpr int FileNameEditId = 1152;

bool Matches(HWND window, std::string_view className, int id) {
    return (className.empty() || SameText(ClassOf(window), className)) && (id == AnyId || GetDlgCtrlID(window) == id);
}

void AppendTree(std::string& out, HWND window, size_t depth) {
    const TRect r = ScreenRectOf(window);
    out += std::string(depth * 2, ' ') + ClassOf(window) + " id=" + IntToStr(GetDlgCtrlID(window)) + " \"" +
           TextOf(window) + "\" [" + IntToStr(r.Left) + "," + IntToStr(r.Top) + " " + IntToStr(r.Right - r.Left) + "x" +
           IntToStr(r.Bottom - r.Top) + "]" + (IsWindowVisible(window) != 0 ? "" : " hidden") +
           (IsWindowEnabled(window) != 0 ? "" : " disabled") + "\n";
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        AppendTree(out, child, depth + 1);
    }
}

/// A result of SendMessage that does not wait for a thread that hangs.
bool Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    constexpr UINT patience = 1000;
    DWORD_PTR answer = 0;
    if (SendMessageTimeoutA(window, message, wParam, lParam, SMTO_ABORTIFHUNG | SMTO_BLOCK, patience, &answer) == 0) {
        return false;
    }
    result = static_cast<LRESULT>(answer);
    return true;
}

void SetItemSelected(HWND listView, int index, bool selected) {
    LVITEMA item{};
    item.state = selected ? LVIS_SELECTED : 0;
    item.stateMask = LVIS_SELECTED;
    SendMessageA(listView, LVM_SETITEMSTATE, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
}

} // namespace

std::string ClassOf(HWND window) {
    char name[128] = "";
    GetClassNameA(window, name, sizeof(name));
    return name;
}

std::string TextOf(HWND window) {
    LRESULT length = 0;
    if (!Ask(window, WM_GETTEXTLENGTH, 0, 0, length)) {
        return IsWindow(window) != 0 ? "(hung)" : "";
    }
    std::string text(static_cast<size_t>(length) + 1, '\0');
    LRESULT copied = 0;
    if (!Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()), copied)) {
        return "(hung)";
    }
    text.resize(static_cast<size_t>(copied));
    return text;
}

TRect ScreenRectOf(HWND window) {
    RECT r{};
    GetWindowRect(window, &r);
    return FromRECT(r);
}

TRect RectIn(HWND container, HWND window) {
    RECT r = ToRECT(ScreenRectOf(window));
    MapWindowPoints(nullptr, container, reinterpret_cast<POINT*>(&r), 2);
    return FromRECT(r);
}

TRect ClientRectOf(HWND window) {
    RECT r{};
    GetClientRect(window, &r);
    return FromRECT(r);
}

HWND FindChild(HWND parent, std::string_view className, int id) {
    HWND child = parent ? GetWindow(parent, GW_CHILD) : nullptr;
    while (child && !Matches(child, className, id)) {
        child = GetWindow(child, GW_HWNDNEXT);
    }
    return child;
}

HWND FindDescendant(HWND parent, std::string_view className, int id) {
    for (HWND child = parent ? GetWindow(parent, GW_CHILD) : nullptr; child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (Matches(child, className, id)) {
            return child;
        }
        if (HWND found = FindDescendant(child, className, id)) {
            return found;
        }
    }
    return nullptr;
}

std::vector<HWND> TopWindows(std::string_view className) {
    std::vector<HWND> found;
    for (HWND window = GetTopWindow(nullptr); window; window = GetWindow(window, GW_HWNDNEXT)) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process == GetCurrentProcessId() && IsWindowVisible(window) != 0 && Matches(window, className, AnyId)) {
            found.push_back(window);
        }
    }
    return found;
}

HWND ActiveDialog() {
    for (HWND window : TopWindows(DialogClass)) {
        if (IsWindowEnabled(window) != 0) {
            return window;
        }
    }
    return nullptr;
}

HWND ShownMessageBox() {
    for (HWND window : TopWindows(DialogClass)) {
        if (FindChild(window, "Static", MessageBoxTextId)) {
            return window;
        }
    }
    return nullptr;
}

std::string MessageBoxText(HWND box) { return TextOf(FindChild(box, "Static", MessageBoxTextId)); }

HWND ShownMenu() {
    const std::vector<HWND> menus = TopWindows("#32768");
    return menus.empty() ? nullptr : menus.front();
}

std::string WindowTree(HWND window) {
    std::string out;
    AppendTree(out, window, 0);
    return out;
}

std::string AllWindowTrees() {
    std::string out;
    for (HWND window : TopWindows()) {
        AppendTree(out, window, 0);
    }
    return out;
}

HWND FileListOf(HWND dialog) { return FindChild(FindChild(dialog, "SHELLDLL_DefView"), "SysListView32"); }

HWND FileNameEditOf(HWND dialog) {
    if (HWND combo = FindChild(dialog, {}, FileNameComboId)) {
        return FindDescendant(combo, "Edit");
    }
    return FindChild(dialog, {}, FileNameEditId);
}

std::string FolderOf(HWND dialog) {
    const LRESULT size = SendMessageA(dialog, CDM_GETFOLDERPATH, 0, 0);
    if (size <= 0) {
        return {};
    }
    constexpr size_t bytesPerCharacter = 4; // at most; the dialog counts characters and fills in bytes
    std::string path(static_cast<size_t>(size) * bytesPerCharacter + 1, '\0');
    SendMessageA(dialog, CDM_GETFOLDERPATH, path.size(), reinterpret_cast<LPARAM>(path.data()));
    path.resize(std::strlen(path.c_str()));
    return path;
}

int ItemCount(HWND listView) { return static_cast<int>(SendMessageA(listView, LVM_GETITEMCOUNT, 0, 0)); }

std::string ItemText(HWND listView, int index) {
    char text[1024] = "";
    LVITEMA item{};
    item.pszText = text;
    item.cchTextMax = sizeof(text);
    SendMessageA(listView, LVM_GETITEMTEXTA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
    return item.pszText;
}

std::vector<std::string> ItemTexts(HWND listView) {
    std::vector<std::string> texts;
    for (int i = 0; i < ItemCount(listView); ++i) {
        texts.push_back(ItemText(listView, i));
    }
    return texts;
}

int FindItem(HWND listView, std::string_view text) {
    for (int i = 0; i < ItemCount(listView); ++i) {
        if (ItemText(listView, i) == text) {
            return i;
        }
    }
    return -1;
}

TPoint ItemCenter(HWND listView, int index) {
    RECT r{LVIR_LABEL, 0, 0, 0};
    SendMessageA(listView, LVM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&r));
    POINT center{(r.left + r.right) / 2, (r.top + r.bottom) / 2};
    ClientToScreen(listView, &center);
    return FromPOINT(center);
}

bool SelectItem(HWND listView, std::string_view text) {
    const int index = FindItem(listView, text);
    if (index < 0) {
        return false;
    }
    SetItemSelected(listView, -1, false);
    SetItemSelected(listView, index, true);
    return true;
}

void SelectAllItems(HWND listView) {
    const int last = ItemCount(listView) - 1;
    TSubclass silence(GetParent(listView), [&silence](TMessage& message) {
        if (message.Msg != WM_NOTIFY || message.LParamAs<NMHDR>().code != LVN_ITEMCHANGED) {
            silence.CallPrevious(message);
        }
    });
    SetItemSelected(listView, -1, true);
    SetItemSelected(listView, last, false);
    silence.Uninstall();
    SetItemSelected(listView, last, true);
}

} // namespace kx::test
