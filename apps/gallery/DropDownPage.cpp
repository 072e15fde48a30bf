// SPDX-License-Identifier: MIT
// The page of the drop-down buttons.

#include "DropDownPage.h"

#include "Tour.h"

#include <algorithm>

namespace kx::gallery {

namespace {

/// A caption as it is read: without its accelerator mark.
std::string Spoken(std::string caption) {
    caption.erase(std::remove(caption.begin(), caption.end(), '&'), caption.end());
    return caption;
}

} // namespace

const TClass& TDropDownPage::StaticClass() {
    static const TClassBuilder<TDropDownPage> cls("TDropDownPage", TGalleryPage::StaticClass(), [](auto& c) {
        c.Method("ButtonClick", &TDropDownPage::ButtonClick);
        c.Method("MenuItemClick", &TDropDownPage::MenuItemClick);
        c.Method("EnabledBoxClick", &TDropDownPage::EnabledBoxClick);
    });
    return cls.Class();
}

TDropDownPage::TDropDownPage(TComponent* owner) : TGalleryPage(owner) { InitForm(*this, StaticClass()); }

void TDropDownPage::ButtonClick(TObject* sender) {
    Report("\"" + Spoken(static_cast<TKxBitBtn*>(sender)->Caption()) + "\" was pressed.");
}

void TDropDownPage::MenuItemClick(TObject* sender) {
    FLastChoice = Spoken(static_cast<TMenuItem*>(sender)->Caption());
    Report("\"" + FLastChoice + "\" was chosen in the menu.");
}

void TDropDownPage::EnabledBoxClick(TObject*) {
    DisabledButton->SetEnabled(EnabledBox->Checked());
    FourDisabledButton->SetEnabled(EnabledBox->Checked());
}

void TDropDownPage::AddTour(TTour& tour) {
    tour.Then(
        "the drop-down buttons", [this] { return Showing(); }, [this] { PlainButton->SetFocus(); });
    tour.Then(
        "the focus on a drop-down button", [this] { return PlainButton->Focused(); },
        [this, &tour] {
            tour.Picture("5-dropdown");
            PlainButton->ShowDropDownMenu();
        });
    tour.Then(
        "the menu below the button", [] { return ShownMenu() != nullptr; },
        [&tour] {
            tour.Picture("5-dropdown-menu");
            ChooseLastInMenu();
        });
    tour.Then(
        "the choice in the menu", [this] { return !ShownMenu() && !FLastChoice.empty(); },
        [this, &tour] { tour.Expect("drop-down buttons", FLastChoice, "Open a copy"); });
}

} // namespace kx::gallery
