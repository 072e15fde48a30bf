// SPDX-License-Identifier: MIT
// The keyboard: tab order, focus and keys.

#include "kx/ui/controls/Controls.h"

#include "kx/ui/controls/ControlHost.h"
#include "kx/ui/controls/ParentForm.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <climits>

namespace kx {

// --- Tab order

int TWinControl::TabOrder() const {
    if (!Parent()) {
        return -1;
    }
    const auto& list = Parent()->FTabList;
    return static_cast<int>(std::find(list.begin(), list.end(), this) - list.begin());
}

void TWinControl::SetTabOrder(int value) {
    if (!Parent() || value < 0) {
        return;
    }
    if (IsLoading()) {
        FWantedTabOrder = value; // not all of its siblings are there yet
        return;
    }
    auto& list = Parent()->FTabList;
    std::erase(list, this);
    list.insert(list.begin() + std::min<std::ptrdiff_t>(value, std::ssize(list)), this);
    Parent()->ArrangeWindows();
}

/// Applies the tab order of the form file to the controls inside, now that all are there.
void TWinControl::FixTabOrder() {
    std::stable_sort(FTabList.begin(), FTabList.end(), [](const TWinControl* a, const TWinControl* b) {
        const auto rank = [](const TWinControl* c) { return c->FWantedTabOrder < 0 ? INT_MAX : c->FWantedTabOrder; };
        return rank(a) < rank(b);
    });
    for (TWinControl* control : FTabList) {
        control->FWantedTabOrder = -1;
    }
}

void TWinControl::SetTabStop(bool value) {
    if (FTabStop != value) {
        FTabStop = value;
        if (FHandle) {
            const LONG style = GetWindowLongA(FHandle, GWL_STYLE);
            const auto bit = static_cast<LONG>(WS_TABSTOP);
            SetWindowLongA(FHandle, GWL_STYLE, value ? style | bit : style & ~bit);
        }
    }
}

void TWinControl::GetTabOrderList(std::vector<TWinControl*>& list) const {
    for (TWinControl* control : FTabList) {
        list.push_back(control);
        control->GetTabOrderList(list);
    }
}

bool TWinControl::Focused() const { return FHandle && ::GetFocus() == FHandle; }

TWinControl* TWinControl::FindNextControl(TWinControl* current, bool forward, bool checkTabStop,
                                          bool checkParent) const {
    std::vector<TWinControl*> list;
    GetTabOrderList(list);
    const auto count = std::ssize(list);
    auto at = std::find(list.begin(), list.end(), current) - list.begin();
    if (at == count) {
        at = forward ? -1 : count;
    }
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        at += forward ? 1 : -1;
        at = (at + count) % count;
        TWinControl* const control = list[static_cast<size_t>(at)];
        if (control->CanFocus() && (!checkTabStop || control->TabStop()) &&
            (!checkParent || control->Parent() == this)) {
            return control;
        }
    }
    return nullptr;
}

void TWinControl::SelectNext(TWinControl* current, bool forward, bool checkTabStop) {
    if (TWinControl* const next = FindNextControl(current, forward, checkTabStop, !checkTabStop)) {
        next->SetFocus();
    }
}

// --- Focus

bool TWinControl::CanFocus() const {
    const TParentForm* const form = ParentFormOf(this);
    for (const TControl* control = this; control && control != form; control = control->Parent()) {
        if (!control->Visible() || !control->Enabled()) {
            return false;
        }
    }
    return form != nullptr || FParentWindow != nullptr;
}

void TWinControl::SetFocus() {
    TParentForm* const form = ParentFormOf(this);
    if (form && form != this) {
        form->FocusControl(*this);
    } else if (CanFocus()) {
        ::SetFocus(Handle());
    } else {
        throw EInvalidOperation("Cannot focus a disabled or invisible window");
    }
}

void TWinControl::FocusReceived(TMessage& message) {
    if (Outlives(*this, [&] { DefaultHandler(message); })) {
        EdgeChanged();
        FocusGained();
    }
}

