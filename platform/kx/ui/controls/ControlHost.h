// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Types.h"
#include "kx/ui/controls/ControlTypes.h"
#include "kx/win/WinTypes.h"

#include <string>

namespace kx {

class TControl;

/// What controls and menus ask of the program around them. The application installs it; without one, there are no hints
/// and the pointers are the system's.
class IControlHost {
public:
    /// The control goes: nothing may refer to it any more.
    virtual void ControlGone(const TControl& control) = 0;
    /// The mouse, at that point of the screen, has come over the control. Null: over none.
    virtual void MouseOver(TControl* control, const TPoint& screenPoint) = 0;
    /// The user presses a key or a button: a hint that is shown goes, and none is about to come where the mouse is.
    virtual void HideHint() = 0;
    virtual void CancelHint() = 0; ///< The same, and no hint is about to be shown.
    virtual void MenuItemSelected(const std::string& hint) = 0;
    virtual TCursor Cursor() const = 0;                ///< Of the whole program; crDefault: each control's own.
    virtual HCURSOR Cursors(TCursor cursor) const = 0; ///< The pointer of that number; not owned.
    /// A message has been handled; `frames` are still under way in this thread.
    virtual void MessageDone(int frames) = 0;

protected:
    ~IControlHost() = default;
};

/// The host lives as long as the program.
void SetControlHost(IControlHost& host);
IControlHost& ControlHost();

} // namespace kx
