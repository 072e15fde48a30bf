// SPDX-License-Identifier: MIT
// The window of the system's file dialog: what can be read from it and done to it.

#include "kx/opensave/KxFileDlgWindow.h"

#include "kx/frame/KxWhileAlive.h"
#include "kx/win/CodePage.h"
#include "kx/win/Dpi.h"
#include "kx/win/PathKind.h"
#include "kx/win/System.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <commdlg.h>
#include <objbase.h>
#include <vector>

namespace kx {

namespace {

/// Text that the dialog answers to `request`, a CDM_ message that takes a buffer's size and the buffer. Such messages
/// carry texts of the code page, as the function that shows the dialog does.
std::string RequestText(HWND dialog, UINT request) {
    if (!dialog) {
        return {};
    }
    std::string text(4 * MAX_PATH, '\0'); // enough in most cases: each answer takes the shell long
    const auto ask = [&] {
        return SendMessageA(dialog, request, text.size() - 1, reinterpret_cast<LPARAM>(text.data()));
    };
    const LRESULT length = ask();
    if (length <= 0) {
        return {};
    }
    // Windows counts bytes. Other systems count characters, each of which takes up to four bytes in UTF-8.
    const size_t needed = static_cast<size_t>(length) * 4 + 2;
    if (needed > text.size()) {
        text.assign(needed, '\0');
        ask();
    }
    text.resize(text.find('\0'));
    return text;
}

} // namespace

HWND TKxFileDlgWindow::Item(int controlId) const { return FDialog ? GetDlgItem(FDialog, controlId) : nullptr; }

// --- File name control

HWND TKxFileDlgWindow::GetEdit() const {
    HWND edit = Item(KxFileNameEditId);
    return edit ? edit : Item(KxFileNameComboId);
}

int TKxFileDlgWindow::GetEditCtrlId() const {
    return !FDialog || Item(KxFileNameEditId) ? KxFileNameEditId : KxFileNameComboId;
}

bool TKxFileDlgWindow::EditHasFocus() const {
    HWND edit = GetEdit();
    HWND focus = GetFocus();
    return edit && focus && (focus == edit || IsChild(edit, focus));
}

std::string TKxFileDlgWindow::GetFNameText() const {
    HWND edit = GetEdit();
    return WindowText(edit);
}

void TKxFileDlgWindow::SetFNameText(const std::string& text) const {
    if (FDialog) {
        SendMessageA(FDialog, CDM_SETCONTROLTEXT, static_cast<WPARAM>(GetEditCtrlId()),
                     reinterpret_cast<LPARAM>(text.c_str()));
    }
}

// --- Selection and folder

std::string TKxFileDlgWindow::GetSelFiles() const { return RequestText(FDialog, CDM_GETSPEC); }

std::string TKxFileDlgWindow::GetSelPath() const { return RequestText(FDialog, CDM_GETFOLDERPATH); }

unique_pidl TKxFileDlgWindow::GetSelPathPidl() const {
    const LRESULT size = FDialog ? SendMessageW(FDialog, CDM_GETFOLDERIDLIST, 0, 0) : 0;
    if (size <= 0) {
        return {};
    }
    unique_pidl pidl(static_cast<ITEMIDLIST*>(CoTaskMemAlloc(static_cast<SIZE_T>(size))));
    if (pidl) {
        SendMessageW(FDialog, CDM_GETFOLDERIDLIST, static_cast<WPARAM>(size), reinterpret_cast<LPARAM>(pidl.get()));
    }
    return pidl;
}

void TKxFileDlgWindow::SetSelPath(const std::string& path) const {
    HWND edit = GetEdit();
    if (!edit || KindOfPath(path) != pkFolder) {
        return;
    }
    HWND focus = GetFocus();
    SetFocus(edit);
    const std::string saved = WindowText(edit);
    SetWindowTextA(edit, path.c_str());
    KxCloseDialog(FDialog, mrOk);
    SetWindowTextA(edit, saved.c_str());
    if (IsWindow(focus)) { // a file list dies with its folder
        SetFocus(focus);
    }
}

void TKxFileDlgWindow::RefreshFileList() const {
    HWND edit = GetEdit();
    if (!edit) {
        return;
    }
    // OK with an empty name would enter a folder that is selected in the list. Reading anew ends the selection anyway.
    LVITEMA none{};
    none.stateMask = LVIS_SELECTED;
    SendMessageW(GetLVHandle(), LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&none));

    const std::string saved = WindowText(edit);
    SetWindowTextA(edit, "");
    KxCloseDialog(FDialog, mrOk);
    SetWindowTextA(edit, saved.c_str());