void TWinControl::FocusLost(TMessage& message) {
    const auto to = reinterpret_cast<HWND>(message.WParam);
    if (Outlives(*this, [&] { DefaultHandler(message); })) {
        EdgeChanged();
        FocusWent(to);
    }
}

void TWinControl::FocusWent(HWND to) {
    if (TParentForm* const form = ParentFormOf(this)) {
        form->FocusLost(*this, to);
    }
}

void TWinControl::FocusGained() {
    if (TParentForm* const form = ParentFormOf(this)) {
        form->ControlFocused(*this);
    }
}

void TWinControl::FocusChanged(TWinControl* focused) {
    for (size_t i = 0; i < FTabList.size(); ++i) {
        FTabList[i]->FocusChanged(focused);
    }
}

void TWinControl::DoEnter() { FOnEnter(this); }
void TWinControl::DoExit() { FOnExit(this); }

// --- Keys

bool TWinControl::KeyHandler(HWND window, TMessage& message, const TPassOn& passOn) {
    const TAlive alive(*this);
    InputSeen(true);
    ControlHost().HideHint();
    if (!alive) {
        return true;
    }
    TParentForm* const form = ParentFormOf(this);
    TWinControl* const preview = form && form != this && form->KeyPreview() ? form : nullptr;
    switch (message.Msg) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_KEYUP:
    case WM_SYSKEYUP: {
        auto key = static_cast<uint16_t>(message.WParam);
        const bool down = message.Msg == WM_KEYDOWN || message.Msg == WM_SYSKEYDOWN;
        const bool used = Offer(preview, key, down ? &TWinControl::OfferKeyDown : &TWinControl::OfferKeyUp);
        message.WParam = key;
        return used || (message.Msg == WM_KEYDOWN && IsPageKey(key) && ChoosesPage(*form));
    }
    case WM_CHAR: return OfferChar(window, message, preview, passOn);
    default: // WM_SYSCHAR that a foreign message loop has passed on
        return form && form->IsDocked() && form->DialogChar(static_cast<wchar_t>(message.WParam));
    }
}

/// Ctrl+Tab, which chooses pages. System dialogs take it for Tab, unless the control with the focus wants it.
bool TWinControl::IsPageKey(uint16_t key) const {
    const TParentForm* const form = key == VK_TAB && GetKeyState(VK_CONTROL) < 0 ? ParentFormOf(this) : nullptr;
    return form && form->IsDocked();
}

/// Always true: where there are no pages, the focus goes on as with Tab.
bool TWinControl::ChoosesPage(TParentForm& form) {
    const TShiftState shift = KeyDataToShiftState();
    const HWND host = GetAncestor(form.WindowHandle(), GA_ROOT);
    bool used = false;
    if (Outlives(form, [&] { used = form.DialogKey(VK_TAB, shift); }) && !used) {
        SendMessageW(host, WM_NEXTDLGCTL, shift.Contains(ssShift), FALSE);
    }
    return true;
}

/// Offers a key to the form first, then to the control. True: used up, or the control is gone.
template <class K> bool TWinControl::Offer(TWinControl* preview, K& key, void (TWinControl::*member)(K&)) {
    const TAlive alive(*this);
    const TAlive formAlive(preview ? *preview : *this);
    if (preview) {
        (preview->*member)(key);
    }
    if (key != 0 && alive && formAlive) {
        (this->*member)(key);
    }
    return key == 0 || !alive;
}

