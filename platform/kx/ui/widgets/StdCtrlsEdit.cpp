// SPDX-License-Identifier: MIT
// Edits of one line.

#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/CodePage.h"
#include "kx/win/ReflectedMessages.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

namespace {

/// Positions in an edit's text. The program counts in bytes of the code page, the window in UTF-16.
class TTextPositions {
public:
    explicit TTextPositions(HWND edit) : FWide(WideWindowText(edit)), FText(FromWide(FWide)) {}

    const std::string& Text() const { return FText; }

    /// A position inside a character counts as the one before it.
    WPARAM ToWindow(int bytes) const {
        const size_t whole = WholeCharacters(FText, static_cast<size_t>(std::max(bytes, 0)));
        return ToWide(std::string_view(FText).substr(0, whole)).size();
    }

    int ToBytes(size_t position) const {
        position = std::min(position, FWide.size());
        if (position > 0 && position < FWide.size() && IS_SURROGATE_PAIR(FWide[position - 1], FWide[position])) {
            --position;
        }
        return static_cast<int>(FromWide(std::wstring_view(FWide).substr(0, position)).size());
    }

private:
    std::wstring FWide;
    std::string FText;
};

struct TWindowSelection {
    DWORD Start = 0;
    DWORD End = 0;

    explicit TWindowSelection(HWND edit) {
        SendMessageW(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&Start), reinterpret_cast<LPARAM>(&End));
    }
};

} // namespace

namespace detail {

void RemoveHalfCharacter(HWND edit) {
    const size_t end = TWindowSelection(edit).End;
    const std::wstring text = WideWindowText(edit);
    if (end > 0 && end <= text.size() && IS_HIGH_SURROGATE(text[end - 1]) &&
        (end == text.size() || !IS_LOW_SURROGATE(text[end]))) {
        SendMessageW(edit, EM_SETSEL, end - 1, static_cast<LPARAM>(end));
        SendMessageW(edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L""));
    }
}

} // namespace detail

// --- TCustomEdit

const TClass& TCustomEdit::StaticClass() {
    static const TClassBuilder<TCustomEdit> cls("TCustomEdit", TWinControl::StaticClass(), [](auto& c) {
        using T = TCustomEdit;
        c.Property("AutoSelect", &T::AutoSelect, &T::SetAutoSelect).Default = true;
        c.Property("BorderStyle", &T::BorderStyle, &T::SetBorderStyle).Default = bsSingle;
        c.Property("CharCase", &T::CharCase, &T::SetCharCase).Default = ecNormal;
        c.Property("HideSelection", &T::HideSelection, &T::SetHideSelection).Default = true;
        c.Property("MaxLength", &T::MaxLength, &T::SetMaxLength).Default = 0;
        c.Property("PasswordChar", &T::PasswordChar, &T::SetPasswordChar).Default = 0;
        c.Property("ReadOnly", &T::ReadOnly, &T::SetReadOnly).Default = false;
        c.Property("ParentColor", &T::ParentColor, &T::SetParentColor).Default = false;
        c.Property("TabStop", &T::TabStop, &T::SetTabStop).Default = true;
        c.Property("OnChange", &T::OnChange, &T::SetOnChange);
    });
    return cls.Class();
}

const TClass& TEdit::StaticClass() {
    static const TClassBuilder<TEdit> cls("TEdit", TCustomEdit::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("Text", &TEdit::Text, &TEdit::SetText);
    });
    return cls.Class();
}

TCustomEdit::TCustomEdit(TComponent* owner) : TWinControl(owner) {
    SetControlStyle({csClickEvents, csDoubleClicks, csSetCaption});
    SetColor(clWindow);
    SetTabStop(true);
    SetBoundsFields(0, 0, 121, 21);
}

void TCustomEdit::CreateParams(TCreateParams& params) {
    TWinControl::CreateParams(params);
    params.BaseClass = "EDIT";
    params.Style |= ES_AUTOHSCROLL;
    params.Style |= FReadOnly ? DWORD{ES_READONLY} : 0;
    params.Style |= FHideSelection ? 0 : DWORD{ES_NOHIDESEL};
    params.Style |= FCharCase == ecUpperCase ? DWORD{ES_UPPERCASE} : 0;
    params.Style |= FCharCase == ecLowerCase ? DWORD{ES_LOWERCASE} : 0;
    params.Style |= FPasswordChar ? DWORD{ES_PASSWORD} : 0;
    params.ExStyle |= FBorderStyle == bsSingle ? DWORD{WS_EX_CLIENTEDGE} : 0;
}

