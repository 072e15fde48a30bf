// SPDX-License-Identifier: MIT
// Asks how the open dialog fills, shows and resizes its list.

#include "SystemDialog.h"

#include "kx/opensave/KxShellList.h"
#include "kx/win/Handles.h"
#include "kx/win/Subclass.h"
#include "kx/win/Windows.h"

#include <commdlg.h>
#include <shlobj.h>

namespace kx::probe {

namespace {

/// What a dialog window hears until it is painted for the first time.
class TFirstMessages {
public:
    explicit TFirstMessages(TReport& report) : FReport(report) {}
    void Watch(HWND window) { FSubclass.Install(window); }

private:
    void Receive(TMessage& message) {
        std::string line;
        switch (message.Msg) {
        case WM_SHOWWINDOW: line = "WM_SHOWWINDOW " + IntToStr(static_cast<int>(message.WParam)); break;
        case WM_NCPAINT: line = "WM_NCPAINT"; break;
        case WM_PAINT: line = "WM_PAINT"; break;
        case WM_WINDOWPOSCHANGING:
        case WM_WINDOWPOSCHANGED: {
            const auto& pos = message.LParamAs<WINDOWPOS>();
            line = Format("%s %s,%s %sx%s flags %s",
                          {message.Msg == WM_WINDOWPOSCHANGED ? "WM_WINDOWPOSCHANGED" : "WM_WINDOWPOSCHANGING",
                           IntToStr(pos.x), IntToStr(pos.y), IntToStr(pos.cx), IntToStr(pos.cy), Hex(pos.flags)});
            break;
        }
        default: break;
        }
        const bool last = message.Msg == WM_PAINT;
        FSubclass.CallPrevious(message);
        if (!line.empty() && !FOver) {
            HWND window = FSubclass.Handle();
            FReport.Say(5, line + ": now at " + RectText(window) + (IsZoomed(window) ? ", maximized" : "") +
                               (IsWindowVisible(window) ? ", visible" : ""));
        }
        FOver = FOver || last;
    }

    TReport& FReport;
    bool FOver = false;
    TSubclass FSubclass{[this](TMessage& message) { Receive(message); }};
};

/// What windows of the thread have answered, counted since the last look.
class TAnswered {
public:
    TAnswered() : FHook(SetWindowsHookExA(WH_CALLWNDPROCRET, Hook, nullptr, GetCurrentThreadId())) {}

