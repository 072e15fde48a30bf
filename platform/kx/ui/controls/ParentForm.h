// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/ScrollingControl.h"

namespace kx {

/// What controls know of the form that they are on.
class TParentForm : public TScrollingWinControl {
public:
    using TScrollingWinControl::TScrollingWinControl;

    virtual bool KeyPreview() const = 0; ///< Key events come to the form first.
    /// The form is docked in a window that is not the framework's.
    bool IsDocked() const { return ParentWindow() != nullptr && !Parent(); }

protected:
    friend class TControl;
    friend class TWinControl;

    virtual void FocusControl(TWinControl& control) = 0;   ///< The control is to have the focus.
    virtual void ControlFocused(TWinControl& control) = 0; ///< The focus has come to the control.
    /// The focus has left the control for another window.
    virtual void FocusLost(TWinControl& control, HWND to) = 0;
    virtual void FocusLeaves(TWinControl& control) = 0; ///< The control is about to be hidden or disabled.
    virtual void ControlGone(const TControl& control) = 0;
    /// Before a key message of the control is translated; true: it has been used up.
    virtual bool PreTranslateFor(TWinControl& control, MSG& message) = 0;

    bool FScalingFile = false; ///< What the form file has brought is being scaled; OnCreate has not run.
};

/// The form that the control is on, or is itself, through all its parents; null when it is on none.
TParentForm* ParentFormOf(const TControl* control);

} // namespace kx
