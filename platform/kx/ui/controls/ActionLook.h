// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Alive.h"
#include "kx/ui/controls/ActnList.h"

#include <utility>

// How controls and menu items follow the look of their action.

namespace kx::detail {

// A client tells its handlers of each change, and they may free it, and the action with it. So the looks are copies,
// and each step says whether the client lives on.

/// Sets what the action has changed, as far as the client had the same as the action before.
template <class Client, class Get, class Set, class V>
bool Follow(const Client& client, const V& before, const V& now, Get&& get, Set&& set) {
    return before == now || get() != before || Outlives(client, [&] { set(now); });
}

/// The part of the look that controls and menu items have in common.
template <class Client> bool FollowLook(Client& c, const TActionLook& before, const TActionLook& now) {
    return Follow(
               c, before.Caption, now.Caption, [&] { return c.Caption(); }, [&](auto& v) { c.SetCaption(v); }) &&
           Follow(
               c, before.Hint, now.Hint, [&] { return c.Hint(); }, [&](auto& v) { c.SetHint(v); }) &&
           Follow(
               c, before.Enabled, now.Enabled, [&] { return c.Enabled(); }, [&](auto& v) { c.SetEnabled(v); }) &&
           Follow(
               c, before.Visible, now.Visible, [&] { return c.Visible(); }, [&](auto& v) { c.SetVisible(v); });
}

/// Does a step of taking a look over, where it is wanted.
template <class Client, class F> bool Take(const Client& client, bool wanted, F&& step) {
    return !wanted || Outlives(client, std::forward<F>(step));
}

/// Takes the common part over at once; with `checkDefaults` only what the client has no setting of its own for.
template <class Client> bool TakeLook(Client& c, const TActionLook& look, bool checkDefaults) {
    const bool all = !checkDefaults;
    return Take(c, all || c.Caption().empty() || c.Caption() == c.Name(), [&] { c.SetCaption(look.Caption); }) &&
           Take(c, all || c.Hint().empty(), [&] { c.SetHint(look.Hint); }) &&
           Take(c, all || c.Enabled(), [&] { c.SetEnabled(look.Enabled); }) &&
           Take(c, all || c.Visible(), [&] { c.SetVisible(look.Visible); }) &&
           Take(c, all, [&] { c.SetOnClick({}); }); // a click executes the action
}

} // namespace kx::detail
