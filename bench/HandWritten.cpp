// SPDX-License-Identifier: MIT
// What one writes who has no library: hooks, CreateWindow and SetWindowSubclass.

#include "HandWritten.h"

#include "Showing.h"
#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <array>
#include <commctrl.h>
#include <shellapi.h>
#include <shlobj.h>
#include <string>
#include <vector>

namespace kx::bench {

namespace {

constexpr int Side = 180;    ///< Pixels of the panels at the left and right,
constexpr int Band = 90;     ///< and of those at the top and bottom.
constexpr int BarWidth = 91; ///< Of the places.
constexpr std::array Folders{CSIDL_DESKTOPDIRECTORY, CSIDL_DRIVES, CSIDL_PERSONAL, CSIDL_FAVORITES};

/// What a showing puts into the dialog.
struct TParts {
    bool WithPlaces;
    std::array<HWND, 4> Panels; ///< At the left, the top, the right and the bottom.
    HWND Bar;
    unique_himagelist Icons, HotIcons;
};

HWND Control(HWND panel, const char* className, DWORD style, DWORD extended, const RECT& r) {
    HWND control =
        CreateWindowExA(extended, className, "", WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, r.left, r.top,
                        r.right - r.left, r.bottom - r.top, panel, nullptr, GetModuleHandleA(nullptr), nullptr);
    SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    return control;
}

/// Where the panels are while no dialog is shown. As an application keeps its forms, one keeps them.
HWND Keeper() {
    static HWND keeper = CreateWindowExA(WS_EX_TOOLWINDOW, "STATIC", "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                         GetModuleHandleA(nullptr), nullptr);
    return keeper;
}

/// The same 20 controls as those of a docked form; hidden.
HWND NewPanel(int width, int height) {
    static const ATOM registered = [] {
        WNDCLASSA info{};
        info.lpfnWndProc = DefWindowProcA;
        info.hInstance = GetModuleHandleA(nullptr);
        info.hCursor = LoadCursorA(nullptr, IDC_ARROW);
        info.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
        info.lpszClassName = "HandWrittenPanel";
        return RegisterClassA(&info);
    }();
    HWND panel = CreateWindowExA(WS_EX_CONTROLPARENT, MAKEINTATOM(registered), "", WS_CHILD | WS_CLIPCHILDREN, 0, 0,
                                 width, height, Keeper(), nullptr, GetModuleHandleA(nullptr), nullptr);
    for (int i = 0; i < 20; ++i) {
        const int left = 4 + i % 5 * (width / 5);
        const int top = 4 + i / 5 * (height / 4);
        const RECT r{left, top, left + width / 5 - 6, top + height / 4 - 6};
        switch (i % 4) {
        case 0: Control(panel, "BUTTON", BS_PUSHBUTTON, 0, r); break;
        case 1: Control(panel, "EDIT", ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, r); break;
        case 2: Control(panel, "BUTTON", BS_AUTOCHECKBOX, 0, r); break;
        default: Control(panel, "COMBOBOX", CBS_DROPDOWN | WS_VSCROLL, 0, r); break;
        }
    }
    return panel;
}

HIMAGELIST IconsOfShell(int index) {
    HIMAGELIST list = ImageList_Create(GetSystemMetrics(SM_CXICON), GetSystemMetrics(SM_CYICON), ILC_COLOR32 | ILC_MASK,
                                       static_cast<int>(Folders.size()), 0);
    for (size_t i = 0; i < Folders.size(); ++i) {
        const unique_hicon icon(ExtractIconA(GetModuleHandleA(nullptr), "Shell32.dll", static_cast<UINT>(index)));
        ImageList_ReplaceIcon(list, -1, icon.get());
    }
    return list;
}

std::string NameOfFolder(int folder) {
    LPITEMIDLIST item = nullptr;
    SHFILEINFOA info{};
    if (SUCCEEDED(SHGetSpecialFolderLocation(nullptr, folder, &item))) {
        SHGetFileInfoA(reinterpret_cast<LPCSTR>(item), 0, &info, sizeof info, SHGFI_PIDL | SHGFI_DISPLAYNAME);
        CoTaskMemFree(item);
    }
    return info.szDisplayName;
}

HWND PlacesBar(HWND dialog, TParts& parts) {
    HWND bar = CreateWindowExA(0, TOOLBARCLASSNAMEA, "",
                               WS_CHILD | WS_CLIPSIBLINGS | CCS_VERT | CCS_NORESIZE | CCS_NODIVIDER |
                                   CCS_NOPARENTALIGN | TBSTYLE_FLAT | TBSTYLE_WRAPABLE,
                               0, 0, BarWidth, 232, dialog, nullptr, GetModuleHandleA(nullptr), nullptr);
    SendMessageA(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    parts.Icons.reset(IconsOfShell(3));
    parts.HotIcons.reset(IconsOfShell(4));
    SendMessageA(bar, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(parts.Icons.get()));
    SendMessageA(bar, TB_SETHOTIMAGELIST, 0, reinterpret_cast<LPARAM>(parts.HotIcons.get()));
    for (size_t i = 0; i < Folders.size(); ++i) {
        const std::string name = NameOfFolder(Folders[i]);
        TBBUTTON button{};
        button.iBitmap = static_cast<int>(i);
        button.idCommand = static_cast<int>(1000 + i);
        button.fsState = TBSTATE_ENABLED | TBSTATE_WRAP;
        button.fsStyle = BTNS_CHECKGROUP;
        button.iString = reinterpret_cast<INT_PTR>(name.c_str());
        SendMessageA(bar, TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&button));
    }
    SendMessageA(bar, TB_SETBUTTONSIZE, 0, MAKELPARAM(BarWidth - 4, 49));
    return bar;
}

void LayOut(HWND dialog, const TParts& parts) {
    RECT client{};
    GetClientRect(dialog, &client);
    const int inner = client.bottom - 2 * Band;
    HDWP moves = BeginDeferWindowPos(5);
    const auto move = [&](HWND window, int left, int top, int width, int height) {
        moves = DeferWindowPos(moves, window, nullptr, left, top, width, height,
                               SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    };
    const auto [left, top, right, bottom] = parts.Panels;
    move(left, 0, Band, Side, inner);
    move(right, client.right - Side, Band, Side, inner);
    move(top, 0, 0, client.right, Band);
    move(bottom, 0, client.bottom - Band, client.right, Band);
    if (parts.Bar) {
        move(parts.Bar, Side + 4, Band + 33, BarWidth, inner - 66);
    }
    EndDeferWindowPos(moves);
}

LRESULT CALLBACK FollowSize(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR data) {
    const auto& parts = *reinterpret_cast<const TParts*>(data);
    if (message == WM_DESTROY) {
        for (HWND panel : parts.Panels) {
            ShowWindow(panel, SW_HIDE);
            SetParent(panel, Keeper());
        }
        RemoveWindowSubclass(window, FollowSize, id);
    }
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    if (message == WM_SIZE) {
        LayOut(window, parts);
    }
    return result;
}

/// Makes room for the parts and puts them there.
void Extend(HWND dialog, TParts& parts) {
    const int shift = Side + (parts.WithPlaces ? BarWidth : 0);
    std::vector<HWND> controls;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        controls.push_back(child);
    }
    RECT window{};
    GetWindowRect(dialog, &window);
    SetWindowPos(dialog, nullptr, 0, 0, window.right - window.left + shift + Side,
                 window.bottom - window.top + 2 * Band, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    HDWP moves = BeginDeferWindowPos(static_cast<int>(controls.size()));
    for (HWND control : controls) {
        RECT r{};
        GetWindowRect(control, &r);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&r), 2);
        moves = DeferWindowPos(moves, control, nullptr, r.left + shift, r.top + Band, 0, 0,
                               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    EndDeferWindowPos(moves);
    static const std::array panels{NewPanel(180, 200), NewPanel(400, 90), NewPanel(180, 200), NewPanel(400, 90)};
    parts.Panels = panels;
    for (HWND panel : parts.Panels) {
        SetParent(panel, dialog);
    }
    if (parts.WithPlaces) {
        parts.Bar = PlacesBar(dialog, parts);
    }
    LayOut(dialog, parts);
    SetWindowSubclass(dialog, FollowSize, 1, reinterpret_cast<DWORD_PTR>(&parts));
}

UINT_PTR CALLBACK Hook(HWND window, UINT message, WPARAM, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<OPENFILENAMEA*>(lParam)->lCustData);
    } else if (message == WM_NOTIFY && reinterpret_cast<NMHDR*>(lParam)->code == CDN_INITDONE) {
        Extend(GetParent(window), *reinterpret_cast<TParts*>(GetWindowLongPtrA(window, GWLP_USERDATA)));
    }
    return 0;
}

} // namespace

void ShowHandWrittenDialog(bool places) {
    TParts parts{};
    parts.WithPlaces = places;
    ShowOpenDialogWith(Hook, reinterpret_cast<LPARAM>(&parts));
}

} // namespace kx::bench
