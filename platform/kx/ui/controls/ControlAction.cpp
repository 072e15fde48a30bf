// SPDX-License-Identifier: MIT
// The action of a control.

#include "kx/ui/controls/Control.h"

#include "kx/ui/controls/ActionLook.h"

namespace kx {

TBasicAction* TControl::Action() const { return FActionLink ? FActionLink->Action() : nullptr; }

void TControl::SetAction(TBasicAction* value) {
    if (!value) {
        FActionLink.reset();
        return;
    }
    FActionLink = std::make_unique<TActionLink>([this](TCustomAction& action, const TActionLook& before) {
        const auto now = TActionLook(action.Look()); // a copy, since setters may end the action
        detail::FollowLook(*this, before, now);
    });
    FActionLink->SetAction(value);
    ActionChange(value, IsLoading());
}

void TControl::ActionChange(TObject* sender, bool checkDefaults) {
    if (const auto* const action = dynamic_cast<TCustomAction*>(sender)) {
        const TActionLook look = action->Look();
        detail::TakeLook(*this, look, checkDefaults);
    }
}

} // namespace kx
