// SPDX-License-Identifier: MIT
// The buttons of a tool bar.

#include "kx/ui/controls/Menus.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/win/Windows.h"

#include <vsstyle.h>

#include <algorithm>

namespace kx {

const TClass& TToolButton::StaticClass() {
    static const TClassBuilder<TToolButton> cls("TToolButton", TGraphicControl::StaticClass(), [](auto& c) {
        using T = TToolButton;
        c.Creatable();
        c.Property("AllowAllUp", &T::AllowAllUp, &T::SetAllowAllUp).Default = false;
        c.Property("Caption", &T::Caption, &T::SetCaption);
        c.Property("Down", &T::Down, &T::SetDown).Default = false;
        c.Reference("DropdownMenu", &T::DropdownMenu, &T::SetDropdownMenu);
        c.Property("Grouped", &T::Grouped, &T::SetGrouped).Default = false;
        c.Property("ImageIndex", &T::ImageIndex, &T::SetImageIndex).Default = -1;
        c.Property("Indeterminate", &T::Indeterminate, &T::SetIndeterminate).Default = false;
        c.Property("Marked", &T::Marked, &T::SetMarked).Default = false;
        c.Reference("MenuItem", &T::MenuItem, &T::SetMenuItem);
        c.Property("Style", &T::Style, &T::SetStyle).Default = tbsButton;
        c.Property("Wrap", &T::Wrap, &T::SetWrap).Default = false;
    });
    return cls.Class();
}

TToolButton::TToolButton(TComponent* owner) : TGraphicControl(owner) {
    SetControlStyle({csCaptureMouse, csSetCaption, csOpaque}); // the bar is painted into memory
    SetBoundsFields(0, 0, 23, 22);
}

TToolButton::~TToolButton() {
    Destroying();
    TToolButton::SetParent(nullptr);
}

void TToolButton::SetParent(TWinControl* value) {
    if (Parent() == value) {
        return;
    }
    // A bar is as high as its buttons need. Its handlers hear of a new size.
    const TAlive alive(*this);
    const TAlive valueAlive(value);
    if (FToolBar) {
        CallOut([this] { FToolBar->RemoveButton(*this); });
    }
    if (!alive || (value && !valueAlive)) {
        return;
    }
    TGraphicControl::SetParent(value);
    if (alive && valueAlive && Parent() == value && !FToolBar) {
        if (auto* const bar = dynamic_cast<TToolBar*>(value)) {
            bar->AddButton(*this);
        }
    }
}

void TToolButton::Notification(TComponent* component, TOperation operation) {
    TGraphicControl::Notification(component, operation);
    if (operation == opRemove && component == FMenuItem) {
        FMenuItem = nullptr;
    }
    if (operation == opRemove && component == FDropdownMenu) {
        FDropdownMenu = nullptr;
    }
}

void TToolButton::SetBounds(int left, int top, int width, int height) {
    if (FToolBar && !IsLoading()) {
        // The bar places its buttons; a separator's width is its own.
        SetBoundsFields(Left(), Top(), IsSeparator() ? width : Width(), Height());
        LookChanged();
    } else {
        TGraphicControl::SetBounds(left, top, width, height);
    }
}

int TToolButton::Index() const {
    if (!FToolBar) {
        return -1;
    }
    const auto& all = FToolBar->FButtons;
    return static_cast<int>(std::find(all.begin(), all.end(), this) - all.begin());
}

// --- What the system knows

BYTE TToolButton::SystemState() const {
    BYTE state = 0;
    const auto add = [&](bool on, BYTE flag) { state = static_cast<BYTE>(on ? state | flag : state); };
    add(Enabled(), TBSTATE_ENABLED);
    add(FDown, TBSTATE_CHECKED);
    add(FPressed, TBSTATE_PRESSED);
    add(!Visible(), TBSTATE_HIDDEN);
    add(FIndeterminate, TBSTATE_INDETERMINATE);
    add(FMarked, TBSTATE_MARKED);
    add(FRowEnd, TBSTATE_WRAP);
    return state;
}

BYTE TToolButton::SystemStyle() const {
    switch (FStyle) {
    case tbsSeparator:
    case tbsDivider: return BTNS_SEP;
    case tbsDropDown: return BTNS_DROPDOWN;
    default: return BTNS_BUTTON; // not the system but this class decides which button of a group is down
    }
}

void TToolButton::StateChanged() {
    if (FToolBar) {
        FToolBar->UpdateState(*this);
    }
    Invalidate();
    TellAccessible(aeStateChange);
}

void TToolButton::LookChanged() {
    if (FToolBar) {
        FToolBar->UpdateButton(*this);
    }
}

void TToolButton::TextChanged() { LookChanged(); }
void TToolButton::EnabledChanged() { StateChanged(); }
void TToolButton::VisibleChanged() { LookChanged(); }

void TToolButton::Paint() {
    if (FStyle == tbsDivider && FToolBar && !FToolBar->Flat()) {
        if (const TTheme theme = FToolBar->Theme(TThemeKind::ToolBar)) {
            theme.Draw(Canvas().Handle(), TP_SEPARATOR, TS_NORMAL, ClientRect());
            return;
        }
        RECT line{Width() / 2 - 1, 2, Width(), Height() - 2};
        DrawEdge(Canvas().Handle(), &line, EDGE_ETCHED, BF_LEFT);
    }
}

// --- Settings

void TToolButton::SetField(bool& field, bool value) {
    if (field != value) {
        field = value;
        StateChanged();
    }
}

void TToolButton::SetIndeterminate(bool value) { SetField(FIndeterminate, value); }
void TToolButton::SetMarked(bool value) { SetField(FMarked, value); }

void TToolButton::SetDown(bool value) {
    SetField(FDown, value);
    if (value && FToolBar && IsGroupCheck()) {
        FToolBar->ReleaseFellows(*this);
    }
}

void TToolButton::SetGrouped(bool value) {
    FGrouped = value;
    if (FDown && FToolBar && IsGroupCheck()) {
        FToolBar->ReleaseFellows(*this);
    }
}

void TToolButton::SetStyle(TToolButtonStyle value) {
    if (FStyle != value) {
        FStyle = value;
        LookChanged();
    }
}

void TToolButton::SetImageIndex(int value) {
    if (FImageIndex != value) {
        FImageIndex = value;
        LookChanged();
    }
}

void TToolButton::SetWrap(bool value) {
    if (FWrap != value) {
        FWrap = value;
        LookChanged();
    }
}

void TToolButton::SetMenuItem(TMenuItem* value) {
    if (FMenuItem) {
        RemoveFreeNotification(FMenuItem);
    }
    FMenuItem = value;
    if (value) {
        FreeNotification(value);
        if (!IsLoading()) {
            TakeItemsLook();
        }
    }
}

/// Takes over the look of the menu item. The bar arranges itself at each change, and its handlers hear of a new size.
void TToolButton::TakeItemsLook() {
    if (!Outlives(*this, [this] { SetCaption(FMenuItem->Caption()); }) || !FMenuItem) {
        return;
    }
    SetHint(FMenuItem->Hint());
    if (!Outlives(*this, [this] { SetImageIndex(FMenuItem->ImageIndex()); }) || !FMenuItem) {
        return;
    }
    SetEnabled(FMenuItem->Enabled());
}

void TToolButton::SetDropdownMenu(TPopupMenu* value) {
    if (FDropdownMenu) {
        RemoveFreeNotification(FDropdownMenu);
    }
    FDropdownMenu = value;
    if (value) {
        FreeNotification(value);
    }
}

// --- Mouse

void TToolButton::WndProc(TMessage& message) {
    if (message.Msg == WM_CANCELMODE) {
        FHeld = false; // the press has become something else, a drag for instance
        SetPressed(false);
    }
    TGraphicControl::WndProc(message);
}

void TToolButton::SetPressed(bool value) { SetField(FPressed, value); }

void TToolButton::MouseDown(TMouseButton button, TShiftState shift, int x, int y) {
    const TAlive alive(*this);
    if (button == mbLeft && !IsSeparator() && FToolBar) {
        const bool onArrow = FStyle == tbsDropDown && x >= FToolBar->ButtonExtent().X;
        SetPressed(true);
        if (FDropdownMenu && (FStyle != tbsDropDown || onArrow)) {
            SetMouseCapture(false);
            if (alive) {
                CheckMenuDropdown();
            }
            if (alive) {
                SetPressed(false);
            }
        } else {
            FHeld = true;
        }
    }
    if (alive) {
        TGraphicControl::MouseDown(button, shift, x, y);
    }
}

void TToolButton::MouseMove(TShiftState shift, int x, int y) {
    if (FHeld) {
        const RECT client = ToRECT(ClientRect());
        SetPressed(shift.Contains(ssLeft) && PtInRect(&client, {x, y}));
    }
    TGraphicControl::MouseMove(shift, x, y);
}

void TToolButton::MouseUp(TMouseButton button, TShiftState shift, int x, int y) {
    const TAlive alive(*this);
    if (button == mbLeft && std::exchange(FHeld, false)) {
        const RECT client = ToRECT(ClientRect());
        SetPressed(false);
        if (PtInRect(&client, {x, y})) {
            Clicked();
        }
    }
    if (alive) {
        TGraphicControl::MouseUp(button, shift, x, y);
    }
}

void TToolButton::MouseEnter() {
    if (FToolBar) {
        FToolBar->HotChanged(*this, true);
    }
    Invalidate();
    TGraphicControl::MouseEnter();
}

void TToolButton::MouseLeave() {
    if (FToolBar) {
        FToolBar->HotChanged(*this, false);
    }
    Invalidate();
    TGraphicControl::MouseLeave();
}

void TToolButton::Clicked() {
    if (FStyle == tbsCheck && !(FDown && FGrouped && !FAllowAllUp)) {
        SetDown(!FDown);
    }
    Click();
}

void TToolButton::Click() {
    if (Outlives(*this, [this] { TGraphicControl::Click(); }) && FMenuItem && !OnClick()) {
        FMenuItem->Click();
    }
}

bool TToolButton::CheckMenuDropdown() {
    if (!FDropdownMenu) {
        return false;
    }
    Application().CancelHint();
    FDropdownMenu->SetPopupComponent(this);
    OpenBelow(*FDropdownMenu);
    return true;
}

TAccessibleInfo TToolButton::AccessibleInfo() const {
    TAccessibleInfo info = TGraphicControl::AccessibleInfo();
    if (IsSeparator()) {
        info.Role = arSeparator;
        return info;
    }
    info.Role = FStyle == tbsDropDown ? arSplitButton : FDropdownMenu ? arDropDownButton : arPushButton;
    info.State = (FDown || FPressed ? asPressed : 0) | (FDown ? asChecked : 0) | (FIndeterminate ? asMixed : 0) |
                 (FDropdownMenu ? asHasPopup : 0) |
                 (FToolBar && FToolBar->KeyButton() == this && FToolBar->Focused() ? asFocused : 0);
    info.Action = info.Role == arDropDownButton ? "Open" : "Press";
    return info;
}

void TToolButton::AccessibleAction() {
    if (FStyle == tbsDropDown || !CheckMenuDropdown()) {
        Press();
    }
}

bool TToolButton::DialogChar(wchar_t letter) {
    if (!IsAccel(letter, Caption()) || IsSeparator() || !FToolBar || !FToolBar->ShowCaptions() || !Showing()) {
        return false;
    }
    Clicked();
    return true;
}

} // namespace kx
