// SPDX-License-Identifier: MIT
#pragma once

namespace kx {

/// A parent that gives the control inside it its place, by the room that the control's content wants.
class IContentScroller {
protected:
    ~IContentScroller() = default;
};

/// A control that knows how much room its content wants.
class IScrolledContent {
public:
    /// Pixels of height, whatever the control's height is; -1 when the control's own height says it.
    virtual int ContentHeight() const = 0;

protected:
    ~IScrolledContent() = default;
};

} // namespace kx