    static std::string Look() {
        return Format("LVM_GETSELECTEDCOUNT %s times, WM_SETREDRAW(1) %s, WM_PARENTNOTIFY of a view %s",
                      {IntToStr(std::exchange(Asked, 0)), IntToStr(std::exchange(Redrawn, 0)),
                       IntToStr(std::exchange(Created, 0))});
    }

private:
    static LRESULT CALLBACK Hook(int code, WPARAM wParam, LPARAM lParam) {
        const auto& answered = *reinterpret_cast<const CWPRETSTRUCT*>(lParam);
        switch (code == HC_ACTION ? answered.message : WM_NULL) {
        case LVM_GETSELECTEDCOUNT: ++Asked; break;
        case WM_SETREDRAW: Redrawn += answered.wParam && ClassOf(answered.hwnd) == "SysListView32"; break;
        case WM_PARENTNOTIFY:
            Created += LOWORD(answered.wParam) == WM_CREATE &&
                       ClassOf(reinterpret_cast<HWND>(answered.lParam)) == "SHELLDLL_DefView";
            break;
        default: break;
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static inline int Asked = 0;
    static inline int Redrawn = 0;
    static inline int Created = 0;
    unique_hhook FHook;
};

class TOpenQuestions {
public:
    TOpenQuestions(TReport& report, const std::string& folder)
        : FReport(report), FDialog(folder), FInner(folder + "\\inner"), FFirst(report) {}

    void Ask();

private:
    void Kinds(const std::string& when);
    void ToolBar();
    void Places(const std::string& when);
    void Menu(const std::string& of);
    void Items();
    void DeleteItem();
    void RemoveObject();
    void Go(const std::string& folder) const;
    TScript& Script() { return FDialog.Script; }

    TReport& FReport;
    TSystemDialog FDialog;
    std::string FInner;
    std::string FMenuOf; ///< Whose menu is to come.
    TFirstMessages FFirst;
    TSubclass FView{[this](TMessage& message) {
        FView.CallPrevious(message);
        if (message.Msg == WM_INITMENUPOPUP && !FMenuOf.empty()) {
            const auto menu = reinterpret_cast<HMENU>(message.WParam);
            std::string ids;
            for (int i = 0; i < GetMenuItemCount(menu); ++i) {
                ids += " " + IntToStr(static_cast<int>(GetMenuItemID(menu, i)));
            }
            FReport.Say(7, std::exchange(FMenuOf, {}) + ":" + ids);
        }
    }};
    TSubclass FList;
    TSubclass FName;
};

void TOpenQuestions::Kinds(const std::string& when) {
    HWND list = FDialog.List();
    HWND header = test::FindDescendant(list, "SysHeader32");
    const auto kind = [](HWND window) { return std::string(!window ? "none" : IsWindowUnicode(window) ? "W" : "A"); };
    FReport.Say(8, when + ": dialog " + kind(FDialog.Root()) + ", view " + kind(FDialog.View()) + ", list " +
                       kind(list) + ", name " + kind(FDialog.Name()) + "; the list tells its header NF " +
                       IntToStr(SendMessageA(list, WM_NOTIFYFORMAT, reinterpret_cast<WPARAM>(header), NF_QUERY)) +
                       " (2: Unicode), tool tips " +
                       kind(reinterpret_cast<HWND>(SendMessageA(list, LVM_GETTOOLTIPS, 0, 0))));
}

void TOpenQuestions::ToolBar() {
    for (HWND bar = nullptr; (bar = FindWindowExA(FDialog.Root(), bar, TOOLBARCLASSNAMEA, nullptr)) != nullptr;) {
        std::string line = "tool bar " + IntToStr(GetDlgCtrlID(bar)) + ":";
        const LRESULT count = SendMessageA(bar, TB_BUTTONCOUNT, 0, 0);
        for (LRESULT i = 0; i < count; ++i) {
            TBBUTTON button = {};
            SendMessageA(bar, TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
            line += " " + IntToStr(button.idCommand);
        }
        FReport.Say(6, line);
    }
    HWND box = GetDlgItem(FDialog.Root(), 1137);
    const LONG style = GetWindowLongA(box, GWL_STYLE);
    FReport.Say(6, "1137: " + ClassOf(box) + " style " + Hex(static_cast<DWORD>(style)) +
                       (style & CBS_HASSTRINGS ? ", has strings" : ", has no strings"));
}

void TOpenQuestions::Places(const std::string& when) {
    FReport.Say(4, when + ": dialog " + RectText(FDialog.Root()) + ", view " + RectText(FDialog.View()) + ", list " +
                       RectText(FDialog.List()) + ", 1120 " + RectText(GetDlgItem(FDialog.Root(), 1120)));
}

/// Opens the menu; the view's handler notes it, and the next step closes it.
void TOpenQuestions::Menu(const std::string& of) {
    FMenuOf = of;
    PostMessageA(FDialog.View(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(FDialog.List()), -1);
}

void TOpenQuestions::Items() {
    HWND list = FDialog.List();
    const LONG style = GetWindowLongA(list, GWL_STYLE);
    FReport.Say(2, ClassOf(list) + " style " + Hex(static_cast<DWORD>(style)) +
                       (style & LVS_OWNERDATA ? ", virtual" : ", not virtual") + ", " + IntToStr(FDialog.ItemCount()) +
                       " items");
    for (int i = 0; i < 2; ++i) {
        LVITEMA item = {};
        item.mask = LVIF_PARAM;
        item.iItem = i;
        const bool told = SendMessageA(list, LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item)) != 0;
        FReport.Say(2, "item " + IntToStr(i) + " \"" + test::ItemText(list, i) + "\": LVM_GETITEM " + IntToStr(told) +
                           ", lParam " + Hex(static_cast<UINT_PTR>(item.lParam)));
    }
}

void TOpenQuestions::DeleteItem() {
    HWND list = FDialog.List();
    const LRESULT done = SendMessageA(list, LVM_DELETEITEM, 0, 0);
    FReport.Say(2, "LVM_DELETEITEM of item 0 answers " + IntToStr(done) + "; then there are " +
                       IntToStr(FDialog.ItemCount()) + " items, the first of them \"" + test::ItemText(list, 0) + "\"");
}

void TOpenQuestions::RemoveObject() {
    IShellBrowser* const browser = KxShellBrowserOf(FDialog.Root());
    IShellView* view = nullptr;
    if (!browser || FAILED(browser->QueryActiveShellView(&view))) {
        FReport.Say(2, "no browser, or none that has a view");
        return;
    }
    IShellFolderView* folderView = nullptr;
    IFolderView* items = nullptr;
    view->QueryInterface(IID_IFolderView, reinterpret_cast<void**>(&items));
    view->QueryInterface(KxShellFolderViewId, reinterpret_cast<void**>(&folderView));
    PITEMID_CHILD pidl = nullptr;
    if (!items || FAILED(items->Item(0, &pidl)) || !folderView) {
        FReport.Say(2,
                    Format("IFolderView: %s, item 0: %s, IShellFolderView: %s",
                           {IntToStr(items != nullptr), IntToStr(pidl != nullptr), IntToStr(folderView != nullptr)}));
    } else {
        UINT index = 0;
        const HRESULT result = folderView->RemoveObject(pidl, &index);
        FReport.Say(2, "RemoveObject of item 0 answers " + Hex(static_cast<DWORD>(result)) + ", index " +
                           IntToStr(index) + "; then there are " + IntToStr(FDialog.ItemCount()) +
                           " items, the first of them \"" + test::ItemText(FDialog.List(), 0) + "\"");
    }
    CoTaskMemFree(pidl);
    for (IUnknown* object :
         {static_cast<IUnknown*>(folderView), static_cast<IUnknown*>(items), static_cast<IUnknown*>(view)}) {
        if (object) {
            object->Release();
        }
    }
}

void TOpenQuestions::Go(const std::string& folder) const {
    SetWindowTextA(FDialog.Name(), folder.c_str());
    FDialog.Press(IDOK);
}

void TOpenQuestions::Ask() {
    const TAnswered answered;
    FDialog.OnInit = [this] {
        FReport.Say(8, Format("at WM_INITDIALOG: dialog %s", {IsWindowUnicode(FDialog.Root()) ? "W" : "A"}));
        FFirst.Watch(FDialog.Root());
    };
    FDialog.OnNotify = [this](UINT code) {
        if (code == CDN_INITDONE || code == CDN_FOLDERCHANGE) {
            FReport.Say(1, Format("before %s: %s; list with %s items",
                                  {code == CDN_INITDONE ? "CDN_INITDONE" : "CDN_FOLDERCHANGE", TAnswered::Look(),
                                   IntToStr(FDialog.ItemCount())}));
        }
    };
    const auto filled = [this] { return FDialog.IsFilled(); };
    Script().Then(filled, [this] {
        FReport.Say(1, "once filled: " + TAnswered::Look());
        Kinds("before");
        FView.Install(FDialog.View());
        FList.SetHandler([this](TMessage& message) { FList.CallPrevious(message); });
        FList.Install(FDialog.List());
        FName.SetHandler([this](TMessage& message) { FName.CallPrevious(message); });
        FName.Install(FDialog.Name());
        Kinds("subclassed");
        ToolBar();
        Items();
        Places("at first");
        RECT r = {};
        GetWindowRect(FDialog.Root(), &r);
        SetWindowPos(FDialog.Root(), nullptr, 0, 0, r.right - r.left + 90, r.bottom - r.top + 70,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        Places("90x70 larger");
        FDialog.Select("file 1.txt");
        Menu("file");
    });
    Script().Wait(500);
    Script().Then({}, [this] {
        EndMenu();
        FDialog.Select("");
        Menu("background");
    });
    Script().Wait(500);
    Script().Then({}, [this] {
        EndMenu();
        DeleteItem();
        RemoveObject();
        Go(FInner);
    });
    Script().Wait(1000);
    Script().Then({}, [this] {
        FReport.Say(1, "in another folder: " + TAnswered::Look());
        Places("in another folder");
        if (!FMenuOf.empty()) {
            FReport.Say(7, "no menu of " + FMenuOf + " came");
        }
        FDialog.Press(IDCANCEL);
    });
    FDialog.Run();
}

} // namespace

void AskOpenDialog(TReport& report, int fileCount) {
    const TSampleFolder folder(fileCount);
    TOpenQuestions(report, folder.Path()).Ask();
}

} // namespace kx::probe