    // Windows has read the folder again at the empty name. Other systems ignore that command; their list, like that of
    // Windows, reads the folder at F5.
    if (System().Wine) {
        SendMessageW(GetLVHandle(), WM_KEYDOWN, VK_F5, 0);
    }
}

HWND TKxFileDlgWindow::GetDVHandle() const {
    return FDialog ? FindWindowExA(FDialog, nullptr, "SHELLDLL_DefView", nullptr) : nullptr;
}

HWND TKxFileDlgWindow::GetLVHandle() const {
    HWND view = GetDVHandle();
    return view ? FindWindowExA(view, nullptr, WC_LISTVIEWA, nullptr) : nullptr;
}

HWND TKxFileDlgWindow::ListPlaceholder() const {
    HWND placeholder = Item(KxListPlaceholderId);
    return placeholder ? placeholder : Item(KxShellViewId);
}

// --- Controls

void TKxFileDlgWindow::ShowControls(TKxOpenDlgControls visible) const {
    if (!FDialog) {
        return;
    }
    for (int i = 0; i < dcToolBar; ++i) {
        const auto control = static_cast<TKxOpenDlgControl>(i);
        if (control == dcSelectionCtrl) {
            continue;
        }
        // The table names the classic file name control; the dialog may have the newer one in its place.
        const int id = control == dcFileName ? GetEditCtrlId() : KxOpenDlgControlIds[control];
        if (visible.Contains(control)) {
            ShowWindow(Item(id), SW_SHOW);
        } else {
            SendMessageW(FDialog, CDM_HIDECONTROL, static_cast<WPARAM>(id), 0);
        }
    }
    KxEnumDirectChildren(FDialog, KxSrvShowToolBar, visible.Contains(dcToolBar));
}

BOOL CALLBACK KxSrvShowToolBar(HWND window, LPARAM show) {
    if (window != KxFindToolbar(GetAncestor(window, GA_ROOT))) {
        return TRUE;
    }
    ShowWindow(window, show ? SW_SHOW : SW_HIDE);
    return FALSE;
}

