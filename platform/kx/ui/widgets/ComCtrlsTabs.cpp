// SPDX-License-Identifier: MIT
// Tabs.

#include "kx/ui/widgets/ComCtrls.h"

#include "kx/win/Dpi.h"
#include "kx/win/ReflectedMessages.h"
#include "kx/win/Windows.h"

#include <vsstyle.h>

namespace kx {

const TClass& TCustomTabControl::StaticClass() {
    static const TClassBuilder<TCustomTabControl> cls("TCustomTabControl", TWinControl::StaticClass());
    return cls.Class();
}

TCustomTabControl::TCustomTabControl(TComponent* owner) : TWinControl(owner), FTabs(std::make_unique<TStringList>()) {
    SetControlStyle({csAcceptsControls, csClickEvents, csDoubleClicks});
    SetTabStop(true);
    SetBoundsFields(0, 0, 289, 193);
    FTabs->SetOnChange([this](TObject*) { TabsChanged(); });
}

TCustomTabControl::~TCustomTabControl() = default;

void TCustomTabControl::CreateParams(TCreateParams& params) {
    TWinControl::CreateParams(params);
    params.BaseClass = WC_TABCONTROLA;
    params.Style |= FMultiLine ? TCS_MULTILINE : 0;
    params.Style |= FHotTrack ? TCS_HOTTRACK : 0;
}

void TCustomTabControl::CreateWnd() {
    TWinControl::CreateWnd();
    FillTabs(WindowHandle());
    Realign(); // how much room the tabs take is known now
}

void TCustomTabControl::SaveWindowState() {
    TWinControl::SaveWindowState();
    FTabIndex = TabIndex();
}

void TCustomTabControl::FillTabs(HWND window) const {
    if (ScaleLength(DefaultDpi) != DefaultDpi) { // the system leaves 6 and 3 pixels around a text at any resolution
        SendMessageW(window, TCM_SETPADDING, 0, MAKELPARAM(ScaleLength(6), ScaleLength(3)));
    }
    SendMessageW(window, TCM_DELETEALLITEMS, 0, 0);
    for (int i = 0; i < FTabs->Count(); ++i) {
        std::wstring text = ToWide(FTabs->Get(i));
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = text.data();
        SendMessageW(window, TCM_INSERTITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    }
    SendMessageW(window, TCM_SETCURSEL, static_cast<WPARAM>(FTabIndex), 0);
}

void TCustomTabControl::TabsChanged() {
    if (HandleAllocated()) {
        FTabIndex = TabIndex();
        if (FTabIndex < 0 && FTabs->Count() > 0) {
            FTabIndex = 0;
        }
        FillTabs(WindowHandle());
    } else if (FTabIndex < 0 && FTabs->Count() > 0 && !IsLoading()) {
        FTabIndex = 0;
    }
    Realign();
}

int TCustomTabControl::TabIndex() const {
    return HandleAllocated() ? static_cast<int>(SendMessageW(WindowHandle(), TCM_GETCURSEL, 0, 0)) : FTabIndex;
}

void TCustomTabControl::SetTabIndex(int value) {
    FTabIndex = value;
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), TCM_SETCURSEL, static_cast<WPARAM>(value), 0);
    }
}

void TCustomTabControl::SetHotTrack(bool value) {
    if (FHotTrack != value) {
        FHotTrack = value;
        RecreateWnd();
    }
}

void TCustomTabControl::SetMultiLine(bool value) {
    if (FMultiLine != value) {
        FMultiLine = value;
        RecreateWnd();
    }
}

/// Before there is a window, another one with the same tabs is asked: what stands on pages is to know their size.
TRect TCustomTabControl::DisplayRect() const {
    RECT r = ToRECT(ClientRect());
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&r));
        return FromRECT(r);
    }
    const unique_hwnd measure(CreateWindowExW(0, WC_TABCONTROLW, L"", WS_POPUP | (FMultiLine ? TCS_MULTILINE : 0u), 0,
                                              0, r.right, r.bottom, nullptr, nullptr, HInstance(), nullptr));
    if (measure) {
        SendMessageW(measure.get(), WM_SETFONT, reinterpret_cast<WPARAM>(Font().Handle()), FALSE);
        FillTabs(measure.get());
        SendMessageW(measure.get(), TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&r));
    }
    return FromRECT(r);
}

bool TCustomTabControl::HasThemedBackground() const {
    return ParentColor() && static_cast<bool>(Theme(TThemeKind::Tab));
}

void TCustomTabControl::EraseBackground(HDC dc) {
    if (HasThemedBackground()) {
        Theme(TThemeKind::Tab).Draw(dc, TABP_BODY, 0, DisplayRect());
    } else {
        TWinControl::EraseBackground(dc);
    }
}

void TCustomTabControl::WndProc(TMessage& message) {
    if (message.Msg == CN_NOTIFY) {
        switch (static_cast<int>(message.LParamAs<NMHDR>().code)) {
        case static_cast<int>(TCN_SELCHANGE): Change(); break;
        case static_cast<int>(TCN_SELCHANGING): message.Result = !CanChange(); break;
        default: break;
        }
        return;
    }
    TWinControl::WndProc(message);
}

void TCustomTabControl::Change() { FOnChange(this); }

bool TCustomTabControl::CanChange() {
    bool allow = true;
    FOnChanging(this, allow);
    return allow;
}

void TCustomTabControl::Choose(int tabIndex) {
    const TAlive alive(*this);
    if (tabIndex != TabIndex() && CanChange() && alive) {
        TCustomTabControl::SetTabIndex(tabIndex);
        Change();
    }
}

bool TCustomTabControl::DialogChar(wchar_t letter) {
    for (int i = 0; i < FTabs->Count(); ++i) {
        if (IsAccel(letter, FTabs->Get(i)) && CanFocus()) {
            Choose(i);
            return true;
        }
    }
    return TWinControl::DialogChar(letter);
}

// --- TTabControl

const TClass& TTabControl::StaticClass() {
    static const TClassBuilder<TTabControl> cls("TTabControl", TCustomTabControl::StaticClass(), [](auto& c) {
        using T = TTabControl;
        c.Creatable();
        c.Property("HotTrack", &T::HotTrack, &T::SetHotTrack).Default = false;
        c.Property("MultiLine", &T::MultiLine, &T::SetMultiLine).Default = false;
        c.SubObject("Tabs", &T::Tabs, &T::SetTabs);
        c.Property("TabIndex", &T::TabIndex, &T::SetTabIndex).Default = -1;
        c.Property("TabStop", &T::TabStop, &T::SetTabStop).Default = true;
        c.Property("OnChange", &T::OnChange, &T::SetOnChange);
        c.Property("OnChanging", &T::OnChanging, &T::SetOnChanging);
    });
    return cls.Class();
}

} // namespace kx
