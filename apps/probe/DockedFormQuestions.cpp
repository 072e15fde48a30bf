// SPDX-License-Identifier: MIT
// Asks about typed text, drops and scrollers in docked forms.

#include "Report.h"

#include "kx/opensave/KxOpenDlg.h"
#include "kx/ui/widgets/ComCtrlsPageScroller.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Windows.h"

#include <shlobj.h>
#include <thread>

namespace kx::probe {

namespace {

void SendKey(WORD unit) {
    INPUT keys[2] = {};
    for (INPUT& key : keys) {
        key.type = INPUT_KEYBOARD;
        key.ki.wScan = unit;
        key.ki.dwFlags = KEYEVENTF_UNICODE;
    }
    keys[1].ki.dwFlags |= KEYEVENTF_KEYUP;
    SendInput(2, keys, sizeof(INPUT));
}

void SendButton(DWORD what) {
    INPUT button = {};
    button.type = INPUT_MOUSE;
    button.mi.dwFlags = what;
    SendInput(1, &button, sizeof button);
}

/// The folder as the shell's data for a drag; null when there is none.
IDataObject* DataOf(const std::string& path) {
    IDataObject* data = nullptr;
    LPITEMIDLIST pidl = nullptr;
    IShellFolder* parent = nullptr;
    LPCITEMIDLIST child = nullptr;
    if (SUCCEEDED(SHParseDisplayName(ToWide(path).c_str(), nullptr, &pidl, 0, nullptr)) &&
        SUCCEEDED(SHBindToParent(pidl, IID_IShellFolder, reinterpret_cast<void**>(&parent), &child))) {
        parent->GetUIObjectOf(nullptr, 1, &child, IID_IDataObject, nullptr, reinterpret_cast<void**>(&data));
        parent->Release();
    }
    CoTaskMemFree(pidl);
    return data;
}

/// Drags the folder from where the mouse is to a point, as a user does.
std::string Drag(const std::string& path, TPoint to) {
    IDataObject* const data = DataOf(path);
    if (!data) {
        return "no data to drag";
    }
    SendButton(MOUSEEVENTF_LEFTDOWN);
    std::thread mouse([to] {
        for (int i = 0; i < 10; ++i) {
            Sleep(50);
            SetCursorPos(to.X + i % 2, to.Y);
        }
        SendButton(MOUSEEVENTF_LEFTUP);
    });
    DWORD effect = 0;
    const HRESULT result = SHDoDragDrop(nullptr, data, nullptr, DROPEFFECT_COPY | DROPEFFECT_LINK, &effect);
    mouse.join();
    data->Release();
    return "SHDoDragDrop " + Hex(static_cast<DWORD>(result)) + ", effect " + IntToStr(effect);
}

class TDockedQuestions {
public:
    explicit TDockedQuestions(TReport& report) : FReport(report), FFolder(FSamples.Path()) {}
    void Ask();

private:
    void Type();
    void Typed();
    void Drop(bool dragScroll);
    void Dropped(bool dragScroll);

