// SPDX-License-Identifier: MIT
// Tool bars by the keyboard, and for screen readers.

#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

/// The next button that can be pressed, from the one at an index on; null: there is none that way.
TToolButton* TToolBar::NextKeyButton(int from, int step) const {
    for (int i = from; i >= 0 && i < ButtonCount(); i += step) {
        TToolButton* const button = FButtons[static_cast<size_t>(i)];
        if (!button->IsSeparator() && button->Visible() && button->Enabled()) {
            return button;
        }
    }
    return nullptr;
}

void TToolBar::SetKeyButton(TToolButton* value) {
    TToolButton* const old = std::exchange(FKeyButton, value);
    if (old == value) {
        return;
    }
    if (old) {
        HotChanged(*old, false);
        old->Invalidate();
    }
    if (value) {
        HotChanged(*value, true);
        value->Invalidate();
        value->TellAccessible(aeFocus);
    }
}

/// The button that is down is where the user was last.
void TToolBar::DoEnter() {
    if (!FKeyButton) {
        const auto down =
            std::find_if(FButtons.begin(), FButtons.end(), [](const TToolButton* b) { return b->Down(); });
        TToolButton* const first = down == FButtons.end() ? nullptr : NextKeyButton((*down)->Index(), 1);
        SetKeyButton(first ? first : NextKeyButton(0, 1));
    }
    TWinControl::DoEnter();
}

void TToolBar::DoExit() {
    SetKeyButton(nullptr);
    TWinControl::DoExit();
}

bool TToolBar::WantsKey(uint16_t key, TShiftState shift) {
    const bool arrow = key == VK_LEFT || key == VK_RIGHT || key == VK_UP || key == VK_DOWN;
    return arrow || (key == VK_RETURN && FKeyButton) || TWinControl::WantsKey(key, shift);
}

void TToolBar::KeyDown(uint16_t& key, TShiftState shift) {
    if (!Outlives(*this, [&] { TWinControl::KeyDown(key, shift); }) || key == 0 || shift.Contains(ssCtrl)) {
        return;
    }
    const int at = FKeyButton ? FKeyButton->Index() : -1;
    const bool opens = key == VK_F4 || (key == VK_DOWN && shift.Contains(ssAlt));
    if (shift.Contains(ssAlt) && !opens) {
        return;
    }
    const int onwards = IsMirrored(WindowHandle()) ? VK_LEFT : VK_RIGHT;
    TToolButton* to = nullptr;
    if (opens) {
        if (FKeyButton) {
            key = 0;
            FKeyButton->CheckMenuDropdown();
        }
        return;
    }
    switch (key) {
    case VK_SPACE:
    case VK_RETURN:
        if (FKeyButton) {
            key = 0;
            FKeyButton->Press();
        }
        return;
    case VK_HOME: to = NextKeyButton(0, 1); break;
    case VK_END: to = NextKeyButton(ButtonCount() - 1, -1); break;
    case VK_UP: to = NextKeyButton(at - 1, -1); break;
    case VK_DOWN: to = NextKeyButton(at + 1, 1); break;
    case VK_LEFT:
    case VK_RIGHT: to = key == onwards ? NextKeyButton(at + 1, 1) : NextKeyButton(at - 1, -1); break;
    default: return;
    }
    key = 0;
    if (to) {
        SetKeyButton(to);
    }
}

/// In the middle of the button, so that whoever asks what is there finds it.
TPoint TToolBar::KeyboardMenuPoint() const {
    return FKeyButton
               ? TPoint{FKeyButton->Left() + FKeyButton->Width() / 2, FKeyButton->Top() + FKeyButton->Height() / 2}
               : TPoint{0, 0};
}

// --- Screen readers

TAccessibleInfo TToolBar::AccessibleInfo() const {
    TAccessibleInfo info = TWinControl::AccessibleInfo();
    info.Role = arToolBar;
    return info;
}

/// In the order of the bar, whenever they were made.
std::vector<const TControl*> TToolBar::AccessibleChildren() const {
    std::vector<const TControl*> children = TWinControl::AccessibleChildren();
    std::stable_sort(children.begin(), children.end(), [this](const TControl* a, const TControl* b) {
        const auto place = [this](const TControl* c) { return std::find(FButtons.begin(), FButtons.end(), c); };
        return place(a) < place(b);
    });
    return children;
}

} // namespace kx
