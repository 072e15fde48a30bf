// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Types.h"
#include "kx/win/Handles.h"

#include <string>

namespace kx {

/// The system's tool tip with a hint: it has the system's font, colours and effects, and lets the mouse through.
class THintTip {
public:
    /// Shows `text`, which may have several lines, below the pointer, whose place on the screen is given, or as near as
    /// its monitor allows. Lines that are longer than half of the monitor are wrapped. `owner`: it goes with that.
    void Show(HWND owner, const TPoint& pointer, const std::string& text);
    void Hide() { FWindow.reset(); }
    HWND Handle() const { return FWindow.get(); } ///< Null while it is hidden.

private:
    unique_hwnd FWindow;
};

} // namespace kx