    TReport& FReport;
    TSampleFolder FSamples{10};
    std::string FFolder;
    TForm* FForm = nullptr;
    TEdit* FEdit = nullptr;
    TKxOpenDialog* FDialog = nullptr;
    std::string FDrag;
    int FPlaces = 0;
};

void TDockedQuestions::Type() {
    SetFocus(FEdit->Handle());
    for (const WORD unit : std::initializer_list<WORD>{0xE9, 0x416, 0x20AC, 0xD83D, 0xDE00}) {
        SendKey(unit);
    }
}

void TDockedQuestions::Typed() {
    std::string bytes;
    for (const char c : FEdit->Text()) {
        bytes += " " + Hex(static_cast<unsigned char>(c));
    }
    FReport.Say(9, "code page " + IntToStr(GetACP()) + ", the edit is " +
                       (IsWindowUnicode(FEdit->Handle()) ? "W" : "A") +
                       ", it has the focus: " + IntToStr(GetFocus() == FEdit->Handle()));
    FReport.Say(9, "typed U+00E9 U+0416 U+20AC U+1F600, read \"" + TextOf(FEdit->Handle()) + "\", bytes" + bytes);
}

void TDockedQuestions::Drop(bool dragScroll) {
    TKxPlacesBarFrm* const bar = FDialog->PlacesForm();
    if (!bar) {
        FReport.Say(10, "no places bar is shown");
        return;
    }
    bar->ps1->SetDragScroll(dragScroll);
    FPlaces = FDialog->PlacesBar().Places().Count();
    const TPoint from = FForm->ClientToScreen({5, 5});
    SetCursorPos(from.X, from.Y);
    FDrag = Drag(FFolder + "\\inner", bar->ToolBar1->ClientToScreen({40, 20}));
}

void TDockedQuestions::Dropped(bool dragScroll) {
    HWND popup = GetLastActivePopup(FDialog->DlgHandle());
    const bool asks = popup != FDialog->DlgHandle();
    FReport.Say(10, std::string("DragScroll ") + (dragScroll ? "on" : "off") + ": " + FDrag + "; " + IntToStr(FPlaces) +
                        " places before, " + IntToStr(FDialog->PlacesBar().Places().Count()) + " after" +
                        (asks ? ", \"" + TextOf(popup) + "\" is shown" : ""));
    if (asks) {
        PostMessageA(popup, WM_CLOSE, 0, 0);
    }
}

void TDockedQuestions::Ask() {
    Application().CreateForm(&FForm);
    FForm->SetBounds(0, 0, 300, 60);
    FEdit = new TEdit(FForm);
    FEdit->SetBounds(10, 20, 200, 21);
    FEdit->SetParent(FForm);
    TKxOpenDialog dialog(nullptr);
    FDialog = &dialog;
    dialog.SetInitialDir(FFolder);
    dialog.CustDlgParams().SetBottomForm(FForm);
    dialog.PlacesBar().SetNative(false);
    dialog.PlacesBar().SetAllowDrop(true);
    TKxPlace& place = *dialog.PlacesBar().Places().Add();
    place.SetPlaceName("Samples");
    place.SetPlacePath(FFolder);

    TScript script;
    script.Then([&] { return dialog.DlgHandle() && IsWindowVisible(dialog.DlgHandle()); }, [this] { Type(); });
    script.Wait(500);
    script.Then({}, [this] { Typed(); });
    for (const bool dragScroll : {true, false}) {
        script.Then({}, [=, this] { Drop(dragScroll); });
        script.Wait(1000);
        script.Then({}, [=, this] { Dropped(dragScroll); });
        script.Wait(300);
    }
    script.Then({}, [&] { PostMessageA(dialog.DlgHandle(), WM_COMMAND, IDCANCEL, 0); });
    script.Run([&] { return dialog.Execute(); });
}

} // namespace

void AskDockedForm(TReport& report) { TDockedQuestions(report).Ask(); }

void AskPageScroller(TReport& report) {
    HWND host = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 100, 100, nullptr, nullptr, HInstance(), nullptr);
    TSubclass sizes; // answers the pager how long its child is
    sizes.SetHandler([&](TMessage& message) {
        if (message.Msg == WM_NOTIFY && message.LParamAs<NMHDR>().code == PGN_CALCSIZE) {
            message.LParamAs<NMPGCALCSIZE>().iHeight = 300;
        } else {
            sizes.CallPrevious(message);
        }
    });
    sizes.Install(host);
    const auto child = [&](HWND parent, const char* name, int height) {
        return CreateWindowExA(0, name, "", WS_CHILD | WS_VISIBLE, 0, 0, 100, height, parent, nullptr, HInstance(),
                               nullptr);
    };
    HWND pager = child(host, WC_PAGESCROLLERA, 100);
    const auto say = [&](const std::string& when) {
        report.Say(12, when + ": button before " +
                           Hex(static_cast<DWORD>(SendMessageA(pager, PGM_GETBUTTONSTATE, 0, PGB_TOPORLEFT))) +
                           ", behind " +
                           Hex(static_cast<DWORD>(SendMessageA(pager, PGM_GETBUTTONSTATE, 0, PGB_BOTTOMORRIGHT))) +
                           " (0: invisible, 1: normal)");
    };
    const auto show = [&](HWND window) { SendMessageA(pager, PGM_SETCHILD, 0, reinterpret_cast<LPARAM>(window)); };
    ShowWindow(host, SW_SHOWNOACTIVATE);
    show(child(pager, "STATIC", 300));
    say("a long child");
    SendMessageA(pager, PGM_SETPOS, 0, 50);
    say("scrolled");
    show(nullptr);
    say("none");
    show(child(pager, "STATIC", 400));
    say("another long child");
    SendMessageA(pager, PGM_RECALCSIZE, 0, 0);
    say("and PGM_RECALCSIZE");
    DestroyWindow(host);
}

} // namespace kx::probe