namespace {

/// Puts the window to the back of the dialog and out of sight.
void PutAway(HWND window) {
    if (IsWindowVisible(window)) {
        SetWindowPos(window, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_HIDEWINDOW);
    }
}

void ShowInSize(HWND window, int width, int height) {
    const TRect r = KxWindowRect(window);
    const bool fits = Width(r) == width && Height(r) == height;
    if (window && (!fits || !(GetWindowLongPtrA(window, GWL_STYLE) & WS_VISIBLE))) {
        SetWindowPos(window, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    }
}

void SetEnabled(HWND window, bool enabled) {
    if (window && (IsWindowEnabled(window) != 0) != enabled) {
        EnableWindow(window, enabled);
    }
}

} // namespace

/// The shell view takes the place of a list box: the view shows the files, the list box is never seen.
void TKxFileDlgWindow::ShowFileList(bool show, int width, int height) const {
    HWND edit = GetEdit();
    HWND placeholder = Item(KxListPlaceholderId);
    HWND view = Item(KxShellViewId);
    HWND list = GetLVHandle(); // the view may have other children before it
    if (KxIsShellView(placeholder)) {
        std::swap(placeholder, view);
    }
    PutAway(placeholder);
    if (show) {
        ShowInSize(view, width, height);
        ShowInSize(list, width, height);
    } else {
        // A hidden list keeps the focus, and keys like Delete would go on reaching files that nobody sees.
        if (IsChild(view, GetFocus())) {
            SetFocus(edit); // this may free the dialog, whose windows live on until it has ended
        }
        PutAway(view);
    }
    SetEnabled(placeholder, show);
    SetEnabled(view, show);
}

void TKxFileDlgWindow::SetTitle(std::string_view text) const {
    if (FDialog) {
        SetWindowTextA(FDialog, std::string(text.substr(0, WholeCharacters(text, 511))).c_str());
    }
}

void TKxFileDlgWindow::ClipUnderForms() const {
    std::vector<RECT> forms;
    std::vector<HWND> controls;
    for (HWND child = GetWindow(FDialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (FindControl(child)) {
            GetWindowRect(child, &forms.emplace_back());
        } else {
            controls.push_back(child);
        }
    }
    for (HWND control : controls) {
        RECT r{};
        RECT common{};
        GetWindowRect(control, &r);
        if (std::any_of(forms.begin(), forms.end(),
                        [&](const RECT& form) { return IntersectRect(&common, &r, &form); })) {
            SetWindowLongPtrA(control, GWL_STYLE, GetWindowLongPtrA(control, GWL_STYLE) | WS_CLIPSIBLINGS);
        }
    }
}

// --- Geometry

TRect TKxFileDlgWindow::SelectionRect() const {
    HWND placeholder = Item(KxListPlaceholderId);
    RECT outer{};
    RECT client{};
    GetWindowRect(placeholder, &outer);
    GetClientRect(placeholder, &client);
    POINT corner{outer.left, outer.top};
    ScreenToClient(FDialog, &corner);
    // Deliberate: width and height stand where one would expect the right and bottom edges.
    return {corner.x, corner.y, CheckedAdd(client.right, GetSystemMetrics(SM_CXDLGFRAME)),
            CheckedAdd(client.bottom, GetSystemMetrics(SM_CYDLGFRAME))};
}

void TKxFileDlgWindow::PushLowerControls(const TKxCustDlgParams& params) const {
    HWND edit = GetEdit();
    RECT name{};
    RECT list{};
    if (!GetWindowRect(edit, &name) || !GetWindowRect(ListPlaceholder(), &list) || name.top >= list.bottom ||
        name.bottom <= list.top) { // a dialog of the old style has the name above the list
        return;
    }
    const int32_t down = SystemLength(70);
    const auto pushRight = [&] {
        if (TForm* const right = params.RightForm()) {
            // Deliberate: it moves right by 36, where one would expect it to move down with the rest.
            right->SetLeft(CheckedAdd(right->Left(), SystemLength(36)));
        }
    };
    const auto pushBottom = [&] {
        if (TForm* const bottom = params.BottomForm()) {
            bottom->SetTop(CheckedAdd(bottom->Top(), down));
        }
    };
    if (!Outlives(params, [&] { KxInFormsThread([&] { KxWhileAlive(params, pushRight, pushBottom); }); })) {
        return;
    }
    for (HWND control : {edit, Item(KxFileNameLabelId), Item(KxFileTypeLabelId), Item(KxFileTypeId), Item(IDOK),
                         Item(IDCANCEL), Item(KxHelpButtonId), Item(KxReadOnlyId)}) {
        RECT r{};
        if (GetWindowRect(control, &r)) {
            MapWindowPoints(nullptr, FDialog, reinterpret_cast<POINT*>(&r), 2);
            SetWindowPos(control, nullptr, r.left, r.top + down, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        }
    }
}

// --- Commands

TKxFileDlgCommand TKxFileDlgWindow::CommandOf(const TMessage& message) const {
    const WORD id = message.WParamLo();
    const WORD code = message.WParamHi();
    if (code == 0) {
        switch (id) {
        case IDOK: return TKxFileDlgCommand::Ok;
        case KxCmdNewFolder: return TKxFileDlgCommand::NewFolder;
        case KxCmdDesktop: return TKxFileDlgCommand::Desktop;
        case KxCmdUpLevel: return TKxFileDlgCommand::UpLevel;
        case KxCmdLastFolder: return TKxFileDlgCommand::LastFolder;
        default: return CommandOfButton(id);
        }
    }
    if ((id == KxFileNameEditId && code == EN_CHANGE) ||
        (code == CBN_EDITCHANGE && message.LParam && message.LParamWindow() == GetEdit())) {
        return TKxFileDlgCommand::FileNameChanged;
    }
    return TKxFileDlgCommand::Other;
}

namespace {

/// Command of the button next to that of `command`, before or after it; 0 when there is none.
WORD NeighbourOf(HWND bar, WORD command, int step) {
    LRESULT index = SendMessageW(bar, TB_COMMANDTOINDEX, command, 0);
    if (index < 0) {
        return 0;
    }
    TBBUTTON button{};
    do {
        index += step;
        if (index < 0 ||
            !SendMessageW(bar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button))) {
            return 0;
        }
    } while ((button.fsStyle & BTNS_SEP) != 0);
    return static_cast<WORD>(button.idCommand);
}

} // namespace

/// Not all systems number the buttons alike. The button before up-one-level leads back to the last folder; one between
/// up-one-level and new-folder leads to the desktop.
TKxFileDlgCommand TKxFileDlgWindow::CommandOfButton(WORD id) const {
    HWND bar = KxFindToolbar(FDialog);
    const auto has = [bar](WORD command) { return SendMessageW(bar, TB_COMMANDTOINDEX, command, 0) >= 0; };
    if (!bar || id == 0 || !has(id)) {
        return TKxFileDlgCommand::Other;
    }
    if (!has(KxCmdLastFolder) && id == NeighbourOf(bar, KxCmdUpLevel, -1)) {
        return TKxFileDlgCommand::LastFolder;
    }
    if (!has(KxCmdDesktop) && id == NeighbourOf(bar, KxCmdUpLevel, 1) && id == NeighbourOf(bar, KxCmdNewFolder, -1)) {
        return TKxFileDlgCommand::Desktop;
    }
    return TKxFileDlgCommand::Other;
}

} // namespace kx