void TCustomEdit::CreateWnd() {
    {
        const TFieldScope creating(*this, FCreating, true);
        TWinControl::CreateWnd();
    }
    SendMessageW(WindowHandle(), EM_LIMITTEXT, static_cast<WPARAM>(FMaxLength), 0);
    SendMessageW(WindowHandle(), EM_SETMODIFY, FModified, 0);
    // A byte that is no character of the code page would leave the text readable: the system's own character stays.
    if (FPasswordChar && (GetACP() != CP_UTF8 || IsAscii({&FPasswordChar, 1}))) {
        const std::wstring shown = ToWide({&FPasswordChar, 1});
        SendMessageW(WindowHandle(), EM_SETPASSWORDCHAR, shown.empty() ? L'*' : shown.front(), 0);
    }
}

void TCustomEdit::SaveWindowState() {
    const bool modified = Modified();
    TWinControl::SaveWindowState();
    FModified = modified;
}

void TCustomEdit::WndProc(TMessage& message) {
    if (message.Msg == CN_COMMAND) {
        if (message.WParamHi() == EN_CHANGE && !FCreating && !IsHalfTyped()) {
            Changed();
        }
        return;
    }
    if (message.Msg == WM_PASTE && FMaxLength > 0) {
        return Paste(message);
    }
    if (message.Msg == CN_CTLCOLORSTATIC) { // read-only or disabled
        message.Result = reinterpret_cast<LRESULT>(ControlColor(message.WParamDC()));
        return;
    }
    TWinControl::WndProc(message);
}

void TCustomEdit::Changed() {
    if (FPasting) {
        FPasted = true;
    } else {
        DoChange();
    }
}

void TCustomEdit::Paste(TMessage& message) {
    FPasted = false;
    {
        const TFieldScope pasting(*this, FPasting, true);
        if (!Outlives(*this, [&] { TWinControl::WndProc(message); })) {
            return;
        }
        detail::RemoveHalfCharacter(WindowHandle());
    }
    if (std::exchange(FPasted, false)) {
        DoChange();
    }
}

void TCustomEdit::DoChange() { FOnChange(this); }

void TCustomEdit::DoEnter() {
    if (FAutoSelect && GetKeyState(VK_LBUTTON) >= 0 && !dynamic_cast<TMemo*>(this)) {
        SelectAll();
    }
    TWinControl::DoEnter();
}

int TCustomEdit::SelStart() const {
    const HWND window = WindowHandle();
    return window ? TTextPositions(window).ToBytes(TWindowSelection(window).Start) : 0;
}

void TCustomEdit::SetSelStart(int value) {
    const HWND window = Handle();
    const WPARAM position = TTextPositions(window).ToWindow(value);
    SendMessageW(window, EM_SETSEL, position, static_cast<LPARAM>(position));
}

int TCustomEdit::SelLength() const { return static_cast<int>(SelText().size()); }

void TCustomEdit::SetSelLength(int value) {
    const HWND window = Handle();
    const TTextPositions positions(window);
    const DWORD start = TWindowSelection(window).Start;
    const int64_t end = int64_t{positions.ToBytes(start)} + std::max(value, 0);
    const auto length = static_cast<int64_t>(positions.Text().size());
    SendMessageW(window, EM_SETSEL, start,
                 static_cast<LPARAM>(positions.ToWindow(static_cast<int>(std::min(end, length)))));
}

std::string TCustomEdit::SelText() const {
    const HWND window = WindowHandle();
    if (!window) {
        return {};
    }
    const TTextPositions positions(window);
    const TWindowSelection selection(window);
    const auto start = static_cast<size_t>(positions.ToBytes(selection.Start));
    return positions.Text().substr(start, static_cast<size_t>(positions.ToBytes(selection.End)) - start);
}

void TCustomEdit::SetSelText(const std::string& value) {
    const HWND window = Handle();
    SendMessageW(window, EM_LIMITTEXT, 0, 0); // MaxLength limits the user, not the program
    const auto replace = [&] {
        SendMessageW(window, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(ToWide(value).c_str()));
    };
    if (Outlives(*this, replace) && WindowHandle() == window) {
        SendMessageW(window, EM_LIMITTEXT, static_cast<WPARAM>(FMaxLength), 0);
    }
}

void TCustomEdit::SelectAll() { SendMessageW(Handle(), EM_SETSEL, 0, -1); }

bool TCustomEdit::Modified() const {
    return HandleAllocated() ? SendMessageW(WindowHandle(), EM_GETMODIFY, 0, 0) != 0 : FModified;
}

void TCustomEdit::SetModified(bool value) { SendMessageW(Handle(), EM_SETMODIFY, value, 0); }

void TCustomEdit::SetMaxLength(int value) {
    FMaxLength = std::max(value, 0);
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), EM_LIMITTEXT, static_cast<WPARAM>(FMaxLength), 0);
    }
}

void TCustomEdit::SetReadOnly(bool value) {
    FReadOnly = value;
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), EM_SETREADONLY, value, 0);
    }
}

void TCustomEdit::SetPasswordChar(char value) { Change(FPasswordChar, value); }

} // namespace kx
