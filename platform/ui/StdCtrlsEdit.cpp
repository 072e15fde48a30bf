#include "ui/Forms.h"
#include "ui/StdCtrls.h"

namespace kx {

// --- TCustomEdit

const TClass& TCustomEdit::StaticClass() {
    static const TClassBuilder<TCustomEdit> cls("TCustomEdit", TWinControl::StaticClass(), [](auto& c) {
        using T = TCustomEdit;
        c.Property("AutoSelect", &T::AutoSelect, &T::SetAutoSelect).Default = 1;
        c.Property("BorderStyle", &T::BorderStyle, &T::SetBorderStyle).Default = bsSingle;
        c.Property("CharCase", &T::CharCase, &T::SetCharCase).Default = ecNormal;
        c.Property("HideSelection", &T::HideSelection, &T::SetHideSelection).Default = 1;
        c.Property("MaxLength", &T::MaxLength, &T::SetMaxLength).Default = 0;
        c.Property("PasswordChar", &T::PasswordChar, &T::SetPasswordChar).Default = 0;
        c.Property("ReadOnly", &T::ReadOnly, &T::SetReadOnly).Default = 0;
        c.Property("ParentColor", &T::ParentColor, &T::SetParentColor).Default = 0;
        c.Property("TabStop", &T::TabStop, &T::SetTabStop).Default = 1;
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
    SendMessageA(WindowHandle(), EM_LIMITTEXT, static_cast<WPARAM>(FMaxLength), 0);
    if (FPasswordChar) {
        SendMessageA(WindowHandle(), EM_SETPASSWORDCHAR, static_cast<uint8_t>(FPasswordChar), 0);
    }
}

void TCustomEdit::WndProc(TMessage& message) {
    if (message.Msg == CN_COMMAND) {
        if (message.WParamHi() == EN_CHANGE && !FCreating) {
            DoChange();
        }
        return;
    }
    if (message.Msg == CN_CTLCOLORSTATIC) { // read-only or disabled
        message.Result = reinterpret_cast<LRESULT>(ControlColor(message.WParamDC()));
        return;
    }
    TWinControl::WndProc(message);
}

void TCustomEdit::DoChange() { FOnChange(this); }

void TCustomEdit::DoEnter() {
    if (FAutoSelect && GetKeyState(VK_LBUTTON) >= 0 && !dynamic_cast<TMemo*>(this)) {
        SelectAll();
    }
    TWinControl::DoEnter();
}

int TCustomEdit::SelStart() {
    DWORD start = 0;
    SendMessageA(Handle(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
    return static_cast<int>(start);
}

void TCustomEdit::SetSelStart(int value) { SendMessageA(Handle(), EM_SETSEL, static_cast<WPARAM>(value), value); }

int TCustomEdit::SelLength() {
    DWORD start = 0;
    DWORD end = 0;
    SendMessageA(Handle(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return static_cast<int>(end - start);
}

void TCustomEdit::SetSelLength(int value) {
    const int start = SelStart();
    SendMessageA(Handle(), EM_SETSEL, static_cast<WPARAM>(start), start + value);
}

std::string TCustomEdit::SelText() {
    const auto start = static_cast<size_t>(SelStart());
    const auto length = static_cast<size_t>(SelLength());
    const std::string text = Text();
    return start < text.size() ? text.substr(start, length) : std::string();
}

void TCustomEdit::SetSelText(const std::string& value) {
    SendMessageA(Handle(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(value.c_str()));
}

void TCustomEdit::SelectAll() { SendMessageA(Handle(), EM_SETSEL, 0, -1); }

bool TCustomEdit::Modified() const {
    return HandleAllocated() && SendMessageA(WindowHandle(), EM_GETMODIFY, 0, 0) != 0;
}

void TCustomEdit::SetModified(bool value) { SendMessageA(Handle(), EM_SETMODIFY, value, 0); }

void TCustomEdit::SetMaxLength(int value) {
    FMaxLength = value;
    if (HandleAllocated()) {
        SendMessageA(WindowHandle(), EM_LIMITTEXT, static_cast<WPARAM>(value), 0);
    }
}

void TCustomEdit::SetReadOnly(bool value) {
    FReadOnly = value;
    if (HandleAllocated()) {
        SendMessageA(WindowHandle(), EM_SETREADONLY, value, 0);
    }
}

void TCustomEdit::SetPasswordChar(char value) { Change(FPasswordChar, value); }

// --- TMemo

namespace {

/// The text of a memo as lines.
class TMemoLines : public TStrings {
public:
    explicit TMemoLines(TMemo& memo) : FMemo(memo) {}

    int Count() const override { return Load().Count(); }
    std::string Get(int index) const override { return Load().Get(index); }
    void Put(int index, const std::string& text) override {
        Change([&](TStringList& lines) { lines.Put(index, text); });
    }
    void Clear() override { FMemo.SetText(""); }
    void Delete(int index) override {
        Change([&](TStringList& lines) { lines.Delete(index); });
    }
    void Insert(int index, const std::string& text) override {
        Change([&](TStringList& lines) { lines.Insert(index, text); });
    }
    void SetText(std::string_view text) override { FMemo.SetText(std::string(text)); }

private:
    struct TLines : TStringList {}; // on the stack

    const TStringList& Load() const {
        FCache.SetText(FMemo.Text());
        return FCache;
    }
    template <class F> void Change(F&& change) {
        TLines lines;
        lines.SetText(FMemo.Text());
        change(lines);
        FMemo.SetText(lines.Text());
    }

    TMemo& FMemo;
    mutable TLines FCache;
};

} // namespace

const TClass& TMemo::StaticClass() {
    static const TClassBuilder<TMemo> cls("TMemo", TCustomEdit::StaticClass(), [](auto& c) {
        using T = TMemo;
        c.Creatable();
        c.SubObject("Lines", &T::Lines, &T::SetLines);
        c.Property("ScrollBars", &T::ScrollBars, &T::SetScrollBars).Default = ssNone;
        c.Property("WordWrap", &T::WordWrap, &T::SetWordWrap).Default = 1;
        c.Property("WantReturns", &T::WantReturns, &T::SetWantReturns).Default = 1;
        c.Property("WantTabs", &T::WantTabs, &T::SetWantTabs).Default = 0;
    });
    return cls.Class();
}

TMemo::TMemo(TComponent* owner) : TCustomEdit(owner), FLines(std::make_unique<TMemoLines>(*this)) {
    SetBoundsFields(0, 0, 185, 89);
}

TMemo::~TMemo() = default;

void TMemo::CreateParams(TCreateParams& params) {
    TCustomEdit::CreateParams(params);
    params.Style |= ES_MULTILINE | ES_AUTOVSCROLL;
    if (FWordWrap) {
        params.Style &= ~static_cast<DWORD>(ES_AUTOHSCROLL);
    }
    params.Style |= FWantReturns ? DWORD{ES_WANTRETURN} : 0;
    params.Style |= FScrollBars == ssHorizontal || FScrollBars == ssBoth ? DWORD{WS_HSCROLL} : 0;
    params.Style |= FScrollBars == ssVertical || FScrollBars == ssBoth ? DWORD{WS_VSCROLL} : 0;
}

void TMemo::WndProc(TMessage& message) {
    TCustomEdit::WndProc(message);
    if (message.Msg == WM_GETDLGCODE) {
        // The system's edit asks for every key once it has lines.
        message.Result &= ~static_cast<LRESULT>(DLGC_WANTTAB | DLGC_WANTALLKEYS);
        message.Result |= FWantTabs ? DLGC_WANTTAB : 0;
        const auto* const key = reinterpret_cast<const MSG*>(message.LParam);
        if (key && key->message == WM_KEYDOWN &&
            ((key->wParam == VK_RETURN && (FWantReturns || GetKeyState(VK_CONTROL) < 0)) ||
             (key->wParam == VK_TAB && FWantTabs))) {
            message.Result |= DLGC_WANTMESSAGE;
        }
    }
}

} // namespace kx
