// SPDX-License-Identifier: MIT
// What is at a point of the surface.

#include "designer/Surface.h"
#include "kx/win/Windows.h"

namespace kx::designer {

namespace {

bool Contains(const TRect& r, const TPoint& p) {
    return p.X >= r.Left && p.X < r.Right && p.Y >= r.Top && p.Y < r.Bottom;
}

} // namespace

/// The control at a point of the parent's client area, the front first; windows lie before controls that have none.
TControl* TDesignSurface::ControlIn(TWinControl& parent, const TPoint& point, bool hidden) const {
    for (const bool windowed : {true, false}) {
        for (int i = parent.ControlCount(); i-- > 0;) {
            TControl* const control = parent.Controls(i);
            auto* const inner = dynamic_cast<TWinControl*>(control);
            if ((inner != nullptr) != windowed || control->Visible() == hidden ||
                !Contains(control->BoundsRect(), point)) {
                continue;
            }
            if (hidden) {
                if (IsHiddenInFile(*control)) {
                    return control;
                }
                continue;
            }
            if (inner) {
                const TPoint own = parent.ClientOrigin();
                const TPoint inside = inner->ClientOrigin();
                TControl* const found =
                    ControlIn(*inner, {point.X + own.X - inside.X, point.Y + own.Y - inside.Y}, false);
                return found ? found : control;
            }
            return control;
        }
    }
    return nullptr;
}

/// A control that the form file holds: what a control has put inside itself is part of it.
TControl* TDesignSurface::OwnControlAt(const TPoint& formPoint) const {
    TDesignedForm& form = FDesigner->Form();
    TControl* control = ControlIn(form, formPoint, false);
    while (control && control != &form && control->Owner() != &form) {
        control = control->Parent();
    }
    if (!control || control == &form || AcceptsControls(*control)) {
        TWinControl& around = control ? static_cast<TWinControl&>(*control) : form;
        const TPoint screen = form.ClientToScreen(formPoint);
        if (TControl* const ghost = ControlIn(around, around.ScreenToClient(screen), true)) {
            return ghost;
        }
    }
    return control;
}

TComponent* TDesignSurface::IconAt(const TPoint& formPoint) const {
    const std::vector<TOverlayItem>& items = FOverlay.Items();
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
        if ((item->Kind == TOverlayItem::Icon || item->Kind == TOverlayItem::SelectedIcon) &&
            (Contains(item->Bounds, formPoint) || Contains(IconNameRect(*item), formPoint))) {
            return FDesigner->Form().FindComponent(item->Text);
        }
    }
    return nullptr;
}

TComponent* TDesignSurface::ComponentAt(const TPoint& point) const {
    // Of a scrolled form parts lie outside of the surface.
    if (!FDesigner || !HandleAllocated() || !Contains(ClientRect(), point) ||
        !Contains(FDesigner->Form().BoundsRect(), point)) {
        return nullptr;
    }
    TDesignedForm& form = FDesigner->Form();
    const TPoint inForm = ToForm(point);
    if (!Contains(form.ClientRect(), inForm)) {
        return &form; // its frame
    }
    if (TComponent* const icon = IconAt(inForm)) {
        return icon;
    }
    TControl* const control = OwnControlAt(inForm);
    return control ? control : &form;
}

int TDesignSurface::HandleAt(const TPoint& point) const {
    const std::vector<TComponent*> selected = FDesigner->SelectedComponents();
    if (selected.size() != 1 || FDesigner->Locked()) {
        return -1;
    }
    const bool isForm = selected.front() == &FDesigner->Form();
    if (!isForm && !CanSize(*selected.front())) {
        return -1;
    }
    constexpr int reach = 1;
    const std::vector<TRect> handles = HandlesOf(isForm ? FormMarks() : PlaceOf(*selected.front()));
    for (size_t i = 0; i < handles.size(); ++i) {
        const TRect& r = handles[i];
        if (Contains({r.Left - reach, r.Top - reach, r.Right + reach, r.Bottom + reach}, point)) {
            return isForm && !SizesForm(i) ? -1 : static_cast<int>(i);
        }
    }
    return -1;
}

} // namespace kx::designer
