// SPDX-License-Identifier: MIT
// A group of radio buttons.

#include "kx/ui/widgets/ExtCtrlsRadioGroup.h"

#include "kx/win/Windows.h"

#include <algorithm>
#include <cstdlib>

namespace kx {

const TClass& TRadioGroup::StaticClass() {
    static const TClassBuilder<TRadioGroup> cls("TRadioGroup", TGroupBox::StaticClass(), [](auto& c) {
        using T = TRadioGroup;
        c.Creatable();
        c.Property("Columns", &T::Columns, &T::SetColumns).Default = 1;
        c.Property("ItemIndex", &T::ItemIndex, &T::SetItemIndex).Default = -1;
        c.SubObject("Items", &T::Items, &T::SetItems);
    });
    return cls.Class();
}

TRadioGroup::TRadioGroup(TComponent* owner) : TGroupBox(owner), FItems(std::make_unique<TStringList>()) {
    SetControlStyle({csSetCaption, csDoubleClicks}); // the buttons stand where they have to
    FItems->SetOnChange([this](TObject*) { ItemsChanged(); });
}

TRadioGroup::~TRadioGroup() = default;

/// System dialogs look for their next control inside windows that say so.
void TRadioGroup::CreateParams(TCreateParams& params) {
    TGroupBox::CreateParams(params);
    params.ExStyle |= WS_EX_CONTROLPARENT;
}

TRadioButton& TRadioGroup::Buttons(int index) const {
    if (index < 0 || index >= static_cast<int>(FButtons.size())) {
        throw EListError("List index out of bounds (" + IntToStr(index) + ")");
    }
    return *FButtons[static_cast<size_t>(index)];
}

void TRadioGroup::ItemsChanged() {
    const auto count = static_cast<size_t>(FItems->Count());
    while (FButtons.size() > count) {
        TRadioButton* const last = FButtons.back();
        FButtons.pop_back();
        last->Free();
    }
    while (FButtons.size() < count) {
        auto* const button = new TRadioButton(this);
        button->SetOnClick([this](TObject* sender) { ButtonClicked(sender); });
        button->SetEnabled(Enabled());
        button->SetParent(this);
        FButtons.push_back(button);
    }
    for (size_t i = 0; i < count; ++i) {
        FButtons[i]->SetCaption(FItems->Get(static_cast<int>(i)));
    }
    if (!IsLoading()) { // else the index comes before its item
        FItemIndex = std::min(FItemIndex, static_cast<int>(count) - 1);
        CheckChosen();
    }
    UpdateTabStops();
    ArrangeButtons();
}

/// The Tab key comes to the chosen button; while none is chosen, to the first one.
void TRadioGroup::UpdateTabStops() {
    const int stop = std::max(FItemIndex, 0);
    for (int i = 0; i < static_cast<int>(FButtons.size()); ++i) {
        FButtons[static_cast<size_t>(i)]->SetTabStop(i == stop);
    }
}

void TRadioGroup::EnabledChanged() {
    const TAlive alive(*this);
    TGroupBox::EnabledChanged();
    for (size_t i = 0; alive && i < FButtons.size(); ++i) {
        FButtons[i]->SetEnabled(Enabled());
    }
}

/// Rows of equal height from the caption to the bottom, in columns of equal width.
void TRadioGroup::ArrangeButtons() {
    if (FButtons.empty() || IsLoading()) {
        return;
    }
    constexpr int margin = 8;
    const int count = static_cast<int>(FButtons.size());
    const int rows = (count + FColumns - 1) / FColumns;
    const int columnWidth = (Width() - 2 * margin - 2) / FColumns;
    const int captionHeight = std::abs(Font().Height()) + 2;
    const int space = Height() - captionHeight - margin + 2;
    const int rowHeight = space / rows;
    const int top = captionHeight + space % rows / 2 + 1;
    for (int i = 0; i < count; ++i) {
        const int left = margin + i / rows * columnWidth;
        FButtons[static_cast<size_t>(i)]->SetBounds(left, top + i % rows * rowHeight, columnWidth, rowHeight);
    }
}

void TRadioGroup::SetItemIndex(int value) {
    const int count = static_cast<int>(FButtons.size());
    const int index = IsLoading() ? std::max(value, -1) : value < -1 || value >= count ? -1 : value;
    if (FItemIndex == index) {
        return;
    }
    FItemIndex = index;
    if (IsLoading()) {
        return;
    }
    const TAlive alive(*this);
    CheckChosen();
    if (alive) {
        UpdateTabStops();
        Click();
    }
}

void TRadioGroup::ButtonClicked(TObject* sender) {
    if (FUpdating) {
        return;
    }
    const auto button = std::find(FButtons.begin(), FButtons.end(), sender);
    if (CanModify()) {
        FItemIndex = static_cast<int>(button - FButtons.begin());
        UpdateTabStops();
        Click();
    } else {
        CheckChosen();
    }
}

/// Has the buttons show what is chosen.
void TRadioGroup::CheckChosen() {
    const TFieldScope updating(*this, FUpdating, true);
    for (int i = 0; i < static_cast<int>(FButtons.size()); ++i) {
        FButtons[static_cast<size_t>(i)]->SetChecked(i == FItemIndex);
    }
}

void TRadioGroup::SetColumns(int value) {
    constexpr int most = 16;
    FColumns = std::clamp(value, 1, most);
    ArrangeButtons();
}

void TRadioGroup::GetChildren(const TGetChildProc&, TComponent*) {} // they come back with the items

void TRadioGroup::SetBounds(int left, int top, int width, int height) {
    const TAlive alive(*this);
    TGroupBox::SetBounds(left, top, width, height);
    if (alive) {
        ArrangeButtons();
    }
}

void TRadioGroup::FontChanged() {
    const TAlive alive(*this);
    TGroupBox::FontChanged();
    if (alive) {
        ArrangeButtons();
    }
}

void TRadioGroup::Loaded() {
    TGroupBox::Loaded();
    ArrangeButtons();
    if (FItemIndex >= static_cast<int>(FButtons.size())) {
        FItemIndex = -1;
    }
    CheckChosen();
    UpdateTabStops();
}

} // namespace kx
