// SPDX-License-Identifier: MIT
// The action of a menu item.

#include "kx/ui/controls/Menus.h"

#include "kx/ui/controls/ActionLook.h"

namespace kx {

TBasicAction* TMenuItem::Action() const { return FActionLink ? FActionLink->Action() : nullptr; }

void TMenuItem::SetAction(TBasicAction* value) {
    if (!value) {
        FActionLink.reset();
        return;
    }
    FActionLink = std::make_unique<TActionLink>([this](TCustomAction& action, const TActionLook& before) {
        const auto now = TActionLook(action.Look()); // a copy, since setters may end the action
        static_cast<void>(
            detail::FollowLook(*this, before, now) &&
            detail::Follow(
                *this, before.Checked, now.Checked, [&] { return Checked(); }, [&](auto& v) { SetChecked(v); }) &&
            detail::Follow(
                *this, before.ImageIndex, now.ImageIndex, [&] { return ImageIndex(); },
                [&](auto& v) { SetImageIndex(v); }) &&
            detail::Follow(
                *this, before.ShortCut, now.ShortCut, [&] { return ShortCut(); }, [&](auto& v) { SetShortCut(v); }));
    });
    FActionLink->SetAction(value);
    if (const auto* const action = dynamic_cast<TCustomAction*>(value)) {
        const bool all = !IsLoading();
        const TActionLook look = action->Look();
        static_cast<void>(detail::TakeLook(*this, look, !all) &&
                          detail::Take(*this, all || !Checked(), [&] { SetChecked(look.Checked); }) &&
                          detail::Take(*this, all || ImageIndex() == -1, [&] { SetImageIndex(look.ImageIndex); }) &&
                          detail::Take(*this, all || ShortCut() == 0, [&] { SetShortCut(look.ShortCut); }));
    }
}

} // namespace kx
