// SPDX-License-Identifier: MIT
// The system's push buttons, check boxes and radio buttons.

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/ReflectedMessages.h"
#include "kx/win/Windows.h"

namespace kx {

// --- TButtonControl

const TClass& TButtonControl::StaticClass() {
    static const TClassBuilder<TButtonControl> cls("TButtonControl", TWinControl::StaticClass(), [](auto& c) {
        c.Property("Caption", &TButtonControl::Caption, &TButtonControl::SetCaption);
        c.Property("TabStop", &TButtonControl::TabStop, &TButtonControl::SetTabStop).Default = true;
    });
    return cls.Class();
}

TButtonControl::TButtonControl(TComponent* owner) : TWinControl(owner) {
    SetControlStyle({csSetCaption, csDoubleClicks});
    SetTabStop(true);
}

void TButtonControl::WndProc(TMessage& message) {
    if (message.Msg == WM_SETFOCUS) {
        const TFieldScope gettingFocus(*this, FGettingFocus, true);
        TWinControl::WndProc(message);
        return;
    }
    if (message.Msg == CN_COMMAND) {
        const bool isClick = message.WParamHi() == BN_CLICKED || message.WParamHi() == BN_DOUBLECLICKED;
        if (isClick && !FGettingFocus) {
            Pressed();
        }
        return;
    }
    TWinControl::WndProc(message);
}

/// The system fills what is behind the caption with the brush.
HBRUSH TButtonControl::ControlColor(HDC dc) {
    const HBRUSH brush = TWinControl::ControlColor(dc);
    if (!HasThemedBackground()) {
        return brush;
    }
    EraseBackground(dc);
    SetBkMode(dc, TRANSPARENT);
    return static_cast<HBRUSH>(GetStockObject(NULL_BRUSH));
}

bool TButtonControl::DialogChar(wchar_t letter) {
    if (!IsAccel(letter, Text()) || !CanFocus()) {
        return false;
    }
    const TAlive alive(*this);
    SetFocus();
    if (alive && Focused()) {
        Pressed();
    }
    return true;
}

// --- TButton

const TClass& TButton::StaticClass() {
    static const TClassBuilder<TButton> cls("TButton", TButtonControl::StaticClass(), [](auto& c) {
        using T = TButton;
        c.Creatable();
        c.Property("Cancel", &T::Cancel, &T::SetCancel).Default = false;
        c.Property("Default", &T::Default, &T::SetDefault).Default = false;
        c.Property("ModalResult", &T::ModalResult, &T::SetModalResult).Default = mrNone;
    });
    return cls.Class();
}

TButton::TButton(TComponent* owner) : TButtonControl(owner) { SetBoundsFields(0, 0, 75, 25); }

void TButton::CreateParams(TCreateParams& params) {
    TButtonControl::CreateParams(params);
    params.BaseClass = "BUTTON";
    params.Style |= FActive ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
}

void TButton::SetDefault(bool value) {
    FDefault = value;
    TCustomForm* const form = GetParentForm(this);
    TWinControl* const focused = form ? form->ActiveControl() : nullptr;
    SetActive(dynamic_cast<TButton*>(focused) ? focused == this : value);
}

void TButton::SetActive(bool value) {
    if (FActive != value) {
        FActive = value;
        SetButtonStyle(value);
    }
}

void TButton::SetButtonStyle(bool isDefault) {
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), BM_SETSTYLE, isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, TRUE);
    }
}

void TButton::FocusChanged(TWinControl* focused) {
    // While a button has the focus, it is the active one in place of the default button.
    SetActive(dynamic_cast<TButton*>(focused) ? focused == this : FDefault);
    TButtonControl::FocusChanged(focused);
}

void TButton::Click() {
    if (TCustomForm* const form = GetParentForm(this); form && FModalResult != mrNone) {
        form->SetModalResult(FModalResult);
    }
    TButtonControl::Click();
}

bool TButton::DialogKey(uint16_t key, TShiftState shift) {
    if (((key == VK_RETURN && FActive) || (key == VK_ESCAPE && FCancel)) && shift.IsEmpty() && CanFocus()) {
        Click();
        return true;
    }
    return TButtonControl::DialogKey(key, shift);
}

/// In a foreign dialog, Return would press the default button of that dialog.
bool TButton::WantsKey(uint16_t key, TShiftState shift) {
    const TCustomForm* const form = GetParentForm(this);
    return key == VK_RETURN && shift.IsEmpty() && form && form->IsDocked();
}

