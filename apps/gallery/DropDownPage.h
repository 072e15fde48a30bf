// SPDX-License-Identifier: MIT
#pragma once

#include "GalleryPage.h"
#include "kx/dropdown/KxDropDownButton.h"
#include "kx/ui/controls/Menus.h"

#include <string>

namespace kx::gallery {

/// Buttons with a drop-down menu, in all their states.
class TDropDownPage : public TGalleryPage {
    KX_CLASS()

    explicit TDropDownPage(TComponent* owner = nullptr);

    void AddTour(TTour& tour) override;

    void ButtonClick(TObject* sender);
    void MenuItemClick(TObject* sender);
    void EnabledBoxClick(TObject* sender);

private:
    KX_FIELDS(TDropDownPage, (TKxBitBtn, PlainButton, DisabledButton, FourButton, FourDisabledButton),
              (TCheckBox, EnabledBox), (TPopupMenu, OpenMenu))
    std::string FLastChoice; ///< Caption of the chosen menu item.
};

} // namespace kx::gallery
