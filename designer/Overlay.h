// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/Controls.h"

#include <string>
#include <vector>

namespace kx::designer {

/// Something that the designer shows over a form. Places are in client coordinates of the form.
struct TOverlayItem {
    enum TKind {
        Handle,    ///< By which the only selected component is sized.
        DimHandle, ///< A mark of one of several, or of what cannot be sized.
        Outline,   ///< A frame: a rubber band, or where something will be.
        Ghost,     ///< A control that does not show when the form runs: a frame, and its name.
        Empty,     ///< The frame of a control that has nothing to show yet.
        Guide,     ///< A line along which edges lie.
        Icon,      ///< A component that is no control: its class's picture, and its name below.
        SelectedIcon,
        Badge ///< A number.
    };
    TKind Kind;
    TRect Bounds;
    std::string Text; ///< Of a ghost, an icon, a badge.
    const TClass* Class = nullptr;
    bool operator==(const TOverlayItem&) const = default;
};

/// A window over the whole form that consists of just its items: everything else of the form is seen and painted as if
/// it were not there.
class TOverlay : public TCustomControl {
    KX_CLASS()

    explicit TOverlay(TComponent* owner = nullptr);
    ~TOverlay() override;

    /// Shows the items over the window of the form, of which `client` is the client area.
    void ShowOver(HWND form, const TRect& client, std::vector<TOverlayItem> items);
    void LeaveForm(); ///< Before the form goes.
    const std::vector<TOverlayItem>& Items() const { return FItems; }

protected:
    void Paint() override;
    void EraseBackground(HDC) override {}

private:
    void ApplyRegion();
    std::vector<TOverlayItem> FItems;
};

/// Rectangle of an icon's name, below it.
TRect IconNameRect(const TOverlayItem& icon);

} // namespace kx::designer