void TButton::WndProc(TMessage& message) {
    const bool isReturn = message.Msg == WM_KEYDOWN && message.WParam == VK_RETURN;
    const TAlive alive(*this);
    TButtonControl::WndProc(message);
    if (isReturn && message.WParam == VK_RETURN && alive && WantsKey(VK_RETURN, KeyDataToShiftState())) {
        Click();
    }
}

// --- TCheckBox

const TClass& TCheckBox::StaticClass() {
    static const TClassBuilder<TCheckBox> cls("TCheckBox", TButtonControl::StaticClass(), [](auto& c) {
        using T = TCheckBox;
        c.Creatable();
        c.Property("AllowGrayed", &T::AllowGrayed, &T::SetAllowGrayed).Default = false;
        c.Property("Checked", &T::Checked, &T::SetChecked).Stored = [](const TObject&) { return false; };
        c.Property("State", &T::State, &T::SetState).Default = cbUnchecked;
    });
    return cls.Class();
}

TCheckBox::TCheckBox(TComponent* owner) : TButtonControl(owner) { SetBoundsFields(0, 0, 97, 17); }

void TCheckBox::CreateParams(TCreateParams& params) {
    TButtonControl::CreateParams(params);
    params.BaseClass = "BUTTON";
    params.Style |= BS_3STATE | (UseRightToLeftAlignment() ? UINT{BS_RIGHTBUTTON} : 0u);
}

void TCheckBox::CreateWnd() {
    TButtonControl::CreateWnd();
    SendMessageW(WindowHandle(), BM_SETCHECK, FState, 0);
}

void TCheckBox::SetState(TCheckBoxState value) {
    if (FState == value) {
        return;
    }
    FState = value;
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), BM_SETCHECK, value, 0);
    }
    if (!IsLoading()) {
        Click();
    }
}

void TCheckBox::Pressed() {
    switch (FState) {
    case cbUnchecked: SetState(FAllowGrayed ? cbGrayed : cbChecked); break;
    case cbChecked: SetState(cbUnchecked); break;
    case cbGrayed: SetState(cbChecked); break;
    }
}

// --- TRadioButton

const TClass& TRadioButton::StaticClass() {
    static const TClassBuilder<TRadioButton> cls("TRadioButton", TButtonControl::StaticClass(), [](auto& c) {
        using T = TRadioButton;
        c.Creatable();
        c.Property("Checked", &T::Checked, &T::SetChecked).Default = false;
        c.Property("TabStop", &T::TabStop, &T::SetTabStop).Default = false;
    });
    return cls.Class();
}

TRadioButton::TRadioButton(TComponent* owner) : TButtonControl(owner) {
    SetTabStop(false); // the chosen button of the group has it
    SetBoundsFields(0, 0, 113, 17);
}

void TRadioButton::CreateParams(TCreateParams& params) {
    TButtonControl::CreateParams(params);
    params.BaseClass = "BUTTON";
    params.Style |= BS_RADIOBUTTON | (UseRightToLeftAlignment() ? UINT{BS_RIGHTBUTTON} : 0u);
}

void TRadioButton::CreateWnd() {
    TButtonControl::CreateWnd();
    SendMessageW(WindowHandle(), BM_SETCHECK, FChecked ? BST_CHECKED : BST_UNCHECKED, 0);
}

void TRadioButton::SetChecked(bool value) {
    if (FChecked == value) {
        return;
    }
    FChecked = value;
    SetTabStop(value);
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), BM_SETCHECK, value ? BST_CHECKED : BST_UNCHECKED, 0);
    }
    if (value) {
        ReleaseSiblings();
        if (!IsLoading()) {
            Click();
        }
    }
}

void TRadioButton::ReleaseSiblings() {
    for (int i = 0; Parent() && i < Parent()->ControlCount(); ++i) {
        if (auto* const other = dynamic_cast<TRadioButton*>(Parent()->Controls(i)); other && other != this) {
            other->SetChecked(false);
        }
    }
}

/// Arrow keys that move the focus choose as well.
void TRadioButton::DoEnter() {
    const TAlive alive(*this);
    if (!FChecked &&
        (GetKeyState(VK_UP) < 0 || GetKeyState(VK_DOWN) < 0 || GetKeyState(VK_LEFT) < 0 || GetKeyState(VK_RIGHT) < 0)) {
        SetChecked(true);
    }
    if (alive) {
        TButtonControl::DoEnter();
    }
}

} // namespace kx
