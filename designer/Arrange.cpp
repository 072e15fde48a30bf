// SPDX-License-Identifier: MIT
// Aligns, spaces and sizes controls.

#include "designer/Arrange.h"

#include "designer/Snapping.h"

#include <algorithm>

namespace kx::designer {

namespace {

std::vector<TControl*> Movable(const TFormDesigner& designer) {
    std::vector<TControl*> controls = designer.SelectedControls();
    std::erase_if(controls, [](const TControl* control) { return control->Align() != alNone || !control->Parent(); });
    return controls;
}

void MoveTo(TControl& control, int left, int top) { control.SetBounds(left, top, control.Width(), control.Height()); }

} // namespace

void AlignSelected(TFormDesigner& designer, TEdge edge) {
    const std::vector<TControl*> controls = Movable(designer);
    if (controls.size() < 2) {
        return;
    }
    const TRect first = controls.front()->BoundsRect();
    designer.Do("Align", [&] {
        for (TControl* control : controls) {
            const TRect r = control->BoundsRect();
            switch (edge) {
            case Left: MoveTo(*control, first.Left, r.Top); break;
            case Right: MoveTo(*control, first.Right - Width(r), r.Top); break;
            case Top: MoveTo(*control, r.Left, first.Top); break;
            case Bottom: MoveTo(*control, r.Left, first.Bottom - Height(r)); break;
            case HorizontalMiddle: MoveTo(*control, (first.Left + first.Right - Width(r)) / 2, r.Top); break;
            case VerticalMiddle: MoveTo(*control, r.Left, (first.Top + first.Bottom - Height(r)) / 2); break;
            }
        }
    });
}

void SpaceSelected(TFormDesigner& designer, bool horizontally) {
    std::vector<TControl*> controls = Movable(designer);
    if (controls.size() < 3) {
        return;
    }
    const auto start = [&](const TControl* c) { return horizontally ? c->Left() : c->Top(); };
    const auto length = [&](const TControl* c) { return horizontally ? c->Width() : c->Height(); };
    std::ranges::stable_sort(controls, {}, start);
    int room = start(controls.back()) + length(controls.back()) - start(controls.front());
    for (const TControl* control : controls) {
        room -= length(control);
    }
    designer.Do("Space", [&] {
        const int gaps = static_cast<int>(controls.size()) - 1;
        int used = start(controls.front());
        for (int i = 0; i < gaps; ++i) {
            TControl& control = *controls[static_cast<size_t>(i)];
            const int at = used + room * i / gaps;
            horizontally ? MoveTo(control, at, control.Top()) : MoveTo(control, control.Left(), at);
            used += length(&control);
        }
    });
}

void SizeSelected(TFormDesigner& designer, bool width, bool height) {
    const std::vector<TControl*> controls = Movable(designer);
    if (controls.size() < 2) {
        return;
    }
    const TControl& first = *controls.front();
    designer.Do("Size", [&] {
        for (TControl* control : controls) {
            control->SetBounds(control->Left(), control->Top(), width ? first.Width() : control->Width(),
                               height ? first.Height() : control->Height());
        }
    });
}

void CenterSelected(TFormDesigner& designer, bool horizontally) {
    const std::vector<TControl*> controls = Movable(designer);
    if (controls.empty()) {
        return;
    }
    const TWinControl* const parent = controls.front()->Parent();
    TRect all = controls.front()->BoundsRect();
    for (const TControl* control : controls) {
        const TRect r = control->BoundsRect();
        all = {std::min(all.Left, r.Left), std::min(all.Top, r.Top), std::max(all.Right, r.Right),
               std::max(all.Bottom, r.Bottom)};
    }
    const int x = horizontally ? (parent->ClientWidth() - Width(all)) / 2 - all.Left : 0;
    const int y = horizontally ? 0 : (parent->ClientHeight() - Height(all)) / 2 - all.Top;
    designer.Do("Center", [&] {
        for (TControl* control : controls) {
            if (control->Parent() == parent) {
                MoveTo(*control, control->Left() + x, control->Top() + y);
            }
        }
    });
}

void MoveSelectedToGrid(TFormDesigner& designer, const TPoint& grid) {
    designer.Do("Align to grid", [&] {
        for (TControl* control : Movable(designer)) {
            MoveTo(*control, ToGrid(control->Left(), grid.X), ToGrid(control->Top(), grid.Y));
        }
    });
}

void NudgeSelected(TFormDesigner& designer, int x, int y, bool size) {
    if (designer.Locked()) {
        return;
    }
    designer.Do(size ? "Size" : "Move", [&] {
        const std::vector<TControl*> controls = Movable(designer);
        for (TControl* control : controls) {
            const bool isInside = std::ranges::any_of(controls, [&](TControl* other) {
                const auto* const around = dynamic_cast<TWinControl*>(other);
                return around && around != control && around->ContainsControl(control);
            });
            if (size) {
                control->SetBounds(control->Left(), control->Top(), std::max(control->Width() + x, 1),
                                   std::max(control->Height() + y, 1));
            } else if (!isInside) { // it moves along
                MoveTo(*control, control->Left() + x, control->Top() + y);
            }
        }
        if (size && designer.Primary() == &designer.Form()) {
            TDesignedForm& form = designer.Form();
            form.SetClientSize(std::max(form.ClientWidth() + x, 1), std::max(form.ClientHeight() + y, 1));
        }
        for (TComponent* component : designer.SelectedComponents()) {
            if (!size && !dynamic_cast<TControl*>(component)) {
                const TPoint place = IconPlace(*component);
                SetIconPlace(*component, {place.X + x, place.Y + y});
            }
        }
    });
}

TPoint IconPlace(const TComponent& component) {
    const auto info = static_cast<uint32_t>(component.DesignInfo());
    return {static_cast<int16_t>(info & 0xFFFFU), static_cast<int16_t>(info >> 16U)};
}

void SetIconPlace(TComponent& component, const TPoint& place) {
    component.SetDesignInfo(
        static_cast<int32_t>((static_cast<uint32_t>(place.X) & 0xFFFFU) | (static_cast<uint32_t>(place.Y) << 16U)));
}

} // namespace kx::designer
