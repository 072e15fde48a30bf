// SPDX-License-Identifier: MIT
// What the mouse does on a form.

#include "designer/Arrange.h"
#include "designer/Surface.h"
#include "kx/core/Barrier.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <cstdlib>

namespace kx::designer {

void TDesignSurface::MouseDown(TMouseButton button, TShiftState shift, int x, int y) {
    TCustomControl::MouseDown(button, shift, x, y);
    if (!FDesigner || shift.Contains(ssDouble)) { // whose double click has been answered
        return;
    }
    SetFocus();
    if (FDrag != TDrag::None) {
        CancelDrag(); // another button went down
        return;
    }
    if (button == mbLeft) {
        Press({x, y}, shift);
    } else if (button == mbRight) {
        TComponent* const component = ComponentAt({x, y});
        if (component && !FDesigner->IsSelected(*component)) {
            FDesigner->SelectOne(*component);
        }
    }
}

void TDesignSurface::Press(const TPoint& point, TShiftState shift) {
    FPressed = point;
    FDragFrom = FDragAt = ToForm(point);
    FAddsToSelection = shift.Contains(ssShift);
    TComponent* const component = ComponentAt(point);
    if (FShowsTabOrder) {
        if (auto* const control = dynamic_cast<TControl*>(component); control && control != &FDesigner->Form()) {
            GiveTabOrder(*control);
        }
        return;
    }
    if (FTool && component) {
        FContainer = FDesigner->ContainerFor(component);
        FDrag = TDrag::Create;
        return;
    }
    FHandle = HandleAt(point);
    if (FHandle >= 0) {
        FDrag = TDrag::Size;
        StartMoved();
        return;
    }
    if (!component) {
        FDesigner->SelectOne(FDesigner->Form());
        return;
    }
    const bool band = component == &FDesigner->Form() || shift.Contains(ssCtrl);
    if (band) {
        FContainer = AcceptsControls(*component) ? static_cast<TWinControl*>(component) : &FDesigner->Form();
        if (!FAddsToSelection && component == &FDesigner->Form()) {
            FDesigner->SelectOne(*component);
        }
        FDrag = TDrag::Band;
    } else if (FAddsToSelection) {
        TDesignSelection selection = FDesigner->Selection();
        if (std::erase(selection, component) == 0) {
            selection.push_back(component);
        }
        std::erase(selection, &FDesigner->Form());
        FDesigner->Select(selection.empty() ? TDesignSelection{&FDesigner->Form()} : selection);
    } else {
        if (!FDesigner->IsSelected(*component)) {
            FDesigner->SelectOne(*component);
        }
        FDrag = FDesigner->Locked() ? TDrag::None : TDrag::Waiting;
    }
}

/// Gives the control the next number among its neighbours.
void TDesignSurface::GiveTabOrder(TControl& control) {
    auto* const windowed = dynamic_cast<TWinControl*>(&control);
    if (!windowed || !windowed->Parent()) {
        return;
    }
    FNextTab = FTabParent == windowed->Parent() ? FNextTab : 0;
    FTabParent = windowed->Parent();
    FDesigner->Do("Tab order", [&] { windowed->SetTabOrder(FNextTab); });
    ++FNextTab;
    UpdateMarks();
}

/// Notes where what is moved stands.
void TDesignSurface::StartMoved() {
    ForgetMoved();
    FChange.emplace(*FDesigner);
    for (TComponent* component : FDesigner->SelectedComponents()) {
        const auto* const control = dynamic_cast<TControl*>(component);
        if (!control) {
            const TPoint place = IconPlace(*component);
            FMoved.push_back({component, TAlive(*component), {place.X, place.Y, place.X, place.Y}});
        } else if (component == &FDesigner->Form() ? FDrag == TDrag::Size
                                                   : control->Align() == alNone && control->Parent()) {
            FMoved.push_back({component, TAlive(*component), control->BoundsRect()});
        }
    }
    // What is inside a moved control moves along.
    std::erase_if(FMoved, [this](const TMoved& inner) {
        return std::ranges::any_of(FMoved, [&](const TMoved& outer) {
            const auto* const around = dynamic_cast<TWinControl*>(outer.Component);
            const auto* const control = dynamic_cast<TControl*>(inner.Component);
            return around && control && around != control && around->ContainsControl(control);
        });
    });
}

void TDesignSurface::ForgetMoved() {
    FMoved.clear();
    FChange.reset();
}

void TDesignSurface::MouseMove(TShiftState shift, int x, int y) {
    TCustomControl::MouseMove(shift, x, y);
    if (!FDesigner) {
        return;
    }
    if (FDrag == TDrag::None) {
        ShowCursorAt({x, y});
        return;
    }
    DragTo({x, y}, shift);
}

void TDesignSurface::DragTo(const TPoint& point, TShiftState shift) {
    constexpr int threshold = 3;
    if (FDrag == TDrag::Waiting) {
        if (std::abs(point.X - FPressed.X) <= threshold && std::abs(point.Y - FPressed.Y) <= threshold) {
            return;
        }
        FDrag = TDrag::Move;
        StartMoved();
        UpdateMarks(); // the handles go
    }
    FDragAt = ToForm(point);
    const bool snap = !shift.Contains(ssAlt);
    FGuides.clear();
    if (FDrag == TDrag::Move) {
        MoveTo(FDragAt, snap);
    } else if (FDrag == TDrag::Size) {
        SizeTo(FDragAt, snap);
    }
    UpdateMarks();
}

/// The places of the other controls of that parent, in its client coordinates.
std::vector<TRect> TDesignSurface::Neighbours(const TWinControl* parent) const {
    std::vector<TRect> places;
    for (int i = 0; parent && i < parent->ControlCount(); ++i) {
        const TControl* const control = parent->Controls(i);
        if (control->Visible() && !FDesigner->IsSelected(*control)) {
            places.push_back(control->BoundsRect());
        }
    }
    return places;
}

namespace {

/// Lines in the client coordinates of `parent` as ones of the form.
void ToFormLines(std::vector<TGuide>& guides, const TWinControl* parent, const TDesignedForm& form) {
    const TPoint inner = parent->ClientOrigin();
    const TPoint outer = form.ClientOrigin();
    for (TGuide& guide : guides) {
        guide.At += guide.IsVertical ? inner.X - outer.X : inner.Y - outer.Y;
    }
}

} // namespace

void TDesignSurface::MoveTo(const TPoint& formPoint, bool snap) {
    if (FMoved.empty()) {
        return;
    }
    TPoint way{formPoint.X - FDragFrom.X, formPoint.Y - FDragFrom.Y};
    const auto* const first = dynamic_cast<TControl*>(FMoved.front().Component);
    if (snap && first && FMoved.front().Alive) {
        TSnapping snapping = FSnapping;
        snapping.Others = Neighbours(first->Parent());
        const TRect& r = FMoved.front().Before;
        const TPoint on =
            SnapMove(snapping, {r.Left + way.X, r.Top + way.Y, r.Right + way.X, r.Bottom + way.Y}, &FGuides);
        way = {way.X + on.X, way.Y + on.Y};
        ToFormLines(FGuides, first->Parent(), FDesigner->Form());
    }
    for (const TMoved& moved : FMoved) {
        if (!moved.Alive) {
            continue;
        }
        const TPoint to{moved.Before.Left + way.X, moved.Before.Top + way.Y};
        if (auto* const control = dynamic_cast<TControl*>(moved.Component)) {
            control->SetBounds(to.X, to.Y, control->Width(), control->Height());
        } else {
            SetIconPlace(*moved.Component, to);
        }
    }
}

void TDesignSurface::SizeTo(const TPoint& formPoint, bool snap) {
    if (FMoved.empty() || !FMoved.front().Alive) {
        return;
    }
    auto& control = static_cast<TControl&>(*FMoved.front().Component);
    const TRect before = FMoved.front().Before;
    const TPoint way{formPoint.X - FDragFrom.X, formPoint.Y - FDragFrom.Y};
    TRect r = before;
    TSnapping snapping = FSnapping;
    if (&control != &FDesigner->Form()) {
        snapping.Others = Neighbours(control.Parent());
    }
    const auto edge = [&](int at, bool isVertical) { return snap ? SnapEdge(snapping, at, isVertical, &FGuides) : at; };
    const bool left = FHandle == 0 || FHandle == 6 || FHandle == 7;
    const bool right = FHandle >= 2 && FHandle <= 4;
    const bool top = FHandle >= 0 && FHandle <= 2;
    const bool bottom = FHandle >= 4 && FHandle <= 6;
    if (left) {
        r.Left = std::min(edge(before.Left + way.X, true), r.Right - 1);
    }
    if (right) {
        r.Right = std::max(edge(before.Right + way.X, true), r.Left + 1);
    }
    if (top) {
        r.Top = std::min(edge(before.Top + way.Y, false), r.Bottom - 1);
    }
    if (bottom) {
        r.Bottom = std::max(edge(before.Bottom + way.Y, false), r.Top + 1);
    }
    control.SetBoundsRect(r);
    if (&control != &FDesigner->Form()) {
        ToFormLines(FGuides, control.Parent(), FDesigner->Form());
    }
}

void TDesignSurface::MouseUp(TMouseButton button, TShiftState shift, int x, int y) {
    TCustomControl::MouseUp(button, shift, x, y);
    if (!FDesigner) {
        return;
    }
    if (button == mbLeft) {
        if (FDrag == TDrag::Band || FDrag == TDrag::Create) {
            FDragAt = ToForm({x, y});
        }
        EndDrag();
    } else if (button == mbRight) {
        FOnMenu(ClientToScreen({x, y}));
    }
}

void TDesignSurface::EndDrag() {
    const TDrag drag = std::exchange(FDrag, TDrag::None);
    FGuides.clear();
    const TAlive alive(*this);
    switch (drag) {
    case TDrag::Move:
    case TDrag::Size:
        ForgetMoved();
        FDesigner->Record(drag == TDrag::Move ? "Move" : "Size");
        break;
    case TDrag::Band: SelectInBand(FAddsToSelection); break;
    case TDrag::Create: CreateInBand(); break;
    default: break;
    }
    if (alive) {
        UpdateMarks();
    }
}

/// Everything is where it was before.
void TDesignSurface::CancelDrag() {
    const TDrag drag = std::exchange(FDrag, TDrag::None);
    if (drag == TDrag::None) {
        return;
    }
    for (const TMoved& moved : FMoved) {
        if (!moved.Alive) {
            continue;
        }
        if (auto* const control = dynamic_cast<TControl*>(moved.Component)) {
            control->SetBoundsRect(moved.Before);
        } else {
            SetIconPlace(*moved.Component, {moved.Before.Left, moved.Before.Top});
        }
    }
    ForgetMoved();
    FGuides.clear();
    UpdateMarks();
}

TRect TDesignSurface::BandRect() const {
    return {std::min(FDragFrom.X, FDragAt.X), std::min(FDragFrom.Y, FDragAt.Y), std::max(FDragFrom.X, FDragAt.X) + 1,
            std::max(FDragFrom.Y, FDragAt.Y) + 1};
}

void TDesignSurface::SelectInBand(bool add) {
    constexpr int smallest = 3;
    const TRect band = BandRect();
    if (kx::Width(band) <= smallest && kx::Height(band) <= smallest) {
        return; // a click
    }
    TDesignSelection selection = add ? FDesigner->Selection() : TDesignSelection{};
    std::erase(selection, &FDesigner->Form());
    const TPoint origin = FormOrigin();
    for (TComponent* component : FDesigner->AllComponents()) {
        const auto* const control = dynamic_cast<TControl*>(component);
        const bool isInside = control ? control->Parent() == FContainer
                                      : component->GetParentComponent() == nullptr && component != &FDesigner->Form() &&
                                            FContainer == &FDesigner->Form();
        const TRect r = PlaceOf(*component);
        const bool meets = r.Left - origin.X < band.Right && r.Right - origin.X > band.Left &&
                           r.Top - origin.Y < band.Bottom && r.Bottom - origin.Y > band.Top;
        if (isInside && meets && std::ranges::find(selection, component) == selection.end()) {
            selection.push_back(component);
        }
    }
    FDesigner->Select(selection.empty() ? TDesignSelection{FContainer} : selection);
}

void TDesignSurface::CreateInBand() {
    const TClass* const tool = FTool;
    const TRect band = BandRect();
    const TPoint inner = FContainer->ClientOrigin();
    const TPoint outer = FDesigner->Form().ClientOrigin();
    const auto x = [&](int at) { return ToGrid(at + outer.X - inner.X, FSnapping.Grid.X); };
    const auto y = [&](int at) { return ToGrid(at + outer.Y - inner.Y, FSnapping.Grid.Y); };
    const TRect bounds{x(band.Left), y(band.Top), x(band.Right), y(band.Bottom)};
    if (!FAddsToSelection) { // with Shift more of them are to come
        FTool = nullptr;
    }
    const TAlive alive(*this);
    FOnToolUsed(this);
    if (alive && tool) {
        FDesigner->CreateComponent(*tool, FContainer, bounds);
    }
}

void TDesignSurface::DropTool(const TPoint& point) {
    TComponent* const component = FTool ? ComponentAt(point) : nullptr;
    if (component) {
        FContainer = FDesigner->ContainerFor(component);
        FDragFrom = FDragAt = ToForm(point);
        FAddsToSelection = false;
        CreateInBand();
    }
}

void TDesignSurface::DblClick() {
    TCustomControl::DblClick();
    CancelDrag();
    if (FDesigner && !FTool && !FShowsTabOrder) {
        FOnEdit(this);
    }
}

void TDesignSurface::ShowCursorAt(const TPoint& point) const {
    const LPCTSTR shapes[] = {IDC_SIZENWSE, IDC_SIZENS, IDC_SIZENESW, IDC_SIZEWE};
    const int handle = HandleAt(point);
    LPCTSTR shape = IDC_ARROW;
    if (FTool) {
        shape = IDC_CROSS;
    } else if (handle >= 0) {
        shape = shapes[handle % 4];
    }
    ::SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(shape)));
}

} // namespace kx::designer