namespace {

/// The character that two units of UTF-16 stand for.
char32_t CharacterOf(wchar_t first, wchar_t second) {
    return 0x10000 + (static_cast<char32_t>(first - HIGH_SURROGATE_START) << 10) +
           static_cast<char32_t>(second - LOW_SURROGATE_START);
}

/// An edit that has room for one half of a character only would take that.
bool HasRoomForBothHalves(HWND window) {
    const auto limit = static_cast<DWORD>(SendMessageW(window, EM_GETLIMITTEXT, 0, 0));
    if (limit == 0) {
        return true; // it is no edit
    }
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(window, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return int64_t{GetWindowTextLengthW(window)} - (end - start) + 2 <= limit;
}

} // namespace

bool TWinControl::OfferChar(HWND window, TMessage& message, TWinControl* preview, const TPassOn& passOn) {
    const auto unit = static_cast<wchar_t>(message.WParam);
    const wchar_t first = std::exchange(FFirstHalf, L'\0');
    if (IS_HIGH_SURROGATE(unit)) {
        FFirstHalf = unit;
        return true;
    }
    if (IS_LOW_SURROGATE(unit) && !first) {
        return true; // half a character is none
    }
    char32_t key = IS_LOW_SURROGATE(unit) ? CharacterOf(first, unit) : unit;
    const bool used = Offer(preview, key, &TWinControl::KeyPress);
    const std::wstring units = ToWide(key);
    if (used || units.empty() || (units.size() > 1 && !HasRoomForBothHalves(window))) {
        return true;
    }
    message.WParam = units.back();
    if (units.size() == 1) {
        return false;
    }
    TMessage half = message;
    half.WParam = units.front();
    const TFieldScope typing(*this, FHalfTyped, true);
    return !Outlives(*this, [&] { passOn(half); });
}

void TWinControl::CharHandler(HWND window, TMessage& message) {
    if (message.WParam == UNICODE_NOCHAR) { // somebody asks whether the window knows this message
        message.Result = TRUE;
        return;
    }
    for (const wchar_t unit : ToWide(static_cast<char32_t>(message.WParam))) {
        if (IsWindow(window)) {
            SendMessageW(window, WM_CHAR, unit, message.LParam);
        }
    }
}

void TWinControl::OfferKeyDown(uint16_t& key) { KeyDown(key, KeyDataToShiftState()); }
void TWinControl::OfferKeyUp(uint16_t& key) { KeyUp(key, KeyDataToShiftState()); }
void TWinControl::KeyDown(uint16_t& key, TShiftState shift) { FOnKeyDown(this, key, shift); }
void TWinControl::KeyPress(char32_t& key) { FOnKeyPress(this, key); }
void TWinControl::KeyUp(uint16_t& key, TShiftState shift) { FOnKeyUp(this, key, shift); }

void TWinControl::GetDlgCode(TMessage& message) {
    DefaultHandler(message);
    if (message.LParam == 0) {
        return;
    }
    const auto& key = message.LParamAs<MSG>();
    const auto code = static_cast<uint16_t>(key.wParam);
    if (key.message == WM_KEYDOWN && (IsPageKey(code) || WantsKey(code, KeyDataToShiftState()))) {
        message.Result |= DLGC_WANTMESSAGE;
    }
}

bool TWinControl::WantsKey(uint16_t, TShiftState) { return false; }

/// Whether the key is one that the system's dialogs would leave to the control, or that the control asks for.
bool TWinControl::KeepsKey(const MSG& message) {
    const auto code =
        static_cast<UINT>(SendMessageW(FHandle, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message)));
    switch (message.wParam) {
    case VK_TAB: return (code & (DLGC_WANTTAB | DLGC_WANTALLKEYS)) != 0;
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN: return (code & (DLGC_WANTARROWS | DLGC_WANTALLKEYS)) != 0;
    default: return (code & DLGC_WANTALLKEYS) != 0;
    }
}

bool TWinControl::PreTranslate(MSG& message) {
    TParentForm* const form = ParentFormOf(this);
    return form && form->PreTranslateFor(*this, message);
}

bool TWinControl::DialogKey(uint16_t key, TShiftState shift) {
    for (size_t i = 0; i < FTabList.size(); ++i) {
        if (FTabList[i]->Showing() && FTabList[i]->DialogKey(key, shift)) {
            return true;
        }
    }
    return false;
}

bool TWinControl::DialogChar(wchar_t letter) {
    for (size_t i = 0; i < FControls.size(); ++i) {
        if (FControls[i]->Visible() && FControls[i]->Enabled() && FControls[i]->DialogChar(letter)) {
            return true;
        }
    }
    return false;
}

} // namespace kx
